#include <zrbasic/platform/qt/pointer_filter_p.h>

#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/qt/delivery_p.h>
#include <zrbasic/platform/qt/event_loop_p.h>
#include <zrbasic/platform/qt/event_translation_p.h>
#include <zrbasic/platform/qt/host_window_p.h>
#include <zrbasic/platform/qt/input_delivery_p.h>
#include <zrbasic/platform/qt/modal_gate_p.h>
#include <zrbasic/platform/qt/tracking_p.h>
#include <zrbasic/platform/qt/view_peer_p.h>
#include <zrbasic/platform/qt/view_widget_p.h>
#include <zrbasic/platform/qt/window_peer_p.h>
#include <zrbasic/platform/runtime/message.h>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTimer>
#include <QWheelEvent>
#include <QWindow>

namespace zr::qt {
namespace {

QWidget* topLevelOf(const QObject* window) {
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget* const widget : widgets) {
        if (widget->windowHandle() == window) {
            return widget;
        }
    }
    return nullptr;
}

/// Where a click goes: to Qt's choice, or elsewhere.
struct Aim {
    bool isOurs = false;
    /// Null for nobody.
    Ref<NSView> view;
};

/// Qt knows of rectangles alone; which view it is `hitTest:` says.
Aim aimAt(QWidget& topLevel, QPointF point) {
    QWidget* const child = topLevel.childAt(point.toPoint());
    ViewWidget* const under = ViewWidget::around(child ? child : &topLevel);
    const Ref<NSView> natural = under ? under->view() : nullptr;
    if (!natural) {
        return {};
    }
    Ref<NSView> root = natural;
    while (Ref<NSView> above = root->superview()) {
        root = std::move(above);
    }
    Ref<NSView> hit;
    duringEvent([&] { hit = send<Ref<NSView>>(root, "hitTest:"_sel, windowPoint(topLevel, point)); });
    return {hit != natural, hit};
}

class InputFilter final : public QObject {
  public:
    InputFilter() {
        m_reconsidering.setSingleShot(true);
        m_reconsidering.setInterval(0);
        connect(&m_reconsidering, &QTimer::timeout, this,
                [this] { m_tracker.reconsider(QGuiApplication::mouseButtons() != Qt::NoButton); });
        connect(qApp, &QApplication::focusChanged, this, [](QWidget*, QWidget* now) { focusMovedTo(now); });
        connect(qApp, &QGuiApplication::applicationStateChanged, this, [](Qt::ApplicationState state) {
            duringEvent([state] { NSApplication::sharedApplication()->setActive(state == Qt::ApplicationActive); });
        });
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject* receiver, QEvent* event) override {
        // Windows alone: what reaches their widgets has come by here.
        if (!receiver->isWindowType()) {
            return false;
        }
        const QEvent::Type type = event->type();
        if (!isInput(type) && type != QEvent::Close && type != QEvent::Enter && type != QEvent::Leave) {
            return false;
        }
        QWidget* const topLevel = topLevelOf(receiver);
        if (!topLevel) {
            return false;
        }
        const Delivery delivery;
        if (isKeptOut(*topLevel, *event)) {
            return true;
        }
        // A menu takes everything until it is gone.
        if (QApplication::activePopupWidget()) {
            return false;
        }
        const Ref<NSWindow> window = windowOf(topLevel);
        return window && filter(*topLevel, *window, *event);
    }

    void reconsider(const QWidget* topLevel) {
        if (m_tracker.isIn(topLevel) && !m_reconsidering.isActive()) {
            m_reconsidering.start();
        }
    }

  private:
    bool filter(QWidget& topLevel, NSWindow& window, QEvent& event) {
        switch (event.type()) {
            case QEvent::MouseButtonPress:
            case QEvent::MouseButtonDblClick:
                return press(topLevel, static_cast<QMouseEvent&>(event));
            case QEvent::MouseButtonRelease:
                return release(topLevel, static_cast<QMouseEvent&>(event));
            case QEvent::MouseMove:
                return move(topLevel, static_cast<QMouseEvent&>(event));
            case QEvent::Wheel:
                return turn(topLevel, static_cast<QWheelEvent&>(event));
            case QEvent::Enter:
                m_tracker.pointerAt(topLevel, static_cast<QEnterEvent&>(event).position(), false, true);
                return false;
            case QEvent::Leave:
                m_tracker.pointerLeft();
                return false;
            case QEvent::KeyPress: {
                auto& key = static_cast<QKeyEvent&>(event);
                if (key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab) {
                    refreshTabStops(topLevel);
                }
                return performKeyEquivalent(key, window, topLevel);
            }
            default:
                return false;
        }
    }

    bool press(QWidget& topLevel, QMouseEvent& event) {
        const bool isFirst = event.buttons() == Qt::MouseButtons(event.button());
        if (event.type() == QEvent::MouseButtonDblClick) {
            if (m_isGrabbing) {
                // Qt says it a second time that this press, which has been passed on, is one of a double click.
                return true;
            }
        } else if (isFirst) {
            // A release may have been kept from us, by a session that the press has begun.
            m_isGrabbing = false;
        }
        if (!m_isGrabbing) {
            // With another button down the pointer belongs to whom that has gone to.
            if (!isFirst) {
                return false;
            }
            const Aim aim = aimAt(topLevel, event.position());
            if (!aim.isOurs) {
                return false;
            }
            m_isGrabbing = true;
            m_grabber = Weak<NSView>(aim.view);
        }
        passOn(topLevel, event);
        return true;
    }

    bool move(QWidget& topLevel, QMouseEvent& event) {
        const QPointer<QWidget> kept(&topLevel);
        m_tracker.pointerAt(topLevel, event.position(), event.buttons() != Qt::NoButton, true);
        m_isGrabbing = m_isGrabbing && event.buttons() != Qt::NoButton;
        if (!m_isGrabbing || !kept) {
            return false;
        }
        passOn(topLevel, event);
        return true;
    }

    bool release(QWidget& topLevel, QMouseEvent& event) {
        const bool isOver = event.buttons() == Qt::NoButton;
        const bool wasGrabbing = m_isGrabbing;
        if (isOver) {
            reconsider(&topLevel);
        }
        if (wasGrabbing) {
            m_isGrabbing = !isOver;
            passOn(topLevel, event);
        }
        return wasGrabbing;
    }

    bool turn(QWidget& topLevel, QWheelEvent& event) {
        const Aim aim = aimAt(topLevel, event.position());
        if (!aim.isOurs) {
            return false;
        }
        if (QWidget* const target = targetIn(topLevel, aim.view, event.position())) {
            sendMapped(event, topLevel, *target);
        } else if (aim.view) {
            static_cast<void>(handOver(event, *aim.view, topLevel));
        }
        return true;
    }

    /// To the grabber; one that is gone leaves nobody.
    void passOn(QWidget& topLevel, QMouseEvent& event) {
        const Ref<NSView> view = m_grabber.lock();
        if (!view) {
            return;
        }
        const bool isPress = event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick;
        if (isPress || !m_target) {
            m_target = targetIn(topLevel, view, event.position());
        }
        if (m_target) {
            sendMapped(event, topLevel, *m_target);
        } else {
            handOver(event, *view, topLevel);
        }
    }

    /// The view's widget, or the control of Qt in it that lies there; null when it is none in this window.
    [[nodiscard]] static QWidget* targetIn(QWidget& topLevel, NSView* view, QPointF point) {
        auto* const peer = view ? dynamic_cast<WidgetPeer*>(view->peer()) : nullptr;
        QWidget* const widget = peer ? peer->presentWidget() : nullptr;
        if (!widget || widget->window() != &topLevel) {
            return nullptr;
        }
        QWidget* const inner = widget->childAt(widget->mapFrom(&topLevel, point.toPoint()));
        return inner && ViewWidget::around(inner) == widget ? inner : widget;
    }

    /// The first responder and Qt's keyboard focus stay together, whichever of them was moved.
    static void focusMovedTo(QWidget* now) {
        QWidget* const topLevel = now ? now->window() : nullptr;
        const Ref<NSWindow> window = windowOf(topLevel);
        if (!window || now == topLevel) {
            return;
        }
        const Delivery delivery;
        ViewWidget* const widget = ViewWidget::around(now);
        const Ref<NSView> view = widget ? widget->view() : nullptr;
        const Ref<NSResponder> first = window->firstResponder();
        if (first == view) {
            return;
        }
        duringEvent([&] {
            // A control of somebody's own that lies in a view which wants no keys takes them from all views.
            const bool isTaken = view && send<bool>(view, "acceptsFirstResponder"_sel);
            NSResponder* const fresh = isTaken ? view.get() : nullptr;
            if (first == window && !fresh) {
                return;
            }
            if (!send<bool>(window, "makeFirstResponder:"_sel, fresh)) {
                if (auto* const stays = cast<NSView>(first.get()); stays && stays->peer()) {
                    stays->peer()->takeKeyboard();
                }
            }
        });
    }

    PointerTracker m_tracker;
    QTimer m_reconsidering;
    bool m_isGrabbing = false;
    Weak<NSView> m_grabber;
    QPointer<QWidget> m_target;
};

InputFilter* filterInUse = nullptr;

} // namespace

void installApplicationFilters() {
    if (!filterInUse) {
        filterInUse = new InputFilter;
    }
}

void removeApplicationFilters() {
    delete std::exchange(filterInUse, nullptr);
    forgetForeignWindows();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void reconsiderPointer(QWidget* topLevel) {
    if (filterInUse) {
        filterInUse->reconsider(topLevel);
    }
}

} // namespace zr::qt
