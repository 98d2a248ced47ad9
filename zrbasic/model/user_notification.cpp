#include <zrbasic/model/user_notification.h>

#include <zrbasic/core/text.h>
#include <zrbasic/platform/appkit/notification_category.h>
#include <zrbasic/platform/appkit/notification_center.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/set.h>
#include <zrbasic/platform/runtime/association.h>

#include <utility>

namespace zr {
namespace {

using Companion = _ZRPrivateUserNotificationActions;

/// How long after its making a notification is due, in seconds.
constexpr NSTimeInterval deliveryDelay = 0.2;

Ref<NSString> buttonCategoryIdentifier() {
    return "REPLAY_BUTTON_IDENTIFIER"_ns;
}

Ref<Companion> companionOf(NSObject* notification) {
    if (!notification) {
        return {};
    }
    const void* const key = "privateUserNotificationActions"_sel.record();
    const id attached = objc_getAssociatedObject(notification, key);
    if (auto* const known = cast<Companion>(attached)) {
        return known;
    }
    Ref<Companion> made = Companion::notification();
    objc_setAssociatedObject(notification, key, made, OBJC_ASSOCIATION_RETAIN_NONATOMIC);
    return made;
}

UserNotificationAction clickActionOf(NSObject* notification) {
    const Ref<Companion> companion = companionOf(notification);
    return companion ? companion->actionButtonClickAction() : nullptr;
}

void keepClickAction(NSObject* notification, const UserNotificationAction& action) {
    if (action) {
        companionOf(notification)->setActionButtonClickAction(action);
    }
}

Ref<NSString> identifierOf(NSObject* notification) {
    const Ref<Companion> companion = companionOf(notification);
    return companion ? companion->notificationID() : nullptr;
}

template <class T>
void setIdentifierAsUserInfo(T* notification) {
    notification->setUserInfo(dictionary({{ZRCustomUserNotificationID(), notificationID(notification)}}));
}

template <class T>
void mergeUserInfo(T* notification, NSDictionary* added) {
    if (!notification || !added) {
        return;
    }
    Ref<NSMutableDictionary> merged;
    if (const Ref<NSDictionary> present = notification->userInfo()) {
        const id copied = present->mutableCopy();
        merged = Ref<NSMutableDictionary>(cast<NSMutableDictionary>(copied));
        merged->addEntriesFromDictionary(added);
    }
    // Without a user-info the addition goes nowhere.
    notification->setUserInfo(merged);
}

template <class T>
Ref<T> notificationOfClass(Class* notificationClass) {
    const id fresh = send<id>(class_createInstance(notificationClass), "init"_sel);
    Ref<T> made(cast<T>(fresh));
    detail::prepare(made);
    return made;
}

template <class T>
Ref<T> notificationOfClassWithTexts(Class* notificationClass, NSString* title, NSString* informativeText) {
    Ref<T> made = notificationOfClass<T>(notificationClass);
    detail::setTexts(made, title, informativeText);
    return made;
}

template <class T>
Ref<T> notificationOfClassWithText(Class* notificationClass, NSString* informativeText) {
    return notificationOfClassWithTexts<T>(notificationClass, nullptr, informativeText);
}

Ref<NSString> translated(NSString* text) {
    return localizedUserNotificationStringForKey_arguments(text, nullptr);
}

} // namespace

Ref<NSString> ZRCustomUserNotificationID() {
    return "com.zarvo.notification.userNotificationID"_ns;
}

Ref<NSString> ZRCustomUserNotificationReplayButtonID() {
    return "com.zarvo.notification.replayButton"_ns;
}

namespace detail {

// A class may refuse to make an object: its initialiser gives null.

void prepare(NSUserNotification* fresh) {
    if (!fresh) {
        return;
    }
    setIdentifierAsUserInfo(fresh);
    fresh->setSoundName(NSUserNotificationDefaultSoundName());
    fresh->setDeliveryDate(NSDate::dateWithTimeIntervalSinceNow(deliveryDelay));
}

void prepare(UNMutableNotificationContent* fresh) {
    if (!fresh) {
        return;
    }
    setIdentifierAsUserInfo(fresh);
    fresh->setCategoryIdentifier(buttonCategoryIdentifier());
    fresh->setSound(UNNotificationSound::defaultSound());
}

void setTexts(NSUserNotification* notification, NSString* title, NSString* informativeText) {
    if (!notification) {
        return;
    }
    notification->setTitle(title);
    notification->setInformativeText(informativeText);
}

void setTexts(UNMutableNotificationContent* notification, NSString* title, NSString* informativeText) {
    if (notification && title) {
        notification->setTitle(translated(title));
    }
    if (notification && informativeText) {
        notification->setBody(translated(informativeText));
    }
}

} // namespace detail

void setupActionButtonTitle(NSUserNotification* self, NSString* title) {
    setupActionButtonTitle_clickAction(self, title, nullptr);
}

void setupActionButtonTitle_clickAction(NSUserNotification* self, NSString* title, UserNotificationAction clickAction) {
    if (!self) {
        return;
    }
    if (!ZRXTextValid(title)) {
        self->setHasActionButton(false);
        return;
    }
    self->setActionButtonTitle(title);
    keepClickAction(self, clickAction);
}

void setupDidDelieverAction(NSUserNotification* self, UserNotificationAction action) {
    if (self && action) {
        companionOf(self)->setDelieverAction(action);
    }
}

Ref<_ZRPrivateUserNotificationActions> privateUserNotificationActions(NSUserNotification* self) {
    return companionOf(self);
}

UserNotificationAction actionButtonClickAction(NSUserNotification* self) {
    return clickActionOf(self);
}

UserNotificationAction delieverAction(NSUserNotification* self) {
    const Ref<Companion> companion = companionOf(self);
    return companion ? companion->delieverAction() : nullptr;
}

Ref<NSString> notificationID(NSUserNotification* self) {
    return identifierOf(self);
}

bool actionable(NSUserNotification* self) {
    return actionButtonClickAction(self) || delieverAction(self);
}

void addUserInfo(NSUserNotification* self, NSDictionary* userInfo) {
    mergeUserInfo(self, userInfo);
}

void setupActionButtonTitle(UNMutableNotificationContent* self, NSString* title) {
    setupActionButtonTitle_clickAction(self, title, nullptr);
}

void setupActionButtonTitle_clickAction(UNMutableNotificationContent* self, NSString* title,
                                        UserNotificationAction clickAction) {
    if (!self) {
        return;
    }
    if (!ZRXTextValid(title)) {
        self->setCategoryIdentifier("com.zarvo.notification.emptyIdentifier"_ns);
        return;
    }
    const auto action = UNNotificationAction::actionWithIdentifier_title_options(
        ZRCustomUserNotificationReplayButtonID(), title, UNNotificationActionOptionNone);
    const auto category = UNNotificationCategory::categoryWithIdentifier_actions_intentIdentifiers_options(
        buttonCategoryIdentifier(), array({action}), array({}), UNNotificationCategoryOptionNone);
    UNUserNotificationCenter::currentNotificationCenter()->setNotificationCategories(NSSet::setWithObject(category));
    keepClickAction(self, clickAction);
}

Ref<_ZRPrivateUserNotificationActions> privateUserNotificationActions(UNMutableNotificationContent* self) {
    return companionOf(self);
}

UserNotificationAction actionButtonClickAction(UNMutableNotificationContent* self) {
    return clickActionOf(self);
}

Ref<NSString> notificationID(UNMutableNotificationContent* self) {
    return identifierOf(self);
}

bool actionable(UNMutableNotificationContent* self) {
    return static_cast<bool>(actionButtonClickAction(self));
}

void addUserInfo(UNMutableNotificationContent* self, NSDictionary* userInfo) {
    mergeUserInfo(self, userInfo);
}

namespace {

/// What both groups offer under the same names.
template <class T>
void listSharedOperations(ClassBuilder& is) {
    using Setup = void (*)(T*, NSString*);
    using SetupAction = void (*)(T*, NSString*, UserNotificationAction);
    is.receivingClassMethod<&notificationOfClass<T>>("notification");
    is.receivingClassMethod<&notificationOfClassWithText<T>>("notificationWithInformativeText:");
    is.receivingClassMethod<&notificationOfClassWithTexts<T>>("notificationWithTitle:informativeText:");
    is.method<static_cast<Setup>(&setupActionButtonTitle)>("setupActionButtonTitle:");
    is.method<static_cast<SetupAction>(&setupActionButtonTitle_clickAction)>("setupActionButtonTitle:clickAction:");
    is.method<static_cast<Ref<Companion> (*)(T*)>(&privateUserNotificationActions)>("privateUserNotificationActions");
    is.method<static_cast<UserNotificationAction (*)(T*)>(&actionButtonClickAction)>("actionButtonClickAction");
    is.method<static_cast<Ref<NSString> (*)(T*)>(&notificationID)>("notificationID");
    is.method<static_cast<bool (*)(T*)>(&actionable)>("actionable");
    is.method<static_cast<void (*)(T*, NSDictionary*)>(&addUserInfo)>("addUserInfo:");
}

} // namespace

ZR_GROUP(NSUserNotification, ZRXHelper) {
    listSharedOperations<NSUserNotification>(is);
    is.method<&setupDidDelieverAction>("setupDidDelieverAction:");
    is.method<&delieverAction>("delieverAction");
}

ZR_GROUP(UNMutableNotificationContent, ZRXHelper) {
    listSharedOperations<UNMutableNotificationContent>(is);
}

} // namespace zr
