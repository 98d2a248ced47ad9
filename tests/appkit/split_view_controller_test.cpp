#include "split_view_testing.h"

#include <zrbasic/platform/appkit/split_view_controller.h>

#include <limits>

namespace zr {
namespace {

using test::thicknesses;
using Extents = std::vector<double>;

/// Its view is 100 points wide.
class Pane : public NSViewController {
    ZR_OBJECT(Pane, NSViewController)
  public:
    void loadView() override { setView(test::viewOfWidth(100)); }
};

class SplitViewController : public testing::Test {
  protected:
    Ref<NSSplitViewItem> add(NSViewController* controller) {
        Ref<NSSplitViewItem> item = NSSplitViewItem::splitViewItemWithViewController(controller);
        desk->addSplitViewItem(item);
        return item;
    }
    void show(double width) {
        static_cast<void>(desk->view());
        desk->splitView()->setFrameSize({width, 50});
    }

    Ref<NSSplitViewController> desk = make<NSSplitViewController>();
    Ref<Pane> left = make<Pane>();
    Ref<Pane> right = make<Pane>();
};

TEST_F(SplitViewController, showsTheViewsSideBySide) {
    add(left);
    add(right);
    show(201);
    EXPECT_EQ(desk->view(), desk->splitView());
    EXPECT_TRUE(desk->splitView()->isVertical());
    EXPECT_TRUE(desk->splitView()->subviews()->isEqual(NSArray::arrayWithObjects({left->view(), right->view()})));
    EXPECT_EQ(thicknesses(desk->splitView()), (Extents{100, 100}));
}

TEST_F(SplitViewController, makesNoViewBeforeItsOwn) {
    add(left);
    static_cast<void>(desk->splitView());
    EXPECT_FALSE(left->isViewLoaded());
    EXPECT_FALSE(desk->isViewLoaded());
    static_cast<void>(desk->view());
    EXPECT_TRUE(left->isViewLoaded());
    add(right);
    EXPECT_TRUE(right->isViewLoaded()) << "and from then on at once";
}

TEST_F(SplitViewController, keepsItsItemsInOrder) {
    show(300);
    const auto first = add(left);
    const auto second = NSSplitViewItem::splitViewItemWithViewController(right);
    desk->insertSplitViewItem_atIndex(second, 0);
    EXPECT_TRUE(desk->splitViewItems()->isEqual(NSArray::arrayWithObjects({second, first})));
    EXPECT_EQ(desk->splitView()->subviews()->firstObject(), right->view());
    EXPECT_EQ(desk->splitViewItemForViewController(right), second);
    EXPECT_EQ(desk->splitViewItemForViewController(desk), nullptr);
    EXPECT_EQ(desk->splitViewItemForViewController(nullptr), nullptr);
    desk->addSplitViewItem(second);
    EXPECT_EQ(desk->splitViewItems()->firstObject(), second) << "it was there already";
    desk->removeSplitViewItem(second);
    EXPECT_EQ(right->view()->superview(), nullptr);
    desk->removeSplitViewItem(second);
    desk->removeSplitViewItem(nullptr);
    EXPECT_EQ(desk->splitViewItems()->count(), 1U);
}

TEST_F(SplitViewController, refusesAnIndexBeyondItsItems) {
    const auto item = NSSplitViewItem::splitViewItemWithViewController(left);
    for (const NSInteger index : {NSInteger{-1}, NSInteger{1}, std::numeric_limits<NSInteger>::min()}) {
        SCOPED_TRACE(index);
        EXPECT_THROW(desk->insertSplitViewItem_atIndex(item, index), NSException);
    }
    EXPECT_EQ(desk->splitViewItems()->count(), 0U);
    desk->addSplitViewItem(nullptr);
    EXPECT_EQ(desk->splitViewItems()->count(), 0U);
}

TEST_F(SplitViewController, takesAnItemOverFromAnother) {
    const auto item = add(left);
    show(300);
    const auto other = make<NSSplitViewController>();
    static_cast<void>(other->view());
    other->addSplitViewItem(item);
    EXPECT_EQ(desk->splitViewItems()->count(), 0U);
    EXPECT_EQ(left->view()->superview(), other->splitView());
}

TEST_F(SplitViewController, holdsTheLimitsOfItsItems) {
    const auto item = add(left);
    add(right);
    item->setMinimumThickness(80);
    show(101);
    EXPECT_EQ(thicknesses(desk->splitView()), (Extents{80, 20}));
    item->setMaximumThickness(90);
    desk->splitView()->setFrameSize({301, 50});
    EXPECT_EQ(thicknesses(desk->splitView()), (Extents{90, 210}));
    item->setMinimumThickness(NSSplitViewItemUnspecifiedDimension);
    item->setMaximumThickness(NSSplitViewItemUnspecifiedDimension);
    EXPECT_EQ(thicknesses(desk->splitView()), (Extents{150, 150})) << "without limits";
    desk->removeSplitViewItem(item);
    EXPECT_EQ(desk->splitView()->thicknessLimits(left->view()).minimum, 0);
}

TEST_F(SplitViewController, collapsesAnItem) {
    const auto item = add(left);
    add(right);
    item->setCollapsed(true);
    show(201);
    EXPECT_TRUE(left->view()->isHidden());
    EXPECT_EQ(right->view()->frame().size.width, 201);
    item->setCollapsed(false);
    EXPECT_FALSE(left->view()->isHidden());
    EXPECT_EQ(thicknesses(desk->splitView()), (Extents{100, 100}));
    item->setCollapsed(true);
    EXPECT_EQ(right->view()->frame().size.width, 201);
    EXPECT_TRUE(desk->splitView()->isSubviewCollapsed(left->view()));
}

TEST_F(SplitViewController, changesTheControllerOfAnItem) {
    const auto item = add(left);
    show(300);
    item->setViewController(right);
    EXPECT_EQ(left->view()->superview(), nullptr);
    EXPECT_EQ(right->view()->superview(), desk->splitView());
    item->setViewController(nullptr);
    EXPECT_EQ(desk->splitView()->subviews()->count(), 0U);
    EXPECT_EQ(desk->splitViewItems()->count(), 1U);
}

TEST(SplitViewItem, hasNoLimitsAtFirst) {
    const auto item = make<NSSplitViewItem>();
    EXPECT_EQ(item->minimumThickness(), NSSplitViewItemUnspecifiedDimension);
    EXPECT_EQ(item->maximumThickness(), NSSplitViewItemUnspecifiedDimension);
    EXPECT_EQ(item->viewController(), nullptr);
    EXPECT_FALSE(item->isCollapsed());
    item->setMinimumThickness(std::numeric_limits<double>::infinity());
    EXPECT_EQ(item->minimumThickness(), std::numeric_limits<double>::infinity()) << "kept as it was set";
}

} // namespace
} // namespace zr
