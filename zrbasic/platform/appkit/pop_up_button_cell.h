#pragma once

#include <zrbasic/platform/appkit/button_cell.h>

namespace zr {

/// The cell of a pop-up button: a button's, with the title at the left and an arrow at the right. It is as wide as the
/// widest item of its button needs. Main thread only.
class ZR_EXPORT NSPopUpButtonCell : public NSButtonCell {
    ZR_DECLARE_CLASS(NSPopUpButtonCell, NSButtonCell)
  public:
    NSPopUpButtonCell();
    ~NSPopUpButtonCell() override;

    id initTextCell(NSString* string) override;
    [[nodiscard]] NSSize cellSize() const override;
    /// Where the title stands, so without the arrow.
    [[nodiscard]] NSRect drawingRectForBounds(NSRect bounds) const override;
    void drawWithFrame_inView(NSRect frame, NSView* view) override;
};

} // namespace zr
