#include <zrbasic/core/tick.h>

#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cstdint>

// Rounding to a tick beside the division of scaled integers.

namespace zr {

namespace {

__extension__ typedef __int128 Wide;

struct Price {
    std::int64_t units;
    int decimals;
};

Ref<NSDecimalNumber> decimal(const Price& price) {
    NSDecimal value = decimalFromInt64(price.units);
    NSDecimalMultiplyByPowerOf10(&value, &value, static_cast<short>(-price.decimals), NSRoundPlain);
    return NSDecimalNumber::decimalNumberWithDecimal(value);
}

Wide powerOfTen(int exponent) {
    Wide power = 1;
    while (exponent-- > 0) {
        power *= 10;
    }
    return power;
}

Wide floorOf(Wide numerator, Wide denominator) {
    const Wide quotient = numerator / denominator;
    return quotient - (numerator % denominator != 0 && (numerator < 0) != (denominator < 0) ? 1 : 0);
}

/// The multiple of the tick that the mode chooses; both have the same number of decimals.
Wide multiple(Wide price, Wide tick, NSUInteger mode) {
    if (mode == NSRoundDown) {
        return floorOf(price, tick);
    }
    if (mode == NSRoundUp) {
        return -floorOf(-price, tick);
    }
    // Halves go away from zero, so the sign is put aside.
    const bool isNegative = (price < 0) != (tick < 0);
    const Wide magnitude = price < 0 ? -price : price;
    const Wide step = tick < 0 ? -tick : tick;
    const Wide nearest = floorOf(2 * magnitude + step, 2 * step);
    return isNegative ? -nearest : nearest;
}

/// Up to nine digits with up to six decimals, as the ticks have up to three: scaled alike, fewer than 2^52 units. The
/// multiples of longer prices are no longer those of exact division, because they are chosen through a double.
Price anyPrice() {
    return {*rc::gen::inRange<std::int64_t>(-999'999'999, 1'000'000'000), *rc::gen::inRange(0, 7)};
}

Price anyTick() {
    const std::int64_t units =
        *rc::gen::suchThat(rc::gen::inRange<std::int64_t>(-1000, 1001), [](std::int64_t value) { return value != 0; });
    return {units, *rc::gen::inRange(0, 7)};
}

RC_GTEST_PROP(TickProperty, roundingIsTheDivisionOfScaledIntegers, ()) {
    const Price price = anyPrice();
    const Price tick = anyTick();
    const int decimals = std::max(price.decimals, tick.decimals);
    const Wide scaledPrice = price.units * powerOfTen(decimals - price.decimals);
    const Wide scaledTick = tick.units * powerOfTen(decimals - tick.decimals);
    for (const NSUInteger mode : {NSRoundPlain, NSRoundDown, NSRoundUp}) {
        const Wide expected = multiple(scaledPrice, scaledTick, mode) * scaledTick;
        const Ref<NSNumber> rounded = roundWithTick_roundingMode(decimal(price), decimal(tick), mode);
        RC_ASSERT(rounded->isEqualToNumber(decimal({static_cast<std::int64_t>(expected), decimals})));
    }
    RC_ASSERT(roundMatchWithTick(decimal(price), decimal(tick)) == (scaledPrice % scaledTick == 0));
}

RC_GTEST_PROP(TickProperty, aDoubleCountsAsTheDecimalThatItIsWrittenAs, ()) {
    const Price price = anyPrice();
    const Price tick = anyTick();
    const Ref<NSNumber> priceAsDouble = box(decimal(price)->doubleValue());
    const Ref<NSNumber> tickAsDouble = box(decimal(tick)->doubleValue());
    for (const NSUInteger mode : {NSRoundPlain, NSRoundDown, NSRoundUp}) {
        RC_ASSERT(roundWithTick_roundingMode(priceAsDouble, tickAsDouble, mode)
                      ->isEqualToNumber(roundWithTick_roundingMode(decimal(price), decimal(tick), mode)));
    }
}

RC_GTEST_PROP(TickProperty, roundedNumbersLieOnTheTickAndComeBackThemselves, ()) {
    const Ref<NSNumber> price = decimal(anyPrice());
    const Ref<NSNumber> tick = decimal(anyTick());
    for (const NSUInteger mode : {NSRoundPlain, NSRoundDown, NSRoundUp}) {
        const Ref<NSNumber> rounded = roundWithTick_roundingMode(price, tick, mode);
        RC_ASSERT(roundMatchWithTick(rounded, tick));
        RC_ASSERT(roundWithTick_roundingMode(rounded, tick, mode) == rounded);
    }
}

} // namespace

} // namespace zr
