#include <zrbasic/platform/foundation/string.h>

#include <zrbasic/platform/foundation/character_set.h>
#include <zrbasic/platform/foundation/pattern_p.h>
#include <zrbasic/platform/foundation/string_p.h>
#include <zrbasic/platform/foundation/text_search_p.h>
#include <zrbasic/platform/foundation/unicode_p.h>

#include <vector>

namespace zr {

namespace {

constexpr NSRange nowhere{NSNotFound, 0};

// The bits that comparisons and searches know; others change nothing.
unsigned searchOptions(NSUInteger options) noexcept {
    return static_cast<unsigned>(options & 0x1FF);
}

std::uint32_t patternOptions(NSUInteger options) noexcept {
    return (options & NSCaseInsensitiveSearch) != 0 ? std::uint32_t(detail::patternCaseInsensitive) : 0;
}

std::uint32_t matchingOptions(NSUInteger options) noexcept {
    return (options & NSAnchoredSearch) != 0 ? std::uint32_t(detail::matchingAnchored) : 0;
}

NSComparisonResult resultOf(int order) noexcept {
    return order < 0 ? NSOrderedAscending : order > 0 ? NSOrderedDescending : NSOrderedSame;
}

NSRange search(std::u16string_view text, std::u16string_view needle, NSUInteger options, NSRange range) {
    if ((options & NSRegularExpressionSearch) != 0) {
        return detail::firstMatch(needle, patternOptions(options), text, range, matchingOptions(options));
    }
    const auto found = detail::findText(text.substr(range.location, range.length), needle, searchOptions(options));
    return found ? NSRange{range.location + found->location, found->length} : nowhere;
}

} // namespace

NSComparisonResult NSString::compare(NSString* other) const {
    return other != nullptr ? resultOf(detail::compareTexts(m_text, other->m_text)) : NSOrderedDescending;
}

NSComparisonResult NSString::compare_options(NSString* other, NSUInteger options) const {
    return compare_options_range(other, options, {0, m_text.size()});
}

NSComparisonResult NSString::compare_options_range(NSString* other, NSUInteger options, NSRange range) const {
    detail::requireRange(this, "compare:options:range:", range, m_text.size());
    if (other == nullptr) {
        return NSOrderedDescending;
    }
    return resultOf(
        detail::compareTexts(view().substr(range.location, range.length), other->m_text, searchOptions(options)));
}

NSComparisonResult NSString::caseInsensitiveCompare(NSString* other) const {
    return compare_options(other, NSCaseInsensitiveSearch);
}

NSRange NSString::rangeOfString(NSString* other) const {
    return search(m_text, detail::requireText(this, "rangeOfString:", other), 0, {0, m_text.size()});
}

NSRange NSString::rangeOfString_options(NSString* other, NSUInteger options) const {
    return search(m_text, detail::requireText(this, "rangeOfString:options:", other), options, {0, m_text.size()});
}

NSRange NSString::rangeOfString_options_range(NSString* other, NSUInteger options, NSRange range) const {
    constexpr std::string_view selector = "rangeOfString:options:range:";
    const std::u16string_view needle = detail::requireText(this, selector, other);
    detail::requireRange(this, selector, range, m_text.size());
    return search(m_text, needle, options, range);
}

NSRange NSString::localizedStandardRangeOfString(NSString* other) const {
    return search(m_text, detail::requireText(this, "localizedStandardRangeOfString:", other),
                  NSCaseInsensitiveSearch | NSDiacriticInsensitiveSearch, {0, m_text.size()});
}

NSRange NSString::rangeOfCharacterFromSet(NSCharacterSet* set) const {
    return rangeOfCharacterFromSet_options_range(set, 0, {0, m_text.size()});
}

NSRange NSString::rangeOfCharacterFromSet_options(NSCharacterSet* set, NSUInteger options) const {
    return rangeOfCharacterFromSet_options_range(set, options, {0, m_text.size()});
}

NSRange NSString::rangeOfCharacterFromSet_options_range(NSCharacterSet* set, NSUInteger options, NSRange range) const {
    constexpr std::string_view selector = "rangeOfCharacterFromSet:options:range:";
    if (set == nullptr) {
        detail::raiseNilArgument(this, selector);
    }
    detail::requireRange(this, selector, range, m_text.size());
    const std::u16string_view text = view().substr(range.location, range.length);
    const bool anchored = (options & NSAnchoredSearch) != 0;
    if ((options & NSBackwardsSearch) != 0) {
        for (std::size_t end = text.size(); end > 0;) {
            const detail::CodePoint c = detail::codePointBefore(text, end);
            if (set->longCharacterIsMember(c.value)) {
                return {range.location + end - c.length, c.length};
            }
            if (anchored) {
                break;
            }
            end -= c.length;
        }
        return nowhere;
    }
    for (std::size_t i = 0; i < text.size();) {
        const detail::CodePoint c = detail::codePointAt(text, i);
        if (set->longCharacterIsMember(c.value)) {
            return {range.location + i, c.length};
        }
        if (anchored) {
            break;
        }
        i += c.length;
    }
    return nowhere;
}

bool NSString::containsString(NSString* other) const {
    return detail::findText(m_text, detail::requireText(this, "containsString:", other)).has_value();
}

bool NSString::hasPrefix(NSString* prefix) const {
    const std::u16string_view start = detail::requireText(this, "hasPrefix:", prefix);
    return !start.empty() && view().starts_with(start);
}

bool NSString::hasSuffix(NSString* suffix) const {
    const std::u16string_view end = detail::requireText(this, "hasSuffix:", suffix);
    return !end.empty() && view().ends_with(end);
}

Ref<NSString> NSString::stringByReplacingOccurrencesOfString_withString(NSString* target, NSString* replacement) const {
    return stringByReplacingOccurrencesOfString_withString_options_range(target, replacement, 0, {0, m_text.size()});
}

Ref<NSString> NSString::stringByReplacingOccurrencesOfString_withString_options_range(NSString* target,
                                                                                      NSString* replacement,
                                                                                      NSUInteger options,
                                                                                      NSRange range) const {
    constexpr std::string_view selector = "stringByReplacingOccurrencesOfString:withString:options:range:";
    const std::u16string_view needle = detail::requireText(this, selector, target);
    const std::u16string_view substitute = detail::requireText(this, selector, replacement);
    detail::requireRange(this, selector, range, m_text.size());
    detail::Replacement result = detail::replaceOccurrences(m_text, needle, substitute, options, range);
    return result.count == 0 ? detail::part(this, m_text) : fromUtf16(std::move(result.text));
}

namespace detail {

Replacement replaceOccurrences(std::u16string_view text, std::u16string_view target, std::u16string_view replacement,
                               NSUInteger options, NSRange range) {
    if ((options & NSRegularExpressionSearch) != 0) {
        const PatternMatches matches =
            allMatches(compiledPattern(target, patternOptions(options)), text, range, matchingOptions(options));
        if (matches.count() == 0) {
            return {{}, 0};
        }
        return {replaceMatches(matches, text, replacement), matches.count()};
    }
    const std::vector<TextSpan> spans =
        findAllTexts(text.substr(range.location, range.length), target, searchOptions(options));
    if (spans.empty()) {
        return {{}, 0};
    }
    std::u16string result;
    result.reserve(text.size());
    std::size_t end = 0;
    for (const TextSpan& span : spans) {
        const std::size_t start = range.location + span.location;
        result += text.substr(end, start - end);
        result += replacement;
        end = start + span.length;
    }
    result += text.substr(end);
    return {std::move(result), spans.size()};
}

} // namespace detail

} // namespace zr
