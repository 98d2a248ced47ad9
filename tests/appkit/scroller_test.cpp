#include "scroller_testing.h"

#include <zrbasic/platform/foundation/number.h>

namespace zr {
namespace {

using namespace test;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

Ref<NSScroller> scrollerOf(double width, double height) {
    return make<NSScroller>(&NSScroller::initWithFrame, NSMakeRect(0, 0, width, height));
}

/// Says of itself that it can float.
class FloatingScroller : public NSScroller {
    ZR_OBJECT(FloatingScroller, NSScroller)
  public:
    static bool isCompatibleWithOverlayScrollers() { return true; }
    ZR_CLASS_METHOD(isCompatibleWithOverlayScrollers, "isCompatibleWithOverlayScrollers")
};

class PlainSubclassOfScroller : public NSScroller {
    ZR_OBJECT(PlainSubclassOfScroller, NSScroller)
};

TEST(Scroller, hasThePartsOfThePlatformsNumbers) {
    EXPECT_EQ(NSScrollerNoPart, 0u);
    EXPECT_EQ(NSScrollerDecrementPage, 1u);
    EXPECT_EQ(NSScrollerKnob, 2u);
    EXPECT_EQ(NSScrollerIncrementPage, 3u);
    EXPECT_EQ(NSScrollerKnobSlot, 6u);
}

TEST(Scroller, startsAtTheBeginningBesideWhatItScrolls) {
    const Ref<NSScroller> scroller = scrollerOf(15, 100);
    EXPECT_EQ(scroller->doubleValue(), 0);
    EXPECT_EQ(scroller->knobProportion(), 0);
    EXPECT_EQ(scroller->scrollerStyle(), NSScrollerStyleLegacy);
    EXPECT_EQ(scroller->knobStyle(), NSScrollerKnobStyleDefault);
    EXPECT_EQ(scroller->controlSize(), NSControlSizeRegular);
    EXPECT_EQ(scroller->hitPart(), NSScrollerNoPart);
    EXPECT_TRUE(scroller->isFlipped());
    EXPECT_FALSE(scroller->acceptsFirstResponder());
}

TEST(Scroller, keepsItsValuesBetweenNoneAndAll) {
    struct Row {
        double given;
        double kept;
    };
    const Ref<NSScroller> scroller = scrollerOf(10, 100);
    for (const Row& row : {Row{0.25, 0.25}, Row{-1, 0}, Row{7, 1}, Row{nan, 0}, Row{HUGE_VAL, 1}, Row{-HUGE_VAL, 0}}) {
        SCOPED_TRACE(row.given);
        scroller->setDoubleValue(row.given);
        EXPECT_EQ(scroller->doubleValue(), row.kept);
        scroller->setKnobProportion(row.given);
        EXPECT_EQ(scroller->knobProportion(), row.kept);
    }
    scroller->setStringValue("0.5"_ns);
    EXPECT_EQ(scroller->doubleValue(), 0.5);
    scroller->setObjectValue(nullptr);
    EXPECT_EQ(scroller->doubleValue(), 0);
}

TEST(Scroller, theKnobIsAsLongAsTheShareThatIsSeenAndLiesWhereTheValueIs) {
    const Ref<NSScroller> scroller = scrollerOf(10, 200);
    scroller->setKnobProportion(0.25);
    EXPECT_EQ(scroller->rectForPart(NSScrollerKnob), NSMakeRect(0, 0, 10, 50));
    scroller->setDoubleValue(0.5);
    EXPECT_EQ(scroller->rectForPart(NSScrollerKnob), NSMakeRect(0, 75, 10, 50));
    EXPECT_EQ(scroller->rectForPart(NSScrollerDecrementPage), NSMakeRect(0, 0, 10, 75));
    EXPECT_EQ(scroller->rectForPart(NSScrollerIncrementPage), NSMakeRect(0, 125, 10, 75));
    scroller->setDoubleValue(1);
    EXPECT_EQ(scroller->rectForPart(NSScrollerKnob), NSMakeRect(0, 150, 10, 50));
    EXPECT_EQ(scroller->rectForPart(NSScrollerIncrementPage), NSZeroRect);
    EXPECT_EQ(scroller->rectForPart(NSScrollerKnobSlot), NSMakeRect(0, 0, 10, 200));
}

TEST(Scroller, aKnobIsAtLeast18PointsLongButNotLongerThanItsSlot) {
    const Ref<NSScroller> scroller = scrollerOf(200, 10);
    EXPECT_TRUE(scroller->isHorizontal());
    scroller->setKnobProportion(0.001);
    scroller->setDoubleValue(1);
    EXPECT_EQ(scroller->rectForPart(NSScrollerKnob), NSMakeRect(182, 0, 18, 10));
    scroller->setFrameSize({12, 10});
    EXPECT_EQ(scroller->rectForPart(NSScrollerKnob), NSMakeRect(0, 0, 12, 10));
    scroller->setFrameSize({0, 0});
    EXPECT_EQ(scroller->rectForPart(NSScrollerKnob), NSZeroRect);
}

TEST(Scroller, thereIsNothingAtAnUnknownPartNorAtArrows) {
    const Ref<NSScroller> scroller = scrollerOf(10, 200);
    for (const NSUInteger part : {0, 4, 5, 7, 1000}) {
        SCOPED_TRACE(part);
        EXPECT_EQ(scroller->rectForPart(static_cast<NSScrollerPart>(part)), NSZeroRect);
    }
}

TEST(Scroller, aSquareOneStandsUpright) {
    EXPECT_FALSE(scrollerOf(20, 20)->isHorizontal());
    EXPECT_FALSE(scrollerOf(20, 21)->isHorizontal());
    EXPECT_TRUE(scrollerOf(21, 20)->isHorizontal());
}

TEST(Scroller, findsThePartUnderAPointOfTheWindow) {
    const Ref<NSScroller> scroller = scrollerOf(10, 200);
    scroller->setKnobProportion(0.5);
    scroller->setDoubleValue(0.5);
    // The outermost view's y grows upwards: 190 is near the top.
    EXPECT_EQ(scroller->testPart({5, 190}), NSScrollerDecrementPage);
    EXPECT_EQ(scroller->testPart({5, 100}), NSScrollerKnob);
    EXPECT_EQ(scroller->testPart({5, 10}), NSScrollerIncrementPage);
    EXPECT_EQ(scroller->testPart({15, 100}), NSScrollerNoPart);
    EXPECT_EQ(scroller->testPart({5, 201}), NSScrollerNoPart);
}

TEST(Scroller, draggingTheKnobMovesItAndSendsTheActionAllTheWhile) {
    const Ref<NSScroller> scroller = scrollerOf(10, 200);
    const Ref<ScrollListener> listener = make<ScrollListener>();
    scroller->setTarget(listener);
    scroller->setAction("scrolled:"_sel);
    scroller->setKnobProportion(0.5);
    scroller->mouseDown(mouseEvent(NSEventTypeLeftMouseDown, 5, 150));
    EXPECT_EQ(listener->log, "");
    EXPECT_EQ(scroller->hitPart(), NSScrollerKnob);
    scroller->mouseDragged(mouseEvent(NSEventTypeLeftMouseDragged, 5, 125));
    scroller->mouseDragged(mouseEvent(NSEventTypeLeftMouseDragged, 50, 100));
    scroller->mouseDragged(mouseEvent(NSEventTypeLeftMouseDragged, 50, -300));
    scroller->mouseDragged(mouseEvent(NSEventTypeLeftMouseDragged, 50, -400));
    EXPECT_EQ(listener->log, "2@25 2@50 2@100 ");
    scroller->mouseUp(mouseEvent(NSEventTypeLeftMouseUp, 5, -400));
    EXPECT_EQ(scroller->hitPart(), NSScrollerNoPart);
    scroller->mouseDragged(mouseEvent(NSEventTypeLeftMouseDragged, 5, 100));
    EXPECT_EQ(scroller->doubleValue(), 1);
}

TEST(Scroller, aClickBesideTheKnobTellsTheTargetWhichWayAndMovesNothing) {
    const Ref<NSScroller> scroller = scrollerOf(200, 10);
    const Ref<ScrollListener> listener = make<ScrollListener>();
    scroller->setTarget(listener);
    scroller->setAction("scrolled:"_sel);
    scroller->setKnobProportion(0.2);
    scroller->setDoubleValue(0.5);
    for (const double x : {5.0, 195.0}) {
        scroller->mouseDown(mouseEvent(NSEventTypeLeftMouseDown, x, 5));
        scroller->mouseUp(mouseEvent(NSEventTypeLeftMouseUp, x, 5));
    }
    EXPECT_EQ(listener->log, "1@50 3@50 ");
}

TEST(Scroller, aDisabledOneHasNoKnobAndHearsNoMouse) {
    const Ref<NSScroller> scroller = scrollerOf(10, 200);
    scroller->setKnobProportion(0.5);
    EXPECT_TRUE(drawn(scroller).has("fill round"));
    scroller->setEnabled(false);
    EXPECT_FALSE(drawn(scroller).has("fill round"));
    scroller->mouseDown(mouseEvent(NSEventTypeLeftMouseDown, 5, 150));
    EXPECT_EQ(scroller->hitPart(), NSScrollerNoPart);
    scroller->mouseDown(nullptr);
    scroller->mouseDragged(nullptr);
    scroller->mouseUp(nullptr);
    EXPECT_EQ(scroller->doubleValue(), 0);
}

TEST(Scroller, anOverlayShowsItsSlotOnlyWhileTheMouseIsDownOnIt) {
    const Ref<NSScroller> scroller = scrollerOf(10, 200);
    EXPECT_TRUE(drawn(scroller).has("fill 0,0 10x200"));
    scroller->setScrollerStyle(NSScrollerStyleOverlay);
    EXPECT_FALSE(drawn(scroller).has("fill 0,0"));
    scroller->mouseDown(mouseEvent(NSEventTypeLeftMouseDown, 5, 5));
    EXPECT_TRUE(drawn(scroller).has("fill 0,0 10x200"));
}

TEST(Scroller, onlyTheClassItselfIsSureToFloatSubclassesAnswerForThemselves) {
    const SEL question = "isCompatibleWithOverlayScrollers"_sel;
    EXPECT_TRUE(send<bool>(NSScroller::classObject(), question));
    EXPECT_FALSE(send<bool>(PlainSubclassOfScroller::classObject(), question));
    EXPECT_TRUE(send<bool>(FloatingScroller::classObject(), question));
}

TEST(Scroller, itsBreadthIsThatOfItsSizeAndStyle) {
    const auto breadth = [](NSUInteger size, NSInteger style) {
        return NSScroller::scrollerWidthForControlSize_scrollerStyle(static_cast<NSControlSize>(size),
                                                                     static_cast<NSScrollerStyle>(style));
    };
    EXPECT_GT(breadth(0, 0), breadth(1, 0));
    EXPECT_GT(breadth(1, 0), breadth(2, 0));
    EXPECT_GT(breadth(2, 1), 0);
    EXPECT_EQ(breadth(9, 0), 0);
    EXPECT_EQ(breadth(0, 9), 0);
    const Ref<NSScroller> scroller = scrollerOf(10, 200);
    EXPECT_EQ(scroller->intrinsicContentSize().width, breadth(0, 0));
    EXPECT_EQ(scroller->intrinsicContentSize().height, NSViewNoIntrinsicMetric);
}

} // namespace
} // namespace zr
