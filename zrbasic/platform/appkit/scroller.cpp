#include <zrbasic/platform/appkit/scroller.h>

#include <zrbasic/platform/appkit/control_look_p.h>
#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/appkit/graphics_context.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/runtime/message.h>

#include <algorithm>
#include <cmath>

namespace zr {
namespace {

/// Shorter ones cannot be gripped.
constexpr double leastKnobLength = 18;

/// What is not a number is 0.
double fraction(double value) {
    return std::isnan(value) ? 0 : std::clamp(value, 0.0, 1.0);
}

/// Where the knob lies along the slot.
struct Extent {
    double start = 0;
    double length = 0;
};

Extent knobExtent(double track, double proportion, double value) {
    if (!(track > 0)) {
        return {};
    }
    const double length = std::min(track, std::max(leastKnobLength, track * proportion));
    return {(track - length) * value, length};
}

NSRect inset(NSRect rect, bool isHorizontal, double across) {
    if (isHorizontal) {
        return {{rect.origin.x, rect.origin.y + across}, {rect.size.width, rect.size.height - 2 * across}};
    }
    return {{rect.origin.x + across, rect.origin.y}, {rect.size.width - 2 * across, rect.size.height}};
}

} // namespace

/// Keeps the value in bounds, whichever way it comes.
class ScrollerCell : public NSActionCell {
    ZR_DECLARE_CLASS(ScrollerCell, NSActionCell)
  public:
    ScrollerCell();
    ~ScrollerCell() override;

    void setObjectValue(NSObject* value) override {
        const auto* const number = cast<NSNumber>(value);
        const auto* const string = cast<NSString>(value);
        const double wanted = number ? number->doubleValue() : string ? string->doubleValue() : 0;
        NSActionCell::setObjectValue(box(fraction(wanted)));
    }
};

ScrollerCell::ScrollerCell() = default;
ScrollerCell::~ScrollerCell() = default;

ZR_DEFINE_CLASS(ScrollerCell) {
    is.method<&ScrollerCell::setObjectValue>("setObjectValue:");
}

ZR_DEFINE_CLASS(NSScroller) {
    is.classMethod<&NSScroller::cellClass>("cellClass");
    is.receivingClassMethod<&NSScroller::isCompatibleWithOverlayScrollers>("isCompatibleWithOverlayScrollers");
    is.classMethod<&NSScroller::scrollerWidthForControlSize_scrollerStyle>(
        "scrollerWidthForControlSize:scrollerStyle:");
    is.method<&NSScroller::knobStyle>("knobStyle");
    is.method<&NSScroller::setKnobStyle>("setKnobStyle:");
    is.method<&NSScroller::scrollerStyle>("scrollerStyle");
    is.method<&NSScroller::setScrollerStyle>("setScrollerStyle:");
    is.method<&NSScroller::controlSize>("controlSize");
    is.method<&NSScroller::setControlSize>("setControlSize:");
    is.method<&NSScroller::knobProportion>("knobProportion");
    is.method<&NSScroller::setKnobProportion>("setKnobProportion:");
    is.method<&NSScroller::isHorizontal>("isHorizontal");
    is.method<&NSScroller::rectForPart>("rectForPart:");
    is.method<&NSScroller::testPart>("testPart:");
    is.method<&NSScroller::hitPart>("hitPart");
    is.method<&NSScroller::drawKnob>("drawKnob");
    is.method<&NSScroller::drawKnobSlotInRect_highlight>("drawKnobSlotInRect:highlight:");
}

NSScroller::NSScroller() = default;
NSScroller::~NSScroller() = default;

Class* NSScroller::cellClass() {
    return ScrollerCell::classObject();
}

bool NSScroller::isCompatibleWithOverlayScrollers(Class* self) {
    return self == NSScroller::classObject();
}

double NSScroller::scrollerWidthForControlSize_scrollerStyle(NSControlSize size, NSScrollerStyle style) {
    if (style != NSScrollerStyleLegacy && style != NSScrollerStyleOverlay) {
        return 0;
    }
    const bool floats = style == NSScrollerStyleOverlay;
    switch (size) {
        case NSControlSizeRegular:
            return floats ? 14 : 15;
        case NSControlSizeSmall:
            return floats ? 12 : 11;
        case NSControlSizeMini:
            return 10;
    }
    return 0;
}

void NSScroller::redraw() {
    send<void>(this, "setNeedsDisplay:"_sel, true);
}

void NSScroller::setKnobStyle(NSScrollerKnobStyle style) {
    m_knobStyle = style;
    redraw();
}

void NSScroller::setScrollerStyle(NSScrollerStyle style) {
    m_scrollerStyle = style;
    redraw();
}

void NSScroller::setControlSize(NSControlSize size) {
    m_controlSize = size;
    redraw();
}

void NSScroller::setKnobProportion(double proportion) {
    m_knobProportion = fraction(proportion);
    redraw();
}

bool NSScroller::isHorizontal() const {
    return frame().size.width > frame().size.height;
}

NSRect NSScroller::rectForPart(NSScrollerPart part) {
    const NSRect slot = bounds();
    const bool lies = send<bool>(this, "isHorizontal"_sel);
    const double track = lies ? slot.size.width : slot.size.height;
    const Extent knob = knobExtent(track, m_knobProportion, doubleValue());
    const auto partOfSlot = [&](double start, double length) {
        if (!(length > 0)) {
            return NSZeroRect;
        }
        return lies ? NSMakeRect(slot.origin.x + start, slot.origin.y, length, slot.size.height)
                    : NSMakeRect(slot.origin.x, slot.origin.y + start, slot.size.width, length);
    };
    switch (part) {
        case NSScrollerDecrementPage:
            return partOfSlot(0, knob.start);
        case NSScrollerKnob:
            return partOfSlot(knob.start, knob.length);
        case NSScrollerIncrementPage:
            return partOfSlot(knob.start + knob.length, track - knob.start - knob.length);
        case NSScrollerKnobSlot:
            return slot;
        case NSScrollerNoPart:
        case NSScrollerDecrementLine:
        case NSScrollerIncrementLine:
            break;
    }
    return NSZeroRect;
}

NSScrollerPart NSScroller::testPart(NSPoint point) {
    const NSPoint inside = convertPoint_fromView(point, nullptr);
    for (const NSScrollerPart part : {NSScrollerKnob, NSScrollerDecrementPage, NSScrollerIncrementPage}) {
        if (NSMouseInRect(inside, send<NSRect>(this, "rectForPart:"_sel, part), true)) {
            return part;
        }
    }
    return NSScrollerNoPart;
}

bool NSScroller::isFlipped() const {
    return true;
}

bool NSScroller::acceptsFirstResponder() const {
    return false;
}

NSSize NSScroller::intrinsicContentSize() const {
    const double width = scrollerWidthForControlSize_scrollerStyle(m_controlSize, m_scrollerStyle);
    return isHorizontal() ? NSSize{NSViewNoIntrinsicMetric, width} : NSSize{width, NSViewNoIntrinsicMetric};
}

// Drawing

void NSScroller::drawRect(NSRect) {
    const NSRect slot = send<NSRect>(this, "rectForPart:"_sel, NSScrollerKnobSlot);
    send<void>(this, "drawKnobSlotInRect:highlight:"_sel, slot, m_hitPart != NSScrollerNoPart);
    if (isEnabled()) {
        send<void>(this, "drawKnob"_sel);
    }
}

void NSScroller::drawKnob() {
    const Ref<NSGraphicsContext> context = NSGraphicsContext::currentContext();
    if (!context) {
        return;
    }
    const bool lies = send<bool>(this, "isHorizontal"_sel);
    const NSRect part = send<NSRect>(this, "rectForPart:"_sel, NSScrollerKnob);
    // Narrower than the part, so that a subclass which draws its own knob over it, 3 points from an edge, covers this
    // one in every control size.
    const double breadth = lies ? part.size.height : part.size.width;
    const NSRect knob = inset(part, lies, std::min(4.0, std::max(breadth / 4, std::min(3.0, breadth * 0.3))));
    const double radius = (lies ? knob.size.height : knob.size.width) / 2;
    const double plain = isAppearanceDark() ? 0.85 : 0.3;
    const double white = m_knobStyle == NSScrollerKnobStyleLight  ? 1
                         : m_knobStyle == NSScrollerKnobStyleDark ? 0
                                                                  : plain;
    const double alpha = m_hitPart == NSScrollerKnob ? 0.65 : 0.45;
    const Ref<NSColor> color = NSColor::colorWithWhite_alpha(white, alpha);
    context->canvas().fillRoundedRect(knob, radius, radius, color);
}

void NSScroller::drawKnobSlotInRect_highlight(NSRect slot, bool highlight) {
    const Ref<NSGraphicsContext> context = NSGraphicsContext::currentContext();
    if (!context || (m_scrollerStyle == NSScrollerStyleOverlay && !highlight)) {
        return;
    }
    const Ref<NSColor> color = NSColor::colorWithWhite_alpha(isAppearanceDark() ? 0.19 : 0.92,
                                                             m_scrollerStyle == NSScrollerStyleOverlay ? 0.6 : 1);
    context->canvas().fillRect(slot, color, NSCompositingOperationSourceOver);
}

// The mouse

double NSScroller::along(NSPoint point) const {
    const NSPoint inside = convertPoint_fromView(point, nullptr);
    return send<bool>(const_cast<NSScroller*>(this), "isHorizontal"_sel) ? inside.x - bounds().origin.x
                                                                         : inside.y - bounds().origin.y;
}

void NSScroller::mouseDown(NSEvent* event) {
    if (!event || !isEnabled()) {
        return;
    }
    const Ref<NSScroller> self(this);
    const NSPoint point = event->locationInWindow();
    m_hitPart = send<NSScrollerPart>(this, "testPart:"_sel, point);
    redraw();
    if (m_hitPart == NSScrollerKnob) {
        const NSRect knob = send<NSRect>(this, "rectForPart:"_sel, NSScrollerKnob);
        const bool lies = send<bool>(this, "isHorizontal"_sel);
        m_grip = along(point) - (lies ? knob.origin.x - bounds().origin.x : knob.origin.y - bounds().origin.y);
    } else if (m_hitPart != NSScrollerNoPart) {
        send<bool>(this, "sendAction:to:"_sel, action(), target());
    }
}

void NSScroller::mouseDragged(NSEvent* event) {
    if (!event || m_hitPart != NSScrollerKnob) {
        return;
    }
    const bool lies = send<bool>(this, "isHorizontal"_sel);
    const NSRect knob = send<NSRect>(this, "rectForPart:"_sel, NSScrollerKnob);
    const double way = lies ? bounds().size.width - knob.size.width : bounds().size.height - knob.size.height;
    if (!(way > 0)) {
        return;
    }
    const double before = doubleValue();
    setDoubleValue((along(event->locationInWindow()) - m_grip) / way);
    if (doubleValue() != before) {
        const Ref<NSScroller> self(this);
        send<bool>(this, "sendAction:to:"_sel, action(), target());
    }
}

void NSScroller::mouseUp(NSEvent* event) {
    if (event && m_hitPart != NSScrollerNoPart) {
        m_hitPart = NSScrollerNoPart;
        redraw();
    }
}

} // namespace zr
