#include "rule.h"

#include <zrbasic/core/tick.h>
#include <zrbasic/platform/foundation/decimal_number.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/exception.h>

#include <fuzzer/FuzzedDataProvider.h>

using namespace zr;
using fuzz::rule;

namespace {

Ref<NSDecimalNumber> numberFrom(FuzzedDataProvider& input) {
    return NSDecimalNumber::decimalNumberWithString(NSString::fromUtf8(input.ConsumeRandomLengthString(64)));
}

} // namespace

// Texts become decimals that write themselves exactly, and arithmetic gives a number or the platform's exception.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const auto number = numberFrom(input);
    const auto again = NSDecimalNumber::decimalNumberWithString(number->stringValue());
    rule(again->isEqual(number) && again->hash() == number->hash(), "a number's text reads as the number");
    const auto other = numberFrom(input);
    rule(number->compare(other) == -other->compare(number), "comparing turns around with its sides");
    try {
        const auto sum = number->decimalNumberByAdding(other);
        rule(sum->isEqual(other->decimalNumberByAdding(number)), "a sum does not depend on the order");
        const auto product = number->decimalNumberByMultiplyingBy(other);
        rule(product->isEqual(other->decimalNumberByMultiplyingBy(number)), "nor does a product");
        const auto rounded = roundWithTick_roundingMode(number, other, input.ConsumeIntegralInRange<NSUInteger>(0, 4));
        rule(rounded != nullptr, "rounding gives a number");
    } catch (const NSException& exception) {
        rule(exception.name().starts_with("NSDecimalNumber"), "arithmetic raises its own exceptions only");
    }
    return 0;
}
