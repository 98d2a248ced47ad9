#include <zrbasic/platform/foundation/digest_p.h>

#include <gtest/gtest.h>
#include <openssl/evp.h>
#include <string>

namespace zr::detail {
namespace {

template <typename Digest>
std::string hex(const Digest& digest) {
    std::string digits;
    if (digest) {
        for (const std::uint8_t byte : *digest) {
            digits += "0123456789abcdef"[byte / 16];
            digits += "0123456789abcdef"[byte % 16];
        }
    }
    return digits;
}

TEST(Digest, isThatOfTheBytes) {
    using namespace std::string_view_literals;
    EXPECT_EQ(hex(md5("abc")), "900150983cd24fb0d6963f7d28e17f72");
    EXPECT_EQ(hex(md5({})), "d41d8cd98f00b204e9800998ecf8427e");
    EXPECT_EQ(hex(md5("a\0b"sv)), "70350f6027bce3713f6b76473084309b");
    EXPECT_EQ(hex(md5("\xFF\xFE")), "f3b25701fe362ec84616a93a45ce9998");
}

TEST(Digest, takesAKeyOfAnyLength) {
    using namespace std::string_view_literals;
    EXPECT_EQ(hex(hmacSha256({}, {})), "b613679a0814d9ec772f95d778c35fc5ff1697c493715653c6c712144292c5ad");
    EXPECT_EQ(hex(hmacSha256("", "")), hex(hmacSha256({}, {})));
    EXPECT_EQ(hex(hmacSha256(std::string(20, '\x0b'), "Hi There")),
              "b0344c61d8db38535ca8afceaf0bf12b881dc200c9833da726e9376c2e32cff7");
    EXPECT_EQ(hex(hmacSha256(std::string(131, '\xaa'), "Test Using Larger Than Block-Size Key - Hash Key First")),
              "60e431591ee0b67f0d8a26aacbf5b77f8e0bc6213728c5140546040f0ee37f54");
    EXPECT_NE(hex(hmacSha256("k\0x"sv, "m")), hex(hmacSha256("k", "m"))) << "every byte of the key counts";
}

TEST(Digest, doesNotDependOnHowTheApplicationSetLibcryptoUp) {
    // As a system does that allows approved algorithms only.
    ASSERT_EQ(EVP_set_default_properties(nullptr, "fips=yes"), 1);
    EVP_MD* const restricted = EVP_MD_fetch(nullptr, "MD5", nullptr);
    EXPECT_EQ(hex(md5("abc")), "900150983cd24fb0d6963f7d28e17f72");
    EXPECT_EQ(hex(hmacSha256("key", "text")).size(), 64U);
    ASSERT_EQ(EVP_set_default_properties(nullptr, ""), 1);
    EXPECT_EQ(restricted, nullptr) << "the set-up had no effect, so this shows nothing";
    EVP_MD_free(restricted);
}

} // namespace
} // namespace zr::detail
