#include <zrbasic/ui/font.h>

#include "../appkit/toolkit_testing.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zr {
namespace {

std::vector<ScreenState> screenOfScale(double scale) {
    return {{NSMakeRect(0, 0, 800, 600), NSMakeRect(0, 0, 800, 600), scale}};
}

TEST(ShortFonts, areSystemFontsOfTheSize) {
    EXPECT_TRUE(ZRFont(12.5)->isEqual(NSFont::systemFontOfSize(12.5)));
    EXPECT_TRUE(ZRBoldFont(9)->isEqual(NSFont::boldSystemFontOfSize(9)));
    EXPECT_EQ(ZRFontWithWegiht(14, NSFontWeightSemibold)->weight(), NSFontWeightSemibold);
    EXPECT_EQ(ZRFontWithWegiht(14, NSFontWeightSemibold)->pointSize(), 14);
    EXPECT_TRUE(ZRFontWithWegiht(14, 0)->isSystemFont());
}

TEST(ShortFonts, takeASizeThatIsNoneForTheDefault) {
    for (const double size : {0.0, -3.0, std::nan(""), HUGE_VAL}) {
        SCOPED_TRACE(size);
        EXPECT_EQ(ZRFont(size)->pointSize(), 13);
        EXPECT_EQ(ZRCompatibleFont(size)->pointSize(), 13);
    }
}

TEST(CompatibleFont, isLightOnACoarseScreen) {
    const test::ScreensToolkit coarse(screenOfScale(1));
    EXPECT_EQ(ZRCompatibleFont(13)->weight(), NSFontWeightLight);
}

TEST(CompatibleFont, isRegularFromTwoPixelsAPointOn) {
    {
        const test::ScreensToolkit fine(screenOfScale(2));
        EXPECT_EQ(ZRCompatibleFont(13)->weight(), NSFontWeightRegular);
    }
    {
        const test::ScreensToolkit between(screenOfScale(1.99));
        EXPECT_EQ(ZRCompatibleFont(13)->weight(), NSFontWeightLight);
    }
    const test::ScreensToolkit finer(screenOfScale(3));
    EXPECT_EQ(ZRCompatibleFont(13)->weight(), NSFontWeightRegular);
}

TEST(CompatibleFont, isLightWithoutAScreen) {
    const test::ScreensToolkit none({});
    EXPECT_EQ(ZRCompatibleFont(13)->weight(), NSFontWeightLight);
}

} // namespace
} // namespace zr
