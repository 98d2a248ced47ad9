#include <zrbasic/collections/index_sets.h>

#include "../foundation/checks.h"

#include <zrbasic/platform/foundation/mutable_index_set.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

#include <limits>

namespace zr {

namespace {

using test::raisedName;

constexpr NSUInteger huge = std::numeric_limits<NSUInteger>::max();

/// "location+length", or "null".
std::string range(const Ref<NSIndexSet>& indexes) {
    if (!indexes) {
        return "null";
    }
    return indexes->count() == 0 ? "empty"
                                 : std::to_string(indexes->firstIndex()) + '+' + std::to_string(indexes->count());
}

TEST(IndexSetFromRange, isNullOnlyForNowhere) {
    const struct {
        const char* name;
        NSRange range;
        const char* result;
    } rows[] = {
        {"ordinary", {3, 4}, "3+4"},
        {"from zero", {0, 1}, "0+1"},
        {"empty", {3, 0}, "empty"},
        {"location nowhere", {NSNotFound, 4}, "null"},
        {"length nowhere", {3, NSNotFound}, "null"},
        {"both nowhere", {NSNotFound, NSNotFound}, "null"},
        {"what a search gives that found nothing", {NSNotFound, 0}, "null"},
        {"the last index", {NSNotFound - 1, 1}, "9223372036854775806+1"},
        {"all but one", {0, NSNotFound - 1}, "0+9223372036854775806"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(range(zr_indexSetWithIndexesInRange(row.range)), row.result);
        EXPECT_EQ(range(zr_indexSetWithIndexesInRange<NSMutableIndexSet>(row.range)), row.result);
        EXPECT_EQ(range(zr_indexSetWithLocation_length(row.range.location, row.range.length)), row.result);
        EXPECT_EQ(range(zr_indexSetWithIndexesInRange_maxCount(row.range, huge)), row.result);
    }
}

TEST(IndexSetFromRange, raisesLikeThePlatformBeyondTheLastIndex) {
    const NSRange bad[] = {{NSNotFound + 1, 1}, {NSNotFound - 1, 2}, {1, NSNotFound + 1}, {huge, huge}};
    for (const NSRange beyond : bad) {
        SCOPED_TRACE(testing::PrintToString(beyond));
        EXPECT_EQ(raisedName([&] { static_cast<void>(zr_indexSetWithIndexesInRange(beyond)); }), NSRangeException);
        EXPECT_EQ(raisedName([&] { static_cast<void>(zr_indexSetWithIndexesInRange_maxCount(beyond, huge)); }),
                  NSRangeException);
    }
    // Too long comes before out of range.
    EXPECT_EQ(range(zr_indexSetWithIndexesInRange_maxCount({NSNotFound - 1, 2}, 1)), "null");
}

TEST(IndexSetFromRange, comparesTheLengthWithTheMaximumAndNotTheLocation) {
    EXPECT_EQ(range(zr_indexSetWithIndexesInRange_maxCount({0, 10}, 10)), "0+10");
    EXPECT_EQ(range(zr_indexSetWithIndexesInRange_maxCount({0, 10}, 9)), "null");
    EXPECT_EQ(range(zr_indexSetWithIndexesInRange_maxCount({1000, 10}, 10)), "1000+10");
    EXPECT_EQ(range(zr_indexSetWithIndexesInRange_maxCount({5, 0}, 0)), "empty");
    EXPECT_EQ(range(zr_indexSetWithIndexesInRange_maxCount({5, 1}, 0)), "null");
}

TEST(IndexSetFromRange, startsAtZeroForALengthAlone) {
    EXPECT_EQ(range(zr_indexSetWithLength(3)), "0+3");
    EXPECT_EQ(range(zr_indexSetWithLength(0)), "empty");
    EXPECT_EQ(range(zr_indexSetWithLength(NSNotFound)), "null");
    EXPECT_EQ(range(zr_indexSetWithLength<NSMutableIndexSet>(2)), "0+2");
    EXPECT_EQ(raisedName([] { static_cast<void>(zr_indexSetWithLength(huge)); }), NSRangeException);
}

TEST(IndexSetFromRange, cannotChangeWhateverTheReceivingClass) {
    EXPECT_EQ(cast<NSMutableIndexSet>(zr_indexSetWithLength<NSMutableIndexSet>(2)), nullptr);
    const id made = send<id>(NSMutableIndexSet::classObject(), "zr_indexSetWithLocation:length:"_sel, 4, 2);
    EXPECT_EQ(range(Ref<NSIndexSet>(cast<NSIndexSet>(made))), "4+2");
    EXPECT_EQ(cast<NSMutableIndexSet>(made), nullptr);
    EXPECT_FALSE(send<id>(NSIndexSet::classObject(), "zr_indexSetWithIndexesInRange:maxCount:"_sel, NSRange{0, 3}, 2));
    EXPECT_FALSE(send<id>(NSIndexSet::classObject(), "zr_indexSetWithIndexesInRange:"_sel, NSRange{NSNotFound, 0}));
    EXPECT_EQ(send<Ref<NSIndexSet>>(NSIndexSet::classObject(), "zr_indexSetWithLength:"_sel, 3)->count(), 3U);
}

} // namespace

} // namespace zr
