#include <zrbasic/ui/label.h>

#include <zrbasic/platform/appkit/cursor.h>
#include <zrbasic/platform/appkit/paragraph_style.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/foundation/coder.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/runtime/message.h>

namespace zr {
namespace {

constexpr NSUInteger plainStyle = 0;
constexpr NSUInteger underliningStyle = 2;

} // namespace

ZR_DEFINE_CLASS(ZRXLabel) {
    is.property<ZRXLabel, &ZRXLabel::m_style>("style", "setStyle");
    is.property<ZRXLabel, &ZRXLabel::m_trackingArea>("trackingArea", "setTrackingArea");
    // Behind the property, whose plain setter it takes the place of.
    is.method<&ZRXLabel::setStyle>("setStyle:");
    is.method<&ZRXLabel::initWithCoder>("initWithCoder:");
    is.method<&ZRXLabel::initWithStyle>("initWithStyle:");
    is.method<&ZRXLabel::setupInitialize>("setupInitialize");
    is.method<&ZRXLabel::addStringValueWithUnderline>("addStringValueWithUnderline:");
}

ZRXLabel::ZRXLabel() = default;
ZRXLabel::~ZRXLabel() = default;

id ZRXLabel::initWithFrame(NSRect frame) {
    const id self = NSTextField::initWithFrame(frame);
    send<void>(self, "setupInitialize"_sel);
    return self;
}

id ZRXLabel::initWithCoder(NSCoder* coder) {
    const NSRect frame = coder ? coder->decodeRectForKey("NSFrame"_ns) : NSZeroRect;
    const id self = NSTextField::initWithFrame(frame);
    send<void>(self, "setupInitialize"_sel);
    return self;
}

id ZRXLabel::initWithStyle(NSUInteger style) {
    const id self = NSTextField::init();
    send<void>(self, "setStyle:"_sel, style);
    return self;
}

void ZRXLabel::setupInitialize() {
    setEditable(false);
    setBordered(false);
    setBackgroundColor(NSColor::clearColor());
}

bool ZRXLabel::acceptsFirstMouse(NSEvent*) {
    return true;
}

void ZRXLabel::setStyle(NSUInteger style) {
    m_style = style;
    discardCursorRects();
    send<void>(this, "resetCursorRects"_sel);
    send<void>(this, "updateTrackingAreas"_sel);
    if (style != underliningStyle) {
        send<void>(this, "addStringValueWithUnderline:"_sel, false);
    }
}

void ZRXLabel::setTrackingArea(NSTrackingArea* area) {
    m_trackingArea = area;
}

void ZRXLabel::updateTrackingAreas() {
    NSTextField::updateTrackingAreas();
    if (const Ref<NSTrackingArea> previous = trackingArea()) {
        removeTrackingArea(previous);
        m_trackingArea = nullptr;
    }
    if (style() != underliningStyle) {
        return;
    }
    constexpr NSUInteger options = NSTrackingMouseEnteredAndExited | NSTrackingActiveAlways;
    const Ref<NSTrackingArea> area =
        make<NSTrackingArea>(&NSTrackingArea::initWithRect_options_owner_userInfo, bounds(), options, this, nullptr);
    m_trackingArea = area;
    addTrackingArea(area);
}

void ZRXLabel::resetCursorRects() {
    NSTextField::resetCursorRects();
    if (style() == plainStyle) {
        discardCursorRects();
    } else {
        addCursorRect_cursor(bounds(), NSCursor::pointingHandCursor());
    }
}

void ZRXLabel::mouseEntered(NSEvent* event) {
    NSTextField::mouseEntered(event);
    if (style() == underliningStyle) {
        send<void>(this, "addStringValueWithUnderline:"_sel, true);
    }
}

void ZRXLabel::mouseExited(NSEvent* event) {
    NSTextField::mouseExited(event);
    if (style() == underliningStyle) {
        send<void>(this, "addStringValueWithUnderline:"_sel, false);
    }
}

void ZRXLabel::mouseDown(NSEvent* event) {
    // Whoever hears of the press may let go of the label.
    const Ref<ZRXLabel> self(this);
    NSTextField::mouseDown(event);
    send<bool>(this, "sendAction:to:"_sel, action(), target());
}

void ZRXLabel::addStringValueWithUnderline(bool underlined) {
    const Ref<NSMutableParagraphStyle> paragraph = make<NSMutableParagraphStyle>();
    paragraph->setAlignment(alignment());
    paragraph->setLineBreakMode(lineBreakMode());
    const NSUnderlineStyle underline = underlined ? NSUnderlineStyleSingle : NSUnderlineStyleNone;
    const Ref<NSDictionary> attributes =
        dictionary({{NSUnderlineStyleAttributeName(), box(underline)}, {NSParagraphStyleAttributeName(), paragraph}});
    setAttributedStringValue(
        make<NSAttributedString>(&NSAttributedString::initWithString_attributes, stringValue(), attributes));
}

} // namespace zr
