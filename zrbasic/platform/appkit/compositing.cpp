#include <zrbasic/platform/appkit/compositing.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace zr {
namespace {

/// `a` times `b` as parts of 255, rounded.
constexpr unsigned product(unsigned a, unsigned b) {
    const unsigned exact = a * b + 128;
    return (exact + (exact >> 8)) >> 8;
}

/// Writes for every byte what `mix` makes of it: (below, over, alpha below, alpha over).
template <class Mix>
void mixBytes(std::uint8_t* below, const std::uint8_t* over, std::size_t count, Mix mix) {
    for (std::size_t i = 0; i < count * 4; i += 4) {
        const unsigned belowAlpha = below[i + 3];
        const unsigned overAlpha = over[i + 3];
        for (std::size_t part = i; part < i + 4; ++part) {
            below[part] =
                static_cast<std::uint8_t>(std::min(255U, mix(below[part], over[part], belowAlpha, overAlpha)));
        }
    }
}

/// Calls `mix` with the words of pixels, below and over, and writes the word that it gives.
template <class Mix>
void mixWords(std::uint8_t* below, const std::uint8_t* over, std::size_t count, Mix mix) {
    for (std::size_t i = 0; i < count * 4; i += 4) {
        std::uint32_t lower = 0;
        std::uint32_t upper = 0;
        std::memcpy(&lower, below + i, 4);
        std::memcpy(&upper, over + i, 4);
        lower = mix(lower, upper, unsigned{below[i + 3]}, unsigned{over[i + 3]});
        std::memcpy(below + i, &lower, 4);
    }
}

/// All four bytes times a part of 255, rounded.
std::uint32_t weighed(std::uint32_t pixel, unsigned part) {
    constexpr std::uint64_t lanes = 0x00FF00FF00FF00FF;
    const std::uint64_t spread = (pixel | (std::uint64_t{pixel} << 24)) & lanes;
    const std::uint64_t exact = spread * part + 0x0080008000800080;
    const std::uint64_t bytes = ((exact + ((exact >> 8) & lanes)) >> 8) & lanes;
    return static_cast<std::uint32_t>(bytes | (bytes >> 24));
}

/// As many pixels as are mixed together, their parts side by side: compilers make of loops over these four pixels in
/// one step each, even without being told of a newer processor.
constexpr std::size_t blockSize = 64;

/// Where in a word the byte of that index lies.
constexpr unsigned shiftOf(unsigned index) {
    return std::endian::native == std::endian::little ? 8 * index : 24 - 8 * index;
}

struct Block {
    std::array<float, blockSize> red;
    std::array<float, blockSize> green;
    std::array<float, blockSize> blue;
    std::array<float, blockSize> alpha;

    void read(const std::uint8_t* bytes, std::size_t count) {
        // Taken apart as whole words, which loops do several at a time, other than bytes.
        std::array<std::uint32_t, blockSize> words{};
        std::memcpy(words.data(), bytes, count * 4);
        for (std::size_t i = 0; i < blockSize; ++i) {
            red[i] = static_cast<float>(static_cast<int>(words[i] >> shiftOf(0) & 255));
            green[i] = static_cast<float>(static_cast<int>(words[i] >> shiftOf(1) & 255));
            blue[i] = static_cast<float>(static_cast<int>(words[i] >> shiftOf(2) & 255));
            alpha[i] = static_cast<float>(static_cast<int>(words[i] >> shiftOf(3) & 255));
        }
    }

    void write(std::uint8_t* bytes, std::size_t count) const {
        std::array<std::uint32_t, blockSize> words;
        const auto part = [](float number, unsigned index) {
            return static_cast<std::uint32_t>(static_cast<int>(number)) << shiftOf(index);
        };
        for (std::size_t i = 0; i < blockSize; ++i) {
            words[i] = part(red[i], 0) | part(green[i], 1) | part(blue[i], 2) | part(alpha[i], 3);
        }
        std::memcpy(bytes, words.data(), count * 4);
    }
};

constexpr float lightness(float red, float green, float blue) {
    return 0.3F * red + 0.59F * green + 0.11F * blue;
}

// No std::min and no branches in here: with references and jumps the loops stay slow ones.
constexpr float lesser(float a, float b) {
    return a < b ? a : b;
}
constexpr float greater(float a, float b) {
    return a > b ? a : b;
}

/// Lightness of `over` with hue and saturation of `below`, into `below`, all as parts of 255. The colours stay
/// multiplied by both alphas throughout, so nothing is divided by them and transparent pixels are nothing special.
void mixLuminosity(Block& below, const Block& over) {
    constexpr float whole = 1 / 255.0F;
    // Keeps divisions by nothing finite. They are those of greys, which stay what they are with any result.
    constexpr float little = 1e-6F;
    Block mixed;
    std::array<float, blockSize> wanted;
    std::array<float, blockSize> factor;
    for (std::size_t i = 0; i < blockSize; ++i) {
        const float overAlpha = over.alpha[i] * whole;
        mixed.red[i] = below.red[i] * overAlpha;
        mixed.green[i] = below.green[i] * overAlpha;
        mixed.blue[i] = below.blue[i] * overAlpha;
        mixed.alpha[i] = below.alpha[i] * overAlpha;
        wanted[i] = below.alpha[i] * whole * lightness(over.red[i], over.green[i], over.blue[i]);
    }
    // What lies beyond black or full strength comes back towards the grey of that lightness. In a loop of its own: where
    // compilers can pull calculations into the choices, they make jumps of them.
    for (std::size_t i = 0; i < blockSize; ++i) {
        const float change = wanted[i] - lightness(mixed.red[i], mixed.green[i], mixed.blue[i]);
        const float lowest = lesser(mixed.red[i], lesser(mixed.green[i], mixed.blue[i])) + change;
        const float highest = greater(mixed.red[i], greater(mixed.green[i], mixed.blue[i])) + change;
        const float up = wanted[i] / greater(wanted[i] - lowest, little);
        const float down = (mixed.alpha[i] - wanted[i]) / greater(highest - wanted[i], little);
        // Both are 1 or more where nothing lies beyond.
        factor[i] = lesser(1, lesser(up, down));
    }
    for (std::size_t i = 0; i < blockSize; ++i) {
        const float grey = lightness(mixed.red[i], mixed.green[i], mixed.blue[i]);
        const float belowPart = 1 - over.alpha[i] * whole;
        const float overPart = 1 - below.alpha[i] * whole;
        const float alpha = over.alpha[i] + below.alpha[i] - mixed.alpha[i] + 0.5F;
        const auto part = [&](float strength, float lower, float upper) {
            const float sum = wanted[i] + (strength - grey) * factor[i] + belowPart * lower + overPart * upper + 0.5F;
            return greater(0, lesser(sum, alpha));
        };
        below.red[i] = part(mixed.red[i], below.red[i], over.red[i]);
        below.green[i] = part(mixed.green[i], below.green[i], over.green[i]);
        below.blue[i] = part(mixed.blue[i], below.blue[i], over.blue[i]);
        below.alpha[i] = alpha;
    }
}

void compositeLuminosity(std::uint8_t* below, const std::uint8_t* over, std::size_t count) {
    Block lower{};
    Block upper{};
    for (std::size_t start = 0; start < count; start += blockSize) {
        const std::size_t size = std::min(blockSize, count - start);
        std::uint8_t* const bytes = below + 4 * start;
        lower.read(bytes, size);
        upper.read(over + 4 * start, size);
        mixLuminosity(lower, upper);
        lower.write(bytes, size);
    }
}

} // namespace

void compositePixels(std::uint8_t* below, const std::uint8_t* over, std::size_t count,
                     NSCompositingOperation operation) {
    if (count == 0) {
        return;
    }
    switch (operation) {
        case NSCompositingOperationClear:
            std::memset(below, 0, count * 4);
            return;
        case NSCompositingOperationCopy:
            std::memmove(below, over, count * 4);
            return;
        case NSCompositingOperationSourceIn:
            mixWords(below, over, count, [](std::uint32_t, std::uint32_t upper, unsigned alpha, unsigned) {
                return weighed(upper, alpha);
            });
            return;
        case NSCompositingOperationDestinationIn:
            mixWords(below, over, count, [](std::uint32_t lower, std::uint32_t, unsigned, unsigned alpha) {
                return weighed(lower, alpha);
            });
            return;
        case NSCompositingOperationMultiply:
            mixBytes(below, over, count, [](unsigned lower, unsigned upper, unsigned belowAlpha, unsigned overAlpha) {
                return product(lower, upper) + product(lower, 255 - overAlpha) + product(upper, 255 - belowAlpha);
            });
            return;
        case NSCompositingOperationScreen:
            mixBytes(below, over, count, [](unsigned lower, unsigned upper, unsigned, unsigned) {
                return lower + upper - product(lower, upper);
            });
            return;
        case NSCompositingOperationLuminosity:
            compositeLuminosity(below, over, count);
            return;
        case NSCompositingOperationSourceOver:
            break;
    }
    mixBytes(below, over, count, [](unsigned lower, unsigned upper, unsigned, unsigned overAlpha) {
        return upper + product(lower, 255 - overAlpha);
    });
}

} // namespace zr
