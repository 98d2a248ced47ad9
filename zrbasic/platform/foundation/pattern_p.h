#pragma once

#include <zrbasic/platform/runtime/export.h>
#include <zrbasic/platform/runtime/types.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// Regular expressions over UTF-16 text: what regular-expression objects, searches, predicates and formatters run on.
///
/// A pattern is compiled when it is first used and kept in a bounded cache shared by all threads; a pattern that does
/// not compile is remembered as well. Matching works on engine state that each thread keeps ready, so asking again
/// with the same pattern text costs a look-up without a lock.
///
/// Every match carries a work limit that grows with the text: a hostile pattern or text is cut off after about a
/// tenth of a second, and a match that was cut off reads as "no match".
///
/// Everything here may be used from any thread; nothing throws but `std::bad_alloc`.
namespace zr::detail {

/// How a pattern is compiled; the numbers are part of the interface and are added up.
enum PatternOption : std::uint32_t {
    patternCaseInsensitive = 1,
    patternAllowsComments = 2,
    patternIgnoresMetacharacters = 4,
    patternDotMatchesLineSeparators = 8,
    patternAnchorsMatchLines = 16,
    patternUsesUnixLineSeparators = 32,
    patternUsesUnicodeWordBoundaries = 64,
};

/// How a text is searched; other bits change nothing.
enum MatchingOption : std::uint32_t {
    matchingAnchored = 4,
    matchingWithTransparentBounds = 8,
    matchingWithoutAnchoringBounds = 16,
};

/// The range of a group that took no part in a match, and of a match that does not exist.
inline constexpr NSRange noRange{NSNotFound, 0};

/// Stands for "all of the text" where a range is wanted.
inline constexpr NSRange wholeText{0, NSNotFound};

/// A pattern as the cache holds it: compiled, or known not to compile.
class CompiledPattern;

/// Keeps a compiled pattern for as long as it is held, whatever the cache drops. Never null when it comes from here.
using PatternRef = std::shared_ptr<CompiledPattern>;

/// The pattern with that text and that sum of `PatternOption` values, compiled at most once while it is in use.
/// The empty pattern is invalid, as is one beyond 100,000 code units or 2,000 character sets, a property
/// such as `\p{L}` counting as four.
[[nodiscard]] ZR_EXPORT PatternRef compiledPattern(std::u16string_view text, std::uint32_t options);

[[nodiscard]] ZR_EXPORT bool isValid(const PatternRef& pattern);

/// The number of capturing groups, 0 for an invalid pattern.
[[nodiscard]] ZR_EXPORT std::size_t groupCount(const PatternRef& pattern);

/// How many patterns have been compiled in this process, failures included. For tests and benchmarks.
[[nodiscard]] ZR_EXPORT std::uint64_t patternCompilationCount();

struct ReadyMatcher;

/// One walk over a text with one pattern, on engine state borrowed from the current thread.
///
/// Lives on the stack of one thread. The text is borrowed: it must stay unchanged until the last call. Walks may be
/// nested, also with the same pattern.
class ZR_EXPORT PatternMatcher {
  public:
    PatternMatcher(std::u16string_view pattern, std::uint32_t options);
    explicit PatternMatcher(const PatternRef& pattern);
    ~PatternMatcher();
    PatternMatcher(const PatternMatcher&) = delete;
    PatternMatcher& operator=(const PatternMatcher&) = delete;

    /// Whether the pattern compiled; an invalid one matches nothing.
    [[nodiscard]] bool isValid() const;

    /// The number of capturing groups, 0 for an invalid pattern.
    [[nodiscard]] std::size_t groupCount() const;

    /// Begins a walk over the part of `text` in `range`, cut to what there is. Ranges of matches count from the
    /// beginning of `text`. `^` and `$` hold at the ends of the range and look-arounds stop there, unless
    /// `matchingOptions` say otherwise. An anchored walk finds at most one match, where the range begins.
    void setText(std::u16string_view text, NSRange range = wholeText, std::uint32_t matchingOptions = 0);

    /// Goes to the next match. Behind an empty match the walk goes on one character later.
    bool findNext();

    /// Whether the pattern can match all of the range, from its first code unit to its last.
    bool matchesWhole();

    /// Where the current match lies (group 0) or one of its groups; `noRange` for a group that took no part and for
    /// a group that the pattern does not have.
    [[nodiscard]] NSRange range(std::size_t group = 0) const;

  private:
    void giveBack();
    void useOwnMatcher();
    bool finish(bool found);

    ReadyMatcher* m_ready = nullptr;
    std::unique_ptr<ReadyMatcher> m_own;
    bool m_isSpent = true;
    bool m_isAnchored = false;
    bool m_hasOwnBounds = false;
};

/// The first match, or `noRange`. A match of length 0 is a match: test the location.
[[nodiscard]] ZR_EXPORT NSRange firstMatch(std::u16string_view pattern, std::uint32_t options, std::u16string_view text,
                                           NSRange range = wholeText, std::uint32_t matchingOptions = 0);

/// Whether there is a match anywhere, an empty one included; a little quicker than asking where.
[[nodiscard]] ZR_EXPORT bool containsMatch(std::u16string_view pattern, std::uint32_t options,
                                           std::u16string_view text);

/// Whether the whole of `text` matches: "a|ab" matches "ab", `^\d+$` does not match "123" and a line feed.
[[nodiscard]] ZR_EXPORT bool matchesWhole(std::u16string_view pattern, std::uint32_t options, std::u16string_view text);

/// All matches of a walk, in order, each with the ranges of its groups.
struct PatternMatches {
    /// Ranges per match: the match itself and every group.
    std::size_t rangesPerMatch = 1;
    std::vector<NSRange> ranges;

    [[nodiscard]] std::size_t count() const { return ranges.size() / rangesPerMatch; }
    [[nodiscard]] NSRange range(std::size_t match, std::size_t group = 0) const {
        return ranges[match * rangesPerMatch + group];
    }
};

/// Collects every match, or the first `most`. Matches found before the work limit was reached are kept.
[[nodiscard]] ZR_EXPORT PatternMatches allMatches(const PatternRef& pattern, std::u16string_view text,
                                                  NSRange range = wholeText, std::uint32_t matchingOptions = 0,
                                                  std::size_t most = static_cast<std::size_t>(-1));

/// Appends `replacement` to `result` with the groups of one match filled in.
///
/// A dollar sign and a group number stand for that group's text; as many digits are read as the largest group number
/// has. A group that took no part, or that does not exist, stands for nothing. A backslash makes the next character
/// ordinary and is dropped; so is one at the end. A dollar sign without a digit stands for itself.
/// `ranges` holds the match and its groups, `rangeCount` of them.
ZR_EXPORT void appendTemplate(std::u16string& result, std::u16string_view replacement, std::u16string_view text,
                              const NSRange* ranges, std::size_t rangeCount);

/// `text` with every one of `matches` replaced by the filled-in template; text between the matches stays.
[[nodiscard]] ZR_EXPORT std::u16string replaceMatches(const PatternMatches& matches, std::u16string_view text,
                                                      std::u16string_view replacement);

/// A pattern that matches `text` and nothing else.
[[nodiscard]] ZR_EXPORT std::u16string escapedPattern(std::u16string_view text);

/// A template that stands for `text` itself.
[[nodiscard]] ZR_EXPORT std::u16string escapedTemplate(std::u16string_view text);

} // namespace zr::detail
