#include <zrbasic/core/tick.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/decimal_p.h>
#include <zrbasic/platform/foundation/numeric_text.h>
#include <zrbasic/platform/foundation/string.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

namespace zr {

namespace {

// False when one of the two has no decimal value; raises as the division does.
bool divide(NSDecimal& quotient, const NSDecimal& number, const NSDecimal& tick) {
    if (number.isNotANumber() || tick.isNotANumber()) {
        return false;
    }
    detail::checkDecimal(NSDecimalDivide(&quotient, &number, &tick, NSRoundPlain));
    return true;
}

// Toward zero, and to the nearest end of the range.
std::int64_t clampedToInteger(double value) {
    // Exact as a double, unlike the largest integer itself.
    constexpr double limit = 9223372036854775808.0;
    if (value >= limit) {
        return std::numeric_limits<std::int64_t>::max();
    }
    return value < -limit ? std::numeric_limits<std::int64_t>::min() : static_cast<std::int64_t>(value);
}

std::int64_t wholeMultiple(double quotient, NSUInteger mode) {
    const std::int64_t whole = clampedToInteger(quotient);
    // Doubles this large are whole.
    constexpr double wholeFrom = 4503599627370496.0;
    const double rest = quotient < wholeFrom && quotient > -wholeFrom ? quotient - static_cast<double>(whole) : 0;
    switch (mode) {
        case NSRoundPlain:
            return whole + (rest >= 0.5 ? 1 : 0) - (rest <= -0.5 ? 1 : 0);
        case NSRoundDown:
            return whole - (rest < 0 ? 1 : 0);
        case NSRoundUp:
            return whole + (rest > 0 ? 1 : 0);
        default:
            // No bankers' rounding here: callers rely on the zero for every other mode.
            return 0;
    }
}

/// What is to be done with a price: the multiple of the tick that it goes to, and whether it is there already.
struct Multiple {
    std::int64_t value;
    bool isOnTick;
};

/// The multiple for short prices that lie on the tick, or clearly beside it and beside the middle between two ticks.
/// Elsewhere the quotient's last digits and its way through a double decide, and this gives nothing.
std::optional<Multiple> obviousMultiple(const NSDecimal& number, const NSDecimal& tick, NSUInteger mode) {
    const std::optional<detail::ShortQuotient> quotient = detail::shortQuotient(number, tick);
    // Below this size a double still tells a thousandth of a tick.
    constexpr std::uint64_t mostTicks = std::uint64_t{1} << 40;
    constexpr std::uint64_t largestDivisor = std::uint64_t{1} << 62;
    if (!quotient || quotient->whole >= mostTicks || quotient->divisor >= largestDivisor) {
        return std::nullopt;
    }
    const std::uint64_t rest = quotient->rest;
    const std::uint64_t divisor = quotient->divisor;
    const std::uint64_t twice = 2 * rest;
    const std::uint64_t fromMiddle = twice < divisor ? divisor - twice : twice - divisor;
    // About a thousandth of a tick; 0 for divisors so small that every rest is farther off, or exactly in the middle.
    const std::uint64_t margin = divisor >> 10;
    const bool isWhole = rest == 0;
    if (!isWhole && (rest < margin || divisor - rest < margin || fromMiddle < 2 * margin)) {
        return std::nullopt;
    }
    const bool isNegative = number.negative != tick.negative;
    bool goesAwayFromZero = false;
    switch (mode) {
        case NSRoundPlain:
            goesAwayFromZero = twice >= divisor;
            break;
        case NSRoundDown:
            goesAwayFromZero = isNegative && !isWhole;
            break;
        case NSRoundUp:
            goesAwayFromZero = !isNegative && !isWhole;
            break;
        default:
            return std::nullopt;
    }
    const auto size = static_cast<std::int64_t>(quotient->whole + (goesAwayFromZero ? 1 : 0));
    return Multiple{isNegative ? -size : size, isWhole};
}

bool isEqualTo(const NSDecimal& quotient, std::int64_t multiple) {
    // A compact quotient with a negative exponent has decimals.
    if (quotient.exponent < 0) {
        return false;
    }
    const NSDecimal whole = decimalFromInt64(multiple);
    return NSDecimalCompare(&quotient, &whole) == NSOrderedSame;
}

} // namespace

ZR_GROUP(NSNumber, ZRXHelper) {
    is.method<&roundWithTick_roundingMode>("roundWithTick:roundingMode:")
        .method<&roundMatchWithTick>("roundMatchWithTick:")
        .method<&isEqualToAnyNumberInArray>("isEqualToAnyNumberInArray:")
        .method<&zr_compare>("zr_compare:")
        .classMethod<&detail::precisionNumber>("precisionNumberByOriginalNumber:");
}

Ref<NSNumber> roundWithTick_roundingMode(NSNumber* self, NSNumber* tick, NSUInteger mode) {
    if (self == nullptr || tick == nullptr) {
        return self;
    }
    const NSDecimal step = tick->decimalValue();
    if (step.isZero()) {
        return self;
    }
    const NSDecimal number = self->decimalValue();
    std::optional<Multiple> multiple = obviousMultiple(number, step, mode);
    if (!multiple) {
        NSDecimal quotient;
        if (!divide(quotient, number, step)) {
            return self;
        }
        const std::int64_t value = wholeMultiple(decimalToDouble(quotient), mode);
        multiple = Multiple{value, isEqualTo(quotient, value)};
    }
    if (multiple->isOnTick) {
        return self;
    }
    const auto bits = static_cast<std::uint64_t>(multiple->value);
    const NSDecimal factor{multiple->value < 0 ? 0 - bits : bits, 0, 0, multiple->value < 0};
    NSDecimal result;
    detail::checkDecimal(NSDecimalMultiply(&result, &factor, &step, NSRoundPlain));
    return NSDecimalNumber::decimalNumberWithDecimal(result);
}

bool roundMatchWithTick(NSNumber* self, NSNumber* tick) {
    if (self == nullptr) {
        return false;
    }
    if (tick == nullptr) {
        return true;
    }
    const NSDecimal number = self->decimalValue();
    const NSDecimal step = tick->decimalValue();
    NSDecimal quotient;
    return !divide(quotient, number, step) || isEqualTo(quotient, clampedToInteger(decimalToDouble(quotient)));
}

bool isEqualToAnyNumberInArray(NSNumber* self, NSArray* array) {
    return self != nullptr && array != nullptr && array->containsObject(self);
}

NSComparisonResult zr_compare(NSNumber* self, NSNumber* number) {
    if (self == nullptr) {
        return NSOrderedSame;
    }
    return number != nullptr ? self->compare(number) : NSOrderedDescending;
}

namespace detail {

Ref<NSDecimalNumber> precisionNumber(NSNumber* number) {
    const double value = number != nullptr ? number->doubleValue() : 0;
    return NSDecimalNumber::decimalNumberWithDecimal(decimalFromText(std::string_view(textWithSixDecimals(value))));
}

NSUInteger decimalsCount(NSObject* value) {
    if (const NSString* const text = cast<NSString>(value)) {
        const std::size_t point = text->view().rfind(u'.');
        return point == std::u16string_view::npos ? 0 : text->view().size() - point - 1;
    }
    if (const NSNumber* const number = cast<NSNumber>(value)) {
        // By way of the description, which is what a person sees, and not of the value.
        const NSDecimal decimal = decimalFromText(number->description()->view());
        return decimal.exponent < 0 ? static_cast<NSUInteger>(-decimal.exponent) : 0;
    }
    return 0;
}

} // namespace detail

} // namespace zr
