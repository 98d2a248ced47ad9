#pragma once

#include <zrbasic/platform/runtime/declare.h>
#include <zrbasic/platform/runtime/function_ref.h>
#include <zrbasic/platform/runtime/types.h>

#include <span>
#include <vector>

namespace zr {

/// Called with an index; setting the flag ends the walk.
using IndexVisitor = FunctionRef<void(NSUInteger index, bool& stop)>;

/// A set of indexes, kept as ranges: rows that are selected, columns to be inserted.
///
/// An index lies between 0 and `NSNotFound` - 1; setting up or adding any other raises `NSRangeException`. An empty
/// range is no index, wherever it begins. A set that does not change may be read from any thread.
///
///     for (const NSRange range : rows->ranges()) { ... }
class ZR_EXPORT NSIndexSet : public NSObject {
    ZR_DECLARE_CLASS(NSIndexSet, NSObject)

  public:
    ~NSIndexSet() override;

    /// The empty set.
    [[nodiscard]] static Ref<NSIndexSet> indexSet();
    [[nodiscard]] static Ref<NSIndexSet> indexSetWithIndex(NSUInteger index);
    [[nodiscard]] static Ref<NSIndexSet> indexSetWithIndexesInRange(NSRange range);

    /// These three set a fresh set up, of whatever kind; null counts as empty.
    id initWithIndex(NSUInteger index);
    id initWithIndexesInRange(NSRange range);
    id initWithIndexSet(NSIndexSet* other);

    /// How many indexes there are.
    [[nodiscard]] NSUInteger count() const;
    /// The smallest and the largest index; `NSNotFound` when there is none.
    [[nodiscard]] NSUInteger firstIndex() const;
    [[nodiscard]] NSUInteger lastIndex() const;
    /// The nearest index above, or below, `index`, which need not be in the set; `NSNotFound` when there is none.
    [[nodiscard]] NSUInteger indexGreaterThanIndex(NSUInteger index) const;
    [[nodiscard]] NSUInteger indexLessThanIndex(NSUInteger index) const;

    [[nodiscard]] bool containsIndex(NSUInteger index) const;
    /// Whether every index of the range is there; false for an empty range.
    [[nodiscard]] bool containsIndexesInRange(NSRange range) const;

    /// The indexes as ascending ranges with gaps between them. Borrowed: valid while the set lives and, for a mutable
    /// one, until it is changed.
    [[nodiscard]] std::span<const NSRange> ranges() const { return m_ranges; }
    /// Walks upwards over the indexes that the set has at the beginning, until the visitor sets its flag; the visitor
    /// may change a mutable set. No visitor, no walk.
    void enumerateIndexesUsingBlock(IndexVisitor visitor) const;

    /// Whether the other one is an index set, of whatever kind, with the same indexes.
    [[nodiscard]] bool isEqual(NSObject* other) const override;
    [[nodiscard]] bool isEqualToIndexSet(NSIndexSet* other) const;
    [[nodiscard]] NSUInteger hash() const override;
    /// "<NSIndexSet: 0x...>[number of indexes: 3 (in 2 ranges), indexes: (0-1 5)]"; "(no indexes)" when empty.
    [[nodiscard]] Ref<NSString> description() const override;
    /// The receiver itself when it cannot change.
    [[nodiscard]] id copy() const override;
    [[nodiscard]] id mutableCopy() const override;

  protected:
    /// The first range that ends behind `index`.
    [[nodiscard]] std::vector<NSRange>::const_iterator rangeEndingBehind(NSUInteger index) const;
    /// Raises `NSRangeException` unless the indexes of the range exist; `operation` names the caller in the reason.
    void requireIndexes(const char* operation, NSRange range) const;

    std::vector<NSRange> m_ranges;
};

} // namespace zr
