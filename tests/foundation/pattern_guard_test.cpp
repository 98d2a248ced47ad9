#include <zrbasic/platform/foundation/pattern_guard_p.h>

#include <zrbasic/platform/foundation/pattern_p.h>

#include "pattern_testing.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace zr::detail {
namespace {

TEST(PatternGuard, endsLazyLoopsOverNothing) {
    struct Row {
        std::u16string_view pattern;
        std::u16string_view text;
        const char* result;
        unsigned options = 0;
    };
    const Row rows[] = {
        {u"^+?\\d*\\.?\\d*$", u"5", "0+1"},
        {u"^+?\\d*\\.?\\d*$", u"+5", "none"},
        {u"^+?\\d*\\.?\\d*$", u"-5", "none"},
        {u"^+?\\d*\\.?\\d*$", u"x", "none"},
        {u"^+?\\d*\\.?\\d*$", u"", "0+0"},
        {u"^*?\\d*$", u"+5", "1+1"},
        {u"^*?x", u"ab", "none"},
        {u"$+?x", u"ab", "none"},
        {u"(?:)+?x", u"ab", "none"},
        {u"()+?x", u"abx", "2+1"},
        {u"(()+?)+?x", u"aax", "2+1"},
        {u"((a*)*?)*?x", u"aab", "none"},
        {u"(?:a?)+?b", u"c ab", "2+2"},
        {u"(?:a?)+?b", u"aac ab", "4+2"},
        {u"(?:^|a*)+?x", u"aaa", "none"},
        {u"(?:\\b)+?x", u"a x", "2+1"},
        {u"(?:(?=a))+?b", u"ab", "none"},
        {u"(?>a*)+?b", u"aac", "none"},
        {u"(?<n>a?)\\k<n>+?b", u"aac", "none"},
        {u"(a?)\\1+?b", u"aac", "none"},
        {u"()()()()()()()()()(a?)\\10+?b", u"aac", "none"},
        {u"^(?#c)+?5", u"+5", "none"},
        {u"^\\Q\\E+?5", u"+5", "none"},
        {u"^ + ? 5", u"+5", "none", patternAllowsComments},
        {u"^ #+?\n+?5", u"+5", "none", patternAllowsComments},
        {u"(?x) ^ + ? 5", u"+5", "none"},
        {u"(?x: ^ + ? ) 5", u"+ 5", "none"},
        {u"(?i:^+?)5", u"+5", "none"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(narrow(row.pattern) + " on " + narrow(row.text));
        const Stopwatch watch;
        EXPECT_EQ(first(row.pattern, row.text, row.options), row.result);
        EXPECT_LT(watch.seconds(), 0.02) << "the loop must end by itself, not by the work limit";
    }
}

TEST(PatternGuard, leavesEverythingElseAlone) {
    for (const std::u16string_view pattern :
         {u"[^+?]",     u"\\^+?",        u"\\$*?",     u"\\Q^+?\\E",  u"\\Q()\\E+?",   u"[()]+?",
          u"a+?",       u"\\d*?",        u".+?",       u"[^]()+?]",   u"[a[^]+?]b]+?", u"(?#^+?)a",
          u"^+",        u"(a*)*",        u"(a|b)??",   u"(?=a)b",     u"(?<!\\d)5",    u"^{2,}?",
          u"\\x{5E}+?", u"[\\Q]^+?\\E]", u"\\p{Lu}+?", u"(?<name>a)b"}) {
        SCOPED_TRACE(narrow(pattern));
        EXPECT_FALSE(guardedPattern(pattern, false).isRewritten);
        EXPECT_EQ(guardedPattern(pattern, false).text, pattern);
    }
    EXPECT_FALSE(guardedPattern(u"a # ^+? ( [\n b", true).isRewritten);
    EXPECT_TRUE(guardedPattern(u"a # ^+?", false).isRewritten);
    EXPECT_FALSE(guardedPattern(u"(?x) # ^+?", false).isRewritten);
    EXPECT_TRUE(guardedPattern(u"(?-x) # ^+?", true).isRewritten);
    EXPECT_TRUE(guardedPattern(u"(?x: a # )\n) # ^+?", false).isRewritten);
}

TEST(PatternGuard, leavesWhatIsMatchedAsItWas) {
    EXPECT_EQ(matches(u"[^+?]", u"^a+"), "0+1 1+1");
    EXPECT_EQ(matches(u"\\^+?", u"^^"), "0+1 1+1");
    EXPECT_EQ(matches(u"\\Q^+?\\E", u"^+?"), "0+3");
    EXPECT_EQ(matches(u"(ab)+?", u"abab"), "0+2[0+2] 2+2[2+2]");
    EXPECT_EQ(matches(u"^(a|b)*?$", u"abab"), "0+4[3+1]");
    EXPECT_EQ(matches(u"(?:a(b)?)+?$", u"aba"), "0+3[1+1]");
    EXPECT_EQ(matches(u"(?=(a+))a*b\\1", u"baaabac"), "3+3[3+1]");
    EXPECT_EQ(matches(u"(?<=(a{1,3}))b", u"aab"), "2+1[1+1]");
    EXPECT_EQ(matches(u"(\\w+) \\1", u"the the cat"), "0+7[0+3]");
    EXPECT_EQ(matches(u"(?>a+)b", u"aab"), "0+3");
    EXPECT_EQ(matches(u"^(?=.*\\d)(?=.*[a-z]).{4,}$", u"ab1c"), "0+4");
}

TEST(PatternWorkLimit, endsHostileMatches) {
    const std::u16string manyA = repeated(u"a", 100'000);
    struct Row {
        const char* label;
        std::u16string pattern;
        std::u16string text;
    };
    const Row rows[] = {
        {"mail address", u"^\\w+([-+.]\\w+)*@\\w+([-.]\\w+)*\\.\\w+([-.]\\w+)*$", u"a@" + repeated(u"aa.", 30) + u"-"},
        {"nested mail address", u"^([\\w.]+)+@(([\\w-]+)+\\.?)+$", u"a@" + repeated(u"aa.", 30) + u"-!"},
        {"nested loops", u"(a*)*b", repeated(u"a", 40)},
        {"nested lazy loops", u"(a+?)+?$", repeated(u"a", 40) + u"b"},
        {"alternatives", u"^(a|a)*$", repeated(u"a", 40) + u"b"},
        {"optional items", repeated(u"a?", 40) + repeated(u"a", 40) + u"b", repeated(u"a", 40)},
        {"counted loops", u"^((a{0,50}){0,50}){0,50}$", repeated(u"a", 60) + u"b"},
        {"quadratic search", u"\\d+$", repeated(u"1", 100'000) + u"x"},
        {"quadratic atomic search", u"(?>[ab]*)c", manyA},
        {"quadratic possessive search", u"[ab]*+c", manyA},
        {"repeated look-ahead", u"^(?:(?=[ab]*)){90000}.*d", manyA},
        {"nested look-aheads", u"^(?:(?=(?=(?=.*)[ab]*).*)){90000}.*d", manyA},
        {"back reference", u"^(a+)\\1b", manyA},
        {"many back references", u"^(a+)(?=\\1)(?=\\1)(?=\\1)\\1b", manyA},
        {"long literal", repeated(u"a", 50'000) + u"b", manyA},
        {"look-behind", u"(?<=a{1,30000}c)b", manyA},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        const Stopwatch watch;
        EXPECT_EQ(first(row.pattern, row.text), "none");
        EXPECT_FALSE(matchesWhole(row.pattern, 0, row.text));
        EXPECT_EQ(matches(row.pattern, row.text), "");
        // Three operations of about a tenth of a second; a slow machine gets plenty of room.
        EXPECT_LT(watch.seconds(), 3.0);
    }
}

TEST(PatternWorkLimit, keepsTheMatchesFoundBefore) {
    EXPECT_EQ(matches(u"x|(a*)*b", u"x " + repeated(u"a", 40)), "0+1[none]");
}

TEST(PatternWorkLimit, isFreshForEveryWalk) {
    const std::u16string hostile = repeated(u"a", 40);
    PatternMatcher matcher(u"(a*)*b", 0);
    matcher.setText(hostile);
    EXPECT_FALSE(matcher.findNext());
    EXPECT_FALSE(matcher.findNext());
    matcher.setText(u"aab");
    EXPECT_TRUE(matcher.findNext());
    EXPECT_EQ(first(u"(a*)*b", u"ab"), "0+2");
}

TEST(PatternWorkLimit, leavesSaneWorkOnLongTextsAlone) {
    const std::u16string prose = repeated(u"The quick brown fox, 12.5% of 300; ", 3'000);
    EXPECT_EQ(allMatches(compiledPattern(u"\\w+", 0), prose).count(), 24'000U);
    EXPECT_EQ(allMatches(compiledPattern(u"(\\w+)\\s(?=\\w)", 0), prose).count(), 12'000U);
    EXPECT_EQ(allMatches(compiledPattern(u"(?i)FOX.*?(\\d+)", 0), prose).count(), 3'000U);
    EXPECT_EQ(first(u"[a-z]+@[a-z]+\\.com", prose + u"me@site.com"), std::to_string(prose.size()) + "+11");
    EXPECT_EQ(allMatches(compiledPattern(u"", 0), prose).count(), 0U);
    EXPECT_EQ(allMatches(compiledPattern(u"x*", 0), prose).count(), prose.size() + 1) << "one begins at every position";
}

TEST(PatternWorkLimit, letsAMillionDigitsBeANumber) {
    const std::u16string digits = repeated(u"7", 1'000'000);
    EXPECT_TRUE(matchesWhole(u"\\d+", 0, digits));
    EXPECT_TRUE(matchesWhole(u"^\\d+$", 0, digits));
    EXPECT_TRUE(matchesWhole(u"^(\\d)+$", 0, digits));
    EXPECT_TRUE(matchesWhole(u"^[+\\-]?\\d*\\.?\\d*$", 0, u"-" + digits + u"." + digits));
    EXPECT_FALSE(matchesWhole(u"^\\d+$", 0, digits + u"x"));
}

} // namespace
} // namespace zr::detail
