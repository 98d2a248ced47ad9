#pragma once

#include <zrbasic/platform/runtime/object.h>

#include <string>

namespace zr::detail {

/// Appends the JSON text of `object` to `json`. Empty when that worked; otherwise what stood in the way, as a clause
/// for people, and `json` holds what was written until then.
[[nodiscard]] std::string writeJson(NSObject* object, NSUInteger options, std::string& json);

} // namespace zr::detail
