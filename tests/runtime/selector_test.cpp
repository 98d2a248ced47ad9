#include <zrbasic/platform/foundation/runtime_names.h>
#include <zrbasic/platform/runtime/selector.h>

#include <gtest/gtest.h>

namespace zr {
namespace {

TEST(Selector, oneNameGivesOneSelectorWhereverItIsMade) {
    const std::string built = std::string("set") + "Price:";
    EXPECT_EQ(sel_registerName(built), "setPrice:"_sel);
    EXPECT_EQ(NSSelectorFromString("setPrice:"_ns), "setPrice:"_sel);
    EXPECT_NE("setPrice:"_sel, "setPrice"_sel);
    EXPECT_EQ("setPrice:"_sel.name(), "setPrice:");
}

TEST(Selector, nullAndEmptyNamesGiveTheNullSelector) {
    EXPECT_FALSE(SEL());
    EXPECT_FALSE(sel_registerName(""));
    EXPECT_FALSE(NSSelectorFromString(nullptr));
    EXPECT_FALSE(NSSelectorFromString(""_ns));
    EXPECT_EQ(SEL().name(), "");
    EXPECT_STREQ(sel_getName(SEL()), "<null selector>");
    EXPECT_EQ(NSStringFromSelector(SEL()), nullptr);
}

TEST(Selector, namesOfAnyLengthAndLetterAreKept) {
    const std::string huge(100000, 'x');
    EXPECT_EQ(sel_registerName(huge).name(), huge);
    EXPECT_EQ(sel_registerName("größe:").name(), "größe:");
    EXPECT_EQ(NSStringFromSelector(sel_registerName("größe:"))->utf8(), "größe:");
}

} // namespace
} // namespace zr
