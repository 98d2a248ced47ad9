// The difference of two lists of strings, of which half are in both, beside scanning and erasing in plain vectors of
// strings, as one writes it by hand, with an equality that looks at the lengths first. 20, 200 and 2000 strings of 10
// letters each; "fresh" lists are made anew each time, so that no string knows its hash yet.

#include <zrbasic/collections/array_difference.h>
#include <zrbasic/platform/foundation/string.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>
#include <vector>

namespace zr {
namespace {

/// Every other one is in both lists; they differ in their last letters only.
std::string textAt(std::size_t index, bool isNewer) {
    std::string number = std::to_string(index);
    return "sym" + std::string(6 - number.size(), '0') + number + (isNewer && index % 2 == 0 ? 'n' : 'o');
}

std::vector<std::u16string> texts(std::size_t count, bool isNewer) {
    std::vector<std::u16string> made;
    for (std::size_t i = 0; i < count; ++i) {
        // Another order than the older list's.
        const std::string text = textAt(isNewer ? (i * 7919) % count : i, isNewer);
        made.emplace_back(text.begin(), text.end());
    }
    return made;
}

Ref<NSArray> listOf(const std::vector<std::u16string>& units) {
    std::vector<id> strings;
    strings.reserve(units.size());
    for (const std::u16string& text : units) {
        strings.push_back(NSString::fromUtf16(text));
    }
    return NSArray::fromElements(std::move(strings));
}

/// Borrowed strings, so that nothing is spent on copying texts.
struct Parts {
    std::vector<const std::u16string*> intersection;
    std::vector<const std::u16string*> newest;
    std::vector<const std::u16string*> oldest;
};

Parts scanned(const std::vector<std::u16string>& older, const std::vector<std::u16string>& newer) {
    Parts parts;
    for (const std::u16string& text : older) {
        parts.oldest.push_back(&text);
    }
    for (const std::u16string& text : newer) {
        parts.newest.push_back(&text);
    }
    for (const std::u16string& text : newer) {
        const auto isEqual = [&text](const std::u16string* other) { return *other == text; };
        if (std::find_if(parts.oldest.begin(), parts.oldest.end(), isEqual) != parts.oldest.end()) {
            parts.intersection.push_back(&text);
            std::erase_if(parts.oldest, isEqual);
            std::erase_if(parts.newest, isEqual);
        }
    }
    return parts;
}

bool isSame(const Ref<NSArray>& list, const std::vector<const std::u16string*>& units) {
    return std::equal(
        list->elements().begin(), list->elements().end(), units.begin(), units.end(),
        [](const id& string, const std::u16string* text) { return cast<NSString>(string.get())->view() == *text; });
}

void check(benchmark::State& state, const Ref<ZRArrayDifference>& difference) {
    const auto count = static_cast<std::size_t>(state.range(0));
    const std::vector<std::u16string> older = texts(count, false);
    const std::vector<std::u16string> newer = texts(count, true);
    const Parts parts = scanned(older, newer);
    if (parts.intersection.size() != count / 2 || !isSame(difference->intersection(), parts.intersection) ||
        !isSame(difference->newest(), parts.newest) || !isSame(difference->oldest(), parts.oldest)) {
        state.SkipWithError("the two ways differ");
    }
}

void difference(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    const Ref<NSArray> older = listOf(texts(count, false));
    const Ref<NSArray> newer = listOf(texts(count, true));
    Ref<ZRArrayDifference> result;
    for (auto _ : state) {
        result = differenceFrom(older, newer);
    }
    check(state, result);
}
BENCHMARK(difference)->Arg(20)->Arg(200)->Arg(2000);

void differenceOfFreshLists(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    const std::vector<std::u16string> olderTexts = texts(count, false);
    const std::vector<std::u16string> newerTexts = texts(count, true);
    Ref<ZRArrayDifference> result;
    for (auto _ : state) {
        state.PauseTiming();
        const Ref<NSArray> older = listOf(olderTexts);
        const Ref<NSArray> newer = listOf(newerTexts);
        state.ResumeTiming();
        result = differenceFrom(older, newer);
    }
    check(state, result);
}
BENCHMARK(differenceOfFreshLists)->Arg(200);

void scannedVectors(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    const std::vector<std::u16string> older = texts(count, false);
    const std::vector<std::u16string> newer = texts(count, true);
    std::size_t inBoth = 0;
    for (auto _ : state) {
        const Parts parts = scanned(older, newer);
        benchmark::DoNotOptimize(parts.newest.data());
        inBoth = parts.intersection.size();
    }
    if (inBoth != count / 2) {
        state.SkipWithError("wrong result");
    }
}
BENCHMARK(scannedVectors)->Arg(20)->Arg(200)->Arg(2000);

} // namespace
} // namespace zr
