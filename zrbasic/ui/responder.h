#pragma once

#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/appkit/responder.h>

#include <functional>

namespace zr {

/// Called with an event, which is borrowed until it returns.
using EventObserver = std::function<void(NSEvent* event)>;

// NSResponder(ZRXHelper)
//
// A null receiver does nothing. Main thread only.

/// Switches the keyboard to the plain Latin layout, for fields that take nothing else; when the user does not have
/// that, or the desktop does not tell its layouts, nothing happens.
ZR_EXPORT void changeTextInputSourceToABC(NSResponder* self);

/// Lets `observer` run, for this one responder, after each `action`: an operation that takes an event, such as
/// `mouseDown:`. It replaces the one that observed the same action before.
///
/// Nothing happens for an empty observer, the null selector, and an action that the responder does not have. The
/// observer is kept as long as the responder, so it must not keep the responder itself. An observed action has no
/// result: `performKeyEquivalent:` answers false from then on.
ZR_EXPORT void eventObserver_forEventAction(NSResponder* self, EventObserver observer, SEL action);

} // namespace zr
