#include "view_testing.h"

#include <zrbasic/platform/appkit/split_view.h>
#include <zrbasic/ui/view.h>

namespace zr::test {
namespace {

/// Two views side by side, 300 by 100 points at 20, 20 of a window, with a line at 100.
class SplitViewOnScreen : public ViewWindow {
  protected:
    void SetUp() override {
        split = make<NSSplitView>(&NSSplitView::initWithFrame, NSRect{{20, 20}, {300, 100}});
        split->setVertical(true);
        left = add({{0, 0}, {100, 10}}, split);
        right = add({{0, 0}, {199, 10}}, split);
        content->addSubview(split);
        show();
        moveTo(12, 12);
        moveTo(10, 10);
        left->take();
        right->take();
    }
    ~SplitViewOnScreen() override { split = nullptr; }

    [[nodiscard]] Qt::CursorShape cursorAt(double x, double y) {
        moveTo(x, y);
        QWidget* const under = host()->childAt(pixel(x, y));
        return under ? under->cursor().shape() : Qt::BlankCursor;
    }

    Ref<NSSplitView> split;
    Ref<LoggingView> left;
    Ref<LoggingView> right;
};

TEST_F(SplitViewOnScreen, isResizedByDraggingItsLine) {
    QTest::mousePress(handle(), Qt::LeftButton, {}, pixel(120, 70));
    QTest::mouseMove(handle(), pixel(150, 70));
    settle();
    EXPECT_EQ(left->frame().size.width, 130);
    EXPECT_EQ(right->frame(), (NSRect{{131, 0}, {169, 100}}));
    QTest::mouseMove(handle(), pixel(200, 60));
    QTest::mouseRelease(handle(), Qt::LeftButton, {}, pixel(200, 60));
    settle();
    EXPECT_EQ(left->frame().size.width, 180);
    EXPECT_EQ(widgetOf(left)->width(), 180);
    EXPECT_EQ(widgetOf(right)->geometry(), QRect(181, 0, 119, 100));
    moveTo(250, 60);
    EXPECT_EQ(left->frame().size.width, 180) << "it was let go";
}

TEST_F(SplitViewOnScreen, takesThePressBesideItsLineFromTheViewThere) {
    QTest::mousePress(handle(), Qt::LeftButton, {}, pixel(122, 70));
    QTest::mouseMove(handle(), pixel(132, 70));
    QTest::mouseRelease(handle(), Qt::LeftButton, {}, pixel(132, 70));
    settle();
    EXPECT_EQ(left->frame().size.width, 110);
    EXPECT_EQ(right->take().find("down"), std::string::npos);
    click(200, 70);
    EXPECT_EQ(right->take(), "down up ");
    EXPECT_EQ(left->frame().size.width, 110);
}

TEST_F(SplitViewOnScreen, showsTheResizeCursorOverItsLine) {
    EXPECT_EQ(cursorAt(120, 70), Qt::SizeHorCursor);
    EXPECT_EQ(cursorAt(60, 70), Qt::ArrowCursor);
    EXPECT_EQ(cursorAt(122, 70), Qt::SizeHorCursor) << "where it can be caught as well";
}

TEST_F(SplitViewOnScreen, drawsItsLineWhereItIs) {
    const auto colorAt = [this](double x) {
        settle();
        return host()->grab().toImage().pixelColor(pixel(x, 70));
    };
    left->color = right->color = NSColor::redColor();
    left->setNeedsDisplay(true);
    right->setNeedsDisplay(true);
    EXPECT_EQ(colorAt(119), QColor(Qt::red));
    EXPECT_EQ(colorAt(120), QColor(176, 176, 176));
    EXPECT_EQ(colorAt(121), QColor(Qt::red));
    split->setPosition_ofDividerAtIndex(50, 0);
    EXPECT_EQ(colorAt(120), QColor(Qt::red));
    EXPECT_EQ(colorAt(70), QColor(176, 176, 176));
}

TEST_F(SplitViewOnScreen, followsItsWindow) {
    split->setFrameSize({201, 100});
    settle();
    EXPECT_EQ(widgetOf(left)->width() + widgetOf(right)->width(), 200);
    EXPECT_EQ(widgetOf(right)->x(), widgetOf(left)->width() + 1);
}

TEST_F(SplitViewOnScreen, theViewThatIsPreferredKeepsItsWidthWhereThereIsLittleRoom) {
    displayPriorityGreaterThan(right, left);
    split->setFrameSize({251, 100});
    settle();
    EXPECT_EQ(widgetOf(left)->width(), 51);
    EXPECT_EQ(widgetOf(right)->geometry(), QRect(52, 0, 199, 100));
    displayPriorityGreaterThan(left, right);
    settle();
    EXPECT_EQ(widgetOf(left)->width(), 100);
    EXPECT_EQ(widgetOf(right)->geometry(), QRect(101, 0, 150, 100));
    split->setFrameSize({500, 100});
    settle();
    EXPECT_EQ(widgetOf(right)->width(), 199) << "and what is too much goes to the one that gave way";
    EXPECT_EQ(widgetOf(left)->width(), 300);
}

} // namespace
} // namespace zr::test
