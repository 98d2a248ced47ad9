#include "field_testing.h"
#include "pictures.h"

#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/platform/foundation/mutable_attributed_string.h>
#include <zrbasic/ui/image.h>
#include <zrbasic/ui/image_attachment.h>
#include <zrbasic/ui/label.h>

#include <cmath>

namespace zr::test {
namespace {

Ref<NSImage> redImage(double wide, double high) {
    Ref<NSImage> image = make<NSImage>(&NSImage::initWithSize, NSMakeSize(wide, high));
    const Ref<NSBitmapImageRep> bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(6, 4);
    for (NSInteger i = 0; i < 24; ++i) {
        bitmap->setPixel_atX_y({255, 0, 0, 255}, i % 6, i / 6);
    }
    image->addRepresentation(bitmap);
    return image;
}

/// A label on the screen that says "H", an image and "H".
class ImageInLabel : public FieldWindow {
  protected:
    void SetUp() override {
        label->setFrame({{20, 60}, {200, 60}});
        window->contentView()->addSubview(label);
        show();
    }

    void say(NSImage* image, NSPoint offset) {
        const auto text = make<NSMutableAttributedString>();
        text->append(u"H ", nullptr);
        text->appendAttributedString(attributeStringWithOffsetCreator(image, [offset] { return offset; }));
        text->append(u" H", nullptr);
        label->setAttributedStringValue(text);
    }

    /// Where in the picture of the label something of that kind is.
    template <class Pixel>
    [[nodiscard]] QRect place(const Pixel& isIt, double scale = 1) const {
        const QImage all = pictureOf(*qt::widget(window.get()), scale);
        QRect found;
        for (int y = 0; y < all.height(); ++y) {
            for (int x = 0; x < all.width(); ++x) {
                if (isIt(all.pixelColor(x, y))) {
                    found |= QRect(x, y, 1, 1);
                }
            }
        }
        return found;
    }
    [[nodiscard]] QRect picture(double scale = 1) const {
        return place([](const QColor& color) { return color.red() > 200 && color.green() < 60 && color.alpha() > 200; },
                     scale);
    }
    [[nodiscard]] QRect letters(double scale = 1) const {
        // Thin strokes cover their pixels in part only.
        return place([](const QColor& color) { return color.lightness() < 60 && color.alpha() > 90; }, scale);
    }

    Ref<ZRXLabel> label = make<ZRXLabel>(&ZRXLabel::initWithStyle, NSUInteger(0));
};

TEST_F(ImageInLabel, standsOnTheLineOfTheLettersMovedByItsOffset) {
    const Ref<NSImage> image = redImage(6, 4);
    say(image, NSZeroPoint);
    const QRect plain = picture();
    ASSERT_EQ(plain.size(), QSize(6, 4));
    EXPECT_EQ(plain.bottom(), letters().bottom());
    EXPECT_LT(letters().left(), plain.left());
    EXPECT_GT(letters().right(), plain.right()) << "it stands between them";
    for (const NSPoint offset : {NSMakePoint(0, 5), NSMakePoint(0, -3), NSMakePoint(2, 1), NSMakePoint(-2, 0)}) {
        SCOPED_TRACE(testing::Message() << offset.x << ", " << offset.y);
        say(image, offset);
        EXPECT_EQ(picture().size(), QSize(6, 4));
        EXPECT_EQ(picture().left(), plain.left() + int(offset.x));
        EXPECT_EQ(letters().bottom() - picture().bottom(), int(offset.y)) << "upwards";
    }
}

TEST_F(ImageInLabel, isAsLargeAsItsSizeInPoints) {
    say(redImage(12, 8), NSZeroPoint);
    EXPECT_NEAR(picture().width(), 12, 1);
    EXPECT_NEAR(picture().height(), 8, 1);
    EXPECT_NEAR(picture(2).width(), 24, 2);
    EXPECT_NEAR(picture(2).bottom(), letters(2).bottom(), 1);
    say(rotateWithAngle(redImage(6, 4), 90), NSZeroPoint);
    EXPECT_EQ(picture().size(), QSize(4, 6));
}

TEST_F(ImageInLabel, showsWhatBecomesOfTheImage) {
    const Ref<NSImage> image = redImage(6, 4);
    say(image, NSZeroPoint);
    ASSERT_FALSE(picture().isNull());
    (void)imageWithTintColor(image, NSColor::blueColor());
    label->setNeedsDisplay(true);
    EXPECT_TRUE(picture().isNull());
    EXPECT_FALSE(
        place([](const QColor& color) { return color.blue() > color.red() + 50 && color.alpha() > 200; }).isNull());
}

TEST_F(ImageInLabel, leavesTheLettersWhateverItsNumbers) {
    const double huge = 1e300;
    for (const NSPoint offset : {NSMakePoint(NAN, 0), NSMakePoint(0, NAN), NSMakePoint(huge, 0), NSMakePoint(0, -huge),
                                 NSMakePoint(INFINITY, -INFINITY)}) {
        say(redImage(6, 4), offset);
        (void)picture();
    }
    for (const NSSize size : {NSMakeSize(0, 0), NSMakeSize(-6, 4), NSMakeSize(NAN, 4), NSMakeSize(6, NAN)}) {
        SCOPED_TRACE(testing::Message() << size.width << ", " << size.height);
        say(redImage(size.width, size.height), NSZeroPoint);
        EXPECT_FALSE(letters().isNull());
    }
    say(redImage(huge, huge), NSZeroPoint);
    (void)picture();
    say(make<NSImage>(), NSZeroPoint);
    EXPECT_TRUE(picture().isNull());
    EXPECT_FALSE(letters().isNull());
}

} // namespace
} // namespace zr::test
