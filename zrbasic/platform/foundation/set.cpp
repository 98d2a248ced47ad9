#include <zrbasic/platform/foundation/set.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/collection_description_p.h>
#include <zrbasic/platform/foundation/concrete_kind_p.h>
#include <zrbasic/platform/foundation/enumerator_p.h>
#include <zrbasic/platform/foundation/mutable_set.h>

namespace zr {

namespace {

class ImmutableSet final : public NSSet {
    ZR_DECLARE_CLASS(ImmutableSet, NSSet)
  public:
    ~ImmutableSet() override;
};

ZR_DEFINE_KIND(ImmutableSet, "__NSSetI") {}

} // namespace

ZR_DEFINE_CLASS(NSSet) {
    is.classMethod<&NSSet::set>("set");
    is.classMethod<&NSSet::setWithObject>("setWithObject:");
    is.classMethod<&NSSet::setWithArray>("setWithArray:");
    is.classMethod<&NSSet::setWithSet>("setWithSet:");
    is.method<&NSSet::initWithArray>("initWithArray:");
    is.method<&NSSet::initWithSet>("initWithSet:");
    is.method<&NSSet::count>("count");
    is.method<&NSSet::containsObject>("containsObject:");
    is.method<&NSSet::member>("member:");
    is.method<&NSSet::anyObject>("anyObject");
    is.method<&NSSet::allObjects>("allObjects");
    is.method<&NSSet::isSubsetOfSet>("isSubsetOfSet:");
    is.method<&NSSet::intersectsSet>("intersectsSet:");
    is.method<&NSSet::isEqualToSet>("isEqualToSet:");
    is.method<&NSSet::setByAddingObject>("setByAddingObject:");
    is.method<&NSSet::setByAddingObjectsFromSet>("setByAddingObjectsFromSet:");
    is.method<&NSSet::setByAddingObjectsFromArray>("setByAddingObjectsFromArray:");
    is.method<&NSSet::objectEnumerator>("objectEnumerator");
    is.method<&NSSet::enumerateObjectsUsingBlock>("enumerateObjectsUsingBlock:");
    is.method<&NSSet::makeObjectsPerformSelector>("makeObjectsPerformSelector:");
}

NSSet::~NSSet() = default;

Ref<NSSet> NSSet::set() {
    // Never let go, so that it outlives whatever static objects hold on to it.
    static auto* const empty = new Ref<NSSet>(alloc<ImmutableSet>());
    return *empty;
}

Ref<NSSet> NSSet::setWithObject(NSObject* object) {
    return setWithObjects({id(object)});
}

Ref<NSSet> NSSet::setWithObjects(std::initializer_list<id> objects) {
    if (objects.size() == 0) {
        return set();
    }
    Ref<NSSet> made = alloc<ImmutableSet>();
    fill(*made, std::span<const id>(objects.begin(), objects.size()));
    return made;
}

Ref<NSSet> NSSet::setWithArray(NSArray* array) {
    if (!array || array->count() == 0) {
        return set();
    }
    Ref<NSSet> made = alloc<ImmutableSet>();
    fill(*made, array->elements());
    return made;
}

Ref<NSSet> NSSet::setWithSet(NSSet* other) {
    if (!other || other->count() == 0) {
        return set();
    }
    Ref<NSSet> made = alloc<ImmutableSet>();
    fill(*made, other);
    return made;
}

id NSSet::init() {
    // A set allocated as such is only a stand-in for the concrete kind.
    return isa() == NSSet::classObject() ? id(set()) : id(this);
}

id NSSet::initWithArray(NSArray* array) {
    if (isa() == NSSet::classObject()) {
        return setWithArray(array);
    }
    if (array) {
        fill(*this, array->elements());
    }
    return id(this);
}

id NSSet::initWithSet(NSSet* other) {
    if (isa() == NSSet::classObject()) {
        return setWithSet(other);
    }
    fill(*this, other);
    return id(this);
}

bool NSSet::enter(NSObject* object, const char* operation) {
    if (!object) {
        NSException::raise(NSInvalidArgumentException,
                           "*** -[" + nativeClass()->name() + ' ' + operation + "]: object cannot be nil");
    }
    const NSUInteger hash = object->hash();
    if (m_table.find(object, hash)) {
        return false;
    }
    m_table.append(id(object), hash, {});
    return true;
}

void NSSet::fill(NSSet& fresh, std::span<const id> objects) {
    fresh.m_table.reserve(objects.size());
    for (const id& object : objects) {
        fresh.enter(object, "initWithObjects:count:");
    }
}

void NSSet::fill(NSSet& fresh, const NSSet* other) {
    if (!other) {
        return;
    }
    fresh.m_table.reserve(other->count());
    for (const detail::ObjectTable::Entry& entry : other->m_table.entries()) {
        if (entry.key) {
            fresh.m_table.append(entry.key, entry.hash, {});
        }
    }
}

id NSSet::member(NSObject* object) const {
    const detail::ObjectTable::Entry* const entry = object ? m_table.find(object) : nullptr;
    return entry ? entry->key : id();
}

id NSSet::anyObject() const {
    std::size_t position = 0;
    return id(objectAtPosition(position));
}

Ref<NSArray> NSSet::allObjects() const {
    std::vector<id> objects;
    objects.reserve(count());
    for (const detail::ObjectTable::Entry& entry : m_table.entries()) {
        if (entry.key) {
            objects.push_back(entry.key);
        }
    }
    return NSArray::fromElements(std::move(objects));
}

bool NSSet::isSubsetOfSet(NSSet* other) const {
    if (count() > (other ? other->count() : 0)) {
        return false;
    }
    for (const detail::ObjectTable::Entry& entry : m_table.entries()) {
        if (entry.key && !other->m_table.find(entry.key, entry.hash)) {
            return false;
        }
    }
    return true;
}

bool NSSet::intersectsSet(NSSet* other) const {
    if (!other || other->count() == 0) {
        return false;
    }
    for (const detail::ObjectTable::Entry& entry : m_table.entries()) {
        if (entry.key && other->m_table.find(entry.key, entry.hash)) {
            return true;
        }
    }
    return false;
}

bool NSSet::isEqual(NSObject* other) const {
    return isEqualToSet(cast<NSSet>(other));
}

bool NSSet::isEqualToSet(NSSet* other) const {
    return this == other || (other && count() == other->count() && isSubsetOfSet(other));
}

NSUInteger NSSet::hash() const {
    return count();
}

Ref<NSSet> NSSet::setByAddingObject(NSObject* object) const {
    Ref<NSSet> made = alloc<ImmutableSet>();
    fill(*made, this);
    made->enter(object, "setByAddingObject:");
    return made;
}

Ref<NSSet> NSSet::setByAddingObjectsFromSet(NSSet* other) const {
    return setByAddingObjectsFromArray(other ? other->allObjects().get() : nullptr);
}

Ref<NSSet> NSSet::setByAddingObjectsFromArray(NSArray* other) const {
    Ref<NSSet> made = alloc<ImmutableSet>();
    fill(*made, this);
    if (other) {
        for (const id& object : other->elements()) {
            made->enter(object, "setByAddingObjectsFromArray:");
        }
    }
    return made;
}

Ref<NSEnumerator> NSSet::objectEnumerator() const {
    return detail::enumeratorOver(this);
}

void NSSet::enumerateObjectsUsingBlock(SetVisitor visitor) const {
    if (!visitor) {
        return;
    }
    bool stop = false;
    for (const id& object : *this) {
        visitor(object, stop);
        if (stop) {
            return;
        }
    }
}

void NSSet::makeObjectsPerformSelector(SEL selector) const {
    detail::requireSelector(this, "makeObjectsPerformSelector:", selector);
    for (const id& object : *this) {
        object->performSelector(selector);
    }
}

Ref<NSString> NSSet::description() const {
    return detail::describeCollection(this);
}

id NSSet::copy() const {
    return id(const_cast<NSSet*>(this));
}

id NSSet::mutableCopy() const {
    return NSMutableSet::setWithSet(const_cast<NSSet*>(this));
}

} // namespace zr
