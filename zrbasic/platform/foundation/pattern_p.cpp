#include <zrbasic/platform/foundation/pattern_engine_p.h>
#include <zrbasic/platform/foundation/pattern_p.h>

#include <algorithm>
#include <limits>

namespace zr::detail {
namespace {

// Beyond this length a text gets engine state of its own: its backtracking stack may grow, and is given back after.
constexpr std::size_t longText = 16'384;
constexpr std::size_t largestStack = 128U << 20U;
constexpr std::size_t usualStack = 8'000'000;

} // namespace

PatternMatcher::PatternMatcher(std::u16string_view pattern, std::uint32_t options) {
    m_ready = borrowMatcher(pattern, options);
    if (m_ready == nullptr) {
        m_own = std::make_unique<ReadyMatcher>(compiledPattern(pattern, options));
        m_ready = m_own.get();
    }
}

PatternMatcher::PatternMatcher(const PatternRef& pattern) {
    m_ready = borrowMatcher(pattern);
    if (m_ready == nullptr) {
        m_own = std::make_unique<ReadyMatcher>(pattern);
        m_ready = m_own.get();
    }
}

PatternMatcher::~PatternMatcher() {
    if (m_own == nullptr)
        giveBack();
}

void PatternMatcher::giveBack() {
    if (m_hasOwnBounds) {
        UErrorCode status = U_ZERO_ERROR;
        uregex_useTransparentBounds(m_ready->expression, false, &status);
        uregex_useAnchoringBounds(m_ready->expression, true, &status);
    }
    giveBackMatcher(m_ready);
}

bool PatternMatcher::isValid() const {
    return m_ready->expression != nullptr;
}

std::size_t PatternMatcher::groupCount() const {
    return m_ready->pattern->groupCount();
}

void PatternMatcher::useOwnMatcher() {
    if (m_own != nullptr)
        return;
    auto own = std::make_unique<ReadyMatcher>(m_ready->pattern);
    giveBack();
    m_own = std::move(own);
    m_ready = m_own.get();
}

void PatternMatcher::setText(std::u16string_view text, NSRange range, std::uint32_t matchingOptions) {
    m_isSpent = true;
    if (!isValid() || text.size() > std::numeric_limits<std::int32_t>::max())
        return;
    UErrorCode status = U_ZERO_ERROR;
    if (text.size() > longText) {
        useOwnMatcher();
        if (!isValid())
            return;
        const std::size_t stack = std::clamp(text.size() * 64, usualStack, largestStack);
        uregex_setStackLimit(m_ready->expression, static_cast<std::int32_t>(stack), &status);
    }
    // The engine refuses a null pointer, which an empty view may hold.
    const char16_t* units = text.empty() ? u"" : text.data();
    uregex_setText(m_ready->expression, units, static_cast<std::int32_t>(text.size()), &status);
    const std::size_t begin = std::min<std::size_t>(range.location, text.size());
    const std::size_t length = std::min<std::size_t>(range.length, text.size() - begin);
    if (length != text.size()) {
        uregex_setRegion(m_ready->expression, static_cast<std::int32_t>(begin),
                         static_cast<std::int32_t>(begin + length), &status);
    }
    if ((matchingOptions & (matchingWithTransparentBounds | matchingWithoutAnchoringBounds)) != 0 || m_hasOwnBounds) {
        m_hasOwnBounds = true;
        uregex_useTransparentBounds(m_ready->expression, (matchingOptions & matchingWithTransparentBounds) != 0,
                                    &status);
        uregex_useAnchoringBounds(m_ready->expression, (matchingOptions & matchingWithoutAnchoringBounds) == 0,
                                  &status);
    }
    m_isAnchored = (matchingOptions & matchingAnchored) != 0;
    m_ready->work.restart(text.size());
    m_isSpent = U_FAILURE(status);
}

bool PatternMatcher::finish(bool found) {
    m_ready->work.pause();
    m_isSpent = m_isSpent || !found || m_isAnchored;
    return found;
}

bool PatternMatcher::findNext() {
    if (m_isSpent)
        return false;
    UErrorCode status = U_ZERO_ERROR;
    const bool found = m_isAnchored ? uregex_lookingAt(m_ready->expression, -1, &status)
                                    : uregex_findNext(m_ready->expression, &status);
    // A match that was cut off leaves a large stack behind.
    m_ready->isWornOut = m_ready->isWornOut || U_FAILURE(status);
    return finish(found && U_SUCCESS(status));
}

bool PatternMatcher::matchesWhole() {
    if (m_isSpent)
        return false;
    UErrorCode status = U_ZERO_ERROR;
    const bool found = uregex_matches(m_ready->expression, -1, &status);
    m_ready->isWornOut = m_ready->isWornOut || U_FAILURE(status);
    return finish(found && U_SUCCESS(status));
}

NSRange PatternMatcher::range(std::size_t group) const {
    if (!isValid() || group > groupCount())
        return noRange;
    UErrorCode status = U_ZERO_ERROR;
    const auto index = static_cast<std::int32_t>(group);
    const std::int32_t begin = uregex_start(m_ready->expression, index, &status);
    const std::int32_t end = uregex_end(m_ready->expression, index, &status);
    if (U_FAILURE(status) || begin < 0)
        return noRange;
    return {static_cast<NSUInteger>(begin), static_cast<NSUInteger>(end - begin)};
}

NSRange firstMatch(std::u16string_view pattern, std::uint32_t options, std::u16string_view text, NSRange range,
                   std::uint32_t matchingOptions) {
    PatternMatcher matcher(pattern, options);
    matcher.setText(text, range, matchingOptions);
    return matcher.findNext() ? matcher.range() : noRange;
}

bool containsMatch(std::u16string_view pattern, std::uint32_t options, std::u16string_view text) {
    PatternMatcher matcher(pattern, options);
    matcher.setText(text);
    return matcher.findNext();
}

bool matchesWhole(std::u16string_view pattern, std::uint32_t options, std::u16string_view text) {
    PatternMatcher matcher(pattern, options);
    matcher.setText(text);
    return matcher.matchesWhole();
}

PatternMatches allMatches(const PatternRef& pattern, std::u16string_view text, NSRange range,
                          std::uint32_t matchingOptions, std::size_t most) {
    PatternMatcher matcher(pattern);
    matcher.setText(text, range, matchingOptions);
    PatternMatches matches;
    matches.rangesPerMatch = matcher.groupCount() + 1;
    while (most-- > 0 && matcher.findNext()) {
        for (std::size_t group = 0; group < matches.rangesPerMatch; ++group)
            matches.ranges.push_back(matcher.range(group));
    }
    return matches;
}

} // namespace zr::detail
