#include <zrbasic/platform/appkit/text_field_cell.h>

#include <zrbasic/platform/appkit/control_look_p.h>
#include <zrbasic/platform/appkit/graphics_context.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/mutable_attributed_string.h>
#include <zrbasic/platform/foundation/string_overwriting_p.h>

#include <string>
#include <utility>

namespace zr {

ZR_DEFINE_CLASS(NSTextFieldCell) {
    is.method<&NSTextFieldCell::textColor>("textColor");
    is.method<&NSTextFieldCell::setTextColor>("setTextColor:");
    is.method<&NSTextFieldCell::backgroundColor>("backgroundColor");
    is.method<&NSTextFieldCell::setBackgroundColor>("setBackgroundColor:");
    is.method<&NSTextFieldCell::drawsBackground>("drawsBackground");
    is.method<&NSTextFieldCell::setDrawsBackground>("setDrawsBackground:");
    is.method<&NSTextFieldCell::bezelStyle>("bezelStyle");
    is.method<&NSTextFieldCell::setBezelStyle>("setBezelStyle:");
    is.method<&NSTextFieldCell::placeholderString>("placeholderString");
    is.method<&NSTextFieldCell::setPlaceholderString>("setPlaceholderString:");
    is.method<&NSTextFieldCell::placeholderAttributedString>("placeholderAttributedString");
    is.method<&NSTextFieldCell::setPlaceholderAttributedString>("setPlaceholderAttributedString:");
}

NSTextFieldCell::NSTextFieldCell() = default;
NSTextFieldCell::~NSTextFieldCell() = default;

Ref<NSColor> NSTextFieldCell::textColor() const {
    return m_textColor ? m_textColor : look::plainText();
}

void NSTextFieldCell::setTextColor(NSColor* color) {
    m_textColor = Ref<NSColor>(color);
    changed();
}

Ref<NSColor> NSTextFieldCell::backgroundColor() const {
    return m_isOnPaper ? look::paper() : m_backgroundColor;
}

void NSTextFieldCell::setBackgroundColor(NSColor* color) {
    m_isOnPaper = false;
    m_backgroundColor = Ref<NSColor>(color);
    changed();
}

void NSTextFieldCell::standOnPaper() {
    m_isOnPaper = true;
    changed();
}

void NSTextFieldCell::setDrawsBackground(bool draws) {
    m_drawsBackground = draws;
    changed();
}

void NSTextFieldCell::setBezelStyle(NSTextFieldBezelStyle style) {
    m_bezelStyle = style;
    changed();
}

Ref<NSString> NSTextFieldCell::placeholderString() const {
    return m_placeholderAttributed ? m_placeholderAttributed->string() : m_placeholder;
}

void NSTextFieldCell::setPlaceholderString(NSString* string) {
    m_placeholder = string ? Ref<NSString>(cast<NSString>(string->copy())) : nullptr;
    m_placeholderAttributed = nullptr;
    changed();
}

void NSTextFieldCell::setPlaceholderAttributedString(NSAttributedString* string) {
    m_placeholderAttributed = string ? Ref<NSAttributedString>(cast<NSAttributedString>(string->copy())) : nullptr;
    m_placeholder = nullptr;
    changed();
}

Ref<NSAttributedString> NSTextFieldCell::textForEmpty() const {
    const Ref<NSString> text = placeholderString();
    if (!text) {
        return nullptr;
    }
    const auto style = make<NSMutableParagraphStyle>();
    style->setAlignment(alignment());
    style->setLineBreakMode(lineBreakMode());
    const Ref<NSFont> font =
        m_placeholderAttributed ? NSFont::systemFontOfSize(NSFont::systemFontSize()) : this->font();
    const auto shown =
        make<NSMutableAttributedString>(&NSAttributedString::initWithString_attributes, text,
                                        dictionary({{NSFontAttributeName(), font},
                                                    {NSForegroundColorAttributeName(), look::placeholder()},
                                                    {NSParagraphStyleAttributeName(), style->copy()}}));
    if (m_placeholderAttributed) {
        m_placeholderAttributed->enumerateAttributesInRange_options_usingBlock(
            {0, text->length()}, 0, [&shown](NSDictionary* attributes, NSRange range, bool&) {
                shown->addAttributes_range(attributes, range);
            });
    }
    return cast<NSAttributedString>(shown->copy());
}

Ref<NSColor> NSTextFieldCell::colorOfText() const {
    return textColor();
}

void NSTextFieldCell::drawBackground(NSRect frame) const {
    const Ref<NSGraphicsContext> context = NSGraphicsContext::currentContext();
    const Ref<NSColor> color = backgroundColor();
    if (!context || !m_drawsBackground || !color) {
        return;
    }
    const double radius = isBezeled() ? bezelRadius() : 0;
    if (radius > 0) {
        context->canvas().fillRoundedRect(frame, radius, radius, color);
    } else {
        context->canvas().fillRect(frame, color, NSCompositingOperationSourceOver);
    }
}

double NSTextFieldCell::bezelRadius() const {
    return m_bezelStyle == NSTextFieldRoundedBezel ? 4 : 0;
}

// NSSecureTextFieldCell

ZR_DEFINE_CLASS(NSSecureTextFieldCell) {}

NSSecureTextFieldCell::NSSecureTextFieldCell() = default;

NSSecureTextFieldCell::~NSSecureTextFieldCell() {
    discardValues();
}

void NSSecureTextFieldCell::discard(id value) {
    if (cast<NSString>(value)) {
        detail::overwriteSoleString(cast<NSString>(std::move(value)));
    }
}

Ref<NSAttributedString> NSSecureTextFieldCell::attributedStringValue() const {
    const std::u16string bullets(stringValue()->length(), u'\u2022');
    return dressed(make<NSAttributedString>(&NSAttributedString::initWithString, NSString::fromUtf16(bullets)));
}

bool NSSecureTextFieldCell::editsSecretly() const {
    return true;
}

void NSSecureTextFieldCell::endEditing(NSText* editor) {
    const Ref<NSText> kept(editor);
    NSTextFieldCell::endEditing(editor);
    if (editor) {
        editor->setString(nullptr);
    }
}

} // namespace zr
