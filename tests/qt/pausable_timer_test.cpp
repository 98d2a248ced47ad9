#include "waiting.h"

#include <zrbasic/platform/foundation/run_loop.h>
#include <zrbasic/ui/timer.h>

#include <QElapsedTimer>

#include <gtest/gtest.h>

namespace zr::test {
namespace {

/// Handles events for that many milliseconds.
void waitFor(int milliseconds) {
    QElapsedTimer timer;
    timer.start();
    EXPECT_TRUE(eventually([&] { return timer.elapsed() >= milliseconds; }));
}

TEST(PausableTimerInQt, firesAgainAndAgainInQtsOwnLoop) {
    int fires = 0;
    const auto timer = zr_scheduledTimerWithTimeInterval_repeats_block(0.002, false, [&](NSTimer* firing) {
        if (++fires == 3) {
            firing->invalidate();
        }
    });
    EXPECT_TRUE(eventually([&] { return !timer->isValid(); }));
    EXPECT_EQ(fires, 3) << "although it was told not to repeat";
    waitFor(20);
    EXPECT_EQ(fires, 3);
}

TEST(PausableTimerInQt, standsStillWhileItIsPaused) {
    int fires = 0;
    const auto timer = zr_scheduledTimerWithTimeInterval_repeats_block(0.002, true, [&](NSTimer*) { ++fires; });
    EXPECT_TRUE(eventually([&] { return fires >= 2; }));
    pause(timer);
    const int before = fires;
    waitFor(30);
    EXPECT_EQ(fires, before);
    QElapsedTimer clock;
    clock.start();
    resumeWithDelay(timer, 0.05);
    EXPECT_TRUE(eventually([&] { return fires > before; }));
    EXPECT_GE(clock.elapsed(), 49);
    EXPECT_TRUE(eventually([&] { return fires >= before + 3; })) << "with its old interval from there";
    pause(timer);
    const int later = fires;
    resume(timer);
    EXPECT_TRUE(eventually([&] { return fires > later; }));
    timer->invalidate();
}

TEST(PausableTimerInQt, firesByItsDateOnceItIsAdded) {
    int fires = 0;
    const auto timer = zr_scheduledWithFireDate_timeInterval_repeats_block(NSDate::dateWithTimeIntervalSinceNow(0.002),
                                                                           0.002, false, [&](NSTimer* firing) {
                                                                               if (++fires == 2) {
                                                                                   pause(firing);
                                                                               }
                                                                           });
    waitFor(20);
    EXPECT_EQ(fires, 0);
    NSRunLoop::mainRunLoop()->addTimer_forMode(timer, NSDefaultRunLoopMode());
    EXPECT_TRUE(eventually([&] { return fires == 2; }));
    waitFor(20);
    EXPECT_EQ(fires, 2) << "paused by its own block";
    timer->invalidate();
}

} // namespace
} // namespace zr::test
