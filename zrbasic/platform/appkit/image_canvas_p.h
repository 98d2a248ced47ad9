#pragma once

#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/appkit/bitmap_sampling_p.h>
#include <zrbasic/platform/appkit/canvas.h>
#include <zrbasic/platform/appkit/path_coverage_p.h>

#include <memory>
#include <vector>

namespace zr {

/// Draws into a bitmap, `size` points of which are spread over the pixels, with y upwards. Everything but text is drawn
/// here, so that pictures come out the same with any toolkit and without one; text takes a toolkit's fonts.
///
/// Pixels that come to lie on pixels, be it mirrored or by quarters of a turn, are copied as they are.
class ImageCanvas final : public Canvas {
  public:
    /// Null, and a size that is none, give a canvas on which nothing can be drawn.
    ImageCanvas(NSBitmapImageRep* bitmap, NSSize size);
    ~ImageCanvas() override;

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
    struct State {
        /// From the points of the drawing to those of the bitmap.
        NSAffineTransformStruct transform;
        PixelBox clip;
        /// How much of each pixel of the bitmap is left to draw in, as parts of 255; null for all of it.
        std::shared_ptr<const std::vector<std::uint8_t>> mask;
    };

    /// From the points of the drawing to pixels, y downwards.
    [[nodiscard]] NSAffineTransformStruct toPixels() const { return transformBoth(m_state.transform, m_base); }
    [[nodiscard]] std::uint8_t* at(int x, int y) const;
    void fillPolygons(const std::vector<Polygon>& polygons, NSColor* color, NSCompositingOperation operation);
    /// Draws pixels on those from x, y on, which the clipping leaves to draw in, as far as `parts` says, and all the way
    /// if there are none.
    void composite(int x, int y, std::span<const std::uint8_t> over, std::span<const std::uint8_t> parts,
                   NSCompositingOperation operation);

    Ref<NSBitmapImageRep> m_bitmap;
    NSSize m_size;
    NSAffineTransformStruct m_base;
    State m_state;
    std::vector<State> m_kept;
    // Kept from row to row, to be allocated once.
    std::vector<std::uint8_t> m_mixed;
    std::vector<std::uint8_t> m_masked;
};

} // namespace zr
