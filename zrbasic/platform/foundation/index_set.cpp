#include <zrbasic/platform/foundation/index_set.h>

#include <zrbasic/platform/foundation/mutable_index_set.h>
#include <zrbasic/platform/foundation/string.h>

#include <algorithm>
#include <string>

namespace zr {

ZR_DEFINE_CLASS(NSIndexSet) {
    is.classMethod<&NSIndexSet::indexSet>("indexSet");
    is.classMethod<&NSIndexSet::indexSetWithIndex>("indexSetWithIndex:");
    is.classMethod<&NSIndexSet::indexSetWithIndexesInRange>("indexSetWithIndexesInRange:");
    is.method<&NSIndexSet::initWithIndex>("initWithIndex:");
    is.method<&NSIndexSet::initWithIndexesInRange>("initWithIndexesInRange:");
    is.method<&NSIndexSet::initWithIndexSet>("initWithIndexSet:");
    is.method<&NSIndexSet::count>("count");
    is.method<&NSIndexSet::firstIndex>("firstIndex");
    is.method<&NSIndexSet::lastIndex>("lastIndex");
    is.method<&NSIndexSet::indexGreaterThanIndex>("indexGreaterThanIndex:");
    is.method<&NSIndexSet::indexLessThanIndex>("indexLessThanIndex:");
    is.method<&NSIndexSet::containsIndex>("containsIndex:");
    is.method<&NSIndexSet::containsIndexesInRange>("containsIndexesInRange:");
    is.method<&NSIndexSet::enumerateIndexesUsingBlock>("enumerateIndexesUsingBlock:");
    is.method<&NSIndexSet::isEqualToIndexSet>("isEqualToIndexSet:");
}

NSIndexSet::~NSIndexSet() = default;

Ref<NSIndexSet> NSIndexSet::indexSet() {
    return make<NSIndexSet>();
}

Ref<NSIndexSet> NSIndexSet::indexSetWithIndex(NSUInteger index) {
    return make<NSIndexSet>(&NSIndexSet::initWithIndex, index);
}

Ref<NSIndexSet> NSIndexSet::indexSetWithIndexesInRange(NSRange range) {
    return make<NSIndexSet>(&NSIndexSet::initWithIndexesInRange, range);
}

id NSIndexSet::initWithIndex(NSUInteger index) {
    return initWithIndexesInRange({index, 1});
}

id NSIndexSet::initWithIndexesInRange(NSRange range) {
    requireIndexes("initWithIndexesInRange:", range);
    if (range.length != 0) {
        m_ranges = {range};
    }
    return id(this);
}

id NSIndexSet::initWithIndexSet(NSIndexSet* other) {
    if (other) {
        m_ranges = other->m_ranges;
    }
    return id(this);
}

NSUInteger NSIndexSet::count() const {
    NSUInteger count = 0;
    for (const NSRange range : m_ranges) {
        count += range.length;
    }
    return count;
}

NSUInteger NSIndexSet::firstIndex() const {
    return m_ranges.empty() ? NSNotFound : m_ranges.front().location;
}

NSUInteger NSIndexSet::lastIndex() const {
    return m_ranges.empty() ? NSNotFound : NSMaxRange(m_ranges.back()) - 1;
}

NSUInteger NSIndexSet::indexGreaterThanIndex(NSUInteger index) const {
    if (index >= NSNotFound) {
        return NSNotFound;
    }
    const auto found = rangeEndingBehind(index + 1);
    return found == m_ranges.end() ? NSNotFound : std::max(found->location, index + 1);
}

NSUInteger NSIndexSet::indexLessThanIndex(NSUInteger index) const {
    if (index == 0) {
        return NSNotFound;
    }
    auto found = rangeEndingBehind(index - 1);
    if (found != m_ranges.end() && found->location < index) {
        return index - 1;
    }
    return found == m_ranges.begin() ? NSNotFound : NSMaxRange(*--found) - 1;
}

bool NSIndexSet::containsIndex(NSUInteger index) const {
    return containsIndexesInRange({index, 1});
}

bool NSIndexSet::containsIndexesInRange(NSRange range) const {
    const auto found = rangeEndingBehind(range.location);
    // Subtracting, because the end of a foreign range may not exist.
    return range.length != 0 && found != m_ranges.end() && found->location <= range.location &&
           range.length <= NSMaxRange(*found) - range.location;
}

void NSIndexSet::enumerateIndexesUsingBlock(IndexVisitor visitor) const {
    if (!visitor) {
        return;
    }
    const std::vector<NSRange> ranges = m_ranges;
    bool stop = false;
    for (const NSRange range : ranges) {
        for (NSUInteger index = range.location; index < NSMaxRange(range); ++index) {
            visitor(index, stop);
            if (stop) {
                return;
            }
        }
    }
}

bool NSIndexSet::isEqual(NSObject* other) const {
    return isEqualToIndexSet(cast<NSIndexSet>(other));
}

bool NSIndexSet::isEqualToIndexSet(NSIndexSet* other) const {
    return other && m_ranges == other->m_ranges;
}

NSUInteger NSIndexSet::hash() const {
    return m_ranges.empty() ? 0 : firstIndex() + 31 * lastIndex() + 961 * count();
}

Ref<NSString> NSIndexSet::description() const {
    std::string text = NSObject::description()->utf8();
    if (m_ranges.empty()) {
        return NSString::fromUtf8(text + "(no indexes)");
    }
    text += "[number of indexes: " + std::to_string(count()) + " (in " + std::to_string(m_ranges.size()) +
            " ranges), indexes: (";
    for (const NSRange range : m_ranges) {
        if (range != m_ranges.front()) {
            text += ' ';
        }
        text += std::to_string(range.location);
        if (range.length > 1) {
            text += '-' + std::to_string(NSMaxRange(range) - 1);
        }
    }
    return NSString::fromUtf8(text + ")]");
}

id NSIndexSet::copy() const {
    return id(const_cast<NSIndexSet*>(this));
}

id NSIndexSet::mutableCopy() const {
    return make<NSMutableIndexSet>(&NSIndexSet::initWithIndexSet, const_cast<NSIndexSet*>(this));
}

std::vector<NSRange>::const_iterator NSIndexSet::rangeEndingBehind(NSUInteger index) const {
    return std::upper_bound(m_ranges.begin(), m_ranges.end(), index,
                            [](NSUInteger wanted, NSRange range) { return wanted < NSMaxRange(range); });
}

void NSIndexSet::requireIndexes(const char* operation, NSRange range) const {
    if (range.length == 0 || (range.location < NSNotFound && range.length <= NSNotFound - range.location)) {
        return;
    }
    NSException::raise(NSRangeException, "*** -[" + nativeClass()->name() + ' ' + operation + "]: Range {" +
                                             std::to_string(range.location) + ", " + std::to_string(range.length) +
                                             "} exceeds maximum index value of NSNotFound - 1");
}

} // namespace zr
