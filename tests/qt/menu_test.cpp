#include "menu_testing.h"

#include "../foundation/checks.h"

#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/screen.h>
#include <zrbasic/platform/appkit/text_field.h>
#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/foundation/dispatch_queue.h>

#include <limits>

namespace zr::test {
namespace {

/// A menu of three, and a view of 100 by 50 points at 40, 60 of a window.
class MenusOnScreen : public ViewWindow {
  protected:
    void SetUp() override {
        for (const char* const title : {"Buy", "Sell", "Flatten"}) {
            add(title);
        }
        view = ViewWindow::add({{40, 60}, {100, 50}});
        show();
    }
    ~MenusOnScreen() override { view = nullptr; }

    Ref<NSMenuItem> add(const char* title, const char* key = "", NSMenu* to = nullptr) {
        const Ref<NSMenuItem> item = (to ? to : menu.get())
                                         ->addItemWithTitle_action_keyEquivalent(
                                             NSString::fromUtf8(title), "choose:"_sel, NSString::fromUtf8(key));
        item->setTarget(choices);
        return item;
    }
    bool popUp(std::vector<MenuUser::Step> steps, NSMenuItem* item = nullptr, NSPoint at = {10, 20}) {
        const MenuUser user(std::move(steps));
        return menu->popUpMenuPositioningItem_atLocation_inView(item, at, view);
    }
    std::string taken() { return std::exchange(choices->log, {}); }

    const Ref<NSMenu> menu = make<NSMenu>();
    const Ref<MenuChoices> choices = make<MenuChoices>();
    Ref<LoggingView> view;
};

TEST_F(MenusOnScreen, doWhatIsClickedOnceTheyAreGone) {
    EXPECT_TRUE(popUp({clicking("Sell")}));
    EXPECT_EQ(taken(), "Sell ");
    EXPECT_FALSE(QApplication::activePopupWidget());
    EXPECT_TRUE(popUp({clicking("Buy")})) << "and open again";
    EXPECT_EQ(taken(), "Buy ");
    EXPECT_TRUE(window->isKeyWindow());
}

TEST_F(MenusOnScreen, workByKeys) {
    EXPECT_TRUE(popUp({pressing(Qt::Key_Down), pressing(Qt::Key_Down), pressing(Qt::Key_Return)}));
    EXPECT_EQ(taken(), "Sell ");
    EXPECT_TRUE(popUp({pressing(Qt::Key_Up), pressing(Qt::Key_Enter)}));
    EXPECT_EQ(taken(), "Flatten ");
    EXPECT_TRUE(popUp({pressing(Qt::Key_Return)}, menu->itemAtIndex(1)))
        << "the item that lies there is the one to begin with";
    EXPECT_EQ(taken(), "Sell ");
}

TEST_F(MenusOnScreen, chooseNothingWhenTheyAreDismissed) {
    EXPECT_FALSE(popUp({pressing(Qt::Key_Escape)}));
    EXPECT_FALSE(popUp({pressing(Qt::Key_Down), pressing(Qt::Key_Escape)}));
    view->take();
    content->take();
    EXPECT_FALSE(popUp({[this](QMenu& open) {
        // As Qt hands a press beside the menu to that.
        QTest::mouseClick(&open, Qt::LeftButton, {}, open.mapFromGlobal(host()->mapToGlobal(QPoint(300, 20))));
    }}));
    EXPECT_EQ(taken(), "");
    EXPECT_EQ(view->take() + content->take(), "") << "the click was for the menu";
}

TEST_F(MenusOnScreen, areMadeOfTheMenuAsItIs) {
    menu->removeAllItems();
    add("Buy & sell\tnow\n&x")->setState(1);
    add("Off")->setState(0);
    add("Some")->setState(-1);
    menu->addItem(NSMenuItem::separatorItem());
    menu->addItem(NSMenuItem::separatorItem());
    add("Gone")->setEnabled(false);
    add("Hidden")->setHidden(true);
    add("");
    popUp({[](QMenu& open) {
        EXPECT_EQ(linesOf(open), "Buy && sell now &&x*|Off|Some|-|-|(Gone)|");
        EXPECT_FALSE(open.actions()[2]->icon().isNull()) << "a mark between on and off";
        EXPECT_TRUE(open.actions()[1]->icon().isNull());
        EXPECT_FALSE(open.actions()[1]->isCheckable()) << "no empty box";
        EXPECT_FALSE(open.separatorsCollapsible());
        open.close();
    }});
}

TEST_F(MenusOnScreen, showKeysAndLeaveThemToTheWindow) {
    struct Row {
        const char* key;
        NSUInteger mask;
        const char* shown;
    };
    constexpr NSUInteger command = NSEventModifierFlagCommand;
    constexpr NSUInteger option = NSEventModifierFlagOption;
    const Row rows[] = {
        {"s", command, "\tCtrl+S"},
        {"S", command, "\tCtrl+Shift+S"},
        {"s", option | NSEventModifierFlagShift, "\tAlt+Shift+S"},
        {"\uF700", option, "\tAlt+Up"},
        {"\uF704", 0, "\tF1"},
        {"\uF726", 0, "\tF35"},
        {"\x7F", command, "\tCtrl+Backspace"},
        {"\r", 0, "\tReturn"},
        {" ", 0, "\tSpace"},
        {"+", command, "\tCtrl++"},
        {"&", command, "\tCtrl+&&"},
        {"k", NSEventModifierFlagControl, "\tMeta+K"},
        {"", command, ""},
        {"ab", command, ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.shown);
        menu->removeAllItems();
        add("X", row.key)->setKeyEquivalentModifierMask(row.mask);
        popUp({[&row](QMenu& open) {
            EXPECT_EQ(open.actions().front()->text().toStdString(), std::string("X") + row.shown);
            EXPECT_TRUE(open.actions().front()->shortcut().isEmpty());
            open.close();
        }});
    }
}

TEST_F(MenusOnScreen, openSubmenusBeside) {
    const Ref<NSMenu> inner = make<NSMenu>();
    menu->itemAtIndex(1)->setSubmenu(inner);
    add("Half", "", inner);
    add("All", "", inner);
    EXPECT_TRUE(popUp({pressing(Qt::Key_Down), pressing(Qt::Key_Down), pressing(Qt::Key_Right),
                       [](QMenu& open) {
                           EXPECT_EQ(linesOf(open), "Half|All");
                           QTest::keyClick(&open, Qt::Key_Down);
                       },
                       pressing(Qt::Key_Return)}));
    EXPECT_EQ(taken(), "All ");
    EXPECT_FALSE(popUp({pressing(Qt::Key_Down), pressing(Qt::Key_Down), pressing(Qt::Key_Right),
                        pressing(Qt::Key_Escape), pressing(Qt::Key_Escape)}));
    EXPECT_EQ(taken(), "");
    // One inside of the other, and a submenu without items.
    const Ref<NSMenu> innermost = make<NSMenu>();
    inner->itemAtIndex(0)->setSubmenu(innermost);
    EXPECT_TRUE(popUp({pressing(Qt::Key_Down), clicking("Buy")}));
    EXPECT_EQ(taken(), "Buy ");
}

TEST_F(MenusOnScreen, lieWhereTheyAreToBe) {
    QPoint upperLeft;
    const auto look = [&](QMenu& open) {
        upperLeft = open.pos();
        open.close();
    };
    // The view's 10, 20 is the window's 50, 80.
    popUp({look});
    EXPECT_EQ(upperLeft, host()->mapToGlobal(pixel(50, 80)));
    popUp({[&](QMenu& open) {
              upperLeft = open.mapToGlobal(open.actionGeometry(open.actions()[1]).topLeft());
              open.close();
          }},
          menu->itemAtIndex(1));
    EXPECT_EQ(upperLeft, host()->mapToGlobal(pixel(50, 80))) << "the item's corner";
    view->flips = true;
    popUp({look});
    EXPECT_EQ(upperLeft, host()->mapToGlobal(pixel(50, 90))) << "20 from the top";
    const double height = NSScreen::mainScreen()->frame().size.height;
    {
        const MenuUser user({look});
        menu->popUpMenuPositioningItem_atLocation_inView(nullptr, {30, height - 40}, nullptr);
    }
    EXPECT_EQ(upperLeft, QPoint(30, 40)) << "on the screen";
    menu->setMinimumWidth(233.5);
    popUp({[](QMenu& open) {
        EXPECT_EQ(open.width(), 234);
        open.close();
    }});
}

TEST_F(MenusOnScreen, areNotShownWithoutAPlaceOrItems) {
    for (const double wrong : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        EXPECT_FALSE(popUp({}, nullptr, {wrong, 0}));
        EXPECT_FALSE(popUp({}, nullptr, {0, wrong}));
    }
    const Ref<NSView> nowhere = make<NSView>();
    EXPECT_FALSE(menu->popUpMenuPositioningItem_atLocation_inView(nullptr, {0, 0}, nowhere));
    for (NSInteger i = 0; i < 3; ++i) {
        menu->itemAtIndex(i)->setHidden(true);
    }
    EXPECT_FALSE(popUp({}));
    menu->removeAllItems();
    EXPECT_FALSE(popUp({}));
    add("Buy");
    window->orderOut(nullptr);
    EXPECT_FALSE(popUp({}));
    EXPECT_FALSE(QApplication::activePopupWidget());
}

TEST_F(MenusOnScreen, closeWhenWhatTheyBelongToGoesAway) {
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"the view is taken out", [this] { view->removeFromSuperview(); }},
        {"the window is hidden", [this] { window->orderOut(nullptr); }},
        {"its widget is deleted", [this] { window->dropPeer(); }},
        {"the view changes windows",
         [this] {
             const Ref<NSWindow> other = make<NSWindow>();
             other->contentView()->addSubview(view);
         }},
    };
    for (const auto& [way, goAway] : ways) {
        SCOPED_TRACE(way);
        content->addSubview(view);
        show();
        EXPECT_FALSE(popUp({[&act = goAway](QMenu&) { act(); }}));
        EXPECT_FALSE(QApplication::activePopupWidget());
    }
    EXPECT_EQ(taken(), "");
}

TEST_F(MenusOnScreen, surviveTheirViewAndItsWindow) {
    Ref<NSView> plain = make<NSView>(&NSView::initWithFrame, NSRect{{200, 60}, {100, 50}});
    const Weak<NSView> watched(plain.get());
    content->addSubview(plain);
    plain->setMenu(menu);
    const MenuUser user({[&](QMenu&) {
        window->orderOut(nullptr);
        plain->removeFromSuperview();
        plain = nullptr;
    }});
    // Nobody but the event keeps the view.
    QTest::mousePress(handle(), Qt::RightButton, {}, pixel(220, 80));
    EXPECT_TRUE(eventually([&] { return !watched.lock(); }));
    EXPECT_FALSE(QApplication::activePopupWidget());
    EXPECT_EQ(taken(), "");
}

TEST_F(MenusOnScreen, surviveTheWidgetsThatThePressWasFor) {
    const Ref<NSView> plain = make<NSView>(&NSView::initWithFrame, NSRect{{200, 60}, {100, 50}});
    content->addSubview(plain);
    plain->setMenu(menu);
    {
        const MenuUser user({[&](QMenu&) { window->dropPeer(); }});
        QTest::mousePress(handle(), Qt::RightButton, {}, pixel(220, 80));
    }
    settle();
    EXPECT_FALSE(QApplication::activePopupWidget());
    show();
    const MenuUser user({clicking("Sell")});
    QTest::mousePress(handle(), Qt::RightButton, {}, pixel(220, 80));
    EXPECT_EQ(taken(), "Sell ") << "once it is shown again";
}

TEST_F(MenusOnScreen, chooseNoItemThatIsGoneOrDisabledMeanwhile) {
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"removed", [this] { menu->removeItem(menu->itemAtIndex(1)); }},
        {"all removed", [this] { menu->removeAllItems(); }},
        {"disabled", [this] { menu->itemAtIndex(1)->setEnabled(false); }},
    };
    for (const auto& [way, change] : ways) {
        SCOPED_TRACE(way);
        menu->removeAllItems();
        for (const char* const title : {"Buy", "Sell"}) {
            add(title);
        }
        EXPECT_FALSE(popUp({[&act = change](QMenu&) { act(); }, clicking("Sell")}));
        EXPECT_EQ(taken(), "");
    }
    menu->removeAllItems();
    add("Buy");
    const auto sell = add("Sell");
    EXPECT_TRUE(popUp({[&](QMenu&) {
                           menu->removeItem(menu->itemAtIndex(0));
                           sell->setTitle("Sell all"_ns);
                       },
                       clicking("Sell")}));
    EXPECT_EQ(taken(), "Sell all ") << "the item counts, not its place";
}

TEST_F(MenusOnScreen, closeAndPassOnWhatIsRaisedMeanwhile) {
    EXPECT_EQ(raisedName([this] {
                  popUp({[](QMenu&) {
                      dispatch_async(dispatch_get_main_queue(),
                                     [] { NSException::raise(NSGenericException, "no quotes"); });
                  }});
              }),
              NSGenericException);
    EXPECT_FALSE(QApplication::activePopupWidget());
    choices->whenChosen = [] { NSException::raise(NSRangeException, "no such order"); };
    EXPECT_EQ(raisedName([this] { popUp({clicking("Buy")}); }), NSRangeException);
    choices->whenChosen = nullptr;
    EXPECT_TRUE(popUp({clicking("Sell")}));
    EXPECT_EQ(taken(), "Buy Sell ");
}

TEST_F(MenusOnScreen, letTheMainQueueGoOn) {
    bool hasRun = false;
    EXPECT_FALSE(popUp({[&hasRun](QMenu& open) {
        dispatch_async(dispatch_get_main_queue(), [&hasRun, &open] {
            hasRun = true;
            open.close();
        });
    }}));
    EXPECT_TRUE(hasRun);
}

TEST_F(MenusOnScreen, mayOpenAnotherFromTheirAction) {
    bool innerChose = false;
    const Ref<NSMenu> inner = make<NSMenu>();
    add("Half", "", inner);
    choices->whenChosen = [&] {
        choices->whenChosen = nullptr;
        innerChose = inner->popUpMenuPositioningItem_atLocation_inView(nullptr, {0, 0}, view);
    };
    EXPECT_TRUE(popUp({clicking("Buy"), clicking("Half")}));
    EXPECT_TRUE(innerChose);
    EXPECT_EQ(taken(), "Buy Half ");
}

TEST_F(MenusOnScreen, closeWhenTheApplicationTerminates) {
    const auto application = NSApplication::sharedApplication();
    EXPECT_FALSE(popUp({[&application](QMenu&) { application->terminate(nullptr); }}));
    EXPECT_FALSE(QApplication::activePopupWidget());
    EXPECT_EQ(taken(), "");
    // Ends at once, and with it that the application has terminated.
    application->run();
}

TEST_F(MenusOnScreen, closeWithTheirToolkit) {
    {
        Toolkit none;
        Toolkit* before = nullptr;
        EXPECT_FALSE(popUp({[&](QMenu&) { before = setCurrentToolkit(&none); }}));
        setCurrentToolkit(before);
    }
    EXPECT_FALSE(QApplication::activePopupWidget());
    EXPECT_TRUE(popUp({clicking("Buy")}));
}

TEST_F(MenusOnScreen, openUnderTheRightButton) {
    {
        const MenuUser user({clicking("Sell")});
        content->take();
        click(300, 200, Qt::RightButton);
        EXPECT_EQ(content->take(), "rightDown rightUp ") << "elsewhere it is a press like others";
        const Ref<NSView> plain = make<NSView>(&NSView::initWithFrame, NSRect{{200, 60}, {100, 50}});
        content->addSubview(plain);
        plain->setMenu(menu);
        QTest::mousePress(handle(), Qt::RightButton, {}, pixel(220, 80));
        QTest::mouseRelease(handle(), Qt::RightButton, {}, pixel(220, 80));
    }
    EXPECT_EQ(taken(), "Sell ");
    {
        const MenuUser user({[this](QMenu& open) {
            EXPECT_EQ(open.pos(), host()->mapToGlobal(pixel(230, 90)));
            open.close();
        }});
        QTest::mouseClick(handle(), Qt::RightButton, {}, pixel(230, 90));
    }
    // The pointer works as before.
    content->take();
    click(300, 200);
    EXPECT_EQ(content->take(), "down up ");
}

TEST_F(MenusOnScreen, leaveAFieldThatIsEditedAlone) {
    const auto field = make<NSTextField>(&NSTextField::initWithFrame, NSRect{{200, 200}, {100, 24}});
    content->addSubview(field);
    window->makeFirstResponder(field);
    QTest::keyClicks(host()->focusWidget(), "12");
    bool wasEdited = false;
    EXPECT_TRUE(popUp({[&](QMenu& open) {
        wasEdited = field->currentEditor() != nullptr;
        clicking("Buy")(open);
    }}));
    EXPECT_TRUE(wasEdited);
    ASSERT_TRUE(field->currentEditor());
    QTest::keyClicks(host()->focusWidget(), "3");
    EXPECT_EQ(field->stringValue()->utf8(), "123");
    EXPECT_EQ(taken(), "Buy ");
}

TEST_F(MenusOnScreen, workInAModalSession) {
    const auto application = NSApplication::sharedApplication();
    dispatch_async(dispatch_get_main_queue(), [&] {
        EXPECT_TRUE(popUp({pressing(Qt::Key_Down), clicking("Sell")}));
        application->stopModalWithCode(3);
    });
    EXPECT_EQ(application->runModalForWindow(window), 3);
    EXPECT_EQ(taken(), "Sell ");
}

TEST_F(MenusOnScreen, closeWhenTheirModalSessionEndsByTheWindowBeingHidden) {
    const auto application = NSApplication::sharedApplication();
    bool wasChosen = true;
    dispatch_async(dispatch_get_main_queue(), [&] {
        wasChosen = popUp({[&](QMenu&) {
            application->stopModal();
            window->orderOut(nullptr);
        }});
    });
    application->runModalForWindow(window);
    EXPECT_FALSE(wasChosen);
    EXPECT_FALSE(QApplication::activePopupWidget());
}

} // namespace
} // namespace zr::test
