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

/// The size of a quotient: its whole part, and what is behind the point to within a double.
struct ShortQuotient {
    std::uint64_t whole;
    double fraction;
    bool isWhole;
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
