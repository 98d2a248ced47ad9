#include <zrbasic/ui/collection_view.h>

#include <zrbasic/platform/appkit/scroll_view.h>
#include <zrbasic/platform/runtime/message.h>

namespace zr {

ZR_DEFINE_CLASS(ZRXCollectionView) {}

ZRXCollectionView::ZRXCollectionView() = default;
ZRXCollectionView::~ZRXCollectionView() = default;

id ZRXCollectionView::initWithFrame(NSRect frame) {
    const id self = NSCollectionView::initWithFrame(frame);
    setBackgroundColors(array({NSColor::clearColor()}));
    setSelectable(true);
    setAllowsMultipleSelection(false);
    setAllowsEmptySelection(false);
    send<void>(enclosingScrollView(this), "setScrollerStyle:"_sel, NSScrollerStyleOverlay);
    setFocusRingType(NSFocusRingTypeNone);
    return self;
}

bool ZRXCollectionView::acceptsFirstMouse(NSEvent*) {
    return true;
}

} // namespace zr
