#include <zrbasic/platform/foundation/number.h>

#include <zrbasic/platform/foundation/decimal_number.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/exception.h>
#include <zrbasic/platform/runtime/message.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace zr {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t highest = std::numeric_limits<std::int64_t>::max();
constexpr std::uint64_t highestUnsigned = std::numeric_limits<std::uint64_t>::max();

Ref<NSDecimalNumber> decimal(std::string_view text) {
    return NSDecimalNumber::decimalNumberWithDecimal(decimalFromText(text));
}

std::string written(NSNumber* number) {
    EXPECT_TRUE(number->description()->isEqualToString(number->stringValue()));
    return number->stringValue()->utf8();
}

TEST(Number, keepsTheTypeItIsMadeWith) {
    const struct {
        Ref<NSNumber> number;
        const char* type;
        const char* text;
    } rows[] = {
        {NSNumber::numberWithBool(true), "c", "1"},
        {NSNumber::numberWithBool(false), "c", "0"},
        {NSNumber::numberWithChar('a'), "c", "97"},
        {NSNumber::numberWithUnsignedChar(255), "C", "255"},
        {NSNumber::numberWithShort(-32768), "s", "-32768"},
        {NSNumber::numberWithUnsignedShort(65535), "S", "65535"},
        {NSNumber::numberWithInt(-5), "i", "-5"},
        {NSNumber::numberWithUnsignedInt(4294967295u), "I", "4294967295"},
        {NSNumber::numberWithLong(-5), "q", "-5"},
        {NSNumber::numberWithUnsignedLong(5), "Q", "5"},
        {NSNumber::numberWithLongLong(lowest), "q", "-9223372036854775808"},
        {NSNumber::numberWithUnsignedLongLong(highestUnsigned), "Q", "18446744073709551615"},
        {NSNumber::numberWithInteger(-1), "q", "-1"},
        {NSNumber::numberWithUnsignedInteger(1), "Q", "1"},
        {NSNumber::numberWithFloat(0.1f), "f", "0.1"},
        {NSNumber::numberWithDouble(0.1), "d", "0.1"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_STREQ(row.number->objCType(), row.type);
        EXPECT_EQ(written(row.number), row.text);
    }
}

TEST(Boxing, takesEveryNumberTypeOfTheLanguage) {
    enum class Side : std::uint8_t { Buy = 1, Sell = 2 };
    EXPECT_TRUE(box(true)->isBoolean());
    EXPECT_FALSE(box(1)->isBoolean());
    EXPECT_EQ(box(true).get(), NSNumber::numberWithBool(true).get());
    EXPECT_STREQ(box('a')->objCType(), "c");
    EXPECT_STREQ(box(std::uint16_t{7})->objCType(), "S");
    EXPECT_STREQ(box(7L)->objCType(), "q");
    EXPECT_STREQ(box(7ULL)->objCType(), "Q");
    EXPECT_STREQ(box(1.5f)->objCType(), "f");
    EXPECT_STREQ(box(1.5)->objCType(), "d");
    EXPECT_EQ(box(Side::Sell)->intValue(), 2);
    EXPECT_TRUE(box(1.0)->isFractional());
    EXPECT_FALSE(box(1)->isFractional());
}

TEST(NumberText, isTheShortestThatReadsBack) {
    EXPECT_EQ(written(box(100.0)), "100");
    EXPECT_EQ(written(box(1e-5)), "1e-05");
    EXPECT_EQ(written(box(1e16)), "1e+16");
    EXPECT_EQ(written(box(0.1 + 0.2)), "0.30000000000000004");
    EXPECT_EQ(written(box(-0.0)), "-0");
    EXPECT_EQ(written(box(notANumber)), "nan");
    EXPECT_EQ(written(box(-infinity)), "-inf");
}

TEST(NumberConversion, cutsFractionsAndClampsWhatIsTooLarge) {
    EXPECT_EQ(box(1.9)->integerValue(), 1);
    EXPECT_EQ(box(-1.9)->integerValue(), -1);
    EXPECT_EQ(box(1e19)->longLongValue(), highest);
    EXPECT_EQ(box(-1e19)->longLongValue(), lowest);
    EXPECT_EQ(box(9223372036854775807.0)->longLongValue(), highest);
    EXPECT_EQ(box(notANumber)->integerValue(), 0);
    EXPECT_EQ(box(infinity)->integerValue(), highest);
    EXPECT_EQ(box(3e9)->intValue(), 2147483647);
    EXPECT_EQ(box(-3e9)->intValue(), std::numeric_limits<int>::min());
    EXPECT_EQ(box(1e9)->shortValue(), 32767);
    EXPECT_EQ(box(200.7)->charValue(), 127);
    EXPECT_EQ(box(-infinity)->longValue(), lowest);
}

TEST(NumberConversion, readsNegativeValuesAsTheirBits) {
    EXPECT_EQ(box(-1)->unsignedIntegerValue(), highestUnsigned);
    EXPECT_EQ(box(-1.9)->unsignedIntegerValue(), highestUnsigned);
    EXPECT_EQ(box(highestUnsigned)->unsignedIntegerValue(), highestUnsigned);
    EXPECT_EQ(box(highestUnsigned)->integerValue(), -1);
    EXPECT_EQ(box(-1.9)->unsignedIntValue(), 4294967295u);
    EXPECT_EQ(box(-1)->unsignedShortValue(), 65535);
    EXPECT_EQ(box(-1)->unsignedCharValue(), 255);
    EXPECT_EQ(box(1e19)->unsignedLongLongValue(), 10000000000000000000ull);
    EXPECT_EQ(box(1e20)->unsignedLongValue(), highestUnsigned);
    EXPECT_EQ(box(5e9)->unsignedIntValue(), 4294967295u);
    EXPECT_EQ(box(notANumber)->unsignedIntegerValue(), 0u);
}

TEST(NumberConversion, keepsTheLowBitsOfIntegers) {
    EXPECT_EQ(box(4294967297LL)->intValue(), 1);
    EXPECT_EQ(box(65537)->shortValue(), 1);
    EXPECT_EQ(box(257)->charValue(), 1);
    EXPECT_EQ(box(-129)->charValue(), 127);
}

TEST(NumberConversion, givesTheNearestFloatingPointValue) {
    EXPECT_EQ(box(9007199254740993LL)->doubleValue(), 9007199254740992.0);
    EXPECT_EQ(box(highestUnsigned)->doubleValue(), 18446744073709551616.0);
    EXPECT_EQ(box(highestUnsigned)->floatValue(), 18446744073709551616.0f);
    EXPECT_EQ(box(0.1)->floatValue(), 0.1f);
    EXPECT_EQ(box(true)->doubleValue(), 1.0);
    EXPECT_EQ(box(-3)->floatValue(), -3.0f);
}

TEST(NumberTruth, isAnythingButZero) {
    EXPECT_TRUE(box(0.5)->boolValue());
    EXPECT_TRUE(box(notANumber)->boolValue());
    EXPECT_TRUE(box(-1)->boolValue());
    EXPECT_FALSE(box(0)->boolValue());
    EXPECT_FALSE(box(-0.0)->boolValue());
    EXPECT_TRUE(decimal("0.001")->boolValue());
    EXPECT_FALSE(decimal("0")->boolValue());
}

TEST(NumberDecimal, isExactForIntegersAndShortestForFractions) {
    const struct {
        Ref<NSNumber> number;
        const char* text;
    } rows[] = {
        {box(highestUnsigned), "18446744073709551615"},
        {box(lowest), "-9223372036854775808"},
        {box(true), "1"},
        {box(0.1), "0.1"},
        {box(0.1f), "0.1"},
        {box(0.07), "0.07"},
        {box(0.1 + 0.2), "0.30000000000000004"},
        {box(1e22), "10000000000000000000000"},
        {box(notANumber), "NaN"},
        {box(infinity), "NaN"},
        {box(1e300), "NaN"},
        {decimal("1.235"), "1.235"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(decimalText(row.number->decimalValue()), row.text);
    }
}

TEST(NumberComparison, isByValueWhateverTheKinds) {
    // Each of these is below the next.
    const std::vector<Ref<NSNumber>> ascending = {
        box(-infinity),
        box(-1e300),
        box(-1.5e19),
        box(lowest),
        box(-9007199254740993LL),
        box(-9007199254740992.0),
        box(-1.5),
        box(-1),
        box(0),
        decimal("1e-128"),
        box(0.1),
        decimal("0.10000000000000001"),
        box(true),
        box(1.5f),
        decimal("2"),
        box(9007199254740992.0),
        box(9007199254740993LL),
        box(highest),
        box(9223372036854775808.0),
        box(highestUnsigned),
        box(18446744073709551616.0),
        decimal("1e100"),
        box(1e300),
        box(infinity),
    };
    for (std::size_t i = 0; i < ascending.size(); ++i) {
        for (std::size_t j = 0; j < ascending.size(); ++j) {
            SCOPED_TRACE(written(ascending[i]) + " and " + written(ascending[j]));
            const NSComparisonResult expected = i == j  ? NSOrderedSame
                                                : i < j ? NSOrderedAscending
                                                        : NSOrderedDescending;
            EXPECT_EQ(ascending[i]->compare(ascending[j]), expected);
            EXPECT_EQ(ascending[i]->isEqual(ascending[j]), i == j);
        }
    }
}

TEST(NumberEquality, holdsAcrossKindsAndSharesTheHash) {
    const std::vector<std::vector<Ref<NSNumber>>> families = {
        {box(1), box(1.0), box(true), decimal("1"), box(1u), box(1.0f), box('\1')},
        {box(0), box(0.0), box(-0.0), box(false), decimal("0")},
        {box(0.1), decimal("0.1")},
        {box(3.14), decimal("3.14")},
        {box(-5), box(-5.0), decimal("-5")},
        {box(notANumber), box(-notANumber), NSDecimalNumber::notANumber()},
        {box(18446744073709551616.0), decimal("18446744073709552000")},
        {box(highestUnsigned), decimal("18446744073709551615")},
    };
    for (const auto& family : families) {
        for (const auto& first : family) {
            for (const auto& second : family) {
                SCOPED_TRACE(written(first) + " and " + written(second));
                EXPECT_TRUE(first->isEqual(second));
                EXPECT_TRUE(first->isEqualToNumber(second));
                EXPECT_EQ(first->compare(second), NSOrderedSame);
                EXPECT_EQ(first->hash(), second->hash());
            }
        }
    }
}

TEST(NumberEquality, neverHoldsForAnythingButNumbers) {
    EXPECT_FALSE(box(1)->isEqual("1"_ns));
    EXPECT_FALSE(box(1)->isEqual(nullptr));
    EXPECT_FALSE(box(1)->isEqualToNumber(nullptr));
    EXPECT_FALSE(box(1)->isEqual(NSNumber::classObject()));
    EXPECT_FALSE(box(0.1f)->isEqual(box(0.1)));
}

TEST(NumberComparison, putsNaNBetweenTheNegativeValuesAndZero) {
    const Ref<NSNumber> nan = box(notANumber);
    EXPECT_EQ(nan->compare(box(0)), NSOrderedAscending);
    EXPECT_EQ(nan->compare(box(0.0)), NSOrderedAscending);
    EXPECT_EQ(nan->compare(box(-1)), NSOrderedDescending);
    EXPECT_EQ(nan->compare(box(-infinity)), NSOrderedDescending);
    EXPECT_EQ(box(5u)->compare(nan), NSOrderedDescending);
    EXPECT_EQ(box(lowest)->compare(nan), NSOrderedAscending);
    EXPECT_EQ(nan->compare(nan), NSOrderedSame);
    EXPECT_EQ(nan->compare(decimal("-1")), NSOrderedAscending);
}

TEST(NumberComparison, raisesForNull) {
    try {
        static_cast<void>(box(1)->compare(nullptr));
        FAIL() << "no exception";
    } catch (const NSException& exception) {
        EXPECT_EQ(exception.name(), NSInvalidArgumentException);
        EXPECT_FALSE(exception.reason().empty());
    }
}

TEST(Number, isItsOwnCopy) {
    const Ref<NSNumber> number = box(1.5);
    EXPECT_EQ(number->copy().get(), number.get());
    EXPECT_THROW(static_cast<void>(number->mutableCopy()), NSException);
    EXPECT_EQ(make<NSNumber>()->integerValue(), 0);
    EXPECT_TRUE(number->isKindOfClass(NSNumber::classObject()));
    EXPECT_FALSE(number->isKindOfClass(NSDecimalNumber::classObject()));
}

TEST(Number, answersMessages) {
    const Ref<NSNumber> number = box(-1.5);
    EXPECT_EQ(send<double>(number, "doubleValue"_sel), -1.5);
    EXPECT_EQ(send<NSInteger>(number, "integerValue"_sel), -1);
    EXPECT_EQ(send<NSInteger>(number, "compare:"_sel, box(2)), NSOrderedAscending);
    EXPECT_EQ(send<Ref<NSString>>(number, "stringValue"_sel)->utf8(), "-1.5");
    EXPECT_EQ(send<Ref<NSString>>(number, "description"_sel)->utf8(), "-1.5");
    EXPECT_EQ(send<Ref<NSNumber>>(NSNumber::classObject(), "numberWithInt:"_sel, 7)->intValue(), 7);
    EXPECT_TRUE(send<bool>(number, "isEqualToNumber:"_sel, decimal("-1.5")));
    EXPECT_EQ(decimalText(send<NSDecimal>(number, "decimalValue"_sel)), "-1.5");
    // An argument of another kind arrives as null.
    EXPECT_THROW(send<NSInteger>(number, "compare:"_sel, "2"_ns), NSException);
    EXPECT_FALSE(send<bool>(number, "isEqualToNumber:"_sel, "-1.5"_ns));
    for (const char* name : {"boolValue", "charValue", "unsignedCharValue", "shortValue", "unsignedShortValue",
                             "intValue", "unsignedIntValue", "longValue", "unsignedLongValue", "longLongValue",
                             "unsignedLongLongValue", "unsignedIntegerValue", "floatValue", "decimalValue"}) {
        EXPECT_TRUE(number->respondsToSelector(sel_registerName(name))) << name;
    }
    EXPECT_FALSE(number->respondsToSelector("length"_sel));
    EXPECT_THROW(send<>(number, "length"_sel), NSException);
}

} // namespace
} // namespace zr
