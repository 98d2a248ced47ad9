#include <zrbasic/core/color.h>

#include <zrbasic/core/pattern_matching.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>

#include "../foundation/checks.h"

#include <tests/vectors/vectors.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <cmath>
#include <limits>
#include <numeric>
#include <sstream>
#include <vector>

namespace zr {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// "red green blue alpha" in steps of 1/255, which need not be whole; "null" for null.
std::string parts(NSColor* color) {
    if (!color) {
        return "null";
    }
    std::ostringstream out;
    out << color->redComponent() * 255 << ' ' << color->greenComponent() * 255 << ' ' << color->blueComponent() * 255
        << ' ' << color->alphaComponent() * 255;
    return out.str();
}

std::string colorOf(NSString* text) {
    return parts(colorWithHexString(text));
}

std::string text(NSString* string) {
    return string ? string->utf8() : "null";
}

TEST(ColorComponents, areDividedBy255AndTheAlphaIsNot) {
    const Ref<NSColor> color = ZRRGBA(255, 51, 0, 0.25);
    EXPECT_EQ(color->redComponent(), 1.0);
    EXPECT_EQ(color->greenComponent(), 0.2);
    EXPECT_EQ(color->blueComponent(), 0.0);
    EXPECT_EQ(color->alphaComponent(), 0.25);
    EXPECT_EQ(ZRRGB(127.5, 1, 2)->redComponent(), 0.5);
    EXPECT_EQ(ZRRGB(127.5, 1, 2)->alphaComponent(), 1.0);
    EXPECT_EQ(color->colorSpace(), NSColorSpace::sRGBColorSpace());
}

TEST(ColorComponents, mayLieBeyondTheRange) {
    EXPECT_EQ(ZRRGBA(510, -255, 0, 2)->redComponent(), 2.0);
    EXPECT_EQ(ZRRGBA(510, -255, 0, 2)->greenComponent(), -1.0);
    EXPECT_EQ(ZRRGBA(510, -255, 0, 2)->alphaComponent(), 2.0);
    EXPECT_EQ(ZRRGBA(infinity, 0, 0, -infinity)->redComponent(), infinity);
    EXPECT_EQ(ZRRGBA(infinity, 0, 0, -infinity)->alphaComponent(), -infinity);
}

TEST(ColorComponents, thatAreNotNumbersAreZero) {
    EXPECT_EQ(parts(ZRRGBA(notANumber, 1, 2, notANumber)), "0 1 2 0");
    EXPECT_EQ(parts(colorWithHex_alpha(0xFF0000, notANumber)), "255 0 0 0");
}

TEST(ColorNumber, isRedGreenAndBlueBehindAnAlphaThatIsNotZero) {
    struct Row {
        const char* label;
        std::uint32_t hex;
        const char* color;
    };
    const Row rows[] = {
        {"red", 0xFF0000, "255 0 0 255"},
        {"half transparent red", 0x80FF0000, "255 0 0 128"},
        {"alpha byte 0 does not mean transparent", 0x00FF0000, "255 0 0 255"},
        {"nothing", 0, "0 0 0 255"},
        {"the largest without an alpha", 0xFFFFFF, "255 255 255 255"},
        {"the smallest with one", 0x1000000, "0 0 0 1"},
        {"the largest", 0xFFFFFFFF, "255 255 255 255"},
        {"every byte in its place", 0x12345678, "52 86 120 18"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        EXPECT_EQ(parts(colorWithHex(row.hex)), row.color);
        EXPECT_EQ(parts(ZRHexColor(row.hex)), row.color);
    }
}

TEST(ColorNumber, takesAnotherAlphaUnlessItIsExactlyOne) {
    EXPECT_EQ(parts(colorWithHex_alpha(0x80FF0000, 1.0)), "255 0 0 128");
    EXPECT_EQ(parts(colorWithHex_alpha(0xFF0000, 1.0)), "255 0 0 255");
    EXPECT_EQ(parts(colorWithHex_alpha(0x80FF0000, 0.0)), "255 0 0 0");
    EXPECT_EQ(parts(colorWithHex_alpha(0x80FF0000, 0.2)), "255 0 0 51");
    EXPECT_NE(colorWithHex_alpha(0x80FF0000, std::nextafter(1.0, 0.0))->alphaComponent(), 128 / 255.0);
}

TEST(RandomColor, isOpaqueAndOfWholeBytes) {
    bool differs = false;
    const Ref<NSColor> first = random<NSColor>();
    for (int i = 0; i < 64; ++i) {
        const Ref<NSColor> color = random<NSColor>();
        differs = differs || !color->isEqual(first);
        EXPECT_EQ(color->alphaComponent(), 1.0);
        for (const double part : {color->redComponent(), color->greenComponent(), color->blueComponent()}) {
            EXPECT_EQ(part, std::round(part * 255) / 255.0);
            EXPECT_TRUE(part >= 0 && part <= 1) << part;
        }
    }
    EXPECT_TRUE(differs);
}

TEST(RandomColor, reachesBothEndsOfEveryPart) {
    // The chance that 8000 draws miss one of the six ends is below 1e-12.
    double lowest[] = {1, 1, 1};
    double highest[] = {0, 0, 0};
    for (int i = 0; i < 8000; ++i) {
        const Ref<NSColor> color = random<NSColor>();
        const double part[] = {color->redComponent(), color->greenComponent(), color->blueComponent()};
        for (int k = 0; k < 3; ++k) {
            lowest[k] = std::min(lowest[k], part[k]);
            highest[k] = std::max(highest[k], part[k]);
        }
    }
    for (int k = 0; k < 3; ++k) {
        EXPECT_EQ(lowest[k], 0.0);
        EXPECT_EQ(highest[k], 1.0);
    }
}

TEST(ColorText, isReadFromSixDigits) {
    EXPECT_EQ(colorOf("#FF0000"_ns), "255 0 0 255");
    EXPECT_EQ(colorOf("0xff0000"_ns), "255 0 0 255");
    EXPECT_EQ(colorOf("0XfF0000"_ns), "255 0 0 255");
    EXPECT_EQ(colorOf("FF0000"_ns), "255 0 0 255");
    EXPECT_EQ(colorOf("#000000"_ns), "0 0 0 255");
    EXPECT_EQ(colorOf(NSMutableString::stringWithString("#123456"_ns)), "18 52 86 255");
}

TEST(ColorText, isReadFromEightDigitsAlphaFirst) {
    EXPECT_EQ(colorOf("#80FF0000"_ns), "255 0 0 128");
    EXPECT_EQ(colorOf("#00FF0000"_ns), "255 0 0 0");
    EXPECT_EQ(colorOf("0xFFFF0000"_ns), "255 0 0 255");
    EXPECT_EQ(colorOf("80123456"_ns), "18 52 86 128");
}

TEST(ColorText, readsTheFirstOfSevenDigitsAsTheAlpha) {
    EXPECT_EQ(colorOf("#1234567"_ns), "35 69 103 1");
    EXPECT_EQ(colorOf("0xF000000"_ns), "0 0 0 15");
    EXPECT_EQ(colorOf("0123456"_ns), "18 52 86 0");
}

TEST(ColorText, ignoresWhatFollowsTheDigits) {
    EXPECT_EQ(colorOf("#123456789"_ns), "52 86 120 18");
    EXPECT_EQ(colorOf("#80FF0000 and more"_ns), "255 0 0 128");
    EXPECT_EQ(colorOf("#FF0000;#00FF00"_ns), "255 0 0 255");
    EXPECT_EQ(colorOf("FF0000x123456"_ns), "255 0 0 255");
    EXPECT_EQ(colorOf("#FF0000e"_ns), "240 0 14 15");
}

TEST(ColorText, isSearchedForInTheText) {
    EXPECT_EQ(colorOf("background: #FF0000"_ns), "255 0 0 255");
    EXPECT_EQ(colorOf("x123456"_ns), "null");
    EXPECT_EQ(colorOf("a123456"_ns), "18 52 86 10");
    EXPECT_EQ(colorOf("see 123456"_ns), "null");
    EXPECT_EQ(colorOf("\n123456"_ns), "null");
    EXPECT_EQ(colorOf("#FFF #FF0000"_ns), "255 0 0 255");
    EXPECT_EQ(colorOf("0x0x123456"_ns), "18 52 86 255");
}

TEST(ColorText, holdsNoColorWithoutSixDigits) {
    const char* const texts[] = {"", "#", "0x", "#FFF", "0x12345", "12345", "#GG0000", "##", "red", "# 123456"};
    for (const char* const one : texts) {
        SCOPED_TRACE(one);
        EXPECT_EQ(colorOf(NSString::fromUtf8(one)), "null");
    }
    EXPECT_EQ(colorOf(nullptr), "null");
    EXPECT_EQ(colorOf(u"#\uFF11\uFF12\uFF13\uFF14\uFF15\uFF16"_ns), "null");
    EXPECT_EQ(colorOf(NSString::fromUtf16(std::u16string(3000000, u'#'))), "null");
    EXPECT_EQ(colorOf(NSString::fromUtf16(std::u16string(3000000, u'f') + u"#123456")), "255 255 255 255");
}

TEST(ColorText, isWrittenInLowerCaseAlphaFirst) {
    EXPECT_EQ(text(hexStringValue(ZRRGB(255, 0, 0))), "0xff0000");
    EXPECT_EQ(text(hexStringValue(ZRRGBA(255, 0, 0, 0.5))), "0x7fff0000");
    EXPECT_EQ(text(hexStringValue(ZRRGBA(171, 205, 239, 0))), "0x00abcdef");
    EXPECT_EQ(text(hexStringValue(ZRRGB(0, 0, 0))), "0x000000");
    EXPECT_EQ(text(hexStringValue(NSColor::blueColor())), "0x0000ff");
    EXPECT_EQ(text(hexStringValue(NSColor::colorWithDeviceRed_green_blue_alpha(0, 1, 0, 1))), "0x00ff00");
}

TEST(ColorText, isCutOffAndNotRounded) {
    EXPECT_EQ(text(hexStringValue(ZRRGB(254.999, 0.999, 16.5))), "0xfe0010");
    EXPECT_EQ(text(hexStringValue(ZRRGBA(0, 0, 0, std::nextafter(1.0, 0.0)))), "0xfe000000");
    EXPECT_EQ(text(hexStringValue(ZRRGB(-0.999, 0, 0))), "0x000000");
}

TEST(ColorText, hasMoreDigitsForPartsBeyondTheRange) {
    EXPECT_EQ(text(hexStringValue(ZRRGB(256, 0, 0))), "0x1000000");
    EXPECT_EQ(text(hexStringValue(ZRRGBA(0, 0, 0, 2))), "0x1fe000000");
    EXPECT_EQ(text(hexStringValue(ZRRGB(-1, 0, 0))), "0xffffffffffffffff0000");
    EXPECT_EQ(text(hexStringValue(ZRRGB(infinity, 0, 0))), "0x7fffffffffffffff0000");
    EXPECT_EQ(text(hexStringValue(ZRRGB(1e300, 0, 0))), "0x7fffffffffffffff0000");
    EXPECT_EQ(text(hexStringValue(ZRRGB(0, 0, -infinity))), "0x00008000000000000000");
}

TEST(ColorText, isNotWrittenForAColorWithoutRedGreenAndBlue) {
    EXPECT_EQ(test::raisedName([] { (void)hexStringValue(NSColor::blackColor()); }), NSInvalidArgumentException);
    EXPECT_EQ(test::raisedName([] { (void)hexStringValue(NSColor::whiteColor()); }), NSInvalidArgumentException);
    const Ref<NSColor> ink = NSColor::colorWithDeviceCyan_magenta_yellow_black_alpha(1, 0, 0, 0, 1);
    EXPECT_EQ(test::raisedName([&] { (void)hexStringValue(ink); }), NSInvalidArgumentException);
    EXPECT_EQ(text(hexStringValue(NSColor::whiteColor()->colorUsingColorSpace(NSColorSpace::sRGBColorSpace()))),
              "0xffffff");
    EXPECT_EQ(text(hexStringValue(nullptr)), "null");
}

TEST(ColorText, losesItsAlpha) {
    struct Row {
        const char* label;
        const char* before;
        const char* after;
    };
    const Row rows[] = {
        {"hash and eight", "#80FF0000", "#FF0000"},
        {"hash and six", "#FF0000", "#FF0000"},
        {"prefix and eight", "0x80FF0000", "0xFF0000"},
        {"prefix and six", "0xFF0000", "0xFF0000"},
        {"capital prefix", "0X80FF0000", "0X80FF0000"},
        {"bare digits", "80FF0000", "80FF0000"},
        {"hash and five", "#F0000", "#F0000"},
        {"prefix and four", "0xF000", "0xF000"},
        {"prefix and five: its x is among the last six", "0xF0000", "0xxF0000"},
        {"no digits", "#hello world", "# world"},
        {"empty", "", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        EXPECT_EQ(text(colorStringWithOutAlpha(NSString::fromUtf8(row.before))), row.after);
    }
    EXPECT_FALSE(colorStringWithOutAlpha(nullptr));
    const Ref<NSString> shorter = "#FFF"_ns;
    EXPECT_EQ(colorStringWithOutAlpha(shorter), shorter);
    const Ref<NSString> bare = "80FF0000"_ns;
    EXPECT_EQ(colorStringWithOutAlpha(bare), bare);
}

TEST(ColorText, tellsItsAlphaFrom0To255) {
    struct Row {
        const char* label;
        const char* text;
        double alpha;
    };
    const Row rows[] = {
        {"hash and eight", "#80FF0000", 128},
        {"hash and six", "#FF0000", 255},
        {"prefix and eight", "0x01FF0000", 1},
        {"capital prefix: ten units", "0X80FF0000", 255},
        {"bare eight", "00FF0000", 0},
        {"hash and nine", "#80FF00001", 255},
        {"hash and seven", "#1234567", 255},
        {"eight units of anything", "#hellohey", 0},
        {"digits that end too early", "#80FF000g", 8},
        {"digits that end far too early", "#80FF00gg", 0},
        {"a prefix behind the hash", "#0x80FF00", 0},
        {"a hash behind the prefix", "0x#80FF000", 0},
        {"both prefixes", "0x#80FF0000", 255},
        {"blanks count as units and are skipped", "# 8FF0000", 8},
        {"a line break too", "#\n8FF0000", 8},
        {"nothing but blanks", "#        ", 0},
        {"empty", "", 255},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        EXPECT_EQ(colorAlpha(NSString::fromUtf8(row.text)), row.alpha);
    }
    EXPECT_EQ(colorAlpha(nullptr), 0);
    EXPECT_EQ(colorAlpha(NSString::fromUtf16(std::u16string(1000000, u'#'))), 255);
}

TEST(ColorText, takesAnAlphaInPercent) {
    struct Row {
        const char* label;
        const char* before;
        double percent;
        const char* after;
    };
    const Row rows[] = {
        {"hash, half", "#FF0000", 50, "#7fFF0000"},
        {"hash, all", "#FF0000", 100, "#ffFF0000"},
        {"hash, none", "#FF0000", 0, "#00FF0000"},
        {"prefix", "0xFF0000", 20, "0x33FF0000"},
        {"bare digits", "FF0000", 20, "33FF0000"},
        {"a fraction", "#FF0000", 0.4, "#01FF0000"},
        {"hash and eight", "#80FF0000", 20, "#80FF0000"},
        {"prefix and eight", "0x80FF0000", 20, "0x80FF0000"},
        {"nine with the prefix", "0x8FF0000", 20, "0x833FF0000"},
        {"ten with the hash", "#123456789", 20, "#12333456789"},
        {"a capital prefix has no alpha", "0X80FF0000", 20, "0X8033FF0000"},
        {"nine without a hash", "180FF0000", 20, "18033FF0000"},
        {"five digits: the hash is among the last six", "#F0000", 20, "33#F0000"},
        {"five units", "#FFFF", 20, "#FFFF"},
        {"empty", "", 20, ""},
        {"above 100", "#FF0000", 200, "#1feFF0000"},
        {"below 0", "#FF0000", -100, "#ffffffffffffff01FF0000"},
        {"not a number", "#FF0000", notANumber, "#00FF0000"},
        {"endless", "#FF0000", infinity, "#7fffffffffffffffFF0000"},
        {"as far below", "#FF0000", -1e300, "#8000000000000000FF0000"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        EXPECT_EQ(text(colorStringAppendAlpha(NSString::fromUtf8(row.before), row.percent)), row.after);
    }
    EXPECT_FALSE(colorStringAppendAlpha(nullptr, 50));
    const Ref<NSString> done = "#80FF0000"_ns;
    EXPECT_EQ(colorStringAppendAlpha(done, 50), done);
    const Ref<NSString> shorter = "#FFF"_ns;
    EXPECT_EQ(colorStringAppendAlpha(shorter, 50), shorter);
}

TEST(ColorMessages, areAnsweredByName) {
    NSObject* const colors = NSColor::classObject();
    EXPECT_EQ(parts(send<Ref<NSColor>>(colors, "colorWithHex:"_sel, std::uint32_t{0x80FF0000})), "255 0 0 128");
    EXPECT_EQ(parts(send<Ref<NSColor>>(colors, "colorWithHex:alpha:"_sel, std::uint32_t{0xFF0000}, 0.2)), "255 0 0 51");
    EXPECT_EQ(parts(send<Ref<NSColor>>(colors, "colorWithHexString:"_sel, "#FF0000"_ns)), "255 0 0 255");
    EXPECT_EQ(parts(send<Ref<NSColor>>(colors, "colorWithHexString:"_sel, NSNull::null())), "null");
    EXPECT_EQ(parts(send<Ref<NSColor>>(colors, "colorWithHexString:"_sel, box(123456))), "null");
    EXPECT_TRUE(send<Ref<NSColor>>(colors, "random"_sel));
    EXPECT_EQ(text(send<Ref<NSString>>(ZRRGB(1, 2, 3), "hexStringValue"_sel)), "0x010203");
    EXPECT_EQ(text(send<Ref<NSString>>("#80FF0000"_ns, "colorStringWithOutAlpha"_sel)), "#FF0000");
    EXPECT_EQ(send<double>("#80FF0000"_ns, "colorAlpha"_sel), 128.0);
    EXPECT_EQ(text(send<Ref<NSString>>("#FF0000"_ns, "colorStringAppendAlpha:"_sel, 50.0)), "#7fFF0000");
}

/// Undoes the escapes \uXXXX.
Ref<NSString> unescaped(const std::string& written) {
    std::u16string units;
    for (std::size_t i = 0; i < written.size(); ++i) {
        if (written[i] == '\\') {
            units += static_cast<char16_t>(std::stoul(written.substr(i + 2, 4), nullptr, 16));
            i += 5;
        } else {
            units += static_cast<char16_t>(written[i]);
        }
    }
    return NSString::fromUtf16(std::move(units));
}

TEST(ColorText, agreesWithAnIndependentReader) {
    const auto rows = test::vectorRows("color", '\t');
    for (const auto& [line, field] : rows) {
        SCOPED_TRACE(line);
        ASSERT_EQ(field.size(), 6U);
        const Ref<NSString> written = unescaped(field[0]);
        EXPECT_EQ(colorOf(written), field[1] == "-" ? "null" : field[1]);
        EXPECT_EQ(colorAlpha(written), std::stod(field[2]));
        EXPECT_TRUE(colorStringWithOutAlpha(written)->isEqual(unescaped(field[3])));
        EXPECT_TRUE(colorStringAppendAlpha(written, std::stod(field[4]))->isEqual(unescaped(field[5])));
    }
    EXPECT_GE(rows.size(), 1000U);
}

RC_GTEST_PROP(ColorText, isReadBackAsItWasWritten, (std::uint32_t number)) {
    const Ref<NSColor> color = colorWithHex(number);
    RC_ASSERT(colorWithHexString(hexStringValue(color))->isEqual(color));
    const Ref<NSColor> transparent = colorWithHex_alpha(number, 0);
    RC_ASSERT(colorWithHexString(hexStringValue(transparent))->isEqual(transparent));
}

RC_GTEST_PROP(ColorText, isFoundWhereThePatternFindsIt, ()) {
    const Ref<NSString> pattern = "((?<=0[xX])[0-9a-fA-F]{6,8})|((?<=#)[0-9a-fA-F]{6,8})|(^[0-9a-fA-F]{6,8})"_ns;
    const auto pieces = *rc::gen::container<std::vector<std::u16string>>(rc::gen::element<std::u16string>(
        u"0", u"x", u"X", u"#", u"12a", u"12345", u"Fe", u"g", u" ", u"\n", u"\u00DF", u"\uFF10", u"\U0001F600"));
    const std::u16string units = std::accumulate(pieces.begin(), pieces.end(), std::u16string());
    const Ref<NSString> string = NSString::fromUtf16(units);
    const Ref<NSString> found = matchResultWithPattern(string, pattern);
    RC_TAG(found ? "found" : "not found");
    // Behind a "#" the reader has no choice of where to begin.
    const std::string expected = found ? colorOf("#"_ns->stringByAppendingString(found)) : "null";
    RC_ASSERT(colorOf(string) == expected);
}

RC_GTEST_PROP(ColorText, withAnAlphaGivesTheTextWithoutAgain, (std::uint32_t number)) {
    const double percent = *rc::gen::inRange(0, 101);
    const Ref<NSString> plain = NSString::stringWithFormat("#%06x"_ns, number & 0xFFFFFF);
    const Ref<NSString> full = colorStringAppendAlpha(plain, percent);
    RC_ASSERT(full->length() == 9U);
    RC_ASSERT(colorStringWithOutAlpha(full)->isEqual(plain));
    RC_ASSERT(colorAlpha(full) == std::floor(percent * 255 / 100));
}

} // namespace
} // namespace zr
