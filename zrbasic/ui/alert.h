#pragma once

#include <zrbasic/platform/appkit/alert.h>

#include <concepts>

namespace zr {

// NSAlert(ZRXHelper)

namespace detail {

ZR_EXPORT void setUpAlert(NSAlert* alert, NSObject* title, NSObject* message);

} // namespace detail

/// A new alert of the class `T`: the title becomes its message text and the message its informative text, each only if
/// it is a string. Without a title the alert keeps the platform's own.
template <std::derived_from<NSAlert> T = NSAlert>
[[nodiscard]] Ref<T> alertWithTitle_message(NSObject* title, NSObject* message) {
    Ref<T> alert = make<T>();
    detail::setUpAlert(alert, title, message);
    return alert;
}
template <std::derived_from<NSAlert> T = NSAlert>
[[nodiscard]] Ref<T> alertWithMessage(NSObject* message) {
    return alertWithTitle_message<T>(nullptr, message);
}

/// Runs the alert modally on the main thread and drops the answer. Called on another thread it returns at once; the
/// alert is kept, and runs a tenth of a second after the main queue has come to it, so that the main thread can finish
/// what it is at. Null does nothing. From any thread.
ZR_EXPORT void zr_runModal(NSAlert* self);

} // namespace zr
