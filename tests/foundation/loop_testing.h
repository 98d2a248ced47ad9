#pragma once

#include <zrbasic/platform/foundation/date.h>
#include <zrbasic/platform/foundation/dispatch_queue.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace zr::test {

/// Runs the main thread's loop in small steps, and leaves nothing behind in it.
class LoopTest : public testing::Test {
  protected:
    void SetUp() override {
        setMainQueueWakeUpHandler({});
        settle();
    }
    void TearDown() override {
        setMainQueueWakeUpHandler({});
        settle();
    }

    /// A minute from now: far enough never to be reached by a test that passes.
    static dispatch_time_t minute() { return dispatch_time(DISPATCH_TIME_NOW, 60'000'000'000); }

    /// Runs the loop until the condition holds; false when it takes a minute.
    static bool runUntil(FunctionRef<bool()> isDone) { return runMainQueueUntil(minute(), isDone); }

    /// Runs what is waiting and will be; for loops without repeating timers.
    static void settle() {
        ASSERT_TRUE(runUntil([] { return !timeUntilMainQueueWork(); })) << "something never ends";
    }

    /// Runs everything that can run without waiting.
    static void runReady() {
        while (drainMainQueue() != 0) {
        }
    }

    static Ref<NSDate> past() { return NSDate::distantPast(); }
    static Ref<NSDate> soon() { return NSDate::dateWithTimeIntervalSinceNow(0.002); }

    /// What was written since it was last asked for.
    std::string written() { return std::exchange(log, ""); }

    std::string log;
};

} // namespace zr::test
