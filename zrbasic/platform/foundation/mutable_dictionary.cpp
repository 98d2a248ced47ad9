#include <zrbasic/platform/foundation/mutable_dictionary.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/capacity_p.h>
#include <zrbasic/platform/foundation/concrete_kind_p.h>

namespace zr {

namespace {

class PlainMutableDictionary final : public NSMutableDictionary {
    ZR_DECLARE_CLASS(PlainMutableDictionary, NSMutableDictionary)
  public:
    ~PlainMutableDictionary() override;
};

ZR_DEFINE_KIND(PlainMutableDictionary, "__NSDictionaryM") {}

} // namespace

ZR_DEFINE_CLASS(NSMutableDictionary) {
    is.classMethod<&NSMutableDictionary::dictionary>("dictionary");
    is.classMethod<&NSMutableDictionary::dictionaryWithCapacity>("dictionaryWithCapacity:");
    is.classMethod<&NSMutableDictionary::dictionaryWithObject_forKey>("dictionaryWithObject:forKey:");
    is.classMethod<&NSMutableDictionary::dictionaryWithObjects_forKeys>("dictionaryWithObjects:forKeys:");
    is.classMethod<&NSMutableDictionary::dictionaryWithDictionary>("dictionaryWithDictionary:");
    is.method<&NSMutableDictionary::initWithCapacity>("initWithCapacity:");
    is.method<&NSMutableDictionary::setObject_forKey>("setObject:forKey:");
    is.method<&NSMutableDictionary::setObject_forKeyedSubscript>("setObject:forKeyedSubscript:");
    is.method<&NSMutableDictionary::removeObjectForKey>("removeObjectForKey:");
    is.method<&NSMutableDictionary::removeAllObjects>("removeAllObjects");
    is.method<&NSMutableDictionary::removeObjectsForKeys>("removeObjectsForKeys:");
    is.method<&NSMutableDictionary::addEntriesFromDictionary>("addEntriesFromDictionary:");
    is.method<&NSMutableDictionary::setDictionary>("setDictionary:");
}

NSMutableDictionary::~NSMutableDictionary() = default;

Ref<NSMutableDictionary> NSMutableDictionary::dictionary() {
    return alloc<PlainMutableDictionary>();
}

Ref<NSMutableDictionary> NSMutableDictionary::dictionaryWithCapacity(NSUInteger capacity) {
    Ref<NSMutableDictionary> made = dictionary();
    made->initWithCapacity(capacity);
    return made;
}

Ref<NSMutableDictionary> NSMutableDictionary::dictionaryWithObject_forKey(NSObject* object, NSObject* key) {
    return fromEntries({{id(key), id(object)}});
}

Ref<NSMutableDictionary> NSMutableDictionary::dictionaryWithObjects_forKeys(NSArray* objects, NSArray* keys) {
    Ref<NSMutableDictionary> made = dictionary();
    fill(*made, objects, keys);
    return made;
}

Ref<NSMutableDictionary> NSMutableDictionary::dictionaryWithDictionary(NSDictionary* other) {
    Ref<NSMutableDictionary> made = dictionary();
    fill(*made, other);
    return made;
}

Ref<NSMutableDictionary> NSMutableDictionary::fromEntries(std::initializer_list<DictionaryEntry> entries) {
    Ref<NSMutableDictionary> made = dictionary();
    fill(*made, entries);
    return made;
}

id NSMutableDictionary::init() {
    return isa() == NSMutableDictionary::classObject() ? id(dictionary()) : id(this);
}

id NSMutableDictionary::initWithDictionary(NSDictionary* other) {
    return isa() == NSMutableDictionary::classObject() ? id(dictionaryWithDictionary(other))
                                                       : NSDictionary::initWithDictionary(other);
}

id NSMutableDictionary::initWithCapacity(NSUInteger capacity) {
    if (isa() == NSMutableDictionary::classObject()) {
        return dictionaryWithCapacity(capacity);
    }
    m_table.reserve(detail::roomFor(capacity));
    return id(this);
}

void NSMutableDictionary::setObject_forKey(NSObject* object, NSObject* key) {
    const id replaced = store(object, key, "setObject:forKey:");
    ++m_mutations;
}

void NSMutableDictionary::setObject_forKeyedSubscript(NSObject* object, NSObject* key) {
    if (key && !object) {
        removeObjectForKey(key);
        return;
    }
    const id replaced = store(object, key, "setObject:forKeyedSubscript:");
    ++m_mutations;
}

void NSMutableDictionary::removeObjectForKey(NSObject* key) {
    if (!key) {
        NSException::raise(NSInvalidArgumentException,
                           "*** -[" + nativeClass()->name() + " removeObjectForKey:]: key cannot be nil");
    }
    if (const detail::ObjectTable::Entry* const entry = m_table.find(key)) {
        ++m_mutations;
        const detail::ObjectTable::Entry removed = m_table.take(entry);
    }
}

void NSMutableDictionary::removeAllObjects() {
    if (count() != 0) {
        ++m_mutations;
        detail::ObjectTable removed;
        m_table.swap(removed);
    }
}

void NSMutableDictionary::removeObjectsForKeys(NSArray* keys) {
    // The walk keeps each key: it may be the dictionary that held the last reference.
    for (const id& key : keys) {
        removeObjectForKey(key);
    }
}

void NSMutableDictionary::addEntriesFromDictionary(NSDictionary* other) {
    if (!other || other == this) {
        return;
    }
    // A replaced value's end may change the other dictionary, so they all end after the walk.
    std::vector<id> replaced;
    for (const detail::ObjectTable::Entry& entry : other->table().entries()) {
        if (entry.key) {
            if (id old = store(entry.value, entry.key, "setObject:forKey:")) {
                replaced.push_back(std::move(old));
            }
            ++m_mutations;
        }
    }
}

void NSMutableDictionary::setDictionary(NSDictionary* other) {
    if (other == this) {
        return;
    }
    detail::ObjectTable old;
    m_table.swap(old);
    ++m_mutations;
    fill(*this, other);
}

id NSMutableDictionary::copy() const {
    return NSDictionary::dictionaryWithDictionary(const_cast<NSMutableDictionary*>(this));
}

} // namespace zr
