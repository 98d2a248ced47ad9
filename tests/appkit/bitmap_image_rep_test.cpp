#include <zrbasic/platform/appkit/bitmap_image_rep.h>

#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <algorithm>
#include <limits>

namespace zr {
namespace {

using Pixel = NSBitmapImageRep::Pixel;

constexpr NSInteger most = std::numeric_limits<NSInteger>::max();
constexpr NSInteger least = std::numeric_limits<NSInteger>::min();

std::string colorAt(NSBitmapImageRep* bitmap, NSInteger x, NSInteger y) {
    const Ref<NSColor> color = bitmap->colorAtX_y(x, y);
    return color ? color->description()->utf8() : "null";
}

TEST(Bitmap, isTransparentAtFirst) {
    const Ref<NSBitmapImageRep> bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(3, 2);
    EXPECT_EQ(bitmap->pixelsWide(), 3);
    EXPECT_EQ(bitmap->pixelsHigh(), 2);
    EXPECT_EQ(bitmap->bytesPerRow(), 12);
    EXPECT_EQ(bitmap->size(), NSMakeSize(3, 2));
    ASSERT_EQ(bitmap->bytes().size(), 24U);
    EXPECT_TRUE(
        std::all_of(bitmap->bytes().begin(), bitmap->bytes().end(), [](std::uint8_t byte) { return byte == 0; }));
    EXPECT_EQ(colorAt(bitmap, 2, 1), "sRGB 0 0 0 0");
}

TEST(Bitmap, hasLimits) {
    struct Row {
        NSInteger wide;
        NSInteger high;
    };
    const Row bad[] = {{0, 1},    {1, 0},       {-1, 1},    {1, -1},    {least, 1},     {1, least},    {most, 1},
                       {1, most}, {most, most}, {65536, 1}, {1, 65536}, {65535, 65535}, {16384, 16385}};
    for (const Row& row : bad) {
        SCOPED_TRACE(std::to_string(row.wide) + " by " + std::to_string(row.high));
        EXPECT_FALSE(NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(row.wide, row.high));
    }
    EXPECT_TRUE(NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(1, 1));
    EXPECT_TRUE(NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(65535, 1));
    EXPECT_TRUE(NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(1, 65535));
}

TEST(Bitmap, keepsPixelsAsTheyAre) {
    const Ref<NSBitmapImageRep> bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(3, 2);
    const Pixel pixel{1, 2, 3, 4};
    bitmap->setPixel_atX_y(pixel, 2, 1);
    EXPECT_EQ(bitmap->pixelAtX_y(2, 1), pixel);
    EXPECT_EQ(bitmap->pixelAtX_y(1, 1), Pixel{});
    const auto bytes = bitmap->bytes();
    // The last pixel, as the rows run from the top down.
    EXPECT_EQ(std::vector<int>(bytes.end() - 4, bytes.end()), (std::vector<int>{1, 2, 3, 4}));
    bytes[0] = 200;
    EXPECT_EQ(bitmap->pixelAtX_y(0, 0), (Pixel{200, 0, 0, 0}));
}

TEST(Bitmap, hasNothingOutside) {
    const Ref<NSBitmapImageRep> bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(3, 2);
    const NSInteger places[][2] = {{-1, 0},      {0, -1},        {3, 0},    {0, 2},
                                   {most, most}, {least, least}, {most, 0}, {0, least}};
    for (const auto& place : places) {
        SCOPED_TRACE(std::to_string(place[0]) + ", " + std::to_string(place[1]));
        bitmap->setPixel_atX_y({9, 9, 9, 9}, place[0], place[1]);
        bitmap->setColor_atX_y(NSColor::redColor(), place[0], place[1]);
        EXPECT_EQ(bitmap->pixelAtX_y(place[0], place[1]), Pixel{});
        EXPECT_EQ(colorAt(bitmap, place[0], place[1]), "null");
    }
    const auto bytes = bitmap->bytes();
    EXPECT_TRUE(std::all_of(bytes.begin(), bytes.end(), [](std::uint8_t byte) { return byte == 0; }));
}

TEST(Bitmap, multipliesColorsByTheirAlpha) {
    const Ref<NSBitmapImageRep> bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(1, 1);
    struct Row {
        Ref<NSColor> color;
        Pixel pixel;
        const char* readBack;
    };
    const Row rows[] = {
        {NSColor::redColor(), {255, 0, 0, 255}, "sRGB 1 0 0 1"},
        {NSColor::redColor()->colorWithAlphaComponent(0.5), {128, 0, 0, 128}, "sRGB 1 0 0 0.501961"},
        {NSColor::grayColor(), {128, 128, 128, 255}, "sRGB 0.501961 0.501961 0.501961 1"},
        {NSColor::clearColor(), {0, 0, 0, 0}, "sRGB 0 0 0 0"},
        {NSColor::colorWithDeviceCyan_magenta_yellow_black_alpha(0, 1, 1, 0, 1), {255, 0, 0, 255}, "sRGB 1 0 0 1"},
        {NSColor::colorWithRed_green_blue_alpha(7, -7, 0.2, 7), {255, 0, 51, 255}, "sRGB 1 0 0.2 1"},
        {NSColor::colorWithRed_green_blue_alpha(1, 1, 1, -1), {0, 0, 0, 0}, "sRGB 0 0 0 0"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.color->description()->utf8());
        bitmap->setColor_atX_y(row.color, 0, 0);
        EXPECT_EQ(bitmap->pixelAtX_y(0, 0), row.pixel);
        EXPECT_EQ(colorAt(bitmap, 0, 0), row.readBack);
    }
    bitmap->setColor_atX_y(NSColor::redColor(), 0, 0);
    bitmap->setColor_atX_y(nullptr, 0, 0);
    send(bitmap, "setColor:atX:y:"_sel, NSNull::null(), 0, 0);
    EXPECT_EQ(bitmap->pixelAtX_y(0, 0), (Pixel{255, 0, 0, 255}));
}

TEST(Bitmap, readsBytesThatExceedTheirAlphaAsFullStrength) {
    const Ref<NSBitmapImageRep> bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(1, 1);
    bitmap->setPixel_atX_y({255, 128, 64, 128}, 0, 0);
    EXPECT_EQ(colorAt(bitmap, 0, 0), "sRGB 1 1 0.5 0.501961");
    bitmap->setPixel_atX_y({255, 128, 64, 0}, 0, 0);
    EXPECT_EQ(colorAt(bitmap, 0, 0), "sRGB 0 0 0 0");
}

TEST(Bitmap, copiesItsPixels) {
    const Ref<NSBitmapImageRep> bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(3, 2);
    bitmap->setPixel_atX_y({1, 2, 3, 4}, 1, 1);
    bitmap->setSize(NSMakeSize(1.5, 1));
    const Ref<NSBitmapImageRep> copy(cast<NSBitmapImageRep>(bitmap->copy()));
    bitmap->setPixel_atX_y({}, 1, 1);
    ASSERT_TRUE(copy);
    EXPECT_NE(copy, bitmap);
    EXPECT_EQ(copy->pixelAtX_y(1, 1), (Pixel{1, 2, 3, 4}));
    EXPECT_EQ(copy->size(), NSMakeSize(1.5, 1));
    EXPECT_EQ(copy->pixelsWide(), 3);
    EXPECT_FALSE(copy->isEqual(bitmap));
}

TEST(Bitmap, madeOfNothingHasNoPixels) {
    const Ref<NSBitmapImageRep> bitmap = make<NSBitmapImageRep>();
    EXPECT_EQ(bitmap->pixelsWide(), 0);
    EXPECT_EQ(bitmap->bytes().size(), 0U);
    bitmap->setColor_atX_y(NSColor::redColor(), 0, 0);
    EXPECT_EQ(colorAt(bitmap, 0, 0), "null");
    EXPECT_EQ(cast<NSBitmapImageRep>(bitmap->copy())->pixelsHigh(), 0);
}

TEST(Bitmap, answersMessages) {
    const Ref<NSBitmapImageRep> bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(3, 2);
    EXPECT_EQ(send<NSInteger>(bitmap, "pixelsWide"_sel), 3);
    EXPECT_EQ(send<NSInteger>(bitmap, "pixelsHigh"_sel), 2);
    send(bitmap, "setColor:atX:y:"_sel, NSColor::redColor(), 1, 1);
    EXPECT_TRUE(send<Ref<NSColor>>(bitmap, "colorAtX:y:"_sel, 1, 1)->isEqual(NSColor::redColor()));
    send(bitmap, "setSize:"_sel, NSMakeSize(6, 4));
    EXPECT_EQ(bitmap->size(), NSMakeSize(6, 4));
}

RC_GTEST_PROP(Bitmap, givesBackEveryOpaqueColor, (std::uint8_t red, std::uint8_t green, std::uint8_t blue)) {
    const Ref<NSBitmapImageRep> bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(1, 1);
    const Ref<NSColor> color = NSColor::colorWithRed_green_blue_alpha(red / 255.0, green / 255.0, blue / 255.0, 1);
    bitmap->setColor_atX_y(color, 0, 0);
    RC_ASSERT(bitmap->colorAtX_y(0, 0)->isEqual(color));
}

} // namespace
} // namespace zr
