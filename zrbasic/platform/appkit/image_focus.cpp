#include <zrbasic/platform/appkit/graphics_context.h>
#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/platform/appkit/image_canvas_p.h>
#include <zrbasic/platform/appkit/screen.h>

#include <cmath>
#include <memory>
#include <vector>

namespace zr {
namespace {

/// An image that is being drawn in.
class Focus {
  public:
    Focus(NSImage* image, NSBitmapImageRep* bitmap)
        : m_image(image),
          m_bitmap(bitmap),
          m_canvas(bitmap, image->size()),
          m_context(NSGraphicsContext::contextWithCanvas(m_canvas, false)),
          m_current(m_context) {}
    Focus(const Focus&) = delete;
    Focus& operator=(const Focus&) = delete;

    [[nodiscard]] const Ref<NSImage>& image() const { return m_image; }
    [[nodiscard]] const Ref<NSBitmapImageRep>& bitmap() const { return m_bitmap; }

  private:
    Ref<NSImage> m_image;
    /// Null for an image that can have none.
    Ref<NSBitmapImageRep> m_bitmap;
    ImageCanvas m_canvas;
    Ref<NSGraphicsContext> m_context;
    CurrentContext m_current;
};

/// The innermost one last.
std::vector<std::unique_ptr<Focus>>& focuses() {
    static auto& all = *new std::vector<std::unique_ptr<Focus>>;
    return all;
}

/// As many pixels as that many points take on the main screen; none when that is no extent.
NSInteger pixelsOf(double points) {
    const Ref<NSScreen> screen = NSScreen::mainScreen();
    const double pixels = std::ceil(points * (screen ? screen->backingScaleFactor() : 1) - 1e-6);
    return pixels >= 1 && pixels <= NSBitmapImageRep::mostPixelsPerSide ? static_cast<NSInteger>(pixels) : 0;
}

Ref<NSBitmapImageRep> bitmapToDrawIn(const NSImage& image) {
    if (NSIsEmptyRect({{}, image.size()})) {
        return nullptr;
    }
    if (const Ref<NSBitmapImageRep> best = image.bestRepresentation(); best && best->pixelsWide() > 0) {
        return Ref<NSBitmapImageRep>(cast<NSBitmapImageRep>(best->copy()));
    }
    return NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(pixelsOf(image.size().width),
                                                             pixelsOf(image.size().height));
}

} // namespace

void NSImage::lockFocus() {
    const Ref<NSBitmapImageRep> bitmap = bitmapToDrawIn(*this);
    focuses().push_back(std::make_unique<Focus>(this, bitmap));
}

void NSImage::unlockFocus() {
    if (focuses().empty() || focuses().back()->image().get() != this) {
        return;
    }
    // Holds the image as well, which may have no other owner.
    const std::unique_ptr<Focus> focus = std::move(focuses().back());
    focuses().pop_back();
    if (const Ref<NSBitmapImageRep> bitmap = focus->bitmap()) {
        bitmap->setSize(m_size);
        m_representations = array({bitmap});
    }
}

void NSImage::drawInRect_fromRect_operation_fraction(NSRect to, NSRect from, NSCompositingOperation operation,
                                                     double fraction) {
    const Ref<NSGraphicsContext> context = NSGraphicsContext::currentContext();
    const Ref<NSBitmapImageRep> bitmap = bestRepresentation();
    if (!context || !bitmap) {
        return;
    }
    if (!NSIsEmptyRect(from)) {
        // The canvas counts in the bitmap's points, which need not be the image's.
        const NSSize points = bitmap->size();
        const auto ratio = [](double part, double whole) { return part > 0 && whole > 0 ? part / whole : 1; };
        const double x = ratio(points.width, m_size.width);
        const double y = ratio(points.height, m_size.height);
        from = {{from.origin.x * x, from.origin.y * y}, {from.size.width * x, from.size.height * y}};
    }
    context->canvas().drawBitmap(bitmap, to, from, operation, fraction);
}

void NSImage::drawInRect(NSRect to) {
    drawInRect_fromRect_operation_fraction(to, NSZeroRect, NSCompositingOperationSourceOver, 1);
}

} // namespace zr
