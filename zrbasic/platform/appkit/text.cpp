#include <zrbasic/platform/appkit/text_view.h>

#include <zrbasic/platform/appkit/control_look_p.h>

#include <algorithm>

namespace zr {

ZR_DEFINE_CLASS(NSText) {
    is.method<&NSText::string>("string");
    is.method<&NSText::setString>("setString:");
    is.method<&NSText::selectedRange>("selectedRange");
    is.method<&NSText::setSelectedRange>("setSelectedRange:");
    is.method<&NSText::isEditable>("isEditable");
    is.method<&NSText::setEditable>("setEditable:");
    is.method<&NSText::isSelectable>("isSelectable");
    is.method<&NSText::setSelectable>("setSelectable:");
    is.method<&NSText::isFieldEditor>("isFieldEditor");
    is.method<&NSText::setFieldEditor>("setFieldEditor:");
    is.method<&NSText::drawsBackground>("drawsBackground");
    is.method<&NSText::setDrawsBackground>("setDrawsBackground:");
    is.method<&NSText::backgroundColor>("backgroundColor");
    is.method<&NSText::setBackgroundColor>("setBackgroundColor:");
    is.method<&NSText::font>("font");
    is.method<&NSText::setFont>("setFont:");
    is.method<&NSText::textColor>("textColor");
    is.method<&NSText::setTextColor>("setTextColor:");
    is.method<&NSText::alignment>("alignment");
    is.method<&NSText::setAlignment>("setAlignment:");
    is.method<&NSText::delegate>("delegate");
    is.method<&NSText::setDelegate>("setDelegate:");
}

Ref<NSString> NSTextDidBeginEditingNotification() {
    return "NSTextDidBeginEditingNotification"_ns;
}

Ref<NSString> NSTextDidChangeNotification() {
    return "NSTextDidChangeNotification"_ns;
}

Ref<NSString> NSTextDidEndEditingNotification() {
    return "NSTextDidEndEditingNotification"_ns;
}

Ref<NSString> NSTextMovementKey() {
    return "NSTextMovement"_ns;
}

NSText::NSText() = default;
NSText::~NSText() = default;

bool NSText::isFlipped() const {
    return true;
}

Ref<NSString> NSText::string() const {
    return NSString::string();
}

void NSText::setString(NSString*) {}

void NSText::setSelectedRange(NSRange range) {
    const NSUInteger length = string()->length();
    m_selectedRange.location = std::min(range.location, length);
    m_selectedRange.length = std::min(range.length, length - m_selectedRange.location);
    tellPeer(ViewChange::Selection);
}

void NSText::setEditable(bool editable) {
    m_isEditable = editable;
    m_isSelectable = m_isSelectable || editable;
    tellPeer(ViewChange::Enabled);
}

void NSText::setSelectable(bool selectable) {
    m_isSelectable = selectable;
    m_isEditable = m_isEditable && selectable;
    tellPeer(ViewChange::Enabled);
}

void NSText::setDrawsBackground(bool draws) {
    m_drawsBackground = draws;
    tellPeer(ViewChange::Content);
    send<void>(this, "setNeedsDisplay:"_sel, true);
}

Ref<NSColor> NSText::backgroundColor() const {
    return m_isOnPaper ? look::paper() : m_backgroundColor;
}

void NSText::setBackgroundColor(NSColor* color) {
    m_isOnPaper = false;
    m_backgroundColor = Ref<NSColor>(color);
    tellPeer(ViewChange::Content);
    send<void>(this, "setNeedsDisplay:"_sel, true);
}

void NSText::setFont(NSFont* font) {
    m_font = font ? Ref<NSFont>(font) : NSFont::systemFontOfSize(NSFont::systemFontSize());
    tellPeer(ViewChange::Content);
}

Ref<NSColor> NSText::textColor() const {
    return m_textColor ? m_textColor : look::plainText();
}

void NSText::setTextColor(NSColor* color) {
    m_textColor = Ref<NSColor>(color);
    tellPeer(ViewChange::Content);
}

void NSText::setAlignment(NSTextAlignment alignment) {
    m_alignment = alignment;
    tellPeer(ViewChange::Content);
}

void NSText::viewDidChangeEffectiveAppearance() {
    NSView::viewDidChangeEffectiveAppearance();
    tellPeer(ViewChange::Content);
}

} // namespace zr
