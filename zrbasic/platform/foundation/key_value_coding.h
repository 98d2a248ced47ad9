#pragma once

#include <zrbasic/platform/foundation/string.h>

namespace zr {

class NSArray;
class NSDictionary;

// NSObject(NSKeyValueCoding)
//
// Properties by name. Use it where the name is known only while the program runs (a server's reply, a column of a
// table); compiled code calls the accessors.
//
// A key finds an accessor first: `getPrice`, `price`, `isPrice`, `_getPrice`, `_price` for reading, `setPrice:` and
// `_setPrice:` for writing. Without one it finds a variable: `_price`, `_isPrice`, `price`, `isPrice`; a read-only
// property can therefore be written by name. (A class forbids the variables by answering false to the class operation
// `accessInstanceVariablesDirectly`.) Only the first letter changes its case, and only ever to upper case.
//
// Every operation here is a message too, and a class may answer it in its own way: a dictionary reads its entries, an
// array asks its elements. A null receiver does nothing and gives null.

/// The value of a property: numbers and booleans come boxed, an object as it is. A property of any other type reads
/// as null.
///
/// A key that is not found is handed to `valueForUndefinedKey`, which raises; so is a null key.
ZR_EXPORT id valueForKey(NSObject* self, NSString* key);

/// Sets a property. An object is stored as it is, whatever its class, and so is null.
///
/// A number or boolean is asked of `value` by the message that fits (`doubleValue`, `boolValue`, `longLongValue` ...):
/// a number converts, a string gives its leading digits, the null object gives 0, and any other object raises
/// `NSInvalidArgumentException`. Null into a number is handed to `setNilValueForKey`, which raises. A property of any
/// other type is left alone. A key that is not found is handed to `setValue_forUndefinedKey`, which raises.
///
/// Key-value observers are told when the setter is observed, or when the value goes straight into a variable.
ZR_EXPORT void setValue_forKey(NSObject* self, NSObject* value, NSString* key);

/// The same along names joined by full stops: each but the last names an object to go on with. Null on the way gives
/// null.
ZR_EXPORT id valueForKeyPath(NSObject* self, NSString* keyPath);
ZR_EXPORT void setValue_forKeyPath(NSObject* self, NSObject* value, NSString* keyPath);

/// What reading an unknown key does: raises `NSUndefinedKeyException` unless the class answers the message itself.
ZR_EXPORT id valueForUndefinedKey(NSObject* self, NSString* key);
/// What writing an unknown key does: raises `NSUndefinedKeyException` unless the class answers the message itself.
ZR_EXPORT void setValue_forUndefinedKey(NSObject* self, NSObject* value, NSString* key);
/// What null for a number does: raises `NSInvalidArgumentException` unless the class answers the message itself.
ZR_EXPORT void setNilValueForKey(NSObject* self, NSString* key);

/// The values of all `keys`, with the null object where a value is null. Empty for null.
ZR_EXPORT Ref<NSDictionary> dictionaryWithValuesForKeys(NSObject* self, NSArray* keys);
/// Sets every entry of `keyedValues`; the null object stands for null.
ZR_EXPORT void setValuesForKeysWithDictionary(NSObject* self, NSDictionary* keyedValues);

namespace detail {

/// Reads like `valueForKey`, but an unknown key reads as null unless the class has an answer of its own for it.
ZR_EXPORT id valueForKeyIfAny(NSObject* self, NSString* key);

/// What reading `key` on an object of class `ofClass` runs, when that is a single accessor that gives an object.
struct ObjectGetter {
    SEL selector;
    /// Null when reading takes another way: a boxed number, a variable, an operation of the class's own.
    id (*function)(NSObject* self, SEL selector) = nullptr;
};
ZR_EXPORT ObjectGetter objectGetter(const Class* ofClass, NSString* key);

/// The operations `setKey:` and `_setKey:` that `ofClass` has, the first of which key-value setting uses.
ZR_EXPORT std::vector<Method> settersForKey(const Class* ofClass, NSString* key);

} // namespace detail

} // namespace zr
