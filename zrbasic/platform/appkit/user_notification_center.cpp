#include <zrbasic/platform/appkit/user_notification_center.h>

#include <zrbasic/platform/appkit/notification_delivery_p.h>
#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/dispatch_queue.h>
#include <zrbasic/platform/foundation/uuid.h>

#include <algorithm>
#include <utility>

namespace zr {
namespace {

bool isSame(NSUserNotification* one, NSUserNotification* other) {
    const Ref<NSString> identifier = one->identifier();
    return one == other || (identifier && identifier->isEqual(other->identifier()));
}

NotificationPosting postingOf(NSUserNotification* notification, const Ref<NSString>& key) {
    NotificationPosting posting{key,
                                notification->title(),
                                notification->subtitle(),
                                notification->informativeText(),
                                {},
                                notification->soundName() != nullptr};
    const Ref<NSString> buttonTitle = notification->actionButtonTitle();
    if (notification->hasActionButton() && buttonTitle && buttonTitle->length() > 0) {
        posting.buttons.push_back({"actionButton"_ns, buttonTitle});
    }
    return posting;
}

} // namespace

void NSUserNotificationCenterDelegate::userNotificationCenter_didDeliverNotification(NSUserNotificationCenter*,
                                                                                     NSUserNotification*) {}

void NSUserNotificationCenterDelegate::userNotificationCenter_didActivateNotification(NSUserNotificationCenter*,
                                                                                      NSUserNotification*) {}

ZR_DEFINE_CLASS(NSUserNotificationCenter) {
    is.classMethod<&NSUserNotificationCenter::defaultUserNotificationCenter>("defaultUserNotificationCenter");
    is.method<&NSUserNotificationCenter::delegate>("delegate");
    is.method<&NSUserNotificationCenter::setDelegate>("setDelegate:");
    is.method<&NSUserNotificationCenter::deliverNotification>("deliverNotification:");
    is.method<&NSUserNotificationCenter::scheduleNotification>("scheduleNotification:");
    is.method<&NSUserNotificationCenter::removeScheduledNotification>("removeScheduledNotification:");
    is.method<&NSUserNotificationCenter::scheduledNotifications>("scheduledNotifications");
    is.method<&NSUserNotificationCenter::deliveredNotifications>("deliveredNotifications");
    is.method<&NSUserNotificationCenter::removeDeliveredNotification>("removeDeliveredNotification:");
    is.method<&NSUserNotificationCenter::removeAllDeliveredNotifications>("removeAllDeliveredNotifications");
}

NSUserNotificationCenter::~NSUserNotificationCenter() = default;

Ref<NSUserNotificationCenter> NSUserNotificationCenter::defaultUserNotificationCenter() {
    static NSUserNotificationCenter* const shared = make<NSUserNotificationCenter>().leak();
    return shared;
}

void NSUserNotificationCenter::deliverNotification(NSUserNotification* notification) {
    if (!notification) {
        return;
    }
    const Ref<NSUserNotification> kept(notification);
    removeScheduledNotification(notification);
    Ref<NSString> key = takeDelivered(notification);
    if (!key) {
        key = NSUUID::UUID()->UUIDString();
    }
    // In the list before it is shown: a click may come while it is being posted.
    m_delivered.push_back({kept, key});
    notification->m_actualDeliveryDate = NSDate::date();
    notification->m_isPresented = detail::post(postingOf(notification, key), *this);
    tellDelegate("userNotificationCenter:didDeliverNotification:"_sel, notification);
}

void NSUserNotificationCenter::scheduleNotification(NSUserNotification* notification) {
    if (!notification) {
        return;
    }
    const Ref<NSUserNotification> kept(notification);
    removeScheduledNotification(notification);
    const std::uint64_t serial = m_nextSerial++;
    m_scheduled.push_back({kept, serial});
    const Ref<NSUserNotificationCenter> self(this);
    dispatch_after(detail::deadlineAt(notification->deliveryDate()), dispatch_get_main_queue(),
                   [self, serial] { self->deliverScheduled(serial); });
}

void NSUserNotificationCenter::removeScheduledNotification(NSUserNotification* notification) {
    // The list's entry may be what keeps it alive, and nothing may end while the list is being changed.
    const Ref<NSUserNotification> kept(notification);
    std::erase_if(m_scheduled,
                  [notification](const Scheduled& waiting) { return waiting.notification == notification; });
}

Ref<NSArray> NSUserNotificationCenter::scheduledNotifications() const {
    return detail::listOf(m_scheduled, &Scheduled::notification);
}

Ref<NSArray> NSUserNotificationCenter::deliveredNotifications() const {
    return detail::listOf(m_delivered, &Delivered::notification);
}

void NSUserNotificationCenter::removeDeliveredNotification(NSUserNotification* notification) {
    if (!notification) {
        return;
    }
    if (const Ref<NSString> key = takeDelivered(notification)) {
        detail::withdraw(key);
    }
}

void NSUserNotificationCenter::removeAllDeliveredNotifications() {
    for (const Delivered& delivered : std::exchange(m_delivered, {})) {
        detail::withdraw(delivered.key);
    }
}

void NSUserNotificationCenter::notificationWasClicked(NSString* key) {
    activate(key, NSUserNotificationActivationTypeContentsClicked);
}

void NSUserNotificationCenter::notificationButtonWasClicked(NSString* key, NSString*) {
    activate(key, NSUserNotificationActivationTypeActionButtonClicked);
}

void NSUserNotificationCenter::notificationWasClosed(NSString* key) {
    const Ref<NSUserNotification> kept = deliveredWithKey(key);
    std::erase_if(m_delivered, [key](const Delivered& delivered) { return delivered.key->isEqual(key); });
}

void NSUserNotificationCenter::activate(NSString* key, NSUserNotificationActivationType type) {
    if (const Ref<NSUserNotification> notification = deliveredWithKey(key)) {
        notification->m_activationType = type;
        tellDelegate("userNotificationCenter:didActivateNotification:"_sel, notification);
    }
}

void NSUserNotificationCenter::deliverScheduled(std::uint64_t serial) {
    const auto place = std::find_if(m_scheduled.begin(), m_scheduled.end(),
                                    [serial](const Scheduled& waiting) { return waiting.serial == serial; });
    // Gone when it was removed, or scheduled again, meanwhile.
    if (place != m_scheduled.end()) {
        deliverNotification(place->notification);
    }
}

Ref<NSString> NSUserNotificationCenter::takeDelivered(NSUserNotification* notification) {
    const auto place = std::find_if(m_delivered.begin(), m_delivered.end(), [notification](const Delivered& delivered) {
        return isSame(delivered.notification, notification);
    });
    if (place == m_delivered.end()) {
        return {};
    }
    const Delivered taken = std::move(*place);
    m_delivered.erase(place);
    return taken.key;
}

Ref<NSUserNotification> NSUserNotificationCenter::deliveredWithKey(NSString* key) const {
    for (const Delivered& delivered : m_delivered) {
        if (delivered.key->isEqual(key)) {
            return delivered.notification;
        }
    }
    return {};
}

void NSUserNotificationCenter::tellDelegate(SEL operation, NSUserNotification* notification) {
    const id target = delegate();
    if (target && target->respondsToSelector(operation)) {
        send<>(target, operation, this, notification);
    }
}

} // namespace zr
