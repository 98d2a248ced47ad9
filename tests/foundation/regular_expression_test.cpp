#include <zrbasic/platform/foundation/regular_expression.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/runtime/exception.h>

#include <gtest/gtest.h>
#include <string>

namespace zr {
namespace {

Ref<NSRegularExpression> expression(NSString* pattern, NSUInteger options = 0) {
    return NSRegularExpression::regularExpressionWithPattern_options_error(pattern, options, nullptr);
}

NSRange all(NSString* text) {
    return {0, text->length()};
}

std::string describe(NSRange range) {
    return range.location == NSNotFound ? "none" : std::to_string(range.location) + "+" + std::to_string(range.length);
}

std::string describe(NSTextCheckingResult* result) {
    std::string text = describe(result->range());
    for (NSUInteger index = 1; index < result->numberOfRanges(); ++index)
        text += "," + describe(result->rangeAtIndex(index));
    return text;
}

std::string matches(NSRegularExpression* pattern, NSString* text, NSUInteger options = 0) {
    std::string result;
    for (const id& match : pattern->matchesInString_options_range(text, options, all(text)))
        result += (result.empty() ? "" : " ") + describe(cast<NSTextCheckingResult>(match));
    return result;
}

TEST(RegularExpression, isNullForAnInvalidPattern) {
    for (NSString* pattern : {""_ns.get(), "("_ns.get(), "\\d{0,-1}"_ns.get(), static_cast<NSString*>(nullptr)}) {
        SCOPED_TRACE(pattern ? pattern->utf8() : "null");
        Ref<NSError> error;
        EXPECT_FALSE(NSRegularExpression::regularExpressionWithPattern_options_error(pattern, 0, &error));
        ASSERT_TRUE(error);
        EXPECT_EQ(error->domain()->utf8(), "NSCocoaErrorDomain");
        EXPECT_EQ(error->code(), 2048);
        EXPECT_GT(error->localizedDescription()->length(), 0U);
        EXPECT_FALSE(expression(pattern));
    }
}

TEST(RegularExpression, leavesTheErrorAloneForAValidPattern) {
    Ref<NSError> error;
    const auto made = NSRegularExpression::regularExpressionWithPattern_options_error("(a)(b)?"_ns, 1 + 8, &error);
    ASSERT_TRUE(made);
    EXPECT_FALSE(error);
    EXPECT_EQ(made->pattern()->utf8(), "(a)(b)?");
    EXPECT_EQ(made->options(), 9U);
    EXPECT_EQ(made->numberOfCaptureGroups(), 2U);
}

TEST(RegularExpression, keepsItsPatternWhenTheStringChanges) {
    const Ref<NSMutableString> pattern = NSMutableString::stringWithString("a"_ns);
    const Ref<NSRegularExpression> made = expression(pattern);
    pattern->appendString("b"_ns);
    EXPECT_EQ(made->pattern()->utf8(), "a");
    EXPECT_EQ(matches(made, "a"_ns), "0+1");
}

TEST(RegularExpression, findsAllMatchesWithTheirGroups) {
    EXPECT_EQ(matches(expression("(a)|(b)"_ns), "ab"_ns), "0+1,0+1,none 1+1,none,1+1");
    EXPECT_EQ(matches(expression("a*"_ns), "baac"_ns), "0+0 1+2 3+0 4+0");
    EXPECT_EQ(matches(expression("(a*)*"_ns), "aa"_ns), "0+2,2+0 2+0,2+0");
    EXPECT_EQ(matches(expression("x"_ns), "abc"_ns), "");
    EXPECT_EQ(matches(expression("x"_ns), ""_ns), "");
    EXPECT_EQ(matches(expression("."_ns), u"😀b"_ns), "0+2 2+1");
}

TEST(RegularExpression, honoursItsOptions) {
    EXPECT_EQ(matches(expression("A"_ns), "aA"_ns), "1+1");
    EXPECT_EQ(matches(expression("A"_ns, NSRegularExpressionCaseInsensitive), "aA"_ns), "0+1 1+1");
    EXPECT_EQ(matches(expression("a b # c"_ns, NSRegularExpressionAllowCommentsAndWhitespace), "ab"_ns), "0+2");
    EXPECT_EQ(matches(expression("a.("_ns, NSRegularExpressionIgnoreMetacharacters), "aa.("_ns), "1+3");
    EXPECT_EQ(matches(expression("a.b"_ns, NSRegularExpressionDotMatchesLineSeparators), "a\nb"_ns), "0+3");
    EXPECT_EQ(matches(expression("^b"_ns, NSRegularExpressionAnchorsMatchLines), "a\nb"_ns), "2+1");
    EXPECT_EQ(matches(expression("a.b"_ns, NSRegularExpressionUseUnixLineSeparators), "a\rb"_ns), "0+3");
    EXPECT_EQ(matches(expression("\\bt"_ns, NSRegularExpressionUseUnicodeWordBoundaries), "don't"_ns), "");
}

TEST(RegularExpression, honoursTheMatchingOptions) {
    const Ref<NSRegularExpression> a = expression("a"_ns);
    EXPECT_EQ(matches(a, "aba"_ns, NSMatchingReportProgress | NSMatchingReportCompletion), "0+1 2+1");
    EXPECT_EQ(matches(a, "aba"_ns, NSMatchingAnchored), "0+1");
    EXPECT_EQ(matches(a, "ba"_ns, NSMatchingAnchored), "");
    const NSRange tail{1, 1};
    EXPECT_EQ(describe(expression("^a"_ns)->rangeOfFirstMatchInString_options_range("ba"_ns, 0, tail)), "1+1");
    EXPECT_EQ(describe(expression("^a"_ns)->rangeOfFirstMatchInString_options_range(
                  "ba"_ns, NSMatchingWithoutAnchoringBounds, tail)),
              "none");
    EXPECT_EQ(describe(expression("a(?=b)"_ns)->rangeOfFirstMatchInString_options_range("ab"_ns, 0, {0, 1})), "none");
    EXPECT_EQ(describe(expression("a(?=b)"_ns)
                           ->rangeOfFirstMatchInString_options_range("ab"_ns, NSMatchingWithTransparentBounds, {0, 1})),
              "0+1");
}

TEST(RegularExpression, findsTheFirstMatchOnly) {
    const Ref<NSRegularExpression> digits = expression("(\\d)\\d*"_ns);
    const Ref<NSTextCheckingResult> first = digits->firstMatchInString_options_range("a12 34"_ns, 0, {0, 6});
    ASSERT_TRUE(first);
    EXPECT_EQ(describe(first), "1+2,1+1");
    EXPECT_EQ(first->regularExpression(), digits);
    EXPECT_FALSE(digits->firstMatchInString_options_range("abc"_ns, 0, {0, 3}));
    EXPECT_EQ(describe(digits->rangeOfFirstMatchInString_options_range("a12 34"_ns, 0, {3, 3})), "4+2");
    EXPECT_EQ(digits->numberOfMatchesInString_options_range("a12 34"_ns, 0, {0, 6}), 2U);
    EXPECT_EQ(digits->numberOfMatchesInString_options_range("a12 34"_ns, 0, {3, 0}), 0U);
}

TEST(RegularExpression, raisesForTextsAndRangesThatAreNone) {
    const Ref<NSRegularExpression> a = expression("a"_ns);
    try {
        static_cast<void>(a->numberOfMatchesInString_options_range(nullptr, 0, {0, 0}));
        FAIL() << "a null text must raise";
    } catch (const NSException& exception) {
        EXPECT_EQ(exception.name(), NSInvalidArgumentException);
    }
    for (const NSRange range : {NSRange{0, 4}, NSRange{4, 0}, NSRange{3, 1}, NSRange{1, ~NSUInteger{0}},
                                NSRange{NSNotFound, 0}, NSRange{~NSUInteger{0}, 2}}) {
        SCOPED_TRACE(describe(range));
        try {
            static_cast<void>(a->matchesInString_options_range("aaa"_ns, 0, range));
            ADD_FAILURE() << "a range outside the text must raise";
        } catch (const NSException& exception) {
            EXPECT_EQ(exception.name(), NSRangeException);
        }
    }
    EXPECT_EQ(a->matchesInString_options_range("aaa"_ns, 0, {3, 0})->count(), 0U);
}

TEST(RegularExpressionEnumeration, stopsWhenTold) {
    const Ref<NSRegularExpression> a = expression("a"_ns);
    std::string log;
    const auto stopAtSecond = [&log](NSTextCheckingResult* result, NSUInteger flags, bool& stop) {
        log += describe(result) + "/" + std::to_string(flags) + " ";
        stop = result->range().location == 1;
    };
    a->enumerateMatchesInString_options_range_usingBlock("aaa"_ns, NSMatchingReportCompletion, {0, 3}, stopAtSecond);
    EXPECT_EQ(log, "0+1/0 1+1/0 ");
}

TEST(RegularExpressionEnumeration, reportsItsEndWhenAsked) {
    const Ref<NSRegularExpression> a = expression("a"_ns);
    std::string log;
    const auto write = [&log](NSTextCheckingResult* result, NSUInteger flags, bool&) {
        log += (result ? describe(result) : "end") + "/" + std::to_string(flags) + " ";
    };
    a->enumerateMatchesInString_options_range_usingBlock("aa"_ns, NSMatchingReportCompletion, {0, 2}, write);
    EXPECT_EQ(log, "0+1/0 1+1/0 end/2 ");
    log.clear();
    a->enumerateMatchesInString_options_range_usingBlock("aa"_ns, 0, {0, 2}, write);
    EXPECT_EQ(log, "0+1/0 1+1/0 ");
    a->enumerateMatchesInString_options_range_usingBlock("aa"_ns, 0, {0, 2}, nullptr);
    EXPECT_EQ(log, "0+1/0 1+1/0 ");
}

TEST(RegularExpressionEnumeration, survivesACallbackThatChangesTheTextAndLetsGo) {
    Ref<NSRegularExpression> a = expression("a"_ns);
    Ref<NSMutableString> text = NSMutableString::stringWithString("aaa"_ns);
    int calls = 0;
    a->enumerateMatchesInString_options_range_usingBlock(text, 0, {0, 3},
                                                         [&](NSTextCheckingResult*, NSUInteger, bool&) {
                                                             ++calls;
                                                             text->setString(""_ns);
                                                             a = nullptr;
                                                         });
    EXPECT_EQ(calls, 3);
}

TEST(RegularExpressionTemplate, replacesInTheRangeAndKeepsTheRest) {
    const Ref<NSRegularExpression> pair = expression("(a)(b)"_ns);
    const auto replace = [&](NSString* text, NSRange range, NSString* replacement) {
        return pair
            ->stringByReplacingMatchesInString_options_range_withTemplate(text, NSMatchingReportCompletion, range,
                                                                          replacement)
            ->utf8();
    };
    EXPECT_EQ(replace("xaby"_ns, {0, 4}, "$2$1"_ns), "xbay");
    EXPECT_EQ(replace("ababab"_ns, {2, 2}, "-"_ns), "ab-ab");
    EXPECT_EQ(replace("ab"_ns, {0, 2}, "$3x"_ns), "x");
    EXPECT_EQ(replace("ab"_ns, {0, 2}, ""_ns), "");
    EXPECT_EQ(replace("xyz"_ns, {0, 3}, "-"_ns), "xyz");
    EXPECT_EQ(replace("ab"_ns, {0, 2}, nullptr), "ab");
}

TEST(RegularExpressionTemplate, isFilledInForOneMatch) {
    const Ref<NSRegularExpression> pair = expression("(a)(b)?"_ns);
    const Ref<NSTextCheckingResult> match = pair->firstMatchInString_options_range("xa"_ns, 0, {0, 2});
    const auto fill = [&](NSString* text, NSInteger offset, NSString* replacement) {
        return pair->replacementStringForResult_inString_offset_template(match, text, offset, replacement)->utf8();
    };
    EXPECT_EQ(fill("xa"_ns, 0, "<$1|$2>"_ns), "<a|>");
    EXPECT_EQ(fill("--q"_ns, 1, "$0"_ns), "q");
    EXPECT_EQ(fill("q"_ns, -1, "$0"_ns), "q");
    EXPECT_EQ(fill("xa"_ns, 0, nullptr), "");
    EXPECT_THROW(fill("x"_ns, 0, "$0"_ns), NSException);
    EXPECT_THROW(fill("xa"_ns, -2, "$0"_ns), NSException);
    EXPECT_THROW(fill(nullptr, 0, "$0"_ns), NSException);
}

TEST(RegularExpression, escapes) {
    EXPECT_EQ(NSRegularExpression::escapedPatternForString("a.b[1]"_ns)->utf8(), "a\\.b\\[1]");
    EXPECT_EQ(NSRegularExpression::escapedTemplateForString("$1\\"_ns)->utf8(), "\\$1\\\\");
    EXPECT_FALSE(NSRegularExpression::escapedPatternForString(nullptr));
    EXPECT_FALSE(NSRegularExpression::escapedTemplateForString(nullptr));
}

TEST(RegularExpression, isAValue) {
    const Ref<NSRegularExpression> a = expression("a"_ns, 1);
    EXPECT_TRUE(a->isEqual(expression("a"_ns, 1)));
    EXPECT_EQ(a->hash(), expression("a"_ns, 1)->hash());
    EXPECT_FALSE(a->isEqual(expression("a"_ns)));
    EXPECT_FALSE(a->isEqual(expression("b"_ns, 1)));
    EXPECT_FALSE(a->isEqual("a"_ns));
    EXPECT_FALSE(a->isEqual(nullptr));
    EXPECT_EQ(a->copy(), a);
}

TEST(RegularExpression, matchesNothingBeforeAnInitialiserHasRun) {
    const Ref<NSRegularExpression> fresh = make<NSRegularExpression>();
    EXPECT_EQ(fresh->numberOfMatchesInString_options_range("a"_ns, 0, {0, 1}), 0U);
    EXPECT_EQ(fresh->numberOfCaptureGroups(), 0U);
    EXPECT_FALSE(fresh->pattern());
    EXPECT_TRUE(fresh->description());
}

TEST(TextCheckingResult, refusesAnIndexBeyondItsRanges) {
    const Ref<NSTextCheckingResult> result = NSTextCheckingResult::resultWithRanges({{1, 2}, {NSNotFound, 0}});
    EXPECT_EQ(result->numberOfRanges(), 2U);
    EXPECT_EQ(describe(result), "1+2,none");
    EXPECT_FALSE(result->regularExpression());
    try {
        static_cast<void>(result->rangeAtIndex(2));
        FAIL() << "there is no range 2";
    } catch (const NSException& exception) {
        EXPECT_EQ(exception.name(), NSRangeException);
    }
}

TEST(TextCheckingResult, isAValue) {
    const Ref<NSTextCheckingResult> result = NSTextCheckingResult::resultWithRanges({{1, 2}, {1, 1}});
    EXPECT_TRUE(result->isEqual(NSTextCheckingResult::resultWithRanges({{1, 2}, {1, 1}})));
    EXPECT_EQ(result->hash(), NSTextCheckingResult::resultWithRanges({{1, 2}, {1, 1}})->hash());
    EXPECT_FALSE(result->isEqual(NSTextCheckingResult::resultWithRanges({{1, 2}})));
    EXPECT_FALSE(result->isEqual(nullptr));
    EXPECT_EQ(result->copy(), result);
    EXPECT_EQ(describe(NSTextCheckingResult::resultWithRanges({})), "none");
}

TEST(RegularExpression, answersMessages) {
    const id made = send<id>(NSRegularExpression::classObject(), "regularExpressionWithPattern:options:error:"_sel,
                             "a+"_ns, NSUInteger{0}, static_cast<Ref<NSError>*>(nullptr));
    ASSERT_TRUE(made);
    EXPECT_EQ(
        send<NSUInteger>(made, "numberOfMatchesInString:options:range:"_sel, "a aa"_ns, NSUInteger{0}, NSRange{0, 4}),
        2U);
    EXPECT_EQ(send<Ref<NSString>>(made, "pattern"_sel)->utf8(), "a+");
}

} // namespace
} // namespace zr
