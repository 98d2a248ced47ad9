#include <zrbasic/core/validation.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/runtime/message.h>

#include <gtest/gtest.h>
#include <ctime>
#include <string>

namespace zr {
namespace {

using Check = bool (*)(NSObject*);

struct Row {
    const char16_t* text;
    bool isLegal;
};

void expectAll(Check check, std::initializer_list<Row> rows) {
    for (const Row& row : rows) {
        const Ref<NSString> text = NSString::fromUtf16(row.text);
        EXPECT_EQ(check(text), row.isLegal) << '"' << text->utf8() << '"';
    }
}

std::u16string repeated(std::u16string_view text, std::size_t times) {
    std::u16string result;
    result.reserve(text.size() * times);
    for (std::size_t i = 0; i < times; ++i)
        result += text;
    return result;
}

bool holds(Check check, const std::u16string& text) {
    return check(NSString::fromUtf16(std::u16string_view(text)));
}

struct Named {
    const char* selector;
    Check check;
};

constexpr Named allChecks[] = {
    {"isLegalURLString", isLegalURLString},
    {"isLegalPhoneNumber", isLegalPhoneNumber},
    {"isLegalEmailAddress", isLegalEmailAddress},
    {"isLegalPassword", isLegalPassword},
    {"isLegalCommonEnglishCharacters", isLegalCommonEnglishCharacters},
    {"isLegalFuturesPrice", isLegalFuturesPrice},
    {"isPureNumberString", isPureNumberString},
    {"isLegalIdCardNumber", isLegalIdCardNumber},
};

TEST(URLValidation, wantsTwoLabelsAtLeast) {
    expectAll(isLegalURLString, {{u"a.b", true},
                                 {u"www.example.com", true},
                                 {u"-.-", true},
                                 {u"交易所.中国", true},
                                 {u"\U0001D49C.\U00010400", true},
                                 {u"a", false},
                                 {u"a.", false},
                                 {u".a", false},
                                 {u"a..b", false},
                                 {u"a.b.", false},
                                 {u"", false}});
}

TEST(URLValidation, knowsTwoSchemesInSmallLetters) {
    expectAll(isLegalURLString, {{u"http://a.b", true},
                                 {u"https://a.b", true},
                                 {u"HTTP://a.b", false},
                                 {u"ftp://a.b", false},
                                 {u"http://http://a.b", false},
                                 {u"http:a.b", false},
                                 {u"://a.b", false},
                                 {u"http://", false}});
}

TEST(URLValidation, takesAPathOfFewCharacters) {
    expectAll(isLegalURLString, {{u"a.b/", true},
                                 {u"a.b//x.y?c=1&d=%20", true},
                                 {u"a.b/行情", true},
                                 {u"a.b?c=1", false},
                                 {u"a.b:80/", false},
                                 {u"a.b/#top", false},
                                 {u"a.b/x+y", false},
                                 {u"a.b/\n", false}});
}

TEST(URLValidation, takesANoBreakSpaceInThePathAndNoOtherSpace) {
    expectAll(isLegalURLString, {{u"a.b/x\u00A0y", true},
                                 {u"a.b/\u00A0", true},
                                 {u"a.b/x y", false},
                                 {u"a.b/x\u3000y", false},
                                 {u"a\u00A0b.c", false},
                                 {u"a.b\u00A0", false}});
}

TEST(PhoneNumberValidation, wantsElevenDigitsBeginningWithOne) {
    expectAll(isLegalPhoneNumber, {{u"13812345678", true},
                                   {u"10000000000", true},
                                   {u"23812345678", false},
                                   {u"1381234567", false},
                                   {u"138123456789", false},
                                   {u"1381234567x", false},
                                   {u"13812345678\n", false},
                                   {u" 13812345678", false},
                                   {u"1３812345678", false},
                                   {u"", false}});
}

TEST(EmailValidation, wantsPartsWithDotsBetweenThem) {
    expectAll(isLegalEmailAddress, {{u"a@b.c", true},
                                    {u"first.last@example.com", true},
                                    {u"!#$%&'*+/=?^_`{|}~-@b.c", true},
                                    {u"-@b.c", true},
                                    {u"用户@例子.中国", true},
                                    {u".a@b.c", false},
                                    {u"a.@b.c", false},
                                    {u"a..b@c.d", false},
                                    {u"@b.c", false},
                                    {u"a b@c.d", false},
                                    {u"a\"b@c.d", false},
                                    {u"a(b@c.d", false}});
}

TEST(EmailValidation, wantsLabelsThatBeginAndEndWithAWordCharacter) {
    expectAll(isLegalEmailAddress, {{u"a@b-c.d--e", true},
                                    {u"a@b.c.d.e", true},
                                    {u"a@_._", true},
                                    {u"a@b", false},
                                    {u"a@-b.c", false},
                                    {u"a@b-.c", false},
                                    {u"a@b.c-", false},
                                    {u"a@b.-", false},
                                    {u"a@b..c", false},
                                    {u"a@b.c.", false},
                                    {u"a@.b.c", false},
                                    {u"a@b.c\n", false}});
}

TEST(EmailValidation, wantsExactlyOneAtSign) {
    expectAll(
        isLegalEmailAddress,
        {{u"a.b.c", false}, {u"a@b@c.d", false}, {u"a@@b.c", false}, {u"a@", false}, {u"@", false}, {u"", false}});
}

TEST(PasswordValidation, wantsTwoOfThreeKinds) {
    expectAll(isLegalPassword, {{u"abcdefgh", false},
                                {u"12345678", false},
                                {u"!@#$%^&*", false},
                                {u"abcd1234", true},
                                {u"abcd!@#$", true},
                                {u"1234!@#$", true},
                                {u"aB3!aB3!", true},
                                {u"abcdefg1", true},
                                {u"1abcdefg", true},
                                {u"~bcdefgh", true},
                                {u"ABCDEFG~", true}});
}

TEST(PasswordValidation, wantsEightToTwentyFourCharacters) {
    expectAll(isLegalPassword, {{u"a1", false},
                                {u"abcdef1", false},
                                {u"abcdefg1", true},
                                {u"abcdefghijklmnopqrstuvw1", true},
                                {u"abcdefghijklmnopqrstuvwx1", false},
                                {u"", false}});
}

TEST(PasswordValidation, wantsPrintableAsciiWithoutSpaces) {
    expectAll(isLegalPassword, {{u"abcd 1234", false},
                                {u"abcd1234\n", false},
                                {u"abcd1234é", false},
                                {u"abcd1234\u007F", false},
                                {u"abcdefg１", false},
                                {u"密码密码密码12", false},
                                {u"abcd1234\t", false}});
}

TEST(CommonEnglishValidation, isPrintableAsciiWithoutSpaces) {
    expectAll(isLegalCommonEnglishCharacters, {{u"", true},
                                               {u"!~", true},
                                               {u"Order#42", true},
                                               {u"a b", false},
                                               {u"\u007F", false},
                                               {u"a\n", false},
                                               {u"\n", false},
                                               {u"é", false},
                                               {u"ａ", false}});
}

TEST(FuturesPriceValidation, takesASignAFractionAndAPercentSign) {
    expectAll(isLegalFuturesPrice, {{u"99'16", true},
                                    {u"-1.5%", true},
                                    {u"+12", true},
                                    {u".5", true},
                                    {u"5.", true},
                                    {u"1.2.3", false},
                                    {u"1.'2", false},
                                    {u"1,5", false},
                                    {u"1e5", false},
                                    {u"--1", false},
                                    {u"1%%", false},
                                    {u"%1", false},
                                    {u"1-", false},
                                    {u"1 ", false},
                                    {u"1\n", false},
                                    {u"１", false},
                                    {u"99’16", false}});
}

TEST(FuturesPriceValidation, needsNoDigit) {
    expectAll(isLegalFuturesPrice,
              {{u"", true}, {u"+", true}, {u"-", true}, {u".", true}, {u"'", true}, {u"%", true}, {u"+.%", true}});
}

TEST(PureNumberValidation, takesDigitsOfAnyScript) {
    expectAll(isPureNumberString, {{u"0123456789", true},
                                   {u"３", true},
                                   {u"\u0663\u096B", true},
                                   {u"\U0001D7CE\U0001D7FF", true},
                                   {u"", false},
                                   {u"-1", false},
                                   {u"1.0", false},
                                   {u"1 ", false},
                                   {u"123\n", false},
                                   {u"²", false},
                                   {u"五", false},
                                   {u"Ⅷ", false}});
}

TEST(IdCardValidation, wantsFifteenOrEighteenCharacters) {
    expectAll(isLegalIdCardNumber, {{u"123456789012345", true},
                                    {u"123456789012345678", true},
                                    {u"12345678901234x", true},
                                    {u"12345678901234567X", true},
                                    {u"12345678901234", false},
                                    {u"1234567890123456", false},
                                    {u"123456789012345X", false},
                                    {u"12345678901234567", false},
                                    {u"1234567890123456X", false},
                                    {u"1234567890123456789", false},
                                    {u"123456789012345678X", false},
                                    {u"", false}});
}

TEST(IdCardValidation, takesAnXAtTheEndOnly) {
    expectAll(isLegalIdCardNumber, {{u"1234567890123X5", false},
                                    {u"X23456789012345", false},
                                    {u"12345678901234XX", false},
                                    {u"12345678901234y", false},
                                    {u"12345678901234X\n", false},
                                    {u"１２３４５６７８９０１２３４Ｘ", false}});
}

TEST(IdCardValidation, countsCharactersAndNoCodeUnits) {
    const std::u16string digit = u"\U0001D7CE";
    EXPECT_TRUE(holds(isLegalIdCardNumber, repeated(digit, 15)));
    EXPECT_TRUE(holds(isLegalIdCardNumber, repeated(digit, 17) + u"x"));
    EXPECT_FALSE(holds(isLegalIdCardNumber, repeated(digit, 7)));
    EXPECT_FALSE(holds(isLegalIdCardNumber, repeated(digit, 9)));
    EXPECT_TRUE(holds(isLegalIdCardNumber, u"１２３４５６７８９０１２３４x"));
}

TEST(Validation, refusesWhatIsNoString) {
    for (const auto& [selector, check] : allChecks) {
        SCOPED_TRACE(selector);
        EXPECT_FALSE(check(nullptr));
        EXPECT_FALSE(check(NSNull::null()));
        EXPECT_FALSE(check(box(13812345678)));
        EXPECT_FALSE(check(array({"13812345678"_ns})));
        EXPECT_FALSE(check(NSString::classObject()));
    }
}

TEST(Validation, knowsTheEmptyStringInTwoPlaces) {
    for (const auto& [selector, check] : allChecks) {
        SCOPED_TRACE(selector);
        EXPECT_EQ(check(""_ns), check == isLegalCommonEnglishCharacters || check == isLegalFuturesPrice);
        EXPECT_EQ(check(NSMutableString::string()), check(""_ns));
    }
}

TEST(Validation, refusesLoneSurrogatesAndZeroCharacters) {
    const char16_t* const legal[] = {u"a.b/c", u"13812345678", u"a@b.c",  u"abcd1234",
                                     u"abc",   u"1.5%",        u"123456", u"123456789012345"};
    for (std::size_t i = 0; i < std::size(allChecks); ++i) {
        SCOPED_TRACE(allChecks[i].selector);
        EXPECT_TRUE(holds(allChecks[i].check, legal[i]));
        for (const char16_t unit : {u'\xD83D', u'\xDE00', u'\0', u'\uFFFF'}) {
            EXPECT_FALSE(holds(allChecks[i].check, legal[i] + std::u16string(1, unit)));
            EXPECT_FALSE(holds(allChecks[i].check, std::u16string(1, unit) + legal[i]));
        }
    }
}

TEST(Validation, answersMessages) {
    const Ref<NSString> legal[] = {"a.b"_ns, "13812345678"_ns, "a@b.c"_ns,  "abcd1234"_ns,
                                   "abc"_ns, "1.5%"_ns,        "123456"_ns, "123456789012345"_ns};
    for (std::size_t i = 0; i < std::size(allChecks); ++i) {
        SCOPED_TRACE(allChecks[i].selector);
        const SEL selector = sel_registerName(allChecks[i].selector);
        EXPECT_TRUE(send<bool>(legal[i], selector));
        EXPECT_TRUE(send<bool>(NSMutableString::stringWithString(legal[i]), selector));
        EXPECT_FALSE(send<bool>(u"\u3000"_ns, selector));
        EXPECT_FALSE(send<bool>(nullptr, selector));
        EXPECT_FALSE(box(1)->respondsToSelector(selector));
    }
}

TEST(Validation, isRightAtAnyLength) {
    constexpr std::size_t many = 1'000'000;
    const std::u16string digits(many, u'7');
    EXPECT_TRUE(holds(isPureNumberString, digits));
    EXPECT_FALSE(holds(isPureNumberString, digits + u"x"));
    EXPECT_TRUE(holds(isPureNumberString, repeated(u"\U0001D7CE", many)));
    EXPECT_TRUE(holds(isLegalFuturesPrice, u"-" + digits + u"'" + digits + u"%"));
    EXPECT_FALSE(holds(isLegalFuturesPrice, digits + u"." + digits + u"."));
    EXPECT_TRUE(holds(isLegalCommonEnglishCharacters, digits));
    EXPECT_FALSE(holds(isLegalCommonEnglishCharacters, digits + u" "));
    EXPECT_TRUE(holds(isLegalURLString, repeated(u"a-b.", many) + u"c/" + digits));
    EXPECT_FALSE(holds(isLegalURLString, repeated(u"a-b.", many) + u"c/" + digits + u" "));
    EXPECT_TRUE(holds(isLegalEmailAddress, repeated(u"a.", many) + u"b@" + repeated(u"c-d.", many) + u"e"));
    EXPECT_FALSE(holds(isLegalEmailAddress, repeated(u"a.", many) + u"b@" + repeated(u"c-d.", many) + u"-"));
    EXPECT_FALSE(holds(isLegalPhoneNumber, u"1" + digits));
    EXPECT_FALSE(holds(isLegalIdCardNumber, digits + u"x"));
    EXPECT_FALSE(holds(isLegalPassword, u"a!" + digits));
}

TEST(Validation, answersHostileTextsInTimeThatGrowsWithTheLengthAlone) {
    constexpr std::size_t many = 100'000;
    const std::u16string thirtyLabels = u"a@" + repeated(u"aa.", 30) + u"-";
    const struct {
        Check check;
        std::u16string text;
    } rows[] = {{isLegalEmailAddress, thirtyLabels},
                {isLegalEmailAddress, u"a@" + repeated(u"aa.", many) + u"-"},
                {isLegalEmailAddress, u"a@" + repeated(u"a-", many)},
                {isLegalEmailAddress, u"a@" + std::u16string(many, u'a')},
                {isLegalEmailAddress, repeated(u"a.", many)},
                {isLegalURLString, thirtyLabels},
                {isLegalURLString, u"https://" + repeated(u"a-", many) + u"/"},
                {isLegalURLString, repeated(u"-.", many)},
                {isLegalPassword, std::u16string(many, u'a')},
                {isLegalPassword, repeated(u"a1!", many)},
                {isLegalCommonEnglishCharacters, std::u16string(many, u'!') + u"\n"},
                {isLegalFuturesPrice, std::u16string(many, u'1') + u"'."},
                {isPureNumberString, std::u16string(many, u'\xD83D')},
                {isLegalPhoneNumber, std::u16string(many, u'1')},
                {isLegalIdCardNumber, std::u16string(many, u'1')}};
    const std::clock_t start = std::clock();
    for (const auto& [check, text] : rows)
        EXPECT_FALSE(holds(check, text)) << NSString::fromUtf16(text.substr(0, 20))->utf8();
    EXPECT_LT(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC, 2.0);
}

} // namespace
} // namespace zr
