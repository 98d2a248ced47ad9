#pragma once

#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/foundation/affine_transform.h>
#include <zrbasic/platform/runtime/function_ref.h>

#include <cstdint>
#include <span>

namespace zr {

/// Whole pixels, from the upper left corner on, without those at the right and at the bottom.
struct PixelBox {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    [[nodiscard]] bool isEmpty() const { return left >= right || top >= bottom; }
};

[[nodiscard]] PixelBox intersection(const PixelBox& box, const PixelBox& other);

/// Whether it leaves what is level level, be it mirrored or turned by quarters.
[[nodiscard]] bool keepsLevel(const NSAffineTransformStruct& transform);

/// Takes pixels that follow each other in a row, from x on, and how much of each there is, as parts of 255; nothing for
/// `parts` is all of them.
using PixelRun =
    FunctionRef<void(int y, int x, std::span<const std::uint8_t> pixels, std::span<const std::uint8_t> parts)>;

/// The part of the bitmap, in its pixels with y downwards, as it looks through `transform`, as far as it comes to lie in
/// `clip`. Where it stays level its edges go to the nearest pixel, and pixels that stay whole are given as they are;
/// otherwise they are mixed of the nearest four, and the edges are smooth.
void sampleBitmap(const NSBitmapImageRep& bitmap, NSRect part, const NSAffineTransformStruct& transform,
                  const PixelBox& clip, PixelRun take);

} // namespace zr
