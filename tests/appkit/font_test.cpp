#include <zrbasic/platform/appkit/font.h>

#include "text_toolkit.h"

#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/set.h>

#include <gtest/gtest.h>
#include <limits>

namespace zr {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

TEST(Font, hasTheMetricsThatTheToolkitInUseSays) {
    const Ref<NSFont> font = NSFont::systemFontOfSize(20);
    EXPECT_DOUBLE_EQ(font->ascender(), 18.6);
    EXPECT_DOUBLE_EQ(font->descender(), -4.8);
    EXPECT_EQ(font->leading(), 0);
    {
        test::TextToolkit toolkit;
        EXPECT_EQ(font->ascender(), 8);
        EXPECT_EQ(font->descender(), -2);
        EXPECT_EQ(font->leading(), 1);
        toolkit.metrics.ascender = 9;
        EXPECT_EQ(font->ascender(), 9);
    }
    EXPECT_DOUBLE_EQ(font->ascender(), 18.6);
}

TEST(Font, ofTheSystemIsRegularUnlessToldOtherwise) {
    const Ref<NSFont> plain = NSFont::systemFontOfSize(12);
    EXPECT_EQ(plain->pointSize(), 12.0);
    EXPECT_EQ(plain->weight(), NSFontWeightRegular);
    EXPECT_EQ(plain->fontName()->utf8(), ".SystemFont");
    EXPECT_TRUE(plain->isSystemFont());
    const Ref<NSFont> bold = NSFont::boldSystemFontOfSize(9.5);
    EXPECT_EQ(bold->pointSize(), 9.5);
    EXPECT_EQ(bold->weight(), NSFontWeightBold);
    EXPECT_EQ(bold->fontName()->utf8(), ".SystemFont-Bold");
    EXPECT_EQ(bold->familyName()->utf8(), ".SystemFont");
    EXPECT_TRUE(bold->isSystemFont());
    EXPECT_TRUE(bold->isEqual(NSFont::systemFontOfSize_weight(9.5, NSFontWeightBold)));
}

TEST(Font, hasNineWeightsThatGrowAndHaveNames) {
    struct Row {
        NSFontWeight weight;
        double number;
        const char* name;
    };
    const Row rows[] = {
        {NSFontWeightUltraLight, -0.8, ".SystemFont-UltraLight"},
        {NSFontWeightThin, -0.6, ".SystemFont-Thin"},
        {NSFontWeightLight, -0.4, ".SystemFont-Light"},
        {NSFontWeightRegular, 0, ".SystemFont"},
        {NSFontWeightMedium, 0.23, ".SystemFont-Medium"},
        {NSFontWeightSemibold, 0.3, ".SystemFont-Semibold"},
        {NSFontWeightBold, 0.4, ".SystemFont-Bold"},
        {NSFontWeightHeavy, 0.56, ".SystemFont-Heavy"},
        {NSFontWeightBlack, 0.62, ".SystemFont-Black"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.weight, row.number);
        const Ref<NSFont> font = NSFont::systemFontOfSize_weight(13, row.weight);
        EXPECT_EQ(font->weight(), row.number);
        EXPECT_EQ(font->fontName()->utf8(), row.name);
        EXPECT_TRUE(font->isEqual(NSFont::fontWithName_size(font->fontName(), 13)));
    }
}

TEST(Font, takesTheNameOfTheNearestWeight) {
    const auto named = [](double weight) { return NSFont::systemFontOfSize_weight(13, weight)->fontName()->utf8(); };
    EXPECT_EQ(named(-1), ".SystemFont-UltraLight");
    EXPECT_EQ(named(0.1), ".SystemFont");
    EXPECT_EQ(named(0.12), ".SystemFont-Medium");
    EXPECT_EQ(named(1), ".SystemFont-Black");
    EXPECT_EQ(NSFont::systemFontOfSize_weight(13, 0.12)->weight(), 0.12);
}

TEST(Font, clampsItsWeight) {
    EXPECT_EQ(NSFont::systemFontOfSize_weight(13, -infinity)->weight(), -1.0);
    EXPECT_EQ(NSFont::systemFontOfSize_weight(13, 7)->weight(), 1.0);
    EXPECT_EQ(NSFont::systemFontOfSize_weight(13, notANumber)->weight(), NSFontWeightRegular);
}

TEST(Font, isOf13PointsUnlessTheSizeIsAboveZero) {
    EXPECT_EQ(NSFont::systemFontSize(), 13.0);
    EXPECT_EQ(NSFont::smallSystemFontSize(), 11.0);
    for (const double size : {0.0, -0.0, -1.0, -infinity, infinity, notANumber}) {
        SCOPED_TRACE(size);
        EXPECT_EQ(NSFont::systemFontOfSize(size)->pointSize(), 13.0);
        EXPECT_EQ(NSFont::boldSystemFontOfSize(size)->pointSize(), 13.0);
        EXPECT_EQ(NSFont::fontWithName_size("Courier"_ns, size)->pointSize(), 13.0);
    }
    EXPECT_EQ(NSFont::systemFontOfSize(std::numeric_limits<double>::denorm_min())->pointSize(),
              std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(NSFont::systemFontOfSize(1e300)->pointSize(), 1e300);
}

TEST(Font, isNamedByFamilyAndStyle) {
    struct Row {
        const char* name;
        const char* family;
        NSFontWeight weight;
    };
    const Row rows[] = {
        {"Helvetica", "Helvetica", NSFontWeightRegular},      {"Helvetica-Bold", "Helvetica", NSFontWeightBold},
        {"Noto-Sans-Light", "Noto-Sans", NSFontWeightLight},  {"Helvetica-Oblique", "Helvetica", NSFontWeightRegular},
        {"Helvetica-bold", "Helvetica", NSFontWeightRegular}, {"-Bold", "-Bold", NSFontWeightRegular},
        {"Helvetica-", "Helvetica-", NSFontWeightRegular},    {"-", "-", NSFontWeightRegular},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const Ref<NSFont> font = NSFont::fontWithName_size(NSString::fromUtf8(row.name), 10);
        EXPECT_EQ(font->fontName()->utf8(), row.name);
        EXPECT_EQ(font->familyName()->utf8(), row.family);
        EXPECT_EQ(font->weight(), row.weight);
        EXPECT_FALSE(font->isSystemFont());
    }
}

TEST(Font, needsAName) {
    EXPECT_FALSE(NSFont::fontWithName_size(nullptr, 10));
    EXPECT_FALSE(NSFont::fontWithName_size(""_ns, 10));
    EXPECT_FALSE(send<Ref<NSFont>>(NSFont::classObject(), "fontWithName:size:"_sel, NSNull::null(), 10.0));
    const Ref<NSString> huge = NSString::fromUtf16(std::u16string(1000000, u'-'));
    EXPECT_EQ(NSFont::fontWithName_size(huge, 10)->fontName()->length(), 1000000U);
}

TEST(Font, keepsItsNameWhenTheStringChanges) {
    const Ref<NSMutableString> name = NSMutableString::stringWithString("Courier"_ns);
    const Ref<NSFont> font = NSFont::fontWithName_size(name, 10);
    name->appendString("-Bold"_ns);
    EXPECT_EQ(font->fontName()->utf8(), "Courier");
}

TEST(Font, equalsAFontOfTheSameNameSizeAndWeight) {
    const Ref<NSFont> font = NSFont::systemFontOfSize(12);
    EXPECT_TRUE(font->isEqual(NSFont::systemFontOfSize(12)));
    EXPECT_EQ(font->hash(), NSFont::systemFontOfSize(12)->hash());
    EXPECT_FALSE(font->isEqual(NSFont::systemFontOfSize(12.5)));
    EXPECT_FALSE(font->isEqual(NSFont::boldSystemFontOfSize(12)));
    EXPECT_FALSE(font->isEqual(NSFont::systemFontOfSize_weight(12, 0.01)));
    EXPECT_FALSE(font->isEqual(NSFont::fontWithName_size("Courier"_ns, 12)));
    EXPECT_FALSE(font->isEqual(".SystemFont 12 pt"_ns));
    EXPECT_FALSE(font->isEqual(nullptr));
    EXPECT_TRUE(NSSet::setWithObject(font)->containsObject(NSFont::systemFontOfSize(12)));
}

TEST(Font, describesItself) {
    EXPECT_EQ(NSFont::boldSystemFontOfSize(12)->description()->utf8(), ".SystemFont-Bold 12 pt");
    EXPECT_EQ(NSFont::fontWithName_size("Courier"_ns, 9.5)->description()->utf8(), "Courier 9.5 pt");
    EXPECT_EQ(make<NSFont>()->description()->utf8(), ".SystemFont 13 pt");
    const Ref<NSFont> font = NSFont::systemFontOfSize(12);
    EXPECT_EQ(font->copy(), font);
}

TEST(Font, answersMessages) {
    NSObject* const fonts = NSFont::classObject();
    const auto font = send<Ref<NSFont>>(fonts, "systemFontOfSize:weight:"_sel, 12, NSFontWeightLight);
    EXPECT_EQ(font->fontName()->utf8(), ".SystemFont-Light");
    EXPECT_EQ(send<double>(font, "pointSize"_sel), 12.0);
    EXPECT_EQ(send<double>(fonts, "systemFontSize"_sel), 13.0);
    EXPECT_TRUE(send<Ref<NSFont>>(fonts, "boldSystemFontOfSize:"_sel, 12.0)->isEqual(NSFont::boldSystemFontOfSize(12)));
}

} // namespace
} // namespace zr
