#include <zrbasic/platform/appkit/text_field.h>

#include <zrbasic/platform/appkit/delegate_telling_p.h>
#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/notification.h>
#include <zrbasic/platform/foundation/number.h>

namespace zr {
namespace {

NSTextMovement movementOf(NSNotification* notification) {
    const Ref<NSDictionary> userInfo = notification ? notification->userInfo() : nullptr;
    const id movement = userInfo ? userInfo->objectForKey(NSTextMovementKey()) : id();
    const auto* const number = cast<NSNumber>(movement);
    return number ? static_cast<NSTextMovement>(number->integerValue()) : NSTextMovementOther;
}

} // namespace

ZR_DEFINE_CLASS(NSTextField) {
    is.classMethod<&NSTextField::cellClass>("cellClass");
    is.method<&NSTextField::textColor>("textColor");
    is.method<&NSTextField::setTextColor>("setTextColor:");
    is.method<&NSTextField::backgroundColor>("backgroundColor");
    is.method<&NSTextField::setBackgroundColor>("setBackgroundColor:");
    is.method<&NSTextField::drawsBackground>("drawsBackground");
    is.method<&NSTextField::setDrawsBackground>("setDrawsBackground:");
    is.method<&NSTextField::isBordered>("isBordered");
    is.method<&NSTextField::setBordered>("setBordered:");
    is.method<&NSTextField::isBezeled>("isBezeled");
    is.method<&NSTextField::setBezeled>("setBezeled:");
    is.method<&NSTextField::bezelStyle>("bezelStyle");
    is.method<&NSTextField::setBezelStyle>("setBezelStyle:");
    is.method<&NSTextField::isEditable>("isEditable");
    is.method<&NSTextField::setEditable>("setEditable:");
    is.method<&NSTextField::isSelectable>("isSelectable");
    is.method<&NSTextField::setSelectable>("setSelectable:");
    is.classMethod<&NSTextField::labelWithString>("labelWithString:");
    is.method<&NSTextField::placeholderString>("placeholderString");
    is.method<&NSTextField::setPlaceholderString>("setPlaceholderString:");
    is.method<&NSTextField::placeholderAttributedString>("placeholderAttributedString");
    is.method<&NSTextField::setPlaceholderAttributedString>("setPlaceholderAttributedString:");
    is.method<&NSTextField::delegate>("delegate");
    is.method<&NSTextField::setDelegate>("setDelegate:");
    is.method<&NSTextField::selectText>("selectText:");
    is.method<&NSTextField::textShouldBeginEditing>("textShouldBeginEditing:");
    is.method<&NSTextField::textShouldEndEditing>("textShouldEndEditing:");
    is.method<&NSTextField::textDidBeginEditing>("textDidBeginEditing:");
    is.method<&NSTextField::textDidChange>("textDidChange:");
    is.method<&NSTextField::textDidEndEditing>("textDidEndEditing:");
    is.method<&NSTextField::textView_doCommandBySelector>("textView:doCommandBySelector:");
}

NSTextField::NSTextField() = default;
NSTextField::~NSTextField() = default;

id NSTextField::initWithFrame(NSRect frame) {
    NSControl::initWithFrame(frame);
    setEditable(true);
    setBezeled(true);
    setDrawsBackground(true);
    if (auto* const cell = fieldCell()) {
        cell->standOnPaper();
    }
    return id(this);
}

Class* NSTextField::cellClass() {
    return NSTextFieldCell::classObject();
}

Ref<NSTextField> NSTextField::labelWithString(NSString* string) {
    Ref<NSTextField> label = make<NSTextField>(&NSTextField::initWithFrame, NSZeroRect);
    label->setEditable(false);
    label->setSelectable(false);
    label->setBezeled(false);
    label->setDrawsBackground(false);
    label->setStringValue(string);
    label->sizeToFit();
    return label;
}

NSTextFieldCell* NSTextField::fieldCell() const {
    // The control keeps it.
    return cast<NSTextFieldCell>(cell().get());
}

// What the cell looks like

Ref<NSColor> NSTextField::textColor() const {
    return fieldCell() ? fieldCell()->textColor() : nullptr;
}

void NSTextField::setTextColor(NSColor* color) {
    if (auto* const cell = fieldCell()) {
        cell->setTextColor(color);
    }
}

Ref<NSColor> NSTextField::backgroundColor() const {
    return fieldCell() ? fieldCell()->backgroundColor() : nullptr;
}

void NSTextField::setBackgroundColor(NSColor* color) {
    if (auto* const cell = fieldCell()) {
        cell->setBackgroundColor(color);
    }
}

bool NSTextField::drawsBackground() const {
    return fieldCell() && fieldCell()->drawsBackground();
}

void NSTextField::setDrawsBackground(bool draws) {
    if (auto* const cell = fieldCell()) {
        cell->setDrawsBackground(draws);
    }
}

bool NSTextField::isBordered() const {
    return fieldCell() && fieldCell()->isBordered();
}

void NSTextField::setBordered(bool bordered) {
    if (auto* const cell = fieldCell()) {
        cell->setBordered(bordered);
    }
}

bool NSTextField::isBezeled() const {
    return fieldCell() && fieldCell()->isBezeled();
}

void NSTextField::setBezeled(bool bezeled) {
    if (auto* const cell = fieldCell()) {
        cell->setBezeled(bezeled);
    }
}

NSTextFieldBezelStyle NSTextField::bezelStyle() const {
    return fieldCell() ? fieldCell()->bezelStyle() : NSTextFieldSquareBezel;
}

void NSTextField::setBezelStyle(NSTextFieldBezelStyle style) {
    if (auto* const cell = fieldCell()) {
        cell->setBezelStyle(style);
    }
}

bool NSTextField::isEditable() const {
    return fieldCell() && fieldCell()->isEditable();
}

void NSTextField::setEditable(bool editable) {
    if (!editable) {
        endEditing();
    }
    if (auto* const cell = fieldCell()) {
        cell->setEditable(editable);
        tellPeer(ViewChange::Enabled);
    }
}

bool NSTextField::isSelectable() const {
    return fieldCell() && fieldCell()->isSelectable();
}

void NSTextField::setSelectable(bool selectable) {
    if (auto* const cell = fieldCell()) {
        cell->setSelectable(selectable);
        tellPeer(ViewChange::Enabled);
    }
}

void NSTextField::setEnabled(bool enabled) {
    if (!enabled) {
        endEditing();
    }
    NSControl::setEnabled(enabled);
}

void NSTextField::viewDidChangeEffectiveAppearance() {
    NSControl::viewDidChangeEffectiveAppearance();
    const Ref<NSText> editor = currentEditor();
    const Ref<NSCell> cell = this->cell();
    if (editor && cell) {
        send<Ref<NSText>>(cell, "setUpFieldEditorAttributes:"_sel, editor);
    }
}

Ref<NSString> NSTextField::placeholderString() const {
    return fieldCell() ? fieldCell()->placeholderString() : nullptr;
}

void NSTextField::setPlaceholderString(NSString* string) {
    if (auto* const cell = fieldCell()) {
        cell->setPlaceholderString(string);
        tellPeer(ViewChange::Accessibility);
    }
}

Ref<NSAttributedString> NSTextField::placeholderAttributedString() const {
    return fieldCell() ? fieldCell()->placeholderAttributedString() : nullptr;
}

void NSTextField::setPlaceholderAttributedString(NSAttributedString* string) {
    if (auto* const cell = fieldCell()) {
        cell->setPlaceholderAttributedString(string);
        tellPeer(ViewChange::Accessibility);
    }
}

NSSize NSTextField::intrinsicContentSize() const {
    const NSSize size = NSControl::intrinsicContentSize();
    return isEditable() ? NSSize{NSViewNoIntrinsicMetric, size.height} : size;
}

// How editing begins

bool NSTextField::acceptsFirstResponder() const {
    return isSelectable() && isEnabled();
}

bool NSTextField::becomeFirstResponder() {
    send<void>(this, "selectText:"_sel, nullptr);
    return currentEditor() != nullptr;
}

void NSTextField::selectText(NSObject*) {
    const Ref<NSTextField> self(this);
    const Ref<NSWindow> window = this->window();
    if (!window || !send<bool>(this, "acceptsFirstResponder"_sel)) {
        return;
    }
    if (const Ref<NSText> editor = currentEditor()) {
        editor->setSelectedRange({0, editor->string()->length()});
        return;
    }
    // Whoever is edited ends first, and whoever is told of that may move things about.
    const bool isFree = send<bool>(window, "makeFirstResponder:"_sel, nullptr);
    const Ref<NSCell> cell = this->cell();
    if (!isFree || window->firstResponder() != window || this->window() != window || !cell) {
        return;
    }
    const Ref<NSText> editor = send<Ref<NSText>>(window, "fieldEditor:forObject:"_sel, true, this);
    const auto length = static_cast<NSInteger>(cell->editingStringValue()->length());
    send<void>(cell, "selectWithFrame:inView:editor:delegate:start:length:"_sel, bounds(), this, editor, this,
               NSInteger{0}, length);
    send<void>(this, "setNeedsDisplay:"_sel, true);
}

void NSTextField::mouseDown(NSEvent* event) {
    const Ref<NSTextField> self(this);
    const Ref<NSWindow> window = this->window();
    if (!window || !send<bool>(this, "acceptsFirstResponder"_sel)) {
        NSControl::mouseDown(event);
        return;
    }
    if (!currentEditor()) {
        send<bool>(window, "makeFirstResponder:"_sel, this);
    }
    if (const Ref<NSText> editor = currentEditor()) {
        send<void>(cell(), "editWithFrame:inView:editor:delegate:event:"_sel, bounds(), this, editor, this, event);
    }
}

// How it ends

void NSTextField::endEditing() {
    if (const Ref<NSWindow> window = this->window()) {
        send<void>(window, "endEditingFor:"_sel, this);
    }
}

bool NSTextField::delegateAgrees(SEL question, NSText* editor) {
    const id delegate = this->delegate();
    return !delegate || !delegate->respondsToSelector(question) || send<bool>(delegate, question, this, editor);
}

bool NSTextField::textShouldBeginEditing(NSText* editor) {
    return delegateAgrees("control:textShouldBeginEditing:"_sel, editor);
}

bool NSTextField::textShouldEndEditing(NSText* editor) {
    m_wasRefused = !delegateAgrees("control:textShouldEndEditing:"_sel, editor);
    return !m_wasRefused;
}

void NSTextField::tell(SEL operation, NSString* name, NSDictionary* userInfo) {
    tellDelegateAndPost(this, delegate(), operation, name, userInfo);
}

void NSTextField::textDidBeginEditing(NSNotification*) {
    const Ref<NSTextField> self(this);
    if (const Ref<NSText> editor = currentEditor()) {
        tell("controlTextDidBeginEditing:"_sel, NSControlTextDidBeginEditingNotification(),
             dictionary({{"NSFieldEditor"_ns, editor}}));
    }
}

void NSTextField::textDidChange(NSNotification*) {
    const Ref<NSTextField> self(this);
    if (const Ref<NSText> editor = currentEditor()) {
        tell("controlTextDidChange:"_sel, NSControlTextDidChangeNotification(),
             dictionary({{"NSFieldEditor"_ns, editor}}));
    }
}

void NSTextField::textDidEndEditing(NSNotification* notification) {
    const Ref<NSTextField> self(this);
    const Ref<NSText> editor = currentEditor();
    const Ref<NSCell> cell = this->cell();
    if (!editor || !cell) {
        return;
    }
    const NSTextMovement movement = movementOf(notification);
    if (movement == NSTextMovementCancel) {
        cell->restoreValue();
    } else {
        send<void>(this, "validateEditing"_sel);
    }
    send<void>(cell, "endEditing:"_sel, editor);
    cellChanged();
    tell("controlTextDidEndEditing:"_sel, NSControlTextDidEndEditingNotification(),
         dictionary({{"NSFieldEditor"_ns, editor}, {NSTextMovementKey(), box(movement)}}));
    if (movement != NSTextMovementReturn) {
        return;
    }
    send<bool>(this, "sendAction:to:"_sel, action(), target());
    const Ref<NSWindow> window = this->window();
    // Unless whoever was told has seen to the keyboard.
    if (window && window->firstResponder() == window) {
        send<void>(this, "selectText:"_sel, nullptr);
    }
}

bool NSTextField::textView_doCommandBySelector(NSTextView* view, SEL command) {
    const Ref<NSTextField> self(this);
    const id delegate = this->delegate();
    if (delegate && delegate->respondsToSelector("control:textView:doCommandBySelector:"_sel) &&
        send<bool>(delegate, "control:textView:doCommandBySelector:"_sel, this, view, command)) {
        return true;
    }
    const bool isTab = command == "insertTab:"_sel;
    if ((!isTab && command != "insertBacktab:"_sel) || !view || currentEditor() != view) {
        return false;
    }
    moveKeyboard(view, isTab);
    return true;
}

// The window is asked while the editor still has the keyboard: it finds its way from there, and the end of editing is
// part of the move.
void NSTextField::moveKeyboard(NSTextView* editor, bool isForwards) {
    const Ref<NSTextView> kept(editor);
    const Ref<NSWindow> window = this->window();
    m_wasRefused = false;
    editor->setTextMovement(isForwards ? NSTextMovementTab : NSTextMovementBacktab);
    send<void>(window, isForwards ? "selectNextKeyView:"_sel : "selectPreviousKeyView:"_sel, this);
    if (currentEditor() == editor && !m_wasRefused) {
        // There is nowhere else to go.
        send<bool>(window, "makeFirstResponder:"_sel, this);
    }
    editor->setTextMovement(NSTextMovementOther);
}

// NSSecureTextField

ZR_DEFINE_CLASS(NSSecureTextField) {
    is.classMethod<&NSSecureTextField::cellClass>("cellClass");
}

NSSecureTextField::NSSecureTextField() = default;
NSSecureTextField::~NSSecureTextField() = default;

Class* NSSecureTextField::cellClass() {
    return NSSecureTextFieldCell::classObject();
}

} // namespace zr
