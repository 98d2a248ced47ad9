#pragma once

#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/appkit/scroller.h>

namespace zr {

/// A thin scroller that floats over what it scrolls, with a knob of any colour that hugs the far edge of the track.
///
///     auto scroller = make<ZRXScroller>(&ZRXScroller::initWithFrame, NSMakeRect(0, 0, 10, 200));
///     scroller->setKnobColor(NSColor::whiteColor());
///     scrollView->setVerticalScroller(scroller);
///     scrollView->setHasVerticalScroller(true);
///
/// Main thread only.
class ZR_EXPORT ZRXScroller : public NSScroller {
    ZR_DECLARE_CLASS(ZRXScroller, NSScroller)
  public:
    ZRXScroller();
    ~ZRXScroller() override;

    /// A mini overlay scroller with the default knob style, and with a layer.
    id initWithFrame(NSRect frame) override;
    /// True for this class alone: a subclass answers for itself.
    [[nodiscard]] static bool isCompatibleWithOverlayScrollers(Class* self);

    /// Whether no knob is drawn; false at first.
    [[nodiscard]] bool hideKnob() const { return m_hideKnob.get(); }
    virtual void setHideKnob(bool hides);
    /// What the slot is filled with; null, at first, leaves it alone.
    [[nodiscard]] Ref<NSColor> scrollBackgroundColor() const { return m_scrollBackgroundColor.get(); }
    virtual void setScrollBackgroundColor(NSColor* color);
    /// Null, at first, is light grey.
    [[nodiscard]] Ref<NSColor> knobColor() const { return m_knobColor.get(); }
    virtual void setKnobColor(NSColor* color);

    /// Whether the frame is wider than high.
    [[nodiscard]] bool isHorizontal() const override;
    void drawRect(NSRect dirtyRect) override;
    void drawKnob() override;
    void drawKnobSlotInRect_highlight(NSRect slot, bool highlight) override;

  private:
    void redraw();

    detail::Slot<bool> m_hideKnob;
    detail::Slot<Ref<NSColor>> m_scrollBackgroundColor;
    detail::Slot<Ref<NSColor>> m_knobColor;
};

} // namespace zr
