#include <zrbasic/ui/box.h>

namespace zr {

ZR_DEFINE_CLASS(ZRXBox) {}

ZRXBox::ZRXBox() = default;
ZRXBox::~ZRXBox() = default;

id ZRXBox::initWithFrame(NSRect frame) {
    const id self = NSBox::initWithFrame(frame);
    setBoxType(NSBoxCustom);
    setFillColor(NSColor::clearColor());
    setBorderWidth(0);
    setCornerRadius(0);
    return self;
}

bool ZRXBox::acceptsFirstMouse(NSEvent*) {
    return true;
}

} // namespace zr
