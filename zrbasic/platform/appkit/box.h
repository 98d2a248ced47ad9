#pragma once

#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/appkit/view.h>

namespace zr {

enum NSBoxType : NSUInteger {
    /// Around a group of controls, in the system's look.
    NSBoxPrimary = 0,
    /// A line across the middle, along the longer side.
    NSBoxSeparator = 2,
    /// As its colours, line and corners say.
    NSBoxCustom = 4,
};

enum NSTitlePosition : NSUInteger {
    NSNoTitle = 0,
    /// Above the border; the other places are not told apart from it.
    NSAtTop = 2,
};

/// A frame around another view, with a title above it. Main thread only.
class ZR_EXPORT NSBox : public NSView {
    ZR_DECLARE_CLASS(NSBox, NSView)
  public:
    NSBox();
    ~NSBox() override;

    /// A primary box with an empty content view.
    id initWithFrame(NSRect frame) override;

    [[nodiscard]] NSBoxType boxType() const { return m_boxType; }
    virtual void setBoxType(NSBoxType type);

    // Of custom boxes; in the others they are kept and do not show.

    /// In points; 1 at first, and not below 0. What is not a number is 0.
    [[nodiscard]] double borderWidth() const { return m_borderWidth; }
    virtual void setBorderWidth(double width);
    /// As the width of the border, but 0 at first.
    [[nodiscard]] double cornerRadius() const { return m_cornerRadius; }
    virtual void setCornerRadius(double radius);
    /// Clear at first; never null, as null sets clear. That of the border is a grey at first.
    [[nodiscard]] Ref<NSColor> fillColor() const { return m_fillColor; }
    virtual void setFillColor(NSColor* color);
    [[nodiscard]] Ref<NSColor> borderColor() const;
    virtual void setBorderColor(NSColor* color);

    /// Whether neither border nor background are drawn; false at first.
    [[nodiscard]] bool isTransparent() const { return m_isTransparent; }
    void setTransparent(bool transparent);

    /// Never null; empty at first, which shows nothing. Copied when set.
    [[nodiscard]] Ref<NSString> title() const { return m_title; }
    virtual void setTitle(NSString* title);
    /// Above the border at first.
    [[nodiscard]] NSTitlePosition titlePosition() const { return m_titlePosition; }
    void setTitlePosition(NSTitlePosition position);

    /// What lies in the box, and is made as large as that leaves room; null when it was taken out. Kept.
    [[nodiscard]] Ref<NSView> contentView() const { return m_contentView; }
    virtual void setContentView(NSView* view);
    /// Between the border and the content, to the left and right and above and below; 5 and 5 at first.
    [[nodiscard]] NSSize contentViewMargins() const { return m_contentViewMargins; }
    void setContentViewMargins(NSSize margins);
    /// Where the border is drawn: all of the bounds beneath the title.
    [[nodiscard]] NSRect borderRect() const;

    void setFrameSize(NSSize size) override;
    void drawRect(NSRect dirtyRect) override;

  private:
    [[nodiscard]] bool showsTitle() const;
    /// Of the border as it is drawn.
    [[nodiscard]] double lineWidth() const;
    void changed();
    void placeContent();

    NSBoxType m_boxType = NSBoxPrimary;
    NSTitlePosition m_titlePosition = NSAtTop;
    double m_borderWidth = 1;
    double m_cornerRadius = 0;
    NSSize m_contentViewMargins{5, 5};
    Ref<NSColor> m_fillColor;
    /// Null unless one was set.
    Ref<NSColor> m_borderColor;
    Ref<NSString> m_title;
    Ref<NSView> m_contentView;
    bool m_isTransparent = false;
};

} // namespace zr
