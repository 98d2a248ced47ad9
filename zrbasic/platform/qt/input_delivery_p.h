#pragma once

#include <zrbasic/platform/qt/event_translation_p.h>

class QKeyEvent;
class QMouseEvent;
class QWheelEvent;
class QWidget;

namespace zr {
class NSView;
class NSWindow;
} // namespace zr

/// Hands input to objects, as messages.
namespace zr::qt {

/// To that view, of which `at` is the widget that the event's point refers to. A press of the left button makes a view
/// that accepts it the first responder before.
void handOver(QMouseEvent& event, NSView& view, const QWidget& at);
/// Whether anybody may have dealt with it: in a window of ours always, in a foreign one when it did not come out of the
/// views again.
[[nodiscard]] bool handOver(QWheelEvent& event, NSView& view, const QWidget& at);
/// To the window's first responder.
[[nodiscard]] bool handOver(QKeyEvent& event, NSWindow& window, const QWidget& at);
/// Whether it was a key equivalent of something in the window, which has been carried out then.
[[nodiscard]] bool performKeyEquivalent(QKeyEvent& event, NSWindow& window, const QWidget& at);

/// To a view whose control of Qt deals with the event by itself, before that does: only what the view, or its class,
/// has an operation of its own for. Handed on to whatever the view lies in, as a plain responder does, it would be felt
/// twice.
void tellBeside(NSView& view, const TranslatedEvent& event);

/// Sends an event of `from` on to `to`, as if it had come there.
void sendMapped(QMouseEvent& event, const QWidget& from, QWidget& to);
void sendMapped(QWheelEvent& event, const QWidget& from, QWidget& to);

} // namespace zr::qt
