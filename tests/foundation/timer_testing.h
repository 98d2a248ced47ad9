#pragma once

#include "loop_testing.h"

#include <zrbasic/platform/foundation/clock.h>
#include <zrbasic/platform/foundation/run_loop.h>
#include <zrbasic/platform/foundation/timer.h>

#include <cstdint>
#include <thread>
#include <utility>

namespace zr::test {

/// An interval that nothing waits for: a timer's second fire would come after a hundred years.
inline constexpr double rarely = 1e10;

class TimerTest : public LoopTest {
  protected:
    static void add(NSTimer* timer) { NSRunLoop::mainRunLoop()->addTimer_forMode(timer, NSDefaultRunLoopMode()); }
    static Ref<NSTimer> at(const Ref<NSDate>& date, NSTimeInterval interval, bool repeats, NSTimerBlock block) {
        const auto timer =
            make<NSTimer>(&NSTimer::initWithFireDate_interval_repeats_block, date, interval, repeats, std::move(block));
        add(timer);
        return timer;
    }
    /// Lets so much time pass without running the loop.
    static void spend(double seconds) {
        const auto end = mach_absolute_time() + static_cast<std::uint64_t>(seconds * 1e9);
        while (mach_absolute_time() < end) {
            std::this_thread::yield();
        }
    }
};

/// Counts the calls of a timer's target.
class Ticker : public NSObject {
    ZR_OBJECT(Ticker, NSObject)

  public:
    void tick(NSTimer* timer) {
        ++count;
        last = timer;
    }
    ZR_METHOD(tick, "tick:")
    void plain() { ++count; }
    ZR_METHOD(plain, "plain")
    static void tickClass(NSTimer* timer) { classCount += timer ? 1 : 0; }
    ZR_CLASS_METHOD(tickClass, "tickClass:")

    int count = 0;
    Weak<NSTimer> last;
    static inline int classCount = 0;
};

} // namespace zr::test
