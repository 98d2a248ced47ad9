#include <zrbasic/core/digest.h>

#include <zrbasic/platform/foundation/data.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/runtime/message.h>

#include <tests/vectors/vectors.h>

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace zr {
namespace {

std::string hex(NSData* data) {
    if (data == nullptr)
        return "null";
    std::string digits;
    for (const char c : data->view()) {
        const auto byte = static_cast<unsigned char>(c);
        digits += "0123456789abcdef"[byte / 16];
        digits += "0123456789abcdef"[byte % 16];
    }
    return digits;
}

std::string keyed(const Ref<NSString>& text, const Ref<NSString>& secret) {
    return hex(HMACEncryptWithSecret(text, secret));
}

std::string md5(const Ref<NSString>& text) {
    const Ref<NSString> digest = MD5Hash(text);
    return digest ? digest->utf8() : "null";
}

Ref<NSString> withZero(std::u16string_view before, std::u16string_view behind) {
    return NSString::fromUtf16(std::u16string(before) + u'\0' + std::u16string(behind));
}

TEST(MD5, isThirtyTwoUpperCaseDigits) {
    EXPECT_EQ(md5(""_ns), "D41D8CD98F00B204E9800998ECF8427E");
    EXPECT_EQ(md5("a"_ns), "0CC175B9C0F1B6A831C399E269772661");
    EXPECT_EQ(md5("message digest"_ns), "F96B697D7CB7938D525A2F31AAF161D0");
    EXPECT_EQ(md5(u"中文"_ns), "A7BAC2239FCDCB3A067903D8077C4A07");
}

TEST(MD5, takesEveryByteZeroBytesToo) {
    EXPECT_EQ(md5(withZero(u"a", u"b")), "70350F6027BCE3713F6B76473084309B");
    EXPECT_NE(md5(withZero(u"a", u"")), md5("a"_ns));
    EXPECT_EQ(md5(NSString::fromUtf16(std::u16string(1'000'000, u'a'))), "7707D6AE4E027C70EEA2A935C2296F21");
    EXPECT_EQ(md5(u"\xD83D"_ns), md5(u"\uFFFD"_ns)) << "a lone surrogate has no bytes of its own";
}

TEST(KeyedDigest, isThirtyTwoRawBytes) {
    EXPECT_EQ(keyed("what do ya want for nothing?"_ns, "Jefe"_ns),
              "5bdcc146bf60754e6a042426089575c75a003f089d2739839dec58b964ec3843");
    EXPECT_EQ(keyed("The quick brown fox jumps over the lazy dog"_ns, "key"_ns),
              "f7bc83f430538424b13298e6aa6fb143ef4d59a14946175997479dbc2d1a3cd8");
    EXPECT_EQ(keyed(""_ns, ""_ns), "b613679a0814d9ec772f95d778c35fc5ff1697c493715653c6c712144292c5ad")
        << "the empty secret is one";
    EXPECT_EQ(HMACEncryptWithSecret(NSString::fromUtf16(std::u16string(1'000'000, u'中')), "key"_ns)->length(), 32U);
    EXPECT_EQ(HMACEncryptWithSecret("a"_ns, NSString::fromUtf16(std::u16string(1'000'000, u'k')))->length(), 32U);
}

TEST(KeyedDigest, endsAtTheFirstZeroCharacter) {
    EXPECT_EQ(keyed(withZero(u"text", u"more"), "key"_ns), keyed("text"_ns, "key"_ns));
    EXPECT_EQ(keyed("text"_ns, withZero(u"key", u"more")), keyed("text"_ns, "key"_ns));
    EXPECT_EQ(keyed(withZero(u"", u"text"), withZero(u"", u"key")), keyed(""_ns, ""_ns));
    EXPECT_NE(keyed("text"_ns, "key"_ns), keyed("textmore"_ns, "key"_ns));
}

TEST(KeyedDigest, takesTheReceiverInUtf8AndTheSecretInAsciiOnly) {
    EXPECT_EQ(keyed(u"行情"_ns, "key"_ns), "3e40155302acbeaea16fc70e0968954b094cc0c29dd97437647993bd1fdb53f7");
    EXPECT_EQ(keyed("text"_ns, u"clé"_ns), "null") << "no digest rather than one under another key";
    EXPECT_EQ(keyed("text"_ns, u"\u0080"_ns), "null");
    EXPECT_EQ(keyed("text"_ns, u"\xD83D"_ns), "null");
    EXPECT_EQ(keyed("text"_ns, withZero(u"key", u"é")), "null") << "also behind a zero character";
    EXPECT_EQ(keyed("text"_ns, u"\u007F"_ns).size(), 64U);
}

TEST(Digests, areNullForNull) {
    EXPECT_EQ(md5(nullptr), "null");
    EXPECT_EQ(keyed(nullptr, "key"_ns), "null");
    EXPECT_EQ(keyed("text"_ns, nullptr), "null");
    EXPECT_EQ(keyed(nullptr, nullptr), "null");
}

TEST(Digests, answerMessages) {
    const SEL selector = "HMACEncryptWithSecret:"_sel;
    const Ref<NSString> text = "text"_ns;
    EXPECT_TRUE(send<Ref<NSString>>(text, "MD5Hash"_sel)->isEqualToString(MD5Hash(text)));
    EXPECT_EQ(hex(send<Ref<NSData>>(NSMutableString::stringWithString(text), selector, "key"_ns)),
              keyed(text, "key"_ns));
    EXPECT_EQ(hex(send<Ref<NSData>>(text, selector, box(1))), "null") << "a secret that is no string";
    EXPECT_EQ(hex(send<Ref<NSData>>(text, selector, NSNull::null())), "null");
    EXPECT_EQ(hex(send<Ref<NSData>>(nullptr, selector, "key"_ns)), "null");
    EXPECT_FALSE(box(1)->respondsToSelector("MD5Hash"_sel));
}

TEST(Digests, agreeWithTheVectors) {
    std::size_t plainCount = 0;
    std::size_t keyedCount = 0;
    for (const auto& [line, fields] : test::vectorRows("digest")) {
        SCOPED_TRACE(line);
        const Ref<NSString> text = NSString::fromUtf8(test::bytesOfHex(fields[fields.size() - 2]));
        if (fields[0] == "md5") {
            ++plainCount;
            ASSERT_EQ(MD5Hash(text)->lowercaseString()->utf8(), fields[2]);
        } else {
            ++keyedCount;
            ASSERT_EQ(keyed(text, NSString::fromUtf8(test::bytesOfHex(fields[1]))), fields[3]);
        }
    }
    EXPECT_GT(plainCount, 200U);
    EXPECT_GT(keyedCount, 500U);
}

} // namespace
} // namespace zr
