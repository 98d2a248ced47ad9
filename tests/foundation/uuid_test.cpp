#include <zrbasic/platform/foundation/uuid.h>

#include "checks.h"

#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>

#include <gtest/gtest.h>

namespace zr {
namespace {

bool isRandomIdentifier(const std::string& text) {
    if (text.size() != 36) {
        return false;
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isDash = i == 8 || i == 13 || i == 18 || i == 23;
        const bool isUpperHex = (text[i] >= '0' && text[i] <= '9') || (text[i] >= 'A' && text[i] <= 'F');
        if (isDash ? text[i] != '-' : !isUpperHex) {
            return false;
        }
    }
    return text[14] == '4' && std::string("89AB").find(text[19]) != std::string::npos;
}

TEST(RandomIdentifiers, areUpperCaseVersionFour) {
    for (int i = 0; i < 200; ++i) {
        const std::string text = detail::randomUUIDText();
        ASSERT_TRUE(isRandomIdentifier(text)) << text;
        const std::string object = NSUUID::UUID()->UUIDString()->utf8();
        ASSERT_TRUE(isRandomIdentifier(object)) << object;
    }
}

TEST(RandomIdentifiers, useEveryFreeBit) {
    // 122 of the 128 bits are free; each should be seen both ways in 200 identifiers.
    NSUUID::Bytes everSet{};
    NSUUID::Bytes everClear{};
    for (int i = 0; i < 200; ++i) {
        const Ref<NSUUID> identifier = NSUUID::UUID();
        for (std::size_t k = 0; k < 16; ++k) {
            everSet[k] = static_cast<std::uint8_t>(everSet[k] | identifier->bytes()[k]);
            everClear[k] = static_cast<std::uint8_t>(everClear[k] | ~identifier->bytes()[k]);
        }
    }
    for (std::size_t k = 0; k < 16; ++k) {
        EXPECT_EQ(everSet[k], k == 6 ? 0x4F : k == 8 ? 0xBF : 0xFF) << k;
        EXPECT_EQ(everClear[k], k == 6 ? 0xBF : k == 8 ? 0x7F : 0xFF) << k;
    }
}

TEST(IdentifierText, isReadInEitherCase) {
    const char* const text = "6BA7B810-9DAD-11D1-80B4-00C04FD430C8";
    const Ref<NSUUID> identifier = make<NSUUID>(&NSUUID::initWithUUIDString, NSString::fromUtf8(text));
    ASSERT_TRUE(identifier);
    EXPECT_EQ(identifier->UUIDString()->utf8(), text);
    EXPECT_EQ(identifier->description()->utf8(), text);
    EXPECT_EQ(identifier->bytes()[0], 0x6B);
    EXPECT_EQ(identifier->bytes()[15], 0xC8);
    const Ref<NSUUID> lower = make<NSUUID>(&NSUUID::initWithUUIDString, NSString::fromUtf8(text)->lowercaseString());
    EXPECT_TRUE(identifier->isEqual(lower));
    EXPECT_EQ(identifier->hash(), lower->hash());
}

TEST(IdentifierText, anythingElseGivesNull) {
    for (const char* text : {"", "6BA7B810-9DAD-11D1-80B4-00C04FD430C", "6BA7B810-9DAD-11D1-80B4-00C04FD430C8 ",
                             "6BA7B8109DAD-11D1-80B4-00C04FD430C8--", "6BA7B810-9DAD-11D1-80B4-00C04FD430CG",
                             "{BA7B810-9DAD-11D1-80B4-00C04FD430C8}", "6BA7B810+9DAD-11D1-80B4-00C04FD430C8"}) {
        EXPECT_FALSE(make<NSUUID>(&NSUUID::initWithUUIDString, NSString::fromUtf8(text))) << text;
    }
    EXPECT_FALSE(make<NSUUID>(&NSUUID::initWithUUIDString, nullptr));
    const std::u16string fullWidth(36, u'\uFF11');
    EXPECT_FALSE(make<NSUUID>(&NSUUID::initWithUUIDString, NSString::fromUtf16(fullWidth)));
}

TEST(IdentifierEquality, goesByBytes) {
    const Ref<NSUUID> identifier = NSUUID::UUID();
    const Ref<NSUUID> same = make<NSUUID>(&NSUUID::initWithUUIDBytes, identifier->bytes());
    EXPECT_TRUE(identifier->isEqual(same));
    EXPECT_EQ(identifier->hash(), same->hash());
    EXPECT_FALSE(identifier->isEqual(NSUUID::UUID()));
    EXPECT_FALSE(identifier->isEqual(nullptr));
    EXPECT_FALSE(identifier->isEqual(NSNull::null()));
    EXPECT_FALSE(identifier->isEqual(identifier->UUIDString()));
    EXPECT_EQ(identifier->copy().get(), static_cast<NSObject*>(identifier.get()));
    EXPECT_TRUE(
        isRandomIdentifier(send<Ref<NSString>>(send<id>(NSUUID::classObject(), "UUID"_sel), "UUIDString"_sel)->utf8()));
}

} // namespace
} // namespace zr
