// Mapping, filtering and reducing 10,000 boxed doubles, beside the loops that one writes over a vector of shared
// pointers to doubles. "plain" is the same without boxes, over a vector of doubles: what boxing costs either way.
//
// The numbers are 0.5, 1.5, 2.5 and so on. Mapping doubles each, filtering keeps those with an even whole part, and
// reducing adds all up, with a new box for every sum. "mutable" walks keep each element for its callback, which
// could take it out of the array. "boxes" and "pointers" only make the numbers and let them go, which is most of what
// mapping and reducing cost.

#include <zrbasic/collections/sequence.h>
#include <zrbasic/platform/foundation/number.h>

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

namespace zr {
namespace {

constexpr int numberCount = 10'000;
using Shared = std::shared_ptr<const double>;

double numberAt(int index) {
    return index + 0.5;
}

bool isWanted(double number) {
    return static_cast<int>(number) % 2 == 0;
}

double doubleOf(NSObject* number) {
    return static_cast<NSNumber*>(number)->doubleValue();
}

Ref<NSArray> changeableBoxes() {
    return zr_repeat_map(numberCount, [](NSUInteger index) { return box(numberAt(static_cast<int>(index))); });
}

Ref<NSArray> boxes() {
    return NSArray::arrayWithArray(changeableBoxes());
}

using MakeArray = Ref<NSArray> (*)();

std::vector<Shared> pointers() {
    std::vector<Shared> made;
    for (int i = 0; i < numberCount; ++i) {
        made.push_back(std::make_shared<const double>(numberAt(i)));
    }
    return made;
}

std::vector<double> doubles() {
    std::vector<double> made;
    for (int i = 0; i < numberCount; ++i) {
        made.push_back(numberAt(i));
    }
    return made;
}

constexpr double sumOfAll = numberCount * (numberCount / 2.0);

void check(benchmark::State& state, bool isRight) {
    if (!isRight) {
        state.SkipWithError("wrong result");
    }
    state.SetItemsProcessed(state.iterations() * numberCount);
}

void makeBoxes(benchmark::State& state) {
    for (auto _ : state) {
        const Ref<NSArray> numbers = changeableBoxes();
        benchmark::DoNotOptimize(numbers.get());
    }
    check(state, changeableBoxes()->count() == numberCount);
}
BENCHMARK(makeBoxes);

void makePointers(benchmark::State& state) {
    for (auto _ : state) {
        const std::vector<Shared> numbers = pointers();
        benchmark::DoNotOptimize(numbers.data());
    }
    check(state, pointers().size() == numberCount);
}
BENCHMARK(makePointers);

void mapArray(benchmark::State& state, MakeArray makeArray) {
    const Ref<NSArray> numbers = makeArray();
    Ref<NSMutableArray> result;
    for (auto _ : state) {
        result = zr_map(numbers, [](NSObject* number) { return box(2 * doubleOf(number)); });
    }
    check(state, result->count() == numberCount && doubleOf(result->lastObject()) == 2 * numberAt(numberCount - 1));
}
BENCHMARK_CAPTURE(mapArray, fixed, &boxes);
BENCHMARK_CAPTURE(mapArray, mutable, &changeableBoxes);

void mapSharedPointers(benchmark::State& state) {
    const std::vector<Shared> numbers = pointers();
    std::vector<Shared> result;
    for (auto _ : state) {
        std::vector<Shared> made;
        made.reserve(numbers.size());
        for (const Shared& number : numbers) {
            made.push_back(std::make_shared<const double>(2 * *number));
        }
        result = std::move(made);
        benchmark::DoNotOptimize(result.data());
    }
    check(state, result.size() == numberCount && *result.back() == 2 * numberAt(numberCount - 1));
}
BENCHMARK(mapSharedPointers);

void mapPlain(benchmark::State& state) {
    const std::vector<double> numbers = doubles();
    std::vector<double> result;
    for (auto _ : state) {
        std::vector<double> made;
        made.reserve(numbers.size());
        for (const double number : numbers) {
            made.push_back(2 * number);
        }
        result = std::move(made);
        benchmark::DoNotOptimize(result.data());
    }
    check(state, result.size() == numberCount && result.back() == 2 * numberAt(numberCount - 1));
}
BENCHMARK(mapPlain);

void filterArray(benchmark::State& state, MakeArray makeArray) {
    const Ref<NSArray> numbers = makeArray();
    Ref<NSMutableArray> result;
    for (auto _ : state) {
        result = zr_filter(numbers, [](NSObject* number, NSUInteger) { return isWanted(doubleOf(number)); });
    }
    check(state, result->count() == numberCount / 2 && result->lastObject() == numbers->elements()[numberCount - 2]);
}
BENCHMARK_CAPTURE(filterArray, fixed, &boxes);
BENCHMARK_CAPTURE(filterArray, mutable, &changeableBoxes);

void filterSharedPointers(benchmark::State& state) {
    const std::vector<Shared> numbers = pointers();
    std::vector<Shared> result;
    for (auto _ : state) {
        std::vector<Shared> made;
        for (const Shared& number : numbers) {
            if (isWanted(*number)) {
                made.push_back(number);
            }
        }
        result = std::move(made);
        benchmark::DoNotOptimize(result.data());
    }
    check(state, result.size() == numberCount / 2 && result.back() == numbers[numberCount - 2]);
}
BENCHMARK(filterSharedPointers);

void filterPlain(benchmark::State& state) {
    const std::vector<double> numbers = doubles();
    std::vector<double> result;
    for (auto _ : state) {
        std::vector<double> made;
        for (const double number : numbers) {
            if (isWanted(number)) {
                made.push_back(number);
            }
        }
        result = std::move(made);
        benchmark::DoNotOptimize(result.data());
    }
    check(state, result.size() == numberCount / 2 && result.back() == numbers[numberCount - 2]);
}
BENCHMARK(filterPlain);

void reduceArray(benchmark::State& state, MakeArray makeArray) {
    const Ref<NSArray> numbers = makeArray();
    id result;
    for (auto _ : state) {
        result =
            zr_reduce(numbers, [](NSObject* sum, NSObject* number) { return box(doubleOf(sum) + doubleOf(number)); });
    }
    check(state, doubleOf(result) == sumOfAll);
}
BENCHMARK_CAPTURE(reduceArray, fixed, &boxes);
BENCHMARK_CAPTURE(reduceArray, mutable, &changeableBoxes);

void reduceSharedPointers(benchmark::State& state) {
    const std::vector<Shared> numbers = pointers();
    Shared result;
    for (auto _ : state) {
        Shared sum = numbers.front();
        for (std::size_t i = 1; i < numbers.size(); ++i) {
            sum = std::make_shared<const double>(*sum + *numbers[i]);
        }
        result = std::move(sum);
    }
    check(state, *result == sumOfAll);
}
BENCHMARK(reduceSharedPointers);

void reducePlain(benchmark::State& state) {
    const std::vector<double> numbers = doubles();
    double result = 0;
    for (auto _ : state) {
        result = 0;
        for (const double number : numbers) {
            result += number;
        }
        benchmark::DoNotOptimize(result);
    }
    check(state, result == sumOfAll);
}
BENCHMARK(reducePlain);

} // namespace
} // namespace zr
