#pragma once

#include <zrbasic/platform/foundation/string.h>

#include <functional>

namespace zr {

/// Called after a property was set, with the observed object, the property's name, the value before and the value
/// set. All are borrowed until it returns; the values may be null.
///
/// A parameter may be a plain pointer or a reference that keeps (`id`); what the callback returns is ignored.
using ObserverBlock = std::function<void(NSObject* object, NSString* key, NSObject* oldValue, NSObject* newValue)>;

/// One registration.
class ZR_EXPORT _ZRXKVOObserverCache : public NSObject {
    ZR_DECLARE_CLASS(_ZRXKVOObserverCache, NSObject)

  public:
    ~_ZRXKVOObserverCache() override;

    /// The key path that the registration is for, copied.
    [[nodiscard]] Ref<NSString> observerKey() const { return m_observerKey; }
    void setObserverKey(NSString* observerKey);
    /// Held weakly: null once the observer is gone.
    [[nodiscard]] id observerObject() const { return m_observerObject.lock(); }
    void setObserverObject(NSObject* observerObject) { m_observerObject = Weak<NSObject>(observerObject); }
    [[nodiscard]] const ObserverBlock& observerBlock() const { return m_observerBlock; }
    void setObserverBlock(const ObserverBlock& observerBlock) { m_observerBlock = observerBlock; }

  private:
    friend struct ObserverWalk;

    [[nodiscard]] bool isFor(const NSString* key) const {
        return m_observerKey == key || (m_observerKey && m_observerKey->view() == key->view());
    }

    Ref<NSString> m_observerKey;
    Weak<NSObject> m_observerObject;
    ObserverBlock m_observerBlock;
};

// NSObject(ZRXObserver)
//
// Callbacks for properties of single objects. Use it to follow values into views; an observer that is an object with
// a method of its own may use `addObserver_forKeyPath_options_context` as well, and both work together.
//
// The observed object is incised (see incision.h): its setter for the key path is replaced, for calls by name and C++
// calls alike. A set tells, in this order, the platform's observers and then the callbacks, newest first, on the
// thread of the set; setting an equal value counts like any other.
//
// Observing is not safe from several threads at once: register and set on one thread. Observers may die on any.

/// Runs `block` after every set of the object property `keyPath` of `self`, for as long as `observer` lives. Nothing
/// is kept alive but the block, until the first set after the observer's end, or the object's end.
///
/// Every registration counts, two of the same are called twice. A registration made while callbacks run is first
/// called by the next set. A set made by a callback runs all callbacks at once, before the older ones of the first
/// set get their turn.
///
/// There is no way to end a registration but the observer's end. Null and empty arguments do nothing. When the class
/// has no such setter, when the property is no object, or when the key path begins with an upper-case letter, the
/// registration is kept but never called, and sets work as before.
ZR_EXPORT void addObserver_forKeyPath_withBlock(NSObject* self, NSObject* observer, NSString* keyPath,
                                                ObserverBlock block);

namespace detail {

/// The key under which an observed object's registrations are attached to it: a mutable dictionary from key path to a
/// mutable array of `_ZRXKVOObserverCache`, oldest first.
[[nodiscard]] ZR_EXPORT const void* observerRegistryKey();

/// What takes the place of an observed setter.
ZR_EXPORT void __ZRXObserverSetter(NSObject* self, SEL setter, NSObject* value);

} // namespace detail

} // namespace zr
