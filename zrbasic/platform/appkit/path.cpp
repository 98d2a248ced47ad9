#include <zrbasic/platform/appkit/path.h>

namespace zr {

ZR_DEFINE_CLASS(CGPath) {
    is.classMethod<&CGPath::path>("path");
    is.method<&CGPath::moveToPoint>("moveToPoint:");
    is.method<&CGPath::addLineToPoint>("addLineToPoint:");
    is.method<&CGPath::addCurveToPoint_controlPoint1_controlPoint2>("addCurveToPoint:controlPoint1:controlPoint2:");
    is.method<&CGPath::closeSubpath>("closeSubpath");
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
