#include <zrbasic/model/observation.h>

#include <zrbasic/model/incision.h>
#include <zrbasic/platform/foundation/key_value_access_p.h>
#include <zrbasic/platform/foundation/key_value_coding.h>
#include <zrbasic/platform/foundation/key_value_observing.h>
#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/per_thread_p.h>
#include <zrbasic/platform/foundation/unicode_p.h>
#include <zrbasic/platform/runtime/extras_p.h>
#include <zrbasic/platform/runtime/runtime_p.h>

#include <array>

namespace zr {

ZR_DEFINE_CLASS(_ZRXKVOObserverCache) {
    is.method<&_ZRXKVOObserverCache::observerKey>("observerKey");
    is.method<&_ZRXKVOObserverCache::setObserverKey>("setObserverKey:");
    is.method<&_ZRXKVOObserverCache::observerObject>("observerObject");
    is.method<&_ZRXKVOObserverCache::setObserverObject>("setObserverObject:");
    is.method<&_ZRXKVOObserverCache::observerBlock>("observerBlock");
    is.method<&_ZRXKVOObserverCache::setObserverBlock>("setObserverBlock:");
}

_ZRXKVOObserverCache::~_ZRXKVOObserverCache() = default;

void _ZRXKVOObserverCache::setObserverKey(NSString* observerKey) {
    m_observerKey = Ref<NSString>(observerKey ? cast<NSString>(observerKey->copy()) : nullptr);
}

/// One walk over the registrations of a key, from the newest to the oldest. The walks of a thread know each other:
/// one that takes out a dead registration moves those that are under way on the same array.
struct ObserverWalk {
    explicit ObserverWalk(NSMutableArray* registrations);
    ~ObserverWalk();
    ObserverWalk(const ObserverWalk&) = delete;
    ObserverWalk& operator=(const ObserverWalk&) = delete;

    void call(NSObject* object, NSString* key, NSObject* oldValue, NSObject* newValue);
    void takeOut(std::size_t index);

    Ref<NSMutableArray> registrations;
    /// So many of the oldest registrations are still to come.
    std::size_t left;
    ObserverWalk* outer;
};

namespace {

constexpr char registryKey[] = "__com.zarvo.cachedKVOObserverArrayKey";

#if defined(__linux__)
[[gnu::tls_model("initial-exec")]]
#endif
constinit thread_local ObserverWalk* innermostWalk = nullptr;

/// What a set through the observing setter runs, for one class and setter.
struct SetterPlan {
    const Class* ofClass = nullptr;
    const detail::SelectorRecord* setter = nullptr;
    std::uint64_t generation = 0;
    /// Lives for ever. Null when the setter is named like none.
    NSString* key = nullptr;
    /// Straight access to the variable; null unless both accessors are as declared.
    Property variable = nullptr;
    detail::ObjectGetter getter;
    bool announcesInItsOwnWay = false;
};

struct SetterPlans {
    std::array<SetterPlan, 128> plans;
};

/// The key that a setter serves, or null: worked out once for every selector. "setPrice:" serves "price", and
/// "setURL:" serves "uRL", which is not the key that it was observed by.
NSString* keyOfSetter(SEL setter) {
    std::atomic<void*>& memo = setter.record()->memo;
    static const char noKey = 0;
    void* known = memo.load(std::memory_order_acquire);
    if (!known) {
        const std::u16string name = detail::utf16FromUtf8Replacing(setter.name());
        void* made = const_cast<char*>(&noKey);
        Ref<NSString> key;
        if (name.size() >= 4 && name.starts_with(u"set")) {
            std::u16string text = detail::lowercased(name.substr(3, 1));
            if (name.size() > 5) {
                text += name.substr(4, name.size() - 5);
            }
            key = NSString::fromUtf16(std::move(text));
            made = key.get();
        }
        if (memo.compare_exchange_strong(known, made, std::memory_order_acq_rel, std::memory_order_acquire)) {
            // Lives as long as the selector: for ever.
            static_cast<void>(key.leak());
            known = made;
        }
    }
    return known == &noKey ? nullptr : static_cast<NSString*>(known);
}

/// The property that `key` and `setter` belong to, if nothing but its declared accessors would run for them.
Property untouchedProperty(const NSObject* self, NSString* key, SEL setter, const detail::ObjectGetter& getter) {
    const Class* const before = detail::classBeforeIncision(self);
    if (!key || !before->isDirect()) {
        return nullptr;
    }
    const Property property = class_getProperty(before, key->utf8());
    const bool fits =
        property && property->readObject && property->setter == setter && property->getter == getter.selector &&
        class_getInstanceMethod(self->isa(), getter.selector) == class_getInstanceMethod(before, getter.selector);
    return fits ? property : nullptr;
}

SetterPlan makePlan(const NSObject* self, SEL setter) {
    SetterPlan plan;
    plan.ofClass = self->isa();
    plan.setter = setter.record();
    // Read before looking: whatever changes meanwhile makes the plan stale, never wrong.
    plan.generation = detail::Runtime::generation();
    plan.key = keyOfSetter(setter);
    plan.getter = detail::objectGetter(plan.ofClass, plan.key);
    plan.variable = untouchedProperty(self, plan.key, setter, plan.getter);
    plan.announcesInItsOwnWay = detail::announcesInItsOwnWay(plan.ofClass);
    return plan;
}

/// Valid until the next call: what a plan runs may lead back here and put another one in its place.
const SetterPlan& planFor(const NSObject* self, SEL setter) {
    SetterPlans* const plans = detail::PerThread<SetterPlans>::ensure();
    const auto a = reinterpret_cast<std::uintptr_t>(self->isa());
    const auto b = reinterpret_cast<std::uintptr_t>(setter.record());
    if (!plans) [[unlikely]] {
        // The thread is ending. One plan at a time will do, in storage that needs no destructor.
        static thread_local SetterPlan lastPlan;
        lastPlan = makePlan(self, setter);
        return lastPlan;
    }
    SetterPlan& plan = plans->plans[((a >> 6) ^ (b >> 5)) % plans->plans.size()];
    if (plan.ofClass != self->isa() || plan.setter != setter.record() ||
        plan.generation != detail::Runtime::generation()) [[unlikely]] {
        plan = makePlan(self, setter);
    }
    return plan;
}

void setOriginal(Property variable, NSObject* self, SEL setter, NSObject* value) {
    if (variable) [[likely]] {
        variable->writeObject(self, value);
    } else {
        sendSuper<void>(self, detail::classBeforeIncision(self), setter, value);
    }
}

NSObject* attachedRegistry(const detail::ObjectExtras& extras) {
    for (const auto& association : extras.associations) {
        if (association.key == registryKey) {
            return association.value;
        }
    }
    return nullptr;
}

/// The registrations for `key`, borrowed from the object; null when there are none.
NSMutableArray* registrationsFor(const NSObject* object, NSString* key) {
    detail::ObjectExtras* const extras = detail::extrasOf(object);
    if (!extras) {
        return nullptr;
    }
    NSObject* registry = nullptr;
    if (detail::isSingleThreaded()) {
        registry = attachedRegistry(*extras);
    } else {
        const std::lock_guard lock(extras->lock);
        registry = attachedRegistry(*extras);
    }
    const auto* const arrays = cast<NSMutableDictionary>(registry);
    return arrays ? cast<NSMutableArray>(arrays->peek(key)) : nullptr;
}

} // namespace

ObserverWalk::ObserverWalk(NSMutableArray* walked)
    : registrations(walked), left(walked->count()), outer(innermostWalk) {
    innermostWalk = this;
}

ObserverWalk::~ObserverWalk() {
    innermostWalk = outer;
}

void ObserverWalk::takeOut(std::size_t index) {
    for (ObserverWalk* walk = innermostWalk; walk; walk = walk->outer) {
        if (walk->registrations == registrations && walk->left > index) {
            --walk->left;
        }
    }
    registrations->removeObjectAtIndex(index);
}

void ObserverWalk::call(NSObject* object, NSString* key, NSObject* oldValue, NSObject* newValue) {
    const Class* const kind = _ZRXKVOObserverCache::classObject();
    while (left > 0) {
        // Looked at anew each time: callbacks add registrations, and their own sets take dead ones out.
        const std::span<const id> elements = registrations->elements();
        if (left > elements.size()) {
            left = elements.size();
            continue;
        }
        NSObject* const element = elements[--left].get();
        if (!element->isa()->descendsFrom(kind)) {
            continue;
        }
        auto* const registration = static_cast<_ZRXKVOObserverCache*>(element);
        // The observer stays alive while it is called, and with it the registration: only dead ones are taken out.
        const id observer = registration->m_observerObject.lock();
        if (!observer) {
            takeOut(left);
        } else if (registration->isFor(key) && registration->m_observerBlock) {
            registration->m_observerBlock(object, key, oldValue, newValue);
        }
    }
}

namespace detail {

const void* observerRegistryKey() {
    return registryKey;
}

void __ZRXObserverSetter(NSObject* self, SEL setter, NSObject* value) {
    const SetterPlan& plan = planFor(self, setter);
    NSString* const key = plan.key;
    const Property variable = plan.variable;
    const ObjectGetter getter = plan.getter;
    const bool announcesInItsOwnWay = plan.announcesInItsOwnWay;
    if (!key) {
        return;
    }
    if (!tryRetain(self)) [[unlikely]] {
        // Set by its own destructor: nobody may be handed a reference to it any more.
        setOriginal(variable, self, setter, value);
        return;
    }
    // Callbacks may let go of the object, and of the value by setting another.
    const id alive(adopt, self);
    const id heldValue(value);
    const id oldValue = variable          ? variable->readObject(self)
                        : getter.function ? getter.function(self, getter.selector)
                                          : valueForKeyIfAny(self, key);
    const ObjectExtras* const extras = extrasOf(self);
    const bool isObserved = extras && extras->observationInfo.load(std::memory_order_relaxed);
    if (isObserved || announcesInItsOwnWay) [[unlikely]] {
        ObservedChange change(self, key);
        setOriginal(variable, self, setter, value);
        change.announce();
    } else {
        setOriginal(variable, self, setter, value);
    }
    NSMutableArray* const registrations = registrationsFor(self, key);
    if (registrations && registrations->count() != 0) {
        ObserverWalk(registrations).call(self, key, oldValue, value);
    }
}

} // namespace detail

void addObserver_forKeyPath_withBlock(NSObject* self, NSObject* observer, NSString* keyPath, ObserverBlock block) {
    if (!self || !observer || !keyPath || keyPath->length() == 0 || !block) {
        return;
    }
    // Not made when nobody has such a setter: strange key paths must not leave names behind.
    const SEL setter = sel_findName(detail::accessorName("set", keyPath->view(), ":"));
    const IMP original = class_getMethodImplementation(self->class_(), setter);
    NSString* const derivedKey = original ? keyOfSetter(setter) : nullptr;
    // The setter looks for its own copy of the key, so that is the one to use: the same object is found fastest.
    NSString* const key = derivedKey && derivedKey->isEqualToString(keyPath) ? derivedKey : keyPath;

    const id attached = objc_getAssociatedObject(self, registryKey);
    Ref<NSMutableDictionary> registry(cast<NSMutableDictionary>(attached));
    if (!registry) {
        registry = NSMutableDictionary::dictionary();
        objc_setAssociatedObject(self, registryKey, registry, OBJC_ASSOCIATION_RETAIN_NONATOMIC);
    }
    Ref<NSMutableArray> registrations(cast<NSMutableArray>(registry->peek(key)));
    if (!registrations) {
        registrations = NSMutableArray::array();
        registry->setObject_forKey(registrations, key);
    }
    const auto registration = make<_ZRXKVOObserverCache>();
    registration->setObserverKey(key);
    registration->setObserverObject(observer);
    registration->setObserverBlock(std::move(block));
    registrations->addObject(registration);

    if (original && *original.type == detail::MethodTypeOf<void, NSObject*>::type) {
        // Only object properties: a setter for a number would lose its argument.
        inciseSelector_implementation(self, setter, imp(&detail::__ZRXObserverSetter));
    }
}

ZR_GROUP(NSObject, ZRXObserver) {
    is.method<&addObserver_forKeyPath_withBlock>("addObserver:forKeyPath:withBlock:");
}

} // namespace zr
