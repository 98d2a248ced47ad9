#include <zrbasic/platform/qt/conversions_p.h>

#include <zrbasic/platform/foundation/mutable_string.h>

#include <QFontInfo>
#include <QFontMetricsF>

#include <gtest/gtest.h>
#include <limits>

namespace zr {
namespace {

using qt::fromQt;
using qt::pixelRect;
using qt::toQt;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

NSFont* const noFont = nullptr;
NSString* const noText = nullptr;
NSColor* const noColor = nullptr;

TEST(QtConversions, textGoesThroughUnitByUnit) {
    const char16_t units[] = {u'a', 0, 0xD83D, 0xDE00, 0xDC00, 0xFFFC};
    const auto text = NSString::fromUtf16(std::u16string_view(units, 6));
    EXPECT_EQ(toQt(text).size(), 6);
    EXPECT_EQ(toQt(text)[4], QChar(0xDC00));
    EXPECT_EQ(fromQt(toQt(text))->view(), text->view());
    EXPECT_EQ(toQt(noText), QString());
    EXPECT_EQ(fromQt(QString())->length(), 0U);
}

TEST(QtConversions, coloursAreThoseOfSrgb) {
    EXPECT_EQ(toQt(NSColor::colorWithRed_green_blue_alpha(1, 0.5, 0, 0.25)), QColor(255, 128, 0, 64));
    EXPECT_EQ(toQt(NSColor::colorWithWhite_alpha(0.5, 1)), QColor(128, 128, 128));
    EXPECT_EQ(toQt(NSColor::colorWithRed_green_blue_alpha(3, -1, 0, 1)), QColor(255, 0, 0)) << "beyond is clamped";
    EXPECT_FALSE(toQt(noColor).isValid());
    EXPECT_EQ(fromQt(QColor()), nullptr);
    const auto back = fromQt(QColor(10, 20, 30, 40));
    EXPECT_EQ(back->redComponent(), 10 / 255.0);
    EXPECT_EQ(back->alphaComponent(), 40 / 255.0);
    EXPECT_EQ(toQt(back), QColor(10, 20, 30, 40));
    EXPECT_EQ(toQt(fromQt(QColor::fromHsv(120, 255, 255))), QColor(0, 255, 0));
}

TEST(QtConversions, onePointIsOneLogicalPixel) {
    for (const double size : {1.0, 9.0, 13.0, 64.0}) {
        SCOPED_TRACE(size);
        EXPECT_EQ(toQt(NSFont::systemFontOfSize(size)).pixelSize(), size);
        EXPECT_EQ(fromQt(toQt(NSFont::systemFontOfSize(size)))->pointSize(), size);
    }
    EXPECT_EQ(fromQt(toQt(NSFont::systemFontOfSize(12.5)))->pointSize(), 12.5);
    EXPECT_EQ(toQt(noFont), toQt(NSFont::systemFontOfSize(13)));
    // The letters of the tests' font are 0.76 and 1.16 of its size high.
    EXPECT_NEAR(QFontMetricsF(toQt(NSFont::systemFontOfSize(100))).height(), 116.4, 1);
    EXPECT_EQ(toQt(NSFont::systemFontOfSize(1e9)).pixelSize(), 4096);
    EXPECT_GT(toQt(NSFont::systemFontOfSize(1e-9)).pointSizeF(), 0);
}

TEST(QtConversions, weightsMapPiecewise) {
    const struct {
        NSFontWeight ours;
        int qts;
    } rows[] = {{-1, 100},
                {NSFontWeightUltraLight, 100},
                {-0.7, 150},
                {-0.6, 200},
                {NSFontWeightLight, 300},
                {-0.2, 350},
                {0, 400},
                {NSFontWeightMedium, 500},
                {NSFontWeightSemibold, 600},
                {0.35, 650},
                {NSFontWeightBold, 700},
                {NSFontWeightHeavy, 800},
                {0.62, 900},
                {1, 900}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.ours);
        const QFont font = toQt(NSFont::systemFontOfSize_weight(13, row.ours));
        EXPECT_EQ(int(font.weight()), row.qts);
        const double back = row.ours < -0.8 ? -0.8 : row.ours > 0.62 ? 0.62 : row.ours;
        EXPECT_NEAR(fromQt(font)->weight(), back, 1e-9);
    }
}

TEST(QtConversions, theSystemFontIsTheApplicationsFamily) {
    EXPECT_EQ(toQt(NSFont::boldSystemFontOfSize(13)).family(), QFont().family());
    EXPECT_EQ(fromQt(QFont())->fontName()->utf8(), ".SystemFont");
    QFont bold;
    bold.setBold(true);
    EXPECT_EQ(fromQt(bold)->fontName()->utf8(), ".SystemFont-Bold");
    EXPECT_EQ(toQt(NSFont::fontWithName_size("Courier-Bold"_ns, 12)).family(), QStringLiteral("Courier"));
    EXPECT_EQ(toQt(NSFont::fontWithName_size("Courier-Bold"_ns, 12)).weight(), QFont::Bold);
    EXPECT_EQ(toQt(NSFont::fontWithName_size("PT-Serif"_ns, 12)).families(),
              (QStringList{QStringLiteral("PT-Serif"), QStringLiteral("PT")}))
        << "a hyphen may belong to the family";
}

TEST(QtConversions, slantedStylesGoByTheName) {
    const QFont italic = toQt(NSFont::fontWithName_size("Courier-Italic"_ns, 12));
    EXPECT_TRUE(italic.italic());
    EXPECT_EQ(italic.weight(), QFont::Normal);
    const QFont both = toQt(NSFont::fontWithName_size("Courier-BoldOblique"_ns, 12));
    EXPECT_TRUE(both.italic());
    EXPECT_EQ(both.weight(), QFont::Bold);
    EXPECT_EQ(fromQt(both)->fontName()->utf8(), "Courier-BoldItalic");
    EXPECT_EQ(fromQt(italic)->fontName()->utf8(), "Courier-Italic");
    EXPECT_FALSE(toQt(NSFont::systemFontOfSize(12)).italic());
}

TEST(QtConversions, imagesShareTheBitmapsBytes) {
    const auto bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(3, 2);
    QImage image = qt::imageOver(*bitmap);
    EXPECT_EQ(image.size(), QSize(3, 2));
    image.setPixelColor(2, 1, QColor(255, 0, 0, 128));
    EXPECT_EQ(bitmap->pixelAtX_y(2, 1).red, 128);
    EXPECT_EQ(bitmap->pixelAtX_y(2, 1).alpha, 128);
    EXPECT_TRUE(qt::imageOver(*make<NSBitmapImageRep>()).isNull());
}

TEST(QtConversions, bitmapsAreCopiesOfImages) {
    QImage image(5, 2, QImage::Format_RGB32);
    image.fill(QColor(1, 2, 3));
    image.setPixelColor(4, 1, QColor(9, 8, 7));
    image.setDevicePixelRatio(2);
    const auto bitmap = fromQt(image);
    EXPECT_EQ(bitmap->pixelsWide(), 5);
    EXPECT_EQ(bitmap->size(), NSMakeSize(2.5, 1));
    EXPECT_EQ(bitmap->pixelAtX_y(4, 1), (NSBitmapImageRep::Pixel{9, 8, 7, 255}));
    EXPECT_EQ(bitmap->pixelAtX_y(0, 0), (NSBitmapImageRep::Pixel{1, 2, 3, 255}));
    EXPECT_EQ(fromQt(QImage()), nullptr);
}

TEST(QtConversions, edgesGoToTheNearestPixel) {
    EXPECT_EQ(pixelRect({{1, 2}, {3, 4}}, 20, false), QRect(1, 14, 3, 4));
    EXPECT_EQ(pixelRect({{1, 2}, {3, 4}}, 20, true), QRect(1, 2, 3, 4));
    EXPECT_EQ(pixelRect({{0.5, 0.5}, {1, 1}}, 0, true), QRect(1, 1, 1, 1)) << "half-way goes to the higher one";
    EXPECT_EQ(pixelRect({{-0.5, -1.5}, {1, 1}}, 0, true), QRect(0, -1, 1, 1));
    EXPECT_EQ(pixelRect({{0, 0}, {10.3, 5}}, 10, true).right() + 1, pixelRect({{10.3, 0}, {4, 5}}, 10, true).left())
        << "neighbours touch";
    EXPECT_EQ(pixelRect({{0.4, 0}, {0.2, 1}}, 10, true).width(), 1);
    EXPECT_EQ(pixelRect({{0.1, 0}, {0.2, 1}}, 10, true).width(), 0);
}

TEST(QtConversions, rectanglesOutOfReachAreSafe) {
    EXPECT_EQ(pixelRect({{notANumber, notANumber}, {notANumber, notANumber}}, 10, false), QRect(0, 0, 0, 0));
    const QRect far = pixelRect({{-1e300, -infinity}, {2e300, 1}}, 10, true);
    EXPECT_EQ(far.left(), -(1 << 24));
    EXPECT_EQ(far.width(), 2 << 24);
    EXPECT_EQ(pixelRect({{5, 5}, {-3, -2}}, 10, true), QRect(5, 5, -3, -2));
}

} // namespace
} // namespace zr
