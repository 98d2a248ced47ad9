#include <zrbasic/collections/array_difference.h>

#include "elements.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

// Differences beside the three lists that scanning and erasing in plain vectors leaves.

namespace zr {

namespace {

template <class Value>
struct Parts {
    std::vector<Value> intersection;
    std::vector<Value> newest;
    std::vector<Value> oldest;
    bool operator==(const Parts&) const = default;
};

template <class Value>
Parts<Value> scanned(const std::vector<Value>& older, const std::vector<Value>& newer) {
    Parts<Value> parts{{}, newer, older};
    for (const Value& value : newer) {
        if (std::find(parts.oldest.begin(), parts.oldest.end(), value) != parts.oldest.end()) {
            parts.intersection.push_back(value);
            std::erase(parts.oldest, value);
            std::erase(parts.newest, value);
        }
    }
    return parts;
}

template <class Value, class Box, class Unbox>
Parts<Value> ours(const std::vector<Value>& older, const std::vector<Value>& newer, Box&& boxed, Unbox&& unboxed) {
    const auto listOf = [&](const std::vector<Value>& values) {
        std::vector<id> elements;
        for (std::size_t i = 0; i < values.size(); ++i) {
            elements.push_back(boxed(values[i], i));
        }
        return NSArray::fromElements(std::move(elements));
    };
    const auto valuesOf = [&](const Ref<NSArray>& list) {
        std::vector<Value> values;
        for (const id& element : list) {
            values.push_back(unboxed(element));
        }
        return values;
    };
    const Ref<ZRArrayDifference> difference = differenceFrom(listOf(older), listOf(newer));
    return {valuesOf(difference->intersection()), valuesOf(difference->newest()), valuesOf(difference->oldest())};
}

RC_GTEST_PROP(ArrayDifferenceProperty, ofNumbersIsThatOfScannedVectors,
              (std::vector<std::uint8_t> older, std::vector<std::uint8_t> newer, std::uint8_t range)) {
    for (std::vector<std::uint8_t>* const values : {&older, &newer}) {
        for (std::uint8_t& value : *values) {
            value = static_cast<std::uint8_t>(value % (range % 50 + 1));
        }
    }
    const auto boxed = [](std::uint8_t value, std::size_t index) {
        return index % 2 == 0 ? id(box(int(value))) : id(box(double(value)));
    };
    const auto unboxed = [](NSObject* number) { return static_cast<std::uint8_t>(test::intOf(number)); };
    RC_ASSERT(ours(older, newer, boxed, unboxed) == scanned(older, newer));
    // The same values in objects that no hash finds.
    const auto forgetful = [](std::uint8_t value, std::size_t) { return test::Forgetful::of(value); };
    const auto number = [](NSObject* object) {
        return static_cast<std::uint8_t>(cast<NSString>(object->description())->intValue());
    };
    RC_ASSERT(ours(older, newer, forgetful, number) == scanned(older, newer));
}

RC_GTEST_PROP(ArrayDifferenceProperty, ofStringsIsThatOfScannedVectors, (std::uint8_t length)) {
    const auto texts =
        *rc::gen::pair(rc::gen::container<std::vector<std::string>>(rc::gen::resize(
                           length % 3 + 1, rc::gen::container<std::string>(rc::gen::elementOf(std::string("ab"))))),
                       rc::gen::container<std::vector<std::string>>(rc::gen::resize(
                           length % 3 + 1, rc::gen::container<std::string>(rc::gen::elementOf(std::string("ab"))))));
    const auto boxed = [](const std::string& text, std::size_t) { return id(NSString::fromUtf8(text)); };
    const auto unboxed = [](NSObject* text) { return cast<NSString>(text)->utf8(); };
    RC_ASSERT(ours(texts.first, texts.second, boxed, unboxed) == scanned(texts.first, texts.second));
}

} // namespace

} // namespace zr
