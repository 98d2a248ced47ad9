#include <zrbasic/ui/text_field.h>

#include <zrbasic/platform/appkit/layer.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>

namespace zr {
namespace {

constexpr double standardBorderWidth = 1;
constexpr double standardCornerRadius = 3;
constexpr double standardPadding = 5;

template <class Field>
void giveStandardLook(Field* field) {
    field->setEditable(true);
    field->setBordered(false);
    field->setBezelStyle(NSTextFieldSquareBezel);
    field->setTextColor(NSColor::blackColor());
    field->setBackgroundColor(NSColor::clearColor());
    field->setUsesSingleLineMode(true);
    field->setLineBreakMode(NSLineBreakByTruncatingTail);
    field->setWantsLayer(true);
    field->setBorderWidth(standardBorderWidth);
    field->setBorderColor(NSColor::lightGrayColor());
    field->setCornerRadius(standardCornerRadius);
    field->setFocusRingType(NSFocusRingTypeNone);
}

void setLayerBorderColor(NSView* view, NSColor* color) {
    if (const Ref<CALayer> layer = view->layer()) {
        layer->setBorderColor(color);
    }
}

void setLayerBorderWidth(NSView* view, double width) {
    if (const Ref<CALayer> layer = view->layer()) {
        layer->setBorderWidth(width);
    }
}

void setLayerCornerRadius(NSView* view, double radius) {
    if (const Ref<CALayer> layer = view->layer()) {
        layer->setCornerRadius(radius);
    }
}

void setInsertionPointColorFor(NSView* field, NSColor* color) {
    const Ref<NSWindow> window = field->window();
    const Ref<NSText> editor = send<Ref<NSText>>(window, "fieldEditor:forObject:"_sel, true, field);
    if (auto* const textView = cast<NSTextView>(editor)) {
        textView->setInsertionPointColor(color);
    }
}

/// With the alignment and line-break mode that the field has now; without a font where that is null.
Ref<NSAttributedString> coloredPlaceholder(NSTextField* field, NSString* text, NSColor* color, NSFont* font) {
    const auto style = make<NSMutableParagraphStyle>();
    style->setAlignment(field->alignment());
    style->setLineBreakMode(field->lineBreakMode());
    const auto attributes = make<NSMutableDictionary>();
    attributes->setObject_forKey(color, NSForegroundColorAttributeName());
    attributes->setObject_forKey(style->copy(), NSParagraphStyleAttributeName());
    if (font) {
        attributes->setObject_forKey(font, NSFontAttributeName());
    }
    return make<NSAttributedString>(&NSAttributedString::initWithString_attributes, text, attributes);
}

} // namespace

ZR_DEFINE_CLASS(ZRXTextField) {
    is.classMethod<&ZRXTextField::cellClass>("cellClass");
    is.method<&ZRXTextField::setupInitialize>("setupInitialize");
    is.method<&ZRXTextField::borderColor>("borderColor");
    is.method<&ZRXTextField::setBorderColor>("setBorderColor:");
    is.method<&ZRXTextField::borderWidth>("borderWidth");
    is.method<&ZRXTextField::setBorderWidth>("setBorderWidth:");
    is.method<&ZRXTextField::cornerRadius>("cornerRadius");
    is.method<&ZRXTextField::setCornerRadius>("setCornerRadius:");
    is.method<&ZRXTextField::placeholderColor>("placeholderColor");
    is.method<&ZRXTextField::setPlaceholderColor>("setPlaceholderColor:");
    is.method<&ZRXTextField::xPadding>("xPadding");
    is.method<&ZRXTextField::setXPadding>("setXPadding:");
    is.method<&ZRXTextField::cursorColor>("cursorColor");
    is.method<&ZRXTextField::setCursorColor>("setCursorColor:");
    is.method<&ZRXTextField::setCustomizeCursorColor>("setCustomizeCursorColor:");
    is.method<&ZRXTextField::highlightedBorderColor>("highlightedBorderColor");
    is.method<&ZRXTextField::setHighlightedBorderColor>("setHighlightedBorderColor:");
    is.method<&ZRXTextField::xDelegate>("xDelegate");
    is.method<&ZRXTextField::setXDelegate>("setXDelegate:");
}

ZRXTextField::ZRXTextField() = default;
ZRXTextField::~ZRXTextField() = default;

Class* ZRXTextField::cellClass() {
    return ZRXTextFieldCell::classObject();
}

id ZRXTextField::initWithFrame(NSRect frame) {
    NSTextField::initWithFrame(frame);
    send<void>(this, "setupInitialize"_sel);
    return id(this);
}

void ZRXTextField::setupInitialize() {
    giveStandardLook(this);
    setXPadding(standardPadding);
}

void ZRXTextField::setBorderColor(NSColor* color) {
    m_borderColor = Ref<NSColor>(color);
    setLayerBorderColor(this, color);
}

void ZRXTextField::setBorderWidth(double width) {
    m_borderWidth = width;
    setLayerBorderWidth(this, width);
}

void ZRXTextField::setCornerRadius(double radius) {
    m_cornerRadius = radius;
    setLayerCornerRadius(this, radius);
}

void ZRXTextField::setPlaceholderColor(NSColor* color) {
    m_placeholderColor = Ref<NSColor>(color);
    const Ref<NSString> text = placeholderString();
    if (color && text) {
        setPlaceholderAttributedString(coloredPlaceholder(this, text, color, font()));
    }
}

void ZRXTextField::setPlaceholderString(NSString* string) {
    NSTextField::setPlaceholderString(string);
    send<void>(this, "setPlaceholderColor:"_sel, placeholderColor());
}

void ZRXTextField::setXPadding(double padding) {
    m_xPadding = padding;
    if (auto* const paddedCell = cast<ZRXTextFieldCell>(cell().get())) {
        paddedCell->setXPadding(padding);
    }
}

void ZRXTextField::setCursorColor(NSColor* color) {
    m_cursorColor = Ref<NSColor>(color);
}

void ZRXTextField::setCustomizeCursorColor(NSColor* color) {
    setInsertionPointColorFor(this, color);
}

void ZRXTextField::setHighlightedBorderColor(NSColor* color) {
    m_highlightedBorderColor = Ref<NSColor>(color);
}

void ZRXTextField::setXDelegate(NSObject* delegate) {
    m_xDelegate = Weak<NSObject>(delegate);
}

bool ZRXTextField::acceptsFirstMouse(NSEvent*) {
    return true;
}

void ZRXTextField::viewDidMoveToWindow() {
    NSTextField::viewDidMoveToWindow();
    if (m_cursorColor) {
        send<void>(this, "setCustomizeCursorColor:"_sel, m_cursorColor);
    }
}

bool ZRXTextField::becomeFirstResponder() {
    const Ref<ZRXTextField> self(this);
    const SEL told = "xTextFieldDidBecomeFirstResponder"_sel;
    const bool becomes = NSTextField::becomeFirstResponder();
    // The delegate is asked and the other one is told; whoever wants to hear of it is both.
    const id asked = delegate();
    if (asked && asked->respondsToSelector(told)) {
        const id listener = xDelegate();
        if (listener && listener->respondsToSelector(told)) {
            send<void>(listener, told);
        }
    }
    if (m_highlightedBorderColor) {
        setLayerBorderColor(this, m_highlightedBorderColor);
    }
    return becomes;
}

void ZRXTextField::textDidEndEditing(NSNotification* notification) {
    const Ref<ZRXTextField> self(this);
    NSTextField::textDidEndEditing(notification);
    if (m_highlightedBorderColor) {
        setLayerBorderColor(this, m_borderColor);
    }
}

ZR_DEFINE_CLASS(ZRXSecureTextField) {
    is.classMethod<&ZRXSecureTextField::cellClass>("cellClass");
    is.method<&ZRXSecureTextField::setupInitialize>("setupInitialize");
    is.method<&ZRXSecureTextField::borderColor>("borderColor");
    is.method<&ZRXSecureTextField::setBorderColor>("setBorderColor:");
    is.method<&ZRXSecureTextField::borderWidth>("borderWidth");
    is.method<&ZRXSecureTextField::setBorderWidth>("setBorderWidth:");
    is.method<&ZRXSecureTextField::cornerRadius>("cornerRadius");
    is.method<&ZRXSecureTextField::setCornerRadius>("setCornerRadius:");
    is.method<&ZRXSecureTextField::placeholderColor>("placeholderColor");
    is.method<&ZRXSecureTextField::setPlaceholderColor>("setPlaceholderColor:");
    is.method<&ZRXSecureTextField::cursorColor>("cursorColor");
    is.method<&ZRXSecureTextField::setCursorColor>("setCursorColor:");
    is.method<&ZRXSecureTextField::setCustomizeCursorColor>("setCustomizeCursorColor:");
    is.method<&ZRXSecureTextField::highlightedBorderColor>("highlightedBorderColor");
    is.method<&ZRXSecureTextField::setHighlightedBorderColor>("setHighlightedBorderColor:");
}

ZRXSecureTextField::ZRXSecureTextField() = default;
ZRXSecureTextField::~ZRXSecureTextField() = default;

Class* ZRXSecureTextField::cellClass() {
    return ZRXSecureTextFieldCell::classObject();
}

id ZRXSecureTextField::initWithFrame(NSRect frame) {
    NSSecureTextField::initWithFrame(frame);
    send<void>(this, "setupInitialize"_sel);
    return id(this);
}

void ZRXSecureTextField::setupInitialize() {
    giveStandardLook(this);
}

void ZRXSecureTextField::setBorderColor(NSColor* color) {
    m_borderColor = Ref<NSColor>(color);
    setLayerBorderColor(this, color);
}

void ZRXSecureTextField::setBorderWidth(double width) {
    m_borderWidth = width;
    setLayerBorderWidth(this, width);
}

void ZRXSecureTextField::setCornerRadius(double radius) {
    m_cornerRadius = radius;
    setLayerCornerRadius(this, radius);
}

void ZRXSecureTextField::setPlaceholderColor(NSColor* color) {
    m_placeholderColor = Ref<NSColor>(color);
    if (color) {
        // Without a font: placeholders of passwords are of one size everywhere. Without a text this raises.
        setPlaceholderAttributedString(coloredPlaceholder(this, placeholderString(), color, nullptr));
    }
}

void ZRXSecureTextField::setCursorColor(NSColor* color) {
    m_cursorColor = Ref<NSColor>(color);
}

void ZRXSecureTextField::setCustomizeCursorColor(NSColor* color) {
    setInsertionPointColorFor(this, color);
}

void ZRXSecureTextField::setHighlightedBorderColor(NSColor* color) {
    m_highlightedBorderColor = Ref<NSColor>(color);
}

bool ZRXSecureTextField::acceptsFirstMouse(NSEvent*) {
    return true;
}

void ZRXSecureTextField::viewDidMoveToWindow() {
    NSSecureTextField::viewDidMoveToWindow();
    if (m_cursorColor) {
        send<void>(this, "setCustomizeCursorColor:"_sel, m_cursorColor);
    }
}

bool ZRXSecureTextField::becomeFirstResponder() {
    const Ref<ZRXSecureTextField> self(this);
    // Before the keyboard is asked for, so that it stands when that is refused, too.
    if (m_highlightedBorderColor) {
        setLayerBorderColor(this, m_highlightedBorderColor);
    }
    return NSSecureTextField::becomeFirstResponder();
}

void ZRXSecureTextField::textDidEndEditing(NSNotification* notification) {
    const Ref<ZRXSecureTextField> self(this);
    NSSecureTextField::textDidEndEditing(notification);
    if (m_highlightedBorderColor) {
        setLayerBorderColor(this, m_borderColor);
    }
}

} // namespace zr
