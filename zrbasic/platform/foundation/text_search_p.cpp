#include <zrbasic/platform/foundation/text_search_p.h>

#include <zrbasic/platform/foundation/text_folding_p.h>
#include <zrbasic/platform/foundation/unicode_p.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace zr::detail {

namespace {

constexpr std::size_t notFound = std::u16string_view::npos;
constexpr unsigned foldingOptions = caseInsensitiveSearch | diacriticInsensitiveSearch | widthInsensitiveSearch;

int sign(bool less) noexcept {
    return less ? -1 : 1;
}

// The number of code units that both texts begin with.
std::size_t commonPrefix(std::u16string_view a, std::u16string_view b) noexcept {
    const std::size_t limit = std::min(a.size(), b.size());
    const auto difference = std::mismatch(a.begin(), a.begin() + static_cast<std::ptrdiff_t>(limit), b.begin());
    return static_cast<std::size_t>(difference.first - a.begin());
}

// Comparing place by place wins on everyday text, but a repetitive one would make it quadratic.
bool isTooCostly(std::size_t compared, std::size_t placesTried) noexcept {
    return compared > 4 * placesTried + 256;
}

char16_t smallLetter(char16_t unit) noexcept {
    return static_cast<char16_t>(unit >= u'A' && unit <= u'Z' ? unit + 0x20 : unit);
}

bool isDigit(char32_t c) noexcept {
    return c >= U'0' && c <= U'9';
}

bool isPlainText(std::u16string_view text) noexcept {
    constexpr std::uint64_t aboveLatin = 0xFE00FE00FE00FE00U;
    std::size_t i = 0;
    while (i < text.size()) {
        if (i + 4 <= text.size()) {
            std::uint64_t block;
            std::memcpy(&block, text.data() + i, sizeof block);
            if ((block & aboveLatin) == 0) {
                i += 4;
                continue;
            }
        }
        if (!isPlainUnit(text[i])) {
            return false;
        }
        ++i;
    }
    return true;
}

// Compares the numbers that begin at both readers and moves both past them.
int compareNumbers(FoldedReader& left, FoldedReader& right) {
    for (FoldedReader* reader : {&left, &right}) {
        while (!reader->atEnd() && reader->peek().value == U'0') {
            reader->advance();
        }
    }
    int firstDifference = 0;
    for (;;) {
        const bool leftHasDigit = !left.atEnd() && isDigit(left.peek().value);
        const bool rightHasDigit = !right.atEnd() && isDigit(right.peek().value);
        if (leftHasDigit != rightHasDigit) {
            return sign(rightHasDigit);
        }
        if (!leftHasDigit) {
            return firstDifference;
        }
        if (firstDifference == 0 && left.peek().value != right.peek().value) {
            firstDifference = sign(left.peek().value < right.peek().value);
        }
        left.advance();
        right.advance();
    }
}

int compareFolded(std::u16string_view leftText, std::u16string_view rightText, unsigned options) {
    FoldedReader left(leftText, options);
    FoldedReader right(rightText, options);
    for (;;) {
        const bool leftEnded = left.atEnd();
        const bool rightEnded = right.atEnd();
        if (leftEnded || rightEnded) {
            return leftEnded == rightEnded ? 0 : sign(leftEnded);
        }
        const char32_t a = left.peek().value;
        const char32_t b = right.peek().value;
        if ((options & numericSearch) != 0 && isDigit(a) && isDigit(b)) {
            if (const int order = compareNumbers(left, right); order != 0) {
                return order;
            }
            continue;
        }
        if (a != b) {
            return sign(a < b);
        }
        left.advance();
        right.advance();
    }
}

/// How far a failed comparison may fall back (Knuth, Morris and Pratt), so that no needle makes the search quadratic.
template <typename Unit>
class FallbackTable {
  public:
    explicit FallbackTable(std::vector<Unit> needle) : m_needle(std::move(needle)), m_fallback(m_needle.size(), 0) {
        for (std::size_t i = 1, matched = 0; i < m_needle.size(); ++i) {
            while (matched > 0 && m_needle[i] != m_needle[matched]) {
                matched = m_fallback[matched - 1];
            }
            matched += m_needle[i] == m_needle[matched] ? 1 : 0;
            m_fallback[i] = matched;
        }
    }

    [[nodiscard]] std::size_t size() const noexcept { return m_needle.size(); }

    /// The number of matched units after `unit` follows `matched` of them.
    [[nodiscard]] std::size_t next(std::size_t matched, Unit unit) const noexcept {
        if (matched == m_needle.size()) {
            matched = m_fallback[matched - 1];
        }
        while (matched > 0 && m_needle[matched] != unit) {
            matched = m_fallback[matched - 1];
        }
        return matched + (m_needle[matched] == unit ? 1 : 0);
    }

  private:
    std::vector<Unit> m_needle;
    std::vector<std::size_t> m_fallback;
};

// Calls `found` with every match, overlapping ones included, until it returns false.
template <typename Function>
void scanFolded(std::u16string_view text, std::u16string_view needle, unsigned options, Function&& found) {
    std::vector<char32_t> folded;
    for (FoldedReader reader(needle, options); !reader.atEnd(); reader.advance()) {
        folded.push_back(reader.peek().value);
    }
    if (folded.empty()) {
        return;
    }
    const FallbackTable<char32_t> table(std::move(folded));
    // The latest folded units, as many as a match takes: where it began is known only when it ends.
    std::vector<FoldedUnit> latest(table.size());
    std::size_t count = 0;
    std::size_t matched = 0;
    for (FoldedReader reader(text, options); !reader.atEnd(); reader.advance()) {
        const FoldedUnit& unit = reader.peek();
        latest[count % table.size()] = unit;
        ++count;
        matched = table.next(matched, unit.value);
        if (matched < table.size() || !unit.isLast) {
            continue;
        }
        const FoldedUnit& first = latest[count % table.size()];
        if (first.isFirst && !found(TextSpan{first.clusterStart, unit.clusterEnd - first.clusterStart})) {
            return;
        }
    }
}

std::size_t findUnit(std::u16string_view text, char16_t unit, std::size_t from) noexcept {
    const std::uint64_t pattern = std::uint64_t(unit) * 0x0001000100010001U;
    std::size_t i = from;
    for (; i + 4 <= text.size(); i += 4) {
        std::uint64_t block;
        std::memcpy(&block, text.data() + i, sizeof block);
        block ^= pattern;
        // Non-zero exactly when one of the four units is zero, that is, equal to the one looked for.
        if (((block - 0x0001000100010001U) & ~block & 0x8000800080008000U) != 0) {
            break;
        }
    }
    for (; i < text.size(); ++i) {
        if (text[i] == unit) {
            return i;
        }
    }
    return notFound;
}

std::optional<TextSpan> spanAt(std::size_t location, std::size_t length) {
    if (location == notFound) {
        return std::nullopt;
    }
    return TextSpan{location, length};
}

std::optional<TextSpan> findLiteralSpan(std::u16string_view text, std::u16string_view needle, unsigned options) {
    const bool backwards = (options & backwardsSearch) != 0;
    if ((options & anchoredSearch) != 0) {
        const bool matches = !needle.empty() && (backwards ? text.ends_with(needle) : text.starts_with(needle));
        return spanAt(!matches ? notFound : backwards ? text.size() - needle.size() : 0, needle.size());
    }
    return spanAt(backwards ? findLastLiteral(text, needle) : findLiteral(text, needle), needle.size());
}

bool isSearchedByUnit(std::u16string_view text, std::u16string_view needle, unsigned options) {
    if ((options & foldingOptions) != 0) {
        return false;
    }
    return (options & literalSearch) != 0 || (isPlainText(needle) && isPlainText(text));
}

// Folding does nothing to ASCII but change its case.
bool isFoldedAsAscii(std::u16string_view text, std::u16string_view needle, unsigned options) {
    return (options & foldingOptions) != 0 && isAscii(needle) && isAscii(text);
}

int compareAscii(std::u16string_view left, std::u16string_view right, bool ignoresCase) {
    const std::size_t common = std::min(left.size(), right.size());
    for (std::size_t i = 0; i < common; ++i) {
        const char16_t a = ignoresCase ? smallLetter(left[i]) : left[i];
        const char16_t b = ignoresCase ? smallLetter(right[i]) : right[i];
        if (a != b) {
            return sign(a < b);
        }
    }
    return left.size() == right.size() ? 0 : sign(left.size() < right.size());
}

} // namespace

int compareTexts(std::u16string_view left, std::u16string_view right) {
    const std::size_t i = commonPrefix(left, right);
    const bool leftEnded = i == left.size();
    const bool rightEnded = i == right.size();
    if (leftEnded && rightEnded) {
        return 0;
    }
    if ((leftEnded || isInertUnit(left[i])) && (rightEnded || isInertUnit(right[i]))) {
        if (leftEnded || rightEnded) {
            return sign(leftEnded);
        }
        return sign(left[i] < right[i]);
    }
    // A mark may change the order of the marks before it: go back to where a sequence begins in both texts.
    std::size_t start = i;
    while (start > 0) {
        --start;
        if (isPlainUnit(left[start])) {
            break;
        }
    }
    return compareFolded(left.substr(start), right.substr(start), 0);
}

int compareTexts(std::u16string_view left, std::u16string_view right, unsigned options) {
    if ((options & numericSearch) == 0 && isFoldedAsAscii(left, right, options)) {
        return compareAscii(left, right, (options & caseInsensitiveSearch) != 0);
    }
    if ((options & (foldingOptions | numericSearch)) != 0) {
        return compareFolded(left, right, options);
    }
    if ((options & literalSearch) == 0) {
        return compareTexts(left, right);
    }
    const int order = left.compare(right);
    return order == 0 ? 0 : sign(order < 0);
}

std::optional<TextSpan> findText(std::u16string_view text, std::u16string_view needle, unsigned options) {
    if (needle.empty()) {
        return std::nullopt;
    }
    if (isSearchedByUnit(text, needle, options)) {
        return findLiteralSpan(text, needle, options);
    }
    if (isFoldedAsAscii(text, needle, options)) {
        const bool ignoresCase = (options & caseInsensitiveSearch) != 0;
        return ignoresCase ? findLiteralSpan(lowercased(text), lowercased(needle), options)
                           : findLiteralSpan(text, needle, options);
    }
    const bool backwards = (options & backwardsSearch) != 0;
    const bool anchored = (options & anchoredSearch) != 0;
    std::optional<TextSpan> result;
    scanFolded(text, needle, options, [&](TextSpan span) {
        if (backwards) {
            if (!anchored || span.location + span.length == text.size()) {
                result = span;
            }
            return true;
        }
        if (!anchored || span.location == 0) {
            result = span;
        }
        return false;
    });
    return result;
}

std::vector<TextSpan> findAllTexts(std::u16string_view text, std::u16string_view needle, unsigned options) {
    std::vector<TextSpan> result;
    if (needle.empty()) {
        return result;
    }
    const bool anchored = (options & anchoredSearch) != 0;
    std::size_t end = 0;
    auto take = [&](TextSpan span) {
        if (span.location < end) {
            return true;
        }
        if (anchored && span.location != end) {
            return false;
        }
        result.push_back(span);
        end = span.location + span.length;
        return true;
    };
    if (!isSearchedByUnit(text, needle, options)) {
        scanFolded(text, needle, options, take);
        return result;
    }
    for (std::size_t at = findLiteral(text, needle); at != notFound; at = findLiteral(text, needle, end)) {
        if (!take({at, needle.size()})) {
            break;
        }
    }
    return result;
}

std::size_t findLiteral(std::u16string_view text, std::u16string_view needle, std::size_t from) {
    if (needle.empty() || from > text.size() || text.size() - from < needle.size()) {
        return notFound;
    }
    const std::size_t last = text.size() - needle.size();
    const std::u16string_view candidates = text.substr(0, last + 1);
    std::size_t at = findUnit(candidates, needle.front(), from);
    std::size_t compared = 0;
    while (at != notFound && !isTooCostly(compared, at - from)) {
        const std::size_t matching = commonPrefix(needle, text.substr(at));
        if (matching == needle.size()) {
            return at;
        }
        compared += matching;
        at = findUnit(candidates, needle.front(), at + 1);
    }
    if (at == notFound) {
        return notFound;
    }
    const FallbackTable<char16_t> table({needle.begin(), needle.end()});
    std::size_t matched = 0;
    for (std::size_t i = at; i < text.size(); ++i) {
        matched = table.next(matched, text[i]);
        if (matched == needle.size()) {
            return i + 1 - needle.size();
        }
    }
    return notFound;
}

std::size_t findLastLiteral(std::u16string_view text, std::u16string_view needle) {
    if (needle.empty() || text.size() < needle.size()) {
        return notFound;
    }
    const std::size_t last = text.size() - needle.size();
    std::size_t compared = 0;
    std::size_t at = last;
    while (!isTooCostly(compared, last - at)) {
        const std::size_t matching = commonPrefix(needle, text.substr(at));
        if (matching == needle.size()) {
            return at;
        }
        if (at == 0) {
            return notFound;
        }
        compared += matching;
        --at;
    }
    const FallbackTable<char16_t> table({needle.begin(), needle.end()});
    std::size_t matched = 0;
    std::size_t found = notFound;
    for (std::size_t i = 0; i < at + needle.size(); ++i) {
        matched = table.next(matched, text[i]);
        if (matched == needle.size()) {
            found = i + 1 - needle.size();
        }
    }
    return found;
}

} // namespace zr::detail
