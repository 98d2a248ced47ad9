#ifndef ZRBASIC_PLATFORM_FOUNDATION_DECIMAL_P_H
#define ZRBASIC_PLATFORM_FOUNDATION_DECIMAL_P_H

#include <zrbasic/platform/foundation/decimal.h>

#include <cstdint>

namespace zr::detail {

/// Makes `number`, whose mantissa and sign stand, the compact form of its mantissa times 10 to the power of `exponent`.
///
/// An exponent above the range is brought down by appending zeros while they fit. What does not fit the range either
/// way becomes NaN and is reported.
NSCalculationError settleDecimal(NSDecimal& number, std::int64_t exponent) noexcept;

[[noreturn]] void raiseDecimal(NSCalculationError error);

/// Raises the exception that stands for `error`; a loss of precision is none.
inline void checkDecimal(NSCalculationError error) {
    if (error > NSCalculationLossOfPrecision) [[unlikely]] {
        raiseDecimal(error);
    }
}

} // namespace zr::detail

#endif
