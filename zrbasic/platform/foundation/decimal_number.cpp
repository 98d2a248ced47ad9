#include <zrbasic/platform/foundation/decimal_number.h>

#include <zrbasic/platform/foundation/decimal_p.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/exception.h>

#include <cstdint>
#include <limits>

namespace zr {

namespace {

using Operation = NSCalculationError (*)(NSDecimal*, const NSDecimal*, const NSDecimal*, NSRoundingMode) noexcept;

Ref<NSDecimalNumber> calculated(Operation operation, const NSDecimal& left, NSDecimalNumber* right) {
    const NSDecimal nothing;
    NSDecimal result;
    detail::checkDecimal(operation(&result, &left, right != nullptr ? &right->decimal() : &nothing, NSRoundPlain));
    return NSDecimalNumber::decimalNumberWithDecimal(result);
}

Ref<NSDecimalNumber> calculated(Operation operation, const NSDecimal& left, NSDecimalNumber* right,
                                NSDecimalNumberHandler* behavior) {
    if (behavior == nullptr) {
        return calculated(operation, left, right);
    }
    const NSDecimal nothing;
    NSDecimal result;
    behavior->check(
        operation(&result, &left, right != nullptr ? &right->decimal() : &nothing, behavior->roundingMode()));
    NSDecimalRound(&result, &result, behavior->scale(), behavior->roundingMode());
    return NSDecimalNumber::decimalNumberWithDecimal(result);
}

NSDecimal extreme(bool negative) {
    constexpr std::uint64_t allBits = std::numeric_limits<std::uint64_t>::max();
    return {allBits, allBits, NSDecimalMaxExponent, negative};
}

} // namespace

namespace detail {

void raiseDecimal(NSCalculationError error) {
    switch (error) {
        case NSCalculationUnderflow:
            NSException::raise(NSDecimalNumberUnderflowException, "NSDecimalNumber underflow exception");
        case NSCalculationDivideByZero:
            NSException::raise(NSDecimalNumberDivideByZeroException, "NSDecimalNumber divide by zero exception");
        default:
            NSException::raise(NSDecimalNumberOverflowException, "NSDecimalNumber overflow exception");
    }
}

} // namespace detail

ZR_DEFINE_CLASS(NSDecimalNumberHandler) {
    is.classMethod<&NSDecimalNumberHandler::defaultDecimalNumberHandler>("defaultDecimalNumberHandler")
        .classMethod<
            &NSDecimalNumberHandler::
                decimalNumberHandlerWithRoundingMode_scale_raiseOnExactness_raiseOnOverflow_raiseOnUnderflow_raiseOnDivideByZero>(
            "decimalNumberHandlerWithRoundingMode:scale:raiseOnExactness:raiseOnOverflow:raiseOnUnderflow:"
            "raiseOnDivideByZero:")
        .method<&NSDecimalNumberHandler::roundingMode>("roundingMode")
        .method<&NSDecimalNumberHandler::scale>("scale");
}

NSDecimalNumberHandler::NSDecimalNumberHandler() = default;
NSDecimalNumberHandler::~NSDecimalNumberHandler() = default;

Ref<NSDecimalNumberHandler> NSDecimalNumberHandler::defaultDecimalNumberHandler() {
    static NSDecimalNumberHandler* const handler = alloc<NSDecimalNumberHandler>().leak();
    return handler;
}

Ref<NSDecimalNumberHandler> NSDecimalNumberHandler::
    decimalNumberHandlerWithRoundingMode_scale_raiseOnExactness_raiseOnOverflow_raiseOnUnderflow_raiseOnDivideByZero(
        NSRoundingMode mode, short scale, bool raiseOnExactness, bool raiseOnOverflow, bool raiseOnUnderflow,
        bool raiseOnDivideByZero) {
    Ref<NSDecimalNumberHandler> handler = alloc<NSDecimalNumberHandler>();
    handler->m_mode = mode;
    handler->m_scale = scale;
    handler->m_raisesOnExactness = raiseOnExactness;
    handler->m_raisesOnOverflow = raiseOnOverflow;
    handler->m_raisesOnUnderflow = raiseOnUnderflow;
    handler->m_raisesOnDivideByZero = raiseOnDivideByZero;
    return handler;
}

void NSDecimalNumberHandler::check(NSCalculationError error) const {
    if (error == NSCalculationLossOfPrecision && m_raisesOnExactness) {
        NSException::raise("NSDecimalNumberExactnessException", "NSDecimalNumber exactness exception");
    }
    if ((error == NSCalculationUnderflow && m_raisesOnUnderflow) ||
        (error == NSCalculationOverflow && m_raisesOnOverflow) ||
        (error == NSCalculationDivideByZero && m_raisesOnDivideByZero)) {
        detail::checkDecimal(error);
    }
}

ZR_DEFINE_CLASS(NSDecimalNumber) {
    is.classMethod<&NSDecimalNumber::zero>("zero")
        .classMethod<&NSDecimalNumber::one>("one")
        .classMethod<&NSDecimalNumber::notANumber>("notANumber")
        .classMethod<&NSDecimalNumber::maximumDecimalNumber>("maximumDecimalNumber")
        .classMethod<&NSDecimalNumber::minimumDecimalNumber>("minimumDecimalNumber")
        .classMethod<&NSDecimalNumber::decimalNumberWithDecimal>("decimalNumberWithDecimal:")
        .classMethod<&NSDecimalNumber::decimalNumberWithString>("decimalNumberWithString:")
        .classMethod<&NSDecimalNumber::decimalNumberWithMantissa_exponent_isNegative>(
            "decimalNumberWithMantissa:exponent:isNegative:")
        .method<&NSDecimalNumber::decimalNumberByAdding>("decimalNumberByAdding:")
        .method<&NSDecimalNumber::decimalNumberBySubtracting>("decimalNumberBySubtracting:")
        .method<&NSDecimalNumber::decimalNumberByMultiplyingBy>("decimalNumberByMultiplyingBy:")
        .method<&NSDecimalNumber::decimalNumberByDividingBy>("decimalNumberByDividingBy:")
        .method<&NSDecimalNumber::decimalNumberByRaisingToPower>("decimalNumberByRaisingToPower:")
        .method<&NSDecimalNumber::decimalNumberByMultiplyingByPowerOf10>("decimalNumberByMultiplyingByPowerOf10:")
        .method<&NSDecimalNumber::decimalNumberByAdding_withBehavior>("decimalNumberByAdding:withBehavior:")
        .method<&NSDecimalNumber::decimalNumberBySubtracting_withBehavior>("decimalNumberBySubtracting:withBehavior:")
        .method<&NSDecimalNumber::decimalNumberByMultiplyingBy_withBehavior>(
            "decimalNumberByMultiplyingBy:withBehavior:")
        .method<&NSDecimalNumber::decimalNumberByDividingBy_withBehavior>("decimalNumberByDividingBy:withBehavior:")
        .method<&NSDecimalNumber::decimalNumberByRoundingAccordingToBehavior>(
            "decimalNumberByRoundingAccordingToBehavior:");
}

NSDecimalNumber::NSDecimalNumber() : NSNumber(Kind::Decimal) {}
NSDecimalNumber::~NSDecimalNumber() = default;

Ref<NSDecimalNumber> NSDecimalNumber::zero() {
    static NSDecimalNumber* const number = decimalNumberWithDecimal({}).leak();
    return number;
}

Ref<NSDecimalNumber> NSDecimalNumber::one() {
    static NSDecimalNumber* const number = decimalNumberWithDecimal(decimalFromUInt64(1)).leak();
    return number;
}

Ref<NSDecimalNumber> NSDecimalNumber::notANumber() {
    static NSDecimalNumber* const number = decimalNumberWithDecimal(NSDecimal::notANumber()).leak();
    return number;
}

Ref<NSDecimalNumber> NSDecimalNumber::maximumDecimalNumber() {
    static NSDecimalNumber* const number = decimalNumberWithDecimal(extreme(false)).leak();
    return number;
}

Ref<NSDecimalNumber> NSDecimalNumber::minimumDecimalNumber() {
    static NSDecimalNumber* const number = decimalNumberWithDecimal(extreme(true)).leak();
    return number;
}

Ref<NSDecimalNumber> NSDecimalNumber::decimalNumberWithDecimal(const NSDecimal& value) {
    Ref<NSDecimalNumber> number = alloc<NSDecimalNumber>();
    number->m_decimal = value;
    return number;
}

Ref<NSDecimalNumber> NSDecimalNumber::decimalNumberWithString(NSString* text) {
    return decimalNumberWithDecimal(text != nullptr ? decimalFromText(text->view()) : NSDecimal::notANumber());
}

Ref<NSDecimalNumber> NSDecimalNumber::decimalNumberWithMantissa_exponent_isNegative(unsigned long long mantissa,
                                                                                    short exponent, bool isNegative) {
    NSDecimal value{mantissa, 0, 0, isNegative};
    detail::settleDecimal(value, exponent);
    return decimalNumberWithDecimal(value);
}

Ref<NSDecimalNumber> NSDecimalNumber::decimalNumberByAdding(NSDecimalNumber* other) const {
    return calculated(NSDecimalAdd, m_decimal, other);
}

Ref<NSDecimalNumber> NSDecimalNumber::decimalNumberBySubtracting(NSDecimalNumber* other) const {
    return calculated(NSDecimalSubtract, m_decimal, other);
}

Ref<NSDecimalNumber> NSDecimalNumber::decimalNumberByMultiplyingBy(NSDecimalNumber* other) const {
    return calculated(NSDecimalMultiply, m_decimal, other);
}

Ref<NSDecimalNumber> NSDecimalNumber::decimalNumberByDividingBy(NSDecimalNumber* other) const {
    return calculated(NSDecimalDivide, m_decimal, other);
}

Ref<NSDecimalNumber> NSDecimalNumber::decimalNumberByRaisingToPower(NSUInteger power) const {
    NSDecimal result;
    detail::checkDecimal(NSDecimalPower(&result, &m_decimal, power, NSRoundPlain));
    return decimalNumberWithDecimal(result);
}

Ref<NSDecimalNumber> NSDecimalNumber::decimalNumberByMultiplyingByPowerOf10(short power) const {
    NSDecimal result;
    detail::checkDecimal(NSDecimalMultiplyByPowerOf10(&result, &m_decimal, power, NSRoundPlain));
    return decimalNumberWithDecimal(result);
}

Ref<NSDecimalNumber> NSDecimalNumber::decimalNumberByAdding_withBehavior(NSDecimalNumber* other,
                                                                         NSDecimalNumberHandler* behavior) const {
    return calculated(NSDecimalAdd, m_decimal, other, behavior);
}

Ref<NSDecimalNumber> NSDecimalNumber::decimalNumberBySubtracting_withBehavior(NSDecimalNumber* other,
                                                                              NSDecimalNumberHandler* behavior) const {
    return calculated(NSDecimalSubtract, m_decimal, other, behavior);
}

Ref<NSDecimalNumber> NSDecimalNumber::decimalNumberByMultiplyingBy_withBehavior(
    NSDecimalNumber* other, NSDecimalNumberHandler* behavior) const {
    return calculated(NSDecimalMultiply, m_decimal, other, behavior);
}

Ref<NSDecimalNumber> NSDecimalNumber::decimalNumberByDividingBy_withBehavior(NSDecimalNumber* other,
                                                                             NSDecimalNumberHandler* behavior) const {
    return calculated(NSDecimalDivide, m_decimal, other, behavior);
}

Ref<NSDecimalNumber> NSDecimalNumber::decimalNumberByRoundingAccordingToBehavior(
    NSDecimalNumberHandler* behavior) const {
    NSDecimal result = m_decimal;
    if (behavior != nullptr) {
        NSDecimalRound(&result, &m_decimal, behavior->scale(), behavior->roundingMode());
    }
    return decimalNumberWithDecimal(result);
}

bool NSDecimalNumber::boolValue() const {
    return !m_decimal.isZero();
}

long long NSDecimalNumber::longLongValue() const {
    return decimalToInt64(m_decimal);
}

unsigned long long NSDecimalNumber::unsignedLongLongValue() const {
    return decimalToUInt64(m_decimal);
}

float NSDecimalNumber::floatValue() const {
    return static_cast<float>(decimalToDouble(m_decimal));
}

double NSDecimalNumber::doubleValue() const {
    return decimalToDouble(m_decimal);
}

NSDecimal NSDecimalNumber::decimalValue() const {
    return m_decimal;
}

Ref<NSString> NSDecimalNumber::stringValue() const {
    return NSString::fromUtf8(decimalText(m_decimal));
}

const char* NSDecimalNumber::objCType() const {
    return "d";
}

} // namespace zr
