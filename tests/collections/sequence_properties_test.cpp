#include <zrbasic/collections/sequence.h>

#include "elements.h"

#include <zrbasic/collections/sequence_editing.h>
#include <zrbasic/collections/set_sequence.h>
#include <zrbasic/platform/foundation/mutable_set.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <numeric>
#include <set>
#include <vector>

// The operations on sequences beside what they are on vectors of small integers, which meet often.

namespace zr {

namespace {

using Model = std::vector<int>;
using test::intOf;

Model small(const std::vector<std::uint8_t>& values) {
    Model model;
    for (const std::uint8_t value : values) {
        model.push_back(value % 10);
    }
    return model;
}

/// Integers, and doubles of the same values among them, which must make no difference.
template <class List = NSArray>
Ref<List> listOf(const Model& model) {
    std::vector<id> elements;
    for (std::size_t i = 0; i < model.size(); ++i) {
        elements.push_back(i % 3 == 1 ? box(double(model[i])) : box(model[i]));
    }
    return List::fromElements(std::move(elements));
}

Model modelOf(const Ref<NSArray>& list) {
    Model model;
    for (const id& element : list) {
        model.push_back(intOf(element));
    }
    return model;
}

bool has(std::uint16_t chosen, int value) {
    return (chosen >> value) & 1;
}

/// The model without every value that a wanted index holds.
template <class Predicate>
Model without(const Model& model, Predicate&& isWanted) {
    std::set<int> unwanted;
    for (std::size_t i = 0; i < model.size(); ++i) {
        if (isWanted(model[i], i)) {
            unwanted.insert(model[i]);
        }
    }
    Model left;
    std::copy_if(model.begin(), model.end(), std::back_inserter(left),
                 [&](int value) { return !unwanted.contains(value); });
    return left;
}

RC_GTEST_PROP(SequenceProperty, mapIsATransformationWithoutTheMissingResults,
              (const std::vector<std::uint8_t>& values, std::uint16_t chosen)) {
    const Model model = small(values);
    Model expected;
    Model expectedWithIndex;
    for (std::size_t i = 0; i < model.size(); ++i) {
        if (has(chosen, model[i])) {
            expected.push_back(3 * model[i]);
            expectedWithIndex.push_back(3 * model[i] + int(i));
        }
    }
    const auto tripled = [&](NSObject* number, int more) {
        return has(chosen, intOf(number)) ? id(box(3 * intOf(number) + more)) : id();
    };
    const Ref<NSArray> list = listOf(model);
    RC_ASSERT(modelOf(zr_map(list, [&](NSObject* number) { return tripled(number, 0); })) == expected);
    RC_ASSERT(modelOf(zr_mapI(list, [&](NSObject* number, NSUInteger index) { return tripled(number, int(index)); })) ==
              expectedWithIndex);
    RC_ASSERT(modelOf(list) == model);
}

RC_GTEST_PROP(SequenceProperty, flatMapJoinsWhatMapGives, (const std::vector<std::uint8_t>& values)) {
    const Model model = small(values);
    Model expected;
    for (const int value : model) {
        expected.insert(expected.end(), std::size_t(value % 4), value);
    }
    RC_ASSERT(modelOf(zr_flatMap(listOf(model), [](NSObject* number) {
                  const int times = intOf(number) % 4;
                  return times == 1 ? id(number) : id(listOf(Model(std::size_t(times), intOf(number))));
              })) == expected);
}

RC_GTEST_PROP(SequenceProperty, filterExistsAndReduceAreTheStandardOnes,
              (const std::vector<std::uint8_t>& values, std::uint16_t chosen)) {
    const Model model = small(values);
    const Ref<NSArray> list = listOf(model);
    Model expected;
    std::copy_if(model.begin(), model.end(), std::back_inserter(expected),
                 [&](int value) { return has(chosen, value); });
    RC_ASSERT(modelOf(zr_filter(list, [&](NSObject* number, NSUInteger) { return has(chosen, intOf(number)); })) ==
              expected);
    const auto first = std::find_if(model.begin(), model.end(), [&](int value) { return has(chosen, value); });
    const id found = zr_exists(list, [&](NSObject* number) { return has(chosen, intOf(number)); });
    RC_ASSERT(found == (first == model.end() ? nullptr : list->elements()[std::size_t(first - model.begin())].get()));
    const id reduced = zr_reduce(list, [](NSObject* accumulated, NSObject* number) {
        return id(box((7 * intOf(accumulated) + intOf(number)) % 1000));
    });
    RC_ASSERT((reduced == nullptr) == model.empty());
    if (!model.empty()) {
        RC_ASSERT(intOf(reduced) == std::accumulate(model.begin() + 1, model.end(), model.front(),
                                                    [](int a, int b) { return (7 * a + b) % 1000; }));
    }
}

RC_GTEST_PROP(SequenceProperty, removalTakesEveryEqualElement,
              (const std::vector<std::uint8_t>& values, std::uint16_t chosen, std::uint8_t step)) {
    const Model model = small(values);
    const std::size_t every = step % 4 + 1;
    const auto isWanted = [&](int value, std::size_t index) { return has(chosen, value) && index % every == 0; };
    const Ref<NSMutableArray> list = listOf<NSMutableArray>(model);
    RC_ASSERT(modelOf(arrayByRemoveObjectsWhere(list, [&](NSObject* number, NSUInteger index) {
                  return isWanted(intOf(number), index);
              })) == without(model, isWanted));
    removeObjectsWhere(list, [&](NSObject* number) { return has(chosen, intOf(number)); });
    RC_ASSERT(modelOf(list) == without(model, [&](int value, std::size_t) { return has(chosen, value); }));
}

RC_GTEST_PROP(SequenceProperty, editsAtAnIndexAreThoseOfAVector,
              (const std::vector<std::uint8_t>& values, const std::vector<std::uint8_t>& others, std::uint8_t place)) {
    const Model model = small(values);
    const Model added = small(others);
    const std::size_t index = place % (model.size() + 2);
    const Ref<NSArray> list = listOf(model);
    const auto upTo = std::ptrdiff_t(std::min(index, model.size()));
    Model cut(model.begin(), model.begin() + upTo);
    RC_ASSERT(modelOf(zr_removeObjectsFromIndex(list, index)) == cut);
    Model deleted = model;
    Model replaced = model;
    if (index < model.size()) {
        deleted.erase(deleted.begin() + upTo);
        replaced[index] = 99;
    } else {
        replaced.push_back(99);
    }
    RC_ASSERT(modelOf(replaceObjectAtIndex_withObject(list, index, nullptr)) == deleted);
    if (index <= model.size()) {
        RC_ASSERT(modelOf(replaceObjectAtIndex_withObject(list, index, box(99))) == replaced);
    }
    cut.insert(cut.end(), added.begin(), added.end());
    RC_ASSERT(modelOf(zr_replaceObjectsFromIndex_withObjects(list, index, listOf(added))) == cut);
    RC_ASSERT(modelOf(zr_reverse(list)) == Model(model.rbegin(), model.rend()));
    const id element = zr_objectAtIndex(list, index);
    RC_ASSERT(element == (index < model.size() ? list->elements()[index].get() : nullptr));
}

RC_GTEST_PROP(SequenceProperty, distinctValuesAreThoseOfASet, (const std::vector<std::uint8_t>& values)) {
    const Model model = small(values);
    const std::set<int> expected(model.begin(), model.end());
    const Model distinct = modelOf(zr_distinct(listOf(model)));
    RC_ASSERT(distinct.size() == expected.size());
    RC_ASSERT(std::set<int>(distinct.begin(), distinct.end()) == expected);
    const Ref<NSMutableSet> members = NSMutableSet::set();
    zr_addObjectsFromArray(members, listOf(model));
    const Model kept = modelOf(zr_filter(members, [](NSObject* number) { return intOf(number) < 5; }));
    RC_ASSERT(std::set<int>(kept.begin(), kept.end()) == std::set<int>(expected.begin(), expected.lower_bound(5)));
    RC_ASSERT(zr_map(members, [](NSObject*) { return box(0); })->count() == expected.size());
}

} // namespace

} // namespace zr
