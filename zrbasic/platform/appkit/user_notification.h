#pragma once

#include <zrbasic/platform/foundation/date.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/string.h>

namespace zr {

class NSUserNotificationCenter;

/// How the user responded to a notification.
enum NSUserNotificationActivationType : NSInteger {
    NSUserNotificationActivationTypeNone = 0,
    /// The notification itself was clicked.
    NSUserNotificationActivationTypeContentsClicked = 1,
    NSUserNotificationActivationTypeActionButtonClicked = 2,
    NSUserNotificationActivationTypeReplied = 3,
    NSUserNotificationActivationTypeAdditionalActionClicked = 4,
};

/// The sound name that stands for the desktop's own notification sound: "DefaultSoundName".
[[nodiscard]] ZR_EXPORT Ref<NSString> NSUserNotificationDefaultSoundName();

/// A desktop notification of the older interface. Filled in by the application and handed to the
/// `NSUserNotificationCenter`. Used on the main thread.
class ZR_EXPORT NSUserNotification : public NSObject {
    ZR_OBJECT(NSUserNotification, NSObject)

  public:
    ~NSUserNotification() override;

    /// Sets up a notification that has nothing but an action button, which shows once it has a title.
    id init() override;

    /// These are null by default, like everything below unless it says otherwise.
    ZR_PROPERTY(Copied<NSString>, title, setTitle)
    ZR_PROPERTY(Copied<NSString>, subtitle, setSubtitle)
    ZR_PROPERTY(Copied<NSString>, informativeText, setInformativeText)
    /// The application's own name for it: delivering another one of the same name replaces it.
    ZR_PROPERTY(Copied<NSString>, identifier, setIdentifier)
    /// Any name makes the desktop's sound, null none.
    ZR_PROPERTY(Copied<NSString>, soundName, setSoundName)
    /// Whether the button is shown, true by default, and what it says: without a title there is none.
    ZR_PROPERTY(bool, hasActionButton, setHasActionButton)
    ZR_PROPERTY(Copied<NSString>, actionButtonTitle, setActionButtonTitle)
    /// When a scheduled notification is due; null is at once. Read when it is scheduled.
    ZR_PROPERTY(Copied<NSDate>, deliveryDate, setDeliveryDate)
    /// Whatever the application wants to find again with it.
    ZR_PROPERTY(Copied<NSDictionary>, userInfo, setUserInfo)

    /// How the user responded last; none before.
    ZR_READONLY(NSUserNotificationActivationType, activationType)
    /// When it was delivered; null before.
    ZR_READONLY(Copied<NSDate>, actualDeliveryDate)
    /// Whether the user was really shown it, when it was delivered.
    ZR_READONLY(bool, isPresented)

    /// A new notification with the same values. What is attached to the object stays with the original.
    [[nodiscard]] id copy() const override;

  private:
    friend class NSUserNotificationCenter;
};

} // namespace zr
