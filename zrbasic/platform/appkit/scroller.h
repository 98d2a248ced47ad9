#pragma once

#include <zrbasic/platform/appkit/control.h>

namespace zr {

/// Where in a scroller something is.
enum NSScrollerPart : NSUInteger {
    NSScrollerNoPart = 0,
    /// The slot before the knob, above it or to the left.
    NSScrollerDecrementPage = 1,
    NSScrollerKnob = 2,
    /// The slot behind the knob.
    NSScrollerIncrementPage = 3,
    /// Arrows, of which these scrollers have none.
    NSScrollerDecrementLine = 4,
    NSScrollerIncrementLine = 5,
    /// All that the knob moves in.
    NSScrollerKnobSlot = 6,
};

/// Whether scrollers lie beside what they scroll, or float over it.
enum NSScrollerStyle : NSInteger {
    NSScrollerStyleLegacy = 0,
    NSScrollerStyleOverlay = 1,
};

enum NSScrollerKnobStyle : NSInteger {
    NSScrollerKnobStyleDefault = 0,
    /// For a light background.
    NSScrollerKnobStyleDark = 1,
    /// For a dark one.
    NSScrollerKnobStyleLight = 2,
};

enum NSControlSize : NSUInteger {
    NSControlSizeRegular = 0,
    NSControlSizeSmall = 1,
    NSControlSizeMini = 2,
};

/// A knob in a slot, which says how much of something is seen, and where. Its y grows downwards.
///
/// The value is 0 at the beginning, above or to the left, and 1 at the end. Dragging the knob changes it and sends the
/// action all the while; a click beside the knob sends the action and changes nothing, as only the target knows how far
/// a page is: `hitPart` tells it which way. Main thread only.
class ZR_EXPORT NSScroller : public NSControl {
    ZR_DECLARE_CLASS(NSScroller, NSControl)
  public:
    NSScroller();
    ~NSScroller() override;

    /// Cells that keep the value between 0 and 1; what is no number is 0.
    [[nodiscard]] static Class* cellClass();
    /// Whether scrollers of that class can float over what they scroll. True for `NSScroller` itself: a subclass that
    /// draws for it says so of itself.
    [[nodiscard]] static bool isCompatibleWithOverlayScrollers(Class* self);
    /// How broad such a scroller is, in points; 0 for an unknown size or style.
    [[nodiscard]] static double scrollerWidthForControlSize_scrollerStyle(NSControlSize size, NSScrollerStyle style);

    [[nodiscard]] NSScrollerKnobStyle knobStyle() const { return m_knobStyle; }
    void setKnobStyle(NSScrollerKnobStyle style);
    [[nodiscard]] NSScrollerStyle scrollerStyle() const { return m_scrollerStyle; }
    void setScrollerStyle(NSScrollerStyle style);
    [[nodiscard]] NSControlSize controlSize() const { return m_controlSize; }
    void setControlSize(NSControlSize size);

    /// How much of the whole is seen, from 0 to 1; 0 at first. Anything beyond is clamped, and what is not a number is 0.
    [[nodiscard]] double knobProportion() const { return m_knobProportion; }
    void setKnobProportion(double proportion);

    /// Whether it is wider than high.
    [[nodiscard]] virtual bool isHorizontal() const;
    /// The zero rectangle for a part that there is not. The knob is at least 18 points long, in a slot that is.
    [[nodiscard]] virtual NSRect rectForPart(NSScrollerPart part);
    /// What lies at the point, which is in the window's coordinates.
    [[nodiscard]] virtual NSScrollerPart testPart(NSPoint point);
    /// What the mouse was pressed on last, until it is released.
    [[nodiscard]] NSScrollerPart hitPart() const { return m_hitPart; }

    [[nodiscard]] bool isFlipped() const override;
    /// False: a click leaves the keyboard where it is.
    [[nodiscard]] bool acceptsFirstResponder() const override;
    [[nodiscard]] NSSize intrinsicContentSize() const override;

    /// The slot, then the knob, each by message.
    void drawRect(NSRect dirtyRect) override;
    virtual void drawKnob();
    /// Nothing where the scroller floats and the mouse is not on it.
    virtual void drawKnobSlotInRect_highlight(NSRect slot, bool highlight);

    void mouseDown(NSEvent* event) override;
    void mouseDragged(NSEvent* event) override;
    void mouseUp(NSEvent* event) override;

  private:
    /// Of a point in the window, the distance along the slot.
    [[nodiscard]] double along(NSPoint point) const;
    void redraw();

    NSScrollerKnobStyle m_knobStyle = NSScrollerKnobStyleDefault;
    NSScrollerStyle m_scrollerStyle = NSScrollerStyleLegacy;
    NSControlSize m_controlSize = NSControlSizeRegular;
    NSScrollerPart m_hitPart = NSScrollerNoPart;
    double m_knobProportion = 0;
    /// From the beginning of the knob to where it was gripped.
    double m_grip = 0;
};

} // namespace zr
