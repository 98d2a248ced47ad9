#include <zrbasic/ui/scroller.h>

#include "../appkit/scroller_testing.h"

#include <zrbasic/platform/foundation/key_value_coding.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>

namespace zr {
namespace {

using namespace test;

class SubclassOfThinScroller : public ZRXScroller {
    ZR_OBJECT(SubclassOfThinScroller, ZRXScroller)
};

Ref<ZRXScroller> thinScroller(double width, double height) {
    return make<ZRXScroller>(&ZRXScroller::initWithFrame, NSMakeRect(0, 0, width, height));
}

TEST(ThinScroller, isAMiniOverlayWithALayer) {
    const Ref<ZRXScroller> scroller = thinScroller(10, 200);
    EXPECT_EQ(scroller->knobStyle(), 0);
    EXPECT_EQ(scroller->scrollerStyle(), 1);
    EXPECT_EQ(scroller->controlSize(), 2u);
    EXPECT_TRUE(scroller->wantsLayer());
    EXPECT_FALSE(scroller->hideKnob());
    EXPECT_FALSE(scroller->knobColor());
    EXPECT_FALSE(scroller->scrollBackgroundColor());
}

TEST(ThinScroller, itsKnobIsSetInOnOneSideAndRoundedAllAround) {
    struct Row {
        const char* label;
        double width;
        double height;
        double value;
        const char* knob;
    };
    for (const Row& row : {
             Row{"upright, at the top", 10, 200, 0, "fill round 3 3 3,0 7x50 light\n"},
             Row{"upright, at the bottom", 10, 200, 1, "fill round 3 3 3,150 7x50 light\n"},
             Row{"lying, to the left", 200, 10, 0, "fill round 3 3 0,3 50x7 light\n"},
             Row{"lying, in the middle", 200, 10, 0.5, "fill round 3 3 75,3 50x7 light\n"},
             Row{"square, which is upright", 20, 20, 0, "fill round 3 3 3,0 17x18 light\n"},
         }) {
        SCOPED_TRACE(row.label);
        const Ref<ZRXScroller> scroller = thinScroller(row.width, row.height);
        scroller->setKnobProportion(0.25);
        scroller->setDoubleValue(row.value);
        const DrawingRecord record = recorded([&] { scroller->drawKnob(); }, true);
        EXPECT_TRUE(record.has(row.knob)) << record.log;
        EXPECT_TRUE(record.log.ends_with(row.knob)) << record.log;
    }
}

TEST(ThinScroller, drawsItsKnobInItsColourOverThePlatformsWhichItCovers) {
    const Ref<ZRXScroller> scroller = thinScroller(10, 200);
    scroller->setKnobProportion(0.25);
    scroller->setKnobColor(NSColor::redColor());
    const DrawingRecord record = recorded([&] { scroller->drawKnob(); }, true);
    EXPECT_EQ(std::count(record.log.begin(), record.log.end(), '\n'), 2) << record.log;
    EXPECT_TRUE(record.log.starts_with("fill round 2 2 3,0 4x50 ")) << record.log;
    EXPECT_TRUE(record.log.ends_with("fill round 3 3 3,0 7x50 red\n")) << record.log;
    const Ref<ZRXScroller> lying = thinScroller(200, 12);
    lying->setKnobProportion(0.25);
    EXPECT_TRUE(drawn(lying).log.starts_with("fill round 3 3 0,3 50x6 ")) << "and in any size";
    scroller->setKnobColor(nullptr);
    EXPECT_TRUE(drawn(scroller).has("fill round 3 3 3,0 7x50 light\n"));
}

TEST(ThinScroller, drawsItsKnobTwiceWhenItIsDrawn) {
    const Ref<ZRXScroller> scroller = thinScroller(10, 200);
    scroller->setKnobProportion(0.25);
    const std::string log = drawn(scroller).log;
    const std::string knob = "fill round 3 3 3,0 7x50 light\n";
    const std::size_t first = log.find(knob);
    ASSERT_NE(first, std::string::npos);
    EXPECT_NE(log.find(knob, first + 1), std::string::npos);
}

TEST(ThinScroller, aHiddenKnobIsNotDrawnAtAll) {
    const Ref<ZRXScroller> scroller = thinScroller(10, 200);
    scroller->setHideKnob(true);
    EXPECT_EQ(drawn(scroller).log, "");
    EXPECT_EQ(recorded([&] { scroller->drawKnob(); }).log, "");
    scroller->setScrollBackgroundColor(NSColor::greenColor());
    EXPECT_EQ(drawn(scroller).log, "fill 0,0 10x200 green in place\n");
    scroller->setHideKnob(false);
    EXPECT_TRUE(drawn(scroller).has("fill round 3 3"));
}

TEST(ThinScroller, fillsItsSlotWithItsColourOrLeavesItAlone) {
    const Ref<ZRXScroller> scroller = thinScroller(10, 200);
    const auto slot = [&](bool highlight) {
        return recorded([&] { scroller->drawKnobSlotInRect_highlight({{1, 2}, {3, 4}}, highlight); }).log;
    };
    EXPECT_EQ(slot(false), "");
    EXPECT_EQ(slot(true), "");
    scroller->setScrollBackgroundColor(NSColor::redColor());
    EXPECT_EQ(slot(false), "fill 1,2 3x4 red in place\n");
    EXPECT_EQ(slot(true), "fill 1,2 3x4 red in place\n");
    scroller->setScrollBackgroundColor(nullptr);
    EXPECT_EQ(slot(false), "");
}

TEST(ThinScroller, drawingWithoutAContextDoesNothing) {
    const Ref<ZRXScroller> scroller = thinScroller(10, 200);
    scroller->setScrollBackgroundColor(NSColor::redColor());
    scroller->drawRect(scroller->bounds());
    scroller->drawKnob();
    EXPECT_FALSE(NSGraphicsContext::currentContext());
}

TEST(ThinScroller, onlyTheClassItselfCanFloat) {
    const SEL question = "isCompatibleWithOverlayScrollers"_sel;
    EXPECT_TRUE(send<bool>(ZRXScroller::classObject(), question));
    EXPECT_FALSE(send<bool>(SubclassOfThinScroller::classObject(), question));
}

TEST(ThinScroller, liesOnlyWhenItIsWiderThanHigh) {
    EXPECT_FALSE(thinScroller(10, 200)->isHorizontal());
    EXPECT_FALSE(thinScroller(10, 10)->isHorizontal());
    EXPECT_TRUE(thinScroller(10.5, 10)->isHorizontal());
    EXPECT_FALSE(thinScroller(0, 0)->isHorizontal());
}

TEST(ThinScroller, aColorThatIsNoneIsTheUsualOne) {
    const Ref<ZRXScroller> scroller = thinScroller(10, 200);
    scroller->setKnobProportion(0.25);
    for (const id& odd : {id("red"_ns), id(NSNull::null()), id(box(1)), id()}) {
        setValue_forKey(scroller, odd, "knobColor"_ns);
        setValue_forKey(scroller, odd, "scrollBackgroundColor"_ns);
        EXPECT_FALSE(scroller->knobColor());
        EXPECT_TRUE(drawn(scroller).log.ends_with("fill round 3 3 3,0 7x50 light\n"));
        EXPECT_FALSE(drawn(scroller).has("fill 0,0")) << "and no slot";
    }
}

TEST(ThinScroller, isDrawnSafelyInAnyFrame) {
    constexpr double huge = std::numeric_limits<double>::max();
    for (const double extent : {0.0, -5.0, 2.0, 1e300, huge, double(INFINITY), double(NAN)}) {
        SCOPED_TRACE(extent);
        const Ref<ZRXScroller> scroller = thinScroller(extent, 200);
        scroller->setScrollBackgroundColor(NSColor::redColor());
        scroller->setFrameOrigin({extent, extent});
        EXPECT_TRUE(drawn(scroller).log.find("fill round 3 3") != std::string::npos);
        scroller->mouseDown(mouseEvent(NSEventTypeLeftMouseDown, extent, extent));
        scroller->mouseDragged(mouseEvent(NSEventTypeLeftMouseDragged, 1, extent));
        scroller->mouseUp(mouseEvent(NSEventTypeLeftMouseUp, 1, 1));
        EXPECT_GE(scroller->doubleValue(), 0);
        EXPECT_LE(scroller->doubleValue(), 1);
    }
}

TEST(ThinScroller, itsPropertiesCanBeSetByName) {
    const Ref<ZRXScroller> scroller = thinScroller(10, 200);
    scroller->setNeedsDisplay(false);
    setValue_forKey(scroller, box(true), "hideKnob"_ns);
    setValue_forKey(scroller, NSColor::redColor(), "knobColor"_ns);
    setValue_forKey(scroller, NSColor::greenColor(), "scrollBackgroundColor"_ns);
    EXPECT_TRUE(scroller->hideKnob());
    EXPECT_TRUE(scroller->knobColor()->isEqual(NSColor::redColor()));
    EXPECT_TRUE(scroller->scrollBackgroundColor()->isEqual(NSColor::greenColor()));
    EXPECT_TRUE(scroller->needsDisplay());
}

} // namespace
} // namespace zr
