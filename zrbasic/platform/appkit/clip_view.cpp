#include <zrbasic/platform/appkit/clip_view.h>

#include <zrbasic/platform/appkit/control_look_p.h>
#include <zrbasic/platform/appkit/graphics_context.h>
#include <zrbasic/platform/runtime/message.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace zr {
namespace {

double constrained(double wanted, double start, double whole, double seen) {
    return std::clamp(wanted, start, start + std::max(0.0, whole - seen));
}

} // namespace

ZR_DEFINE_CLASS(NSClipView) {
    is.method<&NSClipView::documentView>("documentView");
    is.method<&NSClipView::setDocumentView>("setDocumentView:");
    is.method<&NSClipView::documentRect>("documentRect");
    is.method<&NSClipView::documentVisibleRect>("documentVisibleRect");
    is.method<&NSClipView::scrollToPoint>("scrollToPoint:");
    is.method<&NSClipView::constrainBoundsRect>("constrainBoundsRect:");
    is.method<&NSClipView::drawsBackground>("drawsBackground");
    is.method<&NSClipView::setDrawsBackground>("setDrawsBackground:");
    is.method<&NSClipView::backgroundColor>("backgroundColor");
    is.method<&NSClipView::setBackgroundColor>("setBackgroundColor:");
    is.method<&NSClipView::subviewFrameChanged>("subviewFrameChanged:");
}

NSClipView::NSClipView() = default;
NSClipView::~NSClipView() = default;

void NSClipView::setDocumentView(NSView* view) {
    if (view == m_documentView.get()) {
        return;
    }
    const Ref<NSClipView> self(this);
    const Ref<NSView> previous = std::exchange(m_documentView, Ref<NSView>(view));
    if (previous && previous->superview() == this) {
        previous->removeFromSuperview();
    }
    addSubview(view);
    // The beginning of a document is its top.
    const NSRect document = documentRect();
    const double below = isFlipped() ? 0 : std::max(0.0, document.size.height - bounds().size.height);
    send<void>(this, "scrollToPoint:"_sel, NSPoint{document.origin.x, document.origin.y + below});
    tellScrollView();
}

NSRect NSClipView::documentRect() const {
    return m_documentView ? m_documentView->frame() : NSZeroRect;
}

NSRect NSClipView::documentVisibleRect() const {
    if (!m_documentView || m_documentView->superview() != this) {
        return NSZeroRect;
    }
    return m_documentView->convertRect_fromView(NSIntersectionRect(bounds(), documentRect()),
                                                const_cast<NSClipView*>(this));
}

void NSClipView::scrollToPoint(NSPoint origin) {
    if (!std::isnan(origin.x) && !std::isnan(origin.y)) {
        send<void>(this, "setBoundsOrigin:"_sel, origin);
    }
}

NSRect NSClipView::constrainBoundsRect(NSRect wanted) {
    const NSRect document = documentRect();
    return {{constrained(wanted.origin.x, document.origin.x, document.size.width, wanted.size.width),
             constrained(wanted.origin.y, document.origin.y, document.size.height, wanted.size.height)},
            wanted.size};
}

void NSClipView::constrain() {
    const NSRect right = send<NSRect>(this, "constrainBoundsRect:"_sel, bounds());
    send<void>(this, "scrollToPoint:"_sel, right.origin);
}

void NSClipView::tellScrollView() {
    const Ref<NSView> outside = superview();
    if (outside && outside->respondsToSelector("reflectScrolledClipView:"_sel)) {
        send<void>(outside, "reflectScrolledClipView:"_sel, this);
    }
}

void NSClipView::setDrawsBackground(bool draws) {
    m_drawsBackground = draws;
    send<void>(this, "setNeedsDisplay:"_sel, true);
}

Ref<NSColor> NSClipView::backgroundColor() const {
    return m_backgroundColor ? m_backgroundColor : look::paper();
}

void NSClipView::setBackgroundColor(NSColor* color) {
    m_backgroundColor = Ref<NSColor>(color);
    send<void>(this, "setNeedsDisplay:"_sel, true);
}

bool NSClipView::isFlipped() const {
    return m_documentView && m_documentView->isFlipped();
}

void NSClipView::setFrameSize(NSSize size) {
    const Ref<NSClipView> self(this);
    const NSSize before = frame().size;
    // What was at the top stays there.
    const double top = NSMaxY(bounds());
    NSView::setFrameSize(size);
    if (before == size) {
        return;
    }
    if (m_documentView && m_documentView->respondsToSelector("resizeWithOldSuperviewSize:"_sel)) {
        send<void>(m_documentView, "resizeWithOldSuperviewSize:"_sel, before);
    }
    if (!isFlipped()) {
        NSView::setBoundsOrigin({bounds().origin.x, top - bounds().size.height});
    }
    constrain();
    tellScrollView();
}

void NSClipView::setBoundsOrigin(NSPoint origin) {
    if (origin != bounds().origin) {
        const Ref<NSClipView> self(this);
        NSView::setBoundsOrigin(origin);
        tellScrollView();
    }
}

void NSClipView::drawRect(NSRect dirtyRect) {
    if (m_drawsBackground) {
        setFill(backgroundColor());
        NSRectFillUsingOperation(dirtyRect, NSCompositingOperationSourceOver);
    }
}

void NSClipView::subviewFrameChanged(NSView* view) {
    if (view && view == m_documentView.get()) {
        const Ref<NSClipView> self(this);
        constrain();
        tellScrollView();
    }
}

} // namespace zr
