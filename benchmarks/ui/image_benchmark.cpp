#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/ui/image.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <vector>

// Images of 1024 by 1024 pixels, opaque in the middle half and fading towards the sides, tinted in place, mirrored and
// turned by a quarter. Beside them stands a plain copy of as many bytes, which each of them makes at least.

namespace {

using namespace zr;

constexpr NSInteger side = 1024;

Ref<NSImage> image() {
    Ref<NSImage> made = make<NSImage>(&NSImage::initWithSize, NSMakeSize(side, side));
    const Ref<NSBitmapImageRep> bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(side, side);
    for (NSInteger y = 0; y < side; ++y) {
        for (NSInteger x = 0; x < side; ++x) {
            const NSInteger edge = std::min(x, side - 1 - x);
            const NSInteger alpha = std::min<NSInteger>(255, edge);
            const auto part = [alpha](NSInteger value) { return std::uint8_t((value & 255) * alpha / 255); };
            bitmap->setPixel_atX_y({part(x * 7 + y), part(y * 3), part(x ^ y), std::uint8_t(alpha)}, x, y);
        }
    }
    made->addRepresentation(bitmap);
    return made;
}

void imageTint(benchmark::State& state) {
    const Ref<NSImage> tinted = image();
    const auto alphaBefore = tinted->bestRepresentation()->pixelAtX_y(100, 5).alpha;
    const Ref<NSColor> color = NSColor::orangeColor();
    for (auto _ : state)
        imageWithTintColor(tinted, color);
    const NSBitmapImageRep::Pixel pixel = tinted->bestRepresentation()->pixelAtX_y(100, 5);
    if (pixel.alpha != alphaBefore || pixel.red < pixel.green || pixel.green < pixel.blue)
        state.SkipWithError("not tinted");
    state.SetItemsProcessed(state.iterations() * side * side);
}
BENCHMARK(imageTint)->Unit(benchmark::kMillisecond);

void imageMirror(benchmark::State& state) {
    const Ref<NSImage> original = image();
    Ref<NSImage> mirrored;
    for (auto _ : state)
        mirrored = mirrorRotateInXAsix(original);
    if (mirrored->bestRepresentation()->pixelAtX_y(3, 9) != original->bestRepresentation()->pixelAtX_y(side - 4, 9))
        state.SkipWithError("not mirrored");
}
BENCHMARK(imageMirror)->Unit(benchmark::kMillisecond);

void imageQuarterTurn(benchmark::State& state) {
    const Ref<NSImage> original = image();
    Ref<NSImage> turned;
    for (auto _ : state)
        turned = rotateWithAngle(original, 90);
    if (turned->bestRepresentation()->pixelAtX_y(side - 10, 3) != original->bestRepresentation()->pixelAtX_y(3, 9))
        state.SkipWithError("not turned");
}
BENCHMARK(imageQuarterTurn)->Unit(benchmark::kMillisecond);

void bytesCopied(benchmark::State& state) {
    const std::vector<std::uint8_t> bytes(side * side * 4, 3);
    for (auto _ : state) {
        std::vector<std::uint8_t> copy(bytes);
        benchmark::DoNotOptimize(copy.data());
    }
}
BENCHMARK(bytesCopied)->Unit(benchmark::kMillisecond);

} // namespace
