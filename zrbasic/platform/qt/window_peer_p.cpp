#include <zrbasic/platform/qt/window_peer_p.h>

#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/button.h>
#include <zrbasic/platform/appkit/panel.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/qt/conversions_p.h>
#include <zrbasic/platform/qt/event_loop_p.h>
#include <zrbasic/platform/qt/host_window_p.h>
#include <zrbasic/platform/qt/peers_p.h>
#include <zrbasic/platform/qt/session.h>
#include <zrbasic/platform/qt/shake_p.h>
#include <zrbasic/platform/qt/view_peer_p.h>
#include <zrbasic/platform/qt/view_widget_p.h>
#include <zrbasic/platform/runtime/message.h>

#include <QApplication>
#include <QScreen>
#include <QThread>
#include <QWindow>

#include <utility>

namespace zr::qt {
namespace {

/// Without a screen there is no front, and asking for it only gets a complaint of Qt's.
void bringToFront(QWidget& widget) {
    if (QGuiApplication::platformName() != QLatin1String("offscreen")) {
        widget.raise();
    }
}

/// What is on the screen of those windows' frames, from the point of view of Qt.
QRect primaryGeometry() {
    const QScreen* const primary = QGuiApplication::primaryScreen();
    return primary ? primary->geometry() : QRect();
}

/// Views that live on must not be deleted with the widget that they happen to lie in.
void discardHost(const QPointer<HostWidget>& host) {
    if (!host || !QCoreApplication::instance()) {
        return;
    }
    host->hide();
    const auto children = host->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
    for (QWidget* const child : children) {
        if (dynamic_cast<ViewWidget*>(child)) {
            takeOut(*child);
            child->setAttribute(Qt::WA_WState_ExplicitShowHide, false);
        }
    }
    discard(host);
}

Qt::WindowFlags flagsOf(NSWindow& window, bool hasCloseButton) {
    const NSUInteger style = window.styleMask();
    Qt::WindowFlags flags = (style & NSWindowStyleMaskUtilityWindow) != 0 ? Qt::Tool : Qt::Window;
    flags |= Qt::CustomizeWindowHint;
    if ((style & NSWindowStyleMaskTitled) != 0) {
        flags |= Qt::WindowTitleHint | Qt::WindowSystemMenuHint;
        flags.setFlag(Qt::WindowCloseButtonHint, hasCloseButton);
        flags.setFlag(Qt::WindowMinimizeButtonHint, (style & NSWindowStyleMaskMiniaturizable) != 0);
        flags.setFlag(Qt::WindowMaximizeButtonHint, (style & NSWindowStyleMaskResizable) != 0);
    } else {
        flags |= Qt::FramelessWindowHint;
    }
    auto* const panel = cast<NSPanel>(&window);
    flags.setFlag(Qt::WindowStaysOnTopHint, panel && panel->isFloatingPanel());
    flags.setFlag(Qt::WindowDoesNotAcceptFocus,
                  (style & NSWindowStyleMaskNonactivatingPanel) != 0 || !send<bool>(&window, "canBecomeKeyWindow"_sel));
    return flags;
}

} // namespace

QRect desktopRect(NSRect onScreen) {
    const QRect primary = primaryGeometry();
    return pixelRect(onScreen, primary.height(), false).translated(primary.topLeft());
}

NSRect screenRect(QRect onDesktop) {
    const QRect primary = primaryGeometry();
    const QRect rect = onDesktop.translated(-primary.topLeft());
    return {{double(rect.x()), double(primary.height() - rect.y() - rect.height())},
            {double(rect.width()), double(rect.height())}};
}

Ref<NSWindow> windowOf(const QWidget* topLevel) {
    if (!topLevel) {
        return nullptr;
    }
    const auto* const host = dynamic_cast<const HostWidget*>(topLevel);
    return host ? host->shownWindow() : presentForeignWindow(*topLevel);
}

QVariantAnimation* playOrigins(NSWindow& window, QWidget& widget, std::span<const NSPoint> points, double seconds,
                               std::function<void()> end) {
    std::vector<QPoint> positions;
    const NSSize size = window.frame().size;
    for (const NSPoint origin : points) {
        positions.push_back(desktopRect(window.contentRectForFrameRect({origin, size})).topLeft());
    }
    return playPositions(widget, positions, seconds, std::move(end));
}

std::unique_ptr<WindowPeer> makePeer(NSWindow& window) {
    return std::make_unique<TopLevelPeer>(window);
}

TopLevelPeer::TopLevelPeer(NSWindow& window) : m_window(window) {}

TopLevelPeer::~TopLevelPeer() {
    QCoreApplication* const application = QCoreApplication::instance();
    if (m_widget.isNull() || !application) {
        return;
    }
    if (QThread::currentThread() != application->thread()) {
        // The last reference was let go elsewhere; widgets are touched on the main thread alone.
        QMetaObject::invokeMethod(
            application, [widget = std::move(m_widget)] { discardHost(widget); }, Qt::QueuedConnection);
        return;
    }
    discardHost(std::exchange(m_widget, nullptr));
}

QWidget* TopLevelPeer::presentWidget() const {
    return m_widget;
}

void TopLevelPeer::ensureWidget() {
    if (m_widget) {
        return;
    }
    m_widget = new HostWidget(m_window);
    applyStyle();
    m_widget->setWindowTitle(toQt(m_window.title()));
    applyFrame();
    placeContent();
    // Else Qt looks for somebody who would take the keyboard when the window is activated.
    if (m_widget) {
        m_widget->setFocus(Qt::OtherFocusReason);
        applyFirstResponder();
    }
}

void TopLevelPeer::placeContent() {
    if (!m_widget) {
        return;
    }
    const Ref<NSView> content = m_window.contentView();
    const auto children = m_widget->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
    for (QWidget* const child : children) {
        auto* const former = dynamic_cast<ViewWidget*>(child);
        const Ref<NSView> view = former ? former->view() : nullptr;
        if (view && view != content) {
            takeOut(*former);
            former->setAttribute(Qt::WA_WState_ExplicitShowHide, view->isHidden());
        }
    }
    auto* const peer = dynamic_cast<WidgetPeer*>(content->ensurePeer());
    QWidget* const widget = peer ? peer->widget() : nullptr;
    if (!widget || !m_widget) {
        return;
    }
    if (widget->parentWidget() != m_widget) {
        takeOut(*widget);
        widget->setParent(m_widget);
    }
    widget->setGeometry(m_widget->rect());
    widget->setVisible(!content->isHidden());
}

void TopLevelPeer::windowChanged(WindowChange change) {
    if (!m_widget) {
        return;
    }
    switch (change) {
        case WindowChange::Frame:
            if (!m_isAdopting) {
                applyFrame();
            }
            break;
        case WindowChange::Title:
            m_widget->setWindowTitle(toQt(m_window.title()));
            break;
        case WindowChange::StyleMask:
        case WindowChange::Buttons:
            applyStyle();
            break;
        case WindowChange::ContentView:
            placeContent();
            break;
        case WindowChange::FirstResponder:
            applyFirstResponder();
            break;
        case WindowChange::Behavior:
            applyStyle();
            applyLimits();
            if (m_widget->isVisible() && m_window.isMiniaturized() != m_widget->isMinimized()) {
                m_window.isMiniaturized() ? m_widget->showMinimized() : m_widget->showNormal();
            }
            break;
    }
}

bool TopLevelPeer::mayBeClosedByUser() const {
    const Ref<NSButton> button = m_window.standardWindowButton(NSWindowCloseButton);
    return (m_window.styleMask() & NSWindowStyleMaskClosable) != 0 && !(button && button->isHidden());
}

void TopLevelPeer::applyStyle() {
    const Qt::WindowFlags flags = flagsOf(m_window, mayBeClosedByUser());
    if (flags == m_widget->windowFlags()) {
        return;
    }
    if (QWindow* const window = m_widget->windowHandle()) {
        // By the widget itself it would disappear, and come back elsewhere.
        m_widget->overrideWindowFlags(flags);
        window->setFlags(flags);
    } else {
        m_widget->setWindowFlags(flags);
    }
}

void TopLevelPeer::applyLimits() {
    const QSize wanted = wantedGeometry().size();
    if ((m_window.styleMask() & NSWindowStyleMaskResizable) == 0) {
        m_widget->setFixedSize(wanted);
        return;
    }
    // Users cannot go beyond the limits, but a frame that was set can.
    const auto limit = [this](NSSize size) {
        const NSSize content = m_window.contentRectForFrameRect({NSZeroPoint, size}).size;
        const auto bounded = [](double extent) { return int(std::clamp(extent, 0.0, double(QWIDGETSIZE_MAX))); };
        return QSize(bounded(content.width), bounded(content.height));
    };
    m_widget->setMinimumSize(limit(m_window.minSize()).boundedTo(wanted));
    m_widget->setMaximumSize(limit(m_window.maxSize()).expandedTo(wanted));
}

QRect TopLevelPeer::wantedGeometry() const {
    const QRect rect = desktopRect(m_window.contentRectForFrameRect(m_window.frame()));
    return {rect.topLeft(), rect.size().expandedTo(QSize(0, 0))};
}

void TopLevelPeer::applyFrame() {
    if (m_shake) {
        return;
    }
    const QPointer<HostWidget> widget = m_widget;
    widget->expectEchoes();
    applyLimits();
    m_isAdopting = true;
    widget->setGeometry(wantedGeometry());
    m_isAdopting = false;
}

void TopLevelPeer::adoptGeometry() {
    if (m_isAdopting || m_shake || !m_widget->isVisible() || m_widget->isMinimized()) {
        return;
    }
    const QRect now = m_widget->geometry();
    const QRect wanted = wantedGeometry();
    // No desktop has windows of no extent.
    if (now == wanted || (now.topLeft() == wanted.topLeft() && now.size() == wanted.size().expandedTo(QSize(1, 1)))) {
        return;
    }
    // What has stayed where it was keeps its exact place.
    const NSRect shown = screenRect(now);
    NSRect content = m_window.contentRectForFrameRect(m_window.frame());
    if (now.width() != wanted.width()) {
        content.size.width = shown.size.width;
    }
    if (now.height() != wanted.height()) {
        content.size.height = shown.size.height;
    }
    if (now.x() != wanted.x()) {
        content.origin.x = shown.origin.x;
    }
    if (now.y() + now.height() != wanted.y() + wanted.height()) {
        content.origin.y = shown.origin.y;
    }
    const Ref<NSWindow> kept(&m_window);
    m_isAdopting = true;
    duringEvent(
        [&] { send<void>(&m_window, "setFrame:display:"_sel, m_window.frameRectForContentRect(content), true); });
    m_isAdopting = false;
}

void TopLevelPeer::applyFirstResponder() {
    const Ref<NSResponder> first = m_window.firstResponder();
    auto* const view = cast<NSView>(first.get());
    if (view && view->peer()) {
        view->peer()->takeKeyboard();
    } else {
        m_widget->setFocus(Qt::OtherFocusReason);
    }
}

void TopLevelPeer::show() {
    const Ref<NSWindow> kept(&m_window);
    ensureWidget();
    if (m_widget && !m_widget->isVisible()) {
        m_widget->expectEchoes();
        m_window.isMiniaturized() ? m_widget->showMinimized() : m_widget->show();
    }
}

void TopLevelPeer::orderAbove(NSWindow*) {
    const Ref<NSWindow> kept(&m_window);
    show();
    // Qt can only bring a window to the very front, so those that stay in front of it follow.
    const Ref<NSArray> order = NSApplication::sharedApplication()->orderedWindows();
    NSUInteger place = order->count();
    for (NSUInteger i = 0; i < order->count(); ++i) {
        if (order->objectAtIndex(i) == &m_window) {
            place = i;
        }
    }
    if (m_widget) {
        bringToFront(*m_widget);
    }
    for (NSUInteger i = place < order->count() ? place : 0; i > 0; --i) {
        const id other = order->objectAtIndex(i - 1);
        QWidget* const above = widget(cast<NSWindow>(other.get()));
        if (above && above->isVisible()) {
            bringToFront(*above);
        }
    }
}

void TopLevelPeer::orderBelow(NSWindow* relative) {
    if (relative) {
        orderAbove(nullptr);
        return;
    }
    const Ref<NSWindow> kept(&m_window);
    show();
    if (m_widget) {
        m_widget->lower();
    }
}

void TopLevelPeer::orderOut() {
    if (m_widget) {
        m_widget->hide();
    }
}

void TopLevelPeer::takeKeyboard() {
    if (m_widget && m_widget->isVisible() && !std::exchange(m_widget->m_isGivenKeyboard, false)) {
        m_widget->activateWindow();
    }
}

void TopLevelPeer::playFrameOrigins(std::span<const NSPoint> points, double seconds) {
    if (!m_widget) {
        return;
    }
    if (m_shake) {
        m_shake->stop();
    }
    m_shake = playOrigins(m_window, *m_widget, points, seconds, [widget = QPointer<QWidget>(m_widget)] {
        // A widget that goes takes the animation along when it is no host any more, but still a widget.
        const auto* const host = dynamic_cast<HostWidget*>(widget.data());
        const Ref<NSWindow> window = host ? host->shownWindow() : nullptr;
        if (TopLevelPeer* const peer = host ? host->peer(window) : nullptr) {
            peer->m_shake.clear();
            peer->applyFrame();
        }
    });
}

} // namespace zr::qt
