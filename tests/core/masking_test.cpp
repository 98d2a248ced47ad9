#include <zrbasic/core/masking.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/runtime/message.h>

#include <gtest/gtest.h>
#include <string>

namespace zr {
namespace {

std::string text(NSString* string) {
    return string ? '\'' + string->utf8() + '\'' : "null";
}

std::u16string_view units(const Ref<NSString>& string) {
    return string->view();
}

TEST(PhoneMasking, hidesFourUnitsBehindTheThird) {
    EXPECT_EQ(text(desensitizationMobilePhone("13812345678"_ns)), "'138****5678'");
    EXPECT_EQ(text(desensitizationMobilePhone("1234567"_ns)), "'123****'");
    EXPECT_EQ(text(desensitizationMobilePhone("12345678"_ns)), "'123****8'");
    EXPECT_EQ(text(desensitizationMobilePhone("+8613812345678"_ns)), "'+86****2345678'");
    EXPECT_EQ(text(desensitizationMobilePhone(u"交易所交易所交"_ns)), "'交易所****'") << "whatever stands there";
}

TEST(PhoneMasking, leavesSixUnitsAndFewerAlone) {
    for (NSString* receiver : {"123456"_ns.get(), "1"_ns.get(), ""_ns.get(), u"😀😀😀"_ns.get()})
        EXPECT_EQ(desensitizationMobilePhone(receiver).get(), receiver) << text(receiver);
    const Ref<NSMutableString> receiver = NSMutableString::stringWithString("123456"_ns);
    EXPECT_EQ(desensitizationMobilePhone(receiver).get(), receiver.get()) << "the receiver itself, no copy";
}

TEST(PhoneMasking, countsCodeUnitsAndMayCutAPair) {
    EXPECT_EQ(units(desensitizationMobilePhone(u"😀😀😀😀"_ns)), u"😀\xD83D****\xDE00");
    EXPECT_EQ(units(desensitizationMobilePhone(u"12😀4567"_ns)), u"12\xD83D****7");
}

TEST(EmailMasking, keepsTheEndsOfTheName) {
    EXPECT_EQ(text(desensitizationEmail("abcdef@example.com"_ns)), "'a****f@example.com'");
    EXPECT_EQ(text(desensitizationEmail(u"用户名@例子.中国"_ns)), "'用****名@例子.中国'");
    EXPECT_EQ(text(desensitizationEmail("abc@"_ns)), "'a****c@'") << "nothing is asked of the host";
    EXPECT_EQ(text(desensitizationEmail(" a @ b"_ns)), "' **** @ b'");
}

TEST(EmailMasking, hasFourStarsWhateverTheyHide) {
    EXPECT_EQ(text(desensitizationEmail("abc@h"_ns)), "'a****c@h'") << "one unit hidden";
    EXPECT_EQ(text(desensitizationEmail("abcdef@h"_ns)), "'a****f@h'");
    const std::u16string name = u'a' + std::u16string(1'000'000, u'x') + u'b';
    EXPECT_EQ(text(desensitizationEmail(NSString::fromUtf16(name + u"@h"))), "'a****b@h'");
}

TEST(EmailMasking, leavesAnythingElseAlone) {
    for (NSString* receiver : {"ab@host"_ns.get(), "a@host"_ns.get(), "@host"_ns.get(), "abcdef"_ns.get(), ""_ns.get(),
                               "abc@def@host"_ns.get(), "abc@@host"_ns.get(), "@"_ns.get(), u"abc＠host"_ns.get()})
        EXPECT_EQ(desensitizationEmail(receiver).get(), receiver) << text(receiver);
    EXPECT_EQ(text(desensitizationEmail(u"abc@\u0301host"_ns)), text(u"abc@\u0301host"_ns))
        << "with a combining mark it is another character";
    const Ref<NSMutableString> receiver = NSMutableString::stringWithString("ab@host"_ns);
    EXPECT_EQ(desensitizationEmail(receiver).get(), receiver.get()) << "the receiver itself, no copy";
}

TEST(EmailMasking, countsCodeUnitsAndMayCutAPair) {
    EXPECT_EQ(units(desensitizationEmail(u"😀b😀@h"_ns)), u"\xD83D****\xDE00@h");
    EXPECT_EQ(units(desensitizationEmail(u"😀b@h"_ns)), u"\xD83D****b@h");
}

TEST(Masking, isNullForWhatIsNoString) {
    for (NSObject* receiver : {static_cast<NSObject*>(nullptr), static_cast<NSObject*>(NSNull::null())}) {
        EXPECT_EQ(text(desensitizationMobilePhone(receiver)), "null");
        EXPECT_EQ(text(desensitizationEmail(receiver)), "null");
    }
    EXPECT_EQ(text(desensitizationMobilePhone(box(13812345678))), "null");
    EXPECT_EQ(text(desensitizationEmail(array({"abc@h"_ns}))), "null");
}

TEST(Masking, answersMessages) {
    const SEL phone = "desensitizationMobilePhone"_sel;
    const SEL email = "desensitizationEmail"_sel;
    EXPECT_EQ(text(send<Ref<NSString>>("13812345678"_ns, phone)), "'138****5678'");
    EXPECT_EQ(text(send<Ref<NSString>>(NSMutableString::stringWithString("abcd@h"_ns), email)), "'a****d@h'");
    EXPECT_EQ(text(send<Ref<NSString>>(NSNull::null(), phone)), "null");
    EXPECT_EQ(text(send<Ref<NSString>>(NSNull::null(), email)), "null");
    EXPECT_EQ(text(send<Ref<NSString>>(nullptr, email)), "null");
    EXPECT_FALSE(box(1)->respondsToSelector(phone));
}

} // namespace
} // namespace zr
