#include "fill_notice.h"

#include "price_text.h"

#include <zrbasic/model/user_notification.h>
#include <zrbasic/platform/appkit/notification_center.h>
#include <zrbasic/platform/appkit/notification_service.h>
#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/foundation/number.h>

namespace replay {

using namespace zr;

namespace {

/// A desktop whose user clicks the first button of whatever is shown.
class BusyDesktop : public Toolkit, private NotificationService {
  public:
    BusyDesktop() : m_before(setCurrentToolkit(this)) {}
    ~BusyDesktop() override { setCurrentToolkit(m_before); }

    NotificationService* notificationService() override { return this; }
    [[nodiscard]] const NotificationPosting& shown() const { return m_shown; }

  private:
    bool post(const NotificationPosting& posting, NotificationReceiver& receiver) override {
        m_shown = posting;
        if (!posting.buttons.empty()) {
            receiver.notificationButtonWasClicked(posting.key, posting.buttons.front().identifier);
        }
        receiver.notificationWasClosed(posting.key);
        return true;
    }
    void withdraw(NSString*) override {}

    Toolkit* m_before;
    NotificationPosting m_shown;
};

/// The application's end: reads what the user did.
class Clerk : public NSObject, public UNUserNotificationCenterDelegate {
    ZR_OBJECT(Clerk, NSObject, UNUserNotificationCenterDelegate)
  public:
    void userNotificationCenter_didReceiveNotificationResponse_withCompletionHandler(
        UNUserNotificationCenter*, UNNotificationResponse* response, std::function<void()> completionHandler) override {
        info = ZRUserNotificationInfo::infoWithData_withActionIdentifier(response->notification()->request()->content(),
                                                                         response->actionIdentifier());
        completionHandler();
    }

    Ref<ZRUserNotificationInfo> info;
};

} // namespace

FillNotice notifyOfFill(const PriceEntry& entry) {
    const BusyDesktop desktop;
    const auto clerk = make<Clerk>();
    const auto center = UNUserNotificationCenter::currentNotificationCenter();
    center->setDelegate(clerk);

    const auto content = notificationWithTitle_informativeText<UNMutableNotificationContent>(
        NSString::stringWithFormat("%@ filled"_ns, entry.instrument->symbol()),
        NSString::stringWithFormat("Bought 10 at %@"_ns, NSString::fromUtf8(textOf(entry.plain))));
    setupActionButtonTitle(content, "Show order"_ns);
    addUserInfo(content, dictionary({{"order"_ns, box(4711)}}));
    center->addNotificationRequest_withCompletionHandler(
        UNNotificationRequest::requestWithIdentifier_content_trigger(notificationID(content), content, nullptr));

    const NotificationPosting& shown = desktop.shown();
    return {shown.title->utf8(), shown.body->utf8(), shown.buttons.front().title->utf8(), clerk->info};
}

} // namespace replay
