#include <zrbasic/platform/foundation/run_loop.h>

#include "checks.h"
#include "loop_testing.h"

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/timer.h>

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <thread>

namespace {

using namespace zr;
using test::raised;

class RunLoop : public test::LoopTest {
  protected:
    /// A timer that is due and writes its name when it fires, once.
    Ref<NSTimer> due(const std::string& name, std::initializer_list<Ref<NSString>> modes) {
        const auto timer = make<NSTimer>(&NSTimer::initWithFireDate_interval_repeats_block, past(), 1, false,
                                         [this, name](NSTimer*) { log += name; });
        for (const Ref<NSString>& mode : modes) {
            loop->addTimer_forMode(timer, mode);
        }
        return timer;
    }
    void perform(const std::string& name, NSString* mode) {
        loop->performInModes_block(array({mode}), [this, name] { log += name; });
    }
    std::string mode() const { return loop->currentMode()->utf8(); }

    const Ref<NSRunLoop> loop = NSRunLoop::mainRunLoop();
};

TEST_F(RunLoop, isOneAndTheMainThreads) {
    ASSERT_TRUE(loop);
    EXPECT_EQ(NSRunLoop::mainRunLoop(), loop);
    EXPECT_EQ(NSRunLoop::currentRunLoop(), loop);
    EXPECT_EQ(send<id>(NSRunLoop::classObject(), "currentRunLoop"_sel), loop);
    std::thread([this] {
        EXPECT_FALSE(NSRunLoop::currentRunLoop());
        EXPECT_EQ(NSRunLoop::mainRunLoop(), loop);
    }).join();
}

TEST_F(RunLoop, namesItsModesAsThePlatformDoes) {
    EXPECT_EQ(NSDefaultRunLoopMode()->utf8(), "kCFRunLoopDefaultMode");
    EXPECT_EQ(NSRunLoopCommonModes()->utf8(), "kCFRunLoopCommonModes");
    EXPECT_EQ(NSModalPanelRunLoopMode()->utf8(), "NSModalPanelRunLoopMode");
    EXPECT_EQ(NSEventTrackingRunLoopMode()->utf8(), "NSEventTrackingRunLoopMode");
}

TEST_F(RunLoop, isInTheModeThatWasSaidLast) {
    EXPECT_EQ(mode(), "kCFRunLoopDefaultMode");
    {
        const RunLoopModeScope modal(NSModalPanelRunLoopMode());
        EXPECT_EQ(mode(), "NSModalPanelRunLoopMode");
        {
            const RunLoopModeScope inner(NSDefaultRunLoopMode());
            EXPECT_EQ(mode(), "kCFRunLoopDefaultMode");
        }
        EXPECT_EQ(mode(), "NSModalPanelRunLoopMode");
    }
    EXPECT_EQ(mode(), "kCFRunLoopDefaultMode");
}

TEST_F(RunLoop, modesMayEndInAnyOrder) {
    std::optional<RunLoopModeScope> outer(std::in_place, NSModalPanelRunLoopMode());
    std::optional<RunLoopModeScope> inner(std::in_place, NSEventTrackingRunLoopMode());
    outer.reset();
    EXPECT_EQ(mode(), "NSEventTrackingRunLoopMode");
    inner.reset();
    EXPECT_EQ(mode(), "kCFRunLoopDefaultMode");
}

TEST_F(RunLoop, cannotBeInWhatIsNoMode) {
    const RunLoopModeScope modal(NSModalPanelRunLoopMode());
    {
        const RunLoopModeScope null(nullptr);
        EXPECT_EQ(mode(), "NSModalPanelRunLoopMode");
        const RunLoopModeScope common(NSRunLoopCommonModes());
        EXPECT_EQ(mode(), "NSModalPanelRunLoopMode");
        std::thread([this] {
            const RunLoopModeScope elsewhere(NSEventTrackingRunLoopMode());
            EXPECT_EQ(mode(), "NSModalPanelRunLoopMode");
        }).join();
    }
    EXPECT_EQ(mode(), "NSModalPanelRunLoopMode") << "their ends change nothing either";
}

TEST_F(RunLoop, keepsTheModesNameAsItWas) {
    const Ref<NSMutableString> name = cast<NSMutableString>("mine"_ns->mutableCopy());
    const RunLoopModeScope scope(name);
    name->appendString(" no more"_ns);
    EXPECT_EQ(mode(), "mine");
    perform("a", NSString::fromUtf8("mine"));
    runReady();
    EXPECT_EQ(written(), "a");
}

TEST_F(RunLoop, firesATimerInItsModesOnly) {
    const Ref<NSString> own = "own"_ns;
    const struct {
        Ref<NSString> current;
        const char* fired;
    } rows[] = {
        {NSDefaultRunLoopMode(), "dcb"},
        {NSModalPanelRunLoopMode(), "mcb"},
        {NSEventTrackingRunLoopMode(), "tc"},
        {own, "o"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.current->utf8());
        const Ref<NSTimer> timers[] = {
            due("d", {NSDefaultRunLoopMode()}),
            due("m", {NSModalPanelRunLoopMode()}),
            due("t", {NSEventTrackingRunLoopMode()}),
            due("o", {own}),
            due("c", {NSRunLoopCommonModes()}),
            due("b", {NSDefaultRunLoopMode(), NSModalPanelRunLoopMode(), NSDefaultRunLoopMode()}),
        };
        {
            const RunLoopModeScope scope(row.current);
            runReady();
            EXPECT_EQ(written(), row.fired);
            EXPECT_FALSE(timeUntilMainQueueWork()) << "what waits for another mode does not keep the loop awake";
        }
        for (const Ref<NSTimer>& timer : timers) {
            timer->invalidate();
        }
        runReady();
        EXPECT_EQ(written(), "");
    }
}

TEST_F(RunLoop, catchesUpWhenTheModeReturns) {
    {
        const RunLoopModeScope modal(NSModalPanelRunLoopMode());
        due("a", {NSDefaultRunLoopMode()});
        perform("1", NSDefaultRunLoopMode());
        due("b", {NSRunLoopCommonModes()});
        perform("2", NSRunLoopCommonModes());
        runReady();
        EXPECT_EQ(written(), "2b") << "timers stand behind what was there already";
    }
    EXPECT_EQ(written(), "") << "not before the loop runs again";
    runReady();
    EXPECT_EQ(written(), "1a");
}

TEST_F(RunLoop, wakesItsToolkitWhenTheModeReturns) {
    int wakeUps = 0;
    {
        const RunLoopModeScope modal(NSModalPanelRunLoopMode());
        due("a", {NSDefaultRunLoopMode()});
        perform("1", NSDefaultRunLoopMode());
        runReady();
        setMainQueueWakeUpHandler([&] { ++wakeUps; });
        EXPECT_EQ(wakeUps, 0);
    }
    EXPECT_EQ(wakeUps, 1);
    runReady();
    EXPECT_EQ(written(), "1a");
}

TEST_F(RunLoop, ignoresTimersThatCannotFire) {
    loop->addTimer_forMode(nullptr, NSDefaultRunLoopMode());
    const auto timer = due("a", {});
    loop->addTimer_forMode(timer, nullptr);
    loop->addTimer_forMode(make<NSTimer>(), NSDefaultRunLoopMode());
    runReady();
    EXPECT_EQ(written(), "");
    timer->invalidate();
    loop->addTimer_forMode(timer, NSDefaultRunLoopMode());
    runReady();
    EXPECT_EQ(written(), "");
    EXPECT_FALSE(timeUntilMainQueueWork());
}

TEST_F(RunLoop, performsInLineWithTheMainQueue) {
    perform("a", NSDefaultRunLoopMode());
    dispatch_async(dispatch_get_main_queue(), [this] { log += 'b'; });
    perform("c", NSRunLoopCommonModes());
    dispatch_async(dispatch_get_main_queue(), [this] { log += 'd'; });
    EXPECT_EQ(written(), "");
    runReady();
    EXPECT_EQ(written(), "abcd");
    runReady();
    EXPECT_EQ(written(), "") << "once only";
}

TEST_F(RunLoop, performsWhatWaitedBeforeWhatCameLater) {
    {
        const RunLoopModeScope modal(NSModalPanelRunLoopMode());
        perform("a", NSDefaultRunLoopMode());
        runReady();
        perform("b", NSDefaultRunLoopMode());
    }
    perform("c", NSDefaultRunLoopMode());
    runReady();
    EXPECT_EQ(written(), "abc");
}

TEST_F(RunLoop, performsNothingForNoModeAndNoBlock) {
    loop->performInModes_block(nullptr, [this] { log += 'a'; });
    loop->performInModes_block(NSArray::array(), [this] { log += 'b'; });
    loop->performInModes_block(array({NSNull::null(), box(1)}), [this] { log += 'c'; });
    loop->performInModes_block(array({NSDefaultRunLoopMode()}), nullptr);
    EXPECT_FALSE(timeUntilMainQueueWork());
    loop->performInModes_block(array({NSNull::null(), NSDefaultRunLoopMode()}), [this] { log += 'd'; });
    runReady();
    EXPECT_EQ(written(), "d");
}

TEST_F(RunLoop, performsWhatABlockAskedFor) {
    loop->performInModes_block(array({NSDefaultRunLoopMode()}), [this] {
        log += '(';
        perform("later", NSDefaultRunLoopMode());
        log += ')';
    });
    runReady();
    EXPECT_EQ(written(), "()later");
}

TEST_F(RunLoop, strandsNothingBehindAnException) {
    {
        const RunLoopModeScope modal(NSModalPanelRunLoopMode());
        loop->performInModes_block(array({NSDefaultRunLoopMode()}),
                                   [] { NSException::raise(NSGenericException, "on purpose"); });
        perform("a", NSDefaultRunLoopMode());
        runReady();
    }
    EXPECT_EQ(raised([] { runReady(); }), "NSGenericException: on purpose");
    runReady();
    EXPECT_EQ(written(), "a");
}

TEST_F(RunLoop, letsGoOfABlockThatHasRun) {
    const auto token = std::make_shared<int>(0);
    loop->performInModes_block(array({NSDefaultRunLoopMode()}), [token] {});
    EXPECT_EQ(token.use_count(), 2);
    runReady();
    EXPECT_EQ(token.use_count(), 1);
}

TEST_F(RunLoop, performsManyBlocks) {
    constexpr int count = 50'000;
    int next = 0;
    bool isInOrder = true;
    for (int i = 0; i < count; ++i) {
        loop->performInModes_block(array({NSRunLoopCommonModes()}), [&, i] { isInOrder = isInOrder && next++ == i; });
    }
    runReady();
    EXPECT_EQ(next, count);
    EXPECT_TRUE(isInOrder);
}

TEST_F(RunLoop, runsOnceInAMode) {
    perform("a", NSModalPanelRunLoopMode());
    loop->performInModes_block(array({NSModalPanelRunLoopMode()}), [this] { log += mode(); });
    perform("b", NSDefaultRunLoopMode());
    EXPECT_TRUE(loop->runMode_beforeDate(NSModalPanelRunLoopMode(), NSDate::distantFuture()));
    EXPECT_EQ(written(), "aNSModalPanelRunLoopMode");
    EXPECT_EQ(mode(), "kCFRunLoopDefaultMode");
    EXPECT_TRUE(loop->runMode_beforeDate(NSDefaultRunLoopMode(), past()));
    EXPECT_EQ(written(), "b");
    EXPECT_TRUE(loop->runMode_beforeDate(NSDefaultRunLoopMode(), nullptr)) << "with nothing to do and no time left";
}

TEST_F(RunLoop, runsUntilSomethingHappens) {
    bool hasFired = false;
    const auto timer = make<NSTimer>(&NSTimer::initWithFireDate_interval_repeats_block, soon(), 1, false,
                                     [&](NSTimer*) { hasFired = true; });
    loop->addTimer_forMode(timer, NSEventTrackingRunLoopMode());
    while (!hasFired) {
        ASSERT_TRUE(loop->runMode_beforeDate(NSEventTrackingRunLoopMode(), NSDate::distantFuture()));
    }
    EXPECT_FALSE(timer->isValid());
}

TEST_F(RunLoop, runsNoLongerThanItsLimit) {
    const auto limit = NSDate::dateWithTimeIntervalSinceNow(0.005);
    EXPECT_TRUE(loop->runMode_beforeDate(NSDefaultRunLoopMode(), limit));
    EXPECT_LE(limit->timeIntervalSinceNow(), 0) << "there was nothing to run, so it waited";
}

TEST_F(RunLoop, doesNotRunWhereItCannot) {
    perform("a", NSDefaultRunLoopMode());
    EXPECT_FALSE(loop->runMode_beforeDate(nullptr, NSDate::distantFuture()));
    EXPECT_FALSE(loop->runMode_beforeDate(NSRunLoopCommonModes(), NSDate::distantFuture()));
    std::thread([this] {
        EXPECT_FALSE(loop->runMode_beforeDate(NSDefaultRunLoopMode(), NSDate::distantFuture()));
    }).join();
    EXPECT_EQ(written(), "");
    runReady();
    EXPECT_EQ(written(), "a");
}

TEST_F(RunLoop, mayRunInsideItself) {
    dispatch_async(dispatch_get_main_queue(), [this] {
        log += '(';
        perform("d", NSDefaultRunLoopMode());
        perform("m", NSModalPanelRunLoopMode());
        EXPECT_TRUE(loop->runMode_beforeDate(NSModalPanelRunLoopMode(), past()));
        log += ')';
    });
    dispatch_async(dispatch_get_main_queue(), [this] { log += 'q'; });
    EXPECT_TRUE(loop->runMode_beforeDate(NSDefaultRunLoopMode(), NSDate::distantFuture()));
    runReady();
    EXPECT_EQ(written(), "(qm)d") << "callbacks of the queue run in every mode";
}

TEST_F(RunLoop, givesAnExceptionToWhoRunsIt) {
    loop->performInModes_block(array({NSModalPanelRunLoopMode()}),
                               [] { NSException::raise(NSGenericException, "on purpose"); });
    EXPECT_EQ(raised([this] { loop->runMode_beforeDate(NSModalPanelRunLoopMode(), past()); }),
              "NSGenericException: on purpose");
    EXPECT_EQ(mode(), "kCFRunLoopDefaultMode");
}

TEST_F(RunLoop, answersMessages) {
    EXPECT_TRUE(send<Ref<NSString>>(loop, "currentMode"_sel)->isEqualToString(NSDefaultRunLoopMode()));
    send<>(loop, "addTimer:forMode:"_sel, due("a", {}), NSDefaultRunLoopMode());
    send<>(loop, "addTimer:forMode:"_sel, box(1), box(2));
    send<>(loop, "performInModes:block:"_sel, array({NSDefaultRunLoopMode()}),
           std::function<void()>([this] { log += 'b'; }));
    EXPECT_TRUE(send<bool>(loop, "runMode:beforeDate:"_sel, NSDefaultRunLoopMode(), past()));
    EXPECT_EQ(written().size(), 2U);
    EXPECT_FALSE(send<bool>(loop, "runMode:beforeDate:"_sel, box(1), box(2)));
    EXPECT_EQ(make<NSRunLoop>()->currentMode(), loop->currentMode()) << "every instance stands for the one loop";
}

} // namespace
