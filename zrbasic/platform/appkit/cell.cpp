#include <zrbasic/platform/appkit/cell.h>

#include <zrbasic/platform/appkit/control.h>
#include <zrbasic/platform/appkit/control_look_p.h>
#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/appkit/graphics_context.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/mutable_attributed_string.h>
#include <zrbasic/platform/foundation/number.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace zr {
namespace {

/// How far inside a border or bezel the text stands.
constexpr double edge = 2;

} // namespace

ZR_DEFINE_CLASS(NSCell) {
    is.method<&NSCell::initTextCell>("initTextCell:");
    is.method<&NSCell::controlView>("controlView");
    is.method<&NSCell::setControlView>("setControlView:");
    is.method<&NSCell::objectValue>("objectValue");
    is.method<&NSCell::setObjectValue>("setObjectValue:");
    is.method<&NSCell::stringValue>("stringValue");
    is.method<&NSCell::setStringValue>("setStringValue:");
    is.method<&NSCell::attributedStringValue>("attributedStringValue");
    is.method<&NSCell::setAttributedStringValue>("setAttributedStringValue:");
    is.method<&NSCell::integerValue>("integerValue");
    is.method<&NSCell::setIntegerValue>("setIntegerValue:");
    is.method<&NSCell::doubleValue>("doubleValue");
    is.method<&NSCell::setDoubleValue>("setDoubleValue:");
    is.method<&NSCell::formatter>("formatter");
    is.method<&NSCell::setFormatter>("setFormatter:");
    is.method<&NSCell::font>("font");
    is.method<&NSCell::setFont>("setFont:");
    is.method<&NSCell::alignment>("alignment");
    is.method<&NSCell::setAlignment>("setAlignment:");
    is.method<&NSCell::lineBreakMode>("lineBreakMode");
    is.method<&NSCell::setLineBreakMode>("setLineBreakMode:");
    is.method<&NSCell::usesSingleLineMode>("usesSingleLineMode");
    is.method<&NSCell::setUsesSingleLineMode>("setUsesSingleLineMode:");
    is.method<&NSCell::isEnabled>("isEnabled");
    is.method<&NSCell::setEnabled>("setEnabled:");
    is.method<&NSCell::isEditable>("isEditable");
    is.method<&NSCell::setEditable>("setEditable:");
    is.method<&NSCell::isSelectable>("isSelectable");
    is.method<&NSCell::setSelectable>("setSelectable:");
    is.method<&NSCell::isBordered>("isBordered");
    is.method<&NSCell::setBordered>("setBordered:");
    is.method<&NSCell::isBezeled>("isBezeled");
    is.method<&NSCell::setBezeled>("setBezeled:");
    is.method<&NSCell::isHighlighted>("isHighlighted");
    is.method<&NSCell::setHighlighted>("setHighlighted:");
    is.method<&NSCell::state>("state");
    is.method<&NSCell::setState>("setState:");
    is.method<&NSCell::tag>("tag");
    is.method<&NSCell::setTag>("setTag:");
    is.method<&NSCell::target>("target");
    is.method<&NSCell::setTarget>("setTarget:");
    is.method<&NSCell::action>("action");
    is.method<&NSCell::setAction>("setAction:");
    is.method<&NSCell::cellSize>("cellSize");
    is.method<&NSCell::drawingRectForBounds>("drawingRectForBounds:");
    is.method<&NSCell::drawWithFrame_inView>("drawWithFrame:inView:");
    is.method<&NSCell::drawInteriorWithFrame_inView>("drawInteriorWithFrame:inView:");
    is.method<&NSCell::editWithFrame_inView_editor_delegate_event>("editWithFrame:inView:editor:delegate:event:");
    is.method<&NSCell::selectWithFrame_inView_editor_delegate_start_length>(
        "selectWithFrame:inView:editor:delegate:start:length:");
    is.method<&NSCell::setUpFieldEditorAttributes>("setUpFieldEditorAttributes:");
    is.method<&NSCell::endEditing>("endEditing:");
}

NSCell::NSCell() : m_value(""_ns) {}
NSCell::~NSCell() = default;

id NSCell::init() {
    return initTextCell(""_ns);
}

id NSCell::initTextCell(NSString* string) {
    setStringValue(string);
    return id(this);
}

// The value

void NSCell::discard(id) {}

void NSCell::discardValues() {
    m_attributedValue = nullptr;
    m_attributedValueBefore = nullptr;
    discard(std::exchange(m_value, nullptr));
    discard(std::exchange(m_valueBefore, nullptr));
}

void NSCell::store(id value, Ref<NSAttributedString> attributedValue) {
    m_attributedValue = std::move(attributedValue);
    // Only now: whatever its end sets off finds the new value.
    discard(std::exchange(m_value, std::move(value)));
}

void NSCell::setValue(id value, Ref<NSAttributedString> attributedValue) {
    store(std::move(value), std::move(attributedValue));
    if (m_isEditing) {
        // Set by the program and not by the user: giving up the edits comes back to this.
        m_attributedValueBefore = m_attributedValue;
        discard(std::exchange(m_valueBefore, m_value));
    }
    changed();
}

void NSCell::restoreValue() {
    if (m_isEditing) {
        store(m_valueBefore, m_attributedValueBefore);
    }
}

void NSCell::setObjectValue(NSObject* value) {
    if (auto* const attributed = cast<NSAttributedString>(value)) {
        setAttributedStringValue(attributed);
        return;
    }
    const auto* const string = cast<NSString>(value);
    setValue(string ? string->copy() : id(value), nullptr);
}

Ref<NSString> NSCell::textOf(NSObject* value) const {
    if (!value) {
        return ""_ns;
    }
    if (auto* const attributed = cast<NSAttributedString>(value)) {
        return attributed->string();
    }
    if (m_formatter) {
        if (Ref<NSString> text = send<Ref<NSString>>(m_formatter, "stringForObjectValue:"_sel, value)) {
            return text;
        }
    }
    auto* const string = cast<NSString>(value);
    return string ? Ref<NSString>(string) : value->description();
}

Ref<NSString> NSCell::stringValue() const {
    return textOf(m_value);
}

Ref<NSString> NSCell::editingStringValue() const {
    if (m_formatter && m_value && !m_attributedValue) {
        if (Ref<NSString> text = send<Ref<NSString>>(m_formatter, "editingStringForObjectValue:"_sel, m_value)) {
            return text;
        }
    }
    return textOf(m_value);
}

bool NSCell::takeText(NSString* string) {
    Ref<NSString> text = string ? Ref<NSString>(cast<NSString>(string->copy())) : ""_ns;
    if (!m_formatter) {
        store(std::move(text), nullptr);
        return true;
    }
    const Ref<NSFormatter> formatter = m_formatter;
    id object;
    Ref<NSString> error;
    if (!send<bool>(formatter, "getObjectValue:forString:errorDescription:"_sel, &object, text, &error)) {
        return false;
    }
    text = nullptr;
    store(std::move(object), nullptr);
    return true;
}

void NSCell::setStringValue(NSString* string) {
    if (takeText(string)) {
        setValue(m_value, nullptr);
    }
}

Ref<NSAttributedString> NSCell::attributedStringValue() const {
    if (m_attributedValue) {
        return dressed(m_attributedValue);
    }
    return dressed(make<NSAttributedString>(&NSAttributedString::initWithString, stringValue()));
}

void NSCell::setAttributedStringValue(NSAttributedString* string) {
    if (!string) {
        setStringValue(nullptr);
        return;
    }
    const auto kept = cast<NSAttributedString>(string->copy());
    setValue(kept, kept);
}

NSInteger NSCell::integerValue() const {
    const auto* const number = cast<NSNumber>(m_value);
    return number ? number->integerValue() : stringValue()->integerValue();
}

void NSCell::setIntegerValue(NSInteger value) {
    setObjectValue(box(value));
}

double NSCell::doubleValue() const {
    const auto* const number = cast<NSNumber>(m_value);
    return number ? number->doubleValue() : stringValue()->doubleValue();
}

void NSCell::setDoubleValue(double value) {
    setObjectValue(box(value));
}

// The look

void NSCell::changed() {
    const Ref<NSView> view = controlView();
    auto* const control = cast<NSControl>(view);
    if (control && control->cell() == this) {
        control->cellChanged();
    } else if (view) {
        send<void>(view, "setNeedsDisplay:"_sel, true);
    }
}

void NSCell::setFormatter(NSFormatter* formatter) {
    m_formatter = Ref<NSFormatter>(formatter);
    changed();
}

void NSCell::setFont(NSFont* font) {
    m_font = font ? Ref<NSFont>(font) : NSFont::systemFontOfSize(NSFont::systemFontSize());
    changed();
}

void NSCell::setAlignment(NSTextAlignment alignment) {
    m_alignment = alignment;
    changed();
}

void NSCell::setLineBreakMode(NSLineBreakMode mode) {
    m_lineBreakMode = mode;
    changed();
}

void NSCell::setUsesSingleLineMode(bool single) {
    m_usesSingleLineMode = single;
    changed();
}

void NSCell::setEnabled(bool enabled) {
    m_isEnabled = enabled;
    changed();
}

void NSCell::setEditable(bool editable) {
    m_isEditable = editable;
    changed();
}

void NSCell::setSelectable(bool selectable) {
    m_isSelectable = selectable;
    changed();
}

void NSCell::setBordered(bool bordered) {
    m_isBordered = bordered;
    m_isBezeled = false;
    changed();
}

void NSCell::setBezeled(bool bezeled) {
    m_isBezeled = bezeled;
    m_isBordered = false;
    changed();
}

void NSCell::setHighlighted(bool highlighted) {
    m_isHighlighted = highlighted;
    changed();
}

void NSCell::setState(NSInteger state) {
    m_state = state;
    changed();
}

id NSCell::target() const {
    return nullptr;
}

void NSCell::setTarget(NSObject*) {}

SEL NSCell::action() const {
    return {};
}

void NSCell::setAction(SEL) {}

Ref<NSColor> NSCell::colorOfText() const {
    return look::plainText();
}

Ref<NSAttributedString> NSCell::textForEmpty() const {
    return nullptr;
}

double NSCell::bezelRadius() const {
    return 0;
}

bool NSCell::editsSecretly() const {
    return false;
}

Ref<NSAttributedString> NSCell::dressed(NSAttributedString* text) const {
    const auto style = make<NSMutableParagraphStyle>();
    style->setAlignment(m_alignment);
    style->setLineBreakMode(m_lineBreakMode);
    const auto result = make<NSMutableAttributedString>(&NSAttributedString::initWithString_attributes, text->string(),
                                                        dictionary({{NSFontAttributeName(), m_font},
                                                                    {NSForegroundColorAttributeName(), colorOfText()},
                                                                    {NSParagraphStyleAttributeName(), style->copy()}}));
    text->enumerateAttributesInRange_options_usingBlock(
        {0, text->length()}, 0,
        [&result](NSDictionary* attributes, NSRange range, bool&) { result->addAttributes_range(attributes, range); });
    return cast<NSAttributedString>(result->copy());
}

NSSize NSCell::cellSize() const {
    Toolkit& toolkit = currentToolkit();
    const Ref<NSAttributedString> text = attributedStringValue();
    const NSSize natural = toolkit.naturalSizeOfText(text, 0);
    const FontMetrics metrics = toolkit.metricsOfFont(m_font);
    const double line = metrics.ascender - metrics.descender + metrics.leading;
    const NSRect inside = drawingRectForBounds(NSZeroRect);
    return {std::ceil(natural.width) - inside.size.width,
            std::ceil(std::max(natural.height, line)) - inside.size.height};
}

NSRect NSCell::drawingRectForBounds(NSRect bounds) const {
    return m_isBordered || m_isBezeled ? NSInsetRect(bounds, edge, edge) : bounds;
}

// Drawing

void NSCell::drawBackground(NSRect) const {}

void NSCell::drawWithFrame_inView(NSRect frame, NSView* view) {
    const Ref<NSGraphicsContext> context = NSGraphicsContext::currentContext();
    if (!context || NSIsEmptyRect(frame)) {
        return;
    }
    Canvas& canvas = context->canvas();
    const double radius = m_isBezeled ? bezelRadius() : 0;
    if (m_isBezeled) {
        canvas.fillRoundedRect(frame, radius, radius, look::paper());
    }
    drawBackground(frame);
    if (m_isBordered || m_isBezeled) {
        canvas.strokeRoundedRect(frame, radius, 1, look::bezel());
    }
    send<void>(this, "drawInteriorWithFrame:inView:"_sel, frame, view);
}

namespace {

/// Half as opaque as it was, run by run.
Ref<NSAttributedString> dimmed(NSAttributedString* text) {
    const auto result = cast<NSMutableAttributedString>(text->mutableCopy());
    text->enumerateAttribute_inRange_options_usingBlock(
        NSForegroundColorAttributeName(), {0, text->length()}, 0, [&result](NSObject* value, NSRange range, bool&) {
            if (const auto* const color = cast<NSColor>(value)) {
                result->addAttribute_value_range(NSForegroundColorAttributeName(),
                                                 color->colorWithAlphaComponent(color->alphaComponent() / 2), range);
            }
        });
    return result;
}

} // namespace

void NSCell::drawInteriorWithFrame_inView(NSRect frame, NSView* view) {
    const Ref<NSGraphicsContext> context = NSGraphicsContext::currentContext();
    auto* const control = cast<NSControl>(view);
    // What is edited shows in the editor, which lies over it and is not opaque.
    if (!context || (control && control->cell() == this && control->currentEditor())) {
        return;
    }
    const NSRect inside = drawingRectForBounds(frame);
    if (NSIsEmptyRect(inside)) {
        return;
    }
    Ref<NSAttributedString> text = attributedStringValue();
    if (text->length() == 0) {
        text = textForEmpty();
    }
    if (text && text->length() > 0) {
        context->canvas().drawText(m_isEnabled ? text : dimmed(text), inside, m_usesSingleLineMode);
    }
}

// NSActionCell

ZR_DEFINE_CLASS(NSActionCell) {}

NSActionCell::NSActionCell() = default;
NSActionCell::~NSActionCell() = default;

id NSActionCell::target() const {
    return m_target.lock();
}

void NSActionCell::setTarget(NSObject* target) {
    m_target = Weak<NSObject>(target);
}

SEL NSActionCell::action() const {
    return m_action;
}

void NSActionCell::setAction(SEL action) {
    m_action = action;
}

} // namespace zr
