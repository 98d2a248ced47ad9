#pragma once

#include <zrbasic/platform/foundation/array.h>

namespace zr {

/// An array that can be changed; its concrete kind is `__NSArrayM`.
///
/// Objects that are removed are let go only when the array stands as it will be, so that whatever that triggers may
/// use the array. Not for use from several threads at once.
class ZR_EXPORT NSMutableArray : public NSArray {
    ZR_DECLARE_CLASS(NSMutableArray, NSArray)

  public:
    ~NSMutableArray() override;

    [[nodiscard]] static Ref<NSMutableArray> array();
    /// Empty, with room for `capacity` elements set aside as far as that is sensible.
    [[nodiscard]] static Ref<NSMutableArray> arrayWithCapacity(NSUInteger capacity);
    [[nodiscard]] static Ref<NSMutableArray> arrayWithObject(NSObject* object);
    [[nodiscard]] static Ref<NSMutableArray> arrayWithObjects(std::initializer_list<id> objects);
    [[nodiscard]] static Ref<NSMutableArray> arrayWithArray(NSArray* other);
    [[nodiscard]] static Ref<NSMutableArray> fromElements(std::vector<id> elements);

    id init() override;
    id initWithArray(NSArray* other) override;
    id initWithCapacity(NSUInteger capacity);

    /// Raises `NSInvalidArgumentException` for null.
    void addObject(NSObject* object);
    /// Null adds nothing; the array itself doubles.
    void addObjectsFromArray(NSArray* other);
    /// Before the element at `index`; the count itself appends. Raises `NSRangeException` beyond that and
    /// `NSInvalidArgumentException` for null.
    void insertObject_atIndex(NSObject* object, NSUInteger index);

    /// Raises `NSRangeException` past the end.
    void removeObjectAtIndex(NSUInteger index);
    /// Does nothing when the array is empty.
    void removeLastObject();
    /// Removes every equal element; null removes nothing.
    void removeObject(NSObject* object);
    /// Removes the very object, wherever it occurs.
    void removeObjectIdenticalTo(NSObject* object);
    /// Removes every element that equals one of `other`; null removes nothing.
    void removeObjectsInArray(NSArray* other);
    /// Raises `NSRangeException` when the range ends behind the array.
    void removeObjectsInRange(NSRange range);
    void removeAllObjects();

    /// Raises `NSRangeException` past the end and `NSInvalidArgumentException` for null.
    void replaceObjectAtIndex_withObject(NSUInteger index, NSObject* object);
    /// What `array[index] = object` stands for: replaces, or appends when `index` is the count.
    void setObject_atIndexedSubscript(NSObject* object, NSUInteger index);
    /// Raises `NSRangeException` when an index lies past the end.
    void exchangeObjectAtIndex_withObjectAtIndex(NSUInteger first, NSUInteger second);
    /// The elements of `other` and nothing else; null counts as empty.
    void setArray(NSArray* other);
    /// Sorts in place, equal elements in their old order; see `NSArray::sortedArrayUsingComparator`.
    void sortUsingComparator(NSComparator comparator);

    /// An array of the same elements that will not change.
    [[nodiscard]] id copy() const override;

  private:
    /// Puts new elements in place and lets the old ones go afterwards.
    void replaceElements(std::vector<id> elements);
    void removeWhere(FunctionRef<bool(NSObject*)> isUnwanted);
};

} // namespace zr
