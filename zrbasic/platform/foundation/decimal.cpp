#include <zrbasic/platform/foundation/decimal.h>
#include <zrbasic/platform/foundation/decimal_p.h>
#include <zrbasic/platform/foundation/wide_integer_p.h>

#include <algorithm>
#include <bit>
#include <utility>

namespace zr {

namespace {

using namespace detail;

constexpr int quotientDigits = 38;

// What was cut off behind the last digit: the first digit of it, and whether anything but zeros came after.
struct CutDigits {
    unsigned first = 0;
    bool more = false;

    [[nodiscard]] bool any() const { return first != 0 || more; }
};

void cutDigits(DoubleWide& value, int count, CutDigits& cut) {
    for (int behind = count - 1; behind > 0;) {
        const int step = std::min(behind, 19);
        const std::uint64_t rest = divideByWord(value, lowWord(powersOfTen[static_cast<std::size_t>(step)]));
        cut = {0, cut.any() || rest != 0};
        behind -= step;
    }
    if (count > 0) {
        cut = {static_cast<unsigned>(divideByWord(value, 10)), cut.any()};
    }
}

bool roundsAwayFromZero(NSRoundingMode mode, bool negative, bool odd, const CutDigits& cut) {
    switch (mode) {
        case NSRoundDown:
            return negative && cut.any();
        case NSRoundUp:
            return !negative && cut.any();
        case NSRoundBankers:
            return cut.first > 5 || (cut.first == 5 && (cut.more || odd));
        case NSRoundPlain:
            break;
    }
    return cut.first >= 5;
}

NSCalculationError fail(NSDecimal& result, NSCalculationError error) {
    result = NSDecimal::notANumber();
    return error;
}

NSCalculationError settle(NSDecimal& result, bool negative, Wide mantissa, std::int64_t exponent) {
    result.negative = negative;
    setMantissa(result, mantissa);
    if (exponent >= NSDecimalMinExponent && exponent <= NSDecimalMaxExponent && !endsWithZero(mantissa)) {
        result.exponent = static_cast<std::int32_t>(exponent);
        return NSCalculationNoError;
    }
    return detail::settleDecimal(result, exponent);
}

// The value plus whatever `cut` already holds, rounded to fit a mantissa.
NSCalculationError finish(NSDecimal& result, bool negative, DoubleWide value, std::int64_t exponent, CutDigits cut,
                          NSRoundingMode mode) {
    int dropped = std::max(0, digitsBelow(bitCount(value) - wideBits));
    cutDigits(value, dropped, cut);
    while (value.high != 0) {
        cutDigits(value, 1, cut);
        ++dropped;
    }
    if (roundsAwayFromZero(mode, negative, (value.low & 1) != 0, cut)) {
        if (value.low == ~Wide{0}) {
            // Rounding would carry out of the mantissa: it takes one digit less.
            const bool inexact = cut.any();
            cut = {};
            cutDigits(value, 1, cut);
            cut.more = inexact;
            ++dropped;
        }
        value.low += roundsAwayFromZero(mode, negative, (value.low & 1) != 0, cut) ? 1 : 0;
    }
    exponent += dropped;
    if (exponent > NSDecimalMaxExponent && value.low != 0) {
        return fail(result, NSCalculationOverflow);
    }
    const NSCalculationError error = settle(result, negative, value.low, exponent);
    return error == NSCalculationNoError && cut.any() ? NSCalculationLossOfPrecision : error;
}

NSDecimal compacted(const NSDecimal& number) {
    NSDecimal result = number;
    // Nearly every number is compact already.
    if (endsWithZero(mantissaOf(number))) {
        NSDecimalCompact(&result);
    }
    return result;
}

// Both magnitudes, written with one exponent; `exact` unless the lower number had digits too far below the other.
struct Aligned {
    DoubleWide higher;
    DoubleWide lower;
    std::int64_t exponent;
    bool exact;
};

Aligned align(const NSDecimal& higher, const NSDecimal& lower) {
    // 76 digits fit the double width with room for a sum. That is twice a mantissa, so digits lost can only be
    // far behind the last digit of the result.
    constexpr int roomyDigits = 76;
    const int distance = higher.exponent - lower.exponent;
    const Wide mantissa = mantissaOf(higher);
    const int scale = std::min(distance, roomyDigits - digitCount(mantissa));
    Aligned aligned{scaledUp(mantissa, scale), {0, mantissaOf(lower)}, higher.exponent - scale, true};
    if (distance > scale) {
        CutDigits cut;
        cutDigits(aligned.lower, std::min(distance - scale, 40), cut);
        aligned.exact = !cut.any();
    }
    return aligned;
}

NSCalculationError add(NSDecimal& result, NSDecimal left, NSDecimal right, NSRoundingMode mode) {
    if (left.isNotANumber() || right.isNotANumber()) {
        return fail(result, NSCalculationOverflow);
    }
    if (left.isZero() || right.isZero()) {
        result = compacted(left.isZero() ? right : left);
        return NSCalculationNoError;
    }
    // An uncompacted number may carry a low exponent for no reason.
    NSDecimalCompact(&left);
    NSDecimalCompact(&right);
    if (left.exponent < right.exponent) {
        std::swap(left, right);
    }
    const Aligned aligned = align(left, right);
    CutDigits cut;
    cut.more = !aligned.exact;
    if (left.negative == right.negative) {
        return finish(result, left.negative, sum(aligned.higher, aligned.lower.low), aligned.exponent, cut, mode);
    }
    const std::strong_ordering ordering = order(aligned.higher, aligned.lower);
    if (ordering == std::strong_ordering::equal && aligned.exact) {
        result = NSDecimal{};
        return NSCalculationNoError;
    }
    if (ordering == std::strong_ordering::less) {
        return finish(result, right.negative, difference(aligned.lower, aligned.higher), aligned.exponent, cut, mode);
    }
    // The part cut off the lower number is still to be taken away: one unit less, and something on top of it.
    const DoubleWide taken = sum(aligned.lower, aligned.exact ? 0 : 1);
    return finish(result, left.negative, difference(aligned.higher, taken), aligned.exponent, cut, mode);
}

// Quotients by the usual price steps end after a few digits and need no long division.
bool divideQuickly(Wide& quotient, std::int64_t& exponent, std::uint64_t dividend, std::uint64_t divisor) {
    constexpr std::size_t mostDigits = 15;
    if ((divisor & (divisor - 1)) == 0) {
        const auto power = static_cast<std::size_t>(std::countr_zero(divisor));
        if (power > mostDigits) {
            return false;
        }
        quotient = Wide{dividend} * powersOfFive[power];
        exponent -= static_cast<std::int64_t>(power);
        return true;
    }
    for (std::size_t power = 1; power <= mostDigits && powersOfFive[power] <= divisor; ++power) {
        if (powersOfFive[power] == divisor) {
            quotient = Wide{dividend} << power;
            exponent -= static_cast<std::int64_t>(power);
            return true;
        }
    }
    quotient = dividend / divisor;
    return quotient * divisor == dividend;
}

// Rounds by the remainder of a division whose quotient already has all its digits.
CutDigits digitsBehind(Wide remainder, Wide divisor) {
    const Wide other = divisor - remainder;
    if (remainder == 0) {
        return {};
    }
    return remainder < other ? CutDigits{0, true} : CutDigits{5, remainder > other};
}

NSCalculationError divideSlowly(NSDecimal& result, bool negative, Wide dividend, Wide divisor, std::int64_t exponent,
                                NSRoundingMode mode) {
    const int scale = std::max(0, quotientDigits - 1 - (digitCount(dividend) - digitCount(divisor)));
    auto [quotient, remainder] = divide(scaledUp(dividend, scale), divisor);
    exponent -= scale;
    if (remainder != 0 && quotient < powersOfTen[quotientDigits - 1]) {
        const Division digit = divide(product(remainder, 10), divisor);
        quotient = quotient * 10 + digit.quotient;
        remainder = digit.remainder;
        --exponent;
    }
    CutDigits cut = digitsBehind(remainder, divisor);
    DoubleWide value{0, quotient};
    while (value.low >= powersOfTen[quotientDigits]) {
        cutDigits(value, 1, cut);
        ++exponent;
    }
    value.low += roundsAwayFromZero(mode, negative, (value.low & 1) != 0, cut) ? 1 : 0;
    const NSCalculationError error = settle(result, negative, value.low, exponent);
    return error == NSCalculationNoError && cut.any() ? NSCalculationLossOfPrecision : error;
}

} // namespace

namespace detail {

NSCalculationError settleDecimal(NSDecimal& number, std::int64_t exponent) noexcept {
    Wide mantissa = mantissaOf(number);
    if (mantissa == 0) {
        number = NSDecimal{};
        return NSCalculationNoError;
    }
    while (exponent > NSDecimalMaxExponent) {
        if (mantissa > ~Wide{0} / 10) {
            return fail(number, NSCalculationOverflow);
        }
        mantissa *= 10;
        --exponent;
    }
    stripTrailingZeros(mantissa, exponent, NSDecimalMaxExponent);
    if (exponent < NSDecimalMinExponent) {
        return fail(number, NSCalculationUnderflow);
    }
    setMantissa(number, mantissa);
    number.exponent = static_cast<std::int32_t>(exponent);
    return NSCalculationNoError;
}

} // namespace detail

void NSDecimalCompact(NSDecimal* number) noexcept {
    if ((number->low | number->high) == 0) {
        number->exponent = 0;
        return;
    }
    detail::settleDecimal(*number, number->exponent);
}

NSCalculationError NSDecimalNormalize(NSDecimal* number1, NSDecimal* number2, NSRoundingMode mode) noexcept {
    if (number1->isNotANumber() || number2->isNotANumber()) {
        *number1 = *number2 = NSDecimal::notANumber();
        return NSCalculationOverflow;
    }
    if (number1->exponent == number2->exponent) {
        return NSCalculationNoError;
    }
    NSDecimal& higher = number1->exponent > number2->exponent ? *number1 : *number2;
    NSDecimal& lower = number1->exponent > number2->exponent ? *number2 : *number1;
    if (higher.isZero() || lower.isZero()) {
        (higher.isZero() ? higher : lower).exponent = (higher.isZero() ? lower : higher).exponent;
        return NSCalculationNoError;
    }
    Wide mantissa = mantissaOf(higher);
    while (higher.exponent > lower.exponent && mantissa <= ~Wide{0} / 10) {
        mantissa *= 10;
        --higher.exponent;
    }
    setMantissa(higher, mantissa);
    if (higher.exponent == lower.exponent) {
        return NSCalculationNoError;
    }
    CutDigits cut;
    DoubleWide rest{0, mantissaOf(lower)};
    cutDigits(rest, std::min(higher.exponent - lower.exponent, 40), cut);
    rest.low += roundsAwayFromZero(mode, lower.negative, (rest.low & 1) != 0, cut) ? 1 : 0;
    setMantissa(lower, rest.low);
    lower.exponent = higher.exponent;
    lower.negative = lower.negative && rest.low != 0;
    return cut.any() ? NSCalculationLossOfPrecision : NSCalculationNoError;
}

NSComparisonResult NSDecimalCompare(const NSDecimal* left, const NSDecimal* right) noexcept {
    if (left->isNotANumber() || right->isNotANumber()) {
        const int both = (left->isNotANumber() ? 0 : 1) - (right->isNotANumber() ? 0 : 1);
        return static_cast<NSComparisonResult>(both);
    }
    const Wide leftMantissa = mantissaOf(*left);
    const Wide rightMantissa = mantissaOf(*right);
    const int leftSign = leftMantissa == 0 ? 0 : (left->negative ? -1 : 1);
    const int rightSign = rightMantissa == 0 ? 0 : (right->negative ? -1 : 1);
    if (leftSign != rightSign) {
        return leftSign < rightSign ? NSOrderedAscending : NSOrderedDescending;
    }
    if (leftSign == 0) {
        return NSOrderedSame;
    }
    std::strong_ordering ordering = std::strong_ordering::equal;
    if (left->exponent == right->exponent) {
        ordering = leftMantissa <=> rightMantissa;
    } else {
        const NSDecimal& higher = left->exponent > right->exponent ? *left : *right;
        const NSDecimal& lower = left->exponent > right->exponent ? *right : *left;
        const Aligned aligned = align(higher, lower);
        // Digits are only cut far below the higher number, so they cannot decide.
        ordering = order(aligned.higher, aligned.lower);
        if (left->exponent < right->exponent) {
            ordering = 0 <=> ordering;
        }
    }
    if (ordering == std::strong_ordering::equal) {
        return NSOrderedSame;
    }
    return (ordering == std::strong_ordering::less) == (leftSign > 0) ? NSOrderedAscending : NSOrderedDescending;
}

NSCalculationError NSDecimalAdd(NSDecimal* result, const NSDecimal* left, const NSDecimal* right,
                                NSRoundingMode mode) noexcept {
    return add(*result, *left, *right, mode);
}

NSCalculationError NSDecimalSubtract(NSDecimal* result, const NSDecimal* left, const NSDecimal* right,
                                     NSRoundingMode mode) noexcept {
    NSDecimal negated = *right;
    if ((negated.low | negated.high) != 0) {
        negated.negative = !negated.negative;
    }
    return add(*result, *left, negated, mode);
}

NSCalculationError NSDecimalMultiply(NSDecimal* result, const NSDecimal* left, const NSDecimal* right,
                                     NSRoundingMode mode) noexcept {
    if (left->isNotANumber() || right->isNotANumber()) {
        return fail(*result, NSCalculationOverflow);
    }
    if (left->isZero() || right->isZero()) {
        *result = NSDecimal{};
        return NSCalculationNoError;
    }
    const bool negative = left->negative != right->negative;
    std::int64_t exponent = std::int64_t{left->exponent} + right->exponent;
    // Only near the top of the range does it matter that trailing zeros belong to the exponent.
    constexpr std::int64_t highExponent = NSDecimalMaxExponent - 80;
    if ((left->high | right->high) == 0 && exponent < highExponent) {
        return settle(*result, negative, Wide{left->low} * right->low, exponent);
    }
    const NSDecimal first = compacted(*left);
    const NSDecimal second = compacted(*right);
    exponent = std::int64_t{first.exponent} + second.exponent;
    return finish(*result, negative, product(mantissaOf(first), mantissaOf(second)), exponent, {}, mode);
}

NSCalculationError NSDecimalDivide(NSDecimal* result, const NSDecimal* left, const NSDecimal* right,
                                   NSRoundingMode mode) noexcept {
    if (left->isNotANumber() || right->isNotANumber()) {
        return fail(*result, NSCalculationOverflow);
    }
    if (right->isZero()) {
        return fail(*result, NSCalculationDivideByZero);
    }
    if (left->isZero()) {
        *result = NSDecimal{};
        return NSCalculationNoError;
    }
    const bool negative = left->negative != right->negative;
    const std::int64_t exponent = std::int64_t{left->exponent} - right->exponent;
    if ((left->high | right->high) == 0) {
        Wide quotient = 0;
        std::int64_t shiftedExponent = exponent;
        if (divideQuickly(quotient, shiftedExponent, left->low, right->low)) {
            return settle(*result, negative, quotient, shiftedExponent);
        }
    }
    return divideSlowly(*result, negative, mantissaOf(*left), mantissaOf(*right), exponent, mode);
}

namespace detail {

std::optional<ShortQuotient> shortQuotient(const NSDecimal& dividend, const NSDecimal& divisor) noexcept {
    if ((dividend.high | divisor.high) != 0 || divisor.low == 0 || dividend.isNotANumber()) {
        return std::nullopt;
    }
    std::uint64_t left = dividend.low;
    std::uint64_t right = divisor.low;
    const int shift = dividend.exponent - divisor.exponent;
    const auto distance = static_cast<std::size_t>(shift < 0 ? -shift : shift);
    std::uint64_t& scaled = shift < 0 ? right : left;
    // 10^19 is the largest power that a word holds.
    if (distance > 19 || __builtin_mul_overflow(scaled, lowWord(powersOfTen[distance]), &scaled)) {
        return std::nullopt;
    }
    return ShortQuotient{left / right, left % right, right};
}

} // namespace detail

NSCalculationError NSDecimalPower(NSDecimal* result, const NSDecimal* number, NSUInteger power,
                                  NSRoundingMode mode) noexcept {
    if (number->isNotANumber()) {
        return fail(*result, NSCalculationOverflow);
    }
    NSDecimal square = *number;
    NSDecimal total = decimalFromUInt64(1);
    bool inexact = false;
    while (power != 0) {
        NSCalculationError error = NSCalculationNoError;
        if ((power & 1) != 0) {
            error = NSDecimalMultiply(&total, &total, &square, mode);
            inexact = inexact || error == NSCalculationLossOfPrecision;
        }
        power >>= 1;
        // The square behind the last bit is not needed and must not fail.
        if (power != 0 && error <= NSCalculationLossOfPrecision) {
            error = NSDecimalMultiply(&square, &square, &square, mode);
            inexact = inexact || error == NSCalculationLossOfPrecision;
        }
        if (error > NSCalculationLossOfPrecision) {
            return fail(*result, error);
        }
    }
    *result = total;
    return inexact ? NSCalculationLossOfPrecision : NSCalculationNoError;
}

NSCalculationError NSDecimalMultiplyByPowerOf10(NSDecimal* result, const NSDecimal* number, std::int16_t power,
                                                NSRoundingMode mode) noexcept {
    static_cast<void>(mode);
    if (number->isNotANumber()) {
        return fail(*result, NSCalculationOverflow);
    }
    NSDecimal shifted = compacted(*number);
    const std::int64_t exponent = std::int64_t{shifted.exponent} + power;
    if (!shifted.isZero() && exponent > NSDecimalMaxExponent) {
        return fail(*result, NSCalculationOverflow);
    }
    const NSCalculationError error = detail::settleDecimal(shifted, exponent);
    *result = shifted;
    return error;
}

void NSDecimalRound(NSDecimal* result, const NSDecimal* number, NSInteger scale, NSRoundingMode mode) noexcept {
    NSDecimal rounded = compacted(*number);
    if (scale != NSDecimalNoScale && !rounded.isNotANumber() && scale < -rounded.exponent) {
        // Beyond 40 digits nothing is left of a mantissa, wherever the rounding falls.
        const NSInteger lowest = -NSInteger{rounded.exponent} - 40;
        const int count = static_cast<int>(-NSInteger{rounded.exponent} - std::max(scale, lowest));
        CutDigits cut;
        DoubleWide value{0, mantissaOf(rounded)};
        cutDigits(value, count, cut);
        value.low += roundsAwayFromZero(mode, rounded.negative, (value.low & 1) != 0, cut) ? 1 : 0;
        setMantissa(rounded, value.low);
        detail::settleDecimal(rounded, scale < -1000 ? 1000 : -scale);
    }
    *result = rounded;
}

NSDecimal decimalFromUInt64(std::uint64_t value) noexcept {
    NSDecimal result;
    settle(result, false, value, 0);
    return result;
}

NSDecimal decimalFromInt64(std::int64_t value) noexcept {
    const auto bits = static_cast<std::uint64_t>(value);
    NSDecimal result;
    settle(result, value < 0, value < 0 ? 0 - bits : bits, 0);
    return result;
}

} // namespace zr
