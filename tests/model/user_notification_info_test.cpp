#include <zrbasic/model/user_notification_info.h>

#include <zrbasic/model/user_notification.h>
#include <zrbasic/platform/appkit/notification_center.h>
#include <zrbasic/platform/appkit/user_notification_center.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/process_info.h>

#include "../appkit/notification_testing.h"

namespace {

using namespace zr;
using System = SystemVersionOverride::System;

constexpr NSOperatingSystemVersion mojave{10, 14, 6};
constexpr NSOperatingSystemVersion catalina{10, 15, 0};

class OwnInfo : public ZRUserNotificationInfo {
    ZR_OBJECT(OwnInfo, ZRUserNotificationInfo)
};

class NoInfo : public ZRUserNotificationInfo {
    ZR_OBJECT(NoInfo, ZRUserNotificationInfo)

  public:
    id init() override { return {}; }
};

Ref<ZRUserNotificationInfo> read(NSObject* data, NSString* actionIdentifier = nullptr) {
    return ZRUserNotificationInfo::infoWithData_withActionIdentifier(data, actionIdentifier);
}

/// A response to an older notification, its button clicked.
Ref<NSUserNotification> clickedNotification() {
    test::FakeDesktop desktop;
    test::FakeToolkit toolkit;
    toolkit.service = &desktop;
    auto made = notification<NSUserNotification>();
    setupActionButtonTitle(made.get(), "Go"_ns);
    const auto center = NSUserNotificationCenter::defaultUserNotificationCenter();
    center->deliverNotification(made);
    desktop.clickButton();
    center->removeAllDeliveredNotifications();
    return made;
}

TEST(NotificationInfo, readsAContentFromCatalinaOn) {
    const auto content = notification<UNMutableNotificationContent>();
    const struct {
        const char* name;
        Ref<NSString> action;
        NSInteger type;
    } rows[] = {
        {"the button", "com.zarvo.notification.replayButton"_ns, 2},
        {"the notification", UNNotificationDefaultActionIdentifier(), 1},
        {"none", nullptr, 1},
        {"empty", ""_ns, 1},
        {"another case", "com.zarvo.notification.ReplayButton"_ns, 1},
    };
    for (const NSOperatingSystemVersion& version : {catalina, NSOperatingSystemVersion{11, 0, 0}}) {
        const SystemVersionOverride running(version);
        for (const auto& row : rows) {
            SCOPED_TRACE(row.name);
            const auto info = read(content, row.action);
            EXPECT_EQ(info->activationType(), row.type);
            EXPECT_EQ(info->data(), content);
            EXPECT_TRUE(info->userInfo()->isEqual(content->userInfo()));
        }
    }
}

TEST(NotificationInfo, readsAContentThatDoesNotChange) {
    const SystemVersionOverride running(catalina);
    const auto content = notification<UNMutableNotificationContent>();
    const id fixed = content->copy();
    const auto info = read(fixed, ZRCustomUserNotificationReplayButtonID());
    EXPECT_EQ(info->activationType(), 2);
    EXPECT_TRUE(info->userInfo()->isEqual(content->userInfo()));
}

TEST(NotificationInfo, readsAnOlderNotificationBeforeCatalina) {
    const auto clicked = clickedNotification();
    const SystemVersionOverride running(mojave);
    const auto info = read(clicked, "any action"_ns);
    EXPECT_EQ(info->activationType(), NSUserNotificationActivationTypeActionButtonClicked)
        << "its own, whatever the action";
    EXPECT_EQ(info->data(), clicked);
    EXPECT_TRUE(info->userInfo()->isEqual(clicked->userInfo()));
    const auto untouched = notification<NSUserNotification>();
    EXPECT_EQ(read(untouched, ZRCustomUserNotificationReplayButtonID())->activationType(), 0);
    EXPECT_TRUE(read(untouched)->userInfo());
}

TEST(NotificationInfo, readsOnlyTheInterfaceOfTheRunningSystem) {
    const auto clicked = clickedNotification();
    const auto content = notification<UNMutableNotificationContent>();
    const auto expectNothing = [](NSObject* data) {
        const auto info = read(data, ZRCustomUserNotificationReplayButtonID());
        EXPECT_EQ(info->data(), data);
        EXPECT_EQ(info->activationType(), 0);
        EXPECT_FALSE(info->userInfo());
    };
    {
        const SystemVersionOverride running(mojave);
        expectNothing(content);
        // Asked on each call.
        const SystemVersionOverride updated(catalina);
        expectNothing(clicked);
        EXPECT_EQ(read(content)->activationType(), 1);
    }
    const SystemVersionOverride other(mojave, System::Other);
    expectNothing(clicked);
    EXPECT_EQ(read(content)->activationType(), 1) << "a system that is not macOS has the new interface";
}

TEST(NotificationInfo, takesAnything) {
    for (const NSOperatingSystemVersion& version : {mojave, catalina}) {
        const SystemVersionOverride running(version);
        for (const id& data : {id(), id(NSNull::null()), id("text"_ns), id(dictionary({{"a"_ns, box(1)}}))}) {
            const auto info = read(data, ZRCustomUserNotificationReplayButtonID());
            ASSERT_TRUE(info);
            EXPECT_EQ(info->data(), data);
            EXPECT_EQ(info->activationType(), 0);
            EXPECT_FALSE(info->userInfo());
        }
    }
}

TEST(NotificationInfo, keepsANullUserInfo) {
    const auto content = make<UNMutableNotificationContent>();
    content->setUserInfo(nullptr);
    const SystemVersionOverride running(catalina);
    EXPECT_FALSE(read(content)->userInfo());
    EXPECT_EQ(read(content)->activationType(), 1);
}

TEST(NotificationInfo, isMadeOfTheReceivingClass) {
    const auto content = notification<UNMutableNotificationContent>();
    const Ref<OwnInfo> info = OwnInfo::infoWithData_withActionIdentifier<OwnInfo>(content, nullptr);
    EXPECT_EQ(info->activationType(), 1);
    const SEL operation = "infoWithData:withActionIdentifier:"_sel;
    const id sent = send<id>(OwnInfo::classObject(), operation, content, ZRCustomUserNotificationReplayButtonID());
    ASSERT_TRUE(cast<OwnInfo>(sent.get()));
    EXPECT_EQ(cast<OwnInfo>(sent.get())->activationType(), 2);
    EXPECT_EQ(send<Ref<ZRUserNotificationInfo>>(ZRUserNotificationInfo::classObject(), operation, content, box(5))
                  ->activationType(),
              1)
        << "a number is no action";
    EXPECT_FALSE(NoInfo::infoWithData_withActionIdentifier<NoInfo>(content, nullptr));
    EXPECT_FALSE(send<id>(NoInfo::classObject(), operation, content, nullptr));
}

TEST(NotificationInfo, goesTheWholeWay) {
    test::FakeDesktop desktop;
    test::FakeToolkit toolkit;
    toolkit.service = &desktop;
    const auto center = UNUserNotificationCenter::currentNotificationCenter();
    const auto content = notificationWithTitle_informativeText<UNMutableNotificationContent>("Filled"_ns, "BTC"_ns);
    setupActionButtonTitle(content.get(), "Again"_ns);
    center->addNotificationRequest_withCompletionHandler(
        UNNotificationRequest::requestWithIdentifier_content_trigger(notificationID(content.get()), content, nullptr));
    EXPECT_EQ(desktop.log, "post Filled|(null)|BTC [Again] with sound\n");
    EXPECT_EQ(desktop.postings.at(0).buttons.at(0).identifier->utf8(), "com.zarvo.notification.replayButton");
    setupActionButtonTitle(content.get(), nullptr);
    center->addNotificationRequest_withCompletionHandler(
        UNNotificationRequest::requestWithIdentifier_content_trigger("2"_ns, content, nullptr));
    EXPECT_TRUE(desktop.postings.at(1).buttons.empty()) << "the empty category has no button";
    center->removeAllDeliveredNotifications();
    center->setNotificationCategories(nullptr);
}

} // namespace
