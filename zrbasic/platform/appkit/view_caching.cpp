#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/appkit/canvas.h>
#include <zrbasic/platform/appkit/graphics_context.h>
#include <zrbasic/platform/appkit/layer.h>
#include <zrbasic/platform/appkit/screen.h>
#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/appkit/view.h>
#include <zrbasic/platform/runtime/message.h>

#include <cmath>

// Drawing a view into a bitmap.
namespace zr {
namespace {

/// How many pixels so many points take, a broken one counted as whole but for what rounding has left over; 0 for what
/// no bitmap can have.
NSInteger pixelsOf(double points, double scale) {
    const double pixels = std::ceil(points * scale - 1e-6);
    return pixels >= 1 && pixels <= NSBitmapImageRep::mostPixelsPerSide ? static_cast<NSInteger>(pixels) : 0;
}

double scaleOfScreen() {
    const Ref<NSScreen> screen = NSScreen::mainScreen();
    const double scale = screen ? screen->backingScaleFactor() : 1;
    return std::isfinite(scale) && scale > 0 ? scale : 1;
}

/// Each view into a bitmap of its own, which is then put into that of the view around it: so it is cut off at its edges,
/// can be as faint as it wants, and may have its y in either direction.
void drawView(NSView* view, NSBitmapImageRep& bitmap, NSRect rect) {
    Toolkit& toolkit = currentToolkit();
    const bool isFlipped = view->isFlipped();
    const std::unique_ptr<Canvas> canvas = toolkit.makeBitmapCanvas(bitmap, rect.size, isFlipped);
    if (!canvas) {
        return;
    }
    const NSRect bounds = view->bounds();
    const Ref<CALayer> layer = view->layer();
    const Ref<NSGraphicsContext> context = NSGraphicsContext::contextWithCanvas(*canvas, isFlipped);
    const CurrentContext current(context);
    canvas->concat({1, 0, 0, 1, -rect.origin.x, -rect.origin.y});
    if (layer) {
        canvas->fillRoundedRect(bounds, layer->cornerRadius(), layer->cornerRadius(), layer->backgroundColor());
    }
    canvas->save();
    canvas->clipToRect(bounds);
    send<void>(view, "drawRect:"_sel, bounds);
    canvas->restore();
    const double xScale = static_cast<double>(bitmap.pixelsWide()) / rect.size.width;
    const double yScale = static_cast<double>(bitmap.pixelsHigh()) / rect.size.height;
    const Ref<NSArray> subviews = view->subviews();
    for (const id& element : subviews->elements()) {
        auto* const subview = static_cast<NSView*>(element.get());
        const NSRect frame = subview->frame();
        const Ref<NSBitmapImageRep> picture = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(
            pixelsOf(frame.size.width, xScale), pixelsOf(frame.size.height, yScale));
        if (!picture || subview->isHidden()) {
            continue;
        }
        drawView(subview, *picture, subview->bounds());
        canvas->save();
        canvas->clipToRect(bounds);
        canvas->drawBitmap(picture, frame, NSZeroRect, NSCompositingOperationSourceOver, subview->alphaValue());
        canvas->restore();
    }
    if (layer && layer->borderWidth() > 0) {
        canvas->strokeRoundedRect(bounds, layer->cornerRadius(), layer->borderWidth(), layer->borderColor());
    }
}

} // namespace

Ref<NSBitmapImageRep> NSView::bitmapImageRepForCachingDisplayInRect(NSRect rect) {
    const double scale = scaleOfScreen();
    Ref<NSBitmapImageRep> bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(pixelsOf(rect.size.width, scale),
                                                                                     pixelsOf(rect.size.height, scale));
    if (bitmap) {
        bitmap->setSize(rect.size);
    }
    return bitmap;
}

void NSView::cacheDisplayInRect_toBitmapImageRep(NSRect rect, NSBitmapImageRep* bitmap) {
    const bool isSomewhere = std::isfinite(NSMaxX(rect)) && std::isfinite(NSMaxY(rect));
    if (!bitmap || bitmap->pixelsWide() == 0 || NSIsEmptyRect(rect) || !isSomewhere) {
        return;
    }
    const Ref<NSView> self(this);
    const Ref<NSBitmapImageRep> kept(bitmap);
    ViewPeer* const peer = ensurePeer();
    if (!peer || !peer->drawInto(*bitmap, rect)) {
        drawView(this, *bitmap, rect);
    }
}

} // namespace zr
