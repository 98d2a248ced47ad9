#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/appkit/menu.h>
#include <zrbasic/platform/foundation/mutable_string.h>

#include "../foundation/checks.h"

#include <gtest/gtest.h>

namespace zr {
namespace {

TEST(MenuItem, isEmptyAndEnabledAtFirst) {
    const Ref<NSMenuItem> item = make<NSMenuItem>();
    EXPECT_EQ(item->title()->utf8(), "");
    EXPECT_EQ(item->keyEquivalent()->utf8(), "");
    EXPECT_EQ(item->keyEquivalentModifierMask(), NSUInteger{NSEventModifierFlagCommand});
    EXPECT_FALSE(item->action());
    EXPECT_EQ(item->target(), nullptr);
    EXPECT_TRUE(item->isEnabled());
    EXPECT_FALSE(item->isHidden());
    EXPECT_EQ(item->state(), 0);
    EXPECT_EQ(item->menu(), nullptr);
    EXPECT_FALSE(item->hasSubmenu());
}

TEST(MenuItem, hasTheTextsItWasMadeWith) {
    const Ref<NSMutableString> title = make<NSMutableString>();
    title->appendString("Save"_ns);
    const Ref<NSMenuItem> item =
        make<NSMenuItem>(&NSMenuItem::initWithTitle_action_keyEquivalent, title, "save:"_sel, "s"_ns);
    title->appendString(" all"_ns);
    EXPECT_EQ(item->title()->utf8(), "Save") << "a copy";
    EXPECT_EQ(item->action(), "save:"_sel);
    EXPECT_EQ(item->keyEquivalent()->utf8(), "s");
    const Ref<NSMenuItem> empty =
        make<NSMenuItem>(&NSMenuItem::initWithTitle_action_keyEquivalent, nullptr, SEL(), nullptr);
    EXPECT_EQ(empty->title()->utf8(), "");
    EXPECT_EQ(empty->keyEquivalent()->utf8(), "");
    empty->setTitle(nullptr);
    empty->setKeyEquivalent(nullptr);
    EXPECT_EQ(empty->title()->utf8(), "");
    EXPECT_EQ(empty->keyEquivalent()->utf8(), "");
}

TEST(MenuItem, keepsWhatItIsForButNotItsTarget) {
    const Ref<NSMenuItem> item = make<NSMenuItem>();
    Ref<NSObject> target = make<NSObject>();
    Ref<NSObject> subject = make<NSObject>();
    const Weak<NSObject> watchedTarget(target);
    const Weak<NSObject> watchedSubject(subject);
    item->setTarget(target);
    item->setRepresentedObject(subject);
    EXPECT_EQ(item->target(), target);
    target = nullptr;
    subject = nullptr;
    EXPECT_EQ(watchedTarget.lock(), nullptr);
    EXPECT_EQ(item->target(), nullptr);
    EXPECT_NE(watchedSubject.lock(), nullptr);
    EXPECT_EQ(item->representedObject(), watchedSubject.lock());
}

TEST(MenuItem, itsStateIsOneOfThree) {
    const Ref<NSMenuItem> item = make<NSMenuItem>();
    for (const auto& [set, is] : {std::pair{1, 1}, {-1, -1}, {0, 0}, {7, 1}, {-7, -1}}) {
        SCOPED_TRACE(set);
        item->setState(set);
        EXPECT_EQ(item->state(), is);
    }
}

TEST(MenuItem, aSeparatorCannotBeChosen) {
    const Ref<NSMenuItem> separator = NSMenuItem::separatorItem();
    EXPECT_TRUE(separator->isSeparatorItem());
    EXPECT_FALSE(separator->isEnabled());
    EXPECT_NE(NSMenuItem::separatorItem(), separator);
    EXPECT_FALSE(make<NSMenuItem>()->isSeparatorItem());
}

TEST(MenuItem, aSubmenuOpensBesideOneItemOnly) {
    const Ref<NSMenu> menu = make<NSMenu>();
    const Ref<NSMenu> submenu = make<NSMenu>();
    const Ref<NSMenuItem> item = menu->addItemWithTitle_action_keyEquivalent("More"_ns, {}, nullptr);
    item->setSubmenu(submenu);
    item->setSubmenu(submenu);
    EXPECT_EQ(item->submenu(), submenu);
    EXPECT_EQ(submenu->supermenu(), menu);
    const Ref<NSMenuItem> other = make<NSMenuItem>();
    EXPECT_EQ(test::raisedName([&] { other->setSubmenu(submenu); }), NSInvalidArgumentException);
    const Ref<NSMenuItem> inner = submenu->addItemWithTitle_action_keyEquivalent("Round"_ns, {}, nullptr);
    EXPECT_EQ(test::raisedName([&] { inner->setSubmenu(menu); }), NSInvalidArgumentException);
    item->setSubmenu(nullptr);
    EXPECT_EQ(submenu->supermenu(), nullptr);
    other->setSubmenu(submenu);
    EXPECT_EQ(other->submenu(), submenu);
}

TEST(MenuItem, lettingGoOfTheItemFreesItsSubmenu) {
    const Ref<NSMenu> submenu = make<NSMenu>();
    {
        const Ref<NSMenuItem> brief = make<NSMenuItem>();
        brief->setSubmenu(submenu);
    }
    EXPECT_EQ(submenu->supermenu(), nullptr);
    const Ref<NSMenuItem> item = make<NSMenuItem>();
    item->setSubmenu(submenu);
    EXPECT_EQ(item->submenu(), submenu);
}

} // namespace
} // namespace zr
