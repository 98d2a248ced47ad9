#pragma once

#include <QGraphicsEffect>
#include <QPointF>

#include <functional>
#include <vector>

class QWidget;

namespace zr::qt {

/// Shows a widget, with everything in it, turned about a point. What of it comes to lie outside of the widget shows as
/// far as the widget around it reaches.
class RotationEffect final : public QGraphicsEffect {
  public:
    /// `anchor` is a share of the extent, from the left and from above; `end` runs when the effect goes, whatever takes
    /// it away.
    RotationEffect(QPointF anchor, double opacity, std::function<void()> end);
    ~RotationEffect() override;

    /// In radians, against the clock.
    void setAngle(double angle);
    void setOpacity(double opacity);
    [[nodiscard]] double angle() const { return m_angle; }

    QRectF boundingRectFor(const QRectF& source) const override;

  protected:
    void draw(QPainter* painter) override;

  private:
    [[nodiscard]] QPointF anchorIn(const QRectF& source) const;

    QPointF m_anchor;
    double m_opacity;
    double m_angle = 0;
    std::function<void()> m_end;
};

} // namespace zr::qt
