#include "peer_testing.h"

#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/cursor.h>
#include <zrbasic/platform/appkit/layer.h>
#include <zrbasic/platform/appkit/tracking_area.h>

#include <gtest/gtest.h>

namespace zr::test {
namespace {

Ref<NSView> viewNamed(NSString* name) {
    const Ref<NSView> view = make<NSView>(&NSView::initWithFrame, NSMakeRect(0, 0, 20, 10));
    view->setIdentifier(name);
    return view;
}

Ref<NSWindow> windowTitled(NSString* title) {
    const Ref<NSWindow> window = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSMakeRect(0, 0, 200, 100),
                                                NSUInteger{NSWindowStyleMaskTitled});
    window->setTitle(title);
    return window;
}

class PeersTest : public testing::Test {
  protected:
    RecordingToolkit toolkit;
};

TEST_F(PeersTest, aViewHasNoneBeforeItIsAskedForOne) {
    const Ref<NSView> view = viewNamed("a"_ns);
    view->setFrameOrigin(NSMakePoint(3, 4));
    EXPECT_EQ(view->peer(), nullptr);
    EXPECT_EQ(toolkit.taken(), "");
    ViewPeer* const peer = view->ensurePeer();
    EXPECT_NE(peer, nullptr);
    EXPECT_EQ(view->ensurePeer(), peer);
}

TEST_F(PeersTest, aViewTellsItsPeerWhatHasChanged) {
    const Ref<NSView> view = viewNamed("a"_ns);
    view->ensurePeer();
    view->setFrameOrigin(NSMakePoint(3, 4));
    EXPECT_EQ(toolkit.taken(), "a frame\n");
    view->setHidden(true);
    EXPECT_EQ(toolkit.taken(), "a hidden\n");
    view->setAlphaValue(0.5);
    EXPECT_EQ(toolkit.taken(), "a alpha\na display\n");
    view->setWantsLayer(true);
    EXPECT_EQ(toolkit.taken(), "a layer\na display\n");
    view->layer()->setBorderWidth(2);
    EXPECT_EQ(toolkit.taken(), "a display\n");
    view->setToolTip("tip"_ns);
    EXPECT_EQ(toolkit.taken(), "a tip\n");
    view->setAccessibilityLabel("label"_ns);
    EXPECT_EQ(toolkit.taken(), "a accessibility\n");
    view->addCursorRect_cursor(view->bounds(), NSCursor::arrowCursor());
    EXPECT_EQ(toolkit.taken(), "a cursors\n");
    view->setContentHuggingPriority_forOrientation(900, NSLayoutConstraintOrientationHorizontal);
    EXPECT_EQ(toolkit.taken(), "a layout\n");
    view->invalidateIntrinsicContentSize();
    EXPECT_EQ(toolkit.taken(), "a layout\n");
}

TEST_F(PeersTest, aChangeToTheSameTellsNobody) {
    const Ref<NSView> view = viewNamed("a"_ns);
    view->ensurePeer();
    view->setFrame(view->frame());
    view->setHidden(false);
    view->setNeedsDisplay(false);
    EXPECT_EQ(toolkit.taken(), "");
}

TEST_F(PeersTest, aResizedViewTellsItsPeerBeforeItSetsUpCursors) {
    const Ref<NSView> view = viewNamed("a"_ns);
    view->ensurePeer();
    view->setFrameSize(NSMakeSize(30, 30));
    EXPECT_EQ(toolkit.taken(), "a frame\na display\na cursors\n");
}

TEST_F(PeersTest, subviewsThatComeAndGoAreToldToTheOuterOne) {
    const Ref<NSView> outer = viewNamed("outer"_ns);
    const Ref<NSView> inner = viewNamed("inner"_ns);
    outer->ensurePeer();
    outer->addSubview(inner);
    EXPECT_EQ(toolkit.taken(), "outer subviews\nouter display\n");
    inner->removeFromSuperview();
    EXPECT_EQ(toolkit.taken(), "outer subviews\nouter display\n");
}

TEST_F(PeersTest, aTrackingAreaIsToldWhenItComesAndWhenItGoes) {
    const Ref<NSView> view = viewNamed("a"_ns);
    view->ensurePeer();
    const Ref<NSTrackingArea> area =
        make<NSTrackingArea>(&NSTrackingArea::initWithRect_options_owner_userInfo, view->bounds(),
                             NSUInteger{NSTrackingMouseEnteredAndExited}, view.get(), nullptr);
    view->addTrackingArea(area);
    EXPECT_EQ(toolkit.taken(), "a tracking\n");
    view->removeTrackingArea(area);
    EXPECT_EQ(toolkit.taken(), "a tracking\n");
}

TEST_F(PeersTest, theLastReferenceToAViewTakesItsPeerAlong) {
    Ref<NSView> view = viewNamed("a"_ns);
    view->ensurePeer();
    view = nullptr;
    EXPECT_EQ(toolkit.taken(), "a gone\n");
}

TEST_F(PeersTest, aDroppedPeerIsMadeAnew) {
    const Ref<NSView> view = viewNamed("a"_ns);
    view->ensurePeer();
    view->dropPeer();
    EXPECT_EQ(toolkit.taken(), "a gone\n");
    EXPECT_EQ(view->peer(), nullptr);
    EXPECT_NE(view->ensurePeer(), nullptr);
}

TEST_F(PeersTest, aWindowGetsItsPeerWhenItIsFirstShown) {
    const Ref<NSWindow> window = windowTitled("w"_ns);
    EXPECT_EQ(window->peer(), nullptr);
    window->orderFront(nullptr);
    EXPECT_NE(window->peer(), nullptr);
    EXPECT_EQ(toolkit.taken(), "w above all\n");
    window->orderOut(nullptr);
    EXPECT_EQ(toolkit.taken(), "w out\n");
    EXPECT_NE(window->peer(), nullptr);
}

TEST_F(PeersTest, aKeyWindowAsksForTheKeyboard) {
    const Ref<NSWindow> window = windowTitled("w"_ns);
    window->makeKeyAndOrderFront(nullptr);
    EXPECT_EQ(toolkit.taken(), "w above all\nw keyboard\n");
    window->makeKeyWindow();
    EXPECT_EQ(toolkit.taken(), "");
    window->orderOut(nullptr);
}

TEST_F(PeersTest, aWindowIsOrderedAroundAnother) {
    const Ref<NSWindow> one = windowTitled("one"_ns);
    const Ref<NSWindow> two = windowTitled("two"_ns);
    one->orderFront(nullptr);
    toolkit.taken();
    two->orderWindow_relativeTo(NSWindowBelow, one->windowNumber());
    EXPECT_EQ(toolkit.taken(), "two below one\n");
    two->orderWindow_relativeTo(NSWindowAbove, one->windowNumber());
    EXPECT_EQ(toolkit.taken(), "two above one\n");
    two->orderWindow_relativeTo(NSWindowBelow, 0);
    EXPECT_EQ(toolkit.taken(), "two below all\n");
    one->orderOut(nullptr);
    two->orderOut(nullptr);
}

TEST_F(PeersTest, aWindowTellsItsPeerWhatHasChanged) {
    const Ref<NSWindow> window = windowTitled("w"_ns);
    window->orderFront(nullptr);
    toolkit.taken();
    window->setFrameOrigin(NSMakePoint(7, 8));
    EXPECT_EQ(toolkit.taken(), "w frame\n");
    window->setTitle("other"_ns);
    EXPECT_EQ(toolkit.taken(), "w title\n");
    window->setStyleMask(NSWindowStyleMaskBorderless);
    EXPECT_EQ(toolkit.taken(), "w style\nw frame\n");
    window->setContentView(viewNamed("fresh"_ns));
    EXPECT_EQ(toolkit.taken(), "w content\n");
    window->orderOut(nullptr);
}

/// Can be given the keyboard.
class PeersTestTarget : public NSView {
    ZR_OBJECT(PeersTestTarget, NSView)
  public:
    [[nodiscard]] bool acceptsFirstResponder() const override { return true; }
    ZR_METHOD(acceptsFirstResponder, "acceptsFirstResponder")
};

TEST_F(PeersTest, aFirstResponderTakesTheKeyboard) {
    const Ref<NSWindow> window = windowTitled("w"_ns);
    const Ref<PeersTestTarget> view = make<PeersTestTarget>();
    view->setIdentifier("a"_ns);
    window->contentView()->addSubview(view);
    window->orderFront(nullptr);
    view->ensurePeer();
    toolkit.taken();
    EXPECT_TRUE(window->makeFirstResponder(view));
    EXPECT_EQ(toolkit.taken(), "a keyboard\nw responder\n");
    EXPECT_TRUE(window->makeFirstResponder(nullptr));
    EXPECT_EQ(toolkit.taken(), "w responder\n");
    window->orderOut(nullptr);
}

TEST_F(PeersTest, aViewWithoutASuperviewCanLieInAWindowThatIsNotItsOwn) {
    const Ref<NSWindow> window = windowTitled("w"_ns);
    const Ref<NSView> view = viewNamed("a"_ns);
    const Ref<NSView> inner = viewNamed("inner"_ns);
    view->addSubview(inner);
    view->moveToHostWindow(window);
    EXPECT_EQ(inner->window(), window);
    EXPECT_NE(window->contentView(), view);
    view->moveToHostWindow(nullptr);
    EXPECT_EQ(inner->window(), nullptr);
}

TEST_F(PeersTest, aHostedViewThatGetsASuperviewLeavesItsHost) {
    const Ref<NSWindow> host = windowTitled("host"_ns);
    const Ref<NSView> view = viewNamed("a"_ns);
    view->moveToHostWindow(host);
    const Ref<NSView> outer = viewNamed("outer"_ns);
    outer->addSubview(view);
    EXPECT_EQ(view->window(), nullptr);
    view->removeFromSuperview();
    EXPECT_EQ(view->window(), nullptr);
}

TEST(WithoutAToolkit, nothingHasAPeer) {
    const Ref<NSView> view = viewNamed("a"_ns);
    EXPECT_EQ(view->ensurePeer(), nullptr);
    const Ref<NSWindow> window = windowTitled("w"_ns);
    window->makeKeyAndOrderFront(nullptr);
    EXPECT_EQ(window->peer(), nullptr);
    EXPECT_TRUE(window->isVisible());
    window->orderOut(nullptr);
}

} // namespace
} // namespace zr::test
