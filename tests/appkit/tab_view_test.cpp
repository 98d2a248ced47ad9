#include "canvas_testing.h"
#include "tab_view_testing.h"

#include <zrbasic/platform/foundation/null.h>

#include <limits>

namespace zr {
namespace {

using test::keyEvent;
using test::mouseEvent;
using test::tab;

const auto notFound = static_cast<NSInteger>(NSNotFound);

/// Three tabs of 7 points a letter, 300 by 126 points at 10, 20 of a key window.
class TabView : public testing::Test {
  protected:
    void SetUp() override {
        window = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSRect{{0, 0}, {400, 200}},
                                NSUInteger{NSWindowStyleMaskTitled});
        tabs = make<NSTabView>(&NSTabView::initWithFrame, NSRect{{10, 20}, {300, 126}});
        delegate = make<test::TabDelegate>();
        for (const auto& item : {one, two, three}) {
            tabs->addTabViewItem(item);
        }
        tabs->setDelegate(delegate);
        window->contentView()->addSubview(tabs);
        window->makeKeyAndOrderFront(nullptr);
    }
    void TearDown() override { test::hideAllWindows(); }

    void mouse(SEL operation, NSEventType type, NSPoint at) { send<void>(tabs, operation, mouseEvent(type, at)); }
    void click(NSPoint from, NSPoint to) {
        mouse("mouseDown:"_sel, NSEventTypeLeftMouseDown, from);
        mouse("mouseUp:"_sel, NSEventTypeLeftMouseUp, to);
    }
    [[nodiscard]] std::string selected() const { return test::nameOf(tabs->selectedTabViewItem()); }

    test::WindowToolkit toolkit;
    Ref<NSWindow> window;
    Ref<NSTabView> tabs;
    Ref<test::TabDelegate> delegate;
    Ref<NSTabViewItem> one = tab("one");
    Ref<NSTabViewItem> two = tab("two");
    Ref<NSTabViewItem> three = tab("three");
};

std::string raisedBy(const std::function<void()>& work) {
    try {
        work();
    } catch (const NSException& exception) {
        return std::string(exception.name());
    }
    return "";
}

TEST_F(TabView, showsTheViewOfTheSelectedItemAlone) {
    EXPECT_EQ(selected(), "one") << "the first that was added";
    EXPECT_EQ(one->view()->superview(), tabs);
    EXPECT_EQ(two->view()->superview(), nullptr);
    tabs->selectTabViewItemAtIndex(1);
    EXPECT_EQ(one->view()->superview(), nullptr);
    EXPECT_EQ(two->view()->superview(), tabs);
    EXPECT_EQ(two->view()->frame(), tabs->contentRect());
    EXPECT_EQ(tabs->contentRect(), (NSRect{{0, 0}, {300, 100}}));
}

TEST_F(TabView, keepsTheViewAsLargeAsItsContentRectangle) {
    tabs->setFrameSize({200, 76});
    EXPECT_EQ(one->view()->frame(), (NSRect{{0, 0}, {200, 50}}));
    tabs->setBoundsOrigin({5, 6});
    EXPECT_EQ(one->view()->frame(), (NSRect{{5, 6}, {200, 50}}));
    tabs->setFrameSize({200, 10});
    EXPECT_EQ(tabs->contentRect().size.height, 0);
}

TEST_F(TabView, findsItsItems) {
    EXPECT_EQ(tabs->indexOfTabViewItem(three), 2);
    EXPECT_EQ(tabs->indexOfTabViewItem(tab("three")), notFound);
    EXPECT_EQ(tabs->indexOfTabViewItem(nullptr), notFound);
    EXPECT_EQ(tabs->indexOfTabViewItemWithIdentifier(NSString::fromUtf8("two")), 1) << "an equal one will do";
    for (const id& odd : {id(), id(NSNull::null()), id("four"_ns), id(box(1)), id(make<NSObject>())}) {
        EXPECT_EQ(tabs->indexOfTabViewItemWithIdentifier(odd), notFound);
    }
    one->setIdentifier(nullptr);
    EXPECT_EQ(tabs->indexOfTabViewItemWithIdentifier(nullptr), notFound) << "null is no identifier";
    two->setIdentifier(box(7));
    three->setIdentifier(box(7.0));
    EXPECT_EQ(tabs->indexOfTabViewItemWithIdentifier(box(7)), 1) << "the first one";
}

TEST_F(TabView, raisesForAnIndexOfNoItem) {
    for (const NSInteger index : {NSInteger{-1}, NSInteger{3}, notFound, std::numeric_limits<NSInteger>::min()}) {
        SCOPED_TRACE(index);
        EXPECT_EQ(raisedBy([&] { tabs->selectTabViewItemAtIndex(index); }), NSRangeException);
        EXPECT_EQ(raisedBy([&] { static_cast<void>(tabs->tabViewItemAtIndex(index)); }), NSRangeException);
        EXPECT_EQ(raisedBy([&] { tabs->insertTabViewItem_atIndex(tab("new"), index == 3 ? 4 : index); }),
                  NSRangeException);
        EXPECT_EQ(tabs->rectOfTabAtIndex(index), NSZeroRect);
    }
    EXPECT_EQ(raisedBy([&] { tabs->selectTabViewItemWithIdentifier("four"_ns); }), NSRangeException);
    EXPECT_EQ(raisedBy([&] { tabs->selectTabViewItemWithIdentifier(nullptr); }), NSRangeException);
    EXPECT_EQ(selected(), "one");
    EXPECT_EQ(delegate->log, "");
}

TEST_F(TabView, asksAndTellsItsDelegate) {
    tabs->selectTabViewItemAtIndex(2);
    EXPECT_EQ(delegate->take(), "should three will three did three ");
    tabs->selectTabViewItem(three);
    EXPECT_EQ(delegate->take(), "") << "it is selected";
    delegate->allows = false;
    tabs->selectTabViewItemWithIdentifier("one"_ns);
    EXPECT_EQ(delegate->take(), "should one ");
    EXPECT_EQ(selected(), "three");
    tabs->selectTabViewItem(tab("one"));
    tabs->selectTabViewItem(nullptr);
    EXPECT_EQ(delegate->take(), "");
    tabs->setDelegate(make<NSObject>());
    tabs->selectTabViewItem(one);
    EXPECT_EQ(selected(), "one") << "a delegate that answers nothing";
}

TEST_F(TabView, selectsAnotherItemInPlaceOfOneThatIsTakenOut) {
    tabs->selectTabViewItem(two);
    delegate->take();
    tabs->removeTabViewItem(two);
    EXPECT_EQ(delegate->take(), "will three did three number 2 ");
    EXPECT_EQ(two->tabView(), nullptr);
    EXPECT_EQ(two->view()->superview(), nullptr);
    tabs->removeTabViewItem(three);
    EXPECT_EQ(selected(), "one");
    tabs->removeTabViewItem(one);
    EXPECT_EQ(selected(), "none");
    EXPECT_EQ(tabs->subviews()->count(), 0U);
    EXPECT_FALSE(tabs->acceptsFirstResponder());
    tabs->removeTabViewItem(one);
    tabs->removeTabViewItem(nullptr);
    tabs->selectFirstTabViewItem(nullptr);
    tabs->selectLastTabViewItem(nullptr);
    tabs->selectNextTabViewItem(nullptr);
    EXPECT_EQ(tabs->numberOfTabViewItems(), 0);
}

TEST_F(TabView, standsADelegateThatTakesItemsOut) {
    delegate->whenItWill = [&](NSTabViewItem* item) { tabs->removeTabViewItem(item); };
    tabs->selectTabViewItem(two);
    EXPECT_EQ(selected(), "one");
    EXPECT_EQ(tabs->numberOfTabViewItems(), 2);
    tabs->removeTabViewItem(one);
    EXPECT_EQ(selected(), "none");
    EXPECT_EQ(tabs->numberOfTabViewItems(), 0);
}

TEST_F(TabView, takesAnItemOverFromAnother) {
    const auto other = make<NSTabView>();
    other->addTabViewItem(one);
    EXPECT_EQ(one->tabView(), other);
    EXPECT_EQ(one->view()->superview(), other);
    EXPECT_EQ(tabs->numberOfTabViewItems(), 2);
    EXPECT_EQ(selected(), "two");
    tabs->addTabViewItem(two);
    tabs->addTabViewItem(nullptr);
    EXPECT_EQ(tabs->numberOfTabViewItems(), 2);
    tabs->insertTabViewItem_atIndex(one, 0);
    EXPECT_EQ(tabs->indexOfTabViewItem(one), 0);
    EXPECT_EQ(selected(), "two") << "a new one is not selected";
}

TEST_F(TabView, hasATabForEachItemAsWideAsItsLabel) {
    EXPECT_EQ(tabs->rectOfTabAtIndex(0), (NSRect{{0, 100}, {21 + 24, 26}}));
    EXPECT_EQ(tabs->rectOfTabAtIndex(1), (NSRect{{45, 100}, {45, 26}}));
    EXPECT_EQ(tabs->rectOfTabAtIndex(2), (NSRect{{90, 100}, {35 + 24, 26}}));
    tabs->setFrameSize({149.0 / 2, 126});
    EXPECT_EQ(tabs->rectOfTabAtIndex(1), (NSRect{{22.5, 100}, {22.5, 26}})) << "all at half their width";
    one->setLabel(nullptr);
    EXPECT_EQ(one->label()->utf8(), "");
    tabs->setFrameSize({300, 126});
    EXPECT_EQ(tabs->rectOfTabAtIndex(0).size.width, 24);
}

TEST_F(TabView, selectsTheItemWhoseTabIsClicked) {
    // The tabs begin at 10, 120 of the window.
    click({60, 130}, {90, 121});
    EXPECT_EQ(selected(), "two");
    click({110, 130}, {60, 130});
    EXPECT_EQ(selected(), "two") << "let go on another one";
    click({200, 130}, {110, 130});
    click({110, 100}, {110, 100});
    EXPECT_EQ(selected(), "two") << "no tab was pressed";
    mouse("mouseDown:"_sel, NSEventTypeLeftMouseDown, {110, 130});
    EXPECT_EQ(selected(), "two") << "not before it is let go";
    mouse("mouseUp:"_sel, NSEventTypeLeftMouseUp, {110, 130});
    EXPECT_EQ(selected(), "three");
    tabs->mouseDown(nullptr);
    tabs->mouseUp(nullptr);
    EXPECT_EQ(tabs->tabViewItemAtPoint({300, 110}), nullptr);
}

TEST_F(TabView, selectsTheItemsBesideByTheArrowKeys) {
    const auto left = u"\xF702"_ns;
    const auto right = u"\xF703"_ns;
    EXPECT_TRUE(tabs->acceptsFirstResponder());
    tabs->keyDown(keyEvent(left));
    EXPECT_EQ(selected(), "one");
    tabs->keyDown(keyEvent(right));
    EXPECT_EQ(selected(), "two");
    tabs->keyDown(keyEvent(right));
    tabs->keyDown(keyEvent(right));
    EXPECT_EQ(selected(), "three") << "it does not go round";
    tabs->keyDown(keyEvent(left));
    EXPECT_EQ(selected(), "two");
    tabs->keyDown(keyEvent(left, NSEventModifierFlagCommand));
    tabs->keyDown(keyEvent("a"_ns));
    tabs->keyDown(nullptr);
    EXPECT_EQ(selected(), "two");
}

TEST_F(TabView, drawsItsTabsFlat) {
    tabs->selectTabViewItem(two);
    const test::DrawingRecord record = test::drawn(tabs);
    EXPECT_TRUE(record.has("fill 0,100 300x26 96/96/96\nfill 0,100 300x1 69/69/69\n"));
    EXPECT_TRUE(record.has("fill 45,100 45x26 white\nfill 45,100 45x2 10/42/86\n"));
    EXPECT_TRUE(record.has("text 'three' 102,105 35x16 on one line\n"));
    EXPECT_FALSE(record.has("line ")) << "no ring without the keyboard";
    window->makeFirstResponder(tabs);
    EXPECT_TRUE(test::drawn(tabs).has("line 2 round 4 45,100 45x26 10/42/86\n"));
    tabs->drawRect(tabs->bounds());
}

/// Makes its view when it is asked for it.
class Page : public NSViewController {
    ZR_OBJECT(Page, NSViewController)
};

TEST_F(TabView, makesTheViewOfAControllerWhenItIsShown) {
    const auto page = make<Page>();
    page->setTitle("Page"_ns);
    const auto item = NSTabViewItem::tabViewItemWithViewController(page);
    EXPECT_EQ(item->label()->utf8(), "Page");
    EXPECT_EQ(item->viewController(), page);
    tabs->addTabViewItem(item);
    EXPECT_FALSE(page->isViewLoaded());
    tabs->selectTabViewItem(item);
    ASSERT_TRUE(page->isViewLoaded());
    EXPECT_EQ(page->view()->superview(), tabs);
    item->setViewController(nullptr);
    EXPECT_EQ(tabs->subviews()->count(), 0U);
    const auto view = make<NSView>();
    item->setView(view);
    EXPECT_EQ(view->superview(), tabs) << "a selected one shows its new view at once";
}

TEST_F(TabView, standsAnItemWithNothingToShow) {
    const auto item = make<NSTabViewItem>();
    EXPECT_EQ(item->view(), nullptr);
    EXPECT_EQ(item->identifier(), nullptr);
    tabs->addTabViewItem(item);
    tabs->selectTabViewItem(item);
    EXPECT_EQ(tabs->selectedTabViewItem(), item);
    EXPECT_EQ(tabs->subviews()->count(), 0U);
    EXPECT_EQ(NSTabViewItem::tabViewItemWithViewController(nullptr)->view(), nullptr);
    tabs->selectTabViewItem(one);
    EXPECT_EQ(one->view()->superview(), tabs);
}

} // namespace
} // namespace zr
