#include <zrbasic/platform/foundation/numeric_text.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <locale>
#include <random>
#include <string>

namespace zr {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t highest = std::numeric_limits<std::int64_t>::max();

std::u16string widened(const std::string& ascii) {
    return std::u16string(ascii.begin(), ascii.end());
}

TEST(TextOfDouble, isTheShortestThatReadsBack) {
    const struct {
        double value;
        const char* text;
    } rows[] = {
        {1.5, "1.5"},
        {100.0, "100"},
        {0.1, "0.1"},
        {1e15, "1000000000000000"},
        {1e-5, "1e-05"},
        {1e16, "1e+16"},
        {1e21, "1e+21"},
        {0.0001, "0.0001"},
        {0.00012345, "0.00012345"},
        {0.1 + 0.2, "0.30000000000000004"},
        {99.9, "99.9"},
        {0.07, "0.07"},
        {8.8, "8.8"},
        {DBL_MAX, "1.7976931348623157e+308"},
        {5e-324, "5e-324"},
        {123456789012345678.0, "1.2345678901234568e+17"},
        {9999999999999998.0, "9999999999999998"},
        {-2.5, "-2.5"},
        {0.0, "0"},
        {-0.0, "-0"},
        {infinity, "inf"},
        {-infinity, "-inf"},
        {notANumber, "nan"},
        {-notANumber, "nan"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(textOfDouble(row.value), row.text);
    }
}

TEST(TextOfDouble, alwaysReadsBackAndIsNeverLongerThanNeeded) {
    std::mt19937_64 source(7);
    for (int i = 0; i < 20000; ++i) {
        double value = 0;
        const std::uint64_t bits = source();
        static_assert(sizeof value == sizeof bits);
        std::memcpy(&value, &bits, sizeof value);
        if (!std::isfinite(value)) {
            continue;
        }
        const std::string text = textOfDouble(value);
        SCOPED_TRACE(text);
        ASSERT_EQ(std::strtod(text.c_str(), nullptr), value);
        ASSERT_EQ(doubleValueOfText(widened(text)), value);
        const auto digits = [](std::string_view number) {
            const std::string_view mantissa = number.substr(0, number.find('e'));
            return std::count_if(mantissa.begin(), mantissa.end(), [](char c) { return c >= '0' && c <= '9'; });
        };
        char longer[40];
        int precision = 1;
        for (; precision < 17; ++precision) {
            std::snprintf(longer, sizeof longer, "%.*e", precision - 1, value);
            if (std::strtod(longer, nullptr) == value) {
                break;
            }
        }
        if (text.find('e') != std::string::npos) {
            ASSERT_LE(digits(text), precision);
        }
    }
}

TEST(TextOfFloat, tellsTheFloatFromItsNeighbours) {
    EXPECT_EQ(textOfFloat(0.1f), "0.1");
    EXPECT_EQ(textOfFloat(1.5f), "1.5");
    EXPECT_EQ(textOfFloat(16777216.0f), "16777216");
    EXPECT_EQ(textOfFloat(1e-5f), "1e-05");
    EXPECT_EQ(textOfFloat(FLT_MAX), "3.4028235e+38");
    EXPECT_EQ(textOfFloat(std::numeric_limits<float>::quiet_NaN()), "nan");
}

TEST(TextWithSixDecimals, roundsTheExactValue) {
    EXPECT_EQ(textWithSixDecimals(1.23456789), "1.234568");
    EXPECT_EQ(textWithSixDecimals(5e-7), "0.000000");
    EXPECT_EQ(textWithSixDecimals(0.0000015), "0.000002");
    EXPECT_EQ(textWithSixDecimals(0.5), "0.500000");
    EXPECT_EQ(textWithSixDecimals(1e20), "100000000000000000000.000000");
    EXPECT_EQ(textWithSixDecimals(-0.0), "-0.000000");
    EXPECT_EQ(textWithSixDecimals(-notANumber), "nan");
    EXPECT_EQ(textWithSixDecimals(-infinity), "-inf");
    for (const double value : {DBL_MAX, -DBL_MAX, 0.1, 2.5e-6, 3.5e-6, 1234567.8901235, 1e-300}) {
        char expected[400];
        std::snprintf(expected, sizeof expected, "%f", value);
        EXPECT_EQ(textWithSixDecimals(value), expected);
    }
}

TEST(NumericText, readsTheStartAndIgnoresTheRest) {
    const struct {
        const char16_t* text;
        std::int64_t integer;
        double number;
        bool truth;
    } rows[] = {
        {u"12abc", 12, 12, true},
        {u" 42", 42, 42, true},
        {u"\t42", 42, 42, true},
        {u"\u00A042", 42, 42, true},
        {u"\u200B42", 42, 42, true},
        {u"\n42", 0, 0, false},
        {u"\u202842", 0, 0, false},
        {u"+7", 7, 7, true},
        {u"+ 7", 7, 7, true},
        {u"- 7", -7, -7, true},
        {u"1.5", 1, 1.5, true},
        {u".5", 0, 0.5, false},
        {u"0.5", 0, 0.5, false},
        {u"5.", 5, 5, true},
        {u"-.5", 0, -0.5, false},
        {u"1,234", 1, 1, true},
        {u"1_0", 1, 1, true},
        {u"99999999999999999999", highest, 1e20, true},
        {u"-99999999999999999999", lowest, -1e20, true},
        {u"9223372036854775807", highest, 9223372036854775807.0, true},
        {u"-9223372036854775808", lowest, -9223372036854775808.0, true},
        {u"9223372036854775808", highest, 9223372036854775808.0, true},
        {u"1e400", 1, infinity, true},
        {u"-1e400", -1, -infinity, true},
        {u"1e-400", 1, 0, true},
        {u"", 0, 0, false},
        {u"-", 0, 0, false},
        {u"+", 0, 0, false},
        {u".", 0, 0, false},
        {u"-.", 0, 0, false},
        {u"--7", 0, 0, false},
        {u"++7", 0, 0, false},
        {u"1e3", 1, 1000, true},
        {u"1E+3", 1, 1000, true},
        {u"1e", 1, 1, true},
        {u"1e+", 1, 1, true},
        {u"1e 5", 1, 1, true},
        {u"1e+ 5", 1, 1, true},
        {u"e5", 0, 0, false},
        {u"0x10", 0, 0, false},
        {u"inf", 0, 0, false},
        {u"nan", 0, 0, false},
        {u"Infinity", 0, 0, false},
        {u"１２", 0, 0, false},
        {u"٣", 0, 0, false},
        {u"1.2.3", 1, 1.2, true},
        {u"00", 0, 0, false},
        {u"1e99999999999999999999", 1, infinity, true},
        {u"1e-99999999999999999999", 1, 0, true},
        {u"0e99999999999999999999", 0, 0, false},
        {u"4.9406564584124654e-324", 4, 4.9406564584124654e-324, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(std::u16string(row.text)));
        EXPECT_EQ(integerValueOfText(row.text), row.integer);
        EXPECT_EQ(longLongValueOfText(row.text), row.integer);
        EXPECT_EQ(doubleValueOfText(row.text), row.number);
        EXPECT_EQ(boolValueOfText(row.text), row.truth);
    }
}

TEST(NumericText, keepsTheSignOfZero) {
    EXPECT_TRUE(std::signbit(doubleValueOfText(u"-0")));
    EXPECT_TRUE(std::signbit(doubleValueOfText(u"-1e-400")));
    EXPECT_FALSE(std::signbit(doubleValueOfText(u"0")));
    EXPECT_FALSE(std::signbit(doubleValueOfText(u"-")));
    EXPECT_EQ(integerValueOfText(u"-0"), 0);
    EXPECT_FALSE(boolValueOfText(u"-0"));
}

TEST(NumericText, clampsNarrowValues) {
    EXPECT_EQ(intValueOfText(u"2147483647"), 2147483647);
    EXPECT_EQ(intValueOfText(u"2147483648"), 2147483647);
    EXPECT_EQ(intValueOfText(u"-2147483648"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(intValueOfText(u"-99999999999"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(intValueOfText(u"12abc"), 12);
    EXPECT_EQ(floatValueOfText(u"0.1"), 0.1f);
    EXPECT_EQ(floatValueOfText(u"1e39"), std::numeric_limits<float>::infinity());
    EXPECT_EQ(floatValueOfText(u"1e-50"), 0.0f);
}

TEST(NumericText, takesWordsAndNonZeroDigitsForTrue) {
    for (const char16_t* text : {u"YES", u"yes", u"true", u"t", u"9", u"+000009", u"  y", u"Tuesday", u"-1"}) {
        SCOPED_TRACE(testing::PrintToString(std::u16string(text)));
        EXPECT_TRUE(boolValueOfText(text));
    }
    for (const char16_t* text :
         {u"no", u"false", u"0", u"-00000", u"+t", u"0t", u"<true>", u"_true", u"on", u"\nyes"}) {
        SCOPED_TRACE(testing::PrintToString(std::u16string(text)));
        EXPECT_FALSE(boolValueOfText(text));
    }
}

TEST(NumericText, readsAMillionDigits) {
    const std::u16string zeros(1'000'000, u'0');
    EXPECT_EQ(doubleValueOfText(u"1" + zeros + u"e-1000000"), 1);
    EXPECT_EQ(doubleValueOfText(u"0." + zeros + u"1e1000001"), 1);
    EXPECT_EQ(doubleValueOfText(u"1" + zeros), infinity);
    EXPECT_EQ(integerValueOfText(zeros + u"7"), 7);
    EXPECT_EQ(integerValueOfText(u"1" + zeros), highest);
    EXPECT_TRUE(boolValueOfText(zeros + u"7"));
    EXPECT_EQ(doubleValueOfText(std::u16string(1'000'000, u' ') + u"7"), 7);
}

TEST(NumericText, letsTheLastOfManyDigitsDecide) {
    // Exactly between two doubles, and then a digit that only a reader of all of them sees.
    const std::u16string middle = u"9007199254740993";
    const std::u16string zeros(5000, u'0');
    EXPECT_EQ(doubleValueOfText(middle), 9007199254740992.0);
    EXPECT_EQ(doubleValueOfText(middle + u"." + zeros), 9007199254740992.0);
    EXPECT_EQ(doubleValueOfText(middle + u"." + zeros + u"1"), 9007199254740994.0);
    EXPECT_EQ(doubleValueOfText(middle + zeros + u"1e-5001"), 9007199254740994.0);
}

class DecimalComma : public std::numpunct<char> {
  protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(NumericText, doesNotAskTheLocale) {
    const std::string previous = std::setlocale(LC_NUMERIC, nullptr);
    const std::locale global = std::locale::global(std::locale(std::locale::classic(), new DecimalComma));
    // The C library's locale can only be changed to one that is installed.
    for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8"}) {
        std::setlocale(LC_NUMERIC, name);
    }
    EXPECT_EQ(textOfDouble(1234.5), "1234.5");
    EXPECT_EQ(textWithSixDecimals(1234.5), "1234.500000");
    EXPECT_EQ(doubleValueOfText(u"1.5"), 1.5);
    EXPECT_EQ(doubleValueOfText(u"1,5"), 1);
    EXPECT_EQ(floatValueOfText(u"1.5"), 1.5f);
    std::locale::global(global);
    std::setlocale(LC_NUMERIC, previous.c_str());
}

} // namespace
} // namespace zr
