#pragma once

#include <zrbasic/platform/foundation/decimal_number.h>

/// Prices and their steps: rounding a number to a whole multiple of a tick, and counting decimals.
///
/// Quotients and products are formed in decimals, so that ticks such as 0.01 or 0.005 divide exactly; a double counts
/// as the shortest decimal that reads back. Use `NSDecimalNumber` itself for rounding to a number of decimals. All
/// functions may be called from any thread; a null receiver gives null, false or zero.
namespace zr {

class NSArray;

// NSNumber(ZRXHelper)

/// Rounds `self` to a whole multiple of `tick`, a price step in the instrument's currency.
///
/// `mode` is one of `NSRoundPlain` (the nearest multiple, halves away from zero), `NSRoundDown` and `NSRoundUp` (the
/// floor and the ceiling of the quotient, so a negative tick reverses them). Any other mode, `NSRoundBankers` included,
/// gives zero, even on the tick.
///
/// A null or zero tick gives `self`, and so does a number that already lies on the tick, or one of the two having no
/// decimal value (NaN, infinite, out of range): the same object, no copy. The multiple is chosen through a double and
/// clamped to 64 bits. Otherwise the result is a new decimal number. Raises `NSDecimalNumberOverflowException` or
/// `NSDecimalNumberUnderflowException` when the quotient or the product is out of a decimal's range.
///
///     roundWithTick_roundingMode(box(-1.234), box(0.01), NSRoundDown)   // -1.24
[[nodiscard]] ZR_EXPORT Ref<NSNumber> roundWithTick_roundingMode(NSNumber* self, NSNumber* tick, NSUInteger mode);

/// Whether `self` is a whole multiple of `tick`.
///
/// True for a null tick and where one of the two has no decimal value. A zero tick, unlike in rounding, raises
/// `NSDecimalNumberDivideByZeroException`; a quotient out of a decimal's range raises too.
[[nodiscard]] ZR_EXPORT bool roundMatchWithTick(NSNumber* self, NSNumber* tick);

/// Whether `array` contains a number equal to `self`; false for a null array.
[[nodiscard]] ZR_EXPORT bool isEqualToAnyNumberInArray(NSNumber* self, NSArray* array);

/// How `self` stands to `number`; any number comes behind null.
[[nodiscard]] ZR_EXPORT NSComparisonResult zr_compare(NSNumber* self, NSNumber* number);

namespace detail {

[[nodiscard]] ZR_EXPORT Ref<NSDecimalNumber> precisionNumber(NSNumber* number);
/// See `ZRXTools::decimalsCountOfNumber`.
[[nodiscard]] ZR_EXPORT NSUInteger decimalsCount(NSObject* value);

} // namespace detail

/// The double value of `number` with six decimals, rounded like "%f", as a decimal: 1.23456789 gives 1.234568.
///
/// Null gives 0. A value that is not finite, or too large for a decimal, gives a decimal that is not a number.
template <typename Receiver = NSNumber>
[[nodiscard]] Ref<NSDecimalNumber> precisionNumberByOriginalNumber(NSNumber* number) {
    return detail::precisionNumber(number);
}

} // namespace zr
