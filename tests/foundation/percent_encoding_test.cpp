#include <zrbasic/platform/foundation/percent_encoding_p.h>

#include <gtest/gtest.h>

namespace zr::detail {
namespace {

using namespace std::string_literals;

TEST(PercentDecoding, malformedEscapesGiveNoText) {
    for (const std::u16string_view text : {u"%", u"%4", u"%zz", u"%%41", u"100%", u"a%4", u"%4g", u"%\u0663\u0663"}) {
        EXPECT_FALSE(percentDecoded(text).has_value()) << std::string(text.begin(), text.end());
    }
}

TEST(PercentDecoding, bytesThatAreNotUtf8GiveNoText) {
    for (const std::u16string_view text : {u"%FF", u"%C3", u"%C3%28", u"%ED%A0%80", u"%C3x%A9"}) {
        EXPECT_FALSE(percentDecoded(text).has_value()) << std::string(text.begin(), text.end());
    }
}

TEST(PercentDecoding, onlyEscapesAreDecoded) {
    EXPECT_EQ(percentDecoded(u"a+b"), u"a+b");
    EXPECT_EQ(percentDecoded(u"%00"), u"\0"s);
    EXPECT_EQ(percentDecoded(u"%c3%A9%4a%4A"), u"\u00E9JJ");
    EXPECT_EQ(percentDecoded(u"\u4F60%41"), u"\u4F60A");
    EXPECT_EQ(percentDecoded(u"%F0%9F%98%80!"), u"\U0001F600!");
    EXPECT_EQ(percentDecoded(u"%2541"), u"%41");
    EXPECT_EQ(percentDecoded(u""), u"");
}

TEST(PercentEncoding, everythingOutsideTheSetIsEscaped) {
    const AsciiSet letters("abcABC");
    EXPECT_EQ(percentEncoded(u"aZ b", letters), u"a%5A%20b");
    EXPECT_EQ(percentEncoded(u"\u00E9\u4F60\U0001F600", letters), u"%C3%A9%E4%BD%A0%F0%9F%98%80");
    EXPECT_EQ(percentEncoded(u"%41", letters), u"%25%34%31");
    EXPECT_EQ(percentEncoded(u"\0a"s, letters), u"%00a");
    EXPECT_EQ(percentEncoded(u"", letters), u"");
}

TEST(PercentEncoding, aLoneSurrogateHasNoEncodedForm) {
    const AsciiSet letters("abc");
    EXPECT_FALSE(percentEncoded(std::u16string{u'a', char16_t(0xD83D)}, letters).has_value());
    EXPECT_FALSE(percentEncoded(std::u16string{char16_t(0xDE00), u'a'}, letters).has_value());
}

TEST(AsciiSets, holdNothingOutsideAscii) {
    AsciiSet set("a~\xC3\xA9");
    EXPECT_TRUE(set.contains('a'));
    EXPECT_TRUE(set.contains('~'));
    EXPECT_FALSE(set.contains(0xC3));
    EXPECT_FALSE(set.contains(0x161));
    EXPECT_FALSE(set.contains('b'));
    set.insert(0x10FFFF);
    set.insert(0);
    EXPECT_TRUE(set.contains(0));
    EXPECT_FALSE(set.contains(0x10FFFF));
}

} // namespace
} // namespace zr::detail
