#pragma once

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/string.h>

namespace zr {

/// What clicking a notification's button asks for; a sum of these. Kept for the application: the desktop is not told.
enum UNNotificationActionOptions : NSUInteger {
    UNNotificationActionOptionNone = 0,
    UNNotificationActionOptionAuthenticationRequired = 1,
    UNNotificationActionOptionDestructive = 2,
    UNNotificationActionOptionForeground = 4,
};

/// Peculiarities of a category; there are none so far.
enum UNNotificationCategoryOptions : NSUInteger {
    UNNotificationCategoryOptionNone = 0,
};

/// A button that the notifications of a category have. Never changes.
class ZR_EXPORT UNNotificationAction : public NSObject {
    ZR_OBJECT(UNNotificationAction, NSObject)

  public:
    ~UNNotificationAction() override;

    [[nodiscard]] static Ref<UNNotificationAction> actionWithIdentifier_title_options(
        NSString* identifier, NSString* title, UNNotificationActionOptions options);
    ZR_CLASS_METHOD(actionWithIdentifier_title_options, "actionWithIdentifier:title:options:")

    /// What the response says when it was clicked; null only when it was made so, and then there is no button.
    ZR_READONLY(Copied<NSString>, identifier)
    /// What the button says; without a text there is no button.
    ZR_READONLY(Copied<NSString>, title)
    ZR_READONLY(UNNotificationActionOptions, options)

    /// The action itself.
    [[nodiscard]] id copy() const override;
};

/// A kind of notification: which buttons it has. Never changes.
class ZR_EXPORT UNNotificationCategory : public NSObject {
    ZR_OBJECT(UNNotificationCategory, NSObject)

  public:
    ~UNNotificationCategory() override;

    /// Null arrays count as empty.
    [[nodiscard]] static Ref<UNNotificationCategory> categoryWithIdentifier_actions_intentIdentifiers_options(
        NSString* identifier, NSArray* actions, NSArray* intentIdentifiers, UNNotificationCategoryOptions options);
    ZR_CLASS_METHOD(categoryWithIdentifier_actions_intentIdentifiers_options,
                    "categoryWithIdentifier:actions:intentIdentifiers:options:")

    /// What a content's category identifier must equal; null only when it was made so.
    ZR_READONLY(Copied<NSString>, identifier)
    /// `UNNotificationAction` objects in the order of the buttons; others make no button. Never null.
    ZR_READONLY(Copied<NSArray>, actions)
    /// Kept for the application; nothing here asks for them. Never null.
    ZR_READONLY(Copied<NSArray>, intentIdentifiers)
    ZR_READONLY(UNNotificationCategoryOptions, options)

    /// The category itself.
    [[nodiscard]] id copy() const override;
};

} // namespace zr
