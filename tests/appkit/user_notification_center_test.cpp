#include <zrbasic/platform/appkit/user_notification_center.h>

#include <zrbasic/platform/foundation/array.h>

#include "notification_testing.h"

#include <cmath>
#include <limits>

namespace {

using namespace zr;
using test::shown;

class Listener : public NSObject, public NSUserNotificationCenterDelegate {
    ZR_OBJECT(Listener, NSObject, NSUserNotificationCenterDelegate)

  public:
    void userNotificationCenter_didDeliverNotification(NSUserNotificationCenter*,
                                                       NSUserNotification* notification) override {
        log += "delivered " + shown(notification->title()) + (notification->isPresented() ? "" : " unseen") + '\n';
        if (whenDelivered) {
            whenDelivered(notification);
        }
    }
    void userNotificationCenter_didActivateNotification(NSUserNotificationCenter*,
                                                        NSUserNotification* notification) override {
        log +=
            "activated " + shown(notification->title()) + ' ' + std::to_string(notification->activationType()) + '\n';
        if (whenActivated) {
            whenActivated(notification);
        }
    }

    std::string log;
    std::function<void(NSUserNotification*)> whenDelivered;
    std::function<void(NSUserNotification*)> whenActivated;
};

/// Has adopted nothing, and hears about clicks all the same.
class PlainListener : public NSObject {
    ZR_OBJECT(PlainListener, NSObject)

  public:
    void clicked(NSUserNotificationCenter*, NSUserNotification* notification) { last = notification; }
    ZR_METHOD(clicked, "userNotificationCenter:didActivateNotification:")

    Ref<NSUserNotification> last;
};

class QuietListener : public NSObject, public NSUserNotificationCenterDelegate {
    ZR_OBJECT(QuietListener, NSObject, NSUserNotificationCenterDelegate)
};

class UserNotificationCenter : public test::Notifying {
  protected:
    UserNotificationCenter() { center->setDelegate(listener); }
    ~UserNotificationCenter() override {
        center->setDelegate(nullptr);
        center->removeAllDeliveredNotifications();
        for (const id& waiting : center->scheduledNotifications()) {
            center->removeScheduledNotification(cast<NSUserNotification>(waiting.get()));
        }
        runMainQueue();
    }

    static Ref<NSUserNotification> titled(const char* title) {
        auto notification = make<NSUserNotification>();
        notification->setTitle(NSString::fromUtf8(title));
        return notification;
    }

    static std::string titles(NSArray* notifications) {
        std::string text;
        for (const id& notification : notifications) {
            text += shown(cast<NSUserNotification>(notification.get())->title());
        }
        return text;
    }
    [[nodiscard]] std::string delivered() const { return titles(center->deliveredNotifications()); }
    [[nodiscard]] std::string scheduled() const { return titles(center->scheduledNotifications()); }

    Ref<NSUserNotificationCenter> center = NSUserNotificationCenter::defaultUserNotificationCenter();
    Ref<Listener> listener = make<Listener>();
};

TEST_F(UserNotificationCenter, isOneObject) {
    EXPECT_TRUE(center);
    EXPECT_EQ(center, NSUserNotificationCenter::defaultUserNotificationCenter());
    EXPECT_EQ(send<id>(NSUserNotificationCenter::classObject(), "defaultUserNotificationCenter"_sel), center);
    EXPECT_EQ(send<id>(center, "delegate"_sel), listener);
}

TEST_F(UserNotificationCenter, showsWhatItDelivers) {
    const auto notification = titled("Filled");
    notification->setSubtitle("BTC"_ns);
    notification->setInformativeText("0.5 at 2241.78"_ns);
    notification->setSoundName(NSUserNotificationDefaultSoundName());
    notification->setActionButtonTitle("Again"_ns);
    center->deliverNotification(notification);
    EXPECT_EQ(desktop.log, "post Filled|BTC|0.5 at 2241.78 [Again] with sound\n");
    EXPECT_EQ(listener->log, "delivered Filled\n");
    EXPECT_TRUE(notification->isPresented());
    EXPECT_LE(std::abs(notification->actualDeliveryDate()->timeIntervalSinceNow()), 60.0);
    EXPECT_EQ(center->deliveredNotifications()->objectAtIndex(0), notification) << "the very object";
}

TEST_F(UserNotificationCenter, showsAButtonOnlyWithATitle) {
    auto notification = titled("a");
    center->deliverNotification(notification);
    notification->setActionButtonTitle(""_ns);
    center->deliverNotification(notification);
    notification->setActionButtonTitle("Go"_ns);
    notification->setHasActionButton(false);
    center->deliverNotification(notification);
    notification->setHasActionButton(true);
    center->deliverNotification(notification);
    EXPECT_EQ(desktop.log,
              "post a|(null)|(null)\npost a|(null)|(null)\npost a|(null)|(null)\n"
              "post a|(null)|(null) [Go]\n");
}

TEST_F(UserNotificationCenter, isAsItWouldBeWithoutADesktop) {
    toolkit.service = nullptr;
    const auto first = titled("a");
    center->deliverNotification(first);
    EXPECT_EQ(listener->log, "delivered a unseen\n");
    EXPECT_FALSE(first->isPresented());
    setCurrentToolkit(nullptr);
    center->deliverNotification(titled("b"));
    EXPECT_EQ(delivered(), "ab");
    center->removeDeliveredNotification(first);
    EXPECT_EQ(delivered(), "b");
    setCurrentToolkit(&toolkit);
    EXPECT_EQ(desktop.log, "");
}

TEST_F(UserNotificationCenter, tellsWhetherTheDesktopCouldShowIt) {
    desktop.canShow = false;
    const auto notification = titled("a");
    center->deliverNotification(notification);
    EXPECT_FALSE(notification->isPresented());
    EXPECT_EQ(delivered(), "a");
    desktop.canShow = true;
    center->deliverNotification(notification);
    EXPECT_TRUE(notification->isPresented());
}

TEST_F(UserNotificationCenter, replacesTheSameNotificationAndAnEqualIdentifier) {
    const auto first = titled("a");
    first->setIdentifier("price"_ns);
    center->deliverNotification(first);
    center->deliverNotification(titled("b"));
    const auto second = titled("c");
    second->setIdentifier("price"_ns);
    center->deliverNotification(second);
    EXPECT_EQ(delivered(), "bc");
    center->deliverNotification(second);
    EXPECT_EQ(delivered(), "bc");
    ASSERT_EQ(desktop.postings.size(), 4u);
    EXPECT_TRUE(desktop.postings[2].key->isEqual(desktop.postings[0].key)) << "so the desktop replaces it in its place";
    EXPECT_TRUE(desktop.postings[3].key->isEqual(desktop.postings[0].key));
    EXPECT_FALSE(desktop.postings[1].key->isEqual(desktop.postings[0].key));
}

TEST_F(UserNotificationCenter, tellsItsDelegateWhatWasClicked) {
    const auto first = titled("a");
    first->setActionButtonTitle("Go"_ns);
    center->deliverNotification(first);
    center->deliverNotification(titled("b"));
    listener->log.clear();
    desktop.click(1);
    desktop.clickButton(0);
    desktop.click(0);
    EXPECT_EQ(listener->log, "activated b 1\nactivated a 2\nactivated a 1\n");
    EXPECT_EQ(first->activationType(), NSUserNotificationActivationTypeContentsClicked) << "the last one";
    EXPECT_EQ(delivered(), "ab") << "only closing takes it away";
}

TEST_F(UserNotificationCenter, forgetsWhatWasClosed) {
    center->deliverNotification(titled("a"));
    center->deliverNotification(titled("b"));
    listener->log.clear();
    desktop.close(0);
    EXPECT_EQ(delivered(), "b");
    desktop.click(0);
    desktop.close(0);
    EXPECT_EQ(listener->log, "") << "a late answer is nobody's";
    desktop.receiver->notificationWasClicked(nullptr);
    desktop.receiver->notificationWasClosed("other"_ns);
    desktop.receiver->notificationButtonWasClicked("other"_ns, nullptr);
    EXPECT_EQ(delivered(), "b");
}

TEST_F(UserNotificationCenter, closesTheRightOneAfterAnIdentifierWasChanged) {
    const auto first = titled("a");
    const auto second = titled("b");
    center->deliverNotification(first);
    center->deliverNotification(second);
    first->setIdentifier("same"_ns);
    second->setIdentifier("same"_ns);
    desktop.close(1);
    EXPECT_EQ(delivered(), "a");
}

TEST_F(UserNotificationCenter, takesNotificationsBack) {
    const auto first = titled("a");
    center->deliverNotification(first);
    center->deliverNotification(titled("b"));
    center->deliverNotification(titled("c"));
    desktop.log.clear();
    center->removeDeliveredNotification(first);
    center->removeDeliveredNotification(first);
    center->removeDeliveredNotification(titled("b"));
    EXPECT_EQ(desktop.log, "withdraw a\n");
    center->removeAllDeliveredNotifications();
    center->removeAllDeliveredNotifications();
    EXPECT_EQ(desktop.log, "withdraw a\nwithdraw b\nwithdraw c\n");
    EXPECT_EQ(delivered(), "");
}

TEST_F(UserNotificationCenter, deliversScheduledNotificationsWhenTheyAreDue) {
    const auto soon = titled("b");
    soon->setDeliveryDate(NSDate::dateWithTimeIntervalSinceNow(0.02));
    const auto past = titled("a");
    past->setDeliveryDate(NSDate::distantPast());
    center->scheduleNotification(soon);
    center->scheduleNotification(past);
    center->scheduleNotification(titled("c"));
    EXPECT_EQ(scheduled(), "bac");
    EXPECT_EQ(desktop.log, "") << "not even those that are due: the main queue brings them";
    runMainQueue();
    EXPECT_EQ(scheduled(), "");
    EXPECT_EQ(delivered().size(), 3u);
    EXPECT_NE(delivered().find('b'), std::string::npos);
    EXPECT_GE(soon->actualDeliveryDate()->timeIntervalSinceDate(soon->deliveryDate()), -0.001);
}

TEST_F(UserNotificationCenter, keepsWhatIsNeverDue) {
    for (const double never : {1e12, std::numeric_limits<double>::infinity()}) {
        const auto notification = titled("n");
        notification->setDeliveryDate(NSDate::dateWithTimeIntervalSince1970(never));
        center->scheduleNotification(notification);
        runMainQueue();
        EXPECT_EQ(scheduled(), "n");
        center->removeScheduledNotification(notification);
        EXPECT_EQ(scheduled(), "");
    }
    const auto nonsense = titled("x");
    nonsense->setDeliveryDate(NSDate::dateWithTimeIntervalSince1970(std::numeric_limits<double>::quiet_NaN()));
    center->scheduleNotification(nonsense);
    runMainQueue();
    EXPECT_EQ(delivered(), "x") << "what is no moment is now";
}

TEST_F(UserNotificationCenter, deliversNothingThatWasTakenOffTheSchedule) {
    const auto removed = titled("a");
    removed->setDeliveryDate(NSDate::dateWithTimeIntervalSinceNow(0.005));
    center->scheduleNotification(removed);
    center->removeScheduledNotification(removed);
    const auto early = titled("b");
    early->setDeliveryDate(NSDate::dateWithTimeIntervalSinceNow(0.005));
    center->scheduleNotification(early);
    center->deliverNotification(early);
    EXPECT_EQ(scheduled(), "") << "delivered now, it need not be again";
    runMainQueue();
    EXPECT_EQ(listener->log, "delivered b\n");
}

TEST_F(UserNotificationCenter, goesByTheNewDateOfWhatIsScheduledAgain) {
    const auto notification = titled("a");
    notification->setDeliveryDate(NSDate::dateWithTimeIntervalSinceNow(0.005));
    center->scheduleNotification(notification);
    notification->setDeliveryDate(NSDate::distantFuture());
    center->scheduleNotification(notification);
    EXPECT_EQ(scheduled(), "a") << "once";
    runMainQueue();
    EXPECT_EQ(delivered(), "");
    EXPECT_EQ(scheduled(), "a");
}

TEST_F(UserNotificationCenter, takesNothingFromNull) {
    center->deliverNotification(nullptr);
    center->scheduleNotification(nullptr);
    center->removeScheduledNotification(nullptr);
    center->removeDeliveredNotification(nullptr);
    send<>(center, "deliverNotification:"_sel, "a string"_ns);
    EXPECT_EQ(desktop.log + delivered() + scheduled(), "");
}

TEST_F(UserNotificationCenter, watchesItsDelegateWithoutKeepingIt) {
    const Weak<Listener> watch(listener);
    center->deliverNotification(titled("a"));
    listener = nullptr;
    EXPECT_TRUE(watch.expired());
    EXPECT_FALSE(center->delegate());
    desktop.click();
    EXPECT_EQ(delivered(), "a");
}

TEST_F(UserNotificationCenter, outlivesADelegateThatEndsInItsCallback) {
    const Weak<Listener> watch(listener);
    listener->whenDelivered = [&](NSUserNotification*) {
        listener = nullptr;
        EXPECT_FALSE(watch.expired()) << "kept while it is being told";
    };
    center->deliverNotification(titled("a"));
    EXPECT_TRUE(watch.expired());
}

TEST_F(UserNotificationCenter, letsCallbacksPostAndRemove) {
    int left = 50;
    listener->whenDelivered = [&](NSUserNotification* notification) {
        if (--left > 0) {
            center->deliverNotification(titled("n"));
        }
        center->removeDeliveredNotification(notification);
    };
    center->deliverNotification(titled("n"));
    EXPECT_EQ(left, 0);
    EXPECT_EQ(delivered(), "");
    listener->whenDelivered = nullptr;
    listener->whenActivated = [&](NSUserNotification*) { center->removeAllDeliveredNotifications(); };
    desktop.postings.clear();
    auto last = titled("last");
    center->deliverNotification(last);
    last = nullptr;
    listener->log.clear();
    desktop.click();
    EXPECT_EQ(listener->log, "activated last 1\n");
    EXPECT_EQ(delivered(), "");
}

TEST_F(UserNotificationCenter, knowsWhatIsClickedWhileItIsBeingPosted) {
    desktop.whilePosting = [&] { desktop.click(); };
    center->deliverNotification(titled("a"));
    EXPECT_EQ(listener->log.find("activated a 1\n"), 0u) << listener->log;
}

TEST_F(UserNotificationCenter, asksWhoeverRespondsAndNobodyElse) {
    const auto plain = make<PlainListener>();
    const auto notification = titled("a");
    center->setDelegate(plain);
    center->deliverNotification(notification);
    EXPECT_FALSE(plain->last);
    desktop.click();
    EXPECT_EQ(plain->last, notification);
    const auto quiet = make<QuietListener>();
    center->setDelegate(quiet);
    desktop.click();
    center->deliverNotification(titled("b"));
    const auto deaf = make<NSObject>();
    center->setDelegate(deaf);
    desktop.click();
    center->deliverNotification(titled("c"));
    EXPECT_EQ(delivered(), "abc");
}

TEST_F(UserNotificationCenter, takesManyAndHugeOnes) {
    const auto huge = NSString::fromUtf16(std::u16string(1'000'000, u'x'));
    const auto big = make<NSUserNotification>();
    big->setTitle(huge);
    center->deliverNotification(big);
    EXPECT_EQ(desktop.postings.at(0).title->length(), 1'000'000u);
    for (int i = 0; i < 2000; ++i) {
        center->deliverNotification(titled(""));
    }
    EXPECT_EQ(center->deliveredNotifications()->count(), 2001u);
    center->removeAllDeliveredNotifications();
    EXPECT_EQ(center->deliveredNotifications()->count(), 0u);
}

} // namespace
