#include <zrbasic/platform/qt/rotation_p.h>

#include <zrbasic/platform/qt/view_peer_p.h>
#include <zrbasic/platform/qt/view_widget_p.h>

#include <QPainter>
#include <QVariantAnimation>

#include <algorithm>
#include <cmath>
#include <utility>

namespace zr::qt {
namespace {

/// Of what is larger Qt makes no picture that could be turned.
constexpr double largestPicture = 32767;

} // namespace

RotationEffect::RotationEffect(QPointF anchor, double opacity, std::function<void()> end)
    : m_anchor(anchor), m_opacity(opacity), m_end(std::move(end)) {}

RotationEffect::~RotationEffect() {
    m_end();
}

void RotationEffect::setAngle(double angle) {
    m_angle = angle;
    update();
}

void RotationEffect::setOpacity(double opacity) {
    m_opacity = opacity;
    update();
}

QPointF RotationEffect::anchorIn(const QRectF& source) const {
    return {source.x() + m_anchor.x() * source.width(), source.y() + m_anchor.y() * source.height()};
}

// As far as any angle can take a corner: the angle changes without asking again.
QRectF RotationEffect::boundingRectFor(const QRectF& source) const {
    const QPointF anchor = anchorIn(source);
    double reach = 0;
    for (const QPointF& corner : {source.topLeft(), source.topRight(), source.bottomLeft(), source.bottomRight()}) {
        reach = std::max(reach, std::hypot(corner.x() - anchor.x(), corner.y() - anchor.y()));
    }
    return source.united(QRectF(anchor.x() - reach, anchor.y() - reach, 2 * reach, 2 * reach));
}

void RotationEffect::draw(QPainter* painter) {
    const QRectF source = sourceBoundingRect();
    if (source.isEmpty() || source.width() > largestPicture || source.height() > largestPicture) {
        drawSource(painter);
        return;
    }
    QPoint offset;
    const QPixmap picture = sourcePixmap(Qt::LogicalCoordinates, &offset, NoPad);
    const QPointF anchor = anchorIn(source);
    painter->save();
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->setOpacity(painter->opacity() * m_opacity);
    painter->translate(anchor);
    painter->rotate(-m_angle * 180 / M_PI);
    painter->translate(-anchor);
    painter->drawPixmap(offset, picture);
    painter->restore();
}

void WidgetPeer::playRotation(NSPoint anchor, std::span<const double> angles, double seconds,
                              std::function<void()> end) {
    if (m_widget && dynamic_cast<RotationEffect*>(m_widget->graphicsEffect())) {
        m_widget->setGraphicsEffect(nullptr);
        viewChanged(ViewChange::Alpha);
    }
    // What is beyond an hour, and what is no number, is no shake.
    if (!m_widget || angles.size() < 2 || !(seconds > 0) || seconds > 3600) {
        end();
        return;
    }
    auto* const effect = new RotationEffect({anchor.x, 1 - anchor.y}, m_view.alphaValue(), std::move(end));
    m_widget->setGraphicsEffect(effect);
    // The effect's own, so that nothing is played when that is gone.
    auto* const animation = new QVariantAnimation(m_widget);
    QObject::connect(effect, &QObject::destroyed, animation, &QObject::deleteLater);
    animation->setDuration(int(std::lround(seconds * 1000)));
    const double ways = double(angles.size() - 1);
    for (std::size_t i = 0; i < angles.size(); ++i) {
        animation->setKeyValueAt(double(i) / ways, angles[i]);
    }
    QObject::connect(animation, &QVariantAnimation::valueChanged, effect,
                     [effect](const QVariant& value) { effect->setAngle(value.toDouble()); });
    QObject::connect(animation, &QAbstractAnimation::finished, effect, [widget = m_widget] {
        if (!widget) {
            return;
        }
        widget->setGraphicsEffect(nullptr);
        // A view that is not fully opaque has an effect of its own to come back.
        const Ref<NSView> view = widget->view();
        if (view && view->peer()) {
            view->peer()->viewChanged(ViewChange::Alpha);
        }
    });
    effect->setAngle(angles.front());
    animation->start();
}

} // namespace zr::qt
