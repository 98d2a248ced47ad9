#pragma once

#include <zrbasic/platform/appkit/cell.h>

namespace zr {

/// A line of text that may be edited, and what stands there while it is empty. Main thread only.
class ZR_EXPORT NSTextFieldCell : public NSActionCell {
    ZR_DECLARE_CLASS(NSTextFieldCell, NSActionCell)
  public:
    NSTextFieldCell();
    ~NSTextFieldCell() override;

    /// Black at first, and for null; as light as labels in the dark appearance.
    [[nodiscard]] Ref<NSColor> textColor() const;
    void setTextColor(NSColor* color);
    /// Null at first: nothing is drawn behind the text unless one is set and `drawsBackground` says so.
    [[nodiscard]] Ref<NSColor> backgroundColor() const;
    void setBackgroundColor(NSColor* color);
    [[nodiscard]] bool drawsBackground() const { return m_drawsBackground; }
    void setDrawsBackground(bool draws);
    [[nodiscard]] NSTextFieldBezelStyle bezelStyle() const { return m_bezelStyle; }
    void setBezelStyle(NSTextFieldBezelStyle style);

    /// The text shown while the field is empty; null for none. Setting one of the two takes the other away, but the
    /// text of an attributed one is given for a plain one as well. A plain one is drawn in the cell's font, in grey.
    [[nodiscard]] Ref<NSString> placeholderString() const;
    void setPlaceholderString(NSString* string);
    [[nodiscard]] Ref<NSAttributedString> placeholderAttributedString() const { return m_placeholderAttributed; }
    void setPlaceholderAttributedString(NSAttributedString* string);
    /// As it is drawn, in all attributes; null for none. An attributed one takes nothing from the cell but alignment and
    /// line-break mode: without a font it is drawn in the system font of 13 points, without a colour in grey.
    [[nodiscard]] Ref<NSAttributedString> textForEmpty() const override;

  protected:
    [[nodiscard]] Ref<NSColor> colorOfText() const override;
    void drawBackground(NSRect frame) const override;
    [[nodiscard]] double bezelRadius() const override;

  private:
    friend class NSTextField;

    /// White, or what stands for it in the dark appearance, until another background is set.
    void standOnPaper();

    /// Null unless one was set.
    Ref<NSColor> m_textColor;
    Ref<NSColor> m_backgroundColor;
    bool m_isOnPaper = false;
    Ref<NSString> m_placeholder;
    Ref<NSAttributedString> m_placeholderAttributed;
    NSTextFieldBezelStyle m_bezelStyle = NSTextFieldSquareBezel;
    bool m_drawsBackground = false;
};

/// Shows a bullet for every character, and edits likewise; nothing of its text can be copied or cut. Main thread only.
///
/// A text that the cell gives up, by taking another one or by going, is overwritten in memory if nobody else holds that
/// very string. What was handed out, was set by somebody who kept it, or passed through an editor on the screen on its
/// way here is out of its reach.
class ZR_EXPORT NSSecureTextFieldCell : public NSTextFieldCell {
    ZR_DECLARE_CLASS(NSSecureTextFieldCell, NSTextFieldCell)
  public:
    NSSecureTextFieldCell();
    ~NSSecureTextFieldCell() override;

    /// Bullets (U+2022), one for every UTF-16 code unit, with the cell's font and colour.
    [[nodiscard]] Ref<NSAttributedString> attributedStringValue() const override;
    /// Leaves nothing of the text in the editor.
    void endEditing(NSText* editor) override;

  protected:
    [[nodiscard]] bool editsSecretly() const override;
    void discard(id value) override;
};

} // namespace zr
