#pragma once

#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/appkit/font.h>
#include <zrbasic/platform/appkit/paragraph_style.h>
#include <zrbasic/platform/appkit/text_storage.h>
#include <zrbasic/platform/appkit/view.h>

#include <functional>
#include <string_view>

namespace zr {

class NSDictionary;
class NSLayoutManager;
class NSTextContainer;

/// Why editing ended: a number under "NSTextMovement" in the notification's user info.
enum NSTextMovement : NSInteger {
    NSTextMovementOther = 0,
    NSTextMovementReturn = 16,
    NSTextMovementTab = 17,
    NSTextMovementBacktab = 18,
    NSTextMovementCancel = 23,
};

[[nodiscard]] ZR_EXPORT Ref<NSString> NSTextDidBeginEditingNotification();
[[nodiscard]] ZR_EXPORT Ref<NSString> NSTextDidChangeNotification();
[[nodiscard]] ZR_EXPORT Ref<NSString> NSTextDidEndEditingNotification();
/// "NSTextMovement".
[[nodiscard]] ZR_EXPORT Ref<NSString> NSTextMovementKey();

/// One edit, before it is made and after it was judged.
struct TextEdit {
    /// The whole text, never null.
    Ref<NSString> text;
    /// The selection behind it, in UTF-16 code units; of no length for an insertion point.
    NSRange selection{};
};

/// What became of an edit.
enum class EditJudgement {
    /// It stands as proposed.
    Accepted,
    /// Nothing changes, neither text nor selection.
    Refused,
    /// Another text stands in its place, with the insertion point at its end.
    Replaced,
};

/// A view of text that can be selected and edited. See NSTextView, which is what is made.
class ZR_EXPORT NSText : public NSView {
    ZR_DECLARE_CLASS(NSText, NSView)
  public:
    NSText();
    ~NSText() override;

    /// True: lines run downwards.
    [[nodiscard]] bool isFlipped() const override;

    /// A string of the moment; never null.
    [[nodiscard]] virtual Ref<NSString> string() const;
    /// Without asking anybody, in the font and colour of the view. The selection goes to the end; null empties.
    virtual void setString(NSString* string);
    [[nodiscard]] NSRange selectedRange() const { return m_selectedRange; }
    /// Cut to the text.
    virtual void setSelectedRange(NSRange range);

    /// All true at first, but for `isFieldEditor`, false: a field editor edits one line on behalf of a control, and
    /// return, tab and escape end that. What can be edited can be selected: making it the one makes it the other, and
    /// what can no longer be selected can no longer be edited.
    [[nodiscard]] bool isEditable() const { return m_isEditable; }
    virtual void setEditable(bool editable);
    [[nodiscard]] bool isSelectable() const { return m_isSelectable; }
    virtual void setSelectable(bool selectable);
    [[nodiscard]] bool isFieldEditor() const { return m_isFieldEditor; }
    void setFieldEditor(bool isFieldEditor) { m_isFieldEditor = isFieldEditor; }
    [[nodiscard]] bool drawsBackground() const { return m_drawsBackground; }
    void setDrawsBackground(bool draws);
    /// White at first, and dark in the dark appearance; null draws none.
    [[nodiscard]] Ref<NSColor> backgroundColor() const;
    void setBackgroundColor(NSColor* color);

    /// Of all of the text. The system font of 13 points and black, which is as light as labels in the dark appearance,
    /// at first; null sets these.
    [[nodiscard]] Ref<NSFont> font() const { return m_font; }
    virtual void setFont(NSFont* font);
    [[nodiscard]] Ref<NSColor> textColor() const;
    virtual void setTextColor(NSColor* color);
    [[nodiscard]] NSTextAlignment alignment() const { return m_alignment; }
    virtual void setAlignment(NSTextAlignment alignment);

    /// Told of editing, `textDidBeginEditing:`, `textDidChange:`, `textDidEndEditing:`, and asked `textShouldBeginEditing:`
    /// and `textShouldEndEditing:`, as far as it responds; not kept.
    [[nodiscard]] id delegate() const { return m_delegate.lock(); }
    void setDelegate(NSObject* delegate) { m_delegate = Weak<NSObject>(delegate); }

    /// Shows what was given no colour in those of the appearance.
    void viewDidChangeEffectiveAppearance() override;

  protected:
    Weak<NSObject> m_delegate;
    NSRange m_selectedRange{};
    Ref<NSFont> m_font = NSFont::systemFontOfSize(13);
    /// Null unless one was set.
    Ref<NSColor> m_textColor;
    Ref<NSColor> m_backgroundColor;
    /// No background was set yet.
    bool m_isOnPaper = true;
    NSTextAlignment m_alignment = NSTextAlignmentNatural;
    bool m_isEditable = true;
    bool m_isSelectable = true;
    bool m_isFieldEditor = false;
    bool m_drawsBackground = true;
};

/// A view of styled text, and a window's field editor.
///
/// Its text is a text storage, which the layout manager lays out for the text container (see layout_manager.h). A
/// toolkit has an editor of its own on the screen, which asks `judgeEdit` before it changes anything and reports with
/// `editWasMade`; without one, the operations here edit all the same. Main thread only.
class ZR_EXPORT NSTextView : public NSText {
    ZR_DECLARE_CLASS(NSTextView, NSText)
  public:
    NSTextView();
    ~NSTextView() override;

    id initWithFrame(NSRect frame) override;

    [[nodiscard]] Ref<NSString> string() const override;
    void setString(NSString* string) override;
    void setFont(NSFont* font) override;
    void setTextColor(NSColor* color) override;
    void setAlignment(NSTextAlignment alignment) override;
    /// Never null, these three.
    [[nodiscard]] Ref<NSTextStorage> textStorage() const;
    [[nodiscard]] Ref<NSLayoutManager> layoutManager() const;
    [[nodiscard]] Ref<NSTextContainer> textContainer() const;

    /// Of the blinking line; black, or light in the dark appearance, at first, null sets that.
    [[nodiscard]] Ref<NSColor> insertionPointColor() const;
    void setInsertionPointColor(NSColor* color);
    /// Whether pointing at a link shows its address; true at first.
    [[nodiscard]] bool displaysLinkToolTips() const { return m_displaysLinkToolTips; }
    void setDisplaysLinkToolTips(bool displays);
    /// Whether the view is as high as its text, or as the view that clips it where that is higher (see scroll_view.h);
    /// false at first. Without a toolkit a text has no height.
    [[nodiscard]] bool isVerticallyResizable() const { return m_isVerticallyResizable; }
    void setVerticallyResizable(bool resizable);
    /// Whether the text shows as bullets, is never copied, and is overwritten when another is set; false at first.
    [[nodiscard]] bool isSecure() const { return m_isSecure; }
    void setSecure(bool isSecure);

    // Editing. Each edit is judged, and is made as far as it may be; whether anything changed is said by the first.

    /// In place of the selection: a string, or the characters of an attributed one. Null is the empty text, and any
    /// other object changes nothing.
    bool insertText(NSObject* string);
    /// The range is cut to the text; `NSNotFound` stands for the selection.
    bool insertText_replacementRange(NSObject* string, NSRange range);
    /// The selection or, when that has no length, the character beside it, of both code units where it has two.
    void deleteBackward(NSObject* sender);
    void deleteForward(NSObject* sender);
    void selectAll(NSObject* sender);
    /// By way of the toolkit's clipboard. Nothing is copied or cut out of a secure text, and an empty selection leaves
    /// the clipboard alone. In a field editor, line breaks are pasted as blanks.
    using NSObject::copy;
    void copy(NSObject* sender);
    void cut(NSObject* sender);
    void paste(NSObject* sender);

    // From the keyboard. In a field editor each ends editing, with the movement of its name. Otherwise return and tab
    // are characters, where the text can be edited; where it cannot, tab leads to the next key view, and back. What is
    // left is handed on to the next responder.

    void insertNewline(NSObject* sender);
    void insertTab(NSObject* sender);
    void insertBacktab(NSObject* sender);
    void cancelOperation(NSObject* sender);
    /// The delegate may answer `textView:doCommandBySelector:` first; what it deals with, by answering true, ends there.
    void doCommandBySelector(SEL action) override;

    /// A click on a link, at the index of a character: the delegate's `textView:clickedOnLink:atIndex:` may deal with
    /// it, by answering true, else the desktop opens the address. What is neither a URL nor a string that makes one
    /// does nothing then.
    virtual void clickedOnLink_atIndex(NSObject* link, NSUInteger index);

    [[nodiscard]] bool acceptsFirstResponder() const override;
    /// Begins editing, when it is editable and the delegate allows it; the delegate is asked again with the first edit
    /// otherwise. False for a text that cannot be selected.
    bool becomeFirstResponder() override;
    /// Ends editing, unless the delegate does not allow it. The end is told by a text that began, and by a field editor
    /// in any case.
    bool resignFirstResponder() override;
    /// The room for the text may follow.
    void setFrameSize(NSSize size) override;

    /// The natural extent of the text; 0 by 0 when it is empty.
    [[nodiscard]] NSSize intrinsicContentSize() const override;
    /// Draws the text; a toolkit may have an editor that does it itself.
    void drawRect(NSRect dirtyRect) override;

    // For toolkits, and for those that the text is edited for

    /// Asked about each edit before it is made, with the present text and selection: may put other ones into `edit`.
    using EditJudge = std::function<EditJudgement(TextEdit& edit, const TextEdit& present)>;
    /// An empty one accepts everything.
    void setEditJudge(EditJudge judge);
    /// Begins editing if that has not happened yet. Refuses what cannot be edited, and where the delegate does not allow
    /// it. For `Replaced`, `edit` holds what stands instead, for `Refused` what stood before.
    [[nodiscard]] EditJudgement judgeEdit(TextEdit& edit);
    /// The toolkit's editor has made an edit, as judged, or moved the selection; it is not told of that again. A change
    /// of the text is announced.
    void editWasMade(const TextEdit& edit);
    /// The movement that the present end of editing will report.
    void setTextMovement(NSTextMovement movement) { m_movement = movement; }
    /// Called by the layout manager when it has another text, and when the text changes.
    void textWasReplaced();
    /// Called by the container when it has another extent.
    void layoutChanged();

  private:
    bool makeEdit(NSRange range, std::u16string_view replacement);
    /// Puts `text` in place of the present one; characters that both begin and end with keep their attributes.
    void takeText(std::u16string_view text);
    void fitHeight();
    [[nodiscard]] NSRange cutToText(NSRange range) const;
    [[nodiscard]] Ref<NSDictionary> plainAttributes() const;
    void setAttribute(NSString* name, NSObject* value);
    void overwriteText();
    bool beginEditing();
    /// By message; true when the delegate does not respond.
    [[nodiscard]] bool delegateAllows(SEL question);
    void endEditing(NSTextMovement movement);
    void handOn(SEL command);
    void post(NSString* name, SEL operation, NSDictionary* userInfo);

    Ref<NSLayoutManager> m_layoutManager;
    Ref<NSTextContainer> m_textContainer;
    /// Null unless one was set.
    Ref<NSColor> m_insertionPointColor;
    EditJudge m_judge;
    NSTextMovement m_movement = NSTextMovementOther;
    bool m_displaysLinkToolTips = true;
    bool m_isSecure = false;
    bool m_isVerticallyResizable = false;
    /// Between being made first responder, or a first edit, and resigning.
    bool m_isActive = false;
    /// The delegate has allowed that, and its beginning was told.
    bool m_isEditing = false;
    /// The toolkit's editor shows already what changes.
    bool m_isTakingEdit = false;
};

} // namespace zr
