#pragma once

#include <zrbasic/platform/runtime/object.h>

#include <cstddef>
#include <string_view>

namespace zr::detail {

/// How many characters at the start of `text` are a JSON number; 0 when it does not begin with one.
[[nodiscard]] std::size_t lengthOfJsonNumber(std::string_view text);

/// The number written as `token`, which is a whole JSON number; null when it is beyond the range of a double.
[[nodiscard]] id numberFromJson(std::string_view token);

} // namespace zr::detail
