#include <zrbasic/platform/foundation/attribute_runs.h>

#include <zrbasic/platform/foundation/mutable_dictionary.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace zr::detail {

std::size_t AttributeRuns::runAt(NSUInteger place) const {
    const auto found = std::upper_bound(m_runs.begin(), m_runs.end(), place,
                                        [](NSUInteger sought, const AttributeRun& run) { return sought < run.end; });
    return static_cast<std::size_t>(found - m_runs.begin());
}

AttributeRuns AttributeRuns::part(NSRange range) const {
    AttributeRuns result;
    if (range.length == 0) {
        return result;
    }
    const NSUInteger end = NSMaxRange(range);
    for (std::size_t number = runAt(range.location);; ++number) {
        const AttributeRun& run = m_runs[number];
        result.m_runs.push_back({std::min(run.end, end) - range.location, run.attributes});
        if (run.end >= end) {
            return result;
        }
    }
}

void AttributeRuns::append(NSUInteger length, Ref<NSDictionary> attributes) {
    if (length == 0) {
        return;
    }
    const NSUInteger end = this->length() + length;
    if (!m_runs.empty() && isSame(m_runs.back().attributes, attributes)) {
        m_runs.back().end = end;
    } else {
        m_runs.push_back({end, std::move(attributes)});
    }
}

void AttributeRuns::append(const AttributeRuns& other) {
    if (other.m_runs.empty()) {
        return;
    }
    makeRoom(other.m_runs.size());
    const NSUInteger before = length();
    append(other.m_runs.front().end, other.m_runs.front().attributes);
    for (std::size_t number = 1; number < other.m_runs.size(); ++number) {
        m_runs.push_back({before + other.m_runs[number].end, other.m_runs[number].attributes});
    }
}

void AttributeRuns::makeRoom(std::size_t additions) {
    // Reserving just what is needed would copy everything with every small addition.
    if (const std::size_t room = m_runs.size() + additions; room > m_runs.capacity()) {
        m_runs.reserve(std::max(room, 2 * m_runs.capacity()));
    }
}

std::vector<AttributeRun> AttributeRuns::replace(NSRange range, AttributeRuns fresh) {
    // The run before the range joins in, and the one behind it, as they may turn out equal to their new neighbours.
    const std::size_t first = range.location == 0 ? 0 : runAt(range.location - 1);
    const NSUInteger start = startOfRun(first);
    const NSUInteger end = NSMaxRange(range);
    const std::size_t last = end < length() ? runAt(end) + 1 : m_runs.size();

    const NSUInteger shift = fresh.length() - range.length; // wraps when the text grows shorter, and back again below
    AttributeRuns slice;
    slice.m_runs.reserve(std::max(fresh.m_runs.size() + 2, last - first));
    if (start < range.location) {
        slice.append(range.location - start, m_runs[first].attributes);
    }
    if (!fresh.m_runs.empty()) {
        // Only here and at the other end can neighbours be equal: inside, the new runs are in order.
        const NSUInteger before = slice.length();
        slice.append(fresh.m_runs.front().end, std::move(fresh.m_runs.front().attributes));
        for (std::size_t number = 1; number < fresh.m_runs.size(); ++number) {
            AttributeRun& run = fresh.m_runs[number];
            slice.m_runs.push_back({before + run.end, std::move(run.attributes)});
        }
    }
    if (end < length()) {
        slice.append(m_runs[last - 1].end - end, m_runs[last - 1].attributes);
    }

    for (AttributeRun& run : slice.m_runs) {
        run.end += start;
    }
    const std::size_t outgoing = last - first;
    const std::size_t incoming = slice.m_runs.size();
    makeRoom(incoming);
    // From here on nothing can fail.
    for (std::size_t number = last; shift != 0 && number < m_runs.size(); ++number) {
        m_runs[number].end += shift;
    }
    const std::size_t common = std::min(outgoing, incoming);
    const auto place = m_runs.begin() + static_cast<std::ptrdiff_t>(first);
    const auto behindCommon = place + static_cast<std::ptrdiff_t>(common);
    std::swap_ranges(place, behindCommon, slice.m_runs.begin());
    if (incoming > common) {
        m_runs.insert(behindCommon, std::make_move_iterator(slice.m_runs.begin() + static_cast<std::ptrdiff_t>(common)),
                      std::make_move_iterator(slice.m_runs.end()));
    } else if (outgoing > common) {
        const auto behind = m_runs.begin() + static_cast<std::ptrdiff_t>(last);
        slice.m_runs.insert(slice.m_runs.end(), std::make_move_iterator(behindCommon), std::make_move_iterator(behind));
        m_runs.erase(behindCommon, behind);
    }
    return std::move(slice.m_runs);
}

Ref<NSDictionary> frozenAttributes(NSDictionary* attributes) {
    // What cannot change is shared, so that many texts made with one dictionary cost one.
    if (attributes && !cast<NSMutableDictionary>(attributes)) {
        return attributes;
    }
    return NSDictionary::dictionaryWithDictionary(attributes);
}

} // namespace zr::detail
