#include <zrbasic/platform/appkit/button.h>

#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/message.h>

namespace zr {
namespace {

constexpr NSUInteger countedModifiers =
    NSEventModifierFlagCommand | NSEventModifierFlagOption | NSEventModifierFlagControl;

/// The return key and the enter key of the number pad are one to a button.
bool isReturn(NSString* key) {
    return key && (key->isEqual("\r"_ns) || key->isEqual("\x03"_ns));
}

Ref<NSButton> makeButton(NSButtonType type, NSString* title, NSObject* target, SEL action) {
    Ref<NSButton> button = make<NSButton>();
    button->setButtonType(type);
    button->setTitle(title);
    button->setTarget(target);
    button->setAction(action);
    button->sizeToFit();
    return button;
}

} // namespace

ZR_DEFINE_CLASS(NSButton) {
    is.classMethod<&NSButton::cellClass>("cellClass");
    is.classMethod<&NSButton::buttonWithTitle_target_action>("buttonWithTitle:target:action:");
    is.classMethod<&NSButton::checkboxWithTitle_target_action>("checkboxWithTitle:target:action:");
    is.classMethod<&NSButton::radioButtonWithTitle_target_action>("radioButtonWithTitle:target:action:");
    is.method<&NSButton::title>("title");
    is.method<&NSButton::setTitle>("setTitle:");
    is.method<&NSButton::image>("image");
    is.method<&NSButton::setImage>("setImage:");
    is.method<&NSButton::imagePosition>("imagePosition");
    is.method<&NSButton::setImagePosition>("setImagePosition:");
    is.method<&NSButton::keyEquivalent>("keyEquivalent");
    is.method<&NSButton::setKeyEquivalent>("setKeyEquivalent:");
    is.method<&NSButton::keyEquivalentModifierMask>("keyEquivalentModifierMask");
    is.method<&NSButton::setKeyEquivalentModifierMask>("setKeyEquivalentModifierMask:");
    is.method<&NSButton::setButtonType>("setButtonType:");
    is.method<&NSButton::state>("state");
    is.method<&NSButton::setState>("setState:");
    is.method<&NSButton::allowsMixedState>("allowsMixedState");
    is.method<&NSButton::setAllowsMixedState>("setAllowsMixedState:");
    is.method<&NSButton::setNextState>("setNextState");
    is.method<&NSButton::isBordered>("isBordered");
    is.method<&NSButton::setBordered>("setBordered:");
    is.method<&NSButton::isHighlighted>("isHighlighted");
    is.method<&NSButton::highlight>("highlight:");
    is.method<&NSButton::performClick>("performClick:");
}

NSButton::NSButton() = default;
NSButton::~NSButton() = default;

Class* NSButton::cellClass() {
    return NSButtonCell::classObject();
}

Ref<NSButton> NSButton::buttonWithTitle_target_action(NSString* title, NSObject* target, SEL action) {
    return makeButton(NSButtonTypeMomentaryPushIn, title, target, action);
}

Ref<NSButton> NSButton::checkboxWithTitle_target_action(NSString* title, NSObject* target, SEL action) {
    return makeButton(NSButtonTypeSwitch, title, target, action);
}

Ref<NSButton> NSButton::radioButtonWithTitle_target_action(NSString* title, NSObject* target, SEL action) {
    return makeButton(NSButtonTypeRadio, title, target, action);
}

NSButtonCell* NSButton::buttonCell() const {
    return cast<NSButtonCell>(cell());
}

Ref<NSString> NSButton::title() const {
    const NSButtonCell* const cell = buttonCell();
    return cell ? cell->title() : ""_ns;
}

void NSButton::setTitle(NSString* title) {
    if (NSButtonCell* const cell = buttonCell()) {
        cell->setTitle(title);
    }
}

Ref<NSImage> NSButton::image() const {
    const NSButtonCell* const cell = buttonCell();
    return cell ? cell->image() : nullptr;
}

void NSButton::setImage(NSImage* image) {
    if (NSButtonCell* const cell = buttonCell()) {
        cell->setImage(image);
    }
}

NSCellImagePosition NSButton::imagePosition() const {
    const NSButtonCell* const cell = buttonCell();
    return cell ? cell->imagePosition() : NSNoImage;
}

void NSButton::setImagePosition(NSCellImagePosition position) {
    if (NSButtonCell* const cell = buttonCell()) {
        cell->setImagePosition(position);
    }
}

Ref<NSString> NSButton::keyEquivalent() const {
    const NSButtonCell* const cell = buttonCell();
    return cell ? cell->keyEquivalent() : ""_ns;
}

void NSButton::setKeyEquivalent(NSString* key) {
    if (NSButtonCell* const cell = buttonCell()) {
        cell->setKeyEquivalent(key);
    }
}

NSUInteger NSButton::keyEquivalentModifierMask() const {
    const NSButtonCell* const cell = buttonCell();
    return cell ? cell->keyEquivalentModifierMask() : 0;
}

void NSButton::setKeyEquivalentModifierMask(NSUInteger modifiers) {
    if (NSButtonCell* const cell = buttonCell()) {
        cell->setKeyEquivalentModifierMask(modifiers);
    }
}

void NSButton::setButtonType(NSButtonType type) {
    if (NSButtonCell* const cell = buttonCell()) {
        cell->setButtonType(type);
    }
}

NSInteger NSButton::state() const {
    const NSButtonCell* const cell = buttonCell();
    return cell ? cell->state() : NSInteger{NSControlStateValueOff};
}

void NSButton::setState(NSInteger state) {
    if (NSButtonCell* const cell = buttonCell()) {
        cell->setState(state);
    }
}

bool NSButton::allowsMixedState() const {
    const NSButtonCell* const cell = buttonCell();
    return cell && cell->allowsMixedState();
}

void NSButton::setAllowsMixedState(bool allows) {
    if (NSButtonCell* const cell = buttonCell()) {
        cell->setAllowsMixedState(allows);
    }
}

void NSButton::setNextState() {
    if (NSButtonCell* const cell = buttonCell()) {
        cell->setNextState();
    }
}

bool NSButton::isBordered() const {
    const NSButtonCell* const cell = buttonCell();
    return cell && cell->isBordered();
}

void NSButton::setBordered(bool bordered) {
    if (NSButtonCell* const cell = buttonCell()) {
        cell->setBordered(bordered);
    }
}

bool NSButton::isHighlighted() const {
    const NSButtonCell* const cell = buttonCell();
    return cell && cell->isHighlighted();
}

void NSButton::highlight(bool pressed) {
    NSButtonCell* const cell = buttonCell();
    if (cell && cell->isHighlighted() != pressed) {
        cell->setHighlighted(pressed);
    }
}

void NSButton::performClick(NSObject*) {
    if (!isEnabled()) {
        return;
    }
    const Ref<NSButton> self(this);
    send<void>(this, "setNextState"_sel);
    send<bool>(this, "sendAction:to:"_sel, action(), target());
}

bool NSButton::becomeFirstResponder() {
    setNeedsDisplay(true);
    return NSControl::becomeFirstResponder();
}

bool NSButton::resignFirstResponder() {
    setNeedsDisplay(true);
    return NSControl::resignFirstResponder();
}

bool NSButton::isOver(NSEvent* event) const {
    return event && NSMouseInRect(convertPoint_fromView(event->locationInWindow(), nullptr), bounds(), isFlipped());
}

void NSButton::stopTracking() {
    m_isPressed = false;
    highlight(false);
}

void NSButton::mouseDown(NSEvent* event) {
    if (isEnabled() && isOver(event)) {
        m_isPressed = true;
        highlight(true);
    }
}

void NSButton::mouseDragged(NSEvent* event) {
    if (m_isPressed) {
        highlight(isOver(event));
    }
}

void NSButton::mouseUp(NSEvent* event) {
    if (!m_isPressed) {
        return;
    }
    const Ref<NSButton> self(this);
    const bool isClick = isOver(event);
    stopTracking();
    if (isClick) {
        send<void>(this, "performClick:"_sel, nullptr);
    }
}

void NSButton::keyDown(NSEvent* event) {
    const Ref<NSString> key = event ? event->characters() : nullptr;
    const bool isPlain = event && (event->modifierFlags() & countedModifiers) == 0;
    if (!isEnabled() || !isPlain || !key || !(key->isEqual(" "_ns) || isReturn(key))) {
        NSControl::keyDown(event);
    } else if (!event->isARepeat()) {
        // An order must not be sent again and again because somebody leans on a key.
        send<void>(this, "performClick:"_sel, nullptr);
    }
}

bool NSButton::performKeyEquivalent(NSEvent* event) {
    const Ref<NSString> key = event ? event->characters() : nullptr;
    const Ref<NSString> wanted = keyEquivalent();
    const bool isKey = key && wanted->length() > 0 && (key->isEqual(wanted) || (isReturn(key) && isReturn(wanted)));
    if (!isKey || (event->modifierFlags() & countedModifiers) != (keyEquivalentModifierMask() & countedModifiers) ||
        !isEnabled() || isHiddenOrHasHiddenAncestor()) {
        return NSControl::performKeyEquivalent(event);
    }
    if (!event->isARepeat()) {
        send<void>(this, "performClick:"_sel, nullptr);
    }
    return true;
}

void NSButton::setEnabled(bool enabled) {
    NSControl::setEnabled(enabled);
    if (!enabled) {
        stopTracking();
    }
}

void NSButton::viewWillMoveToWindow(NSWindow* window) {
    stopTracking();
    NSControl::viewWillMoveToWindow(window);
}

} // namespace zr
