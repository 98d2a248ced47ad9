#include <zrbasic/platform/appkit/notification_center.h>

#include <zrbasic/platform/appkit/notification_category.h>
#include <zrbasic/platform/appkit/notification_delivery_p.h>
#include <zrbasic/platform/foundation/dispatch_queue.h>
#include <zrbasic/platform/foundation/error.h>
#include <zrbasic/platform/foundation/set.h>
#include <zrbasic/platform/foundation/uuid.h>

#include <algorithm>
#include <utility>

namespace zr {
namespace {

/// The request has nothing to show.
constexpr NSInteger noContentCode = 1401;
constexpr NSInteger notAllowedCode = 1;

bool isNamed(UNNotificationRequest* request, NSString* identifier) {
    const Ref<NSString> own = request->identifier();
    return own && own->isEqual(identifier);
}

dispatch_time_t deadlineAfter(NSTimeInterval seconds) {
    // More than there is room for in nanoseconds is more than anybody waits.
    constexpr double mostSeconds = 9e9;
    return seconds < mostSeconds ? dispatch_time(DISPATCH_TIME_NOW, static_cast<std::int64_t>(seconds * 1e9))
                                 : DISPATCH_TIME_FOREVER;
}

} // namespace

void UNUserNotificationCenterDelegate::userNotificationCenter_didReceiveNotificationResponse_withCompletionHandler(
    UNUserNotificationCenter*, UNNotificationResponse*, std::function<void()> completionHandler) {
    completionHandler();
}

ZR_DEFINE_CLASS(UNUserNotificationCenter) {
    using Center = UNUserNotificationCenter;
    is.classMethod<&Center::currentNotificationCenter>("currentNotificationCenter");
    is.method<&Center::delegate>("delegate");
    is.method<&Center::setDelegate>("setDelegate:");
    is.method<&Center::setNotificationCategories>("setNotificationCategories:");
    is.method<&Center::getNotificationCategoriesWithCompletionHandler>(
        "getNotificationCategoriesWithCompletionHandler:");
    is.method<&Center::addNotificationRequest_withCompletionHandler>("addNotificationRequest:withCompletionHandler:");
    is.method<&Center::getPendingNotificationRequestsWithCompletionHandler>(
        "getPendingNotificationRequestsWithCompletionHandler:");
    is.method<&Center::removePendingNotificationRequestsWithIdentifiers>(
        "removePendingNotificationRequestsWithIdentifiers:");
    is.method<&Center::removeAllPendingNotificationRequests>("removeAllPendingNotificationRequests");
    is.method<&Center::getDeliveredNotificationsWithCompletionHandler>(
        "getDeliveredNotificationsWithCompletionHandler:");
    is.method<&Center::removeDeliveredNotificationsWithIdentifiers>("removeDeliveredNotificationsWithIdentifiers:");
    is.method<&Center::removeAllDeliveredNotifications>("removeAllDeliveredNotifications");
}

UNUserNotificationCenter::~UNUserNotificationCenter() = default;

Ref<UNUserNotificationCenter> UNUserNotificationCenter::currentNotificationCenter() {
    static UNUserNotificationCenter* const shared = make<UNUserNotificationCenter>().leak();
    return shared;
}

void UNUserNotificationCenter::setNotificationCategories(NSSet* categories) {
    m_categories = NSSet::setWithSet(categories);
}

void UNUserNotificationCenter::getNotificationCategoriesWithCompletionHandler(
    FunctionRef<void(NSSet* categories)> handler) const {
    // Kept, as the handler may register others.
    const Ref<NSSet> categories = m_categories ? m_categories : NSSet::set();
    if (handler) {
        handler(categories);
    }
}

void UNUserNotificationCenter::addNotificationRequest_withCompletionHandler(UNNotificationRequest* request,
                                                                            FunctionRef<void(NSError* error)> handler) {
    Ref<NSError> error;
    if (request && request->content()) {
        const Ref<UNNotificationRequest> kept(request);
        removePending(request->identifier());
        const Ref<UNNotificationTrigger> trigger = request->trigger();
        if (const auto* const delay = cast<UNTimeIntervalNotificationTrigger>(trigger)) {
            schedule(request, delay->timeInterval());
        } else if (!deliver(request)) {
            error = NSError::errorWithDomain_code_userInfo("UNErrorDomain"_ns, notAllowedCode, nullptr);
        }
    } else {
        error = NSError::errorWithDomain_code_userInfo("UNErrorDomain"_ns, noContentCode, nullptr);
    }
    if (handler) {
        handler(error);
    }
}

void UNUserNotificationCenter::schedule(UNNotificationRequest* request, NSTimeInterval seconds) {
    const std::uint64_t serial = m_nextSerial++;
    m_pending.push_back({request, serial});
    const Ref<UNUserNotificationCenter> self(this);
    dispatch_after(deadlineAfter(seconds), dispatch_get_main_queue(), [self, serial] { self->deliverPending(serial); });
}

void UNUserNotificationCenter::deliverPending(std::uint64_t serial) {
    const auto place = std::find_if(m_pending.begin(), m_pending.end(),
                                    [serial](const Pending& pending) { return pending.serial == serial; });
    // Gone when it was removed or replaced meanwhile.
    if (place == m_pending.end()) {
        return;
    }
    const Ref<UNNotificationRequest> request = place->request;
    m_pending.erase(place);
    const Ref<UNNotificationTrigger> trigger = request->trigger();
    const auto* const delay = cast<UNTimeIntervalNotificationTrigger>(trigger);
    if (delay && delay->repeats()) {
        schedule(request, delay->timeInterval());
    }
    deliver(request);
}

bool UNUserNotificationCenter::deliver(UNNotificationRequest* request) {
    const Ref<UNNotification> notification = make<UNNotification>();
    notification->m_date = NSDate::date();
    notification->m_request = request;
    Ref<NSString> key = takeDelivered(request->identifier());
    if (!key) {
        key = NSUUID::UUID()->UUIDString();
    }
    // In the list before it is shown: a click may come while it is being posted.
    m_delivered.push_back({notification, key});
    return detail::post(postingOf(request->content(), key), *this);
}

NotificationPosting UNUserNotificationCenter::postingOf(UNNotificationContent* content,
                                                        const Ref<NSString>& key) const {
    NotificationPosting posting{key, content->title(),           content->subtitle(), content->body(),
                                {},  content->sound() != nullptr};
    const Ref<NSString> wanted = content->categoryIdentifier();
    for (const id& member : m_categories) {
        const auto* const category = cast<UNNotificationCategory>(member);
        const Ref<NSString> identifier = category ? category->identifier() : nullptr;
        if (!identifier || !identifier->isEqual(wanted)) {
            continue;
        }
        for (const id& element : category->actions()) {
            const auto* const action = cast<UNNotificationAction>(element);
            if (action && action->identifier() && action->title() && action->title()->length() > 0) {
                posting.buttons.push_back({action->identifier(), action->title()});
            }
        }
        break;
    }
    return posting;
}

void UNUserNotificationCenter::getPendingNotificationRequestsWithCompletionHandler(
    FunctionRef<void(NSArray* requests)> handler) const {
    if (handler) {
        handler(detail::listOf(m_pending, &Pending::request));
    }
}

void UNUserNotificationCenter::removePendingNotificationRequestsWithIdentifiers(NSArray* identifiers) {
    for (const id& identifier : identifiers) {
        removePending(cast<NSString>(identifier));
    }
}

void UNUserNotificationCenter::removeAllPendingNotificationRequests() {
    std::exchange(m_pending, {}).clear();
}

void UNUserNotificationCenter::removePending(NSString* identifier) {
    const auto place = std::find_if(m_pending.begin(), m_pending.end(), [identifier](const Pending& pending) {
        return isNamed(pending.request, identifier);
    });
    if (place != m_pending.end()) {
        const Pending taken = std::move(*place);
        m_pending.erase(place);
    }
}

void UNUserNotificationCenter::getDeliveredNotificationsWithCompletionHandler(
    FunctionRef<void(NSArray* notifications)> handler) const {
    if (handler) {
        handler(detail::listOf(m_delivered, &Delivered::notification));
    }
}

void UNUserNotificationCenter::removeDeliveredNotificationsWithIdentifiers(NSArray* identifiers) {
    for (const id& identifier : identifiers) {
        if (const Ref<NSString> key = takeDelivered(cast<NSString>(identifier))) {
            detail::withdraw(key);
        }
    }
}

void UNUserNotificationCenter::removeAllDeliveredNotifications() {
    for (const Delivered& delivered : std::exchange(m_delivered, {})) {
        detail::withdraw(delivered.key);
    }
}

Ref<NSString> UNUserNotificationCenter::takeDelivered(NSString* identifier) {
    const auto place = std::find_if(m_delivered.begin(), m_delivered.end(), [identifier](const Delivered& delivered) {
        return isNamed(delivered.notification->request(), identifier);
    });
    if (place == m_delivered.end()) {
        return {};
    }
    const Delivered taken = std::move(*place);
    m_delivered.erase(place);
    return taken.key;
}

void UNUserNotificationCenter::notificationWasClicked(NSString* key) {
    notificationButtonWasClicked(key, UNNotificationDefaultActionIdentifier());
}

void UNUserNotificationCenter::notificationButtonWasClicked(NSString* key, NSString* buttonIdentifier) {
    const auto place = std::find_if(m_delivered.begin(), m_delivered.end(),
                                    [key](const Delivered& delivered) { return delivered.key->isEqual(key); });
    const SEL operation = "userNotificationCenter:didReceiveNotificationResponse:withCompletionHandler:"_sel;
    const id target = delegate();
    if (place == m_delivered.end() || !target || !target->respondsToSelector(operation)) {
        return;
    }
    const Ref<UNNotificationResponse> response = make<UNNotificationResponse>();
    response->m_notification = place->notification.get();
    response->m_actionIdentifier = buttonIdentifier;
    send<>(target, operation, this, response, std::function<void()>([] {}));
}

void UNUserNotificationCenter::notificationWasClosed(NSString* key) {
    const auto place = std::find_if(m_delivered.begin(), m_delivered.end(),
                                    [key](const Delivered& delivered) { return delivered.key->isEqual(key); });
    if (place != m_delivered.end()) {
        const Delivered taken = std::move(*place);
        m_delivered.erase(place);
    }
}

} // namespace zr
