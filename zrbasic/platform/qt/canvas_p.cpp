#include <zrbasic/platform/qt/canvas_p.h>

#include <zrbasic/platform/appkit/compositing.h>
#include <zrbasic/platform/appkit/path.h>
#include <zrbasic/platform/foundation/attributed_string.h>
#include <zrbasic/platform/qt/conversions_p.h>
#include <zrbasic/platform/qt/text_layout_p.h>

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <optional>

namespace zr::qt {
namespace {

class [[nodiscard]] Saved {
  public:
    explicit Saved(QPainter& painter) : m_painter(painter) { m_painter.save(); }
    ~Saved() { m_painter.restore(); }
    Saved(const Saved&) = delete;
    Saved& operator=(const Saved&) = delete;

  private:
    QPainter& m_painter;
};

/// Whether there is something in it, at a place that a painter can count to.
bool isDrawable(NSRect rect) {
    constexpr double farthest = 1 << 24;
    const auto isNear = [](double place) { return std::fabs(place) <= farthest; };
    return !NSIsEmptyRect(rect) && isNear(NSMinX(rect)) && isNear(NSMinY(rect)) && isNear(NSMaxX(rect)) &&
           isNear(NSMaxY(rect));
}

/// As much of a rectangle as can be drawn: what reaches far out is cut there, what is nowhere is nothing.
NSRect drawablePart(NSRect rect) {
    constexpr double far = 1 << 22;
    if (std::isnan(NSMaxX(rect)) || std::isnan(NSMaxY(rect))) {
        return {};
    }
    return NSIntersectionRect(rect, {{-far, -far}, {2 * far, 2 * far}});
}

QPainter::CompositionMode modeOf(NSCompositingOperation operation) {
    switch (operation) {
        case NSCompositingOperationClear:
            return QPainter::CompositionMode_Clear;
        case NSCompositingOperationCopy:
            return QPainter::CompositionMode_Source;
        case NSCompositingOperationSourceIn:
            return QPainter::CompositionMode_SourceIn;
        case NSCompositingOperationDestinationIn:
            return QPainter::CompositionMode_DestinationIn;
        case NSCompositingOperationMultiply:
            return QPainter::CompositionMode_Multiply;
        case NSCompositingOperationScreen:
            return QPainter::CompositionMode_Screen;
        case NSCompositingOperationSourceOver:
        case NSCompositingOperationLuminosity:
            break;
    }
    return QPainter::CompositionMode_SourceOver;
}

/// Whether pixels go to pixels, be it mirrored or by quarters of a turn.
bool keepsPixels(const QTransform& transform) {
    const auto isUnit = [](double one, double other) {
        return qFuzzyIsNull(std::fabs(one) - 1) && qFuzzyIsNull(other);
    };
    return (isUnit(transform.m11(), transform.m12()) && isUnit(transform.m22(), transform.m21())) ||
           (isUnit(transform.m12(), transform.m11()) && isUnit(transform.m21(), transform.m22()));
}

bool isTurned(const QPainter& painter) {
    return painter.worldTransform().type() > QTransform::TxScale;
}

/// Null for one with a point that no painter can count to.
std::optional<QPainterPath> pathOf(const CGPath& path) {
    constexpr double farthest = 1 << 24;
    QPainterPath made;
    made.setFillRule(Qt::WindingFill);
    for (const CGPathElement& element : path.elements()) {
        for (const NSPoint& point : element.points) {
            if (!(std::fabs(point.x) <= farthest && std::fabs(point.y) <= farthest)) {
                return std::nullopt;
            }
        }
        const auto point = [&](std::size_t i) { return QPointF(element.points[i].x, element.points[i].y); };
        switch (element.type) {
            case kCGPathElementMoveToPoint:
                made.moveTo(point(0));
                break;
            case kCGPathElementAddLineToPoint:
                made.lineTo(point(0));
                break;
            case kCGPathElementAddCurveToPoint:
                made.cubicTo(point(0), point(1), point(2));
                break;
            case kCGPathElementCloseSubpath:
                made.closeSubpath();
                break;
        }
    }
    return made;
}

QImage* imageOf(const QPainter& painter) {
    QPaintDevice* const device = painter.device();
    return device && device->devType() == QInternal::Image ? static_cast<QImage*>(device) : nullptr;
}

} // namespace

PainterCanvas::PainterCanvas(QPainter& painter, NSSize size, bool isFlipped)
    : m_painter(painter), m_isFlipped(isFlipped) {
    m_painter.save();
    if (!isFlipped) {
        m_painter.translate(0, size.height);
        m_painter.scale(1, -1);
    }
}

PainterCanvas::~PainterCanvas() {
    while (m_kept > 0) {
        restore();
    }
    m_painter.restore();
}

void PainterCanvas::save() {
    m_painter.save();
    ++m_kept;
}

void PainterCanvas::restore() {
    if (m_kept > 0) {
        --m_kept;
        m_painter.restore();
    }
}

void PainterCanvas::clipToRect(NSRect rect) {
    m_painter.setClipRect(toQt(drawablePart(rect)), Qt::IntersectClip);
}

void PainterCanvas::concat(const NSAffineTransformStruct& transform) {
    const double numbers[] = {transform.m11, transform.m12, transform.m21, transform.m22, transform.tX, transform.tY};
    if (std::all_of(std::begin(numbers), std::end(numbers), [](double number) { return std::isfinite(number); })) {
        m_painter.setWorldTransform(
            QTransform(transform.m11, transform.m12, transform.m21, transform.m22, transform.tX, transform.tY), true);
    }
}

void PainterCanvas::compose(const QRectF& area, NSCompositingOperation operation, FunctionRef<void(QPainter&)> draw) {
    const Saved saved(m_painter);
    QImage* const image = operation == NSCompositingOperationLuminosity ? imageOf(m_painter) : nullptr;
    if (!image) {
        // Pixels that cannot be read cannot be mixed by hand either: what is drawn just covers them.
        m_painter.setCompositionMode(modeOf(operation));
        draw(m_painter);
        return;
    }
    const QTransform toPixels = m_painter.deviceTransform();
    const QRect box = toPixels.mapRect(area).toAlignedRect().intersected(QRect(QPoint(), image->size()));
    if (box.isEmpty()) {
        return;
    }
    QImage over(box.size(), QImage::Format_RGBA8888_Premultiplied);
    over.fill(Qt::transparent);
    {
        QPainter painter(&over);
        painter.setOpacity(m_painter.opacity());
        painter.setRenderHints(m_painter.renderHints());
        painter.setTransform(toPixels * QTransform::fromTranslate(-box.x(), -box.y()));
        draw(painter);
    }
    QImage below = image->copy(box).convertToFormat(QImage::Format_RGBA8888_Premultiplied);
    below.setDevicePixelRatio(1);
    for (int y = 0; y < box.height(); ++y) {
        compositePixels(below.scanLine(y), over.constScanLine(y), std::size_t(box.width()), operation);
    }
    // Through the painter, for its clipping, and pixel by pixel.
    const double ratio = image->devicePixelRatio();
    m_painter.setWorldTransform(QTransform::fromScale(1 / ratio, 1 / ratio));
    m_painter.setOpacity(1);
    m_painter.setCompositionMode(QPainter::CompositionMode_Source);
    m_painter.drawImage(box.topLeft(), below);
}

void PainterCanvas::standUpright(NSRect rect) {
    m_painter.translate(NSMinX(rect), m_isFlipped ? NSMinY(rect) : NSMaxY(rect));
    if (!m_isFlipped) {
        m_painter.scale(1, -1);
    }
}

void PainterCanvas::fillRect(NSRect rect, NSColor* color, NSCompositingOperation operation) {
    const QColor shade = toQt(color);
    const NSRect part = drawablePart(rect);
    if (!shade.isValid() || NSIsEmptyRect(part)) {
        return;
    }
    compose(toQt(part), operation, [&](QPainter& painter) {
        // Edges between pixels go to the nearest one, so that neighbours touch without a seam.
        painter.setRenderHint(QPainter::Antialiasing, isTurned(painter));
        painter.fillRect(toQt(part), shade);
    });
}

void PainterCanvas::fillRoundedRect(NSRect rect, double xRadius, double yRadius, NSColor* color) {
    const QColor shade = toQt(color);
    if (!shade.isValid() || !isDrawable(rect)) {
        return;
    }
    if (!(xRadius > 0 && yRadius > 0)) {
        fillRect(rect, color, NSCompositingOperationSourceOver);
        return;
    }
    const Saved saved(m_painter);
    m_painter.setRenderHint(QPainter::Antialiasing);
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(shade);
    m_painter.drawRoundedRect(toQt(rect), std::min(xRadius, rect.size.width / 2),
                              std::min(yRadius, rect.size.height / 2));
}

void PainterCanvas::strokeRoundedRect(NSRect rect, double radius, double width, NSColor* color) {
    const QColor shade = toQt(color);
    if (!shade.isValid() || !isDrawable(rect) || !(width > 0)) {
        return;
    }
    const double shorter = std::min(rect.size.width, rect.size.height);
    const double corner = radius > 0 ? std::min(radius, shorter / 2) : 0;
    if (width * 2 >= shorter) {
        // Both sides meet, so nothing is left free in the middle.
        fillRoundedRect(rect, corner, corner, color);
        return;
    }
    const Saved saved(m_painter);
    m_painter.setRenderHint(QPainter::Antialiasing);
    m_painter.setBrush(Qt::NoBrush);
    m_painter.setPen(QPen(shade, width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    // A pen draws along the middle of its line.
    const QRectF middle = toQt(NSInsetRect(rect, width / 2, width / 2));
    const double bend = std::max(0.0, corner - width / 2);
    if (bend > 0) {
        m_painter.drawRoundedRect(middle, bend, bend);
    } else {
        m_painter.drawRect(middle);
    }
}

void PainterCanvas::fillPath(const CGPath& path, NSColor* color) {
    const QColor shade = toQt(color);
    const std::optional<QPainterPath> way = pathOf(path);
    if (!shade.isValid() || !way) {
        return;
    }
    const Saved saved(m_painter);
    m_painter.setRenderHint(QPainter::Antialiasing);
    m_painter.fillPath(*way, shade);
}

void PainterCanvas::strokePath(const CGPath& path, double width, NSColor* color) {
    const QColor shade = toQt(color);
    const std::optional<QPainterPath> way = pathOf(path);
    if (!shade.isValid() || !way || !(width > 0) || !std::isfinite(width)) {
        return;
    }
    const Saved saved(m_painter);
    m_painter.setRenderHint(QPainter::Antialiasing);
    m_painter.strokePath(*way, QPen(shade, width, Qt::SolidLine, Qt::FlatCap, Qt::SvgMiterJoin));
}

void PainterCanvas::drawText(NSAttributedString* text, NSRect rect, bool isSingleLine) {
    if (!text || text->length() == 0 || !isDrawable(rect)) {
        return;
    }
    const Saved saved(m_painter);
    standUpright(rect);
    NSSize room = rect.size;
    if (isSingleLine && m_painter.worldTransform().type() <= QTransform::TxTranslate) {
        // A line editor lies on whole pixels, and so does the text before it is edited.
        const QTransform place = m_painter.worldTransform();
        const QRect pixels = pixelRect({{place.dx(), place.dy()}, room}, 0, true);
        m_painter.setWorldTransform(QTransform::fromTranslate(pixels.x(), pixels.y()));
        room = {double(pixels.width()), double(pixels.height())};
    }
    const TextLayout layout(text, room.width, isSingleLine ? TextLayout::Lines::Single : TextLayout::Lines::Styled);
    // A single line is shown whole: letters that reach below a low field are better than letters without feet.
    // Not cut between two pixels of a dense screen either.
    const QRectF clip(0, 0, room.width, isSingleLine ? std::max(room.height, layout.height() + 2) : room.height);
    m_painter.setClipRect(clip, Qt::IntersectClip);
    m_painter.setPen(Qt::black);
    layout.draw(m_painter, clip);
}

void PainterCanvas::drawBitmap(NSBitmapImageRep* bitmap, NSRect to, NSRect from, NSCompositingOperation operation,
                               double fraction) {
    if (!bitmap || !isDrawable(to) || !(fraction > 0)) {
        return;
    }
    QImage image = imageOver(*bitmap);
    if (image.isNull()) {
        return;
    }
    const QImage* const target = imageOf(m_painter);
    if (target && target->constBits() == image.constBits()) {
        // Drawn into itself: what is read must not be what was just written.
        image = image.copy();
    }
    QRectF part(image.rect());
    // In the bitmap's pixels, with y downwards as from here on.
    QRectF area(0, 0, to.size.width, to.size.height);
    if (!NSIsEmptyRect(from)) {
        const NSSize points = bitmap->size();
        const double wide = points.width > 0 ? image.width() / points.width : 1;
        const double high = points.height > 0 ? image.height() / points.height : 1;
        const QRectF wanted(NSMinX(from) * wide, image.height() - NSMaxY(from) * high, from.size.width * wide,
                            from.size.height * high);
        part = wanted.intersected(part);
        if (part.isEmpty()) {
            return;
        }
        // Where the bitmap ends inside of the part, nothing is drawn.
        const double right = area.width() / wanted.width();
        const double down = area.height() / wanted.height();
        area = QRectF((part.x() - wanted.x()) * right, (part.y() - wanted.y()) * down, part.width() * right,
                      part.height() * down);
    }
    const Saved saved(m_painter);
    standUpright(to);
    compose(area, operation, [&](QPainter& painter) {
        painter.setOpacity(painter.opacity() * std::min(fraction, 1.0));
        const QTransform fromPixels =
            QTransform::fromScale(area.width() / part.width(), area.height() / part.height()) *
            painter.deviceTransform();
        painter.setRenderHint(QPainter::SmoothPixmapTransform, !keepsPixels(fromPixels));
        painter.drawImage(area, image, part);
    });
}

} // namespace zr::qt
