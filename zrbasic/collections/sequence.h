#pragma once

#include <zrbasic/collections/callbacks.h>
#include <zrbasic/platform/foundation/mutable_array.h>

#include <concepts>

/// Mapping, filtering, finding and reducing arrays without a loop around it, and reading them without minding their
/// length. Operations that take elements out are in collections/sequence_editing.h, those on sets in
/// collections/set_sequence.h.
///
/// Two ways of walking differ when a callback changes the receiver, and which one an operation uses is part of what it
/// promises. A walk by index asks for the count before each step, so it goes on over what is appended and ends early
/// where elements went, and never raises for a change. A guarded walk raises `NSGenericException` before the next
/// element is delivered.
///
/// A null receiver gives null or zero. Results are new arrays of the caller's unless stated otherwise. Nothing locks
/// the receiver but `zr_reverse`, and nothing throws but what is stated, what a callback throws and `std::bad_alloc`.
namespace zr {

// NSArray(ZRXHelper)

/// What the transform gives for each element and its index, in order, nulls left out. Walks by index.
[[nodiscard]] ZR_EXPORT Ref<NSMutableArray> zr_mapI(NSArray* self, IndexedTransform transform);
/// The same without the index.
[[nodiscard]] ZR_EXPORT Ref<NSMutableArray> zr_map(NSArray* self, ElementTransform transform);
/// As `zr_map`, but the elements of an array that the transform gives are appended one by one; arrays inside it stay
/// whole. A guarded walk.
///
///     zr_flatMap(words, lettersOf)   // ["ab", "c"] with "ab" -> ["a", "b"] and "c" -> "c" gives ["a", "b", "c"]
[[nodiscard]] ZR_EXPORT Ref<NSMutableArray> zr_flatMap(NSArray* self, ElementTransform transform);

/// The first element for which the predicate is true, itself and not a yes; null when there is none. A guarded walk
/// that ends there.
[[nodiscard]] ZR_EXPORT id zr_exists(NSArray* self, ElementPredicate predicate);

/// The first element, combined with the second, the result with the third, and so on; null when the array is empty.
///
/// A single element comes back without a call. What the combiner gives counts, null too. Walks by index.
[[nodiscard]] ZR_EXPORT id zr_reduce(NSArray* self, ElementCombiner combiner);

/// The elements for which the predicate is true, in order. Walks by index.
///
/// The element is fetched again after the predicate said yes: what the predicate put in its place is what the result
/// holds, and `NSRangeException` is raised when the array is by then too short.
[[nodiscard]] ZR_EXPORT Ref<NSMutableArray> zr_filter(NSArray* self, IndexedPredicate predicate);

/// The elements without equal ones, in no particular order.
[[nodiscard]] ZR_EXPORT Ref<NSArray> zr_distinct(NSArray* self);

/// The element at `index`; null past the end. Never raises.
[[nodiscard]] ZR_EXPORT id zr_objectAtIndex(NSArray* self, NSUInteger index);

/// The elements from last to first.
///
/// Holds the receiver's own lock meanwhile, so that a thread which changes the array under the same lock cannot shorten
/// it in between: `const Synchronized lock(array);`. A thread that does not take the lock must not change it.
[[nodiscard]] ZR_EXPORT Ref<NSMutableArray> zr_reverse(NSArray* self);

namespace detail {

[[nodiscard]] ZR_EXPORT Ref<NSMutableArray> repeatMap(NSUInteger count, IndexTransform transform);

} // namespace detail

/// What the transform gives for 0, 1 and so on up to `count` - 1, nulls left out. The receiving class makes no
/// difference.
template <std::derived_from<NSArray> Receiver = NSArray>
[[nodiscard]] Ref<NSMutableArray> zr_repeat_map(NSUInteger count, IndexTransform transform) {
    return detail::repeatMap(count, transform);
}

} // namespace zr
