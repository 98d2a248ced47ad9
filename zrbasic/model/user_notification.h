#pragma once

#include <zrbasic/model/user_notification_actions.h>
#include <zrbasic/platform/appkit/notification_content.h>
#include <zrbasic/platform/appkit/user_notification.h>

#include <concepts>

/// Notifications of both interfaces, prepared alike: an identifier in the user-info, the default sound, one action
/// button with a callback that is kept with the notification. What the user did with one is read by
/// `ZRUserNotificationInfo`.
///
/// A callback belongs to its notification; one that keeps the notification keeps it for ever.
///
/// A null receiver gives the zero result. Used on the main thread; nothing raises.
namespace zr {

/// The user-info key of every notification's identifier: "com.zarvo.notification.userNotificationID".
[[nodiscard]] ZR_EXPORT Ref<NSString> ZRCustomUserNotificationID();
/// The identifier of the action button: "com.zarvo.notification.replayButton". "Replay" is part of the interface.
[[nodiscard]] ZR_EXPORT Ref<NSString> ZRCustomUserNotificationReplayButtonID();

namespace detail {

ZR_EXPORT void prepare(NSUserNotification* fresh);
ZR_EXPORT void prepare(UNMutableNotificationContent* fresh);
ZR_EXPORT void setTexts(NSUserNotification* notification, NSString* title, NSString* informativeText);
ZR_EXPORT void setTexts(UNMutableNotificationContent* notification, NSString* title, NSString* informativeText);

} // namespace detail

/// `NSUserNotification`, `UNMutableNotificationContent`, or a class below one of them.
template <class T>
concept UserNotificationClass =
    std::derived_from<T, NSUserNotification> || std::derived_from<T, UNMutableNotificationContent>;

// NSUserNotification(ZRXHelper) and UNMutableNotificationContent(ZRXHelper)

/// A new notification whose user-info holds its identifier and nothing else: `notification<NSUserNotification>()`.
///
/// One of the older interface has the default sound's name and a delivery date 0.2 seconds from now, one of the new
/// interface the default sound and the category that `setupActionButtonTitle_clickAction` registers.
template <UserNotificationClass T>
[[nodiscard]] Ref<T> notification() {
    Ref<T> made = make<T>();
    detail::prepare(made);
    return made;
}

/// The same with a title and a text. In the older interface both are set as they are, null included; in the new one
/// null leaves what there is, and both go through the platform's translation of notification texts.
template <UserNotificationClass T>
[[nodiscard]] Ref<T> notificationWithTitle_informativeText(NSString* title, NSString* informativeText) {
    Ref<T> made = notification<T>();
    detail::setTexts(made, title, informativeText);
    return made;
}

/// The same without a title.
template <UserNotificationClass T>
[[nodiscard]] Ref<T> notificationWithInformativeText(NSString* informativeText) {
    return notificationWithTitle_informativeText<T>(nullptr, informativeText);
}

// NSUserNotification(ZRXHelper)

/// The same without a callback.
ZR_EXPORT void setupActionButtonTitle(NSUserNotification* self, NSString* title);
/// Names the action button and keeps `clickAction` for its click. An empty callback leaves the one before. Without a
/// title, which must be valid text, the button is turned off and the callback ignored; a title given later does not
/// turn it on again.
ZR_EXPORT void setupActionButtonTitle_clickAction(NSUserNotification* self, NSString* title,
                                                  UserNotificationAction clickAction);
/// Keeps `action` for the delivery; an empty one leaves the one before. The spelling is part of the interface.
ZR_EXPORT void setupDidDelieverAction(NSUserNotification* self, UserNotificationAction action);
/// What the notification carries; made when it is first asked for, and always the same object.
[[nodiscard]] ZR_EXPORT Ref<_ZRPrivateUserNotificationActions> privateUserNotificationActions(NSUserNotification* self);
[[nodiscard]] ZR_EXPORT UserNotificationAction actionButtonClickAction(NSUserNotification* self);
[[nodiscard]] ZR_EXPORT UserNotificationAction delieverAction(NSUserNotification* self);
/// Its identifier; made when it is first asked for. Null only for null.
[[nodiscard]] ZR_EXPORT Ref<NSString> notificationID(NSUserNotification* self);
/// Whether it carries a callback for a click or for the delivery.
[[nodiscard]] ZR_EXPORT bool actionable(NSUserNotification* self);
/// Adds to the user-info; equal keys take the new values. A notification without a user-info has none afterwards
/// either. Null adds nothing.
ZR_EXPORT void addUserInfo(NSUserNotification* self, NSDictionary* userInfo);

// UNMutableNotificationContent(ZRXHelper)

/// The same without a callback.
ZR_EXPORT void setupActionButtonTitle(UNMutableNotificationContent* self, NSString* title);
/// Registers a category with one button of that title, in place of all categories that the application had, and keeps
/// `clickAction` for its click; an empty callback leaves the one before. So the last title is the one that all such
/// notifications show.
///
/// Without a title, which must be valid text, the content gets a category that has no button, and the callback is
/// ignored; a title given later does not give it the category back.
ZR_EXPORT void setupActionButtonTitle_clickAction(UNMutableNotificationContent* self, NSString* title,
                                                  UserNotificationAction clickAction);
/// As for the older interface.
[[nodiscard]] ZR_EXPORT Ref<_ZRPrivateUserNotificationActions> privateUserNotificationActions(
    UNMutableNotificationContent* self);
[[nodiscard]] ZR_EXPORT UserNotificationAction actionButtonClickAction(UNMutableNotificationContent* self);
[[nodiscard]] ZR_EXPORT Ref<NSString> notificationID(UNMutableNotificationContent* self);
/// Whether it carries a callback for a click.
[[nodiscard]] ZR_EXPORT bool actionable(UNMutableNotificationContent* self);
/// As for the older interface; a content has a user-info unless it was taken away.
ZR_EXPORT void addUserInfo(UNMutableNotificationContent* self, NSDictionary* userInfo);

} // namespace zr
