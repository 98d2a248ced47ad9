#include <zrbasic/platform/appkit/pop_up_button_cell.h>

#include <zrbasic/platform/appkit/control_look_p.h>
#include <zrbasic/platform/appkit/graphics_context.h>
#include <zrbasic/platform/appkit/path.h>
#include <zrbasic/platform/appkit/pop_up_button.h>
#include <zrbasic/platform/appkit/toolkit.h>

#include <algorithm>
#include <cmath>

namespace zr {
namespace {

constexpr double arrowWidth = 8;
/// From the title to the arrow.
constexpr double gap = 6;
constexpr double lineWidth = 1.5;

/// Half as high as it is wide, with its tip up or down from the middle.
void drawArrow(Canvas& canvas, NSPoint middle, double up, NSColor* color) {
    const Ref<CGPath> path = CGPath::path();
    path->moveToPoint({middle.x - arrowWidth / 2, middle.y - up / 2});
    path->addLineToPoint({middle.x, middle.y + up / 2});
    path->addLineToPoint({middle.x + arrowWidth / 2, middle.y - up / 2});
    canvas.strokePath(*path, lineWidth, color);
}

} // namespace

ZR_DEFINE_CLASS(NSPopUpButtonCell) {}

NSPopUpButtonCell::NSPopUpButtonCell() = default;

NSPopUpButtonCell::~NSPopUpButtonCell() = default;

id NSPopUpButtonCell::initTextCell(NSString* string) {
    const id cell = NSButtonCell::initTextCell(string);
    setAlignment(NSTextAlignmentLeft);
    return cell;
}

NSSize NSPopUpButtonCell::cellSize() const {
    NSSize size = NSButtonCell::cellSize();
    size.width += gap + arrowWidth;
    const Ref<NSView> view = controlView();
    const auto* const button = cast<NSPopUpButton>(view.get());
    if (!button) {
        return size;
    }
    constexpr double anyWidth = 1000;
    const double around = anyWidth - drawingRectForBounds({NSZeroPoint, {anyWidth, anyWidth}}).size.width;
    const Ref<NSArray> titles = button->itemTitles();
    for (const id& title : titles) {
        const auto text = dressed(make<NSAttributedString>(&NSAttributedString::initWithString, cast<NSString>(title)));
        size.width = std::max(size.width, std::ceil(currentToolkit().naturalSizeOfText(text, 0).width) + around);
    }
    return size;
}

NSRect NSPopUpButtonCell::drawingRectForBounds(NSRect bounds) const {
    NSRect rect = NSButtonCell::drawingRectForBounds(bounds);
    rect.size.width = std::max(rect.size.width - gap - arrowWidth, 0.0);
    return rect;
}

void NSPopUpButtonCell::drawWithFrame_inView(NSRect frame, NSView* view) {
    NSButtonCell::drawWithFrame_inView(frame, view);
    const Ref<NSGraphicsContext> context = NSGraphicsContext::currentContext();
    if (!context) {
        return;
    }
    const NSRect inside = NSButtonCell::drawingRectForBounds(frame);
    const NSPoint middle{NSMaxX(inside) - arrowWidth / 2, NSMinY(inside) + inside.size.height / 2};
    const double up = (context->isFlipped() ? -1 : 1) * arrowWidth / 2;
    const Ref<NSColor> color = colorOfText();
    const auto* const button = cast<NSPopUpButton>(view);
    if (button && button->pullsDown()) {
        drawArrow(context->canvas(), middle, -up, color);
    } else {
        drawArrow(context->canvas(), {middle.x, middle.y + up}, up, color);
        drawArrow(context->canvas(), {middle.x, middle.y - up}, -up, color);
    }
}

} // namespace zr
