#include <zrbasic/platform/appkit/bezier_path.h>

#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/appkit/graphics_context.h>
#include <zrbasic/platform/runtime/exception.h>

#include <algorithm>
#include <cmath>

namespace zr {
namespace {

NSBezierPathElement kindOf(CGPathElementType type) {
    switch (type) {
        case kCGPathElementMoveToPoint:
            return NSBezierPathElementMoveTo;
        case kCGPathElementAddLineToPoint:
            return NSBezierPathElementLineTo;
        case kCGPathElementAddCurveToPoint:
            return NSBezierPathElementCurveTo;
        case kCGPathElementCloseSubpath:
            break;
    }
    return NSBezierPathElementClosePath;
}

std::size_t pointsOf(CGPathElementType type) {
    switch (type) {
        case kCGPathElementMoveToPoint:
        case kCGPathElementAddLineToPoint:
            return 1;
        case kCGPathElementAddCurveToPoint:
            return 3;
        case kCGPathElementCloseSubpath:
            break;
    }
    return 0;
}

void add(CGPath& path, const CGPathElement& element, const NSAffineTransformStruct& transform) {
    const auto point = [&](std::size_t i) { return transformedPoint(transform, element.points[i]); };
    switch (element.type) {
        case kCGPathElementMoveToPoint:
            path.moveToPoint(point(0));
            break;
        case kCGPathElementAddLineToPoint:
            path.addLineToPoint(point(0));
            break;
        case kCGPathElementAddCurveToPoint:
            path.addCurveToPoint_controlPoint1_controlPoint2(point(2), point(0), point(1));
            break;
        case kCGPathElementCloseSubpath:
            path.closeSubpath();
            break;
    }
}

/// The extent along one axis.
class Range {
  public:
    void include(double place) {
        m_isFinite = m_isFinite && std::isfinite(place);
        m_least = std::min(m_least, place);
        m_most = std::max(m_most, place);
    }

    /// The places in between where a curve turns back.
    void includeCurve(double start, double control1, double control2, double end) {
        include(end);
        if (!std::isfinite(start + control1 + control2)) {
            m_isFinite = false;
            return;
        }
        // Its slope is a t² + 2 b t + c.
        const double a = end - start + 3 * (control1 - control2);
        const double b = start - 2 * control1 + control2;
        const double c = control1 - start;
        const double root = std::sqrt(std::max(0.0, b * b - a * c));
        // Divided the one way and the other, which is exact for nearly straight ones too.
        const double q = -(b + std::copysign(root, b));
        for (const double t : {q / a, c / q}) {
            if (t > 0 && t < 1) {
                const double s = 1 - t;
                include(s * s * s * start + 3 * s * s * t * control1 + 3 * s * t * t * control2 + t * t * t * end);
            }
        }
    }

    [[nodiscard]] bool isFinite() const { return m_isFinite && std::isfinite(length()); }
    [[nodiscard]] double least() const { return m_least; }
    [[nodiscard]] double length() const { return m_most - m_least; }

  private:
    double m_least = INFINITY;
    double m_most = -INFINITY;
    bool m_isFinite = true;
};

} // namespace

ZR_DEFINE_CLASS(NSBezierPath) {
    is.classMethod<&NSBezierPath::bezierPath>("bezierPath");
    is.classMethod<&NSBezierPath::bezierPathWithRect>("bezierPathWithRect:");
    is.classMethod<&NSBezierPath::bezierPathWithRoundedRect_xRadius_yRadius>(
        "bezierPathWithRoundedRect:xRadius:yRadius:");
    is.classMethod<&NSBezierPath::bezierPathWithOvalInRect>("bezierPathWithOvalInRect:");
    is.method<&NSBezierPath::moveToPoint>("moveToPoint:");
    is.method<&NSBezierPath::lineToPoint>("lineToPoint:");
    is.method<&NSBezierPath::curveToPoint_controlPoint1_controlPoint2>("curveToPoint:controlPoint1:controlPoint2:");
    is.method<&NSBezierPath::closePath>("closePath");
    is.method<&NSBezierPath::appendBezierPathWithRect>("appendBezierPathWithRect:");
    is.method<&NSBezierPath::appendBezierPathWithRoundedRect_xRadius_yRadius>(
        "appendBezierPathWithRoundedRect:xRadius:yRadius:");
    is.method<&NSBezierPath::appendBezierPathWithOvalInRect>("appendBezierPathWithOvalInRect:");
    is.method<&NSBezierPath::appendBezierPath>("appendBezierPath:");
    is.method<&NSBezierPath::removeAllPoints>("removeAllPoints");
    is.method<&NSBezierPath::isEmpty>("isEmpty");
    is.method<&NSBezierPath::elementCount>("elementCount");
    is.method<&NSBezierPath::elementAtIndex_associatedPoints>("elementAtIndex:associatedPoints:");
    is.method<&NSBezierPath::currentPoint>("currentPoint");
    is.method<&NSBezierPath::bounds>("bounds");
    is.method<&NSBezierPath::transformUsingAffineTransform>("transformUsingAffineTransform:");
    is.method<&NSBezierPath::lineWidth>("lineWidth");
    is.method<&NSBezierPath::setLineWidth>("setLineWidth:");
    is.method<&NSBezierPath::fill>("fill");
    is.method<&NSBezierPath::stroke>("stroke");
}

NSBezierPath::NSBezierPath() = default;
NSBezierPath::~NSBezierPath() = default;

Ref<NSBezierPath> NSBezierPath::bezierPath() {
    return make<NSBezierPath>();
}

Ref<NSBezierPath> NSBezierPath::bezierPathWithRect(NSRect rect) {
    Ref<NSBezierPath> path = bezierPath();
    path->appendBezierPathWithRect(rect);
    return path;
}

Ref<NSBezierPath> NSBezierPath::bezierPathWithRoundedRect_xRadius_yRadius(NSRect rect, double xRadius, double yRadius) {
    Ref<NSBezierPath> path = bezierPath();
    path->appendBezierPathWithRoundedRect_xRadius_yRadius(rect, xRadius, yRadius);
    return path;
}

Ref<NSBezierPath> NSBezierPath::bezierPathWithOvalInRect(NSRect rect) {
    Ref<NSBezierPath> path = bezierPath();
    path->appendBezierPathWithOvalInRect(rect);
    return path;
}

void NSBezierPath::moveToPoint(NSPoint point) {
    m_path->moveToPoint(point);
}

void NSBezierPath::lineToPoint(NSPoint point) {
    m_path->addLineToPoint(point);
}

void NSBezierPath::curveToPoint_controlPoint1_controlPoint2(NSPoint end, NSPoint control1, NSPoint control2) {
    m_path->addCurveToPoint_controlPoint1_controlPoint2(end, control1, control2);
}

void NSBezierPath::closePath() {
    m_path->closeSubpath();
}

void NSBezierPath::appendBezierPathWithRect(NSRect rect) {
    m_path->addRect(rect);
}

void NSBezierPath::appendBezierPathWithRoundedRect_xRadius_yRadius(NSRect rect, double xRadius, double yRadius) {
    m_path->addRoundedRect_cornerWidth_cornerHeight(rect, xRadius, yRadius);
}

void NSBezierPath::appendBezierPathWithOvalInRect(NSRect rect) {
    m_path->addEllipseInRect(rect);
}

void NSBezierPath::appendBezierPath(NSBezierPath* path) {
    if (!path) {
        return;
    }
    // A copy, as it may be this one.
    const std::vector<CGPathElement> elements = path->m_path->elements();
    for (const CGPathElement& element : elements) {
        add(*m_path, element, {});
    }
}

void NSBezierPath::removeAllPoints() {
    m_path = CGPath::path();
}

NSInteger NSBezierPath::elementCount() const {
    return static_cast<NSInteger>(m_path->elements().size());
}

NSBezierPathElement NSBezierPath::elementAtIndex_associatedPoints(NSInteger index, NSPoint* points) const {
    if (index < 0 || index >= elementCount()) {
        NSException::raise(NSRangeException, "the path has no element of that index");
    }
    const CGPathElement& element = m_path->elements()[static_cast<std::size_t>(index)];
    if (points) {
        std::copy_n(element.points.begin(), pointsOf(element.type), points);
    }
    return kindOf(element.type);
}

NSRect NSBezierPath::bounds() const {
    if (isEmpty()) {
        return NSZeroRect;
    }
    Range x;
    Range y;
    NSPoint at;
    NSPoint start;
    for (const CGPathElement& element : m_path->elements()) {
        const auto& [first, second, third] = element.points;
        switch (element.type) {
            case kCGPathElementMoveToPoint:
                start = first;
                [[fallthrough]];
            case kCGPathElementAddLineToPoint:
                x.include(first.x);
                y.include(first.y);
                at = first;
                break;
            case kCGPathElementAddCurveToPoint:
                x.includeCurve(at.x, first.x, second.x, third.x);
                y.includeCurve(at.y, first.y, second.y, third.y);
                at = third;
                break;
            case kCGPathElementCloseSubpath:
                at = start;
                break;
        }
    }
    return x.isFinite() && y.isFinite() ? NSRect{{x.least(), y.least()}, {x.length(), y.length()}} : NSZeroRect;
}

void NSBezierPath::transformUsingAffineTransform(NSAffineTransform* transform) {
    if (!transform) {
        return;
    }
    const Ref<CGPath> path = CGPath::path();
    for (const CGPathElement& element : m_path->elements()) {
        add(*path, element, transform->transformStruct());
    }
    m_path = path;
}

void NSBezierPath::fill() {
    if (const Ref<NSGraphicsContext> context = NSGraphicsContext::currentContext()) {
        context->canvas().fillPath(*m_path, context->fillColor());
    }
}

void NSBezierPath::stroke() {
    if (const Ref<NSGraphicsContext> context = NSGraphicsContext::currentContext()) {
        context->canvas().strokePath(*m_path, m_lineWidth, context->strokeColor());
    }
}

bool NSBezierPath::isEqual(NSObject* other) const {
    const auto* const path = cast<NSBezierPath>(other);
    return path && path->m_lineWidth == m_lineWidth && m_path->isEqual(path->m_path);
}

NSUInteger NSBezierPath::hash() const {
    return m_path->hash();
}

id NSBezierPath::copy() const {
    const Ref<NSBezierPath> made = make<NSBezierPath>();
    made->m_path = cast<CGPath>(m_path->copy());
    made->m_lineWidth = m_lineWidth;
    return made;
}

} // namespace zr
