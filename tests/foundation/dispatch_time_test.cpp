#include <zrbasic/platform/foundation/dispatch_time.h>

#include <zrbasic/platform/foundation/clock.h>
#include <zrbasic/platform/foundation/dispatch_semaphore.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>

namespace {

using namespace zr;

constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t highest = std::numeric_limits<std::int64_t>::max();
constexpr dispatch_time_t highBit = dispatch_time_t{1} << 63;

/// Whether a wait until then gives up at once. Only for deadlines that are not in the near future.
bool hasPassed(dispatch_time_t deadline) {
    const auto empty = dispatch_semaphore_create(0);
    return dispatch_semaphore_wait(empty, deadline) != 0;
}

TEST(DispatchTime, countsFromNow) {
    const std::uint64_t before = mach_absolute_time();
    const dispatch_time_t soon = dispatch_time(DISPATCH_TIME_NOW, 5 * static_cast<std::int64_t>(NSEC_PER_SEC));
    const std::uint64_t after = mach_absolute_time();
    EXPECT_GE(soon, before + 5'000'000'000);
    EXPECT_LE(soon, after + 5'000'000'000);
    const dispatch_time_t now = dispatch_time(DISPATCH_TIME_NOW, 0);
    EXPECT_GE(now, after);
    EXPECT_NE(now, DISPATCH_TIME_NOW) << "a moment, not the constant";
}

TEST(DispatchTime, countsFromAnyDeadline) {
    EXPECT_EQ(dispatch_time(1000, 234), 1234u);
    EXPECT_EQ(dispatch_time(1000, -234), 766u);
    EXPECT_EQ(dispatch_time(1000, 0), 1000u);
    EXPECT_EQ(NSEC_PER_SEC, 1000 * NSEC_PER_MSEC);
    EXPECT_EQ(NSEC_PER_MSEC, 1000 * NSEC_PER_USEC);
}

TEST(DispatchTime, isForeverWhenItIsTooLate) {
    EXPECT_EQ(DISPATCH_TIME_FOREVER, std::numeric_limits<std::uint64_t>::max()) << "every bit is set";
    EXPECT_EQ(dispatch_time(DISPATCH_TIME_NOW, highest), DISPATCH_TIME_FOREVER);
    EXPECT_EQ(dispatch_time(2, highest), DISPATCH_TIME_FOREVER);
    EXPECT_EQ(dispatch_time(1, highest - 1), static_cast<dispatch_time_t>(highest)) << "the last moment before";
    EXPECT_EQ(dispatch_time(highBit - 1, 1), DISPATCH_TIME_FOREVER);
    for (const std::int64_t delta : {lowest, std::int64_t{-1}, std::int64_t{0}, std::int64_t{1}, highest}) {
        EXPECT_EQ(dispatch_time(DISPATCH_TIME_FOREVER, delta), DISPATCH_TIME_FOREVER) << delta;
    }
}

TEST(DispatchTime, isTheEarliestThereIsWhenItIsTooEarly) {
    for (const dispatch_time_t start : {dispatch_time_t{1}, dispatch_time_t{1000}, highBit - 1}) {
        const dispatch_time_t early = dispatch_time(start, lowest);
        EXPECT_NE(early, DISPATCH_TIME_NOW) << start << ": the constant would move along with the clock";
        EXPECT_EQ(early, 1u) << start;
    }
    EXPECT_EQ(dispatch_time(1000, -1000), 1u);
    EXPECT_EQ(dispatch_time(DISPATCH_TIME_NOW, lowest), 1u);
    EXPECT_TRUE(hasPassed(dispatch_time(DISPATCH_TIME_NOW, lowest)));
    EXPECT_TRUE(hasPassed(dispatch_time(DISPATCH_TIME_NOW, -1)));
}

TEST(DispatchWallTime, hasTheHighestBit) {
    const std::timespec moment{1'600'000'000, 5};
    EXPECT_NE(dispatch_walltime(&moment, 0) & highBit, 0u);
    EXPECT_NE(dispatch_walltime(nullptr, 0) & highBit, 0u);
    EXPECT_NE(dispatch_walltime(&moment, 0), DISPATCH_TIME_FOREVER);
    EXPECT_EQ(dispatch_time(DISPATCH_TIME_NOW, 1) & highBit, 0u) << "the other clock has it not";
}

TEST(DispatchWallTime, isMovedOnItsOwnClock) {
    const std::timespec moment{1'600'000'000, 5};
    const std::timespec later{1'600'000'007, 3};
    const std::int64_t between = 6'999'999'998;
    EXPECT_EQ(dispatch_walltime(&moment, between), dispatch_walltime(&later, 0));
    EXPECT_EQ(dispatch_time(dispatch_walltime(&moment, 0), between), dispatch_walltime(&later, 0));
    EXPECT_EQ(dispatch_time(dispatch_walltime(&later, 0), -between), dispatch_walltime(&moment, 0));
    EXPECT_EQ(dispatch_walltime(&moment, -5), dispatch_walltime(&later, -between - 5));
}

TEST(DispatchWallTime, staysBetween1970AndForever) {
    const std::timespec start{0, 0};
    const std::timespec before{-1'000'000, 0};
    const std::timespec longBefore{std::numeric_limits<std::time_t>::min(), std::numeric_limits<long>::min()};
    const std::timespec beyond{std::numeric_limits<std::time_t>::max(), 0};
    const std::timespec lastSecond{9'223'372'036, 854'775'807};
    const std::timespec behindIt{9'223'372'036, 854'775'808};
    const dispatch_time_t earliest = dispatch_walltime(&start, 0);
    EXPECT_NE(earliest, DISPATCH_TIME_FOREVER);
    EXPECT_EQ(dispatch_walltime(&start, lowest), earliest);
    EXPECT_EQ(dispatch_walltime(&before, 0), earliest);
    EXPECT_EQ(dispatch_walltime(&longBefore, lowest), earliest);
    EXPECT_TRUE(hasPassed(earliest));
    EXPECT_EQ(dispatch_walltime(&beyond, 0), DISPATCH_TIME_FOREVER);
    EXPECT_EQ(dispatch_walltime(&beyond, lowest), DISPATCH_TIME_FOREVER) << "no way back from there";
    EXPECT_NE(dispatch_walltime(&lastSecond, 0), DISPATCH_TIME_FOREVER);
    EXPECT_EQ(dispatch_walltime(&lastSecond, 1), DISPATCH_TIME_FOREVER);
    EXPECT_EQ(dispatch_walltime(&behindIt, 0), DISPATCH_TIME_FOREVER);
    EXPECT_EQ(dispatch_time(dispatch_walltime(&lastSecond, 0), 1), DISPATCH_TIME_FOREVER);
}

TEST(DispatchWallTime, takesAnyBitPattern) {
    // Nobody makes these, but nothing may go wrong: the highest bit alone is the end of time.
    EXPECT_EQ(dispatch_time(highBit, 1), DISPATCH_TIME_FOREVER);
    EXPECT_NE(dispatch_time(highBit, -1) & highBit, 0u);
    const auto free = dispatch_semaphore_create(1);
    EXPECT_EQ(dispatch_semaphore_wait(free, highBit), 0);
    EXPECT_TRUE(hasPassed(DISPATCH_TIME_FOREVER - 1)) << "two nanoseconds after 1970";
}

TEST(DispatchWallTime, passes) {
    EXPECT_TRUE(hasPassed(dispatch_walltime(nullptr, -1)));
    EXPECT_TRUE(hasPassed(dispatch_walltime(nullptr, 1'000'000))) << "a millisecond is over sooner or later";
    const std::timespec then{1'000'000'000, 0};
    EXPECT_TRUE(hasPassed(dispatch_walltime(&then, 0)));
}

RC_GTEST_PROP(DispatchTime, movesForthAndBack, (std::uint32_t start, std::int32_t delta)) {
    const dispatch_time_t when = dispatch_time_t{start} + (dispatch_time_t{1} << 32);
    const dispatch_time_t moved = dispatch_time(when, delta);
    RC_ASSERT(static_cast<std::int64_t>(moved - when) == delta);
    RC_ASSERT(dispatch_time(moved, -static_cast<std::int64_t>(delta)) == when);
}

} // namespace
