#include <zrbasic/ui/menu_item.h>

#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>

#include <gtest/gtest.h>

namespace zr {
namespace {

TEST(MenuItemHelper, hasNoKeyEquivalentByItself) {
    const Ref<NSMenuItem> item = itemWithTitle_action("Copy"_ns, "copy:"_sel);
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(item->title()->utf8(), "Copy");
    EXPECT_EQ(item->action(), "copy:"_sel);
    ASSERT_NE(item->keyEquivalent(), nullptr);
    EXPECT_TRUE(item->keyEquivalent()->isEqual(""_ns));
    EXPECT_EQ(item->target(), nullptr);
    EXPECT_TRUE(item->isEnabled());
}

TEST(MenuItemHelper, aNullKeyEquivalentIsTheEmptyOne) {
    EXPECT_TRUE(itemWithTitle_action_keyEquivalent("Copy"_ns, "copy:"_sel, nullptr)->keyEquivalent()->isEqual(""_ns));
    const Ref<NSMenuItem> item = itemWithTitle_action_keyEquivalent("Copy"_ns, "copy:"_sel, "c"_ns);
    EXPECT_EQ(item->keyEquivalent()->utf8(), "c");
    EXPECT_EQ(item->keyEquivalentModifierMask(), NSUInteger{NSEventModifierFlagCommand});
    const Ref<NSMenuItem> empty = itemWithTitle_action_keyEquivalent(nullptr, {}, nullptr);
    EXPECT_EQ(empty->title()->utf8(), "");
    EXPECT_FALSE(empty->action());
}

TEST(MenuItemHelper, whatIsNoTextIsTheEmptyOne) {
    const auto item = send<Ref<NSMenuItem>>(NSMenuItem::classObject(), "itemWithTitle:action:keyEquivalent:"_sel,
                                            NSNull::null(), "copy:"_sel, NSNull::null());
    ASSERT_NE(item, nullptr);
    EXPECT_TRUE(item->title()->isEqual(""_ns));
    EXPECT_TRUE(item->keyEquivalent()->isEqual(""_ns));
    const auto text = "c"_ns->mutableCopy();
    const auto copied = itemWithTitle_action_keyEquivalent(cast<NSString>(text), {}, cast<NSString>(text));
    cast<NSMutableString>(text)->appendString("d"_ns);
    EXPECT_EQ(copied->title()->utf8(), "c") << "texts are copied";
    EXPECT_EQ(copied->keyEquivalent()->utf8(), "c");
}

TEST(MenuItemHelper, isAnsweredAsAMessageToo) {
    const auto item =
        send<Ref<NSMenuItem>>(NSMenuItem::classObject(), "itemWithTitle:action:"_sel, "Copy"_ns, "copy:"_sel);
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(item->title()->utf8(), "Copy");
    const auto other = send<Ref<NSMenuItem>>(NSMenuItem::classObject(), "itemWithTitle:action:keyEquivalent:"_sel,
                                             "Copy"_ns, "copy:"_sel, "c"_ns);
    ASSERT_NE(other, nullptr);
    EXPECT_EQ(other->keyEquivalent()->utf8(), "c");
    EXPECT_NE(other, item);
}

} // namespace
} // namespace zr
