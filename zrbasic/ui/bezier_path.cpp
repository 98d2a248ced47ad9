#include <zrbasic/ui/bezier_path.h>

#include <zrbasic/platform/appkit/bezier_path.h>

#include <array>

namespace zr {

ZR_GROUP(NSBezierPath, ZRXHelper) {
    is.method<&cgPath>("CGPath");
}

Ref<CGPath> cgPath(NSBezierPath* self) {
    if (!self || self->isEmpty()) {
        return nullptr;
    }
    const Ref<CGPath> path = CGPath::path();
    bool isClosed = true;
    for (NSInteger i = 0; i < self->elementCount(); ++i) {
        std::array<NSPoint, 3> points;
        switch (self->elementAtIndex_associatedPoints(i, points.data())) {
            case NSBezierPathElementMoveTo:
                // Says nothing about what was closed: who closes a part and moves on still has a closed path.
                path->moveToPoint(points[0]);
                break;
            case NSBezierPathElementLineTo:
                path->addLineToPoint(points[0]);
                isClosed = false;
                break;
            case NSBezierPathElementCurveTo:
                path->addCurveToPoint_controlPoint1_controlPoint2(points[2], points[0], points[1]);
                isClosed = false;
                break;
            case NSBezierPathElementClosePath:
                path->closeSubpath();
                isClosed = true;
                break;
        }
    }
    return isClosed ? nullptr : path;
}

} // namespace zr
