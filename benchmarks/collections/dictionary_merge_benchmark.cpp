// Merging dictionaries of 50 entries with text keys, half of which the receiver has, beside the same loop over hash
// maps from strings to shared pointers, and over the map's own merge. Each round copies the receiver first, which is
// in both times.

#include <zrbasic/collections/dictionary_writing.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <unordered_map>

namespace zr {
namespace {

constexpr int entryCount = 50;
using Map = std::unordered_map<std::string, std::shared_ptr<const double>>;

std::string keyAt(int index) {
    return "field" + std::to_string(index);
}

/// The receiver has the fields from 0 on, the other one those from 25 on.
constexpr int otherStart = entryCount / 2;

Ref<NSMutableDictionary> dictionaryFrom(int start) {
    const Ref<NSMutableDictionary> made = NSMutableDictionary::dictionary();
    for (int i = start; i < start + entryCount; ++i) {
        made->setObject_forKey(box(start + 0.5), NSString::fromUtf8(keyAt(i)));
    }
    return made;
}

Map mapFrom(int start) {
    Map made;
    for (int i = start; i < start + entryCount; ++i) {
        made.emplace(keyAt(i), std::make_shared<const double>(start + 0.5));
    }
    return made;
}

/// Null pointers are left out, as the dictionaries leave out null objects.
void writeOver(Map& own, const Map& other) {
    for (const auto& [key, value] : other) {
        if (value) {
            own.insert_or_assign(key, value);
        }
    }
}

void fillGaps(Map& own, const Map& other) {
    for (const auto& [key, value] : other) {
        if (value) {
            own.try_emplace(key, value);
        }
    }
}

/// The standard merge moves nodes out of the other map, so that it needs one of its own.
void mergeCopy(Map& own, const Map& other) {
    Map copy = other;
    own.merge(copy);
}

constexpr double theirs = otherStart + 0.5;
constexpr double ours = 0.5;

void mergeDictionaries(benchmark::State& state, void (*merge)(NSMutableDictionary*, NSDictionary*), double expected) {
    const Ref<NSDictionary> own = dictionaryFrom(0);
    const Ref<NSDictionary> other = dictionaryFrom(otherStart);
    Ref<NSMutableDictionary> merged;
    for (auto _ : state) {
        merged = NSMutableDictionary::dictionaryWithDictionary(own);
        merge(merged, other);
    }
    if (merged->count() != entryCount + otherStart ||
        !merged->objectForKey(NSString::fromUtf8(keyAt(otherStart)))->isEqual(box(expected))) {
        state.SkipWithError("wrong result");
    }
    state.SetItemsProcessed(state.iterations() * entryCount);
}
BENCHMARK_CAPTURE(mergeDictionaries, mergeValuesFrom, mergeValuesFrom, theirs);
BENCHMARK_CAPTURE(mergeDictionaries, complementFrom, complementFrom, ours);

void mergeMaps(benchmark::State& state, void (*merge)(Map&, const Map&), double expected) {
    const Map own = mapFrom(0);
    const Map other = mapFrom(otherStart);
    Map merged;
    for (auto _ : state) {
        merged = own;
        merge(merged, other);
        benchmark::DoNotOptimize(&merged);
    }
    if (merged.size() != entryCount + otherStart || *merged.at(keyAt(otherStart)) != expected) {
        state.SkipWithError("wrong result");
    }
    state.SetItemsProcessed(state.iterations() * entryCount);
}
BENCHMARK_CAPTURE(mergeMaps, insertOrAssign, writeOver, theirs);
BENCHMARK_CAPTURE(mergeMaps, tryEmplace, fillGaps, ours);
BENCHMARK_CAPTURE(mergeMaps, merge, mergeCopy, ours);

} // namespace
} // namespace zr
