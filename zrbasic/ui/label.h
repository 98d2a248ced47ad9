#pragma once

#include <zrbasic/platform/appkit/text_field.h>
#include <zrbasic/platform/appkit/tracking_area.h>

namespace zr {

class NSCoder;

/// A line of text that can be clicked like a link: a press anywhere on it sends its action, whatever its style.
///
///     auto label = make<ZRXLabel>(&ZRXLabel::initWithStyle, 2);
///     label->setStringValue("Forgotten your password?"_ns);
///     label->setTarget(controller);
///     label->setAction("resetPassword:"_sel);
///
/// The text is underlined by an attributed value of the label, which has no attributes but the underline and the
/// paragraph's: those that a value set before had are lost. Main thread only.
class ZR_EXPORT ZRXLabel : public NSTextField {
    ZR_DECLARE_CLASS(ZRXLabel, NSTextField)
  public:
    ZRXLabel();
    ~ZRXLabel() override;

    /// Of style 0, as `setupInitialize` leaves it.
    id initWithFrame(NSRect frame) override;
    /// The same, with the frame that the archive has under "NSFrame"; null gives the zero frame.
    virtual id initWithCoder(NSCoder* coder);
    /// With the zero frame.
    virtual id initWithStyle(NSUInteger style);
    /// Not editable, no border, and a clear background.
    virtual void setupInitialize();

    /// True: the click that activates the window counts.
    [[nodiscard]] bool acceptsFirstMouse(NSEvent* event) override;

    /// 0 is plain. Any other style shows the pointing hand all over the label, and style 2 underlines the text while
    /// the pointer is over it.
    [[nodiscard]] NSUInteger style() const { return m_style.get(); }
    /// Takes effect at once, but for the underline of style 2, which waits until the pointer enters. Any other style
    /// makes the text an attributed value that is not underlined, so what attributes it had are lost.
    virtual void setStyle(NSUInteger style);
    /// Over the whole of the label while its style is 2, null otherwise. The label makes it anew when its bounds change.
    [[nodiscard]] Ref<NSTrackingArea> trackingArea() const { return m_trackingArea.get(); }
    virtual void setTrackingArea(NSTrackingArea* area);

    void updateTrackingAreas() override;
    void resetCursorRects() override;
    void mouseEntered(NSEvent* event) override;
    void mouseExited(NSEvent* event) override;
    void mouseDown(NSEvent* event) override;

    /// Makes the text as it reads an attributed value with two attributes: a single underline or none, and the label's
    /// alignment and line-break mode. Its font and colour are the label's.
    virtual void addStringValueWithUnderline(bool underlined);

  private:
    detail::Slot<NSUInteger> m_style;
    detail::Slot<Ref<NSTrackingArea>> m_trackingArea;
};

} // namespace zr
