#pragma once

#include <zrbasic/platform/foundation/decimal.h>

#include <cstdint>
#include <optional>

namespace zr::detail {

/// Makes `number`, whose mantissa and sign stand, the compact form of its mantissa times 10 to the power of `exponent`.
///
/// An exponent above the range is brought down by appending zeros while they fit. What does not fit the range either
/// way becomes NaN and is reported.
NSCalculationError settleDecimal(NSDecimal& number, std::int64_t exponent) noexcept;

/// The size of a quotient: its whole part, and what is left of the dividend, in units of the divisor.
struct ShortQuotient {
    std::uint64_t whole;
    std::uint64_t rest;
    std::uint64_t divisor;
};

/// The quotient of two numbers of few digits, without its digits behind the point; nothing for longer numbers, and for
/// a divisor of zero or NaN. Signs are left aside.
std::optional<ShortQuotient> shortQuotient(const NSDecimal& dividend, const NSDecimal& divisor) noexcept;

[[noreturn]] void raiseDecimal(NSCalculationError error);

/// Raises the exception that stands for `error`; a loss of precision is none.
inline void checkDecimal(NSCalculationError error) {
    if (error > NSCalculationLossOfPrecision) [[unlikely]] {
        raiseDecimal(error);
    }
}

} // namespace zr::detail
