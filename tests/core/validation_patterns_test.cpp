// What is legal is said by patterns and judged without them. Here the two are held against each other.

#include <zrbasic/core/validation.h>
#include <zrbasic/core/validation_p.h>
#include <zrbasic/platform/foundation/pattern_p.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/unicode_p.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <string>
#include <vector>

namespace zr::detail {
namespace {

struct Kind {
    const char* name;
    bool (*isLegal)(NSObject*);
    std::u16string_view pattern;
    // What texts of this kind, and those just beside it, are made of.
    std::vector<std::u16string> tokens;
};

const std::vector<Kind>& kinds() {
    using namespace std::string_literals;
    static const auto& all = *new std::vector<Kind>{
        {"url",
         isLegalURLString,
         urlPattern,
         {u"http://"s, u"https://"s, u"a"s, u"-"s, u"."s, u"/"s, u"\u00A0"s, u" "s, u":"s, u"行"s}},
        {"phone number",
         isLegalPhoneNumber,
         phoneNumberPattern,
         {u"1"s, u"0"s, u"13812345678"s, u"99999"s, u"+"s, u"１"s, u"\n"s}},
        {"e-mail address",
         isLegalEmailAddress,
         emailAddressPattern,
         {u"a"s, u"_"s, u"-"s, u"."s, u"@"s, u"!"s, u" "s, u"b@c.d"s, u"\U0001D49C"s}},
        {"password",
         isLegalPassword,
         passwordPattern,
         {u"a"s, u"Z"s, u"0"s, u"~"s, u"abcdefg"s, u"1234567"s, u"!@#$%^&"s, u" "s, u"é"s}},
        {"common English",
         isLegalCommonEnglishCharacters,
         commonEnglishPattern,
         {u"!"s, u"~"s, u"m"s, u" "s, u"\u007F"s, u"\n"s, u"é"s}},
        {"futures price",
         isLegalFuturesPrice,
         futuresPricePattern,
         {u"+"s, u"-"s, u"0"s, u"9"s, u"."s, u"'"s, u"%"s, u"\n"s, u"٣"s}},
        {"pure number",
         isPureNumberString,
         pureNumberPattern,
         {u"0"s, u"9"s, u"٣"s, u"\U0001D7CE"s, u"\xD835"s, u"x"s}},
        {"identity card",
         isLegalIdCardNumber,
         idCardNumberPattern,
         {u"0"s, u"1234567"s, u"12345678901234"s, u"x"s, u"X"s, u"٣"s, u"\U0001D7CE"s, u"\n"s}},
    };
    return all;
}

std::string shown(std::u16string_view text) {
    return '"' + utf8FromUtf16(text) + "\", " + std::to_string(text.size()) + " units";
}

bool agrees(const Kind& kind, std::u16string_view text) {
    return kind.isLegal(NSString::fromUtf16(text)) == matchesWhole(kind.pattern, 0, text);
}

TEST(ValidationPatterns, allCompile) {
    for (const Kind& kind : kinds())
        EXPECT_TRUE(isValid(compiledPattern(kind.pattern, 0))) << kind.name;
}

TEST(ValidationPatterns, agreeOnEveryShortText) {
    for (const Kind& kind : kinds()) {
        SCOPED_TRACE(kind.name);
        const std::size_t count = kind.tokens.size();
        std::size_t combinations = 1;
        std::size_t legal = 0;
        for (int length = 0; length <= 5; ++length, combinations *= count) {
            for (std::size_t number = 0; number < combinations; ++number) {
                std::u16string text;
                for (std::size_t rest = number, i = 0; i < static_cast<std::size_t>(length); ++i, rest /= count)
                    text += kind.tokens[rest % count];
                ASSERT_TRUE(agrees(kind, text)) << shown(text);
                legal += kind.isLegal(NSString::fromUtf16(std::u16string_view(text))) ? 1 : 0;
            }
        }
        EXPECT_GT(legal, 0U) << "two that refuse everything agree too";
    }
}

TEST(ValidationPatterns, agreeOnEveryCharacterInEveryPlace) {
    struct Place {
        std::size_t kind;
        std::u16string_view before;
        std::u16string_view behind;
    };
    const Place places[] = {{0, u"", u".b"},
                            {0, u"a.", u""},
                            {0, u"a.b/", u""},
                            {1, u"1234567890", u""},
                            {2, u"", u"@b.c"},
                            {2, u"a@b.", u""},
                            {2, u"a@b", u"c.d"},
                            {3, u"abcdefg", u""},
                            {3, u"1234567", u""},
                            {4, u"", u""},
                            {5, u"", u""},
                            {5, u"1", u"1"},
                            {6, u"", u""},
                            {7, u"12345678901234", u""},
                            {7, u"", u"12345678901234"}};
    for (const Place& place : places) {
        SCOPED_TRACE(std::string(kinds()[place.kind].name) + " between " + shown(place.before) + " and " +
                     shown(place.behind));
        for (char32_t c = 0; c <= 0xFFFF; ++c) {
            std::u16string text(place.before);
            appendCodePoint(text, c);
            text += place.behind;
            ASSERT_TRUE(agrees(kinds()[place.kind], text)) << std::hex << static_cast<std::uint32_t>(c);
        }
    }
}

TEST(ValidationPatterns, agreeOnWhatIsAWordCharacterAndADigitInEveryPlane) {
    // One pass of the engine over all characters, so that it stays quick.
    std::u16string all;
    std::vector<bool> isWord(0x110000);
    std::vector<bool> isDigit(0x110000);
    for (char32_t c = 0x10000; c <= 0x10FFFF; ++c)
        appendCodePoint(all, c);
    for (auto& [pattern, isMember] : {std::pair<std::u16string_view, std::vector<bool>&>(u"\\w", isWord),
                                      std::pair<std::u16string_view, std::vector<bool>&>(u"\\d", isDigit)}) {
        PatternMatcher matcher(pattern, 0);
        matcher.setText(all);
        while (matcher.findNext())
            isMember[codePointAt(all, matcher.range().location).value] = true;
    }
    ASSERT_TRUE(isWord[0x10400] && isDigit[0x1D7CE]);
    for (char32_t c = 0x10000; c <= 0x10FFFF; ++c) {
        std::u16string text;
        appendCodePoint(text, c);
        ASSERT_EQ(isPureNumberString(NSString::fromUtf16(std::u16string_view(text))), isDigit[c])
            << std::hex << static_cast<std::uint32_t>(c);
        ASSERT_EQ(isLegalEmailAddress(NSString::fromUtf16(u"a@b." + text)), isWord[c])
            << std::hex << static_cast<std::uint32_t>(c);
    }
}

RC_GTEST_PROP(ValidationPatterns, agreeOnTextsOfFewCharacters, ()) {
    const Kind& kind = *rc::gen::elementOf(kinds()).as("kind, by address");
    const auto tokens = *rc::gen::container<std::vector<std::u16string>>(rc::gen::elementOf(kind.tokens));
    std::u16string text;
    for (const std::u16string& token : tokens)
        text += token;
    RC_ASSERT(agrees(kind, text));
}

} // namespace
} // namespace zr::detail
