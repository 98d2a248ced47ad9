#include "desktop_testing.h"

#include <zrbasic/model/user_notification.h>
#include <zrbasic/model/user_notification_info.h>
#include <zrbasic/platform/appkit/notification_center.h>
#include <zrbasic/platform/appkit/notification_request.h>
#include <zrbasic/platform/foundation/dictionary.h>

namespace zr {
namespace {

using test::becomes;
using test::click;
using test::outputOf;

/// What an application does with a response: hands it on to be decoded.
class DesktopResponses : public NSObject {
    ZR_OBJECT(DesktopResponses, NSObject)
  public:
    void received(NSObject*, UNNotificationResponse* response, std::function<void()> done) {
        const Ref<UNNotificationContent> content = response->notification()->request()->content();
        infos.push_back(
            ZRUserNotificationInfo::infoWithData_withActionIdentifier(content, response->actionIdentifier()));
        done();
    }
    ZR_METHOD(received, "userNotificationCenter:didReceiveNotificationResponse:withCompletionHandler:")

    std::vector<Ref<ZRUserNotificationInfo>> infos;
};

class NotificationsOnDesktop : public test::Desktop {
  protected:
    NotificationsOnDesktop() {
        center->removeAllDeliveredNotifications();
        center->setDelegate(responses);
    }
    ~NotificationsOnDesktop() override {
        center->removeAllDeliveredNotifications();
        center->setDelegate(nullptr);
        outputOf("dunstctl", {"close-all"});
    }

    static int displayed() { return outputOf("dunstctl", {"count", "displayed"}).trimmed().toInt(); }

    /// Delivers a notification, and waits until the daemon shows it.
    void deliver(NSString* text) {
        const auto content = notificationWithTitle_informativeText<UNMutableNotificationContent>("Filled"_ns, text);
        setupActionButtonTitle(content, "Again"_ns);
        addUserInfo(content, dictionary({{"order"_ns, id(text)}}));
        center->addNotificationRequest_withCompletionHandler(
            UNNotificationRequest::requestWithIdentifier_content_trigger(text, content, nullptr), nullptr);
        const int before = m_shown++;
        ASSERT_TRUE(becomes([before] { return displayed() == before + 1; }));
        QTest::qWait(200);
    }

    /// Waits for the response, and gives it in words.
    std::string response() {
        becomes([this] { return !responses->infos.empty(); });
        if (responses->infos.empty()) {
            return "none";
        }
        const Ref<ZRUserNotificationInfo> info = responses->infos.front();
        responses->infos.erase(responses->infos.begin());
        const id order = info->userInfo() ? info->userInfo()->objectForKey("order"_ns) : nullptr;
        return std::to_string(info->activationType()) + ' ' + (order ? order->description()->utf8() : "-");
    }

    Ref<UNUserNotificationCenter> center = UNUserNotificationCenter::currentNotificationCenter();
    Ref<DesktopResponses> responses = make<DesktopResponses>();

  private:
    int m_shown = 0;
};

TEST_F(NotificationsOnDesktop, areShownByTheDaemon) {
    EXPECT_EQ(displayed(), 0);
    deliver("120 at 2241.78"_ns);
    EXPECT_EQ(displayed(), 1);
    center->removeAllDeliveredNotifications();
    EXPECT_TRUE(becomes([] { return displayed() == 0; }));
    EXPECT_TRUE(responses->infos.empty());
}

TEST_F(NotificationsOnDesktop, tellOfTheDefaultAction) {
    deliver("first"_ns);
    outputOf("dunstctl", {"action", "0"});
    EXPECT_EQ(response(), "1 first");
}

TEST_F(NotificationsOnDesktop, tellOfARealClick) {
    deliver("clicked"_ns);
    // The daemon shows it 20 points off the upper right corner, 300 points wide.
    const NSRect screen = NSScreen::mainScreen()->frame();
    click({screen.size.width - 20 - 150, screen.size.height - 20 - 12});
    EXPECT_EQ(response(), "1 clicked");
    EXPECT_TRUE(becomes([] { return displayed() == 0; }));
}

TEST_F(NotificationsOnDesktop, tellOfTheButton) {
    deliver("second"_ns);
    // The daemon's menu of buttons is answered by the script that runs these tests: it takes "Again".
    outputOf("dunstctl", {"context"});
    EXPECT_EQ(response(), "2 second");
}

TEST_F(NotificationsOnDesktop, areForgottenWhenTheUserClosesThem) {
    deliver("closed"_ns);
    outputOf("dunstctl", {"close"});
    int left = -1;
    EXPECT_TRUE(becomes([this, &left] {
        center->getDeliveredNotificationsWithCompletionHandler(
            [&left](NSArray* notifications) { left = static_cast<int>(notifications->count()); });
        return left == 0;
    }));
    EXPECT_TRUE(responses->infos.empty());
}

} // namespace
} // namespace zr
