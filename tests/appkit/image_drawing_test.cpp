#include "canvas_testing.h"
#include "toolkit_testing.h"

#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/platform/appkit/image_canvas_p.h>
#include <zrbasic/platform/appkit/screen.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace zr {
namespace {

using Pixel = NSBitmapImageRep::Pixel;

constexpr Pixel red{255, 0, 0, 255};
constexpr Pixel green{0, 255, 0, 255};
constexpr Pixel clear{};

Ref<NSImage> empty(double wide, double high) {
    return make<NSImage>(&NSImage::initWithSize, NSMakeSize(wide, high));
}

/// A pixel a point, each pixel telling its place.
Ref<NSImage> numbered(NSInteger wide, NSInteger high) {
    Ref<NSImage> image = empty(double(wide), double(high));
    const auto bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(wide, high);
    for (NSInteger y = 0; y < high; ++y) {
        for (NSInteger x = 0; x < wide; ++x) {
            bitmap->setPixel_atX_y({std::uint8_t(x * 10), std::uint8_t(y * 10), 7, 255}, x, y);
        }
    }
    image->addRepresentation(bitmap);
    return image;
}

void fill(NSRect rect, const Ref<NSColor>& color) {
    setFill(color);
    NSRectFill(rect);
}

Pixel at(NSImage* image, NSInteger x, NSInteger y) {
    return image->bestRepresentation()->pixelAtX_y(x, y);
}

TEST(ImageFocus, drawsIntoTheImageFromItsLowerLeftCorner) {
    const auto image = empty(4, 3);
    image->lockFocus();
    ASSERT_TRUE(NSGraphicsContext::currentContext());
    EXPECT_FALSE(NSGraphicsContext::currentContext()->isFlipped());
    fill({{0, 0}, {2, 1}}, NSColor::redColor());
    EXPECT_FALSE(image->bestRepresentation()) << "nothing changes until the end";
    image->unlockFocus();
    EXPECT_FALSE(NSGraphicsContext::currentContext());
    ASSERT_EQ(image->representations()->count(), 1U);
    EXPECT_EQ(image->bestRepresentation()->pixelsWide(), 4);
    EXPECT_EQ(image->bestRepresentation()->pixelsHigh(), 3);
    EXPECT_EQ(at(image, 1, 2), red);
    EXPECT_EQ(at(image, 2, 2), clear);
    EXPECT_EQ(at(image, 1, 1), clear);
}

TEST(ImageFocus, beginsWithWhatTheImageShowsInItsBestBitmap) {
    const auto image = empty(2, 2);
    const auto plain = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(2, 2);
    const auto dense = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(4, 4);
    dense->setPixel_atX_y(green, 3, 0);
    image->addRepresentation(plain);
    image->addRepresentation(dense);
    image->lockFocus();
    fill({{0, 0}, {1, 1}}, NSColor::redColor());
    image->unlockFocus();
    ASSERT_EQ(image->representations()->count(), 1U) << "others would show something else now";
    EXPECT_EQ(image->bestRepresentation()->pixelsWide(), 4);
    EXPECT_EQ(at(image, 3, 0), green);
    EXPECT_EQ(at(image, 1, 2), red);
    EXPECT_EQ(at(image, 2, 2), clear);
    EXPECT_EQ(dense->pixelAtX_y(1, 2), clear) << "another image may have this bitmap";
}

TEST(ImageFocus, hasThePixelsOfTheMainScreen) {
    const test::ScreensToolkit toolkit({{{{0, 0}, {100, 100}}, {{0, 0}, {100, 100}}, 2}});
    const auto image = empty(4, 2.6);
    image->lockFocus();
    image->unlockFocus();
    ASSERT_TRUE(image->bestRepresentation());
    EXPECT_EQ(image->bestRepresentation()->pixelsWide(), 8);
    EXPECT_EQ(image->bestRepresentation()->pixelsHigh(), 6);
    EXPECT_EQ(image->size(), NSMakeSize(4, 2.6));
}

TEST(ImageFocus, lastsUntilTheInnermostEnds) {
    const auto outer = empty(1, 1);
    const auto inner = empty(1, 1);
    outer->lockFocus();
    inner->lockFocus();
    outer->unlockFocus();
    fill({{0, 0}, {1, 1}}, NSColor::redColor());
    inner->unlockFocus();
    fill({{0, 0}, {1, 1}}, NSColor::greenColor());
    inner->unlockFocus();
    outer->unlockFocus();
    outer->unlockFocus();
    EXPECT_EQ(at(inner, 0, 0), red);
    EXPECT_EQ(at(outer, 0, 0), green);
    EXPECT_FALSE(NSGraphicsContext::currentContext());
}

TEST(ImageFocus, keepsNothingOfAnImageWithoutAnExtent) {
    const double huge = std::numeric_limits<double>::max();
    for (const NSSize size : {NSMakeSize(0, 5), NSMakeSize(-1, 5), NSMakeSize(huge, huge), NSMakeSize(1e6, 1),
                              NSMakeSize(NAN, 1), NSMakeSize(60000, 60000)}) {
        SCOPED_TRACE(size.width);
        const auto image = empty(size.width, size.height);
        image->lockFocus();
        EXPECT_TRUE(NSGraphicsContext::currentContext()) << "what is drawn must not go elsewhere";
        fill({{0, 0}, {5, 5}}, NSColor::redColor());
        NSGraphicsContext::saveGraphicsState();
        NSGraphicsContext::restoreGraphicsState();
        image->unlockFocus();
        EXPECT_EQ(image->representations()->count(), 0U);
    }
}

TEST(ImageDrawing, copiesPixelsThatLieOnPixels) {
    const auto source = numbered(3, 2);
    const auto image = empty(5, 4);
    image->lockFocus();
    source->drawInRect_fromRect_operation_fraction({{1, 1}, {3, 2}}, NSZeroRect, NSCompositingOperationCopy, 1);
    image->unlockFocus();
    for (NSInteger y = 0; y < 2; ++y) {
        for (NSInteger x = 0; x < 3; ++x) {
            EXPECT_EQ(at(image, x + 1, y + 1), at(source, x, y)) << x << ' ' << y;
        }
    }
    EXPECT_EQ(at(image, 0, 1), clear);
    EXPECT_EQ(at(image, 4, 1), clear);
    EXPECT_EQ(at(image, 1, 3), clear);
}

TEST(ImageDrawing, takesAPartInPointsFromTheLowerLeft) {
    const auto source = numbered(6, 4);
    source->setSize({3, 2});
    const auto image = empty(2, 2);
    image->lockFocus();
    source->drawInRect_fromRect_operation_fraction({{0, 0}, {2, 2}}, {{1, 0}, {1, 1}}, NSCompositingOperationCopy, 1);
    image->unlockFocus();
    EXPECT_EQ(at(image, 0, 0), at(source, 2, 2));
    EXPECT_EQ(at(image, 1, 1), at(source, 3, 3));
}

TEST(ImageDrawing, leavesOutWhatLiesBeyondTheSourceAndTheTarget) {
    const auto source = numbered(2, 2);
    const auto image = empty(3, 3);
    image->lockFocus();
    source->drawInRect_fromRect_operation_fraction({{2, 2}, {2, 2}}, NSZeroRect, NSCompositingOperationCopy, 1);
    source->drawInRect_fromRect_operation_fraction({{0, 0}, {9, 9}}, {{5, 5}, {2, 2}}, NSCompositingOperationCopy, 1);
    image->unlockFocus();
    EXPECT_EQ(at(image, 2, 0), at(source, 0, 1));
    EXPECT_EQ(at(image, 1, 1), clear);
    EXPECT_EQ(at(image, 0, 2), clear);
}

TEST(ImageDrawing, mixesPixelsWhereItStretches) {
    const auto source = empty(2, 1);
    source->lockFocus();
    fill({{0, 0}, {1, 1}}, NSColor::blackColor());
    fill({{1, 0}, {1, 1}}, NSColor::whiteColor());
    source->unlockFocus();
    const auto image = empty(4, 1);
    image->lockFocus();
    source->drawInRect({{0, 0}, {4, 1}});
    image->unlockFocus();
    EXPECT_EQ(at(image, 0, 0), (Pixel{0, 0, 0, 255})) << "edges are not mixed with what is not there";
    EXPECT_NEAR(at(image, 1, 0).red, 64, 1);
    EXPECT_NEAR(at(image, 2, 0).red, 191, 1);
    EXPECT_EQ(at(image, 3, 0), (Pixel{255, 255, 255, 255}));
}

TEST(ImageDrawing, fadesByTheFraction) {
    const auto source = empty(1, 1);
    source->lockFocus();
    fill({{0, 0}, {1, 1}}, NSColor::redColor());
    source->unlockFocus();
    const auto drawn = [&](NSCompositingOperation operation, double fraction) {
        const auto image = empty(1, 1);
        image->lockFocus();
        fill({{0, 0}, {1, 1}}, NSColor::greenColor());
        source->drawInRect_fromRect_operation_fraction({{0, 0}, {1, 1}}, NSZeroRect, operation, fraction);
        image->unlockFocus();
        return at(image, 0, 0);
    };
    EXPECT_EQ(drawn(NSCompositingOperationSourceOver, 0.5), (Pixel{128, 127, 0, 255}));
    EXPECT_EQ(drawn(NSCompositingOperationCopy, 0.5), (Pixel{128, 0, 0, 128}));
    EXPECT_EQ(drawn(NSCompositingOperationDestinationIn, 0.5), (Pixel{0, 128, 0, 128}));
    EXPECT_EQ(drawn(NSCompositingOperationCopy, 7), red);
    EXPECT_EQ(drawn(NSCompositingOperationCopy, -1), green);
    EXPECT_EQ(drawn(NSCompositingOperationCopy, NAN), green);
}

TEST(ImageDrawing, readsItselfAsItWas) {
    const auto image = numbered(3, 1);
    image->lockFocus();
    fill({{0, 0}, {3, 1}}, NSColor::redColor());
    image->drawInRect_fromRect_operation_fraction({{0, 0}, {2, 1}}, {{1, 0}, {2, 1}}, NSCompositingOperationCopy, 1);
    image->unlockFocus();
    EXPECT_EQ(at(image, 0, 0).red, 10);
    EXPECT_EQ(at(image, 1, 0).red, 20);
    EXPECT_EQ(at(image, 2, 0), red);
}

TEST(ImageDrawing, goesThroughTransformsAndClipping) {
    const auto source = numbered(2, 1);
    const auto image = empty(3, 3);
    image->lockFocus();
    NSGraphicsContext::saveGraphicsState();
    const auto quarter = NSAffineTransform::transform();
    quarter->translateXBy_yBy(1, 0);
    quarter->rotateByDegrees(90);
    concat(quarter);
    source->drawInRect({{0, 0}, {2, 1}});
    NSGraphicsContext::restoreGraphicsState();
    NSGraphicsContext::currentContext()->canvas().clipToRect({{2, 0}, {1, 1}});
    fill({{0, 0}, {3, 3}}, NSColor::redColor());
    image->unlockFocus();
    EXPECT_EQ(at(image, 0, 2), at(source, 0, 0));
    EXPECT_EQ(at(image, 0, 1), at(source, 1, 0));
    EXPECT_EQ(at(image, 0, 0), clear);
    EXPECT_EQ(at(image, 2, 2), red);
    EXPECT_EQ(at(image, 2, 1), clear);
    EXPECT_EQ(at(image, 1, 2), clear);
}

/// Every byte another one, opaque in places only.
Ref<NSBitmapImageRep> noise(NSInteger wide, NSInteger high) {
    Ref<NSBitmapImageRep> bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(wide, high);
    std::uint32_t state = 1;
    const auto next = [&state](unsigned most) {
        state = state * 1664525 + 1013904223;
        return static_cast<std::uint8_t>((state >> 16) % (most + 1));
    };
    for (NSInteger y = 0; y < high; ++y) {
        for (NSInteger x = 0; x < wide; ++x) {
            const std::uint8_t alpha = next(255);
            bitmap->setPixel_atX_y({next(alpha), next(alpha), next(alpha), alpha}, x, y);
        }
    }
    return bitmap;
}

/// The bitmap in the middle of another one, turned by so many degrees and drawn as far as it lies in `clip`.
Ref<NSBitmapImageRep> turned(NSBitmapImageRep* bitmap, double degrees, NSRect clip, NSBitmapImageRep* on = nullptr) {
    const Ref<NSBitmapImageRep> result =
        on ? Ref<NSBitmapImageRep>(on) : NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(64, 64);
    ImageCanvas canvas(result, {64, 64});
    canvas.clipToRect(clip);
    const auto turn = NSAffineTransform::transform();
    turn->translateXBy_yBy(32, 32);
    turn->rotateByDegrees(degrees);
    canvas.concat(turn->transformStruct());
    const NSSize size = bitmap->size();
    canvas.drawBitmap(bitmap, {{-size.width / 2, -size.height / 2}, size}, NSZeroRect, NSCompositingOperationCopy, 1);
    return result;
}

constexpr NSRect everything{{0, 0}, {64, 64}};

TEST(ImageDrawing, aTurnedPixelIsTheSameHoweverMuchOfItsRowIsDrawn) {
    const auto source = noise(41, 37);
    for (const double degrees : {33.0, 121.5, 270.001}) {
        SCOPED_TRACE(degrees);
        const auto whole = turned(source, degrees, everything);
        const auto columns = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(64, 64);
        for (int x = 0; x < 64; ++x) {
            turned(source, degrees, {{double(x), 0}, {1, 64}}, columns);
        }
        EXPECT_NE(whole->pixelAtX_y(32, 32), clear);
        EXPECT_TRUE(std::ranges::equal(whole->bytes(), columns->bytes()));
    }
}

TEST(ImageDrawing, mixesATurnedPixelOfTheNearestFour) {
    const auto source = noise(41, 37);
    const auto result = turned(source, 33, everything);
    const double sine = std::sin(33 * M_PI / 180);
    const double cosine = std::cos(33 * M_PI / 180);
    int compared = 0;
    double farthest = 0;
    for (NSInteger row = 0; row < 64; ++row) {
        for (NSInteger column = 0; column < 64; ++column) {
            // From the middle of the picture, y upwards, turned back.
            const double x = double(column) + 0.5 - 32;
            const double y = 32 - (double(row) + 0.5);
            const double fromX = 20.5 + x * cosine + y * sine - 0.5;
            const double fromY = 18.5 - (y * cosine - x * sine) - 0.5;
            if (fromX < 0.01 || fromY < 0.01 || fromX > 39.99 || fromY > 35.99) {
                continue;
            }
            const auto left = NSInteger(fromX);
            const auto top = NSInteger(fromY);
            const double right = fromX - double(left);
            const double down = fromY - double(top);
            const auto part = [&](std::uint8_t Pixel::*of) {
                const auto byte = [&](NSInteger dx, NSInteger dy) {
                    return double(source->pixelAtX_y(left + dx, top + dy).*of);
                };
                return (byte(0, 0) * (1 - right) + byte(1, 0) * right) * (1 - down) +
                       (byte(0, 1) * (1 - right) + byte(1, 1) * right) * down;
            };
            const Pixel pixel = result->pixelAtX_y(column, row);
            for (std::uint8_t Pixel::*const of : {&Pixel::red, &Pixel::green, &Pixel::blue, &Pixel::alpha}) {
                farthest = std::max(farthest, std::fabs(pixel.*of - part(of)));
            }
            ++compared;
        }
    }
    EXPECT_GT(compared, 1200);
    // Weights are parts of 256.
    EXPECT_LT(farthest, 4);
}

TEST(ImageDrawing, movesEveryPixelOfAWideQuarterTurn) {
    const auto source = noise(62, 48);
    const auto result = turned(source, 90, everything);
    int differences = 0;
    for (NSInteger y = 0; y < 48; ++y) {
        for (NSInteger x = 0; x < 62; ++x) {
            differences += result->pixelAtX_y(8 + y, 62 - x) != source->pixelAtX_y(x, y);
        }
    }
    EXPECT_EQ(differences, 0) << "counterclockwise, where y goes up";
    EXPECT_EQ(result->pixelAtX_y(7, 30), clear);
    EXPECT_EQ(result->pixelAtX_y(56, 30), clear);
}

TEST(ImageDrawing, isClippedByTurnedRectangles) {
    const auto image = empty(20, 20);
    image->lockFocus();
    const auto turn = NSAffineTransform::transform();
    turn->translateXBy_yBy(10, 10);
    turn->rotateByDegrees(45);
    concat(turn);
    NSGraphicsContext::currentContext()->canvas().clipToRect({{-5, -5}, {10, 10}});
    fill({{-50, -50}, {100, 100}}, NSColor::redColor());
    image->unlockFocus();
    double area = 0;
    for (NSInteger y = 0; y < 20; ++y) {
        for (NSInteger x = 0; x < 20; ++x) {
            area += at(image, x, y).alpha / 255.0;
        }
    }
    EXPECT_NEAR(area, 100, 1);
    EXPECT_EQ(at(image, 10, 4), red);
    EXPECT_EQ(at(image, 4, 4), clear);
}

TEST(ImageDrawing, doesNothingWithoutAnythingToDrawOrToDrawIn) {
    const auto source = numbered(2, 2);
    source->drawInRect({{0, 0}, {2, 2}});
    concat(NSAffineTransform::transform());
    const auto image = empty(2, 2);
    image->lockFocus();
    fill({{0, 0}, {2, 2}}, NSColor::redColor());
    concat(nullptr);
    empty(2, 2)->drawInRect({{0, 0}, {2, 2}});
    make<NSImage>()->drawInRect({{0, 0}, {2, 2}});
    for (const NSRect nowhere : {NSRect{{0, 0}, {0, 2}}, NSRect{{0, 0}, {-2, 2}}, NSRect{{NAN, 0}, {2, 2}},
                                 NSRect{{1e300, 0}, {2, 2}}, NSRect{{0, 0}, {INFINITY, 2}}}) {
        source->drawInRect(nowhere);
        NSGraphicsContext::currentContext()->canvas().drawBitmap(source->bestRepresentation(), nowhere, NSZeroRect,
                                                                 NSCompositingOperationCopy, 1);
    }
    const auto flat = NSAffineTransform::transform();
    flat->scaleXBy_yBy(0, 0);
    concat(flat);
    source->drawInRect({{0, 0}, {2, 2}});
    image->unlockFocus();
    EXPECT_EQ(at(image, 0, 0), red);
    EXPECT_EQ(at(image, 1, 1), red);
}

TEST(ImageDrawing, drawsShapesWithinTheirRectangles) {
    const auto image = empty(10, 10);
    image->lockFocus();
    Canvas& canvas = NSGraphicsContext::currentContext()->canvas();
    canvas.strokeRoundedRect({{0, 0}, {10, 10}}, 0, 2, NSColor::redColor());
    canvas.fillRoundedRect({{4, 4}, {2, 2}}, 1, 1, NSColor::greenColor());
    canvas.fillRect({{0, 0}, {10, 10}}, nullptr, NSCompositingOperationCopy);
    image->unlockFocus();
    EXPECT_EQ(at(image, 0, 0), red);
    EXPECT_EQ(at(image, 1, 5), red);
    EXPECT_EQ(at(image, 2, 5), clear);
    EXPECT_NEAR(at(image, 4, 4).alpha, 255 * M_PI / 4, 6);
}

TEST(ImageDrawing, answersMessages) {
    const id image = empty(2, 2);
    send<void>(image, "lockFocus"_sel);
    const auto source = numbered(2, 2);
    send<void>(source, "drawInRect:fromRect:operation:fraction:"_sel, NSRect{{0, 0}, {2, 2}}, NSZeroRect,
               NSCompositingOperationCopy, 1.0);
    send<void>(image, "unlockFocus"_sel);
    EXPECT_EQ(at(cast<NSImage>(image), 1, 1), at(source, 1, 1));
}

} // namespace
} // namespace zr
