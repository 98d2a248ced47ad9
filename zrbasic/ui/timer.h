#pragma once

#include <zrbasic/platform/foundation/timer.h>

namespace zr {

// NSTimer(ZRXHelper)
//
// Timers that can be paused, and timers with a block whose target is the timer class. A null timer does nothing, and an
// invalid one is left alone. Inside a timer's own callback these follow the rule of `setFireDate`: only a date after the
// fire that is being handled counts.

/// Puts the next fire off for ever.
ZR_EXPORT void pause(NSTimer* self);
/// Fires at once, and goes on from there with its interval.
ZR_EXPORT void resume(NSTimer* self);
/// The same, `delay` seconds from now; at once when that is not above 0.
ZR_EXPORT void resumeWithDelay(NSTimer* self, NSTimeInterval delay);

/// A timer in the current thread's run loop that calls `block` in every interval, until it is invalidated.
///
/// It repeats, whatever `repeats` says; a block that is to run once invalidates the timer. With an empty block the timer
/// fires and nothing happens. The block is kept until the timer is invalidated.
ZR_EXPORT Ref<NSTimer> zr_scheduledTimerWithTimeInterval_repeats_block(NSTimeInterval interval, bool repeats,
                                                                       NSTimerBlock block);
/// The same with its first fire at `date`, not added to any run loop; the caller does that.
[[nodiscard]] ZR_EXPORT Ref<NSTimer> zr_scheduledWithFireDate_timeInterval_repeats_block(NSDate* date,
                                                                                         NSTimeInterval interval,
                                                                                         bool repeats,
                                                                                         NSTimerBlock block);
/// Calls the block of a timer that one of the two above has made, with the timer. Nothing happens for a timer that is
/// null, invalid, or has another user info.
ZR_EXPORT void zr_blockInvoke(NSTimer* timer);

} // namespace zr
