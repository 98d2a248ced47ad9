#include "menu_testing.h"

#include "../foundation/checks.h"

#include <zrbasic/platform/appkit/pop_up_button.h>
#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/foundation/dispatch_queue.h>
#include <zrbasic/platform/qt/accessibility_p.h>

#include <QAccessible>

namespace zr::test {
namespace {

/// One of 120 by 30 points at 40, 60 of a window, for how to round.
class PopUpsOnScreen : public ViewWindow {
  protected:
    void SetUp() override {
        button->addItemsWithTitles(NSArray::arrayWithObjects({"Plain"_ns, "Down"_ns, "Up"_ns}));
        button->setTarget(choices);
        button->setAction("choose:"_sel);
        content->addSubview(button);
        show();
    }
    ~PopUpsOnScreen() override { button = nullptr; }

    /// A press and a release of the left button.
    void clickButton(std::vector<MenuUser::Step> steps) {
        const MenuUser user(std::move(steps));
        click(60, 75);
    }
    std::string taken() { return std::exchange(choices->log, {}); }
    std::string selected() const {
        const Ref<NSString> title = button->titleOfSelectedItem();
        return title ? title->utf8() : "-";
    }

    const Ref<MenuChoices> choices = make<MenuChoices>();
    Ref<NSPopUpButton> button =
        make<NSPopUpButton>(&NSPopUpButton::initWithFrame_pullsDown, NSRect{{40, 60}, {120, 30}}, false);
};

TEST_F(PopUpsOnScreen, openOverThemselvesAndSelectWhatIsClicked) {
    button->selectItemAtIndex(1);
    QPoint corner;
    clickButton({[&](QMenu& open) {
        EXPECT_EQ(linesOf(open), "Plain|Down*|Up");
        EXPECT_GE(open.width(), 120);
        corner = open.mapToGlobal(open.actionGeometry(open.actions()[1]).topLeft());
        EXPECT_EQ(open.activeAction(), open.actions()[1]);
        clicking("Up")(open);
    }});
    EXPECT_EQ(corner, host()->mapToGlobal(pixel(40, 90))) << "the selected item over the button";
    EXPECT_EQ(selected(), "Up");
    EXPECT_EQ(taken(), "? ") << "sent by the button";
    EXPECT_FALSE(button->isHighlighted());
}

TEST_F(PopUpsOnScreen, stayAsTheyAreWhenTheMenuIsDismissed) {
    clickButton({pressing(Qt::Key_Escape)});
    EXPECT_EQ(selected(), "Plain");
    EXPECT_EQ(taken(), "");
    EXPECT_FALSE(button->isHighlighted());
    clickButton({clicking("Plain")});
    EXPECT_EQ(taken(), "? ") << "and open again";
}

TEST_F(PopUpsOnScreen, takeADragFromThePressToTheItem) {
    const MenuUser user({[](QMenu& open) {
        const QPoint first = open.actionGeometry(open.actions()[0]).center();
        const QPoint last = open.actionGeometry(open.actions()[2]).center();
        // The button is still down, and Qt hands what it does to the menu.
        for (const QPoint at : {first, last}) {
            QMouseEvent moved(QEvent::MouseMove, at, open.mapToGlobal(at), Qt::NoButton, Qt::LeftButton, {});
            QCoreApplication::sendEvent(&open, &moved);
        }
        QTest::mouseRelease(&open, Qt::LeftButton, {}, last);
    }});
    QTest::mousePress(handle(), Qt::LeftButton, {}, pixel(60, 75));
    EXPECT_EQ(selected(), "Up");
    EXPECT_EQ(taken(), "? ");
}

TEST_F(PopUpsOnScreen, openByKeysAndAreChosenFromByKeys) {
    window->makeFirstResponder(button);
    struct Row {
        Qt::Key opening;
        Qt::Key moving;
        const char* chosen;
    };
    const Row rows[] = {
        {Qt::Key_Space, Qt::Key_Down, "Down"},
        {Qt::Key_Down, Qt::Key_Down, "Up"},
        {Qt::Key_Up, Qt::Key_Up, "Down"},
        {Qt::Key_Return, Qt::Key_Up, "Plain"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.chosen);
        const MenuUser user({pressing(row.moving), pressing(Qt::Key_Return)});
        QTest::keyClick(handle(), row.opening);
        EXPECT_EQ(selected(), row.chosen);
    }
    EXPECT_EQ(taken(), "? ? ? ? ");
    EXPECT_EQ(window->firstResponder(), button);
}

TEST_F(PopUpsOnScreen, surviveTheirActionAndTheirMenu) {
    const Weak<NSPopUpButton> watched(button);
    choices->whenChosen = [this] {
        button->removeFromSuperview();
        button = nullptr;
    };
    clickButton({clicking("Down")});
    EXPECT_TRUE(eventually([&] { return !watched.lock(); }));
    EXPECT_EQ(taken(), "? ");
    const auto second = make<NSPopUpButton>(&NSPopUpButton::initWithFrame, NSRect{{40, 60}, {120, 30}});
    content->addSubview(second);
    second->addItemWithTitle("Day"_ns);
    clickButton({[&](QMenu&) { second->removeFromSuperview(); }});
    EXPECT_FALSE(QApplication::activePopupWidget());
    EXPECT_FALSE(second->isHighlighted());
}

TEST_F(PopUpsOnScreen, reportWhatTheirActionRaisesToTheLoopAround) {
    choices->whenChosen = [] { NSException::raise(NSRangeException, "no such mode"); };
    const MenuUser user({clicking("Up")});
    dispatch_async(dispatch_get_main_queue(), [this] { click(60, 75); });
    EXPECT_EQ(raisedName([] { currentToolkit().runLoopUntil([] { return false; }); }), NSRangeException);
    EXPECT_EQ(selected(), "Up");
    EXPECT_FALSE(button->isHighlighted());
}

TEST_F(PopUpsOnScreen, thatPullDownOpenBelow) {
    button->setPullsDown(true);
    QPoint corner;
    clickButton({[&](QMenu& open) {
        EXPECT_EQ(linesOf(open), "Down|Up") << "without its title";
        corner = open.pos();
        clicking("Up")(open);
    }});
    EXPECT_EQ(corner, host()->mapToGlobal(pixel(40, 60)));
    EXPECT_EQ(taken(), "? ");
    EXPECT_EQ(button->title()->utf8(), "Plain");
}

TEST_F(PopUpsOnScreen, tellReadersWhatIsChosen) {
    const auto about = [this] { return QAccessible::queryAccessibleInterface(widgetOf(button)); };
    EXPECT_EQ(about()->role(), QAccessible::ComboBox);
    EXPECT_EQ(about()->text(QAccessible::Value), "Plain");
    EXPECT_EQ(about()->text(QAccessible::Name), "");
    button->setAccessibilityLabel("Rounding"_ns);
    EXPECT_EQ(about()->text(QAccessible::Name), "Rounding");
    EXPECT_TRUE(about()->state().hasPopup);
    EXPECT_TRUE(about()->state().collapsed);
    EXPECT_FALSE(about()->state().checkable);
    button->selectItemAtIndex(2);
    const auto events = qt::announcementsOf(*button, ViewChange::Content, *widgetOf(button));
    ASSERT_EQ(events.size(), 1u);
    ASSERT_EQ(events[0]->type(), QAccessible::ValueChanged);
    EXPECT_EQ(static_cast<QAccessibleValueChangeEvent&>(*events[0]).value().toString(), "Up");
    EXPECT_TRUE(qt::announcementsOf(*button, ViewChange::Content, *widgetOf(button)).empty());
    {
        const MenuUser user({[&](QMenu& open) {
            EXPECT_TRUE(about()->state().expanded);
            clicking("Down")(open);
        }});
        about()->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    }
    EXPECT_EQ(selected(), "Down");
    button->setPullsDown(true);
    EXPECT_EQ(about()->role(), QAccessible::ButtonMenu);
    button->setAccessibilityLabel(nullptr);
    EXPECT_EQ(about()->text(QAccessible::Name), "Plain");
    EXPECT_EQ(about()->text(QAccessible::Value), "");
}

} // namespace
} // namespace zr::test
