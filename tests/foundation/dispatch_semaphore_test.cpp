#include <zrbasic/platform/foundation/dispatch_semaphore.h>

#include <zrbasic/platform/foundation/clock.h>

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace zr;

bool canTake(const dispatch_semaphore_t& semaphore) {
    return dispatch_semaphore_wait(semaphore, DISPATCH_TIME_NOW) == 0;
}

TEST(DispatchSemaphore, letsAsManyPassAsItsCountSays) {
    const auto two = dispatch_semaphore_create(2);
    EXPECT_TRUE(canTake(two));
    EXPECT_TRUE(canTake(two));
    EXPECT_FALSE(canTake(two));
    EXPECT_FALSE(canTake(two)) << "trying takes nothing";
    EXPECT_FALSE(canTake(dispatch_semaphore_create(0)));
    EXPECT_TRUE(canTake(dispatch_semaphore_create(std::numeric_limits<std::int64_t>::max())));
}

TEST(DispatchSemaphore, isNotMadeWithANegativeCount) {
    EXPECT_FALSE(dispatch_semaphore_create(-1));
    EXPECT_FALSE(dispatch_semaphore_create(std::numeric_limits<std::int64_t>::min()));
    EXPECT_TRUE(dispatch_semaphore_create(0));
}

TEST(DispatchSemaphore, countsASignalThatNobodyWaitsFor) {
    const auto semaphore = dispatch_semaphore_create(0);
    EXPECT_EQ(dispatch_semaphore_signal(semaphore), 0);
    EXPECT_EQ(dispatch_semaphore_signal(semaphore), 0);
    EXPECT_EQ(semaphore->waiterCount(), 0u);
    EXPECT_TRUE(canTake(semaphore));
    EXPECT_TRUE(canTake(semaphore));
    EXPECT_FALSE(canTake(semaphore));
}

TEST(DispatchSemaphore, givesUpWhenTheDeadlineComes) {
    const auto semaphore = dispatch_semaphore_create(0);
    const std::uint64_t start = mach_absolute_time();
    const dispatch_time_t deadline = dispatch_time(DISPATCH_TIME_NOW, 20'000'000);
    EXPECT_NE(dispatch_semaphore_wait(semaphore, deadline), 0);
    EXPECT_GE(mach_absolute_time() - start, 20'000'000u) << "not before";
    EXPECT_NE(dispatch_semaphore_wait(semaphore, deadline), 0) << "the same deadline again";
    EXPECT_EQ(semaphore->waiterCount(), 0u);
    dispatch_semaphore_signal(semaphore);
    EXPECT_EQ(dispatch_semaphore_wait(semaphore, deadline), 0) << "a deadline that has passed tries once";
    EXPECT_FALSE(canTake(semaphore)) << "the waits that gave up have taken nothing and left nothing";
}

TEST(DispatchSemaphore, takesAtOnceWhateverTheDeadline) {
    const std::timespec longAgo{1, 0};
    const dispatch_time_t deadlines[] = {DISPATCH_TIME_NOW,
                                         DISPATCH_TIME_FOREVER,
                                         1,
                                         dispatch_time(0, 1'000'000'000),
                                         dispatch_walltime(&longAgo, 0),
                                         dispatch_walltime(nullptr, 1'000'000'000)};
    const auto semaphore = dispatch_semaphore_create(6);
    for (const dispatch_time_t deadline : deadlines) {
        EXPECT_EQ(dispatch_semaphore_wait(semaphore, deadline), 0) << deadline;
    }
    EXPECT_FALSE(canTake(semaphore));
}

TEST(DispatchSemaphore, mayEndBelowItsStart) {
    auto semaphore = dispatch_semaphore_create(3);
    EXPECT_TRUE(canTake(semaphore));
    EXPECT_TRUE(canTake(semaphore));
    const Weak<OS_dispatch_semaphore> watch(semaphore);
    semaphore = nullptr;
    EXPECT_TRUE(watch.expired());
}

TEST(DispatchSemaphore, doesNothingWhenNull) {
    EXPECT_EQ(dispatch_semaphore_wait(nullptr, DISPATCH_TIME_FOREVER), 0);
    EXPECT_EQ(dispatch_semaphore_wait(nullptr, DISPATCH_TIME_NOW), 0);
    EXPECT_EQ(dispatch_semaphore_signal(nullptr), 0);
}

} // namespace
