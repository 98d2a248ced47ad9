#include <zrbasic/platform/qt/view_widget_p.h>

#include <zrbasic/platform/appkit/cursor.h>
#include <zrbasic/platform/appkit/layer.h>
#include <zrbasic/platform/appkit/layout_constraint.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/qt/event_loop_p.h>
#include <zrbasic/platform/qt/input_delivery_p.h>
#include <zrbasic/platform/qt/layer_overlay_p.h>
#include <zrbasic/platform/qt/view_peer_p.h>
#include <zrbasic/platform/qt/window_peer_p.h>
#include <zrbasic/platform/runtime/message.h>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include <cmath>

namespace zr::qt {
namespace {

/// A view that resists less than windows do against being resized gives in.
constexpr NSLayoutPriority windowResizing = 500;

Qt::CursorShape shapeOf(NSCursor& cursor) {
    switch (cursor.shape()) {
        case NSCursor::Shape::IBeam:
            return Qt::IBeamCursor;
        case NSCursor::Shape::PointingHand:
            return Qt::PointingHandCursor;
        case NSCursor::Shape::ResizeLeftRight:
            return Qt::SizeHorCursor;
        case NSCursor::Shape::ResizeUpDown:
            return Qt::SizeVerCursor;
        case NSCursor::Shape::Crosshair:
            return Qt::CrossCursor;
        case NSCursor::Shape::Arrow:
            break;
    }
    return Qt::ArrowCursor;
}

bool covers(NSRect outer, NSRect inner) {
    return NSMinX(outer) <= NSMinX(inner) && NSMinY(outer) <= NSMinY(inner) && NSMaxX(outer) >= NSMaxX(inner) &&
           NSMaxY(outer) >= NSMaxY(inner);
}

int pixels(double extent) {
    return extent < QWIDGETSIZE_MAX ? int(std::ceil(std::max(extent, 0.0))) : QWIDGETSIZE_MAX;
}

/// As the view says, which Qt's layouts ask for: a formatter that raises must not do so through them.
NSSize naturalSizeOf(const NSView& view) {
    NSSize natural{NSViewNoIntrinsicMetric, NSViewNoIntrinsicMetric};
    duringEvent([&] { natural = view.intrinsicContentSize(); });
    return natural;
}

QSizePolicy::Policy policyOf(NSView& view, NSLayoutConstraintOrientation orientation, bool hasNaturalExtent) {
    if (!hasNaturalExtent) {
        return QSizePolicy::Preferred;
    }
    const NSLayoutPriority hugging = view.contentHuggingPriorityForOrientation(orientation);
    const NSLayoutPriority resistance = view.contentCompressionResistancePriorityForOrientation(orientation);
    int policy = QSizePolicy::Fixed;
    if (hugging < windowResizing) {
        policy |= QSizePolicy::GrowFlag | (resistance > hugging ? int(QSizePolicy::ExpandFlag) : 0);
    }
    if (resistance < windowResizing) {
        policy |= QSizePolicy::ShrinkFlag;
    }
    return QSizePolicy::Policy(policy);
}

} // namespace

ViewWidget::ViewWidget(NSView& view) : m_view(&view) {
    // What takes the keyboard is decided by the window's first responder; the tab key is run by the window as well.
    setFocusPolicy(Qt::NoFocus);
}

ViewWidget::~ViewWidget() {
    const Ref<NSView> view = this->view();
    if (!view || !QCoreApplication::instance()) {
        return;
    }
    peer(view)->m_widget.clear();
    if (const Ref<NSView> superview = view->superview()) {
        if (auto* const above = dynamic_cast<WidgetPeer*>(superview->peer())) {
            above->lostSubview();
        }
        return;
    }
    const Ref<NSWindow> window = view->window();
    if (window && window->contentView() != view) {
        duringEvent([&view] { view->moveToHostWindow(nullptr); });
    }
}

WidgetPeer* ViewWidget::peer(const Ref<NSView>& view) const {
    auto* const peer = view ? dynamic_cast<WidgetPeer*>(view->peer()) : nullptr;
    return peer && peer->m_widget == this ? peer : nullptr;
}

Ref<NSView> ViewWidget::view() const {
    Ref<NSView> view = m_view.lock();
    return peer(view) ? view : nullptr;
}

ViewWidget* ViewWidget::around(const QWidget* widget) {
    for (; widget; widget = widget->isWindow() ? nullptr : widget->parentWidget()) {
        if (const auto* const found = dynamic_cast<const ViewWidget*>(widget)) {
            return const_cast<ViewWidget*>(found);
        }
    }
    return nullptr;
}

bool ViewWidget::handle(QEvent& event) {
    // Stays until the event is dealt with, whoever lets go of it meanwhile.
    const Ref<NSView> view = this->view();
    if (!view) {
        return DeliveringWidget::handle(event);
    }
    switch (event.type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseMove:
            event.accept();
            handleMouse(static_cast<QMouseEvent&>(event), view);
            return true;
        case QEvent::Wheel:
            event.setAccepted(handOver(static_cast<QWheelEvent&>(event), *view, *this));
            return true;
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
            if (const Ref<NSWindow> window = view->window()) {
                event.setAccepted(handOver(static_cast<QKeyEvent&>(event), *window, *this));
                return true;
            }
            break;
        case QEvent::ChildAdded:
            if (m_overlay && static_cast<QChildEvent&>(event).child() != m_overlay) {
                m_overlay->raise();
            }
            break;
        default:
            break;
    }
    const bool isHandled = DeliveringWidget::handle(event);
    switch (event.type()) {
        case QEvent::Show:
            // As large as it was made before, when nobody was to see it.
            watchSurroundings();
            placeChanged();
            break;
        case QEvent::ParentChange:
        case QEvent::Hide:
            watchSurroundings();
            break;
        case QEvent::Move:
        case QEvent::Resize:
            placeChanged();
            break;
        default:
            break;
    }
    return isHandled;
}

void ViewWidget::handleMouse(QMouseEvent& event, const Ref<NSView>& view) {
    if (m_pressGoesTo && event.type() != QEvent::MouseButtonPress) {
        QWidget& target = *m_pressGoesTo;
        if (event.type() == QEvent::MouseButtonRelease && event.buttons() == Qt::NoButton) {
            m_pressGoesTo.clear();
        }
        sendMapped(event, *this, target);
        return;
    }
    m_pressGoesTo.clear();
    const Ref<NSWindow> window = view->window();
    const Ref<NSResponder> firstBefore = window ? window->firstResponder() : nullptr;
    const QPointer<ViewWidget> self(this);
    handOver(event, *view, *this);
    if (self && event.type() == QEvent::MouseButtonPress && event.button() == Qt::LeftButton) {
        forwardPress(event, *view, firstBefore);
    }
}

void ViewWidget::forwardPress(QMouseEvent& event, NSView& view, NSResponder* firstBefore) {
    const Ref<NSWindow> window = view.window();
    const Ref<NSResponder> first = window ? window->firstResponder() : nullptr;
    auto* const editor = cast<NSView>(first.get());
    if (!editor || editor == firstBefore || editor == &view || !editor->isDescendantOf(&view)) {
        return;
    }
    auto* const peer = dynamic_cast<WidgetPeer*>(editor->peer());
    QWidget* const target = peer && peer->m_widget ? peer->keyboardWidget() : nullptr;
    if (target && isAncestorOf(target) && target->rect().contains(target->mapFrom(this, event.position().toPoint()))) {
        m_pressGoesTo = target;
        sendMapped(event, *this, *target);
    }
}

bool ViewWidget::focusNextPrevChild(bool isForwards) {
    const Ref<NSView> view = this->view();
    const Ref<NSWindow> window = view ? view->window() : nullptr;
    if (!window) {
        return QWidget::focusNextPrevChild(isForwards);
    }
    duringEvent(
        [&] { send<void>(window, isForwards ? "selectNextKeyView:"_sel : "selectPreviousKeyView:"_sel, view.get()); });
    return true;
}

void ViewWidget::placeChanged() {
    if (m_overlay) {
        m_overlay->setGeometry(rect());
    }
    const Ref<NSView> view = this->view();
    WidgetPeer* const peer = this->peer(view);
    if (peer && (parentWidget() || isVisible()) && peer->isPlacedByQt()) {
        peer->adoptPlace();
    }
}

void ViewWidget::watchSurroundings() {
    for (const QPointer<QWidget>& widget : std::exchange(m_surroundings, {})) {
        if (widget) {
            widget->removeEventFilter(this);
        }
    }
    const Ref<NSView> view = this->view();
    WidgetPeer* const peer = this->peer(view);
    if (!peer || !peer->isPlacedByQt()) {
        return;
    }
    for (QWidget* widget = this; !widget->isWindow() && widget->parentWidget();) {
        widget = widget->parentWidget();
        widget->installEventFilter(this);
        m_surroundings.emplace_back(widget);
    }
    if (parentWidget() && !view->isHidden() && isHidden() && testAttribute(Qt::WA_WState_ExplicitShowHide)) {
        // Qt has hidden it for the change of parents alone; a layout leaves alone what was hidden on purpose.
        setAttribute(Qt::WA_WState_ExplicitShowHide, false);
    }
    peer->surroundingsChanged();
    layoutChanged();
}

bool ViewWidget::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::ParentChange:
            watchSurroundings();
            placeChanged();
            break;
        case QEvent::Move:
            if (!static_cast<QWidget*>(watched)->isWindow()) {
                placeChanged();
            }
            break;
        case QEvent::Resize:
            placeChanged();
            break;
        default:
            break;
    }
    return false;
}

void ViewWidget::showCursorAt(QPointF point) {
    m_lastCursorPoint = point;
    const Ref<NSView> view = this->view();
    if (!view) {
        return;
    }
    const NSRect bounds = view->bounds();
    const bool isFlipped = view->isFlipped();
    const NSPoint inside{bounds.origin.x + point.x(),
                         bounds.origin.y + (isFlipped ? point.y() : bounds.size.height - point.y())};
    const bool isOver = rect().contains(point.toPoint());
    Ref<NSCursor> cursor;
    for (const CursorRect& area : view->cursorRects()) {
        // One that is the same everywhere needs no pointer.
        if (covers(area.rect, bounds) || (isOver && NSMouseInRect(inside, area.rect, isFlipped))) {
            cursor = area.cursor;
        }
    }
    if (!cursor) {
        unsetCursor();
    } else if (!testAttribute(Qt::WA_SetCursor) || this->cursor().shape() != shapeOf(*cursor)) {
        setCursor(shapeOf(*cursor));
    }
}

void ViewWidget::cursorRectsChanged() {
    showCursorAt(m_lastCursorPoint);
}

void ViewWidget::layerChanged() {
    const Ref<NSView> view = this->view();
    const Ref<CALayer> layer = view ? view->layer() : nullptr;
    if (!layer || !(layer->borderWidth() > 0) || !layer->borderColor()) {
        delete m_overlay;
        return;
    }
    if (!m_overlay) {
        m_overlay = new LayerOverlay(*this);
    }
    m_overlay->update();
}

void ViewWidget::raiseOverlay() {
    if (m_overlay) {
        m_overlay->raise();
    }
}

void ViewWidget::layoutChanged() {
    const Ref<NSView> view = this->view();
    WidgetPeer* const peer = this->peer(view);
    // In a superview the frame counts, whatever it says.
    if (!peer || view->superview() || !peer->isPlacedByQt()) {
        setMinimumSize(0, 0);
        setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
        return;
    }
    const SizeLimits limits = sizeLimitsOf(*view);
    setMinimumSize(pixels(limits.minWidth), pixels(limits.minHeight));
    setMaximumSize(std::max(pixels(limits.maxWidth), minimumWidth()),
                   std::max(pixels(limits.maxHeight), minimumHeight()));
    const NSSize natural = naturalSizeOf(*view);
    setSizePolicy(policyOf(*view, NSLayoutConstraintOrientationHorizontal, natural.width >= 0),
                  policyOf(*view, NSLayoutConstraintOrientationVertical, natural.height >= 0));
    updateGeometry();
}

QSize ViewWidget::sizeHint() const {
    const Ref<NSView> view = this->view();
    const WidgetPeer* const peer = this->peer(view);
    if (!peer) {
        return QWidget::sizeHint();
    }
    const NSSize natural = naturalSizeOf(*view);
    return {pixels(natural.width >= 0 ? natural.width : peer->m_wantedSize.width),
            pixels(natural.height >= 0 ? natural.height : peer->m_wantedSize.height)};
}

QSize ViewWidget::minimumSizeHint() const {
    const Ref<NSView> view = this->view();
    if (!view) {
        return QWidget::minimumSizeHint();
    }
    const NSSize natural = naturalSizeOf(*view);
    const auto least = [&view](double extent, NSLayoutConstraintOrientation orientation) {
        const bool resists =
            view->contentCompressionResistancePriorityForOrientation(orientation) >= windowResizing && extent >= 0;
        return resists ? pixels(extent) : 0;
    };
    return {least(natural.width, NSLayoutConstraintOrientationHorizontal),
            least(natural.height, NSLayoutConstraintOrientationVertical)};
}

} // namespace zr::qt
