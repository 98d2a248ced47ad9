#pragma once

#include <zrbasic/platform/foundation/pattern_p.h>

#include <ctime>
#include <string>
#include <string_view>

// What the tests of patterns share: matches as short texts, and a clock.

namespace zr::detail {

inline std::string narrow(std::u16string_view text) {
    std::string result;
    for (const char16_t unit : text)
        result += unit < 128 ? static_cast<char>(unit) : '?';
    return result;
}

inline std::u16string repeated(std::u16string_view text, std::size_t times) {
    std::u16string result;
    for (std::size_t i = 0; i < times; ++i)
        result += text;
    return result;
}

inline std::string describe(NSRange range) {
    if (range.location == NSNotFound)
        return "none";
    return std::to_string(range.location) + "+" + std::to_string(range.length);
}

// All matches, the groups of each in brackets: "0+2[0+1 none]".
inline std::string matches(std::u16string_view pattern, std::u16string_view text, unsigned options = 0,
                           NSRange range = wholeText, unsigned matchingOptions = 0) {
    const PatternMatches found = allMatches(compiledPattern(pattern, options), text, range, matchingOptions);
    std::string result;
    for (std::size_t match = 0; match < found.count(); ++match) {
        result += (match == 0 ? "" : " ") + describe(found.range(match));
        for (std::size_t group = 1; group < found.rangesPerMatch; ++group)
            result += (group == 1 ? "[" : " ") + describe(found.range(match, group));
        result += found.rangesPerMatch > 1 ? "]" : "";
    }
    return result;
}

inline std::string first(std::u16string_view pattern, std::u16string_view text, unsigned options = 0) {
    return describe(firstMatch(pattern, options, text));
}

/// Counts this process's own time, so that a busy machine fails no test.
class Stopwatch {
  public:
    double seconds() const { return static_cast<double>(std::clock() - m_start) / CLOCKS_PER_SEC; }

  private:
    std::clock_t m_start = std::clock();
};

} // namespace zr::detail
