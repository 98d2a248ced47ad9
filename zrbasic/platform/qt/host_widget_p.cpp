#include <zrbasic/platform/qt/window_peer_p.h>

#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/qt/event_loop_p.h>
#include <zrbasic/platform/qt/input_delivery_p.h>
#include <zrbasic/platform/qt/palette_p.h>
#include <zrbasic/platform/qt/view_peer_p.h>
#include <zrbasic/platform/qt/view_widget_p.h>
#include <zrbasic/platform/runtime/message.h>

#include <QKeyEvent>

namespace zr::qt {

HostWidget::HostWidget(NSWindow& window) : m_window(&window) {
    dress(*this);
    setFocusPolicy(Qt::NoFocus);
    // Which window is key is not decided by which one was shown last.
    setAttribute(Qt::WA_ShowWithoutActivating);
    m_echoes.setSingleShot(true);
    connect(&m_echoes, &QTimer::timeout, this, [this] { geometryChanged(false); });
}

HostWidget::~HostWidget() = default;

TopLevelPeer* HostWidget::peer(const Ref<NSWindow>& window) const {
    auto* const peer = window ? dynamic_cast<TopLevelPeer*>(window->peer()) : nullptr;
    return peer && peer->m_widget == this ? peer : nullptr;
}

Ref<NSWindow> HostWidget::shownWindow() const {
    Ref<NSWindow> window = m_window.lock();
    return peer(window) ? window : nullptr;
}

void HostWidget::expectEchoes() {
    m_echoes.start(250);
}

void HostWidget::geometryChanged(bool byDesktop) {
    const Ref<NSWindow> window = shownWindow();
    TopLevelPeer* const peer = this->peer(window);
    if (!peer) {
        return;
    }
    for (QObject* const child : children()) {
        auto* const inner = dynamic_cast<ViewWidget*>(child);
        if (inner && inner->view() == window->contentView()) {
            inner->setGeometry(rect());
        }
    }
    // A moment later it is looked at again.
    if (!byDesktop || !m_echoes.isActive()) {
        peer->adoptGeometry();
    }
}

void HostWidget::wasActivated(const Ref<NSWindow>& window) {
    if (NSApplication::sharedApplication()->allowsEventsForWindow(window)) {
        const QPointer<HostWidget> kept(this);
        m_isGivenKeyboard = true;
        duringEvent([&] { send<void>(window, "makeKeyWindow"_sel); });
        if (kept) {
            m_isGivenKeyboard = false;
        }
        return;
    }
    // Some desktops activate whatever is clicked. The keys are the session's all the same.
    QMetaObject::invokeMethod(
        this,
        [] {
            const Ref<NSWindow> session = NSApplication::sharedApplication()->modalWindow();
            if (session && session->peer()) {
                session->peer()->takeKeyboard();
            }
        },
        Qt::QueuedConnection);
}

bool HostWidget::handle(QEvent& event) {
    // Stays until the event is dealt with, whoever lets go of it meanwhile.
    const Ref<NSWindow> window = shownWindow();
    if (!window) {
        return DeliveringWidget::handle(event);
    }
    switch (event.type()) {
        case QEvent::Close:
            // Whether it closes is up to the window, which then takes it off the screen itself.
            event.ignore();
            duringEvent([&] {
                if (peer(window)->mayBeClosedByUser()) {
                    send<void>(window, "performClose:"_sel, window.get());
                }
            });
            return true;
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
            event.setAccepted(handOver(static_cast<QKeyEvent&>(event), *window, *this));
            return true;
        default:
            break;
    }
    const bool isHandled = DeliveringWidget::handle(event);
    switch (event.type()) {
        case QEvent::Move:
        case QEvent::Resize:
            geometryChanged(event.spontaneous());
            break;
        case QEvent::Paint:
            if (!std::exchange(m_wasPainted, true) && peer(window)) {
                // Some desktops have placed it by themselves up to here.
                QMetaObject::invokeMethod(
                    this,
                    [this] {
                        const Ref<NSWindow> shown = shownWindow();
                        if (TopLevelPeer* const peer = this->peer(shown); peer && !peer->m_shake && isVisible()) {
                            peer->applyFrame();
                        }
                    },
                    Qt::QueuedConnection);
            }
            break;
        case QEvent::WindowActivate:
            wasActivated(window);
            break;
        case QEvent::WindowStateChange:
            window->wasMiniaturized(isMinimized());
            break;
        case QEvent::ChildRemoved:
            // Somebody may have deleted the content's widget, or put it elsewhere.
            QMetaObject::invokeMethod(
                this,
                [this] {
                    const Ref<NSWindow> shown = shownWindow();
                    TopLevelPeer* const peer = this->peer(shown);
                    auto* const inner = peer ? dynamic_cast<WidgetPeer*>(shown->contentView()->peer()) : nullptr;
                    if (inner && !inner->presentWidget()) {
                        peer->placeContent();
                    }
                },
                Qt::QueuedConnection);
            break;
        default:
            break;
    }
    return isHandled;
}

} // namespace zr::qt
