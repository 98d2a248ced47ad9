#include <zrbasic/platform/appkit/view.h>
#include <zrbasic/platform/runtime/message.h>

#include <algorithm>
#include <cmath>
#include <vector>

// From the coordinates of one view to those of another, and which view lies at a point.
namespace zr {
namespace {

/// The smallest rectangle around two opposite corners, which change places where y turns around.
NSRect rectAround(NSPoint a, NSPoint b) {
    return {{std::min(a.x, b.x), std::min(a.y, b.y)}, {std::abs(b.x - a.x), std::abs(b.y - a.y)}};
}

} // namespace

NSPoint NSView::toSuperview(NSPoint point) const {
    const bool isUpsideDown = m_superview && m_superview->isFlipped();
    const double dy = point.y - m_boundsOrigin.y;
    return {m_frame.origin.x + point.x - m_boundsOrigin.x,
            isFlipped() == isUpsideDown ? m_frame.origin.y + dy : m_frame.origin.y + m_frame.size.height - dy};
}

NSPoint NSView::fromSuperview(NSPoint point) const {
    const bool isUpsideDown = m_superview && m_superview->isFlipped();
    const double dy =
        isFlipped() == isUpsideDown ? point.y - m_frame.origin.y : m_frame.origin.y + m_frame.size.height - point.y;
    return {m_boundsOrigin.x + point.x - m_frame.origin.x, m_boundsOrigin.y + dy};
}

NSPoint NSView::fromOutermost(NSPoint point) const {
    std::vector<const NSView*> way;
    for (const NSView* view = this; view; view = view->m_superview) {
        way.push_back(view);
    }
    for (auto step = way.rbegin(); step != way.rend(); ++step) {
        point = (*step)->fromSuperview(point);
    }
    return point;
}

NSPoint NSView::convertPoint_toView(NSPoint point, NSView* view) const {
    // The way up and down again would not change the point, but for rounding.
    if (view == this) {
        return point;
    }
    for (const NSView* ancestor = this; ancestor; ancestor = ancestor->m_superview) {
        point = ancestor->toSuperview(point);
    }
    return view ? view->fromOutermost(point) : point;
}

NSPoint NSView::convertPoint_fromView(NSPoint point, NSView* view) const {
    return view ? view->convertPoint_toView(point, const_cast<NSView*>(this)) : fromOutermost(point);
}

NSRect NSView::convertRect_toView(NSRect rect, NSView* view) const {
    return rectAround(convertPoint_toView(rect.origin, view), convertPoint_toView({NSMaxX(rect), NSMaxY(rect)}, view));
}

NSRect NSView::convertRect_fromView(NSRect rect, NSView* view) const {
    return rectAround(convertPoint_fromView(rect.origin, view),
                      convertPoint_fromView({NSMaxX(rect), NSMaxY(rect)}, view));
}

Ref<NSView> NSView::hitTest(NSPoint point) {
    const bool isUpsideDown = m_superview && m_superview->isFlipped();
    if (m_isHidden || !NSMouseInRect(point, m_frame, isUpsideDown)) {
        return nullptr;
    }
    const NSPoint inside = fromSuperview(point);
    // A copy, because a view that is asked may run anybody's code.
    const std::vector<Ref<NSView>> views = m_subviews;
    for (auto view = views.rbegin(); view != views.rend(); ++view) {
        if (Ref<NSView> hit = send<Ref<NSView>>(*view, "hitTest:"_sel, inside)) {
            return hit;
        }
    }
    return Ref<NSView>(this);
}

} // namespace zr
