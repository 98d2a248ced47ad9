#include <zrbasic/ui/split_view.h>
#include <zrbasic/ui/view.h>

#include <tests/appkit/split_view_testing.h>

#include <algorithm>
#include <limits>

namespace zr {
namespace {

using test::thicknesses;
using Extents = std::vector<double>;

constexpr double unlimited = NSSplitViewItemUnspecifiedDimension;

NSSplitViewItem* lastItem(NSSplitViewController* desk) {
    return cast<NSSplitViewItem>(desk->splitViewItems()->lastObject());
}

/// A kind of item of one's own.
class Sidebar : public NSSplitViewItem {
    ZR_OBJECT(Sidebar, NSSplitViewItem)
};

TEST(SplitViewControllers, addAControllerWithItsLimits) {
    const auto desk = make<NSSplitViewController>();
    const auto pane = make<NSViewController>();
    const auto expectLast = [&](NSUInteger count, double minimum, double maximum) {
        ASSERT_EQ(desk->splitViewItems()->count(), count);
        EXPECT_EQ(lastItem(desk)->viewController(), pane);
        EXPECT_EQ(lastItem(desk)->minimumThickness(), minimum);
        EXPECT_EQ(lastItem(desk)->maximumThickness(), maximum);
    };
    addViewController(desk, pane);
    expectLast(1, unlimited, unlimited);
    addViewController_minThickness(desk, pane, 20);
    expectLast(2, 20, unlimited);
    addViewController_maxThickness(desk, pane, 30);
    expectLast(3, unlimited, 30);
    addViewController_minThickness_maxThickness(desk, pane, 20, 30.5);
    expectLast(4, 20, 30.5);
    addViewController_thickness(desk, pane, 120);
    expectLast(5, 120, 120);
}

TEST(SplitViewControllers, answerMessages) {
    const auto desk = make<NSSplitViewController>();
    const auto pane = make<NSViewController>();
    send<void>(desk, "addViewController:"_sel, pane);
    send<void>(desk, "addViewController:minThickness:"_sel, pane, 1.0);
    send<void>(desk, "addViewController:maxThickness:"_sel, pane, 1.0);
    send<void>(desk, "addViewController:minThickness:maxThickness:"_sel, pane, 1.0, 2.0);
    send<void>(desk, "addViewController:thickness:"_sel, pane, 7.0);
    EXPECT_EQ(desk->splitViewItems()->count(), 5U);
    EXPECT_EQ(lastItem(desk)->maximumThickness(), 7);
    send<void>(desk, "addViewController:"_sel, "no controller"_ns);
    EXPECT_EQ(lastItem(desk)->viewController(), nullptr);
}

TEST(SplitViewControllers, areNothingForNull) {
    const auto pane = make<NSViewController>();
    addViewController(nullptr, pane);
    addViewController_minThickness(nullptr, pane, 1);
    addViewController_maxThickness(nullptr, pane, 1);
    addViewController_minThickness_maxThickness(nullptr, pane, 1, 2);
    addViewController_thickness(nullptr, pane, 1);
    setThickness(nullptr, 1);
    setMiniThickness_andMaxThickness(nullptr, 1, 2);
    EXPECT_EQ(thickness(nullptr), 0);
    const auto desk = make<NSSplitViewController>();
    addViewController(desk, nullptr);
    EXPECT_EQ(desk->splitViewItems()->count(), 1U) << "an item that shows nothing";
    EXPECT_EQ(cast<NSSplitView>(desk->view())->subviews()->count(), 0U);
}

TEST(SplitViewControllers, giveAControllerAFixedThickness) {
    const auto desk = make<NSSplitViewController>();
    const auto side = make<NSViewController>();
    const auto chart = make<NSViewController>();
    addViewController_thickness(desk, side, 120);
    addViewController(desk, chart);
    desk->view()->setFrameSize({321, 100});
    EXPECT_EQ(thicknesses(desk->splitView()), (Extents{120, 200}));
    desk->splitView()->setPosition_ofDividerAtIndex(200, 0);
    desk->splitView()->setPosition_ofDividerAtIndex(20, 0);
    EXPECT_EQ(thicknesses(desk->splitView()), (Extents{120, 200})) << "the line stays where it is";
}

TEST(SplitViewControllers, layOutSafelyWhateverTheThickness) {
    for (const double odd :
         {0.0, -5.0, 1e300, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        SCOPED_TRACE(odd);
        const auto desk = make<NSSplitViewController>();
        addViewController_thickness(desk, make<NSViewController>(), odd);
        addViewController_minThickness_maxThickness(desk, make<NSViewController>(), odd, 10);
        addViewController(desk, make<NSViewController>());
        desk->view()->setFrameSize({322, 100});
        for (const double thickness : thicknesses(desk->splitView())) {
            EXPECT_GE(thickness, 0);
            EXPECT_LE(thickness, 1e9);
        }
        desk->splitView()->setPosition_ofDividerAtIndex(odd, 0);
        desk->splitView()->setPosition_ofDividerAtIndex(odd, 1);
        EXPECT_EQ(thicknesses(desk->splitView()).size(), 3u);
    }
}

TEST(SplitViewItems, readNoThicknessWhateverWasSet) {
    const auto item = make<NSSplitViewItem>();
    setThickness(item, 120);
    EXPECT_EQ(thickness(item), 0.0);
    EXPECT_EQ(send<double>(item, "thickness"_sel), 0.0);
    EXPECT_EQ(item->minimumThickness(), 120);
    EXPECT_EQ(item->maximumThickness(), 120);
}

TEST(SplitViewItems, takeBothLimitsInOneGo) {
    const auto item = make<NSSplitViewItem>();
    setMiniThickness_andMaxThickness(item, 10, 20);
    EXPECT_EQ(item->minimumThickness(), 10);
    EXPECT_EQ(item->maximumThickness(), 20);
    send<void>(item, "setMiniThickness:andMaxThickness:"_sel, 30.0, 25.0);
    EXPECT_EQ(item->minimumThickness(), 30) << "kept, contradictory or not";
    EXPECT_EQ(item->maximumThickness(), 25);
}

TEST(SplitViewItems, areMadeWithAControllerAndAThickness) {
    const auto pane = make<NSViewController>();
    const auto item = itemWithViewController_thickness(pane, 50);
    EXPECT_EQ(item->viewController(), pane);
    EXPECT_EQ(item->minimumThickness(), 50);
    EXPECT_EQ(item->maximumThickness(), 50);
    const Ref<Sidebar> sidebar = itemWithViewController_thickness<Sidebar>(nullptr, 60);
    EXPECT_EQ(sidebar->maximumThickness(), 60);
    const id made = send<id>(Sidebar::classObject(), "itemWithViewController:thickness:"_sel, pane, 70.0);
    ASSERT_NE(cast<Sidebar>(made), nullptr) << "of the class that was asked";
    EXPECT_EQ(cast<Sidebar>(made)->minimumThickness(), 70);
}

/// Never gets thinner than 40 points.
class Roomy : public NSSplitViewItem {
    ZR_OBJECT(Roomy, NSSplitViewItem)
  public:
    void setAtLeast(double thickness) { setMinimumThickness(std::max(40.0, thickness)); }
    ZR_METHOD(setAtLeast, "setMinimumThickness:")
};

TEST(SplitViewItems, hearTheirLimitsByMessage) {
    const auto item = make<Roomy>();
    setThickness(item, 33);
    EXPECT_EQ(item->minimumThickness(), 40);
    EXPECT_EQ(item->maximumThickness(), 33);
    send<void>(item, "setThickness:"_sel, 55.0);
    EXPECT_EQ(item->minimumThickness(), 55);
}

TEST(ViewsInASplitView, keepTheirWidthWhenTheyArePreferred) {
    struct Row {
        double width;
        Extents expected;
    };
    const auto split = make<NSSplitView>();
    split->setVertical(true);
    const auto kept = test::viewOfWidth(150);
    const auto other = test::viewOfWidth(150);
    split->addSubview(kept);
    split->addSubview(other);
    displayPriorityGreaterThan(kept, other);
    for (const Row& row : {Row{200, {150, 49}}, Row{300, {150, 149}}, Row{400, {249, 150}}}) {
        SCOPED_TRACE(row.width);
        split->setFrameSize({row.width, 50});
        EXPECT_EQ(thicknesses(split), row.expected);
    }
}

TEST(ViewsInASplitView, giveWayAsSoonAsAnotherIsPreferred) {
    const auto split = make<NSSplitView>(&NSSplitView::initWithFrame, NSMakeRect(0, 0, 201, 50));
    split->setVertical(true);
    const auto kept = test::viewOfWidth(150);
    const auto other = test::viewOfWidth(150);
    split->addSubview(kept);
    split->addSubview(other);
    EXPECT_EQ(thicknesses(split), (Extents{100, 100}));
    displayPriorityGreaterThan(kept, other);
    EXPECT_EQ(thicknesses(split), (Extents{150, 50}));
    displayPriorityGreaterThan(other, kept);
    EXPECT_EQ(thicknesses(split), (Extents{50, 150}));
    displayPriorityGreaterThan(other, nullptr);
    EXPECT_EQ(thicknesses(split), (Extents{50, 150}));
}

TEST(ViewsInASplitView, areLaidOutByThePrioritiesWhateverTheirMasksSay) {
    const auto split = make<NSSplitView>(&NSSplitView::initWithFrame, NSMakeRect(0, 0, 301, 50));
    split->setVertical(true);
    const auto kept = test::viewOfWidth(150);
    const auto other = test::viewOfWidth(150);
    kept->setAutoresizingMask(NSViewWidthSizable);
    split->addSubview(kept);
    split->addSubview(other);
    displayPriorityGreaterThan(kept, other);
    split->setFrameSize({201, 50});
    EXPECT_EQ(thicknesses(split), (Extents{150, 50}));
    split->setFrameSize({401, 80});
    EXPECT_EQ(thicknesses(split), (Extents{250, 150}));
    EXPECT_EQ(kept->frame().size.height, 80);
}

TEST(ViewsInASplitView, areNotPreferredByTheirHeight) {
    const auto split = make<NSSplitView>(&NSSplitView::initWithFrame, NSMakeRect(0, 0, 50, 101));
    const auto kept = make<NSView>(&NSView::initWithFrame, NSMakeRect(0, 0, 50, 100));
    const auto other = make<NSView>(&NSView::initWithFrame, NSMakeRect(0, 0, 50, 100));
    split->addSubview(kept);
    split->addSubview(other);
    displayPriorityGreaterThan(kept, other);
    split->adjustSubviews();
    EXPECT_EQ(thicknesses(split), (Extents{50, 50}));
}

} // namespace
} // namespace zr
