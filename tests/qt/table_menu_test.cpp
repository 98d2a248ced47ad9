#include "menu_testing.h"
#include "table_on_screen.h"

namespace zr::test {
namespace {

/// A table with a menu for its rows and one for its titles. What was clicked is written down when a menu is opened.
class TableMenus : public TableOnScreen {
  protected:
    void SetUp() override {
        TableOnScreen::SetUp();
        for (const auto& [menu, title] : {std::pair{rowMenu, "Cancel"}, {titleMenu, "Hide"}}) {
            menu->addItemWithTitle_action_keyEquivalent(NSString::fromUtf8(title), "choose:"_sel, nullptr)
                ->setTarget(choices);
        }
        choices->whenChosen = [this] { noteClicked(); };
    }
    ~TableMenus() override {
        table->setMenu(nullptr);
        table->setHeaderMenu(nullptr);
    }

    void noteClicked() {
        clicked += std::to_string(table->clickedColumn()) + ',' + std::to_string(table->clickedRow()) + ' ';
    }
    /// With a press of the right button there; what was clicked while the menu was open and when it was chosen from.
    std::string choose(const char* title, const QWidget& in, QPoint at) {
        clicked.clear();
        const MenuUser user({[&](QMenu& open) {
            noteClicked();
            clicking(title)(open);
        }});
        press(in, at);
        EXPECT_TRUE(eventually([this] { return !choices->log.empty(); }));
        settle();
        return std::exchange(clicked, {}) + std::exchange(choices->log, {});
    }
    static void press(const QWidget& in, QPoint at) {
        QWindow* const window = in.window()->windowHandle();
        QTest::mousePress(window, Qt::RightButton, {}, inWindow(in, at));
        QTest::mouseRelease(window, Qt::RightButton, {}, inWindow(in, at));
    }
    const Ref<NSMenu> rowMenu = make<NSMenu>();
    const Ref<NSMenu> titleMenu = make<NSMenu>();
    const Ref<MenuChoices> choices = make<MenuChoices>();
    std::string clicked;
};

TEST_F(TableMenus, openOverRowsAndTellWhichIsMeant) {
    table->setMenu(rowMenu);
    table->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(1), false);
    EXPECT_EQ(choose("Cancel", *shown->viewport(), cell(2, 3)), "2,3 2,3 Cancel ");
    EXPECT_EQ(table->clickedRow(), -1);
    EXPECT_EQ(table->clickedColumn(), -1);
    EXPECT_EQ(table->selectedRow(), 1) << "nothing is selected by it";
    table->moveColumn_toColumn(2, 0);
    EXPECT_EQ(choose("Cancel", *shown->viewport(), cell(0, 0)), "0,0 0,0 Cancel ");
    source->rows = 1;
    table->reloadData();
    settle();
    EXPECT_EQ(choose("Cancel", *shown->viewport(), {20, 120}), "-1,-1 -1,-1 Cancel ") << "below the rows";
}

TEST_F(TableMenus, openOverTitles) {
    table->setHeaderMenu(titleMenu);
    EXPECT_EQ(table->headerMenu(), titleMenu);
    EXPECT_EQ(choose("Hide", *header().viewport(), middleOf(1)), "1,-1 1,-1 Hide ");
    EXPECT_EQ(choose("Hide", *header().viewport(), {header().viewport()->width() - 3, 5}), "-1,-1 -1,-1 Hide ")
        << "where no column is";
    table->setMenu(rowMenu);
    EXPECT_EQ(choose("Hide", *header().viewport(), middleOf(0)), "0,-1 0,-1 Hide ");
    EXPECT_EQ(choose("Cancel", *shown->viewport(), cell(0, 0)), "0,0 0,0 Cancel ");
}

TEST_F(TableMenus, areNoneUnlessSet) {
    press(*shown->viewport(), cell(0, 2));
    press(*header().viewport(), middleOf(1));
    settle();
    EXPECT_FALSE(QApplication::activePopupWidget());
    table->setHeaderMenu(titleMenu);
    press(*shown->viewport(), cell(0, 2));
    settle();
    EXPECT_FALSE(QApplication::activePopupWidget()) << "the titles' menu is not the rows'";
    EXPECT_EQ(clicked, "");
}

TEST_F(TableMenus, closeWhenTheTablesWidgetGoesAway) {
    table->setMenu(rowMenu);
    const MenuUser user({[this](QMenu&) { table->dropPeer(); }});
    press(*shown->viewport(), cell(0, 2));
    EXPECT_TRUE(eventually([this] { return table->peer() == nullptr; }));
    settle();
    EXPECT_FALSE(QApplication::activePopupWidget()) << "its widget, and with that the window, is gone";
    EXPECT_EQ(table->clickedRow(), -1);
}

} // namespace
} // namespace zr::test
