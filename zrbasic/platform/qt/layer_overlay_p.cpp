#include <zrbasic/platform/qt/layer_overlay_p.h>

#include <zrbasic/platform/appkit/layer.h>
#include <zrbasic/platform/appkit/view.h>
#include <zrbasic/platform/qt/canvas_p.h>
#include <zrbasic/platform/qt/view_widget_p.h>

#include <QPainter>

namespace zr::qt {

LayerOverlay::LayerOverlay(QWidget& over) : QWidget(&over) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::NoFocus);
    setGeometry(over.rect());
    raise();
    show();
}

LayerOverlay::~LayerOverlay() = default;

void LayerOverlay::paintEvent(QPaintEvent*) {
    const auto* const below = dynamic_cast<const ViewWidget*>(parentWidget());
    const Ref<NSView> view = below ? below->view() : nullptr;
    const Ref<CALayer> layer = view ? view->layer() : nullptr;
    if (!layer) {
        return;
    }
    QPainter painter(this);
    const NSSize size{double(width()), double(height())};
    PainterCanvas canvas(painter, size, true);
    canvas.strokeRoundedRect({NSZeroPoint, size}, layer->cornerRadius(), layer->borderWidth(), layer->borderColor());
}

} // namespace zr::qt
