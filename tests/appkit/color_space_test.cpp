#include <zrbasic/platform/appkit/color_space.h>

#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/message.h>

#include <gtest/gtest.h>
#include <set>

namespace zr {
namespace {

struct Row {
    const char* maker;
    Ref<NSColorSpace> (*make)();
    NSColorSpaceModel model;
    NSInteger components;
    bool extended;
};

const Row rows[] = {
    {"sRGBColorSpace", &NSColorSpace::sRGBColorSpace, NSColorSpaceModelRGB, 3, true},
    {"genericRGBColorSpace", &NSColorSpace::genericRGBColorSpace, NSColorSpaceModelRGB, 3, false},
    {"deviceRGBColorSpace", &NSColorSpace::deviceRGBColorSpace, NSColorSpaceModelRGB, 3, false},
    {"genericGamma22GrayColorSpace", &NSColorSpace::genericGamma22GrayColorSpace, NSColorSpaceModelGray, 1, true},
    {"genericGrayColorSpace", &NSColorSpace::genericGrayColorSpace, NSColorSpaceModelGray, 1, false},
    {"deviceGrayColorSpace", &NSColorSpace::deviceGrayColorSpace, NSColorSpaceModelGray, 1, false},
    {"genericCMYKColorSpace", &NSColorSpace::genericCMYKColorSpace, NSColorSpaceModelCMYK, 4, false},
    {"deviceCMYKColorSpace", &NSColorSpace::deviceCMYKColorSpace, NSColorSpaceModelCMYK, 4, false},
};

TEST(ColorSpace, saysWhatItsComponentsAre) {
    for (const Row& row : rows) {
        SCOPED_TRACE(row.maker);
        const Ref<NSColorSpace> space = row.make();
        EXPECT_EQ(space->colorSpaceModel(), row.model);
        EXPECT_EQ(space->numberOfColorComponents(), row.components);
        EXPECT_EQ(space->isExtended(), row.extended);
    }
}

TEST(ColorSpace, isTheSameObjectEveryTime) {
    std::set<const NSColorSpace*> spaces;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.maker);
        EXPECT_EQ(row.make(), row.make());
        EXPECT_EQ(row.make()->copy(), row.make());
        EXPECT_EQ(send<Ref<NSColorSpace>>(NSColorSpace::classObject(), sel_registerName(row.maker)), row.make());
        EXPECT_TRUE(spaces.insert(row.make().get()).second);
    }
}

TEST(ColorSpace, hasANameOfItsOwn) {
    std::set<std::string> names;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.maker);
        EXPECT_TRUE(names.insert(row.make()->localizedName()->utf8()).second);
        EXPECT_TRUE(row.make()->description()->isEqual(row.make()->localizedName()));
    }
    EXPECT_EQ(names.count(""), 0U);
}

TEST(ColorSpace, equalsNothingButItself) {
    const Ref<NSColorSpace> space = NSColorSpace::sRGBColorSpace();
    EXPECT_TRUE(space->isEqual(NSColorSpace::sRGBColorSpace()));
    EXPECT_FALSE(space->isEqual(NSColorSpace::genericRGBColorSpace()));
    EXPECT_FALSE(space->isEqual("sRGB"_ns));
    EXPECT_FALSE(space->isEqual(nullptr));
}

} // namespace
} // namespace zr
