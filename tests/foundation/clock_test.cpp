#include <zrbasic/platform/foundation/clock.h>

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace zr {
namespace {

TEST(MonotonicClock, neverRunsBackwards) {
    std::uint64_t last = mach_absolute_time();
    for (int i = 0; i < 10000; ++i) {
        const std::uint64_t now = mach_absolute_time();
        ASSERT_GE(now, last);
        last = now;
    }
}

TEST(MonotonicClock, ticksAreNanoseconds) {
    mach_timebase_info_data_t base{0, 0};
    EXPECT_EQ(mach_timebase_info(&base), 0);
    EXPECT_EQ(base.numer, 1U);
    EXPECT_EQ(base.denom, 1U);
    EXPECT_EQ(mach_timebase_info(nullptr), 0);
    const auto outerStart = std::chrono::steady_clock::now();
    const std::uint64_t start = mach_absolute_time();
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    const std::uint64_t elapsed = mach_absolute_time() - start;
    const auto outer = std::chrono::steady_clock::now() - outerStart;
    EXPECT_GE(elapsed, 20'000'000U);
    EXPECT_LE(elapsed, static_cast<std::uint64_t>(std::chrono::nanoseconds(outer).count()));
}

} // namespace
} // namespace zr
