#pragma once

#include <zrbasic/platform/appkit/path.h>
#include <zrbasic/platform/foundation/affine_transform.h>

namespace zr {

/// What a piece of a bezier path does.
enum NSBezierPathElement : NSUInteger {
    NSBezierPathElementMoveTo = 0,
    NSBezierPathElementLineTo = 1,
    NSBezierPathElementCurveTo = 2,
    NSBezierPathElementClosePath = 3,
};

/// A shape of lines and curves that can be drawn. It is made piece by piece; coordinates are kept as they are given, but
/// nothing is drawn of a path with one that is not finite.
///
/// Used on one thread at a time; drawn on the main thread.
class ZR_EXPORT NSBezierPath : public NSObject {
    ZR_DECLARE_CLASS(NSBezierPath, NSObject)
  public:
    NSBezierPath();
    ~NSBezierPath() override;

    /// Without pieces.
    [[nodiscard]] static Ref<NSBezierPath> bezierPath();
    [[nodiscard]] static Ref<NSBezierPath> bezierPathWithRect(NSRect rect);
    [[nodiscard]] static Ref<NSBezierPath> bezierPathWithRoundedRect_xRadius_yRadius(NSRect rect, double xRadius,
                                                                                     double yRadius);
    [[nodiscard]] static Ref<NSBezierPath> bezierPathWithOvalInRect(NSRect rect);

    /// Begins a part.
    void moveToPoint(NSPoint point);
    /// Without a part these three do nothing.
    void lineToPoint(NSPoint point);
    void curveToPoint_controlPoint1_controlPoint2(NSPoint end, NSPoint control1, NSPoint control2);
    /// Goes straight back to where the part began.
    void closePath();

    /// Each adds a closed part.
    void appendBezierPathWithRect(NSRect rect);
    /// The radii reach to the middles of the sides at most; without one of them the corners are square.
    void appendBezierPathWithRoundedRect_xRadius_yRadius(NSRect rect, double xRadius, double yRadius);
    void appendBezierPathWithOvalInRect(NSRect rect);
    /// Null does nothing.
    void appendBezierPath(NSBezierPath* path);
    void removeAllPoints();

    [[nodiscard]] bool isEmpty() const { return m_path->isEmpty(); }
    [[nodiscard]] NSInteger elementCount() const;
    /// What the piece does; unless `points` is null it is written one point for a move and a line, three for a curve, its
    /// control points first, none for closing. Raises `NSRangeException` when there is no such piece.
    NSBezierPathElement elementAtIndex_associatedPoints(NSInteger index, NSPoint* points) const;
    /// Where the next piece would begin; the zero point for an empty path.
    [[nodiscard]] NSPoint currentPoint() const { return m_path->currentPoint(); }
    /// The smallest rectangle that the path fits in, without the width of its line; the zero rectangle for an empty path
    /// and for one with a coordinate that is not finite.
    [[nodiscard]] NSRect bounds() const;
    /// Sends every point through the transform; null does nothing.
    void transformUsingAffineTransform(NSAffineTransform* transform);

    /// In points; 1 at first. A line of a width that is not above 0 is not drawn.
    [[nodiscard]] double lineWidth() const { return m_lineWidth; }
    void setLineWidth(double width) { m_lineWidth = width; }

    /// Fills what the path goes around, or draws the line itself, in the current colours of what is being drawn in; does
    /// nothing when nothing is.
    void fill();
    void stroke();

    /// True for one of the same pieces and line width.
    [[nodiscard]] bool isEqual(NSObject* other) const override;
    [[nodiscard]] NSUInteger hash() const override;
    /// Another one of the same pieces and line width.
    [[nodiscard]] id copy() const override;

  private:
    Ref<CGPath> m_path = CGPath::path();
    double m_lineWidth = 1;
};

} // namespace zr
