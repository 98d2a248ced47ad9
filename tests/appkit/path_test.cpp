#include <zrbasic/platform/appkit/path.h>
#include <zrbasic/platform/foundation/string.h>

#include <tests/appkit/window_testing.h>

#include <cmath>

namespace zr {
namespace {

using Points = std::vector<NSPoint>;

TEST(Path, isMadePieceByPiece) {
    const auto path = CGPath::path();
    EXPECT_TRUE(path->isEmpty());
    EXPECT_EQ(path->currentPoint(), NSZeroPoint);
    path->moveToPoint({1, 2});
    path->addLineToPoint({3, 4});
    path->addCurveToPoint_controlPoint1_controlPoint2({9, 9}, {5, 6}, {7, 8});
    EXPECT_EQ(path->currentPoint(), (NSPoint{9, 9}));
    path->closeSubpath();
    EXPECT_EQ(path->currentPoint(), (NSPoint{1, 2})) << "closing goes back to where the part began";
    ASSERT_EQ(path->elements().size(), 4U);
    EXPECT_EQ(path->elements()[2],
              (CGPathElement{kCGPathElementAddCurveToPoint, {NSPoint{5, 6}, NSPoint{7, 8}, NSPoint{9, 9}}}));
    EXPECT_EQ(path->elements()[3].type, kCGPathElementCloseSubpath);
}

TEST(Path, leadsToItsKeyPoints) {
    const auto path = CGPath::path();
    EXPECT_EQ(path->keyPoints(), Points{});
    path->moveToPoint({1, 2});
    path->addLineToPoint({3, 4});
    path->closeSubpath();
    path->addLineToPoint({5, 5});
    path->moveToPoint({7, 7});
    path->addCurveToPoint_controlPoint1_controlPoint2({8, 8}, {70, 7}, {8, 80});
    path->closeSubpath();
    EXPECT_EQ(path->keyPoints(), (Points{{1, 2}, {3, 4}, {1, 2}, {5, 5}, {7, 7}, {8, 8}, {7, 7}}));
}

TEST(Path, needsABeginning) {
    const auto path = CGPath::path();
    path->addLineToPoint({3, 4});
    path->addCurveToPoint_controlPoint1_controlPoint2({9, 9}, {5, 6}, {7, 8});
    path->closeSubpath();
    EXPECT_TRUE(path->isEmpty());
    EXPECT_EQ(path->currentPoint(), NSZeroPoint);
    path->moveToPoint({INFINITY, -0.1});
    path->addLineToPoint({NAN, 1e300});
    EXPECT_EQ(path->keyPoints().front(), (NSPoint{INFINITY, -0.1})) << "coordinates are kept as they are";
    EXPECT_TRUE(std::isnan(path->keyPoints().back().x));
}

TEST(Path, equalsOneOfTheSamePieces) {
    const auto path = CGPath::path();
    path->moveToPoint({1, 2});
    path->addLineToPoint({3, 4});
    const auto copy = cast<CGPath>(path->copy());
    EXPECT_TRUE(path->isEqual(copy));
    EXPECT_EQ(path->hash(), copy->hash());
    path->closeSubpath();
    EXPECT_FALSE(path->isEqual(copy)) << "a copy is a path of its own";
    EXPECT_EQ(copy->elements().size(), 2U);
    copy->closeSubpath();
    EXPECT_EQ(copy->currentPoint(), (NSPoint{1, 2})) << "a copy knows where its part began";
    EXPECT_FALSE(path->isEqual("path"_ns));
    EXPECT_FALSE(path->isEqual(nullptr));
}

TEST(Path, answersMessages) {
    const id path = send<id>(CGPath::classObject(), "path"_sel);
    send<void>(path, "moveToPoint:"_sel, NSPoint{1, 2});
    send<void>(path, "addLineToPoint:"_sel, NSPoint{4, 2});
    EXPECT_EQ(send<NSPoint>(path, "currentPoint"_sel), (NSPoint{4, 2}));
    send<void>(path, "closeSubpath"_sel);
    EXPECT_FALSE(send<bool>(path, "isEmpty"_sel));
    EXPECT_EQ(cast<CGPath>(path)->keyPoints().size(), 3U);
}

} // namespace
} // namespace zr
