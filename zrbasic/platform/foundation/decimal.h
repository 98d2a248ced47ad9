#pragma once

#include <zrbasic/platform/runtime/export.h>
#include <zrbasic/platform/runtime/types.h>

#include <cstdint>
#include <string>
#include <string_view>

/// Decimal floating point with a mantissa of 128 bits: 38 digits always fit, 39 sometimes.
///
/// For prices, quantities and ratios that must come out as a person would write them. The functions named `NSDecimal…`
/// work on caller-supplied storage and report errors as results; `NSDecimalNumber` is the same arithmetic on objects
/// and raises instead. Nothing here throws but `std::bad_alloc` (from `decimalText`) or keeps state, so every function
/// may be called from any thread. Pointers must not be null; a result may be one of the operands.
namespace zr {

/// Where a digit that does not fit goes.
enum NSRoundingMode : std::uint64_t {
    NSRoundPlain = 0,   ///< to the nearest; halves away from zero
    NSRoundDown = 1,    ///< to the lower value, so -1.5 becomes -2
    NSRoundUp = 2,      ///< to the higher value, so -1.5 becomes -1
    NSRoundBankers = 3, ///< to the nearest; halves to the even digit
};

enum NSCalculationError : std::uint64_t {
    NSCalculationNoError = 0,
    NSCalculationLossOfPrecision = 1, ///< digits were rounded away; the result is usable
    NSCalculationUnderflow = 2,       ///< below the smallest exponent; the result is no number
    NSCalculationOverflow = 3,        ///< above the largest exponent, or an operand was no number; nor is the result
    NSCalculationDivideByZero = 4,    ///< the result is no number
};

inline constexpr int NSDecimalMaxExponent = 127;
inline constexpr int NSDecimalMinExponent = -128;
/// The scale that asks for no rounding at all.
inline constexpr NSInteger NSDecimalNoScale = 32767;

/// A value: sign times mantissa times 10 to the power of `exponent`, which lies between -128 and 127.
///
/// A fresh one is zero. Zero has the plus sign; an empty mantissa with the minus sign is "no number" (NaN). There is
/// no negative zero and no infinity. Every function here gives the compact form, without trailing zeros in the
/// mantissa, except `NSDecimalNormalize`; all accept either form.
struct NSDecimal {
    std::uint64_t low = 0;  ///< the lower 64 bits of the mantissa
    std::uint64_t high = 0; ///< the upper 64 bits of the mantissa
    std::int32_t exponent = 0;
    bool negative = false;

    [[nodiscard]] constexpr bool isZero() const noexcept { return (low | high) == 0 && !negative; }
    [[nodiscard]] constexpr bool isNotANumber() const noexcept { return (low | high) == 0 && negative; }
    [[nodiscard]] static constexpr NSDecimal notANumber() noexcept { return {0, 0, 0, true}; }
};

[[nodiscard]] inline bool NSDecimalIsNotANumber(const NSDecimal* number) noexcept {
    return number->isNotANumber();
}
inline void NSDecimalCopy(NSDecimal* destination, const NSDecimal* source) noexcept {
    *destination = *source;
}

/// Moves trailing zeros of the mantissa into the exponent, as far as the exponent reaches.
ZR_EXPORT void NSDecimalCompact(NSDecimal* number) noexcept;

/// Brings both to one exponent, so that their mantissas can be compared or added digit by digit.
///
/// When the mantissas cannot hold that many digits, the number with the lower exponent loses some of its own, rounded
/// by `mode`, and the result says so.
ZR_EXPORT NSCalculationError NSDecimalNormalize(NSDecimal* number1, NSDecimal* number2, NSRoundingMode mode) noexcept;

/// Exact ordering of two numbers. NaN equals NaN and stands below everything else.
[[nodiscard]] ZR_EXPORT NSComparisonResult NSDecimalCompare(const NSDecimal* left, const NSDecimal* right) noexcept;

/// The sum, rounded once, by `mode`, when it has more digits than fit.
ZR_EXPORT NSCalculationError NSDecimalAdd(NSDecimal* result, const NSDecimal* left, const NSDecimal* right,
                                          NSRoundingMode mode) noexcept;
/// The difference, rounded like a sum.
ZR_EXPORT NSCalculationError NSDecimalSubtract(NSDecimal* result, const NSDecimal* left, const NSDecimal* right,
                                               NSRoundingMode mode) noexcept;
/// The exact product, rounded once, by `mode`, when it has more digits than fit.
ZR_EXPORT NSCalculationError NSDecimalMultiply(NSDecimal* result, const NSDecimal* left, const NSDecimal* right,
                                               NSRoundingMode mode) noexcept;
/// The quotient: exact when it ends within 38 significant digits, else rounded to 38 by `mode`.
///
/// No number as an operand wins over a zero divisor.
ZR_EXPORT NSCalculationError NSDecimalDivide(NSDecimal* result, const NSDecimal* left, const NSDecimal* right,
                                             NSRoundingMode mode) noexcept;
/// `number` multiplied with itself `power` times; every product on the way is rounded. The power 0 gives 1.
ZR_EXPORT NSCalculationError NSDecimalPower(NSDecimal* result, const NSDecimal* number, NSUInteger power,
                                            NSRoundingMode mode) noexcept;
/// Shifts the decimal point to the right by `power` digits. Never rounds, so `mode` has no effect.
ZR_EXPORT NSCalculationError NSDecimalMultiplyByPowerOf10(NSDecimal* result, const NSDecimal* number,
                                                          std::int16_t power, NSRoundingMode mode) noexcept;
/// Rounds to `scale` digits after the decimal point; a negative scale rounds to tens, hundreds and so on.
///
/// A result too large to be held is NaN.
ZR_EXPORT void NSDecimalRound(NSDecimal* result, const NSDecimal* number, NSInteger scale,
                              NSRoundingMode mode) noexcept;

[[nodiscard]] ZR_EXPORT NSDecimal decimalFromInt64(std::int64_t value) noexcept;
[[nodiscard]] ZR_EXPORT NSDecimal decimalFromUInt64(std::uint64_t value) noexcept;

/// The shortest decimal that reads back as `value`: 0.1 gives 0.1, and 0.1 + 0.2 gives 0.30000000000000004.
///
/// NaN, infinities and magnitudes outside the range of a decimal (about 1e-128 to 3.4e165) give NaN.
[[nodiscard]] ZR_EXPORT NSDecimal decimalFromDouble(double value) noexcept;
/// As for a double, with the shortest decimal that reads back as the same float.
[[nodiscard]] ZR_EXPORT NSDecimal decimalFromFloat(float value) noexcept;

/// Reads a number from the start of `text`, whatever the locale, and ignores what follows it.
///
/// White space and line breaks, one sign, ASCII digits, a point with digits and an exponent are taken, all of them
/// optional: "12abc" is 12, "1,5" is 1, ".5" is 0.5, "-" is 0. When there is none of sign, digit and point, the result
/// is NaN, as it is when the value is out of range. Digits that the mantissa cannot hold are cut off.
[[nodiscard]] ZR_EXPORT NSDecimal decimalFromText(std::u16string_view text) noexcept;
[[nodiscard]] ZR_EXPORT NSDecimal decimalFromText(std::string_view text) noexcept;

/// Plain digits, never an exponent: "0.5", "-12", "100", and "NaN" for no number.
[[nodiscard]] ZR_EXPORT std::string decimalText(const NSDecimal& number);

/// The nearest double, ties to even; NaN for no number.
[[nodiscard]] ZR_EXPORT double decimalToDouble(const NSDecimal& number) noexcept;
/// The whole part, cut toward zero and clamped to the range; 0 for no number.
[[nodiscard]] ZR_EXPORT std::int64_t decimalToInt64(const NSDecimal& number) noexcept;
/// The whole part, cut toward zero; clamped at the top, while a negative value gives the bits of its signed whole part.
[[nodiscard]] ZR_EXPORT std::uint64_t decimalToUInt64(const NSDecimal& number) noexcept;

} // namespace zr
