#include <zrbasic/platform/foundation/text_search_p.h>

#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace zr::detail {
namespace {

constexpr unsigned caseAndWidth = caseInsensitiveSearch | widthInsensitiveSearch;
constexpr unsigned caseAndMarks = caseInsensitiveSearch | diacriticInsensitiveSearch;

std::optional<TextSpan> at(std::size_t location, std::size_t length) {
    return TextSpan{location, length};
}

TEST(TextComparison, canonicalEquivalentsAreTheSame) {
    EXPECT_EQ(compareTexts(u"\u00E9", u"e\u0301"), 0);
    EXPECT_EQ(compareTexts(u"\u00C5", u"\u212B"), 0);
    EXPECT_EQ(compareTexts(u"A\u030A", u"\u212B"), 0);
    EXPECT_EQ(compareTexts(u"K", u"\u212A"), 0);
    EXPECT_EQ(compareTexts(u"a\u0301\u0323", u"a\u0323\u0301"), 0);
    EXPECT_EQ(compareTexts(u"\uAC00", u"\u1100\u1161"), 0);
    EXPECT_EQ(compareTexts(u"", u""), 0);
}

TEST(TextComparison, orderIsThatOfDecomposedCodePoints) {
    const struct {
        const char* label;
        std::u16string_view less;
        std::u16string_view more;
    } rows[] = {
        {"code points, not code units", u"\uFF5E", u"\U0001F600"},
        {"the base letter decides", u"\u00E9", u"f"},
        {"an accent is more than none", u"e", u"\u00E9"},
        {"an accent is more than a following letter", u"ez", u"\u00E9"},
        {"capitals first", u"B", u"a"},
        {"underscore after capitals", u"B", u"_"},
        {"digits as text", u"10", u"9"},
        {"empty before all", u"", u"a"},
        {"a prefix before the longer", u"a", u"ab"},
        {"nothing is ignorable", u"a", u"\u200Ba"},
        {"ideographs", u"\u4E00", u"\u4E01"},
        {"after a common accented prefix", u"\u00E9a", u"e\u0301b"},
        {"a later mark sorts before an earlier one", u"a\u0345\u0301", u"a\u0345"},
        {"the same emoji, then a letter", u"\U0001F600a", u"\U0001F600b"},
        {"pairs that share their lead", u"\U0001F600", u"\U0001F601"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.label);
        EXPECT_EQ(compareTexts(row.less, row.more), -1);
        EXPECT_EQ(compareTexts(row.more, row.less), 1);
        EXPECT_EQ(compareTexts(row.less, row.less), 0);
        EXPECT_EQ(compareTexts(row.less, row.more, 0), -1);
    }
}

TEST(TextComparison, onlyTheLiteralOptionTellsEquivalentsApart) {
    EXPECT_EQ(compareTexts(u"\u00E9", u"e\u0301", literalSearch), 1);
    EXPECT_EQ(compareTexts(u"e\u0301", u"\u00E9", literalSearch), -1);
    EXPECT_EQ(compareTexts(u"\u00E9", u"e\u0301", caseInsensitiveSearch), 0);
    EXPECT_EQ(compareTexts(u"\u00E9", u"e\u0301", backwardsSearch | anchoredSearch), 0);
    EXPECT_EQ(compareTexts(u"abc", u"abc", literalSearch), 0);
    EXPECT_EQ(compareTexts(u"ABC", u"abc", literalSearch | caseInsensitiveSearch), 0);
}

TEST(TextComparison, ignoringCaseAndWidth) {
    const struct {
        const char* label;
        std::u16string_view left;
        std::u16string_view right;
        bool same;
    } rows[] = {
        {"letters", u"ABC", u"abc", true},
        {"full-width letters", u"\uFF21\uFF22\uFF23", u"abc", true},
        {"full-width digit", u"\uFF11", u"1", true},
        {"sharp s and SS", u"\u00DF", u"SS", true},
        {"sharp s and its capital", u"\u00DF", u"\u1E9E", true},
        {"ligature ff", u"\uFB00", u"ff", true},
        {"composed and decomposed", u"\u00E9", u"E\u0301", true},
        {"both sigmas", u"\u03A3", u"\u03C2", true},
        {"full-width yen", u"\uFFE5", u"\u00A5", true},
        {"half-width katakana", u"\uFF71", u"\u30A2", true},
        {"accent", u"\u00E9", u"e", false},
        {"dotless i", u"\u0131", u"I", false},
        {"dotted I", u"\u0130", u"i", false},
        {"ideographic space", u"\u3000", u" ", false},
        {"circled digit", u"\u2460", u"1", false},
        {"half-width ga is two characters", u"\uFF76\uFF9E", u"\u30AC", false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.label);
        EXPECT_EQ(compareTexts(row.left, row.right, caseAndWidth) == 0, row.same);
        EXPECT_EQ(compareTexts(row.right, row.left, caseAndWidth) == 0, row.same);
        EXPECT_EQ(compareTexts(row.left, row.right, caseAndWidth), -compareTexts(row.right, row.left, caseAndWidth));
    }
}

TEST(TextComparison, numbersCompareByValueWhenAsked) {
    EXPECT_EQ(compareTexts(u"au10", u"au9", numericSearch), 1);
    EXPECT_EQ(compareTexts(u"au10", u"au9"), -1);
    EXPECT_EQ(compareTexts(u"a2b3", u"a2b10", numericSearch), -1);
    EXPECT_EQ(compareTexts(u"a007", u"a7", numericSearch), 0);
    EXPECT_EQ(compareTexts(u"a007b", u"a7c", numericSearch), -1);
    EXPECT_EQ(compareTexts(u"99999999999999999999998", u"99999999999999999999999", numericSearch), -1);
    EXPECT_EQ(compareTexts(u"a0", u"a", numericSearch), 1);
    EXPECT_EQ(compareTexts(u"1a", u"01B", numericSearch | caseInsensitiveSearch), -1);
}

TEST(TextComparison, marksAreIgnoredWhenAsked) {
    EXPECT_EQ(compareTexts(u"\u00E9", u"e", diacriticInsensitiveSearch), 0);
    EXPECT_EQ(compareTexts(u"a\u0323\u0301", u"a", diacriticInsensitiveSearch), 0);
    EXPECT_NE(compareTexts(u"\u00C9", u"e", diacriticInsensitiveSearch), 0);
    EXPECT_EQ(compareTexts(u"\u00C9", u"e", caseAndMarks), 0);
    EXPECT_NE(compareTexts(u"\u304C", u"\u304B", diacriticInsensitiveSearch), 0) << "the voicing mark makes a letter";
}

TEST(TextSearch, equivalentTextIsFoundWithItsOwnLength) {
    EXPECT_EQ(findText(u"ae\u0301", u"\u00E9"), at(1, 2));
    EXPECT_EQ(findText(u"\u00E9", u"e\u0301"), at(0, 1));
    EXPECT_EQ(findText(u"x\u212B", u"\u00C5"), at(1, 1));
    EXPECT_EQ(findText(u"x\uAC01", u"\u1100\u1161\u11A8"), at(1, 1));
    EXPECT_EQ(findText(u"ba\u0301\u0323", u"a\u0323\u0301"), at(1, 3));
    EXPECT_EQ(findText(u"price\u4EF7", u"\u4EF7"), at(5, 1));
}

TEST(TextSearch, noMatchCutsACombiningSequence) {
    const struct {
        const char* label;
        std::u16string_view text;
        std::u16string_view needle;
    } rows[] = {
        {"a letter under an accent", u"e\u0301", u"e"},
        {"the accent alone", u"e\u0301", u"\u0301"},
        {"a letter inside a composed one", u"\u00E9", u"e"},
        {"a digit in a keycap", u"1\u20E3", u"1"},
        {"a letter before a variation selector", u"a\uFE0F", u"a"},
        {"the leading letter of a syllable", u"\uAC00", u"\u1100"},
        {"the same, spelt out", u"\u1100\u1161", u"\u1100"},
        {"an open syllable in a closed one", u"\uAC01", u"\uAC00"},
        {"one accent of two", u"a\u0323\u0301", u"a\u0323"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.label);
        EXPECT_EQ(findText(row.text, row.needle), std::nullopt);
        EXPECT_EQ(findText(row.text, row.needle, backwardsSearch), std::nullopt);
    }
    EXPECT_EQ(findText(u"e\u0301", u"e", literalSearch), at(0, 1));
    EXPECT_EQ(findText(u"e\u0301e", u"e"), at(2, 1));
}

TEST(TextSearch, joinedEmojiAndLineEndsMayBeCut) {
    EXPECT_EQ(findText(u"\U0001F469\u200D\U0001F4BB", u"\U0001F469"), at(0, 2));
    EXPECT_EQ(findText(u"\r\n", u"\n"), at(1, 1));
    EXPECT_EQ(findText(u"\r\n", u"\r"), at(0, 1));
    EXPECT_EQ(findText(u"\u0301\r\n", u"\r\n"), at(1, 2));
}

TEST(TextSearch, anEmptyNeedleIsNeverFound) {
    for (const unsigned options : {0U, 1U, 2U, 4U, 8U, 12U, 2U | 8U, 129U, 256U, 2U | 1U}) {
        EXPECT_EQ(findText(u"abc", u"", options), std::nullopt) << options;
        EXPECT_EQ(findText(u"", u"", options), std::nullopt) << options;
        EXPECT_TRUE(findAllTexts(u"abc", u"", options).empty()) << options;
    }
    EXPECT_EQ(findText(u"", u"a"), std::nullopt);
    EXPECT_EQ(findText(u"abc", u"\u0301", diacriticInsensitiveSearch), std::nullopt);
}

TEST(TextSearch, ignoringCaseAndMarks) {
    EXPECT_EQ(findText(u"xABCx", u"abc", caseAndMarks), at(1, 3));
    EXPECT_EQ(findText(u"\u00E9a", u"E", caseAndMarks), at(0, 1));
    EXPECT_EQ(findText(u"e", u"\u00E9", caseAndMarks), at(0, 1));
    EXPECT_EQ(findText(u"a\u0301 b", u"a", caseAndMarks), at(0, 2));
    EXPECT_EQ(findText(u"stra\u00DFe", u"SS", caseAndMarks), at(4, 1));
    EXPECT_EQ(findText(u"na\u00EFve", u"NAIVE", caseAndMarks), at(0, 5));
    EXPECT_EQ(findText(u"\uFF21\uFF22\uFF23", u"abc", caseAndMarks), std::nullopt);
    EXPECT_EQ(findText(u"\uFF21\uFF22\uFF23", u"abc", caseAndWidth), at(0, 3));
    EXPECT_EQ(findText(u"\u00DF", u"s", caseInsensitiveSearch), std::nullopt) << "half a sharp s";
}

TEST(TextSearch, backwardsFindsTheLastAndAnchoredTheEnds) {
    const std::u16string_view text = u"a.b.c";
    EXPECT_EQ(findText(text, u".", literalSearch | backwardsSearch), at(3, 1));
    EXPECT_EQ(findText(text, u".", backwardsSearch), at(3, 1));
    EXPECT_EQ(findText(text, u"a.", anchoredSearch), at(0, 2));
    EXPECT_EQ(findText(text, u"b", anchoredSearch), std::nullopt);
    EXPECT_EQ(findText(text, u".c", anchoredSearch | backwardsSearch), at(3, 2));
    EXPECT_EQ(findText(text, u".b", anchoredSearch | backwardsSearch), std::nullopt);
    EXPECT_EQ(findText(u"\u00E9.\u00E9", u"E\u0301", caseInsensitiveSearch | backwardsSearch), at(2, 1));
    EXPECT_EQ(findText(u"e\u0301e", u"E\u0301", caseInsensitiveSearch | anchoredSearch), at(0, 2));
    EXPECT_EQ(findText(u"xx\u00E9", u"e\u0301", anchoredSearch | backwardsSearch), at(2, 1));
}

// ASCII is searched and compared another way; a character behind it that matters to no needle forces the general one.
TEST(TextSearch, asciiFollowsTheSameRulesAsAnyText) {
    for (const std::u16string_view text : {u"abAB", u"xAbx", u"aab", u"B", u"ab"}) {
        for (const std::u16string_view needle : {u"ab", u"AB", u"b", u"aB", u"abab", u"y"}) {
            for (const unsigned options : {1U, 5U, 9U, 128U, 132U, 257U, 3U}) {
                const std::u16string general = std::u16string(text) + u"\U0001F600";
                EXPECT_EQ(findText(text, needle, options), findText(general, needle, options)) << options;
                // In front here, because an end decides the order.
                EXPECT_EQ(
                    compareTexts(text, needle, options),
                    compareTexts(u"\U0001F600" + std::u16string(text), u"\U0001F600" + std::u16string(needle), options))
                    << options;
            }
        }
    }
    EXPECT_EQ(findText(u"abAB", u"AB", caseInsensitiveSearch | backwardsSearch | anchoredSearch), at(2, 2));
}

TEST(TextSearch, allMatchesAreTakenLeftToRightWithoutOverlap) {
    using Spans = std::vector<TextSpan>;
    EXPECT_EQ(findAllTexts(u"aaa", u"aa"), (Spans{{0, 2}}));
    EXPECT_EQ(findAllTexts(u"abcabc", u"bc"), (Spans{{1, 2}, {4, 2}}));
    EXPECT_EQ(findAllTexts(u"\u00E9e\u0301e", u"\u00E9"), (Spans{{0, 1}, {1, 2}}));
    EXPECT_EQ(findAllTexts(u"\U0001F600a\U0001F600aa", u"a"), (Spans{{2, 1}, {5, 1}, {6, 1}}));
    EXPECT_EQ(findAllTexts(u"abab-ab", u"ab", anchoredSearch), (Spans{{0, 2}, {2, 2}}));
    EXPECT_EQ(findAllTexts(u"AaA", u"aa", caseInsensitiveSearch), (Spans{{0, 2}}));
}

TEST(LiteralSearch, isByCodeUnit) {
    constexpr auto none = std::u16string_view::npos;
    EXPECT_EQ(findLiteral(u"abcabc", u"bc"), 1U);
    EXPECT_EQ(findLiteral(u"abcabc", u"bc", 2), 4U);
    EXPECT_EQ(findLiteral(u"abcabc", u"bc", 5), none);
    EXPECT_EQ(findLiteral(u"abc", u"c", 9), none);
    EXPECT_EQ(findLiteral(u"e\u0301", u"e"), 0U);
    EXPECT_EQ(findLiteral(u"abc", u"abcd"), none);
    EXPECT_EQ(findLastLiteral(u"abcabc", u"bc"), 4U);
    EXPECT_EQ(findLastLiteral(u"abcabc", u"abcabc"), 0U);
    EXPECT_EQ(findLastLiteral(u"abc", u"x"), none);
    EXPECT_EQ(findLastLiteral(u"abc", u""), none);
    const std::u16string trail = {char16_t(0xDE00)};
    EXPECT_EQ(findLiteral(u"\U0001F600", trail), 1U) << "half a pair is a code unit like any other";
}

// Every needle over two letters in every short text: the table and the plain loop must agree with the definition.
TEST(LiteralSearch, agreesWithTheDefinitionOnAllSmallTexts) {
    for (unsigned bits = 0; bits < (1U << 12); ++bits) {
        std::u16string text;
        for (int i = 0; i < 12; ++i) {
            text.push_back((bits >> i & 1) != 0 ? u'b' : u'a');
        }
        for (const std::u16string_view needle : {u"a", u"ab", u"aab", u"abab", u"bbbbb", u"abaaba"}) {
            ASSERT_EQ(findLiteral(text, needle), std::u16string_view(text).find(needle));
            ASSERT_EQ(findLastLiteral(text, needle), std::u16string_view(text).rfind(needle));
            const auto folded = findText(text, needle, caseInsensitiveSearch);
            ASSERT_EQ(folded ? folded->location : std::u16string_view::npos, std::u16string_view(text).find(needle));
        }
    }
}

TEST(LiteralSearch, theTableTakesOverAtTheRightPlace) {
    // Long common prefixes exhaust the plain loop long before the one true place.
    const std::u16string needle = std::u16string(300, u'a') + u"b";
    const std::u16string text =
        std::u16string(5000, u'a') + u"b" + std::u16string(5000, u'a') + u"b" + std::u16string(100, u'a');
    EXPECT_EQ(findLiteral(text, needle), 4700U);
    EXPECT_EQ(findLiteral(text, needle, 4701), 9701U);
    EXPECT_EQ(findLastLiteral(text, needle), 9701U);
    const std::u16string mirrored = u"b" + std::u16string(300, u'a');
    EXPECT_EQ(findLastLiteral(u"b" + std::u16string(5000, u'a'), mirrored), 0U);
    EXPECT_EQ(findLastLiteral(std::u16string(5000, u'a'), std::u16string(300, u'a') + u"b"), std::u16string_view::npos);
}

TEST(TextSearch, hostileTextTakesLinearTime) {
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    const std::u16string text(1'000'000, u'a');
    const std::u16string needle = std::u16string(500'000, u'a') + u"b";
    EXPECT_EQ(findText(text, needle), std::nullopt);
    EXPECT_EQ(findText(text, needle, backwardsSearch), std::nullopt);
    EXPECT_EQ(findText(text, needle, caseInsensitiveSearch), std::nullopt);
    std::u16string marks = u"a";
    for (int i = 0; i < 300'000; ++i) {
        marks += i % 2 == 0 ? u'\u0301' : u'\u0323';
    }
    EXPECT_EQ(findText(marks, u"a"), std::nullopt);
    EXPECT_EQ(compareTexts(marks, u"a"), 1);
    // Quadratic work would take minutes; the margin is for sanitizers and busy machines.
    EXPECT_LT(Clock::now() - start, std::chrono::seconds(20));
}

} // namespace
} // namespace zr::detail
