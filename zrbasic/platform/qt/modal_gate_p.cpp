#include <zrbasic/platform/qt/modal_gate_p.h>

#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/qt/window_peer_p.h>

#include <QApplication>
#include <QWindow>

namespace zr::qt {
namespace {

bool isForTheGate(const QWidget& topLevel, const QEvent& event) {
    // A window of ours is closed by the program in another way. Of a foreign one Qt does not say who closes it, and a
    // program must be able to.
    return isInput(event.type()) ||
           (event.type() == QEvent::Close && dynamic_cast<const HostWidget*>(&topLevel) != nullptr);
}

/// Whether it is the session's window, belongs to it, or takes the user's attention by Qt's own means.
bool isLetThrough(const QWidget& topLevel, const NSWindow* session) {
    for (const QWidget* widget = &topLevel; widget;) {
        const Ref<NSWindow> window = windowOf(widget);
        if (widget->isModal() || widget->windowType() == Qt::Popup || window == session) {
            return true;
        }
        if (window && NSApplication::sharedApplication()->allowsEventsForWindow(window)) {
            return true;
        }
        widget = widget->parentWidget() ? widget->parentWidget()->window() : nullptr;
    }
    return false;
}

} // namespace

bool isInput(QEvent::Type type) {
    switch (type) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseMove:
        case QEvent::Wheel:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::ShortcutOverride:
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
        case QEvent::TabletPress:
        case QEvent::TabletMove:
        case QEvent::TabletRelease:
        case QEvent::NativeGesture:
        case QEvent::ContextMenu:
        case QEvent::DragEnter:
        case QEvent::DragMove:
        case QEvent::Drop:
            return true;
        default:
            return false;
    }
}

bool isKeptOut(const QWidget& topLevel, QEvent& event) {
    if (!isForTheGate(topLevel, event)) {
        return false;
    }
    const Ref<NSWindow> session = NSApplication::sharedApplication()->modalWindow();
    if (!session || isLetThrough(topLevel, session)) {
        return false;
    }
    // Accepted, it cannot become a shortcut.
    event.setAccepted(event.type() == QEvent::ShortcutOverride);
    return true;
}

} // namespace zr::qt
