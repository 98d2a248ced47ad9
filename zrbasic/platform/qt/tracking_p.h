#pragma once

#include <zrbasic/platform/appkit/tracking_area.h>
#include <zrbasic/platform/appkit/view.h>

#include <QPointF>
#include <QPointer>
#include <QWidget>

#include <vector>

namespace zr::qt {

/// Follows the pointer through the tracking areas and cursor rectangles of one window at a time.
class PointerTracker {
  public:
    /// The pointer is at that point of the window; `isMove` says that it was moved to it, rather than that what lies
    /// under it may have changed.
    void pointerAt(QWidget& topLevel, QPointF point, bool isDragging, bool isMove);
    void pointerLeft();
    [[nodiscard]] bool isIn(const QWidget* topLevel) const { return topLevel && m_topLevel == topLevel; }
    /// The same point again, if it is in any window.
    void reconsider(bool isDragging);

  private:
    struct Inside {
        Ref<NSTrackingArea> area;
        Weak<NSView> view;
    };

    void collect(NSView& view, NSRect visible, NSPoint point, std::vector<Inside>& found) const;
    void leave(const Inside& area);

    QPointer<QWidget> m_topLevel;
    QPointF m_point;
    std::vector<Inside> m_inside;
};

} // namespace zr::qt
