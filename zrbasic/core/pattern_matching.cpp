#include <zrbasic/core/pattern_matching.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/pattern_p.h>
#include <zrbasic/platform/foundation/predicate.h>
#include <zrbasic/platform/foundation/regular_expression.h>
#include <zrbasic/platform/runtime/synchronized.h>

#include <utility>
#include <vector>

namespace zr {
namespace {

detail::PatternRef caseInsensitivePattern(NSString* pattern) {
    return detail::compiledPattern(pattern ? pattern->view() : std::u16string_view(), detail::patternCaseInsensitive);
}

Ref<NSString> substring(std::u16string_view text, NSRange range) {
    return NSString::fromUtf16(text.substr(range.location, range.length));
}

} // namespace

ZR_GROUP(NSString, ZRXHelper) {
    is.method<&matchResultWithPattern>("matchResultWithPattern:");
    is.method<&matchResultsWithPattern>("matchResultsWithPattern:");
    is.method<&matchWithPattern_matchResult>("matchWithPattern:matchResult:");
    is.method<&matchSubResultsWithPattern>("matchSubResultsWithPattern:");
    is.method<&isLegalObjectWithPattern>("isLegalObjectWithPattern:");
    is.method<&stringByReplacingWithPattern_withString>("stringByReplacingWithPattern:withString:");
    is.method<&stringByReplacingWithPattern_replaceBlock>("stringByReplacingWithPattern:replaceBlock:");
    is.method<&compare_usingRegularExpression>("compare:usingRegularExpression:");
}

Ref<NSString> matchResultWithPattern(NSString* self, NSString* pattern) {
    if (self == nullptr || pattern == nullptr)
        return nullptr;
    const NSRange range = detail::firstMatch(pattern->view(), 0, self->view());
    return range.location == NSNotFound ? nullptr : substring(self->view(), range);
}

Ref<NSArray> matchResultsWithPattern(NSString* self, NSString* pattern) {
    if (self == nullptr)
        return nullptr;
    const Synchronized lock(self);
    const detail::PatternMatches matches = detail::allMatches(caseInsensitivePattern(pattern), self->view());
    std::vector<id> results;
    results.reserve(matches.count());
    for (std::size_t match = 0; match < matches.count(); ++match)
        results.push_back(substring(self->view(), matches.range(match)));
    return NSArray::fromElements(std::move(results));
}

void matchWithPattern_matchResult(NSString* self, NSString* pattern, FunctionRef<void(NSArray*)> result) {
    if (self == nullptr || !result)
        return;
    const Synchronized lock(self);
    // The callback may change a mutable receiver, or let go of it; this text stays.
    const Ref<NSString> text(cast<NSString>(self->copy()));
    const detail::PatternMatches matches = detail::allMatches(caseInsensitivePattern(pattern), text->view());
    for (std::size_t match = 0; match < matches.count(); ++match) {
        std::vector<id> parts;
        parts.reserve(matches.rangesPerMatch);
        for (std::size_t group = 0; group < matches.rangesPerMatch; ++group) {
            const NSRange range = matches.range(match, group);
            if (range.location != NSNotFound)
                parts.push_back(substring(text->view(), range));
        }
        const Ref<NSArray> texts = NSArray::fromElements(std::move(parts));
        result(texts);
    }
}

Ref<NSArray> matchSubResultsWithPattern(NSString* self, NSString* pattern) {
    if (self == nullptr)
        return nullptr;
    std::vector<id> results;
    matchWithPattern_matchResult(self, pattern, [&results](NSArray* texts) { results.push_back(id(texts)); });
    return NSArray::fromElements(std::move(results));
}

bool isLegalObjectWithPattern(NSString* self, NSString* pattern) {
    return NSPredicate::predicateWithFormat("SELF MATCHES %@"_ns, pattern)->evaluateWithObject(self);
}

Ref<NSString> stringByReplacingWithPattern_withString(NSString* self, NSString* pattern, NSString* replacement) {
    if (self == nullptr || pattern == nullptr || replacement == nullptr)
        return self;
    const detail::PatternRef compiled = caseInsensitivePattern(pattern);
    if (!detail::isValid(compiled))
        return self;
    const detail::PatternMatches matches = detail::allMatches(compiled, self->view());
    return NSString::fromUtf16(detail::replaceMatches(matches, self->view(), replacement->view()));
}

Ref<NSString> stringByReplacingWithPattern_replaceBlock(NSString* self, NSString* pattern,
                                                        ZRXReplaceBlock replacement) {
    if (self == nullptr || pattern == nullptr || !replacement)
        return self;
    const Ref<NSRegularExpression> expression = NSRegularExpression::regularExpressionWithPattern_options_error(
        pattern, NSRegularExpressionCaseInsensitive, nullptr);
    if (!expression)
        return self;
    const Ref<NSMutableString> working = NSMutableString::stringWithString(self);
    const Ref<NSArray> matches = expression->matchesInString_options_range(working, NSMatchingReportCompletion,
                                                                           NSMakeRange(0, working->length()));
    if (matches->count() == 0)
        return self;
    bool stop = false;
    for (NSUInteger index = matches->count(); index-- > 0 && !stop;) {
        const id element = matches->objectAtIndex(index);
        auto* match = cast<NSTextCheckingResult>(element);
        const Ref<NSString> text = replacement(working, match, stop);
        working->replaceCharactersInRange_withString(match->range(), text ? text : ""_ns);
    }
    return working;
}

NSComparisonResult compare_usingRegularExpression(NSString* self, NSString* other, NSString* pattern) {
    if (self == nullptr)
        return NSOrderedSame;
    if (other == nullptr)
        return NSOrderedDescending;
    const Ref<NSString> ownMatch = matchResultWithPattern(self, pattern);
    const Ref<NSString> otherMatch = matchResultWithPattern(other, pattern);
    if (ownMatch && otherMatch && ownMatch->length() > 0 && otherMatch->length() > 0)
        return ownMatch->compare(otherMatch);
    return self->compare(other);
}

} // namespace zr
