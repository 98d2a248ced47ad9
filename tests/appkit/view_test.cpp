#include <zrbasic/platform/appkit/cursor.h>
#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/appkit/layer.h>
#include <zrbasic/platform/appkit/tracking_area.h>
#include <zrbasic/platform/appkit/view.h>
#include <zrbasic/platform/runtime/message.h>

#include <tests/foundation/checks.h>

#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace zr {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

class FlippedView : public NSView {
    ZR_OBJECT(FlippedView, NSView)
  public:
    bool isFlipped() const override { return true; }
};

/// Writes down what it is told.
class WatchedView : public NSView {
    ZR_OBJECT(WatchedView, NSView)
  public:
    void viewWillMoveToSuperview(NSView* superview) override { heard += superview ? "will " : "leaves "; }
    void viewDidMoveToSuperview() override { heard += superview() ? "did " : "left "; }
    void updateTrackingAreas() override { heard += "areas "; }
    void resetCursorRects() override {
        heard += "cursors ";
        addCursorRect_cursor(bounds(), NSCursor::pointingHandCursor());
    }
    NSInteger tag() const override { return 7; }

    std::string heard;
};

template <class T = NSView>
Ref<T> view(NSRect frame = {{0, 0}, {100, 50}}) {
    return make<T>(&NSView::initWithFrame, frame);
}

std::string order(NSView* parent, std::initializer_list<std::pair<const char*, NSView*>> names) {
    std::string text;
    const auto views = parent->subviews();
    for (const id& element : views->elements()) {
        for (const auto& [name, known] : names)
            text += element == known ? name : "";
    }
    return text;
}

TEST(ViewTree, keepsSubviewsFromBackToFront) {
    const auto parent = view();
    const auto a = view();
    const auto b = view();
    const auto c = view();
    parent->addSubview(a);
    parent->addSubview(b);
    parent->addSubview_positioned_relativeTo(c, NSWindowBelow, b);
    const auto names = {std::pair<const char*, NSView*>("a", a), {"b", b}, {"c", c}};
    EXPECT_EQ(order(parent, names), "acb");
    parent->addSubview_positioned_relativeTo(b, NSWindowBelow, nullptr);
    EXPECT_EQ(order(parent, names), "bac");
    parent->addSubview_positioned_relativeTo(b, NSWindowAbove, a);
    EXPECT_EQ(order(parent, names), "abc");
    parent->addSubview(a);
    EXPECT_EQ(order(parent, names), "bca");
    parent->addSubview_positioned_relativeTo(a, NSWindowBelow, view());
    EXPECT_EQ(order(parent, names), "abc") << "a stranger is no sibling";
}

TEST(ViewTree, givesAViewToOneSuperviewOnly) {
    const auto first = view();
    const auto second = view();
    const auto child = view();
    first->addSubview(child);
    second->addSubview(child);
    EXPECT_EQ(first->subviews()->count(), 0U);
    EXPECT_EQ(child->superview(), second);
    child->removeFromSuperview();
    EXPECT_EQ(child->superview(), nullptr);
    EXPECT_EQ(second->subviews()->count(), 0U);
    child->removeFromSuperview();
    second->addSubview(nullptr);
    EXPECT_EQ(second->subviews()->count(), 0U);
}

TEST(ViewTree, refusesAViewThatItLiesIn) {
    const auto outer = view();
    const auto inner = view();
    outer->addSubview(inner);
    EXPECT_EQ(test::raisedName([&] { inner->addSubview(outer); }), NSInvalidArgumentException);
    EXPECT_EQ(test::raisedName([&] { inner->addSubview(inner); }), NSInvalidArgumentException);
    EXPECT_TRUE(inner->isDescendantOf(outer));
    EXPECT_TRUE(inner->isDescendantOf(inner));
    EXPECT_FALSE(outer->isDescendantOf(inner));
    EXPECT_FALSE(outer->isDescendantOf(nullptr));
}

TEST(ViewTree, tellsAViewWhereItGoes) {
    const auto parent = view();
    const auto child = view<WatchedView>();
    parent->addSubview(child);
    child->removeFromSuperview();
    EXPECT_EQ(child->heard, "will did leaves left ");
    EXPECT_EQ(parent->viewWithTag(7), nullptr);
    parent->addSubview(child);
    EXPECT_EQ(parent->viewWithTag(7), child);
    EXPECT_EQ(parent->viewWithTag(0), parent);
    EXPECT_EQ(parent->viewWithTag(8), nullptr);
}

TEST(ViewTree, endsFromTheOutside) {
    const auto child = view();
    const auto grandchild = view();
    child->addSubview(grandchild);
    {
        const auto parent = view();
        parent->addSubview(child);
        EXPECT_EQ(child->nextResponder(), parent);
    }
    EXPECT_EQ(child->superview(), nullptr);
    EXPECT_EQ(child->nextResponder(), nullptr);
    EXPECT_EQ(grandchild->superview(), child);
}

/// Leaves for another superview as soon as it hears that it is to move.
class Restless : public NSView {
    ZR_OBJECT(Restless, NSView)
  public:
    void viewWillMoveToSuperview(NSView*) override {
        if (const Ref<NSView> other = std::exchange(refuge, nullptr))
            other->addSubview(this);
    }
    Ref<NSView> refuge;
};

TEST(ViewTree, survivesViewsThatMoveWhileTheyAreMoved) {
    const auto parent = view();
    const auto refuge = view();
    const auto child = view<Restless>();
    child->refuge = refuge;
    parent->addSubview(child);
    EXPECT_EQ(child->superview(), parent);
    EXPECT_EQ(refuge->subviews()->count(), 0U);

    const auto inner = view<Restless>();
    const auto outer = view();
    inner->refuge = nullptr;
    outer->addSubview(inner);
    EXPECT_EQ(outer->subviews()->count(), 1U);
}

TEST(ViewResponder, isFollowedByItsSuperviewUnlessToldOtherwise) {
    const auto parent = view();
    const auto child = view();
    const auto other = make<NSResponder>();
    EXPECT_EQ(child->nextResponder(), nullptr);
    parent->addSubview(child);
    EXPECT_EQ(child->nextResponder(), parent);
    child->setNextResponder(other);
    EXPECT_EQ(child->nextResponder(), other);
    child->setNextResponder(nullptr);
    EXPECT_EQ(child->nextResponder(), parent);
    EXPECT_FALSE(child->acceptsFirstMouse(nullptr));
}

TEST(ViewGeometry, keepsItsNumbersExactly) {
    const auto child = view({{0.1, -7.25}, {312.5, 1e9}});
    EXPECT_EQ(child->frame(), (NSRect{{0.1, -7.25}, {312.5, 1e9}}));
    EXPECT_EQ(child->bounds(), (NSRect{{0, 0}, {312.5, 1e9}}));
    child->setBoundsOrigin({5, 6});
    child->setFrameSize({-1, 0});
    EXPECT_EQ(child->bounds(), (NSRect{{5, 6}, {-1, 0}}));
    child->setFrame({{1, 2}, {3, 4}});
    EXPECT_EQ(child->frame(), (NSRect{{1, 2}, {3, 4}}));
    EXPECT_EQ(make<NSView>()->frame(), NSZeroRect);
}

TEST(ViewGeometry, isConvertedThroughTheTree) {
    const auto root = view({{0, 0}, {200, 100}});
    const auto child = view({{10, 20}, {50, 40}});
    const auto sibling = view({{100, 30}, {50, 40}});
    root->addSubview(child);
    root->addSubview(sibling);
    EXPECT_EQ(child->convertPoint_toView({1, 2}, root), (NSPoint{11, 22}));
    EXPECT_EQ(child->convertPoint_fromView({11, 22}, root), (NSPoint{1, 2}));
    EXPECT_EQ(child->convertPoint_toView({1, 2}, sibling), (NSPoint{-89, -8}));
    EXPECT_EQ(child->convertPoint_toView({1, 2}, nullptr), (NSPoint{11, 22}));
    EXPECT_EQ(child->convertPoint_fromView({11, 22}, nullptr), (NSPoint{1, 2}));
    EXPECT_EQ(child->convertPoint_toView({0.1, 0.2}, child), (NSPoint{0.1, 0.2}));
    child->setBoundsOrigin({100, 200});
    EXPECT_EQ(child->convertPoint_toView({101, 202}, root), (NSPoint{11, 22}));
}

TEST(ViewGeometry, turnsAroundWhereAViewIsFlipped) {
    const auto root = view({{0, 0}, {200, 100}});
    const auto flipped = view<FlippedView>({{10, 20}, {50, 40}});
    const auto inner = view({{5, 5}, {10, 10}});
    root->addSubview(flipped);
    flipped->addSubview(inner);
    EXPECT_EQ(flipped->convertPoint_toView({1, 2}, root), (NSPoint{11, 58}));
    EXPECT_EQ(flipped->convertPoint_fromView({11, 58}, root), (NSPoint{1, 2}));
    EXPECT_EQ(flipped->convertRect_toView({{1, 2}, {10, 4}}, root), (NSRect{{11, 54}, {10, 4}}));
    EXPECT_EQ(flipped->convertRect_fromView({{11, 54}, {10, 4}}, root), (NSRect{{1, 2}, {10, 4}}));
    // Five down from the top of the flipped view, ten high.
    EXPECT_EQ(inner->convertRect_toView(inner->bounds(), root), (NSRect{{15, 45}, {10, 10}}));
}

TEST(ViewHitTest, findsTheFrontmostViewUnderThePointer) {
    const auto root = view({{0, 0}, {200, 100}});
    const auto back = view({{10, 10}, {50, 50}});
    const auto front = view({{40, 10}, {50, 50}});
    const auto inner = view({{0, 0}, {10, 10}});
    root->addSubview(back);
    root->addSubview(front);
    front->addSubview(inner);
    EXPECT_EQ(root->hitTest({20, 20}), back);
    EXPECT_EQ(root->hitTest({55, 50}), front);
    EXPECT_EQ(root->hitTest({45, 15}), inner);
    EXPECT_EQ(root->hitTest({150, 90}), root);
    EXPECT_EQ(root->hitTest({201, 50}), nullptr);
    EXPECT_EQ(root->hitTest({nan, 50}), nullptr);
    front->setHidden(true);
    EXPECT_EQ(root->hitTest({45, 15}), back);
    EXPECT_TRUE(inner->isHiddenOrHasHiddenAncestor());
    EXPECT_FALSE(inner->isHidden());
}

TEST(ViewHitTest, countsTheUpperEdgeOnly) {
    const auto root = view({{0, 0}, {100, 100}});
    const auto flipped = view<FlippedView>({{0, 0}, {100, 100}});
    const auto inRoot = view({{10, 10}, {10, 10}});
    const auto inFlipped = view({{10, 10}, {10, 10}});
    root->addSubview(inRoot);
    flipped->addSubview(inFlipped);
    EXPECT_EQ(root->hitTest({10, 20}), inRoot);
    EXPECT_EQ(root->hitTest({10, 10}), root);
    // From the top of the flipped view, the same edges are at 90 and 80.
    EXPECT_EQ(flipped->hitTest({10, 90}), inFlipped);
    EXPECT_EQ(flipped->hitTest({10, 80}), flipped);
}

TEST(ViewDisplay, isWantedByAFreshViewAndAfterChanges) {
    const auto parent = view();
    const auto child = view();
    EXPECT_TRUE(parent->needsDisplay());
    const auto settle = [&] {
        parent->setNeedsDisplay(false);
        child->setNeedsDisplay(false);
    };
    settle();
    parent->addSubview(child);
    EXPECT_TRUE(parent->needsDisplay());
    settle();
    child->setFrameOrigin({5, 5});
    EXPECT_TRUE(parent->needsDisplay());
    EXPECT_FALSE(child->needsDisplay()) << "it looks as before";
    settle();
    child->setFrameSize({1, 1});
    EXPECT_TRUE(child->needsDisplay());
    settle();
    child->setHidden(true);
    EXPECT_TRUE(parent->needsDisplay());
    settle();
    child->setAlphaValue(0.5);
    EXPECT_TRUE(child->needsDisplay());
    settle();
    child->removeFromSuperview();
    EXPECT_TRUE(parent->needsDisplay());
    child->drawRect(child->bounds());
}

TEST(ViewDisplay, clampsTheOpacity) {
    const auto child = view();
    EXPECT_EQ(child->alphaValue(), 1);
    child->setAlphaValue(-3);
    EXPECT_EQ(child->alphaValue(), 0);
    child->setAlphaValue(7);
    EXPECT_EQ(child->alphaValue(), 1);
    child->setAlphaValue(nan);
    EXPECT_EQ(child->alphaValue(), 1);
}

TEST(ViewLayer, isMadeOnDemandAndTellsItsView) {
    const auto child = view();
    EXPECT_EQ(child->layer(), nullptr);
    child->setWantsLayer(true);
    const auto layer = child->layer();
    ASSERT_NE(layer, nullptr);
    EXPECT_EQ(layer->borderWidth(), 0);
    EXPECT_EQ(layer->borderColor(), NSColor::blackColor());
    EXPECT_EQ(layer->backgroundColor(), nullptr);
    EXPECT_EQ(layer->anchorPoint(), (NSPoint{0.5, 0.5}));
    const auto tells = [&](auto change) {
        child->setNeedsDisplay(false);
        change();
        return child->needsDisplay();
    };
    EXPECT_TRUE(tells([&] { layer->setBorderWidth(2.5); }));
    EXPECT_TRUE(tells([&] { layer->setBorderColor(nullptr); }));
    EXPECT_TRUE(tells([&] { layer->setBackgroundColor(NSColor::redColor()); }));
    EXPECT_TRUE(tells([&] { layer->setCornerRadius(3); }));
    EXPECT_TRUE(tells([&] { layer->setPosition({1, 2}); }));
    EXPECT_TRUE(tells([&] { layer->setAnchorPoint({0, 0}); }));
    EXPECT_EQ(layer->borderWidth(), 2.5);
    EXPECT_EQ(layer->cornerRadius(), 3);
    EXPECT_EQ(layer->position(), (NSPoint{1, 2}));
    child->setWantsLayer(true);
    EXPECT_EQ(child->layer(), layer) << "it has one already";
    child->setWantsLayer(false);
    EXPECT_EQ(child->layer(), nullptr);
}

TEST(ViewLayer, mayOutliveItsView) {
    auto child = view();
    child->setWantsLayer(true);
    const auto layer = child->layer();
    child = nullptr;
    EXPECT_EQ(layer->delegate(), nullptr);
    layer->setBorderWidth(1);
    EXPECT_EQ(layer->borderWidth(), 1);
}

TEST(ViewTracking, keepsEachAreaOnce) {
    const auto child = view();
    const auto info = dictionary({{"a"_ns, "b"_ns}});
    const auto area = make<NSTrackingArea>(&NSTrackingArea::initWithRect_options_owner_userInfo, NSRect{{1, 2}, {3, 4}},
                                           129U, child.get(), info.get());
    child->addTrackingArea(area);
    child->addTrackingArea(area);
    child->addTrackingArea(nullptr);
    EXPECT_EQ(child->trackingAreas()->count(), 1U);
    EXPECT_EQ(area->rect(), (NSRect{{1, 2}, {3, 4}}));
    EXPECT_EQ(area->options(), NSUInteger{NSTrackingMouseEnteredAndExited | NSTrackingActiveAlways});
    EXPECT_EQ(area->owner(), child);
    EXPECT_EQ(area->userInfo(), info);
    child->removeTrackingArea(nullptr);
    child->removeTrackingArea(area);
    child->removeTrackingArea(area);
    EXPECT_EQ(child->trackingAreas()->count(), 0U);
}

TEST(ViewTracking, doesNotKeepTheOwner) {
    auto owner = make<NSObject>();
    const auto area = make<NSTrackingArea>(&NSTrackingArea::initWithRect_options_owner_userInfo, NSZeroRect, 0U,
                                           owner.get(), nullptr);
    owner = nullptr;
    EXPECT_EQ(area->owner(), nullptr);
}

TEST(ViewTracking, isRenewedWhenTheBoundsChange) {
    const auto child = view<WatchedView>();
    child->setFrameSize({10, 20});
    EXPECT_EQ(child->heard, "areas cursors ");
    ASSERT_EQ(child->cursorRects().size(), 1U);
    EXPECT_EQ(child->cursorRects().front().rect, (NSRect{{0, 0}, {10, 20}}));
    child->setFrameSize({10, 20});
    child->setFrameOrigin({3, 3});
    EXPECT_EQ(child->heard, "areas cursors ") << "nothing has changed for it";
    child->setBoundsOrigin({1, 1});
    EXPECT_EQ(child->heard, "areas cursors areas cursors ");
    EXPECT_EQ(child->cursorRects().size(), 1U);
}

TEST(ViewCursors, needARectangleAndACursor) {
    const auto child = view();
    child->addCursorRect_cursor({{0, 0}, {5, 5}}, nullptr);
    child->addCursorRect_cursor(NSZeroRect, NSCursor::arrowCursor());
    EXPECT_TRUE(child->cursorRects().empty());
    child->addCursorRect_cursor({{0, 0}, {5, 5}}, NSCursor::IBeamCursor());
    EXPECT_EQ(child->cursorRects().size(), 1U);
    child->discardCursorRects();
    EXPECT_TRUE(child->cursorRects().empty());
}

TEST(Cursor, isTheSameObjectForOneShape) {
    EXPECT_EQ(NSCursor::pointingHandCursor(), NSCursor::pointingHandCursor());
    EXPECT_EQ(NSCursor::arrowCursor()->shape(), NSCursor::Shape::Arrow);
    EXPECT_EQ(NSCursor::IBeamCursor()->shape(), NSCursor::Shape::IBeam);
    EXPECT_EQ(NSCursor::pointingHandCursor()->shape(), NSCursor::Shape::PointingHand);
    EXPECT_EQ(NSCursor::resizeLeftRightCursor()->shape(), NSCursor::Shape::ResizeLeftRight);
    EXPECT_EQ(NSCursor::resizeUpDownCursor()->shape(), NSCursor::Shape::ResizeUpDown);
    EXPECT_EQ(NSCursor::crosshairCursor()->shape(), NSCursor::Shape::Crosshair);
}

TEST(ViewLayout, resistsCompressionMoreThanGrowth) {
    const auto child = view();
    constexpr auto horizontal = NSLayoutConstraintOrientationHorizontal;
    constexpr auto vertical = NSLayoutConstraintOrientationVertical;
    EXPECT_EQ(child->contentHuggingPriorityForOrientation(horizontal), 250);
    EXPECT_EQ(child->contentCompressionResistancePriorityForOrientation(vertical), 750);
    child->setContentHuggingPriority_forOrientation(700, horizontal);
    child->setContentCompressionResistancePriority_forOrientation(200, vertical);
    EXPECT_EQ(child->contentHuggingPriorityForOrientation(horizontal), 700);
    EXPECT_EQ(child->contentHuggingPriorityForOrientation(vertical), 250);
    EXPECT_EQ(child->contentCompressionResistancePriorityForOrientation(vertical), 200);
    EXPECT_EQ(child->contentCompressionResistancePriorityForOrientation(horizontal), 750);
    EXPECT_EQ(child->intrinsicContentSize(), (NSSize{-1, -1}));
}

TEST(ViewProperties, areCopiedAndMayBeNull) {
    const auto child = view();
    EXPECT_EQ(child->identifier(), nullptr);
    child->setIdentifier("price"_ns);
    child->setToolTip("The last price"_ns);
    EXPECT_EQ(child->identifier()->utf8(), "price");
    EXPECT_EQ(child->toolTip()->utf8(), "The last price");
    child->setIdentifier(nullptr);
    child->setToolTip(nullptr);
    EXPECT_EQ(child->identifier(), nullptr);
    EXPECT_EQ(child->toolTip(), nullptr);
    EXPECT_EQ(child->focusRingType(), NSFocusRingTypeDefault);
    child->setFocusRingType(NSFocusRingTypeNone);
    EXPECT_EQ(child->focusRingType(), NSFocusRingTypeNone);
}

TEST(ViewMessages, reachTheObjectsOwnOperations) {
    const auto root = view({{0, 0}, {200, 100}});
    const auto child = view({{0, 0}, {10, 10}});
    root->addSubview(child);
    EXPECT_EQ(send<Ref<NSView>>(root, "hitTest:"_sel, NSPoint{5, 5}), child);
    EXPECT_EQ(send<NSRect>(child, "frame"_sel), child->frame());
    send<void>(child, "setFrame:"_sel, NSRect{{1, 1}, {2, 2}});
    EXPECT_EQ(child->frame(), (NSRect{{1, 1}, {2, 2}}));
    EXPECT_FALSE(send<bool>(child, "acceptsFirstMouse:"_sel, nullptr));
}

} // namespace
} // namespace zr
