#include <zrbasic/ui/bezier_path.h>

#include <zrbasic/platform/appkit/bezier_path.h>

#include <gtest/gtest.h>

#include <cmath>

namespace zr {
namespace {

Ref<NSBezierPath> openPolyline() {
    Ref<NSBezierPath> path = NSBezierPath::bezierPath();
    path->moveToPoint({1, 2});
    path->lineToPoint({3, 4});
    path->lineToPoint({5, 0});
    return path;
}

TEST(PathOfABezierPath, isNullForAPathThatEndsWithAClose) {
    const auto path = openPolyline();
    path->lineToPoint({9, 9});
    path->closePath();
    EXPECT_FALSE(cgPath(path));
    EXPECT_FALSE(cgPath(NSBezierPath::bezierPathWithRect({{0, 0}, {5, 5}})));
    path->moveToPoint({7, 7});
    EXPECT_FALSE(cgPath(path)) << "a move opens nothing";
    path->lineToPoint({8, 8});
    ASSERT_TRUE(cgPath(path));
    EXPECT_EQ(cgPath(path)->elements().size(), 7U) << "with the closed part before it";
    const auto goingOn = openPolyline();
    goingOn->closePath();
    goingOn->lineToPoint({8, 8});
    ASSERT_TRUE(cgPath(goingOn)) << "what was closed goes on without a move";
    EXPECT_EQ(cgPath(goingOn)->elements()[3].type, kCGPathElementCloseSubpath);
    EXPECT_EQ(cgPath(goingOn)->elements().size(), 5U);
}

TEST(PathOfABezierPath, staysOpen) {
    const auto made = cgPath(openPolyline());
    ASSERT_TRUE(made);
    const std::vector<CGPathElement> expected{{kCGPathElementMoveToPoint, {NSPoint{1, 2}}},
                                              {kCGPathElementAddLineToPoint, {NSPoint{3, 4}}},
                                              {kCGPathElementAddLineToPoint, {NSPoint{5, 0}}}};
    EXPECT_EQ(made->elements(), expected);
}

TEST(PathOfABezierPath, keepsTheOrderOfACurvesPoints) {
    const auto path = openPolyline();
    path->curveToPoint_controlPoint1_controlPoint2({9, 9}, {5, 6}, {7, 8});
    const auto made = cgPath(path);
    ASSERT_TRUE(made);
    EXPECT_EQ(made->elements().back(),
              (CGPathElement{kCGPathElementAddCurveToPoint, {NSPoint{5, 6}, NSPoint{7, 8}, NSPoint{9, 9}}}));
    path->lineToPoint({0, 0});
    EXPECT_EQ(made->elements().size(), 4U) << "it does not follow later changes";
}

TEST(PathOfABezierPath, isNullWithoutLines) {
    EXPECT_FALSE(cgPath(nullptr));
    EXPECT_FALSE(cgPath(NSBezierPath::bezierPath()));
    const auto moves = NSBezierPath::bezierPath();
    moves->moveToPoint({1, 1});
    moves->moveToPoint({2, 2});
    EXPECT_FALSE(cgPath(moves));
}

TEST(PathOfABezierPath, takesAnyCoordinates) {
    const auto path = openPolyline();
    path->lineToPoint({INFINITY, -1e300});
    const auto made = cgPath(path);
    ASSERT_TRUE(made);
    EXPECT_EQ(made->currentPoint(), NSMakePoint(INFINITY, -1e300));
}

TEST(PathOfABezierPath, isAskedForByItsTypesName) {
    const Ref<CGPath> made = send<Ref<CGPath>>(openPolyline(), "CGPath"_sel);
    ASSERT_TRUE(made);
    EXPECT_EQ(made->elements().size(), 3U);
}

} // namespace
} // namespace zr
