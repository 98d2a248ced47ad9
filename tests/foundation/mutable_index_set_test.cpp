#include <zrbasic/platform/foundation/mutable_index_set.h>

#include "checks.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <iterator>
#include <limits>
#include <set>
#include <tuple>
#include <vector>

namespace zr {

namespace {

using test::raised;
using test::raisedName;

constexpr NSUInteger huge = std::numeric_limits<NSUInteger>::max();

std::string ranges(const Ref<NSIndexSet>& indexes) {
    std::string text;
    for (const NSRange range : indexes->ranges()) {
        text += std::to_string(range.location) + '+' + std::to_string(range.length) + ' ';
    }
    return text;
}

/// 2 to 4 and 8 to 9.
Ref<NSMutableIndexSet> sample() {
    const Ref<NSMutableIndexSet> made = NSMutableIndexSet::indexSetWithIndexesInRange({2, 3});
    made->addIndexesInRange({8, 2});
    return made;
}

TEST(MutableIndexSetAdding, meltsRangesThatOverlapOrTouch) {
    const struct {
        const char* name;
        NSRange added;
        const char* ranges;
    } rows[] = {
        {"before all", {0, 1}, "0+1 2+3 8+2 "}, {"touching the first from below", {0, 2}, "0+5 8+2 "},
        {"inside", {3, 1}, "2+3 8+2 "},         {"touching from above", {5, 1}, "2+4 8+2 "},
        {"in the gap", {6, 1}, "2+3 6+1 8+2 "}, {"closing the gap", {5, 3}, "2+8 "},
        {"over everything", {0, 20}, "0+20 "},  {"behind all", {11, 1}, "2+3 8+2 11+1 "},
        {"empty", {6, 0}, "2+3 8+2 "},          {"empty and nowhere", {huge, 0}, "2+3 8+2 "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Ref<NSMutableIndexSet> indexes = sample();
        indexes->addIndexesInRange(row.added);
        EXPECT_EQ(ranges(indexes), row.ranges);
    }
}

TEST(MutableIndexSetAdding, raisesForIndexesThatDoNotExist) {
    const Ref<NSMutableIndexSet> indexes = sample();
    EXPECT_EQ(raised([&] { indexes->addIndex(NSNotFound); }),
              "NSRangeException: *** -[NSMutableIndexSet addIndexesInRange:]: Range {9223372036854775807, 1} exceeds "
              "maximum index value of NSNotFound - 1");
    EXPECT_EQ(raisedName([&] { indexes->addIndexesInRange({1, huge}); }), NSRangeException);
    EXPECT_EQ(raisedName([&] { static_cast<void>(make<NSMutableIndexSet>(&NSIndexSet::initWithIndex, huge)); }),
              NSRangeException);
    EXPECT_EQ(ranges(indexes), "2+3 8+2 ");
    indexes->addIndex(NSNotFound - 1);
    EXPECT_EQ(indexes->lastIndex(), NSNotFound - 1);
}

TEST(MutableIndexSetRemoving, cutsRanges) {
    const struct {
        const char* name;
        NSRange removed;
        const char* ranges;
    } rows[] = {
        {"nothing there", {5, 3}, "2+3 8+2 "},         {"from the middle", {3, 1}, "2+1 4+1 8+2 "},
        {"the beginning", {0, 3}, "3+2 8+2 "},         {"the end", {9, 5}, "2+3 8+1 "},
        {"across the gap", {4, 5}, "2+2 9+1 "},        {"everything", {0, huge}, ""},
        {"everything from inside", {3, huge}, "2+1 "}, {"behind all", {10, huge}, "2+3 8+2 "},
        {"nowhere", {huge, huge}, "2+3 8+2 "},         {"empty", {3, 0}, "2+3 8+2 "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Ref<NSMutableIndexSet> indexes = sample();
        indexes->removeIndexesInRange(row.removed);
        EXPECT_EQ(ranges(indexes), row.ranges);
    }
    const Ref<NSMutableIndexSet> indexes = sample();
    indexes->removeIndex(9);
    indexes->removeIndex(NSNotFound);
    EXPECT_EQ(ranges(indexes), "2+3 8+1 ");
}

TEST(MutableIndexSetAlgebra, worksWithItselfAndWithNull) {
    const Ref<NSMutableIndexSet> indexes = sample();
    indexes->addIndexes(indexes);
    indexes->addIndexes(nullptr);
    indexes->removeIndexes(nullptr);
    EXPECT_EQ(ranges(indexes), "2+3 8+2 ");
    indexes->addIndexes(NSIndexSet::indexSetWithIndexesInRange({4, 2}));
    EXPECT_EQ(ranges(indexes), "2+4 8+2 ");
    indexes->removeIndexes(sample());
    EXPECT_EQ(ranges(indexes), "5+1 ");
    indexes->removeIndexes(indexes);
    EXPECT_EQ(ranges(indexes), "");
    indexes->removeAllIndexes();
    EXPECT_EQ(indexes->count(), 0U);
}

RC_GTEST_PROP(MutableIndexSetProperty, holdsWhatASetOfNumbersHolds,
              (const std::vector<std::tuple<bool, std::uint8_t, std::uint8_t>>& steps)) {
    const Ref<NSMutableIndexSet> indexes = NSMutableIndexSet::indexSet();
    std::set<NSUInteger> model;
    for (const auto& [isAdding, location, length] : steps) {
        const NSRange range{location % 40U, length % 12U};
        if (isAdding) {
            indexes->addIndexesInRange(range);
        } else {
            indexes->removeIndexesInRange(range);
        }
        for (NSUInteger index = range.location; index < NSMaxRange(range); ++index) {
            if (isAdding) {
                model.insert(index);
            } else {
                model.erase(index);
            }
        }
    }
    std::vector<NSUInteger> walked;
    indexes->enumerateIndexesUsingBlock([&](NSUInteger index, bool&) { walked.push_back(index); });
    RC_ASSERT(walked == std::vector<NSUInteger>(model.begin(), model.end()));
    RC_ASSERT(indexes->count() == model.size());
    for (std::size_t i = 1; i < indexes->ranges().size(); ++i) {
        RC_ASSERT(indexes->ranges()[i].location > NSMaxRange(indexes->ranges()[i - 1]));
    }
    for (NSUInteger index = 0; index < 60; ++index) {
        const auto above = model.upper_bound(index);
        const auto atLeast = model.lower_bound(index);
        RC_ASSERT(indexes->containsIndex(index) == model.contains(index));
        RC_ASSERT(indexes->indexGreaterThanIndex(index) == (above == model.end() ? NSNotFound : *above));
        RC_ASSERT(indexes->indexLessThanIndex(index) == (atLeast == model.begin() ? NSNotFound : *std::prev(atLeast)));
    }
}

} // namespace

} // namespace zr
