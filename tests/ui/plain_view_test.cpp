#include <zrbasic/ui/plain_view.h>

#include "../appkit/scroller_testing.h"

#include <zrbasic/platform/foundation/key_value_coding.h>
#include <zrbasic/platform/foundation/number.h>

namespace zr {
namespace {

using namespace test;

class PressedSuperview : public NSView {
    ZR_OBJECT(PressedSuperview, NSView)
  public:
    void mouseDown(NSEvent*) override { ++presses; }

    int presses = 0;
};

Ref<ZRXView> plainView(NSRect frame) {
    return make<ZRXView>(&ZRXView::initWithFrame, frame);
}

TEST(PlainView, hasItsOriginAtTheUpperLeft) {
    const Ref<ZRXView> view = plainView({{0, 0}, {100, 50}});
    EXPECT_TRUE(view->isFlipped());
    EXPECT_EQ(view->convertPoint_toView({10, 10}, nullptr), (NSPoint{10, 40}));
    EXPECT_FALSE(view->bannedMouseClick());
}

TEST(PlainView, findsWhatLiesInItUnlessClicksAreBanned) {
    const Ref<ZRXView> view = plainView({{0, 0}, {100, 50}});
    const Ref<NSView> inside = make<NSView>(&NSView::initWithFrame, NSMakeRect(0, 0, 10, 10));
    view->addSubview(inside);
    EXPECT_EQ(view->hitTest({5, 45}), inside);
    EXPECT_EQ(view->hitTest({50, 25}), view);
    EXPECT_FALSE(view->hitTest({500, 25}));
    view->setBannedMouseClick(true);
    EXPECT_EQ(view->hitTest({5, 45}), view);
    view->setBannedMouseClick(false);
    EXPECT_EQ(view->hitTest({5, 45}), inside);
}

TEST(PlainView, withClicksBannedItIsHitWhereverThePointIs) {
    const Ref<ZRXView> view = plainView({{10, 10}, {20, 20}});
    view->setBannedMouseClick(true);
    for (const double x : {15.0, 0.0, -1e300, std::numeric_limits<double>::quiet_NaN()}) {
        SCOPED_TRACE(x);
        EXPECT_EQ(view->hitTest({x, 15}), view);
    }
    view->setHidden(true);
    EXPECT_EQ(view->hitTest({15, 15}), view);
}

TEST(PlainView, withClicksBannedItTakesThoseForViewsBehindAndBesideIt) {
    const Ref<NSView> root = make<NSView>(&NSView::initWithFrame, NSMakeRect(0, 0, 100, 100));
    const Ref<NSView> behind = make<NSView>(&NSView::initWithFrame, NSMakeRect(0, 0, 50, 100));
    const Ref<ZRXView> view = plainView({{80, 80}, {10, 10}});
    root->addSubview(behind);
    root->addSubview(view);
    EXPECT_EQ(root->hitTest({20, 20}), behind);
    view->setBannedMouseClick(true);
    EXPECT_EQ(root->hitTest({20, 20}), view);
    EXPECT_FALSE(root->hitTest({200, 20}));
}

TEST(PlainView, aPressGoesOnToTheViewThatItLiesIn) {
    const Ref<PressedSuperview> root = make<PressedSuperview>(&PressedSuperview::initWithFrame, NSMakeRect(0, 0, 9, 9));
    const Ref<ZRXView> view = plainView({{0, 0}, {9, 9}});
    root->addSubview(view);
    view->mouseDown(mouseEvent(NSEventTypeLeftMouseDown, 1, 1));
    EXPECT_EQ(root->presses, 1);
    EXPECT_TRUE(view->respondsToSelector("prepareForReuse"_sel));
    send<void>(view, "prepareForReuse"_sel);
    EXPECT_EQ(root->presses, 1);
}

TEST(PlainView, isOpaqueAndShownAgainBeforeItIsReused) {
    const Ref<ZRXView> view = plainView({{0, 0}, {9, 9}});
    view->setAlphaValue(0.25);
    view->setHidden(true);
    send<void>(view, "prepareForReuse"_sel);
    EXPECT_EQ(view->alphaValue(), 1);
    EXPECT_FALSE(view->isHidden());
    view->setHidden(true);
    view->prepareForReuse();
    EXPECT_FALSE(view->isHidden());
}

TEST(PlainView, clicksCanBeBannedByName) {
    const Ref<ZRXView> view = plainView({{0, 0}, {9, 9}});
    setValue_forKey(view, box(true), "bannedMouseClick"_ns);
    EXPECT_TRUE(view->bannedMouseClick());
    EXPECT_TRUE(send<bool>(view, "bannedMouseClick"_sel));
    send<void>(view, "setBannedMouseClick:"_sel, false);
    EXPECT_FALSE(view->bannedMouseClick());
    EXPECT_TRUE(valueForKey(view, "bannedMouseClick"_ns)->isEqual(box(false)));
}

} // namespace
} // namespace zr
