#pragma once

#include <zrbasic/platform/foundation/string.h>

namespace zr::detail {

/// Switches `object` to a hidden class whose setters for `key` announce the change, unless its class does not want
/// that. The object reports the same class as before.
///
/// An object whose class hides itself already keeps that class on top: the announcing class slips in beneath it.
void ensureNotifying(NSObject* object, NSString* key);

} // namespace zr::detail
