#include <zrbasic/collections/dictionary_writing.h>

#include <zrbasic/core/text.h>
#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>

#include <vector>

namespace zr {

namespace {

bool isStorable(const NSObject* object) {
    return object && !isNull(object);
}

} // namespace

ZR_GROUP(NSMutableDictionary, ZRXHelper) {
    is.method<&zr_setObject_forKey_withDefaultObject>("zr_setObject:forKey:withDefaultObject:");
    is.method<&zr_setObject_forKey>("zr_setObject:forKey:");
    is.method<&zr_setValidObject_forKey>("zr_setValidObject:forKey:");
    is.method<&zr_setBool_forKey>("zr_setBool:forKey:");
    is.method<&zr_setInteger_forKey>("zr_setInteger:forKey:");
    is.method<&zr_setDouble_forKey>("zr_setDouble:forKey:");
    is.method<&zr_removeObjectForKey>("zr_removeObjectForKey:");
    is.method<&complementFrom>("complementFrom:");
    is.method<&mergeValuesFrom>("mergeValuesFrom:");
    is.method<&mergeValuesFrom_withKeys>("mergeValuesFrom:withKeys:");
    is.method<&mergeValuesFrom_withKeyMaps>("mergeValuesFrom:withKeyMaps:");
    is.method<&renameKey_to>("renameKey:to:");
    is.classMethod<&dictionaryFrom_withKeys>("dictionaryFrom:withKeys:");
}

void zr_setObject_forKey_withDefaultObject(NSMutableDictionary* self, NSObject* object, NSObject* key,
                                           NSObject* defaultObject) {
    if (!self || !key) {
        return;
    }
    if (isStorable(object)) {
        self->setObject_forKey(object, key);
    } else if (isStorable(defaultObject)) {
        self->setObject_forKey(defaultObject, key);
    }
}

void zr_setObject_forKey(NSMutableDictionary* self, NSObject* object, NSObject* key) {
    zr_setObject_forKey_withDefaultObject(self, object, key, nullptr);
}

void zr_setValidObject_forKey(NSMutableDictionary* self, NSObject* object, NSObject* key) {
    if (self && key && ZRXTextValid(object)) {
        self->setObject_forKey(object, key);
    }
}

void zr_setBool_forKey(NSMutableDictionary* self, bool value, NSObject* key) {
    zr_setObject_forKey(self, box(value), key);
}

void zr_setInteger_forKey(NSMutableDictionary* self, NSInteger value, NSObject* key) {
    zr_setObject_forKey(self, box(value), key);
}

void zr_setDouble_forKey(NSMutableDictionary* self, double value, NSObject* key) {
    zr_setObject_forKey(self, box(value), key);
}

id zr_removeObjectForKey(NSMutableDictionary* self, NSObject* key) {
    if (!self || !key) {
        return {};
    }
    id removed = self->objectForKey(key);
    self->removeObjectForKey(key);
    return removed;
}

// The merges walk over entries or keys copied beforehand, because writing may end objects and so run anybody's code,
// and because the dictionary that is read may be the one that is written.

void complementFrom(NSMutableDictionary* self, NSDictionary* other) {
    if (!self || !other) {
        return;
    }
    const std::vector<detail::ObjectTable::Entry> entries = other->table().entries();
    for (const detail::ObjectTable::Entry& entry : entries) {
        if (isStorable(entry.value) && !self->peek(entry.key)) {
            self->setObject_forKey(entry.value, entry.key);
        }
    }
}

void mergeValuesFrom(NSMutableDictionary* self, NSDictionary* other) {
    if (!self || !other) {
        return;
    }
    const std::vector<detail::ObjectTable::Entry> entries = other->table().entries();
    for (const detail::ObjectTable::Entry& entry : entries) {
        // A gap has no value either.
        if (isStorable(entry.value)) {
            self->setObject_forKey(entry.value, entry.key);
        }
    }
}

void mergeValuesFrom_withKeys(NSMutableDictionary* self, NSDictionary* other, NSArray* keys) {
    if (!self || !other) {
        return;
    }
    for (const id& key : keys) {
        zr_setObject_forKey(self, other->objectForKey(key), key);
    }
}

void mergeValuesFrom_withKeyMaps(NSMutableDictionary* self, NSDictionary* other, NSDictionary* keyMaps) {
    if (!self || !other || !keyMaps) {
        return;
    }
    const Ref<NSArray> keys = keyMaps->allKeys();
    for (const id& key : keys->elements()) {
        zr_setObject_forKey(self, other->objectForKey(key), keyMaps->objectForKey(key));
    }
}

void renameKey_to(NSMutableDictionary* self, NSObject* oldKey, NSObject* newKey) {
    if (!self || !oldKey) {
        return;
    }
    const id value = self->objectForKey(oldKey);
    zr_setObject_forKey(self, value, newKey);
    self->removeObjectForKey(oldKey);
}

Ref<NSMutableDictionary> dictionaryFrom_withKeys(NSDictionary* other, NSArray* keys) {
    Ref<NSMutableDictionary> result = NSMutableDictionary::dictionary();
    mergeValuesFrom_withKeys(result, other, keys);
    return result;
}

} // namespace zr
