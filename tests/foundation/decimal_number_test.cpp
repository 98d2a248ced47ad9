#include <zrbasic/platform/foundation/decimal_number.h>

#include "checks.h"

#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/exception.h>
#include <zrbasic/platform/runtime/message.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace zr {
namespace {

using test::raised;

Ref<NSDecimalNumber> decimal(std::string_view text) {
    return NSDecimalNumber::decimalNumberWithString(NSString::fromUtf8(text));
}

std::string written(NSNumber* number) {
    return number->stringValue()->utf8();
}

constexpr char overflow[] = "NSDecimalNumberOverflowException: NSDecimalNumber overflow exception";
constexpr char underflow[] = "NSDecimalNumberUnderflowException: NSDecimalNumber underflow exception";
constexpr char zeroDivisor[] = "NSDecimalNumberDivideByZeroException: NSDecimalNumber divide by zero exception";

Ref<NSDecimalNumberHandler> behavior(NSRoundingMode mode, short scale) {
    return NSDecimalNumberHandler::
        decimalNumberHandlerWithRoundingMode_scale_raiseOnExactness_raiseOnOverflow_raiseOnUnderflow_raiseOnDivideByZero(
            mode, scale, false, true, true, true);
}

TEST(DecimalNumber, calculatesInDecimals) {
    EXPECT_EQ(written(decimal("0.1")->decimalNumberByAdding(decimal("0.2"))), "0.3");
    EXPECT_EQ(written(decimal("0.3")->decimalNumberBySubtracting(decimal("0.4"))), "-0.1");
    EXPECT_EQ(written(decimal("1.1")->decimalNumberByMultiplyingBy(decimal("-1.1"))), "-1.21");
    EXPECT_EQ(written(decimal("1.234")->decimalNumberByDividingBy(decimal("0.01"))), "123.4");
    EXPECT_EQ(written(decimal("2")->decimalNumberByDividingBy(decimal("3"))),
              "0.66666666666666666666666666666666666667");
    EXPECT_EQ(written(decimal("1.1")->decimalNumberByRaisingToPower(2)), "1.21");
    EXPECT_EQ(written(decimal("1.1")->decimalNumberByMultiplyingByPowerOf10(-2)), "0.011");
}

TEST(DecimalNumber, raisesWhatItCannotHold) {
    EXPECT_EQ(raised([] { static_cast<void>(decimal("1e100")->decimalNumberByMultiplyingBy(decimal("1e30"))); }),
              overflow);
    EXPECT_EQ(written(decimal("1e-100")->decimalNumberByMultiplyingBy(decimal("1e-28"))),
              "0." + std::string(127, '0') + "1");
    EXPECT_EQ(raised([] { static_cast<void>(decimal("1e-100")->decimalNumberByMultiplyingBy(decimal("1e-29"))); }),
              underflow);
    EXPECT_EQ(raised([] { static_cast<void>(decimal("1")->decimalNumberByDividingBy(decimal("0"))); }), zeroDivisor);
    EXPECT_EQ(raised([] { static_cast<void>(decimal("0")->decimalNumberByDividingBy(decimal("0"))); }), zeroDivisor);
    EXPECT_EQ(raised([] { static_cast<void>(decimal("10")->decimalNumberByRaisingToPower(200)); }), overflow);
    EXPECT_EQ(raised([] { static_cast<void>(decimal("1")->decimalNumberByMultiplyingByPowerOf10(200)); }), overflow);
}

TEST(DecimalNumber, raisesAnOverflowForAnOperandThatIsNotANumber) {
    const Ref<NSDecimalNumber> nan = NSDecimalNumber::notANumber();
    const Ref<NSDecimalNumber> one = NSDecimalNumber::one();
    EXPECT_EQ(raised([&] { static_cast<void>(nan->decimalNumberByAdding(one)); }), overflow);
    EXPECT_EQ(raised([&] { static_cast<void>(one->decimalNumberBySubtracting(nan)); }), overflow);
    EXPECT_EQ(raised([&] { static_cast<void>(one->decimalNumberByMultiplyingBy(nan)); }), overflow);
    EXPECT_EQ(raised([&] { static_cast<void>(nan->decimalNumberByDividingBy(NSDecimalNumber::zero())); }), overflow);
    EXPECT_EQ(raised([&] { static_cast<void>(nan->decimalNumberByRaisingToPower(0)); }), overflow);
}

TEST(DecimalNumber, takesANullOperandForZero) {
    EXPECT_EQ(written(decimal("1.5")->decimalNumberByAdding(nullptr)), "1.5");
    EXPECT_EQ(written(decimal("1.5")->decimalNumberBySubtracting(nullptr)), "1.5");
    EXPECT_EQ(written(decimal("1.5")->decimalNumberByMultiplyingBy(nullptr)), "0");
    EXPECT_EQ(raised([] { static_cast<void>(decimal("1.5")->decimalNumberByDividingBy(nullptr)); }), zeroDivisor);
    EXPECT_EQ(written(decimal("1.5")->decimalNumberByAdding_withBehavior(nullptr, nullptr)), "1.5");
}

TEST(DecimalNumber, readsText) {
    EXPECT_EQ(written(decimal("1e-05")), "0.00001");
    EXPECT_EQ(written(decimal(" 12abc")), "12");
    EXPECT_EQ(written(decimal("")), "NaN");
    EXPECT_EQ(written(NSDecimalNumber::decimalNumberWithString(nullptr)), "NaN");
    EXPECT_EQ(written(NSDecimalNumber::decimalNumberWithMantissa_exponent_isNegative(1500, -3, true)), "-1.5");
    EXPECT_EQ(written(NSDecimalNumber::decimalNumberWithMantissa_exponent_isNegative(1, 32767, false)), "NaN");
    EXPECT_EQ(written(NSDecimalNumber::decimalNumberWithMantissa_exponent_isNegative(0, 5, true)), "0");
}

TEST(DecimalNumber, hasItsConstants) {
    EXPECT_EQ(NSDecimalNumber::zero().get(), NSDecimalNumber::zero().get());
    EXPECT_EQ(written(NSDecimalNumber::one()), "1");
    EXPECT_EQ(written(NSDecimalNumber::notANumber()), "NaN");
    EXPECT_EQ(written(NSDecimalNumber::maximumDecimalNumber()),
              "340282366920938463463374607431768211455" + std::string(127, '0'));
    EXPECT_EQ(NSDecimalNumber::minimumDecimalNumber()->compare(decimal("-3.4e165")), NSOrderedAscending);
    EXPECT_EQ(written(make<NSDecimalNumber>()), "0");
}

TEST(DecimalNumber, convertsByCuttingTheFraction) {
    EXPECT_EQ(decimal("1.9")->integerValue(), 1);
    EXPECT_EQ(decimal("-1.9")->intValue(), -1);
    EXPECT_EQ(decimal("9.821426272392280061")->integerValue(), 9);
    EXPECT_EQ(decimal("1e30")->longLongValue(), std::numeric_limits<long long>::max());
    EXPECT_EQ(decimal("1e30")->intValue(), std::numeric_limits<int>::max());
    EXPECT_EQ(decimal("-1")->unsignedIntegerValue(), std::numeric_limits<NSUInteger>::max());
    EXPECT_EQ(decimal("x")->integerValue(), 0);
    EXPECT_TRUE(std::isnan(decimal("x")->doubleValue()));
    EXPECT_EQ(decimal("7928.46")->doubleValue(), 7928.46);
    EXPECT_EQ(decimal("0.1")->floatValue(), 0.1f);
    EXPECT_STREQ(decimal("1")->objCType(), "d");
}

TEST(DecimalNumber, ordersNaNBelowEverything) {
    EXPECT_EQ(decimal("x")->compare(decimal("-1e100")), NSOrderedAscending);
    EXPECT_EQ(decimal("x")->compare(decimal("x")), NSOrderedSame);
    EXPECT_EQ(box(-1e300)->compare(decimal("x")), NSOrderedDescending);
    EXPECT_EQ(decimal("1.50")->compare(decimal("1.5")), NSOrderedSame);
    EXPECT_EQ(decimal("1")->compare(box(std::numeric_limits<double>::infinity())), NSOrderedAscending);
    EXPECT_THROW(static_cast<void>(decimal("1")->compare(nullptr)), NSException);
}

TEST(DecimalBehavior, roundsToItsScaleByItsMode) {
    EXPECT_EQ(written(decimal("1.25")->decimalNumberByRoundingAccordingToBehavior(behavior(NSRoundPlain, 1))), "1.3");
    EXPECT_EQ(written(decimal("1.25")->decimalNumberByRoundingAccordingToBehavior(behavior(NSRoundBankers, 1))), "1.2");
    EXPECT_EQ(written(decimal("-1.25")->decimalNumberByRoundingAccordingToBehavior(behavior(NSRoundDown, 1))), "-1.3");
    EXPECT_EQ(written(decimal("125")->decimalNumberByRoundingAccordingToBehavior(behavior(NSRoundUp, -1))), "130");
    EXPECT_EQ(written(decimal("1.25")->decimalNumberByRoundingAccordingToBehavior(nullptr)), "1.25");
    EXPECT_EQ(written(decimal("1.25")->decimalNumberByRoundingAccordingToBehavior(
                  NSDecimalNumberHandler::defaultDecimalNumberHandler())),
              "1.25");
    EXPECT_EQ(written(decimal("2")->decimalNumberByDividingBy_withBehavior(decimal("3"), behavior(NSRoundPlain, 2))),
              "0.67");
    EXPECT_EQ(written(decimal("1")->decimalNumberBySubtracting_withBehavior(decimal("0.15"), behavior(NSRoundUp, 1))),
              "0.9");
    EXPECT_EQ(
        written(decimal("1.5")->decimalNumberByMultiplyingBy_withBehavior(decimal("1.5"), behavior(NSRoundDown, 1))),
        "2.2");
}

TEST(DecimalBehavior, decidesWhichErrorsAreRaised) {
    const auto quiet = NSDecimalNumberHandler::
        decimalNumberHandlerWithRoundingMode_scale_raiseOnExactness_raiseOnOverflow_raiseOnUnderflow_raiseOnDivideByZero(
            NSRoundPlain, 2, false, false, false, false);
    const auto strict = NSDecimalNumberHandler::
        decimalNumberHandlerWithRoundingMode_scale_raiseOnExactness_raiseOnOverflow_raiseOnUnderflow_raiseOnDivideByZero(
            NSRoundPlain, 2, true, true, true, true);
    EXPECT_EQ(written(decimal("1")->decimalNumberByDividingBy_withBehavior(decimal("0"), quiet)), "NaN");
    EXPECT_EQ(written(decimal("1e127")->decimalNumberByMultiplyingBy_withBehavior(decimal("10"), quiet)), "NaN");
    EXPECT_EQ(written(decimal("1e-128")->decimalNumberByDividingBy_withBehavior(decimal("10"), quiet)), "NaN");
    EXPECT_EQ(
        raised([&] { static_cast<void>(decimal("1")->decimalNumberByDividingBy_withBehavior(decimal("0"), strict)); }),
        zeroDivisor);
    EXPECT_EQ(raised([&] {
                  static_cast<void>(decimal("1")->decimalNumberByDividingBy_withBehavior(decimal("3"), strict));
              }).substr(0, 33),
              "NSDecimalNumberExactnessException");
    EXPECT_EQ(quiet->roundingMode(), NSRoundPlain);
    EXPECT_EQ(quiet->scale(), 2);
}

TEST(DecimalNumber, answersMessages) {
    const Ref<NSDecimalNumber> number = decimal("7.5");
    EXPECT_TRUE(number->isKindOfClass(NSNumber::classObject()));
    EXPECT_EQ(written(send<Ref<NSDecimalNumber>>(number, "decimalNumberByDividingBy:"_sel, decimal("2.5"))), "3");
    EXPECT_EQ(written(send<Ref<NSDecimalNumber>>(number, "decimalNumberByAdding:"_sel, decimal("1"))), "8.5");
    EXPECT_EQ(send<double>(number, "doubleValue"_sel), 7.5);
    EXPECT_EQ(written(send<Ref<NSNumber>>(NSDecimalNumber::classObject(), "decimalNumberWithString:"_sel, "2.50"_ns)),
              "2.5");
    EXPECT_EQ(send<id>(NSDecimalNumber::classObject(), "one"_sel).get(), NSDecimalNumber::one().get());
    // A plain number is no decimal operand, so it arrives as null and counts as zero.
    EXPECT_EQ(written(send<Ref<NSDecimalNumber>>(number, "decimalNumberByAdding:"_sel, box(1))), "7.5");
    EXPECT_THROW(send<>(number, "decimalNumberByDividingBy:"_sel, nullptr), NSException);
    EXPECT_TRUE(number->respondsToSelector("decimalNumberByRoundingAccordingToBehavior:"_sel));
}

} // namespace
} // namespace zr
