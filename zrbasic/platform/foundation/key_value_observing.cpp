#include <zrbasic/platform/foundation/key_value_observing.h>

#include <zrbasic/platform/foundation/key_value_coding.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/notifying_class_p.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/per_thread_p.h>
#include <zrbasic/platform/runtime/extras_p.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <mutex>
#include <vector>

namespace zr {

using detail::PerThread;

namespace {

/// One registration.
struct Observance {
    Weak<NSObject> observer;
    Ref<NSString> key;
    NSUInteger options = 0;
    void* context = nullptr;
    std::atomic<bool> isOver{false};
};
using SharedObservance = std::shared_ptr<Observance>;

/// Who observes one object.
class ObservationInfo final : public NSObject {
    ZR_OBJECT(ObservationInfo, NSObject)

  public:
    void add(SharedObservance observance) {
        const std::lock_guard lock(m_mutex);
        m_observances.push_back(std::move(observance));
    }

    /// The registrations for `key`, newest first; forgets those of dead observers.
    std::vector<SharedObservance> forKey(NSString* key) {
        const std::lock_guard lock(m_mutex);
        std::erase_if(m_observances, [](const SharedObservance& observance) { return observance->observer.expired(); });
        std::vector<SharedObservance> found;
        std::copy_if(m_observances.rbegin(), m_observances.rend(), std::back_inserter(found),
                     [&](const SharedObservance& observance) { return observance->key->isEqualToString(key); });
        return found;
    }

    bool remove(NSObject* observer, NSString* key, const void* const* context) {
        const std::lock_guard lock(m_mutex);
        const auto newest =
            std::find_if(m_observances.rbegin(), m_observances.rend(), [&](const SharedObservance& observance) {
                return observance->observer.refersTo(observer) && observance->key->isEqualToString(key) &&
                       (!context || *context == observance->context);
            });
        if (newest == m_observances.rend()) {
            return false;
        }
        (*newest)->isOver.store(true, std::memory_order_relaxed);
        m_observances.erase(std::next(newest).base());
        return true;
    }

  private:
    std::mutex m_mutex;
    std::vector<SharedObservance> m_observances;
};

/// A change that has begun: who is to be told, and what was there before.
struct PendingChange {
    NSObject* object;
    // Keeps the address from being used again, so that a forgotten change cannot be taken for another object's.
    Weak<NSObject> watch;
    Ref<NSString> key;
    std::vector<SharedObservance> observances;
    id oldValue;
};

struct PendingChanges {
    std::vector<PendingChange> stack;
    std::size_t roomBeforeCleaning = 64;

    void push(PendingChange change) {
        if (stack.size() >= roomBeforeCleaning) {
            // Changes that were begun and never ended go with their objects.
            std::erase_if(stack, [](const PendingChange& pending) { return pending.watch.expired(); });
            roomBeforeCleaning = std::max<std::size_t>(64, stack.size() * 2);
        }
        stack.push_back(std::move(change));
    }
};

ObservationInfo* infoOf(const NSObject* object) {
    const detail::ObjectExtras* const extras = detail::extrasOf(object);
    return extras ? static_cast<ObservationInfo*>(extras->observationInfo.load(std::memory_order_acquire)) : nullptr;
}

ObservationInfo& ensureInfo(NSObject* object) {
    std::atomic<NSObject*>& place = detail::ensureExtras(object).observationInfo;
    NSObject* known = place.load(std::memory_order_acquire);
    if (!known) {
        Ref<ObservationInfo> made = make<ObservationInfo>();
        if (place.compare_exchange_strong(known, made.get(), std::memory_order_acq_rel, std::memory_order_acquire)) {
            // The object's extras own it from here on.
            return *made.leak();
        }
    }
    return *static_cast<ObservationInfo*>(known);
}

NSObject* orNull(NSObject* value) {
    return value ? value : NSNull::null();
}

void tell(const Observance& observance, NSObject* object, NSString* key, NSDictionary* change) {
    if (observance.isOver.load(std::memory_order_relaxed)) {
        return;
    }
    if (const id observer = observance.observer.lock()) {
        send<void>(observer, "observeValueForKeyPath:ofObject:change:context:"_sel, key, object, change,
                   observance.context);
    }
}

Ref<NSMutableDictionary> newChange() {
    Ref<NSMutableDictionary> change = NSMutableDictionary::dictionary();
    change->setObject_forKey(box<NSUInteger>(NSKeyValueChangeSetting), NSKeyValueChangeKindKey());
    return change;
}

bool wants(const SharedObservance& observance, NSUInteger option) {
    return (observance->options & option) != 0;
}

/// False for an object whose end has begun: nobody may be handed a reference to it any more.
bool isAlive(const NSObject* object) {
    return detail::headerOf(object)->strong.load(std::memory_order_relaxed) != 0;
}

void rootWillChange(NSObject* self, SEL, NSObject* changedKey) {
    ObservationInfo* const info = infoOf(self);
    auto* const key = cast<NSString>(changedKey);
    if (!info || !key || !isAlive(self)) [[likely]] {
        return;
    }
    PendingChanges* const changes = PerThread<PendingChanges>::ensure();
    if (!changes) {
        return;
    }
    const id alive(self);
    std::vector<SharedObservance> observances = info->forKey(key);
    const auto wantsOld = [](const SharedObservance& observance) {
        return wants(observance, NSKeyValueObservingOptionOld);
    };
    id oldValue;
    if (std::any_of(observances.begin(), observances.end(), wantsOld)) {
        oldValue = detail::valueForKeyIfAny(self, key);
    }
    // Pushed even when nobody is to be told, so that pairs inside pairs keep matching.
    changes->push({self, self, cast<NSString>(key->copy()), observances, oldValue});
    for (const SharedObservance& observance : observances) {
        if (wants(observance, NSKeyValueObservingOptionPrior)) {
            const Ref<NSMutableDictionary> change = newChange();
            change->setObject_forKey(box(true), NSKeyValueChangeNotificationIsPriorKey());
            if (wantsOld(observance)) {
                change->setObject_forKey(orNull(oldValue), NSKeyValueChangeOldKey());
            }
            tell(*observance, self, observance->key, change);
        }
    }
}

void rootDidChange(NSObject* self, SEL, NSObject* changedKey) {
    PendingChanges* const changes = PerThread<PendingChanges>::find();
    auto* const key = cast<NSString>(changedKey);
    if (!changes || changes->stack.empty() || !key || !isAlive(self)) [[likely]] {
        return;
    }
    const auto match = std::find_if(changes->stack.rbegin(), changes->stack.rend(), [&](const PendingChange& pending) {
        return pending.object == self && pending.key->isEqualToString(key);
    });
    if (match == changes->stack.rend()) {
        return;
    }
    const id alive(self);
    // Taken out before anybody is told: what they do may begin and end changes of its own.
    const PendingChange pending = std::move(*match);
    changes->stack.erase(std::next(match).base());

    id newValue;
    const auto wantsNew = [](const SharedObservance& observance) {
        return wants(observance, NSKeyValueObservingOptionNew);
    };
    if (std::any_of(pending.observances.begin(), pending.observances.end(), wantsNew)) {
        newValue = detail::valueForKeyIfAny(self, key);
    }
    for (const SharedObservance& observance : pending.observances) {
        const Ref<NSMutableDictionary> change = newChange();
        if (wants(observance, NSKeyValueObservingOptionOld)) {
            change->setObject_forKey(orNull(pending.oldValue), NSKeyValueChangeOldKey());
        }
        if (wantsNew(observance)) {
            change->setObject_forKey(orNull(newValue), NSKeyValueChangeNewKey());
        }
        tell(*observance, self, observance->key, change);
    }
}

void rootObserve(NSObject* self, NSString* keyPath, NSObject*, NSDictionary*, void*) {
    NSException::raise(NSInternalInconsistencyException,
                       "an object of class " + self->class_()->name() + " observes " +
                           (keyPath ? keyPath->utf8() : "(null)") +
                           " but does not answer observeValueForKeyPath:ofObject:change:context:");
}

void remove(NSObject* self, NSObject* observer, NSString* keyPath, const void* const* context) {
    if (!self || !observer || !keyPath) {
        return;
    }
    ObservationInfo* const info = infoOf(self);
    if (info && info->remove(observer, keyPath, context)) {
        return;
    }
    char addresses[2][32];
    std::snprintf(addresses[0], sizeof addresses[0], "%p", static_cast<const void*>(observer));
    std::snprintf(addresses[1], sizeof addresses[1], "%p", static_cast<const void*>(self));
    NSException::raise(NSRangeException, "Cannot remove an observer <" + observer->class_()->name() + ' ' +
                                             addresses[0] + "> for the key path \"" + keyPath->utf8() + "\" from <" +
                                             self->class_()->name() + ' ' + addresses[1] +
                                             "> because it is not registered as an observer.");
}

bool notifiesAutomatically(NSString*) {
    return true;
}

} // namespace

Ref<NSString> NSKeyValueChangeKindKey() {
    return "kind"_ns;
}

Ref<NSString> NSKeyValueChangeNewKey() {
    return "new"_ns;
}

Ref<NSString> NSKeyValueChangeOldKey() {
    return "old"_ns;
}

Ref<NSString> NSKeyValueChangeNotificationIsPriorKey() {
    return "notificationIsPrior"_ns;
}

void addObserver_forKeyPath_options_context(NSObject* self, NSObject* observer, NSString* keyPath, NSUInteger options,
                                            void* context) {
    if (!self || !observer || !keyPath) {
        return;
    }
    const id alive(self);
    const auto observance = std::make_shared<Observance>();
    observance->observer = observer;
    observance->key = Ref<NSString>(cast<NSString>(keyPath->copy()));
    observance->options = options;
    observance->context = context;
    detail::ensureNotifying(self, observance->key);
    ensureInfo(self).add(observance);
    if (options & NSKeyValueObservingOptionInitial) {
        const Ref<NSMutableDictionary> change = newChange();
        if (options & NSKeyValueObservingOptionNew) {
            change->setObject_forKey(orNull(detail::valueForKeyIfAny(self, keyPath)), NSKeyValueChangeNewKey());
        }
        tell(*observance, self, observance->key, change);
    }
}

void removeObserver_forKeyPath(NSObject* self, NSObject* observer, NSString* keyPath) {
    remove(self, observer, keyPath, nullptr);
}

void removeObserver_forKeyPath_context(NSObject* self, NSObject* observer, NSString* keyPath, void* context) {
    const void* const wanted = context;
    remove(self, observer, keyPath, &wanted);
}

void willChangeValueForKey(NSObject* self, NSString* key) {
    if (!self || !key) {
        return;
    }
    const SEL selector = "willChangeValueForKey:"_sel;
    if (detail::lookUp(self->isa(), selector).function == reinterpret_cast<void (*)()>(&rootWillChange)) [[likely]] {
        rootWillChange(self, selector, key);
    } else {
        send<void>(self, selector, key);
    }
}

void didChangeValueForKey(NSObject* self, NSString* key) {
    if (!self || !key) {
        return;
    }
    const SEL selector = "didChangeValueForKey:"_sel;
    if (detail::lookUp(self->isa(), selector).function == reinterpret_cast<void (*)()>(&rootDidChange)) [[likely]] {
        rootDidChange(self, selector, key);
    } else {
        send<void>(self, selector, key);
    }
}

namespace detail {

bool announcesInItsOwnWay(const Class* ofClass) {
    return lookUp(ofClass, "willChangeValueForKey:"_sel) != imp(&rootWillChange) ||
           lookUp(ofClass, "didChangeValueForKey:"_sel) != imp(&rootDidChange);
}

ObservedChange::ObservedChange(NSObject* object, NSString* key) : m_object(object), m_key(key) {
    const PendingChanges* const changes = PerThread<PendingChanges>::find();
    m_depth = changes ? changes->stack.size() : 0;
    willChangeValueForKey(object, key);
}

ObservedChange::~ObservedChange() {
    PendingChanges* const changes = PerThread<PendingChanges>::find();
    if (m_object && changes && changes->stack.size() > m_depth) {
        changes->stack.erase(changes->stack.begin() + static_cast<std::ptrdiff_t>(m_depth), changes->stack.end());
    }
}

void ObservedChange::announce() {
    didChangeValueForKey(std::exchange(m_object, nullptr), m_key);
}

} // namespace detail

ZR_GROUP(NSObject, NSKeyValueObserving) {
    is.method<&addObserver_forKeyPath_options_context>("addObserver:forKeyPath:options:context:");
    is.method<&removeObserver_forKeyPath>("removeObserver:forKeyPath:");
    is.method<&removeObserver_forKeyPath_context>("removeObserver:forKeyPath:context:");
    is.addMethod("willChangeValueForKey:", imp(&rootWillChange));
    is.addMethod("didChangeValueForKey:", imp(&rootDidChange));
    is.method<&rootObserve>("observeValueForKeyPath:ofObject:change:context:");
    is.classMethod<&notifiesAutomatically>("automaticallyNotifiesObserversForKey:");
}

} // namespace zr
