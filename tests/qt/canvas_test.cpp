#include <zrbasic/platform/qt/canvas_p.h>

#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/appkit/graphics_context.h>
#include <zrbasic/platform/qt/bitmap_canvas_p.h>
#include <zrbasic/platform/qt/conversions_p.h>

#include <QImage>
#include <QPainter>
#include <QPixmap>

#include <gtest/gtest.h>
#include <limits>
#include "canvas_testing.h"

namespace zr {
namespace {

using canvas_testing::drawOn;
using canvas_testing::inked;
using canvas_testing::paper;
using canvas_testing::text;
using qt::PainterCanvas;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

Ref<NSColor> rgb(double red, double green, double blue, double alpha = 1) {
    return NSColor::colorWithRed_green_blue_alpha(red, green, blue, alpha);
}

/// Red, green / blue, transparent; from the upper left corner on.
Ref<NSBitmapImageRep> fourColors() {
    const auto bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(2, 2);
    bitmap->setPixel_atX_y({255, 0, 0, 255}, 0, 0);
    bitmap->setPixel_atX_y({0, 255, 0, 255}, 1, 0);
    bitmap->setPixel_atX_y({0, 0, 255, 255}, 0, 1);
    return bitmap;
}

TEST(QtCanvas, yGrowsUpwardsUnlessFlipped) {
    for (const double scale : {1.0, 1.5, 2.0}) {
        SCOPED_TRACE(scale);
        QImage up = paper(20, 12, scale);
        drawOn(up, false, [](Canvas& canvas) {
            canvas.fillRect({{2, 2}, {8, 4}}, NSColor::redColor(), NSCompositingOperationCopy);
        });
        EXPECT_EQ(inked(up), QRectF(2 * scale, 6 * scale, 8 * scale, 4 * scale).toRect());
        QImage down = paper(20, 12, scale);
        drawOn(down, true, [](Canvas& canvas) {
            canvas.fillRect({{2, 2}, {8, 4}}, NSColor::redColor(), NSCompositingOperationCopy);
        });
        EXPECT_EQ(inked(down), QRectF(2 * scale, 2 * scale, 8 * scale, 4 * scale).toRect());
        EXPECT_EQ(down.pixelColor(int(4 * scale), int(4 * scale)), QColor(255, 0, 0));
    }
}

TEST(QtCanvas, savingKeepsClippingAndTransform) {
    QImage image = paper(20, 20);
    drawOn(image, true, [](Canvas& canvas) {
        canvas.save();
        canvas.clipToRect({{0, 0}, {10, 10}});
        canvas.clipToRect({{5, 0}, {10, 10}});
        canvas.concat({1, 0, 0, 1, 0, 4});
        canvas.fillRect({{0, 0}, {20, 2}}, NSColor::redColor(), NSCompositingOperationSourceOver);
        canvas.restore();
        canvas.fillRect({{0, 18}, {20, 1}}, NSColor::redColor(), NSCompositingOperationSourceOver);
        // What was never kept cannot come back.
        canvas.restore();
        canvas.restore();
        canvas.save();
    });
    EXPECT_EQ(image.pixelColor(7, 5), QColor(255, 0, 0));
    EXPECT_EQ(image.pixelColor(4, 5), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(10, 5), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(7, 6), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(1, 18), QColor(255, 0, 0));
}

TEST(QtCanvas, leavesThePainterAsItWas) {
    QImage image = paper(20, 20);
    QPainter painter(&image);
    painter.translate(3, 4);
    {
        PainterCanvas canvas(painter, {20, 20}, false);
        canvas.save();
        canvas.clipToRect({{0, 0}, {1, 1}});
        canvas.fillRect({{0, 0}, {9, 9}}, NSColor::redColor(), NSCompositingOperationCopy);
    }
    EXPECT_EQ(painter.worldTransform(), QTransform::fromTranslate(3, 4));
    EXPECT_FALSE(painter.hasClipping());
    EXPECT_EQ(painter.compositionMode(), QPainter::CompositionMode_SourceOver);
}

TEST(QtCanvas, concatenatedTransformsComeFirst) {
    QImage image = paper(20, 20);
    drawOn(image, true, [](Canvas& canvas) {
        canvas.concat({1, 0, 0, 1, 4, 0});
        canvas.concat({2, 0, 0, 2, 0, 0});
        canvas.concat({notANumber, 0, 0, 1, 0, 0});
        canvas.fillRect({{1, 1}, {3, 2}}, NSColor::redColor(), NSCompositingOperationSourceOver);
    });
    EXPECT_EQ(inked(image), QRect(6, 2, 6, 4));
}

TEST(QtCanvas, compositesAsTheOperationSays) {
    const struct {
        const char* name;
        NSCompositingOperation operation;
        QColor expected;
    } rows[] = {
        // Half-transparent red on opaque (0, 0.4, 1).
        {"clear", NSCompositingOperationClear, QColor(0, 0, 0, 0)},
        {"copy", NSCompositingOperationCopy, QColor(255, 0, 0, 128)},
        {"over", NSCompositingOperationSourceOver, QColor(128, 51, 127, 255)},
        {"source in", NSCompositingOperationSourceIn, QColor(255, 0, 0, 128)},
        {"destination in", NSCompositingOperationDestinationIn, QColor(0, 102, 255, 128)},
        {"multiply", NSCompositingOperationMultiply, QColor(0, 51, 127, 255)},
        {"screen", NSCompositingOperationScreen, QColor(128, 102, 255, 255)},
        {"unknown", NSCompositingOperation(77), QColor(128, 51, 127, 255)},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        QImage image(4, 4, QImage::Format_ARGB32_Premultiplied);
        image.fill(QColor(0, 102, 255));
        drawOn(image, true, [&](Canvas& canvas) {
            canvas.fillRect({{0, 0}, {2, 4}}, rgb(1, 0, 0, 128 / 255.0), row.operation);
        });
        const QColor result = image.pixelColor(1, 1);
        EXPECT_NEAR(result.red(), row.expected.red(), 2);
        EXPECT_NEAR(result.green(), row.expected.green(), 2);
        EXPECT_NEAR(result.blue(), row.expected.blue(), 2);
        EXPECT_NEAR(result.alpha(), row.expected.alpha(), 1);
        EXPECT_EQ(image.pixelColor(3, 1), QColor(0, 102, 255)) << "beside it";
    }
}

TEST(QtCanvas, luminosityTakesTheLightnessAndKeepsTheHue) {
    const struct {
        const char* name;
        QColor below;
        QColor over;
        QColor expected;
    } rows[] = {
        {"grey on red", Qt::red, QColor(128, 128, 128), QColor(0xff, 0x4a, 0x4a)},
        {"black stays black", Qt::red, Qt::black, Qt::black},
        {"white stays white", Qt::red, Qt::white, Qt::white},
        {"on grey only grey", QColor(90, 90, 90), QColor(0, 255, 0), QColor(150, 150, 150)},
        {"on nothing itself", QColor(0, 0, 0, 0), QColor(10, 200, 30), QColor(10, 200, 30)},
        {"nothing changes nothing", QColor(9, 99, 199), QColor(0, 0, 0, 0), QColor(9, 99, 199)},
    };
    for (const QImage::Format format : {QImage::Format_ARGB32_Premultiplied, QImage::Format_RGBA8888_Premultiplied}) {
        for (const auto& row : rows) {
            SCOPED_TRACE(row.name);
            QImage image(4, 4, format);
            image.fill(row.below);
            image.setDevicePixelRatio(2);
            drawOn(image, false, [&](Canvas& canvas) {
                canvas.clipToRect({{0, 0}, {1, 2}});
                canvas.fillRect({{0, 0}, {2, 2}}, qt::fromQt(row.over), NSCompositingOperationLuminosity);
            });
            const QColor result = image.pixelColor(1, 2);
            EXPECT_NEAR(result.red(), row.expected.red(), 1);
            EXPECT_NEAR(result.green(), row.expected.green(), 1);
            EXPECT_NEAR(result.blue(), row.expected.blue(), 1);
            EXPECT_EQ(result.alpha(), row.expected.alpha());
            EXPECT_EQ(image.pixelColor(3, 2), image.pixelColor(2, 0)) << "outside of the clipping";
            EXPECT_EQ(image.pixelColor(3, 2).rgba(), row.below.rgba());
        }
    }
}

TEST(QtCanvas, luminosityJustCoversWhatCannotBeReadBack) {
    QPixmap pixmap(4, 4);
    pixmap.fill(Qt::red);
    {
        QPainter painter(&pixmap);
        PainterCanvas canvas(painter, {4, 4}, false);
        canvas.fillRect({{0, 0}, {2, 4}}, qt::fromQt(QColor(128, 128, 128)), NSCompositingOperationLuminosity);
    }
    const QImage image = pixmap.toImage();
    EXPECT_EQ(image.pixelColor(1, 1), QColor(128, 128, 128));
    EXPECT_EQ(image.pixelColor(3, 1), QColor(255, 0, 0));
}

TEST(QtCanvas, drawsBitmapsUpright) {
    for (const bool isFlipped : {false, true}) {
        SCOPED_TRACE(isFlipped);
        QImage image = paper(8, 6);
        drawOn(image, isFlipped, [](Canvas& canvas) {
            canvas.drawBitmap(fourColors(), {{1, 1}, {2, 2}}, {}, NSCompositingOperationSourceOver, 1);
        });
        const int top = isFlipped ? 1 : 3;
        EXPECT_EQ(image.pixelColor(1, top), QColor(255, 0, 0));
        EXPECT_EQ(image.pixelColor(2, top), QColor(0, 255, 0));
        EXPECT_EQ(image.pixelColor(1, top + 1), QColor(0, 0, 255));
        EXPECT_EQ(image.pixelColor(2, top + 1), QColor(Qt::white));
        EXPECT_EQ(inked(image), QRect(1, top, 2, 2));
    }
}

TEST(QtCanvas, mirrorsBitmapsPixelByPixel) {
    QImage image(2, 2, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    drawOn(image, false, [](Canvas& canvas) {
        canvas.concat({1, 0, 0, -1, 0, 2});
        canvas.drawBitmap(fourColors(), {{0, 0}, {2, 2}}, {}, NSCompositingOperationCopy, 1);
    });
    EXPECT_EQ(image.pixelColor(0, 1), QColor(255, 0, 0));
    EXPECT_EQ(image.pixelColor(1, 1), QColor(0, 255, 0));
    EXPECT_EQ(image.pixelColor(0, 0), QColor(0, 0, 255));
    EXPECT_EQ(image.pixelColor(1, 0).alpha(), 0);
}

TEST(QtCanvas, drawsThePartOfABitmapThatItIsAskedFor) {
    const auto bitmap = fourColors();
    bitmap->setSize({4, 4});
    QImage image = paper(10, 10);
    drawOn(image, true, [&](Canvas& canvas) {
        // The upper left quarter, in the bitmap's points with y upwards.
        canvas.drawBitmap(bitmap, {{1, 1}, {3, 3}}, {{0, 2}, {2, 2}}, NSCompositingOperationSourceOver, 1);
        // Half of it lies outside on the left.
        canvas.drawBitmap(bitmap, {{5, 5}, {4, 2}}, {{-2, 0}, {4, 2}}, NSCompositingOperationSourceOver, 1);
        canvas.drawBitmap(bitmap, {{0, 0}, {9, 9}}, {{4, 0}, {2, 2}}, NSCompositingOperationSourceOver, 1);
    });
    EXPECT_EQ(image.pixelColor(2, 2), QColor(255, 0, 0));
    EXPECT_EQ(image.pixelColor(4, 4), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(5, 5), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(7, 6), QColor(0, 0, 255));
    EXPECT_EQ(inked(image), QRect(1, 1, 8, 6));
}

TEST(QtCanvas, fractionsMakeBitmapsFainter) {
    const auto bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(1, 1);
    bitmap->setPixel_atX_y({0, 0, 0, 255}, 0, 0);
    const struct {
        double fraction;
        int grey;
    } rows[] = {{1, 0}, {2, 0}, {0.5, 127}, {0, 255}, {-1, 255}, {notANumber, 255}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.fraction);
        QImage image = paper(2, 2);
        drawOn(image, false, [&](Canvas& canvas) {
            canvas.drawBitmap(bitmap, {{0, 0}, {2, 2}}, {}, NSCompositingOperationSourceOver, row.fraction);
        });
        EXPECT_NEAR(image.pixelColor(0, 0).red(), row.grey, 1);
        EXPECT_NEAR(image.pixelColor(1, 1).red(), row.grey, 1);
    }
}

TEST(QtCanvas, aBorderLiesInsideOfItsRectangle) {
    for (const double scale : {1.0, 2.0}) {
        SCOPED_TRACE(scale);
        QImage image = paper(20, 20, scale);
        drawOn(image, false, [](Canvas& canvas) {
            canvas.strokeRoundedRect({{2, 2}, {10, 8}}, 0, 2, NSColor::redColor());
        });
        EXPECT_EQ(inked(image), QRectF(2 * scale, 10 * scale, 10 * scale, 8 * scale).toRect());
        EXPECT_EQ(image.pixelColor(int(2 * scale), int(10 * scale)), QColor(255, 0, 0)) << "square at the corner";
        EXPECT_EQ(image.pixelColor(int(4 * scale) - 1, int(14 * scale)), QColor(255, 0, 0));
        EXPECT_EQ(image.pixelColor(int(4 * scale), int(14 * scale)), QColor(Qt::white)) << "nothing inside";
    }
}

TEST(QtCanvas, cornersAreRoundOutsideByTheRadius) {
    QImage image = paper(30, 30);
    drawOn(image, true, [](Canvas& canvas) {
        canvas.strokeRoundedRect({{0, 0}, {30, 30}}, 8, 1, NSColor::blackColor());
    });
    EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(2, 2).red() < 255, true) << "8 * (1 - sqrt(1/2)) is 2.3";
    EXPECT_EQ(image.pixelColor(4, 4), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(15, 0), QColor(Qt::black));
    EXPECT_EQ(image.pixelColor(15, 1), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(0, 15), QColor(Qt::black));
}

TEST(QtCanvas, aBorderWithoutRoomInsideFillsItsRectangle) {
    QImage image = paper(20, 20);
    drawOn(image, true, [](Canvas& canvas) {
        canvas.strokeRoundedRect({{2, 2}, {6, 4}}, 0, 2, NSColor::redColor());
        canvas.fillRoundedRect({{10, 10}, {6, 6}}, 100, 100, NSColor::redColor());
        canvas.fillRoundedRect({{10, 2}, {3, 3}}, 0, 5, NSColor::redColor());
    });
    EXPECT_EQ(image.pixelColor(4, 4), QColor(255, 0, 0));
    EXPECT_EQ(image.pixelColor(7, 5), QColor(255, 0, 0));
    EXPECT_EQ(image.pixelColor(10, 10).green() > 128, true) << "as round as there is room for";
    EXPECT_EQ(image.pixelColor(12, 12), QColor(255, 0, 0));
    EXPECT_EQ(image.pixelColor(10, 2), QColor(255, 0, 0));
}

TEST(QtCanvas, drawsNothingForNullAndForNonsense) {
    QImage image = paper(20, 20);
    drawOn(image, false, [](Canvas& canvas) {
        const NSRect whole{{0, 0}, {20, 20}};
        canvas.fillRect(whole, nullptr, NSCompositingOperationCopy);
        canvas.fillRoundedRect(whole, 2, 2, nullptr);
        canvas.strokeRoundedRect(whole, 2, 2, nullptr);
        canvas.drawText(nullptr, whole, false);
        canvas.drawText(text(""_ns), whole, true);
        canvas.drawBitmap(nullptr, whole, {}, NSCompositingOperationCopy, 1);
        canvas.drawBitmap(make<NSBitmapImageRep>(), whole, {}, NSCompositingOperationCopy, 1);
        for (const NSRect& rect :
             {NSRect{{5, 5}, {-2, 4}}, NSRect{{5, 5}, {0, 4}}, NSRect{{notANumber, 5}, {4, 4}},
              NSRect{{5, 5}, {notANumber, 4}}, NSRect{{infinity, 0}, {5, 5}}, NSRect{{1e300, 1e300}, {1e300, 1e300}}}) {
            canvas.fillRect(rect, NSColor::redColor(), NSCompositingOperationSourceOver);
            canvas.fillRoundedRect(rect, 1, 1, NSColor::redColor());
            canvas.strokeRoundedRect(rect, 1, 1, NSColor::redColor());
            canvas.drawText(text("x"_ns), rect, false);
            canvas.drawText(text("x"_ns), rect, true);
            canvas.drawBitmap(fourColors(), rect, {}, NSCompositingOperationSourceOver, 1);
        }
        canvas.strokeRoundedRect(whole, notANumber, notANumber, NSColor::redColor());
        canvas.strokeRoundedRect(whole, 1, -1, NSColor::redColor());
    });
    EXPECT_TRUE(inked(image).isNull());
    drawOn(image, false, [](Canvas& canvas) {
        canvas.fillRect({{-1e300, -1e300}, {2e300, 2e300}}, NSColor::redColor(), NSCompositingOperationSourceOver);
    });
    EXPECT_EQ(inked(image), image.rect()) << "what reaches far out is drawn as far as it is seen";
}

TEST(QtCanvas, drawsTheCurrentContextsShapes) {
    QImage image = paper(10, 10);
    drawOn(image, false, [](Canvas& canvas) {
        const auto context = NSGraphicsContext::contextWithCanvas(canvas, false);
        const CurrentContext current(context);
        set(NSColor::redColor());
        NSRectFill({{0, 0}, {10, 1}});
    });
    EXPECT_EQ(inked(image), QRect(0, 9, 10, 1));
}

TEST(QtBitmapCanvas, drawsIntoTheBitmapsBytes) {
    for (const bool isFlipped : {false, true}) {
        SCOPED_TRACE(isFlipped);
        const auto bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(8, 8);
        {
            qt::BitmapCanvas canvas(*bitmap, {4, 4}, isFlipped);
            canvas.save();
            canvas.clipToRect({{0, 0}, {4, 2}});
            canvas.fillRect({{0, 0}, {1, 4}}, rgb(1, 0, 0, 0.5), NSCompositingOperationSourceOver);
            canvas.restore();
        }
        const int row = isFlipped ? 0 : 7;
        EXPECT_NEAR(bitmap->pixelAtX_y(0, row).red, 128, 1);
        EXPECT_NEAR(bitmap->pixelAtX_y(1, row).alpha, 128, 1);
        EXPECT_EQ(bitmap->pixelAtX_y(2, row).alpha, 0);
        EXPECT_EQ(bitmap->pixelAtX_y(0, 7 - row).alpha, 0);
    }
}

TEST(QtBitmapCanvas, takesAPixelAsAPointWithoutASize) {
    for (const NSSize& size : {NSSize{0, 0}, NSSize{-4, 4}, NSSize{notANumber, 4}, NSSize{infinity, 4}}) {
        const auto bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(8, 8);
        qt::BitmapCanvas(*bitmap, size, true)
            .fillRect({{0, 0}, {2, 2}}, NSColor::redColor(), NSCompositingOperationCopy);
        EXPECT_EQ(bitmap->pixelAtX_y(1, 1).red, 255);
        EXPECT_EQ(bitmap->pixelAtX_y(2, 2).alpha, 0);
    }
    const auto none = make<NSBitmapImageRep>();
    qt::BitmapCanvas canvas(*none, {4, 4}, true);
    canvas.save();
    canvas.fillRect({{0, 0}, {2, 2}}, NSColor::redColor(), NSCompositingOperationCopy);
    canvas.drawText(text("a"_ns), {{0, 0}, {9, 9}}, true);
    canvas.restore();
    EXPECT_EQ(none->pixelsWide(), 0);
}

TEST(QtBitmapCanvas, drawsABitmapIntoItselfAsItWas) {
    const auto bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(4, 1);
    for (int x = 0; x < 4; ++x) {
        bitmap->setPixel_atX_y({std::uint8_t(60 * x), 0, 0, 255}, x, 0);
    }
    qt::BitmapCanvas(*bitmap, {4, 1}, true)
        .drawBitmap(bitmap, {{1, 0}, {4, 1}}, {}, NSCompositingOperationSourceOver, 1);
    EXPECT_EQ(bitmap->pixelAtX_y(1, 0).red, 0);
    EXPECT_EQ(bitmap->pixelAtX_y(2, 0).red, 60);
    EXPECT_EQ(bitmap->pixelAtX_y(3, 0).red, 120);
}

TEST(QtBitmapCanvas, tintsByLuminosityAndDestinationIn) {
    const auto picture = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(2, 1);
    picture->setPixel_atX_y({128, 128, 128, 255}, 0, 0);
    const auto bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(2, 1);
    {
        const NSRect whole{{0, 0}, {2, 1}};
        qt::BitmapCanvas canvas(*bitmap, {2, 1}, false);
        canvas.fillRect(whole, NSColor::redColor(), NSCompositingOperationSourceOver);
        canvas.drawBitmap(picture, whole, whole, NSCompositingOperationLuminosity, 1);
        canvas.drawBitmap(picture, whole, whole, NSCompositingOperationDestinationIn, 1);
    }
    const auto tinted = bitmap->pixelAtX_y(0, 0);
    EXPECT_EQ(tinted.red, 0xff);
    EXPECT_NEAR(tinted.green, 0x4a, 1);
    EXPECT_NEAR(tinted.blue, 0x4a, 1);
    EXPECT_EQ(tinted.alpha, 255);
    EXPECT_EQ(bitmap->pixelAtX_y(1, 0), NSBitmapImageRep::Pixel());
}

} // namespace
} // namespace zr
