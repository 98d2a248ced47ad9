#pragma once

#include <zrbasic/platform/foundation/enumerator.h>
#include <zrbasic/platform/runtime/declare.h>
#include <zrbasic/platform/runtime/function_ref.h>
#include <zrbasic/platform/runtime/types.h>

#include <initializer_list>
#include <span>
#include <string_view>
#include <vector>

namespace zr {

class NSString;

/// Called with an object and its index; setting the flag ends the walk.
using ArrayVisitor = FunctionRef<void(NSObject* object, NSUInteger index, bool& stop)>;
/// Says how the first object stands to the second.
using NSComparator = FunctionRef<NSComparisonResult(NSObject* first, NSObject* second)>;

namespace detail {

[[noreturn]] ZR_EXPORT void raiseBeyondBounds(const NSArray& array, std::string_view operation, NSUInteger index);

} // namespace detail

/// Objects in order. The elements are never null; the null object may be one.
///
/// An array made by any operation here is of one of the kinds `__NSArray0` (empty), `__NSSingleObjectArrayI` (one
/// element) and `__NSArrayI`; a copy of a mutable array is a `__NSFrozenArrayM`. The elements are kept. An array that
/// does not change may be read from any thread.
///
///     for (const id& object : names) { ... }
///
/// A null array has nothing to walk over. Changing a mutable array during the walk raises `NSGenericException` before
/// the next object is delivered.
class ZR_EXPORT NSArray : public NSObject {
    ZR_DECLARE_CLASS(NSArray, NSObject)

  public:
    ~NSArray() override;

    /// The empty array: the same object every time.
    [[nodiscard]] static Ref<NSArray> array();
    /// Raises `NSInvalidArgumentException` for null.
    [[nodiscard]] static Ref<NSArray> arrayWithObject(NSObject* object);
    /// Raises `NSInvalidArgumentException` when an element is null.
    [[nodiscard]] static Ref<NSArray> arrayWithObjects(std::initializer_list<id> objects);
    /// The elements of `other`, which may be null, in an array that will not change.
    [[nodiscard]] static Ref<NSArray> arrayWithArray(NSArray* other);
    /// An array that takes the elements over; raises `NSInvalidArgumentException` when one is null.
    [[nodiscard]] static Ref<NSArray> fromElements(std::vector<id> elements);

    id init() override;
    /// Set up with the elements of `other`; null counts as empty.
    virtual id initWithArray(NSArray* other);

    [[nodiscard]] NSUInteger count() const { return m_elements.size(); }

    /// Raises `NSRangeException` past the end, unless crash protection is on for arrays of this kind.
    [[nodiscard]] id objectAtIndex(NSUInteger index) const {
        if (!isa()->isDirect()) [[unlikely]] {
            return sendObjectAtIndex("objectAtIndex:"_sel, index);
        }
        if (index >= m_elements.size()) [[unlikely]] {
            detail::raiseBeyondBounds(*this, "objectAtIndex:", index);
        }
        return m_elements[index];
    }
    /// What `array[index]` stands for: an entry of its own, that is protected apart from `objectAtIndex`.
    [[nodiscard]] id objectAtIndexedSubscript(NSUInteger index) const {
        if (!isa()->isDirect()) [[unlikely]] {
            return sendObjectAtIndex("objectAtIndexedSubscript:"_sel, index);
        }
        if (index >= m_elements.size()) [[unlikely]] {
            detail::raiseBeyondBounds(*this, "objectAtIndexedSubscript:", index);
        }
        return m_elements[index];
    }
    /// Null when the array is empty.
    [[nodiscard]] id firstObject() const { return m_elements.empty() ? id() : m_elements.front(); }
    [[nodiscard]] id lastObject() const { return m_elements.empty() ? id() : m_elements.back(); }

    /// The elements, borrowed: valid while the array lives and, for a mutable one, until it is changed. The cheapest
    /// walk, without the guard of the range-based loop.
    [[nodiscard]] std::span<const id> elements() const { return m_elements; }

    /// By `isEqual`; false for null.
    [[nodiscard]] bool containsObject(NSObject* object) const;
    /// The first equal element's index; `NSNotFound` when there is none, and for null.
    [[nodiscard]] NSUInteger indexOfObject(NSObject* object) const;
    /// The index of the very object.
    [[nodiscard]] NSUInteger indexOfObjectIdenticalTo(NSObject* object) const;

    /// Whether the other one is an array, of whatever kind, with equal elements in the same order.
    [[nodiscard]] bool isEqual(NSObject* other) const override;
    [[nodiscard]] bool isEqualToArray(NSArray* other) const;
    /// The count.
    [[nodiscard]] NSUInteger hash() const override;

    /// Raises `NSInvalidArgumentException` for null.
    [[nodiscard]] Ref<NSArray> arrayByAddingObject(NSObject* object) const;
    /// The receiver's elements, then those of `other`; null adds nothing.
    [[nodiscard]] Ref<NSArray> arrayByAddingObjectsFromArray(NSArray* other) const;
    /// Raises `NSRangeException` when the range ends behind the array.
    [[nodiscard]] Ref<NSArray> subarrayWithRange(NSRange range) const;
    /// Sorted, equal elements in their old order. Raises `NSInvalidArgumentException` without a comparator. An
    /// inconsistent comparator gives some order.
    [[nodiscard]] Ref<NSArray> sortedArrayUsingComparator(NSComparator comparator) const;
    /// Sorted by a message with one object argument that gives an `NSComparisonResult`, such as "compare:".
    [[nodiscard]] Ref<NSArray> sortedArrayUsingSelector(SEL comparator) const;
    /// The elements' descriptions with `separator` between them; null separates by nothing. Never null.
    [[nodiscard]] Ref<NSString> componentsJoinedByString(NSString* separator) const;

    /// First to last. The enumerator raises like the range-based loop.
    [[nodiscard]] Ref<NSEnumerator> objectEnumerator() const;
    /// Last to first, without a guard: elements behind the current one may be removed meanwhile.
    [[nodiscard]] Ref<NSEnumerator> reverseObjectEnumerator() const;
    /// Walks first to last until the visitor sets its flag; guarded like the range-based loop. No visitor, no walk.
    void enumerateObjectsUsingBlock(ArrayVisitor visitor) const;
    /// Sends the message to every element in order. Raises `NSInvalidArgumentException` for the null selector.
    void makeObjectsPerformSelector(SEL selector) const;
    void makeObjectsPerformSelector_withObject(SEL selector, NSObject* argument) const;

    /// Over several lines, nested collections indented.
    [[nodiscard]] Ref<NSString> description() const override;
    /// The receiver itself when it cannot change.
    [[nodiscard]] id copy() const override;
    /// A new mutable array with the same elements.
    [[nodiscard]] id mutableCopy() const override;

    [[nodiscard]] detail::CollectionIterator<NSArray> begin() const {
        return detail::CollectionIterator<NSArray>(this);
    }
    [[nodiscard]] std::default_sentinel_t end() const { return {}; }

  protected:
    friend class detail::CollectionIterator<NSArray>;

    /// Moves on with every change, so that a walk notices.
    [[nodiscard]] std::uint64_t mutationMark() const { return m_mutations; }
    [[nodiscard]] NSObject* objectAtPosition(std::size_t position) const {
        return position < m_elements.size() ? m_elements[position].get() : nullptr;
    }
    [[nodiscard]] id sendObjectAtIndex(SEL selector, NSUInteger index) const;
    /// Raises `NSRangeException` unless the range lies in the array; `operation` names the caller in the reason.
    void requireRange(std::string_view operation, NSRange range) const;

    /// Sets up a fresh array, whatever its kind.
    static void fill(NSArray& fresh, std::vector<id> elements) { fresh.m_elements = std::move(elements); }

    std::vector<id> m_elements;
    std::uint64_t m_mutations = 0;
};

/// An array of the given objects: `array({"a"_ns, box(1)})`. Raises `NSInvalidArgumentException` when one is null.
[[nodiscard]] ZR_EXPORT Ref<NSArray> array(std::initializer_list<id> objects);

/// For range-based loops over a reference or a pointer, null included.
[[nodiscard]] inline detail::CollectionIterator<NSArray> begin(const NSArray* array) {
    return detail::CollectionIterator<NSArray>(array);
}
[[nodiscard]] inline std::default_sentinel_t end(const NSArray*) {
    return {};
}

} // namespace zr
