#pragma once

#include <zrbasic/platform/appkit/view.h>

#include <limits>
#include <utility>
#include <vector>

namespace zr {

/// The subviews of a split view have other frames now.
[[nodiscard]] ZR_EXPORT Ref<NSString> NSSplitViewDidResizeSubviewsNotification();

/// How thick a subview of a split view may be, in points.
struct ThicknessLimits {
    double minimum = 0;
    double maximum = std::numeric_limits<double>::infinity();
};

/// Lays its subviews out side by side, or one below the other, with a line of 1 point between them that can be moved.
///
/// A subview's thickness is its extent across the lines: its width where they stand upright. The thickness that it
/// comes with, or its natural one where it comes with none, is what it wants; moving a line, or giving it another
/// frame, makes that its wish. When there is more room than all want, those grow that hug their contents least, and
/// when there is less, those shrink that resist compression least, each by its share of what they want. The rest is
/// left to the next ones only when these can give no more. A minimum and a maximum always hold: beyond them room is
/// left free at the end, or what does not fit reaches beyond it. A hidden subview takes no room, nor does a line of its
/// own.
///
/// The layout follows by itself whatever happens to the extent, the list of subviews and their priorities. Main thread
/// only.
class ZR_EXPORT NSSplitView : public NSView {
    ZR_DECLARE_CLASS(NSSplitView, NSView)
  public:
    NSSplitView();
    ~NSSplitView() override;

    /// Whether the lines stand upright, so that the subviews are side by side; false at first.
    [[nodiscard]] bool isVertical() const { return m_isVertical; }
    void setVertical(bool vertical);
    /// 1 point.
    [[nodiscard]] virtual double dividerThickness() const;
    /// True: the first subview is at the top.
    [[nodiscard]] bool isFlipped() const override;

    /// Told by `splitViewDidResizeSubviews:` of new frames; a layout that it asks for meanwhile does not take place.
    /// Not kept.
    [[nodiscard]] id delegate() const { return m_delegate.lock(); }
    void setDelegate(NSObject* delegate) { m_delegate = Weak<NSObject>(delegate); }

    /// Lays the subviews out by what they want. Extents that are not numbers count as none.
    virtual void adjustSubviews();
    /// True for a subview that is hidden; false for null and for others.
    [[nodiscard]] bool isSubviewCollapsed(NSView* subview) const;

    /// Moves the line behind the shown subview of that index so that it begins at `position`, as far as the two beside
    /// it allow. An index of no line, and what is not a number, do nothing.
    virtual void setPosition_ofDividerAtIndex(double position, NSInteger index);
    /// Where the line can be moved to, the others staying; 0 for an index of no line.
    [[nodiscard]] double minPossiblePositionOfDividerAtIndex(NSInteger index);
    [[nodiscard]] double maxPossiblePositionOfDividerAtIndex(NSInteger index);
    /// The line; the zero rectangle for an index of none.
    [[nodiscard]] NSRect rectOfDividerAtIndex(NSInteger index);
    /// Nothing: the subviews are laid out, whatever their masks say.
    void resizeSubviewsWithOldSize(NSSize oldSize) override;
    /// A subview has another priority.
    virtual void subviewPrioritiesChanged(NSView* subview);
    /// Draws the line in its rectangle.
    virtual void drawDividerInRect(NSRect rect);

    /// What is not finite or below 0 counts as no limit; of two that contradict each other the minimum holds. What is
    /// no subview is remembered as soon as it is one. Null does nothing.
    void setThicknessLimits(ThicknessLimits limits, NSView* subview);
    [[nodiscard]] ThicknessLimits thicknessLimits(NSView* subview) const;

    /// The receiver within 2 points of a line, so that it can be caught.
    [[nodiscard]] Ref<NSView> hitTest(NSPoint point) override;
    /// Resize cursors over the lines.
    void resetCursorRects() override;
    void mouseDown(NSEvent* event) override;
    void mouseDragged(NSEvent* event) override;
    void mouseUp(NSEvent* event) override;
    void setNeedsDisplay(bool needs) override;
    void drawRect(NSRect dirtyRect) override;

  private:
    /// What is known of a subview.
    struct Part {
        Weak<NSView> view;
        ThicknessLimits limits;
        /// NaN until it is first laid out.
        double wanted = std::numeric_limits<double>::quiet_NaN();
        /// What the last layout gave it.
        double given = std::numeric_limits<double>::quiet_NaN();
    };
    /// A subview that takes room, during a layout.
    struct Share;

    [[nodiscard]] std::vector<Ref<NSView>> shownSubviews() const;
    /// The bounds, without what is not a number.
    [[nodiscard]] NSRect room() const;
    [[nodiscard]] double thicknessOf(NSView* view) const;
    [[nodiscard]] double startOf(NSView* view) const;
    Part& partOf(NSView* view);
    [[nodiscard]] std::vector<Share> shares();
    void place(const std::vector<Share>& shares);
    [[nodiscard]] bool isStale() const;
    /// Does the work unless it is at such work already.
    template <class Work>
    void adjusting(const Work& work);
    void layOut();
    /// The range of the line's positions, empty (the first beyond the second) for an index of none.
    [[nodiscard]] std::pair<double, double> possiblePositions(NSInteger index);
    [[nodiscard]] double startOfDivider(NSInteger index);
    [[nodiscard]] NSRect catchingRect(NSInteger index);
    /// -1 for none.
    [[nodiscard]] NSInteger dividerAt(NSPoint point);

    bool m_isVertical = false;
    bool m_isAdjusting = false;
    Weak<NSObject> m_delegate;
    std::vector<Part> m_parts;
    /// What the last layout was made for; never looked into.
    std::vector<const NSView*> m_laidOut;
    NSRect m_laidOutRoom;
    /// The line that is being moved, -1 for none, and how far from its beginning it was caught.
    NSInteger m_caught = -1;
    double m_caughtAt = 0;
};

} // namespace zr
