#include <zrbasic/platform/qt/bitmap_canvas_p.h>

#include <zrbasic/platform/qt/conversions_p.h>

#include <cmath>

namespace zr::qt {
namespace {

bool isExtent(NSSize size) {
    return std::isfinite(size.width) && std::isfinite(size.height) && size.width > 0 && size.height > 0;
}

} // namespace

BitmapCanvas::BitmapCanvas(NSBitmapImageRep& bitmap, NSSize size, bool isFlipped) : m_image(imageOver(bitmap)) {
    if (m_image.isNull() || !m_painter.begin(&m_image)) {
        return;
    }
    const NSSize points = isExtent(size) ? size : NSSize{double(m_image.width()), double(m_image.height())};
    m_painter.scale(m_image.width() / points.width, m_image.height() / points.height);
    m_canvas.emplace(m_painter, points, isFlipped);
}

BitmapCanvas::~BitmapCanvas() = default;

void BitmapCanvas::save() {
    if (m_canvas) {
        m_canvas->save();
    }
}

void BitmapCanvas::restore() {
    if (m_canvas) {
        m_canvas->restore();
    }
}

void BitmapCanvas::clipToRect(NSRect rect) {
    if (m_canvas) {
        m_canvas->clipToRect(rect);
    }
}

void BitmapCanvas::concat(const NSAffineTransformStruct& transform) {
    if (m_canvas) {
        m_canvas->concat(transform);
    }
}

void BitmapCanvas::fillRect(NSRect rect, NSColor* color, NSCompositingOperation operation) {
    if (m_canvas) {
        m_canvas->fillRect(rect, color, operation);
    }
}

void BitmapCanvas::fillRoundedRect(NSRect rect, double xRadius, double yRadius, NSColor* color) {
    if (m_canvas) {
        m_canvas->fillRoundedRect(rect, xRadius, yRadius, color);
    }
}

void BitmapCanvas::strokeRoundedRect(NSRect rect, double radius, double width, NSColor* color) {
    if (m_canvas) {
        m_canvas->strokeRoundedRect(rect, radius, width, color);
    }
}

void BitmapCanvas::fillPath(const CGPath& path, NSColor* color) {
    if (m_canvas) {
        m_canvas->fillPath(path, color);
    }
}

void BitmapCanvas::strokePath(const CGPath& path, double width, NSColor* color) {
    if (m_canvas) {
        m_canvas->strokePath(path, width, color);
    }
}

void BitmapCanvas::drawText(NSAttributedString* text, NSRect rect, bool isSingleLine) {
    if (m_canvas) {
        m_canvas->drawText(text, rect, isSingleLine);
    }
}

void BitmapCanvas::drawBitmap(NSBitmapImageRep* bitmap, NSRect to, NSRect from, NSCompositingOperation operation,
                              double fraction) {
    if (m_canvas) {
        m_canvas->drawBitmap(bitmap, to, from, operation, fraction);
    }
}

} // namespace zr::qt
