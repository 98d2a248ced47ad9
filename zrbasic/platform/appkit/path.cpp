#include <zrbasic/platform/appkit/path.h>

#include <algorithm>
#include <cmath>

namespace zr {

ZR_DEFINE_CLASS(CGPath) {
    is.classMethod<&CGPath::path>("path");
    is.method<&CGPath::moveToPoint>("moveToPoint:");
    is.method<&CGPath::addLineToPoint>("addLineToPoint:");
    is.method<&CGPath::addCurveToPoint_controlPoint1_controlPoint2>("addCurveToPoint:controlPoint1:controlPoint2:");
    is.method<&CGPath::closeSubpath>("closeSubpath");
    is.method<&CGPath::addRect>("addRect:");
    is.method<&CGPath::addRoundedRect_cornerWidth_cornerHeight>("addRoundedRect:cornerWidth:cornerHeight:");
    is.method<&CGPath::addEllipseInRect>("addEllipseInRect:");
    is.method<&CGPath::isEmpty>("isEmpty");
    is.method<&CGPath::currentPoint>("currentPoint");
}

CGPath::CGPath() = default;
CGPath::~CGPath() = default;

Ref<CGPath> CGPath::path() {
    return make<CGPath>();
}

void CGPath::moveToPoint(NSPoint point) {
    m_elements.push_back({kCGPathElementMoveToPoint, {point}});
    m_current = m_start = point;
}

void CGPath::addLineToPoint(NSPoint point) {
    if (isEmpty()) {
        return;
    }
    m_elements.push_back({kCGPathElementAddLineToPoint, {point}});
    m_current = point;
}

void CGPath::addCurveToPoint_controlPoint1_controlPoint2(NSPoint end, NSPoint control1, NSPoint control2) {
    if (isEmpty()) {
        return;
    }
    m_elements.push_back({kCGPathElementAddCurveToPoint, {control1, control2, end}});
    m_current = end;
}

void CGPath::closeSubpath() {
    if (isEmpty()) {
        return;
    }
    m_elements.push_back({kCGPathElementCloseSubpath, {}});
    m_current = m_start;
}

void CGPath::addRect(NSRect rect) {
    moveToPoint(rect.origin);
    addLineToPoint({NSMaxX(rect), NSMinY(rect)});
    addLineToPoint({NSMaxX(rect), NSMaxY(rect)});
    addLineToPoint({NSMinX(rect), NSMaxY(rect)});
    closeSubpath();
}

void CGPath::addRoundedRect_cornerWidth_cornerHeight(NSRect rect, double xRadius, double yRadius) {
    if (!(xRadius > 0 && yRadius > 0)) {
        addRect(rect);
        return;
    }
    const double x = std::copysign(std::min(xRadius, std::fabs(rect.size.width) / 2), rect.size.width);
    const double y = std::copysign(std::min(yRadius, std::fabs(rect.size.height) / 2), rect.size.height);
    const double left = NSMinX(rect);
    const double right = NSMaxX(rect);
    const double bottom = NSMinY(rect);
    const double top = NSMaxY(rect);
    // How far from the corner the control points of a quarter of a circle lie, of the radius.
    constexpr double near = 1 - 0.5522847498307936;
    moveToPoint({left + x, bottom});
    addLineToPoint({right - x, bottom});
    addCurveToPoint_controlPoint1_controlPoint2({right, bottom + y}, {right - x * near, bottom},
                                                {right, bottom + y * near});
    addLineToPoint({right, top - y});
    addCurveToPoint_controlPoint1_controlPoint2({right - x, top}, {right, top - y * near}, {right - x * near, top});
    addLineToPoint({left + x, top});
    addCurveToPoint_controlPoint1_controlPoint2({left, top - y}, {left + x * near, top}, {left, top - y * near});
    addLineToPoint({left, bottom + y});
    addCurveToPoint_controlPoint1_controlPoint2({left + x, bottom}, {left, bottom + y * near},
                                                {left + x * near, bottom});
    closeSubpath();
}

void CGPath::addEllipseInRect(NSRect rect) {
    const double x = rect.size.width / 2;
    const double y = rect.size.height / 2;
    const NSPoint middle{NSMinX(rect) + x, NSMinY(rect) + y};
    constexpr double far = 0.5522847498307936;
    moveToPoint({middle.x - x, middle.y});
    addCurveToPoint_controlPoint1_controlPoint2({middle.x, middle.y - y}, {middle.x - x, middle.y - y * far},
                                                {middle.x - x * far, middle.y - y});
    addCurveToPoint_controlPoint1_controlPoint2({middle.x + x, middle.y}, {middle.x + x * far, middle.y - y},
                                                {middle.x + x, middle.y - y * far});
    addCurveToPoint_controlPoint1_controlPoint2({middle.x, middle.y + y}, {middle.x + x, middle.y + y * far},
                                                {middle.x + x * far, middle.y + y});
    addCurveToPoint_controlPoint1_controlPoint2({middle.x - x, middle.y}, {middle.x - x * far, middle.y + y},
                                                {middle.x - x, middle.y + y * far});
    closeSubpath();
}

std::vector<NSPoint> CGPath::keyPoints() const {
    std::vector<NSPoint> points;
    points.reserve(m_elements.size());
    NSPoint start;
    for (const CGPathElement& element : m_elements) {
        switch (element.type) {
            case kCGPathElementMoveToPoint:
                start = element.points[0];
                [[fallthrough]];
            case kCGPathElementAddLineToPoint:
                points.push_back(element.points[0]);
                break;
            case kCGPathElementAddCurveToPoint:
                points.push_back(element.points[2]);
                break;
            case kCGPathElementCloseSubpath:
                points.push_back(start);
                break;
        }
    }
    return points;
}

bool CGPath::isEqual(NSObject* other) const {
    const auto* const path = cast<CGPath>(other);
    return path && path->m_elements == m_elements;
}

NSUInteger CGPath::hash() const {
    return m_elements.size();
}

id CGPath::copy() const {
    const Ref<CGPath> path = alloc<CGPath>();
    path->m_elements = m_elements;
    path->m_current = m_current;
    path->m_start = m_start;
    return path;
}

} // namespace zr
