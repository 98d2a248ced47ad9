#pragma once

#include <zrbasic/platform/foundation/date.h>

#include <functional>
#include <memory>

namespace zr {

namespace detail {
class MainLoop;
struct TimerState;
} // namespace detail

class NSTimer;

/// Called with the timer that fires, which is borrowed until it returns.
using NSTimerBlock = std::function<void(NSTimer* timer)>;

/// Calls back at a date, and again in every interval after it if it repeats.
///
/// A timer fires on the main thread, while the run loop is in a mode that it was added for (see run_loop.h); one that
/// was made but not added never does. Fires that were missed collapse into one, after which it goes on with the first
/// date on its old beat, the first fire plus a multiple of the interval, that is still to come. The beat is kept by a
/// clock that nobody sets.
///
/// Target and user info are kept until the timer is invalidated, which is final; a timer that does not repeat
/// invalidates itself when it has fired. The message is sent with the timer if it takes an argument; a null target and
/// a null selector are never sent anything. While its callback runs, a timer does not fire a second time in a nested
/// loop. An exception of the callback reaches whoever runs the loop; the timer goes on as after any other fire.
///
/// Intervals are in seconds; what is not above 0 counts as 0.0001. A null date has passed. Safe from any thread.
class ZR_EXPORT NSTimer : public NSObject {
    ZR_DECLARE_CLASS(NSTimer, NSObject)
  public:
    NSTimer();
    ~NSTimer() override;

    /// Timers whose first fire is one interval from now, not added to any loop.
    [[nodiscard]] static Ref<NSTimer> timerWithTimeInterval_target_selector_userInfo_repeats(
        NSTimeInterval interval, NSObject* target, SEL selector, NSObject* userInfo, bool repeats);
    [[nodiscard]] static Ref<NSTimer> timerWithTimeInterval_repeats_block(NSTimeInterval interval, bool repeats,
                                                                          NSTimerBlock block);
    /// The same, added to the current thread's loop for the default mode. On another thread than the main one there is
    /// no such loop, and the timer is not added.
    static Ref<NSTimer> scheduledTimerWithTimeInterval_target_selector_userInfo_repeats(NSTimeInterval interval,
                                                                                        NSObject* target, SEL selector,
                                                                                        NSObject* userInfo,
                                                                                        bool repeats);
    static Ref<NSTimer> scheduledTimerWithTimeInterval_repeats_block(NSTimeInterval interval, bool repeats,
                                                                     NSTimerBlock block);

    /// A timer that was set up in no way is not valid.
    id init() override;
    id initWithFireDate_interval_target_selector_userInfo_repeats(NSDate* date, NSTimeInterval interval,
                                                                  NSObject* target, SEL selector, NSObject* userInfo,
                                                                  bool repeats);
    /// An empty block is never called; the timer keeps its beat all the same.
    id initWithFireDate_interval_repeats_block(NSDate* date, NSTimeInterval interval, bool repeats, NSTimerBlock block);

    /// Calls back now, whatever the date, and leaves the beat alone. A timer that does not repeat is invalidated.
    void fire();
    /// Ends it for ever; it lets go of target, user info and block, and the loop of it.
    void invalidate();
    [[nodiscard]] bool isValid() const;

    /// When it fires next; inside the callback, when it should have fired. Once it is invalid, the last of these dates.
    [[nodiscard]] Ref<NSDate> fireDate() const;
    /// Moves the next fire, and the beat with it; the interval stays. A date that has passed means at once.
    ///
    /// Inside the timer's own callback only a date after the fire that is being handled counts; any other leaves the
    /// beat as it was. An invalid timer does nothing.
    void setFireDate(NSDate* date);

    /// 0 for a timer that does not repeat.
    [[nodiscard]] NSTimeInterval timeInterval() const;
    /// What the timer was made with; null once it is invalid.
    [[nodiscard]] id userInfo() const;

  private:
    friend class detail::MainLoop;

    const std::unique_ptr<detail::TimerState> m_state;
};

} // namespace zr
