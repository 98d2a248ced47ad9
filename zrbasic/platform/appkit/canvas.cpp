#include <zrbasic/platform/appkit/canvas.h>

namespace zr {

Canvas::~Canvas() = default;

} // namespace zr
