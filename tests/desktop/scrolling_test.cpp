#include "desktop_testing.h"

#include <zrbasic/platform/appkit/scroll_view.h>
#include <zrbasic/ui/plain_view.h>
#include <zrbasic/ui/scroller.h>

namespace zr {
namespace {

using test::becomes;
using test::click;
using test::outputOf;
using test::serverPoint;

/// A view of 200 by 100 in the window, over a document of 200 by 1000, with a thin scroller at its right.
class ScrollerOnDesktop : public test::Desktop {
  protected:
    void SetUp() override {
        window = makeWindow(NSMakeRect(200, 150, 300, 200), "Scroller"_ns);
        scrolling = make<NSScrollView>(&NSScrollView::initWithFrame, NSMakeRect(50, 50, 200, 100));
        scrolling->setScrollerStyle(NSScrollerStyleOverlay);
        scroller = make<ZRXScroller>(&ZRXScroller::initWithFrame, NSMakeRect(0, 0, 10, 100));
        scrolling->setVerticalScroller(scroller);
        scrolling->setHasVerticalScroller(true);
        scrolling->setDocumentView(make<ZRXView>(&ZRXView::initWithFrame, NSMakeRect(0, 0, 200, 1000)));
        window->contentView()->addSubview(scrolling);
        window->makeKeyAndOrderFront(nullptr);
        ASSERT_TRUE(becomes([this] { return qt::widget(window) && qt::widget(window)->isActiveWindow(); }));
        QTest::qWait(100);
    }

    [[nodiscard]] double top() const { return scrolling->documentVisibleRect().origin.y; }
    /// On the screen, so many points below the scroller's top.
    [[nodiscard]] NSPoint below(double points) const {
        const NSRect rect = window->convertRectToScreen(scroller->convertRect_toView(scroller->bounds(), nullptr));
        return {rect.origin.x + 6, NSMaxY(rect) - points};
    }
    static void moveTo(NSPoint point) { outputOf("xdotool", QStringList{"mousemove"} + serverPoint(point)); }

    Ref<NSWindow> window;
    Ref<NSScrollView> scrolling;
    Ref<ZRXScroller> scroller;
};

TEST_F(ScrollerOnDesktop, itsKnobIsDraggedByTheMouse) {
    // The knob is 18 points long, so it has 82 points for the 900 that are hidden.
    moveTo(below(9));
    outputOf("xdotool", {"mousedown", "1"});
    moveTo(below(9 + 41));
    EXPECT_TRUE(becomes([this] { return std::abs(top() - 450) < 12; })) << top();
    // Beyond the end, and beside the scroller: the drag goes on.
    NSPoint far = below(180);
    far.x += 60;
    moveTo(far);
    EXPECT_TRUE(becomes([this] { return top() == 900; })) << top();
    outputOf("xdotool", {"mouseup", "1"});
    moveTo(below(9));
    QTest::qWait(100);
    EXPECT_EQ(top(), 900);
}

TEST_F(ScrollerOnDesktop, aClickInItsSlotTurnsAPage) {
    click(below(90));
    EXPECT_TRUE(becomes([this] { return top() == 90; })) << top();
}

TEST_F(ScrollerOnDesktop, theWheelScrollsBeneathIt) {
    click(below(50), "5");
    EXPECT_TRUE(becomes([this] { return top() > 0; }));
    const double lower = top();
    click(below(50), "4");
    EXPECT_TRUE(becomes([this, lower] { return top() < lower; }));
}

TEST_F(ScrollerOnDesktop, aPlainViewThatBansClicksKeepsTheMouseFromIt) {
    const auto lid = make<ZRXView>(&ZRXView::initWithFrame, NSMakeRect(0, 0, 10, 10));
    window->contentView()->addSubview(lid);
    lid->setBannedMouseClick(true);
    click(below(90));
    click(below(50), "5");
    QTest::qWait(100);
    EXPECT_EQ(top(), 0);
    lid->setBannedMouseClick(false);
    click(below(90));
    EXPECT_TRUE(becomes([this] { return top() == 90; })) << top();
}

} // namespace
} // namespace zr
