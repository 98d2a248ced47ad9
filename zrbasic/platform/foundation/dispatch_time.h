#pragma once

#include <zrbasic/platform/runtime/export.h>

#include <cstdint>
#include <ctime>

/// Deadlines: moments after which a wait gives up or a deferred callback runs.
///
/// A deadline is absolute, so it can be handed on and waited for again without growing. To measure time use
/// `mach_absolute_time`, for the time of day `NSDate`. All of it may be used from any thread; nothing fails.
namespace zr {

/// A deadline: `DISPATCH_TIME_NOW`, `DISPATCH_TIME_FOREVER`, or any other value for one moment.
///
/// With the highest bit clear it counts nanoseconds on the clock of `mach_absolute_time`, which nobody sets; with the
/// bit set it is a time of day and moves when the system's clock is set.
using dispatch_time_t = std::uint64_t;

/// At once: a wait until now tries a single time.
inline constexpr dispatch_time_t DISPATCH_TIME_NOW = 0;
/// Never.
inline constexpr dispatch_time_t DISPATCH_TIME_FOREVER = ~dispatch_time_t{0};

inline constexpr std::uint64_t NSEC_PER_SEC = 1'000'000'000;
inline constexpr std::uint64_t NSEC_PER_MSEC = 1'000'000;
inline constexpr std::uint64_t NSEC_PER_USEC = 1'000;

/// The deadline `delta` nanoseconds after `when`, before it when negative, on the clock of `when`; now stands for the
/// present moment of the clock that nobody sets.
///
/// Too late to be written is forever, and forever stays what it is; too early gives the earliest deadline that there
/// is. So `dispatch_time(DISPATCH_TIME_NOW, -1)` has passed, and is not `DISPATCH_TIME_NOW`.
[[nodiscard]] ZR_EXPORT dispatch_time_t dispatch_time(dispatch_time_t when, std::int64_t delta);

/// The time of day `delta` nanoseconds after `when`, which counts from 1970-01-01 00:00:00 UTC; after the present
/// moment for null. Limited like `dispatch_time`, to 1970 at the earliest.
[[nodiscard]] ZR_EXPORT dispatch_time_t dispatch_walltime(const std::timespec* when, std::int64_t delta);

} // namespace zr
