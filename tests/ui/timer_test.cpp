#include <zrbasic/ui/timer.h>

#include "../foundation/checks.h"
#include "../foundation/loop_testing.h"

#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/run_loop.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <thread>

namespace {

using namespace zr;
using test::raised;

/// An interval that nothing waits for.
constexpr double rarely = 1e10;

class PausableTimer : public test::LoopTest {
  protected:
    static void add(NSTimer* timer) { NSRunLoop::mainRunLoop()->addTimer_forMode(timer, NSDefaultRunLoopMode()); }
    /// One that is due and counts its fires.
    Ref<NSTimer> counting(double interval = rarely) {
        const auto timer =
            zr_scheduledWithFireDate_timeInterval_repeats_block(past(), interval, true, [this](NSTimer*) { ++count; });
        add(timer);
        return timer;
    }

    int count = 0;
};

TEST_F(PausableTimer, doesNotFireWhileItIsPaused) {
    const auto timer = counting();
    pause(timer);
    EXPECT_TRUE(timer->fireDate()->isEqualToDate(NSDate::distantFuture()));
    runReady();
    EXPECT_EQ(count, 0);
    EXPECT_TRUE(timer->isValid());
    pause(timer);
    resume(timer);
    EXPECT_LE(timer->fireDate()->timeIntervalSinceNow(), 0);
    runReady();
    EXPECT_EQ(count, 1);
    EXPECT_EQ(timer->timeInterval(), rarely) << "the interval stays";
    timer->invalidate();
}

TEST_F(PausableTimer, goesOnRepeatingWhenItIsResumed) {
    const auto timer = counting(0.0005);
    EXPECT_TRUE(runUntil([this] { return count >= 2; }));
    pause(timer);
    settle();
    const int before = count;
    resume(timer);
    EXPECT_TRUE(runUntil([&] { return count >= before + 3; }));
    timer->invalidate();
}

TEST_F(PausableTimer, isResumedAfterADelay) {
    const auto timer = counting();
    const auto before = NSDate::date();
    resumeWithDelay(timer, 0.003);
    const double delay = timer->fireDate()->timeIntervalSinceDate(before);
    EXPECT_GE(delay, 0.003 - 1e-6);
    EXPECT_TRUE(runUntil([this] { return count == 1; }));
    EXPECT_GE(-before->timeIntervalSinceNow(), 0.003 - 1e-6);
    resumeWithDelay(timer, 1e10);
    runReady();
    EXPECT_EQ(count, 1);
    for (const double delayThatHasPassed : {0.0, -1.0, -1e10}) {
        resumeWithDelay(timer, delayThatHasPassed);
        runReady();
    }
    EXPECT_EQ(count, 4);
    timer->invalidate();
}

TEST_F(PausableTimer, isLeftAloneOnceItIsInvalid) {
    const auto timer = counting();
    timer->invalidate();
    pause(timer);
    resume(timer);
    resumeWithDelay(timer, 1);
    EXPECT_TRUE(timer->fireDate()->isEqualToDate(past()));
    pause(nullptr);
    resume(nullptr);
    resumeWithDelay(nullptr, 1);
    pause(make<NSTimer>());
    runReady();
    EXPECT_EQ(count, 0);
    EXPECT_FALSE(timer->isValid());
}

TEST_F(PausableTimer, pausesAndResumesInItsOwnCallback) {
    int fires = 0;
    const auto timer = zr_scheduledWithFireDate_timeInterval_repeats_block(past(), 0.0005, true, [&](NSTimer* firing) {
        if (++fires < 3) {
            resume(firing);
        } else {
            pause(firing);
        }
    });
    add(timer);
    EXPECT_TRUE(runUntil([&] { return fires == 3; }));
    settle();
    EXPECT_EQ(fires, 3);
    EXPECT_TRUE(timer->fireDate()->isEqualToDate(NSDate::distantFuture()));
    resumeWithDelay(timer, 0);
    settle();
    EXPECT_EQ(fires, 4);
    timer->invalidate();
}

TEST_F(PausableTimer, takesNoPastDateInItsOwnCallback) {
    const auto timer = zr_scheduledWithFireDate_timeInterval_repeats_block(past(), rarely, true, [&](NSTimer* firing) {
        ++count;
        resumeWithDelay(firing, -5);
    });
    add(timer);
    runReady();
    EXPECT_EQ(count, 1) << "at once would have been for ever";
    timer->invalidate();
}

TEST_F(PausableTimer, repeatsWhateverItWasTold) {
    for (const bool repeats : {false, true}) {
        SCOPED_TRACE(repeats);
        int fires = 0;
        const auto timer = zr_scheduledTimerWithTimeInterval_repeats_block(0.0005, repeats, [&](NSTimer* firing) {
            if (++fires == 3) {
                firing->invalidate();
            }
        });
        EXPECT_EQ(timer->timeInterval(), 0.0005);
        EXPECT_TRUE(runUntil([&] { return !timer->isValid(); }));
        EXPECT_EQ(fires, 3);
        const auto dated = zr_scheduledWithFireDate_timeInterval_repeats_block(past(), rarely, repeats, nullptr);
        dated->fire();
        EXPECT_TRUE(dated->isValid()) << "so does the one with a date";
        EXPECT_EQ(dated->timeInterval(), rarely);
    }
}

TEST_F(PausableTimer, takesAnyIntervalAndDelay) {
    for (const double interval : {0.0, -1.0, double(NAN), -double(INFINITY)}) {
        SCOPED_TRACE(interval);
        int fires = 0;
        const auto timer = zr_scheduledTimerWithTimeInterval_repeats_block(interval, false, [&](NSTimer* firing) {
            if (++fires == 3) {
                firing->invalidate();
            }
        });
        EXPECT_TRUE(runUntil([&] { return !timer->isValid(); }));
        EXPECT_EQ(fires, 3);
        EXPECT_EQ(timer->timeInterval(), 0.0001);
    }
    const auto timer = counting();
    pause(timer);
    resumeWithDelay(timer, NAN);
    runReady();
    EXPECT_EQ(count, 1) << "what is no delay has passed";
    for (const double delay : {1e300, double(INFINITY)}) {
        resumeWithDelay(timer, delay);
        runReady();
    }
    EXPECT_EQ(count, 1);
    resume(timer);
    runReady();
    EXPECT_EQ(count, 2);
    timer->invalidate();
}

TEST_F(PausableTimer, mayBePausedByTheBlockOfAnother) {
    const auto paused = counting(0.0005);
    Ref<NSTimer> pausing =
        zr_scheduledWithFireDate_timeInterval_repeats_block(past(), rarely, true, [&](NSTimer*) { pause(paused); });
    add(pausing);
    runReady();
    const int before = count;
    EXPECT_LE(before, 1);
    settle();
    EXPECT_EQ(count, before);
    pausing->invalidate();
    paused->invalidate();
}

TEST_F(PausableTimer, isAddedToTheLoopOnlyByItsShortForm) {
    const auto dated =
        zr_scheduledWithFireDate_timeInterval_repeats_block(past(), rarely, true, [this](NSTimer*) { ++count; });
    runReady();
    EXPECT_EQ(count, 0);
    add(dated);
    runReady();
    EXPECT_EQ(count, 1);
    dated->invalidate();
    Ref<NSTimer> elsewhere;
    std::thread([&] {
        elsewhere = zr_scheduledTimerWithTimeInterval_repeats_block(0, true, [this](NSTimer*) { ++count; });
    }).join();
    EXPECT_FALSE(timeUntilMainQueueWork()) << "another thread has no loop to add it to";
    EXPECT_TRUE(elsewhere->isValid());
}

TEST_F(PausableTimer, firesAtOnceWithoutADate) {
    const auto timer =
        zr_scheduledWithFireDate_timeInterval_repeats_block(nullptr, rarely, false, [this](NSTimer*) { ++count; });
    add(timer);
    runReady();
    EXPECT_EQ(count, 1);
    timer->invalidate();
}

TEST_F(PausableTimer, keepsItsBlockUntilItIsInvalidated) {
    const auto captured = std::make_shared<int>(0);
    const auto timer =
        zr_scheduledWithFireDate_timeInterval_repeats_block(past(), rarely, true, [captured](NSTimer*) {});
    EXPECT_EQ(captured.use_count(), 2);
    ASSERT_TRUE(timer->userInfo()) << "the block is the user info";
    timer->fire();
    EXPECT_EQ(captured.use_count(), 2);
    timer->invalidate();
    EXPECT_EQ(captured.use_count(), 1);
}

TEST_F(PausableTimer, letsItsBlockEndTheTimer) {
    const auto captured = std::make_shared<int>(0);
    long uses = 0;
    Ref<NSTimer> timer =
        zr_scheduledWithFireDate_timeInterval_repeats_block(past(), rarely, true, [&, captured](NSTimer* firing) {
            firing->invalidate();
            timer = nullptr;
            uses = captured.use_count();
        });
    add(timer);
    runReady();
    EXPECT_EQ(uses, 2);
    EXPECT_EQ(captured.use_count(), 1);
}

TEST_F(PausableTimer, givesItsBlocksExceptionToWhoRunsTheLoop) {
    const auto timer = zr_scheduledWithFireDate_timeInterval_repeats_block(past(), rarely, true, [this](NSTimer*) {
        ++count;
        NSException::raise(NSGenericException, "on purpose");
    });
    add(timer);
    EXPECT_EQ(raised([] { runReady(); }), "NSGenericException: on purpose");
    EXPECT_TRUE(timer->isValid());
    resume(timer);
    EXPECT_EQ(raised([] { runReady(); }), "NSGenericException: on purpose");
    EXPECT_EQ(count, 2);
    timer->invalidate();
}

TEST_F(PausableTimer, invokesTheBlockOfAValidTimer) {
    NSTimer* seen = nullptr;
    const auto timer = zr_scheduledWithFireDate_timeInterval_repeats_block(NSDate::distantFuture(), rarely, true,
                                                                           [&](NSTimer* firing) {
                                                                               seen = firing;
                                                                               ++count;
                                                                           });
    zr_blockInvoke(timer);
    EXPECT_EQ(seen, timer.get());
    EXPECT_EQ(count, 1);
    timer->invalidate();
    zr_blockInvoke(timer);
    EXPECT_EQ(count, 1);
}

TEST_F(PausableTimer, invokesNothingForATimerOfAnotherKind) {
    const auto with = [](NSObject* info) {
        return make<NSTimer>(&NSTimer::initWithFireDate_interval_target_selector_userInfo_repeats, past(), 1,
                             NSTimer::classObject(), "zr_blockInvoke:"_sel, info, true);
    };
    zr_blockInvoke(nullptr);
    zr_blockInvoke(make<NSTimer>());
    for (NSObject* const info : std::initializer_list<NSObject*>{nullptr, NSNull::null(), "text"_ns}) {
        EXPECT_EQ(raised([&] {
                      const auto timer = with(info);
                      zr_blockInvoke(timer);
                      timer->fire();
                  }),
                  "");
    }
    const auto empty = zr_scheduledWithFireDate_timeInterval_repeats_block(past(), 1, true, nullptr);
    EXPECT_FALSE(empty->userInfo());
    EXPECT_EQ(raised([&] { empty->fire(); }), "");
}

TEST_F(PausableTimer, answersMessages) {
    Class* const kind = NSTimer::classObject();
    const NSTimerBlock block = [this](NSTimer*) { ++count; };
    const auto dated = send<Ref<NSTimer>>(kind, "zr_scheduledWithFireDate:timeInterval:repeats:block:"_sel, past(),
                                          rarely, false, block);
    ASSERT_TRUE(dated);
    send<>(kind, "zr_blockInvoke:"_sel, dated);
    EXPECT_EQ(count, 1);
    send<>(kind, "zr_blockInvoke:"_sel, box(1));
    send<>(dated, "pause"_sel);
    EXPECT_TRUE(dated->fireDate()->isEqualToDate(NSDate::distantFuture()));
    send<>(dated, "resume"_sel);
    EXPECT_LE(dated->fireDate()->timeIntervalSinceNow(), 0);
    send<>(dated, "resumeWithDelay:"_sel, 1000);
    EXPECT_GT(dated->fireDate()->timeIntervalSinceNow(), 0);
    const auto scheduled =
        send<Ref<NSTimer>>(kind, "zr_scheduledTimerWithTimeInterval:repeats:block:"_sel, 0.001, false, block);
    EXPECT_TRUE(runUntil([this] { return count == 3; })) << "once more after the first";
    scheduled->invalidate();
}

} // namespace
