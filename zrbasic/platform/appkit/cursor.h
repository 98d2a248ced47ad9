#pragma once

#include <zrbasic/platform/runtime/declare.h>

namespace zr {

/// The shape of the pointer. The ones here are always the same objects. Main thread only.
class ZR_EXPORT NSCursor : public NSObject {
    ZR_DECLARE_CLASS(NSCursor, NSObject)
  public:
    ~NSCursor() override;

    /// What a toolkit is to show.
    enum class Shape { Arrow, IBeam, PointingHand, ResizeLeftRight, ResizeUpDown, Crosshair };

    [[nodiscard]] static Ref<NSCursor> arrowCursor();
    [[nodiscard]] static Ref<NSCursor> IBeamCursor();
    [[nodiscard]] static Ref<NSCursor> pointingHandCursor();
    [[nodiscard]] static Ref<NSCursor> resizeLeftRightCursor();
    [[nodiscard]] static Ref<NSCursor> resizeUpDownCursor();
    [[nodiscard]] static Ref<NSCursor> crosshairCursor();

    [[nodiscard]] Shape shape() const { return m_shape; }

  private:
    [[nodiscard]] static Ref<NSCursor> cursorOfShape(Shape shape);

    Shape m_shape = Shape::Arrow;
};

} // namespace zr
