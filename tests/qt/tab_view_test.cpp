#include "view_testing.h"

#include <zrbasic/platform/appkit/tab_view.h>

namespace zr::test {
namespace {

/// Three pages, 300 by 200 points at 20, 20 of a window.
class TabViewOnScreen : public ViewWindow {
  protected:
    void SetUp() override {
        tabs = make<NSTabView>(&NSTabView::initWithFrame, NSRect{{20, 20}, {300, 200}});
        for (int i = 0; i < 3; ++i) {
            pages[i] = loggingView({{0, 0}, {10, 10}});
            const auto item = make<NSTabViewItem>();
            item->setLabel(NSString::fromUtf8("Page " + std::to_string(i)));
            item->setView(pages[i]);
            tabs->addTabViewItem(item);
        }
        content->addSubview(tabs);
        show();
    }
    ~TabViewOnScreen() override { tabs = nullptr; }

    void clickTab(NSInteger index) {
        const NSRect tab = tabs->rectOfTabAtIndex(index);
        click(20 + tab.origin.x + tab.size.width / 2, 20 + tab.origin.y + tab.size.height / 2);
        settle();
    }
    [[nodiscard]] NSInteger selected() const { return tabs->indexOfTabViewItem(tabs->selectedTabViewItem()); }
    [[nodiscard]] QColor colorAt(double x, double y) const {
        settle();
        return host()->grab().toImage().pixelColor(pixel(20 + x, 20 + y));
    }

    Ref<NSTabView> tabs;
    Ref<LoggingView> pages[3];
};

TEST_F(TabViewOnScreen, showsThePageWhoseTabIsClicked) {
    EXPECT_GT(tabs->rectOfTabAtIndex(0).size.width, 24 + 20) << "wide enough for its label";
    clickTab(1);
    EXPECT_EQ(selected(), 1);
    ASSERT_NE(widgetOf(pages[1]), nullptr);
    EXPECT_TRUE(widgetOf(pages[1])->isVisible());
    EXPECT_EQ(widgetOf(pages[1])->geometry(), QRect(0, 26, 300, 174));
    clickTab(2);
    EXPECT_EQ(selected(), 2);
    EXPECT_FALSE(widgetOf(pages[1]) && widgetOf(pages[1])->isVisible());
    clickTab(0);
    EXPECT_TRUE(widgetOf(pages[0])->isVisible()) << "and back again";
}

TEST_F(TabViewOnScreen, leavesTheClicksInThePageToThePage) {
    pages[0]->take();
    click(100, 100);
    EXPECT_EQ(pages[0]->take(), "down up ");
    EXPECT_EQ(selected(), 0);
    click(310, 210);
    EXPECT_EQ(selected(), 0) << "beside the tabs";
}

TEST_F(TabViewOnScreen, takesTheKeyboardAndTheArrowKeys) {
    clickTab(0);
    EXPECT_EQ(window->firstResponder(), tabs);
    QTest::keyClick(handle(), Qt::Key_Right);
    EXPECT_EQ(selected(), 1);
    QTest::keyClick(handle(), Qt::Key_Right);
    QTest::keyClick(handle(), Qt::Key_Right);
    EXPECT_EQ(selected(), 2);
    QTest::keyClick(handle(), Qt::Key_Left);
    EXPECT_EQ(selected(), 1);
    EXPECT_EQ(window->firstResponder(), tabs);
}

TEST_F(TabViewOnScreen, marksTheSelectedTab) {
    const QColor accent(26, 107, 219);
    const auto markOf = [this](NSInteger index) {
        const NSRect tab = tabs->rectOfTabAtIndex(index);
        return colorAt(tab.origin.x + tab.size.width / 2, tab.origin.y + 1);
    };
    EXPECT_EQ(markOf(0), accent);
    EXPECT_NE(markOf(1), accent);
    tabs->selectTabViewItemAtIndex(1);
    EXPECT_EQ(markOf(1), accent);
    EXPECT_NE(markOf(0), accent);
}

TEST_F(TabViewOnScreen, givesThePageItsNewExtent) {
    tabs->setFrameSize({200, 126});
    settle();
    EXPECT_EQ(widgetOf(pages[0])->size(), QSize(200, 100));
}

} // namespace
} // namespace zr::test
