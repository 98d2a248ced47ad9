#include <zrbasic/ui/plain_view.h>

namespace zr {

ZR_DEFINE_CLASS(ZRXView) {
    is.property<ZRXView, &ZRXView::m_bannedMouseClick>("bannedMouseClick", "setBannedMouseClick");
}

ZRXView::ZRXView() = default;
ZRXView::~ZRXView() = default;

bool ZRXView::isFlipped() const {
    return true;
}

Ref<NSView> ZRXView::hitTest(NSPoint point) {
    return bannedMouseClick() ? Ref<NSView>(this) : NSView::hitTest(point);
}

void ZRXView::mouseDown(NSEvent* event) {
    NSView::mouseDown(event);
}

void ZRXView::prepareForReuse() {
    NSView::prepareForReuse();
}

} // namespace zr
