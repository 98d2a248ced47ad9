#pragma once

#include <zrbasic/platform/appkit/notification_service.h>
#include <zrbasic/platform/appkit/user_notification.h>

#include <cstdint>
#include <vector>

namespace zr {

class NSArray;
class NSUserNotificationCenter;

/// Hears about notifications. Both operations do nothing unless they are overridden.
class ZR_EXPORT NSUserNotificationCenterDelegate {
    ZR_PROTOCOL(NSUserNotificationCenterDelegate)
  public:
    /// It is in the list of delivered notifications now, shown to the user or not.
    virtual void userNotificationCenter_didDeliverNotification(NSUserNotificationCenter* center,
                                                               NSUserNotification* notification);
    ZR_PROTOCOL_METHOD(userNotificationCenter_didDeliverNotification, "userNotificationCenter:didDeliverNotification:")
    /// The user clicked the notification or its button; its `activationType` says which.
    virtual void userNotificationCenter_didActivateNotification(NSUserNotificationCenter* center,
                                                                NSUserNotification* notification);
    ZR_PROTOCOL_METHOD(userNotificationCenter_didActivateNotification,
                       "userNotificationCenter:didActivateNotification:")
};

/// Where notifications of the older interface go: delivers them through the toolkit's service, keeps the delivered and
/// the scheduled ones, and tells the delegate what the user did.
///
/// Without a service nothing is shown, and everything else is as it would be. The very objects handed in are kept and
/// given to the delegate, so that what is attached to them is found again. Used on the main thread; null does nothing.
class ZR_EXPORT NSUserNotificationCenter final : public NSObject, private NotificationReceiver {
    ZR_DECLARE_CLASS(NSUserNotificationCenter, NSObject)
  public:
    ~NSUserNotificationCenter() override;

    /// The application's centre: the same object every time.
    [[nodiscard]] static Ref<NSUserNotificationCenter> defaultUserNotificationCenter();

    /// A `NSUserNotificationCenterDelegate`, or any object that responds to its operations; not kept. Null by default.
    [[nodiscard]] id delegate() const { return m_delegate.lock(); }
    void setDelegate(NSObject* delegate) { m_delegate = Weak<NSObject>(delegate); }

    /// Delivers it now, whatever its delivery date, in place of a delivered one that is the same object or has an equal
    /// identifier.
    void deliverNotification(NSUserNotification* notification);
    /// Delivers it when its delivery date has come, which may be now, while the main queue runs (see dispatch_queue.h).
    /// Scheduled again it goes by its new date.
    void scheduleNotification(NSUserNotification* notification);
    /// One that is not scheduled does nothing.
    void removeScheduledNotification(NSUserNotification* notification);
    /// What waits for its date, in the order it was scheduled in. Never null.
    [[nodiscard]] Ref<NSArray> scheduledNotifications() const;

    /// What was delivered and neither removed nor closed since, the latest last. Never null.
    [[nodiscard]] Ref<NSArray> deliveredNotifications() const;
    /// Takes it from the list and from the screen; an equal identifier counts as the same.
    void removeDeliveredNotification(NSUserNotification* notification);
    void removeAllDeliveredNotifications();

  private:
    struct Delivered {
        Ref<NSUserNotification> notification;
        /// What the service knows it by.
        Ref<NSString> key;
    };
    struct Scheduled {
        Ref<NSUserNotification> notification;
        std::uint64_t serial;
    };

    void notificationWasClicked(NSString* key) override;
    void notificationButtonWasClicked(NSString* key, NSString* buttonIdentifier) override;
    void notificationWasClosed(NSString* key) override;

    void activate(NSString* key, NSUserNotificationActivationType type);
    void deliverScheduled(std::uint64_t serial);
    /// Takes an equal one out of the list and gives back its key, null when there is none.
    [[nodiscard]] Ref<NSString> takeDelivered(NSUserNotification* notification);
    [[nodiscard]] Ref<NSUserNotification> deliveredWithKey(NSString* key) const;
    void tellDelegate(SEL operation, NSUserNotification* notification);

    Weak<NSObject> m_delegate;
    std::vector<Delivered> m_delivered;
    std::vector<Scheduled> m_scheduled;
    std::uint64_t m_nextSerial = 0;
};

} // namespace zr
