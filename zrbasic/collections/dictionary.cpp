#include <zrbasic/collections/dictionary.h>

#include <zrbasic/collections/dictionary_writing.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>

namespace zr {

namespace {

/// A stored object as a `T`: numbers and strings directly, any other kind by the message of that name, which raises for
/// an object that does not know it.
template <class T, auto OfNumber, auto OfString>
T converted(NSObject* value, SEL conversion) {
    if (const auto* const number = cast<NSNumber>(value)) {
        return (number->*OfNumber)();
    }
    if (const auto* const string = cast<NSString>(value)) {
        return static_cast<T>((string->*OfString)());
    }
    // Held, because the conversion is anybody's code.
    const id held(value);
    return send<T>(held, conversion);
}

} // namespace

ZR_GROUP(NSDictionary, ZRXHelper) {
    is.method<&zr_objectForKey_defaultValue>("zr_objectForKey:defaultValue:");
    is.method<&zr_objectForKey>("zr_objectForKey:");
    is.method<&zr_numberForKey_default>("zr_numberForKey:default:");
    is.method<&zr_stringForKey_default>("zr_stringForKey:default:");
    is.method<&zr_integerForKey_default>("zr_integerForKey:default:");
    is.method<&zr_uintegerForKey_default>("zr_uintegerForKey:default:");
    is.method<&zr_boolForKey_default>("zr_boolForKey:default:");
    is.method<&zr_floatForKey_default>("zr_floatForKey:default:");
    is.method<&dictionaryByAddingObject_forKey>("dictionaryByAddingObject:forKey:");
    is.method<&dictionaryByAddingKeyValues>("dictionaryByAddingKeyValues:");
}

id zr_objectForKey_defaultValue(NSDictionary* self, NSObject* key, NSObject* defaultValue) {
    if (!self || !key) {
        return {};
    }
    NSObject* const present = self->peek(key);
    return id(present ? present : defaultValue);
}

id zr_objectForKey(NSDictionary* self, NSObject* key) {
    return zr_objectForKey_defaultValue(self, key, nullptr);
}

id zr_numberForKey_default(NSDictionary* self, NSObject* key, NSObject* defaultValue) {
    return zr_objectForKey_defaultValue(self, key, defaultValue);
}

id zr_stringForKey_default(NSDictionary* self, NSObject* key, NSObject* defaultValue) {
    return zr_objectForKey_defaultValue(self, key, defaultValue);
}

NSInteger zr_integerForKey_default(NSDictionary* self, NSObject* key, NSInteger defaultValue) {
    if (!self || !key) {
        return 0;
    }
    NSObject* const value = self->peek(key);
    return value ? converted<NSInteger, &NSNumber::integerValue, &NSString::integerValue>(value, "integerValue"_sel)
                 : defaultValue;
}

NSUInteger zr_uintegerForKey_default(NSDictionary* self, NSObject* key, NSUInteger defaultValue) {
    if (!self || !key) {
        return 0;
    }
    // Strings have no unsigned conversion of their own.
    NSObject* const value = self->peek(key);
    return value ? converted<NSUInteger, &NSNumber::unsignedIntegerValue, &NSString::integerValue>(
                       value, "unsignedIntegerValue"_sel)
                 : defaultValue;
}

bool zr_boolForKey_default(NSDictionary* self, NSObject* key, bool defaultValue) {
    if (!self || !key) {
        return false;
    }
    NSObject* const value = self->peek(key);
    return value ? converted<bool, &NSNumber::boolValue, &NSString::boolValue>(value, "boolValue"_sel) : defaultValue;
}

double zr_floatForKey_default(NSDictionary* self, NSObject* key, double defaultValue) {
    if (!self) {
        return 0.0;
    }
    NSObject* const value = key ? self->peek(key) : nullptr;
    return value ? converted<double, &NSNumber::doubleValue, &NSString::doubleValue>(value, "doubleValue"_sel)
                 : defaultValue;
}

Ref<NSMutableDictionary> dictionaryByAddingObject_forKey(NSDictionary* self, NSObject* object, NSObject* key) {
    Ref<NSMutableDictionary> result = dictionaryByAddingKeyValues(self, nullptr);
    zr_setObject_forKey(result, object, key);
    return result;
}

Ref<NSMutableDictionary> dictionaryByAddingKeyValues(NSDictionary* self, NSDictionary* other) {
    if (!self) {
        return {};
    }
    Ref<NSMutableDictionary> result(cast<NSMutableDictionary>(self));
    if (!result) {
        result = NSMutableDictionary::dictionaryWithDictionary(self);
    }
    result->addEntriesFromDictionary(other);
    return result;
}

} // namespace zr
