#include <zrbasic/platform/appkit/box.h>

#include <zrbasic/platform/appkit/control_look_p.h>
#include <zrbasic/platform/appkit/font.h>
#include <zrbasic/platform/appkit/graphics_context.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/foundation/attributed_string.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/message.h>

#include <algorithm>
#include <utility>

namespace zr {
namespace {

constexpr double titleHeight = 16;
constexpr double titleSize = 11;
constexpr double titleIndent = 8;
constexpr double primaryRadius = 5;

/// What is below zero, or not a number, is zero.
double extent(double value) {
    return value > 0 ? value : 0;
}

} // namespace

ZR_DEFINE_CLASS(NSBox) {
    is.method<&NSBox::boxType>("boxType");
    is.method<&NSBox::setBoxType>("setBoxType:");
    is.method<&NSBox::borderWidth>("borderWidth");
    is.method<&NSBox::setBorderWidth>("setBorderWidth:");
    is.method<&NSBox::cornerRadius>("cornerRadius");
    is.method<&NSBox::setCornerRadius>("setCornerRadius:");
    is.method<&NSBox::fillColor>("fillColor");
    is.method<&NSBox::setFillColor>("setFillColor:");
    is.method<&NSBox::borderColor>("borderColor");
    is.method<&NSBox::setBorderColor>("setBorderColor:");
    is.method<&NSBox::isTransparent>("isTransparent");
    is.method<&NSBox::setTransparent>("setTransparent:");
    is.method<&NSBox::title>("title");
    is.method<&NSBox::setTitle>("setTitle:");
    is.method<&NSBox::titlePosition>("titlePosition");
    is.method<&NSBox::setTitlePosition>("setTitlePosition:");
    is.method<&NSBox::contentView>("contentView");
    is.method<&NSBox::setContentView>("setContentView:");
    is.method<&NSBox::contentViewMargins>("contentViewMargins");
    is.method<&NSBox::setContentViewMargins>("setContentViewMargins:");
    is.method<&NSBox::borderRect>("borderRect");
}

NSBox::NSBox() : m_fillColor(NSColor::clearColor()), m_title(""_ns) {}
NSBox::~NSBox() = default;

id NSBox::initWithFrame(NSRect frame) {
    NSView::initWithFrame(frame);
    setContentView(make<NSView>());
    return id(this);
}

void NSBox::changed() {
    placeContent();
    send<void>(this, "setNeedsDisplay:"_sel, true);
}

void NSBox::setBoxType(NSBoxType type) {
    m_boxType = type;
    changed();
}

void NSBox::setBorderWidth(double width) {
    m_borderWidth = extent(width);
    changed();
}

void NSBox::setCornerRadius(double radius) {
    m_cornerRadius = extent(radius);
    changed();
}

void NSBox::setFillColor(NSColor* color) {
    m_fillColor = color ? Ref<NSColor>(color) : NSColor::clearColor();
    changed();
}

Ref<NSColor> NSBox::borderColor() const {
    return m_borderColor ? m_borderColor : look::border(true);
}

void NSBox::setBorderColor(NSColor* color) {
    m_borderColor = color ? Ref<NSColor>(color) : NSColor::clearColor();
    changed();
}

void NSBox::setTransparent(bool transparent) {
    m_isTransparent = transparent;
    changed();
}

void NSBox::setTitle(NSString* title) {
    m_title = title ? Ref<NSString>(cast<NSString>(title->copy())) : ""_ns;
    changed();
}

void NSBox::setTitlePosition(NSTitlePosition position) {
    m_titlePosition = position;
    changed();
}

void NSBox::setContentViewMargins(NSSize margins) {
    m_contentViewMargins = {extent(margins.width), extent(margins.height)};
    changed();
}

void NSBox::setContentView(NSView* view) {
    if (view == m_contentView.get()) {
        return;
    }
    const Ref<NSBox> self(this);
    const Ref<NSView> previous = std::exchange(m_contentView, Ref<NSView>(view));
    if (previous && previous->superview() == this) {
        previous->removeFromSuperview();
    }
    addSubview(view);
    placeContent();
}

void NSBox::setFrameSize(NSSize size) {
    NSView::setFrameSize(size);
    placeContent();
}

bool NSBox::showsTitle() const {
    return m_boxType != NSBoxSeparator && m_titlePosition != NSNoTitle && m_title->length() > 0;
}

double NSBox::lineWidth() const {
    return m_isTransparent ? 0 : m_boxType == NSBoxCustom ? m_borderWidth : look::borderWidth;
}

NSRect NSBox::borderRect() const {
    NSRect rect = bounds();
    if (showsTitle()) {
        rect.size.height = extent(rect.size.height - titleHeight);
        rect.origin.y += isFlipped() ? bounds().size.height - rect.size.height : 0;
    }
    return rect;
}

void NSBox::placeContent() {
    if (!m_contentView || m_contentView->superview() != this) {
        return;
    }
    const NSRect around = borderRect();
    const double x = std::min(lineWidth() + m_contentViewMargins.width, around.size.width / 2);
    const double y = std::min(lineWidth() + m_contentViewMargins.height, around.size.height / 2);
    send<void>(m_contentView, "setFrame:"_sel,
               NSMakeRect(around.origin.x + x, around.origin.y + y, extent(around.size.width - 2 * x),
                          extent(around.size.height - 2 * y)));
}

void NSBox::drawRect(NSRect) {
    const Ref<NSGraphicsContext> context = NSGraphicsContext::currentContext();
    if (!context) {
        return;
    }
    Canvas& canvas = context->canvas();
    if (m_boxType == NSBoxSeparator) {
        NSRect line = bounds();
        if (line.size.width >= line.size.height) {
            line.origin.y += extent(line.size.height - 1) / 2;
            line.size.height = std::min(line.size.height, 1.0);
        } else {
            line.origin.x += extent(line.size.width - 1) / 2;
            line.size.width = std::min(line.size.width, 1.0);
        }
        const Ref<NSColor> color = look::border(true);
        canvas.fillRect(line, color, NSCompositingOperationSourceOver);
        return;
    }
    const NSRect rect = borderRect();
    if (!m_isTransparent) {
        const bool isCustom = m_boxType == NSBoxCustom;
        static const RoleColor shade(grayRole(0, 0.04), grayRole(1, 0.05));
        const Ref<NSColor> line = isCustom ? borderColor() : look::border(false);
        const double radius = isCustom ? m_cornerRadius : primaryRadius;
        canvas.fillRoundedRect(rect, radius, radius, isCustom ? m_fillColor : shade.now());
        if (lineWidth() > 0) {
            canvas.strokeRoundedRect(rect, radius, lineWidth(), line);
        }
    }
    if (showsTitle()) {
        NSRect place = bounds();
        place.origin.y += isFlipped() ? 0 : rect.size.height;
        place.origin.x += titleIndent;
        place.size = {extent(place.size.width - 2 * titleIndent), bounds().size.height - rect.size.height};
        const Ref<NSDictionary> attributes = dictionary({{NSFontAttributeName(), NSFont::systemFontOfSize(titleSize)},
                                                         {NSForegroundColorAttributeName(), look::plainText()}});
        const Ref<NSAttributedString> text =
            make<NSAttributedString>(&NSAttributedString::initWithString_attributes, m_title, attributes);
        canvas.drawText(text, place, true);
    }
}

} // namespace zr
