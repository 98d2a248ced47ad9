#include <zrbasic/platform/appkit/scroll_view.h>

#include "scroller_testing.h"

namespace zr {
namespace {

using namespace test;

class FlippedDocument : public NSView {
    ZR_OBJECT(FlippedDocument, NSView)
  public:
    bool isFlipped() const override { return true; }
};

/// Cannot float, as it does not say so.
class HeavyScroller : public NSScroller {
    ZR_OBJECT(HeavyScroller, NSScroller)
};

/// Remembers that a wheel's event came by.
class WheelSuperview : public NSView {
    ZR_OBJECT(WheelSuperview, NSView)
  public:
    void scrollWheel(NSEvent*) override { ++turns; }

    int turns = 0;
};

Ref<NSEvent> wheel(double dx, double dy, NSUInteger keys = 0) {
    EventFields fields;
    fields.type = NSEventTypeScrollWheel;
    fields.deltaX = dx;
    fields.deltaY = dy;
    fields.modifierFlags = keys;
    return NSEvent::eventWithFields(std::move(fields));
}

class Scrolling : public testing::TestWithParam<bool> {
  protected:
    Scrolling()
        : scrolling(make<NSScrollView>(&NSScrollView::initWithFrame, NSMakeRect(0, 0, 200, 100))),
          document(GetParam() ? Ref<NSView>(make<FlippedDocument>()) : make<NSView>()) {
        document->setFrame({{0, 0}, {300, 500}});
        scrolling->setDocumentView(document);
    }

    /// How far the top of what is seen lies below that of the document.
    [[nodiscard]] double top() const {
        const NSRect seen = scrolling->documentVisibleRect();
        return document->isFlipped() ? seen.origin.y : document->bounds().size.height - NSMaxY(seen);
    }
    [[nodiscard]] double left() const { return scrolling->documentVisibleRect().origin.x; }
    void dragKnob(NSScroller* scroller, double dx, double dy) {
        const NSRect knob = scroller->rectForPart(NSScrollerKnob);
        const NSPoint grip = scroller->convertPoint_toView(
            {knob.origin.x + knob.size.width / 2, knob.origin.y + knob.size.height / 2}, nullptr);
        scroller->mouseDown(mouseEvent(NSEventTypeLeftMouseDown, grip.x, grip.y));
        scroller->mouseDragged(mouseEvent(NSEventTypeLeftMouseDragged, grip.x + dx, grip.y + dy));
        scroller->mouseUp(mouseEvent(NSEventTypeLeftMouseUp, grip.x + dx, grip.y + dy));
    }

    Ref<NSScrollView> scrolling;
    Ref<NSView> document;
};

TEST_P(Scrolling, beginsAtTheTopOfTheDocumentWithoutScrollers) {
    EXPECT_EQ(top(), 0);
    EXPECT_EQ(left(), 0);
    EXPECT_EQ(scrolling->documentVisibleRect().size, (NSSize{200, 100}));
    EXPECT_FALSE(scrolling->hasVerticalScroller());
    EXPECT_FALSE(scrolling->verticalScroller());
    EXPECT_EQ(scrolling->scrollerStyle(), NSScrollerStyleLegacy);
    EXPECT_EQ(document->superview(), scrolling->contentView());
    EXPECT_EQ(scrolling->contentView()->isFlipped(), GetParam());
    EXPECT_TRUE(scrolling->isFlipped());
}

TEST_P(Scrolling, scrollersTakeRoomAndSayWhatIsSeen) {
    scrolling->setHasVerticalScroller(true);
    scrolling->setHasHorizontalScroller(true);
    EXPECT_EQ(scrolling->contentSize(), (NSSize{185, 85}));
    EXPECT_EQ(scrolling->verticalScroller()->frame(), NSMakeRect(185, 0, 15, 85));
    EXPECT_EQ(scrolling->horizontalScroller()->frame(), NSMakeRect(0, 85, 185, 15));
    EXPECT_EQ(top(), 0);
    EXPECT_EQ(scrolling->verticalScroller()->doubleValue(), 0);
    EXPECT_DOUBLE_EQ(scrolling->verticalScroller()->knobProportion(), 85.0 / 500);
    EXPECT_DOUBLE_EQ(scrolling->horizontalScroller()->knobProportion(), 185.0 / 300);
    scrolling->setHasHorizontalScroller(false);
    EXPECT_FALSE(scrolling->horizontalScroller()->superview());
    EXPECT_EQ(scrolling->contentSize(), (NSSize{185, 100}));
}

TEST_P(Scrolling, floatingScrollersLieOverTheContent) {
    scrolling->setHasVerticalScroller(true);
    scrolling->setScrollerStyle(NSScrollerStyleOverlay);
    EXPECT_EQ(scrolling->contentSize(), (NSSize{200, 100}));
    const Ref<NSScroller> scroller = scrolling->verticalScroller();
    EXPECT_EQ(scroller->scrollerStyle(), NSScrollerStyleOverlay);
    EXPECT_EQ(NSMaxX(scroller->frame()), 200);
    EXPECT_EQ(scrolling->subviews()->lastObject(), scroller);
    EXPECT_EQ(scrolling->hitTest({198, 50}), scroller);
}

TEST_P(Scrolling, aScrollerThatCannotFloatKeepsAllFromIt) {
    scrolling->setScrollerStyle(NSScrollerStyleOverlay);
    scrolling->setHasHorizontalScroller(true);
    EXPECT_EQ(scrolling->scrollerStyle(), NSScrollerStyleOverlay);
    const Ref<HeavyScroller> heavy = make<HeavyScroller>(&HeavyScroller::initWithFrame, NSMakeRect(0, 0, 10, 100));
    scrolling->setVerticalScroller(heavy);
    EXPECT_EQ(scrolling->scrollerStyle(), NSScrollerStyleLegacy);
    EXPECT_EQ(scrolling->horizontalScroller()->scrollerStyle(), NSScrollerStyleLegacy);
    scrolling->setVerticalScroller(nullptr);
    EXPECT_EQ(scrolling->scrollerStyle(), NSScrollerStyleOverlay);
    EXPECT_FALSE(heavy->target());
}

TEST_P(Scrolling, draggingTheKnobMovesTheDocument) {
    scrolling->setHasVerticalScroller(true);
    scrolling->setHasHorizontalScroller(true);
    const Ref<NSScroller> vertical = scrolling->verticalScroller();
    // The knob is 18 long in a slot of 85.
    dragKnob(vertical, 0, -(85.0 - 18) / 2);
    EXPECT_NEAR(top(), (500 - 85) / 2.0, 1e-9);
    EXPECT_NEAR(vertical->doubleValue(), 0.5, 1e-12);
    dragKnob(vertical, 0, -1000);
    EXPECT_NEAR(top(), 500 - 85, 1e-9);
    dragKnob(vertical, 0, 1000);
    EXPECT_NEAR(top(), 0, 1e-9);
    dragKnob(scrolling->horizontalScroller(), 1000, 0);
    EXPECT_NEAR(left(), 300 - 185, 1e-9);
}

TEST_P(Scrolling, aClickBesideTheKnobTurnsAPage) {
    scrolling->setHasVerticalScroller(true);
    const Ref<NSScroller> scroller = scrolling->verticalScroller();
    const auto click = [&](double y) {
        scroller->mouseDown(mouseEvent(NSEventTypeLeftMouseDown, 195, y));
        scroller->mouseUp(mouseEvent(NSEventTypeLeftMouseUp, 195, y));
    };
    click(2);
    EXPECT_EQ(top(), 90);
    EXPECT_NEAR(scroller->doubleValue(), 90.0 / 400, 1e-12);
    click(2);
    EXPECT_EQ(top(), 180);
    click(98);
    EXPECT_EQ(top(), 90);
    scrolling->setVerticalPageScroll(1000);
    click(2);
    EXPECT_EQ(top(), 91);
}

TEST_P(Scrolling, theWheelScrollsThreeLinesToANotchAsFarAsTheDocumentReaches) {
    scrolling->scrollWheel(wheel(0, -1));
    EXPECT_EQ(top(), 30);
    scrolling->scrollWheel(wheel(0, 0.5));
    EXPECT_EQ(top(), 15);
    scrolling->scrollWheel(wheel(-1, 0));
    EXPECT_EQ(left(), 30);
    scrolling->scrollWheel(wheel(0, -1, NSEventModifierFlagShift));
    EXPECT_EQ(left(), 60);
    EXPECT_EQ(top(), 15);
    scrolling->setVerticalLineScroll(20);
    scrolling->scrollWheel(wheel(0, -1));
    EXPECT_EQ(top(), 75);
    scrolling->scrollWheel(wheel(0, -1e9));
    EXPECT_EQ(top(), 400);
    scrolling->scrollWheel(wheel(0, HUGE_VAL));
    EXPECT_EQ(top(), 0);
    scrolling->scrollWheel(wheel(0, std::numeric_limits<double>::quiet_NaN()));
    scrolling->scrollWheel(nullptr);
    EXPECT_EQ(top(), 0);
}

TEST_P(Scrolling, aWheelThatMovesNothingGoesOnToWhatTheViewLiesIn) {
    const Ref<WheelSuperview> outside = make<WheelSuperview>(&WheelSuperview::initWithFrame, NSMakeRect(0, 0, 9, 9));
    outside->addSubview(scrolling);
    scrolling->scrollWheel(wheel(0, 1));
    EXPECT_EQ(outside->turns, 1);
    scrolling->scrollWheel(wheel(0, -1));
    EXPECT_EQ(outside->turns, 1);
    scrolling->removeFromSuperview();
}

TEST_P(Scrolling, followsADocumentThatGrowsAndShrinks) {
    scrolling->setHasVerticalScroller(true);
    scrolling->scrollWheel(wheel(0, -1e9));
    document->setFrameSize({300, 1000});
    EXPECT_DOUBLE_EQ(scrolling->verticalScroller()->knobProportion(), 0.1);
    scrolling->scrollWheel(wheel(0, -1e9));
    document->setFrameSize({300, 200});
    EXPECT_DOUBLE_EQ(scrolling->verticalScroller()->knobProportion(), 0.5);
    EXPECT_LE(top(), 100);
    EXPECT_EQ(scrolling->documentVisibleRect().size.height, 100);
    document->setFrameSize({300, 50});
    EXPECT_FALSE(scrolling->verticalScroller()->isEnabled());
    EXPECT_EQ(scrolling->documentVisibleRect().size.height, 50);
}

TEST_P(Scrolling, scrollersThatHideThemselvesComeWithTheDocumentThatNeedsThem) {
    scrolling->setHasVerticalScroller(true);
    scrolling->setAutohidesScrollers(true);
    const Ref<NSScroller> scroller = scrolling->verticalScroller();
    EXPECT_FALSE(scroller->isHidden());
    document->setFrameSize({300, 100});
    EXPECT_TRUE(scroller->isHidden());
    EXPECT_EQ(scrolling->contentSize(), (NSSize{200, 100}));
    document->setFrameSize({300, 101});
    EXPECT_FALSE(scroller->isHidden());
    EXPECT_EQ(scrolling->contentSize(), (NSSize{185, 100}));
}

TEST_P(Scrolling, floatingScrollersHideThemselvesInAnyCase) {
    scrolling->setHasVerticalScroller(true);
    scrolling->setHasHorizontalScroller(true);
    document->setFrameSize({200, 100});
    EXPECT_FALSE(scrolling->verticalScroller()->isHidden());
    scrolling->setScrollerStyle(NSScrollerStyleOverlay);
    EXPECT_TRUE(scrolling->verticalScroller()->isHidden());
    EXPECT_TRUE(scrolling->horizontalScroller()->isHidden());
    document->setFrameSize({201, 100});
    EXPECT_TRUE(scrolling->verticalScroller()->isHidden());
    EXPECT_FALSE(scrolling->horizontalScroller()->isHidden());
}

TEST_P(Scrolling, whatWasAtTheTopStaysThereWhenTheViewGrows) {
    scrolling->scrollWheel(wheel(0, -2));
    ASSERT_EQ(top(), 60);
    scrolling->setFrameSize({200, 150});
    EXPECT_EQ(top(), 60);
    scrolling->setFrameSize({200, 1000});
    EXPECT_EQ(scrolling->documentVisibleRect(), NSMakeRect(0, 0, 200, 500));
    scrolling->setFrameSize({0, 0});
    EXPECT_EQ(scrolling->contentSize(), NSZeroSize);
}

TEST_P(Scrolling, aRectangleIsScrolledToJustSoFarThatItIsSeen) {
    const auto at = [&](double fromTop, double height) {
        return NSMakeRect(0, GetParam() ? fromTop : 500 - fromTop - height, 10, height);
    };
    EXPECT_FALSE(scrollRectToVisible(document, at(20, 30)));
    EXPECT_TRUE(scrollRectToVisible(document, at(150, 30)));
    EXPECT_EQ(top(), 80);
    EXPECT_TRUE(scrollRectToVisible(document, at(70, 30)));
    EXPECT_EQ(top(), 70);
    EXPECT_TRUE(scrollRectToVisible(document, at(200, 250)));
    EXPECT_EQ(top(), 200);
    EXPECT_FALSE(scrollRectToVisible(nullptr, at(0, 1)));
    EXPECT_FALSE(scrollRectToVisible(scrolling, at(0, 1)));
}

INSTANTIATE_TEST_SUITE_P(BothWays, Scrolling, testing::Bool(),
                         [](const auto& test) { return test.param ? "flipped" : "upright"; });

TEST(ScrollView, isFoundFromWhatLiesInIt) {
    const Ref<NSScrollView> outer = make<NSScrollView>(&NSScrollView::initWithFrame, NSMakeRect(0, 0, 100, 100));
    const Ref<NSScrollView> inner = make<NSScrollView>(&NSScrollView::initWithFrame, NSMakeRect(0, 0, 50, 50));
    const Ref<NSView> view = make<NSView>();
    outer->setDocumentView(inner);
    inner->setDocumentView(view);
    EXPECT_EQ(enclosingScrollView(view), inner);
    EXPECT_EQ(enclosingScrollView(inner), outer);
    EXPECT_EQ(send<Ref<NSView>>(view, "enclosingScrollView"_sel), inner);
    EXPECT_FALSE(enclosingScrollView(outer));
    EXPECT_FALSE(enclosingScrollView(nullptr));
}

TEST(ScrollView, anotherContentViewTakesOverTheDocument) {
    const Ref<NSScrollView> scrolling = make<NSScrollView>(&NSScrollView::initWithFrame, NSMakeRect(0, 0, 100, 100));
    const Ref<NSView> document = make<NSView>();
    scrolling->setDocumentView(document);
    const Ref<NSClipView> before = scrolling->contentView();
    const Ref<NSClipView> clip = make<NSClipView>();
    scrolling->setContentView(clip);
    EXPECT_EQ(scrolling->documentView(), document);
    EXPECT_EQ(document->superview(), clip);
    EXPECT_FALSE(before->superview());
    EXPECT_EQ(clip->frame(), NSMakeRect(0, 0, 100, 100));
    scrolling->setContentView(nullptr);
    EXPECT_EQ(scrolling->contentView(), clip);
    scrolling->setDocumentView(nullptr);
    EXPECT_EQ(scrolling->documentVisibleRect(), NSZeroRect);
}

TEST(ScrollView, aScrollerThatIsNotItsOwnMovesNothing) {
    const Ref<NSScrollView> scrolling = make<NSScrollView>(&NSScrollView::initWithFrame, NSMakeRect(0, 0, 100, 100));
    const Ref<NSView> document = make<NSView>(&NSView::initWithFrame, NSMakeRect(0, 0, 100, 500));
    scrolling->setDocumentView(document);
    const NSPoint before = scrolling->contentView()->bounds().origin;
    const Ref<NSScroller> stranger = make<NSScroller>(&NSScroller::initWithFrame, NSMakeRect(0, 0, 10, 100));
    stranger->setDoubleValue(0.7);
    scrolling->scrollerMoved(stranger);
    scrolling->scrollerMoved(document);
    scrolling->scrollerMoved(nullptr);
    scrolling->reflectScrolledClipView(nullptr);
    EXPECT_EQ(scrolling->contentView()->bounds().origin, before);
}

TEST(ScrollView, aScrollerOutlivesItAndTellsNobody) {
    Ref<NSScrollView> scrolling = make<NSScrollView>(&NSScrollView::initWithFrame, NSMakeRect(0, 0, 100, 100));
    scrolling->setHasVerticalScroller(true);
    const Ref<NSScroller> scroller = scrolling->verticalScroller();
    EXPECT_EQ(scroller->target(), scrolling);
    scrolling = nullptr;
    EXPECT_FALSE(scroller->target());
    EXPECT_FALSE(scroller->superview());
}

TEST(ScrollView, takesADocumentOfAnyExtent) {
    constexpr double huge = std::numeric_limits<double>::max();
    for (const double extent : {-5.0, 1e300, huge, double(INFINITY), double(NAN)}) {
        SCOPED_TRACE(extent);
        const Ref<NSScrollView> scrolling = make<NSScrollView>(&NSScrollView::initWithFrame, NSMakeRect(0, 0, 99, 99));
        scrolling->setHasVerticalScroller(true);
        scrolling->setHasHorizontalScroller(true);
        const Ref<NSView> document = make<NSView>(&NSView::initWithFrame, NSMakeRect(0, 0, extent, 500));
        scrolling->setDocumentView(document);
        document->setFrameSize({500, extent});
        document->setFrameOrigin({extent, extent});
        scrolling->scrollWheel(wheel(extent, extent));
        scrolling->verticalScroller()->setDoubleValue(1);
        scrolling->scrollerMoved(scrolling->verticalScroller());
        scrollRectToVisible(document, {{extent, 0}, {10, extent}});
        document->setFrame({{0, 0}, {99, 200}});
        EXPECT_NEAR(scrolling->verticalScroller()->knobProportion(), 84.0 / 200, 1e-9) << "and finds its way back";
        scrolling->setFrame({{0, 0}, {extent, extent}});
        scrolling->setFrame({{0, 0}, {99, 99}});
        scrolling->scrollTo({0, 0});
        EXPECT_EQ(scrolling->documentVisibleRect().size.height, 84);
    }
}

TEST(ClipView, drawsItsBackgroundUnlessItIsNotTo) {
    const Ref<NSClipView> clip = make<NSClipView>(&NSClipView::initWithFrame, NSMakeRect(0, 0, 10, 10));
    EXPECT_EQ(drawn(clip).log, "fill 0,0 10x10 white\n");
    clip->setBackgroundColor(NSColor::redColor());
    EXPECT_EQ(drawn(clip).log, "fill 0,0 10x10 red\n");
    clip->setBackgroundColor(nullptr);
    EXPECT_EQ(drawn(clip).log, "fill 0,0 10x10 white\n");
    clip->setDrawsBackground(false);
    EXPECT_EQ(drawn(clip).log, "");
}

TEST(ClipView, scrollsToWhereItIsToldAndNotToWhatIsNoNumber) {
    const Ref<NSClipView> clip = make<NSClipView>(&NSClipView::initWithFrame, NSMakeRect(0, 0, 10, 10));
    clip->scrollToPoint({3, 4});
    EXPECT_EQ(clip->bounds().origin, (NSPoint{3, 4}));
    clip->scrollToPoint({std::numeric_limits<double>::quiet_NaN(), 0});
    EXPECT_EQ(clip->bounds().origin, (NSPoint{3, 4}));
    EXPECT_EQ(clip->constrainBoundsRect(clip->bounds()).origin, NSZeroPoint);
}

} // namespace
} // namespace zr
