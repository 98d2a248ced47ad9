#include <zrbasic/platform/foundation/notification.h>

#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>

#include <gtest/gtest.h>

namespace {

using namespace zr;

TEST(Notification, saysWhatHappenedToWhom) {
    const Ref<NSObject> object = make<NSObject>();
    const Ref<NSDictionary> info = dictionary({{"price"_ns, box(7)}});
    const auto notification = NSNotification::notificationWithName_object_userInfo("quote"_ns, object, info);
    EXPECT_TRUE(notification->name()->isEqualToString("quote"_ns));
    EXPECT_EQ(notification->object(), object);
    EXPECT_EQ(notification->userInfo(), info);
    const auto plain = NSNotification::notificationWithName_object("quote"_ns, object);
    EXPECT_EQ(plain->object(), object);
    EXPECT_FALSE(plain->userInfo());
}

TEST(Notification, mayLackEverything) {
    const auto empty = NSNotification::notificationWithName_object_userInfo(nullptr, nullptr, nullptr);
    EXPECT_FALSE(empty->name());
    EXPECT_FALSE(empty->object());
    EXPECT_FALSE(empty->userInfo());
    EXPECT_EQ(NSNotification::notificationWithName_object("a"_ns, NSNull::null())->object(), NSNull::null());
    const auto fresh = make<NSNotification>();
    EXPECT_FALSE(fresh->name());
}

TEST(Notification, copiesItsNameAndKeepsItsObject) {
    const Ref<NSMutableString> name = cast<NSMutableString>("one"_ns->mutableCopy());
    Ref<NSObject> object = make<NSObject>();
    const Weak<NSObject> watched(object);
    Ref<NSNotification> notification = NSNotification::notificationWithName_object(name, object);
    name->appendString(" more"_ns);
    object = nullptr;
    EXPECT_TRUE(notification->name()->isEqualToString("one"_ns));
    EXPECT_FALSE(watched.expired());
    notification = nullptr;
    EXPECT_TRUE(watched.expired());
}

TEST(Notification, isItsOwnCopy) {
    const auto notification = NSNotification::notificationWithName_object("a"_ns, nullptr);
    EXPECT_EQ(notification->copy(), notification);
}

TEST(Notification, answersMessages) {
    Class* const kind = NSNotification::classObject();
    const auto notification = send<Ref<NSNotification>>(kind, "notificationWithName:object:"_sel, "a"_ns, box(1));
    ASSERT_TRUE(notification);
    EXPECT_TRUE(send<Ref<NSString>>(notification, "name"_sel)->isEqualToString("a"_ns));
    EXPECT_TRUE(send<id>(notification, "object"_sel)->isEqual(box(1)));
    EXPECT_FALSE(send<Ref<NSDictionary>>(notification, "userInfo"_sel));
    const auto odd =
        send<Ref<NSNotification>>(kind, "notificationWithName:object:userInfo:"_sel, box(1), box(2), "text"_ns);
    ASSERT_TRUE(odd) << "arguments of another kind count as null";
    EXPECT_FALSE(odd->name());
    EXPECT_FALSE(odd->userInfo());
}

} // namespace
