#include <zrbasic/platform/appkit/user_notification.h>

#include <zrbasic/platform/foundation/key_value_coding.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/runtime/association.h>

#include <gtest/gtest.h>

namespace {

using namespace zr;

TEST(UserNotification, startsWithNothingButItsButton) {
    const auto notification = make<NSUserNotification>();
    EXPECT_TRUE(notification->hasActionButton());
    EXPECT_FALSE(notification->title());
    EXPECT_FALSE(notification->subtitle());
    EXPECT_FALSE(notification->informativeText());
    EXPECT_FALSE(notification->identifier());
    EXPECT_FALSE(notification->soundName());
    EXPECT_FALSE(notification->actionButtonTitle());
    EXPECT_FALSE(notification->deliveryDate());
    EXPECT_FALSE(notification->userInfo());
    EXPECT_EQ(notification->activationType(), NSUserNotificationActivationTypeNone);
    EXPECT_FALSE(notification->actualDeliveryDate());
    EXPECT_FALSE(notification->isPresented());
}

TEST(UserNotification, copiesWhatItIsGiven) {
    const auto notification = make<NSUserNotification>();
    const Ref<NSMutableString> title(cast<NSMutableString>("fill"_ns->mutableCopy().get()));
    const auto userInfo = NSMutableDictionary::dictionary();
    notification->setTitle(title);
    notification->setUserInfo(userInfo);
    title->appendString("ed"_ns);
    userInfo->setObject_forKey(box(1), "a"_ns);
    EXPECT_EQ(notification->title()->utf8(), "fill");
    EXPECT_EQ(notification->userInfo()->count(), 0u);
}

TEST(UserNotification, isReadAndWrittenByName) {
    const auto notification = make<NSUserNotification>();
    setValue_forKey(notification, "order filled"_ns, "title"_ns);
    setValue_forKey(notification, box(false), "hasActionButton"_ns);
    EXPECT_EQ(notification->title()->utf8(), "order filled");
    EXPECT_FALSE(notification->hasActionButton());
    EXPECT_TRUE(valueForKey(notification, "activationType"_ns)->isEqual(box(0)));
    setValue_forKey(notification, NSNull::null(), "title"_ns);
    EXPECT_FALSE(notification->title()) << "an object of another kind reads as none";
    send<>(notification, "setUserInfo:"_sel, "no dictionary"_ns);
    EXPECT_FALSE(notification->userInfo());
}

TEST(UserNotification, isCopiedWithoutWhatIsAttached) {
    static const char key = 0;
    const auto notification = make<NSUserNotification>();
    notification->setTitle("a"_ns);
    notification->setSubtitle("b"_ns);
    notification->setInformativeText("c"_ns);
    notification->setIdentifier("d"_ns);
    notification->setSoundName("e"_ns);
    notification->setActionButtonTitle("f"_ns);
    notification->setHasActionButton(false);
    notification->setDeliveryDate(NSDate::distantPast());
    notification->setUserInfo(dictionary({{"k"_ns, box(1)}}));
    objc_setAssociatedObject(notification, &key, "x"_ns, OBJC_ASSOCIATION_RETAIN);
    const id copied = notification->copy();
    const auto* const copy = cast<NSUserNotification>(copied.get());
    ASSERT_TRUE(copy && copy != notification);
    EXPECT_EQ(copy->title()->utf8() + copy->subtitle()->utf8() + copy->informativeText()->utf8() +
                  copy->identifier()->utf8() + copy->soundName()->utf8() + copy->actionButtonTitle()->utf8(),
              "abcdef");
    EXPECT_FALSE(copy->hasActionButton());
    EXPECT_TRUE(copy->deliveryDate()->isEqual(NSDate::distantPast()));
    EXPECT_TRUE(copy->userInfo()->isEqual(notification->userInfo()));
    EXPECT_FALSE(objc_getAssociatedObject(copied, &key));
}

TEST(UserNotification, namesTheDefaultSound) {
    EXPECT_EQ(NSUserNotificationDefaultSoundName()->utf8(), "DefaultSoundName");
}

} // namespace
