#pragma once

#include <zrbasic/platform/foundation/string.h>

/// Hiding the middle of a phone number or an e-mail address, for display.
///
/// Lengths count UTF-16 code units, so a surrogate pair at the edge of the hidden part may be cut. Null for null, the
/// null object and anything but a string. May be used from any thread; nothing throws but `std::bad_alloc`.
namespace zr {

// NSString(ZRXHelper)

/// The receiver with the four code units from index 3 on as "****": "13812345678" becomes "138****5678".
///
/// The receiver itself when it has six code units or fewer. What stands there does not matter, digits or not.
[[nodiscard]] ZR_EXPORT Ref<NSString> desensitizationMobilePhone(NSObject* self);

/// The address with all but the first and last code unit before the "@" as "****": "abcdef@host" becomes
/// "a****f@host". There are four stars, however much they hide, and also when they hide a single one.
///
/// The receiver itself when it does not hold exactly one "@" or fewer than three code units stand before it.
[[nodiscard]] ZR_EXPORT Ref<NSString> desensitizationEmail(NSObject* self);

} // namespace zr
