#include <zrbasic/platform/appkit/image.h>

#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/foundation/null.h>

#include <gtest/gtest.h>
#include <limits>

namespace zr {
namespace {

Ref<NSBitmapImageRep> bitmap(NSInteger wide, NSInteger high) {
    return NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(wide, high);
}

TEST(Image, hasTheSizeItWasMadeWith) {
    const Ref<NSImage> image = make<NSImage>(&NSImage::initWithSize, NSMakeSize(100, 50.5));
    EXPECT_EQ(image->size(), NSMakeSize(100, 50.5));
    EXPECT_EQ(image->representations()->count(), 0U);
    EXPECT_FALSE(image->bestRepresentation());
    image->setSize(NSMakeSize(1, 2));
    EXPECT_EQ(image->size(), NSMakeSize(1, 2));
    EXPECT_EQ(make<NSImage>()->size(), NSZeroSize);
}

TEST(Image, takesAnySize) {
    const double huge = std::numeric_limits<double>::max();
    for (const NSSize size : {NSMakeSize(0, 20), NSMakeSize(-1, -1), NSMakeSize(huge, huge)}) {
        const Ref<NSImage> image = make<NSImage>(&NSImage::initWithSize, size);
        EXPECT_EQ(image->size(), size);
        EXPECT_EQ(cast<NSImage>(image->copy())->size(), size);
    }
}

TEST(Image, keepsItsBitmapsInOrder) {
    const Ref<NSImage> image = make<NSImage>(&NSImage::initWithSize, NSMakeSize(2, 1));
    const Ref<NSBitmapImageRep> plain = bitmap(2, 1);
    const Ref<NSBitmapImageRep> dense = bitmap(4, 2);
    image->addRepresentation(plain);
    const Ref<NSArray> before = image->representations();
    image->addRepresentation(dense);
    EXPECT_TRUE(image->representations()->isEqual(array({plain, dense})));
    EXPECT_EQ(before->count(), 1U);
    image->addRepresentation(plain);
    image->addRepresentation(nullptr);
    EXPECT_TRUE(image->representations()->isEqual(array({plain, dense})));
    image->removeRepresentation(plain);
    image->removeRepresentation(plain);
    image->removeRepresentation(nullptr);
    EXPECT_TRUE(image->representations()->isEqual(array({dense})));
    EXPECT_EQ(image->size(), NSMakeSize(2, 1));
}

TEST(Image, prefersTheBitmapWithTheMostPixels) {
    const Ref<NSImage> image = make<NSImage>(&NSImage::initWithSize, NSMakeSize(2, 1));
    const Ref<NSBitmapImageRep> dense = bitmap(4, 2);
    image->addRepresentation(bitmap(2, 1));
    image->addRepresentation(dense);
    image->addRepresentation(bitmap(2, 4));
    image->addRepresentation(bitmap(7, 1));
    EXPECT_EQ(image->bestRepresentation(), dense);
}

TEST(Image, copiesItsBitmaps) {
    const Ref<NSImage> image = make<NSImage>(&NSImage::initWithSize, NSMakeSize(2, 1));
    const Ref<NSBitmapImageRep> own = bitmap(2, 1);
    own->setPixel_atX_y({1, 2, 3, 4}, 1, 0);
    image->addRepresentation(own);
    const Ref<NSImage> copy(cast<NSImage>(image->copy()));
    own->setPixel_atX_y({}, 1, 0);
    image->setSize(NSZeroSize);
    EXPECT_EQ(copy->size(), NSMakeSize(2, 1));
    ASSERT_EQ(copy->representations()->count(), 1U);
    EXPECT_NE(copy->bestRepresentation(), own);
    EXPECT_EQ(copy->bestRepresentation()->pixelAtX_y(1, 0), (NSBitmapImageRep::Pixel{1, 2, 3, 4}));
}

TEST(Image, answersMessages) {
    const Ref<NSImage> image = make<NSImage>();
    send(image, "setSize:"_sel, NSMakeSize(3, 4));
    EXPECT_EQ(send<NSSize>(image, "size"_sel), NSMakeSize(3, 4));
    const Ref<NSBitmapImageRep> one = bitmap(1, 1);
    send(image, "addRepresentation:"_sel, one);
    send(image, "addRepresentation:"_sel, NSNull::null());
    EXPECT_TRUE(send<Ref<NSArray>>(image, "representations"_sel)->isEqual(array({one})));
    send(image, "removeRepresentation:"_sel, one);
    EXPECT_EQ(image->representations()->count(), 0U);
}

} // namespace
} // namespace zr
