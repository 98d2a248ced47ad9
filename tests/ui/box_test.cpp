#include <zrbasic/ui/box.h>

#include "../appkit/canvas_testing.h"

namespace zr {
namespace {

TEST(PlainBox, showsNothingOfItself) {
    const Ref<ZRXBox> box = make<ZRXBox>(&ZRXBox::initWithFrame, NSMakeRect(0, 0, 100, 50));
    EXPECT_EQ(box->boxType(), 4u);
    EXPECT_TRUE(box->fillColor()->isEqual(NSColor::clearColor()));
    EXPECT_EQ(box->borderWidth(), 0);
    EXPECT_EQ(box->cornerRadius(), 0);
    EXPECT_EQ(test::drawn(box).log, "fill round 0 0 0,0 100x50 clear\n");
}

TEST(PlainBox, theClickThatActivatesTheWindowCounts) {
    const Ref<ZRXBox> box = make<ZRXBox>(&ZRXBox::initWithFrame, NSMakeRect(0, 0, 100, 50));
    EXPECT_TRUE(box->acceptsFirstMouse(nullptr));
    EXPECT_FALSE(make<NSBox>()->acceptsFirstMouse(nullptr));
}

} // namespace
} // namespace zr
