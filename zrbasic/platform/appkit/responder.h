#pragma once

#include <zrbasic/platform/runtime/declare.h>

namespace zr {

class NSEvent;

/// Something that can be handed events and commands: a view, a window, a controller, the application.
///
/// Events come as messages, `mouseDown:` and so on, so that an operation that was replaced for one object is honoured.
/// Unless it is overridden, each operation hands its event on to the next responder; behind the last one a key press
/// beeps and everything else is dropped. Main thread only.
class ZR_EXPORT NSResponder : public NSObject {
    ZR_DECLARE_CLASS(NSResponder, NSObject)
  public:
    NSResponder();
    ~NSResponder() override;

    /// Whom to hand on what this one does not deal with; null, at first, for nobody. Not kept.
    [[nodiscard]] virtual Ref<NSResponder> nextResponder() const;
    virtual void setNextResponder(NSResponder* responder);

    /// Whether key presses may come here first; false unless overridden.
    [[nodiscard]] virtual bool acceptsFirstResponder() const;
    /// Told when it is about to become the first to be handed key presses; false refuses. True unless overridden.
    virtual bool becomeFirstResponder();
    /// Told when another one is to take its place; false refuses. True unless overridden.
    virtual bool resignFirstResponder();

    virtual void mouseDown(NSEvent* event);
    virtual void mouseUp(NSEvent* event);
    virtual void mouseMoved(NSEvent* event);
    virtual void mouseDragged(NSEvent* event);
    virtual void mouseEntered(NSEvent* event);
    virtual void mouseExited(NSEvent* event);
    virtual void rightMouseDown(NSEvent* event);
    virtual void rightMouseUp(NSEvent* event);
    virtual void rightMouseDragged(NSEvent* event);
    virtual void otherMouseDown(NSEvent* event);
    virtual void otherMouseUp(NSEvent* event);
    virtual void otherMouseDragged(NSEvent* event);
    virtual void scrollWheel(NSEvent* event);
    virtual void cursorUpdate(NSEvent* event);
    virtual void keyDown(NSEvent* event);
    virtual void keyUp(NSEvent* event);
    virtual void flagsChanged(NSEvent* event);

    /// Whether a key press with a command key was a shortcut here, and has been carried out.
    virtual bool performKeyEquivalent(NSEvent* event);
    /// Sends `action` with `object` to the first responder, from this one on, that has it; whether there was one.
    bool tryToPerform_with(SEL action, NSObject* object);
    /// A key press that stands for an action, such as `insertNewline:`: sends it to the first responder, from this one
    /// on, that has it, with null as the sender. Nobody having it beeps.
    virtual void doCommandBySelector(SEL action);
    /// Nobody deals with the event that the operation of that name was called for.
    virtual void noResponderFor(SEL operation);

  private:
    /// The same event to the same operation of the next responder.
    void handOn(SEL operation, NSEvent* event);

    Weak<NSResponder> m_nextResponder;
};

} // namespace zr
