// Rounding prices to their tick, beside what one would write by hand or take from a library of decimals.
//
// The prices are 1024 decimals of at most seven digits with four decimals, made by a fixed rule. "cent" and "quarter"
// are ticks that quotients end on, "three" is one that most do not, and "onTick" has prices that need no rounding.

#include <zrbasic/core/tick.h>

#include <benchmark/benchmark.h>
#include <boost/multiprecision/cpp_dec_float.hpp>

#include <cstdint>
#include <string>
#include <vector>

namespace {

using namespace zr;
using Wide = boost::multiprecision::number<boost::multiprecision::cpp_dec_float<38>>;
__extension__ typedef __int128 Integer;

constexpr int priceCount = 1024;
constexpr std::int64_t priceScale = 10000;

struct Ticks {
    std::int64_t tick; // in ten-thousandths, like the prices
    bool onTick;
};

std::int64_t priceAt(int index, const Ticks& ticks) {
    const std::int64_t price = (index * 7919LL + 104729LL * index % 9973) % 9'999'999 + 1;
    return ticks.onTick ? price / ticks.tick * ticks.tick + ticks.tick : price;
}

// The scaled division that one writes by hand: 18 digits behind the point, then the nearest whole multiple.
std::int64_t roundByHand(std::int64_t price, std::int64_t tick) {
    constexpr Integer scale = 1'000'000'000'000'000'000;
    const Integer quotient = Integer{price} * scale / tick;
    const Integer whole = (quotient + (quotient < 0 ? -scale / 2 : scale / 2)) / scale;
    return static_cast<std::int64_t>(whole * tick);
}

Wide roundWide(const Wide& price, const Wide& tick) {
    return boost::multiprecision::round(Wide(price / tick)) * tick;
}

Ref<NSDecimalNumber> decimal(std::int64_t tenThousandths) {
    NSDecimal value = decimalFromInt64(tenThousandths);
    NSDecimalMultiplyByPowerOf10(&value, &value, -4, NSRoundPlain);
    return NSDecimalNumber::decimalNumberWithDecimal(value);
}

// The three ways must agree, or their times mean nothing.
bool agree(const Ticks& ticks) {
    const Ref<NSDecimalNumber> tick = decimal(ticks.tick);
    for (int i = 0; i < priceCount; ++i) {
        const std::int64_t price = priceAt(i, ticks);
        const std::int64_t expected = (price + ticks.tick / 2) / ticks.tick * ticks.tick;
        const Ref<NSNumber> ours = roundWithTick_roundingMode(decimal(price), tick, NSRoundPlain);
        const Ref<NSNumber> oursFromDouble =
            roundWithTick_roundingMode(box(static_cast<double>(price) / priceScale), tick, NSRoundPlain);
        const Wide wide = roundWide(Wide(price) / priceScale, Wide(ticks.tick) / priceScale);
        if (!ours->isEqualToNumber(decimal(expected)) || !oursFromDouble->isEqualToNumber(decimal(expected)) ||
            roundByHand(price, ticks.tick) != expected || wide * priceScale != expected) {
            return false;
        }
    }
    return true;
}

template <typename Number, typename Make, typename Round>
void run(benchmark::State& state, const Ticks& ticks, Make make, Round round) {
    if (!agree(ticks)) {
        state.SkipWithError("the results differ");
        return;
    }
    std::vector<Number> prices;
    for (int i = 0; i < priceCount; ++i) {
        prices.push_back(make(priceAt(i, ticks)));
    }
    std::size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(round(prices[next]));
        next = (next + 1) % prices.size();
    }
}

void ours(benchmark::State& state, Ticks ticks) {
    const Ref<NSDecimalNumber> tick = decimal(ticks.tick);
    run<Ref<NSDecimalNumber>>(state, ticks, decimal, [&](const Ref<NSDecimalNumber>& price) {
        return roundWithTick_roundingMode(price, tick, NSRoundPlain);
    });
}

void oursFromDouble(benchmark::State& state, Ticks ticks) {
    const Ref<NSNumber> tick = box(static_cast<double>(ticks.tick) / priceScale);
    const auto make = [](std::int64_t price) { return box(static_cast<double>(price) / priceScale); };
    run<Ref<NSNumber>>(state, ticks, make, [&](const Ref<NSNumber>& price) {
        return roundWithTick_roundingMode(price, tick, NSRoundPlain);
    });
}

void byHand(benchmark::State& state, Ticks ticks) {
    std::int64_t tick = ticks.tick;
    run<std::int64_t>(
        state, ticks, [](std::int64_t price) { return price; },
        [&](std::int64_t price) {
            // Or the compiler would divide by a constant.
            benchmark::DoNotOptimize(tick);
            return roundByHand(price, tick);
        });
}

void boostDecimal(benchmark::State& state, Ticks ticks) {
    const Wide tick = Wide(ticks.tick) / priceScale;
    run<Wide>(
        state, ticks, [](std::int64_t price) { return Wide(Wide(price) / priceScale); },
        [&](const Wide& price) { return roundWide(price, tick); });
}

#define TICK_BENCHMARKS(function)                             \
    BENCHMARK_CAPTURE(function, cent, Ticks{100, false});     \
    BENCHMARK_CAPTURE(function, quarter, Ticks{2500, false}); \
    BENCHMARK_CAPTURE(function, onTick, Ticks{500, true});    \
    BENCHMARK_CAPTURE(function, three, Ticks{3, false})

TICK_BENCHMARKS(ours);
TICK_BENCHMARKS(oursFromDouble);
TICK_BENCHMARKS(byHand);
TICK_BENCHMARKS(boostDecimal);

} // namespace
