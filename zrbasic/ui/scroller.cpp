#include <zrbasic/ui/scroller.h>

#include <zrbasic/platform/appkit/graphics_context.h>
#include <zrbasic/platform/runtime/message.h>

namespace zr {
namespace {

constexpr double knobInset = 3;
constexpr double knobRadius = 3;

} // namespace

ZR_DEFINE_CLASS(ZRXScroller) {
    is.property<ZRXScroller, &ZRXScroller::m_hideKnob>("hideKnob", "setHideKnob");
    is.property<ZRXScroller, &ZRXScroller::m_scrollBackgroundColor>("scrollBackgroundColor",
                                                                    "setScrollBackgroundColor");
    is.property<ZRXScroller, &ZRXScroller::m_knobColor>("knobColor", "setKnobColor");
    // Behind the properties, whose plain setters they take the place of.
    is.method<&ZRXScroller::setHideKnob>("setHideKnob:");
    is.method<&ZRXScroller::setScrollBackgroundColor>("setScrollBackgroundColor:");
    is.method<&ZRXScroller::setKnobColor>("setKnobColor:");
    is.receivingClassMethod<&ZRXScroller::isCompatibleWithOverlayScrollers>("isCompatibleWithOverlayScrollers");
}

ZRXScroller::ZRXScroller() = default;
ZRXScroller::~ZRXScroller() = default;

id ZRXScroller::initWithFrame(NSRect frame) {
    const id self = NSScroller::initWithFrame(frame);
    setKnobStyle(NSScrollerKnobStyleDefault);
    setScrollerStyle(NSScrollerStyleOverlay);
    setControlSize(NSControlSizeMini);
    setWantsLayer(true);
    return self;
}

bool ZRXScroller::isCompatibleWithOverlayScrollers(Class* self) {
    return self == ZRXScroller::classObject();
}

void ZRXScroller::redraw() {
    send<void>(this, "setNeedsDisplay:"_sel, true);
}

void ZRXScroller::setHideKnob(bool hides) {
    m_hideKnob = hides;
    redraw();
}

void ZRXScroller::setScrollBackgroundColor(NSColor* color) {
    m_scrollBackgroundColor = color;
    redraw();
}

void ZRXScroller::setKnobColor(NSColor* color) {
    m_knobColor = color;
    redraw();
}

bool ZRXScroller::isHorizontal() const {
    return frame().size.width > frame().size.height;
}

void ZRXScroller::drawRect(NSRect dirtyRect) {
    NSScroller::drawRect(dirtyRect);
    if (!hideKnob()) {
        send<void>(this, "drawKnob"_sel);
    }
}

void ZRXScroller::drawKnobSlotInRect_highlight(NSRect slot, bool) {
    if (const Ref<NSColor> color = scrollBackgroundColor()) {
        setFill(color);
        NSRectFill(slot);
    }
}

void ZRXScroller::drawKnob() {
    if (hideKnob()) {
        return;
    }
    NSScroller::drawKnob();
    const Ref<NSGraphicsContext> context = NSGraphicsContext::currentContext();
    if (!context) {
        return;
    }
    const Ref<NSColor> color = knobColor();
    setFill(color ? color : NSColor::lightGrayColor());
    NSRect knob = send<NSRect>(this, "rectForPart:"_sel, NSScrollerKnob);
    // On one side alone, which leaves the knob at the far edge of the track.
    if (send<bool>(this, "isHorizontal"_sel)) {
        knob.origin.y += knobInset;
        knob.size.height -= knobInset;
    } else {
        knob.origin.x += knobInset;
        knob.size.width -= knobInset;
    }
    context->canvas().fillRoundedRect(knob, knobRadius, knobRadius, context->fillColor());
}

} // namespace zr
