#pragma once

#include <zrbasic/platform/appkit/canvas.h>
#include <zrbasic/platform/runtime/function_ref.h>

class QPainter;
class QRectF;

namespace zr::qt {

/// Draws with a painter, which is borrowed and left as it was, into an area `size` large whose upper left corner is the
/// painter's origin.
class PainterCanvas final : public Canvas {
  public:
    PainterCanvas(QPainter& painter, NSSize size, bool isFlipped);
    ~PainterCanvas() override;

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
    /// Runs `draw`, which fills nothing but `area`, so that it goes together with what is there as `operation` says.
    void compose(const QRectF& area, NSCompositingOperation operation, FunctionRef<void(QPainter&)> draw);
    /// Turns the painter so that y grows downwards from the upper left corner of `rect`.
    void standUpright(NSRect rect);

    QPainter& m_painter;
    bool m_isFlipped;
    int m_kept = 0;
};

} // namespace zr::qt
