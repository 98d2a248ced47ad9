#include <zrbasic/platform/appkit/button_cell.h>

#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/appkit/control_look_p.h>
#include <zrbasic/platform/appkit/graphics_context.h>
#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/message.h>

#include <algorithm>
#include <cmath>

namespace zr {
namespace {

constexpr double markSide = 14;
/// Between a mark or an image and the title.
constexpr double gap = 6;
/// From the border to what is inside, to the left and right, and above and below.
constexpr NSSize margin{10, 4};

bool isMomentary(NSButtonType type) {
    return type == NSButtonTypeMomentaryLight || type == NSButtonTypeMomentaryChange ||
           type == NSButtonTypeMomentaryPushIn;
}

bool hasFocus(NSView* view) {
    if (!view || view->focusRingType() == NSFocusRingTypeNone) {
        return false;
    }
    const Ref<NSWindow> window = view->window();
    return window && window->isKeyWindow() && window->firstResponder() == view;
}

/// A line with round ends.
void drawLine(Canvas& canvas, NSPoint from, NSPoint to, double width, NSColor* color) {
    const double length = std::hypot(to.x - from.x, to.y - from.y);
    const double cosine = (to.x - from.x) / length;
    const double sine = (to.y - from.y) / length;
    canvas.save();
    canvas.concat({cosine, sine, -sine, cosine, from.x, from.y});
    canvas.fillRoundedRect({{-width / 2, -width / 2}, {length + width, width}}, width / 2, width / 2, color);
    canvas.restore();
}

} // namespace

ZR_DEFINE_CLASS(NSButtonCell) {
    is.method<&NSButtonCell::title>("title");
    is.method<&NSButtonCell::setTitle>("setTitle:");
    is.method<&NSButtonCell::image>("image");
    is.method<&NSButtonCell::setImage>("setImage:");
    is.method<&NSButtonCell::imagePosition>("imagePosition");
    is.method<&NSButtonCell::setImagePosition>("setImagePosition:");
    is.method<&NSButtonCell::keyEquivalent>("keyEquivalent");
    is.method<&NSButtonCell::setKeyEquivalent>("setKeyEquivalent:");
    is.method<&NSButtonCell::keyEquivalentModifierMask>("keyEquivalentModifierMask");
    is.method<&NSButtonCell::setKeyEquivalentModifierMask>("setKeyEquivalentModifierMask:");
    is.method<&NSButtonCell::buttonType>("buttonType");
    is.method<&NSButtonCell::setButtonType>("setButtonType:");
    is.method<&NSButtonCell::allowsMixedState>("allowsMixedState");
    is.method<&NSButtonCell::setAllowsMixedState>("setAllowsMixedState:");
    is.method<&NSButtonCell::nextState>("nextState");
    is.method<&NSButtonCell::setNextState>("setNextState");
}

NSButtonCell::NSButtonCell() : m_title(""_ns), m_keyEquivalent(""_ns) {}

NSButtonCell::~NSButtonCell() = default;

id NSButtonCell::initTextCell(NSString* string) {
    const id cell = NSActionCell::initTextCell(""_ns);
    setState(NSControlStateValueOff);
    setBordered(true);
    setAlignment(NSTextAlignmentCenter);
    setUsesSingleLineMode(true);
    setTitle(string);
    return cell;
}

void NSButtonCell::setTitle(NSString* title) {
    m_title = title ? Ref<NSString>(cast<NSString>(title->copy())) : ""_ns;
    changed();
}

Ref<NSImage> NSButtonCell::image() const {
    return m_image;
}

void NSButtonCell::setImage(NSImage* image) {
    m_image = Ref<NSImage>(image);
    if (m_image && m_imagePosition == NSNoImage) {
        m_imagePosition = m_title->length() == 0 ? NSImageOnly : NSImageLeft;
    }
    changed();
}

void NSButtonCell::setImagePosition(NSCellImagePosition position) {
    m_imagePosition = position;
    changed();
}

void NSButtonCell::setKeyEquivalent(NSString* key) {
    m_keyEquivalent = key ? Ref<NSString>(cast<NSString>(key->copy())) : ""_ns;
    changed();
}

bool NSButtonCell::isDefault() const {
    return m_keyEquivalent->isEqual("\r"_ns);
}

void NSButtonCell::setButtonType(NSButtonType type) {
    m_type = type;
    if (hasMark()) {
        setBordered(false);
        setAlignment(NSTextAlignmentLeft);
    }
    changed();
}

void NSButtonCell::setState(NSInteger state) {
    NSInteger known = NSControlStateValueOff;
    if (state != 0) {
        known = state < 0 && m_allowsMixedState ? NSControlStateValueMixed : NSControlStateValueOn;
    }
    NSActionCell::setState(known);
    NSActionCell::setObjectValue(box(known));
}

void NSButtonCell::setObjectValue(NSObject* value) {
    NSInteger state = NSControlStateValueOff;
    if (const auto* const number = cast<NSNumber>(value)) {
        state = number->integerValue();
    } else if (const auto* const text = cast<NSString>(value)) {
        state = text->integerValue();
    }
    setState(state);
}

void NSButtonCell::setStringValue(NSString* string) {
    setObjectValue(string);
}

void NSButtonCell::setAttributedStringValue(NSAttributedString* string) {
    setObjectValue(string ? string->string() : nullptr);
}

void NSButtonCell::setAllowsMixedState(bool allows) {
    m_allowsMixedState = allows;
    if (!allows && state() < 0) {
        setState(NSControlStateValueOn);
    }
}

NSInteger NSButtonCell::nextState() const {
    if (m_type == NSButtonTypeRadio) {
        return NSControlStateValueOn;
    }
    if (isMomentary(m_type)) {
        return NSControlStateValueOff;
    }
    switch (state()) {
        case NSControlStateValueOn:
            return NSControlStateValueOff;
        case NSControlStateValueOff:
            return m_allowsMixedState ? NSControlStateValueMixed : NSControlStateValueOn;
        default:
            return NSControlStateValueOn;
    }
}

void NSButtonCell::setNextState() {
    setState(nextState());
}

bool NSButtonCell::hasMark() const {
    return m_type == NSButtonTypeSwitch || m_type == NSButtonTypeRadio;
}

bool NSButtonCell::isPressedLook() const {
    const bool staysDown = !hasMark() && !isMomentary(m_type);
    return isHighlighted() || (staysDown && state() != NSControlStateValueOff);
}

bool NSButtonCell::showsImage() const {
    return m_image && m_imagePosition != NSNoImage && !hasMark();
}

Ref<NSColor> NSButtonCell::colorOfText() const {
    return isBordered() && isDefault() && isEnabled() ? look::onAccent() : look::text(isEnabled());
}

Ref<NSAttributedString> NSButtonCell::titleToDraw() const {
    return dressed(make<NSAttributedString>(&NSAttributedString::initWithString, m_title.get()));
}

NSSize NSButtonCell::titleSize() const {
    if (m_title->length() == 0 || (showsImage() && m_imagePosition == NSImageOnly)) {
        return NSZeroSize;
    }
    // A fraction of a point less room than it takes would cut the title short.
    const NSSize size = currentToolkit().naturalSizeOfText(titleToDraw(), 0);
    return {std::ceil(size.width), std::ceil(size.height)};
}

NSSize NSButtonCell::cellSize() const {
    NSSize size = titleSize();
    NSSize beside;
    if (hasMark()) {
        beside = {markSide, markSide};
    } else if (showsImage()) {
        beside = m_image->size();
    }
    size.width += beside.width + (size.width > 0 && beside.width > 0 ? gap : 0);
    size.height = std::max(size.height, beside.height);
    if (isBordered()) {
        size.width += 2 * margin.width;
        size.height += 2 * margin.height;
    }
    return size;
}

NSRect NSButtonCell::drawingRectForBounds(NSRect bounds) const {
    return isBordered() ? NSInsetRect(bounds, margin.width, margin.height) : bounds;
}

void NSButtonCell::drawBorder(NSRect frame) {
    Canvas& canvas = NSGraphicsContext::currentContext()->canvas();
    const bool isFilled = isDefault() && isEnabled();
    const Ref<NSColor> filling = isPressedLook() ? look::pressedAccent() : look::accent();
    canvas.fillRoundedRect(frame, look::cornerRadius, look::cornerRadius,
                           isFilled ? filling : look::face(isEnabled(), isPressedLook()));
    canvas.strokeRoundedRect(frame, look::cornerRadius, look::borderWidth,
                             isFilled ? filling : look::border(isEnabled()));
}

void NSButtonCell::drawMark(NSRect frame, bool isFlipped) {
    Canvas& canvas = NSGraphicsContext::currentContext()->canvas();
    const NSRect box{{frame.origin.x, frame.origin.y + (frame.size.height - markSide) / 2}, {markSide, markSide}};
    const bool isRadio = m_type == NSButtonTypeRadio;
    const double radius = isRadio ? markSide / 2 : look::cornerRadius - 1;
    const bool isSet = state() != NSControlStateValueOff;
    if (!isSet || !isEnabled()) {
        canvas.fillRoundedRect(box, radius, radius, look::face(isEnabled(), isHighlighted()));
        canvas.strokeRoundedRect(box, radius, look::borderWidth, look::border(isEnabled()));
    } else {
        canvas.fillRoundedRect(box, radius, radius, isHighlighted() ? look::pressedAccent() : look::accent());
    }
    if (!isSet) {
        return;
    }
    const Ref<NSColor> color = isEnabled() ? look::onAccent() : look::text(false);
    const auto at = [&](double x, double y) {
        return NSPoint{box.origin.x + x, box.origin.y + (isFlipped ? markSide - y : y)};
    };
    if (state() == NSControlStateValueMixed) {
        drawLine(canvas, at(4, 7), at(10, 7), 2, color);
    } else if (isRadio) {
        canvas.fillRoundedRect(NSInsetRect(box, 4.5, 4.5), 2.5, 2.5, color);
    } else {
        drawLine(canvas, at(3.5, 7), at(6, 4), 1.75, color);
        drawLine(canvas, at(6, 4), at(10.5, 10), 1.75, color);
    }
}

void NSButtonCell::drawWithFrame_inView(NSRect frame, NSView* view) {
    const Ref<NSGraphicsContext> context = NSGraphicsContext::currentContext();
    if (!context) {
        return;
    }
    if (isBordered()) {
        drawBorder(frame);
    }
    send<void>(this, "drawInteriorWithFrame:inView:"_sel, drawingRectForBounds(frame), view);
    if (hasFocus(view)) {
        Canvas& canvas = context->canvas();
        canvas.strokeRoundedRect(frame, look::cornerRadius, look::focusRingWidth, look::accent());
        if (isBordered() && isDefault()) {
            // The ring has the colour of the button, so a line sets them apart.
            canvas.strokeRoundedRect(NSInsetRect(frame, look::focusRingWidth, look::focusRingWidth),
                                     look::cornerRadius - look::focusRingWidth, 1, look::onAccent());
        }
    }
}

void NSButtonCell::drawInteriorWithFrame_inView(NSRect frame, NSView*) {
    const Ref<NSGraphicsContext> context = NSGraphicsContext::currentContext();
    if (!context) {
        return;
    }
    NSSize beside;
    if (hasMark()) {
        drawMark(frame, context->isFlipped());
        beside = {markSide, markSide};
    } else if (showsImage()) {
        beside = m_image->size();
    }
    const NSSize words = titleSize();
    const double space = words.width > 0 && beside.width > 0 ? gap : 0;
    const double spare = std::max(0.0, frame.size.width - beside.width - space - words.width);
    const double left = frame.origin.x + (alignment() == NSTextAlignmentCenter ? spare / 2 : 0);
    const bool isImageBehind = showsImage() && m_imagePosition == NSImageRight;
    const double middle = frame.origin.y + frame.size.height / 2;
    const double wordsWidth = std::min(words.width, std::max(0.0, frame.size.width - beside.width - space));
    if (wordsWidth > 0) {
        const double x = isImageBehind ? left : left + beside.width + space;
        context->canvas().drawText(titleToDraw(), {{x, middle - words.height / 2}, {wordsWidth, words.height}}, true);
    }
    if (showsImage()) {
        const double x = isImageBehind ? left + wordsWidth + space : left;
        context->canvas().drawBitmap(m_image->bestRepresentation(), {{x, middle - beside.height / 2}, beside},
                                     NSZeroRect, NSCompositingOperationSourceOver, isEnabled() ? 1 : 0.4);
    }
}

} // namespace zr
