#include <zrbasic/core/tick.h>

#include "../foundation/checks.h"

#include <zrbasic/core/tools.h>
#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/exception.h>
#include <zrbasic/platform/runtime/message.h>

#include <tests/vectors/vectors.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace zr {
namespace {

using test::raisedName;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

Ref<NSDecimalNumber> decimal(std::string_view text) {
    return NSDecimalNumber::decimalNumberWithDecimal(decimalFromText(text));
}

std::string rounded(NSNumber* number, NSNumber* tick, NSUInteger mode) {
    return decimalText(roundWithTick_roundingMode(number, tick, mode)->decimalValue());
}

TEST(TickVectors, agreeWithAnIndependentImplementation) {
    const auto rows = test::vectorRows("tick");
    for (const auto& [line, field] : rows) {
        SCOPED_TRACE(line);
        ASSERT_EQ(field.size(), 6u);
        const Ref<NSDecimalNumber> number = decimal(field[0]);
        const Ref<NSDecimalNumber> tick = decimal(field[1]);
        const Ref<NSNumber> result = roundWithTick_roundingMode(number, tick, std::stoul(field[2]));
        EXPECT_EQ(result->stringValue()->utf8(), field[3]);
        EXPECT_EQ(result.get() == number.get(), field[4] == "1");
        EXPECT_EQ(roundMatchWithTick(number, tick), field[5] == "1");
    }
    EXPECT_GE(rows.size(), 2000U);
}

TEST(TickRounding, goesToTheNearestMultipleHalvesAwayFromZero) {
    EXPECT_EQ(rounded(decimal("1.234"), decimal("0.01"), NSRoundPlain), "1.23");
    EXPECT_EQ(rounded(decimal("1.235"), decimal("0.01"), NSRoundPlain), "1.24");
    EXPECT_EQ(rounded(decimal("1.225"), decimal("0.01"), NSRoundPlain), "1.23");
    EXPECT_EQ(rounded(decimal("-1.225"), decimal("0.01"), NSRoundPlain), "-1.23");
    EXPECT_EQ(rounded(decimal("2.5"), decimal("1"), NSRoundPlain), "3");
    EXPECT_EQ(rounded(decimal("-2.5"), decimal("1"), NSRoundPlain), "-3");
}

TEST(TickRounding, takesADoubleForTheDecimalThatIsWritten) {
    EXPECT_EQ(rounded(box(1.235), box(0.01), NSRoundPlain), "1.24");
    EXPECT_EQ(rounded(box(1.225), box(0.01), NSRoundPlain), "1.23");
    EXPECT_EQ(rounded(box(1.005), box(0.01), NSRoundPlain), "1.01");
    EXPECT_EQ(rounded(box(8.38), box(0.05), NSRoundDown), "8.35");
    EXPECT_EQ(rounded(box(0.1f), box(0.05f), NSRoundPlain), "0.1");
    const Ref<NSNumber> onTick = box(0.3);
    EXPECT_EQ(roundWithTick_roundingMode(onTick, box(0.1), NSRoundPlain).get(), onTick.get());
}

TEST(TickRounding, downIsTheFloorOfTheQuotient) {
    EXPECT_EQ(rounded(decimal("1.234"), decimal("0.01"), NSRoundDown), "1.23");
    EXPECT_EQ(rounded(decimal("-1.234"), decimal("0.01"), NSRoundDown), "-1.24");
    EXPECT_EQ(rounded(box(7), box(5), NSRoundDown), "5");
    EXPECT_EQ(rounded(box(-7), box(5), NSRoundDown), "-10");
    EXPECT_EQ(rounded(decimal("0.004"), decimal("0.01"), NSRoundDown), "0");
}

TEST(TickRounding, upIsTheCeilingOfTheQuotient) {
    EXPECT_EQ(rounded(decimal("1.234"), decimal("0.01"), NSRoundUp), "1.24");
    EXPECT_EQ(rounded(decimal("-1.234"), decimal("0.01"), NSRoundUp), "-1.23");
    EXPECT_EQ(rounded(box(7), box(5), NSRoundUp), "10");
    EXPECT_EQ(rounded(box(-7), box(5), NSRoundUp), "-5");
    EXPECT_EQ(rounded(decimal("0.004"), decimal("0.01"), NSRoundUp), "0.01");
}

TEST(TickRounding, turnsDownAndUpAroundForANegativeTick) {
    EXPECT_EQ(rounded(decimal("1.234"), decimal("-0.01"), NSRoundDown), "1.24");
    EXPECT_EQ(rounded(decimal("1.234"), decimal("-0.01"), NSRoundUp), "1.23");
    EXPECT_EQ(rounded(decimal("-1.234"), decimal("-0.01"), NSRoundDown), "-1.23");
    EXPECT_EQ(rounded(decimal("1.235"), decimal("-0.01"), NSRoundPlain), "1.24");
    EXPECT_TRUE(roundMatchWithTick(decimal("1.25"), decimal("-0.05")));
}

TEST(TickRounding, givesTheReceiverItselfOnTheTick) {
    for (const NSUInteger mode : {NSRoundPlain, NSRoundDown, NSRoundUp}) {
        SCOPED_TRACE(mode);
        const Ref<NSNumber> five = box(5);
        EXPECT_EQ(roundWithTick_roundingMode(five, box(0.5), mode).get(), five.get());
        const Ref<NSNumber> price = decimal("2650.2");
        EXPECT_EQ(roundWithTick_roundingMode(price, decimal("0.2"), mode).get(), price.get());
        const Ref<NSNumber> zero = box(0.0);
        EXPECT_EQ(roundWithTick_roundingMode(zero, box(0.5), mode).get(), zero.get());
    }
}

TEST(TickRounding, givesANewDecimalNumberBesideTheTick) {
    const Ref<NSNumber> number = box(1.234);
    const Ref<NSNumber> result = roundWithTick_roundingMode(number, box(0.01), NSRoundPlain);
    EXPECT_NE(result.get(), number.get());
    EXPECT_NE(cast<NSDecimalNumber>(result), nullptr);
    EXPECT_EQ(result->stringValue()->utf8(), "1.23");
    EXPECT_EQ(roundWithTick_roundingMode(box(7), box(5), NSRoundUp)->objCType(), std::string("d"));
}

TEST(TickRounding, givesZeroForEveryOtherMode) {
    for (const NSUInteger mode : {NSUInteger{NSRoundBankers}, NSUInteger{4}, std::numeric_limits<NSUInteger>::max()}) {
        SCOPED_TRACE(mode);
        EXPECT_EQ(rounded(decimal("1.234"), decimal("0.01"), mode), "0");
        // On the tick, too.
        EXPECT_EQ(rounded(decimal("1.23"), decimal("0.01"), mode), "0");
        EXPECT_EQ(rounded(box(-5), box(5), mode), "0");
        const Ref<NSNumber> zero = box(0);
        EXPECT_EQ(roundWithTick_roundingMode(zero, box(5), mode).get(), zero.get());
    }
}

TEST(TickRounding, givesTheReceiverItselfWithoutATick) {
    const Ref<NSNumber> number = box(1.234);
    EXPECT_EQ(roundWithTick_roundingMode(number, nullptr, NSRoundDown).get(), number.get());
    EXPECT_EQ(roundWithTick_roundingMode(number, box(0), NSRoundDown).get(), number.get());
    EXPECT_EQ(roundWithTick_roundingMode(number, box(-0.0), NSRoundDown).get(), number.get());
    EXPECT_EQ(roundWithTick_roundingMode(number, NSDecimalNumber::zero(), NSRoundBankers).get(), number.get());
    EXPECT_EQ(roundWithTick_roundingMode(number, box(false), NSRoundUp).get(), number.get());
}

TEST(TickRounding, givesTheReceiverItselfWhereThereIsNoDecimalValue) {
    for (const double value : {notANumber, infinity, -infinity, 1e300, 1e-200}) {
        SCOPED_TRACE(value);
        const Ref<NSNumber> odd = box(value);
        EXPECT_EQ(roundWithTick_roundingMode(odd, box(0.01), NSRoundDown).get(), odd.get());
        const Ref<NSNumber> number = box(1.234);
        EXPECT_EQ(roundWithTick_roundingMode(number, odd, NSRoundDown).get(), number.get());
        EXPECT_TRUE(roundMatchWithTick(odd, box(0.01)));
        EXPECT_TRUE(roundMatchWithTick(number, odd));
    }
    const Ref<NSNumber> nan = NSDecimalNumber::notANumber();
    EXPECT_EQ(roundWithTick_roundingMode(nan, box(0.01), NSRoundDown).get(), nan.get());
}

TEST(TickRounding, choosesTheMultipleThroughADouble) {
    // The quotient is a trifle below 3, but no double is between it and 3.
    const Ref<NSNumber> number = decimal("2.99999999999999999999");
    EXPECT_EQ(rounded(number, decimal("1"), NSRoundDown), "3");
    EXPECT_EQ(rounded(decimal("0.49999999999999999999"), decimal("1"), NSRoundPlain), "1");
    // One below a half that a sum with 0.5 would carry over.
    EXPECT_EQ(rounded(box(0.49999999999999994), box(1), NSRoundPlain), "0");
    // Halves and whole values of prices with few digits are exact.
    EXPECT_EQ(rounded(decimal("4503599627370495.5"), decimal("1"), NSRoundPlain), "4503599627370496");
    EXPECT_EQ(rounded(decimal("9007199254740993"), decimal("2"), NSRoundDown), "9007199254740992");
}

TEST(TickRounding, roundsTheQuotientToThirtyEightDigits) {
    const Ref<NSNumber> number = decimal("9.9999999999999999999999999999999999999");
    EXPECT_EQ(roundWithTick_roundingMode(number, decimal("5"), NSRoundPlain).get(), number.get());
    EXPECT_TRUE(roundMatchWithTick(number, decimal("5")));
    EXPECT_FALSE(roundMatchWithTick(decimal("9.999999999999999999999999999999999999"), decimal("5")));
    EXPECT_FALSE(roundMatchWithTick(decimal("1"), decimal("3")));
}

TEST(TickRounding, clampsMultiplesToSixtyFourBits) {
    EXPECT_EQ(rounded(decimal("1e30"), decimal("1"), NSRoundPlain), "9223372036854775807");
    EXPECT_EQ(rounded(decimal("-1e30"), decimal("1"), NSRoundUp), "-9223372036854775808");
    EXPECT_EQ(rounded(box(1e30), box(0.01), NSRoundDown), "92233720368547758.07");
    const Ref<NSNumber> lowest = box(std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(roundWithTick_roundingMode(lowest, box(1), NSRoundPlain).get(), lowest.get());
    EXPECT_EQ(rounded(box(std::numeric_limits<std::uint64_t>::max()), box(1), NSRoundPlain), "9223372036854775807");
    EXPECT_FALSE(roundMatchWithTick(decimal("1e30"), decimal("1")));
}

TEST(TickRounding, letsErrorsOfTheDecimalsPassThrough) {
    EXPECT_EQ(raisedName([] { static_cast<void>(roundWithTick_roundingMode(decimal("1e127"), decimal("1e-100"), 1)); }),
              NSDecimalNumberOverflowException);
    EXPECT_EQ(raisedName([] { static_cast<void>(roundWithTick_roundingMode(decimal("1e-100"), decimal("1e100"), 1)); }),
              NSDecimalNumberUnderflowException);
    EXPECT_EQ(raisedName([] { static_cast<void>(roundMatchWithTick(decimal("1e127"), decimal("1e-100"))); }),
              NSDecimalNumberOverflowException);
    EXPECT_EQ(raisedName([] { static_cast<void>(roundMatchWithTick(decimal("1e-100"), decimal("1e100"))); }),
              NSDecimalNumberUnderflowException);
}

TEST(TickRounding, ofNullIsNull) {
    EXPECT_EQ(roundWithTick_roundingMode(nullptr, box(1), NSRoundPlain), nullptr);
    EXPECT_EQ(roundWithTick_roundingMode(nullptr, nullptr, NSRoundPlain), nullptr);
    EXPECT_FALSE(roundMatchWithTick(nullptr, box(1)));
    EXPECT_FALSE(roundMatchWithTick(nullptr, box(0)));
    EXPECT_FALSE(isEqualToAnyNumberInArray(nullptr, NSArray::arrayWithObject(box(1))));
    EXPECT_EQ(zr_compare(nullptr, nullptr), NSOrderedSame);
}

TEST(TickMatch, tellsWholeMultiplesFromOthers) {
    EXPECT_TRUE(roundMatchWithTick(decimal("1.25"), decimal("0.05")));
    EXPECT_FALSE(roundMatchWithTick(decimal("1.26"), decimal("0.05")));
    EXPECT_TRUE(roundMatchWithTick(box(1.25), box(0.05)));
    EXPECT_TRUE(roundMatchWithTick(box(-2650.2), box(0.2)));
    EXPECT_TRUE(roundMatchWithTick(box(0), box(0.05)));
    EXPECT_TRUE(roundMatchWithTick(decimal("1.26"), nullptr));
}

TEST(TickMatch, raisesForAZeroTick) {
    for (const Ref<NSNumber>& zero : {box(0), box(0.0), box(false), Ref<NSNumber>(NSDecimalNumber::zero())}) {
        EXPECT_EQ(raisedName([&] { static_cast<void>(roundMatchWithTick(box(1.25), zero)); }),
                  NSDecimalNumberDivideByZeroException);
        EXPECT_EQ(raisedName([&] { static_cast<void>(roundMatchWithTick(box(0), zero)); }),
                  NSDecimalNumberDivideByZeroException);
    }
}

TEST(PrecisionNumber, hasSixDecimals) {
    EXPECT_EQ(precisionNumberByOriginalNumber(box(1.23456789))->stringValue()->utf8(), "1.234568");
    EXPECT_EQ(precisionNumberByOriginalNumber<NSNumber>(box(-5e-7))->stringValue()->utf8(), "0");
    EXPECT_EQ(precisionNumberByOriginalNumber(nullptr)->stringValue()->utf8(), "0");
    EXPECT_EQ(precisionNumberByOriginalNumber(box(0.1 + 0.2))->stringValue()->utf8(), "0.3");
    EXPECT_EQ(precisionNumberByOriginalNumber(box(1e20))->stringValue()->utf8(), "100000000000000000000");
    // The double nearest to this one is a trifle above the half.
    EXPECT_EQ(precisionNumberByOriginalNumber(decimal("2.0000005"))->stringValue()->utf8(), "2.000001");
    EXPECT_EQ(precisionNumberByOriginalNumber(box(7))->stringValue()->utf8(), "7");
    EXPECT_EQ(precisionNumberByOriginalNumber(decimal("2.00000049"))->stringValue()->utf8(), "2");
    EXPECT_EQ(precisionNumberByOriginalNumber(box(notANumber))->stringValue()->utf8(), "NaN");
    EXPECT_EQ(precisionNumberByOriginalNumber(box(infinity))->stringValue()->utf8(), "NaN");
    EXPECT_EQ(precisionNumberByOriginalNumber(box(1e300))->stringValue()->utf8(), "NaN");
}

TEST(NumberInArray, isFoundByValue) {
    const Ref<NSArray> numbers = NSArray::arrayWithObjects({box(1), "2"_ns, decimal("3.5")});
    EXPECT_TRUE(isEqualToAnyNumberInArray(box(1.0), numbers));
    EXPECT_TRUE(isEqualToAnyNumberInArray(box(true), numbers));
    EXPECT_TRUE(isEqualToAnyNumberInArray(box(3.5), numbers));
    EXPECT_FALSE(isEqualToAnyNumberInArray(box(2), numbers));
    EXPECT_FALSE(isEqualToAnyNumberInArray(box(1), NSArray::array()));
    EXPECT_FALSE(isEqualToAnyNumberInArray(box(1), nullptr));
}

TEST(NumberOrder, putsEveryNumberBehindNull) {
    EXPECT_EQ(zr_compare(box(1), nullptr), NSOrderedDescending);
    EXPECT_EQ(zr_compare(box(-1), nullptr), NSOrderedDescending);
    EXPECT_EQ(zr_compare(box(1), box(2)), NSOrderedAscending);
    EXPECT_EQ(zr_compare(box(2), decimal("2.0")), NSOrderedSame);
    EXPECT_EQ(zr_compare(box(2.5), box(2)), NSOrderedDescending);
}

TEST(DecimalsCount, countsBehindTheLastPointOfAText) {
    const struct {
        const char* text;
        NSUInteger count;
    } rows[] = {{"1.500", 3}, {"1.2.3", 1}, {"100.", 0}, {"100", 0}, {"", 0}, {".", 0}, {"a.bcd", 3}, {"1,50", 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(ZRXTools::decimalsCountOfNumber(NSString::fromUtf8(row.text)), row.count);
    }
    // Code units: a letter beyond the basic plane has two.
    EXPECT_EQ(ZRXTools::decimalsCountOfNumber(NSString::fromUtf16(u"1.\U0001F600")), 2u);
    EXPECT_EQ(ZRXTools::decimalsCountOfNumber(NSString::fromUtf16(u"1." + std::u16string(100'000, u'0'))), 100'000u);
}

TEST(DecimalsCount, countsWhatANumberNeeds) {
    EXPECT_EQ(ZRXTools::decimalsCountOfNumber(box(1.50)), 1u);
    EXPECT_EQ(ZRXTools::decimalsCountOfNumber(box(0.00001)), 5u);
    EXPECT_EQ(ZRXTools::decimalsCountOfNumber(box(0.1 + 0.2)), 17u);
    EXPECT_EQ(ZRXTools::decimalsCountOfNumber(box(100)), 0u);
    EXPECT_EQ(ZRXTools::decimalsCountOfNumber(box(100.0)), 0u);
    EXPECT_EQ(ZRXTools::decimalsCountOfNumber(box(1e22)), 0u);
    EXPECT_EQ(ZRXTools::decimalsCountOfNumber(box(0.1f)), 1u);
    EXPECT_EQ(ZRXTools::decimalsCountOfNumber(decimal("-12.340")), 2u);
    EXPECT_EQ(ZRXTools::decimalsCountOfNumber(box(true)), 0u);
}

TEST(DecimalsCount, isZeroForAnythingElse) {
    EXPECT_EQ(ZRXTools::decimalsCountOfNumber(nullptr), 0u);
    EXPECT_EQ(ZRXTools::decimalsCountOfNumber(NSNull::null()), 0u);
    EXPECT_EQ(ZRXTools::decimalsCountOfNumber(NSDictionary::dictionary()), 0u);
    EXPECT_EQ(ZRXTools::decimalsCountOfNumber(NSArray::arrayWithObject("1.5"_ns)), 0u);
    EXPECT_EQ(ZRXTools::decimalsCountOfNumber(box(notANumber)), 0u);
    EXPECT_EQ(ZRXTools::decimalsCountOfNumber(box(-infinity)), 0u);
    EXPECT_EQ(ZRXTools::decimalsCountOfNumber(box(1e300)), 0u);
    EXPECT_EQ(ZRXTools::decimalsCountOfNumber(NSDecimalNumber::notANumber()), 0u);
}

TEST(TickMessages, areAnsweredByEveryNumber) {
    const Ref<NSNumber> number = box(1.234);
    const NSUInteger down = NSRoundDown;
    EXPECT_EQ(send<Ref<NSNumber>>(number, "roundWithTick:roundingMode:"_sel, box(0.01), down)->stringValue()->utf8(),
              "1.23");
    EXPECT_FALSE(send<bool>(number, "roundMatchWithTick:"_sel, decimal("0.01")));
    EXPECT_EQ(send<NSInteger>(decimal("1"), "zr_compare:"_sel, nullptr), NSOrderedDescending);
    EXPECT_TRUE(send<bool>(box(2), "isEqualToAnyNumberInArray:"_sel, NSArray::arrayWithObject(box(2.0))));
    EXPECT_EQ(send<Ref<NSNumber>>(NSNumber::classObject(), "precisionNumberByOriginalNumber:"_sel, box(1.23456789))
                  ->stringValue()
                  ->utf8(),
              "1.234568");
    EXPECT_EQ(send<NSUInteger>(ZRXTools::classObject(), "decimalsCountOfNumber:"_sel, "1.50"_ns), 2u);
    // A tick of another kind is no tick.
    EXPECT_EQ(send<id>(number, "roundWithTick:roundingMode:"_sel, "0.01"_ns, down).get(), number.get());
    EXPECT_EQ(send<id>(number, "roundWithTick:roundingMode:"_sel, NSNull::null(), down).get(), number.get());
    EXPECT_TRUE(send<bool>(number, "roundMatchWithTick:"_sel, "0.01"_ns));
}

} // namespace
} // namespace zr
