#include <zrbasic/platform/appkit/menu.h>

#include "../foundation/checks.h"

#include <tests/appkit/window_testing.h>

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

} // namespace
} // namespace zr
