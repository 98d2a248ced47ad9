#pragma once

#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/appkit/font.h>
#include <zrbasic/platform/appkit/paragraph_style.h>
#include <zrbasic/platform/appkit/text_view.h>
#include <zrbasic/platform/foundation/attributed_string.h>
#include <zrbasic/platform/foundation/formatter.h>

namespace zr {

class NSEvent;

/// The frame of a control's cell, older in looks.
enum NSTextFieldBezelStyle : NSUInteger {
    NSTextFieldSquareBezel = 0,
    NSTextFieldRoundedBezel = 1,
};

/// What is drawn and edited in a control: a value, the text that stands for it, and how that looks.
///
/// The value is any object; the text is the formatter's for it, or the value's own. Setting a text reads the value from
/// it through the formatter, and keeps the text as the value where there is none. Main thread only.
class ZR_EXPORT NSCell : public NSObject {
    ZR_DECLARE_CLASS(NSCell, NSObject)
  public:
    NSCell();
    ~NSCell() override;

    /// With the empty text.
    id init() override;
    virtual id initTextCell(NSString* string);

    /// The control that it is drawn in; null at first, not kept.
    [[nodiscard]] Ref<NSView> controlView() const { return m_controlView.lock(); }
    void setControlView(NSView* view) { m_controlView = Weak<NSView>(view); }

    /// Null is legal and shows as the empty text.
    [[nodiscard]] id objectValue() const { return m_value; }
    virtual void setObjectValue(NSObject* value);
    /// Never null.
    [[nodiscard]] virtual Ref<NSString> stringValue() const;
    /// What the formatter cannot read is not taken; null is the empty text.
    virtual void setStringValue(NSString* string);
    /// The same without drawing anything anew, for a text that shows already; whether it could be read.
    bool takeText(NSString* string);
    /// The text to begin editing with: the formatter's own for that, where there is one. Never null.
    [[nodiscard]] Ref<NSString> editingStringValue() const;
    /// The text as it is drawn: with the cell's font, colour, alignment and line-break mode, or as it was set.
    [[nodiscard]] virtual Ref<NSAttributedString> attributedStringValue() const;
    /// Shown as it is, until another value is set; what it does not say is the cell's font and colour.
    virtual void setAttributedStringValue(NSAttributedString* string);
    /// Of the value or, where that is no number, of the text; 0 for what is none.
    [[nodiscard]] NSInteger integerValue() const;
    void setIntegerValue(NSInteger value);
    [[nodiscard]] double doubleValue() const;
    void setDoubleValue(double value);

    /// Null at first. Kept.
    [[nodiscard]] Ref<NSFormatter> formatter() const { return m_formatter; }
    virtual void setFormatter(NSFormatter* formatter);
    /// Never null: the system font of 13 points at first and for null.
    [[nodiscard]] Ref<NSFont> font() const { return m_font; }
    virtual void setFont(NSFont* font);
    [[nodiscard]] NSTextAlignment alignment() const { return m_alignment; }
    virtual void setAlignment(NSTextAlignment alignment);
    [[nodiscard]] NSLineBreakMode lineBreakMode() const { return m_lineBreakMode; }
    virtual void setLineBreakMode(NSLineBreakMode mode);
    [[nodiscard]] bool usesSingleLineMode() const { return m_usesSingleLineMode; }
    void setUsesSingleLineMode(bool single);

    /// True at first, as are none of the others.
    [[nodiscard]] bool isEnabled() const { return m_isEnabled; }
    virtual void setEnabled(bool enabled);
    [[nodiscard]] bool isEditable() const { return m_isEditable; }
    void setEditable(bool editable);
    /// True for what is editable.
    [[nodiscard]] bool isSelectable() const { return m_isSelectable || m_isEditable; }
    void setSelectable(bool selectable);
    /// A border takes the place of a bezel and the other way round, so that setting none of the two ends both.
    [[nodiscard]] bool isBordered() const { return m_isBordered; }
    void setBordered(bool bordered);
    [[nodiscard]] bool isBezeled() const { return m_isBezeled; }
    void setBezeled(bool bezeled);
    [[nodiscard]] bool isHighlighted() const { return m_isHighlighted; }
    virtual void setHighlighted(bool highlighted);
    [[nodiscard]] NSInteger state() const { return m_state; }
    virtual void setState(NSInteger state);
    [[nodiscard]] NSInteger tag() const { return m_tag; }
    void setTag(NSInteger tag) { m_tag = tag; }
    /// Of actions; null and the empty selector unless a subclass keeps them.
    [[nodiscard]] virtual id target() const;
    virtual void setTarget(NSObject* target);
    [[nodiscard]] virtual SEL action() const;
    virtual void setAction(SEL action);

    /// The extent that the cell needs to show all of its text.
    [[nodiscard]] virtual NSSize cellSize() const;
    /// Where in the cell's frame the text stands, drawn or edited: 2 points inside the border or bezel on each side, and
    /// everywhere in a cell without.
    [[nodiscard]] virtual NSRect drawingRectForBounds(NSRect bounds) const;

    // Drawing goes to the current context, in the coordinates of `view`; without a context nothing is drawn. All of it
    // is done by message, and both are handed the cell's whole frame.

    /// The border or bezel, and then the inside.
    virtual void drawWithFrame_inView(NSRect frame, NSView* view);
    /// What is inside: the text, in half its opacity when the cell is not enabled, and not while `view` is edited.
    virtual void drawInteriorWithFrame_inView(NSRect frame, NSView* view);

    /// Begins editing in the frame, with the insertion point where the event is, or at the end for null, or with
    /// characters selected. The editor becomes a subview of `view` and its window's first responder, and tells
    /// `delegate`. A null editor or view does nothing. For an editor that is at it already, place, look and selection
    /// are set anew and the text stays.
    virtual void editWithFrame_inView_editor_delegate_event(NSRect frame, NSView* view, NSText* editor,
                                                            NSObject* delegate, NSEvent* event);
    virtual void selectWithFrame_inView_editor_delegate_start_length(NSRect frame, NSView* view, NSText* editor,
                                                                     NSObject* delegate, NSInteger start,
                                                                     NSInteger length);
    /// Gives the editor the cell's font, colour and alignment. Never null unless `editor` is.
    virtual Ref<NSText> setUpFieldEditorAttributes(NSText* editor);
    /// Takes the editor out of the control again, which is told nothing about it.
    virtual void endEditing(NSText* editor);
    /// Puts back the value that there was when editing began, unless another one was set meanwhile. To be called before
    /// `endEditing`.
    void restoreValue();

    /// Judges an edit by the formatter: see `NSFormatter`. Without one, everything stands.
    [[nodiscard]] EditJudgement judgeEdit(TextEdit& edit, const TextEdit& present);

  protected:
    /// Something that shows has changed.
    void changed();
    /// Without a font and colour the text takes these.
    [[nodiscard]] virtual Ref<NSColor> colorOfText() const;
    /// The text drawn in place of an empty one; null, unless a subclass has one, for none.
    [[nodiscard]] virtual Ref<NSAttributedString> textForEmpty() const;
    /// How round the corners of a bezel are, in points; 0 unless overridden.
    [[nodiscard]] virtual double bezelRadius() const;
    /// Whether the editor shows bullets and gives nothing away; false unless overridden.
    [[nodiscard]] virtual bool editsSecretly() const;
    /// What is drawn beneath the text; nothing unless overridden.
    virtual void drawBackground(NSRect frame) const;
    /// The text with the attributes that it lacks of the cell's font, colour, alignment and line-break mode.
    [[nodiscard]] Ref<NSAttributedString> dressed(NSAttributedString* text) const;
    /// Takes a value that the cell no longer needs; lets it go unless overridden.
    virtual void discard(id value);
    /// Discards the values that the cell holds, of which a subclass must see to in its destructor.
    void discardValues();

  private:
    void store(id value, Ref<NSAttributedString> attributedValue);
    void setValue(id value, Ref<NSAttributedString> attributedValue);
    [[nodiscard]] Ref<NSString> textOf(NSObject* value) const;
    void beginEditing(NSRect frame, NSView* view, NSText* editor, NSObject* delegate, NSRange selection);
    [[nodiscard]] NSUInteger indexOfCharacterAt(NSPoint point, NSRect textRect) const;

    Weak<NSView> m_controlView;
    id m_value;
    Ref<NSAttributedString> m_attributedValue;
    /// As they were when editing began.
    id m_valueBefore;
    Ref<NSAttributedString> m_attributedValueBefore;
    bool m_isEditing = false;
    Ref<NSFormatter> m_formatter;
    Ref<NSFont> m_font = NSFont::systemFontOfSize(13);
    NSTextAlignment m_alignment = NSTextAlignmentNatural;
    NSLineBreakMode m_lineBreakMode = NSLineBreakByWordWrapping;
    NSInteger m_state = 0;
    NSInteger m_tag = 0;
    bool m_usesSingleLineMode = false;
    bool m_isEnabled = true;
    bool m_isEditable = false;
    bool m_isSelectable = false;
    bool m_isBordered = false;
    bool m_isBezeled = false;
    bool m_isHighlighted = false;
};

/// A cell that sends an action to a target, which is not kept.
class ZR_EXPORT NSActionCell : public NSCell {
    ZR_DECLARE_CLASS(NSActionCell, NSCell)
  public:
    NSActionCell();
    ~NSActionCell() override;

    [[nodiscard]] id target() const override;
    void setTarget(NSObject* target) override;
    [[nodiscard]] SEL action() const override;
    void setAction(SEL action) override;

  private:
    Weak<NSObject> m_target;
    SEL m_action{};
};

} // namespace zr
