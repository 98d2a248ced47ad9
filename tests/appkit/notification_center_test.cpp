#include <zrbasic/platform/appkit/notification_center.h>

#include <zrbasic/platform/appkit/notification_category.h>
#include <zrbasic/platform/foundation/error.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/set.h>

#include "../foundation/checks.h"
#include "notification_testing.h"

#include <cmath>
#include <limits>

namespace {

using namespace zr;
using test::raisedName;
using test::shown;

class ResponseListener : public NSObject, public UNUserNotificationCenterDelegate {
    ZR_OBJECT(ResponseListener, NSObject, UNUserNotificationCenterDelegate)

  public:
    void userNotificationCenter_didReceiveNotificationResponse_withCompletionHandler(
        UNUserNotificationCenter*, UNNotificationResponse* response, std::function<void()> done) override {
        last = response;
        log += shown(response->notification()->request()->content()->title()) + ' ' +
               shown(response->actionIdentifier()) + '\n';
        if (then) {
            then();
        }
        done();
    }

    std::string log;
    Ref<UNNotificationResponse> last;
    std::function<void()> then;
};

class QuietResponseListener : public NSObject, public UNUserNotificationCenterDelegate {
    ZR_OBJECT(QuietResponseListener, NSObject, UNUserNotificationCenterDelegate)
};

class NotificationCenter : public test::Notifying {
  protected:
    NotificationCenter() { center->setDelegate(listener); }
    ~NotificationCenter() override {
        center->setDelegate(nullptr);
        center->removeAllDeliveredNotifications();
        center->removeAllPendingNotificationRequests();
        center->setNotificationCategories(nullptr);
        runMainQueue();
    }

    static Ref<UNMutableNotificationContent> titled(const char* title) {
        auto content = make<UNMutableNotificationContent>();
        content->setTitle(NSString::fromUtf8(title));
        return content;
    }

    /// What the handler was given: "ok", or the error's domain and code; "" when it was not called.
    std::string add(NSString* identifier, UNNotificationContent* content, UNNotificationTrigger* trigger = nullptr) {
        return add(UNNotificationRequest::requestWithIdentifier_content_trigger(identifier, content, trigger));
    }
    std::string add(UNNotificationRequest* request) {
        std::string answer;
        center->addNotificationRequest_withCompletionHandler(request, [&](NSError* error) {
            answer += error ? shown(error->domain()) + ' ' + std::to_string(error->code()) : "ok";
        });
        return answer;
    }

    [[nodiscard]] std::string delivered() const {
        std::string text;
        center->getDeliveredNotificationsWithCompletionHandler([&](NSArray* notifications) {
            for (const id& each : notifications) {
                text += shown(cast<UNNotification>(each.get())->request()->content()->title());
            }
        });
        return text;
    }
    [[nodiscard]] std::string pending() const {
        std::string text;
        center->getPendingNotificationRequestsWithCompletionHandler([&](NSArray* requests) {
            for (const id& each : requests) {
                text += shown(cast<UNNotificationRequest>(each.get())->content()->title());
            }
        });
        return text;
    }
    [[nodiscard]] NSUInteger categoryCount() const {
        NSUInteger count = NSNotFound;
        center->getNotificationCategoriesWithCompletionHandler([&](NSSet* set) { count = set->count(); });
        return count;
    }

    static Ref<UNNotificationCategory> category(NSString* identifier, NSArray* actions) {
        return UNNotificationCategory::categoryWithIdentifier_actions_intentIdentifiers_options(
            identifier, actions, nullptr, UNNotificationCategoryOptionNone);
    }
    static Ref<UNNotificationAction> action(NSString* identifier, NSString* title) {
        return UNNotificationAction::actionWithIdentifier_title_options(identifier, title,
                                                                        UNNotificationActionOptionNone);
    }
    static Ref<UNTimeIntervalNotificationTrigger> after(double seconds) {
        return UNTimeIntervalNotificationTrigger::triggerWithTimeInterval_repeats(seconds, false);
    }

    Ref<UNUserNotificationCenter> center = UNUserNotificationCenter::currentNotificationCenter();
    Ref<ResponseListener> listener = make<ResponseListener>();
};

TEST_F(NotificationCenter, isOneObject) {
    EXPECT_TRUE(center);
    EXPECT_EQ(center, UNUserNotificationCenter::currentNotificationCenter());
    EXPECT_EQ(send<id>(UNUserNotificationCenter::classObject(), "currentNotificationCenter"_sel), center);
    EXPECT_EQ(send<id>(center, "delegate"_sel), listener);
}

TEST_F(NotificationCenter, replacesItsCategories) {
    EXPECT_EQ(categoryCount(), 0u);
    center->setNotificationCategories(NSSet::setWithObjects({category("a"_ns, nullptr), category("b"_ns, nullptr)}));
    EXPECT_EQ(categoryCount(), 2u);
    const auto last = category("c"_ns, nullptr);
    center->setNotificationCategories(NSSet::setWithObject(last));
    center->getNotificationCategoriesWithCompletionHandler([&](NSSet* categories) {
        EXPECT_EQ(categories->count(), 1u);
        EXPECT_EQ(categories->anyObject(), last);
        // The set in hand stays whatever happens.
        center->setNotificationCategories(nullptr);
        EXPECT_EQ(categories->count(), 1u);
    });
    EXPECT_EQ(categoryCount(), 0u);
}

TEST_F(NotificationCenter, showsWhatIsAdded) {
    const auto content = titled("Filled");
    content->setSubtitle("BTC"_ns);
    content->setBody("0.5"_ns);
    content->setSound(UNNotificationSound::defaultSound());
    EXPECT_EQ(add("1"_ns, content), "ok");
    content->setTitle("other"_ns);
    EXPECT_EQ(desktop.log, "post Filled|BTC|0.5 with sound\n");
    EXPECT_EQ(delivered(), "Filled") << "the content was copied";
    EXPECT_EQ(add("2"_ns, titled("x")), "ok");
    EXPECT_EQ(delivered(), "Filledx");
}

TEST_F(NotificationCenter, refusesWhatHasNothingToShow) {
    EXPECT_EQ(add(nullptr), "UNErrorDomain 1401");
    EXPECT_EQ(add("1"_ns, nullptr), "UNErrorDomain 1401");
    EXPECT_EQ(delivered() + pending() + desktop.log, "");
    center->addNotificationRequest_withCompletionHandler(nullptr);
    EXPECT_EQ(add(nullptr, titled("a")), "ok") << "a name is not needed";
    center->addNotificationRequest_withCompletionHandler(
        UNNotificationRequest::requestWithIdentifier_content_trigger("b"_ns, titled("b"), nullptr));
    EXPECT_EQ(delivered(), "ab") << "nor is a handler";
}

TEST_F(NotificationCenter, saysWhenNobodyShowsItAndCountsItAsDelivered) {
    desktop.canShow = false;
    EXPECT_EQ(add("1"_ns, titled("a")), "UNErrorDomain 1");
    EXPECT_EQ(delivered(), "a");
    desktop.canShow = true;
    EXPECT_EQ(add("1"_ns, titled("b")), "ok");
    EXPECT_EQ(delivered(), "b");
}

TEST_F(NotificationCenter, givesANotificationTheButtonsOfItsCategory) {
    center->setNotificationCategories(NSSet::setWithObjects(
        {"no category"_ns, category(nullptr, array({action("n"_ns, "N"_ns)})),
         category("other"_ns, array({action("o"_ns, "O"_ns)})),
         category("orders"_ns, array({action("go"_ns, "Go"_ns), action("stop"_ns, "Stop"_ns), "no action"_ns,
                                      action("x"_ns, nullptr), action("y"_ns, ""_ns), action(nullptr, "Z"_ns)}))}));
    const auto content = titled("a");
    content->setCategoryIdentifier("orders"_ns);
    add("1"_ns, content);
    content->setCategoryIdentifier("unknown"_ns);
    add("2"_ns, content);
    content->setCategoryIdentifier(nullptr);
    add("3"_ns, content);
    EXPECT_EQ(desktop.log, "post a|(null)|(null) [Go] [Stop]\npost a|(null)|(null)\npost a|(null)|(null)\n");
}

TEST_F(NotificationCenter, handsResponsesToItsDelegate) {
    center->setNotificationCategories(NSSet::setWithObject(category("c"_ns, array({action("go"_ns, "Go"_ns)}))));
    const auto content = titled("a");
    content->setCategoryIdentifier("c"_ns);
    content->setUserInfo(dictionary({{"order"_ns, box(7)}}));
    add("1"_ns, content);
    add("2"_ns, titled("b"));
    desktop.click(1);
    desktop.clickButton(0);
    EXPECT_EQ(listener->log, "b com.apple.UNNotificationDefaultActionIdentifier\na go\n");
    EXPECT_EQ(shown(UNNotificationDefaultActionIdentifier()), "com.apple.UNNotificationDefaultActionIdentifier");
    const auto notification = listener->last->notification();
    EXPECT_TRUE(notification->request()->content()->userInfo()->isEqual(content->userInfo()));
    EXPECT_EQ(notification->request()->identifier()->utf8(), "1");
    EXPECT_LE(std::abs(notification->date()->timeIntervalSinceNow()), 60.0);
}

TEST_F(NotificationCenter, replacesAnEqualIdentifier) {
    add("1"_ns, titled("a"));
    add("2"_ns, titled("b"));
    add("1"_ns, titled("c"));
    EXPECT_EQ(delivered(), "bc");
    EXPECT_TRUE(desktop.postings[2].key->isEqual(desktop.postings[0].key));
    add(nullptr, titled("d"));
    add(nullptr, titled("e"));
    EXPECT_EQ(delivered(), "bcde") << "no name equals no name";
}

TEST_F(NotificationCenter, forgetsWhatWasClosedOrRemoved) {
    for (const char* title : {"a", "b", "c", "d"}) {
        add(NSString::fromUtf8(title), titled(title));
    }
    desktop.close(1);
    EXPECT_EQ(delivered(), "acd");
    desktop.log.clear();
    center->removeDeliveredNotificationsWithIdentifiers(array({"c"_ns, "b"_ns, "unknown"_ns, NSNull::null()}));
    EXPECT_EQ(desktop.log, "withdraw c\n");
    center->removeDeliveredNotificationsWithIdentifiers(nullptr);
    EXPECT_EQ(delivered(), "ad");
    center->removeAllDeliveredNotifications();
    EXPECT_EQ(desktop.log, "withdraw c\nwithdraw a\nwithdraw d\n");
    desktop.click(0);
    desktop.close(0);
    desktop.receiver->notificationWasClicked(nullptr);
    desktop.receiver->notificationWasClosed(nullptr);
    EXPECT_EQ(listener->log + delivered(), "");
}

TEST_F(NotificationCenter, isAsItWouldBeWithoutADesktop) {
    toolkit.service = nullptr;
    EXPECT_EQ(add("1"_ns, titled("a")), "UNErrorDomain 1");
    EXPECT_EQ(add("2"_ns, titled("b")), "UNErrorDomain 1");
    center->removeDeliveredNotificationsWithIdentifiers(array({"1"_ns}));
    EXPECT_EQ(delivered(), "b");
    center->removeAllDeliveredNotifications();
    EXPECT_EQ(delivered() + desktop.log, "");
}

TEST_F(NotificationCenter, deliversARequestAfterItsInterval) {
    add("1"_ns, titled("b"), after(0.01));
    EXPECT_EQ(pending(), "b");
    EXPECT_EQ(delivered(), "");
    add("2"_ns, titled("a"), after(1e-9));
    runMainQueue();
    EXPECT_EQ(pending(), "");
    EXPECT_EQ(delivered(), "ab");
    add("3"_ns, titled("never"), after(std::numeric_limits<double>::infinity()));
    runMainQueue();
    EXPECT_EQ(pending(), "never");
}

TEST_F(NotificationCenter, deliversNothingThatIsNoLongerPending) {
    add("1"_ns, titled("a"), after(0.002));
    add("2"_ns, titled("b"), after(0.002));
    add("3"_ns, titled("c"), after(0.002));
    add("2"_ns, titled("B"), after(0.004));
    EXPECT_EQ(pending(), "acB");
    center->removePendingNotificationRequestsWithIdentifiers(array({"1"_ns, "unknown"_ns, box(3)}));
    center->removePendingNotificationRequestsWithIdentifiers(nullptr);
    EXPECT_EQ(pending(), "cB");
    add("3"_ns, titled("C"));
    EXPECT_EQ(pending(), "B");
    runMainQueue();
    EXPECT_EQ(delivered(), "CB");
    add("4"_ns, titled("d"), after(0.001));
    center->removeAllPendingNotificationRequests();
    runMainQueue();
    EXPECT_EQ(pending() + delivered(), "CB");
}

TEST_F(NotificationCenter, raisesForIntervalsThatAreNone) {
    const auto trigger = [](double seconds, bool repeats) {
        return raisedName(
            [&] { (void)UNTimeIntervalNotificationTrigger::triggerWithTimeInterval_repeats(seconds, repeats); });
    };
    EXPECT_EQ(trigger(0, false), NSInternalInconsistencyException);
    EXPECT_EQ(trigger(-1, false), NSInternalInconsistencyException);
    EXPECT_EQ(trigger(std::numeric_limits<double>::quiet_NaN(), false), NSInternalInconsistencyException);
    EXPECT_EQ(trigger(59.9, true), NSInternalInconsistencyException);
    EXPECT_EQ(trigger(60, true), "");
    EXPECT_EQ(trigger(0.001, false), "");
}

TEST_F(NotificationCenter, watchesItsDelegateWithoutKeepingIt) {
    add("1"_ns, titled("a"));
    const Weak<ResponseListener> watch(listener);
    listener->then = [&] { listener = nullptr; };
    desktop.click();
    EXPECT_TRUE(watch.expired()) << "it ended in its own callback";
    EXPECT_FALSE(center->delegate());
    desktop.click();
    EXPECT_EQ(delivered(), "a");
}

TEST_F(NotificationCenter, letsCallbacksPostAndRemove) {
    add("1"_ns, titled("a"));
    listener->then = [&] {
        center->removeAllDeliveredNotifications();
        add("2"_ns, titled("b"));
    };
    desktop.click();
    EXPECT_EQ(listener->log, "a com.apple.UNNotificationDefaultActionIdentifier\n");
    EXPECT_EQ(delivered(), "b");
    desktop.whilePosting = [&] { desktop.click(desktop.postings.size() - 1); };
    listener->then = nullptr;
    add("3"_ns, titled("c"));
    EXPECT_NE(listener->log.find("c com.apple"), std::string::npos) << "clicked while it was being posted";
}

TEST_F(NotificationCenter, asksNobodyWhoDoesNotRespond) {
    add("1"_ns, titled("a"));
    const auto deaf = make<NSObject>();
    center->setDelegate(deaf);
    desktop.click();
    const auto quiet = make<QuietResponseListener>();
    center->setDelegate(quiet);
    desktop.click();
    EXPECT_EQ(delivered(), "a");
    EXPECT_EQ(listener->log, "");
}

} // namespace
