#include <zrbasic/platform/qt/input_delivery_p.h>

#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/qt/event_loop_p.h>
#include <zrbasic/platform/qt/host_window_p.h>
#include <zrbasic/platform/runtime/message.h>

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QWheelEvent>
#include <QWidget>

namespace zr::qt {
namespace {

QPointF mapped(QPointF point, const QWidget& from, const QWidget& to) {
    return from.window() == to.window() ? to.mapFrom(from.window(), from.mapTo(from.window(), point))
                                        : to.mapFromGlobal(from.mapToGlobal(point));
}

void takeFirstResponder(NSView& view) {
    const Ref<NSWindow> window = view.window();
    if (window && window->firstResponder() != &view && send<bool>(&view, "acceptsFirstResponder"_sel)) {
        send<bool>(window, "makeFirstResponder:"_sel, &view);
    }
}

} // namespace

void handOver(QMouseEvent& event, NSView& view, const QWidget& at) {
    const Ref<NSView> kept(&view);
    const TranslatedEvent translation = translated(event, at);
    duringEvent([&] {
        if (translation.event->type() == NSEventTypeLeftMouseDown) {
            takeFirstResponder(view);
        }
        send<void>(&view, translation.operation, translation.event.get());
    });
}

bool handOver(QWheelEvent& event, NSView& view, const QWidget& at) {
    const Ref<NSView> kept(&view);
    const Ref<NSWindow> window = view.window();
    static_cast<void>(takeUnhandled(window));
    const TranslatedEvent translation = translated(event, at);
    duringEvent([&] { send<void>(&view, translation.operation, translation.event.get()); });
    return !takeUnhandled(window);
}

bool handOver(QKeyEvent& event, NSWindow& window, const QWidget& at) {
    const Ref<NSWindow> kept(&window);
    static_cast<void>(takeUnhandled(&window));
    const TranslatedEvent translation = translated(event, at);
    const Ref<NSResponder> first = window.firstResponder();
    duringEvent([&] { send<void>(first, translation.operation, translation.event.get()); });
    return !takeUnhandled(&window);
}

bool performKeyEquivalent(QKeyEvent& event, NSWindow& window, const QWidget& at) {
    const TranslatedEvent translation = translated(event, at);
    // Keys that are not there to type with; whoever is asked takes no others than those that are meant exactly.
    const NSUInteger asking = NSEventModifierFlagCommand | NSEventModifierFlagControl | NSEventModifierFlagOption;
    const bool isAsking =
        (translation.event->modifierFlags() & asking) != 0 || (event.key() >= Qt::Key_F1 && event.key() <= Qt::Key_F35);
    if (translation.event->type() != NSEventTypeKeyDown || !isAsking) {
        return false;
    }
    const Ref<NSWindow> kept(&window);
    bool isDone = false;
    duringEvent([&] { isDone = send<bool>(&window, "performKeyEquivalent:"_sel, translation.event.get()); });
    return isDone;
}

void tellBeside(NSView& view, const TranslatedEvent& event) {
    if (class_getMethodImplementation(view.isa(), event.operation) ==
        class_getMethodImplementation(NSResponder::classObject(), event.operation)) {
        return;
    }
    const Ref<NSView> kept(&view);
    duringEvent([&] { send<void>(kept, event.operation, event.event); });
}

void sendMapped(QMouseEvent& event, const QWidget& from, QWidget& to) {
    QMouseEvent copy(event.type(), mapped(event.position(), from, to), event.scenePosition(), event.globalPosition(),
                     event.button(), event.buttons(), event.modifiers(), event.pointingDevice());
    copy.setTimestamp(event.timestamp());
    QCoreApplication::sendEvent(&to, &copy);
}

void sendMapped(QWheelEvent& event, const QWidget& from, QWidget& to) {
    QWheelEvent copy(mapped(event.position(), from, to), event.globalPosition(), event.pixelDelta(), event.angleDelta(),
                     event.buttons(), event.modifiers(), event.phase(), event.inverted(), event.source(),
                     event.pointingDevice());
    copy.setTimestamp(event.timestamp());
    QCoreApplication::sendEvent(&to, &copy);
}

} // namespace zr::qt
