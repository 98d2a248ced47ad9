#include <zrbasic/platform/foundation/dictionary.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/collection_description_p.h>
#include <zrbasic/platform/foundation/concrete_kind_p.h>
#include <zrbasic/platform/foundation/enumerator_p.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/string.h>

#include <string>

namespace zr {

namespace {

class ImmutableDictionary final : public NSDictionary {
    ZR_DECLARE_CLASS(ImmutableDictionary, NSDictionary)
  public:
    ~ImmutableDictionary() override;
};

ZR_DEFINE_KIND(ImmutableDictionary, "__NSDictionaryI") {}

std::string operationOf(const NSObject* self, const char* operation) {
    return "*** -[" + self->nativeClass()->name() + ' ' + operation + "]: ";
}

} // namespace

ZR_DEFINE_CLASS(NSDictionary) {
    is.classMethod<&NSDictionary::dictionary>("dictionary");
    is.classMethod<&NSDictionary::dictionaryWithObject_forKey>("dictionaryWithObject:forKey:");
    is.classMethod<&NSDictionary::dictionaryWithObjects_forKeys>("dictionaryWithObjects:forKeys:");
    is.classMethod<&NSDictionary::dictionaryWithDictionary>("dictionaryWithDictionary:");
    is.method<&NSDictionary::initWithDictionary>("initWithDictionary:");
    is.method<&NSDictionary::count>("count");
    is.method<&NSDictionary::objectForKey>("objectForKey:");
    is.method<&NSDictionary::objectForKeyedSubscript>("objectForKeyedSubscript:");
    is.method<&NSDictionary::allKeys>("allKeys");
    is.method<&NSDictionary::allKeysForObject>("allKeysForObject:");
    is.method<&NSDictionary::allValues>("allValues");
    is.method<&NSDictionary::keyEnumerator>("keyEnumerator");
    is.method<&NSDictionary::objectEnumerator>("objectEnumerator");
    is.method<&NSDictionary::enumerateKeysAndObjectsUsingBlock>("enumerateKeysAndObjectsUsingBlock:");
    is.method<&NSDictionary::isEqualToDictionary>("isEqualToDictionary:");
}

NSDictionary::~NSDictionary() = default;

Ref<NSDictionary> dictionary(std::initializer_list<DictionaryEntry> entries) {
    return NSDictionary::fromEntries(entries);
}

Ref<NSDictionary> NSDictionary::dictionary() {
    // Never let go, so that it outlives whatever static objects hold on to it.
    static auto* const empty = new Ref<NSDictionary>(alloc<ImmutableDictionary>());
    return *empty;
}

Ref<NSDictionary> NSDictionary::dictionaryWithObject_forKey(NSObject* object, NSObject* key) {
    return fromEntries({{id(key), id(object)}});
}

Ref<NSDictionary> NSDictionary::dictionaryWithObjects_forKeys(NSArray* objects, NSArray* keys) {
    Ref<NSDictionary> made = alloc<ImmutableDictionary>();
    fill(*made, objects, keys);
    return made->count() == 0 ? dictionary() : made;
}

Ref<NSDictionary> NSDictionary::dictionaryWithDictionary(NSDictionary* other) {
    if (!other || other->count() == 0) {
        return dictionary();
    }
    Ref<NSDictionary> made = alloc<ImmutableDictionary>();
    fill(*made, other);
    return made;
}

Ref<NSDictionary> NSDictionary::fromTable(detail::ObjectTable table) {
    if (table.count() == 0) {
        return dictionary();
    }
    Ref<NSDictionary> made = alloc<ImmutableDictionary>();
    made->m_table.swap(table);
    return made;
}

Ref<NSDictionary> NSDictionary::fromEntries(std::initializer_list<DictionaryEntry> entries) {
    if (entries.size() == 0) {
        return dictionary();
    }
    Ref<NSDictionary> made = alloc<ImmutableDictionary>();
    fill(*made, entries);
    return made;
}

id NSDictionary::init() {
    // A dictionary allocated as such is only a stand-in for the concrete kind.
    return isa() == NSDictionary::classObject() ? id(dictionary()) : id(this);
}

id NSDictionary::initWithDictionary(NSDictionary* other) {
    if (isa() == NSDictionary::classObject()) {
        return dictionaryWithDictionary(other);
    }
    fill(*this, other);
    return id(this);
}

void NSDictionary::fill(NSDictionary& fresh, const NSDictionary* other) {
    if (!other) {
        return;
    }
    fresh.m_table.reserve(other->count());
    for (const detail::ObjectTable::Entry& entry : other->m_table.entries()) {
        // Keys were copied when they came into the other dictionary, and differ from each other.
        if (entry.key) {
            fresh.m_table.append(entry.key, entry.hash, entry.value);
        }
    }
}

void NSDictionary::fill(NSDictionary& fresh, NSArray* objects, NSArray* keys) {
    const NSUInteger count = keys ? keys->count() : 0;
    const NSUInteger objectCount = objects ? objects->count() : 0;
    if (count != objectCount) {
        NSException::raise(NSInvalidArgumentException, operationOf(&fresh, "initWithObjects:forKeys:") +
                                                           "count of objects (" + std::to_string(objectCount) +
                                                           ") differs from count of keys (" + std::to_string(count) +
                                                           ')');
    }
    fresh.m_table.reserve(count);
    for (NSUInteger i = 0; i < count; ++i) {
        fresh.store(objects->elements()[i], keys->elements()[i], "initWithObjects:forKeys:");
    }
}

void NSDictionary::fill(NSDictionary& fresh, std::initializer_list<DictionaryEntry> entries) {
    fresh.m_table.reserve(entries.size());
    std::size_t index = 0;
    for (const DictionaryEntry& entry : entries) {
        if (!entry.key || !entry.value) {
            NSException::raise(
                NSInvalidArgumentException,
                std::string("*** -[__NSPlaceholderDictionary initWithObjects:forKeys:count:]: attempt to "
                            "insert nil object from ") +
                    (entry.key ? "objects[" : "keys[") + std::to_string(index) + ']');
        }
        fresh.store(entry.value, entry.key, "initWithObjects:forKeys:count:");
        ++index;
    }
}

id NSDictionary::store(NSObject* object, NSObject* key, const char* operation) {
    if (!key) {
        NSException::raise(NSInvalidArgumentException, operationOf(this, operation) + "key cannot be nil");
    }
    if (!object) {
        const Ref<NSString> name = key->description();
        NSException::raise(NSInvalidArgumentException, operationOf(this, operation) + "object cannot be nil (key: " +
                                                           (name ? name->utf8() : std::string()) + ')');
    }
    const NSUInteger hash = key->hash();
    if (const detail::ObjectTable::Entry* const known = m_table.find(key, hash)) {
        return m_table.exchangeValue(known, id(object));
    }
    id copied = key->copy();
    if (!copied) {
        NSException::raise(NSInvalidArgumentException, operationOf(this, operation) + "the key cannot be copied");
    }
    m_table.append(std::move(copied), hash, id(object));
    return {};
}

Ref<NSArray> NSDictionary::allKeys() const {
    std::vector<id> keys;
    keys.reserve(count());
    for (const detail::ObjectTable::Entry& entry : m_table.entries()) {
        if (entry.key) {
            keys.push_back(entry.key);
        }
    }
    return NSArray::fromElements(std::move(keys));
}

Ref<NSArray> NSDictionary::allKeysForObject(NSObject* object) const {
    std::vector<id> keys;
    for (const detail::ObjectTable::Entry& entry : m_table.entries()) {
        if (object && entry.key && (entry.value == object || entry.value->isEqual(object))) {
            keys.push_back(entry.key);
        }
    }
    return NSArray::fromElements(std::move(keys));
}

Ref<NSArray> NSDictionary::allValues() const {
    std::vector<id> values;
    values.reserve(count());
    for (const detail::ObjectTable::Entry& entry : m_table.entries()) {
        if (entry.key) {
            values.push_back(entry.value);
        }
    }
    return NSArray::fromElements(std::move(values));
}

Ref<NSEnumerator> NSDictionary::keyEnumerator() const {
    return detail::enumeratorOver(this);
}

Ref<NSEnumerator> NSDictionary::objectEnumerator() const {
    return detail::makeEnumerator([self = Ref<NSDictionary>(const_cast<NSDictionary*>(this)), keys = keyEnumerator()] {
        const id key = keys->nextObject();
        return self->objectForKey(key);
    });
}

void NSDictionary::enumerateKeysAndObjectsUsingBlock(DictionaryVisitor visitor) const {
    if (!visitor) {
        return;
    }
    bool stop = false;
    for (const id& key : *this) {
        // Kept for the visitor, who may take it out of the dictionary.
        const id value = objectForKey(key);
        visitor(key, value, stop);
        if (stop) {
            return;
        }
    }
}

bool NSDictionary::isEqual(NSObject* other) const {
    return isEqualToDictionary(cast<NSDictionary>(other));
}

bool NSDictionary::isEqualToDictionary(NSDictionary* other) const {
    if (this == other) {
        return true;
    }
    if (!other || count() != other->count()) {
        return false;
    }
    for (const detail::ObjectTable::Entry& entry : m_table.entries()) {
        if (!entry.key) {
            continue;
        }
        const detail::ObjectTable::Entry* const same = other->m_table.find(entry.key, entry.hash);
        if (!same || !(entry.value == same->value || entry.value->isEqual(same->value))) {
            return false;
        }
    }
    return true;
}

NSUInteger NSDictionary::hash() const {
    return count();
}

Ref<NSString> NSDictionary::description() const {
    return detail::describeCollection(this);
}

id NSDictionary::copy() const {
    return id(const_cast<NSDictionary*>(this));
}

id NSDictionary::mutableCopy() const {
    return NSMutableDictionary::dictionaryWithDictionary(const_cast<NSDictionary*>(this));
}

} // namespace zr
