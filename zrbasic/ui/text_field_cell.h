#pragma once

#include <zrbasic/platform/appkit/text_field_cell.h>

namespace zr {

/// Puts one line of text in the middle between the upper and the lower edge. Main thread only.
class ZR_EXPORT ZRXTextFieldCell : public NSTextFieldCell {
    ZR_DECLARE_CLASS(ZRXTextFieldCell, NSTextFieldCell)
  public:
    ZRXTextFieldCell();
    ~ZRXTextFieldCell() override;

    /// In points, between the text and either side of the frame; 0 until a field sets it. Kept as it is set.
    [[nodiscard]] double xPadding() const { return m_xPadding; }
    virtual void setXPadding(double padding);

    /// Where in `frame` the text stands, drawn or edited: the padding off on the left and on the right, and as much off
    /// at the top and at the bottom, in whole points, as the font needs to stand in the middle.
    ///
    /// With H for the height, A and D for ascender and descender (which is below 0), that is H / 2 - (A + D), rounded
    /// down, and 2 more. Nothing is clamped: in a small frame the extent is below 0, in which nothing is drawn. A frame
    /// 24 points high and a font of 12 and -3 give 5 points.
    [[nodiscard]] virtual NSRect adjustedFrameToVerticallyCenterText(NSRect frame);

    /// Fills the whole frame with the background colour, if there is one, whatever `drawsBackground` says.
    void drawInteriorWithFrame_inView(NSRect frame, NSView* view) override;
    void editWithFrame_inView_editor_delegate_event(NSRect frame, NSView* view, NSText* editor, NSObject* delegate,
                                                    NSEvent* event) override;
    void selectWithFrame_inView_editor_delegate_start_length(NSRect frame, NSView* view, NSText* editor,
                                                             NSObject* delegate, NSInteger start,
                                                             NSInteger length) override;

  protected:
    void drawBackground(NSRect frame) const override;

  private:
    double m_xPadding = 0;
};

/// The same for a password, 5 points from both sides. Main thread only.
class ZR_EXPORT ZRXSecureTextFieldCell : public NSSecureTextFieldCell {
    ZR_DECLARE_CLASS(ZRXSecureTextFieldCell, NSSecureTextFieldCell)
  public:
    ZRXSecureTextFieldCell();
    ~ZRXSecureTextFieldCell() override;

    /// As in ZRXTextFieldCell, with 5 points for the padding.
    [[nodiscard]] virtual NSRect adjustedFrameToVerticallyCenterText(NSRect frame);

    void drawInteriorWithFrame_inView(NSRect frame, NSView* view) override;
    void editWithFrame_inView_editor_delegate_event(NSRect frame, NSView* view, NSText* editor, NSObject* delegate,
                                                    NSEvent* event) override;
    void selectWithFrame_inView_editor_delegate_start_length(NSRect frame, NSView* view, NSText* editor,
                                                             NSObject* delegate, NSInteger start,
                                                             NSInteger length) override;

  protected:
    void drawBackground(NSRect frame) const override;
};

} // namespace zr
