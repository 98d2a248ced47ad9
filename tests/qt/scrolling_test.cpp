#include "view_testing.h"

#include <zrbasic/platform/appkit/scroll_view.h>
#include <zrbasic/ui/box.h>
#include <zrbasic/ui/collection_view.h>
#include <zrbasic/ui/plain_view.h>
#include <zrbasic/ui/scroller.h>

#include <QImage>

namespace zr::test {
namespace {

/// A scroll view of 200 by 100 at (50, 100) in the window, over a document of 200 by 1000 that is red at its beginning.
class ScrollingOnScreen : public ViewWindow {
  protected:
    ScrollingOnScreen()
        : scrolling(make<NSScrollView>(&NSScrollView::initWithFrame, NSMakeRect(50, 100, 200, 100))),
          document(make<ZRXView>(&ZRXView::initWithFrame, NSMakeRect(0, 0, 200, 1000))),
          mark(loggingView({{0, 0}, {200, 50}})) {
        mark->color = NSColor::redColor();
        mark->passesWheelOn = true;
        document->addSubview(mark);
        scrolling->setDocumentView(document);
        content->addSubview(scrolling);
    }

    [[nodiscard]] double top() const { return scrolling->documentVisibleRect().origin.y; }
    void press(double x, double y) { QTest::mousePress(handle(), Qt::LeftButton, {}, pixel(x, y)); }
    void release(double x, double y) { QTest::mouseRelease(handle(), Qt::LeftButton, {}, pixel(x, y)); }
    /// As the window shows it.
    [[nodiscard]] QColor colorAt(double x, double y) const { return host()->grab().toImage().pixelColor(pixel(x, y)); }

    Ref<NSScrollView> scrolling;
    Ref<ZRXView> document;
    Ref<LoggingView> mark;
};

TEST_F(ScrollingOnScreen, theDocumentIsClippedAndMovesWithTheOriginOfTheBounds) {
    show();
    EXPECT_EQ(colorAt(60, 190), QColor(Qt::red));
    EXPECT_EQ(colorAt(60, 140), QColor(Qt::white));
    scrolling->scrollTo({0, 30});
    settle();
    EXPECT_EQ(colorAt(60, 190), QColor(Qt::red));
    EXPECT_EQ(colorAt(60, 175), QColor(Qt::white));
    EXPECT_NE(colorAt(60, 210), QColor(Qt::red));
    scrolling->scrollTo({0, 60});
    settle();
    EXPECT_EQ(colorAt(60, 190), QColor(Qt::white));
}

TEST_F(ScrollingOnScreen, theWheelScrollsWhatIsUnderThePointer) {
    show();
    turnWheel(handle(), pixel(60, 190), {0, -120});
    EXPECT_EQ(top(), 30);
    turnWheel(handle(), pixel(60, 110), {0, -240});
    EXPECT_EQ(top(), 90);
    turnWheel(handle(), pixel(60, 190), {0, 120 * 100});
    EXPECT_EQ(top(), 0);
    content->take();
    turnWheel(handle(), pixel(10, 10), {0, -120});
    EXPECT_EQ(top(), 0);
    EXPECT_EQ(content->take(), "wheel ");
}

TEST_F(ScrollingOnScreen, aWheelAtTheEndGoesOnToTheWindowsContent) {
    show();
    content->take();
    turnWheel(handle(), pixel(60, 110), {0, 120});
    EXPECT_EQ(content->take(), "wheel ");
    turnWheel(handle(), pixel(60, 110), {0, -120});
    EXPECT_EQ(content->take(), "");
}

TEST_F(ScrollingOnScreen, aThinScrollerFloatsOverTheDocumentAndIsDragged) {
    const Ref<ZRXScroller> scroller = make<ZRXScroller>(&ZRXScroller::initWithFrame, NSMakeRect(0, 0, 10, 100));
    scroller->setKnobColor(NSColor::blueColor());
    scrolling->setScrollerStyle(NSScrollerStyleOverlay);
    scrolling->setVerticalScroller(scroller);
    scrolling->setHasVerticalScroller(true);
    show();
    ASSERT_EQ(scrolling->scrollerStyle(), NSScrollerStyleOverlay);
    EXPECT_EQ(scroller->frame(), NSMakeRect(190, 0, 10, 100));
    // The knob is 18 long and 7 broad, at the right of the slot; to its left the document is seen.
    EXPECT_EQ(colorAt(245, 191), QColor(Qt::blue));
    EXPECT_EQ(colorAt(249, 191), QColor(Qt::blue));
    EXPECT_EQ(colorAt(241, 191), QColor(Qt::red));
    EXPECT_EQ(colorAt(245, 170), QColor(Qt::red));
    press(245, 191);
    QTest::mouseMove(handle(), pixel(245, 191 - 41));
    EXPECT_NEAR(top(), 450, 1e-6);
    QTest::mouseMove(handle(), pixel(390, 1));
    EXPECT_NEAR(top(), 900, 1e-6);
    release(390, 1);
    settle();
    EXPECT_EQ(colorAt(245, 109), QColor(Qt::blue));
    QTest::mouseMove(handle(), pixel(245, 190));
    EXPECT_NEAR(top(), 900, 1e-6);
}

TEST_F(ScrollingOnScreen, aClickInTheSlotTurnsAPage) {
    scrolling->setHasVerticalScroller(true);
    show();
    click(243, 110);
    EXPECT_EQ(top(), 90);
    click(243, 110);
    EXPECT_EQ(top(), 180);
    click(243, 197);
    EXPECT_EQ(top(), 90);
    EXPECT_EQ(mark->take().find("down"), std::string::npos);
}

TEST_F(ScrollingOnScreen, whatIsScrolledToIsWhatIsClicked) {
    show();
    click(60, 190);
    EXPECT_EQ(mark->take(), "in down up ");
    scrolling->scrollTo({0, 45});
    settle();
    click(60, 197);
    EXPECT_EQ(mark->take(), "down up ");
    click(60, 190);
    EXPECT_EQ(mark->take(), "");
}

TEST_F(ScrollingOnScreen, aPlainViewThatBansClicksTakesThoseForEverythingBehindIt) {
    const Ref<ZRXView> lid = make<ZRXView>(&ZRXView::initWithFrame, NSMakeRect(0, 0, 20, 20));
    content->addSubview(lid);
    show();
    mark->take();
    click(60, 190);
    EXPECT_EQ(mark->take(), "down up ");
    lid->setBannedMouseClick(true);
    click(60, 190);
    EXPECT_EQ(mark->take(), "");
}

TEST_F(ScrollingOnScreen, itemsOfACollectionAreSelectedByClicksAndArrowKeys) {
    const Ref<ZRXCollectionView> collection =
        make<ZRXCollectionView>(&ZRXCollectionView::initWithFrame, NSMakeRect(0, 0, 200, 100));
    collection->setItemSize({90, 40});
    scrolling->setDocumentView(collection);
    collection->setContent(array({"a"_ns, "b"_ns, "c"_ns, "d"_ns, "e"_ns, "f"_ns}));
    show();
    ASSERT_EQ(collection->frame().size, (NSSize{200, 140}));
    click(160, 190);
    EXPECT_TRUE(collection->selectionIndexes()->isEqual(NSIndexSet::indexSetWithIndex(1)));
    EXPECT_EQ(window->firstResponder(), collection);
    QTest::keyClick(handle(), Qt::Key_Down);
    QTest::keyClick(handle(), Qt::Key_Down);
    EXPECT_TRUE(collection->selectionIndexes()->isEqual(NSIndexSet::indexSetWithIndex(5)));
    EXPECT_EQ(top(), 40);
    // Between the columns.
    click(145, 190);
    EXPECT_TRUE(collection->selectionIndexes()->isEqual(NSIndexSet::indexSetWithIndex(5)));
}

TEST_F(ScrollingOnScreen, aBoxShowsItsColoursAndAPlainOneNothing) {
    const Ref<NSBox> box = make<NSBox>(&NSBox::initWithFrame, NSMakeRect(300, 100, 40, 40));
    box->setBoxType(NSBoxCustom);
    box->setFillColor(NSColor::greenColor());
    box->setBorderColor(NSColor::blueColor());
    box->setBorderWidth(4);
    content->addSubview(box);
    content->addSubview(make<ZRXBox>(&ZRXBox::initWithFrame, NSMakeRect(300, 150, 40, 40)));
    content->color = NSColor::whiteColor();
    show();
    EXPECT_EQ(colorAt(320, 120), QColor(0, 255, 0));
    EXPECT_EQ(colorAt(302, 120), QColor(Qt::blue));
    EXPECT_EQ(colorAt(320, 170), QColor(Qt::white));
    EXPECT_EQ(colorAt(300, 151), QColor(Qt::white));
}

} // namespace
} // namespace zr::test
