#include "tab_view_testing.h"

#include <zrbasic/platform/appkit/tab_view_controller.h>

namespace zr {
namespace {

TEST(TabViewController, showsItsTabView) {
    const auto controller = make<NSTabViewController>();
    const Ref<NSTabView> tabs = controller->tabView();
    EXPECT_EQ(controller->tabView(), tabs);
    EXPECT_FALSE(controller->isViewLoaded());
    EXPECT_EQ(controller->view(), tabs);
    EXPECT_EQ(controller->selectedTabViewItemIndex(), -1);
}

TEST(TabViewController, reachesThroughToTheItemsOfItsTabView) {
    const auto controller = make<NSTabViewController>();
    const auto page = make<NSViewController>();
    const auto one = test::tab("one");
    const auto two = NSTabViewItem::tabViewItemWithViewController(page);
    controller->addTabViewItem(two);
    controller->insertTabViewItem_atIndex(one, 0);
    EXPECT_TRUE(controller->tabViewItems()->isEqual(NSArray::arrayWithObjects({one, two})));
    EXPECT_EQ(controller->tabView()->tabViewItemAtIndex(0), one);
    EXPECT_EQ(controller->tabViewItemForViewController(page), two);
    EXPECT_EQ(controller->tabViewItemForViewController(controller), nullptr);
    EXPECT_EQ(controller->tabViewItemForViewController(nullptr), nullptr);
    controller->removeTabViewItem(one);
    controller->removeTabViewItem(nullptr);
    EXPECT_EQ(controller->tabViewItems()->count(), 1U);
}

TEST(TabViewController, selectsByIndex) {
    const auto controller = make<NSTabViewController>();
    controller->addTabViewItem(test::tab("one"));
    controller->addTabViewItem(test::tab("two"));
    EXPECT_EQ(controller->selectedTabViewItemIndex(), 0);
    controller->setSelectedTabViewItemIndex(1);
    EXPECT_EQ(controller->selectedTabViewItemIndex(), 1);
    for (const NSInteger index : {-1, 2}) {
        EXPECT_THROW(controller->setSelectedTabViewItemIndex(index), NSException);
    }
    EXPECT_THROW(controller->insertTabViewItem_atIndex(test::tab("three"), 3), NSException);
    EXPECT_EQ(controller->selectedTabViewItemIndex(), 1);
}

} // namespace
} // namespace zr
