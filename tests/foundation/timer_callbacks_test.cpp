#include "checks.h"
#include "timer_testing.h"

#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace {

using namespace zr;
using test::raised;
using test::raisedName;
using test::rarely;
using test::Ticker;

class TimerCallback : public test::TimerTest {};

TEST_F(TimerCallback, isValidUntilItsOnlyCallbackIsOver) {
    bool wasValid = false;
    const auto timer = at(past(), 1, false, [&](NSTimer* firing) { wasValid = firing->isValid(); });
    runReady();
    EXPECT_TRUE(wasValid);
    EXPECT_FALSE(timer->isValid());
}

TEST_F(TimerCallback, honoursOnlyALaterDateInItsOwnCallback) {
    const struct {
        const char* label;
        /// Seconds after the fire that is handled.
        std::vector<double> moves;
        double expected;
    } rows[] = {
        {"none", {}, rarely},
        {"the fire itself", {0}, rarely},
        {"before it", {-0.001}, rarely},
        {"long before it", {-1e9}, rarely},
        {"after it", {0.25}, 0.25},
        {"long after it", {5e9}, 5e9},
        {"first after it, then before", {0.25, -1}, rarely},
        {"first before it, then after", {-1, 0.25}, 0.25},
        {"nearer than asked first", {0.5, 0.25}, 0.25},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.label);
        Ref<NSDate> handled;
        const auto timer = at(NSDate::date(), rarely, true, [&](NSTimer* firing) {
            handled = firing->fireDate();
            for (const double move : row.moves) {
                firing->setFireDate(handled->dateByAddingTimeInterval(move));
            }
        });
        EXPECT_TRUE(runUntil([&] { return handled != nullptr; }));
        // The beat of a timer that was made a moment late begins that moment late.
        const double early = row.expected - timer->fireDate()->timeIntervalSinceDate(handled);
        EXPECT_LE(early, 1e-5);
        EXPECT_GE(early, row.expected == rarely ? -60 : -1e-5);
        timer->invalidate();
    }
}

TEST_F(TimerCallback, takesNoDateForOneThatHasPassedInItsOwnCallback) {
    int count = 0;
    const auto timer = at(past(), rarely, true, [&](NSTimer* firing) {
        ++count;
        firing->setFireDate(nullptr);
        firing->setFireDate(past());
    });
    runReady();
    EXPECT_EQ(count, 1);
    timer->invalidate();
}

TEST_F(TimerCallback, mayFireAgainAtOnceFromItsOwnCallback) {
    int count = 0;
    const auto timer = at(past(), rarely, true, [&](NSTimer* firing) {
        if (++count < 4) {
            firing->setFireDate(NSDate::date());
        }
    });
    runReady();
    EXPECT_EQ(count, 4);
    timer->setFireDate(NSDate::distantFuture());
    timer->invalidate();
}

TEST_F(TimerCallback, mayFireItselfByHand) {
    const auto timer = at(past(), 1, false, [this](NSTimer* firing) {
        log += 'a';
        if (log.size() < 3) {
            firing->fire();
        }
    });
    runReady();
    EXPECT_EQ(written(), "aaa");
    EXPECT_FALSE(timer->isValid());
}

TEST_F(TimerCallback, takesAClassForItsTarget) {
    Ticker::classCount = 0;
    const auto timer = make<NSTimer>(&NSTimer::initWithFireDate_interval_target_selector_userInfo_repeats, past(), 1,
                                     Ticker::classObject(), "tickClass:"_sel, nullptr, false);
    add(timer);
    runReady();
    EXPECT_EQ(Ticker::classCount, 1);
}

TEST_F(TimerCallback, sendsWhateverMessageTheSelectorNames) {
    const Ref<Ticker> ticker = make<Ticker>();
    const auto with = [](NSObject* target, SEL selector) {
        const auto timer = make<NSTimer>(&NSTimer::initWithFireDate_interval_target_selector_userInfo_repeats, past(),
                                         1, target, selector, nullptr, false);
        add(timer);
        const std::string text = raisedName([] { runReady(); });
        EXPECT_FALSE(timer->isValid());
        return text;
    };
    EXPECT_EQ(with(ticker, "plain"_sel), "");
    EXPECT_EQ(ticker->count, 1) << "a message without an argument gets none";
    EXPECT_EQ(with(nullptr, "tick:"_sel), "");
    EXPECT_EQ(with(ticker, SEL()), "");
    EXPECT_EQ(with(ticker, "noSuchOperation:"_sel), NSInvalidArgumentException);
    EXPECT_EQ(with(NSNull::null(), "isEqual:"_sel), "");
    EXPECT_EQ(ticker->count, 1);
}

TEST_F(TimerCallback, doesNothingWithAnEmptyBlock) {
    const auto timer = at(past(), 1, false, nullptr);
    runReady();
    EXPECT_FALSE(timer->isValid());
}

TEST_F(TimerCallback, letsABlockKeepItsState) {
    std::vector<int> seen;
    const auto timer = NSTimer::timerWithTimeInterval_repeats_block(
        rarely, true, [&seen, count = 0](NSTimer*) mutable { seen.push_back(++count); });
    timer->fire();
    timer->fire();
    EXPECT_EQ(seen, (std::vector{1, 2}));
    timer->invalidate();
}

TEST_F(TimerCallback, goesOnAfterAnException) {
    int count = 0;
    const auto timer = at(past(), 0.001, true, [&](NSTimer*) {
        if (++count == 1) {
            NSException::raise(NSGenericException, "on purpose");
        }
    });
    int others = 0;
    at(past(), 1, false, [&](NSTimer*) { ++others; });
    EXPECT_EQ(raised([] { drainMainQueue(); }), "NSGenericException: on purpose");
    EXPECT_EQ(others, 0);
    EXPECT_TRUE(runUntil([&] { return count >= 3 && others == 1; }));
    timer->invalidate();
    const auto once = at(past(), 1, false, [](NSTimer*) { NSException::raise(NSGenericException, "once"); });
    EXPECT_EQ(raised([] { runReady(); }), "NSGenericException: once");
    EXPECT_FALSE(once->isValid());
    const auto byHand = NSTimer::timerWithTimeInterval_repeats_block(
        1, false, [](NSTimer*) { NSException::raise(NSGenericException, "by hand"); });
    EXPECT_EQ(raised([&] { byHand->fire(); }), "NSGenericException: by hand");
    EXPECT_FALSE(byHand->isValid());
}

TEST_F(TimerCallback, mayBeLetGoByItsOwnCallback) {
    const auto captured = std::make_shared<int>(0);
    Ref<NSTimer> timer;
    long uses = 0;
    timer = at(past(), rarely, true, [&, captured](NSTimer* firing) {
        firing->invalidate();
        timer = nullptr;
        // The block outlives its timer while it runs.
        uses = captured.use_count();
    });
    const Weak<NSTimer> watched(timer);
    runReady();
    EXPECT_EQ(uses, 2);
    EXPECT_EQ(captured.use_count(), 1);
    EXPECT_TRUE(watched.expired());
}

TEST_F(TimerCallback, doesNotFireInALoopNestedInItsOwnCallback) {
    int depth = 0;
    int deepest = 0;
    int count = 0;
    int others = 0;
    const auto other = at(past(), 0.0005, true, [&](NSTimer*) { others += depth; });
    const auto timer = at(past(), 0.0005, true, [&](NSTimer*) {
        deepest = std::max(deepest, ++depth);
        if (++count == 1) {
            const int before = others;
            EXPECT_TRUE(runUntil([&] { return others >= before + 3; })) << "other timers go on";
        }
        --depth;
    });
    EXPECT_TRUE(runUntil([&] { return count >= 3; }));
    EXPECT_EQ(deepest, 1);
    other->invalidate();
    timer->invalidate();
}

TEST_F(TimerCallback, doesNotFireWhatAnotherCallbackEnded) {
    Ref<NSTimer> second;
    at(past(), 1, false, [&](NSTimer*) {
        log += 'a';
        second->invalidate();
    });
    second = at(past(), 1, false, [this](NSTimer*) { log += 'b'; });
    at(past(), 1, false, [this](NSTimer*) { log += 'c'; });
    runReady();
    EXPECT_EQ(written(), "ac");
}

TEST_F(TimerCallback, changesModesUnderItsFeet) {
    std::unique_ptr<RunLoopModeScope> modal;
    at(past(), 1, false, [&](NSTimer*) {
        log += 'a';
        modal = std::make_unique<RunLoopModeScope>(NSModalPanelRunLoopMode());
    });
    at(past(), 1, false, [this](NSTimer*) { log += 'b'; });
    runReady();
    EXPECT_EQ(written(), "a") << "the mode that the other one needs is gone";
    modal = nullptr;
    runReady();
    EXPECT_EQ(written(), "b");
}

TEST_F(TimerCallback, mayWaitForAnotherTimerThatIsDue) {
    bool hasFired = false;
    at(past(), rarely, false, [&](NSTimer*) {
        log += '(';
        EXPECT_TRUE(runUntil([&] { return hasFired; })) << "a modal loop, say";
        log += ')';
    });
    at(past(), rarely, false, [&](NSTimer*) { hasFired = true; });
    runReady();
    EXPECT_EQ(written(), "()");
}

} // namespace
