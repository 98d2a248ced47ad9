#include <zrbasic/platform/foundation/dispatch_queue.h>

#include <zrbasic/platform/foundation/clock.h>
#include <zrbasic/platform/runtime/exception.h>

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace zr;
using std::chrono::nanoseconds;

class MainQueue : public testing::Test {
  protected:
    void SetUp() override {
        setMainQueueWakeUpHandler({});
        while (drainMainQueue() != 0) {
        }
        ASSERT_FALSE(timeUntilMainQueueWork()) << "another test left something behind";
    }
    void TearDown() override { setMainQueueWakeUpHandler({}); }

    /// Queues a callback that writes its name down.
    void queue(const std::string& name) {
        dispatch_async(dispatch_get_main_queue(), [this, name] { log += name; });
    }

    /// A minute from now: far enough never to be reached by a test that passes.
    static dispatch_time_t minute() { return dispatch_time(DISPATCH_TIME_NOW, 60'000'000'000); }

    std::string log;
};

TEST_F(MainQueue, runsLaterEvenWhenCalledOnTheMainThread) {
    queue("a");
    queue("b");
    EXPECT_EQ(log, "");
    EXPECT_EQ(drainMainQueue(), 2u);
    EXPECT_EQ(log, "ab");
    EXPECT_EQ(drainMainQueue(), 0u);
    EXPECT_EQ(log, "ab");
}

TEST_F(MainQueue, isAlwaysTheSame) {
    EXPECT_TRUE(dispatch_get_main_queue());
    EXPECT_EQ(dispatch_get_main_queue(), dispatch_get_main_queue());
}

TEST_F(MainQueue, takesNothingEmptyAndNothingForOthers) {
    dispatch_async(dispatch_get_main_queue(), nullptr);
    dispatch_async(nullptr, [this] { log += "null"; });
    dispatch_async(make<OS_dispatch_queue>(), [this] { log += "other"; });
    dispatch_after(DISPATCH_TIME_NOW, dispatch_get_main_queue(), nullptr);
    dispatch_after(DISPATCH_TIME_NOW, nullptr, [this] { log += "null"; });
    dispatch_after(DISPATCH_TIME_NOW, make<OS_dispatch_queue>(), [this] { log += "other"; });
    EXPECT_FALSE(timeUntilMainQueueWork());
    EXPECT_EQ(drainMainQueue(), 0u);
    EXPECT_EQ(log, "");
}

TEST_F(MainQueue, leavesWhatACallbackPutsInToTheNextDrain) {
    dispatch_async(dispatch_get_main_queue(), [this] {
        log += "a";
        queue("c");
    });
    queue("b");
    EXPECT_EQ(drainMainQueue(), 2u);
    EXPECT_EQ(log, "ab");
    EXPECT_EQ(drainMainQueue(), 1u);
    EXPECT_EQ(log, "abc");
}

TEST_F(MainQueue, isNotHeldUpByACallbackThatPutsItselfInAgain) {
    int calls = 0;
    bool isEnough = false;
    std::function<void()> again = [&] {
        ++calls;
        if (!isEnough) {
            dispatch_async(dispatch_get_main_queue(), again);
        }
    };
    dispatch_async(dispatch_get_main_queue(), again);
    EXPECT_EQ(drainMainQueue(), 1u);
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(runMainQueueUntil(dispatch_time(DISPATCH_TIME_NOW, 1'000'000))) << "the deadline ends that, too";
    EXPECT_GT(calls, 1);
    isEnough = true;
    EXPECT_EQ(drainMainQueue(), 1u);
}

TEST_F(MainQueue, mayBeDrainedByACallback) {
    dispatch_async(dispatch_get_main_queue(), [this] {
        log += "(";
        queue("c");
        EXPECT_EQ(drainMainQueue(), 2u);
        log += ")";
    });
    queue("b");
    EXPECT_EQ(drainMainQueue(), 1u) << "the inner drain took the rest";
    EXPECT_EQ(log, "(bc)");
}

TEST_F(MainQueue, givesAnExceptionToTheDrainerAndKeepsTheRest) {
    queue("a");
    dispatch_async(dispatch_get_main_queue(), [] { NSException::raise(NSGenericException, "first"); });
    queue("b");
    dispatch_async(dispatch_get_main_queue(), [] { throw std::runtime_error("second"); });
    queue("c");
    EXPECT_THROW(drainMainQueue(), NSException);
    EXPECT_EQ(log, "a");
    EXPECT_EQ(timeUntilMainQueueWork(), nanoseconds(0));
    EXPECT_THROW(runMainQueueUntil(DISPATCH_TIME_FOREVER), std::runtime_error);
    EXPECT_EQ(log, "ab");
    EXPECT_EQ(drainMainQueue(), 1u);
    EXPECT_EQ(log, "abc");
}

TEST_F(MainQueue, letsGoOfACallbackOnceItHasRun) {
    const auto token = std::make_shared<int>(0);
    std::vector<long> uses;
    for (int i = 0; i < 3; ++i) {
        dispatch_async(dispatch_get_main_queue(), [token, &uses] { uses.push_back(token.use_count()); });
    }
    EXPECT_EQ(token.use_count(), 4);
    drainMainQueue();
    EXPECT_EQ(uses, (std::vector<long>{4, 3, 2}));
    EXPECT_EQ(token.use_count(), 1);
}

TEST_F(MainQueue, takesAHundredThousandCallbacks) {
    constexpr int count = 100'000;
    int next = 0;
    bool isInOrder = true;
    for (int i = 0; i < count; ++i) {
        dispatch_async(dispatch_get_main_queue(), [&, i] { isInOrder = isInOrder && next++ == i; });
    }
    EXPECT_EQ(drainMainQueue(), static_cast<std::size_t>(count));
    EXPECT_TRUE(isInOrder);
    EXPECT_EQ(next, count);
}

TEST_F(MainQueue, runsUntilItIsDone) {
    queue("a");
    queue("b");
    queue("c");
    EXPECT_TRUE(runMainQueueUntil(minute(), [this] { return log == "ab"; }));
    EXPECT_EQ(log, "ab") << "asked after every callback";
    EXPECT_TRUE(runMainQueueUntil(minute(), [] { return true; })) << "asked before the first";
    EXPECT_EQ(log, "ab");
    EXPECT_FALSE(runMainQueueUntil(DISPATCH_TIME_NOW));
    EXPECT_EQ(log, "abc");
}

TEST_F(MainQueue, runsUntilTheDeadline) {
    const auto start = std::chrono::steady_clock::now();
    queue("a");
    EXPECT_FALSE(runMainQueueUntil(dispatch_time(DISPATCH_TIME_NOW, 5'000'000)));
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(5));
    EXPECT_EQ(log, "a");
    queue("b");
    EXPECT_FALSE(runMainQueueUntil(dispatch_time(DISPATCH_TIME_NOW, -1))) << "passed: one drain";
    EXPECT_EQ(log, "ab");
    EXPECT_FALSE(runMainQueueUntil(dispatch_walltime(nullptr, 1'000'000)));
    EXPECT_FALSE(runMainQueueUntil(DISPATCH_TIME_NOW, [] { return false; }));
}

TEST_F(MainQueue, runsDeferredCallbacksByTheirDeadlines) {
    OS_dispatch_queue* const main = dispatch_get_main_queue();
    const dispatch_time_t base = dispatch_time(DISPATCH_TIME_NOW, 3'000'000);
    dispatch_after(dispatch_time(base, 2'000'000), main, [this] { log += "c"; });
    dispatch_after(base, main, [this] { log += "a"; });
    dispatch_after(base, main, [this] { log += "b"; });
    dispatch_after(DISPATCH_TIME_FOREVER, main, [this] { log += "never"; });
    queue("0");
    EXPECT_TRUE(runMainQueueUntil(minute(), [this] { return log.size() >= 4; }));
    EXPECT_EQ(log, "0abc");
    EXPECT_FALSE(timeUntilMainQueueWork()) << "forever is not kept";
}

TEST_F(MainQueue, runsWhatIsDueNowBehindWhatIsThere) {
    OS_dispatch_queue* const main = dispatch_get_main_queue();
    dispatch_after(DISPATCH_TIME_NOW, main, [this] { log += "b"; });
    dispatch_after(1, main, [this] { log += "c"; });
    queue("a");
    EXPECT_EQ(drainMainQueue(), 3u);
    EXPECT_EQ(log, "abc");
}

TEST_F(MainQueue, runsDeferredCallbacksByTheTimeOfDay) {
    OS_dispatch_queue* const main = dispatch_get_main_queue();
    dispatch_after(dispatch_walltime(nullptr, 2'000'000), main, [this] { log += "b"; });
    dispatch_after(dispatch_walltime(nullptr, -1'000'000), main, [this] { log += "a"; });
    EXPECT_EQ(timeUntilMainQueueWork(), nanoseconds(0));
    EXPECT_TRUE(runMainQueueUntil(minute(), [this] { return log.size() == 2; }));
    EXPECT_EQ(log, "ab");
}

TEST_F(MainQueue, tellsHowLongItHasNothingToDo) {
    OS_dispatch_queue* const main = dispatch_get_main_queue();
    EXPECT_FALSE(timeUntilMainQueueWork());
    bool hasRun = false;
    const auto end = dispatch_time(DISPATCH_TIME_NOW, 20'000'000);
    dispatch_after(end, main, [&] { hasRun = true; });
    const auto left = timeUntilMainQueueWork();
    ASSERT_TRUE(left);
    EXPECT_LE(*left, std::chrono::milliseconds(20));
    queue("a");
    EXPECT_EQ(timeUntilMainQueueWork(), nanoseconds(0));
    EXPECT_TRUE(runMainQueueUntil(minute(), [&] { return hasRun; }));
    EXPECT_FALSE(timeUntilMainQueueWork());
}

TEST_F(MainQueue, wakesItsLoopOnceForEveryDrain) {
    int wakeUps = 0;
    setMainQueueWakeUpHandler([&] { ++wakeUps; });
    EXPECT_EQ(wakeUps, 0) << "there is nothing to do";
    queue("a");
    EXPECT_EQ(wakeUps, 1);
    queue("b");
    EXPECT_EQ(wakeUps, 1) << "it knows already";
    drainMainQueue();
    queue("c");
    EXPECT_EQ(wakeUps, 2);
    drainMainQueue();
    EXPECT_EQ(wakeUps, 2);
}

TEST_F(MainQueue, wakesItsLoopForWhatIsLeftBehind) {
    int wakeUps = 0;
    setMainQueueWakeUpHandler([&] { ++wakeUps; });
    dispatch_async(dispatch_get_main_queue(), [this] { queue("b"); });
    EXPECT_EQ(wakeUps, 1);
    drainMainQueue();
    EXPECT_EQ(wakeUps, 2) << "for the callback that came in meanwhile";
    dispatch_async(dispatch_get_main_queue(), [] { NSException::raise(NSGenericException, ""); });
    queue("c");
    EXPECT_THROW(drainMainQueue(), NSException);
    EXPECT_EQ(wakeUps, 3) << "for those behind the exception";
    drainMainQueue();
    EXPECT_EQ(log, "bc");
    EXPECT_EQ(wakeUps, 3);
}

TEST_F(MainQueue, wakesItsLoopForEarlierDeadlinesOnly) {
    // What follows must be over before the deadlines are; on a busy machine that may take another try.
    for (std::int64_t delay = 20'000'000;; delay *= 4) {
        int calls = 0;
        std::vector<int> wakeUps{0};
        setMainQueueWakeUpHandler([&] { ++wakeUps.back(); });
        const dispatch_time_t base = dispatch_time(DISPATCH_TIME_NOW, delay);
        for (const std::int64_t delta : {2'000'000, 3'000'000, 0}) {
            drainMainQueue();
            wakeUps.push_back(0);
            dispatch_after(dispatch_time(base, delta), dispatch_get_main_queue(), [&] { ++calls; });
        }
        const bool wasInTime = mach_absolute_time() < base;
        EXPECT_TRUE(runMainQueueUntil(minute(), [&] { return calls == 3; }));
        setMainQueueWakeUpHandler({});
        if (wasInTime) {
            EXPECT_EQ(wakeUps, (std::vector<int>{0, 1, 0, 1})) << "its timer was early enough for the second";
            break;
        }
    }
}

TEST_F(MainQueue, tellsALoopThatJoinsLate) {
    queue("a");
    int wakeUps = 0;
    setMainQueueWakeUpHandler([&] { ++wakeUps; });
    EXPECT_EQ(wakeUps, 1);
    setMainQueueWakeUpHandler({});
    queue("b");
    EXPECT_EQ(wakeUps, 1) << "it has left again";
    EXPECT_EQ(drainMainQueue(), 2u) << "which loses nothing";
    EXPECT_EQ(log, "ab");
}

TEST_F(MainQueue, mayBeUsedByItsWakeUpHandler) {
    const auto token = std::make_shared<int>(0);
    setMainQueueWakeUpHandler([this, token] {
        queue("b");
        // Ends the handler that is running.
        setMainQueueWakeUpHandler({});
        log += std::to_string(token.use_count());
    });
    queue("a");
    EXPECT_EQ(log, "2") << "its captures live while it runs";
    EXPECT_EQ(token.use_count(), 1) << "and no longer";
    drainMainQueue();
    EXPECT_EQ(log, "2ab");
}

} // namespace
