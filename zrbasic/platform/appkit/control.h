#pragma once

#include <zrbasic/platform/appkit/cell.h>

namespace zr {

[[nodiscard]] ZR_EXPORT Ref<NSString> NSControlTextDidBeginEditingNotification();
[[nodiscard]] ZR_EXPORT Ref<NSString> NSControlTextDidChangeNotification();
[[nodiscard]] ZR_EXPORT Ref<NSString> NSControlTextDidEndEditingNotification();

/// A view that shows a cell, and sends an action when it is used. What is said of value and look, of target, action and
/// tag is done by its cell: a control without one drops what is set and gives nothing back, but is enabled.
///
/// A value set while the control is edited shows in the editor, and editing goes on. Main thread only.
class ZR_EXPORT NSControl : public NSView {
    ZR_DECLARE_CLASS(NSControl, NSView)
  public:
    NSControl();
    ~NSControl() override;

    /// Makes a cell of the class that the receiver's class names as `cellClass`, asked by message.
    id initWithFrame(NSRect frame) override;
    /// The class of the cells that new controls get: null for a control without one.
    [[nodiscard]] static Class* cellClass();

    /// Null in a control without one.
    [[nodiscard]] Ref<NSCell> cell() const { return m_cell; }
    virtual void setCell(NSCell* cell);

    /// May be null.
    [[nodiscard]] id objectValue() const;
    virtual void setObjectValue(NSObject* value);
    /// Never null. While the control is edited, what is read of its value is first taken from the editor, by
    /// `validateEditing`; a text that the formatter cannot read leaves the last value that it could.
    [[nodiscard]] virtual Ref<NSString> stringValue() const;
    virtual void setStringValue(NSString* string);
    [[nodiscard]] virtual Ref<NSAttributedString> attributedStringValue() const;
    virtual void setAttributedStringValue(NSAttributedString* string);
    [[nodiscard]] NSInteger integerValue() const;
    void setIntegerValue(NSInteger value);
    [[nodiscard]] double doubleValue() const;
    void setDoubleValue(double value);

    [[nodiscard]] Ref<NSFormatter> formatter() const;
    void setFormatter(NSFormatter* formatter);
    [[nodiscard]] Ref<NSFont> font() const;
    void setFont(NSFont* font);
    [[nodiscard]] NSTextAlignment alignment() const;
    void setAlignment(NSTextAlignment alignment);
    [[nodiscard]] NSLineBreakMode lineBreakMode() const;
    void setLineBreakMode(NSLineBreakMode mode);
    [[nodiscard]] bool usesSingleLineMode() const;
    void setUsesSingleLineMode(bool single);
    /// True at first.
    [[nodiscard]] bool isEnabled() const;
    virtual void setEnabled(bool enabled);
    [[nodiscard]] NSInteger tag() const override;
    void setTag(NSInteger tag);

    /// Not kept; null sends the action along the responders of the window.
    [[nodiscard]] id target() const;
    void setTarget(NSObject* target);
    [[nodiscard]] SEL action() const;
    void setAction(SEL action);
    /// Sends the action with the control as its argument: to the target or, for null, to the first that has it of the
    /// responders from the window's first responder on, or from the control on where that is the window itself, and
    /// after them the application. False, and nothing done, for the empty selector and when nobody has it.
    virtual bool sendAction_to(SEL action, NSObject* target);

    /// The field editor while it edits this control; null otherwise.
    [[nodiscard]] virtual Ref<NSText> currentEditor() const;
    /// Takes the text as edited so far as the value; one that the formatter cannot read is not taken. Does nothing when
    /// the control is not edited, and when the text is still the one that stands for the value.
    virtual void validateEditing();
    /// Ends editing, throws away what was edited and tells nobody; whether the control was edited.
    virtual bool abortEditing();
    /// Also takes the editor along.
    void setFrameSize(NSSize size) override;

    /// The cell's.
    [[nodiscard]] NSSize intrinsicContentSize() const override;
    /// Makes the control as large as its cell needs.
    virtual void sizeToFit();
    void drawRect(NSRect dirtyRect) override;
    /// True for a control with a cell that is enabled.
    [[nodiscard]] bool acceptsFirstResponder() const override;

    /// Called when the cell shows something else: draws it anew, in the editor as well.
    virtual void cellChanged();

  private:
    void takeEdits() const;
    void showValueInEditor();
    void placeEditor();

    Ref<NSCell> m_cell;
    bool m_isValidating = false;
};

} // namespace zr
