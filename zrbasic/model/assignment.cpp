#include <zrbasic/model/assignment.h>

#include <zrbasic/model/object_model_cache.h>
#include <zrbasic/platform/foundation/key_value_access_p.h>
#include <zrbasic/platform/foundation/key_value_coding.h>
#include <zrbasic/platform/foundation/key_value_observing.h>
#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/per_thread_p.h>
#include <zrbasic/platform/runtime/extras_p.h>
#include <zrbasic/platform/runtime/runtime_p.h>

#include <array>

namespace zr {

namespace {

Ref<_ZRObjectModelCache> tableOf(NSObject* object) {
    return _ZRObjectModelCacheManager::sharedManager()->modelCacheOfClass(object->class_());
}

Ref<NSMutableDictionary> propertiesOf(NSObject* object) {
    return _ZRObjectModelCacheManager::sharedManager()->propertiesMapOfClass(object->class_());
}

const _ZRObjectPropertyCache* assignable(const detail::ObjectTable::Entry* entry) {
    static const Class* const kind = _ZRObjectPropertyCache::classObject();
    const auto* const record = !entry                        ? nullptr
                               : entry->value->isa() == kind ? static_cast<_ZRObjectPropertyCache*>(entry->value.get())
                                                             : cast<_ZRObjectPropertyCache>(entry->value);
    return record && !record->isReadonly() ? record : nullptr;
}

/// The record of an assignable property, borrowed from the table; null for any other.
const _ZRObjectPropertyCache* assignable(const NSDictionary* properties, NSString* name) {
    return assignable(properties->table().find(name));
}

bool isEntryFor(const detail::ObjectTable::Entry& entry, const NSString* name, NSUInteger hash) {
    return entry.hash == hash && entry.key && entry.key->isa() == name->isa() &&
           static_cast<const NSString*>(entry.key.get())->view() == name->view();
}

/// What setting one property of one class runs.
struct WritePlan {
    /// The record's serial number; 0 for none.
    std::uint64_t record = 0;
    const Class* ofClass = nullptr;
    std::uint64_t generation = 0;
    detail::KeyAccess access;
    bool announcesInItsOwnWay = false;
};

/// The records of one class have numbers in a row, so that none of them drives another one out.
struct WritePlans {
    std::array<WritePlan, 256> plans;
    /// Where in the table the property stood that came after this one last time. Replies of a kind keep their order,
    /// so that is the first place to look.
    std::array<std::size_t, 256> following{};
};

WritePlan makePlan(const _ZRObjectPropertyCache& record, const Class* ofClass, NSString* name) {
    WritePlan plan;
    plan.record = record.serial();
    plan.ofClass = ofClass;
    // Read before looking: whatever changes meanwhile makes the plan stale, never wrong.
    plan.generation = detail::Runtime::generation();
    plan.access = detail::writingOf(ofClass, name);
    plan.announcesInItsOwnWay = detail::announcesInItsOwnWay(ofClass);
    return plan;
}

void assignHeld(NSObject* self, const id& value, const Ref<NSString>& name, const detail::KeyAccess& access) {
    detail::writeThrough(self, value, name, access);
}

/// Sets the value between the two announcements. The name is the record's.
void assign(NSObject* self, NSObject* value, NSString* name, const _ZRObjectPropertyCache& record) {
    using detail::KeyWay;
    const detail::ObjectExtras* const extras = detail::extrasOf(self);
    const bool isObserved = extras && extras->observationInfo.load(std::memory_order_relaxed);
    WritePlans* const plans = detail::PerThread<WritePlans>::ensure();
    if (plans && !isObserved) [[likely]] {
        WritePlan& plan = plans->plans[record.serial() % plans->plans.size()];
        if (plan.record != record.serial() || plan.ofClass != self->isa() ||
            plan.generation != detail::Runtime::generation()) [[unlikely]] {
            plan = makePlan(record, self->isa(), name);
        }
        if (!plan.announcesInItsOwnWay) [[likely]] {
            if (plan.access.way == KeyWay::ObjectAccessor && plan.access.variable) [[likely]] {
                // Done with value and name when the variable is set: what happens to them then does not matter.
                plan.access.variable->writeObject(self, value);
                return;
            }
            if (plan.access.way == KeyWay::NumberAccessor && cast<NSNumber>(value)) {
                // The same: the setter gets the number and nothing else.
                detail::writeThrough(self, value, name, detail::KeyAccess(plan.access));
                return;
            }
            if (plan.access.way != KeyWay::OwnMessage && plan.access.way != KeyWay::None) {
                // The plan is copied: a setter may assign, too, and put another one in its place.
                assignHeld(self, id(value), Ref<NSString>(name), detail::KeyAccess(plan.access));
                return;
            }
        }
    }
    const id keptValue(value);
    const Ref<NSString> keptName(name);
    detail::ObservedChange change(self, name);
    setValue_forKey(self, value, name);
    change.announce();
}

/// Whether the source wants a say: its protocol and its operation are both required to be asked.
bool wantsToBeAsked(NSObject* source) {
    return source->conformsToProtocol(ZRPropertyAssignmentProtocol::protocolObject()) &&
           source->respondsToSelector("needAssignProperty:fromObject:"_sel);
}

id filledFrom(Class* receiver, NSObject* source, bool includeFather, bool nilValueEnable,
              PropertyEnable propertyEnable) {
    const id fresh = class_createInstance(receiver);
    const id made = fresh ? fresh->init() : id();
    return assignPropertiesFrom_includeFather_nilValueEnable_propertyEnable(made, source, includeFather, nilValueEnable,
                                                                            propertyEnable);
}

id filled(Class* receiver, NSObject* source) {
    return filledFrom(receiver, source, true, true, nullptr);
}

id filledIncludingFather(Class* receiver, NSObject* source, bool includeFather) {
    return filledFrom(receiver, source, includeFather, true, nullptr);
}

id filledEnablingNil(Class* receiver, NSObject* source, bool nilValueEnable) {
    return filledFrom(receiver, source, true, nilValueEnable, nullptr);
}

} // namespace

id assignPropertiesFrom_includeFather_nilValueEnable_propertyEnable(NSObject* self, NSObject* source,
                                                                    [[maybe_unused]] bool includeFather,
                                                                    [[maybe_unused]] bool nilValueEnable,
                                                                    PropertyEnable propertyEnable) {
    const id target(self);
    if (!self || !source) {
        return target;
    }
    // Observers and callbacks run in between; what is read from here on must survive them.
    const id heldSource(source);
    const Ref<NSMutableDictionary> properties = propertiesOf(self);
    const Ref<NSMutableArray> sourceProperties = tableOf(source)->propertiesCache();
    const bool isAsked = wantsToBeAsked(source);
    for (NSUInteger i = 0; i < sourceProperties->count(); ++i) {
        const id entry = sourceProperties->objectAtIndex(i);
        const auto* const record = cast<_ZRObjectPropertyCache>(entry);
        const Ref<NSString> name = record ? record->property() : nullptr;
        if (!name || !assignable(properties, name) || (propertyEnable && !propertyEnable(name)) ||
            (isAsked && !send<bool>(source, "needAssignProperty:fromObject:"_sel, name, source))) {
            continue;
        }
        const id value = valueForKey(source, name);
        // Looked up again: the callbacks may have changed the table.
        const auto* const writable = value ? assignable(properties, name) : nullptr;
        if (writable) {
            assign(self, value, name, *writable);
        }
    }
    return target;
}

id assignPropertiesFrom_includeFather(NSObject* self, NSObject* source, bool includeFather) {
    return assignPropertiesFrom_includeFather_nilValueEnable_propertyEnable(self, source, includeFather, true, nullptr);
}

id assignPropertiesFrom(NSObject* self, NSObject* source) {
    return assignPropertiesFrom_includeFather(self, source, true);
}

id assignPropertiesFrom_nilValueEnable(NSObject* self, NSObject* source, bool nilValueEnable) {
    return assignPropertiesFrom_includeFather_nilValueEnable_propertyEnable(self, source, true, nilValueEnable,
                                                                            nullptr);
}

void assignPropertiesFromDictionary_replacedKeys(NSObject* self, NSDictionary* source, NSDictionary* replacedKeys) {
    if (!self || !source) {
        return;
    }
    const id heldSelf(self);
    const id heldSource(source);
    const bool hasReplacedKeys = replacedKeys && replacedKeys->count() != 0;
    const id heldReplacedKeys(hasReplacedKeys ? replacedKeys : nullptr);
    const Ref<NSMutableDictionary> properties = propertiesOf(self);
    const NSUInteger count = source->count();
    WritePlans* const plans = detail::PerThread<WritePlans>::ensure();
    std::uint64_t previous = 0;
    std::size_t position = 0;
    while (const detail::ObjectTable::Entry* const entry = source->table().nextEntry(position)) {
        const NSObject* const key = entry->key;
        const id replacement = hasReplacedKeys ? replacedKeys->objectForKey(entry->key) : id();
        auto* const name = cast<NSString>(replacement ? replacement.get() : entry->key.get());
        const _ZRObjectPropertyCache* record = nullptr;
        if (name) {
            const NSUInteger hash = replacement ? name->hash() : entry->hash;
            const detail::ObjectTable& table = properties->table();
            const std::size_t guess = plans ? plans->following[previous % plans->following.size()] : 0;
            if (guess < table.entries().size() && isEntryFor(table.entries()[guess], name, hash)) {
                record = assignable(&table.entries()[guess]);
            } else if (const auto* const found = table.count() != 0 ? table.find(name, hash) : nullptr) {
                record = assignable(found);
                if (plans) {
                    plans->following[previous % plans->following.size()] =
                        static_cast<std::size_t>(found - table.entries().data());
                }
            }
        }
        if (record) {
            previous = record->serial();
            assign(self, entry->value, name, *record);
            const auto& entries = source->table().entries();
            if (source->count() != count || position >= entries.size() || entries[position].key != key) {
                detail::raiseMutatedWhileEnumerated(source);
            }
        }
        ++position;
    }
}

void assignPropertiesFromDictionary(NSObject* self, NSDictionary* source) {
    // Null counts as the empty dictionary that it stands for.
    assignPropertiesFromDictionary_replacedKeys(self, source, nullptr);
}

ZR_GROUP(NSObject, ZRAssign) {
    using Assign = id (*)(NSObject*, NSObject*);
    using AssignFlag = id (*)(NSObject*, NSObject*, bool);
    using AssignFully = id (*)(NSObject*, NSObject*, bool, bool, PropertyEnable);
    is.method<static_cast<Assign>(&assignPropertiesFrom)>("assignPropertiesFrom:");
    is.method<static_cast<AssignFlag>(&assignPropertiesFrom_includeFather)>("assignPropertiesFrom:includeFather:");
    is.method<static_cast<AssignFlag>(&assignPropertiesFrom_nilValueEnable)>("assignPropertiesFrom:nilValueEnable:");
    is.method<static_cast<AssignFully>(&assignPropertiesFrom_includeFather_nilValueEnable_propertyEnable)>(
        "assignPropertiesFrom:includeFather:nilValueEnable:propertyEnable:");
    is.method<&assignPropertiesFromDictionary>("assignPropertiesFromDictionary:");
    is.method<&assignPropertiesFromDictionary_replacedKeys>("assignPropertiesFromDictionary:replacedKeys:");

    is.receivingClassMethod<&filledFrom>("assignPropertiesFrom:includeFather:nilValueEnable:propertyEnable:");
    is.receivingClassMethod<&filled>("assignPropertiesFrom:");
    is.receivingClassMethod<&filledIncludingFather>("assignPropertiesFrom:includeFather:");
    is.receivingClassMethod<&filledEnablingNil>("assignPropertiesFrom:nilValueEnable:");
}

} // namespace zr
