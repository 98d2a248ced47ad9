#pragma once

#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/declare.h>

#include <functional>

namespace zr {

/// What the application wants done about a notification. It is kept with the notification and never called here: the
/// application calls it when it hears of the click or the delivery.
using UserNotificationAction = std::function<void()>;

/// What one notification carries besides what the user sees. Used on the main thread.
class ZR_EXPORT _ZRPrivateUserNotificationActions : public NSObject {
    ZR_OBJECT(_ZRPrivateUserNotificationActions, NSObject)

  public:
    ~_ZRPrivateUserNotificationActions() override;

    /// A new one, with nothing in it.
    [[nodiscard]] static Ref<_ZRPrivateUserNotificationActions> notification();
    ZR_CLASS_METHOD(notification, "notification")

    /// For a click on the action button; empty by default.
    ZR_PROPERTY(UserNotificationAction, actionButtonClickAction, setActionButtonClickAction)
    /// For the delivery; empty by default. The spelling is part of the interface.
    ZR_PROPERTY(UserNotificationAction, delieverAction, setDelieverAction)

    /// The notification's identifier. Read while there is none it makes one, a UUID of 36 characters in upper case, and
    /// keeps it; never null.
    [[nodiscard]] Ref<NSString> notificationID();
    ZR_METHOD(notificationID, "notificationID")
    /// Stores a copy; null takes the identifier away.
    void setNotificationID(NSString* notificationID);
    ZR_METHOD(setNotificationID, "setNotificationID:")

  private:
    Ref<NSString> m_notificationID;
};

} // namespace zr
