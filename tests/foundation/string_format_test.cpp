#include <zrbasic/platform/foundation/format_argument.h>

#include "checks.h"

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/date.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>

#include <gtest/gtest.h>

#include <cfloat>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <limits>

namespace zr {
namespace {

template <class... Arguments>
std::string format(const char* format, const Arguments&... arguments) {
    return NSString::stringWithFormat(NSString::fromUtf8(format), arguments...)->utf8();
}

TEST(FormattingObjects, writesTheirDescription) {
    EXPECT_EQ(format("%@ and %@", "gold"_ns, NSDate::dateWithTimeIntervalSince1970(0.9)),
              "gold and 1970-01-01 00:00:00 +0000");
    EXPECT_EQ(format("[%@]", ""_ns), "[]");
    EXPECT_EQ(format("%@", NSMutableString::stringWithString("x"_ns)), "x");
    const Ref<NSString> nothing;
    EXPECT_EQ(format("%@", nothing), "(null)");
    EXPECT_EQ(format("%@", nullptr), "(null)");
    EXPECT_EQ(format("%@", static_cast<NSObject*>(nullptr)), "(null)");
    EXPECT_EQ(format("%@", u"\u4EF7\U0001F600"_ns), "\xE4\xBB\xB7\xF0\x9F\x98\x80");
}

TEST(FormattingObjects, numbersTheNullObjectAndCollections) {
    EXPECT_EQ(format("%@ %@", box(true), box(false)), "1 0");
    EXPECT_EQ(format("%@ %@ %@", box(12.5), box(100.0), box(-3)), "12.5 100 -3");
    EXPECT_EQ(format("%@", NSNull::null()), "<null>");
    EXPECT_EQ(format("%d %f", NSNull::null(), box(5)), "0 0.000000") << "an object is no C number";
    EXPECT_EQ(format("%@", array({box(1), "a"_ns})), "(\n    1,\n    a\n)");
}

TEST(FormattingIntegers, followsTheLettersOfC) {
    EXPECT_EQ(format("%d %i %u", -7, 42, 7U), "-7 42 7");
    EXPECT_EQ(format("%ld %lu", -9000000000L, 18446744073709551615UL), "-9000000000 18446744073709551615");
    EXPECT_EQ(format("%lld %llu", std::numeric_limits<long long>::min(), 5ULL), "-9223372036854775808 5");
    EXPECT_EQ(format("%x %X %o", 255, 255, 8), "ff FF 10");
    EXPECT_EQ(format("%02lx%02lX", 10UL, 10UL), "0a0A");
    EXPECT_EQ(format("%zu %td %jd", std::size_t(3), std::ptrdiff_t(-3), std::intmax_t(9)), "3 -3 9");
    EXPECT_EQ(format("%d %d", true, false), "1 0");
    EXPECT_EQ(format("%ld.%ld.%ld", NSInteger(11), NSInteger(2), NSInteger(0)), "11.2.0");
}

TEST(FormattingIntegers, takesOnlyTheBitsItNames) {
    EXPECT_EQ(format("%u", -1), "4294967295");
    EXPECT_EQ(format("%lu", -1), "18446744073709551615");
    EXPECT_EQ(format("%x", -1), "ffffffff");
    EXPECT_EQ(format("%d", 4294967297LL), "1");
    EXPECT_EQ(format("%hhd %hd %hhu", 255, 65535, 256), "-1 -1 0");
    EXPECT_EQ(format("%ld", std::int8_t(-1)), "-1");
}

TEST(FormattingIntegers, widthsAndFlags) {
    EXPECT_EQ(format("[%5d][%-5d][%05d]", 42, 42, 42), "[   42][42   ][00042]");
    EXPECT_EQ(format("[%+d][% d][%+d]", 5, 5, -5), "[+5][ 5][-5]");
    EXPECT_EQ(format("[%.3d][%5.3d][%05.3d]", 7, 7, 7), "[007][  007][  007]");
    EXPECT_EQ(format("[%#x][%#X][%#o][%#x]", 255, 255, 8, 0), "[0xff][0XFF][010][0]");
    EXPECT_EQ(format("[%*d][%-*d][%.*d]", 4, 1, 4, 1, 3, 1), "[   1][1   ][001]");
    EXPECT_EQ(format("[%*d]", -4, 1), "[1   ]");
    EXPECT_EQ(format("[%.0d][%-05d]", 0, 3), "[][3    ]");
    EXPECT_EQ(format("[%05d][%08x]", -42, 255), "[-0042][000000ff]");
}

TEST(FormattingDoubles, roundsTheExactValue) {
    EXPECT_EQ(format("%f", 1.23456789), "1.234568");
    EXPECT_EQ(format("%f", 5e-7), "0.000000");
    EXPECT_EQ(format("%f", 1e20), "100000000000000000000.000000");
    EXPECT_EQ(format("%.2f %.0f %.1f", 2.675, 2.5, 0.05), "2.67 2 0.1");
    EXPECT_EQ(format("%f %f %f", NAN, INFINITY, -INFINITY), "nan inf -inf");
    EXPECT_EQ(format("%F %E %G", NAN, INFINITY, -INFINITY), "NAN INF -INF");
    EXPECT_EQ(format("%f", -std::numeric_limits<double>::quiet_NaN()), "nan") << "a NaN has no sign";
    EXPECT_EQ(format("%.1f", 1.5F), "1.5");
    EXPECT_EQ(format("%f", -0.0), "-0.000000");
}

TEST(FormattingDoubles, otherNotationsWidthsAndFlags) {
    EXPECT_EQ(format("%e %g %g %G", 12345.678, 0.0001, 1e-5, 1e20), "1.234568e+04 0.0001 1e-05 1E+20");
    EXPECT_EQ(format("[%8.2f][%-8.2f][%08.2f][%+.1f]", 3.14159, 3.14159, -3.14159, 2.0),
              "[    3.14][3.14    ][-0003.14][+2.0]");
    EXPECT_EQ(format("[%5f][%05f]", INFINITY, -INFINITY), "[  inf][ -inf]");
    EXPECT_EQ(format("%a", 1.0), "0x1p+0");
    EXPECT_EQ(format("%#.0f", 3.0), "3.");
    EXPECT_EQ(format("%.3f", DBL_MAX).size(), 313U);
    EXPECT_EQ(format("%.50f", 0.1), "0.10000000000000000555111512312578270211815834045410");
}

TEST(FormattingTexts, readsEitherEncoding) {
    EXPECT_EQ(format("%s %S", "a\xC3\xA9", u"\u4EF7"), "a\xC3\xA9 \xE4\xBB\xB7");
    EXPECT_EQ(format("[%5s][%-5s][%.2s]", "ab", "ab", "abcdef"), "[   ab][ab   ][ab]");
    EXPECT_EQ(format("[%5@][%.1@]", "ab"_ns, "ab"_ns), "[   ab][a]");
    EXPECT_EQ(format("%s", static_cast<const char*>(nullptr)), "(null)");
    EXPECT_EQ(format("%S", static_cast<const char16_t*>(nullptr)), "(null)");
    EXPECT_EQ(format("%s", std::string("owned")), "owned");
    EXPECT_EQ(format("%s", "\xFF"), "\xEF\xBF\xBD");
    EXPECT_EQ(format("%c%c %C", 'a', 98, u'\u4EF7'), "ab \xE4\xBB\xB7");
}

TEST(FormattingText, percentSignsAndUnknownDirectives) {
    EXPECT_EQ(format("100%%"), "100%");
    EXPECT_EQ(format("%%d %d", 1), "%d 1");
    EXPECT_EQ(format("%y %d", 1), "%y 1");
    EXPECT_EQ(format("end %"), "end %");
    EXPECT_EQ(format("end %-5l"), "end %-5l");
    EXPECT_EQ(format(""), "");
    EXPECT_EQ(format("plain"), "plain");
}

TEST(FormattingText, argumentsMayBeNumbered) {
    EXPECT_EQ(format("%2$@ %1$@", "a"_ns, "b"_ns), "b a");
    EXPECT_EQ(format("%1$d %1$x", 16), "16 10");
    EXPECT_EQ(format("%2$d %d", 1, 2), "2 0") << "counting goes on from there";
    EXPECT_EQ(format("%9$@", "a"_ns), "(null)");
    EXPECT_EQ(format("[%0$d]", 5), "[%0$d]");
}

TEST(FormattingText, argumentsOfAnotherKindAreNoDanger) {
    EXPECT_EQ(format("%@", 5), "5");
    EXPECT_EQ(format("%@ %@", 1.5, "c text"), "1.5 c text");
    EXPECT_EQ(format("%d %f", "text"_ns, "text"_ns), "0 0.000000");
    EXPECT_EQ(format("%s", "object"_ns), "object");
    EXPECT_EQ(format("%d %ld", 2.9, -2.9), "2 -2");
    EXPECT_EQ(format("%f", 3), "3.000000");
    EXPECT_EQ(format("%ld %ld %ld", NAN, 1e300, -1e300), "0 -1 -9223372036854775808");
    EXPECT_EQ(format("%lu %lu", 1e19, 1e300), "10000000000000000000 18446744073709551615");
    EXPECT_EQ(format("%s %d", 7, "c text"), "7 0");
    EXPECT_EQ(format("%c", "text"_ns), std::string(1, '\0'));
}

TEST(FormattingText, missingArgumentsReadAsNullAndSpareOnesAreIgnored) {
    EXPECT_EQ(format("%@ %d %f %s"), "(null) 0 0.000000 (null)");
    EXPECT_EQ(format("%d", 1, 2, 3), "1");
    EXPECT_EQ(format("%*d"), "0");
}

TEST(FormattingText, hugeWidthsAreCutOff) {
    EXPECT_EQ(format("%99999999999d", 1).size(), 4096U);
    EXPECT_EQ(format("%.99999999999f", 1.0).size(), 4098U);
    EXPECT_EQ(format("%*d", std::numeric_limits<int>::max(), 1).size(), 4096U);
    EXPECT_EQ(format("%*d", std::numeric_limits<int>::min(), 1).size(), 4096U);
    EXPECT_EQ(format("%.*d", -5, 1), "1");
}

TEST(FormattingText, aNullFormatRaises) {
    EXPECT_EQ(test::raisedName([] { (void)NSString::stringWithFormat(nullptr, 1); }), NSInvalidArgumentException);
    EXPECT_EQ(test::raisedName([] { (void)"a"_ns->stringByAppendingFormat(nullptr); }), NSInvalidArgumentException);
    EXPECT_EQ("a"_ns->stringByAppendingFormat("-%d"_ns, 1)->utf8(), "a-1");
}

TEST(FormattingText, theUsersLocaleChangesNothing) {
    // A locale with a decimal comma, made for the occasion: machines that build have none as a rule.
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "zrbasic_locale_test";
    std::filesystem::create_directories(folder);
    const std::string command = "localedef -i de_DE -f UTF-8 '" + (folder / "de_DE.UTF-8").string() + "'";
    ASSERT_EQ(std::system(command.c_str()), 0);
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    setenv("LOCPATH", folder.c_str(), 1);
    ASSERT_NE(std::setlocale(LC_NUMERIC, "de_DE.UTF-8"), nullptr);
    char inThatLocale[16];
    std::snprintf(inThatLocale, sizeof inThatLocale, "%.1f", 0.5);
    const std::string text = format("%.2f %g", 1234.5, 0.5);
    std::setlocale(LC_NUMERIC, before.c_str());
    EXPECT_STREQ(inThatLocale, "0,5");
    EXPECT_EQ(text, "1234.50 0.5");
    std::filesystem::remove_all(folder);
}

TEST(FormattingText, aDescribedObjectThatIsNoText) {
    const Ref<NSObject> plain = make<NSObject>();
    const std::string text = format("%@", plain);
    EXPECT_EQ(text.substr(0, 13), "<NSObject: 0x");
    EXPECT_EQ(text.back(), '>');
    EXPECT_EQ(format("%@", NSString::classObject()), "NSString");
    EXPECT_EQ(format("%p", static_cast<NSObject*>(nullptr)), "0x0");
    EXPECT_EQ(format("%p", plain), text.substr(11, text.size() - 12));
}

} // namespace
} // namespace zr
