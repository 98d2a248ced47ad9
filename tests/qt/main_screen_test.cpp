#include <zrbasic/platform/qt/conversions_p.h>
#include <zrbasic/ui/font.h>
#include <zrbasic/ui/screen.h>

#include <QGuiApplication>
#include <QScreen>

#include <gtest/gtest.h>

namespace zr {
namespace {

TEST(MainScreenOfQt, isThePrimaryOneInNumbers) {
    const QScreen* const primary = QGuiApplication::primaryScreen();
    ASSERT_NE(primary, nullptr);
    EXPECT_EQ(mainScreenWidth(), primary->geometry().width());
    EXPECT_EQ(mainScreenHeight(), primary->geometry().height());
    EXPECT_GT(mainScreenWidth(), 0);
    EXPECT_EQ(zr_scale(), primary->devicePixelRatio());
}

TEST(MainScreenOfQt, isDrawnOnWithTheWeightThatSuitsIt) {
    const bool isFine = QGuiApplication::primaryScreen()->devicePixelRatio() >= 2;
    EXPECT_EQ(qt::toQt(ZRCompatibleFont(15)).weight(), isFine ? QFont::Normal : QFont::Light);
    EXPECT_EQ(qt::toQt(ZRFont(15)).weight(), QFont::Normal);
    EXPECT_EQ(qt::toQt(ZRBoldFont(15)).weight(), QFont::Bold);
    EXPECT_EQ(qt::toQt(ZRFontWithWegiht(15, NSFontWeightMedium)).weight(), QFont::Medium);
    EXPECT_NE(qt::toQt(ZRFont(15)).pixelSize() > 0, qt::toQt(ZRFont(15)).pointSizeF() > 0);
    EXPECT_NE(qt::toQt(ZRFont(15)), qt::toQt(ZRFont(16)));
}

} // namespace
} // namespace zr
