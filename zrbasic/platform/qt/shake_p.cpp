#include <zrbasic/platform/qt/shake_p.h>

#include <QVariantAnimation>
#include <QWidget>

#include <cmath>
#include <utility>

namespace zr::qt {

QVariantAnimation* playPositions(QWidget& widget, const std::vector<QPoint>& positions, double seconds,
                                 std::function<void()> end) {
    // What is beyond an hour, and what is no number, is no shake.
    if (positions.size() < 2 || !(seconds > 0) || seconds > 3600) {
        end();
        return nullptr;
    }
    auto* const animation = new QVariantAnimation(&widget);
    animation->setDuration(int(std::lround(seconds * 1000)));
    const double ways = double(positions.size() - 1);
    for (std::size_t i = 0; i < positions.size(); ++i) {
        animation->setKeyValueAt(double(i) / ways, positions[i]);
    }
    QObject::connect(animation, &QVariantAnimation::valueChanged, &widget,
                     [&widget](const QVariant& value) { widget.move(value.toPoint()); });
    // However it ends, by itself, stopped, or with the widget.
    QObject::connect(animation, &QAbstractAnimation::stateChanged, &widget,
                     [end = std::move(end)](QAbstractAnimation::State state) {
                         if (state == QAbstractAnimation::Stopped) {
                             end();
                         }
                     });
    animation->start(QAbstractAnimation::DeleteWhenStopped);
    return animation;
}

} // namespace zr::qt
