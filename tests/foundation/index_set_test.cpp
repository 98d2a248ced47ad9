#include <zrbasic/platform/foundation/index_set.h>

#include "checks.h"

#include <zrbasic/platform/foundation/mutable_index_set.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

#include <limits>

namespace zr {

namespace {

using test::raised;
using test::raisedName;

constexpr NSUInteger huge = std::numeric_limits<NSUInteger>::max();

/// 2, 3, 4 and 7.
Ref<NSIndexSet> sample() {
    const Ref<NSMutableIndexSet> made = NSMutableIndexSet::indexSetWithIndexesInRange({2, 3});
    made->addIndex(7);
    return Ref<NSIndexSet>(cast<NSIndexSet>(made->copy()));
}

std::string walked(const Ref<NSIndexSet>& indexes) {
    std::string text;
    indexes->enumerateIndexesUsingBlock([&](NSUInteger index, bool&) { text += std::to_string(index) + ' '; });
    return text;
}

TEST(IndexSetMaking, holdsTheIndexesOfARange) {
    EXPECT_EQ(walked(NSIndexSet::indexSetWithIndexesInRange({3, 4})), "3 4 5 6 ");
    EXPECT_EQ(walked(NSIndexSet::indexSetWithIndex(9)), "9 ");
    EXPECT_EQ(walked(NSIndexSet::indexSet()), "");
    EXPECT_EQ(NSIndexSet::indexSetWithIndexesInRange({5, 0})->count(), 0U);
    EXPECT_EQ(NSIndexSet::indexSetWithIndexesInRange({huge, 0})->count(), 0U);
    EXPECT_EQ(walked(make<NSIndexSet>(&NSIndexSet::initWithIndexSet, sample())), "2 3 4 7 ");
    EXPECT_EQ(walked(make<NSIndexSet>(&NSIndexSet::initWithIndexSet, nullptr)), "");
}

TEST(IndexSetMaking, raisesForIndexesThatDoNotExist) {
    EXPECT_EQ(NSIndexSet::indexSetWithIndex(NSNotFound - 1)->lastIndex(), NSNotFound - 1);
    EXPECT_EQ(NSIndexSet::indexSetWithIndexesInRange({0, NSNotFound})->count(), NSNotFound);
    EXPECT_EQ(raised([] {
                  static_cast<void>(NSIndexSet::indexSetWithIndexesInRange({1, NSNotFound}));
              }),
              "NSRangeException: *** -[NSIndexSet initWithIndexesInRange:]: Range {1, 9223372036854775807} exceeds "
              "maximum index value of NSNotFound - 1");
    const NSRange bad[] = {{NSNotFound, 1}, {huge, 1}, {huge, huge}, {2, huge}, {NSNotFound - 1, 2}};
    for (const NSRange range : bad) {
        SCOPED_TRACE(testing::PrintToString(range));
        EXPECT_EQ(raisedName([&] { static_cast<void>(NSIndexSet::indexSetWithIndexesInRange(range)); }),
                  NSRangeException);
    }
}

TEST(IndexSetReading, countsAndFindsNeighbours) {
    const Ref<NSIndexSet> indexes = sample();
    EXPECT_EQ(indexes->count(), 4U);
    EXPECT_EQ(indexes->firstIndex(), 2U);
    EXPECT_EQ(indexes->lastIndex(), 7U);
    const struct {
        NSUInteger index;
        NSUInteger above;
        NSUInteger below;
    } rows[] = {
        {0, 2, NSNotFound},
        {1, 2, NSNotFound},
        {2, 3, NSNotFound},
        {3, 4, 2},
        {4, 7, 3},
        {5, 7, 4},
        {6, 7, 4},
        {7, NSNotFound, 4},
        {8, NSNotFound, 7},
        {NSNotFound - 1, NSNotFound, 7},
        {NSNotFound, NSNotFound, 7},
        {huge, NSNotFound, 7},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.index);
        EXPECT_EQ(indexes->indexGreaterThanIndex(row.index), row.above);
        EXPECT_EQ(indexes->indexLessThanIndex(row.index), row.below);
    }
}

TEST(IndexSetReading, anEmptySetHasNoIndexAnywhere) {
    const Ref<NSIndexSet> none = NSIndexSet::indexSet();
    EXPECT_EQ(none->firstIndex(), NSNotFound);
    EXPECT_EQ(none->lastIndex(), NSNotFound);
    EXPECT_EQ(none->indexGreaterThanIndex(0), NSNotFound);
    EXPECT_EQ(none->indexLessThanIndex(5), NSNotFound);
    EXPECT_FALSE(none->containsIndex(0));
    EXPECT_TRUE(none->ranges().empty());
}

TEST(IndexSetReading, containsIndexesAndRanges) {
    const Ref<NSIndexSet> indexes = sample();
    EXPECT_FALSE(indexes->containsIndex(1));
    EXPECT_TRUE(indexes->containsIndex(2));
    EXPECT_TRUE(indexes->containsIndex(4));
    EXPECT_FALSE(indexes->containsIndex(5));
    EXPECT_FALSE(indexes->containsIndex(NSNotFound));
    EXPECT_FALSE(indexes->containsIndex(huge));
    EXPECT_TRUE(indexes->containsIndexesInRange({3, 2}));
    EXPECT_FALSE(indexes->containsIndexesInRange({3, 3}));
    EXPECT_FALSE(indexes->containsIndexesInRange({3, huge}));
    EXPECT_FALSE(indexes->containsIndexesInRange({1, 2}));
    EXPECT_FALSE(indexes->containsIndexesInRange({3, 0}));
}

TEST(IndexSetWalk, endsWhenToldTo) {
    std::string seen;
    sample()->enumerateIndexesUsingBlock([&](NSUInteger index, bool& stop) {
        seen += std::to_string(index);
        stop = index == 3;
    });
    EXPECT_EQ(seen, "23");
    sample()->enumerateIndexesUsingBlock(nullptr);
    // Neither a list of its indexes nor a walk through all of them stands behind a set.
    NSUInteger steps = 0;
    NSIndexSet::indexSetWithIndexesInRange({0, NSNotFound})->enumerateIndexesUsingBlock([&](NSUInteger, bool& stop) {
        stop = ++steps == 1000;
    });
    EXPECT_EQ(steps, 1000U);
}

TEST(IndexSetWalk, goesOverTheIndexesOfTheBeginning) {
    const Ref<NSMutableIndexSet> indexes = NSMutableIndexSet::indexSetWithIndexesInRange({0, 3});
    std::string seen;
    indexes->enumerateIndexesUsingBlock([&](NSUInteger index, bool&) {
        seen += std::to_string(index);
        indexes->removeAllIndexes();
        indexes->addIndex(index + 10);
    });
    EXPECT_EQ(seen, "012");
    EXPECT_EQ(walked(indexes), "12 ");
}

TEST(IndexSetEquality, isThatOfTheIndexes) {
    EXPECT_TRUE(sample()->isEqual(sample()));
    EXPECT_TRUE(sample()->isEqual(sample()->mutableCopy()));
    EXPECT_EQ(sample()->hash(), sample()->mutableCopy()->hash());
    EXPECT_FALSE(sample()->isEqual(NSIndexSet::indexSetWithIndexesInRange({2, 4})));
    EXPECT_NE(sample()->hash(), NSIndexSet::indexSetWithIndexesInRange({2, 4})->hash());
    EXPECT_TRUE(NSIndexSet::indexSet()->isEqual(NSIndexSet::indexSetWithIndexesInRange({4, 0})));
    EXPECT_EQ(NSIndexSet::indexSet()->hash(), NSMutableIndexSet::indexSet()->hash());
    EXPECT_FALSE(sample()->isEqual(nullptr));
    EXPECT_FALSE(sample()->isEqual(NSNull::null()));
    EXPECT_FALSE(sample()->isEqualToIndexSet(nullptr));
}

TEST(IndexSetCopies, areTheSameObjectWhenItCannotChange) {
    const Ref<NSIndexSet> indexes = sample();
    EXPECT_EQ(indexes->copy().get(), indexes.get());
    const id changeable = indexes->mutableCopy();
    ASSERT_NE(cast<NSMutableIndexSet>(changeable), nullptr);
    const id copied = changeable->copy();
    cast<NSMutableIndexSet>(changeable)->removeAllIndexes();
    EXPECT_TRUE(copied->isEqual(indexes));
    EXPECT_EQ(cast<NSMutableIndexSet>(copied), nullptr);
}

TEST(IndexSetDescription, namesTheRanges) {
    const std::string text = sample()->description()->utf8();
    EXPECT_EQ(text.substr(0, 15), "<NSIndexSet: 0x");
    EXPECT_EQ(text.substr(text.find('>')), ">[number of indexes: 4 (in 2 ranges), indexes: (2-4 7)]");
    const std::string empty = NSMutableIndexSet::indexSet()->description()->utf8();
    EXPECT_EQ(empty.substr(0, 22), "<NSMutableIndexSet: 0x");
    EXPECT_EQ(empty.substr(empty.find('>')), ">(no indexes)");
}

TEST(IndexSetMessages, areAnswered) {
    const id indexes = send<id>(NSIndexSet::classObject(), "indexSetWithIndexesInRange:"_sel, NSRange{4, 2});
    EXPECT_EQ(send<NSUInteger>(indexes, "count"_sel), 2U);
    EXPECT_EQ(send<NSUInteger>(indexes, "indexGreaterThanIndex:"_sel, 4), 5U);
    EXPECT_TRUE(send<bool>(indexes, "containsIndex:"_sel, 5));
    EXPECT_FALSE(send<bool>(indexes, "isEqualToIndexSet:"_sel, "4"_ns));
    const id changeable = send<id>(NSMutableIndexSet::classObject(), "indexSetWithIndex:"_sel, 1);
    send(changeable, "addIndexes:"_sel, indexes);
    send(changeable, "addIndexes:"_sel, "5"_ns);
    send(changeable, "removeIndexesInRange:"_sel, NSRange{5, 1});
    EXPECT_EQ(walked(Ref<NSIndexSet>(cast<NSIndexSet>(changeable))), "1 4 ");
}

} // namespace

} // namespace zr
