#include <zrbasic/platform/appkit/cursor.h>

#include <array>

namespace zr {

ZR_DEFINE_CLASS(NSCursor) {
    is.classMethod<&NSCursor::arrowCursor>("arrowCursor");
    is.classMethod<&NSCursor::IBeamCursor>("IBeamCursor");
    is.classMethod<&NSCursor::pointingHandCursor>("pointingHandCursor");
    is.classMethod<&NSCursor::resizeLeftRightCursor>("resizeLeftRightCursor");
    is.classMethod<&NSCursor::resizeUpDownCursor>("resizeUpDownCursor");
    is.classMethod<&NSCursor::crosshairCursor>("crosshairCursor");
}

NSCursor::~NSCursor() = default;

Ref<NSCursor> NSCursor::cursorOfShape(Shape shape) {
    using Cursors = std::array<Ref<NSCursor>, 6>;
    static const Cursors& cursors = *[] {
        auto* const made = new Cursors;
        for (std::size_t i = 0; i < made->size(); ++i) {
            (*made)[i] = alloc<NSCursor>();
            (*made)[i]->m_shape = static_cast<Shape>(i);
        }
        return made;
    }();
    return cursors[static_cast<std::size_t>(shape)];
}

Ref<NSCursor> NSCursor::arrowCursor() {
    return cursorOfShape(Shape::Arrow);
}

Ref<NSCursor> NSCursor::IBeamCursor() {
    return cursorOfShape(Shape::IBeam);
}

Ref<NSCursor> NSCursor::pointingHandCursor() {
    return cursorOfShape(Shape::PointingHand);
}

Ref<NSCursor> NSCursor::resizeLeftRightCursor() {
    return cursorOfShape(Shape::ResizeLeftRight);
}

Ref<NSCursor> NSCursor::resizeUpDownCursor() {
    return cursorOfShape(Shape::ResizeUpDown);
}

Ref<NSCursor> NSCursor::crosshairCursor() {
    return cursorOfShape(Shape::Crosshair);
}

} // namespace zr
