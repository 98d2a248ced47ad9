#pragma once

#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/string.h>

namespace zr {

class NSArray;
class UNMutableNotificationContent;

/// The sound that announces a notification. Never changes.
class ZR_EXPORT UNNotificationSound : public NSObject {
    ZR_DECLARE_CLASS(UNNotificationSound, NSObject)
  public:
    ~UNNotificationSound() override;

    /// The desktop's own notification sound: the same object every time.
    [[nodiscard]] static Ref<UNNotificationSound> defaultSound();

    /// The sound itself.
    [[nodiscard]] id copy() const override;
};

/// What a notification of the new interface says. Made by copying a `UNMutableNotificationContent`; it does not change
/// then.
class ZR_EXPORT UNNotificationContent : public NSObject {
    ZR_OBJECT(UNNotificationContent, NSObject)

  public:
    ~UNNotificationContent() override;

    /// Sets up a content that says nothing.
    id init() override;

    /// Texts that the user reads; null by default.
    ZR_READONLY(Copied<NSString>, title)
    ZR_READONLY(Copied<NSString>, subtitle)
    ZR_READONLY(Copied<NSString>, body)
    /// Null, the default, is silent.
    ZR_READONLY(Copied<UNNotificationSound>, sound)
    /// Which registered category the notification has its buttons from; "" by default.
    ZR_READONLY(Copied<NSString>, categoryIdentifier)
    /// Whatever the application wants to find again with it; empty by default.
    ZR_READONLY(Copied<NSDictionary>, userInfo)

    /// A content that will not change: itself.
    [[nodiscard]] id copy() const override;
    /// A new `UNMutableNotificationContent` with the same values. What is attached to the object is not copied.
    [[nodiscard]] id mutableCopy() const override;

  private:
    friend class UNMutableNotificationContent;
    void setValuesFrom(const UNNotificationContent& other);
};

/// A content that is being filled in. Used on the main thread.
class ZR_EXPORT UNMutableNotificationContent : public UNNotificationContent {
    ZR_OBJECT(UNMutableNotificationContent, UNNotificationContent)

  public:
    ~UNMutableNotificationContent() override;

    /// All of them copy, and take null for nothing.
    void setTitle(NSString* title) { m_title = title; }
    ZR_METHOD(setTitle, "setTitle:")
    void setSubtitle(NSString* subtitle) { m_subtitle = subtitle; }
    ZR_METHOD(setSubtitle, "setSubtitle:")
    void setBody(NSString* body) { m_body = body; }
    ZR_METHOD(setBody, "setBody:")
    void setSound(UNNotificationSound* sound) { m_sound = sound; }
    ZR_METHOD(setSound, "setSound:")
    void setCategoryIdentifier(NSString* identifier) { m_categoryIdentifier = identifier; }
    ZR_METHOD(setCategoryIdentifier, "setCategoryIdentifier:")
    void setUserInfo(NSDictionary* userInfo) { m_userInfo = userInfo; }
    ZR_METHOD(setUserInfo, "setUserInfo:")

    /// A `UNNotificationContent` with the same values.
    [[nodiscard]] id copy() const override;
};

// NSString(UNUserNotificationCenterSupport)

/// The text to show for `key`, null for null.
///
/// There are no tables of translations, so it is the key itself with its "%@" replaced by the arguments in turn: an
/// application that translates hands in the translated text. Without arguments, or behind the last of them, a "%@"
/// stays as it is.
[[nodiscard]] ZR_EXPORT Ref<NSString> localizedUserNotificationStringForKey_arguments(NSString* key,
                                                                                      NSArray* arguments);

} // namespace zr
