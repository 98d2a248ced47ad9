#include <zrbasic/ui/image.h>

#include <zrbasic/platform/appkit/bezier_path.h>
#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/appkit/graphics_context.h>
#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/platform/appkit/image_canvas_p.h>

#include <cmath>

namespace zr {
namespace {

/// Ends by itself what was begun with an image.
class [[nodiscard]] LockedFocus {
  public:
    explicit LockedFocus(NSImage* image) : m_image(image) { image->lockFocus(); }
    ~LockedFocus() { m_image->unlockFocus(); }
    LockedFocus(const LockedFocus&) = delete;
    LockedFocus& operator=(const LockedFocus&) = delete;

  private:
    Ref<NSImage> m_image;
};

NSInteger pixelsFor(double points, double ratio) {
    // What rounding left above a whole pixel is not worth another one.
    const double pixels = std::ceil(points * ratio - 1e-6);
    return pixels >= 1 && pixels <= NSBitmapImageRep::mostPixelsPerSide ? static_cast<NSInteger>(pixels) : 0;
}

/// A transparent image as dense as `original`, whose directions lie in the new one as the sine says, so that no pixel
/// gets lost; the original drawn in it.
Ref<NSImage> drawn(NSImage* original, NSSize size, double sine, NSAffineTransform* through, NSRect rect) {
    const Ref<NSImage> image = make<NSImage>(&NSImage::initWithSize, size);
    const Ref<NSBitmapImageRep> source = original->bestRepresentation();
    if (!source || NSIsEmptyRect({{}, original->size()}) || NSIsEmptyRect({{}, size})) {
        return image;
    }
    const double across = double(source->pixelsWide()) / original->size().width;
    const double up = double(source->pixelsHigh()) / original->size().height;
    const double turned = sine * sine;
    const Ref<NSBitmapImageRep> bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(
        pixelsFor(size.width, across + (up - across) * turned), pixelsFor(size.height, up + (across - up) * turned));
    if (!bitmap) {
        return image;
    }
    bitmap->setSize(size);
    image->addRepresentation(bitmap);
    // Nobody has the image yet, so it needs no second bitmap to be drawn in.
    ImageCanvas canvas(bitmap, size);
    const Ref<NSGraphicsContext> context = NSGraphicsContext::contextWithCanvas(canvas, false);
    const CurrentContext current(context);
    concat(through);
    original->drawInRect_fromRect_operation_fraction(rect, NSZeroRect, NSCompositingOperationCopy, 1);
    return image;
}

double inSinglePrecision(double value) {
    // GCC 12 optimises two such conversions side by side away, there and back, but not through a volatile.
    const volatile float rounded = static_cast<float>(value);
    return rounded;
}

enum class Mirror { TopToBottom, LeftToRight };

Ref<NSImage> mirrored(NSImage* self, Mirror direction) {
    if (!self) {
        return nullptr;
    }
    // Counted in single precision, so what is too small for it is nothing.
    const NSSize size{inSinglePrecision(self->size().width), inSinglePrecision(self->size().height)};
    if (size.width == 0 || size.height == 0) {
        return nullptr;
    }
    const Ref<NSAffineTransform> transform = NSAffineTransform::transform();
    if (direction == Mirror::TopToBottom) {
        transform->scaleXBy_yBy(1, -1);
        transform->translateXBy_yBy(0, -size.height);
    } else {
        transform->scaleXBy_yBy(-1, 1);
        transform->translateXBy_yBy(-size.width, 0);
    }
    return drawn(self, size, 0, transform, {{}, size});
}

} // namespace

ZR_GROUP(NSImage, ZRXHelper) {
    is.method<&imageWithTintColor>("imageWithTintColor:");
    is.method<&mirrorRotateInYAxis>("mirrorRotateInYAxis");
    is.method<&mirrorRotateInXAsix>("mirrorRotateInXAsix");
    is.method<&rotateWithAngle>("rotateWithAngle:");
}

Ref<NSImage> imageWithTintColor(NSImage* self, NSColor* color) {
    const Ref<NSBitmapImageRep> shown = self ? self->bestRepresentation() : nullptr;
    if (!shown || shown->pixelsWide() == 0) {
        return Ref<NSImage>(self);
    }
    const LockedFocus focus(self);
    const NSRect all{{}, self->size()};
    setFill(color);
    NSRectFill(all);
    self->drawInRect_fromRect_operation_fraction(all, all, NSCompositingOperationLuminosity, 1);
    self->drawInRect_fromRect_operation_fraction(all, all, NSCompositingOperationDestinationIn, 1);
    return Ref<NSImage>(self);
}

Ref<NSImage> mirrorRotateInYAxis(NSImage* self) {
    return mirrored(self, Mirror::TopToBottom);
}

Ref<NSImage> mirrorRotateInXAsix(NSImage* self) {
    return mirrored(self, Mirror::LeftToRight);
}

Ref<NSImage> rotateWithAngle(NSImage* self, double degrees) {
    if (!self) {
        return nullptr;
    }
    const double turn = 360 - degrees;
    const NSSize size = self->size();
    const Ref<NSAffineTransform> rotation = NSAffineTransform::transform();
    rotation->rotateByDegrees(turn);
    const Ref<NSBezierPath> outline = NSBezierPath::bezierPathWithRect({{}, size});
    outline->transformUsingAffineTransform(rotation);
    const NSSize room = outline->bounds().size;
    const NSPoint middle{room.width / 2, room.height / 2};
    const Ref<NSAffineTransform> transform = NSAffineTransform::transform();
    transform->translateXBy_yBy(middle.x, middle.y);
    transform->rotateByDegrees(turn);
    transform->translateXBy_yBy(-middle.x, -middle.y);
    const NSRect place{{middle.x - size.width / 2, middle.y - size.height / 2}, size};
    return drawn(self, room, rotation->transformStruct().m12, transform, place);
}

} // namespace zr
