#include "view_testing.h"

#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/appkit/button.h>
#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/platform/appkit/scroll_view.h>
#include <zrbasic/ui/box.h>
#include <zrbasic/ui/collection_view.h>
#include <zrbasic/ui/plain_view.h>
#include <zrbasic/ui/scroller.h>
#include <zrbasic/ui/text_field.h>
#include <zrbasic/ui/view.h>

#include <QImage>

namespace zr::test {
namespace {

class PressListener : public NSObject {
    ZR_OBJECT(PressListener, NSObject)
  public:
    void pressed(NSObject*) { ++presses; }
    ZR_METHOD(pressed, "pressed:")

    int presses = 0;
};

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

TEST_F(ScrollingOnScreen, aThinScrollerAtTheBottomIsDraggedSideways) {
    const Ref<ZRXScroller> scroller = make<ZRXScroller>(&ZRXScroller::initWithFrame, NSMakeRect(0, 0, 100, 10));
    scroller->setKnobColor(NSColor::blueColor());
    scroller->setScrollBackgroundColor(NSColor::greenColor());
    scrolling->setScrollerStyle(NSScrollerStyleOverlay);
    scrolling->setHorizontalScroller(scroller);
    scrolling->setHasHorizontalScroller(true);
    document->setFrame({{0, 0}, {1000, 100}});
    show();
    ASSERT_EQ(scroller->frame(), NSMakeRect(0, 90, 200, 10));
    const auto left = [this] { return scrolling->documentVisibleRect().origin.x; };
    // The knob is 40 long and 7 high, at the lower edge of the slot.
    EXPECT_EQ(colorAt(70, 101), QColor(Qt::blue));
    EXPECT_EQ(colorAt(70, 105), QColor(Qt::blue));
    EXPECT_EQ(colorAt(70, 108), QColor(0, 255, 0)) << "the slot above it";
    EXPECT_EQ(colorAt(200, 101), QColor(0, 255, 0));
    press(70, 105);
    QTest::mouseMove(handle(), pixel(70 + 80, 150));
    EXPECT_NEAR(left(), 400, 1e-6) << "wherever the pointer is across the slot";
    QTest::mouseMove(handle(), pixel(1, 105));
    EXPECT_EQ(left(), 0);
    QTest::mouseMove(handle(), pixel(390, 105));
    EXPECT_EQ(left(), 800);
    release(390, 105);
    click(60, 105);
    EXPECT_EQ(left(), 800 - 190) << "a page";
}

TEST_F(ScrollingOnScreen, aHiddenKnobCanStillBeGrippedAndOnlyItsSlotIsSeen) {
    const Ref<ZRXScroller> scroller = make<ZRXScroller>(&ZRXScroller::initWithFrame, NSMakeRect(0, 0, 10, 100));
    scroller->setKnobColor(NSColor::blueColor());
    scroller->setHideKnob(true);
    scrolling->setScrollerStyle(NSScrollerStyleOverlay);
    scrolling->setVerticalScroller(scroller);
    scrolling->setHasVerticalScroller(true);
    show();
    EXPECT_EQ(colorAt(245, 191), QColor(Qt::red)) << "no knob, and no slot without a colour";
    scroller->setScrollBackgroundColor(NSColor::greenColor());
    EXPECT_EQ(colorAt(245, 191), QColor(0, 255, 0));
    EXPECT_EQ(colorAt(245, 120), QColor(0, 255, 0));
    scroller->setHideKnob(false);
    EXPECT_EQ(colorAt(245, 191), QColor(Qt::blue));
    scroller->setHideKnob(true);
    press(245, 191);
    QTest::mouseMove(handle(), pixel(245, 150));
    release(245, 150);
    EXPECT_NEAR(top(), 450, 1e-6);
}

TEST_F(ScrollingOnScreen, aSnapshotShowsWhatIsScrolledToAndTheScroller) {
    const Ref<ZRXScroller> scroller = make<ZRXScroller>(&ZRXScroller::initWithFrame, NSMakeRect(0, 0, 10, 100));
    scroller->setKnobColor(NSColor::blueColor());
    scrolling->setScrollerStyle(NSScrollerStyleOverlay);
    scrolling->setVerticalScroller(scroller);
    scrolling->setHasVerticalScroller(true);
    for (const bool isShown : {false, true}) {
        SCOPED_TRACE(isShown);
        if (isShown) {
            show();
        }
        scrolling->scrollTo({0, 0});
        settle();
        const auto at = [&](NSInteger x, NSInteger y) {
            const Ref<NSBitmapImageRep> picture = zr_snapShot(scrolling)->bestRepresentation();
            return picture->pixelAtX_y(x, y);
        };
        constexpr NSBitmapImageRep::Pixel red{255, 0, 0, 255};
        constexpr NSBitmapImageRep::Pixel blue{0, 0, 255, 255};
        EXPECT_EQ(at(10, 48), red);
        EXPECT_NE(at(10, 52), red);
        EXPECT_EQ(at(196, 8), blue);
        scrolling->scrollTo({0, 30});
        settle();
        EXPECT_EQ(at(10, 18), red);
        EXPECT_NE(at(10, 22), red);
        EXPECT_NE(at(196, 1), blue);
    }
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

TEST_F(ScrollingOnScreen, aPlainViewThatBansClicksKeepsThemFromFieldsAndButtons) {
    const Ref<ZRXView> lid = make<ZRXView>(&ZRXView::initWithFrame, NSMakeRect(300, 100, 90, 90));
    const Ref<ZRXTextField> field = make<ZRXTextField>(&ZRXTextField::initWithFrame, NSMakeRect(0, 0, 80, 24));
    const Ref<PressListener> listener = make<PressListener>();
    const Ref<NSButton> button = make<NSButton>(&NSButton::initWithFrame, NSMakeRect(300, 20, 80, 24));
    button->setTarget(listener);
    button->setAction("pressed:"_sel);
    lid->addSubview(field);
    content->addSubview(button);
    content->addSubview(lid);
    show();
    click(340, 32);
    EXPECT_EQ(listener->presses, 1);
    click(340, 180);
    EXPECT_TRUE(field->currentEditor());
    window->makeFirstResponder(nullptr);
    lid->setBannedMouseClick(true);
    for (const Qt::MouseButton key : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
        click(340, 180, key);
        click(340, 32, key);
    }
    QTest::mouseDClick(handle(), Qt::LeftButton, {}, pixel(340, 180));
    EXPECT_FALSE(field->currentEditor());
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_EQ(listener->presses, 1);
    lid->setHidden(true);
    click(340, 32);
    EXPECT_EQ(listener->presses, 1) << "a hidden one does so, too";
    lid->setBannedMouseClick(false);
    click(340, 32);
    EXPECT_EQ(listener->presses, 2);
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
