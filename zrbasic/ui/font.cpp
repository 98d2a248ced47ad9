#include <zrbasic/ui/font.h>

#include <zrbasic/ui/screen.h>

namespace zr {

Ref<NSFont> ZRFont(double size) {
    return NSFont::systemFontOfSize(size);
}

Ref<NSFont> ZRBoldFont(double size) {
    return NSFont::boldSystemFontOfSize(size);
}

Ref<NSFont> ZRFontWithWegiht(double size, NSFontWeight weight) {
    return NSFont::systemFontOfSize_weight(size, weight);
}

Ref<NSFont> ZRCompatibleFont(double size) {
    constexpr double fine = 2;
    return ZRFontWithWegiht(size, zr_scale() >= fine ? NSFontWeightRegular : NSFontWeightLight);
}

} // namespace zr
