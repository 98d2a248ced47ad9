#pragma once

#include <zrbasic/platform/foundation/error.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/function_ref.h>

#include <memory>
#include <vector>

namespace zr {

class NSArray;
class NSRegularExpression;

namespace detail {
class CompiledPattern;
struct PatternMatches;
} // namespace detail

/// How a pattern is read; a sum of these.
enum NSRegularExpressionOptions : NSUInteger {
    NSRegularExpressionCaseInsensitive = 1,
    /// White space and `#` comments in the pattern are skipped.
    NSRegularExpressionAllowCommentsAndWhitespace = 2,
    /// The pattern is plain text.
    NSRegularExpressionIgnoreMetacharacters = 4,
    NSRegularExpressionDotMatchesLineSeparators = 8,
    /// `^` and `$` hold at every line.
    NSRegularExpressionAnchorsMatchLines = 16,
    NSRegularExpressionUseUnixLineSeparators = 32,
    NSRegularExpressionUseUnicodeWordBoundaries = 64,
};

/// How a text is searched; a sum of these.
enum NSMatchingOptions : NSUInteger {
    /// Allows calls without a result while a search goes on; none are made, because searches end soon.
    NSMatchingReportProgress = 1,
    /// One more call without a result when the search is over; for the enumerating operation only.
    NSMatchingReportCompletion = 2,
    /// One match at most, where the range begins.
    NSMatchingAnchored = 4,
    /// Look-arounds see what lies outside the range.
    NSMatchingWithTransparentBounds = 8,
    /// `^` and `$` do not hold at the ends of the range.
    NSMatchingWithoutAnchoringBounds = 16,
};

/// What a call of the enumerating operation's callback is told; a sum of these.
enum NSMatchingFlags : NSUInteger {
    NSMatchingProgress = 1,
    NSMatchingCompleted = 2,
};

/// One match: where it lies in the text and where its groups do. Never changes.
class ZR_EXPORT NSTextCheckingResult : public NSObject {
    ZR_DECLARE_CLASS(NSTextCheckingResult, NSObject)
  public:
    ~NSTextCheckingResult() override;

    /// A match of these ranges, the match itself first; with none, a match of {NSNotFound, 0}.
    [[nodiscard]] static Ref<NSTextCheckingResult> resultWithRanges(std::vector<NSRange> ranges,
                                                                    NSRegularExpression* expression = nullptr);

    /// Where the match lies, in UTF-16 code units.
    [[nodiscard]] NSRange range() const { return m_ranges.front(); }
    /// The number of groups and one, whether or not they took part.
    [[nodiscard]] NSUInteger numberOfRanges() const { return m_ranges.size(); }
    /// Where a group lies, 0 for the whole match; {NSNotFound, 0} for a group that took no part. Raises
    /// `NSRangeException` for an index that is not below `numberOfRanges`.
    [[nodiscard]] NSRange rangeAtIndex(NSUInteger index) const;
    /// The expression that matched; null when the result was made without one.
    [[nodiscard]] Ref<NSRegularExpression> regularExpression() const;

    [[nodiscard]] Ref<NSString> description() const override;
    [[nodiscard]] bool isEqual(NSObject* other) const override;
    [[nodiscard]] NSUInteger hash() const override;
    /// The result itself.
    [[nodiscard]] id copy() const override;

  private:
    std::vector<NSRange> m_ranges{NSRange{NSNotFound, 0}};
    Ref<NSRegularExpression> m_expression;
};

/// A pattern in ICU's syntax, compiled, with options of its own.
///
/// Every search carries a work limit that grows with the text; a search that was cut off has no (further) match, so
/// no pattern and no text hangs a caller. Patterns are compiled once in a process, however many expressions are made
/// of them. Never changes, so it may be used from any thread.
///
/// Ranges count UTF-16 code units. The operations on a text raise `NSInvalidArgumentException` when it is null and
/// `NSRangeException` when the range does not lie in it.
class ZR_EXPORT NSRegularExpression : public NSObject {
    ZR_DECLARE_CLASS(NSRegularExpression, NSObject)
  public:
    NSRegularExpression();
    ~NSRegularExpression() override;

    /// Null when the pattern is invalid, empty or null; `error`, unless null, then gets the reason (code 2048 of the
    /// Cocoa domain). `options` is a sum of `NSRegularExpressionOptions`.
    [[nodiscard]] static Ref<NSRegularExpression> regularExpressionWithPattern_options_error(NSString* pattern,
                                                                                             NSUInteger options,
                                                                                             Ref<NSError>* error);
    id initWithPattern_options_error(NSString* pattern, NSUInteger options, Ref<NSError>* error);

    /// The pattern as it was given; null before an initialiser has run.
    [[nodiscard]] Ref<NSString> pattern() const { return m_pattern; }
    [[nodiscard]] NSUInteger options() const { return m_options; }
    [[nodiscard]] NSUInteger numberOfCaptureGroups() const;

    /// All matches in order, as `NSTextCheckingResult`s. `options` is a sum of `NSMatchingOptions` here and below.
    [[nodiscard]] Ref<NSArray> matchesInString_options_range(NSString* string, NSUInteger options, NSRange range) const;
    [[nodiscard]] NSUInteger numberOfMatchesInString_options_range(NSString* string, NSUInteger options,
                                                                   NSRange range) const;
    /// Null when there is none.
    [[nodiscard]] Ref<NSTextCheckingResult> firstMatchInString_options_range(NSString* string, NSUInteger options,
                                                                             NSRange range) const;
    /// {NSNotFound, 0} when there is none. A match of length 0 is a match.
    [[nodiscard]] NSRange rangeOfFirstMatchInString_options_range(NSString* string, NSUInteger options,
                                                                  NSRange range) const;

    /// What the enumeration calls: the match (null in a call that only reports), a sum of `NSMatchingFlags`, and a
    /// flag that ends the enumeration when set.
    using Block = FunctionRef<void(NSTextCheckingResult* result, NSUInteger flags, bool& stop)>;
    /// Calls `block` for every match in order. All matches are found before the first call, so the callback may change
    /// a mutable text. An empty callback is never called.
    void enumerateMatchesInString_options_range_usingBlock(NSString* string, NSUInteger options, NSRange range,
                                                           Block block) const;

    /// The whole text, with the matches inside `range` replaced by the template: "$1" stands for the first group and
    /// "\$" for a dollar sign. A null template changes nothing.
    [[nodiscard]] Ref<NSString> stringByReplacingMatchesInString_options_range_withTemplate(
        NSString* string, NSUInteger options, NSRange range, NSString* replacement) const;
    /// The template filled in for one match; `offset` is added to the result's locations first. Null result or template:
    /// "".
    [[nodiscard]] Ref<NSString> replacementStringForResult_inString_offset_template(NSTextCheckingResult* result,
                                                                                    NSString* string, NSInteger offset,
                                                                                    NSString* replacement) const;

    /// A pattern that matches just this text; null for null.
    [[nodiscard]] static Ref<NSString> escapedPatternForString(NSString* string);
    /// A template that stands for just this text; null for null.
    [[nodiscard]] static Ref<NSString> escapedTemplateForString(NSString* string);

    [[nodiscard]] Ref<NSString> description() const override;
    /// True for an expression of the same pattern and options.
    [[nodiscard]] bool isEqual(NSObject* other) const override;
    [[nodiscard]] NSUInteger hash() const override;
    /// The expression itself.
    [[nodiscard]] id copy() const override;

  private:
    static constexpr std::size_t allOfThem = static_cast<std::size_t>(-1);

    [[nodiscard]] detail::PatternMatches find(const char* operation, NSString* string, NSUInteger options,
                                              NSRange range, std::size_t most = allOfThem) const;
    [[nodiscard]] Ref<NSTextCheckingResult> result(const detail::PatternMatches& matches, std::size_t match) const;

    Ref<NSString> m_pattern;
    NSUInteger m_options = 0;
    std::shared_ptr<detail::CompiledPattern> m_compiled;
};

} // namespace zr
