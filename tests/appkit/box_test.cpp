#include <zrbasic/platform/appkit/box.h>

#include "canvas_testing.h"

#include <limits>

namespace zr {
namespace {

using namespace test;

Ref<NSBox> boxOf(double width, double height) {
    return make<NSBox>(&NSBox::initWithFrame, NSMakeRect(10, 20, width, height));
}

Ref<NSBox> customBox() {
    const Ref<NSBox> box = boxOf(100, 50);
    box->setBoxType(NSBoxCustom);
    return box;
}

TEST(Box, isAPrimaryOneWithAnEmptyViewInIt) {
    const Ref<NSBox> box = boxOf(100, 50);
    EXPECT_EQ(box->boxType(), NSBoxPrimary);
    EXPECT_TRUE(box->title()->isEqual(""_ns));
    EXPECT_EQ(box->contentView()->superview(), box);
    EXPECT_EQ(box->contentView()->frame(), NSMakeRect(6, 6, 88, 38));
    EXPECT_TRUE(box->fillColor()->isEqual(NSColor::clearColor()));
}

TEST(Box, aCustomOneIsDrawnAsItsColoursLineAndCornersSay) {
    const Ref<NSBox> box = customBox();
    box->setFillColor(NSColor::redColor());
    box->setBorderColor(NSColor::greenColor());
    box->setBorderWidth(2);
    box->setCornerRadius(7);
    EXPECT_EQ(drawn(box).log, "fill round 7 7 0,0 100x50 red\nline 2 round 7 0,0 100x50 green\n");
    box->setBorderWidth(0);
    EXPECT_EQ(drawn(box).log, "fill round 7 7 0,0 100x50 red\n");
    box->setTransparent(true);
    EXPECT_EQ(drawn(box).log, "");
}

TEST(Box, widthsBelowNoneAndNoNumbersAreNone) {
    const Ref<NSBox> box = customBox();
    for (const double value : {-1.0, std::numeric_limits<double>::quiet_NaN(), 0.0}) {
        SCOPED_TRACE(value);
        box->setBorderWidth(3);
        box->setCornerRadius(3);
        box->setBorderWidth(value);
        box->setCornerRadius(value);
        EXPECT_EQ(box->borderWidth(), 0);
        EXPECT_EQ(box->cornerRadius(), 0);
    }
    box->setFillColor(nullptr);
    box->setBorderColor(nullptr);
    EXPECT_TRUE(box->fillColor()->isEqual(NSColor::clearColor()));
    EXPECT_TRUE(box->borderColor()->isEqual(NSColor::clearColor()));
}

TEST(Box, itsContentFillsWhatBorderAndMarginsLeave) {
    const Ref<NSBox> box = customBox();
    box->setBorderWidth(3);
    box->setContentViewMargins({10, 1});
    EXPECT_EQ(box->contentView()->frame(), NSMakeRect(13, 4, 74, 42));
    box->setFrameSize({200, 60});
    EXPECT_EQ(box->contentView()->frame(), NSMakeRect(13, 4, 174, 52));
    box->setFrameSize({4, 4});
    EXPECT_EQ(box->contentView()->frame(), NSMakeRect(2, 2, 0, 0));
    box->setFrameSize({200, 60});
    box->setTransparent(true);
    EXPECT_EQ(box->contentView()->frame(), NSMakeRect(10, 1, 180, 58));
}

TEST(Box, anotherContentTakesThePlaceOfTheOneBefore) {
    const Ref<NSBox> box = boxOf(100, 50);
    const Ref<NSView> before = box->contentView();
    const Ref<NSView> view = make<NSView>();
    box->setContentView(view);
    EXPECT_FALSE(before->superview());
    EXPECT_EQ(view->frame(), NSMakeRect(6, 6, 88, 38));
    EXPECT_EQ(box->subviews()->count(), 1u);
    box->setContentView(nullptr);
    EXPECT_FALSE(box->contentView());
    EXPECT_FALSE(view->superview());
    box->setFrameSize({10, 10});
    EXPECT_EQ(view->frame(), NSMakeRect(6, 6, 88, 38));
}

TEST(Box, itsTitleStandsAboveTheBorder) {
    const Ref<NSBox> box = boxOf(100, 50);
    EXPECT_EQ(box->borderRect(), NSMakeRect(0, 0, 100, 50));
    box->setTitle("Limits"_ns);
    EXPECT_LT(box->borderRect().size.height, 50);
    const DrawingRecord record = drawn(box);
    ASSERT_EQ(record.texts.size(), 1u);
    EXPECT_EQ(record.texts[0].text->string()->utf8(), "Limits");
    EXPECT_EQ(NSMinY(record.texts[0].rect), NSMaxY(box->borderRect()));
    EXPECT_LT(NSMaxY(box->contentView()->frame()), NSMaxY(box->borderRect()));
    box->setTitlePosition(NSNoTitle);
    EXPECT_TRUE(drawn(box).texts.empty());
    box->setTitle(nullptr);
    EXPECT_TRUE(box->title()->isEqual(""_ns));
}

TEST(Box, aSeparatorIsALineAlongItsLongerSide) {
    const Ref<NSBox> wide = boxOf(100, 5);
    wide->setBoxType(NSBoxSeparator);
    EXPECT_TRUE(drawn(wide).has("fill 0,2 100x1 "));
    const Ref<NSBox> high = boxOf(5, 100);
    high->setBoxType(NSBoxSeparator);
    high->setTitle("never seen"_ns);
    EXPECT_TRUE(drawn(high).has("fill 2,0 1x100 "));
    EXPECT_TRUE(drawn(high).texts.empty());
}

} // namespace
} // namespace zr
