#pragma once

#include <zrbasic/platform/runtime/export.h>
#include <zrbasic/platform/runtime/ref.h>
#include <zrbasic/platform/runtime/types.h>

/// Writes that move values between dictionaries without a test around each of them; the platform's own setters store
/// null objects too and raise for null.
///
/// A storable value is neither null nor the null object. What is not storable is not written, and the old entry, if
/// any, stays. A null receiver, key, dictionary or list does nothing unless noted; nothing here raises, except that a
/// key which cannot be copied raises `NSInvalidArgumentException`. The dictionary that is read may be the receiver.
namespace zr {

class NSArray;
class NSDictionary;
class NSMutableDictionary;

// NSMutableDictionary(ZRXHelper)

/// Stores the object when it is storable, else the default when that is.
ZR_EXPORT void zr_setObject_forKey_withDefaultObject(NSMutableDictionary* self, NSObject* object, NSObject* key,
                                                     NSObject* defaultObject);
/// Stores a storable object.
ZR_EXPORT void zr_setObject_forKey(NSMutableDictionary* self, NSObject* object, NSObject* key);
/// Stores a string of more than blanks; a lone line break counts as text. Any other kind is never stored.
ZR_EXPORT void zr_setValidObject_forKey(NSMutableDictionary* self, NSObject* object, NSObject* key);
/// These three store a number.
ZR_EXPORT void zr_setBool_forKey(NSMutableDictionary* self, bool value, NSObject* key);
ZR_EXPORT void zr_setInteger_forKey(NSMutableDictionary* self, NSInteger value, NSObject* key);
ZR_EXPORT void zr_setDouble_forKey(NSMutableDictionary* self, double value, NSObject* key);

/// Takes the entry out and gives back what was stored, a null object too; null when there was none.
ZR_EXPORT id zr_removeObjectForKey(NSMutableDictionary* self, NSObject* key);

/// Fills gaps: writes the entries of `other` whose keys the receiver does not have. A stored null object is no gap.
ZR_EXPORT void complementFrom(NSMutableDictionary* self, NSDictionary* other);
/// Writes the storable entries of `other` over the receiver's.
ZR_EXPORT void mergeValuesFrom(NSMutableDictionary* self, NSDictionary* other);
/// The same for the listed keys only, in the list's order.
ZR_EXPORT void mergeValuesFrom_withKeys(NSMutableDictionary* self, NSDictionary* other, NSArray* keys);
/// The same under other names: the map's keys are keys of `other`, its values the receiver's keys. When two lead to
/// the same one, the later storable value in the map's order stays.
ZR_EXPORT void mergeValuesFrom_withKeyMaps(NSMutableDictionary* self, NSDictionary* other, NSDictionary* keyMaps);

/// Stores the value of the old key under the new one, if it is storable, and takes the old entry out in any case: a
/// null new key drops it, and so does renaming a key to itself.
ZR_EXPORT void renameKey_to(NSMutableDictionary* self, NSObject* oldKey, NSObject* newKey);

/// A new dictionary of the listed keys' storable values. Never null.
[[nodiscard]] ZR_EXPORT Ref<NSMutableDictionary> dictionaryFrom_withKeys(NSDictionary* other, NSArray* keys);

} // namespace zr
