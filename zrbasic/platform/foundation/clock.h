#pragma once

#include <zrbasic/platform/runtime/export.h>

#include <cstdint>

/// The monotonic clock, for measuring how long something took. For the time of day use `NSDate`.
namespace zr {

/// The factor that turns ticks into nanoseconds: ticks times `numer` divided by `denom`.
struct mach_timebase_info_data_t {
    std::uint32_t numer;
    std::uint32_t denom;
};

/// Ticks since some moment before the program started; never runs backwards. Safe from any thread.
[[nodiscard]] ZR_EXPORT std::uint64_t mach_absolute_time();

/// Fills in the factor for `mach_absolute_time`, 1/1 here: a tick is a nanosecond. Returns 0; a null `info` is left
/// alone.
ZR_EXPORT int mach_timebase_info(mach_timebase_info_data_t* info);

} // namespace zr
