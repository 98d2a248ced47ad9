#include <zrbasic/platform/foundation/geometry.h>

#include <gtest/gtest.h>
#include <limits>

namespace zr {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

TEST(Rectangles, shrinkOnAllSidesAndAreNotClamped) {
    EXPECT_EQ(NSInsetRect({{10, 20}, {30, 40}}, 5, 2), (NSRect{{15, 22}, {20, 36}}));
    EXPECT_EQ(NSInsetRect({{0, 0}, {4, 4}}, 3, 1), (NSRect{{3, 1}, {-2, 2}}));
    EXPECT_EQ(NSInsetRect({{0, 0}, {4, 4}}, -1, 0), (NSRect{{-1, 0}, {6, 4}}));
}

TEST(Rectangles, areEmptyWithoutAnExtent) {
    EXPECT_TRUE(NSIsEmptyRect({}));
    EXPECT_TRUE(NSIsEmptyRect({{1, 1}, {5, 0}}));
    EXPECT_TRUE(NSIsEmptyRect({{1, 1}, {-5, 3}}));
    EXPECT_TRUE(NSIsEmptyRect({{1, 1}, {nan, 3}}));
    EXPECT_FALSE(NSIsEmptyRect({{-1, -1}, {0.1, 0.1}}));
}

TEST(Rectangles, haveInCommonWhatLiesInBoth) {
    EXPECT_EQ(NSIntersectionRect({{0, 0}, {10, 10}}, {{5, -5}, {10, 10}}), (NSRect{{5, 0}, {5, 5}}));
    EXPECT_EQ(NSIntersectionRect({{0, 0}, {10, 10}}, {{10, 0}, {10, 10}}), NSZeroRect);
    EXPECT_EQ(NSIntersectionRect({{0, 0}, {10, 10}}, {{20, 20}, {1, 1}}), NSZeroRect);
    EXPECT_EQ(NSIntersectionRect({{0, 0}, {10, 10}}, {{0, 0}, {nan, 10}}), NSZeroRect);
}

TEST(Rectangles, thatTouchShareNoPointer) {
    const NSRect left{{0, 0}, {10, 10}};
    const NSRect right{{10, 0}, {10, 10}};
    EXPECT_FALSE(NSMouseInRect({10, 5}, left, false));
    EXPECT_TRUE(NSMouseInRect({10, 5}, right, false));
    EXPECT_TRUE(NSMouseInRect({0, 5}, left, false));
    EXPECT_FALSE(NSMouseInRect({nan, 5}, left, false));
}

TEST(Rectangles, takeTheTopEdgeInAndLeaveTheBottomEdgeOut) {
    const NSRect rect{{0, 0}, {10, 10}};
    EXPECT_TRUE(NSMouseInRect({5, 10}, rect, false));
    EXPECT_FALSE(NSMouseInRect({5, 0}, rect, false));
    EXPECT_TRUE(NSMouseInRect({5, 0}, rect, true));
    EXPECT_FALSE(NSMouseInRect({5, 10}, rect, true));
}

} // namespace
} // namespace zr
