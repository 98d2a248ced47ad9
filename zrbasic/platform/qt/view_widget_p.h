#pragma once

#include <zrbasic/platform/appkit/view.h>
#include <zrbasic/platform/qt/delivery_p.h>

#include <QPointer>

#include <vector>

namespace zr::qt {

class LayerOverlay;
class WidgetPeer;

/// The widget that stands for a view: draws it, and hands it the events that Qt has for it.
///
/// Knows its view weakly, so that nothing which reaches it while the view is on its way out finds that any more.
class ViewWidget final : public DeliveringWidget {
  public:
    explicit ViewWidget(NSView& view);
    ~ViewWidget() override;

    /// Null when the view is gone or going, and when another widget stands for it now.
    [[nodiscard]] Ref<NSView> view() const;
    /// The one that a control inside of it belongs to, or itself; null for a widget that is no part of a view.
    [[nodiscard]] static ViewWidget* around(const QWidget* widget);

    /// Border and background as the view's layer has them.
    void layerChanged();
    /// Nothing of the view but this lies above the border.
    void raiseOverlay();
    /// Extents that the view asks for, and how far it gives in.
    void layoutChanged();
    /// The pointer has the shape that the view wants at that point, in its own pixels.
    void showCursorAt(QPointF point);
    void cursorRectsChanged();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  protected:
    bool handle(QEvent& event) override;
    void paintEvent(QPaintEvent* event) override;
    bool focusNextPrevChild(bool isForwards) override;

  private:
    friend class WidgetPeer;

    [[nodiscard]] WidgetPeer* peer(const Ref<NSView>& view) const;
    void handleMouse(QMouseEvent& event, const Ref<NSView>& view);
    void forwardPress(QMouseEvent& event, NSView& view, NSResponder* firstBefore);
    /// Its own place or that of a widget around it has changed.
    void placeChanged();
    void watchSurroundings();

    Weak<NSView> m_view;
    QPointer<LayerOverlay> m_overlay;
    /// The editor that has come up under a press, which goes on there.
    QPointer<QWidget> m_pressGoesTo;
    std::vector<QPointer<QWidget>> m_surroundings;
    QPointF m_lastCursorPoint{-1, -1};
};

} // namespace zr::qt
