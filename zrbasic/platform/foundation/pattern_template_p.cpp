#include <zrbasic/platform/foundation/pattern_p.h>

namespace zr::detail {
namespace {

std::size_t digitCount(std::size_t number) {
    std::size_t count = 1;
    for (std::size_t limit = 10; number > limit; limit *= 10)
        ++count;
    return count;
}

std::u16string escaped(std::u16string_view text, std::u16string_view specials) {
    std::u16string result;
    result.reserve(text.size() + 8);
    for (const char16_t unit : text) {
        if (specials.find(unit) != std::u16string_view::npos)
            result += u'\\';
        result += unit;
    }
    return result;
}

} // namespace

void appendTemplate(std::u16string& result, std::u16string_view replacement, std::u16string_view text,
                    const NSRange* ranges, std::size_t rangeCount) {
    const std::size_t mostDigits = digitCount(rangeCount);
    const auto isDigitAt = [replacement](std::size_t position) {
        return position < replacement.size() && replacement[position] >= u'0' && replacement[position] <= u'9';
    };
    for (std::size_t position = 0; position < replacement.size(); ++position) {
        const char16_t unit = replacement[position];
        if (unit == u'\\') {
            if (++position < replacement.size())
                result += replacement[position];
        } else if (unit == u'$' && isDigitAt(position + 1)) {
            std::size_t group = 0;
            for (std::size_t digits = 0; digits < mostDigits && isDigitAt(position + 1); ++digits)
                group = group * 10 + (replacement[++position] - u'0');
            if (group < rangeCount && ranges[group].location != NSNotFound)
                result.append(text, ranges[group].location, ranges[group].length);
        } else {
            result += unit;
        }
    }
}

std::u16string replaceMatches(const PatternMatches& matches, std::u16string_view text,
                              std::u16string_view replacement) {
    std::u16string result;
    result.reserve(text.size() + matches.count() * replacement.size());
    std::size_t done = 0;
    for (std::size_t match = 0; match < matches.count(); ++match) {
        const NSRange range = matches.range(match);
        result.append(text, done, range.location - done);
        appendTemplate(result, replacement, text, &matches.ranges[match * matches.rangesPerMatch],
                       matches.rangesPerMatch);
        done = NSMaxRange(range);
    }
    result.append(text, done);
    return result;
}

std::u16string escapedPattern(std::u16string_view text) {
    return escaped(text, u"\\*?+[(){}^$|./");
}

std::u16string escapedTemplate(std::u16string_view text) {
    return escaped(text, u"\\$");
}

} // namespace zr::detail
