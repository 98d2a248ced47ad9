#pragma once

#include <zrbasic/platform/foundation/geometry.h>
#include <zrbasic/platform/runtime/declare.h>

#include <array>
#include <vector>

namespace zr {

/// What a piece of a path does.
enum CGPathElementType : NSInteger {
    kCGPathElementMoveToPoint = 0,
    kCGPathElementAddLineToPoint = 1,
    kCGPathElementAddCurveToPoint = 3,
    kCGPathElementCloseSubpath = 4,
};

/// One piece of a path. Of the points, a move and a line have the first one, their end; a curve has its two control
/// points and its end; closing has none.
struct CGPathElement {
    CGPathElementType type = kCGPathElementMoveToPoint;
    std::array<NSPoint, 3> points;

    friend bool operator==(const CGPathElement&, const CGPathElement&) = default;
};

/// A way through the plane, in one or several parts, each of which begins with a move. It is made piece by piece and then
/// handed on; whoever takes one must not change it any more. Coordinates are kept as they are given.
///
/// Used on one thread at a time; one that is not changed any more, on any.
class ZR_EXPORT CGPath : public NSObject {
    ZR_DECLARE_CLASS(CGPath, NSObject)
  public:
    CGPath();
    ~CGPath() override;

    /// A new one without pieces.
    [[nodiscard]] static Ref<CGPath> path();

    /// Begins a part.
    void moveToPoint(NSPoint point);
    /// Without a part these three do nothing.
    void addLineToPoint(NSPoint point);
    void addCurveToPoint_controlPoint1_controlPoint2(NSPoint end, NSPoint control1, NSPoint control2);
    /// Goes straight back to where the part began. What is added without a move goes on from there.
    void closeSubpath();

    /// Each of these is a closed part of its own. They begin at the rectangle's origin, its left side's middle for the
    /// last, and go along its width first, so that a negative extent turns the way around.
    void addRect(NSRect rect);
    /// The radii reach to the middles of the sides at most; without one of them the corners are square.
    void addRoundedRect_cornerWidth_cornerHeight(NSRect rect, double xRadius, double yRadius);
    void addEllipseInRect(NSRect rect);

    [[nodiscard]] bool isEmpty() const { return m_elements.empty(); }
    /// Where the next piece would begin; the zero point for an empty path.
    [[nodiscard]] NSPoint currentPoint() const { return m_current; }
    [[nodiscard]] const std::vector<CGPathElement>& elements() const { return m_elements; }
    /// The points that the way leads to, one after the other: where each part begins, the end of each piece, and for
    /// closing the beginning of the part.
    [[nodiscard]] std::vector<NSPoint> keyPoints() const;

    /// True for a path of the same pieces.
    [[nodiscard]] bool isEqual(NSObject* other) const override;
    [[nodiscard]] NSUInteger hash() const override;
    /// Another path of the same pieces.
    [[nodiscard]] id copy() const override;

  private:
    std::vector<CGPathElement> m_elements;
    NSPoint m_current;
    NSPoint m_start;
};

} // namespace zr
