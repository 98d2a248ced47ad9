#pragma once

#include <zrbasic/platform/appkit/clip_view.h>
#include <zrbasic/platform/appkit/scroller.h>

namespace zr {

/// Shows a part of a larger view, its document, and lets users move it by scrollers and by the wheel.
///
///     auto scrolling = make<NSScrollView>(&NSScrollView::initWithFrame, NSMakeRect(0, 0, 200, 300));
///     scrolling->setDocumentView(longView);
///     scrolling->setHasVerticalScroller(true);
///
/// Its y grows downwards, that of its content view as the document's does. Main thread only.
class ZR_EXPORT NSScrollView : public NSView {
    ZR_DECLARE_CLASS(NSScrollView, NSView)
  public:
    NSScrollView();
    ~NSScrollView() override;

    /// With an empty content view, and without scrollers.
    id initWithFrame(NSRect frame) override;

    /// What clips the document; never null in one that was set up, as null does nothing. Another one takes over the
    /// document.
    [[nodiscard]] Ref<NSClipView> contentView() const { return m_contentView; }
    virtual void setContentView(NSClipView* view);
    /// The content view's; null at first.
    [[nodiscard]] Ref<NSView> documentView() const;
    virtual void setDocumentView(NSView* view);
    [[nodiscard]] NSRect documentVisibleRect() const;
    /// The extent of the content view.
    [[nodiscard]] NSSize contentSize() const;

    /// Whether there are scrollers; false at first. A platform's one is made where none was set.
    [[nodiscard]] bool hasVerticalScroller() const { return m_hasVerticalScroller; }
    void setHasVerticalScroller(bool has);
    [[nodiscard]] bool hasHorizontalScroller() const { return m_hasHorizontalScroller; }
    void setHasHorizontalScroller(bool has);
    /// Null until one was set or made. Kept, and shown only when there is to be one. The scroll view becomes its target.
    [[nodiscard]] Ref<NSScroller> verticalScroller() const { return m_verticalScroller; }
    virtual void setVerticalScroller(NSScroller* scroller);
    [[nodiscard]] Ref<NSScroller> horizontalScroller() const { return m_horizontalScroller; }
    virtual void setHorizontalScroller(NSScroller* scroller);

    /// Whether scrollers float over the content or take room from it, which they do at first. The style is that in
    /// effect: as long as there is a scroller whose class cannot float (`isCompatibleWithOverlayScrollers`), none does.
    [[nodiscard]] NSScrollerStyle scrollerStyle() const;
    virtual void setScrollerStyle(NSScrollerStyle style);
    /// Whether scrollers go where there is nothing to scroll; false at first. Floating ones always do.
    [[nodiscard]] bool autohidesScrollers() const { return m_autohidesScrollers; }
    void setAutohidesScrollers(bool hides);

    /// How far a line is, 10 points at first, and how much of a page is seen on the next one as well, 10 too. Not below
    /// 0, which is what no number stands for.
    [[nodiscard]] double verticalLineScroll() const { return m_lineScroll.height; }
    void setVerticalLineScroll(double points);
    [[nodiscard]] double horizontalLineScroll() const { return m_lineScroll.width; }
    void setHorizontalLineScroll(double points);
    [[nodiscard]] double verticalPageScroll() const { return m_pageScroll.height; }
    void setVerticalPageScroll(double points);
    [[nodiscard]] double horizontalPageScroll() const { return m_pageScroll.width; }
    void setHorizontalPageScroll(double points);

    /// The content view's.
    [[nodiscard]] bool drawsBackground() const;
    void setDrawsBackground(bool draws);
    [[nodiscard]] Ref<NSColor> backgroundColor() const;
    void setBackgroundColor(NSColor* color);

    /// Lays out content view and scrollers.
    virtual void tile();
    /// Makes the scrollers say what `view` shows; for another view than the content view nothing.
    virtual void reflectScrolledClipView(NSClipView* view);
    /// Shows what lies from `origin` on in the content view's bounds, as far as the document reaches.
    void scrollTo(NSPoint origin);

    [[nodiscard]] bool isFlipped() const override;
    void setFrameSize(NSSize size) override;
    /// Three lines for each notch. What cannot be scrolled goes on to the next responder.
    void scrollWheel(NSEvent* event) override;
    /// The scrollers' action.
    virtual void scrollerMoved(NSObject* sender);

  private:
    void layOut();
    void adopt(Ref<NSScroller>& place, NSScroller* scroller);
    void setHas(bool& flag, Ref<NSScroller>& scroller, bool has, NSRect shape);
    [[nodiscard]] double breadthOf(NSScroller* scroller) const;
    void showScroller(NSScroller* scroller, bool has, bool isShown, NSRect frame);

    Ref<NSClipView> m_contentView;
    Ref<NSScroller> m_verticalScroller;
    Ref<NSScroller> m_horizontalScroller;
    NSScrollerStyle m_scrollerStyle = NSScrollerStyleLegacy;
    /// The document's, when everything was laid out last.
    NSSize m_tiledFor;
    NSSize m_lineScroll{10, 10};
    NSSize m_pageScroll{10, 10};
    bool m_hasVerticalScroller = false;
    bool m_hasHorizontalScroller = false;
    bool m_autohidesScrollers = false;
    bool m_isTiling = false;
};

// NSView(NSScrollView)

/// The innermost scroll view that the receiver lies in; null when there is none.
[[nodiscard]] ZR_EXPORT Ref<NSScrollView> enclosingScrollView(NSView* self);
/// Scrolls the content view around the receiver as far as it takes to see `rect`, which is in its coordinates, and no
/// farther; whether it was moved. Of what is larger than the content view, the beginning is shown.
ZR_EXPORT bool scrollRectToVisible(NSView* self, NSRect rect);

} // namespace zr
