#pragma once

#include <zrbasic/platform/foundation/array.h>

namespace zr {

/// What became of a list: a plain record, made by `differenceFrom`, which sets mutable arrays of the record's own.
///
/// Values count, neither identity nor places nor how often: a value that both lists have is in `intersection`, once,
/// and in neither of the other two, even if one list has it twice.
class ZR_EXPORT ZRArrayDifference : public NSObject {
    ZR_OBJECT(ZRArrayDifference, NSObject)

  public:
    ~ZRArrayDifference() override;

    /// One element for each value that both lists have, the newer list's, in the order of their first appearance there.
    ZR_PROPERTY(Ref<NSArray>, intersection, setIntersection)
    /// The elements of the newer list whose values the older one does not have, in order, repeated ones repeated.
    ZR_PROPERTY(Ref<NSArray>, newest, setNewest)
    /// The elements of the older list whose values the newer one does not have, in the same way.
    ZR_PROPERTY(Ref<NSArray>, oldest, setOldest)
};

// NSArray(ZRXHelper)

/// Compares the receiver, the older list, with a newer one. Null for a null receiver. Nothing raises.
///
/// Equality is `isEqual`, of which the elements of the list that is searched are asked: for each of the newer list in
/// turn, those that are left of the older one, and when one says yes, all that are left of both lists. Strings and
/// numbers of the library's own classes are found by hash, so that lists of them take a time in proportion to their
/// lengths; a list with anything else in it takes one in proportion to their product.
///
/// For a null `newer`, `newest` is null, `intersection` empty, and `oldest` has all the elements of the receiver.
///
///     differenceFrom(array({"a"_ns, "b"_ns, "c"_ns}), array({"c"_ns, "d"_ns, "a"_ns}))
///     // intersection [c, a], newest [d], oldest [b]
[[nodiscard]] ZR_EXPORT Ref<ZRArrayDifference> differenceFrom(NSArray* self, NSArray* newer);

} // namespace zr
