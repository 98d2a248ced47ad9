#include "canvas_testing.h"
#include "split_view_testing.h"

#include <zrbasic/platform/appkit/cursor.h>
#include <zrbasic/platform/foundation/notification_center.h>

#include <limits>

namespace zr {
namespace {

using test::mouseEvent;
using test::thicknesses;
using test::viewOfWidth;
using Extents = std::vector<double>;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// Side by side, 300 by 100 points at 0, 0 of a window.
class SplitView : public testing::Test {
  protected:
    void SetUp() override {
        split = make<NSSplitView>(&NSSplitView::initWithFrame, NSRect{{0, 0}, {300, 100}});
        split->setVertical(true);
    }

    Ref<NSView> add(double width) {
        Ref<NSView> view = viewOfWidth(width);
        split->addSubview(view);
        return view;
    }
    Extents at(double width) {
        split->setFrameSize({width, 100});
        return thicknesses(split);
    }
    void mouse(SEL operation, NSEventType type, NSPoint at) { send<void>(split, operation, mouseEvent(type, at)); }

    test::WindowToolkit toolkit;
    Ref<NSSplitView> split;
};

TEST_F(SplitView, laysItsSubviewsOutSideBySideWithALineBetween) {
    const auto left = add(100);
    const auto right = add(199);
    EXPECT_EQ(left->frame(), (NSRect{{0, 0}, {100, 100}}));
    EXPECT_EQ(right->frame(), (NSRect{{101, 0}, {199, 100}}));
    EXPECT_EQ(split->rectOfDividerAtIndex(0), (NSRect{{100, 0}, {1, 100}}));
    EXPECT_EQ(split->rectOfDividerAtIndex(1), NSZeroRect);
    EXPECT_EQ(split->rectOfDividerAtIndex(-1), NSZeroRect);
}

TEST_F(SplitView, laysThemOutFromTopToBottomOtherwise) {
    EXPECT_FALSE(make<NSSplitView>()->isVertical());
    const auto first = make<NSView>(&NSView::initWithFrame, NSRect{{0, 0}, {10, 39}});
    const auto second = make<NSView>(&NSView::initWithFrame, NSRect{{0, 0}, {10, 60}});
    split->setVertical(false);
    split->addSubview(first);
    split->addSubview(second);
    EXPECT_TRUE(split->isFlipped());
    EXPECT_EQ(first->frame(), (NSRect{{0, 0}, {300, 39}}));
    EXPECT_EQ(second->frame(), (NSRect{{0, 40}, {300, 60}}));
}

TEST_F(SplitView, sharesWhatIsMissingByWhatEachWants) {
    add(150);
    add(150);
    EXPECT_EQ(at(300), (Extents{149.5, 149.5}));
    EXPECT_EQ(at(301), (Extents{150, 150}));
    EXPECT_EQ(at(101), (Extents{50, 50}));
    EXPECT_EQ(at(401), (Extents{200, 200}));
    add(300);
    EXPECT_EQ(at(302), (Extents{75, 75, 150})) << "half of what each wants";
    EXPECT_EQ(at(1202), (Extents{300, 300, 600}));
}

TEST_F(SplitView, takesRoomFromTheViewThatResistsLeast) {
    struct Row {
        double width;
        Extents preferFirst;
        Extents preferSecond;
    };
    const Row rows[] = {{200, {150, 49}, {49, 150}}, {300, {150, 149}, {149, 150}}, {400, {249, 150}, {150, 249}}};
    const auto first = add(150);
    const auto second = add(150);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.width);
        test::prefer(first, second);
        split->adjustSubviews();
        EXPECT_EQ(at(row.width), row.preferFirst);
        test::prefer(second, first);
        split->adjustSubviews();
        EXPECT_EQ(at(row.width), row.preferSecond);
    }
    test::prefer(first, second, NSLayoutConstraintOrientationVertical);
    split->adjustSubviews();
    EXPECT_EQ(at(200), (Extents{49, 150})) << "the other orientation does not matter";
}

TEST_F(SplitView, takesRoomFromTheNextViewOnceTheFirstHasNoneLeft) {
    const auto first = add(150);
    const auto second = add(150);
    test::prefer(first, second);
    split->setThicknessLimits({100, 180}, second);
    split->setThicknessLimits({0, 200}, first);
    EXPECT_EQ(at(251), (Extents{150, 100}));
    EXPECT_EQ(at(201), (Extents{100, 100}));
    EXPECT_EQ(at(351), (Extents{200, 150}));
    EXPECT_EQ(at(371), (Extents{200, 170}));
    EXPECT_EQ(at(301), (Extents{150, 150})) << "and nothing of it is remembered";
}

TEST_F(SplitView, keepsItsLimitsWhateverTheRoom) {
    add(100);
    const auto view = add(100);
    split->setThicknessLimits({120, 120}, view);
    EXPECT_EQ(at(301), (Extents{180, 120}));
    EXPECT_EQ(at(51), (Extents{0, 120})) << "it reaches beyond the end";
    const Ref<NSView> first(cast<NSView>(split->subviews()->firstObject()));
    split->setThicknessLimits({0, 50}, first);
    EXPECT_EQ(at(301), (Extents{50, 120})) << "room is left";
    split->setThicknessLimits({200, 100}, first);
    EXPECT_EQ(at(301), (Extents{200, 120})) << "the minimum holds";
}

TEST_F(SplitView, sharesOutWhatALimitLeaves) {
    const auto first = add(100);
    add(100);
    add(100);
    split->setThicknessLimits({90, 110}, first);
    EXPECT_EQ(at(182), (Extents{90, 45, 45}));
    EXPECT_EQ(at(512), (Extents{110, 200, 200}));
}

TEST_F(SplitView, countsNoMoreThanItsMaximumAsAViewsWish) {
    const auto wide = add(1000);
    add(100);
    split->setThicknessLimits({0, 100}, wide);
    EXPECT_EQ(at(201), (Extents{100, 100}));
    EXPECT_EQ(at(151), (Extents{75, 75}));
    split->setThicknessLimits({}, wide);
    EXPECT_EQ(at(1101), (Extents{1000, 100})) << "the wish itself is kept";
}

TEST_F(SplitView, countsOddLimitsAsNone) {
    const auto view = add(100);
    for (const double odd : {nan, infinity, -infinity, -1.0}) {
        SCOPED_TRACE(odd);
        split->setThicknessLimits({odd, odd}, view);
        EXPECT_EQ(split->thicknessLimits(view).minimum, 0);
        EXPECT_EQ(split->thicknessLimits(view).maximum, infinity);
        EXPECT_EQ(at(300), Extents{300});
    }
    split->setThicknessLimits({1, 2}, nullptr);
    EXPECT_EQ(split->thicknessLimits(nullptr).minimum, 0);
    EXPECT_EQ(split->thicknessLimits(split).maximum, infinity);
}

TEST_F(SplitView, standsOddExtents) {
    add(100);
    add(nan);
    add(-5);
    add(1e300);
    for (const double odd : {nan, infinity, -infinity, -10.0, 0.0, 2.0, 1e300}) {
        SCOPED_TRACE(odd);
        for (const double thickness : at(odd)) {
            EXPECT_TRUE(std::isfinite(thickness));
            EXPECT_GE(thickness, 0);
        }
    }
    split->setFrameSize({300, nan});
    split->setBoundsOrigin({nan, infinity});
    const NSRect frame = cast<NSView>(split->subviews()->firstObject())->frame();
    EXPECT_EQ(frame.size.height, 0);
    EXPECT_EQ(frame.origin, NSZeroPoint);
}

/// Has an extent of its own.
class Natural : public NSView {
    ZR_OBJECT(Natural, NSView)
  public:
    NSSize intrinsicContentSize() const override { return {80, 20}; }
};

TEST_F(SplitView, givesAViewWithoutAThicknessItsNaturalOne) {
    split->setFrameSize({300, 100});
    const auto plain = add(100);
    const auto natural = make<Natural>();
    split->addSubview(natural);
    test::prefer(plain, natural);
    EXPECT_EQ(at(401), (Extents{320, 80}));
    const auto none = add(0);
    split->setFrameSize({200, 100});
    EXPECT_EQ(none->frame().size.width, 0);
}

TEST_F(SplitView, sharesEquallyAmongViewsThatWantNothing) {
    add(0);
    add(0);
    EXPECT_EQ(at(301), (Extents{150, 150}));
}

TEST_F(SplitView, followsTheListOfSubviews) {
    const auto first = add(100);
    const auto second = add(100);
    second->removeFromSuperview();
    EXPECT_EQ(first->frame().size.width, 300);
    split->addSubview_positioned_relativeTo(second, NSWindowBelow, first);
    EXPECT_EQ(second->frame().origin.x, 0);
    EXPECT_EQ(first->frame().origin.x, NSMaxX(second->frame()) + 1);
    second->setHidden(true);
    EXPECT_EQ(first->frame(), (NSRect{{0, 0}, {300, 100}}));
    EXPECT_TRUE(split->isSubviewCollapsed(second));
    EXPECT_FALSE(split->isSubviewCollapsed(first));
    EXPECT_FALSE(split->isSubviewCollapsed(nullptr));
    EXPECT_EQ(split->rectOfDividerAtIndex(0), NSZeroRect);
    second->setHidden(false);
    EXPECT_LT(first->frame().size.width, 300);
}

TEST_F(SplitView, takesAFrameThatSomebodyElseSetAsAWish) {
    const auto first = add(100);
    add(100);
    split->setFrameSize({201, 100});
    first->setFrameSize({150, 100});
    split->adjustSubviews();
    EXPECT_EQ(thicknesses(split), (Extents{120, 80}));
    EXPECT_EQ(at(251), (Extents{150, 100}));
}

TEST_F(SplitView, movesALineAsFarAsItsNeighboursAllow) {
    const auto first = add(100);
    const auto second = add(100);
    add(98);
    split->setThicknessLimits({50, 150}, first);
    split->setThicknessLimits({80, infinity}, second);
    split->setPosition_ofDividerAtIndex(110.25, 0);
    EXPECT_EQ(thicknesses(split), (Extents{110.25, 89.75, 98}));
    split->setPosition_ofDividerAtIndex(1000, 0);
    EXPECT_EQ(thicknesses(split), (Extents{120, 80, 98}));
    EXPECT_EQ(split->maxPossiblePositionOfDividerAtIndex(0), 120);
    split->setPosition_ofDividerAtIndex(-1000, 0);
    EXPECT_EQ(thicknesses(split), (Extents{50, 150, 98}));
    EXPECT_EQ(split->minPossiblePositionOfDividerAtIndex(0), 50);
    split->setPosition_ofDividerAtIndex(1000, 1);
    EXPECT_EQ(thicknesses(split), (Extents{50, 248, 0}));
    for (const NSInteger index : {NSInteger{-1}, NSInteger{2}, std::numeric_limits<NSInteger>::max()}) {
        split->setPosition_ofDividerAtIndex(60, index);
        EXPECT_EQ(split->minPossiblePositionOfDividerAtIndex(index), 0);
    }
    split->setPosition_ofDividerAtIndex(nan, 0);
    EXPECT_EQ(thicknesses(split), (Extents{50, 248, 0}));
}

TEST_F(SplitView, remembersWhereALineWasMovedTo) {
    add(150);
    add(150);
    split->setFrameSize({301, 100});
    split->setPosition_ofDividerAtIndex(100, 0);
    EXPECT_EQ(at(151), (Extents{50, 100}));
    EXPECT_EQ(at(301), (Extents{100, 200}));
}

TEST_F(SplitView, letsTheMouseMoveItsLines) {
    add(100);
    add(199);
    // Caught a point beside the line, which follows at that distance.
    mouse("mouseDown:"_sel, NSEventTypeLeftMouseDown, {101.5, 50});
    mouse("mouseDragged:"_sel, NSEventTypeLeftMouseDragged, {141.5, 10});
    EXPECT_EQ(thicknesses(split), (Extents{140, 159}));
    mouse("mouseDragged:"_sel, NSEventTypeLeftMouseDragged, {-400, 10});
    EXPECT_EQ(thicknesses(split), (Extents{0, 299}));
    mouse("mouseDragged:"_sel, NSEventTypeLeftMouseDragged, {121.75, 10});
    mouse("mouseUp:"_sel, NSEventTypeLeftMouseUp, {121.75, 10});
    mouse("mouseDragged:"_sel, NSEventTypeLeftMouseDragged, {200, 10});
    EXPECT_EQ(thicknesses(split), (Extents{120.25, 178.75})) << "it was let go";
    mouse("mouseDown:"_sel, NSEventTypeLeftMouseDown, {50, 50});
    mouse("mouseDragged:"_sel, NSEventTypeLeftMouseDragged, {60, 50});
    EXPECT_EQ(thicknesses(split), (Extents{120.25, 178.75})) << "that was no line";
    split->mouseDown(nullptr);
    split->mouseDragged(nullptr);
    split->mouseUp(nullptr);
}

TEST_F(SplitView, countsFromTheTopWhenALineBelowIsMoved) {
    split->setVertical(false);
    split->addSubview(make<NSView>(&NSView::initWithFrame, NSRect{{0, 0}, {10, 39}}));
    split->addSubview(make<NSView>(&NSView::initWithFrame, NSRect{{0, 0}, {10, 60}}));
    mouse("mouseDown:"_sel, NSEventTypeLeftMouseDown, {50, 60.5});
    mouse("mouseDragged:"_sel, NSEventTypeLeftMouseDragged, {50, 70.5});
    EXPECT_EQ(thicknesses(split), (Extents{29, 70}));
}

TEST_F(SplitView, catchesTheMouseBesideItsLines) {
    const auto left = add(100);
    const auto right = add(199);
    const std::pair<double, NSView*> rows[] = {
        {97.5, left}, {98, split}, {100, split}, {102.5, split}, {103, right}, {250, right},
    };
    for (const auto& [x, view] : rows) {
        SCOPED_TRACE(x);
        EXPECT_EQ(split->hitTest({x, 50}), view);
    }
    EXPECT_EQ(split->hitTest({100, 150}), nullptr);
    split->setHidden(true);
    EXPECT_EQ(split->hitTest({100, 50}), nullptr);
}

TEST_F(SplitView, showsAResizeCursorOverItsLines) {
    add(100);
    add(199);
    ASSERT_EQ(split->cursorRects().size(), 1U);
    EXPECT_EQ(split->cursorRects()[0].rect, (NSRect{{98, 0}, {5, 100}}));
    EXPECT_EQ(split->cursorRects()[0].cursor, NSCursor::resizeLeftRightCursor());
    split->setPosition_ofDividerAtIndex(150, 0);
    ASSERT_EQ(split->cursorRects().size(), 1U);
    EXPECT_EQ(split->cursorRects()[0].rect.origin.x, 148);
    split->setVertical(false);
    ASSERT_EQ(split->cursorRects().size(), 1U);
    EXPECT_EQ(split->cursorRects()[0].cursor, NSCursor::resizeUpDownCursor());
}

TEST_F(SplitView, drawsItsLines) {
    add(100);
    add(50);
    add(148);
    EXPECT_EQ(test::drawn(split).log, "fill 100,0 1x100 69/69/69\nfill 151,0 1x100 69/69/69\n");
    split->drawRect(split->bounds());
    EXPECT_EQ(test::drawn(make<NSSplitView>()).log, "");
}

/// Writes down that it was told, and may meddle.
class Watcher : public NSObject {
    ZR_OBJECT(Watcher, NSObject)
  public:
    void resized(NSNotification*) {
        ++told;
        if (whenTold) {
            whenTold();
        }
    }
    ZR_METHOD(resized, "splitViewDidResizeSubviews:")
    int told = 0;
    std::function<void()> whenTold;
};

TEST_F(SplitView, tellsItsDelegateOfNewFrames) {
    const auto watcher = make<Watcher>();
    int posted = 0;
    const auto center = NSNotificationCenter::defaultCenter();
    const id observer = center->addObserverForName_object_usingBlock(NSSplitViewDidResizeSubviewsNotification(), split,
                                                                     [&](NSNotification*) { ++posted; });
    split->setDelegate(watcher);
    add(100);
    add(199);
    EXPECT_EQ(watcher->told, 2);
    split->adjustSubviews();
    split->setPosition_ofDividerAtIndex(100, 0);
    EXPECT_EQ(watcher->told, 2) << "nothing has moved";
    split->setPosition_ofDividerAtIndex(120, 0);
    EXPECT_EQ(watcher->told, 3);
    EXPECT_EQ(posted, 3);
    center->removeObserver(observer);
}

TEST_F(SplitView, comesToRestWhateverItsDelegateDoes) {
    const auto watcher = make<Watcher>();
    const auto first = add(100);
    const auto second = add(199);
    split->setDelegate(watcher);
    watcher->whenTold = [&] {
        second->setHidden(!second->isHidden());
        split->setPosition_ofDividerAtIndex(5, 0);
        split->adjustSubviews();
    };
    split->setFrameSize({500, 100});
    EXPECT_EQ(watcher->told, 2);
    watcher->whenTold = [&] { split->subviews()->count() > 1 ? second->removeFromSuperview() : void(); };
    split->setFrameSize({400, 100});
    EXPECT_EQ(first->frame().size.width, 400);
}

} // namespace
} // namespace zr
