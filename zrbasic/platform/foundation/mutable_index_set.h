#pragma once

#include <zrbasic/platform/foundation/index_set.h>

namespace zr {

/// An index set that can be changed. Not for use from several threads at once.
class ZR_EXPORT NSMutableIndexSet : public NSIndexSet {
    ZR_DECLARE_CLASS(NSMutableIndexSet, NSIndexSet)

  public:
    ~NSMutableIndexSet() override;

    [[nodiscard]] static Ref<NSMutableIndexSet> indexSet();
    [[nodiscard]] static Ref<NSMutableIndexSet> indexSetWithIndex(NSUInteger index);
    [[nodiscard]] static Ref<NSMutableIndexSet> indexSetWithIndexesInRange(NSRange range);

    void addIndex(NSUInteger index);
    void addIndexesInRange(NSRange range);
    /// Null adds nothing.
    void addIndexes(NSIndexSet* other);

    /// What is not there is not removed; nothing here raises.
    void removeIndex(NSUInteger index);
    void removeIndexesInRange(NSRange range);
    /// Null removes nothing.
    void removeIndexes(NSIndexSet* other);
    void removeAllIndexes();

    /// A set of the same indexes that will not change.
    [[nodiscard]] id copy() const override;
};

} // namespace zr
