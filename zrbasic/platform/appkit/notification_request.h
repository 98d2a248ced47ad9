#pragma once

#include <zrbasic/platform/appkit/notification_content.h>
#include <zrbasic/platform/foundation/date.h>

namespace zr {

/// When a request is to be delivered. What kinds there are is said by the classes below it.
class ZR_EXPORT UNNotificationTrigger : public NSObject {
    ZR_OBJECT(UNNotificationTrigger, NSObject)

  public:
    ~UNNotificationTrigger() override;

    /// Whether it is delivered again and again.
    ZR_READONLY(bool, repeats)
};

/// Delivers so many seconds after the request was added.
class ZR_EXPORT UNTimeIntervalNotificationTrigger : public UNNotificationTrigger {
    ZR_OBJECT(UNTimeIntervalNotificationTrigger, UNNotificationTrigger)

  public:
    ~UNTimeIntervalNotificationTrigger() override;

    /// Raises `NSInternalInconsistencyException` for an interval that is not above 0 and for a repeated one below 60.
    [[nodiscard]] static Ref<UNTimeIntervalNotificationTrigger> triggerWithTimeInterval_repeats(
        NSTimeInterval timeInterval, bool repeats);
    ZR_CLASS_METHOD(triggerWithTimeInterval_repeats, "triggerWithTimeInterval:repeats:")

    ZR_READONLY(NSTimeInterval, timeInterval)
};

/// A wish to have a content delivered. Never changes.
class ZR_EXPORT UNNotificationRequest : public NSObject {
    ZR_OBJECT(UNNotificationRequest, NSObject)

  public:
    ~UNNotificationRequest() override;

    /// Copies the content, so that it can be filled in for the next one. Without a trigger it is delivered at once.
    [[nodiscard]] static Ref<UNNotificationRequest> requestWithIdentifier_content_trigger(
        NSString* identifier, UNNotificationContent* content, UNNotificationTrigger* trigger);
    ZR_CLASS_METHOD(requestWithIdentifier_content_trigger, "requestWithIdentifier:content:trigger:")

    /// The application's name for it: adding another one of the same name replaces it. Null only when made so.
    ZR_READONLY(Copied<NSString>, identifier)
    ZR_READONLY(Copied<UNNotificationContent>, content)
    ZR_READONLY(Ref<UNNotificationTrigger>, trigger)
};

/// A request that was delivered.
class ZR_EXPORT UNNotification : public NSObject {
    ZR_OBJECT(UNNotification, NSObject)

  public:
    ~UNNotification() override;

    /// When it was delivered.
    ZR_READONLY(Copied<NSDate>, date)
    ZR_READONLY(Ref<UNNotificationRequest>, request)

  private:
    friend class UNUserNotificationCenter;
};

/// What the user did with a notification.
class ZR_EXPORT UNNotificationResponse : public NSObject {
    ZR_OBJECT(UNNotificationResponse, NSObject)

  public:
    ~UNNotificationResponse() override;

    ZR_READONLY(Ref<UNNotification>, notification)
    /// The clicked button's, or the one below.
    ZR_READONLY(Copied<NSString>, actionIdentifier)

  private:
    friend class UNUserNotificationCenter;
};

/// The action identifier for a click on the notification itself: "com.apple.UNNotificationDefaultActionIdentifier".
[[nodiscard]] ZR_EXPORT Ref<NSString> UNNotificationDefaultActionIdentifier();

} // namespace zr
