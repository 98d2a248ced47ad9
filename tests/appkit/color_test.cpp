#include <zrbasic/platform/appkit/color.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/set.h>
#include <zrbasic/platform/foundation/string.h>

#include "../foundation/checks.h"

#include <gtest/gtest.h>
#include <limits>
#include <thread>
#include <vector>

namespace zr {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

std::string text(NSColor* color) {
    return color ? color->description()->utf8() : "null";
}

std::string converted(NSColor* color, NSColorSpace* space) {
    return text(color->colorUsingColorSpace(space));
}

TEST(Color, holdsWhatItWasMadeOf) {
    const Ref<NSColor> color = NSColor::colorWithRed_green_blue_alpha(0.1, 0.2, 0.3, 0.4);
    EXPECT_EQ(color->redComponent(), 0.1);
    EXPECT_EQ(color->greenComponent(), 0.2);
    EXPECT_EQ(color->blueComponent(), 0.3);
    EXPECT_EQ(color->alphaComponent(), 0.4);
    EXPECT_EQ(color->numberOfComponents(), 4);
    EXPECT_EQ(color->colorSpace(), NSColorSpace::sRGBColorSpace());
}

TEST(Color, liesInTheSpaceOfItsMaker) {
    EXPECT_EQ(text(NSColor::colorWithSRGBRed_green_blue_alpha(1, 0.5, 0, 1)), "sRGB 1 0.5 0 1");
    EXPECT_EQ(text(NSColor::colorWithCalibratedRed_green_blue_alpha(1, 0.5, 0, 1)), "Generic RGB 1 0.5 0 1");
    EXPECT_EQ(text(NSColor::colorWithDeviceRed_green_blue_alpha(1, 0.5, 0, 1)), "Device RGB 1 0.5 0 1");
    EXPECT_EQ(text(NSColor::colorWithWhite_alpha(0.25, 0.5)), "Generic Gray Gamma 2.2 0.25 0.5");
    EXPECT_EQ(text(NSColor::colorWithDeviceCyan_magenta_yellow_black_alpha(0.1, 0.2, 0.3, 0.4, 0.5)),
              "Device CMYK 0.1 0.2 0.3 0.4 0.5");
}

TEST(Color, givesItsPartsAllAtOnce) {
    double red = 9;
    double blue = 9;
    double alpha = 9;
    NSColor::brownColor()->getRed_green_blue_alpha(&red, nullptr, &blue, &alpha);
    EXPECT_EQ(red, 0.6);
    EXPECT_EQ(blue, 0.2);
    EXPECT_EQ(alpha, 1.0);
    NSColor::brownColor()->getRed_green_blue_alpha(nullptr, nullptr, nullptr, nullptr);

    double white = 9;
    NSColor::grayColor()->getWhite_alpha(&white, nullptr);
    EXPECT_EQ(white, 0.5);
    NSColor::clearColor()->getWhite_alpha(nullptr, &alpha);
    EXPECT_EQ(alpha, 0.0);

    double numbers[5] = {9, 9, 9, 9, 9};
    NSColor::grayColor()->getComponents(numbers);
    EXPECT_EQ(std::vector<double>(numbers, numbers + 5), (std::vector<double>{0.5, 1, 9, 9, 9}));
    NSColor::colorWithDeviceCyan_magenta_yellow_black_alpha(0.1, 0.2, 0.3, 0.4, 0.5)->getComponents(numbers);
    EXPECT_EQ(std::vector<double>(numbers, numbers + 5), (std::vector<double>{0.1, 0.2, 0.3, 0.4, 0.5}));
    NSColor::grayColor()->getComponents(nullptr);
}

TEST(Color, ofInkHasTheFourInks) {
    const Ref<NSColor> ink = NSColor::colorWithDeviceCyan_magenta_yellow_black_alpha(0.1, 0.2, 0.3, 0.4, 0.5);
    EXPECT_EQ(ink->cyanComponent(), 0.1);
    EXPECT_EQ(ink->magentaComponent(), 0.2);
    EXPECT_EQ(ink->yellowComponent(), 0.3);
    EXPECT_EQ(ink->blackComponent(), 0.4);
    EXPECT_EQ(ink->alphaComponent(), 0.5);
    EXPECT_EQ(ink->numberOfComponents(), 5);
}

TEST(Color, raisesForPartsThatItDoesNotHave) {
    const Ref<NSColor> colors[] = {NSColor::blackColor(), NSColor::redColor(),
                                   NSColor::colorWithDeviceCyan_magenta_yellow_black_alpha(1, 0, 0, 0, 1)};
    struct Part {
        const char* label;
        double (NSColor::*read)() const;
        NSColorSpaceModel model;
    };
    const Part parts[] = {
        {"red", &NSColor::redComponent, NSColorSpaceModelRGB},
        {"green", &NSColor::greenComponent, NSColorSpaceModelRGB},
        {"blue", &NSColor::blueComponent, NSColorSpaceModelRGB},
        {"white", &NSColor::whiteComponent, NSColorSpaceModelGray},
        {"cyan", &NSColor::cyanComponent, NSColorSpaceModelCMYK},
        {"magenta", &NSColor::magentaComponent, NSColorSpaceModelCMYK},
        {"yellow", &NSColor::yellowComponent, NSColorSpaceModelCMYK},
        {"black", &NSColor::blackComponent, NSColorSpaceModelCMYK},
    };
    for (const Ref<NSColor>& color : colors) {
        for (const Part& part : parts) {
            SCOPED_TRACE(text(color) + ", " + part.label);
            const bool has = color->colorSpace()->colorSpaceModel() == part.model;
            EXPECT_EQ(test::raisedName([&] { (void)(color.get()->*part.read)(); }),
                      has ? "" : NSInvalidArgumentException);
        }
    }
    EXPECT_EQ(test::raised([] { (void)NSColor::blackColor()->redComponent(); }),
              "NSInvalidArgumentException: *** -[NSColor redComponent]: the color Generic Gray Gamma 2.2 0 1 has no "
              "such components, convert it first");
    double unread = 9;
    EXPECT_EQ(test::raisedName([&] { colors[0]->getRed_green_blue_alpha(&unread, &unread, &unread, &unread); }),
              NSInvalidArgumentException);
    EXPECT_EQ(test::raisedName([&] { colors[1]->getWhite_alpha(&unread, &unread); }), NSInvalidArgumentException);
    EXPECT_EQ(unread, 9.0);
}

TEST(Color, keepsNumbersBeyondTheRangeWhereTheSpaceIsExtended) {
    EXPECT_EQ(text(NSColor::colorWithRed_green_blue_alpha(-1, 2, infinity, 3)), "sRGB -1 2 inf 3");
    EXPECT_EQ(text(NSColor::colorWithWhite_alpha(1.5, -0.5)), "Generic Gray Gamma 2.2 1.5 -0.5");
    EXPECT_EQ(text(NSColor::colorWithCalibratedRed_green_blue_alpha(-1, 2, infinity, 3)), "Generic RGB 0 1 1 1");
    EXPECT_EQ(text(NSColor::colorWithDeviceRed_green_blue_alpha(0.5, 2, -infinity, -3)), "Device RGB 0.5 1 0 0");
    EXPECT_EQ(text(NSColor::colorWithDeviceCyan_magenta_yellow_black_alpha(2, -2, 0.5, 1, 2)),
              "Device CMYK 1 0 0.5 1 1");
    EXPECT_EQ(NSColor::redColor()->colorWithAlphaComponent(2)->alphaComponent(), 2.0);
}

TEST(Color, readsWhatIsNotANumberAsZero) {
    EXPECT_EQ(text(NSColor::colorWithRed_green_blue_alpha(notANumber, 1, notANumber, notANumber)), "sRGB 0 1 0 0");
    EXPECT_EQ(text(NSColor::colorWithDeviceRed_green_blue_alpha(notANumber, 1, 0, 1)), "Device RGB 0 1 0 1");
    EXPECT_EQ(NSColor::redColor()->colorWithAlphaComponent(notANumber)->alphaComponent(), 0.0);
}

TEST(Color, isMadeOfAsManyNumbersAsTheSpaceNeeds) {
    const double numbers[] = {0.1, 0.2, 0.3, 0.4, 0.5, 0.6};
    const auto made = [&numbers](NSColorSpace* space, NSInteger count) {
        return text(NSColor::colorWithColorSpace_components_count(space, numbers, count));
    };
    EXPECT_EQ(made(NSColorSpace::genericGrayColorSpace(), 2), "Generic Gray 0.1 0.2");
    EXPECT_EQ(made(NSColorSpace::sRGBColorSpace(), 4), "sRGB 0.1 0.2 0.3 0.4");
    EXPECT_EQ(made(NSColorSpace::genericCMYKColorSpace(), 5), "Generic CMYK 0.1 0.2 0.3 0.4 0.5");
    for (const NSInteger count : {std::numeric_limits<NSInteger>::min(), NSInteger{-1}, NSInteger{0}, NSInteger{3},
                                  NSInteger{5}, std::numeric_limits<NSInteger>::max()}) {
        SCOPED_TRACE(count);
        EXPECT_EQ(made(NSColorSpace::sRGBColorSpace(), count), "null");
    }
    EXPECT_EQ(made(nullptr, 4), "null");
    EXPECT_FALSE(NSColor::colorWithColorSpace_components_count(NSColorSpace::sRGBColorSpace(), nullptr, 4));
}

TEST(Color, hasStandardOnesThatAreTheSameObjectEveryTime) {
    struct Row {
        const char* maker;
        Ref<NSColor> (*make)();
        const char* color;
    };
    const Row rows[] = {
        {"blackColor", &NSColor::blackColor, "Generic Gray Gamma 2.2 0 1"},
        {"darkGrayColor", &NSColor::darkGrayColor, "Generic Gray Gamma 2.2 0.333333 1"},
        {"lightGrayColor", &NSColor::lightGrayColor, "Generic Gray Gamma 2.2 0.666667 1"},
        {"whiteColor", &NSColor::whiteColor, "Generic Gray Gamma 2.2 1 1"},
        {"grayColor", &NSColor::grayColor, "Generic Gray Gamma 2.2 0.5 1"},
        {"clearColor", &NSColor::clearColor, "Generic Gray Gamma 2.2 0 0"},
        {"redColor", &NSColor::redColor, "sRGB 1 0 0 1"},
        {"greenColor", &NSColor::greenColor, "sRGB 0 1 0 1"},
        {"blueColor", &NSColor::blueColor, "sRGB 0 0 1 1"},
        {"cyanColor", &NSColor::cyanColor, "sRGB 0 1 1 1"},
        {"yellowColor", &NSColor::yellowColor, "sRGB 1 1 0 1"},
        {"magentaColor", &NSColor::magentaColor, "sRGB 1 0 1 1"},
        {"orangeColor", &NSColor::orangeColor, "sRGB 1 0.5 0 1"},
        {"purpleColor", &NSColor::purpleColor, "sRGB 0.5 0 0.5 1"},
        {"brownColor", &NSColor::brownColor, "sRGB 0.6 0.4 0.2 1"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.maker);
        EXPECT_EQ(text(row.make()), row.color);
        EXPECT_EQ(row.make(), row.make());
        EXPECT_EQ(send<Ref<NSColor>>(NSColor::classObject(), sel_registerName(row.maker)), row.make());
    }
    EXPECT_EQ(NSColor::lightGrayColor()->whiteComponent(), 2.0 / 3.0);
}

TEST(Color, takesAnotherAlpha) {
    const Ref<NSColor> red = NSColor::redColor();
    const Ref<NSColor> half = red->colorWithAlphaComponent(0.5);
    EXPECT_EQ(text(half), "sRGB 1 0 0 0.5");
    EXPECT_EQ(text(red), "sRGB 1 0 0 1");
    EXPECT_EQ(red->colorWithAlphaComponent(1), red);
    EXPECT_EQ(text(NSColor::blackColor()->colorWithAlphaComponent(0)), text(NSColor::clearColor()));
    EXPECT_EQ(text(NSColor::colorWithDeviceCyan_magenta_yellow_black_alpha(1, 0, 0, 0, 1)->colorWithAlphaComponent(9)),
              "Device CMYK 1 0 0 0 1");
}

TEST(Color, isConvertedByItsNumbers) {
    const Ref<NSColorSpace> rgb = NSColorSpace::sRGBColorSpace();
    const Ref<NSColorSpace> gray = NSColorSpace::genericGrayColorSpace();
    const Ref<NSColorSpace> ink = NSColorSpace::deviceCMYKColorSpace();
    EXPECT_EQ(converted(NSColor::colorWithWhite_alpha(0.25, 0.5), rgb), "sRGB 0.25 0.25 0.25 0.5");
    EXPECT_EQ(converted(NSColor::colorWithWhite_alpha(0.25, 0.5), ink), "Device CMYK 0 0 0 0.75 0.5");
    EXPECT_EQ(converted(NSColor::colorWithWhite_alpha(0.25, 0.5), gray), "Generic Gray 0.25 0.5");
    EXPECT_EQ(converted(NSColor::colorWithRed_green_blue_alpha(1, 0, 0, 0.5), gray), "Generic Gray 0.2126 0.5");
    EXPECT_EQ(converted(NSColor::colorWithRed_green_blue_alpha(0, 1, 0, 1), gray), "Generic Gray 0.7152 1");
    EXPECT_EQ(converted(NSColor::colorWithRed_green_blue_alpha(0, 0, 1, 1), gray), "Generic Gray 0.0722 1");
    EXPECT_EQ(converted(NSColor::colorWithRed_green_blue_alpha(1, 0.5, 0, 1), ink), "Device CMYK 0 0.5 1 0 1");
    EXPECT_EQ(converted(NSColor::colorWithRed_green_blue_alpha(0.5, 0.25, 0, 1), ink), "Device CMYK 0 0.5 1 0.5 1");
    const Ref<NSColor> inks = NSColor::colorWithDeviceCyan_magenta_yellow_black_alpha(0, 0.5, 1, 0.5, 0.5);
    EXPECT_EQ(converted(inks, rgb), "sRGB 0.5 0.25 0 0.5");
    EXPECT_EQ(converted(inks, gray), "Generic Gray 0.2851 0.5");
}

TEST(Color, isConvertedAtTheEdges) {
    const Ref<NSColorSpace> ink = NSColorSpace::deviceCMYKColorSpace();
    EXPECT_EQ(converted(NSColor::colorWithRed_green_blue_alpha(0, 0, 0, 1), ink), "Device CMYK 0 0 0 1 1");
    EXPECT_EQ(converted(NSColor::colorWithRed_green_blue_alpha(2, -1, 1, 1), ink), "Device CMYK 0 1 0 0 1");
    EXPECT_EQ(converted(NSColor::colorWithRed_green_blue_alpha(infinity, -infinity, 0, 1),
                        NSColorSpace::genericGrayColorSpace()),
              "Generic Gray 0 1");
    EXPECT_EQ(converted(NSColor::colorWithRed_green_blue_alpha(2, -1, 1, 3), NSColorSpace::genericRGBColorSpace()),
              "Generic RGB 1 0 1 1");
    EXPECT_EQ(converted(NSColor::redColor(), nullptr), "null");
    EXPECT_EQ(NSColor::redColor()->colorUsingColorSpace(NSColorSpace::sRGBColorSpace()), NSColor::redColor());
}

TEST(Color, equalsAColorOfTheSameSpaceAndNumbers) {
    const Ref<NSColor> red = NSColor::colorWithRed_green_blue_alpha(1, 0, 0, 1);
    EXPECT_TRUE(red->isEqual(NSColor::redColor()));
    EXPECT_EQ(red->hash(), NSColor::redColor()->hash());
    EXPECT_FALSE(red->isEqual(NSColor::colorWithRed_green_blue_alpha(1, 0, 0, 0.5)));
    EXPECT_FALSE(red->isEqual(NSColor::colorWithDeviceRed_green_blue_alpha(1, 0, 0, 1)));
    EXPECT_FALSE(NSColor::whiteColor()->isEqual(NSColor::colorWithRed_green_blue_alpha(1, 1, 1, 1)));
    EXPECT_FALSE(red->isEqual("sRGB 1 0 0 1"_ns));
    EXPECT_FALSE(red->isEqual(NSNull::null()));
    EXPECT_FALSE(red->isEqual(nullptr));
    const Ref<NSColor> negativeZero = NSColor::colorWithRed_green_blue_alpha(1, -0.0, 0, 1);
    EXPECT_TRUE(red->isEqual(negativeZero));
    EXPECT_EQ(red->hash(), negativeZero->hash());
    EXPECT_TRUE(NSSet::setWithObject(red)->containsObject(NSColor::redColor()));
}

TEST(Color, isItsOwnCopy) {
    EXPECT_EQ(NSColor::redColor()->copy(), NSColor::redColor());
    EXPECT_EQ(test::raisedName([] { (void)NSColor::redColor()->mutableCopy(); }), NSInvalidArgumentException);
}

TEST(Color, madeOfNothingIsClear) {
    const Ref<NSColor> color = make<NSColor>();
    EXPECT_TRUE(color->isEqual(NSColor::clearColor()));
    EXPECT_EQ(color->alphaComponent(), 0.0);
}

TEST(Color, answersMessages) {
    const Ref<NSColor> red = NSColor::redColor();
    EXPECT_EQ(send<double>(red, "redComponent"_sel), 1.0);
    EXPECT_EQ(send<NSInteger>(red, "numberOfComponents"_sel), 4);
    EXPECT_EQ(text(send<Ref<NSColor>>(red, "colorWithAlphaComponent:"_sel, 0.5)), "sRGB 1 0 0 0.5");
    EXPECT_EQ(text(send<Ref<NSColor>>(red, "colorUsingColorSpace:"_sel, NSNull::null())), "null");
    EXPECT_EQ(
        text(send<Ref<NSColor>>(NSColor::classObject(), "colorWithRed:green:blue:alpha:"_sel, 1.0, 0.0, 0.0, 1.0)),
        "sRGB 1 0 0 1");
    EXPECT_EQ(test::raisedName([] { send<double>(NSColor::whiteColor(), "redComponent"_sel); }),
              NSInvalidArgumentException);
}

TEST(Color, mayBeUsedFromManyThreads) {
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([] {
            for (int k = 0; k < 500; ++k) {
                const Ref<NSColor> gray =
                    NSColor::orangeColor()->colorUsingColorSpace(NSColorSpace::genericGamma22GrayColorSpace());
                EXPECT_TRUE(gray->isEqual(NSColor::orangeColor()->colorUsingColorSpace(gray->colorSpace())));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

} // namespace
} // namespace zr
