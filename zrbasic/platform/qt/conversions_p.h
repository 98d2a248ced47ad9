#pragma once

#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/appkit/font.h>
#include <zrbasic/platform/foundation/string.h>

#include <QColor>
#include <QFont>
#include <QImage>
#include <QPointF>
#include <QRectF>
#include <QString>

namespace zr::qt {

/// The empty text for null.
[[nodiscard]] QString toQt(NSString* text);
/// Never null.
[[nodiscard]] Ref<NSString> fromQt(const QString& text);
/// Invalid for null.
[[nodiscard]] QColor toQt(NSColor* color);
/// In sRGB; null for an invalid colour.
[[nodiscard]] Ref<NSColor> fromQt(const QColor& color);
/// One point is one logical pixel, whatever the screen's density; the system font of 13 points for null.
[[nodiscard]] QFont toQt(NSFont* font);
/// Weight and size as Qt has them.
[[nodiscard]] Ref<NSFont> fromQt(const QFont& font);
/// Shares the bitmap's bytes, which must outlive the image.
[[nodiscard]] QImage imageOver(NSBitmapImageRep& bitmap);
[[nodiscard]] Ref<NSBitmapImageRep> fromQt(const QImage& image);

[[nodiscard]] inline QPointF toQt(NSPoint point) {
    return {point.x, point.y};
}
[[nodiscard]] inline QRectF toQt(NSRect rect) {
    return {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height};
}

/// A rectangle with its edges on whole pixels; y is turned around inside `height`, that of what it lies in, or kept as
/// it is for a flipped one. Edges go to the nearest pixel, those half-way to the higher one, so that neighbours touch.
[[nodiscard]] QRect pixelRect(NSRect rect, double height, bool isFlipped);

} // namespace zr::qt
