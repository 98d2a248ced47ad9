#pragma once

#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/appkit/view.h>

namespace zr {

/// Shows a part of a document, and moves the origin of its bounds to show another. Flipped as the document is.
///
/// It tells the view that it lies in, if that has `reflectScrolledClipView:`, of every change, and its document, if that
/// has `resizeWithOldSuperviewSize:`, of another extent. Main thread only.
class ZR_EXPORT NSClipView : public NSView {
    ZR_DECLARE_CLASS(NSClipView, NSView)
  public:
    NSClipView();
    ~NSClipView() override;

    /// Null at first. Kept; the one before is taken out.
    [[nodiscard]] Ref<NSView> documentView() const { return m_documentView; }
    virtual void setDocumentView(NSView* view);
    /// The document's frame; the zero rectangle without one.
    [[nodiscard]] NSRect documentRect() const;
    /// What is seen, in the coordinates of the document; the zero rectangle without one.
    [[nodiscard]] NSRect documentVisibleRect() const;

    /// Shows what lies from `origin` on, even where the document does not reach; what is not a number does nothing.
    virtual void scrollToPoint(NSPoint origin);
    /// The nearest bounds that show no more beside the document than they must: a document that is smaller lies at the
    /// left, and at the top or, not flipped, at the bottom.
    [[nodiscard]] virtual NSRect constrainBoundsRect(NSRect wanted);

    /// True and white at first; null sets white.
    [[nodiscard]] bool drawsBackground() const { return m_drawsBackground; }
    void setDrawsBackground(bool draws);
    [[nodiscard]] Ref<NSColor> backgroundColor() const;
    void setBackgroundColor(NSColor* color);

    [[nodiscard]] bool isFlipped() const override;
    void setFrameSize(NSSize size) override;
    void setBoundsOrigin(NSPoint origin) override;
    void drawRect(NSRect dirtyRect) override;
    /// A view in it has another frame.
    virtual void subviewFrameChanged(NSView* view);

  private:
    void constrain();
    void tellScrollView();

    Ref<NSView> m_documentView;
    /// Null unless one was set.
    Ref<NSColor> m_backgroundColor;
    bool m_drawsBackground = true;
};

} // namespace zr
