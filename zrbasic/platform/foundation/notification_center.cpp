#include <zrbasic/platform/foundation/notification_center.h>

#include <zrbasic/platform/foundation/callback_message_p.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/string.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <mutex>
#include <unordered_map>
#include <utility>
#include <vector>

namespace zr {
namespace {

/// One registration; for a callback, also the token that stands for it.
class NotificationRegistration final : public NSObject {
    ZR_OBJECT(NotificationRegistration, NSObject)

  public:
    [[nodiscard]] bool isFor(const NSObject* posted) const { return !hasObject || object.refersTo(posted); }

    [[nodiscard]] bool wasMadeFor(const NSString* wantedName, const NSObject* wantedObject) const {
        return (!wantedName || (name && name->view() == wantedName->view())) &&
               (!wantedObject || (hasObject && object.refersTo(wantedObject)));
    }

    /// Whether it can never be told again.
    [[nodiscard]] bool isDead() const { return (!block && observer.expired()) || (hasObject && object.expired()); }

    void tell(NSNotification* notification) const {
        if (hasEnded.load(std::memory_order_acquire)) {
            return;
        }
        if (block) {
            block(notification);
        } else if (const id target = observer.lock()) {
            detail::sendCallback(target, selector, notification);
        }
    }

    std::uint64_t serial = 0;
    Ref<NSString> name;
    bool hasObject = false;
    // Weak references keep the addresses from being used again, so comparing addresses stays right.
    Weak<NSObject> object;
    Weak<NSObject> observer;
    /// The address that it is removed by.
    const NSObject* key = nullptr;
    SEL selector;
    NSNotificationBlock block;
    std::atomic<bool> hasEnded{false};
};

/// Oldest first.
using RegistrationList = std::vector<Ref<NotificationRegistration>>;

struct NameHash {
    using is_transparent = void;
    std::size_t operator()(const NSString* name) const { return name->NSString::hash(); }
};

struct NameEqual {
    using is_transparent = void;
    bool operator()(const NSString* one, const NSString* other) const { return one->view() == other->view(); }
};

} // namespace

class NSNotificationCenter::Registrations {
  public:
    void add(const Ref<NotificationRegistration>& added) {
        // What ends goes behind the lock in all of these: what a callback holds may come back here.
        RegistrationList ended;
        const std::lock_guard lock(m_mutex);
        if (m_count >= m_countToClearAt) {
            ended = takeDead();
            m_countToClearAt = std::max(leastCountToClearAt, 2 * m_count);
        }
        added->serial = m_nextSerial++;
        m_byKey[added->key].push_back(added);
        (added->name ? m_byName[added->name] : m_forEveryName).push_back(added);
        ++m_count;
    }

    void remove(const NSObject* key, const NSString* name, const NSObject* object) {
        RegistrationList ended;
        const std::lock_guard lock(m_mutex);
        const auto place = m_byKey.find(key);
        if (place == m_byKey.end()) {
            return;
        }
        for (const Ref<NotificationRegistration>& registration : place->second) {
            if (registration->wasMadeFor(name, object)) {
                ended.push_back(registration);
            }
        }
        endAll(ended);
    }

    void removeDead(const RegistrationList& told) {
        RegistrationList ended;
        const std::lock_guard lock(m_mutex);
        std::copy_if(told.begin(), told.end(), std::back_inserter(ended), [](const auto& registration) {
            return registration->isDead() && !registration->hasEnded.load(std::memory_order_relaxed);
        });
        endAll(ended);
    }

    /// Those that are to be told of a post, oldest first.
    [[nodiscard]] RegistrationList listeners(const NSString* name, const NSObject* object) const {
        static const RegistrationList none;
        RegistrationList found;
        const std::lock_guard lock(m_mutex);
        const auto place = name ? m_byName.find(name) : m_byName.end();
        const RegistrationList& named = place != m_byName.end() ? place->second : none;
        found.reserve(named.size() + m_forEveryName.size());
        auto next = m_forEveryName.begin();
        const auto take = [&found, object](const Ref<NotificationRegistration>& registration) {
            if (registration->isFor(object)) {
                found.push_back(registration);
            }
        };
        for (const Ref<NotificationRegistration>& registration : named) {
            for (; next != m_forEveryName.end() && (*next)->serial < registration->serial; ++next) {
                take(*next);
            }
            take(registration);
        }
        std::for_each(next, m_forEveryName.end(), take);
        return found;
    }

    void tell(const RegistrationList& listeners, NSNotification* notification) {
        bool isAnyDead = false;
        for (const Ref<NotificationRegistration>& registration : listeners) {
            registration->tell(notification);
            isAnyDead = isAnyDead || registration->isDead();
        }
        if (isAnyDead) {
            removeDead(listeners);
        }
    }

  private:
    static constexpr std::size_t leastCountToClearAt = 64;

    /// The caller keeps them until the lock is open again.
    void endAll(const RegistrationList& ended) {
        for (const Ref<NotificationRegistration>& registration : ended) {
            registration->hasEnded.store(true, std::memory_order_release);
            const auto byKey = m_byKey.find(registration->key);
            takeOut(byKey->second, registration->serial);
            if (byKey->second.empty()) {
                m_byKey.erase(byKey);
            }
            if (!registration->name) {
                takeOut(m_forEveryName, registration->serial);
            } else {
                const auto byName = m_byName.find(registration->name);
                takeOut(byName->second, registration->serial);
                if (byName->second.empty()) {
                    m_byName.erase(byName);
                }
            }
            --m_count;
        }
    }

    static void takeOut(RegistrationList& list, std::uint64_t serial) {
        const auto isBefore = [](const auto& registration, std::uint64_t wanted) {
            return registration->serial < wanted;
        };
        list.erase(std::lower_bound(list.begin(), list.end(), serial, isBefore));
    }

    RegistrationList takeDead() {
        RegistrationList ended;
        for (const auto& [key, list] : m_byKey) {
            std::copy_if(list.begin(), list.end(), std::back_inserter(ended),
                         [](const auto& registration) { return registration->isDead(); });
        }
        endAll(ended);
        return ended;
    }

    mutable std::mutex m_mutex;
    std::unordered_map<Ref<NSString>, RegistrationList, NameHash, NameEqual> m_byName;
    RegistrationList m_forEveryName;
    std::unordered_map<const NSObject*, RegistrationList> m_byKey;
    std::uint64_t m_nextSerial = 0;
    std::size_t m_count = 0;
    /// The dead that nobody posts to must not pile up.
    std::size_t m_countToClearAt = leastCountToClearAt;
};

ZR_DEFINE_CLASS(NSNotificationCenter) {
    using Center = NSNotificationCenter;
    is.classMethod<&Center::defaultCenter>("defaultCenter");
    is.method<&Center::addObserver_selector_name_object>("addObserver:selector:name:object:");
    is.method<&Center::addObserverForName_object_usingBlock>("addObserverForName:object:usingBlock:");
    is.method<&Center::removeObserver>("removeObserver:");
    is.method<&Center::removeObserver_name_object>("removeObserver:name:object:");
    is.method<&Center::postNotification>("postNotification:");
    is.method<&Center::postNotificationName_object>("postNotificationName:object:");
    is.method<&Center::postNotificationName_object_userInfo>("postNotificationName:object:userInfo:");
}

NSNotificationCenter::NSNotificationCenter() : m_registrations(std::make_unique<Registrations>()) {}

NSNotificationCenter::~NSNotificationCenter() = default;

Ref<NSNotificationCenter> NSNotificationCenter::defaultCenter() {
    static NSNotificationCenter* const shared = make<NSNotificationCenter>().leak();
    return shared;
}

void NSNotificationCenter::addObserver_selector_name_object(NSObject* observer, SEL selector, NSString* name,
                                                            NSObject* object) {
    if (!observer || !selector) {
        return;
    }
    const Ref<NotificationRegistration> registration = alloc<NotificationRegistration>();
    registration->name = name ? cast<NSString>(name->copy()) : nullptr;
    registration->hasObject = object != nullptr;
    registration->object = object;
    registration->observer = observer;
    registration->key = observer;
    registration->selector = selector;
    m_registrations->add(registration);
}

id NSNotificationCenter::addObserverForName_object_usingBlock(NSString* name, NSObject* object,
                                                              NSNotificationBlock block) {
    if (!block) {
        return {};
    }
    const Ref<NotificationRegistration> registration = alloc<NotificationRegistration>();
    registration->name = name ? cast<NSString>(name->copy()) : nullptr;
    registration->hasObject = object != nullptr;
    registration->object = object;
    registration->key = registration.get();
    registration->block = std::move(block);
    m_registrations->add(registration);
    return registration;
}

void NSNotificationCenter::removeObserver(NSObject* observer) {
    removeObserver_name_object(observer, nullptr, nullptr);
}

void NSNotificationCenter::removeObserver_name_object(NSObject* observer, NSString* name, NSObject* object) {
    m_registrations->remove(observer, name, object);
}

void NSNotificationCenter::postNotification(NSNotification* notification) {
    if (!notification) {
        return;
    }
    // Observers may let go of both.
    const Ref<NSNotificationCenter> self(this);
    const Ref<NSNotification> kept(notification);
    m_registrations->tell(m_registrations->listeners(notification->name(), notification->object()), notification);
}

void NSNotificationCenter::postNotificationName_object(NSString* name, NSObject* object) {
    postNotificationName_object_userInfo(name, object, nullptr);
}

void NSNotificationCenter::postNotificationName_object_userInfo(NSString* name, NSObject* object,
                                                                NSDictionary* userInfo) {
    const RegistrationList listeners = m_registrations->listeners(name, object);
    if (listeners.empty()) {
        return;
    }
    const Ref<NSNotificationCenter> self(this);
    m_registrations->tell(listeners, NSNotification::notificationWithName_object_userInfo(name, object, userInfo));
}

} // namespace zr
