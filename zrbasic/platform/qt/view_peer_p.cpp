#include <zrbasic/platform/qt/view_peer_p.h>

#include <zrbasic/platform/appkit/color_panel.h>
#include <zrbasic/platform/appkit/table_view.h>
#include <zrbasic/platform/appkit/text_view.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/qt/accessibility_p.h>
#include <zrbasic/platform/qt/conversions_p.h>
#include <zrbasic/platform/qt/event_loop_p.h>
#include <zrbasic/platform/qt/host_window_p.h>
#include <zrbasic/platform/qt/peers_p.h>
#include <zrbasic/platform/qt/pointer_filter_p.h>
#include <zrbasic/platform/qt/rotation_p.h>
#include <zrbasic/platform/qt/view_widget_p.h>
#include <zrbasic/platform/qt/window_peer_p.h>
#include <zrbasic/platform/runtime/message.h>

#include <QApplication>
#include <QGraphicsOpacityEffect>
#include <QTextDocument>
#include <QThread>

#include <algorithm>
#include <utility>

namespace zr::qt {

WidgetPeer::WidgetPeer(NSView& view) : m_view(view), m_wantedSize(view.frame().size) {}

WidgetPeer::~WidgetPeer() {
    QCoreApplication* const application = QCoreApplication::instance();
    if (m_widget.isNull() || !application) {
        return;
    }
    if (QThread::currentThread() != application->thread()) {
        // The last reference was let go elsewhere; widgets are touched on the main thread alone.
        QMetaObject::invokeMethod(
            application,
            [widget = std::move(m_widget), placed = std::move(m_placed)] {
                for (const QPointer<ViewWidget>& subview : placed) {
                    if (subview && widget && widget->isAncestorOf(subview)) {
                        takeOut(*subview);
                    }
                }
                discard(widget);
            },
            Qt::QueuedConnection);
        return;
    }
    // Those views may live on, and have an event on its way through them right now.
    for (const QPointer<ViewWidget>& subview : std::exchange(m_placed, {})) {
        if (subview && m_widget && m_widget->isAncestorOf(subview)) {
            takeOut(*subview);
        }
    }
    discard(m_widget);
}

QWidget* WidgetPeer::presentWidget() const {
    return m_widget;
}

QWidget* WidgetPeer::widget() {
    if (!m_widget) {
        setUp();
    }
    if (m_mustPlaceSubviews) {
        placeSubviews();
    }
    return m_widget;
}

void WidgetPeer::setUp() {
    m_placed.clear();
    m_mustPlaceSubviews = true;
    m_wasLaidOut = false;
    m_widget = new ViewWidget(m_view);
    m_widget->resize(pixelRect({NSZeroPoint, m_view.frame().size}, 0, true).size());
    populate(*m_widget);
    for (const ViewChange change : {ViewChange::Layer, ViewChange::Alpha, ViewChange::ToolTip, ViewChange::Layout}) {
        WidgetPeer::viewChanged(change);
    }
    if (m_view.isHidden()) {
        m_widget->hide();
    }
    // Whoever answers may do anything, even have the widget deleted.
    const Ref<NSView> kept(&m_view);
    duringEvent([this] {
        send<void>(&m_view, "updateTrackingAreas"_sel);
        m_view.discardCursorRects();
        send<void>(&m_view, "resetCursorRects"_sel);
    });
}

void WidgetPeer::populate(QWidget&) {}

QWidget* WidgetPeer::keyboardWidget() {
    return m_widget;
}

bool WidgetPeer::drawsView() const {
    return true;
}

QMargins WidgetPeer::overhang() const {
    return {};
}

void WidgetPeer::takeKeyboard() {
    if (QWidget* const target = m_widget ? keyboardWidget() : nullptr) {
        target->setFocus(Qt::OtherFocusReason);
    }
}

void WidgetPeer::viewChanged(ViewChange change) {
    if (!m_widget) {
        return;
    }
    switch (change) {
        case ViewChange::Frame:
            place();
            break;
        case ViewChange::Subviews:
            placeSubviews();
            break;
        case ViewChange::Hidden:
            applyVisibility();
            break;
        case ViewChange::Alpha:
            if (auto* const rotation = dynamic_cast<RotationEffect*>(m_widget->graphicsEffect())) {
                rotation->setOpacity(m_view.alphaValue());
            } else if (m_view.alphaValue() < 1) {
                auto* effect = qobject_cast<QGraphicsOpacityEffect*>(m_widget->graphicsEffect());
                if (!effect) {
                    effect = new QGraphicsOpacityEffect(m_widget);
                    m_widget->setGraphicsEffect(effect);
                }
                effect->setOpacity(m_view.alphaValue());
            } else if (qobject_cast<QGraphicsOpacityEffect*>(m_widget->graphicsEffect())) {
                m_widget->setGraphicsEffect(nullptr);
            }
            break;
        case ViewChange::Layer:
            m_widget->layerChanged();
            break;
        case ViewChange::CursorRects:
            m_widget->cursorRectsChanged();
            break;
        case ViewChange::TrackingAreas:
            reconsiderPointer(m_widget->window());
            break;
        case ViewChange::ToolTip: {
            // What looks like markup is to be read as it stands.
            const QString text = toQt(m_view.toolTip());
            m_widget->setToolTip(Qt::mightBeRichText(text) ? text.toHtmlEscaped().prepend("<qt>") : text);
            break;
        }
        case ViewChange::Layout:
            m_widget->layoutChanged();
            break;
        case ViewChange::Display:
        case ViewChange::Enabled:
        case ViewChange::Content:
            // A layer tells of its changes by having the view drawn again. A view that is disabled still gets its
            // events: it is its own business to ignore them, and views in it are not disabled with it.
            m_widget->layerChanged();
            m_widget->update();
            break;
        case ViewChange::Selection:
        case ViewChange::Accessibility:
            break;
    }
    announceChange(m_view, change);
}

bool WidgetPeer::isPlacedByQt() const {
    const QWidget* const parent = m_widget ? m_widget->parentWidget() : nullptr;
    if (m_view.superview()) {
        return false;
    }
    const Ref<NSWindow> window = m_view.window();
    const bool isContent = window && window->contentView() == &m_view;
    return m_widget && !(isContent && dynamic_cast<const HostWidget*>(parent));
}

void WidgetPeer::place() {
    if (!m_isAdopting) {
        m_wantedSize = m_view.frame().size;
        const Ref<NSView> superview = m_view.superview();
        if (superview) {
            auto* const above = dynamic_cast<WidgetPeer*>(superview->peer());
            QWidget* const parent = above ? above->presentWidget() : nullptr;
            if (m_widget->parentWidget() && m_widget->parentWidget() != parent) {
                // It has come out of a layout, into a view that may not even be on the screen.
                takeOut(*m_widget);
            }
            NSRect frame = m_view.frame();
            frame.origin.x -= superview->bounds().origin.x;
            frame.origin.y -= superview->bounds().origin.y;
            const QRect pixels = pixelRect(frame, superview->frame().size.height, superview->isFlipped());
            m_widget->setGeometry(pixels.marginsAdded(overhang()));
        } else if (!m_widget->parentWidget()) {
            m_widget->resize(pixelRect({NSZeroPoint, m_wantedSize}, 0, true).size());
        }
        if (m_widget) {
            m_widget->updateGeometry();
        }
        if (m_widget && m_wasLaidOut && isPlacedByQt()) {
            adoptPlace();
        }
    }
    if (m_widget && m_placedBounds != m_view.bounds()) {
        placeSubviews();
        m_widget->cursorRectsChanged();
    }
    if (m_widget) {
        reconsiderPointer(m_widget->window());
    }
}

void WidgetPeer::adoptPlace() {
    if (m_isAdopting) {
        return;
    }
    m_wasLaidOut = true;
    QWidget* const window = m_widget->window();
    const QRect now(m_widget == window ? QPoint() : m_widget->mapTo(window, QPoint()), m_widget->size());
    const double height = window->height();
    if (pixelRect(m_view.frame(), height, false) == now) {
        return;
    }
    const NSRect frame{{double(now.x()), height - now.y() - now.height()}, {double(now.width()), double(now.height())}};
    const Ref<NSView> kept(&m_view);
    m_isAdopting = true;
    duringEvent([this, frame] { send<void>(&m_view, "setFrame:"_sel, frame); });
    m_isAdopting = false;
}

void WidgetPeer::applyVisibility() {
    if (m_widget->parentWidget()) {
        m_widget->setVisible(!m_view.isHidden());
    } else if (m_view.isHidden()) {
        m_widget->hide();
    } else {
        // Not by itself, as a window of its own, but as soon as it is put somewhere.
        m_widget->setAttribute(Qt::WA_WState_ExplicitShowHide, false);
    }
    if (m_widget) {
        reconsiderPointer(m_widget->window());
    }
}

void WidgetPeer::placeSubviews() {
    m_mustPlaceSubviews = false;
    m_placedBounds = m_view.bounds();
    const QPointer<ViewWidget> widget = m_widget;
    for (const QPointer<ViewWidget>& placed : std::exchange(m_placed, {})) {
        const Ref<NSView> view = placed ? placed->view() : nullptr;
        if (view && view->superview() != &m_view && widget && widget->isAncestorOf(placed)) {
            takeOut(*placed);
            if (placed && !view->isHidden()) {
                placed->setAttribute(Qt::WA_WState_ExplicitShowHide, false);
            }
        }
    }
    std::vector<QWidget*> order;
    const Ref<NSArray> subviews = m_view.subviews();
    for (const id& element : subviews->elements()) {
        auto* const subview = static_cast<NSView*>(element.get());
        auto* const peer = m_widget ? dynamic_cast<WidgetPeer*>(subview->ensurePeer()) : nullptr;
        QWidget* const child = peer ? peer->widget() : nullptr;
        // Whoever was asked for something on the way may have moved views about.
        if (!child || !m_widget || subview->superview() != &m_view) {
            continue;
        }
        m_placed.push_back(peer->m_widget);
        if (child->isAncestorOf(m_widget)) {
            // It was around this view so far, by way of widgets between them.
            leaveSurroundings();
        }
        if (child->parentWidget() != m_widget) {
            takeOut(*child);
            child->setParent(m_widget);
        }
        peer->place();
        child->setVisible(!subview->isHidden());
        order.push_back(child);
    }
    if (!m_widget) {
        return;
    }
    arrange(order);
    m_widget->raiseOverlay();
    reconsiderPointer(m_widget->window());
}

void WidgetPeer::leaveSurroundings() {
    for (QWidget* widget = m_widget; widget; widget = widget->parentWidget()) {
        const auto* const standing = dynamic_cast<ViewWidget*>(widget);
        const Ref<NSView> view = standing ? standing->view() : nullptr;
        if (view && !view->superview()) {
            takeOut(*widget);
            return;
        }
    }
}

void WidgetPeer::arrange(const std::vector<QWidget*>& fromBackToFront) {
    std::vector<QWidget*> present;
    for (QObject* const child : m_widget->children()) {
        auto* const widget = qobject_cast<QWidget*>(child);
        if (widget && std::find(fromBackToFront.begin(), fromBackToFront.end(), widget) != fromBackToFront.end()) {
            present.push_back(widget);
        }
    }
    if (present == fromBackToFront) {
        return;
    }
    for (QWidget* const widget : fromBackToFront) {
        widget->raise();
    }
}

void WidgetPeer::lostSubview() {
    m_mustPlaceSubviews = true;
    if (!m_widget) {
        return;
    }
    // Not now: Qt is in the middle of taking widgets apart.
    QMetaObject::invokeMethod(
        m_widget,
        [widget = m_widget] {
            const Ref<NSView> view = widget ? widget->view() : nullptr;
            auto* const peer = view ? dynamic_cast<WidgetPeer*>(view->peer()) : nullptr;
            if (peer && peer->m_mustPlaceSubviews) {
                peer->placeSubviews();
            }
        },
        Qt::QueuedConnection);
}

void WidgetPeer::surroundingsChanged() {
    const Ref<NSView> kept(&m_view);
    const Ref<NSWindow> window = m_view.window();
    if (m_view.superview() || !m_widget) {
        return;
    }
    if (window && window->contentView() == &m_view) {
        return;
    }
    QWidget* const topLevel = m_widget->window();
    const bool isShownSomewhere = m_widget->parentWidget() || m_widget->isVisible();
    const auto* const host = dynamic_cast<const HostWidget*>(topLevel);
    const Ref<NSWindow> fresh = !isShownSomewhere ? nullptr
                                : host            ? host->shownWindow()
                                                  : ensureForeignWindow(*topLevel);
    if (fresh != window) {
        duringEvent([this, &fresh] { m_view.moveToHostWindow(fresh); });
    }
    if (fresh && !host && m_widget) {
        refreshTabStops(*m_widget->window());
    }
}

std::unique_ptr<ViewPeer> makePeer(NSView& view) {
    if (auto* const text = cast<NSTextView>(&view)) {
        return text->isFieldEditor() ? makeLineEditorPeer(*text) : makeTextViewPeer(*text);
    }
    if (auto* const table = cast<NSTableView>(&view)) {
        return makeTablePeer(*table);
    }
    if (auto* const picker = cast<ColorPickerView>(&view)) {
        return makeColorPickerPeer(*picker);
    }
    return std::make_unique<WidgetPeer>(view);
}

NSView* viewOf(const QWidget* widget) {
    const auto* const standing = dynamic_cast<const ViewWidget*>(widget);
    return standing ? standing->view().get() : nullptr;
}

} // namespace zr::qt
