#pragma once

#include <zrbasic/platform/appkit/control.h>
#include <zrbasic/platform/appkit/text_field_cell.h>

namespace zr {

class NSDictionary;
class NSNotification;

/// A line of text, to be read or edited.
///
/// While it is edited, its window's field editor lies in it and is the window's first responder; the field is the
/// editor's delegate. Its own delegate, which is not kept, is asked and told as far as it responds:
/// `control:textShouldBeginEditing:`, `control:textShouldEndEditing:`, `controlTextDidBeginEditing:`,
/// `controlTextDidChange:`, `controlTextDidEndEditing:`, `control:textView:doCommandBySelector:`.
///
/// What the delegate is told is then posted as well (see control.h), with the field as the notification's object. The
/// user info has the editor under "NSFieldEditor" and, at the end, why it ended under "NSTextMovement".
///
/// Return ends editing, sends the action and selects the text again; tab goes to the next key view; escape puts the
/// value back that editing began with, and nobody in the window is edited then. Whoever is told or sent the action may
/// give the keyboard to somebody, which then stands. Main thread only.
class ZR_EXPORT NSTextField : public NSControl {
    ZR_DECLARE_CLASS(NSTextField, NSControl)
  public:
    NSTextField();
    ~NSTextField() override;

    /// Editable, with a bezel and a white background, which is a dark one in the dark appearance until it is set.
    id initWithFrame(NSRect frame) override;
    [[nodiscard]] static Class* cellClass();
    /// A line to be read only, without bezel and background, as large as it needs to be. Null is the empty text.
    [[nodiscard]] static Ref<NSTextField> labelWithString(NSString* string);

    [[nodiscard]] Ref<NSColor> textColor() const;
    void setTextColor(NSColor* color);
    [[nodiscard]] Ref<NSColor> backgroundColor() const;
    void setBackgroundColor(NSColor* color);
    [[nodiscard]] bool drawsBackground() const;
    void setDrawsBackground(bool draws);
    [[nodiscard]] bool isBordered() const;
    void setBordered(bool bordered);
    [[nodiscard]] bool isBezeled() const;
    void setBezeled(bool bezeled);
    [[nodiscard]] NSTextFieldBezelStyle bezelStyle() const;
    void setBezelStyle(NSTextFieldBezelStyle style);
    [[nodiscard]] bool isEditable() const;
    void setEditable(bool editable);
    [[nodiscard]] bool isSelectable() const;
    void setSelectable(bool selectable);
    [[nodiscard]] Ref<NSString> placeholderString() const;
    virtual void setPlaceholderString(NSString* string);
    [[nodiscard]] Ref<NSAttributedString> placeholderAttributedString() const;
    virtual void setPlaceholderAttributedString(NSAttributedString* string);

    [[nodiscard]] id delegate() const { return m_delegate.lock(); }
    void setDelegate(NSObject* delegate) { m_delegate = Weak<NSObject>(delegate); }

    /// Begins editing with all of the text selected, when the field can be selected and lies in a window.
    virtual void selectText(NSObject* sender);
    /// Without a width of its own as long as it can be edited.
    [[nodiscard]] NSSize intrinsicContentSize() const override;
    /// Ends editing first, as if another view were made first responder.
    void setEnabled(bool enabled) override;
    /// The editor takes the colours that the field has now.
    void viewDidChangeEffectiveAppearance() override;

    /// True for one that can be edited or selected, and is enabled.
    [[nodiscard]] bool acceptsFirstResponder() const override;
    /// Begins editing as `selectText` does; whether the field is edited then.
    bool becomeFirstResponder() override;
    /// Makes the field first responder and puts the insertion point where the event is. One that does not accept to be
    /// that hands the event on.
    void mouseDown(NSEvent* event) override;

    // Told and asked by the field editor.

    virtual bool textShouldBeginEditing(NSText* editor);
    virtual bool textShouldEndEditing(NSText* editor);
    virtual void textDidBeginEditing(NSNotification* notification);
    virtual void textDidChange(NSNotification* notification);
    virtual void textDidEndEditing(NSNotification* notification);
    /// Whether the delegate has dealt with it, or the field, which takes tab both ways and has the window move the
    /// keyboard.
    virtual bool textView_doCommandBySelector(NSTextView* view, SEL command);

  private:
    [[nodiscard]] NSTextFieldCell* fieldCell() const;
    void endEditing();
    void moveKeyboard(NSTextView* editor, bool isForwards);
    bool delegateAgrees(SEL question, NSText* editor);
    void tell(SEL operation, NSString* name, NSDictionary* userInfo);

    Weak<NSObject> m_delegate;
    bool m_wasRefused = false;
};

/// A text field for what nobody may read over a shoulder: bullets on the screen, and nothing to copy. What its cell
/// holds is overwritten when it goes, as far as NSSecureTextFieldCell says. Main thread only.
class ZR_EXPORT NSSecureTextField : public NSTextField {
    ZR_DECLARE_CLASS(NSSecureTextField, NSTextField)
  public:
    NSSecureTextField();
    ~NSSecureTextField() override;

    [[nodiscard]] static Class* cellClass();
};

} // namespace zr
