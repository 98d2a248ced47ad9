#include "view_testing.h"

#include <zrbasic/platform/appkit/cursor.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/ui/view.h>

#include <QPushButton>
#include <QVBoxLayout>

#include <limits>
#include <utility>

namespace zr::test {
namespace {

constexpr NSUInteger always = NSTrackingMouseEnteredAndExited | NSTrackingActiveAlways;

class Tracking : public ViewWindow {
  protected:
    void SetUp() override {
        view = add({{100, 100}, {100, 100}});
        show();
        // The pointer may be there already, from an earlier window.
        moveTo(12, 12);
        moveTo(10, 10);
        view->take();
        content->take();
    }

    Ref<NSTrackingArea> track(NSView* in, NSRect rect, NSUInteger options = always, NSObject* owner = nullptr) {
        auto area = make<NSTrackingArea>(&NSTrackingArea::initWithRect_options_owner_userInfo, rect, options,
                                         owner ? owner : static_cast<NSObject*>(in), nullptr);
        in->addTrackingArea(area);
        return area;
    }

    Ref<LoggingView> view;
};

TEST_F(Tracking, thePointerEntersAndLeavesAnArea) {
    const Ref<NSTrackingArea> area = track(view, view->bounds());
    moveTo(150, 150);
    EXPECT_EQ(view->take(), "entered ");
    EXPECT_EQ(view->last->type(), NSEventTypeMouseEntered);
    EXPECT_EQ(view->last->trackingArea(), area);
    EXPECT_EQ(view->last->locationInWindow(), NSMakePoint(150, 150));
    moveTo(160, 150);
    EXPECT_EQ(view->take(), "");
    moveTo(210, 150);
    EXPECT_EQ(view->take(), "exited ");
    EXPECT_EQ(view->last->type(), NSEventTypeMouseExited);
}

TEST_F(Tracking, aPartOfAViewIsTrackedUnderWhatLiesOnIt) {
    const Ref<LoggingView> child = add({{0, 0}, {50, 50}}, view);
    child->take();
    track(view, {{10, 10}, {20, 20}});
    auto* const button = new QPushButton(widgetOf(view));
    button->setGeometry(50, 50, 50, 50);
    button->show();
    track(view, {{60, 10}, {20, 20}});
    moveTo(105, 105);
    EXPECT_EQ(view->take(), "");
    moveTo(115, 115);
    EXPECT_EQ(view->take(), "entered ");
    moveTo(135, 115);
    EXPECT_EQ(view->take(), "exited ");
    moveTo(170, 120);
    EXPECT_EQ(view->take(), "entered ");
    moveTo(155, 120);
    EXPECT_EQ(view->take(), "exited ");
    EXPECT_EQ(child->take(), "");
}

TEST_F(Tracking, aManagedAreaTakesThePlaceOfTheOneBefore) {
    zr_addTrackingArea(view);
    zr_addTrackingAreaWithRect(view, {{0, 0}, {50, 100}});
    moveTo(170, 150);
    EXPECT_EQ(view->take(), "") << "the first one is gone";
    moveTo(120, 150);
    EXPECT_EQ(view->take(), "entered ") << "once, by the one that is there";
    moveTo(170, 150);
    EXPECT_EQ(view->take(), "exited ");
}

TEST_F(Tracking, aManagedAreaMayBeOfAnyExtent) {
    constexpr double infinite = std::numeric_limits<double>::infinity();
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    const std::pair<NSRect, const char*> rows[] = {
        {{{none, 0}, {10, 10}}, ""},
        {{{0, 0}, {100, none}}, ""},
        {{{0, 0}, {0, 100}}, ""},
        {{{50, 50}, {-50, -50}}, ""},
        {{{-1e300, -1e300}, {2e300, 2e300}}, "entered exited "},
        {{{0, 0}, {infinite, infinite}}, "entered exited "},
    };
    for (const auto& [rect, expected] : rows) {
        SCOPED_TRACE(rect.origin.x);
        zr_addTrackingAreaWithRect(view, rect);
        moveTo(120, 120);
        moveTo(10, 10);
        EXPECT_EQ(view->take(), expected);
    }
}

TEST_F(Tracking, theEdgesOfAnAreaBelongToItAsThoseOfAViewDo) {
    track(view, view->bounds());
    struct Row {
        const char* label;
        double x;
        double y;
        const char* log;
    };
    for (const Row& row :
         {Row{"left edge", 100, 150, "entered "}, Row{"beside it", 99, 150, ""}, Row{"right edge", 200, 150, ""},
          Row{"last column", 199, 150, "entered "}, Row{"top edge", 150, 200, "entered "},
          Row{"above it", 150, 201, ""}, Row{"bottom edge", 150, 100, ""}, Row{"last row", 150, 101, "entered "}}) {
        SCOPED_TRACE(row.label);
        moveTo(row.x, row.y);
        EXPECT_EQ(view->take(), row.log);
        moveTo(10, 10);
        view->take();
    }
}

TEST_F(Tracking, movesAndCursorUpdatesAreToldToWhomAskedForThem) {
    track(view, view->bounds(), NSTrackingMouseMoved | NSTrackingCursorUpdate | NSTrackingActiveAlways);
    moveTo(150, 150);
    EXPECT_EQ(view->take(), "cursor moved ");
    moveTo(151, 150);
    EXPECT_EQ(view->take(), "moved ");
    EXPECT_EQ(view->last->type(), NSEventTypeMouseMoved);
    moveTo(10, 10);
    EXPECT_EQ(view->take(), "");
}

TEST_F(Tracking, theOwnerIsToldWhoeverItIs) {
    const Ref<LoggingView> owner = loggingView({{0, 0}, {1, 1}});
    track(view, view->bounds(), always, owner);
    moveTo(150, 150);
    EXPECT_EQ(owner->take(), "entered ");
    EXPECT_EQ(view->take(), "");
    const auto deaf = make<NSObject>();
    track(view, view->bounds(), always, deaf);
    moveTo(10, 10);
    EXPECT_EQ(owner->take(), "exited ");
}

TEST_F(Tracking, anOwnerThatIsGoneIsToldNothing) {
    Ref<LoggingView> owner = loggingView({{0, 0}, {1, 1}});
    track(view, view->bounds(), always, owner);
    owner = nullptr;
    moveTo(150, 150);
    moveTo(10, 10);
    EXPECT_EQ(view->take(), "");
}

TEST_F(Tracking, whatIsHiddenOrCutOffIsNotEntered) {
    const Ref<LoggingView> inner = add({{50, 50}, {200, 200}}, view);
    inner->take();
    track(inner, inner->bounds());
    moveTo(250, 250);
    EXPECT_EQ(inner->take(), "");
    moveTo(180, 180);
    EXPECT_EQ(inner->take(), "entered ");
    view->setHidden(true);
    EXPECT_TRUE(eventually([&] { return inner->log == "exited "; }));
    view->setHidden(false);
    EXPECT_TRUE(eventually([&] { return inner->log == "exited entered "; }));
}

TEST_F(Tracking, aViewThatComesUnderThePointerIsEntered) {
    track(view, view->bounds());
    view->setFrameOrigin({0, 0});
    EXPECT_TRUE(eventually([&] { return view->log == "entered "; }));
    view->setFrameOrigin({200, 0});
    EXPECT_TRUE(eventually([&] { return view->log == "entered exited "; }));
}

TEST_F(Tracking, anAreaThatIsReplacedUnderThePointerKnowsThatItIsThere) {
    const Ref<NSTrackingArea> area = track(view, view->bounds());
    moveTo(150, 150);
    view->take();
    view->removeTrackingArea(area);
    track(view, view->bounds());
    settle();
    view->take();
    moveTo(10, 10);
    EXPECT_EQ(view->take(), "exited ");
}

TEST_F(Tracking, anAreaThatWasTakenAwayHasNothingToTell) {
    const Ref<NSTrackingArea> area = track(view, view->bounds());
    moveTo(150, 150);
    view->take();
    view->removeTrackingArea(area);
    moveTo(10, 10);
    EXPECT_EQ(view->take(), "");
}

TEST_F(Tracking, aDragIsFollowedOnlyByAreasThatWantIt) {
    track(view, view->bounds());
    const Ref<LoggingView> eager = add({{220, 100}, {100, 100}});
    track(eager, eager->bounds(), always | NSTrackingEnabledDuringMouseDrag);
    eager->take();
    QTest::mousePress(handle(), Qt::LeftButton, {}, pixel(10, 10));
    moveTo(150, 150);
    EXPECT_EQ(view->take(), "");
    moveTo(250, 150);
    EXPECT_EQ(eager->take(), "entered ");
    moveTo(150, 150);
    EXPECT_EQ(eager->take(), "exited ");
    QTest::mouseRelease(handle(), Qt::LeftButton, {}, pixel(150, 150));
    EXPECT_TRUE(eventually([&] { return view->log == "entered "; }));
}

TEST_F(Tracking, someAreasAreActiveInTheKeyWindowOrForTheFirstResponderOnly) {
    view->takesKeys = true;
    const Ref<LoggingView> focused = add({{220, 100}, {100, 100}});
    focused->takesKeys = true;
    focused->take();
    track(view, view->bounds(), NSTrackingMouseEnteredAndExited | NSTrackingActiveInKeyWindow);
    track(focused, focused->bounds(), NSTrackingMouseEnteredAndExited | NSTrackingActiveWhenFirstResponder);
    moveTo(150, 150);
    EXPECT_EQ(view->take(), "entered ");
    moveTo(250, 150);
    EXPECT_EQ(view->take(), "exited ");
    EXPECT_EQ(focused->take(), "");
    window->makeFirstResponder(focused);
    moveTo(251, 150);
    EXPECT_EQ(focused->take(), "entered ");
}

TEST_F(Tracking, anAreaInAnInactiveWindowIsFollowedWhenItIsAlwaysActive) {
    track(view, view->bounds());
    const Ref<LoggingView> shy = add({{220, 100}, {100, 100}});
    track(shy, shy->bounds(), NSTrackingMouseEnteredAndExited | NSTrackingActiveInKeyWindow);
    shy->take();
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(eventually([&] { return other.isActiveWindow(); }));
    const auto key = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSRect{{0, 0}, {90, 90}},
                                    NSUInteger(NSWindowStyleMaskTitled));
    key->makeKeyAndOrderFront(nullptr);
    ASSERT_FALSE(window->isKeyWindow());
    moveTo(150, 150);
    EXPECT_EQ(view->take(), "entered ");
    moveTo(250, 150);
    EXPECT_EQ(shy->take(), "");
    key->orderOut(nullptr);
}

TEST_F(Tracking, aHandlerMayTakeTheViewAway) {
    track(view, view->bounds());
    view->onEvent = [this] {
        view->onEvent = nullptr;
        view->removeFromSuperview();
        view = nullptr;
    };
    moveTo(150, 150);
    moveTo(10, 10);
    EXPECT_EQ(view, nullptr);
}

TEST_F(Tracking, aViewInALayoutIsFollowedAsWell) {
    QWidget top;
    auto* const layout = new QVBoxLayout(&top);
    const Ref<LoggingView> there = loggingView({{0, 0}, {100, 100}});
    auto* const box = new QWidget;
    layout->addWidget(box);
    (new QVBoxLayout(box))->addWidget(qt::widget(there.get()));
    track(there, {{0, 0}, {5000, 5000}});
    top.resize(200, 200);
    top.show();
    settle();
    there->take();
    QTest::mouseMove(top.windowHandle(), {100, 100});
    EXPECT_EQ(there->take(), "entered ");
    QTest::mouseMove(top.windowHandle(), {2, 2});
    EXPECT_EQ(there->take(), "exited ");
}

TEST_F(Tracking, aCursorThatCoversTheViewShowsEverywhere) {
    view->onResetCursorRects = [this] { view->addCursorRect_cursor(view->bounds(), NSCursor::pointingHandCursor()); };
    view->setFrameSize({110, 100});
    EXPECT_EQ(widgetOf(view)->cursor().shape(), Qt::PointingHandCursor);
    view->setFrameSize({120, 100});
    EXPECT_EQ(widgetOf(view)->cursor().shape(), Qt::PointingHandCursor);
    view->discardCursorRects();
    EXPECT_FALSE(widgetOf(view)->testAttribute(Qt::WA_SetCursor));
}

TEST_F(Tracking, aCursorForAPartShowsThere) {
    view->addCursorRect_cursor({{0, 0}, {50, 100}}, NSCursor::IBeamCursor());
    moveTo(120, 150);
    EXPECT_EQ(widgetOf(view)->cursor().shape(), Qt::IBeamCursor);
    moveTo(170, 150);
    EXPECT_FALSE(widgetOf(view)->testAttribute(Qt::WA_SetCursor));
    view->addCursorRect_cursor({{60, 0}, {40, 100}}, NSCursor::crosshairCursor());
    EXPECT_EQ(widgetOf(view)->cursor().shape(), Qt::CrossCursor);
}

TEST_F(Tracking, theCursorIsThereFromTheStart) {
    const Ref<LoggingView> late = loggingView({{0, 0}, {20, 20}});
    late->onResetCursorRects = [&late] { late->addCursorRect_cursor(late->bounds(), NSCursor::resizeUpDownCursor()); };
    content->addSubview(late);
    EXPECT_EQ(widgetOf(late)->cursor().shape(), Qt::SizeVerCursor);
    late->onResetCursorRects = nullptr;
}

} // namespace
} // namespace zr::test
