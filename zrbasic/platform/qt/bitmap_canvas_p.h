#pragma once

#include <zrbasic/platform/qt/canvas_p.h>

#include <QImage>
#include <QPainter>

#include <optional>

namespace zr::qt {

/// Draws into a bitmap, which must outlive it: `size` points are spread over the pixels. A size that is none takes a
/// pixel as a point. What is drawn stands in the bitmap at once.
class BitmapCanvas final : public Canvas {
  public:
    BitmapCanvas(NSBitmapImageRep& bitmap, NSSize size, bool isFlipped);
    ~BitmapCanvas() override;

    void save() override;
    void restore() override;
    void clipToRect(NSRect rect) override;
    void concat(const NSAffineTransformStruct& transform) override;
    void fillRect(NSRect rect, NSColor* color, NSCompositingOperation operation) override;
    void fillRoundedRect(NSRect rect, double xRadius, double yRadius, NSColor* color) override;
    void strokeRoundedRect(NSRect rect, double radius, double width, NSColor* color) override;
    void fillPath(const CGPath& path, NSColor* color) override;
    void strokePath(const CGPath& path, double width, NSColor* color) override;
    void drawText(NSAttributedString* text, NSRect rect, bool isSingleLine) override;
    void drawBitmap(NSBitmapImageRep* bitmap, NSRect to, NSRect from, NSCompositingOperation operation,
                    double fraction) override;

  private:
    QImage m_image;
    QPainter m_painter;
    /// Nothing for a bitmap without pixels.
    std::optional<PainterCanvas> m_canvas;
};

} // namespace zr::qt
