#pragma once

#include <zrbasic/platform/appkit/view.h>

namespace zr {

/// A view whose origin is at the upper left, and which can keep clicks from everything in it. Main thread only.
class ZR_EXPORT ZRXView : public NSView {
    ZR_DECLARE_CLASS(ZRXView, NSView)
  public:
    ZRXView();
    ~ZRXView() override;

    /// Whether the view takes all clicks for itself; false at first.
    ///
    /// It then answers every hit test with itself, wherever the point is, as long as it is asked: so the views behind it
    /// in the same superview are hit no more either, not even beside it.
    [[nodiscard]] bool bannedMouseClick() const { return m_bannedMouseClick.get(); }
    void setBannedMouseClick(bool banned) { m_bannedMouseClick.set(banned); }

    [[nodiscard]] bool isFlipped() const override;
    [[nodiscard]] Ref<NSView> hitTest(NSPoint point) override;
    void mouseDown(NSEvent* event) override;
    void prepareForReuse() override;

  private:
    detail::Slot<bool> m_bannedMouseClick;
};

} // namespace zr
