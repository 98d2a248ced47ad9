#include <zrbasic/platform/appkit/scroll_view.h>

#include <zrbasic/platform/appkit/control_look_p.h>
#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/runtime/message.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace zr {
namespace {

constexpr double linesPerNotch = 3;

double extent(double value) {
    return value > 0 ? value : 0;
}

bool canFloat(NSScroller* scroller) {
    return !scroller || send<bool>(scroller->isa(), "isCompatibleWithOverlayScrollers"_sel);
}

/// The nearest place from which `wanted` is seen, of an extent that is `seen` long.
double placeToSee(double place, double seen, double start, double length) {
    if (length >= seen || start < place) {
        return start;
    }
    return std::max(place, start + length - seen);
}

/// What is no number does not differ from itself here.
bool differs(double a, double b) {
    return a != b && !(std::isnan(a) && std::isnan(b));
}

/// Whatever is raised meanwhile.
struct Ending {
    bool& flag;
    ~Ending() { flag = false; }
};

} // namespace

ZR_DEFINE_CLASS(NSScrollView) {
    is.method<&NSScrollView::contentView>("contentView");
    is.method<&NSScrollView::setContentView>("setContentView:");
    is.method<&NSScrollView::documentView>("documentView");
    is.method<&NSScrollView::setDocumentView>("setDocumentView:");
    is.method<&NSScrollView::documentVisibleRect>("documentVisibleRect");
    is.method<&NSScrollView::contentSize>("contentSize");
    is.method<&NSScrollView::hasVerticalScroller>("hasVerticalScroller");
    is.method<&NSScrollView::setHasVerticalScroller>("setHasVerticalScroller:");
    is.method<&NSScrollView::hasHorizontalScroller>("hasHorizontalScroller");
    is.method<&NSScrollView::setHasHorizontalScroller>("setHasHorizontalScroller:");
    is.method<&NSScrollView::verticalScroller>("verticalScroller");
    is.method<&NSScrollView::setVerticalScroller>("setVerticalScroller:");
    is.method<&NSScrollView::horizontalScroller>("horizontalScroller");
    is.method<&NSScrollView::setHorizontalScroller>("setHorizontalScroller:");
    is.method<&NSScrollView::scrollerStyle>("scrollerStyle");
    is.method<&NSScrollView::setScrollerStyle>("setScrollerStyle:");
    is.method<&NSScrollView::autohidesScrollers>("autohidesScrollers");
    is.method<&NSScrollView::setAutohidesScrollers>("setAutohidesScrollers:");
    is.method<&NSScrollView::verticalLineScroll>("verticalLineScroll");
    is.method<&NSScrollView::setVerticalLineScroll>("setVerticalLineScroll:");
    is.method<&NSScrollView::horizontalLineScroll>("horizontalLineScroll");
    is.method<&NSScrollView::setHorizontalLineScroll>("setHorizontalLineScroll:");
    is.method<&NSScrollView::verticalPageScroll>("verticalPageScroll");
    is.method<&NSScrollView::setVerticalPageScroll>("setVerticalPageScroll:");
    is.method<&NSScrollView::horizontalPageScroll>("horizontalPageScroll");
    is.method<&NSScrollView::setHorizontalPageScroll>("setHorizontalPageScroll:");
    is.method<&NSScrollView::drawsBackground>("drawsBackground");
    is.method<&NSScrollView::setDrawsBackground>("setDrawsBackground:");
    is.method<&NSScrollView::backgroundColor>("backgroundColor");
    is.method<&NSScrollView::setBackgroundColor>("setBackgroundColor:");
    is.method<&NSScrollView::tile>("tile");
    is.method<&NSScrollView::reflectScrolledClipView>("reflectScrolledClipView:");
    is.method<&NSScrollView::scrollerMoved>("scrollerMoved:");
}

ZR_GROUP(NSView, NSScrollView) {
    is.method<&enclosingScrollView>("enclosingScrollView");
    is.method<&scrollRectToVisible>("scrollRectToVisible:");
}

NSScrollView::NSScrollView() = default;

NSScrollView::~NSScrollView() {
    for (const Ref<NSScroller>& scroller : {m_verticalScroller, m_horizontalScroller}) {
        if (scroller) {
            scroller->setTarget(nullptr);
        }
    }
}

id NSScrollView::initWithFrame(NSRect frame) {
    NSView::initWithFrame(frame);
    setContentView(make<NSClipView>());
    return id(this);
}

// Content

void NSScrollView::setContentView(NSClipView* view) {
    if (!view || view == m_contentView.get()) {
        return;
    }
    const Ref<NSScrollView> self(this);
    const Ref<NSClipView> previous = std::exchange(m_contentView, Ref<NSClipView>(view));
    addSubview_positioned_relativeTo(view, NSWindowBelow, nullptr);
    if (previous) {
        const Ref<NSView> document = previous->documentView();
        previous->setDocumentView(nullptr);
        previous->removeFromSuperview();
        if (document && !view->documentView()) {
            view->setDocumentView(document);
        }
    }
    send<void>(this, "tile"_sel);
}

Ref<NSView> NSScrollView::documentView() const {
    return m_contentView ? m_contentView->documentView() : nullptr;
}

void NSScrollView::setDocumentView(NSView* view) {
    if (m_contentView) {
        const Ref<NSScrollView> self(this);
        send<void>(m_contentView, "setDocumentView:"_sel, view);
        send<void>(this, "tile"_sel);
    }
}

NSRect NSScrollView::documentVisibleRect() const {
    return m_contentView ? m_contentView->documentVisibleRect() : NSZeroRect;
}

NSSize NSScrollView::contentSize() const {
    return m_contentView ? m_contentView->frame().size : NSZeroSize;
}

bool NSScrollView::drawsBackground() const {
    return m_contentView && m_contentView->drawsBackground();
}

void NSScrollView::setDrawsBackground(bool draws) {
    if (m_contentView) {
        m_contentView->setDrawsBackground(draws);
    }
}

Ref<NSColor> NSScrollView::backgroundColor() const {
    return m_contentView ? m_contentView->backgroundColor() : look::paper();
}

void NSScrollView::setBackgroundColor(NSColor* color) {
    if (m_contentView) {
        m_contentView->setBackgroundColor(color);
    }
}

// Scrollers

void NSScrollView::setHas(bool& flag, Ref<NSScroller>& scroller, bool has, NSRect shape) {
    flag = has;
    if (has && !scroller) {
        adopt(scroller, make<NSScroller>(&NSScroller::initWithFrame, shape));
    }
    send<void>(this, "tile"_sel);
}

void NSScrollView::setHasVerticalScroller(bool has) {
    setHas(m_hasVerticalScroller, m_verticalScroller, has, {{0, 0}, {15, 100}});
}

void NSScrollView::setHasHorizontalScroller(bool has) {
    setHas(m_hasHorizontalScroller, m_horizontalScroller, has, {{0, 0}, {100, 15}});
}

void NSScrollView::adopt(Ref<NSScroller>& place, NSScroller* scroller) {
    if (scroller == place.get()) {
        return;
    }
    const Ref<NSScroller> previous = std::exchange(place, Ref<NSScroller>(scroller));
    if (previous) {
        previous->setTarget(nullptr);
        if (previous->superview() == this) {
            previous->removeFromSuperview();
        }
    }
    if (scroller) {
        scroller->setTarget(this);
        scroller->setAction("scrollerMoved:"_sel);
    }
}

void NSScrollView::setVerticalScroller(NSScroller* scroller) {
    const Ref<NSScrollView> self(this);
    adopt(m_verticalScroller, scroller);
    send<void>(this, "tile"_sel);
}

void NSScrollView::setHorizontalScroller(NSScroller* scroller) {
    const Ref<NSScrollView> self(this);
    adopt(m_horizontalScroller, scroller);
    send<void>(this, "tile"_sel);
}

NSScrollerStyle NSScrollView::scrollerStyle() const {
    const bool all = canFloat(m_verticalScroller) && canFloat(m_horizontalScroller);
    return all ? m_scrollerStyle : NSScrollerStyleLegacy;
}

void NSScrollView::setScrollerStyle(NSScrollerStyle style) {
    m_scrollerStyle = style;
    send<void>(this, "tile"_sel);
}

void NSScrollView::setAutohidesScrollers(bool hides) {
    m_autohidesScrollers = hides;
    send<void>(this, "tile"_sel);
}

void NSScrollView::setVerticalLineScroll(double points) {
    m_lineScroll.height = extent(points);
}

void NSScrollView::setHorizontalLineScroll(double points) {
    m_lineScroll.width = extent(points);
}

void NSScrollView::setVerticalPageScroll(double points) {
    m_pageScroll.height = extent(points);
}

void NSScrollView::setHorizontalPageScroll(double points) {
    m_pageScroll.width = extent(points);
}

// Layout

double NSScrollView::breadthOf(NSScroller* scroller) const {
    return scroller ? send<double>(scroller->isa(), "scrollerWidthForControlSize:scrollerStyle:"_sel,
                                   scroller->controlSize(), scrollerStyle())
                    : 0;
}

void NSScrollView::showScroller(NSScroller* scroller, bool has, bool isShown, NSRect frame) {
    if (!scroller) {
        return;
    }
    if (!has) {
        if (scroller->superview() == this) {
            scroller->removeFromSuperview();
        }
        return;
    }
    if (scroller->superview() != this) {
        addSubview(scroller);
    }
    scroller->setHidden(!isShown);
    send<void>(scroller, "setFrame:"_sel, frame);
    if (scroller->scrollerStyle() != scrollerStyle()) {
        send<void>(scroller, "setScrollerStyle:"_sel, scrollerStyle());
    }
}

void NSScrollView::tile() {
    // What is laid out here may change its document for that, which comes back here.
    if (!m_contentView || std::exchange(m_isTiling, true)) {
        return;
    }
    const Ref<NSScrollView> self(this);
    {
        const Ending ending{m_isTiling};
        layOut();
        m_tiledFor = m_contentView->documentRect().size;
    }
    send<void>(this, "reflectScrolledClipView:"_sel, m_contentView);
}

void NSScrollView::layOut() {
    const NSSize size = bounds().size;
    const bool floats = scrollerStyle() == NSScrollerStyleOverlay;
    const bool hides = floats || m_autohidesScrollers;
    const double breadth = std::min(breadthOf(m_verticalScroller), size.width);
    const double height = std::min(breadthOf(m_horizontalScroller), size.height);
    bool showsVertical = m_hasVerticalScroller && m_verticalScroller && !hides;
    bool showsHorizontal = m_hasHorizontalScroller && m_horizontalScroller && !hides;
    // A scroller takes room, and so another may be needed; none is taken away again.
    for (int pass = 0; pass < 3; ++pass) {
        const NSSize room{size.width - (showsVertical && !floats ? breadth : 0),
                          size.height - (showsHorizontal && !floats ? height : 0)};
        send<void>(m_contentView, "setFrame:"_sel, NSRect{NSZeroPoint, room});
        const NSSize document = m_contentView->documentRect().size;
        showsVertical = showsVertical || (m_hasVerticalScroller && m_verticalScroller && document.height > room.height);
        showsHorizontal =
            showsHorizontal || (m_hasHorizontalScroller && m_horizontalScroller && document.width > room.width);
    }
    const double besides = showsVertical ? breadth : 0;
    const double beneath = showsHorizontal ? height : 0;
    showScroller(m_verticalScroller, m_hasVerticalScroller, showsVertical,
                 NSMakeRect(size.width - breadth, 0, breadth, size.height - beneath));
    showScroller(m_horizontalScroller, m_hasHorizontalScroller, showsHorizontal,
                 NSMakeRect(0, size.height - height, size.width - besides, height));
}

void NSScrollView::setFrameSize(NSSize size) {
    const bool isOther = frame().size != size;
    NSView::setFrameSize(size);
    if (isOther) {
        send<void>(this, "tile"_sel);
    }
}

bool NSScrollView::isFlipped() const {
    return true;
}

void NSScrollView::reflectScrolledClipView(NSClipView* view) {
    if (!view || view != m_contentView.get() || m_isTiling) {
        return;
    }
    const NSRect seen = view->bounds();
    const NSRect document = view->documentRect();
    if (differs(document.size.width, m_tiledFor.width) || differs(document.size.height, m_tiledFor.height)) {
        // Whether there is anything to scroll decides which scrollers there are. It comes back here.
        send<void>(this, "tile"_sel);
        return;
    }
    const auto show = [](NSScroller* scroller, double before, double length, double whole) {
        if (!scroller) {
            return;
        }
        const double range = whole - length;
        const double value = range > 0 ? before / range : 0;
        const double proportion = whole > 0 ? length / whole : 1;
        if (scroller->knobProportion() != std::min(proportion, 1.0)) {
            scroller->setKnobProportion(proportion);
        }
        if (scroller->doubleValue() != std::clamp(value, 0.0, 1.0)) {
            scroller->setDoubleValue(value);
        }
        if (scroller->isEnabled() != (range > 0)) {
            scroller->setEnabled(range > 0);
        }
    };
    const double above = view->isFlipped() ? seen.origin.y - document.origin.y : NSMaxY(document) - NSMaxY(seen);
    show(m_verticalScroller, above, seen.size.height, document.size.height);
    show(m_horizontalScroller, seen.origin.x - document.origin.x, seen.size.width, document.size.width);
}

// Scrolling

void NSScrollView::scrollTo(NSPoint origin) {
    if (m_contentView) {
        const NSRect wanted{origin, m_contentView->bounds().size};
        const NSRect right = send<NSRect>(m_contentView, "constrainBoundsRect:"_sel, wanted);
        send<void>(m_contentView, "scrollToPoint:"_sel, right.origin);
    }
}

void NSScrollView::scrollWheel(NSEvent* event) {
    if (!event || !m_contentView) {
        return;
    }
    const Ref<NSScrollView> self(this);
    const NSPoint before = m_contentView->bounds().origin;
    double dx = event->deltaX();
    double dy = event->deltaY();
    if ((event->modifierFlags() & NSEventModifierFlagShift) != 0 && dx == 0) {
        std::swap(dx, dy);
    }
    const double downwards = m_contentView->isFlipped() ? 1 : -1;
    scrollTo({before.x - dx * linesPerNotch * m_lineScroll.width,
              before.y - dy * linesPerNotch * m_lineScroll.height * downwards});
    if (m_contentView->bounds().origin == before) {
        NSView::scrollWheel(event);
    }
}

void NSScrollView::scrollerMoved(NSObject* sender) {
    auto* const scroller = cast<NSScroller>(sender);
    if (!scroller || !m_contentView || (scroller != m_verticalScroller && scroller != m_horizontalScroller)) {
        return;
    }
    const Ref<NSScrollView> self(this);
    const bool isVertical = scroller == m_verticalScroller.get();
    const NSRect seen = m_contentView->bounds();
    const NSRect document = m_contentView->documentRect();
    const double length = isVertical ? seen.size.height : seen.size.width;
    const double range = extent((isVertical ? document.size.height : document.size.width) - length);
    const double page = std::max(length - (isVertical ? m_pageScroll.height : m_pageScroll.width), 1.0);
    const bool fromTop = m_contentView->isFlipped();
    double before = isVertical ? (fromTop ? seen.origin.y - document.origin.y : NSMaxY(document) - NSMaxY(seen))
                               : seen.origin.x - document.origin.x;
    switch (scroller->hitPart()) {
        case NSScrollerDecrementPage:
            before -= page;
            break;
        case NSScrollerIncrementPage:
            before += page;
            break;
        default:
            before = range * scroller->doubleValue();
            break;
    }
    before = std::clamp(before, 0.0, range);
    NSPoint origin = seen.origin;
    if (!isVertical) {
        origin.x = document.origin.x + before;
    } else {
        origin.y = fromTop ? document.origin.y + before : NSMaxY(document) - before - length;
    }
    scrollTo(origin);
}

// NSView(NSScrollView)

Ref<NSScrollView> enclosingScrollView(NSView* self) {
    for (Ref<NSView> view = self ? self->superview() : nullptr; view; view = view->superview()) {
        if (auto* const scrolling = cast<NSScrollView>(view)) {
            return Ref<NSScrollView>(scrolling);
        }
    }
    return nullptr;
}

bool scrollRectToVisible(NSView* self, NSRect rect) {
    for (Ref<NSView> view = self ? self->superview() : nullptr; view; view = view->superview()) {
        auto* const clip = cast<NSClipView>(view);
        if (!clip) {
            continue;
        }
        const NSRect inClip = self->convertRect_toView(rect, clip);
        const NSRect seen = clip->bounds();
        double y = placeToSee(seen.origin.y, seen.size.height, inClip.origin.y, inClip.size.height);
        if (!clip->isFlipped() && inClip.size.height > seen.size.height) {
            y = NSMaxY(inClip) - seen.size.height;
        }
        const NSRect wanted{{placeToSee(seen.origin.x, seen.size.width, inClip.origin.x, inClip.size.width), y},
                            seen.size};
        const NSRect right = send<NSRect>(clip, "constrainBoundsRect:"_sel, wanted);
        send<void>(clip, "scrollToPoint:"_sel, right.origin);
        return clip->bounds().origin != seen.origin;
    }
    return false;
}

} // namespace zr
