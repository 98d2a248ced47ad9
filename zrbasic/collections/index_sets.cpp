#include <zrbasic/collections/index_sets.h>

namespace zr {

ZR_GROUP(NSIndexSet, ZRXHelper) {
    is.classMethod<&detail::indexSetInRange>("zr_indexSetWithIndexesInRange:");
    is.classMethod<&detail::indexSetInRangeOfAtMost>("zr_indexSetWithIndexesInRange:maxCount:");
    is.classMethod<&detail::indexSetAt>("zr_indexSetWithLocation:length:");
    is.classMethod<&detail::indexSetFromZero>("zr_indexSetWithLength:");
}

namespace detail {

Ref<NSIndexSet> indexSetInRange(NSRange range) {
    if (range.location == NSNotFound || range.length == NSNotFound) {
        return {};
    }
    return NSIndexSet::indexSetWithIndexesInRange(range);
}

Ref<NSIndexSet> indexSetInRangeOfAtMost(NSRange range, NSUInteger maxCount) {
    return range.length > maxCount ? nullptr : indexSetInRange(range);
}

Ref<NSIndexSet> indexSetAt(NSUInteger location, NSUInteger length) {
    return indexSetInRange({location, length});
}

Ref<NSIndexSet> indexSetFromZero(NSUInteger length) {
    return indexSetAt(0, length);
}

} // namespace detail

} // namespace zr
