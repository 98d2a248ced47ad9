#pragma once

#include <zrbasic/platform/runtime/types.h>

#include <algorithm>

namespace zr::detail {

/// The room to set aside for as many elements as a caller expects: a wrong guess must not exhaust the memory.
[[nodiscard]] constexpr NSUInteger roomFor(NSUInteger capacity) {
    constexpr NSUInteger mostReserved = 65536;
    return std::min(capacity, mostReserved);
}

} // namespace zr::detail
