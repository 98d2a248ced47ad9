#include <zrbasic/platform/foundation/regular_expression.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/pattern_p.h>

#include <utility>

namespace zr {
namespace {

// NSFormattingError, which the platform reports for every pattern it cannot read.
constexpr NSInteger invalidPatternCode = 2048;

[[noreturn]] void raise(const char* operation, std::string_view name, std::string_view reason) {
    NSException::raise(name, "*** -[NSRegularExpression " + std::string(operation) + "]: " + std::string(reason));
}

NSRange moved(NSRange range, NSInteger offset) {
    if (range.location != NSNotFound)
        range.location += static_cast<NSUInteger>(offset);
    return range;
}

bool liesIn(NSRange range, NSUInteger length) {
    return range.location <= length && range.length <= length - range.location;
}

} // namespace

ZR_DEFINE_CLASS(NSTextCheckingResult) {
    is.method<&NSTextCheckingResult::range>("range");
    is.method<&NSTextCheckingResult::numberOfRanges>("numberOfRanges");
    is.method<&NSTextCheckingResult::rangeAtIndex>("rangeAtIndex:");
    is.method<&NSTextCheckingResult::regularExpression>("regularExpression");
}

NSTextCheckingResult::~NSTextCheckingResult() = default;

Ref<NSTextCheckingResult> NSTextCheckingResult::resultWithRanges(std::vector<NSRange> ranges,
                                                                 NSRegularExpression* expression) {
    Ref<NSTextCheckingResult> result = alloc<NSTextCheckingResult>();
    if (!ranges.empty())
        result->m_ranges = std::move(ranges);
    result->m_expression = Ref<NSRegularExpression>(expression);
    return result;
}

NSRange NSTextCheckingResult::rangeAtIndex(NSUInteger index) const {
    if (index >= m_ranges.size()) {
        NSException::raise(NSRangeException, "*** -[NSTextCheckingResult rangeAtIndex:]: index " +
                                                 std::to_string(index) + " beyond bounds [0 .. " +
                                                 std::to_string(m_ranges.size() - 1) + "]");
    }
    return m_ranges[index];
}

Ref<NSRegularExpression> NSTextCheckingResult::regularExpression() const {
    return m_expression;
}

Ref<NSString> NSTextCheckingResult::description() const {
    std::string text = "<NSTextCheckingResult:";
    for (const NSRange range : m_ranges) {
        text += range.location == NSNotFound
                    ? " {not found}"
                    : " {" + std::to_string(range.location) + ", " + std::to_string(range.length) + "}";
    }
    return NSString::fromUtf8(text + ">");
}

bool NSTextCheckingResult::isEqual(NSObject* other) const {
    const auto* result = cast<NSTextCheckingResult>(other);
    if (result == nullptr || m_ranges != result->m_ranges)
        return false;
    return m_expression == result->m_expression || (m_expression && m_expression->isEqual(result->m_expression));
}

NSUInteger NSTextCheckingResult::hash() const {
    return m_ranges.front().location * 31 + m_ranges.front().length;
}

id NSTextCheckingResult::copy() const {
    return id(const_cast<NSTextCheckingResult*>(this));
}

ZR_DEFINE_CLASS(NSRegularExpression) {
    is.classMethod<&NSRegularExpression::regularExpressionWithPattern_options_error>(
        "regularExpressionWithPattern:options:error:");
    is.classMethod<&NSRegularExpression::escapedPatternForString>("escapedPatternForString:");
    is.classMethod<&NSRegularExpression::escapedTemplateForString>("escapedTemplateForString:");
    is.method<&NSRegularExpression::initWithPattern_options_error>("initWithPattern:options:error:");
    is.method<&NSRegularExpression::pattern>("pattern");
    is.method<&NSRegularExpression::options>("options");
    is.method<&NSRegularExpression::numberOfCaptureGroups>("numberOfCaptureGroups");
    is.method<&NSRegularExpression::matchesInString_options_range>("matchesInString:options:range:");
    is.method<&NSRegularExpression::numberOfMatchesInString_options_range>("numberOfMatchesInString:options:range:");
    is.method<&NSRegularExpression::firstMatchInString_options_range>("firstMatchInString:options:range:");
    is.method<&NSRegularExpression::rangeOfFirstMatchInString_options_range>(
        "rangeOfFirstMatchInString:options:range:");
    is.method<&NSRegularExpression::enumerateMatchesInString_options_range_usingBlock>(
        "enumerateMatchesInString:options:range:usingBlock:");
    is.method<&NSRegularExpression::stringByReplacingMatchesInString_options_range_withTemplate>(
        "stringByReplacingMatchesInString:options:range:withTemplate:");
    is.method<&NSRegularExpression::replacementStringForResult_inString_offset_template>(
        "replacementStringForResult:inString:offset:template:");
}

NSRegularExpression::NSRegularExpression() = default;
NSRegularExpression::~NSRegularExpression() = default;

Ref<NSRegularExpression> NSRegularExpression::regularExpressionWithPattern_options_error(NSString* pattern,
                                                                                         NSUInteger options,
                                                                                         Ref<NSError>* error) {
    return make<NSRegularExpression>(&NSRegularExpression::initWithPattern_options_error, pattern, options, error);
}

id NSRegularExpression::initWithPattern_options_error(NSString* pattern, NSUInteger options, Ref<NSError>* error) {
    const std::u16string_view text = pattern ? pattern->view() : std::u16string_view();
    detail::PatternRef compiled = detail::compiledPattern(text, static_cast<std::uint32_t>(options));
    if (!detail::isValid(compiled)) {
        if (error != nullptr) {
            const Ref<NSString> reason = NSString::stringWithFormat("The value “%@” is invalid."_ns, pattern);
            *error = NSError::errorWithDomain_code_userInfo(NSCocoaErrorDomain(), invalidPatternCode,
                                                            dictionary({{NSLocalizedDescriptionKey(), reason}}));
        }
        return nullptr;
    }
    m_pattern = Ref<NSString>(cast<NSString>(pattern->copy()));
    m_options = options;
    m_compiled = std::move(compiled);
    return id(this);
}

NSUInteger NSRegularExpression::numberOfCaptureGroups() const {
    return m_compiled ? detail::groupCount(m_compiled) : 0;
}

detail::PatternMatches NSRegularExpression::find(const char* operation, NSString* string, NSUInteger options,
                                                 NSRange range, std::size_t most) const {
    if (string == nullptr)
        raise(operation, NSInvalidArgumentException, "nil argument");
    if (!liesIn(range, string->length()))
        raise(operation, NSRangeException, "Range or index out of bounds");
    if (!m_compiled)
        return {};
    return detail::allMatches(m_compiled, string->view(), range, static_cast<std::uint32_t>(options), most);
}

Ref<NSTextCheckingResult> NSRegularExpression::result(const detail::PatternMatches& matches, std::size_t match) const {
    const auto first = matches.ranges.begin() + static_cast<std::ptrdiff_t>(match * matches.rangesPerMatch);
    return NSTextCheckingResult::resultWithRanges({first, first + static_cast<std::ptrdiff_t>(matches.rangesPerMatch)},
                                                  const_cast<NSRegularExpression*>(this));
}

Ref<NSArray> NSRegularExpression::matchesInString_options_range(NSString* string, NSUInteger options,
                                                                NSRange range) const {
    const detail::PatternMatches matches = find("matchesInString:options:range:", string, options, range);
    std::vector<id> results;
    results.reserve(matches.count());
    for (std::size_t match = 0; match < matches.count(); ++match)
        results.push_back(result(matches, match));
    return NSArray::fromElements(std::move(results));
}

NSUInteger NSRegularExpression::numberOfMatchesInString_options_range(NSString* string, NSUInteger options,
                                                                      NSRange range) const {
    return find("numberOfMatchesInString:options:range:", string, options, range).count();
}

Ref<NSTextCheckingResult> NSRegularExpression::firstMatchInString_options_range(NSString* string, NSUInteger options,
                                                                                NSRange range) const {
    const detail::PatternMatches matches = find("firstMatchInString:options:range:", string, options, range, 1);
    return matches.count() == 0 ? nullptr : result(matches, 0);
}

NSRange NSRegularExpression::rangeOfFirstMatchInString_options_range(NSString* string, NSUInteger options,
                                                                     NSRange range) const {
    const detail::PatternMatches matches = find("rangeOfFirstMatchInString:options:range:", string, options, range, 1);
    return matches.count() == 0 ? detail::noRange : matches.range(0);
}

void NSRegularExpression::enumerateMatchesInString_options_range_usingBlock(NSString* string, NSUInteger options,
                                                                            NSRange range, Block block) const {
    const detail::PatternMatches matches =
        find("enumerateMatchesInString:options:range:usingBlock:", string, options, range);
    if (!block)
        return;
    // The callback may let go of this expression.
    const Ref<NSRegularExpression> self(const_cast<NSRegularExpression*>(this));
    bool stop = false;
    for (std::size_t match = 0; match < matches.count() && !stop; ++match)
        block(self->result(matches, match), 0, stop);
    if (!stop && (options & NSMatchingReportCompletion) != 0)
        block(nullptr, NSMatchingCompleted, stop);
}

Ref<NSString> NSRegularExpression::stringByReplacingMatchesInString_options_range_withTemplate(
    NSString* string, NSUInteger options, NSRange range, NSString* replacement) const {
    const detail::PatternMatches matches =
        find("stringByReplacingMatchesInString:options:range:withTemplate:", string, options, range);
    if (replacement == nullptr || matches.count() == 0)
        return Ref<NSString>(cast<NSString>(string->copy()));
    return NSString::fromUtf16(detail::replaceMatches(matches, string->view(), replacement->view()));
}

Ref<NSString> NSRegularExpression::replacementStringForResult_inString_offset_template(NSTextCheckingResult* result,
                                                                                       NSString* string,
                                                                                       NSInteger offset,
                                                                                       NSString* replacement) const {
    constexpr const char* operation = "replacementStringForResult:inString:offset:template:";
    if (string == nullptr)
        raise(operation, NSInvalidArgumentException, "nil argument");
    if (result == nullptr || replacement == nullptr)
        return ""_ns;
    std::vector<NSRange> ranges;
    for (NSUInteger index = 0; index < result->numberOfRanges(); ++index) {
        ranges.push_back(moved(result->rangeAtIndex(index), offset));
        if (ranges.back().location != NSNotFound && !liesIn(ranges.back(), string->length()))
            raise(operation, NSRangeException, "Range or index out of bounds");
    }
    std::u16string text;
    detail::appendTemplate(text, replacement->view(), string->view(), ranges.data(), ranges.size());
    return NSString::fromUtf16(std::move(text));
}

Ref<NSString> NSRegularExpression::escapedPatternForString(NSString* string) {
    return string ? NSString::fromUtf16(detail::escapedPattern(string->view())) : nullptr;
}

Ref<NSString> NSRegularExpression::escapedTemplateForString(NSString* string) {
    return string ? NSString::fromUtf16(detail::escapedTemplate(string->view())) : nullptr;
}

Ref<NSString> NSRegularExpression::description() const {
    return NSString::stringWithFormat("<NSRegularExpression: %@ 0x%lx>"_ns, m_pattern, m_options);
}

bool NSRegularExpression::isEqual(NSObject* other) const {
    const auto* expression = cast<NSRegularExpression>(other);
    if (expression == nullptr || m_options != expression->m_options)
        return false;
    return m_pattern == expression->m_pattern || (m_pattern && m_pattern->isEqual(expression->m_pattern));
}

NSUInteger NSRegularExpression::hash() const {
    return (m_pattern ? m_pattern->hash() : 0) ^ m_options;
}

id NSRegularExpression::copy() const {
    return id(const_cast<NSRegularExpression*>(this));
}

} // namespace zr
