#include <zrbasic/platform/foundation/dispatch_time.h>

#include <zrbasic/platform/foundation/clock.h>
#include <zrbasic/platform/foundation/deadline_p.h>

#include <algorithm>
#include <limits>

namespace zr {
namespace {

constexpr std::int64_t latest = std::numeric_limits<std::int64_t>::max();
// One nanosecond after 1970, negated, would read as forever.
constexpr std::int64_t earliestWallTime = 2;

bool isTooLate(std::int64_t value, std::int64_t delta) {
    return delta > 0 && value > latest - delta;
}

/// The sum; the lowest number there is when it lies below. Must not be too late.
std::int64_t sumNotBelow(std::int64_t value, std::int64_t delta) {
    constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
    return delta < 0 && value < lowest - delta ? lowest : value + delta;
}

dispatch_time_t wallTime(std::int64_t nanoseconds, std::int64_t delta) {
    if (isTooLate(nanoseconds, delta)) {
        return DISPATCH_TIME_FOREVER;
    }
    const std::int64_t sum = sumNotBelow(nanoseconds, delta);
    return ~static_cast<std::uint64_t>(sum < earliestWallTime ? earliestWallTime : sum) + 1;
}

std::int64_t presentWallNanoseconds() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
}

} // namespace

dispatch_time_t dispatch_time(dispatch_time_t when, std::int64_t delta) {
    if (when == DISPATCH_TIME_FOREVER) {
        return DISPATCH_TIME_FOREVER;
    }
    if (detail::isWallTime(when)) {
        return wallTime(detail::wallNanoseconds(when), delta);
    }
    const auto start = static_cast<std::int64_t>(when == DISPATCH_TIME_NOW ? mach_absolute_time() : when);
    if (isTooLate(start, delta)) {
        return DISPATCH_TIME_FOREVER;
    }
    const std::int64_t sum = sumNotBelow(start, delta);
    return sum < 1 ? 1 : static_cast<dispatch_time_t>(sum);
}

dispatch_time_t dispatch_walltime(const std::timespec* when, std::int64_t delta) {
    if (when == nullptr) {
        return wallTime(presentWallNanoseconds(), delta);
    }
    constexpr auto perSecond = static_cast<std::int64_t>(NSEC_PER_SEC);
    constexpr std::int64_t mostSeconds = latest / perSecond;
    if (when->tv_sec > mostSeconds) {
        return DISPATCH_TIME_FOREVER;
    }
    const std::int64_t seconds = perSecond * std::max<std::int64_t>(when->tv_sec, -mostSeconds);
    if (isTooLate(seconds, when->tv_nsec)) {
        return DISPATCH_TIME_FOREVER;
    }
    return wallTime(sumNotBelow(seconds, when->tv_nsec), delta);
}

namespace detail {

std::chrono::nanoseconds timeLeft(dispatch_time_t deadline) {
    if (deadline == DISPATCH_TIME_FOREVER) {
        return std::chrono::nanoseconds::max();
    }
    const bool isWall = isWallTime(deadline);
    const std::int64_t end = isWall ? wallNanoseconds(deadline) : static_cast<std::int64_t>(deadline);
    const std::int64_t now = isWall ? presentWallNanoseconds() : static_cast<std::int64_t>(mach_absolute_time());
    return std::chrono::nanoseconds(end > now ? end - now : 0);
}

} // namespace detail

} // namespace zr
