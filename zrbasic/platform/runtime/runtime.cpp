#include <zrbasic/platform/runtime/runtime_p.h>

#include <algorithm>
#include <cstring>
#include <typeinfo>

namespace zr::detail {

namespace {

constinit std::atomic<Group*> pendingGroups{nullptr};
/// Stays set until the pending groups have really been added.
constinit std::atomic<bool> groupsArePending{false};

/// Whether both stand for one C++ type, perhaps in two shared libraries.
bool isSameType(const std::type_info& a, const std::type_info& b) {
    // Types of unnamed namespaces are each file's own. Some compilers give those of two files equal names all the same.
    const bool isOfOneFile = std::strstr(a.name(), "_GLOBAL__N_") != nullptr;
    return &a == &b || (!isOfOneFile && a == b);
}

} // namespace

Runtime& Runtime::shared() {
    // Never torn down: classes stay valid in destructors of static objects.
    static auto* const runtime = new Runtime;
    return *runtime;
}

Runtime::Runtime() {
    m_root = newClass("NSObject", nullptr);
    m_root->m_native = m_root;
    m_root->m_type = &typeid(NSObject);
    m_root->m_create = []() -> NSObject* { return new NSObject; };
    m_classes.emplace(m_root->m_name, m_root);
    rootRecord.store(m_root, std::memory_order_release);
}

void Runtime::moveOn() {
    generationCount.fetch_add(1, std::memory_order_acq_rel);
}

Class* Runtime::newClass(std::string_view name, Class* parent) {
    Class* const parentMeta = parent ? parent->isa() : nullptr;
    auto* const meta = new Class(name, parentMeta, nullptr, true);
    auto* const made = new Class(name, parent, meta, false);
    if (!parent) {
        // The chain of class operations ends in the root itself, so that a class answers the root's operations too.
        meta->m_parent = made;
        meta->m_depth = 1;
        meta->m_ancestors = std::make_unique<const Class*[]>(2);
        meta->m_ancestors[0] = made;
        meta->m_ancestors[1] = meta;
        meta->m_isa.store(meta, std::memory_order_relaxed);
    } else {
        meta->m_isa.store(parentMeta->isa(), std::memory_order_relaxed);
    }
    meta->m_native = meta;
    // A class answers for itself through its class operations, never straight from a variable.
    meta->m_direct = false;
    return made;
}

Class* Runtime::enterNative(const NativeClass& native) {
    Class* const made = newClass(native.name, native.parent);
    made->m_native = made;
    made->m_type = native.type;
    made->m_create = native.create;
    made->m_direct = native.parent->isDirect();
    ClassBuilder builder(made);
    native.describe(builder);

    const std::unique_lock lock(m_lock);
    const auto [place, isNew] = m_classes.emplace(native.name, made);
    if (!isNew) {
        Class* const known = place->second;
        if (known->m_type && isSameType(*known->m_type, *native.type)) {
            // Another shared library holds the same class; there is one record for both.
            return known;
        }
        // Two classes of one name: the first keeps it, this one works all the same.
    }
    native.parent->m_children.push_back(made);
    const bool overridesAccessor = std::any_of(made->m_methods.begin(), made->m_methods.end(), [&](const auto& method) {
        return isAccessor(native.parent, method.first);
    });
    if (overridesAccessor) {
        made->m_direct = false;
    }
    return made;
}

Class* Runtime::allocatePair(Class* parent, std::string_view name) {
    if (!parent || parent->isMetaclass() || name.empty() || classNamed(name)) {
        return nullptr;
    }
    Class* const made = newClass(name, parent);
    made->m_native = parent->m_native;
    made->m_create = parent->m_create;
    made->m_direct = false;
    const std::unique_lock lock(m_lock);
    parent->m_children.push_back(made);
    return made;
}

void Runtime::enterPair(Class* pair) {
    const std::unique_lock lock(m_lock);
    m_classes.emplace(pair->m_name, pair);
}

Class* Runtime::classNamed(std::string_view name) {
    settleGroups();
    const std::shared_lock lock(m_lock);
    const auto found = m_classes.find(name);
    return found == m_classes.end() ? nullptr : found->second;
}

Protocol* Runtime::protocolNamed(std::string_view name, bool makeIt) {
    if (!makeIt) {
        const std::shared_lock lock(m_lock);
        const auto found = m_protocols.find(name);
        return found == m_protocols.end() ? nullptr : found->second;
    }
    if (Protocol* const known = protocolNamed(name, false)) {
        return known;
    }
    // Protocols are objects too: made outside the lock, and never let go.
    Protocol* const made = new Protocol(name);
    const std::unique_lock lock(m_lock);
    return m_protocols.emplace(std::string(name), made).first->second;
}

void Runtime::link(Group* group) {
    Group* first = pendingGroups.load(std::memory_order_relaxed);
    do {
        group->m_next = first;
    } while (!pendingGroups.compare_exchange_weak(first, group, std::memory_order_release, std::memory_order_relaxed));
    groupsArePending.store(true, std::memory_order_release);
    moveOn();
}

void Runtime::settleGroups() {
    if (!groupsArePending.load(std::memory_order_acquire)) [[likely]] {
        return;
    }
    const std::lock_guard guard(m_groupLock);
    if (m_settling) {
        return;
    }
    m_settling = true;
    while (Group* group = pendingGroups.exchange(nullptr, std::memory_order_acquire)) {
        Group* inOrder = nullptr;
        while (group) {
            Group* const next = group->m_next;
            group->m_next = inOrder;
            inOrder = group;
            group = next;
        }
        for (; inOrder; inOrder = inOrder->m_next) {
            ClassBuilder builder(inOrder->m_subject());
            inOrder->m_describe(builder);
        }
    }
    m_settling = false;
    groupsArePending.store(pendingGroups.load() != nullptr, std::memory_order_release);
}

MethodRecord* Runtime::findLocked(const Class* ofClass, SEL selector) {
    for (; ofClass; ofClass = ofClass->m_parent) {
        if (const auto found = ofClass->m_methods.find(selector); found != ofClass->m_methods.end()) {
            return found->second.get();
        }
    }
    return nullptr;
}

MethodRecord* Runtime::find(const Class* ofClass, SEL selector) {
    settleGroups();
    const std::shared_lock lock(m_lock);
    return findLocked(ofClass, selector);
}

IMP Runtime::implementationOf(const Class* ofClass, SEL selector) {
    settleGroups();
    const std::shared_lock lock(m_lock);
    const MethodRecord* const method = findLocked(ofClass, selector);
    return method ? method->implementation : IMP();
}

bool Runtime::isAccessor(const Class* ofClass, SEL selector) {
    for (; ofClass; ofClass = ofClass->m_parent) {
        for (const auto& property : ofClass->m_properties) {
            if (property->getter == selector || property->setter == selector) {
                return true;
            }
        }
    }
    return false;
}

void Runtime::markEdited(Class* edited) {
    edited->m_direct.store(false, std::memory_order_relaxed);
    for (Class* const child : edited->m_children) {
        markEdited(child);
    }
}

bool Runtime::addMethod(Class* toClass, SEL selector, IMP implementation, const char* types, Origin origin) {
    if (origin == Origin::Called) {
        settleGroups();
    }
    const std::unique_lock lock(m_lock);
    auto& place = toClass->m_methods[selector];
    if (place && origin == Origin::Called) {
        return false;
    }
    if (place) {
        // A group's operation wins over the class's own of the same name.
        place->implementation = implementation;
    } else {
        place = std::make_unique<MethodRecord>(
            MethodRecord{selector, implementation, types ? types : implementation.type->encoding, toClass});
    }
    // An operation that overrides nothing cannot be bypassed by a direct accessor of an ancestor.
    const bool overrides = origin == Origin::Called ? findLocked(toClass->m_parent, selector) != nullptr
                                                    : isAccessor(toClass->m_parent, selector);
    if (overrides) {
        markEdited(toClass);
    }
    moveOn();
    return true;
}

IMP Runtime::replaceMethod(Class* inClass, SEL selector, IMP implementation, const char* types) {
    settleGroups();
    const std::unique_lock lock(m_lock);
    auto& place = inClass->m_methods[selector];
    IMP old;
    if (place) {
        old = std::exchange(place->implementation, implementation);
    } else {
        place = std::make_unique<MethodRecord>(
            MethodRecord{selector, implementation, types ? types : implementation.type->encoding, inClass});
    }
    markEdited(inClass);
    moveOn();
    return old;
}

IMP Runtime::setImplementation(MethodRecord* method, IMP implementation) {
    const std::unique_lock lock(m_lock);
    const IMP old = std::exchange(method->implementation, implementation);
    markEdited(method->owner);
    moveOn();
    return old;
}

void Runtime::exchange(MethodRecord* first, MethodRecord* second) {
    const std::unique_lock lock(m_lock);
    std::swap(first->implementation, second->implementation);
    markEdited(first->owner);
    markEdited(second->owner);
    moveOn();
}

std::vector<MethodRecord*> Runtime::methodsOf(const Class* ofClass) {
    settleGroups();
    const std::shared_lock lock(m_lock);
    std::vector<MethodRecord*> methods;
    methods.reserve(ofClass->m_methods.size());
    for (const auto& [selector, method] : ofClass->m_methods) {
        methods.push_back(method.get());
    }
    return methods;
}

bool Runtime::addProperty(Class* toClass, std::unique_ptr<PropertyRecord> record) {
    const std::unique_lock lock(m_lock);
    const bool isKnown = std::any_of(toClass->m_properties.begin(), toClass->m_properties.end(),
                                     [&](const auto& known) { return known->name == record->name; });
    if (isKnown) {
        return false;
    }
    toClass->m_properties.push_back(std::move(record));
    return true;
}

std::vector<Property> Runtime::propertiesOf(const Class* ofClass) {
    settleGroups();
    const std::shared_lock lock(m_lock);
    std::vector<Property> properties;
    properties.reserve(ofClass->m_properties.size());
    for (const auto& property : ofClass->m_properties) {
        properties.push_back(property.get());
    }
    return properties;
}

Property Runtime::propertyOf(const Class* ofClass, std::string_view name) {
    settleGroups();
    const std::shared_lock lock(m_lock);
    for (; ofClass; ofClass = ofClass->m_parent) {
        for (const auto& property : ofClass->m_properties) {
            if (property->name == name) {
                return property.get();
            }
        }
    }
    return nullptr;
}

bool Runtime::adopt(Class* byClass, Protocol* protocol, void* (*cast)(NSObject*)) {
    const std::unique_lock lock(m_lock);
    for (const Class::Adoption& adoption : byClass->m_adoptions) {
        if (adoption.protocol == protocol) {
            return false;
        }
    }
    byClass->m_adoptions.push_back({protocol, cast});
    return true;
}

bool Runtime::adopts(const Class* ofClass, const Protocol* protocol, bool climb) {
    settleGroups();
    const std::shared_lock lock(m_lock);
    for (; ofClass; ofClass = climb ? ofClass->m_parent : nullptr) {
        for (const Class::Adoption& adoption : ofClass->m_adoptions) {
            if (adoption.protocol == protocol) {
                return true;
            }
        }
    }
    return false;
}

void* Runtime::interfaceOf(NSObject* object, const Protocol* protocol) {
    settleGroups();
    const std::shared_lock lock(m_lock);
    for (const Class* searched = object->nativeClass(); searched; searched = searched->m_parent) {
        for (const Class::Adoption& adoption : searched->m_adoptions) {
            if (adoption.protocol == protocol && adoption.cast) {
                return adoption.cast(object);
            }
        }
    }
    return nullptr;
}

Class* registerNativeClass(const NativeClass& native) {
    return Runtime::shared().enterNative(native);
}

Group::Group(Class* (*subject)(), void (*describe)(ClassBuilder&)) : m_subject(subject), m_describe(describe) {
    Runtime::link(this);
}

} // namespace zr::detail
