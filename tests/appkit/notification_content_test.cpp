#include <zrbasic/platform/appkit/notification_content.h>

#include <zrbasic/platform/appkit/notification_category.h>
#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/key_value_coding.h>
#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/runtime/association.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace zr;

Ref<UNMutableNotificationContent> filled() {
    auto content = make<UNMutableNotificationContent>();
    content->setTitle("a"_ns);
    content->setSubtitle("b"_ns);
    content->setBody("c"_ns);
    content->setCategoryIdentifier("d"_ns);
    content->setSound(UNNotificationSound::defaultSound());
    content->setUserInfo(dictionary({{"k"_ns, box(1)}}));
    return content;
}

void expectFilled(const UNNotificationContent& content) {
    EXPECT_EQ(content.title()->utf8() + content.subtitle()->utf8() + content.body()->utf8() +
                  content.categoryIdentifier()->utf8(),
              "abcd");
    EXPECT_EQ(content.sound(), UNNotificationSound::defaultSound());
    EXPECT_TRUE(content.userInfo()->isEqual(dictionary({{"k"_ns, box(1)}})));
}

TEST(NotificationContent, saysNothingAtFirst) {
    const auto content = make<UNMutableNotificationContent>();
    EXPECT_FALSE(content->title());
    EXPECT_FALSE(content->subtitle());
    EXPECT_FALSE(content->body());
    EXPECT_FALSE(content->sound());
    EXPECT_EQ(content->categoryIdentifier()->length(), 0u);
    ASSERT_TRUE(content->userInfo());
    EXPECT_EQ(content->userInfo()->count(), 0u);
    EXPECT_TRUE(make<UNNotificationContent>()->userInfo());
}

TEST(NotificationContent, isFilledIn) {
    const auto content = filled();
    expectFilled(*content);
    content->setTitle(nullptr);
    content->setUserInfo(nullptr);
    EXPECT_FALSE(content->title());
    EXPECT_FALSE(content->userInfo());
}

TEST(NotificationContent, copiesWhatItIsGiven) {
    const auto content = make<UNMutableNotificationContent>();
    const Ref<NSMutableString> title(cast<NSMutableString>("fill"_ns->mutableCopy().get()));
    const auto userInfo = NSMutableDictionary::dictionary();
    content->setTitle(title);
    content->setUserInfo(userInfo);
    title->appendString("ed"_ns);
    userInfo->setObject_forKey(box(1), "a"_ns);
    EXPECT_EQ(content->title()->utf8(), "fill");
    EXPECT_EQ(content->userInfo()->count(), 0u);
}

TEST(NotificationContent, isReadAndWrittenByName) {
    const auto content = make<UNMutableNotificationContent>();
    setValue_forKey(content, "t"_ns, "title"_ns);
    EXPECT_EQ(content->title()->utf8(), "t");
    EXPECT_TRUE(valueForKey(content, "title"_ns)->isEqual("t"_ns));
    send<>(content, "setBody:"_sel, "b"_ns);
    EXPECT_EQ(content->body()->utf8(), "b");
    send<>(content, "setBody:"_sel, NSNull::null());
    EXPECT_FALSE(content->body()) << "an object of another kind is none";
    EXPECT_FALSE(make<UNNotificationContent>()->respondsToSelector("setTitle:"_sel)) << "it does not change";
}

TEST(NotificationContent, isCopiedBothWays) {
    static const char key = 0;
    const auto content = filled();
    objc_setAssociatedObject(content, &key, "x"_ns, OBJC_ASSOCIATION_RETAIN);
    const id copied = content->copy();
    const auto* const fixed = cast<UNNotificationContent>(copied.get());
    ASSERT_TRUE(fixed);
    EXPECT_FALSE(cast<UNMutableNotificationContent>(copied.get()));
    expectFilled(*fixed);
    EXPECT_FALSE(objc_getAssociatedObject(copied, &key));
    EXPECT_EQ(copied->copy(), copied) << "it does not change, so it is its own copy";
    const id open = copied->mutableCopy();
    const auto* const again = cast<UNMutableNotificationContent>(open.get());
    ASSERT_TRUE(again);
    expectFilled(*again);
    content->setTitle("other"_ns);
    expectFilled(*fixed);
    expectFilled(*again);
}

TEST(NotificationSound, isOneObject) {
    const auto sound = UNNotificationSound::defaultSound();
    ASSERT_TRUE(sound);
    EXPECT_EQ(UNNotificationSound::defaultSound(), sound);
    EXPECT_EQ(sound->copy(), sound);
    EXPECT_EQ(send<id>(UNNotificationSound::classObject(), "defaultSound"_sel), sound);
}

TEST(NotificationTexts, areTheirOwnTranslation) {
    const auto text = [](NSString* key, NSArray* arguments) {
        const auto result = localizedUserNotificationStringForKey_arguments(key, arguments);
        return result ? result->utf8() : "(null)";
    };
    const struct {
        const char* name;
        Ref<NSString> key;
        Ref<NSArray> arguments;
        const char* result;
    } rows[] = {
        {"no arguments", "Order %@ filled, 50%"_ns, nullptr, "Order %@ filled, 50%"},
        {"empty arguments", "Order %@"_ns, array({}), "Order %@"},
        {"one", "Order %@ filled"_ns, array({"7"_ns}), "Order 7 filled"},
        {"in turn", "%@%@-%@"_ns, array({"a"_ns, box(2), "%@"_ns}), "a2-%@"},
        {"too few", "%@ of %@"_ns, array({"1"_ns}), "1 of %@"},
        {"too many", "%@!"_ns, array({"1"_ns, "2"_ns}), "1!"},
        {"nothing to replace", "plain"_ns, array({"1"_ns}), "plain"},
        {"the null object", "%@"_ns, array({NSNull::null()}), "<null>"},
        {"empty key", ""_ns, array({"1"_ns}), ""},
        {"null key", nullptr, array({"1"_ns}), "(null)"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(text(row.key, row.arguments), row.result);
    }
    const auto sent = send<Ref<NSString>>(
        NSString::classObject(), "localizedUserNotificationStringForKey:arguments:"_sel, "%@"_ns, array({"x"_ns}));
    EXPECT_EQ(sent->utf8(), "x");
}

TEST(NotificationCategory, holdsItsActions) {
    const auto action = UNNotificationAction::actionWithIdentifier_title_options("go"_ns, "Go"_ns,
                                                                                 UNNotificationActionOptionForeground);
    EXPECT_EQ(action->identifier()->utf8() + action->title()->utf8(), "goGo");
    EXPECT_EQ(action->options(), UNNotificationActionOptionForeground);
    EXPECT_EQ(action->copy(), action);
    const auto actions = NSMutableArray::array();
    actions->addObject(action);
    const auto category = UNNotificationCategory::categoryWithIdentifier_actions_intentIdentifiers_options(
        "orders"_ns, actions, array({"intent"_ns}), UNNotificationCategoryOptionNone);
    actions->removeAllObjects();
    EXPECT_EQ(category->identifier()->utf8(), "orders");
    ASSERT_EQ(category->actions()->count(), 1u) << "the array was copied";
    EXPECT_EQ(category->actions()->objectAtIndex(0), action);
    EXPECT_EQ(category->intentIdentifiers()->count(), 1u);
    EXPECT_EQ(category->copy(), category);
}

TEST(NotificationCategory, takesNullForNothing) {
    const auto category = UNNotificationCategory::categoryWithIdentifier_actions_intentIdentifiers_options(
        nullptr, nullptr, nullptr, UNNotificationCategoryOptionNone);
    EXPECT_FALSE(category->identifier());
    ASSERT_TRUE(category->actions() && category->intentIdentifiers());
    EXPECT_EQ(category->actions()->count() + category->intentIdentifiers()->count(), 0u);
    const auto action =
        UNNotificationAction::actionWithIdentifier_title_options(nullptr, nullptr, UNNotificationActionOptionNone);
    EXPECT_FALSE(action->identifier());
    EXPECT_FALSE(action->title());
}

} // namespace
