#include <zrbasic/platform/runtime/association.h>

#include <zrbasic/platform/runtime/extras_p.h>
#include <zrbasic/platform/runtime/synchronized.h>

#include <algorithm>

namespace zr {

namespace {

bool holds(objc_AssociationPolicy policy) {
    return policy != OBJC_ASSOCIATION_ASSIGN;
}

bool copies(objc_AssociationPolicy policy) {
    return policy == OBJC_ASSOCIATION_COPY || policy == OBJC_ASSOCIATION_COPY_NONATOMIC;
}

void letGo(const detail::ObjectExtras::Association& association) {
    if (holds(association.policy) && association.value) {
        detail::release(association.value);
    }
}

} // namespace

namespace detail {

ObjectExtras::~ObjectExtras() {
    for (const Association& association : associations) {
        letGo(association);
    }
    if (NSObject* const info = observationInfo.load(std::memory_order_relaxed)) {
        release(info);
    }
    delete mutex.load(std::memory_order_relaxed);
}

ObjectExtras& ensureExtras(const NSObject* object) {
    std::atomic<ObjectExtras*>& place = headerOf(object)->extras;
    ObjectExtras* extras = place.load(std::memory_order_acquire);
    if (!extras) {
        auto* const made = new ObjectExtras;
        if (place.compare_exchange_strong(extras, made, std::memory_order_acq_rel, std::memory_order_acquire)) {
            return *made;
        }
        delete made;
    }
    return *extras;
}

} // namespace detail

void objc_setAssociatedObject(NSObject* object, const void* key, NSObject* value, objc_AssociationPolicy policy) {
    if (!object) {
        return;
    }
    id held(value);
    if (value && copies(policy)) {
        held = value->copy();
    }
    if (!held && !detail::extrasOf(object)) {
        return;
    }
    detail::ObjectExtras& extras = detail::ensureExtras(object);
    detail::ObjectExtras::Association old{key, OBJC_ASSOCIATION_ASSIGN, nullptr};
    {
        const std::lock_guard lock(extras.lock);
        const auto place = std::find_if(extras.associations.begin(), extras.associations.end(),
                                        [&](const auto& association) { return association.key == key; });
        if (place != extras.associations.end()) {
            old = *place;
            if (held) {
                *place = {key, policy, held.get()};
            } else {
                extras.associations.erase(place);
            }
        } else if (held) {
            extras.associations.push_back({key, policy, held.get()});
        }
    }
    if (held && holds(policy)) {
        // The table holds the count from here on.
        static_cast<void>(held.leak());
    }
    // Outside the lock: the old value's end may come back here.
    letGo(old);
}

id objc_getAssociatedObject(const NSObject* object, const void* key) {
    if (!object) {
        return {};
    }
    detail::ObjectExtras* const extras = detail::extrasOf(object);
    if (!extras) {
        return {};
    }
    const std::lock_guard lock(extras->lock);
    for (const auto& association : extras->associations) {
        if (association.key == key) {
            return id(association.value);
        }
    }
    return {};
}

void objc_removeAssociatedObjects(NSObject* object) {
    if (!object) {
        return;
    }
    detail::ObjectExtras* const extras = detail::extrasOf(object);
    if (!extras) {
        return;
    }
    std::vector<detail::ObjectExtras::Association> removed;
    {
        const std::lock_guard lock(extras->lock);
        removed.swap(extras->associations);
    }
    for (const auto& association : removed) {
        letGo(association);
    }
}

Synchronized::Synchronized(const NSObject* object) : m_object(const_cast<NSObject*>(object)) {
    if (!object) {
        return;
    }
    std::atomic<std::recursive_mutex*>& place = detail::ensureExtras(object).mutex;
    m_mutex = place.load(std::memory_order_acquire);
    if (!m_mutex) {
        auto made = std::make_unique<std::recursive_mutex>();
        if (place.compare_exchange_strong(m_mutex, made.get(), std::memory_order_acq_rel, std::memory_order_acquire)) {
            m_mutex = made.release();
        }
    }
    m_mutex->lock();
}

Synchronized::~Synchronized() {
    if (m_mutex) {
        m_mutex->unlock();
    }
}

} // namespace zr
