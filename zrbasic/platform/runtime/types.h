#pragma once

#include <cstdint>
#include <limits>

namespace zr {

using NSInteger = std::int64_t;
using NSUInteger = std::uint64_t;

/// The index that means "nowhere": what searches give when nothing was found.
inline constexpr NSUInteger NSNotFound = static_cast<NSUInteger>(std::numeric_limits<NSInteger>::max());

/// A run of `length` elements (UTF-16 code units in text) from `location` on.
struct NSRange {
    NSUInteger location = 0;
    NSUInteger length = 0;

    friend bool operator==(const NSRange&, const NSRange&) = default;
};

[[nodiscard]] constexpr NSRange NSMakeRange(NSUInteger location, NSUInteger length) {
    return {location, length};
}

/// The first index behind `range`; wraps like unsigned arithmetic when the range is not a sensible one.
[[nodiscard]] constexpr NSUInteger NSMaxRange(NSRange range) {
    return range.location + range.length;
}

/// How a receiver stands to an argument: before it, level with it, or behind it.
enum NSComparisonResult : NSInteger {
    NSOrderedAscending = -1,
    NSOrderedSame = 0,
    NSOrderedDescending = 1,
};

} // namespace zr
