#pragma once

#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/export.h>

/// What counts as text, trimming, and plain comparisons; by pattern, see core/pattern_matching.h.
///
/// Lengths count UTF-16 code units. White space is the tab, the space separators of Unicode and U+200B; line breaks
/// are U+000A to U+000D, U+0085, U+2028 and U+2029. A null receiver gives the zero result. Everything here may be
/// used from any thread; nothing throws but `std::bad_alloc`.
namespace zr {

/// Whether `value` is text worth speaking of: a string of more than white space.
///
/// False for null, for the null object, for any other kind of object, for "" and for blanks. Line breaks are no
/// blanks here: a lone line feed is valid text, although both trimming operations leave nothing of it.
[[nodiscard]] ZR_EXPORT bool ZRXTextValid(NSObject* value);

/// The same answer, by way of the class operation `isLegalString:` of `ZRXTools`, whatever that has become.
[[nodiscard]] ZR_EXPORT bool ZRTextValid(NSObject* value);

/// Valid text without white space and line breaks at both ends. Null when nothing is left and for anything but valid
/// text.
[[nodiscard]] ZR_EXPORT Ref<NSString> ZRXStringByTrimmingWhiteSpace(NSObject* value);

// NSString(ZRXHelper)

/// The same trimming, but never null: "" when nothing is left and for anything but valid text.
[[nodiscard]] ZR_EXPORT Ref<NSString> stringByTrimmingBothEndWhiteSpace(NSObject* value);

/// Whether both are the same but for letter case and character width: "ＡＢＣ" equals "abc".
///
/// False unless `other` is valid text, so two empty strings are not equal.
[[nodiscard]] ZR_EXPORT bool isEqualToStringIgnoringCase(NSString* self, NSObject* other);

/// Whether `self` begins with one of `prefixes`, by code unit. False for a null or empty array; an element that is
/// empty or no string is never a prefix.
[[nodiscard]] ZR_EXPORT bool hasAnyPrefixs(NSString* self, NSArray* prefixes);

/// Whether `self` contains one of `strings`. False for a null or empty array; an element that is empty or no string
/// is never contained. Canonically equivalent texts count as the same, as in `containsString`.
[[nodiscard]] ZR_EXPORT bool containAnyStrings(NSString* self, NSArray* strings);

/// The width on display: 1 for every code unit below U+0080 and 2 for every other, so 4 for an emoji outside the
/// basic plane.
[[nodiscard]] ZR_EXPORT NSUInteger characterLength(NSString* self);

/// The text between the first `start` and the first `end`: `subStringFrom_to("[x]", "[", "]")` is "x".
///
/// Both are looked for from the beginning and by code unit. When either is missing, null or empty, the receiver itself
/// comes back. Raises `NSRangeException` when the first `end` begins before the first `start` ends.
[[nodiscard]] ZR_EXPORT Ref<NSString> subStringFrom_to(NSString* self, NSString* start, NSString* end);

} // namespace zr
