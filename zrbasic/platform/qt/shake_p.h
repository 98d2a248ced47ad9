#pragma once

#include <QPoint>

#include <functional>
#include <vector>

class QVariantAnimation;
class QWidget;

namespace zr::qt {

/// Moves a widget from point to point, each way in an equal share of the seconds, and runs `end` when it is there or
/// something stops it. Deletes itself then; belongs to the widget. Fewer than two points, or no time, end at once and
/// give null.
QVariantAnimation* playPositions(QWidget& widget, const std::vector<QPoint>& positions, double seconds,
                                 std::function<void()> end);

} // namespace zr::qt
