#include <zrbasic/ui/image.h>

#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/appkit/graphics_context.h>
#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/platform/foundation/null.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace zr {
namespace {

using Pixel = NSBitmapImageRep::Pixel;

Ref<NSImage> empty(double wide, double high) {
    return make<NSImage>(&NSImage::initWithSize, NSMakeSize(wide, high));
}

/// Every pixel tells its place.
Ref<NSImage> numbered(NSInteger wide, NSInteger high, double pixelsPerPoint = 1) {
    Ref<NSImage> image = empty(double(wide) / pixelsPerPoint, double(high) / pixelsPerPoint);
    const auto bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(wide, high);
    for (NSInteger y = 0; y < high; ++y) {
        for (NSInteger x = 0; x < wide; ++x) {
            bitmap->setPixel_atX_y({std::uint8_t(x), std::uint8_t(y), 7, 255}, x, y);
        }
    }
    image->addRepresentation(bitmap);
    return image;
}

Pixel at(NSImage* image, NSInteger x, NSInteger y) {
    return image->bestRepresentation()->pixelAtX_y(x, y);
}

NSInteger pixelsWide(NSImage* image) {
    return image->bestRepresentation()->pixelsWide();
}

NSInteger pixelsHigh(NSImage* image) {
    return image->bestRepresentation()->pixelsHigh();
}

void expectSize(NSImage* image, double wide, double high) {
    EXPECT_NEAR(image->size().width, wide, 1e-9);
    EXPECT_NEAR(image->size().height, high, 1e-9);
}

TEST(ImageTint, recoloursTheReceiverInPlace) {
    const auto image = empty(5, 1);
    const auto bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(5, 1);
    bitmap->setPixel_atX_y({128, 128, 128, 255}, 0, 0);
    bitmap->setPixel_atX_y({0, 0, 0, 255}, 1, 0);
    bitmap->setPixel_atX_y({255, 255, 255, 255}, 2, 0);
    bitmap->setPixel_atX_y({64, 64, 64, 128}, 3, 0);
    image->addRepresentation(bitmap);
    EXPECT_EQ(imageWithTintColor(image, NSColor::redColor()).get(), image.get());
    EXPECT_EQ(at(image, 0, 0), (Pixel{255, 0x4a, 0x4a, 255}));
    EXPECT_EQ(at(image, 1, 0), (Pixel{0, 0, 0, 255})) << "black stays black";
    EXPECT_EQ(at(image, 2, 0), (Pixel{255, 255, 255, 255})) << "white stays white";
    EXPECT_EQ(at(image, 3, 0).alpha, 128);
    EXPECT_EQ(at(image, 3, 0).red, 128);
    EXPECT_EQ(at(image, 4, 0), Pixel{}) << "nothing where there was nothing";
    EXPECT_FALSE(NSGraphicsContext::currentContext());
}

TEST(ImageTint, mixesTheColourWithWhatShinesThrough) {
    // Half there, the colour is half mixed and half itself, and then cut to the half that is there.
    const auto image = empty(1, 1);
    const auto bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(1, 1);
    bitmap->setPixel_atX_y({0, 0, 0, 128}, 0, 0);
    image->addRepresentation(bitmap);
    (void)imageWithTintColor(image, NSColor::redColor());
    EXPECT_NEAR(at(image, 0, 0).red, 64, 1);
    EXPECT_EQ(at(image, 0, 0).green, 0);
    EXPECT_EQ(at(image, 0, 0).alpha, 128);
}

TEST(ImageTint, takesNullImagesAndColours) {
    EXPECT_FALSE(imageWithTintColor(nullptr, NSColor::redColor()));
    const auto image = numbered(3, 3);
    EXPECT_EQ(imageWithTintColor(image, nullptr).get(), image.get());
    const Pixel pixel = at(image, 2, 2);
    EXPECT_EQ(pixel.red, pixel.green);
    EXPECT_EQ(pixel.red, pixel.blue);
    EXPECT_EQ(pixel.alpha, 255);
    const auto nothing = empty(4, 4);
    EXPECT_EQ(imageWithTintColor(nothing, NSColor::redColor()).get(), nothing.get());
    EXPECT_EQ(nothing->representations()->count(), 0U);
    const auto flat = numbered(3, 3);
    flat->setSize({0, 3});
    (void)imageWithTintColor(flat, NSColor::redColor());
    EXPECT_EQ(at(flat, 2, 2), (Pixel{2, 2, 7, 255})) << "an image without an extent stays as it is";
}

TEST(ImageTint, keepsAllPixelsOfADenseImage) {
    const auto image = numbered(8, 6, 2);
    (void)imageWithTintColor(image, NSColor::whiteColor());
    EXPECT_EQ(pixelsWide(image), 8);
    EXPECT_EQ(pixelsHigh(image), 6);
    expectSize(image, 4, 3);
}

TEST(ImageTint, drawsNothingIntoAnImageOfBitmapsWithoutPixels) {
    const auto image = empty(4, 4);
    image->addRepresentation(make<NSBitmapImageRep>());
    EXPECT_EQ(imageWithTintColor(image, NSColor::redColor()).get(), image.get());
    ASSERT_EQ(image->representations()->count(), 1U);
    EXPECT_EQ(pixelsWide(image), 0) << "not a red rectangle";
    EXPECT_TRUE(rotateWithAngle(image, 30));
    EXPECT_TRUE(mirrorRotateInYAxis(image));
    EXPECT_FALSE(NSGraphicsContext::currentContext());
}

TEST(ImageTint, ofAnImageThatIsBeingDrawnInEndsNothing) {
    const auto outer = empty(2, 2);
    const auto image = numbered(2, 2);
    outer->lockFocus();
    const auto around = NSGraphicsContext::currentContext();
    (void)imageWithTintColor(image, NSColor::redColor());
    (void)rotateWithAngle(image, 20);
    EXPECT_EQ(NSGraphicsContext::currentContext().get(), around.get());
    outer->unlockFocus();
    EXPECT_EQ(at(outer, 0, 0), Pixel{}) << "nothing of it went there";
    image->lockFocus();
    (void)imageWithTintColor(image, NSColor::redColor());
    EXPECT_TRUE(NSGraphicsContext::currentContext()) << "it is still drawn in";
    image->unlockFocus();
    EXPECT_FALSE(NSGraphicsContext::currentContext());
}

TEST(ImageMirror, exchangesTopAndBottomByYAndLeftAndRightByX) {
    const auto image = numbered(5, 3);
    const auto upsideDown = mirrorRotateInYAxis(image);
    const auto mirrored = mirrorRotateInXAsix(image);
    ASSERT_TRUE(upsideDown);
    ASSERT_TRUE(mirrored);
    expectSize(upsideDown, 5, 3);
    expectSize(mirrored, 5, 3);
    for (NSInteger y = 0; y < 3; ++y) {
        for (NSInteger x = 0; x < 5; ++x) {
            EXPECT_EQ(at(upsideDown, x, 2 - y), at(image, x, y));
            EXPECT_EQ(at(mirrored, 4 - x, y), at(image, x, y));
        }
    }
    EXPECT_NE(mirrored.get(), image.get());
}

TEST(ImageMirror, keepsEveryPixelOfADenseImage) {
    const auto image = numbered(7, 9, 2);
    const auto mirrored = mirrorRotateInXAsix(image);
    ASSERT_EQ(pixelsWide(mirrored), 7);
    ASSERT_EQ(pixelsHigh(mirrored), 9);
    for (NSInteger x = 0; x < 7; ++x) {
        EXPECT_EQ(at(mirrored, 6 - x, 8), at(image, x, 8));
    }
}

TEST(ImageMirror, isNullWithoutAnExtentInSinglePrecision) {
    struct {
        const char* name;
        double wide;
        double high;
    } const rows[] = {{"no width", 0, 20}, {"no height", 20, 0}, {"too little width", 1e-60, 20}, {"neither", 0, -0.0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_FALSE(mirrorRotateInXAsix(empty(row.wide, row.high)));
        EXPECT_FALSE(mirrorRotateInYAxis(empty(row.wide, row.high)));
    }
    EXPECT_FALSE(mirrorRotateInXAsix(nullptr));
    EXPECT_FALSE(mirrorRotateInYAxis(nullptr));
}

TEST(ImageMirror, roundsTheSizeToSinglePrecision) {
    const auto mirrored = mirrorRotateInYAxis(empty(10.1, 1e300));
    ASSERT_TRUE(mirrored);
    EXPECT_EQ(mirrored->size().width, double(10.1F));
    EXPECT_TRUE(std::isinf(mirrored->size().height));
    EXPECT_TRUE(mirrorRotateInYAxis(empty(-5, 5)));
    EXPECT_TRUE(mirrorRotateInYAxis(empty(NAN, 5)));
}

TEST(ImageRotation, byQuartersMovesPixelsUnchanged) {
    const auto image = numbered(100, 50);
    const auto quarter = rotateWithAngle(image, 90);
    EXPECT_EQ(quarter->size(), NSMakeSize(50, 100));
    ASSERT_EQ(pixelsWide(quarter), 50);
    ASSERT_EQ(pixelsHigh(quarter), 100);
    const auto half = rotateWithAngle(image, 180);
    const auto back = rotateWithAngle(image, -90);
    EXPECT_EQ(half->size(), NSMakeSize(100, 50));
    int differences = 0;
    for (NSInteger y = 0; y < 50; ++y) {
        for (NSInteger x = 0; x < 100; ++x) {
            const Pixel pixel = at(image, x, y);
            differences += at(quarter, 49 - y, x) != pixel;
            differences += at(half, 99 - x, 49 - y) != pixel;
            differences += at(back, y, 99 - x) != pixel;
        }
    }
    EXPECT_EQ(differences, 0) << "clockwise: what was at the left is at the top";
}

TEST(ImageRotation, byNothingGivesTheSameImageAgain) {
    const auto image = numbered(7, 5);
    for (const double angle : {0.0, 360.0, -720.0}) {
        SCOPED_TRACE(angle);
        const auto turned = rotateWithAngle(image, angle);
        EXPECT_NE(turned.get(), image.get());
        EXPECT_EQ(turned->size(), NSMakeSize(7, 5));
        EXPECT_EQ(at(turned, 6, 1), at(image, 6, 1));
        EXPECT_EQ(at(turned, 0, 4), at(image, 0, 4));
    }
}

TEST(ImageRotation, takesTheSmallestCanvasThatHoldsIt) {
    const auto turned = rotateWithAngle(numbered(100, 50), 30);
    const double wide = 100 * std::cos(M_PI / 6) + 50 * std::sin(M_PI / 6);
    const double high = 100 * std::sin(M_PI / 6) + 50 * std::cos(M_PI / 6);
    expectSize(turned, wide, high);
    EXPECT_EQ(pixelsWide(turned), std::ceil(wide));
    EXPECT_EQ(pixelsHigh(turned), std::ceil(high));
    EXPECT_EQ(at(turned, 0, 0), Pixel{}) << "the corners are free";
    EXPECT_EQ(at(turned, pixelsWide(turned) - 1, pixelsHigh(turned) - 1), Pixel{});
}

TEST(ImageRotation, turnsClockwiseAboutTheMiddle) {
    const auto turned = rotateWithAngle(numbered(100, 60), 30);
    const double middleX = double(pixelsWide(turned)) / 2;
    const double middleY = double(pixelsHigh(turned)) / 2;
    const double cosine = std::cos(M_PI / 6);
    const double sine = std::sin(M_PI / 6);
    // Where a place of the original, seen from its middle with y downwards, has gone.
    for (const NSPoint place : {NSMakePoint(0, 0), NSMakePoint(40, 0), NSMakePoint(-40, 20), NSMakePoint(30, -25)}) {
        const double x = middleX + place.x * cosine - place.y * sine;
        const double y = middleY + place.x * sine + place.y * cosine;
        const Pixel pixel = at(turned, NSInteger(x), NSInteger(y));
        EXPECT_NEAR(pixel.red, 50 + place.x, 1.5);
        EXPECT_NEAR(pixel.green, 30 + place.y, 1.5);
        EXPECT_EQ(pixel.alpha, 255);
    }
}

TEST(ImageRotation, coversAsMuchAsTheImage) {
    const auto turned = rotateWithAngle(numbered(60, 40), 37);
    double area = 0;
    for (NSInteger y = 0; y < pixelsHigh(turned); ++y) {
        for (NSInteger x = 0; x < pixelsWide(turned); ++x) {
            area += at(turned, x, y).alpha / 255.0;
        }
    }
    // The canvas is a whole number of pixels, so a little is stretched.
    EXPECT_NEAR(area, 60 * 40, 50);
}

TEST(ImageRotation, keepsTheDensity) {
    const auto turned = rotateWithAngle(numbered(8, 4, 2), 90);
    EXPECT_EQ(turned->size(), NSMakeSize(2, 4));
    EXPECT_EQ(pixelsWide(turned), 4);
    EXPECT_EQ(pixelsHigh(turned), 8);
    const auto uneven = empty(4, 4);
    uneven->addRepresentation(NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(4, 8));
    EXPECT_EQ(pixelsWide(rotateWithAngle(uneven, 90)), 8);
    EXPECT_EQ(pixelsHigh(rotateWithAngle(uneven, 90)), 4);
}

TEST(ImageRotation, takesAnyAngleAndSize) {
    EXPECT_FALSE(rotateWithAngle(nullptr, 30));
    for (const double angle : {double(NAN), double(INFINITY), -double(INFINITY)}) {
        const auto turned = rotateWithAngle(numbered(4, 4), angle);
        ASSERT_TRUE(turned);
        EXPECT_EQ(turned->size(), NSZeroSize);
        EXPECT_EQ(turned->representations()->count(), 0U);
    }
    const double huge = std::numeric_limits<double>::max();
    for (const NSSize size : {NSMakeSize(0, 0), NSMakeSize(-4, 4), NSMakeSize(huge, huge), NSMakeSize(NAN, 1)}) {
        const auto image = numbered(4, 4);
        image->setSize(size);
        EXPECT_TRUE(rotateWithAngle(image, 45));
        EXPECT_TRUE(rotateWithAngle(empty(size.width, size.height), 45));
    }
    EXPECT_TRUE(rotateWithAngle(numbered(4, 4), 1e300));
    EXPECT_FALSE(NSGraphicsContext::currentContext());
}

TEST(ImageRotation, ofMorePixelsThanABitmapHasIsEmpty) {
    const auto image = empty(20000, 20000);
    image->addRepresentation(NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(2, 2));
    image->bestRepresentation()->setSize({2, 2});
    const auto dense = empty(2, 2);
    dense->addRepresentation(NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(60000, 1));
    const auto turned = rotateWithAngle(dense, 45);
    expectSize(turned, std::sqrt(8), std::sqrt(8));
    EXPECT_EQ(turned->representations()->count(), 0U);
    EXPECT_EQ(rotateWithAngle(image, 45)->representations()->count(), 1U) << "it is the pixels that count";
    EXPECT_EQ(rotateWithAngle(dense, 90)->representations()->count(), 1U);
    EXPECT_EQ(pixelsHigh(rotateWithAngle(dense, 90)), 60000);
}

TEST(ImageHelpers, keepTheSpellingOfTheirNames) {
    const id image = empty(1, 1);
    EXPECT_TRUE(image->respondsToSelector("mirrorRotateInXAsix"_sel));
    EXPECT_FALSE(image->respondsToSelector("mirrorRotateInXAxis"_sel));
    EXPECT_TRUE(image->respondsToSelector("attributeString"_sel));
    EXPECT_FALSE(image->respondsToSelector("attributedString"_sel));
}

TEST(ImageHelpers, answerByName) {
    const id image = numbered(4, 2);
    EXPECT_EQ(send<Ref<NSImage>>(image, "rotateWithAngle:"_sel, 90.0)->size(), NSMakeSize(2, 4));
    EXPECT_TRUE(send<Ref<NSImage>>(image, "mirrorRotateInYAxis"_sel));
    EXPECT_TRUE(send<Ref<NSImage>>(image, "mirrorRotateInXAsix"_sel));
    EXPECT_EQ(send<id>(image, "imageWithTintColor:"_sel, NSNull::null()), image) << "a wrong kind counts as null";
}

} // namespace
} // namespace zr
