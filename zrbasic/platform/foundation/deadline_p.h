#pragma once

#include <zrbasic/platform/foundation/dispatch_time.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <limits>
#include <mutex>

namespace zr::detail {

[[nodiscard]] constexpr bool isWallTime(dispatch_time_t deadline) {
    return deadline != DISPATCH_TIME_FOREVER && (deadline >> 63) != 0;
}

/// Nanoseconds from 1970 to a time of day. They are written negated, which is what sets the highest bit.
[[nodiscard]] constexpr std::int64_t wallNanoseconds(dispatch_time_t deadline) {
    constexpr auto latest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    return static_cast<std::int64_t>(std::min(~deadline + 1, latest));
}

/// What is left until the deadline; zero once it has passed, the longest duration there is for forever.
[[nodiscard]] std::chrono::nanoseconds timeLeft(dispatch_time_t deadline);

/// Waits until `isReady` or the deadline, and says whether it is ready. Asks at least once.
template <class Predicate>
bool waitUntil(std::condition_variable& condition, std::unique_lock<std::mutex>& lock, dispatch_time_t deadline,
               Predicate isReady) {
    if (deadline == DISPATCH_TIME_NOW) {
        return isReady();
    }
    if (deadline == DISPATCH_TIME_FOREVER) {
        condition.wait(lock, isReady);
        return true;
    }
    if (isWallTime(deadline)) {
        using Clock = std::chrono::system_clock;
        const std::chrono::nanoseconds since1970(wallNanoseconds(deadline));
        return condition.wait_until(lock, Clock::time_point(std::chrono::duration_cast<Clock::duration>(since1970)),
                                    isReady);
    }
    using Clock = std::chrono::steady_clock;
    const std::chrono::nanoseconds sinceStart(static_cast<std::int64_t>(deadline));
    return condition.wait_until(lock, Clock::time_point(sinceStart), isReady);
}

} // namespace zr::detail
