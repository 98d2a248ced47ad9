#pragma once

#include <zrbasic/platform/foundation/string.h>

/// Text for the fields of a web form, and back from percent escapes.
///
/// The two are not each other's inverse: encoding writes a space as "+", which decoding leaves alone. To escape all but
/// a set of your own, use `stringByAddingPercentEncodingWithAllowedCharacters`. A null receiver gives null. May be used
/// from any thread; nothing throws but `std::bad_alloc`.
namespace zr {

// NSString(ZRXHelper)

/// The receiver as a form field: "x y&" becomes "x+y%26".
///
/// ASCII letters and digits, "-", ".", "_" and "~" stay, a space becomes "+", and every other byte of the UTF-8 form,
/// a zero byte too, becomes "%" and two upper-case hexadecimal digits. A lone surrogate is written as U+FFFD.
[[nodiscard]] ZR_EXPORT Ref<NSString> urlEncode(NSString* self);

/// The receiver with its percent escapes decoded; "+" stays "+". Null when an escape is malformed or the bytes are not
/// UTF-8.
[[nodiscard]] ZR_EXPORT Ref<NSString> urlDecode(NSString* self);

} // namespace zr
