#include <zrbasic/platform/qt/view_widget_p.h>

#include <zrbasic/platform/appkit/graphics_context.h>
#include <zrbasic/platform/appkit/layer.h>
#include <zrbasic/platform/qt/canvas_p.h>
#include <zrbasic/platform/qt/event_loop_p.h>
#include <zrbasic/platform/qt/view_peer_p.h>
#include <zrbasic/platform/runtime/message.h>

#include <QPaintEvent>
#include <QPainter>

namespace zr::qt {

void ViewWidget::paintEvent(QPaintEvent* event) {
    const Ref<NSView> view = this->view();
    const WidgetPeer* const peer = this->peer(view);
    if (!peer) {
        return;
    }
    QPainter painter(this);
    if (const Ref<CALayer> layer = view->layer(); layer && layer->backgroundColor()) {
        // Over the widget's pixels, so that no seam is left where the extent is no whole number.
        const NSSize size{double(width()), double(height())};
        PainterCanvas canvas(painter, size, true);
        canvas.fillRoundedRect({NSZeroPoint, size}, layer->cornerRadius(), layer->cornerRadius(),
                               layer->backgroundColor());
    }
    if (!peer->drawsView()) {
        return;
    }
    const NSRect bounds = view->bounds();
    const bool isFlipped = view->isFlipped();
    const QRectF dirty = event->rect();
    const NSRect dirtyRect{
        {bounds.origin.x + dirty.x(), bounds.origin.y + (isFlipped ? dirty.y() : bounds.size.height - dirty.bottom())},
        {dirty.width(), dirty.height()}};
    painter.translate(-bounds.origin.x, isFlipped ? -bounds.origin.y : bounds.origin.y);
    PainterCanvas canvas(painter, bounds.size, isFlipped);
    const Ref<NSGraphicsContext> context = NSGraphicsContext::contextWithCanvas(canvas, isFlipped);
    // Before the drawing, which may find that it wants another one.
    view->NSView::setNeedsDisplay(false);
    const CurrentContext current(context);
    duringEvent([&] { send<void>(view, "drawRect:"_sel, dirtyRect); });
}

} // namespace zr::qt
