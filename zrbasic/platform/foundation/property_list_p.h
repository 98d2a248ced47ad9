#pragma once

#include <zrbasic/platform/runtime/object.h>

#include <string>
#include <string_view>

namespace zr {

class NSDictionary;
class NSString;

} // namespace zr

/// Values that can be stored: strings, numbers, dates, data, and arrays and string-keyed dictionaries of these, 128
/// deep at most.
///
/// As text they are JSON that a person can read and correct. What JSON has no type for is an object of one entry,
/// named for the type: `{"date": "686000000.5"}`. Usable from any thread; throws `std::bad_alloc` only.
namespace zr::detail {

/// `text` as a string of exactly the class `NSString`, which runs no code of the application's when it is compared or
/// let go. Must not be null.
[[nodiscard]] Ref<NSString> plainString(NSString* text);

/// A copy of `value` that shares nothing with it that can change; null when it, or something in it, cannot be stored,
/// and for null.
[[nodiscard]] id propertyListCopy(NSObject* value);

/// `values`, a copy made by `propertyListCopy`, as text. Equal text means equal values of equal types.
[[nodiscard]] std::string propertyListText(NSDictionary* values);

/// What `propertyListText` wrote; null for anything else.
[[nodiscard]] Ref<NSDictionary> propertyListFromText(std::string_view text);

} // namespace zr::detail
