#include <zrbasic/platform/appkit/compositing.h>

#include "../vectors/vectors.h"

#include <array>

namespace zr {
namespace {

using Pixel = std::array<std::uint8_t, 4>;

Pixel pixelOf(const std::string& digits) {
    const std::string bytes = test::bytesOfHex(digits);
    Pixel pixel{};
    for (std::size_t i = 0; i < pixel.size() && i < bytes.size(); ++i) {
        pixel[i] = static_cast<std::uint8_t>(bytes[i]);
    }
    return pixel;
}

Pixel composited(Pixel below, Pixel over, NSCompositingOperation operation) {
    compositePixels(below.data(), over.data(), 1, operation);
    return below;
}

TEST(Compositing, mixesLightnessWithHueAsFractionsDo) {
    for (const test::VectorRow& row : test::vectorRows("luminosity")) {
        SCOPED_TRACE(row.line);
        const Pixel mixed =
            composited(pixelOf(row.fields[0]), pixelOf(row.fields[1]), NSCompositingOperationLuminosity);
        const Pixel expected = pixelOf(row.fields[2]);
        for (std::size_t i = 0; i < 4; ++i) {
            // Halves may go either way.
            EXPECT_NEAR(mixed[i], expected[i], 1) << i;
        }
    }
}

TEST(Compositing, keepsBlackAndWhiteAndColoursWhatIsBetween) {
    const Pixel red{255, 0, 0, 255};
    EXPECT_EQ(composited(red, {128, 128, 128, 255}, NSCompositingOperationLuminosity), (Pixel{255, 0x4a, 0x4a, 255}));
    EXPECT_EQ(composited(red, {0, 0, 0, 255}, NSCompositingOperationLuminosity), (Pixel{0, 0, 0, 255}));
    EXPECT_EQ(composited(red, {255, 255, 255, 255}, NSCompositingOperationLuminosity), (Pixel{255, 255, 255, 255}));
    EXPECT_EQ(composited(red, {0, 0, 0, 0}, NSCompositingOperationLuminosity), red);
    EXPECT_EQ(composited({0, 0, 0, 0}, {1, 2, 3, 4}, NSCompositingOperationLuminosity), (Pixel{1, 2, 3, 4}));
}

TEST(Compositing, doesWhatTheOperationSays) {
    const Pixel below{100, 50, 0, 200};
    const Pixel over{0, 64, 128, 128};
    struct {
        const char* name;
        NSCompositingOperation operation;
        Pixel expected;
    } const rows[] = {
        {"clear", NSCompositingOperationClear, {0, 0, 0, 0}},
        {"copy", NSCompositingOperationCopy, {0, 64, 128, 128}},
        {"over", NSCompositingOperationSourceOver, {50, 89, 128, 228}},
        {"in", NSCompositingOperationSourceIn, {0, 50, 100, 100}},
        {"destination in", NSCompositingOperationDestinationIn, {50, 25, 0, 100}},
        {"screen", NSCompositingOperationScreen, {100, 101, 128, 228}},
        {"multiply", NSCompositingOperationMultiply, {50, 52, 28, 228}},
        {"unknown", NSCompositingOperation(99), {50, 89, 128, 228}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Pixel mixed = composited(below, over, row.operation);
        for (std::size_t i = 0; i < 4; ++i) {
            EXPECT_NEAR(mixed[i], row.expected[i], 1) << i;
        }
    }
}

TEST(Compositing, mixesAsManyPixelsAsItIsTold) {
    for (const std::size_t count : {0, 1, 63, 64, 65, 200}) {
        SCOPED_TRACE(count);
        std::vector<std::uint8_t> below(201 * 4, 255);
        const std::vector<std::uint8_t> over(201 * 4, 0);
        compositePixels(below.data(), over.data(), count, NSCompositingOperationDestinationIn);
        EXPECT_EQ(std::count(below.begin(), below.end(), 0), std::ptrdiff_t(count * 4));
        EXPECT_EQ(below[count * 4], 255);
        // Grey over white is grey.
        std::vector<std::uint8_t> white(201 * 4, 255);
        std::vector<std::uint8_t> grey(201 * 4, 255);
        for (std::size_t i = 0; i < grey.size(); ++i)
            grey[i] = i % 4 == 3 ? 255 : 90;
        compositePixels(white.data(), grey.data(), count, NSCompositingOperationLuminosity);
        EXPECT_EQ(std::count(white.begin(), white.end(), 90), std::ptrdiff_t(count * 3));
    }
    compositePixels(nullptr, nullptr, 0, NSCompositingOperationCopy);
}

TEST(Compositing, staysWithinBytesForPixelsThatAreNone) {
    // Colours above their alpha, as bytes written by others may be.
    for (const auto operation : {NSCompositingOperationLuminosity, NSCompositingOperationSourceOver,
                                 NSCompositingOperationMultiply, NSCompositingOperationScreen}) {
        SCOPED_TRACE(operation);
        const Pixel mixed = composited({255, 0, 255, 10}, {255, 255, 0, 0}, operation);
        EXPECT_GE(mixed[0], 10);
        EXPECT_EQ(mixed[3], 10);
    }
}

} // namespace
} // namespace zr
