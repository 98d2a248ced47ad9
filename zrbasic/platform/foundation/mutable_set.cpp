#include <zrbasic/platform/foundation/mutable_set.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/capacity_p.h>
#include <zrbasic/platform/foundation/concrete_kind_p.h>

namespace zr {

namespace {

class PlainMutableSet final : public NSMutableSet {
    ZR_DECLARE_CLASS(PlainMutableSet, NSMutableSet)
  public:
    ~PlainMutableSet() override;
};

ZR_DEFINE_KIND(PlainMutableSet, "__NSSetM") {}

} // namespace

ZR_DEFINE_CLASS(NSMutableSet) {
    is.classMethod<&NSMutableSet::set>("set");
    is.classMethod<&NSMutableSet::setWithCapacity>("setWithCapacity:");
    is.classMethod<&NSMutableSet::setWithObject>("setWithObject:");
    is.classMethod<&NSMutableSet::setWithArray>("setWithArray:");
    is.classMethod<&NSMutableSet::setWithSet>("setWithSet:");
    is.method<&NSMutableSet::initWithCapacity>("initWithCapacity:");
    is.method<&NSMutableSet::addObject>("addObject:");
    is.method<&NSMutableSet::addObjectsFromArray>("addObjectsFromArray:");
    is.method<&NSMutableSet::removeObject>("removeObject:");
    is.method<&NSMutableSet::removeAllObjects>("removeAllObjects");
    is.method<&NSMutableSet::unionSet>("unionSet:");
    is.method<&NSMutableSet::minusSet>("minusSet:");
    is.method<&NSMutableSet::intersectSet>("intersectSet:");
    is.method<&NSMutableSet::setSet>("setSet:");
}

NSMutableSet::~NSMutableSet() = default;

Ref<NSMutableSet> NSMutableSet::set() {
    return alloc<PlainMutableSet>();
}

Ref<NSMutableSet> NSMutableSet::setWithCapacity(NSUInteger capacity) {
    Ref<NSMutableSet> made = set();
    made->initWithCapacity(capacity);
    return made;
}

Ref<NSMutableSet> NSMutableSet::setWithObject(NSObject* object) {
    return setWithObjects({id(object)});
}

Ref<NSMutableSet> NSMutableSet::setWithObjects(std::initializer_list<id> objects) {
    Ref<NSMutableSet> made = set();
    fill(*made, std::span<const id>(objects.begin(), objects.size()));
    return made;
}

Ref<NSMutableSet> NSMutableSet::setWithArray(NSArray* array) {
    Ref<NSMutableSet> made = set();
    if (array) {
        fill(*made, array->elements());
    }
    return made;
}

Ref<NSMutableSet> NSMutableSet::setWithSet(NSSet* other) {
    Ref<NSMutableSet> made = set();
    fill(*made, other);
    return made;
}

id NSMutableSet::init() {
    return isa() == NSMutableSet::classObject() ? id(set()) : id(this);
}

id NSMutableSet::initWithArray(NSArray* array) {
    return isa() == NSMutableSet::classObject() ? id(setWithArray(array)) : NSSet::initWithArray(array);
}

id NSMutableSet::initWithSet(NSSet* other) {
    return isa() == NSMutableSet::classObject() ? id(setWithSet(other)) : NSSet::initWithSet(other);
}

id NSMutableSet::initWithCapacity(NSUInteger capacity) {
    if (isa() == NSMutableSet::classObject()) {
        return setWithCapacity(capacity);
    }
    m_table.reserve(detail::roomFor(capacity));
    return id(this);
}

void NSMutableSet::addObject(NSObject* object) {
    if (enter(object, "addObject:")) {
        ++m_mutations;
    }
}

void NSMutableSet::addObjectsFromArray(NSArray* objects) {
    if (objects) {
        for (const id& object : objects->elements()) {
            addObject(object);
        }
    }
}

void NSMutableSet::removeObject(NSObject* object) {
    const detail::ObjectTable::Entry* const entry = object ? m_table.find(object) : nullptr;
    if (entry) {
        ++m_mutations;
        const detail::ObjectTable::Entry removed = m_table.take(entry);
    }
}

void NSMutableSet::removeAllObjects() {
    if (count() != 0) {
        setSet(nullptr);
    }
}

void NSMutableSet::unionSet(NSSet* other) {
    if (!other || other == this) {
        return;
    }
    for (const detail::ObjectTable::Entry& entry : other->table().entries()) {
        if (entry.key) {
            addObject(entry.key);
        }
    }
}

void NSMutableSet::minusSet(NSSet* other) {
    if (!other) {
        return;
    }
    const Ref<NSArray> removed = other->allObjects();
    for (const id& object : removed->elements()) {
        removeObject(object);
    }
}

void NSMutableSet::intersectSet(NSSet* other) {
    const Ref<NSArray> members = allObjects();
    for (const id& object : members->elements()) {
        if (!other || !other->containsObject(object)) {
            removeObject(object);
        }
    }
}

void NSMutableSet::setSet(NSSet* other) {
    if (other == this) {
        return;
    }
    detail::ObjectTable old;
    m_table.swap(old);
    ++m_mutations;
    fill(*this, other);
}

id NSMutableSet::copy() const {
    return NSSet::setWithSet(const_cast<NSMutableSet*>(this));
}

} // namespace zr
