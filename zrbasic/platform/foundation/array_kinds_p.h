#pragma once

#include <zrbasic/platform/foundation/concrete_kind_p.h>
#include <zrbasic/platform/foundation/mutable_array.h>

namespace zr::detail {

// The concrete kinds of arrays. Their class names are the interface: crash protection finds them by name.

class EmptyArray final : public NSArray {
    ZR_DECLARE_CLASS(EmptyArray, NSArray)
  public:
    ~EmptyArray() override;
};

class SingleObjectArray final : public NSArray {
    ZR_DECLARE_CLASS(SingleObjectArray, NSArray)
  public:
    ~SingleObjectArray() override;
};

class GeneralArray final : public NSArray {
    ZR_DECLARE_CLASS(GeneralArray, NSArray)
  public:
    ~GeneralArray() override;
};

/// What a mutable array's copy is.
class FrozenArray final : public NSArray {
    ZR_DECLARE_CLASS(FrozenArray, NSArray)
  public:
    ~FrozenArray() override;
};

class PlainMutableArray final : public NSMutableArray {
    ZR_DECLARE_CLASS(PlainMutableArray, NSMutableArray)
  public:
    ~PlainMutableArray() override;
};

/// The two entries for reading by index, without crash protection; every kind has them in its own table, so that
/// exchanging one kind's entry leaves the others alone.
[[nodiscard]] id readAtIndex(NSArray* self, NSUInteger index);
[[nodiscard]] id readAtIndexedSubscript(NSArray* self, NSUInteger index);

/// Sorts with a merge that stays within bounds however inconsistent `comparator` is.
void sortStably(std::vector<id>& elements, NSComparator comparator);

} // namespace zr::detail
