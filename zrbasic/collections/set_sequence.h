#pragma once

#include <zrbasic/collections/callbacks.h>
#include <zrbasic/platform/foundation/set.h>
#include <zrbasic/platform/runtime/declare.h>

#include <concepts>

/// Sets without null tests: making and extending them, and the operations on sequences for sets.
///
/// Mapping and filtering a set gives an array, because equal results would otherwise melt into one. Walks take the
/// set's order, whatever that is, and are guarded: a callback that changes the receiver raises `NSGenericException`
/// before the next member is delivered. Nothing else raises but what a callback throws. A null receiver gives null,
/// false, or does nothing.
namespace zr {

class NSMutableArray;
class NSMutableSet;

// NSSet(ZRXHelper)

/// A set of the receiving class with the one object, or empty for null: `zr_setWithObject<NSMutableSet>(quote)`.
template <std::derived_from<NSSet> T = NSSet>
[[nodiscard]] Ref<T> zr_setWithObject(NSObject* object) {
    return make<T>(&NSSet::initWithSet, object ? NSSet::setWithObject(object) : nullptr);
}

/// New sets with the object, or all members or elements, added; the receiver itself for null.
[[nodiscard]] ZR_EXPORT Ref<NSSet> zr_setByAddingObject(NSSet* self, NSObject* object);
[[nodiscard]] ZR_EXPORT Ref<NSSet> zr_setByAddingObjectsFromSet(NSSet* self, NSSet* other);
[[nodiscard]] ZR_EXPORT Ref<NSSet> zr_setByAddingObjectsFromArray(NSSet* self, NSArray* objects);

/// What the transform gives for each member, nulls left out.
[[nodiscard]] ZR_EXPORT Ref<NSMutableArray> zr_map(NSSet* self, ElementTransform transform);
/// The first member for which the predicate is true, itself and not a yes; null when there is none.
[[nodiscard]] ZR_EXPORT id zr_exists(NSSet* self, ElementPredicate predicate);
/// The members for which the predicate is true, in an array.
[[nodiscard]] ZR_EXPORT Ref<NSMutableArray> zr_filter(NSSet* self, ElementPredicate predicate);

// NSMutableSet(ZRXHelper)

/// Null is ignored in all of these, and contained in none.
ZR_EXPORT void zr_addObject(NSMutableSet* self, NSObject* object);
ZR_EXPORT void zr_removeObject(NSMutableSet* self, NSObject* object);
[[nodiscard]] ZR_EXPORT bool zr_containsObject(NSMutableSet* self, NSObject* object);
ZR_EXPORT void zr_addObjectsFromArray(NSMutableSet* self, NSArray* objects);

} // namespace zr
