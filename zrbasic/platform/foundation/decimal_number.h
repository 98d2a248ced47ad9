#pragma once

#include <zrbasic/platform/foundation/number.h>

namespace zr {

/// What to do with the digits that do not fit and with errors, for the operations that take a behavior.
///
/// Never changes and may be used from any thread.
class ZR_EXPORT NSDecimalNumberHandler : public NSObject {
    ZR_DECLARE_CLASS(NSDecimalNumberHandler, NSObject)

  public:
    NSDecimalNumberHandler();
    ~NSDecimalNumberHandler() override;

    /// Plain rounding, no scale, all errors raised but loss of precision; always the same object.
    [[nodiscard]] static Ref<NSDecimalNumberHandler> defaultDecimalNumberHandler();
    /// `scale` counts digits after the decimal point; `NSDecimalNoScale` keeps them all.
    [[nodiscard]] static Ref<NSDecimalNumberHandler>
    decimalNumberHandlerWithRoundingMode_scale_raiseOnExactness_raiseOnOverflow_raiseOnUnderflow_raiseOnDivideByZero(
        NSRoundingMode mode, short scale, bool raiseOnExactness, bool raiseOnOverflow, bool raiseOnUnderflow,
        bool raiseOnDivideByZero);

    [[nodiscard]] NSRoundingMode roundingMode() const { return m_mode; }
    [[nodiscard]] short scale() const { return m_scale; }
    /// Raises the exception for `error` when this behavior wants it raised.
    void check(NSCalculationError error) const;

  private:
    NSRoundingMode m_mode = NSRoundPlain;
    short m_scale = static_cast<short>(NSDecimalNoScale);
    bool m_raisesOnExactness = false;
    bool m_raisesOnOverflow = true;
    bool m_raisesOnUnderflow = true;
    bool m_raisesOnDivideByZero = true;
};

/// A number with decimal digits, so that 0.1 is one tenth and prices divide by their tick without a remainder.
///
/// Operations without a behavior round plainly to as many digits as fit and raise `NSDecimalNumberOverflowException`,
/// `NSDecimalNumberUnderflowException` or `NSDecimalNumberDivideByZeroException`; with `notANumber` as an operand they
/// raise the overflow. An operand that is null counts as zero, and a null behavior is the default one. Results are
/// new objects and never null.
///
/// A number never changes and may be used from any thread.
class ZR_EXPORT NSDecimalNumber : public NSNumber {
    ZR_DECLARE_CLASS(NSDecimalNumber, NSNumber)

  public:
    /// Zero.
    NSDecimalNumber();
    ~NSDecimalNumber() override;

    /// Each of these is always the same object.
    [[nodiscard]] static Ref<NSDecimalNumber> zero();
    [[nodiscard]] static Ref<NSDecimalNumber> one();
    [[nodiscard]] static Ref<NSDecimalNumber> notANumber();
    /// The largest mantissa with the largest exponent, about 3.4e165, and the same below zero.
    [[nodiscard]] static Ref<NSDecimalNumber> maximumDecimalNumber();
    [[nodiscard]] static Ref<NSDecimalNumber> minimumDecimalNumber();

    [[nodiscard]] static Ref<NSDecimalNumber> decimalNumberWithDecimal(const NSDecimal& value);
    /// The number at the start of `text`, by the rules of `decimalFromText`; `notANumber`'s value when there is none,
    /// and for null.
    [[nodiscard]] static Ref<NSDecimalNumber> decimalNumberWithString(NSString* text);
    [[nodiscard]] static Ref<NSDecimalNumber> decimalNumberWithMantissa_exponent_isNegative(unsigned long long mantissa,
                                                                                            short exponent,
                                                                                            bool isNegative);

    [[nodiscard]] Ref<NSDecimalNumber> decimalNumberByAdding(NSDecimalNumber* other) const;
    [[nodiscard]] Ref<NSDecimalNumber> decimalNumberBySubtracting(NSDecimalNumber* other) const;
    [[nodiscard]] Ref<NSDecimalNumber> decimalNumberByMultiplyingBy(NSDecimalNumber* other) const;
    /// 38 significant digits.
    [[nodiscard]] Ref<NSDecimalNumber> decimalNumberByDividingBy(NSDecimalNumber* other) const;
    [[nodiscard]] Ref<NSDecimalNumber> decimalNumberByRaisingToPower(NSUInteger power) const;
    [[nodiscard]] Ref<NSDecimalNumber> decimalNumberByMultiplyingByPowerOf10(short power) const;

    [[nodiscard]] Ref<NSDecimalNumber> decimalNumberByAdding_withBehavior(NSDecimalNumber* other,
                                                                          NSDecimalNumberHandler* behavior) const;
    [[nodiscard]] Ref<NSDecimalNumber> decimalNumberBySubtracting_withBehavior(NSDecimalNumber* other,
                                                                               NSDecimalNumberHandler* behavior) const;
    [[nodiscard]] Ref<NSDecimalNumber> decimalNumberByMultiplyingBy_withBehavior(
        NSDecimalNumber* other, NSDecimalNumberHandler* behavior) const;
    [[nodiscard]] Ref<NSDecimalNumber> decimalNumberByDividingBy_withBehavior(NSDecimalNumber* other,
                                                                              NSDecimalNumberHandler* behavior) const;
    /// Rounded to the behavior's scale.
    [[nodiscard]] Ref<NSDecimalNumber> decimalNumberByRoundingAccordingToBehavior(
        NSDecimalNumberHandler* behavior) const;

    /// The value, borrowed.
    [[nodiscard]] const NSDecimal& decimal() const { return m_decimal; }

    [[nodiscard]] bool boolValue() const override;
    /// The whole part, clamped; 0 for `notANumber`.
    [[nodiscard]] long long longLongValue() const override;
    [[nodiscard]] unsigned long long unsignedLongLongValue() const override;
    [[nodiscard]] float floatValue() const override;
    [[nodiscard]] double doubleValue() const override;
    [[nodiscard]] NSDecimal decimalValue() const override;
    /// Plain digits, never an exponent: "0.5", "100", "NaN".
    [[nodiscard]] Ref<NSString> stringValue() const override;
    [[nodiscard]] const char* objCType() const override;

  private:
    NSDecimal m_decimal;
};

} // namespace zr
