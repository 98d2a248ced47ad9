#include <zrbasic/platform/foundation/string.h>

#include "checks.h"

#include <zrbasic/platform/foundation/character_set.h>

#include <gtest/gtest.h>

#include <limits>

namespace zr {

namespace {

using test::raisedName;

constexpr NSRange nowhere{NSNotFound, 0};
constexpr NSUInteger hugeLength = std::numeric_limits<NSUInteger>::max();

Ref<NSString> string(std::u16string_view units) {
    return NSString::fromUtf16(units);
}

std::u16string text(const Ref<NSString>& subject) {
    return subject ? std::u16string(subject->view()) : u"no string";
}

TEST(StringComparing, isNotLiteralUnlessAsked) {
    EXPECT_EQ(u"\u00E9"_ns->compare(u"e\u0301"_ns), NSOrderedSame);
    EXPECT_EQ(u"\u00E9"_ns->compare_options(u"e\u0301"_ns, NSLiteralSearch), NSOrderedDescending);
    EXPECT_EQ(u"\uFF5E"_ns->compare(u"\U0001F600"_ns), NSOrderedAscending);
    EXPECT_EQ("10"_ns->compare("9"_ns), NSOrderedAscending);
    EXPECT_EQ("10"_ns->compare_options("9"_ns, NSNumericSearch), NSOrderedDescending);
    EXPECT_EQ("B"_ns->compare("a"_ns), NSOrderedAscending);
    EXPECT_EQ("B"_ns->caseInsensitiveCompare("a"_ns), NSOrderedDescending);
    EXPECT_EQ("GOLD"_ns->caseInsensitiveCompare("gold"_ns), NSOrderedSame);
    EXPECT_EQ(u"\uFF21\uFF22\uFF23"_ns->compare_options("abc"_ns, 257), NSOrderedSame);
}

TEST(StringComparing, everythingComesAfterNull) {
    EXPECT_EQ("a"_ns->compare(nullptr), NSOrderedDescending);
    EXPECT_EQ(""_ns->compare(nullptr), NSOrderedDescending);
    EXPECT_EQ("a"_ns->caseInsensitiveCompare(nullptr), NSOrderedDescending);
    EXPECT_EQ("a"_ns->compare_options(nullptr, 0), NSOrderedDescending);
    EXPECT_EQ(""_ns->compare(""_ns), NSOrderedSame);
}

TEST(StringComparing, aRangeOfTheReceiverIsComparedWithTheWholeArgument) {
    const Ref<NSString> subject = "xABCx"_ns;
    EXPECT_EQ(subject->compare_options_range("abc"_ns, NSCaseInsensitiveSearch, {1, 3}), NSOrderedSame);
    EXPECT_EQ(subject->compare_options_range("ABC"_ns, 0, {1, 2}), NSOrderedAscending);
    EXPECT_EQ(subject->compare_options_range(""_ns, 0, {5, 0}), NSOrderedSame);
    EXPECT_EQ(raisedName([&] { (void)subject->compare_options_range("abc"_ns, 0, {3, 3}); }), NSRangeException);
    EXPECT_EQ(raisedName([&] { (void)subject->compare_options_range(nullptr, 0, {6, 0}); }), NSRangeException);
}

TEST(StringSearching, equivalentTextIsFound) {
    EXPECT_EQ(u"ae\u0301"_ns->rangeOfString(u"\u00E9"_ns), NSMakeRange(1, 2));
    EXPECT_EQ(u"\u00E9"_ns->rangeOfString(u"e\u0301"_ns), NSMakeRange(0, 1));
    EXPECT_EQ(u"e\u0301"_ns->rangeOfString("e"_ns), nowhere);
    EXPECT_EQ(u"e\u0301"_ns->rangeOfString_options("e"_ns, NSLiteralSearch), NSMakeRange(0, 1));
    EXPECT_FALSE(u"1\u20E3"_ns->containsString("1"_ns));
    EXPECT_FALSE(u"a\uFE0F"_ns->containsString("a"_ns));
    EXPECT_TRUE(u"\U0001F469\u200D\U0001F4BB"_ns->containsString(u"\U0001F469"_ns));
    EXPECT_TRUE("\r\n"_ns->containsString("\n"_ns));
}

TEST(StringSearching, anEmptyNeedleIsNeverFound) {
    EXPECT_EQ("abc"_ns->rangeOfString(""_ns), nowhere);
    EXPECT_FALSE("abc"_ns->containsString(""_ns));
    EXPECT_FALSE("abc"_ns->hasPrefix(""_ns));
    EXPECT_FALSE("abc"_ns->hasSuffix(""_ns));
    EXPECT_FALSE(""_ns->hasPrefix(""_ns));
    EXPECT_EQ("abc"_ns->localizedStandardRangeOfString(""_ns), nowhere);
    EXPECT_EQ(""_ns->rangeOfString("a"_ns), nowhere);
}

TEST(StringSearching, aNullNeedleRaises) {
    const Ref<NSString> subject = "abc"_ns;
    EXPECT_EQ(test::raised([&] { (void)subject->rangeOfString(nullptr); }),
              "NSInvalidArgumentException: *** -[NSString rangeOfString:]: nil argument");
    EXPECT_EQ(raisedName([&] { (void)subject->containsString(nullptr); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([&] { (void)subject->hasPrefix(nullptr); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([&] { (void)subject->hasSuffix(nullptr); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([&] { (void)subject->rangeOfString_options(nullptr, 1024); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([&] { (void)subject->localizedStandardRangeOfString(nullptr); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([&] { (void)subject->rangeOfCharacterFromSet(nullptr); }), NSInvalidArgumentException);
}

TEST(StringSearching, prefixesAndSuffixesAreLiteral) {
    EXPECT_TRUE(u"e\u0301x"_ns->hasPrefix("e"_ns));
    EXPECT_FALSE(u"\u00E9"_ns->hasPrefix(u"e\u0301"_ns));
    EXPECT_TRUE(u"xe\u0301"_ns->hasSuffix(u"\u0301"_ns));
    EXPECT_TRUE("abc"_ns->hasPrefix("abc"_ns));
    EXPECT_FALSE("abc"_ns->hasPrefix("abcd"_ns));
    EXPECT_FALSE("abc"_ns->hasSuffix("B"_ns));
}

TEST(StringSearching, theLastPointIsFoundBackwards) {
    const Ref<NSString> price = "1.234.5"_ns;
    EXPECT_EQ(price->rangeOfString_options("."_ns, NSLiteralSearch | NSBackwardsSearch), NSMakeRange(5, 1));
    EXPECT_EQ(price->rangeOfString_options("."_ns, 0), NSMakeRange(1, 1));
    EXPECT_EQ(price->rangeOfString_options("1."_ns, NSAnchoredSearch), NSMakeRange(0, 2));
    EXPECT_EQ(price->rangeOfString_options("."_ns, NSAnchoredSearch), nowhere);
    EXPECT_EQ(price->rangeOfString_options(".5"_ns, NSAnchoredSearch | NSBackwardsSearch), NSMakeRange(5, 2));
}

TEST(StringSearching, aRangeLimitsTheSearch) {
    const Ref<NSString> subject = "abcabc"_ns;
    EXPECT_EQ(subject->rangeOfString_options_range("bc"_ns, 0, {2, 4}), NSMakeRange(4, 2));
    EXPECT_EQ(subject->rangeOfString_options_range("bc"_ns, 0, {2, 3}), nowhere);
    EXPECT_EQ(subject->rangeOfString_options_range("bc"_ns, NSBackwardsSearch, {0, 5}), NSMakeRange(1, 2));
    EXPECT_EQ(subject->rangeOfString_options_range("a"_ns, NSAnchoredSearch, {3, 3}), NSMakeRange(3, 1));
    EXPECT_EQ(raisedName([&] { (void)subject->rangeOfString_options_range("a"_ns, 0, {7, 0}); }), NSRangeException);
    EXPECT_EQ(raisedName([&] {
                  (void)subject->rangeOfString_options_range("a"_ns, 0, {1, hugeLength});
              }),
              NSRangeException);
}

TEST(StringSearching, patternsAreAnOption) {
    const Ref<NSString> subject = "abc123"_ns;
    EXPECT_EQ(subject->rangeOfString_options("[0-9]+"_ns, NSRegularExpressionSearch), NSMakeRange(3, 3));
    EXPECT_EQ(subject->rangeOfString_options("B"_ns, NSRegularExpressionSearch), nowhere);
    EXPECT_EQ(subject->rangeOfString_options("B"_ns, NSRegularExpressionSearch | NSCaseInsensitiveSearch),
              NSMakeRange(1, 1));
    EXPECT_EQ(subject->rangeOfString_options("[0-9]+"_ns, NSRegularExpressionSearch | NSAnchoredSearch), nowhere);
    EXPECT_EQ(subject->rangeOfString_options_range("[0-9]"_ns, NSRegularExpressionSearch, {4, 2}), NSMakeRange(4, 1));
    EXPECT_EQ(subject->rangeOfString_options("x*"_ns, NSRegularExpressionSearch), NSMakeRange(0, 0));
}

TEST(StringSearching, aPatternThatIsNoneIsNotFound) {
    for (const char* pattern : {"", "(", "[", "*a", "a{", "\\"}) {
        EXPECT_EQ("abc"_ns->rangeOfString_options(NSString::fromUtf8(pattern), NSRegularExpressionSearch), nowhere)
            << pattern;
    }
}

TEST(StringSearching, asAPersonSearches) {
    const struct {
        const char16_t* subject;
        const char16_t* needle;
        NSRange range;
    } rows[] = {
        {u"xABCx", u"abc", {1, 3}},   {u"\u00E9a", u"E", {0, 1}},      {u"e", u"\u00E9", {0, 1}},
        {u"a\u0301 b", u"a", {0, 2}}, {u"stra\u00DFe", u"SS", {4, 1}}, {u"na\u00EFve", u"NAIVE", {0, 5}},
        {u"\uFF21", u"a", nowhere},   {u"abc", u"d", nowhere},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(string(row.subject)->utf8());
        EXPECT_EQ(string(row.subject)->localizedStandardRangeOfString(string(row.needle)), row.range);
    }
}

TEST(StringSearching, membersOfASetAreWholeCodePoints) {
    const Ref<NSCharacterSet> digits = NSCharacterSet::decimalDigitCharacterSet();
    EXPECT_EQ("ab1c2"_ns->rangeOfCharacterFromSet(digits), NSMakeRange(2, 1));
    EXPECT_EQ("ab1c2"_ns->rangeOfCharacterFromSet_options(digits, NSBackwardsSearch), NSMakeRange(4, 1));
    EXPECT_EQ("ab1c2"_ns->rangeOfCharacterFromSet_options(digits, NSAnchoredSearch), nowhere);
    EXPECT_EQ("ab1c2"_ns->rangeOfCharacterFromSet_options(digits, NSAnchoredSearch | NSBackwardsSearch),
              NSMakeRange(4, 1));
    EXPECT_EQ("ab1c2"_ns->rangeOfCharacterFromSet_options_range(digits, 0, {3, 2}), NSMakeRange(4, 1));
    EXPECT_EQ(u"x\U0001D7D8"_ns->rangeOfCharacterFromSet(digits), NSMakeRange(1, 2));
    EXPECT_EQ(u"\U0001D7D8x"_ns->rangeOfCharacterFromSet_options(digits, NSBackwardsSearch), NSMakeRange(0, 2));
    EXPECT_EQ(""_ns->rangeOfCharacterFromSet(digits), nowhere);
    EXPECT_EQ(raisedName([&] {
                  (void)"ab"_ns->rangeOfCharacterFromSet_options_range(digits, 0, {1, 2});
              }),
              NSRangeException);
}

TEST(StringReplacing, goesLeftToRightOnce) {
    const auto replaced = [](const char* subject, const char* target, const char* replacement) {
        return NSString::fromUtf8(subject)
            ->stringByReplacingOccurrencesOfString_withString(NSString::fromUtf8(target),
                                                              NSString::fromUtf8(replacement))
            ->utf8();
    };
    EXPECT_EQ(replaced("aaa", "aa", "b"), "ba");
    EXPECT_EQ(replaced("abcabc", "bc", "bcbc"), "abcbcabcbc");
    EXPECT_EQ(replaced("abc", "", "x"), "abc");
    EXPECT_EQ(replaced("abc", "abc", ""), "");
    EXPECT_EQ(replaced("1,234,567", ",", ""), "1234567");
    EXPECT_EQ(replaced("", "a", "b"), "");
    EXPECT_EQ(replaced("$1", "1", "$1"), "$$1");
}

TEST(StringReplacing, isNotLiteralUnlessAsked) {
    const Ref<NSString> subject = u"\u00E9e\u0301e"_ns;
    EXPECT_EQ(text(subject->stringByReplacingOccurrencesOfString_withString(u"\u00E9"_ns, "x"_ns)), u"xxe");
    EXPECT_EQ(text(subject->stringByReplacingOccurrencesOfString_withString("e"_ns, "x"_ns)), u"\u00E9e\u0301x");
    EXPECT_EQ(text(subject->stringByReplacingOccurrencesOfString_withString_options_range("e"_ns, "x"_ns,
                                                                                          NSLiteralSearch, {0, 4})),
              u"\u00E9x\u0301x");
    EXPECT_EQ(text("Gold GOLD"_ns->stringByReplacingOccurrencesOfString_withString_options_range(
                  "gold"_ns, "Au"_ns, NSCaseInsensitiveSearch, {0, 9})),
              u"Au Au");
    EXPECT_EQ(
        text("aaaa"_ns->stringByReplacingOccurrencesOfString_withString_options_range("a"_ns, "bb"_ns, 0, {1, 2})),
        u"abbbba");
}

TEST(StringReplacing, withAPatternTheReplacementIsATemplate) {
    EXPECT_EQ(text("a1b22"_ns->stringByReplacingOccurrencesOfString_withString_options_range(
                  "([a-z])([0-9]+)"_ns, "$2$1"_ns, NSRegularExpressionSearch, {0, 5})),
              u"1a22b");
    const Ref<NSString> subject = "abc"_ns;
    EXPECT_EQ(subject
                  ->stringByReplacingOccurrencesOfString_withString_options_range("("_ns, "x"_ns,
                                                                                  NSRegularExpressionSearch, {0, 3})
                  .get(),
              subject.get());
    EXPECT_EQ(text(subject->stringByReplacingOccurrencesOfString_withString_options_range(
                  "[a-z]"_ns, "-"_ns, NSRegularExpressionSearch, {1, 1})),
              u"a-c");
}

TEST(StringReplacing, nullAndForeignRangesRaise) {
    const Ref<NSString> subject = "abc"_ns;
    EXPECT_EQ(raisedName([&] { (void)subject->stringByReplacingOccurrencesOfString_withString(nullptr, "x"_ns); }),
              NSInvalidArgumentException);
    EXPECT_EQ(raisedName([&] { (void)subject->stringByReplacingOccurrencesOfString_withString("x"_ns, nullptr); }),
              NSInvalidArgumentException);
    EXPECT_EQ(
        raisedName([&] {
            (void)subject->stringByReplacingOccurrencesOfString_withString_options_range("a"_ns, "b"_ns, 0, {1, 3});
        }),
        NSRangeException);
    EXPECT_EQ(subject->stringByReplacingOccurrencesOfString_withString("x"_ns, "y"_ns).get(), subject.get());
}

} // namespace
} // namespace zr
