#include <zrbasic/platform/appkit/responder.h>

#include <zrbasic/platform/appkit/beep.h>
#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/runtime/message.h>

namespace zr {

ZR_DEFINE_CLASS(NSResponder) {
    is.method<&NSResponder::nextResponder>("nextResponder");
    is.method<&NSResponder::setNextResponder>("setNextResponder:");
    is.method<&NSResponder::acceptsFirstResponder>("acceptsFirstResponder");
    is.method<&NSResponder::becomeFirstResponder>("becomeFirstResponder");
    is.method<&NSResponder::resignFirstResponder>("resignFirstResponder");
    is.method<&NSResponder::mouseDown>("mouseDown:");
    is.method<&NSResponder::mouseUp>("mouseUp:");
    is.method<&NSResponder::mouseMoved>("mouseMoved:");
    is.method<&NSResponder::mouseDragged>("mouseDragged:");
    is.method<&NSResponder::mouseEntered>("mouseEntered:");
    is.method<&NSResponder::mouseExited>("mouseExited:");
    is.method<&NSResponder::rightMouseDown>("rightMouseDown:");
    is.method<&NSResponder::rightMouseUp>("rightMouseUp:");
    is.method<&NSResponder::rightMouseDragged>("rightMouseDragged:");
    is.method<&NSResponder::otherMouseDown>("otherMouseDown:");
    is.method<&NSResponder::otherMouseUp>("otherMouseUp:");
    is.method<&NSResponder::otherMouseDragged>("otherMouseDragged:");
    is.method<&NSResponder::scrollWheel>("scrollWheel:");
    is.method<&NSResponder::cursorUpdate>("cursorUpdate:");
    is.method<&NSResponder::keyDown>("keyDown:");
    is.method<&NSResponder::keyUp>("keyUp:");
    is.method<&NSResponder::flagsChanged>("flagsChanged:");
    is.method<&NSResponder::performKeyEquivalent>("performKeyEquivalent:");
    is.method<&NSResponder::tryToPerform_with>("tryToPerform:with:");
    is.method<&NSResponder::doCommandBySelector>("doCommandBySelector:");
    is.method<&NSResponder::noResponderFor>("noResponderFor:");
}

NSResponder::NSResponder() = default;
NSResponder::~NSResponder() = default;

Ref<NSResponder> NSResponder::nextResponder() const {
    return m_nextResponder.lock();
}

void NSResponder::setNextResponder(NSResponder* responder) {
    m_nextResponder = Weak<NSResponder>(responder);
}

bool NSResponder::acceptsFirstResponder() const {
    return false;
}

bool NSResponder::becomeFirstResponder() {
    return true;
}

bool NSResponder::resignFirstResponder() {
    return true;
}

void NSResponder::handOn(SEL operation, NSEvent* event) {
    if (const Ref<NSResponder> next = nextResponder()) {
        send<void>(next, operation, event);
    } else {
        send<void>(this, "noResponderFor:"_sel, operation);
    }
}

void NSResponder::mouseDown(NSEvent* event) {
    handOn("mouseDown:"_sel, event);
}

void NSResponder::mouseUp(NSEvent* event) {
    handOn("mouseUp:"_sel, event);
}

void NSResponder::mouseMoved(NSEvent* event) {
    handOn("mouseMoved:"_sel, event);
}

void NSResponder::mouseDragged(NSEvent* event) {
    handOn("mouseDragged:"_sel, event);
}

void NSResponder::mouseEntered(NSEvent* event) {
    handOn("mouseEntered:"_sel, event);
}

void NSResponder::mouseExited(NSEvent* event) {
    handOn("mouseExited:"_sel, event);
}

void NSResponder::rightMouseDown(NSEvent* event) {
    handOn("rightMouseDown:"_sel, event);
}

void NSResponder::rightMouseUp(NSEvent* event) {
    handOn("rightMouseUp:"_sel, event);
}

void NSResponder::rightMouseDragged(NSEvent* event) {
    handOn("rightMouseDragged:"_sel, event);
}

void NSResponder::otherMouseDown(NSEvent* event) {
    handOn("otherMouseDown:"_sel, event);
}

void NSResponder::otherMouseUp(NSEvent* event) {
    handOn("otherMouseUp:"_sel, event);
}

void NSResponder::otherMouseDragged(NSEvent* event) {
    handOn("otherMouseDragged:"_sel, event);
}

void NSResponder::scrollWheel(NSEvent* event) {
    handOn("scrollWheel:"_sel, event);
}

void NSResponder::cursorUpdate(NSEvent* event) {
    handOn("cursorUpdate:"_sel, event);
}

void NSResponder::keyDown(NSEvent* event) {
    handOn("keyDown:"_sel, event);
}

void NSResponder::keyUp(NSEvent* event) {
    handOn("keyUp:"_sel, event);
}

void NSResponder::flagsChanged(NSEvent* event) {
    handOn("flagsChanged:"_sel, event);
}

bool NSResponder::performKeyEquivalent(NSEvent*) {
    return false;
}

bool NSResponder::tryToPerform_with(SEL action, NSObject* object) {
    for (Ref<NSResponder> responder(this); responder; responder = responder->nextResponder()) {
        if (responder->respondsToSelector(action)) {
            send<void>(responder, action, object);
            return true;
        }
    }
    return false;
}

void NSResponder::doCommandBySelector(SEL action) {
    if (!tryToPerform_with(action, nullptr)) {
        NSBeep();
    }
}

void NSResponder::noResponderFor(SEL operation) {
    if (operation == "keyDown:"_sel) {
        NSBeep();
    }
}

} // namespace zr
