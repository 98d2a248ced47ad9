#include <zrbasic/platform/foundation/attributed_string.h>

#include <zrbasic/platform/foundation/mutable_attributed_string.h>
#include <zrbasic/platform/foundation/string_p.h>
#include <zrbasic/platform/foundation/unicode_p.h>

#include <algorithm>

namespace zr {

ZR_DEFINE_CLASS(NSAttributedString) {
    is.method<&NSAttributedString::initWithString>("initWithString:")
        .method<&NSAttributedString::initWithString_attributes>("initWithString:attributes:")
        .method<&NSAttributedString::initWithAttributedString>("initWithAttributedString:")
        .method<&NSAttributedString::string>("string")
        .method<&NSAttributedString::length>("length")
        .method<&NSAttributedString::attributesAtIndex_effectiveRange>("attributesAtIndex:effectiveRange:")
        .method<&NSAttributedString::attribute_atIndex_effectiveRange>("attribute:atIndex:effectiveRange:")
        .method<&NSAttributedString::attribute_atIndex_longestEffectiveRange_inRange>(
            "attribute:atIndex:longestEffectiveRange:inRange:")
        .method<&NSAttributedString::attributedSubstringFromRange>("attributedSubstringFromRange:")
        .method<&NSAttributedString::enumerateAttributesInRange_options_usingBlock>(
            "enumerateAttributesInRange:options:usingBlock:")
        .method<&NSAttributedString::enumerateAttribute_inRange_options_usingBlock>(
            "enumerateAttribute:inRange:options:usingBlock:")
        .method<&NSAttributedString::isEqualToAttributedString>("isEqualToAttributedString:");
}

namespace {

bool isSameValue(NSObject* one, NSObject* other) {
    return one == other || (one && other && one->isEqual(other));
}

/// Walks over `range` from either end, in the stretches that `stretchAt` finds.
template <class StretchAt, class Visit>
void walk(NSRange range, bool isReverse, const StretchAt& stretchAt, const Visit& visit) {
    NSUInteger start = range.location;
    NSUInteger end = NSMaxRange(range);
    bool stop = false;
    while (start < end && !stop) {
        // What the visitor changes may join with what is still to come, which is then delivered without it.
        const NSRange stretch = stretchAt(isReverse ? end - 1 : start, NSRange{start, end - start});
        visit(stretch, stop);
        if (isReverse) {
            end = stretch.location;
        } else {
            start = NSMaxRange(stretch);
        }
    }
}

NSRange intersection(NSRange one, NSRange other) {
    const NSUInteger start = std::max(one.location, other.location);
    return {start, std::min(NSMaxRange(one), NSMaxRange(other)) - start};
}

} // namespace

NSAttributedString::NSAttributedString() : m_string(""_ns) {}
NSAttributedString::~NSAttributedString() = default;

id NSAttributedString::initWithString(NSString* string) {
    return initWithString_attributes(string, nullptr);
}

id NSAttributedString::initWithString_attributes(NSString* string, NSDictionary* attributes) {
    static_cast<void>(detail::requireText(this, "initWithString:attributes:", string));
    detail::AttributeRuns runs;
    runs.append(string->length(), detail::frozenAttributes(attributes));
    m_string = cast<NSString>(string->copy());
    m_runs = std::move(runs);
    return id(this);
}

id NSAttributedString::initWithAttributedString(NSAttributedString* other) {
    if (!other) {
        detail::raiseNilArgument(this, "initWithAttributedString:");
    }
    m_runs = other->m_runs;
    m_string = other->string();
    return id(this);
}

Ref<NSString> NSAttributedString::string() const {
    if (!m_string) {
        m_string = NSString::fromUtf16(std::move(m_units));
        m_units.clear();
    }
    return m_string;
}

std::u16string_view NSAttributedString::view() const {
    return m_string ? m_string->view() : std::u16string_view(m_units);
}

Ref<NSDictionary> NSAttributedString::attributesAtIndex_effectiveRange(NSUInteger index,
                                                                       NSRange* effectiveRange) const {
    detail::requireRange(this, "attributesAtIndex:effectiveRange:", {index, 1}, length());
    const std::size_t number = m_runs.runAt(index);
    if (effectiveRange) {
        *effectiveRange = m_runs.rangeOfRun(number);
    }
    return m_runs.runs()[number].attributes;
}

id NSAttributedString::attribute_atIndex_effectiveRange(NSString* name, NSUInteger index,
                                                        NSRange* effectiveRange) const {
    static_cast<void>(detail::requireText(this, "attribute:atIndex:effectiveRange:", name));
    return attributesAtIndex_effectiveRange(index, effectiveRange)->objectForKey(name);
}

id NSAttributedString::attribute_atIndex_longestEffectiveRange_inRange(NSString* name, NSUInteger index,
                                                                       NSRange* effectiveRange, NSRange limit) const {
    constexpr std::string_view selector = "attribute:atIndex:longestEffectiveRange:inRange:";
    static_cast<void>(detail::requireText(this, selector, name));
    detail::requireRange(this, selector, limit, length());
    // Wraps, and so lies outside as well, when the index comes before the range.
    detail::requireRange(this, selector, {index - limit.location, 1}, limit.length);
    if (effectiveRange) {
        *effectiveRange = stretchAround(index, name, limit);
    }
    return m_runs.runs()[m_runs.runAt(index)].attributes->objectForKey(name);
}

NSRange NSAttributedString::stretchAround(NSUInteger index, NSString* name, NSRange limit) const {
    const std::vector<detail::AttributeRun>& runs = m_runs.runs();
    std::size_t first = m_runs.runAt(index);
    std::size_t last = first;
    NSObject* const value = runs[first].attributes->peek(name);
    while (first > 0 && runs[first - 1].end > limit.location &&
           isSameValue(runs[first - 1].attributes->peek(name), value)) {
        --first;
    }
    while (runs[last].end < NSMaxRange(limit) && isSameValue(runs[last + 1].attributes->peek(name), value)) {
        ++last;
    }
    const NSUInteger start = m_runs.rangeOfRun(first).location;
    return intersection({start, runs[last].end - start}, limit);
}

Ref<NSAttributedString> NSAttributedString::attributedSubstringFromRange(NSRange range) const {
    detail::requireRange(this, "attributedSubstringFromRange:", range, length());
    if (range.length == length()) {
        return cast<NSAttributedString>(copy());
    }
    const Ref<NSAttributedString> result = alloc<NSAttributedString>();
    result->m_runs = m_runs.part(range);
    result->m_string = NSString::fromUtf16(view().substr(range.location, range.length));
    return result;
}

void NSAttributedString::enumerateAttributesInRange_options_usingBlock(NSRange range, NSUInteger options,
                                                                       AttributesVisitor visitor) const {
    constexpr std::string_view selector = "enumerateAttributesInRange:options:usingBlock:";
    detail::requireRange(this, selector, range, length());
    if (!visitor) {
        return;
    }
    walk(
        range, (options & NSAttributedStringEnumerationReverse) != 0,
        [&](NSUInteger place, NSRange left) {
            // The visitor may have shortened the text.
            detail::requireRange(this, selector, left, length());
            return intersection(m_runs.rangeOfRun(m_runs.runAt(place)), left);
        },
        [&](NSRange stretch, bool& stop) {
            const Ref<NSDictionary> attributes = attributesAtIndex_effectiveRange(stretch.location, nullptr);
            visitor(attributes, stretch, stop);
        });
}

void NSAttributedString::enumerateAttribute_inRange_options_usingBlock(NSString* name, NSRange range,
                                                                       NSUInteger options,
                                                                       AttributeVisitor visitor) const {
    constexpr std::string_view selector = "enumerateAttribute:inRange:options:usingBlock:";
    static_cast<void>(detail::requireText(this, selector, name));
    detail::requireRange(this, selector, range, length());
    if (!visitor) {
        return;
    }
    walk(
        range, (options & NSAttributedStringEnumerationReverse) != 0,
        [&](NSUInteger place, NSRange left) {
            detail::requireRange(this, selector, left, length());
            return stretchAround(place, name, left);
        },
        [&](NSRange stretch, bool& stop) {
            const id value = attribute_atIndex_effectiveRange(name, stretch.location, nullptr);
            visitor(value, stretch, stop);
        });
}

bool NSAttributedString::isEqual(NSObject* other) const {
    return isEqualToAttributedString(cast<NSAttributedString>(other));
}

bool NSAttributedString::isEqualToAttributedString(NSAttributedString* other) const {
    if (this == other) {
        return true;
    }
    if (!other || view() != other->view()) {
        return false;
    }
    // Equal texts may be cut into different runs when a value changed after it was put in.
    const std::vector<detail::AttributeRun>& ownRuns = m_runs.runs();
    const std::vector<detail::AttributeRun>& otherRuns = other->m_runs.runs();
    for (std::size_t own = 0, others = 0; own < ownRuns.size();) {
        if (!detail::isSame(ownRuns[own].attributes, otherRuns[others].attributes)) {
            return false;
        }
        const NSUInteger end = std::min(ownRuns[own].end, otherRuns[others].end);
        own += ownRuns[own].end == end ? 1 : 0;
        others += otherRuns[others].end == end ? 1 : 0;
    }
    return true;
}

NSUInteger NSAttributedString::hash() const {
    return detail::hashUnits(view());
}

Ref<NSString> NSAttributedString::description() const {
    std::u16string text;
    NSUInteger start = 0;
    for (const detail::AttributeRun& run : m_runs.runs()) {
        text += view().substr(start, run.end - start);
        text += run.attributes->description()->view();
        start = run.end;
    }
    return NSString::fromUtf16(std::move(text));
}

id NSAttributedString::copy() const {
    return id(const_cast<NSAttributedString*>(this));
}

id NSAttributedString::mutableCopy() const {
    return make<NSMutableAttributedString>(&NSAttributedString::initWithAttributedString,
                                           const_cast<NSAttributedString*>(this));
}

} // namespace zr
