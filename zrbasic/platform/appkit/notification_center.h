#pragma once

#include <zrbasic/platform/appkit/notification_request.h>
#include <zrbasic/platform/appkit/notification_service.h>
#include <zrbasic/platform/runtime/function_ref.h>

#include <cstdint>
#include <functional>
#include <vector>

namespace zr {

class NSArray;
class NSError;
class NSSet;
class UNUserNotificationCenter;

/// Hears about notifications. The operation does nothing unless it is overridden.
class ZR_EXPORT UNUserNotificationCenterDelegate {
    ZR_PROTOCOL(UNUserNotificationCenterDelegate)
  public:
    /// The user clicked a notification or one of its buttons. `completionHandler` is never empty and is to be called
    /// when the response has been dealt with.
    virtual void userNotificationCenter_didReceiveNotificationResponse_withCompletionHandler(
        UNUserNotificationCenter* center, UNNotificationResponse* response, std::function<void()> completionHandler);
    ZR_PROTOCOL_METHOD(userNotificationCenter_didReceiveNotificationResponse_withCompletionHandler,
                       "userNotificationCenter:didReceiveNotificationResponse:withCompletionHandler:")
};

/// Where notifications of the new interface go: delivers them through the toolkit's service with the buttons of their
/// category, keeps the delivered and the pending ones, and tells the delegate what the user did.
///
/// Without a service nothing is shown, which handlers are told, and everything else is as it would be. Handlers are
/// called before the operation returns, and may be empty. Used on the main thread.
class ZR_EXPORT UNUserNotificationCenter final : public NSObject, private NotificationReceiver {
    ZR_DECLARE_CLASS(UNUserNotificationCenter, NSObject)
  public:
    ~UNUserNotificationCenter() override;

    /// The application's centre: the same object every time.
    [[nodiscard]] static Ref<UNUserNotificationCenter> currentNotificationCenter();

    /// A `UNUserNotificationCenterDelegate`, or any object that responds to its operation; not kept. Null by default.
    [[nodiscard]] id delegate() const { return m_delegate.lock(); }
    void setDelegate(NSObject* delegate) { m_delegate = Weak<NSObject>(delegate); }

    /// Registers these `UNNotificationCategory` objects and no others; null is none. Notifications that are shown
    /// already keep their buttons.
    void setNotificationCategories(NSSet* categories);
    /// Gives the registered ones; never null.
    void getNotificationCategoriesWithCompletionHandler(FunctionRef<void(NSSet* categories)> handler) const;

    /// Delivers the request: at once, or when its trigger says so while the main queue runs (see dispatch_queue.h). It
    /// takes the place of a pending or delivered one with an equal identifier.
    ///
    /// The handler is given null, or an error of domain "UNErrorDomain": code 1401 when the request is null or has no
    /// content, code 1 when there was nobody to show it. It counts as delivered all the same then.
    void addNotificationRequest_withCompletionHandler(UNNotificationRequest* request,
                                                      FunctionRef<void(NSError* error)> handler = {});
    /// Gives the `UNNotificationRequest` objects that wait for their trigger, in the order they were added in.
    void getPendingNotificationRequestsWithCompletionHandler(FunctionRef<void(NSArray* requests)> handler) const;
    /// Unknown identifiers and null do nothing in these.
    void removePendingNotificationRequestsWithIdentifiers(NSArray* identifiers);
    void removeAllPendingNotificationRequests();

    /// Gives the `UNNotification` objects that were delivered and neither removed nor closed since, the latest last.
    void getDeliveredNotificationsWithCompletionHandler(FunctionRef<void(NSArray* notifications)> handler) const;
    /// Takes them from the list and from the screen.
    void removeDeliveredNotificationsWithIdentifiers(NSArray* identifiers);
    void removeAllDeliveredNotifications();

  private:
    struct Delivered {
        Ref<UNNotification> notification;
        /// What the service knows it by.
        Ref<NSString> key;
    };
    struct Pending {
        Ref<UNNotificationRequest> request;
        std::uint64_t serial;
    };

    void notificationWasClicked(NSString* key) override;
    void notificationButtonWasClicked(NSString* key, NSString* buttonIdentifier) override;
    void notificationWasClosed(NSString* key) override;

    void schedule(UNNotificationRequest* request, NSTimeInterval seconds);
    void deliverPending(std::uint64_t serial);
    /// False when there was nobody to show it.
    bool deliver(UNNotificationRequest* request);
    [[nodiscard]] NotificationPosting postingOf(UNNotificationContent* content, const Ref<NSString>& key) const;
    void removePending(NSString* identifier);
    /// Takes the one with that identifier out of the list and gives back its key, null when there is none.
    [[nodiscard]] Ref<NSString> takeDelivered(NSString* identifier);

    Weak<NSObject> m_delegate;
    Ref<NSSet> m_categories;
    std::vector<Delivered> m_delivered;
    std::vector<Pending> m_pending;
    std::uint64_t m_nextSerial = 0;
};

} // namespace zr
