#pragma once

#include <zrbasic/platform/appkit/box.h>

namespace zr {

/// A box that shows nothing of itself: no border, no background, square corners. Main thread only.
class ZR_EXPORT ZRXBox : public NSBox {
    ZR_DECLARE_CLASS(ZRXBox, NSBox)
  public:
    ZRXBox();
    ~ZRXBox() override;

    id initWithFrame(NSRect frame) override;
    /// True: the click that activates the window counts.
    [[nodiscard]] bool acceptsFirstMouse(NSEvent* event) override;
};

} // namespace zr
