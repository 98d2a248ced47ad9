#pragma once

#include <zrbasic/platform/foundation/decimal_number.h>
#include <zrbasic/platform/foundation/string.h>

#include <cstddef>
#include <string>

namespace replay {

/// The exact number that a server's value stands for: text of digits with or without sign and fraction, or a number.
/// Null for everything else, and for more digits than a decimal holds.
[[nodiscard]] zr::Ref<zr::NSDecimalNumber> decimalFrom(zr::NSObject* value);

/// With at least so many decimals, so that a column of prices lines up at the point.
[[nodiscard]] std::string textOf(zr::NSNumber* number, std::size_t decimals = 0);

/// "5,235"
[[nodiscard]] std::string grouped(std::size_t count);

} // namespace replay
