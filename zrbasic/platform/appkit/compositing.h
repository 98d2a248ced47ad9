#pragma once

#include <zrbasic/platform/appkit/canvas.h>

#include <cstddef>
#include <cstdint>

namespace zr {

/// Draws `count` pixels on as many others. A pixel is four bytes, red, green, blue and alpha, the colours multiplied by
/// the alpha, as in a bitmap. The two may be the same, but must not overlap otherwise. An operation that is none of the
/// known ones draws over what is there. Any thread.
ZR_EXPORT void compositePixels(std::uint8_t* below, const std::uint8_t* over, std::size_t count,
                               NSCompositingOperation operation);

} // namespace zr
