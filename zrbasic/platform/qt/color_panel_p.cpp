#include <zrbasic/platform/qt/color_panel_p.h>

#include <zrbasic/platform/qt/conversions_p.h>
#include <zrbasic/platform/qt/delivery_p.h>
#include <zrbasic/platform/qt/event_loop_p.h>
#include <zrbasic/platform/qt/peers_p.h>

#include <QColorDialog>
#include <QEvent>
#include <QMouseEvent>
#include <QPushButton>
#include <QScopedValueRollback>

namespace zr::qt {

/// Qt's dialog as a part of a window: nothing closes it, and it knows whether the user is still dragging in it.
///
/// Knows its view weakly, so that nothing which reaches it while the view is on its way out finds that any more.
class ColorDialog final : public QColorDialog {
  public:
    ColorDialog(ColorPickerView& view, QWidget& parent) : QColorDialog(&parent), m_view(&view) {
        setOptions(QColorDialog::NoButtons | QColorDialog::DontUseNativeDialog);
        setWindowFlags(Qt::Widget);
        setFocusPolicy(Qt::NoFocus);
        const auto parts = findChildren<QWidget*>();
        for (QWidget* const part : parts) {
            part->setFocusPolicy(Qt::NoFocus);
            part->installEventFilter(this);
            auto* const button = qobject_cast<QPushButton*>(part);
            if (button && button->text() == QColorDialog::tr("&Pick Screen Color")) {
                // It would take pointer and keyboard away from all windows.
                button->hide();
            }
        }
        connect(this, &QColorDialog::currentColorChanged, this, [this](const QColor& color) { tell(color); });
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        const auto isLeft = [event] { return static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton; };
        if ((event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick) && isLeft()) {
            m_isDragging = true;
        } else if (event->type() == QEvent::DragEnter) {
            // A colour is on its way from one field to another; the button's release is not reported then.
            m_isDragging = false;
        } else if (event->type() == QEvent::MouseButtonRelease && isLeft() && m_isDragging) {
            m_isDragging = false;
            // The part that was dragged in deals with the release first.
            QMetaObject::invokeMethod(
                this, [this] { tell(currentColor()); }, Qt::QueuedConnection);
        }
        return QColorDialog::eventFilter(watched, event);
    }

  protected:
    void done(int) override {}

    bool event(QEvent* event) override {
        if (event->type() == QEvent::LayoutRequest) {
            QMetaObject::invokeMethod(
                this,
                [this] {
                    const Ref<ColorPickerView> view = m_view.lock();
                    if (ColorPickerPeer* const peer = this->peer(view)) {
                        peer->fitPanel();
                    }
                },
                Qt::QueuedConnection);
        }
        return QColorDialog::event(event);
    }

  private:
    [[nodiscard]] ColorPickerPeer* peer(const Ref<ColorPickerView>& view) const {
        auto* const peer = view ? dynamic_cast<ColorPickerPeer*>(view->peer()) : nullptr;
        return peer && peer->m_dialog == this ? peer : nullptr;
    }

    void tell(const QColor& color) {
        const Ref<ColorPickerView> view = m_view.lock();
        if (ColorPickerPeer* const peer = this->peer(view)) {
            peer->userDidChoose(color, m_isDragging);
        }
    }

    Weak<ColorPickerView> m_view;
    bool m_isDragging = false;
};

std::unique_ptr<ViewPeer> makeColorPickerPeer(ColorPickerView& view) {
    return std::make_unique<ColorPickerPeer>(view);
}

ColorPickerPeer::ColorPickerPeer(ColorPickerView& view) : WidgetPeer(view), m_picker(view) {}

ColorPickerPeer::~ColorPickerPeer() = default;

bool ColorPickerPeer::drawsView() const {
    return false;
}

void ColorPickerPeer::populate(QWidget& widget) {
    m_dialog = new ColorDialog(m_picker, widget);
    // Where it is moved to it stays; else it looks for a place of its own.
    m_dialog->move(0, 0);
    m_dialog->show();
    showPanel();
    fitPanel();
}

void ColorPickerPeer::viewChanged(ViewChange change) {
    WidgetPeer::viewChanged(change);
    if (change == ViewChange::Content && m_dialog) {
        showPanel();
    }
}

void ColorPickerPeer::showPanel() {
    const Ref<NSColorPanel> panel = m_picker.panel();
    if (!panel) {
        return;
    }
    const QScopedValueRollback showing(m_isShowing, true);
    m_dialog->setOption(QColorDialog::ShowAlphaChannel, panel->showsAlpha());
    const QColor color = toQt(panel->color());
    if (m_dialog->currentColor() != color) {
        m_dialog->setCurrentColor(color);
    }
    m_shown = m_dialog->currentColor();
}

void ColorPickerPeer::fitPanel() {
    const Ref<NSColorPanel> panel = m_picker.panel();
    if (!panel || !m_dialog) {
        return;
    }
    const QSize wanted = m_dialog->sizeHint();
    m_dialog->resize(wanted);
    const NSSize size{double(wanted.width()), double(wanted.height())};
    if (!(m_picker.frame().size == size)) {
        panel->setContentSize(size);
    }
}

void ColorPickerPeer::userDidChoose(const QColor& color, bool isDragging) {
    const Ref<NSColorPanel> panel = m_isShowing ? nullptr : m_picker.panel();
    if (!panel) {
        return;
    }
    // What the dialog shows for the panel's colour may be less exact than that.
    const Ref<NSColor> chosen = color == m_shown ? panel->color() : fromQt(color);
    m_shown = color;
    const Delivery delivery;
    duringEvent([&] { panel->userDidChoose(chosen, isDragging); });
}

} // namespace zr::qt
