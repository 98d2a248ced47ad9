#pragma once

#include <zrbasic/platform/appkit/text_field.h>
#include <zrbasic/ui/text_field_cell.h>

namespace zr {

/// Told by text fields.
class ZR_EXPORT ZRXTextFieldDelegate {
    ZR_PROTOCOL(ZRXTextFieldDelegate)
  public:
    /// The field has been made first responder; it does not say which field it is.
    virtual void xTextFieldDidBecomeFirstResponder() = 0;
    ZR_PROTOCOL_METHOD(xTextFieldDidBecomeFirstResponder, "xTextFieldDidBecomeFirstResponder")
};

/// A line of text in a flat box with rounded corners, the input field of all screens: quantities, prices, accounts.
///
/// The box is the border of the view's layer. It has `borderColor`, or `highlightedBorderColor` from
/// `becomeFirstResponder` to `textDidEndEditing` when there is one. Return ends editing and selects the text again, so
/// the box is back to `borderColor` after it.
///
/// A formatter goes where every control has it, `setFormatter`. A field set up by another initialiser than
/// `initWithFrame` looks like a plain NSTextField until `setupInitialize` is called. Main thread only.
class ZR_EXPORT ZRXTextField : public NSTextField {
    ZR_DECLARE_CLASS(ZRXTextField, NSTextField)
  public:
    ZRXTextField();
    ~ZRXTextField() override;

    /// The class of ZRXTextFieldCell.
    [[nodiscard]] static Class* cellClass();
    id initWithFrame(NSRect frame) override;
    /// Gives the field its look, done by `initWithFrame`: editable, no border or bezel of the cell, black on clear, one
    /// line cut off at its end, a layer with a border of 1 point in light grey and corners of 3 points, no focus ring,
    /// the text 5 points from both sides.
    virtual void setupInitialize();

    /// Of the box while the field is not edited. Light grey at first; null draws none. Kept, and set in the layer at
    /// once, even while the field is edited.
    [[nodiscard]] Ref<NSColor> borderColor() const { return m_borderColor; }
    virtual void setBorderColor(NSColor* color);
    /// In points; 1 at first. Set in the layer at once.
    [[nodiscard]] double borderWidth() const { return m_borderWidth; }
    virtual void setBorderWidth(double width);
    /// In points; 3 at first. Set in the layer at once.
    [[nodiscard]] double cornerRadius() const { return m_cornerRadius; }
    virtual void setCornerRadius(double radius);
    /// Of the placeholder. Null at first, and null leaves what is shown as it is. It does not matter whether colour or
    /// text are set first.
    [[nodiscard]] Ref<NSColor> placeholderColor() const { return m_placeholderColor; }
    virtual void setPlaceholderColor(NSColor* color);
    void setPlaceholderString(NSString* string) override;
    /// In points, between the text and either side of the field; 5 at first. The cell gets it, too.
    [[nodiscard]] double xPadding() const { return m_xPadding; }
    virtual void setXPadding(double padding);
    /// Of the insertion point. Null at first; it counts from when the field next moves into a window.
    [[nodiscard]] Ref<NSColor> cursorColor() const { return m_cursorColor; }
    virtual void setCursorColor(NSColor* color);
    /// Gives the insertion point a colour at once, for all fields of the window; null is black. Does nothing for a field
    /// without a window. The colour is not kept in the field.
    virtual void setCustomizeCursorColor(NSColor* color);
    /// Of the box while the field is edited; null, at first, leaves it as it is.
    [[nodiscard]] Ref<NSColor> highlightedBorderColor() const { return m_highlightedBorderColor; }
    virtual void setHighlightedBorderColor(NSColor* color);
    /// Told when the field becomes first responder, provided that the field's `delegate` has that operation as well;
    /// null at first, not kept. A ZRXTextFieldDelegate, or any object with the operation: without it, nothing happens.
    [[nodiscard]] id xDelegate() const { return m_xDelegate.lock(); }
    virtual void setXDelegate(NSObject* delegate);

    /// True.
    [[nodiscard]] bool acceptsFirstMouse(NSEvent* event) override;
    void viewDidMoveToWindow() override;
    bool becomeFirstResponder() override;
    void textDidEndEditing(NSNotification* notification) override;

  private:
    Ref<NSColor> m_borderColor;
    Ref<NSColor> m_placeholderColor;
    Ref<NSColor> m_cursorColor;
    Ref<NSColor> m_highlightedBorderColor;
    Weak<NSObject> m_xDelegate;
    double m_borderWidth = 0;
    double m_cornerRadius = 0;
    double m_xPadding = 0;
};

/// The same box for a password: bullets on the screen, and nothing to copy (see NSSecureTextField).
///
/// It tells nobody when it becomes first responder, its text stands 5 points from both sides, and the colour of its
/// placeholder must be set after the text. Main thread only.
class ZR_EXPORT ZRXSecureTextField : public NSSecureTextField {
    ZR_DECLARE_CLASS(ZRXSecureTextField, NSSecureTextField)
  public:
    ZRXSecureTextField();
    ~ZRXSecureTextField() override;

    /// The class of ZRXSecureTextFieldCell.
    [[nodiscard]] static Class* cellClass();
    id initWithFrame(NSRect frame) override;
    /// As in ZRXTextField.
    virtual void setupInitialize();

    // Border, cursor and highlight are as in ZRXTextField.

    [[nodiscard]] Ref<NSColor> borderColor() const { return m_borderColor; }
    virtual void setBorderColor(NSColor* color);
    [[nodiscard]] double borderWidth() const { return m_borderWidth; }
    virtual void setBorderWidth(double width);
    [[nodiscard]] double cornerRadius() const { return m_cornerRadius; }
    virtual void setCornerRadius(double radius);
    /// Colours the placeholder text of the moment, in the system font of 13 points whatever the field's is; one that is
    /// set afterwards shows without it. Raises `NSInvalidArgumentException` when there is no text to colour yet; the
    /// colour is kept all the same. Null changes nothing that shows.
    [[nodiscard]] Ref<NSColor> placeholderColor() const { return m_placeholderColor; }
    virtual void setPlaceholderColor(NSColor* color);
    [[nodiscard]] Ref<NSColor> cursorColor() const { return m_cursorColor; }
    virtual void setCursorColor(NSColor* color);
    virtual void setCustomizeCursorColor(NSColor* color);
    [[nodiscard]] Ref<NSColor> highlightedBorderColor() const { return m_highlightedBorderColor; }
    virtual void setHighlightedBorderColor(NSColor* color);

    /// True.
    [[nodiscard]] bool acceptsFirstMouse(NSEvent* event) override;
    void viewDidMoveToWindow() override;
    bool becomeFirstResponder() override;
    void textDidEndEditing(NSNotification* notification) override;

  private:
    Ref<NSColor> m_borderColor;
    Ref<NSColor> m_placeholderColor;
    Ref<NSColor> m_cursorColor;
    Ref<NSColor> m_highlightedBorderColor;
    double m_borderWidth = 0;
    double m_cornerRadius = 0;
};

} // namespace zr
