#pragma once

#include <zrbasic/platform/runtime/object.h>

namespace zr {

namespace detail {

/// An array, dictionary or set as text over several lines. What is no collection is written by its own description,
/// in quotes unless that is all ASCII letters and digits; a collection inside itself is written as "...".
[[nodiscard]] Ref<NSString> describeCollection(const NSObject* collection);

/// Raises `NSInvalidArgumentException` for the null selector.
void requireSelector(const NSObject* collection, const char* operation, SEL selector);

} // namespace detail

} // namespace zr
