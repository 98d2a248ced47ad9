#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/platform/appkit/layer.h>
#include <zrbasic/platform/appkit/screen.h>
#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/runtime/message.h>
#include <zrbasic/ui/view.h>
#include <zrbasic/ui/view_capture_p.h>

// Pictures of views: drawn anew, and as the screen has them.
namespace zr {
namespace {

double heightOfFirstScreen() {
    const Ref<NSArray> screens = NSScreen::screens();
    const id first = screens->elements().empty() ? nullptr : screens->elements().front();
    return send<NSRect>(cast<NSScreen>(first), "frame"_sel).size.height;
}

} // namespace

Ref<NSImage> zr_snapShot(NSView* self) {
    return send<Ref<NSImage>>(self, "zr_snapShotWithRect:"_sel, send<NSRect>(self, "bounds"_sel));
}

Ref<NSImage> zr_snapShotWithInsets(NSView* self, NSEdgeInsets insets) {
    const NSSize size = send<NSRect>(self, "bounds"_sel).size;
    return send<Ref<NSImage>>(
        self, "zr_snapShotWithRect:"_sel,
        NSRect{{insets.left, insets.top},
               {size.width - insets.left - insets.right, size.height - insets.top - insets.bottom}});
}

Ref<NSImage> zr_snapShotWithRect(NSView* self, NSRect rect) {
    if (!self) {
        return nullptr;
    }
    const auto bitmap = send<Ref<NSBitmapImageRep>>(self, "bitmapImageRepForCachingDisplayInRect:"_sel, rect);
    const NSRect bounds = send<NSRect>(self, "bounds"_sel);
    send<void>(self, "cacheDisplayInRect:toBitmapImageRep:"_sel, bounds, bitmap.get());
    Ref<NSImage> image = make<NSImage>(&NSImage::initWithSize, bounds.size);
    image->addRepresentation(bitmap);
    return image;
}

Ref<NSImage> screenCachedImage(NSView* self) {
    if (!self) {
        return nullptr;
    }
    const NSRect inWindow =
        send<NSRect>(self, "convertRect:toView:"_sel, send<NSRect>(self, "bounds"_sel), static_cast<NSView*>(nullptr));
    const Ref<NSWindow> window = send<Ref<NSWindow>>(self, "window"_sel);
    const NSPoint windowOrigin = send<NSRect>(window, "frame"_sel).origin;
    const double borderWidth = send<double>(send<Ref<CALayer>>(self, "layer"_sel), "borderWidth"_sel);
    const NSRect rect = detail::captureRect(inWindow, windowOrigin, heightOfFirstScreen(), borderWidth);
    Ref<NSImage> image = make<NSImage>(&NSImage::initWithSize, rect.size);
    if (window) {
        image->addRepresentation(currentToolkit().captureOfWindow(*window, rect));
    }
    return image;
}

} // namespace zr
