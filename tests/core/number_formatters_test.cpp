#include <zrbasic/core/number_formatters.h>

#include <zrbasic/platform/appkit/beep.h>

#include <gtest/gtest.h>
#include <string>

namespace zr {
namespace {

// "yes", "no" for a silent refusal, "beep" for one that beeps.
std::string edit(ZRInputFormatter* formatter, NSString* proposed) {
    const auto beeps = beepCount();
    Ref<NSString> replacement;
    Ref<NSString> error;
    const bool accepted =
        formatter->isPartialStringValid_newEditingString_errorDescription(proposed, &replacement, &error);
    EXPECT_FALSE(replacement);
    return accepted ? "yes" : beepCount() > beeps ? "beep" : "no";
}

Ref<ZRPriceNumberInputFormatter> priceFormatter(bool positive, bool negative, bool fraction = true) {
    const Ref<ZRPriceNumberInputFormatter> formatter = make<ZRPriceNumberInputFormatter>();
    formatter->setNeedPositivePrefix(positive);
    formatter->setNeedNegativePrefix(negative);
    formatter->setNeedFraction(fraction);
    return formatter;
}

class StubbornFormatter : public ZRPriceNumberInputFormatter {
    ZR_OBJECT(StubbornFormatter, ZRPriceNumberInputFormatter)
  public:
    bool validateOfString(NSString*) override { return false; }
};

TEST(PriceFormatter, wantsSignsAndAFractionFromTheStart) {
    const Ref<ZRPriceNumberInputFormatter> formatter = make<ZRPriceNumberInputFormatter>();
    EXPECT_TRUE(formatter->needPositivePrefix());
    EXPECT_TRUE(formatter->needNegativePrefix());
    EXPECT_TRUE(formatter->needFraction());
    EXPECT_EQ(formatter->maxLength(), 10);
    EXPECT_FALSE(formatter->spaceEnable());
    EXPECT_TRUE(static_cast<bool>(formatter->partialValidater()));
    EXPECT_FALSE(formatter->partialPattern());
}

TEST(PriceFormatter, acceptsPricesAndTheirBeginnings) {
    const Ref<ZRPriceNumberInputFormatter> formatter = make<ZRPriceNumberInputFormatter>();
    for (NSString* price :
         {""_ns.get(), "-"_ns.get(), "+"_ns.get(), "."_ns.get(), "-."_ns.get(), "12"_ns.get(), "-12.50"_ns.get(),
          "+0.5"_ns.get(), ".5"_ns.get(), "1."_ns.get(), "1234567890"_ns.get(), u"３٣"_ns.get(), "1\n"_ns.get()}) {
        SCOPED_TRACE(price->utf8());
        EXPECT_EQ(edit(formatter, price), "yes");
    }
}

TEST(PriceFormatter, refusesOtherTextsWithABeep) {
    const Ref<ZRPriceNumberInputFormatter> formatter = make<ZRPriceNumberInputFormatter>();
    for (NSString* text : {"1.2.3"_ns.get(), "1a"_ns.get(), "--1"_ns.get(), "+-1"_ns.get(), "1-"_ns.get(), ","_ns.get(),
                           u"1．5"_ns.get(), "\\"_ns.get(), "1\n\n"_ns.get(), "\t1"_ns.get()}) {
        SCOPED_TRACE(text->utf8());
        EXPECT_EQ(edit(formatter, text), "beep");
    }
}

TEST(PriceFormatter, refusesLongTextsAndSpacesSilently) {
    const Ref<ZRPriceNumberInputFormatter> formatter = make<ZRPriceNumberInputFormatter>();
    EXPECT_EQ(edit(formatter, "12345678901"_ns), "no");
    EXPECT_EQ(edit(formatter, "1 2"_ns), "no");
    EXPECT_EQ(edit(formatter, " "_ns), "no");
}

TEST(PriceFormatterSigns, areAcceptedOnlyWhenBothAreWanted) {
    struct Row {
        bool negative;
        bool positive;
        const char* plus;
        const char* minus;
    };
    const Row rows[] = {
        {true, true, "yes", "yes"},
        {true, false, "beep", "beep"},
        {false, true, "beep", "beep"},
        {false, false, "beep", "beep"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string("negative ") + (row.negative ? "wanted" : "unwanted") + ", positive " +
                     (row.positive ? "wanted" : "unwanted"));
        const Ref<ZRPriceNumberInputFormatter> formatter = priceFormatter(row.positive, row.negative);
        EXPECT_EQ(edit(formatter, "+5"_ns), row.plus);
        EXPECT_EQ(edit(formatter, "-5"_ns), row.minus);
        EXPECT_EQ(edit(formatter, "+"_ns), row.plus);
        EXPECT_EQ(edit(formatter, "-"_ns), row.minus);
        EXPECT_EQ(edit(formatter, "5"_ns), "yes");
        EXPECT_EQ(edit(formatter, "5.25"_ns), "yes");
        EXPECT_EQ(edit(formatter, "x"_ns), "beep");
        EXPECT_EQ(edit(formatter, "5+"_ns), "beep");
    }
}

TEST(PriceFormatter, acceptsAnythingShortWithoutAFraction) {
    for (const bool sign : {true, false}) {
        SCOPED_TRACE(sign);
        for (const bool otherSign : {true, false}) {
            const Ref<ZRPriceNumberInputFormatter> formatter = priceFormatter(sign, otherSign, false);
            EXPECT_EQ(edit(formatter, "letters"_ns), "yes");
            EXPECT_EQ(edit(formatter, "--1.2.3"_ns), "yes");
            EXPECT_EQ(edit(formatter, "12345678901"_ns), "no");
            EXPECT_EQ(edit(formatter, "a b"_ns), "no");
        }
    }
}

TEST(PriceFormatter, looksAtItsSwitchesWithEveryEdit) {
    const Ref<ZRPriceNumberInputFormatter> formatter = make<ZRPriceNumberInputFormatter>();
    EXPECT_EQ(edit(formatter, "-5"_ns), "yes");
    formatter->setNeedPositivePrefix(false);
    EXPECT_EQ(edit(formatter, "-5"_ns), "beep");
    formatter->setNeedPositivePrefix(true);
    EXPECT_EQ(edit(formatter, "-5"_ns), "yes");
    formatter->setMaxLength(1);
    EXPECT_EQ(edit(formatter, "-5"_ns), "no");
}

TEST(PriceFormatter, checksWholeStringsOnItsOwn) {
    const Ref<ZRPriceNumberInputFormatter> formatter = make<ZRPriceNumberInputFormatter>();
    EXPECT_TRUE(formatter->validateOfString("-12.50"_ns));
    EXPECT_TRUE(formatter->validateOfString(""_ns));
    EXPECT_FALSE(formatter->validateOfString("12345678901"_ns));
    EXPECT_FALSE(formatter->validateOfString("1 2"_ns));
    EXPECT_FALSE(formatter->validateOfString(nullptr));
    EXPECT_TRUE(send<bool>(formatter, "validateOfString:"_sel, "1"_ns));
}

TEST(PriceFormatter, takesALimitOfZeroAtItsWord) {
    const Ref<ZRPriceNumberInputFormatter> formatter = make<ZRPriceNumberInputFormatter>();
    formatter->setMaxLength(0);
    EXPECT_FALSE(formatter->validateOfString("1"_ns));
    EXPECT_TRUE(formatter->validateOfString(""_ns));
    EXPECT_EQ(edit(formatter, "1"_ns), "beep") << "no limit for the edit, none allowed for the price";
    formatter->setMaxLength(-1);
    EXPECT_TRUE(formatter->validateOfString("12345678901234567890"_ns)) << "unsigned, a negative limit is a large one";
}

TEST(PriceFormatter, hasNoCheckWhenMadeByAnotherInitialiser) {
    const Ref<ZRPriceNumberInputFormatter> formatter = inputFormatterWithMaxLength<ZRPriceNumberInputFormatter>(8);
    EXPECT_EQ(formatter->maxLength(), 8);
    EXPECT_FALSE(formatter->needPositivePrefix());
    EXPECT_FALSE(formatter->needNegativePrefix());
    EXPECT_FALSE(formatter->needFraction());
    EXPECT_EQ(edit(formatter, "letters"_ns), "yes");
}

TEST(PriceFormatter, isNotKeptByItsOwnCheck) {
    Ref<ZRPriceNumberInputFormatter> formatter = make<ZRPriceNumberInputFormatter>();
    const Weak<ZRPriceNumberInputFormatter> watched(formatter);
    const ZRPartialValidater check = formatter->partialValidater();
    EXPECT_TRUE(check("5"_ns));
    formatter = nullptr;
    EXPECT_TRUE(watched.expired());
    EXPECT_FALSE(check("5"_ns)) << "without its formatter the check refuses";
}

TEST(PriceFormatter, runsASubclassesCheck) {
    const Ref<StubbornFormatter> formatter = make<StubbornFormatter>();
    EXPECT_EQ(edit(formatter, "5"_ns), "beep");
    EXPECT_EQ(edit(formatter, ""_ns), "yes");
}

TEST(IntegerFormatter, acceptsDigitsUpToItsCount) {
    const Ref<ZRIntegerInputFormatter> formatter = formatterWithNumberMaxLength(3);
    EXPECT_EQ(formatter->partialPattern()->utf8(), "^\\d{0,3}$");
    EXPECT_EQ(formatter->maxLength(), 3);
    EXPECT_EQ(edit(formatter, "123"_ns), "yes");
    EXPECT_EQ(edit(formatter, "1234"_ns), "no");
    EXPECT_EQ(edit(formatter, "12a"_ns), "beep");
    EXPECT_EQ(edit(formatter, ""_ns), "yes");
    EXPECT_EQ(edit(formatter, "-1"_ns), "beep");
    EXPECT_EQ(edit(formatter, u"３٣"_ns), "yes");
}

TEST(IntegerFormatter, acceptsNothingWithACountOfZeroOrLess) {
    for (const NSInteger count : {NSInteger{0}, NSInteger{-1}, NSInteger{-100}}) {
        SCOPED_TRACE(count);
        const Ref<ZRIntegerInputFormatter> formatter = formatterWithNumberMaxLength(count);
        EXPECT_EQ(edit(formatter, "1"_ns), "beep");
        EXPECT_EQ(edit(formatter, "123456789012"_ns), "beep") << "the length limit is off";
        EXPECT_EQ(edit(formatter, ""_ns), "yes");
    }
}

TEST(IntegerFormatter, takesAnyCount) {
    for (const NSInteger count :
         {NSInteger{1'000'000}, std::numeric_limits<NSInteger>::max(), std::numeric_limits<NSInteger>::min()}) {
        SCOPED_TRACE(count);
        const Ref<ZRIntegerInputFormatter> formatter = formatterWithNumberMaxLength(count);
        EXPECT_EQ(edit(formatter, ""_ns), "yes");
        EXPECT_NE(edit(formatter, "x"_ns), "yes");
    }
    const Ref<ZRIntegerInputFormatter> large = formatterWithNumberMaxLength(1'000'000);
    EXPECT_EQ(edit(large, NSString::fromUtf16(std::u16string(1'000'000, u'7'))), "yes");
}

TEST(IntegerFormatter, hasNoPatternAfterThePlainInitialiser) {
    const Ref<ZRIntegerInputFormatter> formatter = make<ZRIntegerInputFormatter>();
    EXPECT_FALSE(formatter->partialPattern());
    EXPECT_EQ(edit(formatter, "letters"_ns), "yes");
}

TEST(PhoneFormatter, acceptsTwentyDigits) {
    const Ref<ZRPhoneNumberInputFormater> formatter = make<ZRPhoneNumberInputFormater>();
    EXPECT_EQ(edit(formatter, "12345678901234567890"_ns), "yes");
    EXPECT_EQ(edit(formatter, "123456789012345678901"_ns), "no");
    EXPECT_EQ(edit(formatter, "+86"_ns), "beep");
    EXPECT_EQ(edit(formatter, "1 2"_ns), "no");
    EXPECT_EQ(edit(formatter, "1-2"_ns), "beep");
    EXPECT_EQ(edit(formatter, ""_ns), "yes");
}

TEST(NumberFormatters, areMadeOfTheReceivingClass) {
    const Ref<ZRPhoneNumberInputFormater> phone = formatterWithNumberMaxLength<ZRPhoneNumberInputFormater>(4);
    EXPECT_EQ(phone->isa(), ZRPhoneNumberInputFormater::classObject());
    EXPECT_EQ(phone->maxLength(), 4);
    const id sent = send<id>(ZRPhoneNumberInputFormater::classObject(), "formatterWithNumberMaxLength:"_sel, 5);
    ASSERT_TRUE(sent);
    EXPECT_EQ(sent->isa(), ZRPhoneNumberInputFormater::classObject());
    EXPECT_EQ(cast<ZRPhoneNumberInputFormater>(sent)->maxLength(), 5);
    EXPECT_EQ(std::string(class_getName(phone->isa())), "ZRPhoneNumberInputFormater");
}

} // namespace
} // namespace zr
