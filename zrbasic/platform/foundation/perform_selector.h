#pragma once

#include <zrbasic/platform/foundation/date.h>

namespace zr {

class NSArray;

// NSObject(performing)
//
// Messages whose name is known only while the program runs, now or later. When their types are known, `send` says the
// same and hands over numbers as well.
//
// A null receiver does nothing; otherwise the null selector raises `NSInvalidArgumentException`, at once. A message is
// sent as many of the given objects as its name takes. Receiver and argument of a deferred message are kept until it was
// sent.

/// Sends the message and gives its result; null when that is no object.
ZR_EXPORT id performSelector_withObject(NSObject* self, SEL selector, NSObject* argument);
ZR_EXPORT id performSelector_withObject_withObject(NSObject* self, SEL selector, NSObject* first, NSObject* second);

/// Sends the message on the main thread while the run loop is in one of `modes` (see run_loop.h); null, empty, or
/// holding no string, it is never sent. The form without modes takes the common ones.
///
/// When `wait` is true, it has been sent when this returns: on the main thread at once, whatever the mode; elsewhere
/// the caller sleeps until the main thread has come to it. Otherwise it is sent later, even when called on the main
/// thread, in line with the callbacks of the main queue. What a deferred message raises reaches whoever runs the loop,
/// and a caller that waits goes on.
ZR_EXPORT void performSelectorOnMainThread_withObject_waitUntilDone(NSObject* self, SEL selector, NSObject* argument,
                                                                    bool wait);
ZR_EXPORT void performSelectorOnMainThread_withObject_waitUntilDone_modes(NSObject* self, SEL selector,
                                                                          NSObject* argument, bool wait,
                                                                          NSArray* modes);

/// Sends the message after `delay` seconds, never before this returns, on the main thread; the short form in the
/// default mode. Called on another thread, which has no run loop, it is never sent.
ZR_EXPORT void performSelector_withObject_afterDelay(NSObject* self, SEL selector, NSObject* argument,
                                                     NSTimeInterval delay);
ZR_EXPORT void performSelector_withObject_afterDelay_inModes(NSObject* self, SEL selector, NSObject* argument,
                                                             NSTimeInterval delay, NSArray* modes);

} // namespace zr
