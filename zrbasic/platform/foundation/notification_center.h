#pragma once

#include <zrbasic/platform/foundation/notification.h>

#include <functional>
#include <memory>

namespace zr {

/// Called with a notification, which is borrowed until it returns.
using NSNotificationBlock = std::function<void(NSNotification* notification)>;

/// Hands notifications around: who posts one need not know who listens.
///
/// A post tells everybody before it returns, on the thread that posts, in the order of registration. What is registered
/// meanwhile is first told of the next post; what was removed before its turn is not told any more. Observers may post,
/// add and remove while they are told. An exception of an observer ends the post and reaches the poster; observers
/// after it are not told.
///
/// Neither observers nor observed objects are kept alive, and a registration ends with either of them. An observer is
/// kept alive while it is told. An object whose end has begun may still remove its registrations, but can neither post
/// about itself nor register.
///
/// Safe from any thread. A registration that another thread removes may be in the middle of being told.
class ZR_EXPORT NSNotificationCenter : public NSObject {
    ZR_DECLARE_CLASS(NSNotificationCenter, NSObject)
  public:
    NSNotificationCenter();
    ~NSNotificationCenter() override;

    /// The application's centre: the same object every time.
    [[nodiscard]] static Ref<NSNotificationCenter> defaultCenter();

    /// Sends `observer` the message `selector`, with the notification when the message takes an argument, whenever
    /// `name` is posted about `object`. A null name stands for every name, a null object for every object and for none.
    /// Objects are told apart by identity. Registering twice tells twice. A null observer or selector does nothing.
    void addObserver_selector_name_object(NSObject* observer, SEL selector, NSString* name, NSObject* object);
    /// Calls `block` instead of an object. The result stands for the registration: removing it as an observer ends it.
    /// It need not be kept; the block is, until then. An empty block is not registered and gives null.
    id addObserverForName_object_usingBlock(NSString* name, NSObject* object, NSNotificationBlock block);

    /// Ends all registrations of `observer`. One that has none, and null, do nothing.
    void removeObserver(NSObject* observer);
    /// Ends those that were made for this very name and object. Null stands for any: a registration for every name ends
    /// only when `name` is null.
    void removeObserver_name_object(NSObject* observer, NSString* name, NSObject* object);

    /// Null does nothing.
    void postNotification(NSNotification* notification);
    /// Posts a new notification, which is not even made when nobody listens.
    void postNotificationName_object(NSString* name, NSObject* object);
    void postNotificationName_object_userInfo(NSString* name, NSObject* object, NSDictionary* userInfo);

  private:
    class Registrations;

    const std::unique_ptr<Registrations> m_registrations;
};

} // namespace zr
