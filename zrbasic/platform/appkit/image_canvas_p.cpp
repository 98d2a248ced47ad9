#include <zrbasic/platform/appkit/image_canvas_p.h>

#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/appkit/compositing.h>
#include <zrbasic/platform/appkit/toolkit.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace zr {
namespace {

bool isFinite(const NSAffineTransformStruct& transform) {
    const double numbers[] = {transform.m11, transform.m12, transform.m21, transform.m22, transform.tX, transform.tY};
    return std::all_of(std::begin(numbers), std::end(numbers), [](double number) { return std::isfinite(number); });
}

/// `count` pixels of the colour.
std::vector<std::uint8_t> pixelsOf(NSColor* color, std::size_t count) {
    const Ref<NSBitmapImageRep> one = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(1, 1);
    one->setColor_atX_y(color, 0, 0);
    std::vector<std::uint8_t> pixels(count * 4);
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        pixels[i] = one->bytes()[i % 4];
    }
    return pixels;
}

std::uint8_t weighed(unsigned byte, unsigned part) {
    return static_cast<std::uint8_t>((byte * part + 127) / 255);
}

} // namespace

ImageCanvas::ImageCanvas(NSBitmapImageRep* bitmap, NSSize size) : m_bitmap(bitmap), m_size(size) {
    const auto isExtent = [](double extent) { return std::isfinite(extent) && extent > 0; };
    if (!bitmap || !isExtent(size.width) || !isExtent(size.height)) {
        m_bitmap = nullptr;
        return;
    }
    const int wide = static_cast<int>(bitmap->pixelsWide());
    const int high = static_cast<int>(bitmap->pixelsHigh());
    m_base = {wide / size.width, 0, 0, -high / size.height, 0, double(high)};
    m_state.clip = {0, 0, wide, high};
}

ImageCanvas::~ImageCanvas() = default;

void ImageCanvas::save() {
    m_kept.push_back(m_state);
}

void ImageCanvas::restore() {
    if (!m_kept.empty()) {
        m_state = std::move(m_kept.back());
        m_kept.pop_back();
    }
}

std::uint8_t* ImageCanvas::at(int x, int y) const {
    return m_bitmap->bytes().data() + y * m_bitmap->bytesPerRow() + std::ptrdiff_t{x} * 4;
}

void ImageCanvas::clipToRect(NSRect rect) {
    if (!m_bitmap) {
        return;
    }
    const Ref<CGPath> path = CGPath::path();
    path->addRect(rect);
    const std::vector<Polygon> around = polygonsOf(*path, toPixels());
    const int wide = static_cast<int>(m_bitmap->pixelsWide());
    const int high = static_cast<int>(m_bitmap->pixelsHigh());
    PixelBox box{wide, high, 0, 0};
    const bool isLevel = keepsLevel(toPixels());
    const auto pixel = [](double place, int last) {
        return static_cast<int>(std::clamp(std::floor(place + 0.5), 0.0, double(last)));
    };
    if (isLevel && !around.empty()) {
        const NSPoint one = around[0][0];
        const NSPoint other = around[0][2];
        box = {pixel(std::min(one.x, other.x), wide), pixel(std::min(one.y, other.y), high),
               pixel(std::max(one.x, other.x), wide), pixel(std::max(one.y, other.y), high)};
    }
    if (!isLevel) {
        auto mask = std::make_shared<std::vector<std::uint8_t>>(static_cast<std::size_t>(wide) * std::size_t(high));
        coverRows(around, wide, high, [&](int y, int x, std::span<const std::uint8_t> parts) {
            const std::size_t place = static_cast<std::size_t>(y) * std::size_t(wide) + std::size_t(x);
            for (std::size_t i = 0; i < parts.size(); ++i) {
                (*mask)[place + i] = m_state.mask ? weighed(parts[i], (*m_state.mask)[place + i]) : parts[i];
            }
        });
        m_state.mask = std::move(mask);
        return;
    }
    m_state.clip = intersection(m_state.clip, box);
}

void ImageCanvas::concat(const NSAffineTransformStruct& transform) {
    if (isFinite(transform)) {
        m_state.transform = transformBoth(transform, m_state.transform);
    }
}

void ImageCanvas::composite(int x, int y, std::span<const std::uint8_t> over, std::span<const std::uint8_t> parts,
                            NSCompositingOperation operation) {
    const std::size_t count = over.size() / 4;
    std::uint8_t* const below = at(x, y);
    if (m_state.mask) {
        const std::uint8_t* const mask =
            m_state.mask->data() + static_cast<std::ptrdiff_t>(y) * m_bitmap->pixelsWide() + x;
        m_masked.assign(mask, mask + count);
        for (std::size_t i = 0; i < parts.size(); ++i) {
            m_masked[i] = weighed(m_masked[i], parts[i]);
        }
        parts = m_masked;
    }
    if (parts.empty()) {
        compositePixels(below, over.data(), count, operation);
        return;
    }
    m_mixed.assign(below, below + count * 4);
    compositePixels(m_mixed.data(), over.data(), count, operation);
    for (std::size_t i = 0; i < count * 4; ++i) {
        const unsigned part = parts[i / 4];
        below[i] = static_cast<std::uint8_t>((m_mixed[i] * part + below[i] * (255 - part) + 127) / 255);
    }
}

void ImageCanvas::fillPolygons(const std::vector<Polygon>& polygons, NSColor* color, NSCompositingOperation operation) {
    if (!m_bitmap || !color || m_state.clip.isEmpty()) {
        return;
    }
    const PixelBox clip = m_state.clip;
    const std::vector<std::uint8_t> pixels = pixelsOf(color, static_cast<std::size_t>(clip.right - clip.left));
    coverRows(polygons, clip.right, clip.bottom, [&](int y, int x, std::span<const std::uint8_t> parts) {
        const int left = std::max(x, clip.left);
        const int right = x + static_cast<int>(parts.size());
        if (y >= clip.top && left < right) {
            const auto count = static_cast<std::size_t>(right - left);
            composite(left, y, {pixels.data(), count * 4}, parts.subspan(static_cast<std::size_t>(left - x)),
                      operation);
        }
    });
}

void ImageCanvas::fillRect(NSRect rect, NSColor* color, NSCompositingOperation operation) {
    if (!m_bitmap || !color || NSIsEmptyRect(rect)) {
        return;
    }
    if (!keepsLevel(toPixels())) {
        const Ref<CGPath> path = CGPath::path();
        path->addRect(rect);
        fillPolygons(polygonsOf(*path, toPixels()), color, operation);
        return;
    }
    // Edges between pixels go to the nearest one, so that neighbours touch without a seam.
    const PixelBox before = m_state.clip;
    clipToRect(rect);
    const PixelBox box = std::exchange(m_state.clip, before);
    if (box.isEmpty()) {
        return;
    }
    const std::vector<std::uint8_t> pixels = pixelsOf(color, static_cast<std::size_t>(box.right - box.left));
    for (int y = box.top; y < box.bottom; ++y) {
        composite(box.left, y, pixels, {}, operation);
    }
}

void ImageCanvas::fillRoundedRect(NSRect rect, double xRadius, double yRadius, NSColor* color) {
    if (!(xRadius > 0 && yRadius > 0)) {
        fillRect(rect, color, NSCompositingOperationSourceOver);
    } else if (!NSIsEmptyRect(rect)) {
        const Ref<CGPath> path = CGPath::path();
        path->addRoundedRect_cornerWidth_cornerHeight(rect, xRadius, yRadius);
        fillPath(*path, color);
    }
}

void ImageCanvas::strokeRoundedRect(NSRect rect, double radius, double width, NSColor* color) {
    if (NSIsEmptyRect(rect) || !(width > 0)) {
        return;
    }
    const Ref<CGPath> path = CGPath::path();
    path->addRoundedRect_cornerWidth_cornerHeight(rect, radius, radius);
    const NSRect inner = NSInsetRect(rect, width, width);
    if (!NSIsEmptyRect(inner)) {
        // The other way around, which leaves it free.
        path->addRoundedRect_cornerWidth_cornerHeight(
            {{NSMinX(inner), NSMaxY(inner)}, {inner.size.width, -inner.size.height}}, radius - width, radius - width);
    }
    fillPath(*path, color);
}

void ImageCanvas::fillPath(const CGPath& path, NSColor* color) {
    fillPolygons(polygonsOf(path, toPixels()), color, NSCompositingOperationSourceOver);
}

void ImageCanvas::strokePath(const CGPath& path, double width, NSColor* color) {
    fillPolygons(outlineOf(path, width, toPixels()), color, NSCompositingOperationSourceOver);
}

void ImageCanvas::drawText(NSAttributedString* text, NSRect rect, bool isSingleLine) {
    if (!m_bitmap || m_state.clip.isEmpty()) {
        return;
    }
    const std::unique_ptr<Canvas> canvas = currentToolkit().makeBitmapCanvas(*m_bitmap, m_size, false);
    if (!canvas) {
        return;
    }
    const PixelBox clip = m_state.clip;
    canvas->clipToRect({{clip.left / m_base.m11, (clip.bottom - m_base.tY) / m_base.m22},
                        {(clip.right - clip.left) / m_base.m11, (clip.top - clip.bottom) / m_base.m22}});
    canvas->concat(m_state.transform);
    canvas->drawText(text, rect, isSingleLine);
}

void ImageCanvas::drawBitmap(NSBitmapImageRep* bitmap, NSRect to, NSRect from, NSCompositingOperation operation,
                             double fraction) {
    if (!m_bitmap || !bitmap || bitmap->pixelsWide() == 0 || NSIsEmptyRect(to) || !(fraction > 0)) {
        return;
    }
    const double wide = double(bitmap->pixelsWide());
    const double high = double(bitmap->pixelsHigh());
    // In the bitmap's pixels, y downwards.
    NSRect part{{}, {wide, high}};
    if (!NSIsEmptyRect(from)) {
        const NSSize points = bitmap->size();
        const double x = points.width > 0 ? wide / points.width : 1;
        const double y = points.height > 0 ? high / points.height : 1;
        part = {{NSMinX(from) * x, high - NSMaxY(from) * y}, {from.size.width * x, from.size.height * y}};
    }
    const double x = to.size.width / part.size.width;
    const double y = to.size.height / part.size.height;
    const NSAffineTransformStruct toPoints{x, 0, 0, -y, NSMinX(to) - NSMinX(part) * x, NSMaxY(to) + NSMinY(part) * y};
    // Drawn into itself: what is read must not be what was just written.
    const Ref<NSBitmapImageRep> source = bitmap == m_bitmap.get()
                                             ? Ref<NSBitmapImageRep>(cast<NSBitmapImageRep>(bitmap->copy()))
                                             : Ref<NSBitmapImageRep>(bitmap);
    const auto opacity = static_cast<unsigned>(std::min(fraction, 1.0) * 255 + 0.5);
    std::vector<std::uint8_t> faded;
    sampleBitmap(*source, part, transformBoth(toPoints, toPixels()), m_state.clip,
                 [&](int row, int left, std::span<const std::uint8_t> pixels, std::span<const std::uint8_t> parts) {
                     if (opacity < 255) {
                         faded.resize(pixels.size());
                         std::transform(pixels.begin(), pixels.end(), faded.begin(),
                                        [opacity](std::uint8_t byte) { return weighed(byte, opacity); });
                         pixels = faded;
                     }
                     composite(left, row, pixels, parts, operation);
                 });
}

} // namespace zr
