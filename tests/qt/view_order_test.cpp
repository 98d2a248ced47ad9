#include "view_testing.h"

#include <zrbasic/platform/appkit/screen.h>
#include <zrbasic/platform/appkit/text_field.h>
#include <zrbasic/platform/appkit/text_view.h>
#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/ui/view.h>

#include <QImage>
#include <QScreen>

namespace zr::test {
namespace {

/// Three views that overlap, 100 by 100 each: red at the left, green in the middle, blue at the right.
class ViewOrder : public ViewWindow {
  protected:
    void SetUp() override {
        red = loggingView({{50, 50}, {100, 100}});
        red->color = NSColor::redColor();
        green = loggingView({{100, 50}, {100, 100}});
        green->color = NSColor::greenColor();
        blue = loggingView({{150, 50}, {100, 100}});
        blue->color = NSColor::blueColor();
        zr_addSubviews(content, array({red, green, blue}));
    }
    void type(Qt::Key key) { QTest::keyClick(handle(), key); }
    [[nodiscard]] QColor colorAt(double x, double y) const {
        settle();
        return host()->grab().toImage().pixelColor(pixel(x, y));
    }

    Ref<LoggingView> red;
    Ref<LoggingView> green;
    Ref<LoggingView> blue;
};

TEST_F(ViewOrder, isThatOfTheListAndOfWhoCameToTheFront) {
    show();
    EXPECT_EQ(colorAt(125, 100), QColor(0, 255, 0));
    EXPECT_EQ(colorAt(175, 100), QColor(Qt::blue));
    moveToFront(red);
    EXPECT_EQ(colorAt(125, 100), QColor(Qt::red));
    moveToFront(green);
    EXPECT_EQ(colorAt(125, 100), QColor(0, 255, 0));
    EXPECT_EQ(colorAt(175, 100), QColor(0, 255, 0));
    red->take();
    green->take();
    click(125, 100);
    EXPECT_EQ(green->take(), "down up ") << "who is seen is who is clicked";
    EXPECT_EQ(red->take(), "");
}

TEST_F(ViewOrder, changesUnderTheHandsOfWhoIsTyping) {
    const auto field = make<NSTextField>(&NSTextField::initWithFrame, NSMakeRect(10, 10, 60, 24));
    red->addSubview(field);
    show();
    ASSERT_TRUE(window->makeFirstResponder(field));
    type(Qt::Key_1);
    moveToFront(red);
    settle();
    ASSERT_TRUE(field->currentEditor());
    type(Qt::Key_2);
    EXPECT_EQ(field->stringValue()->utf8(), "12");
    EXPECT_EQ(colorAt(125, 100), QColor(Qt::red));
}

TEST_F(ViewOrder, viewsAreOnTheScreenWhereTheySay) {
    show();
    const NSRect place = convertRectToScreen(green);
    const QPoint corner = widgetOf(green)->mapToGlobal(QPoint(0, 0));
    const double height = host()->screen()->geometry().height();
    EXPECT_EQ(place, NSMakeRect(corner.x(), height - corner.y() - 100, 100, 100));
    green->removeFromSuperview();
    EXPECT_EQ(convertRectToScreen(green), NSZeroRect);
}

} // namespace
} // namespace zr::test
