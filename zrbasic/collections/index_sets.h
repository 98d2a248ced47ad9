#pragma once

#include <zrbasic/platform/foundation/index_set.h>

#include <concepts>

/// Index sets from ranges that may be "nowhere", such as what a search gave.
///
/// Each gives a set that will not change, whatever the receiving class, and null for a location or a length of
/// `NSNotFound`. Other ranges that reach past the largest index raise `NSRangeException`.
namespace zr {

namespace detail {

[[nodiscard]] ZR_EXPORT Ref<NSIndexSet> indexSetInRange(NSRange range);
[[nodiscard]] ZR_EXPORT Ref<NSIndexSet> indexSetInRangeOfAtMost(NSRange range, NSUInteger maxCount);
[[nodiscard]] ZR_EXPORT Ref<NSIndexSet> indexSetAt(NSUInteger location, NSUInteger length);
[[nodiscard]] ZR_EXPORT Ref<NSIndexSet> indexSetFromZero(NSUInteger length);

} // namespace detail

// NSIndexSet(ZRXHelper)

template <std::derived_from<NSIndexSet> Receiver = NSIndexSet>
[[nodiscard]] Ref<NSIndexSet> zr_indexSetWithIndexesInRange(NSRange range) {
    return detail::indexSetInRange(range);
}

/// Null also when the range is longer than `maxCount`; where it lies does not matter.
template <std::derived_from<NSIndexSet> Receiver = NSIndexSet>
[[nodiscard]] Ref<NSIndexSet> zr_indexSetWithIndexesInRange_maxCount(NSRange range, NSUInteger maxCount) {
    return detail::indexSetInRangeOfAtMost(range, maxCount);
}

template <std::derived_from<NSIndexSet> Receiver = NSIndexSet>
[[nodiscard]] Ref<NSIndexSet> zr_indexSetWithLocation_length(NSUInteger location, NSUInteger length) {
    return detail::indexSetAt(location, length);
}

/// From 0 on.
template <std::derived_from<NSIndexSet> Receiver = NSIndexSet>
[[nodiscard]] Ref<NSIndexSet> zr_indexSetWithLength(NSUInteger length) {
    return detail::indexSetFromZero(length);
}

} // namespace zr
