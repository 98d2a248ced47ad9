#include <zrbasic/collections/dictionary.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>

#include <benchmark/benchmark.h>

#include <array>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <variant>
#include <vector>

// Filling, reading and walking over dictionaries with text keys, beside the map of variants that one would write
// instead. Twelve entries are a quote; a thousand are a book of them.

namespace zr {
namespace {

using Variant = std::variant<std::monostate, bool, std::int64_t, double, std::string>;
using Map = std::unordered_map<std::string, Variant>;

constexpr std::array<const char*, 12> fields = {"symbol", "price", "change", "volume", "high",   "low",
                                                "open",   "close", "bid",    "ask",    "amount", "time"};

std::string keyNumber(std::size_t number) {
    return number < fields.size() ? fields[number] : "key" + std::to_string(number);
}

/// Strings made apart from those in the dictionary, as a parser's and a program's keys are.
std::vector<Ref<NSString>> stringKeys(std::size_t count) {
    std::vector<Ref<NSString>> keys;
    for (std::size_t i = 0; i < count; ++i) {
        keys.push_back(NSString::fromUtf8(keyNumber(i)));
    }
    return keys;
}

Ref<NSMutableDictionary> filledDictionary(std::size_t count) {
    const Ref<NSMutableDictionary> made = NSMutableDictionary::dictionary();
    std::size_t number = 0;
    for (const Ref<NSString>& key : stringKeys(count)) {
        made->setObject_forKey(box(static_cast<double>(number++)), key);
    }
    return made;
}

Map filledMap(std::size_t count) {
    Map made;
    for (std::size_t i = 0; i < count; ++i) {
        made.emplace(keyNumber(i), static_cast<double>(i));
    }
    return made;
}

void dictionaryReads(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    const Ref<NSDictionary> entries = filledDictionary(count);
    const std::vector<Ref<NSString>> keys = stringKeys(count);
    double sum = 0;
    for (auto _ : state) {
        sum = 0;
        for (const Ref<NSString>& key : keys) {
            sum += zr_floatForKey_default(entries, key, -1.0);
        }
        benchmark::DoNotOptimize(sum);
    }
    if (sum != static_cast<double>(count * (count - 1) / 2)) {
        state.SkipWithError("wrong values");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(dictionaryReads)->Arg(6)->Arg(12)->Arg(1000);

void mapReads(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    const Map entries = filledMap(count);
    std::vector<std::string> keys;
    for (std::size_t i = 0; i < count; ++i) {
        keys.push_back(keyNumber(i));
    }
    double sum = 0;
    for (auto _ : state) {
        sum = 0;
        for (const std::string& key : keys) {
            const auto found = entries.find(key);
            const double* const value = found == entries.end() ? nullptr : std::get_if<double>(&found->second);
            sum += value ? *value : -1.0;
        }
        benchmark::DoNotOptimize(sum);
    }
    if (sum != static_cast<double>(count * (count - 1) / 2)) {
        state.SkipWithError("wrong values");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(mapReads)->Arg(6)->Arg(12)->Arg(1000);

void dictionaryFill(benchmark::State& state) {
    const std::vector<Ref<NSString>> keys = stringKeys(static_cast<std::size_t>(state.range(0)));
    const Ref<NSNumber> value = box(1.5);
    for (auto _ : state) {
        const Ref<NSMutableDictionary> entries = NSMutableDictionary::dictionary();
        for (const Ref<NSString>& key : keys) {
            entries->setObject_forKey(value, key);
        }
        if (entries->count() != keys.size()) {
            state.SkipWithError("entries are missing");
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(dictionaryFill)->Arg(6)->Arg(12)->Arg(1000);

void mapFill(benchmark::State& state) {
    std::vector<std::string> keys;
    for (std::size_t i = 0; i < static_cast<std::size_t>(state.range(0)); ++i) {
        keys.push_back(keyNumber(i));
    }
    for (auto _ : state) {
        Map entries;
        for (const std::string& key : keys) {
            entries.insert_or_assign(key, 1.5);
        }
        if (entries.size() != keys.size()) {
            state.SkipWithError("entries are missing");
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(mapFill)->Arg(6)->Arg(12)->Arg(1000);

/// Every other key is not there, as optional fields of a reply are.
void dictionaryMisses(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    const Ref<NSDictionary> entries = filledDictionary(count);
    std::vector<Ref<NSString>> keys;
    for (std::size_t i = 0; i < count; ++i) {
        keys.push_back(NSString::fromUtf8("no" + keyNumber(i)));
    }
    for (auto _ : state) {
        for (const Ref<NSString>& key : keys) {
            if (entries->peek(key)) {
                state.SkipWithError("found what is not there");
            }
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(dictionaryMisses)->Arg(12)->Arg(1000);

void mapMisses(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    const Map entries = filledMap(count);
    std::vector<std::string> keys;
    for (std::size_t i = 0; i < count; ++i) {
        keys.push_back("no" + keyNumber(i));
    }
    for (auto _ : state) {
        for (const std::string& key : keys) {
            if (entries.contains(key)) {
                state.SkipWithError("found what is not there");
            }
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(mapMisses)->Arg(12)->Arg(1000);

void dictionaryGuardedWalk(benchmark::State& state) {
    const Ref<NSDictionary> entries = filledDictionary(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        std::size_t walked = 0;
        for (const id& key : entries) {
            benchmark::DoNotOptimize(key.get());
            ++walked;
        }
        if (walked != entries->count()) {
            state.SkipWithError("entries are missing");
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(dictionaryGuardedWalk)->Arg(1000);

void mapWalk(benchmark::State& state) {
    const Map entries = filledMap(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        std::size_t walked = 0;
        for (const auto& entry : entries) {
            benchmark::DoNotOptimize(&entry);
            ++walked;
        }
        if (walked != entries.size()) {
            state.SkipWithError("entries are missing");
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(mapWalk)->Arg(1000);

} // namespace
} // namespace zr
