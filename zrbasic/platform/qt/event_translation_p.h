#pragma once

#include <zrbasic/platform/appkit/event.h>

#include <Qt>

class QKeyEvent;
class QMouseEvent;
class QWheelEvent;
class QPointF;
class QWidget;

/// From Qt's events to ours.
///
/// The control key is the command key, and the "Windows" key is the control key, on every platform: shortcuts are
/// Ctrl+letter where this runs, and are written as command keys.
namespace zr::qt {

[[nodiscard]] NSUInteger modifierFlags(Qt::KeyboardModifiers modifiers);
[[nodiscard]] Qt::KeyboardModifiers keyboardModifiers(NSUInteger flags);
/// What a key press or release types. Keys that type nothing have the private characters U+F700 and up; delete is
/// U+007F, backtab U+0019, and with a command key the letter itself counts. Never null.
[[nodiscard]] Ref<NSString> charactersOf(const QKeyEvent& event);
/// The key that types such a character in place of a letter or a sign; 0 when there is none.
[[nodiscard]] int keyOf(char16_t character);
/// Whether it is a key that only changes what others do.
[[nodiscard]] bool isModifierKey(const QKeyEvent& event);

/// From a point in a widget to the coordinates of its window, whose origin is at the lower left of the content.
[[nodiscard]] NSPoint windowPoint(const QWidget& widget, QPointF point);
/// From there to a point in the top-level widget of the window.
[[nodiscard]] QPointF topLevelPoint(const QWidget& topLevel, NSPoint inWindow);

/// The operation that such an event is handed to, and the event itself, for a widget that it has come to.
struct TranslatedEvent {
    SEL operation;
    Ref<NSEvent> event;
};

/// A press, a release or a move, which is a drag while a button is down; the clicks of a press are counted.
[[nodiscard]] TranslatedEvent translated(const QMouseEvent& event, const QWidget& widget);
/// A notch of the wheel is a line; to the right and upwards is positive.
[[nodiscard]] TranslatedEvent translated(const QWheelEvent& event, const QWidget& widget);
/// `widget` is where the keyboard is.
[[nodiscard]] TranslatedEvent translated(const QKeyEvent& event, const QWidget& widget);
/// About the pointer, at that point in the widget, and an area that it has entered, left or moved in.
[[nodiscard]] Ref<NSEvent> trackingEvent(NSEventType type, NSTrackingArea& area, const QWidget& widget, QPointF point);

} // namespace zr::qt
