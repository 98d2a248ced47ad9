#pragma once

#include <zrbasic/platform/runtime/declare.h>
#include <zrbasic/platform/runtime/function_ref.h>

namespace zr {

class NSDictionary;
class NSString;

/// A source of property values that has a say in which of them are assigned.
///
/// The one operation is optional, so it is not part of the C++ interface. An adopter that wants it lists it:
///
///     bool needAssign(NSString* property, NSObject* object);
///     ZR_METHOD(needAssign, "needAssignProperty:fromObject:")
///
/// It is asked for every property that could be assigned, with the source itself as the object; false leaves the
/// property out. A class that has the operation but does not adopt the protocol is not asked.
class ZR_EXPORT ZRPropertyAssignmentProtocol {
    ZR_PROTOCOL(ZRPropertyAssignmentProtocol)
};

/// Says by name which properties are assigned.
using PropertyEnable = FunctionRef<bool(NSString* property)>;

// NSObject(ZRAssign)
//
// Filling model objects, from other model objects and from a server's replies. Values are handed on as they are, by
// `setValue_forKey`: nothing is parsed or formatted, the null object is a value like any other, and a value that a
// number property cannot take raises as it does there. Every value set is framed by `willChangeValueForKey` and
// `didChangeValueForKey`, so that observers see it.
//
// A property is assigned when the table of the object's class (`_ZRObjectModelCacheManager`) holds its name and does
// not call it read-only. Properties of ancestors always count. Observers may change, or let go of, everything that
// takes part.

/// Sets every property of `self` that `source` has, too, to the source's value, in the order of the source's table. A
/// null value is left out. A property that the source declares twice is assigned twice.
///
/// `includeFather` and `nilValueEnable` have no effect: ancestors are always included, a missing value is never
/// assigned. Gives `self` back; a null `source` changes nothing, a null `self` gives null.
ZR_EXPORT id assignPropertiesFrom_includeFather_nilValueEnable_propertyEnable(NSObject* self, NSObject* source,
                                                                              bool includeFather, bool nilValueEnable,
                                                                              PropertyEnable propertyEnable);
ZR_EXPORT id assignPropertiesFrom(NSObject* self, NSObject* source);
ZR_EXPORT id assignPropertiesFrom_includeFather(NSObject* self, NSObject* source, bool includeFather);
ZR_EXPORT id assignPropertiesFrom_nilValueEnable(NSObject* self, NSObject* source, bool nilValueEnable);

/// Sets the properties of `self` that `source` has entries for, in the dictionary's order.
///
/// `replacedKeys` maps keys of `source` to property names, never the reverse, and wins over the key itself; null is
/// empty. Entries for unknown and read-only properties, and keys that are no strings and are not replaced, are
/// ignored. A null `source` or `self` does nothing. Raises `NSGenericException` when an observer adds entries to
/// `source` meanwhile, or removes some.
ZR_EXPORT void assignPropertiesFromDictionary_replacedKeys(NSObject* self, NSDictionary* source,
                                                           NSDictionary* replacedKeys);
ZR_EXPORT void assignPropertiesFromDictionary(NSObject* self, NSDictionary* source);

/// A new `T`, filled like an existing one. Never null.
template <class T>
[[nodiscard]] Ref<T> assignPropertiesFrom_includeFather_nilValueEnable_propertyEnable(NSObject* source,
                                                                                      bool includeFather,
                                                                                      bool nilValueEnable,
                                                                                      PropertyEnable propertyEnable) {
    const Ref<T> made = make<T>();
    assignPropertiesFrom_includeFather_nilValueEnable_propertyEnable(made, source, includeFather, nilValueEnable,
                                                                     propertyEnable);
    return made;
}

template <class T>
[[nodiscard]] Ref<T> assignPropertiesFrom(NSObject* source) {
    return assignPropertiesFrom_includeFather_nilValueEnable_propertyEnable<T>(source, true, true, nullptr);
}

template <class T>
[[nodiscard]] Ref<T> assignPropertiesFrom_includeFather(NSObject* source, bool includeFather) {
    return assignPropertiesFrom_includeFather_nilValueEnable_propertyEnable<T>(source, includeFather, true, nullptr);
}

template <class T>
[[nodiscard]] Ref<T> assignPropertiesFrom_nilValueEnable(NSObject* source, bool nilValueEnable) {
    return assignPropertiesFrom_includeFather_nilValueEnable_propertyEnable<T>(source, true, nilValueEnable, nullptr);
}

} // namespace zr
