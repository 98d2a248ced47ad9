#include <zrbasic/platform/foundation/pattern_p.h>

#include "pattern_testing.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace zr::detail {
namespace {

bool found(std::u16string_view pattern, std::u16string_view text) {
    return containsMatch(pattern, 0, text);
}

std::u16string replaced(std::u16string_view pattern, std::u16string_view text, std::u16string_view replacement) {
    return replaceMatches(allMatches(compiledPattern(pattern, 0), text), text, replacement);
}

bool compiles(std::u16string_view pattern, unsigned options = 0) {
    return isValid(compiledPattern(pattern, options));
}

TEST(PatternCompiling, refusesWhatTheSyntaxDoesNotAllow) {
    for (const std::u16string_view pattern :
         {u"",        u"(",        u"[",    u"*a",     u"+",        u"a**",   u"a{2,1}",  u"\\d{0,-1}",
          u"a{",      u"a{,3}",    u"{",    u"}",      u"a\\",      u"[b-a]", u"[]",      u"[^]",
          u"[a-\\d]", u"(?P<n>a)", u"\\1",  u"\\k<x>", u"(?<=a+)b", u"\\b+?", u"(?=x)*?", u"(?<!a)+?",
          u"\\A+?",   u"(?i)+?",   u"^+?+", u")",      u"(?",       u"(?q)a", u"a)(?=b*"}) {
        SCOPED_TRACE(narrow(pattern));
        EXPECT_FALSE(compiles(pattern));
        EXPECT_EQ(first(pattern, u"abc"), "none");
        EXPECT_FALSE(matchesWhole(pattern, 0, u"abc"));
        EXPECT_EQ(matches(pattern, u"abc"), "");
    }
}

TEST(PatternCompiling, acceptsTheLessUsualForms) {
    for (const std::u16string_view pattern : {u"]", u"[]a]", u"[\\w-]", u"[\\w- .]", u"[.-/]", u"a++", u"(?<=a{1,3})b",
                                              u"x{0}", u"\\q", u"^+?", u"$*?", u"()+?", u"(?#c)", u"\\Q\\E"}) {
        SCOPED_TRACE(narrow(pattern));
        EXPECT_TRUE(compiles(pattern));
    }
    EXPECT_EQ(first(u"\\q", u"aq"), "1+1") << "an unknown letter escape is the letter";
    EXPECT_EQ(first(u"[\\w- .]+", u"*a-b .*"), "1+5") << "a dash behind a class is literal";
    EXPECT_EQ(first(u"[.-/]+", u"-./"), "1+2") << "dot to slash is a range";
}

TEST(PatternCompiling, refusesPatternsThatWouldTakeTooLongToCompile) {
    EXPECT_TRUE(compiles(repeated(u"a", 100'000)));
    EXPECT_FALSE(compiles(repeated(u"a", 100'001)));
    EXPECT_TRUE(compiles(repeated(u"[ab]", 2'000)));
    EXPECT_FALSE(compiles(repeated(u"[ab]", 2'001)));
    EXPECT_TRUE(compiles(repeated(u"\\p{Lu}", 500)));
    EXPECT_FALSE(compiles(repeated(u"\\p{Lu}", 501)));
    EXPECT_FALSE(compiles(u"[" + repeated(u"\\p{Lu}", 501) + u"]")) << "inside a set as well";
    EXPECT_FALSE(compiles(u"[" + repeated(u"\\w", 2'001) + u"]"));
    EXPECT_TRUE(compiles(repeated(u"\\d", 5'000))) << "outside of sets the short names cost nothing";
    EXPECT_TRUE(compiles(repeated(u"[ab]", 2'001), patternIgnoresMetacharacters));
}

TEST(PatternCompiling, survivesDeepNesting) {
    EXPECT_TRUE(compiles(repeated(u"(", 40) + u"a" + repeated(u")", 40)));
    for (const std::u16string_view opening : {u"(", u"(?:", u"(?=", u"(?<=", u"(?>", u"[", u"(?x:", u"(?#"}) {
        SCOPED_TRACE(narrow(opening));
        const Stopwatch watch;
        EXPECT_EQ(first(repeated(opening, 20'000) + u"a" + repeated(opening == u"[" ? u"]" : u")", 20'000), u"b"),
                  "none");
        EXPECT_LT(watch.seconds(), 5.0);
    }
}

TEST(PatternOptions, areMappedOneByOne) {
    struct Row {
        const char* label;
        unsigned option;
        std::u16string_view pattern;
        std::u16string_view text;
        const char* without;
        const char* with;
    };
    const Row rows[] = {
        {"case", 1, u"ABC", u"xabc", "none", "1+3"},
        {"full case folding", 1, u"ß", u"ss", "none", "0+2"},
        {"Kelvin sign", 1, u"K", u"\u212A", "none", "0+1"},
        {"comments", 2, u"a b # c", u"ab", "none", "0+2"},
        {"literal", 4, u"a.c", u"abca.c", "0+3", "3+3"},
        {"literal backslash", 4, u"\\d", u"1\\d", "0+1", "1+2"},
        {"literal quoting", 4, u"\\Qa", u"a\\Qa", "0+1", "1+3"},
        {"dot", 8, u"a.b", u"a\nb", "none", "0+3"},
        {"line anchors", 16, u"^b", u"a\nb", "none", "2+1"},
        {"line anchors at a form feed", 16, u"^b", u"a\fb", "none", "2+1"},
        {"Unix lines", 32, u"a.b", u"a\rb", "none", "0+3"},
        {"Unicode words", 64, u"\\bt\\b", u"don't", "4+1", "none"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        EXPECT_EQ(first(row.pattern, row.text), row.without);
        EXPECT_EQ(first(row.pattern, row.text, row.option), row.with);
    }
    EXPECT_EQ(first(u"ABC", u"xabc", 1U << 31U), "none") << "bits without a meaning change nothing";
}

TEST(PatternOptions, addUp) {
    EXPECT_EQ(first(u"A.B", u"xa.b", 1 + 4), "1+3");
    EXPECT_EQ(first(u"^ B", u"a\nb", 1 + 2 + 16), "2+1");
}

TEST(PatternClasses, coverUnicode) {
    EXPECT_EQ(matches(u"\\d", u"1３٣x"), "0+1 1+1 2+1");
    EXPECT_EQ(matches(u"\\w+", u"né_中1 x"), "0+5 6+1");
    EXPECT_TRUE(matchesWhole(u"\\s+", 0, u"\t\n\v\f\r \u0085\u00A0\u1680\u2000\u200A\u2028\u2029\u202F\u205F\u3000"));
    EXPECT_EQ(first(u"\\s", u"\u200B"), "none");
    EXPECT_TRUE(matchesWhole(u"\\h+", 0, u"\t \u00A0\u3000"));
    EXPECT_EQ(first(u"\\h", u"\n"), "none");
    EXPECT_EQ(first(u"é", u"e\u0301"), "none") << "no canonical equivalence";
}

TEST(PatternDot, stopsAtEveryLineEndAndTakesSurrogatePairsWhole) {
    for (const char16_t end : {u'\n', u'\v', u'\f', u'\r', u'\x85', u'\x2028', u'\x2029'}) {
        SCOPED_TRACE(static_cast<int>(end));
        EXPECT_EQ(first(u".", std::u16string(1, end)), "none");
    }
    EXPECT_EQ(first(u".", u"😀"), "0+2");
    EXPECT_EQ(first(u".", u"\xD83D"), "0+1") << "half a pair is a character of its own";
    EXPECT_EQ(first(u".", u"\x1C"), "0+1");
}

TEST(PatternEndAnchor, holdsBeforeOneFinalLineEnd) {
    EXPECT_EQ(first(u"a$", u"a"), "0+1");
    EXPECT_EQ(first(u"a$", u"a\n"), "0+1");
    EXPECT_EQ(first(u"a$", u"a\r\n"), "0+1");
    EXPECT_EQ(first(u"a$", u"a\u2028"), "0+1");
    EXPECT_EQ(first(u"a$", u"a\n\n"), "none");
    EXPECT_EQ(first(u"a\\z", u"a\n"), "none");
    EXPECT_EQ(first(u"a\\z", u"ba"), "1+1");
    EXPECT_EQ(first(u"a\\Z", u"a\n"), "0+1");
    EXPECT_EQ(first(u"^a", u"b\na"), "none");
    EXPECT_EQ(matches(u"^a$", u"a\na\va", patternAnchorsMatchLines), "0+1 2+1 4+1");
}

TEST(PatternMatching, isLeftmostFirst) {
    EXPECT_EQ(first(u"a|ab", u"ab"), "0+1");
    EXPECT_EQ(first(u"b", u"abab"), "1+1");
    EXPECT_EQ(matches(u"b", u"abab"), "1+1 3+1");
    EXPECT_EQ(matches(u"aa", u"aaaaa"), "0+2 2+2");
}

TEST(PatternMatching, reportsEmptyMatchesAndGoesOn) {
    EXPECT_EQ(matches(u"a*", u"baac"), "0+0 1+2 3+0 4+0");
    EXPECT_EQ(matches(u"x*", u""), "0+0");
    EXPECT_EQ(matches(u"x{0}", u"ab"), "0+0 1+0 2+0");
    EXPECT_EQ(matches(u"x*", u"😀"), "0+0 2+0") << "one character on, not one code unit";
    EXPECT_EQ(matches(u"(a*)*", u"aa"), "0+2[2+0] 2+0[2+0]");
    EXPECT_EQ(first(u"x*", u"abc"), "0+0");
    EXPECT_TRUE(found(u"x*", u"abc"));
    EXPECT_TRUE(found(u"c", u"abc"));
    EXPECT_FALSE(found(u"^c", u"abc"));
}

TEST(PatternMatching, tellsAbsentGroupsFromEmptyOnes) {
    EXPECT_EQ(matches(u"(a)|(b)", u"ab"), "0+1[0+1 none] 1+1[none 1+1]");
    EXPECT_EQ(matches(u"(a?)(b)", u"b"), "0+1[0+0 0+1]");
    EXPECT_EQ(groupCount(compiledPattern(u"(a)(?:b)(?<n>c)", 0)), 2U);
    EXPECT_EQ(groupCount(compiledPattern(u"(", 0)), 0U);
    PatternMatcher matcher(u"(a)", 0);
    matcher.setText(u"a");
    ASSERT_TRUE(matcher.findNext());
    EXPECT_EQ(matcher.range(1), NSMakeRange(0, 1));
    EXPECT_EQ(matcher.range(2), noRange);
    EXPECT_FALSE(matcher.findNext());
    EXPECT_EQ(matcher.range(0), noRange) << "a walk that ended has no current match";
}

TEST(PatternMatching, keepsInsideTheRange) {
    EXPECT_EQ(matches(u"a", u"aaaa", 0, {1, 2}), "1+1 2+1");
    EXPECT_EQ(matches(u"^a", u"baa", 0, {1, 2}), "1+1") << "the range's ends are anchors";
    EXPECT_EQ(matches(u"a$", u"aab", 0, {0, 2}), "1+1");
    EXPECT_EQ(matches(u"^a", u"baa", 0, {1, 2}, matchingWithoutAnchoringBounds), "");
    EXPECT_EQ(matches(u"b(?=a)", u"baa", 0, {0, 1}), "") << "look-aheads stop at the range";
    EXPECT_EQ(matches(u"b(?=a)", u"baa", 0, {0, 1}, matchingWithTransparentBounds), "0+1");
    EXPECT_EQ(matches(u"b(?=a)", u"baa", 0, {0, 1}), "");
    EXPECT_EQ(matches(u"^a", u"baa", 0, {1, 2}), "1+1") << "the bounds of one walk do not stay for the next";
    EXPECT_EQ(matches(u"x*", u"abc", 0, {3, 0}), "3+0");
}

TEST(PatternMatching, cutsARangeBeyondTheText) {
    EXPECT_EQ(matches(u"a", u"aa", 0, {1, 100}), "1+1");
    EXPECT_EQ(matches(u"a", u"aa", 0, {100, 1}), "");
    EXPECT_EQ(matches(u"a", u"aa", 0, {1, NSNotFound}), "1+1");
    EXPECT_EQ(matches(u"a", u"aa", 0, {NSNotFound, 0}), "");
    EXPECT_EQ(matches(u"a", u"aa", 0, {~NSUInteger{0}, ~NSUInteger{0}}), "");
}

TEST(PatternMatching, findsOneMatchWhereAnAnchoredRangeBegins) {
    EXPECT_EQ(matches(u"a", u"aab", 0, wholeText, matchingAnchored), "0+1");
    EXPECT_EQ(matches(u"b", u"aab", 0, wholeText, matchingAnchored), "");
    EXPECT_EQ(matches(u"b", u"aab", 0, {2, 1}, matchingAnchored), "2+1");
    EXPECT_EQ(matches(u"x*", u"aab", 0, wholeText, matchingAnchored), "0+0");
}

TEST(PatternMatching, ignoresTheReportingOptions) {
    EXPECT_EQ(matches(u"a", u"aa", 0, wholeText, 1 + 2), "0+1 1+1");
}

TEST(PatternMatching, takesAnyCodeUnits) {
    EXPECT_EQ(first(std::u16string_view(u"\0", 1), std::u16string_view(u"a\0b", 3)), "1+1");
    EXPECT_EQ(first(u"\xDC00", u"a\xDC00"), "1+1");
    EXPECT_EQ(first(u"\xFFFF", u"\xFFFE\xFFFF"), "1+1");
    EXPECT_EQ(first(u"a", std::u16string_view()), "none");
    EXPECT_EQ(first(std::u16string_view(), u"a"), "none");
}

TEST(PatternWholeMatch, spansTheText) {
    EXPECT_TRUE(matchesWhole(u"a|ab", 0, u"ab"));
    EXPECT_TRUE(matchesWhole(u"a?", 0, u""));
    EXPECT_TRUE(matchesWhole(u"\\d+", 0, u"123"));
    EXPECT_FALSE(matchesWhole(u"^\\d+$", 0, u"123\n")) << "the line feed is not consumed";
    EXPECT_FALSE(matchesWhole(u".*", 0, u"a\nb"));
    EXPECT_FALSE(matchesWhole(u"b", 0, u"abc"));
    EXPECT_FALSE(matchesWhole(u"A", 0, u"a"));
    EXPECT_FALSE(matchesWhole(u"", 0, u""));
}

TEST(PatternTemplate, fillsInGroups) {
    struct Row {
        std::u16string_view pattern;
        std::u16string_view text;
        std::u16string_view replacement;
        std::u16string_view result;
    };
    const Row rows[] = {
        {u"(a)(b)", u"xaby", u"$2$1", u"xbay"},
        {u"(a)(b)", u"ab", u"$12", u"a2"},
        {u"(a)(b)", u"ab", u"$3x", u"x"},
        {u"(a)", u"xay", u"$0$0", u"xaay"},
        {u"(a)", u"xay", u"$2", u"xy"},
        {u"(a)", u"xay", u"$10", u"xa0y"},
        {u"(a)", u"xay", u"$01", u"xa1y"},
        {u"(a)", u"xay", u"$", u"x$y"},
        {u"(a)", u"xay", u"$x", u"x$xy"},
        {u"(a)", u"xay", u"$1$", u"xa$y"},
        {u"(a)", u"xay", u"$$1", u"x$ay"},
        {u"(a)", u"xay", u"${1}", u"x${1}y"},
        {u"(a)", u"xay", u"$１", u"x$１y"},
        {u"(a)", u"xay", u"\\$1", u"x$1y"},
        {u"(a)", u"xay", u"\\\\$1", u"x\\ay"},
        {u"(a)", u"xay", u"\\n", u"xny"},
        {u"(a)", u"xay", u"a\\", u"xay"},
        {u"(a)?b", u"b", u"[$1]", u"[]"},
        {u"(a)(b)(c)(d)(e)(f)(g)(h)(i)(j)", u"abcdefghij", u"$10-$1", u"j-a"},
        {u"(a)(b)(c)(d)(e)(f)(g)(h)(i)(j)", u"abcdefghij", u"$01$99$100", u"aj0"},
        {u"(a)(b)(c)(d)(e)(f)(g)(h)(i)", u"abcdefghi", u"$10", u"a0"},
        {u"x*", u"abc", u"-", u"-a-b-c-"},
        {u"b", u"abc", u"", u"ac"},
        {u"b", u"abc", u"😀", u"a😀c"},
        {u"z", u"abc", u"-", u"abc"},
        {u"(", u"abc", u"-", u"abc"},
        {u"a", u"", u"-", u""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(narrow(row.pattern) + " " + narrow(row.replacement));
        EXPECT_EQ(replaced(row.pattern, row.text, row.replacement), row.result);
    }
}

TEST(PatternEscaping, makesAnyTextMatchItself) {
    const std::u16string_view specials = u"\\*?+[](){}^$|./-#& a\nb\\E\\Qé😀";
    EXPECT_TRUE(matchesWhole(escapedPattern(specials), 0, specials));
    EXPECT_EQ(escapedPattern(u"1+1=[2]"), u"1\\+1=\\[2]");
    EXPECT_EQ(escapedPattern(u"abc"), u"abc");
    EXPECT_EQ(escapedPattern(u""), u"");
    EXPECT_EQ(escapedTemplate(u"$1\\n"), u"\\$1\\\\n");
    EXPECT_EQ(replaced(u"b", u"abc", escapedTemplate(u"$0\\x")), u"a$0\\xc");
}

TEST(PatternCache, compilesAPatternOnce) {
    const std::u16string_view pattern = u"compiled once [0-9]+";
    const auto before = patternCompilationCount();
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(first(pattern, u"compiled once 42"), "0+16");
    EXPECT_EQ(patternCompilationCount(), before + 1);
    EXPECT_EQ(compiledPattern(pattern, 0), compiledPattern(std::u16string(pattern), 0));
    EXPECT_EQ(matches(pattern, u"compiled once 42"), "0+16");
    EXPECT_EQ(patternCompilationCount(), before + 1);
    EXPECT_EQ(first(pattern, u"COMPILED ONCE 42", patternCaseInsensitive), "0+16") << "options are part of the key";
    EXPECT_EQ(patternCompilationCount(), before + 2);
}

TEST(PatternCache, remembersWhatDoesNotCompile) {
    const std::u16string_view pattern = u"never compiles (";
    const auto before = patternCompilationCount();
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(first(pattern, u"never compiles ("), "none");
    EXPECT_EQ(patternCompilationCount(), before + 1);
}

TEST(PatternCache, dropsOldPatternsButNotThoseInUse) {
    const auto pattern = [](int number) {
        const std::string digits = std::to_string(number);
        return u"bounded" + std::u16string(digits.begin(), digits.end());
    };
    const PatternRef held = compiledPattern(u"held for long", 0);
    for (int i = 0; i < 1'000; ++i)
        EXPECT_TRUE(isValid(compiledPattern(pattern(i), 0)));
    const auto before = patternCompilationCount();
    EXPECT_EQ(compiledPattern(u"held for long", 0), held);
    EXPECT_EQ(patternCompilationCount(), before);
    static_cast<void>(compiledPattern(pattern(999), 0));
    EXPECT_EQ(patternCompilationCount(), before);
    static_cast<void>(compiledPattern(pattern(0), 0));
    EXPECT_EQ(patternCompilationCount(), before + 1) << "the cache is bounded";
}

TEST(PatternMatcher, mayBeNestedWithTheSamePattern) {
    PatternMatcher outer(u"[ab]", 0);
    outer.setText(u"a-b");
    std::string log;
    while (outer.findNext()) {
        log += describe(outer.range());
        PatternMatcher inner(u"[ab]", 0);
        inner.setText(u"bbb");
        while (inner.findNext())
            log += "," + describe(inner.range());
        log += " ";
    }
    EXPECT_EQ(log, "0+1,0+1,1+1,2+1 2+1,0+1,1+1,2+1 ");
}

} // namespace
} // namespace zr::detail
