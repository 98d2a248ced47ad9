#include "pictures.h"

#include <QColor>

namespace zr::test {
namespace {

QImage plain(int width, int height, const QColor& color) {
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(color);
    return image;
}

TEST(Pictures, equalOnesDoNotDiffer) {
    const PictureDifference none = difference(plain(4, 4, Qt::red), plain(4, 4, Qt::red));
    EXPECT_FALSE(none.isOfAnotherSize);
    EXPECT_EQ(none.pixels, 0);
    EXPECT_EQ(none.largest, 0);
}

TEST(Pictures, onePixelOfAnotherColourIsFound) {
    QImage other = plain(4, 4, Qt::red);
    other.setPixelColor(2, 3, Qt::black);
    const PictureDifference one = difference(plain(4, 4, Qt::red), other);
    EXPECT_EQ(one.pixels, 1);
    EXPECT_EQ(one.largest, 255);
}

TEST(Pictures, aShadeIsNoDifferenceButIsMeasured) {
    const PictureDifference shade = difference(plain(4, 4, QColor(100, 100, 100)), plain(4, 4, QColor(110, 100, 100)));
    EXPECT_EQ(shade.pixels, 0);
    EXPECT_EQ(shade.largest, 10);
}

TEST(Pictures, anotherSizeIsADifference) {
    EXPECT_TRUE(difference(plain(4, 4, Qt::red), plain(4, 5, Qt::red)).isOfAnotherSize);
}

TEST(Pictures, aNameWithoutAReferenceFails) {
    if (qEnvironmentVariableIsSet("ZR_UPDATE_REFERENCES")) {
        return;
    }
    EXPECT_FALSE(looksLikeReference(plain(4, 4, Qt::red), "there/is/no/such/picture"));
}

} // namespace
} // namespace zr::test
