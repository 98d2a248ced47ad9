#include <zrbasic/platform/foundation/unicode_p.h>

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <unordered_set>
#include <vector>

namespace zr::detail {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

TEST(Utf8Decoding, validTextOfEveryLengthIsDecoded) {
    EXPECT_EQ(utf16FromUtf8(""), u"");
    EXPECT_EQ(utf16FromUtf8("plain text of more than eight bytes"), u"plain text of more than eight bytes");
    EXPECT_EQ(utf16FromUtf8("\xC3\xA9"), u"\u00E9");
    EXPECT_EQ(utf16FromUtf8("\xE4\xBD\xA0\xE5\xA5\xBD"), u"\u4F60\u597D");
    EXPECT_EQ(utf16FromUtf8("\xF0\x9F\x98\x80"), u"\U0001F600");
    EXPECT_EQ(utf16FromUtf8("a\0b"sv), u"a\0b"s);
    EXPECT_EQ(utf16FromUtf8("12345678\xC3\xA9"
                            "12345678"),
              u"12345678\u00E912345678");
}

TEST(Utf8Decoding, illFormedBytesGiveNoText) {
    const struct {
        const char* label;
        std::string_view bytes;
        std::u16string replaced;
    } rows[] = {
        {"a byte that never occurs", "\xFF", u"\uFFFD"},
        {"a sequence cut short", "\xC3", u"\uFFFD"},
        {"a missing continuation", "\xC3(", u"\uFFFD("},
        {"an encoded surrogate", "\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},
        {"an overlong slash", "\xC0\xAF", u"\uFFFD\uFFFD"},
        {"beyond U+10FFFF", "\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"a lone continuation between letters", "a\x80z", u"a\uFFFDz"},
        {"three of four bytes", "\xF0\x9F\x98", u"\uFFFD"},
        {"after a long run of ASCII", "abcdefghijklmnop\xFF", u"abcdefghijklmnop\uFFFD"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.label);
        EXPECT_FALSE(utf16FromUtf8(row.bytes).has_value());
        EXPECT_EQ(utf16FromUtf8Replacing(row.bytes), row.replaced);
    }
}

TEST(Utf8Encoding, loneSurrogatesBecomeTheReplacementCharacter) {
    EXPECT_EQ(utf8FromUtf16(u"a\u00E9\u4F60\U0001F600"), "a\xC3\xA9\xE4\xBD\xA0\xF0\x9F\x98\x80");
    const std::u16string leadOnly = {u'x', char16_t(0xD83D)};
    const std::u16string trailFirst = {char16_t(0xDE00), char16_t(0xD83D)};
    EXPECT_EQ(utf8FromUtf16(leadOnly), "x\xEF\xBF\xBD");
    EXPECT_EQ(utf8FromUtf16(trailFirst), "\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_FALSE(isWellFormed(leadOnly));
    EXPECT_FALSE(isWellFormed(trailFirst));
    EXPECT_TRUE(isWellFormed(u"\U0001F600"));
    EXPECT_EQ(utf8FromUtf16(u"a\0b"s), "a\0b"s);
}

TEST(CodePoints, pairsAreReadWholeFromEitherSide) {
    const std::u16string_view text = u"a\U0001F600";
    EXPECT_EQ(codePointAt(text, 1).value, U'\U0001F600');
    EXPECT_EQ(codePointAt(text, 1).length, 2U);
    EXPECT_EQ(codePointBefore(text, 3).value, U'\U0001F600');
    EXPECT_EQ(codePointAt(text, 2).value, 0xDE00U);
    EXPECT_EQ(codePointBefore(text, 2).value, 0xD83DU);
    EXPECT_EQ(codePointBefore(text, 1).value, U'a');
}

TEST(WhiteSpace, theSetsHoldExactlyTheirMembers) {
    const std::set<char32_t> blanks = {0x09,   0x20,   0xA0,   0x1680, 0x2000, 0x2001, 0x2002, 0x2003, 0x2004, 0x2005,
                                       0x2006, 0x2007, 0x2008, 0x2009, 0x200A, 0x200B, 0x202F, 0x205F, 0x3000};
    const std::set<char32_t> breaks = {0x0A, 0x0B, 0x0C, 0x0D, 0x85, 0x2028, 0x2029};
    std::set<char32_t> foundBlanks;
    std::set<char32_t> foundBreaks;
    std::set<char32_t> foundEither;
    for (char32_t c = 0; c <= 0x10FFFF; ++c) {
        if (isWhitespace(c)) {
            foundBlanks.insert(c);
        }
        if (isNewline(c)) {
            foundBreaks.insert(c);
        }
        if (isWhitespaceOrNewline(c)) {
            foundEither.insert(c);
        }
    }
    EXPECT_EQ(foundBlanks, blanks);
    EXPECT_EQ(foundBreaks, breaks);
    EXPECT_EQ(foundEither.size(), 26U);
}

TEST(WhiteSpace, theZeroWidthSpaceIsABlankAndItsNeighboursAreNot) {
    EXPECT_TRUE(isWhitespace(0x200B));
    for (const char32_t c : {0x180E, 0xFEFF, 0x1C, 0x1D, 0x1E, 0x1F, 0x200C, 0x2060}) {
        EXPECT_FALSE(isWhitespaceOrNewline(c)) << std::hex << static_cast<std::uint32_t>(c);
    }
}

TEST(Trimming, removesFromTheEndsOnly) {
    EXPECT_EQ(trimmedWhitespace(u" \ta b\u3000\u200B"), u"a b");
    EXPECT_EQ(trimmedWhitespace(u" \na\n "), u"\na\n");
    EXPECT_EQ(trimmedWhitespaceAndNewlines(u"\u000B\u000C\u0085 a\n b\r\n\u2028"), u"a\n b");
    EXPECT_EQ(trimmedWhitespaceAndNewlines(u" \n\t"), u"");
    EXPECT_EQ(trimmedWhitespaceAndNewlines(u""), u"");
    EXPECT_EQ(trimmedWhitespaceAndNewlines(u"\uFEFFa"), u"\uFEFFa");
}

TEST(Trimming, aSurrogatePairIsOneMember) {
    const auto isGrin = [](char32_t c) { return c == 0x1F600; };
    const auto isItsLead = [](char32_t c) { return c == 0xD83D; };
    EXPECT_EQ(trimmed(u"\U0001F600a\U0001F600\U0001F600", isGrin), u"a");
    EXPECT_EQ(trimmed(u"\U0001F600a", isItsLead), u"\U0001F600a");
    EXPECT_EQ(trimmed(u"\U0001F600", isGrin), u"");
    const std::u16string lone = {char16_t(0xD83D), u'a'};
    EXPECT_EQ(trimmed(std::u16string_view(lone), isItsLead), u"a");
}

TEST(CaseMapping, isFullAndNotLocalised) {
    const struct {
        const char* label;
        std::u16string_view text;
        std::u16string_view upper;
        std::u16string_view lower;
    } rows[] = {
        {"ASCII", u"aBc-1_z{", u"ABC-1_Z{", u"abc-1_z{"},
        {"e acute", u"\u00E9", u"\u00C9", u"\u00E9"},
        {"sharp s grows", u"\u00DF", u"SS", u"\u00DF"},
        {"n after an apostrophe grows", u"\u0149", u"\u02BCN", u"\u0149"},
        {"dz with caron", u"\u01C6", u"\u01C4", u"\u01C6"},
        {"dotted capital I", u"\u0130", u"\u0130", u"i\u0307"},
        {"sigma alone", u"\u03A3", u"\u03A3", u"\u03C3"},
        {"sigma at the end of a word", u"\u0391\u03A3", u"\u0391\u03A3", u"\u03B1\u03C2"},
        {"no cased letter", u"\u4F60\U0001F600", u"\u4F60\U0001F600", u"\u4F60\U0001F600"},
        {"empty", u"", u"", u""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.label);
        EXPECT_EQ(uppercased(row.text), row.upper);
        EXPECT_EQ(lowercased(row.text), row.lower);
    }
}

TEST(CaseMapping, aLoneSurrogateStaysAsItIs) {
    const std::u16string half = {char16_t(0xD801)};
    EXPECT_EQ(uppercased(half), half);
    EXPECT_EQ(lowercased(half), half);
    EXPECT_EQ(capitalized(half), half);
    const std::u16string whole = u"\U00010428";
    EXPECT_EQ(uppercased(whole), u"\U00010400");
}

TEST(CaseMapping, aTextThatGrowsBeyondItsBufferIsMappedWhole) {
    EXPECT_EQ(uppercased(std::u16string(1000, u'\u00DF')), std::u16string(2000, u'S'));
    EXPECT_EQ(uppercased(std::u16string(3, u'\u0390')), u"\u0399\u0308\u0301\u0399\u0308\u0301\u0399\u0308\u0301");
}

TEST(CaseMapping, capitalizingTouchesEveryWord) {
    EXPECT_EQ(capitalized(u"gold futures"), u"Gold Futures");
    EXPECT_EQ(capitalized(u"GOLD FUTURES"), u"Gold Futures");
    EXPECT_EQ(capitalized(u"\u01C6"), u"\u01C5");
    EXPECT_EQ(capitalized(u""), u"");
}

TEST(Hashing, dependsOnEveryCodeUnitAndOnTheLength) {
    std::unordered_set<std::uint64_t> seen;
    std::u16string text;
    std::size_t texts = 0;
    for (int length = 0; length < 40; ++length) {
        for (std::size_t i = 0; i < text.size(); ++i) {
            std::u16string changed = text;
            changed[i] = u'b';
            seen.insert(hashUnits(changed));
            ++texts;
        }
        seen.insert(hashUnits(text));
        ++texts;
        text.push_back(u'a');
    }
    EXPECT_EQ(seen.size(), texts);
    EXPECT_EQ(hashUnits(u"abcdefghij"), hashUnits(std::u16string(u"xabcdefghij").substr(1)));
    EXPECT_NE(hashUnits(u"\u00E9"), hashUnits(u"e\u0301"));
    EXPECT_NE(hashUnits(u"a"), hashUnits(u"a\0"s));
}

TEST(Hashing, lowBitsAreSpreadEvenly) {
    // Tables take the low bits; 4096 keys over 256 places should fill nearly all and crowd none.
    std::vector<int> places(256, 0);
    for (int i = 0; i < 4096; ++i) {
        const std::string digits = std::to_string(i);
        ++places[hashUnits(std::u16string(digits.begin(), digits.end())) % 256];
    }
    for (const int count : places) {
        EXPECT_GT(count, 0);
        EXPECT_LT(count, 48);
    }
}

} // namespace
} // namespace zr::detail
