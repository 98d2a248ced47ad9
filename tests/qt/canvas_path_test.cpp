#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/appkit/graphics_context.h>
#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/platform/appkit/path.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/qt/bitmap_canvas_p.h>

#include <gtest/gtest.h>

#include <cmath>
#include "canvas_testing.h"

namespace zr {
namespace {

using canvas_testing::drawOn;
using canvas_testing::inked;
using canvas_testing::paper;

Ref<CGPath> rectangle(NSRect rect) {
    Ref<CGPath> path = CGPath::path();
    path->addRect(rect);
    return path;
}

TEST(CanvasPath, fillsWhatThePathGoesAround) {
    QImage image = paper(20, 10);
    drawOn(image, false, [](Canvas& canvas) {
        canvas.fillPath(*rectangle({{2, 1}, {5, 3}}), NSColor::redColor());
        canvas.fillPath(*rectangle({{10, 1}, {5, 3}}), nullptr);
    });
    EXPECT_EQ(inked(image), QRect(2, 6, 5, 3)) << "y grows upwards";
    EXPECT_EQ(image.pixelColor(3, 7), QColor(Qt::red));
    const auto ring = rectangle({{0, 0}, {10, 10}});
    ring->addRect({{2, 8}, {6, -6}});
    const auto full = rectangle({{10, 0}, {10, 10}});
    full->addRect({{12, 2}, {6, 6}});
    drawOn(image, true, [&](Canvas& canvas) {
        canvas.fillRect({{0, 0}, {20, 10}}, NSColor::whiteColor(), NSCompositingOperationCopy);
        canvas.fillPath(*ring, NSColor::redColor());
        canvas.fillPath(*full, NSColor::redColor());
    });
    EXPECT_EQ(image.pixelColor(5, 5), QColor(Qt::white)) << "the inner part goes the other way";
    EXPECT_EQ(image.pixelColor(15, 5), QColor(Qt::red));
}

TEST(CanvasPath, drawsALineAlongThePath) {
    QImage image = paper(20, 10);
    const auto line = CGPath::path();
    line->moveToPoint({4, 5});
    line->addLineToPoint({14, 5});
    drawOn(image, true, [&](Canvas& canvas) { canvas.strokePath(*line, 4, NSColor::greenColor()); });
    EXPECT_EQ(inked(image), QRect(4, 3, 10, 4)) << "cut off at its ends";
    QImage curved = paper(20, 20);
    const auto curve = CGPath::path();
    curve->addEllipseInRect({{5, 5}, {10, 10}});
    drawOn(curved, true, [&](Canvas& canvas) { canvas.strokePath(*curve, 2, NSColor::greenColor()); });
    EXPECT_EQ(inked(curved), QRect(4, 4, 12, 12));
    EXPECT_EQ(curved.pixelColor(10, 10), QColor(Qt::white));
}

TEST(CanvasPath, drawsNothingOfWhatIsNowhere) {
    QImage image = paper(10, 10);
    const auto line = rectangle({{2, 2}, {5, 5}});
    drawOn(image, true, [&](Canvas& canvas) {
        for (const double width : {0.0, -1.0, double(NAN), double(INFINITY)}) {
            canvas.strokePath(*line, width, NSColor::greenColor());
        }
        for (const double place : {double(NAN), double(INFINITY), 1e300}) {
            canvas.fillPath(*rectangle({{place, 0}, {10, 10}}), NSColor::greenColor());
            canvas.strokePath(*rectangle({{0, place}, {10, 10}}), 2, NSColor::greenColor());
        }
        canvas.fillPath(*CGPath::path(), NSColor::greenColor());
        canvas.strokePath(*line, 2, nullptr);
    });
    EXPECT_TRUE(inked(image).isEmpty());
}

TEST(CanvasPath, drawsIntoBitmaps) {
    const auto bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(4, 4);
    qt::BitmapCanvas canvas(*bitmap, {2, 2}, false);
    canvas.fillPath(*rectangle({{0, 0}, {1, 1}}), NSColor::redColor());
    EXPECT_EQ(bitmap->pixelAtX_y(1, 2), (NSBitmapImageRep::Pixel{255, 0, 0, 255}));
    EXPECT_EQ(bitmap->pixelAtX_y(1, 1).alpha, 0);
    const auto line = CGPath::path();
    line->moveToPoint({1, 1.5});
    line->addLineToPoint({2, 1.5});
    canvas.strokePath(*line, 1, NSColor::greenColor());
    EXPECT_EQ(bitmap->pixelAtX_y(3, 0), (NSBitmapImageRep::Pixel{0, 255, 0, 255}));
}

TEST(ImageText, isDrawnWithTheToolkitsFonts) {
    const auto image = make<NSImage>(&NSImage::initWithSize, NSMakeSize(40, 20));
    image->lockFocus();
    Canvas& canvas = NSGraphicsContext::currentContext()->canvas();
    canvas.clipToRect({{0, 0}, {40, 10}});
    canvas.drawText(canvas_testing::text("MMMM"_ns), {{0, 0}, {40, 20}}, false);
    image->unlockFocus();
    int above = 0;
    int below = 0;
    for (NSInteger y = 0; y < image->bestRepresentation()->pixelsHigh(); ++y) {
        for (NSInteger x = 0; x < image->bestRepresentation()->pixelsWide(); ++x) {
            const int ink = image->bestRepresentation()->pixelAtX_y(x, y).alpha > 0;
            (y * 2 < image->bestRepresentation()->pixelsHigh() ? above : below) += ink;
        }
    }
    EXPECT_EQ(above, 0) << "clipped";
    EXPECT_GT(below, 0);
}

} // namespace
} // namespace zr
