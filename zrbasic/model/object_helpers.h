#pragma once

#include <zrbasic/platform/runtime/declare.h>

namespace zr {

class NSString;

// NSObject(ZRXHelper)
//
// An identifier for any object, type checks, and an equality that looks into arrays.

/// A string that tells the object from all others and stays the same for its life: made on first read, a UUID of 36
/// characters in upper case, unless one was set. Null only for a null object. Safe from any thread.
[[nodiscard]] ZR_EXPORT Ref<NSString> objectIdentifier(NSObject* self);

/// Stores a copy. Null takes the identifier away; the next read makes a new one.
ZR_EXPORT void setObjectIdentifier(NSObject* self, NSString* objectIdentifier);

/// Whether `object` is of the class or of a descendant; false when either is null.
[[nodiscard]] ZR_EXPORT bool isValidObject_ofType(NSObject* object, Class* type);

/// The same for the receiving class: `isValidObject<NSNumber>(price)`.
template <class T>
[[nodiscard]] bool isValidObject(NSObject* object) {
    return isValidObject_ofType(object, T::classObject());
}

/// Equality by structure: numbers by value, strings by text, arrays element by element with this same test. Everything
/// else goes by `isEqualTo`, dictionaries and sets included; a number never equals a string. Two nulls are equal.
///
/// Arrays may be nested to any depth, but an array that holds itself never ends.
[[nodiscard]] ZR_EXPORT bool isObject_equalTo(NSObject* first, NSObject* second);

/// Whether any element of `collection` equals the object: each element is asked by `isEqualTo`.
///
/// The elements of a dictionary are its keys. Null, an empty collection and an object that is no array, set,
/// dictionary or enumerator give false; so does a null object, unless an element answers otherwise.
[[nodiscard]] ZR_EXPORT bool isEqualToAny(NSObject* self, NSObject* collection);

} // namespace zr
