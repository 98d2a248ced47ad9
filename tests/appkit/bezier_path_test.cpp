#include <zrbasic/platform/appkit/bezier_path.h>

#include "../foundation/checks.h"
#include "canvas_testing.h"

#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/appkit/image.h>

#include <cmath>
#include <limits>

namespace zr {
namespace {

using test::raisedName;
using test::recorded;

constexpr double infinity = std::numeric_limits<double>::infinity();

Ref<NSBezierPath> polyline(std::initializer_list<NSPoint> points) {
    Ref<NSBezierPath> path = NSBezierPath::bezierPath();
    for (const NSPoint point : points) {
        path->isEmpty() ? path->moveToPoint(point) : path->lineToPoint(point);
    }
    return path;
}

/// A fresh image of so many points, and as many pixels, drawn in by `draw`.
template <class Draw>
Ref<NSBitmapImageRep> picture(double wide, double high, const Draw& draw) {
    const Ref<NSImage> image = make<NSImage>(&NSImage::initWithSize, NSMakeSize(wide, high));
    image->lockFocus();
    draw();
    image->unlockFocus();
    return image->bestRepresentation();
}

int alphaAt(NSBitmapImageRep* bitmap, NSInteger x, NSInteger y) {
    return bitmap->pixelAtX_y(x, y).alpha;
}

/// How many whole pixels are covered, altogether.
double area(NSBitmapImageRep* bitmap) {
    double sum = 0;
    for (std::size_t i = 3; i < bitmap->bytes().size(); i += 4) {
        sum += bitmap->bytes()[i];
    }
    return sum / 255;
}

TEST(BezierPath, isMadePieceByPiece) {
    const auto path = polyline({{1, 2}, {3, 4}});
    path->curveToPoint_controlPoint1_controlPoint2({9, 9}, {5, 6}, {7, 8});
    EXPECT_EQ(path->currentPoint(), NSMakePoint(9, 9));
    path->closePath();
    ASSERT_EQ(path->elementCount(), 4);
    NSPoint points[3] = {{-1, -1}, {-1, -1}, {-1, -1}};
    EXPECT_EQ(path->elementAtIndex_associatedPoints(1, points), NSBezierPathElementLineTo);
    EXPECT_EQ(points[0], NSMakePoint(3, 4));
    EXPECT_EQ(points[1], NSMakePoint(-1, -1)) << "only what the piece has is written";
    EXPECT_EQ(path->elementAtIndex_associatedPoints(2, points), NSBezierPathElementCurveTo);
    EXPECT_EQ(points[0], NSMakePoint(5, 6));
    EXPECT_EQ(points[2], NSMakePoint(9, 9));
    EXPECT_EQ(path->elementAtIndex_associatedPoints(3, nullptr), NSBezierPathElementClosePath);
    EXPECT_EQ(path->currentPoint(), NSMakePoint(1, 2));
}

TEST(BezierPath, hasNoPiecesBeyondItsEnds) {
    const auto path = polyline({{1, 2}});
    for (const NSInteger index : {NSInteger{-1}, NSInteger{1}, std::numeric_limits<NSInteger>::max()}) {
        EXPECT_EQ(raisedName([&] { (void)path->elementAtIndex_associatedPoints(index, nullptr); }), NSRangeException);
    }
    path->removeAllPoints();
    EXPECT_TRUE(path->isEmpty());
    path->lineToPoint({1, 1});
    path->closePath();
    EXPECT_EQ(path->elementCount(), 0) << "a line needs a beginning";
}

TEST(BezierPath, goesAroundRectanglesAndOvals) {
    EXPECT_EQ(NSBezierPath::bezierPathWithRect({{1, 2}, {3, 4}})->elementCount(), 5);
    const NSRect rect{{1, 2}, {30, 40}};
    for (const auto& path : {NSBezierPath::bezierPathWithRect(rect), NSBezierPath::bezierPathWithOvalInRect(rect),
                             NSBezierPath::bezierPathWithRoundedRect_xRadius_yRadius(rect, 5, 7),
                             NSBezierPath::bezierPathWithRoundedRect_xRadius_yRadius(rect, 500, 700)}) {
        EXPECT_NEAR(NSMinX(path->bounds()), 1, 1e-9);
        EXPECT_NEAR(NSMinY(path->bounds()), 2, 1e-9);
        EXPECT_NEAR(path->bounds().size.width, 30, 1e-9);
        EXPECT_NEAR(path->bounds().size.height, 40, 1e-9);
    }
    const auto square = NSBezierPath::bezierPathWithRoundedRect_xRadius_yRadius(rect, 0, 7);
    EXPECT_TRUE(square->isEqual(NSBezierPath::bezierPathWithRect(rect)));
}

TEST(BezierPath, isBoundedByItsCurvesNotByTheirControlPoints) {
    const auto path = polyline({{0, 0}});
    path->curveToPoint_controlPoint1_controlPoint2({10, 0}, {0, 8}, {10, 8});
    EXPECT_NEAR(path->bounds().size.height, 6, 1e-12);
    EXPECT_NEAR(path->bounds().size.width, 10, 1e-12);
    const auto straight = polyline({{0, 0}});
    straight->curveToPoint_controlPoint1_controlPoint2({3, 3}, {1, 1}, {2, 2});
    EXPECT_EQ(straight->bounds(), (NSRect{{0, 0}, {3, 3}}));
}

TEST(BezierPath, hasNoBoundsWhereThereAreNone) {
    EXPECT_EQ(NSBezierPath::bezierPath()->bounds(), NSZeroRect);
    EXPECT_EQ(polyline({{0, 0}, {NAN, 1}})->bounds(), NSZeroRect);
    EXPECT_EQ(polyline({{0, 0}, {1, -infinity}})->bounds(), NSZeroRect);
    EXPECT_EQ(polyline({{-1.7e308, 0}, {1.7e308, 1}})->bounds(), NSZeroRect) << "wider than a number can say";
    EXPECT_EQ(polyline({{5, 6}})->bounds(), (NSRect{{5, 6}, {0, 0}}));
}

TEST(BezierPath, goesThroughATransform) {
    const auto path = polyline({{1, 0}, {2, 0}});
    path->curveToPoint_controlPoint1_controlPoint2({3, 0}, {4, 0}, {5, 0});
    const auto transform = NSAffineTransform::transform();
    transform->rotateByDegrees(90);
    path->transformUsingAffineTransform(transform);
    path->transformUsingAffineTransform(nullptr);
    NSPoint points[3];
    EXPECT_EQ(path->elementAtIndex_associatedPoints(0, points), NSBezierPathElementMoveTo);
    EXPECT_EQ(points[0], NSMakePoint(0, 1));
    (void)path->elementAtIndex_associatedPoints(2, points);
    EXPECT_EQ(points[0], NSMakePoint(0, 4));
    EXPECT_EQ(points[2], NSMakePoint(0, 3));
    EXPECT_EQ(path->currentPoint(), NSMakePoint(0, 3));
}

TEST(BezierPath, canBeAddedToItself) {
    const auto path = polyline({{1, 0}, {2, 0}});
    path->appendBezierPath(path);
    path->appendBezierPath(nullptr);
    EXPECT_EQ(path->elementCount(), 4);
    const auto copy = cast<NSBezierPath>(path->copy());
    EXPECT_TRUE(copy->isEqual(path));
    EXPECT_EQ(copy->hash(), path->hash());
    copy->setLineWidth(2);
    EXPECT_FALSE(copy->isEqual(path));
    EXPECT_FALSE(copy->isEqual("path"_ns));
}

TEST(BezierPath, isDrawnInTheCurrentColours) {
    const auto log = recorded([] {
                         const auto path = polyline({{1, 0}, {2, 0}, {2, 2}});
                         path->setLineWidth(3);
                         setFill(NSColor::redColor());
                         setStroke(NSColor::greenColor());
                         path->fill();
                         path->stroke();
                     }).log;
    EXPECT_EQ(log, "path of 3 red\nline 3 wide along 3 green\n");
    polyline({{1, 0}, {2, 0}})->fill();
    polyline({{1, 0}, {2, 0}})->stroke();
}

TEST(BezierPath, fillsWhatItGoesAround) {
    const auto bitmap = picture(10, 10, [] { NSBezierPath::bezierPathWithRect({{1, 1}, {4.5, 2}})->fill(); });
    EXPECT_EQ(alphaAt(bitmap, 1, 8), 255) << "y grows upwards";
    EXPECT_EQ(alphaAt(bitmap, 1, 6), 0);
    EXPECT_EQ(alphaAt(bitmap, 5, 7), 128);
    EXPECT_NEAR(area(bitmap), 9, 0.02);
    const auto circle = picture(40, 40, [] { NSBezierPath::bezierPathWithOvalInRect({{0, 0}, {40, 40}})->fill(); });
    EXPECT_NEAR(area(circle), M_PI * 400, 3);
    const auto open = picture(10, 10, [] { polyline({{0, 0}, {10, 0}, {0, 10}})->fill(); });
    EXPECT_NEAR(area(open), 50, 0.2) << "closed for filling";
}

TEST(BezierPath, fillsWhatItGoesAroundTwiceUnlessTheOtherWay) {
    const auto ring = [](bool isReversed) {
        return picture(10, 10, [isReversed] {
            const auto path = NSBezierPath::bezierPathWithRect({{0, 0}, {10, 10}});
            path->appendBezierPathWithRect(isReversed ? NSRect{{2, 8}, {6, -6}} : NSRect{{2, 2}, {6, 6}});
            path->fill();
        });
    };
    EXPECT_NEAR(area(ring(false)), 100, 0.01);
    EXPECT_NEAR(area(ring(true)), 64, 0.01);
}

TEST(BezierPath, drawsLinesAsWideAsTheyAre) {
    const auto line = [](Ref<NSBezierPath> path, double width) {
        return area(picture(20, 20, [&] {
            path->setLineWidth(width);
            path->stroke();
        }));
    };
    EXPECT_NEAR(line(polyline({{2, 10}, {12, 10}}), 4), 40, 0.1) << "cut off at its ends";
    EXPECT_NEAR(line(polyline({{2, 2}, {12, 2}, {12, 12}}), 2), 2 * 10 * 2 - 1 + 1, 0.2) << "pointed at its corner";
    EXPECT_NEAR(line(NSBezierPath::bezierPathWithRect({{4, 4}, {10, 10}}), 2), 12 * 12 - 8 * 8, 0.2);
    EXPECT_NEAR(line(polyline({{5, 5}, {5, 5}}), 4), 0, 0.01);
    for (const double width : {0.0, -1.0, double(NAN), infinity}) {
        EXPECT_EQ(line(polyline({{2, 10}, {12, 10}}), width), 0);
    }
}

TEST(BezierPath, drawsNothingOfWhatIsNowhere) {
    const auto none = [](Ref<NSBezierPath> path) {
        return area(picture(4, 4, [&] {
            path->fill();
            path->stroke();
        }));
    };
    EXPECT_EQ(none(polyline({{0, 0}, {NAN, 4}, {4, 4}})), 0);
    EXPECT_EQ(none(polyline({{0, 0}, {1e300, 4}, {4, 4}})), 0);
    EXPECT_EQ(none(NSBezierPath::bezierPath()), 0);
    EXPECT_EQ(none(NSBezierPath::bezierPathWithRect({{100, 100}, {5, 5}})), 0);
}

TEST(BezierPath, answersMessages) {
    const id path = send<id>(NSBezierPath::classObject(), "bezierPathWithRect:"_sel, NSRect{{0, 0}, {2, 3}});
    EXPECT_EQ(send<NSInteger>(path, "elementCount"_sel), 5);
    EXPECT_EQ(send<NSRect>(path, "bounds"_sel), (NSRect{{0, 0}, {2, 3}}));
    send<void>(path, "setLineWidth:"_sel, 4.0);
    EXPECT_EQ(send<double>(path, "lineWidth"_sel), 4);
}

} // namespace
} // namespace zr
