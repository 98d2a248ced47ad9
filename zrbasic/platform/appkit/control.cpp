#include <zrbasic/platform/appkit/control.h>

#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/window.h>

#include <utility>

namespace zr {

ZR_DEFINE_CLASS(NSControl) {
    is.classMethod<&NSControl::cellClass>("cellClass");
    is.method<&NSControl::cell>("cell");
    is.method<&NSControl::setCell>("setCell:");
    is.method<&NSControl::objectValue>("objectValue");
    is.method<&NSControl::setObjectValue>("setObjectValue:");
    is.method<&NSControl::stringValue>("stringValue");
    is.method<&NSControl::setStringValue>("setStringValue:");
    is.method<&NSControl::attributedStringValue>("attributedStringValue");
    is.method<&NSControl::setAttributedStringValue>("setAttributedStringValue:");
    is.method<&NSControl::integerValue>("integerValue");
    is.method<&NSControl::setIntegerValue>("setIntegerValue:");
    is.method<&NSControl::doubleValue>("doubleValue");
    is.method<&NSControl::setDoubleValue>("setDoubleValue:");
    is.method<&NSControl::formatter>("formatter");
    is.method<&NSControl::setFormatter>("setFormatter:");
    is.method<&NSControl::font>("font");
    is.method<&NSControl::setFont>("setFont:");
    is.method<&NSControl::alignment>("alignment");
    is.method<&NSControl::setAlignment>("setAlignment:");
    is.method<&NSControl::lineBreakMode>("lineBreakMode");
    is.method<&NSControl::setLineBreakMode>("setLineBreakMode:");
    is.method<&NSControl::usesSingleLineMode>("usesSingleLineMode");
    is.method<&NSControl::setUsesSingleLineMode>("setUsesSingleLineMode:");
    is.method<&NSControl::isEnabled>("isEnabled");
    is.method<&NSControl::setEnabled>("setEnabled:");
    is.method<&NSControl::setTag>("setTag:");
    is.method<&NSControl::target>("target");
    is.method<&NSControl::setTarget>("setTarget:");
    is.method<&NSControl::action>("action");
    is.method<&NSControl::setAction>("setAction:");
    is.method<&NSControl::sendAction_to>("sendAction:to:");
    is.method<&NSControl::currentEditor>("currentEditor");
    is.method<&NSControl::validateEditing>("validateEditing");
    is.method<&NSControl::abortEditing>("abortEditing");
    is.method<&NSControl::sizeToFit>("sizeToFit");
}

Ref<NSString> NSControlTextDidBeginEditingNotification() {
    return "NSControlTextDidBeginEditingNotification"_ns;
}

Ref<NSString> NSControlTextDidChangeNotification() {
    return "NSControlTextDidChangeNotification"_ns;
}

Ref<NSString> NSControlTextDidEndEditingNotification() {
    return "NSControlTextDidEndEditingNotification"_ns;
}

NSControl::NSControl() = default;

NSControl::~NSControl() {
    if (m_cell) {
        m_cell->setControlView(nullptr);
    }
}

id NSControl::initWithFrame(NSRect frame) {
    NSView::initWithFrame(frame);
    if (Class* const cellClass = send<Class*>(isa(), "cellClass"_sel)) {
        const id fresh = class_createInstance(cellClass);
        setCell(cast<NSCell>(send<id>(fresh, "init"_sel)).get());
    }
    return id(this);
}

Class* NSControl::cellClass() {
    return nullptr;
}

void NSControl::setCell(NSCell* cell) {
    if (m_cell == cell) {
        return;
    }
    abortEditing();
    if (m_cell) {
        m_cell->setControlView(nullptr);
    }
    m_cell = Ref<NSCell>(cell);
    if (cell) {
        cell->setControlView(this);
    }
    cellChanged();
}

// What the cell holds

void NSControl::takeEdits() const {
    if (currentEditor()) {
        send<void>(const_cast<NSControl*>(this), "validateEditing"_sel);
    }
}

void NSControl::showValueInEditor() {
    const Ref<NSText> editor = currentEditor();
    if (!editor || !m_cell) {
        return;
    }
    const Ref<NSString> text = m_cell->editingStringValue();
    if (!editor->string()->isEqualToString(text)) {
        editor->setString(text);
    }
}

id NSControl::objectValue() const {
    takeEdits();
    return m_cell ? m_cell->objectValue() : id();
}

void NSControl::setObjectValue(NSObject* value) {
    if (m_cell) {
        m_cell->setObjectValue(value);
        showValueInEditor();
    }
}

Ref<NSString> NSControl::stringValue() const {
    takeEdits();
    return m_cell ? m_cell->stringValue() : ""_ns;
}

void NSControl::setStringValue(NSString* string) {
    if (m_cell) {
        m_cell->setStringValue(string);
        showValueInEditor();
    }
}

Ref<NSAttributedString> NSControl::attributedStringValue() const {
    takeEdits();
    return m_cell ? m_cell->attributedStringValue() : make<NSAttributedString>();
}

void NSControl::setAttributedStringValue(NSAttributedString* string) {
    if (m_cell) {
        m_cell->setAttributedStringValue(string);
        showValueInEditor();
    }
}

NSInteger NSControl::integerValue() const {
    takeEdits();
    return m_cell ? m_cell->integerValue() : 0;
}

void NSControl::setIntegerValue(NSInteger value) {
    if (m_cell) {
        m_cell->setIntegerValue(value);
        showValueInEditor();
    }
}

double NSControl::doubleValue() const {
    takeEdits();
    return m_cell ? m_cell->doubleValue() : 0;
}

void NSControl::setDoubleValue(double value) {
    if (m_cell) {
        m_cell->setDoubleValue(value);
        showValueInEditor();
    }
}

Ref<NSFormatter> NSControl::formatter() const {
    return m_cell ? m_cell->formatter() : nullptr;
}

void NSControl::setFormatter(NSFormatter* formatter) {
    if (m_cell) {
        m_cell->setFormatter(formatter);
    }
}

Ref<NSFont> NSControl::font() const {
    return m_cell ? m_cell->font() : nullptr;
}

void NSControl::setFont(NSFont* font) {
    if (m_cell) {
        m_cell->setFont(font);
    }
}

NSTextAlignment NSControl::alignment() const {
    return m_cell ? m_cell->alignment() : NSTextAlignmentNatural;
}

void NSControl::setAlignment(NSTextAlignment alignment) {
    if (m_cell) {
        m_cell->setAlignment(alignment);
    }
}

NSLineBreakMode NSControl::lineBreakMode() const {
    return m_cell ? m_cell->lineBreakMode() : NSLineBreakByWordWrapping;
}

void NSControl::setLineBreakMode(NSLineBreakMode mode) {
    if (m_cell) {
        m_cell->setLineBreakMode(mode);
    }
}

bool NSControl::usesSingleLineMode() const {
    return m_cell && m_cell->usesSingleLineMode();
}

void NSControl::setUsesSingleLineMode(bool single) {
    if (m_cell) {
        m_cell->setUsesSingleLineMode(single);
    }
}

bool NSControl::isEnabled() const {
    return !m_cell || m_cell->isEnabled();
}

void NSControl::setEnabled(bool enabled) {
    if (m_cell) {
        m_cell->setEnabled(enabled);
        tellPeer(ViewChange::Enabled);
    }
}

NSInteger NSControl::tag() const {
    return m_cell ? m_cell->tag() : 0;
}

void NSControl::setTag(NSInteger tag) {
    if (m_cell) {
        m_cell->setTag(tag);
    }
}

// Actions

id NSControl::target() const {
    return m_cell ? m_cell->target() : id();
}

void NSControl::setTarget(NSObject* target) {
    if (m_cell) {
        m_cell->setTarget(target);
    }
}

SEL NSControl::action() const {
    return m_cell ? m_cell->action() : SEL();
}

void NSControl::setAction(SEL action) {
    if (m_cell) {
        m_cell->setAction(action);
    }
}

bool NSControl::sendAction_to(SEL action, NSObject* target) {
    if (!action) {
        return false;
    }
    const Ref<NSControl> self(this);
    if (target) {
        const id kept(target);
        if (!target->respondsToSelector(action)) {
            return false;
        }
        send<void>(target, action, this);
        return true;
    }
    const Ref<NSWindow> window = this->window();
    Ref<NSResponder> first = window ? window->firstResponder() : nullptr;
    if (!first || first == window) {
        first = self;
    }
    return first->tryToPerform_with(action, this) ||
           NSApplication::sharedApplication()->tryToPerform_with(action, this);
}

// Editing

Ref<NSText> NSControl::currentEditor() const {
    auto* const self = const_cast<NSControl*>(this);
    const Ref<NSWindow> window = this->window();
    if (!window) {
        return nullptr;
    }
    Ref<NSText> editor = send<Ref<NSText>>(window, "fieldEditor:forObject:"_sel, false, self);
    return editor && editor->superview() == self && editor->delegate() == self ? editor : nullptr;
}

void NSControl::validateEditing() {
    const Ref<NSText> editor = currentEditor();
    // A formatter that reads the field's value while it is asked for it must not be asked again.
    if (!editor || !m_cell || std::exchange(m_isValidating, true)) {
        return;
    }
    const Ref<NSControl> self(this);
    const struct Validating {
        bool& flag;
        ~Validating() { flag = false; }
    } validating{m_isValidating};
    const Ref<NSCell> cell = m_cell;
    const Ref<NSString> text = editor->string();
    // A text that nobody has touched says less than the value that it was made from.
    if (!text->isEqualToString(cell->editingStringValue())) {
        cell->takeText(text);
    }
}

bool NSControl::abortEditing() {
    const Ref<NSText> editor = currentEditor();
    if (!editor || !m_cell) {
        return false;
    }
    const Ref<NSControl> self(this);
    const Ref<NSCell> cell = m_cell;
    cell->restoreValue();
    send<void>(cell, "endEditing:"_sel, editor);
    cellChanged();
    return true;
}

void NSControl::setFrameSize(NSSize size) {
    const bool isOther = frame().size != size;
    NSView::setFrameSize(size);
    if (isOther) {
        placeEditor();
    }
}

void NSControl::placeEditor() {
    const Ref<NSText> editor = currentEditor();
    if (!editor || !m_cell) {
        return;
    }
    const NSRange selection = editor->selectedRange();
    send<void>(m_cell, "selectWithFrame:inView:editor:delegate:start:length:"_sel, bounds(), this, editor, this,
               static_cast<NSInteger>(selection.location), static_cast<NSInteger>(selection.length));
}

// The view

NSSize NSControl::intrinsicContentSize() const {
    return m_cell ? m_cell->cellSize() : NSView::intrinsicContentSize();
}

void NSControl::sizeToFit() {
    if (m_cell) {
        setFrameSize(m_cell->cellSize());
    }
}

void NSControl::drawRect(NSRect) {
    send<void>(m_cell, "drawWithFrame:inView:"_sel, bounds(), this);
}

bool NSControl::acceptsFirstResponder() const {
    return m_cell && m_cell->isEnabled();
}

void NSControl::cellChanged() {
    send<void>(this, "setNeedsDisplay:"_sel, true);
    tellPeer(ViewChange::Content);
    send<void>(this, "invalidateIntrinsicContentSize"_sel);
    placeEditor();
}

} // namespace zr
