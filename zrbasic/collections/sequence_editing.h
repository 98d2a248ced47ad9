#pragma once

#include <zrbasic/collections/callbacks.h>
#include <zrbasic/platform/runtime/export.h>

/// Taking elements out of arrays and putting others in, as new arrays or in place, without minding missing arguments
/// and indexes past the end.
///
/// Removing goes by value: every element that equals an unwanted one is removed with it, also where the predicate said
/// no. Equality is `isEqual`, of which the unwanted element is asked.
///
/// A null receiver gives null or does nothing. Nothing raises but what is stated, and what a callback throws; then a
/// receiver is as it was.
namespace zr {

class NSArray;
class NSMutableArray;

// NSArray(ZRXHelper)

/// A new array without the elements for which the predicate is true, and without all that equal one of them.
///
/// The predicate sees each element with its index, in order. Raises `NSGenericException` before the next element when
/// it changes the receiver; the result is made of the elements as they were at the beginning.
[[nodiscard]] ZR_EXPORT Ref<NSMutableArray> arrayByRemoveObjectsWhere(NSArray* self, IndexedPredicate predicate);

/// The elements before `index` in an array that will not change; the receiver itself when `index` is at or past its
/// end.
[[nodiscard]] ZR_EXPORT Ref<NSArray> zr_removeObjectsFromIndex(NSArray* self, NSUInteger index);

/// A new array with `object` in place of the element at `index`. A null object deletes the element; an index that is
/// the count appends the object.
///
/// Beyond that, `NSRangeException` is raised for an object, while for null a mere copy is given. A mutable receiver has
/// an operation of this name of its own, which is run instead: it changes the receiver, which is given back, appends
/// nothing and raises for null.
ZR_EXPORT Ref<NSMutableArray> replaceObjectAtIndex_withObject(NSArray* self, NSUInteger index, NSObject* object);

/// A new array of the elements before `index`, at most all, and then those of `objects`; null adds nothing.
[[nodiscard]] ZR_EXPORT Ref<NSMutableArray> zr_replaceObjectsFromIndex_withObjects(NSArray* self, NSUInteger index,
                                                                                   NSArray* objects);

// NSMutableArray(ZRXHelper)

/// Removes the elements from `index` on; does nothing when there are none.
ZR_EXPORT void removeObjectsFromIndex(NSMutableArray* self, NSUInteger index);
/// The same, and then appends the elements of `objects`; null adds nothing. They may be the receiver's own: those that
/// are left when the others are gone.
ZR_EXPORT void replaceObjectsFromIndex_withObjects(NSMutableArray* self, NSUInteger index, NSArray* objects);
/// Appends the object; null is ignored.
ZR_EXPORT void zr_addObject(NSMutableArray* self, NSObject* object);
/// Removes the elements for which the predicate is true, and all that equal one of them.
///
/// The predicate, which is not told the index, sees all elements first. Raises `NSGenericException` before the next
/// element when it changes the receiver; then nothing more is removed.
ZR_EXPORT void removeObjectsWhere(NSMutableArray* self, ElementPredicate predicate);

} // namespace zr
