#pragma once

#include <zrbasic/platform/runtime/export.h>
#include <zrbasic/platform/runtime/ref.h>
#include <zrbasic/platform/runtime/types.h>

/// Typed reads with defaults, for replies whose values may be missing, of another type than expected, or the null
/// object; writes that refuse such values are in collections/dictionary_writing.h.
///
/// A null receiver gives the zero result, so does a null key except where noted. The null object counts as present: no
/// read replaces it by the default, and as a number it reads as zero. Strings convert as far as they begin with a
/// number ("12abc" is 12) or with a yes ("YES", "true"). A stored object that knows no such conversion, an array for
/// one, raises `NSInvalidArgumentException`; nothing else here raises.
namespace zr {

class NSDictionary;
class NSMutableDictionary;

// NSDictionary(ZRXHelper)

/// The present value, or else the default. Null for the null key, whatever the default.
[[nodiscard]] ZR_EXPORT id zr_objectForKey_defaultValue(NSDictionary* self, NSObject* key, NSObject* defaultValue);
/// The present value, or null.
[[nodiscard]] ZR_EXPORT id zr_objectForKey(NSDictionary* self, NSObject* key);

/// These two name what is expected and check nothing: a string stored under the key comes back as a string.
[[nodiscard]] ZR_EXPORT id zr_numberForKey_default(NSDictionary* self, NSObject* key, NSObject* defaultValue);
[[nodiscard]] ZR_EXPORT id zr_stringForKey_default(NSDictionary* self, NSObject* key, NSObject* defaultValue);

/// The present value as an integer. The null key reads as 0, not as the default.
[[nodiscard]] ZR_EXPORT NSInteger zr_integerForKey_default(NSDictionary* self, NSObject* key, NSInteger defaultValue);
/// A string reads like a signed integer, "-1" therefore as the largest value. The null key reads as 0.
[[nodiscard]] ZR_EXPORT NSUInteger zr_uintegerForKey_default(NSDictionary* self, NSObject* key,
                                                             NSUInteger defaultValue);
/// The null key reads as false, not as the default.
[[nodiscard]] ZR_EXPORT bool zr_boolForKey_default(NSDictionary* self, NSObject* key, bool defaultValue);
/// Unlike the other conversions, this one gives the default for the null key.
[[nodiscard]] ZR_EXPORT double zr_floatForKey_default(NSDictionary* self, NSObject* key, double defaultValue);

/// A mutable receiver is itself changed and comes back; of any other a mutable copy does. Then the object is stored
/// unless it, or the key, is null or the object is the null object.
ZR_EXPORT Ref<NSMutableDictionary> dictionaryByAddingObject_forKey(NSDictionary* self, NSObject* object, NSObject* key);
/// The same receiver or copy, with all entries of `other` over its own, null objects included. Null adds nothing.
ZR_EXPORT Ref<NSMutableDictionary> dictionaryByAddingKeyValues(NSDictionary* self, NSDictionary* other);

} // namespace zr
