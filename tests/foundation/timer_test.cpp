#include <zrbasic/platform/foundation/timer.h>

#include "timer_testing.h"

#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <thread>
#include <vector>

namespace {

using namespace zr;
using test::rarely;
using test::Ticker;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

class Timer : public test::TimerTest {};

TEST_F(Timer, firesOnceAndIsOver) {
    const Ref<Ticker> ticker = make<Ticker>();
    const auto timer = NSTimer::scheduledTimerWithTimeInterval_target_selector_userInfo_repeats(
        0.001, ticker, "tick:"_sel, "info"_ns, false);
    EXPECT_TRUE(timer->isValid());
    EXPECT_TRUE(timer->userInfo()->isEqual("info"_ns));
    EXPECT_EQ(ticker->count, 0);
    EXPECT_TRUE(runUntil([&] { return !timer->isValid(); }));
    EXPECT_EQ(ticker->count, 1);
    EXPECT_EQ(ticker->last.lock(), timer);
    EXPECT_FALSE(timer->userInfo());
    EXPECT_FALSE(timeUntilMainQueueWork());
}

TEST_F(Timer, repeatsUntilItIsInvalidated) {
    int count = 0;
    const auto timer = NSTimer::scheduledTimerWithTimeInterval_repeats_block(0.001, true, [&](NSTimer* firing) {
        if (++count == 3) {
            firing->invalidate();
        }
    });
    EXPECT_TRUE(runUntil([&] { return !timer->isValid(); }));
    settle();
    EXPECT_EQ(count, 3);
}

TEST_F(Timer, neverFiresUnlessItIsAdded) {
    const Ref<Ticker> ticker = make<Ticker>();
    const auto one =
        NSTimer::timerWithTimeInterval_target_selector_userInfo_repeats(0, ticker, "tick:"_sel, nullptr, true);
    const auto two = NSTimer::timerWithTimeInterval_repeats_block(0, true, [&](NSTimer*) { ++ticker->count; });
    spend(0.001);
    runReady();
    EXPECT_FALSE(timeUntilMainQueueWork());
    EXPECT_EQ(ticker->count, 0);
    add(one);
    add(two);
    EXPECT_TRUE(runUntil([&] { return ticker->count >= 4; }));
    one->invalidate();
    two->invalidate();
}

TEST_F(Timer, firesInOrderOfDates) {
    const auto base = NSDate::dateWithTimeIntervalSinceNow(0.005);
    const auto write = [this](const char* name) { return [this, name](NSTimer*) { log += name; }; };
    at(base->dateByAddingTimeInterval(0.002), 1, false, write("c"));
    at(base, 1, false, write("a"));
    at(base->dateByAddingTimeInterval(0.001), 1, false, write("b"));
    EXPECT_TRUE(runUntil([this] { return log.size() == 3; }));
    EXPECT_EQ(written(), "abc");
}

TEST_F(Timer, firesAllThatAreDueInOneGo) {
    for (const char* const name : {"a", "b", "c"}) {
        at(past(), 1, false, [this, name](NSTimer*) { log += name; });
    }
    EXPECT_GE(drainMainQueue(), 1U);
    EXPECT_EQ(written(), "abc");
    settle();
    EXPECT_EQ(written(), "");
}

TEST_F(Timer, takesAnyIntervalAboveZero) {
    const struct {
        const char* label;
        double interval;
        double used;
    } rows[] = {{"zero", 0, 0.0001},        {"negative", -5, 0.0001},        {"minus infinity", -infinity, 0.0001},
                {"no number", nan, 0.0001}, {"tiny", 1e-300, 1e-300},        {"ordinary", 0.001, 0.001},
                {"huge", 1e300, 1e300},     {"infinite", infinity, infinity}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.label);
        int count = 0;
        const auto repeating = at(past(), row.interval, true, [&](NSTimer*) { ++count; });
        EXPECT_EQ(repeating->timeInterval(), row.used);
        EXPECT_EQ(NSTimer::timerWithTimeInterval_repeats_block(row.interval, false, nullptr)->timeInterval(), 0)
            << "what does not repeat has no interval";
        drainMainQueue();
        EXPECT_EQ(count, 1);
        repeating->invalidate();
        EXPECT_EQ(repeating->timeInterval(), row.used);
        settle();
    }
}

TEST_F(Timer, makesItsFirstFireOneIntervalFromNow) {
    const auto before = NSDate::date();
    const auto timer = NSTimer::timerWithTimeInterval_repeats_block(100, true, nullptr);
    const auto after = NSDate::date();
    EXPECT_GE(timer->fireDate()->timeIntervalSinceDate(before), 100 - 1e-6);
    EXPECT_LE(timer->fireDate()->timeIntervalSinceDate(after), 100 + 1e-6);
    const auto least = NSTimer::timerWithTimeInterval_repeats_block(-1, true, nullptr);
    EXPECT_GT(least->fireDate()->timeIntervalSinceDate(before), 0);
}

TEST_F(Timer, collapsesMissedFiresAndKeepsItsBeat) {
    constexpr double interval = 0.004;
    const auto first = NSDate::dateWithTimeIntervalSinceNow(interval);
    std::vector<double> beats;
    int count = 0;
    const auto timer = at(first, interval, true, [&](NSTimer*) { ++count; });
    EXPECT_EQ(timer->fireDate()->timeIntervalSinceDate(first), 0);
    for (int round = 0; round < 5; ++round) {
        // Several intervals long.
        spend(3.3 * interval);
        drainMainQueue();
        EXPECT_EQ(count, round + 1) << "one for all that were missed";
        const double beat = timer->fireDate()->timeIntervalSinceDate(first) / interval;
        EXPECT_NEAR(beat, std::round(beat), 1e-3) << "no drift";
        beats.push_back(std::round(beat));
    }
    timer->invalidate();
    for (std::size_t i = 1; i < beats.size(); ++i) {
        EXPECT_GE(beats[i] - beats[i - 1], 3);
    }
}

TEST_F(Timer, neverFiresBeforeItsDate) {
    for (int round = 0; round < 20; ++round) {
        const auto date = NSDate::dateWithTimeIntervalSinceNow(0.0007);
        double left = 1;
        const auto timer = at(date, 1, false, [&](NSTimer*) { left = date->timeIntervalSinceNow(); });
        EXPECT_TRUE(runUntil([&] { return !timer->isValid(); }));
        // A date is kept to about a tenth of a microsecond.
        EXPECT_LE(left, 1e-6);
    }
}

TEST_F(Timer, firesAtOnceForADateThatHasPassed) {
    for (const Ref<NSDate>& date :
         {past(), NSDate::date(), Ref<NSDate>(nullptr), NSDate::dateWithTimeIntervalSinceReferenceDate(nan),
          NSDate::dateWithTimeIntervalSinceReferenceDate(-infinity)}) {
        SCOPED_TRACE(date ? date->description()->utf8() : "null");
        int count = 0;
        const auto timer = at(date, rarely, true, [&](NSTimer*) { ++count; });
        drainMainQueue();
        EXPECT_EQ(count, 1);
        // The beat begins when the timer was made.
        EXPECT_GT(timer->fireDate()->timeIntervalSinceNow(), 0);
        EXPECT_LE(timer->fireDate()->timeIntervalSinceNow(), rarely + 1e-5);
        timer->setFireDate(NSDate::distantFuture());
        timer->invalidate();
    }
}

TEST_F(Timer, neverFiresInTheDistantFuture) {
    for (const Ref<NSDate>& date :
         {NSDate::distantFuture(), NSDate::dateWithTimeIntervalSinceReferenceDate(infinity)}) {
        const auto timer = at(date, 1, true, [this](NSTimer*) { log += "never"; });
        EXPECT_FALSE(timeUntilMainQueueWork()) << "nothing to wake up for";
        EXPECT_TRUE(timer->fireDate()->isEqualToDate(date));
        EXPECT_TRUE(timer->isValid());
        timer->invalidate();
    }
    EXPECT_EQ(written(), "");
}

TEST_F(Timer, keepsTargetAndInfoUntilItIsInvalidated) {
    Ref<Ticker> ticker = make<Ticker>();
    Ref<NSObject> info = make<NSObject>();
    const Weak<NSObject> watchedTicker(ticker);
    const Weak<NSObject> watchedInfo(info);
    const auto timer = make<NSTimer>(&NSTimer::initWithFireDate_interval_target_selector_userInfo_repeats,
                                     NSDate::distantFuture(), 1, ticker, "tick:"_sel, info, true);
    ticker = nullptr;
    info = nullptr;
    EXPECT_FALSE(watchedTicker.expired());
    EXPECT_FALSE(watchedInfo.expired());
    timer->invalidate();
    EXPECT_TRUE(watchedTicker.expired());
    EXPECT_TRUE(watchedInfo.expired());
    const auto block = std::make_shared<int>(0);
    const auto other = at(NSDate::distantFuture(), 1, true, [block](NSTimer*) {});
    EXPECT_EQ(block.use_count(), 2);
    other->invalidate();
    EXPECT_EQ(block.use_count(), 1);
}

TEST_F(Timer, isKeptByTheLoopUntilItIsInvalidated) {
    Ref<NSTimer> timer = at(NSDate::distantFuture(), 1, true, nullptr);
    const Weak<NSTimer> watched(timer);
    timer = nullptr;
    ASSERT_FALSE(watched.expired());
    watched.lock()->invalidate();
    EXPECT_TRUE(watched.expired());
}

TEST_F(Timer, isOverForEverOnceItIsInvalid) {
    int count = 0;
    const auto timer = at(past(), rarely, true, [&](NSTimer*) { ++count; });
    timer->invalidate();
    timer->invalidate();
    const auto date = timer->fireDate();
    timer->setFireDate(NSDate::distantFuture());
    EXPECT_TRUE(timer->fireDate()->isEqualToDate(date));
    timer->fire();
    add(timer);
    runReady();
    EXPECT_EQ(count, 0);
    EXPECT_FALSE(timer->isValid());
    EXPECT_FALSE(make<NSTimer>()->isValid()) << "one that was never set up is no better";
}

TEST_F(Timer, movesOnlyItsNextFire) {
    int count = 0;
    const auto timer = at(NSDate::distantFuture(), rarely, true, [&](NSTimer*) { ++count; });
    timer->setFireDate(soon());
    EXPECT_TRUE(runUntil([&] { return count == 1; }));
    EXPECT_EQ(timer->timeInterval(), rarely);
    EXPECT_GT(timer->fireDate()->timeIntervalSinceNow(), 0);
    timer->setFireDate(past());
    EXPECT_TRUE(timer->fireDate()->isEqualToDate(past()));
    runReady();
    EXPECT_EQ(count, 2);
    timer->setFireDate(nullptr);
    runReady();
    EXPECT_EQ(count, 3);
    timer->setFireDate(past());
    timer->setFireDate(NSDate::distantFuture());
    runReady();
    EXPECT_EQ(count, 3) << "taken back in time";
    timer->invalidate();
}

TEST_F(Timer, mayBeMovedBeforeItIsAdded) {
    int count = 0;
    const auto timer = NSTimer::timerWithTimeInterval_repeats_block(rarely, false, [&](NSTimer*) { ++count; });
    timer->setFireDate(past());
    runReady();
    EXPECT_EQ(count, 0);
    add(timer);
    runReady();
    EXPECT_EQ(count, 1);
}

TEST_F(Timer, leavesNothingBehindWhenItIsMovedToAndFro) {
    const auto timer = at(NSDate::distantFuture(), 1, true, nullptr);
    const auto base = NSDate::dateWithTimeIntervalSinceNow(0.05);
    timer->setFireDate(base);
    for (int i = 0; i < 1000; ++i) {
        timer->setFireDate(NSDate::distantFuture());
        timer->setFireDate(base->dateByAddingTimeInterval(0.001 * i));
    }
    timer->invalidate();
    std::size_t callbacks = 0;
    while (timeUntilMainQueueWork()) {
        callbacks += drainMainQueue();
    }
    EXPECT_LE(callbacks, 5U) << "not one for every move";
}

TEST_F(Timer, firesByHandWithoutLosingItsBeat) {
    int count = 0;
    const auto timer = at(NSDate::distantFuture(), 1, true, [&](NSTimer*) { ++count; });
    timer->fire();
    timer->fire();
    EXPECT_EQ(count, 2);
    EXPECT_TRUE(timer->fireDate()->isEqualToDate(NSDate::distantFuture()));
    timer->invalidate();
    const auto once = NSTimer::timerWithTimeInterval_repeats_block(rarely, false, [&](NSTimer*) { ++count; });
    once->fire();
    EXPECT_EQ(count, 3);
    EXPECT_FALSE(once->isValid()) << "fired by hand it is over just the same";
}

TEST_F(Timer, hasNoLoopOnAnotherThread) {
    Ref<NSTimer> timer;
    std::thread([&] {
        timer = NSTimer::scheduledTimerWithTimeInterval_repeats_block(0, false, [this](NSTimer*) { log += 'a'; });
    }).join();
    spend(0.001);
    runReady();
    EXPECT_EQ(written(), "");
    EXPECT_TRUE(timer->isValid());
    EXPECT_FALSE(timeUntilMainQueueWork());
}

TEST_F(Timer, takesAThousandTimers) {
    std::vector<Ref<NSTimer>> timers;
    int count = 0;
    for (int i = 0; i < 1000; ++i) {
        timers.push_back(at(past(), rarely, true, [&](NSTimer*) { ++count; }));
    }
    runReady();
    EXPECT_EQ(count, 1000);
    for (const Ref<NSTimer>& timer : timers) {
        timer->setFireDate(past());
    }
    runReady();
    EXPECT_EQ(count, 2000);
    for (const Ref<NSTimer>& timer : timers) {
        timer->invalidate();
    }
}

TEST_F(Timer, answersMessages) {
    const Ref<Ticker> ticker = make<Ticker>();
    Class* const kind = NSTimer::classObject();
    const auto timer = send<Ref<NSTimer>>(kind, "timerWithTimeInterval:target:selector:userInfo:repeats:"_sel, 0.5,
                                          ticker, "tick:"_sel, box(1), true);
    ASSERT_TRUE(timer);
    EXPECT_TRUE(send<bool>(timer, "isValid"_sel));
    EXPECT_EQ(send<double>(timer, "timeInterval"_sel), 0.5);
    EXPECT_TRUE(send<id>(timer, "userInfo"_sel)->isEqual(box(1)));
    send<>(timer, "fire"_sel);
    EXPECT_EQ(ticker->count, 1);
    send<>(timer, "setFireDate:"_sel, NSDate::distantFuture());
    EXPECT_TRUE(send<Ref<NSDate>>(timer, "fireDate"_sel)->isEqualToDate(NSDate::distantFuture()));
    send<>(timer, "invalidate"_sel);
    EXPECT_FALSE(timer->isValid());
    const auto scheduled =
        send<Ref<NSTimer>>(kind, "scheduledTimerWithTimeInterval:target:selector:userInfo:repeats:"_sel, 0, ticker,
                           "plain"_sel, nullptr, false);
    EXPECT_TRUE(runUntil([&] { return !scheduled->isValid(); }));
    EXPECT_EQ(ticker->count, 2);
    int calls = 0;
    const NSTimerBlock block = [&](NSTimer*) { ++calls; };
    send<Ref<NSTimer>>(kind, "timerWithTimeInterval:repeats:block:"_sel, 1, false, block)->fire();
    send<Ref<NSTimer>>(kind, "scheduledTimerWithTimeInterval:repeats:block:"_sel, 0, false, block)->fire();
    const id fresh = class_createInstance(kind);
    send<id>(fresh, "initWithFireDate:interval:repeats:block:"_sel, past(), 1, false, block);
    send<>(fresh, "fire"_sel);
    EXPECT_EQ(calls, 3);
}

} // namespace
