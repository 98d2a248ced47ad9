#pragma once

#include <zrbasic/platform/foundation/string.h>

namespace zr {

/// The class's name; null for null.
[[nodiscard]] ZR_EXPORT Ref<NSString> NSStringFromClass(const Class* ofClass);
/// The class of that name; null when there is none, and for null.
[[nodiscard]] ZR_EXPORT Class* NSClassFromString(NSString* name);
/// The selector's name; null for the null selector.
[[nodiscard]] ZR_EXPORT Ref<NSString> NSStringFromSelector(SEL selector);
/// The selector of that name, made on first use; the null selector for null and "".
[[nodiscard]] ZR_EXPORT SEL NSSelectorFromString(NSString* name);
[[nodiscard]] ZR_EXPORT Ref<NSString> NSStringFromProtocol(const Protocol* protocol);
[[nodiscard]] ZR_EXPORT Protocol* NSProtocolFromString(NSString* name);

} // namespace zr
