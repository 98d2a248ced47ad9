#include <zrbasic/platform/appkit/menu.h>

#include <zrbasic/platform/appkit/button.h>
#include <zrbasic/platform/appkit/table_view.h>

#include "../foundation/checks.h"

#include <tests/appkit/menu_testing.h>

#include <cmath>
#include <limits>

namespace zr {
namespace {

constexpr NSUInteger command = NSEventModifierFlagCommand;

/// Writes down which items were chosen.
class MenuTarget : public NSObject {
    ZR_OBJECT(MenuTarget, NSObject)
  public:
    void choose(NSObject* item) { log += cast<NSMenuItem>(item)->title()->utf8() + ' '; }
    ZR_METHOD(choose, "choose:")

    std::string log;
};

class Menu : public testing::Test {
  protected:
    Ref<NSMenuItem> add(const char* title, const char* key, NSMenu* to = nullptr) {
        const Ref<NSMenuItem> item =
            (to ? to : menu.get())
                ->addItemWithTitle_action_keyEquivalent(NSString::stringWithUTF8String(title), "choose:"_sel,
                                                        NSString::stringWithUTF8String(key));
        item->setTarget(target);
        return item;
    }
    bool press(const char* key, NSUInteger modifiers = command) {
        return menu->performKeyEquivalent(test::keyEvent(NSString::stringWithUTF8String(key), modifiers));
    }
    std::string taken() { return std::exchange(target->log, {}); }

    const Ref<NSMenu> menu = make<NSMenu>(&NSMenu::initWithTitle, "Edit"_ns);
    const Ref<MenuTarget> target = make<MenuTarget>();
};

TEST_F(Menu, hasItsItemsInOrder) {
    const auto first = add("Cut", "x");
    const auto last = add("Paste", "v");
    const Ref<NSMenuItem> middle = make<NSMenuItem>();
    menu->insertItem_atIndex(middle, 1);
    EXPECT_EQ(menu->numberOfItems(), 3);
    EXPECT_EQ(menu->itemArray()->objectAtIndex(1), middle);
    EXPECT_EQ(menu->indexOfItem(last), 2);
    EXPECT_EQ(menu->itemAtIndex(0), first);
    EXPECT_EQ(menu->itemAtIndex(3), nullptr);
    EXPECT_EQ(menu->itemAtIndex(-1), nullptr);
    EXPECT_EQ(first->menu(), menu);
    menu->removeItem(middle);
    EXPECT_EQ(menu->indexOfItem(middle), -1);
    EXPECT_EQ(middle->menu(), nullptr);
    menu->removeItem(middle);
    menu->removeItem(nullptr);
    EXPECT_EQ(menu->numberOfItems(), 2);
    menu->removeAllItems();
    EXPECT_EQ(menu->numberOfItems(), 0);
    EXPECT_EQ(first->menu(), nullptr);
}

TEST_F(Menu, refusesWhatCannotLieInIt) {
    const auto item = add("Cut", "x");
    const Ref<NSMenu> other = make<NSMenu>();
    EXPECT_EQ(test::raisedName([&] { other->addItem(item); }), NSInvalidArgumentException);
    EXPECT_EQ(test::raisedName([&] { menu->addItem(item); }), NSInvalidArgumentException);
    const Ref<NSMenuItem> fresh = make<NSMenuItem>();
    EXPECT_EQ(test::raisedName([&] { menu->insertItem_atIndex(fresh, 2); }), NSRangeException);
    EXPECT_EQ(test::raisedName([&] { menu->insertItem_atIndex(fresh, -1); }), NSRangeException);
    fresh->setSubmenu(menu);
    EXPECT_EQ(test::raisedName([&] { menu->addItem(fresh); }), NSInvalidArgumentException);
    menu->addItem(nullptr);
    EXPECT_EQ(menu->numberOfItems(), 1);
}

TEST_F(Menu, findsItemsByTitleAndTag) {
    menu->addItem(NSMenuItem::separatorItem());
    const auto cut = add("Cut", "x");
    add("Cut", "y");
    cut->setTag(7);
    EXPECT_EQ(menu->itemWithTitle("Cut"_ns), cut) << "the first";
    EXPECT_EQ(menu->itemWithTitle("cut"_ns), nullptr);
    EXPECT_EQ(menu->itemWithTitle(""_ns), nullptr) << "a separator has no title";
    EXPECT_EQ(menu->itemWithTitle(nullptr), nullptr);
    EXPECT_EQ(menu->itemWithTag(7), cut);
    EXPECT_EQ(menu->itemWithTag(8), nullptr);
}

TEST_F(Menu, aKeyChoosesItsItem) {
    add("Cut", "x");
    add("Cut again", "x");
    EXPECT_TRUE(press("x"));
    EXPECT_EQ(taken(), "Cut ") << "only the first";
    EXPECT_FALSE(press("c"));
    EXPECT_FALSE(press("x", 0));
    EXPECT_FALSE(press("x", command | NSEventModifierFlagOption));
    EXPECT_TRUE(press("X", command | NSEventModifierFlagCapsLock)) << "caps lock is no shift";
    EXPECT_EQ(taken(), "Cut ");
    EXPECT_FALSE(menu->performKeyEquivalent(nullptr));
    EXPECT_FALSE(menu->performKeyEquivalent(test::keyEvent(nullptr, command)));
}

TEST_F(Menu, aCapitalLetterStandsForTheKeyWithShift) {
    add("Save", "s");
    add("Save as", "S");
    EXPECT_TRUE(press("s"));
    EXPECT_EQ(taken(), "Save ");
    EXPECT_TRUE(press("S", command | NSEventModifierFlagShift));
    EXPECT_EQ(taken(), "Save as ");
    const auto help = add("Help", "?");
    EXPECT_TRUE(press("?", command | NSEventModifierFlagShift)) << "typed with shift on some keyboards";
    EXPECT_EQ(taken(), "Help ");
    help->setKeyEquivalentModifierMask(0);
    EXPECT_FALSE(press("?"));
    EXPECT_TRUE(press("?", 0));
}

TEST_F(Menu, passesOverItemsThatCannotBeChosen) {
    const auto cut = add("Cut", "x");
    add("Nothing", "");
    cut->setEnabled(false);
    EXPECT_FALSE(press("x"));
    menu->performActionForItemAtIndex(0);
    cut->setEnabled(true);
    cut->setHidden(true);
    EXPECT_FALSE(press("x"));
    EXPECT_FALSE(press(""));
    EXPECT_EQ(taken(), "");
    cut->setHidden(false);
    menu->performActionForItemAtIndex(0);
    menu->performActionForItemAtIndex(5);
    menu->performActionForItemAtIndex(-1);
    EXPECT_EQ(taken(), "Cut ");
}

TEST_F(Menu, looksIntoSubmenus) {
    const auto more = add("More", "m");
    const Ref<NSMenu> submenu = make<NSMenu>();
    more->setSubmenu(submenu);
    add("Bold", "b", submenu);
    EXPECT_TRUE(press("b"));
    EXPECT_EQ(taken(), "Bold ");
    EXPECT_FALSE(press("m")) << "it opens the submenu and sends nothing";
    more->setEnabled(false);
    EXPECT_FALSE(press("b"));
    EXPECT_EQ(taken(), "");
}

TEST_F(Menu, aKeyThatTypesNothingCountsShiftAsWell) {
    constexpr NSUInteger option = NSEventModifierFlagOption;
    constexpr NSUInteger shift = NSEventModifierFlagShift;
    add("Up", "\uF700")->setKeyEquivalentModifierMask(option);
    add("Far up", "\uF700")->setKeyEquivalentModifierMask(option | shift);
    add("Reload", "\uF708")->setKeyEquivalentModifierMask(0);
    EXPECT_TRUE(press("\uF700", option | shift));
    EXPECT_EQ(taken(), "Far up ");
    EXPECT_TRUE(press("\uF700", option));
    EXPECT_EQ(taken(), "Up ");
    EXPECT_FALSE(press("\uF700", 0));
    EXPECT_FALSE(press("\uF700", option | command));
    EXPECT_TRUE(press("\uF708", 0));
    EXPECT_FALSE(press("\uF708", shift));
    EXPECT_EQ(taken(), "Reload ");
}

/// Writes down what it is asked, and has its say.
class MenuDelegate : public NSObject {
    ZR_OBJECT(MenuDelegate, NSObject)
  public:
    void menuNeedsUpdate(NSMenu* menu) {
        log += menu->title()->utf8() + ' ';
        if (whenAsked) {
            whenAsked(*menu);
        }
    }
    ZR_METHOD(menuNeedsUpdate, "menuNeedsUpdate:")

    std::string log;
    std::function<void(NSMenu&)> whenAsked;
};

class ValidatingTarget : public NSObject {
    ZR_OBJECT(ValidatingTarget, NSObject)
  public:
    bool validateMenuItem(NSMenuItem* item) {
        ++asked;
        return item->title()->isEqual("Paste"_ns);
    }
    void edit(NSObject*) {}
    ZR_METHOD(validateMenuItem, "validateMenuItem:")
    ZR_METHOD(edit, "edit:")

    int asked = 0;
};

class MenuOnScreen : public Menu {
  protected:
    void SetUp() override {
        window->contentView()->addSubview(view);
        window->makeKeyAndOrderFront(nullptr);
    }
    void TearDown() override { test::hideAllWindows(); }

    bool popUp(NSMenuItem* item = nullptr) {
        return send<bool>(menu, "popUpMenuPositioningItem:atLocation:inView:"_sel, item, NSPoint{3, 4}, view.get());
    }

    test::MenuToolkit toolkit;
    const Ref<NSWindow> window = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSRect{{0, 0}, {200, 100}},
                                                NSUInteger{NSWindowStyleMaskTitled});
    const Ref<NSView> view = make<NSView>(&NSView::initWithFrame, NSRect{{10, 20}, {50, 30}});
};

TEST_F(MenuOnScreen, isShownByTheToolkitWhereItIsToBe) {
    const auto cut = add("Cut", "");
    toolkit.chooses = [](NSMenu&) { return 0; };
    EXPECT_TRUE(popUp(cut));
    EXPECT_EQ(toolkit.location, (NSPoint{3, 4}));
    EXPECT_EQ(toolkit.titleAtLocation, "Cut");
    EXPECT_EQ(toolkit.inView, view);
    EXPECT_EQ(taken(), "Cut ");
    toolkit.chooses = nullptr;
    const Ref<NSMenuItem> stranger = make<NSMenuItem>();
    EXPECT_FALSE(popUp(stranger)) << "dismissed";
    EXPECT_EQ(toolkit.titleAtLocation, "none");
    EXPECT_TRUE(menu->minimumWidth() == 0);
    for (const double wrong : {-1.0, std::nan(""), std::numeric_limits<double>::infinity()}) {
        menu->setMinimumWidth(wrong);
        EXPECT_EQ(menu->minimumWidth(), 0);
    }
}

TEST_F(MenuOnScreen, isNotShownWithoutAToolkit) {
    add("Cut", "");
    Toolkit* const before = setCurrentToolkit(nullptr);
    EXPECT_FALSE(popUp());
    setCurrentToolkit(before);
    EXPECT_EQ(toolkit.opened, 0);
    EXPECT_EQ(taken(), "");
}

TEST_F(MenuOnScreen, tellsDelegatesBeforeWithSubmenus) {
    const Ref<MenuDelegate> delegate = make<MenuDelegate>();
    const Ref<NSMenu> submenu = make<NSMenu>(&NSMenu::initWithTitle, "Inner"_ns);
    submenu->setDelegate(delegate);
    menu->setDelegate(delegate);
    delegate->whenAsked = [&](NSMenu& asked) {
        if (&asked == menu.get()) {
            asked.removeAllItems();
            add("Fresh", "f")->setSubmenu(submenu);
        }
    };
    popUp();
    EXPECT_EQ(delegate->log, "Edit Inner ");
    EXPECT_EQ(toolkit.titles, "Fresh ");
    delegate->log.clear();
    press("f");
    EXPECT_EQ(delegate->log, "") << "not for keys";
    menu->setDelegate(target);
    popUp();
    EXPECT_EQ(toolkit.opened, 2) << "one that knows nothing of it";
    EXPECT_EQ(delegate->log, "Inner ");
}

TEST_F(MenuOnScreen, isNotKeptByItsDelegateNorKeepsIt) {
    Ref<MenuDelegate> delegate = make<MenuDelegate>();
    menu->setDelegate(delegate);
    EXPECT_EQ(menu->delegate(), delegate);
    delegate = nullptr;
    EXPECT_FALSE(menu->delegate());
    popUp();
    EXPECT_EQ(toolkit.opened, 1);
}

TEST_F(MenuOnScreen, isNotShownWhenItsDelegateRaises) {
    const Ref<MenuDelegate> delegate = make<MenuDelegate>();
    delegate->whenAsked = [](NSMenu&) { NSException::raise(NSGenericException, "no items"); };
    menu->setDelegate(delegate);
    EXPECT_EQ(test::raisedName([&] { popUp(); }), NSGenericException);
    EXPECT_EQ(toolkit.opened, 0);
}

TEST_F(MenuOnScreen, enablesItemsAsTheirTargetSays) {
    const Ref<ValidatingTarget> validating = make<ValidatingTarget>();
    add("Cut", "");
    for (const char* const title : {"Copy", "Paste"}) {
        const auto item = add(title, "");
        item->setAction("edit:"_sel);
        item->setTarget(validating);
    }
    menu->itemWithTitle("Paste"_ns)->setEnabled(false);
    menu->addItem(NSMenuItem::separatorItem());
    popUp();
    EXPECT_EQ(toolkit.titles, "Cut (Copy) Paste () ");
    EXPECT_EQ(validating->asked, 2);
    menu->itemWithTitle("Paste"_ns)->setAction({});
    menu->itemWithTitle("Paste"_ns)->setEnabled(false);
    popUp();
    EXPECT_EQ(toolkit.titles, "Cut (Copy) (Paste) () ") << "nobody is asked about what does nothing";
    EXPECT_TRUE(menu->itemWithTitle("Cut"_ns)->isEnabled());
}

TEST_F(MenuOnScreen, ofAViewIsOpenedByItsRightButton) {
    add("Cut", "");
    const auto press = [&] {
        send<void>(view, "rightMouseDown:"_sel, test::mouseEvent(NSEventTypeRightMouseDown, {25, 35}));
    };
    press();
    EXPECT_EQ(toolkit.opened, 0);
    view->setMenu(menu);
    EXPECT_EQ(view->menu(), menu);
    press();
    EXPECT_EQ(toolkit.opened, 1);
    EXPECT_EQ(toolkit.location, (NSPoint{15, 15})) << "in its own coordinates";
    EXPECT_EQ(toolkit.inView, view);
    send<void>(view, "rightMouseDown:"_sel, nullptr);
    NSMenu::popUpContextMenu_withEvent_forView(nullptr, test::keyEvent("a"_ns), view);
    NSMenu::popUpContextMenu_withEvent_forView(menu, nullptr, view);
    NSMenu::popUpContextMenu_withEvent_forView(menu, test::keyEvent("a"_ns), nullptr);
    EXPECT_EQ(toolkit.opened, 1);
    const Ref<NSView> inner = make<NSView>(&NSView::initWithFrame, NSRect{{5, 5}, {10, 10}});
    view->addSubview(inner);
    send<void>(inner, "rightMouseDown:"_sel, test::mouseEvent(NSEventTypeRightMouseDown, {20, 30}));
    EXPECT_EQ(toolkit.opened, 2) << "a press that nobody wants goes on to what the view lies in";
}

TEST_F(MenuOnScreen, ofTheApplicationHasItsKeysInEveryWindow) {
    add("Cut", "x");
    const Ref<NSApplication> application = NSApplication::sharedApplication();
    const auto press = [](NSWindow* in) {
        return send<bool>(in, "performKeyEquivalent:"_sel, test::keyEvent("x"_ns, command));
    };
    EXPECT_EQ(application->mainMenu(), nullptr);
    EXPECT_FALSE(press(window));
    application->setMainMenu(menu);
    EXPECT_TRUE(press(window));
    EXPECT_EQ(taken(), "Cut ");
    const Ref<NSWindow> other = make<NSWindow>();
    EXPECT_TRUE(press(other));
    const auto own = NSButton::buttonWithTitle_target_action("Own"_ns, target, {});
    own->setKeyEquivalent("x"_ns);
    own->setKeyEquivalentModifierMask(command);
    window->contentView()->addSubview(own);
    taken();
    EXPECT_TRUE(press(window));
    EXPECT_EQ(taken(), "") << "what lies in the window comes first";
    test::later([&] {
        EXPECT_FALSE(press(other)) << "not in a modal session";
        EXPECT_FALSE(send<bool>(window.get(), "performKeyEquivalent:"_sel, test::keyEvent("y"_ns, command)));
        application->stopModal();
    });
    application->runModalForWindow(window);
    EXPECT_EQ(taken(), "");
    application->setMainMenu(nullptr);
    EXPECT_FALSE(press(other));
    EXPECT_FALSE(send<bool>(window.get(), "performKeyEquivalent:"_sel, nullptr));
}

TEST_F(MenuOnScreen, ofATableKnowsWhatWasClicked) {
    const Ref<NSTableView> table = make<NSTableView>(&NSTableView::initWithFrame, NSRect{{0, 0}, {100, 80}});
    window->contentView()->addSubview(table);
    add("Cancel", "");
    std::string clicked;
    toolkit.whileOpen = [&] {
        clicked += std::to_string(table->clickedColumn()) + ',' + std::to_string(table->clickedRow()) + ' ';
    };
    const auto event = test::mouseEvent(NSEventTypeRightMouseDown, {25, 35});
    table->userDidAskForMenu(2, 3, event);
    table->userDidAskForHeaderMenu(2, event);
    EXPECT_EQ(clicked, "") << "without menus";
    table->setMenu(menu);
    table->userDidAskForMenu(2, 3, event);
    EXPECT_EQ(toolkit.location, (NSPoint{25, 35}));
    table->userDidAskForHeaderMenu(2, event);
    EXPECT_EQ(clicked, "2,3 ") << "the titles have a menu of their own";
    table->setHeaderMenu(menu);
    table->userDidAskForHeaderMenu(1, event);
    EXPECT_EQ(clicked, "2,3 1,-1 ");
    table->userDidAskForMenu(0, 0, nullptr);
    table->userDidAskForHeaderMenu(0, nullptr);
    EXPECT_EQ(toolkit.opened, 2);
    toolkit.whileOpen = [] { NSException::raise(NSGenericException, "no"); };
    EXPECT_EQ(test::raisedName([&] { table->userDidAskForMenu(2, 3, event); }), NSGenericException);
    EXPECT_EQ(table->clickedRow(), -1);
    EXPECT_EQ(table->clickedColumn(), -1);
}

} // namespace
} // namespace zr
