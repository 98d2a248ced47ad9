#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/ui/image.h>

#include <QImage>
#include <QPainter>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdlib>

// An image of 1024 by 1024 pixels turned by 33 degrees onto a canvas that just holds it, beside the same done by Qt's
// painter, smoothly and on an image of the same kind. Qt divides the work among processors, so compare the processor time.

namespace {

using namespace zr;

constexpr int side = 1024;
constexpr double angle = 33;

Ref<NSImage> image() {
    Ref<NSImage> made = make<NSImage>(&NSImage::initWithSize, NSMakeSize(side, side));
    const Ref<NSBitmapImageRep> bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(side, side);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x)
            bitmap->setPixel_atX_y({std::uint8_t(x / 4), std::uint8_t(y / 4), 90, 255}, x, y);
    }
    made->addRepresentation(bitmap);
    return made;
}

QImage turnedByQt(const QImage& original) {
    const QRectF bounds = QTransform().rotate(angle).mapRect(QRectF(original.rect()));
    QImage turned(int(std::ceil(bounds.width())), int(std::ceil(bounds.height())), original.format());
    turned.fill(Qt::transparent);
    QPainter painter(&turned);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.translate(turned.width() / 2.0, turned.height() / 2.0);
    painter.rotate(angle);
    painter.translate(-original.width() / 2.0, -original.height() / 2.0);
    painter.drawImage(0, 0, original);
    return turned;
}

QImage imageOfQt(const NSBitmapImageRep& bitmap, QImage::Format format) {
    return QImage(bitmap.bytes().data(), int(bitmap.pixelsWide()), int(bitmap.pixelsHigh()),
                  QImage::Format_RGBA8888_Premultiplied)
        .convertToFormat(format);
}

void imageRotation(benchmark::State& state) {
    const Ref<NSImage> original = image();
    Ref<NSImage> turned;
    for (auto _ : state)
        turned = rotateWithAngle(original, angle);
    const NSBitmapImageRep& bitmap = *turned->bestRepresentation();
    const QImage expected =
        turnedByQt(imageOfQt(*original->bestRepresentation(), QImage::Format_RGBA8888_Premultiplied));
    for (const int x : {300, 700, 1000}) {
        const QRgb other = expected.pixel(x, 700);
        const NSBitmapImageRep::Pixel pixel = bitmap.pixelAtX_y(x, 700);
        if (std::abs(pixel.red - qRed(other)) > 2 || std::abs(pixel.green - qGreen(other)) > 2)
            state.SkipWithError("turned differently");
    }
}
BENCHMARK(imageRotation)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

/// 0 in the bitmap's own order of bytes, 1 in the one that Qt is fastest with.
void imageRotationByQt(benchmark::State& state) {
    const QImage original =
        imageOfQt(*image()->bestRepresentation(),
                  state.range(0) == 0 ? QImage::Format_RGBA8888_Premultiplied : QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state)
        benchmark::DoNotOptimize(turnedByQt(original));
}
BENCHMARK(imageRotationByQt)->Arg(0)->Arg(1)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

} // namespace
