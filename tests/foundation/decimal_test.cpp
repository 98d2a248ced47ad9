#include <zrbasic/platform/foundation/decimal.h>

#include <tests/vectors/vectors.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <map>
#include <string>
#include <type_traits>
#include <vector>

namespace zr {

namespace {

static_assert(std::is_trivially_copyable_v<NSDecimal>);

constexpr char largestMantissa[] = "340282366920938463463374607431768211455";

NSDecimal decimal(std::string_view text) {
    return decimalFromText(text);
}

bool identical(const NSDecimal& left, const NSDecimal& right) {
    return left.low == right.low && left.high == right.high && left.exponent == right.exponent &&
           left.negative == right.negative;
}

struct Outcome {
    std::string text;
    NSCalculationError error;

    friend bool operator==(const Outcome&, const Outcome&) = default;
};

void PrintTo(const Outcome& outcome, std::ostream* out) {
    *out << outcome.text << " with error " << outcome.error;
}

using Operation = NSCalculationError (*)(NSDecimal*, const NSDecimal*, const NSDecimal*, NSRoundingMode) noexcept;

Outcome run(Operation operation, std::string_view left, std::string_view right, NSRoundingMode mode = NSRoundPlain) {
    const NSDecimal first = decimal(left);
    const NSDecimal second = decimal(right);
    NSDecimal result;
    const NSCalculationError error = operation(&result, &first, &second, mode);
    return {decimalText(result), error};
}

std::string rounded(std::string_view text, NSInteger scale, NSRoundingMode mode) {
    const NSDecimal number = decimal(text);
    NSDecimal result;
    NSDecimalRound(&result, &number, scale, mode);
    return decimalText(result);
}

NSComparisonResult compared(std::string_view left, std::string_view right) {
    const NSDecimal first = decimal(left);
    const NSDecimal second = decimal(right);
    return NSDecimalCompare(&first, &second);
}

TEST(DecimalVectors, agreeWithAnIndependentImplementation) {
    const std::map<std::string, Operation> operations = {{"add", NSDecimalAdd},
                                                         {"subtract", NSDecimalSubtract},
                                                         {"multiply", NSDecimalMultiply},
                                                         {"divide", NSDecimalDivide}};
    std::map<std::string, int> counts;
    for (const auto& [line, field] : test::vectorRows("decimal")) {
        SCOPED_TRACE(line);
        ASSERT_EQ(field.size(), 6u);
        const std::string& operation = field[0];
        const auto mode = static_cast<NSRoundingMode>(std::stoi(field[1]));
        const NSDecimal left = decimal(field[2]);
        ++counts[operation];
        if (const auto found = operations.find(operation); found != operations.end()) {
            const NSDecimal right = decimal(field[3]);
            NSDecimal result;
            const NSCalculationError error = found->second(&result, &left, &right, mode);
            EXPECT_TRUE(identical(result, decimal(field[4]))) << decimalText(result);
            EXPECT_EQ(error, std::stoul(field[5]));
        } else if (operation == "compare") {
            EXPECT_EQ(compared(field[2], field[3]), std::stoi(field[4]));
        } else if (operation == "round") {
            NSDecimal result;
            NSDecimalRound(&result, &left, std::stoi(field[3]), mode);
            EXPECT_TRUE(identical(result, decimal(field[4]))) << decimalText(result);
        } else if (operation == "text") {
            EXPECT_EQ(decimalText(left), field[4]);
        } else if (operation == "double") {
            EXPECT_EQ(decimalToDouble(left), std::strtod(field[4].c_str(), nullptr));
        } else if (operation == "integer") {
            EXPECT_EQ(decimalToInt64(left), std::stoll(field[4]));
        } else if (operation == "shortest") {
            const NSDecimal result = decimalFromDouble(std::strtod(field[2].c_str(), nullptr));
            EXPECT_TRUE(identical(result, decimal(field[4]))) << decimalText(result);
        } else {
            ADD_FAILURE() << "unknown operation";
        }
    }
    EXPECT_EQ(counts.size(), 10u);
    for (const auto& [operation, count] : counts) {
        EXPECT_GE(count, 200) << operation;
    }
}

TEST(DecimalText, isReadFromTheStartUntilSomethingElseComes) {
    const struct {
        const char16_t* text;
        const char* value;
    } rows[] = {
        {u"1e-05", "0.00001"}, {u"1E3", "1000"},   {u"1e+5", "100000"},
        {u"1e", "1"},          {u"1e+", "1"},      {u".5", "0.5"},
        {u"5.", "5"},          {u"12abc", "12"},   {u"12 ", "12"},
        {u" 12", "12"},        {u"\n12", "12"},    {u"\u00A0\u200B12", "12"},
        {u"1.5.5", "1.5"},     {u"1,5", "1"},      {u"", "NaN"},
        {u"abc", "NaN"},       {u"NaN", "NaN"},    {u"１２", "NaN"},
        {u"nan", "NaN"},       {u"inf", "NaN"},    {u"-", "0"},
        {u"--5", "0"},         {u"0x10", "0"},     {u"-0", "0"},
        {u" ", "NaN"},         {u"e5", "NaN"},     {u".", "0"},
        {u"+7", "7"},          {u"- 7", "0"},      {u"-1.50", "-1.5"},
        {u"1e200", "NaN"},     {u"-1e200", "NaN"}, {u"1e-128", nullptr},
        {u"1e-129", "NaN"},    {u"0e999", "0"},    {u"1e99999999999999999999", "NaN"},
        {u"0e-999", "0"},      {u"00012", "12"},   {u"1e-9999999999999999999", "NaN"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(std::u16string(row.text)));
        const std::string text = decimalText(decimalFromText(std::u16string_view(row.text)));
        EXPECT_EQ(text, row.value != nullptr ? row.value : "0." + std::string(127, '0') + "1");
    }
}

TEST(DecimalText, keepsTheDigitsThatFitAndCutsTheOthers) {
    EXPECT_EQ(decimalText(decimal("1234567890123456789012345678901234567899")),
              "1234567890123456789012345678901234567890");
    EXPECT_EQ(decimalText(decimal("9999999999999999999999999999999999999999")),
              "9999999999999999999999999999999999999900");
    EXPECT_EQ(decimalText(decimal(largestMantissa)), largestMantissa);
    EXPECT_EQ(decimalText(decimal("340282366920938463463374607431768211456")),
              "340282366920938463463374607431768211450");
    EXPECT_EQ(decimalText(decimal("0.12345678901234567890123456789012345678999")),
              "0.123456789012345678901234567890123456789");
    EXPECT_EQ(decimalText(decimal("1.99e-128")), decimalText(decimal("1e-128")));
}

TEST(DecimalText, readsAMillionDigits) {
    const std::string zeros(1'000'000, '0');
    EXPECT_EQ(decimalText(decimal("1" + zeros + "e-1000000")), "1");
    EXPECT_EQ(decimalText(decimal("0." + zeros + "1e1000001")), "1");
    EXPECT_EQ(decimalText(decimal(zeros + "7")), "7");
    EXPECT_TRUE(decimal("1" + zeros).isNotANumber());
    EXPECT_EQ(decimalText(decimal(std::string(1'000'000, ' ') + "7")), "7");
}

TEST(DecimalText, neverShowsAnExponent) {
    EXPECT_EQ(decimalText(decimal("1e20")), "100000000000000000000");
    EXPECT_EQ(decimalText(decimal("-1e-20")), "-0.00000000000000000001");
    EXPECT_EQ(decimalText(NSDecimal{}), "0");
    EXPECT_EQ(decimalText(NSDecimal::notANumber()), "NaN");
    EXPECT_EQ(decimalText(decimal("1e127")), "1" + std::string(127, '0'));
    EXPECT_EQ(decimalText(NSDecimal{1500, 0, -3, true}), "-1.5");
}

TEST(Decimal, isCompactWhereverItComesFrom) {
    EXPECT_TRUE(identical(decimal("100"), NSDecimal{1, 0, 2, false}));
    EXPECT_TRUE(identical(decimalFromInt64(-100), NSDecimal{1, 0, 2, true}));
    EXPECT_TRUE(identical(decimalFromUInt64(1230), NSDecimal{123, 0, 1, false}));
    EXPECT_TRUE(identical(decimalFromDouble(1.5e3), NSDecimal{15, 0, 2, false}));
    NSDecimal loose{1000, 0, 126, false};
    NSDecimalCompact(&loose);
    EXPECT_TRUE(identical(loose, NSDecimal{100, 0, 127, false}));
    NSDecimal zero{0, 0, 12, false};
    NSDecimalCompact(&zero);
    EXPECT_TRUE(identical(zero, NSDecimal{}));
}

TEST(Decimal, hasNoNegativeZero) {
    EXPECT_TRUE(identical(decimal("-0"), NSDecimal{}));
    EXPECT_TRUE(identical(decimalFromDouble(-0.0), NSDecimal{}));
    EXPECT_EQ(run(NSDecimalSubtract, "5", "5").text, "0");
    EXPECT_EQ(run(NSDecimalMultiply, "-5", "0").text, "0");
    EXPECT_EQ(run(NSDecimalDivide, "0", "-5").text, "0");
    EXPECT_EQ(rounded("-0.4", 0, NSRoundPlain), "0");
}

TEST(DecimalQuotient, hasThirtyEightDigitsTheLastOneRoundedHalfAwayFromZero) {
    EXPECT_EQ(run(NSDecimalDivide, "1", "3").text, "0.33333333333333333333333333333333333333");
    EXPECT_EQ(run(NSDecimalDivide, "2", "3").text, "0.66666666666666666666666666666666666667");
    EXPECT_EQ(run(NSDecimalDivide, "7", "3").text, "2.3333333333333333333333333333333333333");
    EXPECT_EQ(run(NSDecimalDivide, "-2", "3").text, "-0.66666666666666666666666666666666666667");
    // A quotient of 39 digits that would fit the mantissa all the same.
    EXPECT_EQ(run(NSDecimalDivide, "9.9999999999999999999999999999999999999", "5"),
              (Outcome{"2", NSCalculationLossOfPrecision}));
    EXPECT_EQ(run(NSDecimalDivide, "2", "3", NSRoundDown).text, "0.66666666666666666666666666666666666666");
}

TEST(DecimalQuotient, isExactWhereItEnds) {
    EXPECT_EQ(run(NSDecimalDivide, "1.234", "0.01"), (Outcome{"123.4", NSCalculationNoError}));
    EXPECT_EQ(run(NSDecimalDivide, "1.26", "0.05"), (Outcome{"25.2", NSCalculationNoError}));
    EXPECT_EQ(run(NSDecimalDivide, "2650.2", "0.2"), (Outcome{"13251", NSCalculationNoError}));
    EXPECT_EQ(run(NSDecimalDivide, "4.5", "0.15"), (Outcome{"30", NSCalculationNoError}));
    EXPECT_EQ(run(NSDecimalDivide, largestMantissa, "1"),
              (Outcome{"340282366920938463463374607431768211460", NSCalculationLossOfPrecision}));
}

TEST(DecimalProduct, dropsDigitsOnlyWhenTheyDoNotFit) {
    EXPECT_EQ(run(NSDecimalMultiply, "123456789012345678901234567890", "98765432109876543210"),
              (Outcome{"12193263113702179522496570642237463801100000000000", NSCalculationLossOfPrecision}));
    EXPECT_EQ(run(NSDecimalMultiply, "18446744073709551615", "18446744073709551615"),
              (Outcome{"340282366920938463426481119284349108225", NSCalculationNoError}));
    // The largest mantissa and six tenths: rounding carries out of it, so that one digit more has to go.
    EXPECT_EQ(run(NSDecimalMultiply, "283568639100782052886145506193140176213", "12").text,
              "3402823669209384634633746074317682114600");
    EXPECT_EQ(run(NSDecimalMultiply, "283568639100782052886145506193140176213", "12", NSRoundDown).text,
              "3402823669209384634633746074317682114550");
    EXPECT_EQ(run(NSDecimalMultiply, "113427455640312821154458202477256070485", "30.1", NSRoundUp).text,
              "3414166414773415916749191894565407721600");
}

TEST(DecimalErrors, areTheRangeTheZeroDivisorAndTheMissingNumber) {
    EXPECT_EQ(run(NSDecimalMultiply, "1e100", "1e30"), (Outcome{"NaN", NSCalculationOverflow}));
    EXPECT_EQ(run(NSDecimalMultiply, "1e-100", "1e-28").error, NSCalculationNoError);
    EXPECT_EQ(run(NSDecimalMultiply, "1e-100", "1e-29"), (Outcome{"NaN", NSCalculationUnderflow}));
    EXPECT_EQ(run(NSDecimalDivide, "1", "0"), (Outcome{"NaN", NSCalculationDivideByZero}));
    EXPECT_EQ(run(NSDecimalDivide, "0", "0"), (Outcome{"NaN", NSCalculationDivideByZero}));
    EXPECT_EQ(run(NSDecimalDivide, "x", "0"), (Outcome{"NaN", NSCalculationOverflow}));
    EXPECT_EQ(run(NSDecimalDivide, "1e-100", "3"), (Outcome{"NaN", NSCalculationUnderflow}));
    EXPECT_EQ(run(NSDecimalAdd, "34e127", largestMantissa + std::string("e127")),
              (Outcome{"NaN", NSCalculationOverflow}));
    for (const Operation operation : {NSDecimalAdd, NSDecimalSubtract, NSDecimalMultiply, NSDecimalDivide}) {
        EXPECT_EQ(run(operation, "x", "1"), (Outcome{"NaN", NSCalculationOverflow}));
        EXPECT_EQ(run(operation, "1", "x"), (Outcome{"NaN", NSCalculationOverflow}));
    }
}

TEST(DecimalRounding, followsTheModesAtOneDecimal) {
    const struct {
        NSRoundingMode mode;
        const char* results[5];
    } rows[] = {
        {NSRoundPlain, {"1.2", "1.2", "1.3", "1.4", "1.3"}},
        {NSRoundDown, {"1.2", "1.2", "1.2", "1.3", "1.2"}},
        {NSRoundUp, {"1.2", "1.3", "1.3", "1.4", "1.3"}},
        {NSRoundBankers, {"1.2", "1.2", "1.2", "1.4", "1.3"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.mode);
        EXPECT_EQ(rounded("1.2", 1, row.mode), row.results[0]);
        EXPECT_EQ(rounded("1.21", 1, row.mode), row.results[1]);
        EXPECT_EQ(rounded("1.25", 1, row.mode), row.results[2]);
        EXPECT_EQ(rounded("1.35", 1, row.mode), row.results[3]);
        EXPECT_EQ(rounded("1.27", 1, row.mode), row.results[4]);
    }
}

TEST(DecimalRounding, meansLowerAndHigherValuesByDownAndUp) {
    EXPECT_EQ(rounded("-1.25", 1, NSRoundDown), "-1.3");
    EXPECT_EQ(rounded("-1.25", 1, NSRoundUp), "-1.2");
    EXPECT_EQ(rounded("-1.25", 1, NSRoundPlain), "-1.3");
    EXPECT_EQ(rounded("-1.25", 1, NSRoundBankers), "-1.2");
    EXPECT_EQ(rounded("1250", -2, NSRoundBankers), "1200");
    EXPECT_EQ(rounded("1250", -2, NSRoundPlain), "1300");
}

TEST(DecimalRounding, takesAnyScale) {
    EXPECT_EQ(rounded("1.25", NSDecimalNoScale, NSRoundPlain), "1.25");
    EXPECT_EQ(rounded("1.25", 200, NSRoundUp), "1.25");
    EXPECT_EQ(rounded("1.25", -3, NSRoundUp), "1000");
    EXPECT_EQ(rounded("1.25", std::numeric_limits<NSInteger>::min(), NSRoundPlain), "0");
    EXPECT_EQ(rounded("1.25", std::numeric_limits<NSInteger>::min(), NSRoundUp), "NaN");
    EXPECT_EQ(rounded("1.25", std::numeric_limits<NSInteger>::max(), NSRoundDown), "1.25");
    EXPECT_EQ(rounded("x", 1, NSRoundPlain), "NaN");
}

TEST(DecimalOrdering, isExactAndPutsTheMissingNumberFirst) {
    EXPECT_EQ(compared("1.50", "1.5"), NSOrderedSame);
    EXPECT_EQ(compared("0.30000000000000000000000000000000000001", "0.3"), NSOrderedDescending);
    EXPECT_EQ(compared("-2", "-1"), NSOrderedAscending);
    EXPECT_EQ(compared("x", "-1e127"), NSOrderedAscending);
    EXPECT_EQ(compared("0", "x"), NSOrderedDescending);
    EXPECT_EQ(compared("x", "x"), NSOrderedSame);
    const NSDecimal loose{100, 0, -2, false};
    const NSDecimal one = decimalFromInt64(1);
    EXPECT_EQ(NSDecimalCompare(&loose, &one), NSOrderedSame);
}

TEST(DecimalPower, multipliesAndShifts) {
    NSDecimal result;
    const NSDecimal base = decimal("-1.1");
    EXPECT_EQ(NSDecimalPower(&result, &base, 3, NSRoundPlain), NSCalculationNoError);
    EXPECT_EQ(decimalText(result), "-1.331");
    EXPECT_EQ(NSDecimalPower(&result, &base, 0, NSRoundPlain), NSCalculationNoError);
    EXPECT_EQ(decimalText(result), "1");
    const NSDecimal ten = decimal("10");
    EXPECT_EQ(NSDecimalPower(&result, &ten, 127, NSRoundPlain), NSCalculationNoError);
    EXPECT_EQ(NSDecimalPower(&result, &ten, 128, NSRoundPlain), NSCalculationOverflow);
    EXPECT_TRUE(result.isNotANumber());
    EXPECT_EQ(NSDecimalMultiplyByPowerOf10(&result, &base, -4, NSRoundPlain), NSCalculationNoError);
    EXPECT_EQ(decimalText(result), "-0.00011");
    EXPECT_EQ(NSDecimalMultiplyByPowerOf10(&result, &base, 129, NSRoundPlain), NSCalculationOverflow);
    EXPECT_EQ(NSDecimalMultiplyByPowerOf10(&result, &base, -32768, NSRoundPlain), NSCalculationUnderflow);
}

TEST(DecimalNormalization, givesOneExponent) {
    NSDecimal coarse = decimal("12e3");
    NSDecimal fine = decimal("0.05");
    EXPECT_EQ(NSDecimalNormalize(&coarse, &fine, NSRoundPlain), NSCalculationNoError);
    EXPECT_EQ(coarse.exponent, -2);
    EXPECT_EQ(coarse.low, 1200000u);
    EXPECT_EQ(fine.low, 5u);
    coarse = decimal("12e37");
    fine = decimal("-0.15");
    EXPECT_EQ(NSDecimalNormalize(&coarse, &fine, NSRoundPlain), NSCalculationLossOfPrecision);
    EXPECT_EQ(coarse.exponent, fine.exponent);
    EXPECT_EQ(decimalText(fine), "0");
    NSDecimal none = NSDecimal::notANumber();
    EXPECT_EQ(NSDecimalNormalize(&none, &fine, NSRoundPlain), NSCalculationOverflow);
    EXPECT_TRUE(fine.isNotANumber());
}

TEST(DecimalOperands, mayBeTheResult) {
    NSDecimal number = decimal("1.5");
    NSDecimalAdd(&number, &number, &number, NSRoundPlain);
    EXPECT_EQ(decimalText(number), "3");
    NSDecimalMultiply(&number, &number, &number, NSRoundPlain);
    EXPECT_EQ(decimalText(number), "9");
    NSDecimalDivide(&number, &number, &number, NSRoundPlain);
    EXPECT_EQ(decimalText(number), "1");
    NSDecimalSubtract(&number, &number, &number, NSRoundPlain);
    EXPECT_EQ(decimalText(number), "0");
    NSDecimal copy;
    const NSDecimal source = decimal("7.25");
    NSDecimalCopy(&copy, &source);
    EXPECT_TRUE(identical(copy, source));
}

TEST(DecimalConversion, takesTheShortestTextOfAFloatingPointNumber) {
    EXPECT_EQ(decimalText(decimalFromDouble(0.1 + 0.2)), "0.30000000000000004");
    EXPECT_EQ(decimalText(decimalFromDouble(8.38)), "8.38");
    EXPECT_EQ(decimalText(decimalFromDouble(36.76662445068359375)), "36.766624450683594");
    EXPECT_EQ(decimalText(decimalFromFloat(0.1f)), "0.1");
    EXPECT_EQ(decimalText(decimalFromFloat(16777216.0f)), "16777216");
    EXPECT_TRUE(decimalFromDouble(std::numeric_limits<double>::quiet_NaN()).isNotANumber());
    EXPECT_TRUE(decimalFromDouble(std::numeric_limits<double>::infinity()).isNotANumber());
    EXPECT_TRUE(decimalFromFloat(-std::numeric_limits<float>::infinity()).isNotANumber());
    EXPECT_TRUE(decimalFromDouble(1e-129).isNotANumber());
    EXPECT_TRUE(decimalFromDouble(1e166).isNotANumber());
}

TEST(DecimalConversion, givesTheNearestDouble) {
    EXPECT_EQ(decimalToDouble(decimal("3.14")), 3.14);
    EXPECT_EQ(decimalToDouble(decimal("92.43")), 92.43);
    EXPECT_EQ(decimalToDouble(decimal("7928.46")), 7928.46);
    EXPECT_EQ(decimalToDouble(decimal("0.33333333333333333333333333333333333333")), 1.0 / 3.0);
    EXPECT_EQ(decimalToDouble(decimal("2.9999999999999999999999999999999999999")), 3.0);
    EXPECT_TRUE(std::isnan(decimalToDouble(NSDecimal::notANumber())));
}

TEST(DecimalConversion, cutsTheWholePartTowardZeroAndClamps) {
    constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t highest = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(decimalToInt64(decimal("1.9")), 1);
    EXPECT_EQ(decimalToInt64(decimal("-1.9")), -1);
    EXPECT_EQ(decimalToInt64(decimal("9.821426272392280061")), 9);
    EXPECT_EQ(decimalToInt64(decimal("1e19")), highest);
    EXPECT_EQ(decimalToInt64(decimal("-9223372036854775808")), lowest);
    EXPECT_EQ(decimalToInt64(decimal("-1e127")), lowest);
    EXPECT_EQ(decimalToInt64(NSDecimal::notANumber()), 0);
    EXPECT_EQ(decimalToUInt64(decimal("18446744073709551615.9")), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(decimalToUInt64(decimal("1e20")), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(decimalToUInt64(decimal("-1.9")), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(decimalToUInt64(NSDecimal::notANumber()), 0u);
}

} // namespace
} // namespace zr
