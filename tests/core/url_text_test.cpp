#include <zrbasic/core/url_text.h>

#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/runtime/message.h>

#include <tests/vectors/vectors.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <string>

namespace zr {
namespace {

std::string text(NSString* string) {
    return string ? '\'' + string->utf8() + '\'' : "null";
}

std::string encoded(const Ref<NSString>& string) {
    return text(urlEncode(string));
}

std::string decoded(const Ref<NSString>& string) {
    return text(urlDecode(string));
}

TEST(URLEncoding, leavesLettersDigitsAndFourSymbolsAlone) {
    EXPECT_EQ(encoded("AZaz09-._~"_ns), "'AZaz09-._~'");
    EXPECT_EQ(encoded(""_ns), "''");
    EXPECT_EQ(encoded("!*'();:@&=+$,/?#[]"_ns), "'%21%2A%27%28%29%3B%3A%40%26%3D%2B%24%2C%2F%3F%23%5B%5D'");
    EXPECT_EQ(encoded("%41"_ns), "'%2541'") << "an escape is escaped again";
    EXPECT_EQ(encoded("\x7F\n\t"_ns), "'%7F%0A%09'");
}

TEST(URLEncoding, writesASpaceAsAPlusSign) {
    EXPECT_EQ(encoded("x y&"_ns), "'x+y%26'");
    EXPECT_EQ(encoded("  "_ns), "'++'");
    EXPECT_EQ(encoded("+"_ns), "'%2B'");
    EXPECT_EQ(encoded(u"\u00A0\u3000"_ns), "'%C2%A0%E3%80%80'") << "no other space is one";
}

TEST(URLEncoding, writesEveryByteOfACharacter) {
    EXPECT_EQ(encoded(u"中"_ns), "'%E4%B8%AD'");
    EXPECT_EQ(encoded(u"é"_ns), "'%C3%A9'");
    EXPECT_EQ(encoded(u"😀"_ns), "'%F0%9F%98%80'");
    EXPECT_EQ(encoded(NSString::fromUtf16(std::u16string_view(u"a\0b", 3))), "'a%00b'") << "a zero byte is one";
    EXPECT_EQ(encoded(u"a\xD83D"_ns), "'a%EF%BF%BD'") << "a lone surrogate has no bytes of its own";
    EXPECT_EQ(encoded(u"\xDE00\xD83D"_ns), "'%EF%BF%BD%EF%BF%BD'");
}

TEST(URLEncoding, copesWithAMillionCharacters) {
    const Ref<NSString> result = urlEncode(NSString::fromUtf16(std::u16string(1'000'000, u'中')));
    EXPECT_EQ(result->length(), 9'000'000U);
    EXPECT_TRUE(result->hasSuffix("%E4%B8%AD%E4%B8%AD"_ns));
}

TEST(URLDecoding, leavesAPlusSignAlone) {
    EXPECT_EQ(decoded("x+y%26"_ns), "'x+y&'");
    EXPECT_EQ(decoded(urlEncode("x y&"_ns)), "'x+y&'") << "so it does not undo the encoding";
    EXPECT_EQ(decoded("%2B%20"_ns), "'+ '");
}

TEST(URLDecoding, takesEitherCaseAndOrdinaryText) {
    EXPECT_EQ(decoded("%e4%B8%aD"_ns), "'中'");
    EXPECT_EQ(decoded(u"你%41"_ns), "'你A'");
    EXPECT_EQ(decoded(""_ns), "''");
    EXPECT_EQ(urlDecode("a%00b"_ns)->view(), std::u16string_view(u"a\0b", 3));
    EXPECT_EQ(decoded("%2541"_ns), "'%41'") << "once";
}

TEST(URLDecoding, isNullForAMalformedEscape) {
    for (const char16_t* malformed : {u"%", u"%4", u"%zz", u"%%41", u"100%", u"%4\xFF11", u"%FF", u"%C3", u"%C3%28",
                                      u"%ED%A0%80", u"%C0%80", u"%F4%90%80%80", u"ok%41%"})
        EXPECT_EQ(decoded(NSString::fromUtf16(malformed)), "null") << NSString::fromUtf16(malformed)->utf8();
}

TEST(URLText, isNullForNull) {
    EXPECT_EQ(text(urlEncode(nullptr)), "null");
    EXPECT_EQ(text(urlDecode(nullptr)), "null");
}

TEST(URLText, answersMessages) {
    EXPECT_EQ(text(send<Ref<NSString>>("a b"_ns, "urlEncode"_sel)), "'a+b'");
    EXPECT_EQ(text(send<Ref<NSString>>("a%20b"_ns, "urlDecode"_sel)), "'a b'");
    EXPECT_EQ(text(send<Ref<NSString>>(NSMutableString::stringWithString("&"_ns), "urlEncode"_sel)), "'%26'");
    EXPECT_EQ(text(send<Ref<NSString>>(nullptr, "urlEncode"_sel)), "null");
    EXPECT_EQ(text(send<Ref<NSString>>(NSNull::null(), "urlDecode"_sel)), "null");
    EXPECT_FALSE(box(1)->respondsToSelector("urlEncode"_sel));
}

TEST(URLText, agreesWithTheVectors) {
    std::size_t encodings = 0;
    std::size_t decodings = 0;
    for (const auto& [line, fields] : test::vectorRows("url_text")) {
        SCOPED_TRACE(line);
        ASSERT_EQ(fields.size(), 3U);
        const std::string& kind = fields[0];
        const Ref<NSString> given = NSString::fromUtf8(test::bytesOfHex(fields[1]));
        const std::string& expected = fields[2];
        if (kind == "encode") {
            ++encodings;
            ASSERT_EQ(urlEncode(given)->utf8(), expected);
        } else if (expected == "none") {
            ++decodings;
            ASSERT_EQ(text(urlDecode(given)), "null");
        } else {
            ++decodings;
            ASSERT_EQ(text(urlDecode(given)), '\'' + test::bytesOfHex(expected) + '\'');
        }
    }
    EXPECT_GT(encodings, 400U);
    EXPECT_GT(decodings, 400U);
}

RC_GTEST_PROP(URLText, comesBackWhenSpacesAreWrittenOut, (const std::string& bytes)) {
    const Ref<NSString> original = NSString::fromUtf8(bytes);
    const Ref<NSString> escaped =
        urlEncode(original)->stringByReplacingOccurrencesOfString_withString("+"_ns, "%20"_ns);
    RC_ASSERT(urlDecode(escaped)->isEqualToString(original));
}

} // namespace
} // namespace zr
