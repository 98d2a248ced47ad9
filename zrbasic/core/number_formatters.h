#pragma once

#include <zrbasic/core/input_formatter.h>

namespace zr {

/// Lets a price be typed: an optional sign, digits, an optional fraction; up to 10 code units, no spaces.
///
/// Digits are the decimal digits of any script. Made by another initialiser than `init`, it has all three switches
/// off and no check of its own.
class ZR_EXPORT ZRPriceNumberInputFormatter : public ZRInputFormatter {
    ZR_OBJECT(ZRPriceNumberInputFormatter, ZRInputFormatter)
  public:
    ~ZRPriceNumberInputFormatter() override;

    /// Whether a plus sign is wanted; true after `init`. Has an effect only together with `needNegativePrefix`: one
    /// sign of either kind is accepted when both are set, and none in all other cases.
    ZR_PROPERTY(bool, needPositivePrefix, setNeedPositivePrefix)
    /// Whether a minus sign is wanted; true after `init`. On its own it accepts no sign either.
    ZR_PROPERTY(bool, needNegativePrefix, setNeedNegativePrefix)
    /// Whether a decimal point and a fraction may follow; true after `init`. When false, nothing ties the check to the
    /// end of the text any more, and every text within the length limit is accepted, letters included.
    ZR_PROPERTY(bool, needFraction, setNeedFraction)

    id init() override;

    /// Whether `string`, typed or pasted, can be a price or the beginning of one.
    ///
    /// False beyond `maxLength` code units; unlike in the check of an edit, a limit of 0 allows only the empty text,
    /// and a negative one is no limit. False for null.
    [[nodiscard]] virtual bool validateOfString(NSString* string);
    ZR_METHOD(validateOfString, "validateOfString:")
};

/// Lets a whole number be typed: up to a given count of decimal digits, of any script.
class ZR_EXPORT ZRIntegerInputFormatter : public ZRInputFormatter {
    ZR_OBJECT(ZRIntegerInputFormatter, ZRInputFormatter)
  public:
    ~ZRIntegerInputFormatter() override;

    /// Sets the limit and the pattern for zero to `maxLength` digits. With 0 only the empty text is accepted; with a
    /// negative count the pattern is invalid, which comes to the same.
    id initWithNumberMaxLength(NSInteger maxLength);
    ZR_METHOD(initWithNumberMaxLength, "initWithNumberMaxLength:")
};

/// Lets a telephone number be typed: up to 20 digits, no plus sign and no spaces.
class ZR_EXPORT ZRPhoneNumberInputFormater : public ZRIntegerInputFormatter {
    ZR_OBJECT(ZRPhoneNumberInputFormater, ZRIntegerInputFormatter)
  public:
    ~ZRPhoneNumberInputFormater() override;

    id init() override;
};

/// A new formatter of the class `T` for up to `maxLength` digits.
template <std::derived_from<ZRIntegerInputFormatter> T = ZRIntegerInputFormatter>
[[nodiscard]] Ref<T> formatterWithNumberMaxLength(NSInteger maxLength) {
    return make<T>(&ZRIntegerInputFormatter::initWithNumberMaxLength, maxLength);
}

} // namespace zr
