#include <zrbasic/platform/foundation/mutable_index_set.h>

#include <algorithm>

namespace zr {

ZR_DEFINE_CLASS(NSMutableIndexSet) {
    is.classMethod<&NSMutableIndexSet::indexSet>("indexSet");
    is.classMethod<&NSMutableIndexSet::indexSetWithIndex>("indexSetWithIndex:");
    is.classMethod<&NSMutableIndexSet::indexSetWithIndexesInRange>("indexSetWithIndexesInRange:");
    is.method<&NSMutableIndexSet::addIndex>("addIndex:");
    is.method<&NSMutableIndexSet::addIndexesInRange>("addIndexesInRange:");
    is.method<&NSMutableIndexSet::addIndexes>("addIndexes:");
    is.method<&NSMutableIndexSet::removeIndex>("removeIndex:");
    is.method<&NSMutableIndexSet::removeIndexesInRange>("removeIndexesInRange:");
    is.method<&NSMutableIndexSet::removeIndexes>("removeIndexes:");
    is.method<&NSMutableIndexSet::removeAllIndexes>("removeAllIndexes");
}

NSMutableIndexSet::~NSMutableIndexSet() = default;

Ref<NSMutableIndexSet> NSMutableIndexSet::indexSet() {
    return make<NSMutableIndexSet>();
}

Ref<NSMutableIndexSet> NSMutableIndexSet::indexSetWithIndex(NSUInteger index) {
    return make<NSMutableIndexSet>(&NSIndexSet::initWithIndex, index);
}

Ref<NSMutableIndexSet> NSMutableIndexSet::indexSetWithIndexesInRange(NSRange range) {
    return make<NSMutableIndexSet>(&NSIndexSet::initWithIndexesInRange, range);
}

void NSMutableIndexSet::addIndex(NSUInteger index) {
    addIndexesInRange({index, 1});
}

void NSMutableIndexSet::addIndexesInRange(NSRange range) {
    requireIndexes("addIndexesInRange:", range);
    if (range.length == 0) {
        return;
    }
    // Every range that overlaps or touches the new one melts into it; a range that ends where it begins touches.
    const auto first = rangeEndingBehind(range.location == 0 ? 0 : range.location - 1);
    NSUInteger start = range.location;
    NSUInteger end = NSMaxRange(range);
    auto last = first;
    for (; last != m_ranges.end() && last->location <= end; ++last) {
        start = std::min(start, last->location);
        end = std::max(end, NSMaxRange(*last));
    }
    m_ranges.insert(m_ranges.erase(first, last), {start, end - start});
}

void NSMutableIndexSet::addIndexes(NSIndexSet* other) {
    if (other && other != this) {
        for (const NSRange range : other->ranges()) {
            addIndexesInRange(range);
        }
    }
}

void NSMutableIndexSet::removeIndex(NSUInteger index) {
    removeIndexesInRange({index, 1});
}

void NSMutableIndexSet::removeIndexesInRange(NSRange range) {
    const auto first = rangeEndingBehind(range.location);
    if (range.length == 0 || first == m_ranges.end()) {
        return;
    }
    // The set ends before NSNotFound, so the removal may as well.
    const NSUInteger end = range.length <= NSNotFound - range.location ? NSMaxRange(range) : NSNotFound;
    std::vector<NSRange> remains;
    auto last = first;
    for (; last != m_ranges.end() && last->location < end; ++last) {
        if (last->location < range.location) {
            remains.push_back({last->location, range.location - last->location});
        }
        if (NSMaxRange(*last) > end) {
            remains.push_back({end, NSMaxRange(*last) - end});
        }
    }
    m_ranges.insert(m_ranges.erase(first, last), remains.begin(), remains.end());
}

void NSMutableIndexSet::removeIndexes(NSIndexSet* other) {
    if (other == this) {
        removeAllIndexes();
    } else if (other) {
        for (const NSRange range : other->ranges()) {
            removeIndexesInRange(range);
        }
    }
}

void NSMutableIndexSet::removeAllIndexes() {
    m_ranges.clear();
}

id NSMutableIndexSet::copy() const {
    return make<NSIndexSet>(&NSIndexSet::initWithIndexSet, const_cast<NSMutableIndexSet*>(this));
}

} // namespace zr
