#include <zrbasic/ui/screen.h>

#include "../appkit/toolkit_testing.h"

#include <zrbasic/platform/runtime/message.h>

#include <gtest/gtest.h>

namespace zr {
namespace {

ScreenState screen(double width, double height, double scale) {
    return {NSMakeRect(0, 0, width, height), NSMakeRect(0, 0, width, height - 24), scale};
}

TEST(MainScreen, isZeroInEveryRespectWithoutAScreen) {
    const test::ScreensToolkit none({});
    EXPECT_EQ(mainScreenWidth(), 0);
    EXPECT_EQ(mainScreenHeight(), 0);
    EXPECT_EQ(zr_scale(), 0);
}

TEST(MainScreen, isTheFirstOfAll) {
    const test::ScreensToolkit two({screen(1440, 900.5, 2), screen(1920, 1080, 1)});
    EXPECT_EQ(mainScreenWidth(), 1440);
    EXPECT_EQ(mainScreenHeight(), 900.5);
    EXPECT_EQ(zr_scale(), 2);
}

TEST(MainScreen, answersTheClassByMessage) {
    const test::ScreensToolkit one({screen(800, 600, 1.5)});
    EXPECT_EQ(send<double>(NSScreen::classObject(), "mainScreenWidth"_sel), 800);
    EXPECT_EQ(send<double>(NSScreen::classObject(), "mainScreenHeight"_sel), 600);
    EXPECT_EQ(send<double>(NSScreen::classObject(), "zr_scale"_sel), 1.5);
}

} // namespace
} // namespace zr
