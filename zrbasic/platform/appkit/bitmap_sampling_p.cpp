#include <zrbasic/platform/appkit/bitmap_sampling_p.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace zr {
namespace {

/// Places in a bitmap with 32 bits behind the point: walking along the widest one adds up to nothing that shows.
using Fixed = std::int64_t;
constexpr Fixed one = Fixed{1} << 32;

Fixed fixed(double number) {
    return static_cast<Fixed>(std::floor(number * double(one)));
}

std::uint32_t pixelAt(const std::uint8_t* bytes) {
    std::uint32_t pixel = 0;
    std::memcpy(&pixel, bytes, sizeof pixel);
    return pixel;
}

/// The four bytes with room between them, so that they are weighed all at once.
std::uint64_t spread(std::uint32_t pixel) {
    return (pixel | (std::uint64_t{pixel} << 24)) & 0x00FF00FF00FF00FFU;
}

/// Of four pixels, the right and the lower ones as near as the fractions, of 256, say.
std::uint32_t mixed(std::uint32_t upperLeft, std::uint32_t upperRight, std::uint32_t lowerLeft,
                    std::uint32_t lowerRight, std::uint64_t right, std::uint64_t down) {
    // Together the weights are 256, so one colour all over stays that one.
    const std::uint64_t both = (right * down + 128) >> 8;
    const std::uint64_t sum = spread(upperLeft) * (256 - right - down + both) + spread(upperRight) * (right - both) +
                              spread(lowerLeft) * (down - both) + spread(lowerRight) * both + 0x0080008000800080U;
    const std::uint64_t bytes = (sum >> 8) & 0x00FF00FF00FF00FFU;
    return static_cast<std::uint32_t>(bytes | (bytes >> 24));
}

std::uint64_t fractionOf(Fixed place) {
    return static_cast<std::uint64_t>(place >> 24) & 0xFF;
}

/// A place in the bitmap that moves from one pixel of a row to the next, along one of its axes. The middle of the first
/// pixel is at 0.
struct Walk {
    Fixed start = 0;
    Fixed step = 0;
    /// The first and the last pixel that there is.
    Fixed first = 0;
    Fixed last = 0;

    [[nodiscard]] Fixed at(int i) const { return start + step * i; }
    /// Whether a pixel of each side is there.
    [[nodiscard]] bool isInside(int i) const { return at(i) >= first && at(i) < last; }
    /// How far it is from being outside altogether, of 256.
    [[nodiscard]] unsigned nearness(int i) const {
        const Fixed room = std::min(at(i) - first + one, last + one - at(i));
        return static_cast<unsigned>(std::clamp(room, Fixed{0}, one) >> 24);
    }
    /// Moves the ends to where the place goes from `from` to `to`.
    void narrow(Fixed from, Fixed to, int& begin, int& end) const {
        if (step == 0) {
            if (start < from || start > to) {
                end = begin;
            }
            return;
        }
        const auto when = [this](Fixed place) { return double(place - start) / double(step); };
        const double earlier = std::min(when(from), when(to));
        const double later = std::max(when(from), when(to));
        begin = static_cast<int>(std::clamp(std::floor(earlier), double(begin), double(end)));
        end = static_cast<int>(std::clamp(std::ceil(later) + 1, double(begin), double(end)));
    }
};

NSAffineTransformStruct inverse(const NSAffineTransformStruct& transform) {
    const Ref<NSAffineTransform> made = make<NSAffineTransform>();
    made->setTransformStruct(transform);
    made->invert();
    return made->transformStruct();
}

class Sampler {
  public:
    Sampler(const NSBitmapImageRep& bitmap, const PixelBox& part, const NSAffineTransformStruct& toPart)
        : m_bytes(bitmap.bytes().data()), m_stride(bitmap.bytesPerRow()), m_toPart(toPart) {
        m_x.first = part.left * one;
        m_x.last = (part.right - 1) * one;
        m_x.step = fixed(toPart.m11);
        m_y.first = part.top * one;
        m_y.last = (part.bottom - 1) * one;
        m_y.step = fixed(toPart.m12);
    }

    /// Pixels of which none lies between others.
    void copyRow(int y, int left, int right, PixelRun take) {
        begin(y, left, right);
        // From the middle of the first pixel on; half a pixel more is safe from what rounding left.
        const Fixed x = (m_x.start + one / 2) >> 32;
        const Fixed row = (m_y.start + one / 2) >> 32;
        const auto stepX = std::lround(m_toPart.m11);
        const auto stepY = std::lround(m_toPart.m12);
        const std::uint8_t* from = m_bytes + row * m_stride + x * 4;
        if (stepX == 1) {
            take(y, left, {from, static_cast<std::size_t>(right - left) * 4}, {});
            return;
        }
        const std::ptrdiff_t step = stepX * 4 + stepY * m_stride;
        std::uint8_t* to = m_row.data();
        for (int i = 0; i < right - left; ++i) {
            std::memcpy(to, from, 4);
            to += 4;
            from += step;
        }
        take(y, left, m_row, {});
    }

    /// With the last pixels of the bitmap going on at its edges.
    void stretchRow(int y, int left, int right, PixelRun take) {
        begin(y, left, right);
        for (int i = 0; i < right - left; ++i) {
            put(i, atEdge(i));
        }
        take(y, left, m_row, {});
    }

    void turnRow(int y, int left, int right, PixelRun take) {
        begin(y, left, right);
        int begin = 0;
        int end = right - left;
        m_x.narrow(m_x.first - one, m_x.last + one, begin, end);
        m_y.narrow(m_y.first - one, m_y.last + one, begin, end);
        int innerBegin = begin;
        int innerEnd = end;
        m_x.narrow(m_x.first, m_x.last, innerBegin, innerEnd);
        m_y.narrow(m_y.first, m_y.last, innerBegin, innerEnd);
        const auto isInside = [this](int i) { return m_x.isInside(i) && m_y.isInside(i); };
        while (innerBegin < innerEnd && !isInside(innerBegin)) {
            ++innerBegin;
        }
        while (innerBegin < innerEnd && !isInside(innerEnd - 1)) {
            --innerEnd;
        }
        if (innerBegin == innerEnd) {
            innerBegin = innerEnd = end;
        }
        const auto giveEdge = [&](int from, int to) {
            for (int i = from; i < to; ++i) {
                put(i, atEdge(i));
                m_parts[std::size_t(i)] =
                    static_cast<std::uint8_t>((m_x.nearness(i) * m_y.nearness(i) * 255 + (1 << 15)) >> 16);
            }
            give(y, left, from, to, {m_parts.data() + from, static_cast<std::size_t>(to - from)}, take);
        };
        giveEdge(begin, innerBegin);
        mixInner(innerBegin, innerEnd);
        give(y, left, innerBegin, innerEnd, {}, take);
        giveEdge(innerEnd, end);
    }

  private:
    void begin(int y, int left, int right) {
        const NSPoint place = transformedPoint(m_toPart, {left + 0.5, y + 0.5});
        m_x.start = fixed(place.x - 0.5);
        m_y.start = fixed(place.y - 0.5);
        m_row.resize(static_cast<std::size_t>(right - left) * 4);
        m_parts.resize(static_cast<std::size_t>(right - left));
    }

    void give(int y, int left, int from, int to, std::span<const std::uint8_t> parts, PixelRun take) {
        if (from < to) {
            take(y, left + from, {m_row.data() + std::ptrdiff_t{from} * 4, static_cast<std::size_t>(to - from) * 4},
                 parts);
        }
    }

    void put(int i, std::uint32_t pixel) { std::memcpy(m_row.data() + std::ptrdiff_t{i} * 4, &pixel, 4); }

    [[nodiscard]] std::uint32_t atEdge(int i) const {
        const Fixed x = std::clamp(m_x.at(i), m_x.first, m_x.last);
        const Fixed y = std::clamp(m_y.at(i), m_y.first, m_y.last);
        const std::uint8_t* const from = m_bytes + (y >> 32) * m_stride + (x >> 32) * 4;
        const std::ptrdiff_t right = x < m_x.last ? 4 : 0;
        const std::ptrdiff_t down = y < m_y.last ? m_stride : 0;
        return mixed(pixelAt(from), pixelAt(from + right), pixelAt(from + down), pixelAt(from + down + right),
                     fractionOf(x), fractionOf(y));
    }

    void mixInner(int begin, int end) {
        const int rest = mixInnerByFours(begin, end);
        Fixed x = m_x.at(rest);
        Fixed y = m_y.at(rest);
        for (int i = rest; i < end; ++i) {
            const std::uint8_t* const from = m_bytes + (y >> 32) * m_stride + (x >> 32) * 4;
            put(i, mixed(pixelAt(from), pixelAt(from + 4), pixelAt(from + m_stride), pixelAt(from + m_stride + 4),
                         fractionOf(x), fractionOf(y)));
            x += m_x.step;
            y += m_y.step;
        }
    }

#ifdef __SSE2__
    /// The same bytes as pixel by pixel, in half the time. Gives where it stopped.
    int mixInnerByFours(int begin, int end) {
        if (end - begin < 4) {
            // The steps may be too long to go four of them.
            return begin;
        }
        Fixed x = m_x.at(begin);
        Fixed y = m_y.at(begin);
        // Copies, as bytes that are written could be any of the members.
        const Fixed stepX = m_x.step;
        const Fixed stepY = m_y.step;
        const std::uint8_t* const bytes = m_bytes;
        const std::ptrdiff_t stride = m_stride;
        std::uint8_t* to = m_row.data() + std::ptrdiff_t{begin} * 4;
        // What lies behind the points of the four places; it wraps as theirs does.
        const auto behindPoint = [](Fixed first, Fixed step) {
            const auto at = [=](Fixed i) { return static_cast<int>(static_cast<std::uint32_t>(first + step * i)); };
            return _mm_setr_epi32(at(0), at(1), at(2), at(3));
        };
        __m128i partsX = behindPoint(x, stepX);
        __m128i partsY = behindPoint(y, stepY);
        const __m128i fourX = _mm_set1_epi32(static_cast<int>(static_cast<std::uint32_t>(stepX * 4)));
        const __m128i fourY = _mm_set1_epi32(static_cast<int>(static_cast<std::uint32_t>(stepY * 4)));
        const __m128i half = _mm_set1_epi32(128);
        const __m128i whole = _mm_set1_epi32(256);
        int i = begin;
        for (; i + 4 <= end; i += 4) {
            const __m128i right = _mm_srli_epi32(partsX, 24);
            const __m128i down = _mm_srli_epi32(partsY, 24);
            const __m128i both = _mm_srli_epi32(_mm_add_epi32(_mm_madd_epi16(right, down), half), 8);
            const __m128i lowerLeft = _mm_sub_epi32(down, both);
            const __m128i upperLeft = _mm_sub_epi32(_mm_sub_epi32(whole, right), lowerLeft);
            // The weight of the upper pixel and above it that of the lower one, as the bytes come to lie below.
            const __m128i lefts = _mm_or_si128(upperLeft, _mm_slli_epi32(lowerLeft, 16));
            const __m128i rights = _mm_or_si128(_mm_sub_epi32(right, both), _mm_slli_epi32(both, 16));
            const auto next = [&](__m128i leftWeights, __m128i rightWeights) {
                const std::uint8_t* const from = bytes + (y >> 32) * stride + (x >> 32) * 4;
                x += stepX;
                y += stepY;
                const __m128i upper = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(from));
                const __m128i lower = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(from + stride));
                const __m128i pairs = _mm_unpacklo_epi8(upper, lower);
                const __m128i none = _mm_setzero_si128();
                const __m128i sum = _mm_add_epi32(_mm_madd_epi16(_mm_unpacklo_epi8(pairs, none), leftWeights),
                                                  _mm_madd_epi16(_mm_unpackhi_epi8(pairs, none), rightWeights));
                return _mm_srli_epi32(_mm_add_epi32(sum, half), 8);
            };
            const __m128i first = next(_mm_shuffle_epi32(lefts, 0x00), _mm_shuffle_epi32(rights, 0x00));
            const __m128i second = next(_mm_shuffle_epi32(lefts, 0x55), _mm_shuffle_epi32(rights, 0x55));
            const __m128i third = next(_mm_shuffle_epi32(lefts, 0xAA), _mm_shuffle_epi32(rights, 0xAA));
            const __m128i fourth = next(_mm_shuffle_epi32(lefts, 0xFF), _mm_shuffle_epi32(rights, 0xFF));
            _mm_storeu_si128(reinterpret_cast<__m128i*>(to),
                             _mm_packus_epi16(_mm_packs_epi32(first, second), _mm_packs_epi32(third, fourth)));
            to += 16;
            partsX = _mm_add_epi32(partsX, fourX);
            partsY = _mm_add_epi32(partsY, fourY);
        }
        return i;
    }
#else
    static int mixInnerByFours(int begin, int) {
        return begin;
    }
#endif

    const std::uint8_t* m_bytes;
    std::ptrdiff_t m_stride;
    NSAffineTransformStruct m_toPart;
    Walk m_x;
    Walk m_y;
    std::vector<std::uint8_t> m_row;
    std::vector<std::uint8_t> m_parts;
};

int pixelFrom(double place) {
    constexpr double farthest = 1 << 30;
    return static_cast<int>(std::clamp(place, -farthest, farthest));
}

/// Whether it moves pixels to pixels.
bool keepsPixels(const NSAffineTransformStruct& transform) {
    const auto isWhole = [](double number) { return number == std::nearbyint(number); };
    const bool isUpright =
        transform.m12 == 0 && transform.m21 == 0 && std::fabs(transform.m11) == 1 && std::fabs(transform.m22) == 1;
    const bool isTurned =
        transform.m11 == 0 && transform.m22 == 0 && std::fabs(transform.m12) == 1 && std::fabs(transform.m21) == 1;
    return (isUpright || isTurned) && isWhole(transform.tX) && isWhole(transform.tY);
}

/// `transform` changed so that `part` comes to lie between pixels, as near as it can; `box` is where.
NSAffineTransformStruct levelled(const NSAffineTransformStruct& transform, NSRect part, PixelBox& box) {
    const NSPoint from = transformedPoint(transform, part.origin);
    const NSPoint to = transformedPoint(transform, {NSMaxX(part), NSMaxY(part)});
    const auto nearest = [](double place) { return std::floor(place + 0.5); };
    const double x = nearest(from.x);
    const double y = nearest(from.y);
    const double wide = nearest(to.x) - x;
    const double high = nearest(to.y) - y;
    box = {pixelFrom(std::min(x, x + wide)), pixelFrom(std::min(y, y + high)), pixelFrom(std::max(x, x + wide)),
           pixelFrom(std::max(y, y + high))};
    NSAffineTransformStruct result;
    if (std::fabs(transform.m11) > std::fabs(transform.m12)) {
        result = {wide / part.size.width, 0, 0, high / part.size.height, 0, 0};
    } else {
        result = {0, high / part.size.width, wide / part.size.height, 0, 0, 0};
    }
    const NSPoint start = transformedPoint(result, part.origin);
    result.tX = x - start.x;
    result.tY = y - start.y;
    return result;
}

PixelBox boundsOf(const NSAffineTransformStruct& transform, NSRect part) {
    double left = INFINITY;
    double top = INFINITY;
    double right = -INFINITY;
    double bottom = -INFINITY;
    for (const NSPoint corner : {part.origin, NSPoint{NSMaxX(part), NSMinY(part)}, NSPoint{NSMinX(part), NSMaxY(part)},
                                 NSPoint{NSMaxX(part), NSMaxY(part)}}) {
        const NSPoint place = transformedPoint(transform, corner);
        left = std::min(left, place.x);
        top = std::min(top, place.y);
        right = std::max(right, place.x);
        bottom = std::max(bottom, place.y);
    }
    // Smooth edges reach out a little.
    return {pixelFrom(std::floor(left)) - 1, pixelFrom(std::floor(top)) - 1, pixelFrom(std::ceil(right)) + 1,
            pixelFrom(std::ceil(bottom)) + 1};
}

bool isUndoable(const NSAffineTransformStruct& transform) {
    constexpr double farthest = 1 << 24;
    const double numbers[] = {transform.m11, transform.m12, transform.m21, transform.m22, transform.tX, transform.tY};
    return std::all_of(std::begin(numbers), std::end(numbers),
                       [](double number) { return std::fabs(number) <= farthest; }) &&
           std::fabs(transform.m11 * transform.m22 - transform.m12 * transform.m21) > 1e-12;
}

/// Whether all places that `back` gives for pixels of the box can be counted to.
bool isWithinReach(const NSAffineTransformStruct& back, const PixelBox& box) {
    constexpr double farthest = 1 << 28;
    const auto isNear = [&](int x, int y) {
        const NSPoint place = transformedPoint(back, {double(x), double(y)});
        return std::fabs(place.x) <= farthest && std::fabs(place.y) <= farthest;
    };
    return isNear(box.left, box.top) && isNear(box.right, box.top) && isNear(box.left, box.bottom) &&
           isNear(box.right, box.bottom);
}

} // namespace

PixelBox intersection(const PixelBox& box, const PixelBox& other) {
    return {std::max(box.left, other.left), std::max(box.top, other.top), std::min(box.right, other.right),
            std::min(box.bottom, other.bottom)};
}

bool keepsLevel(const NSAffineTransformStruct& transform) {
    const auto vanishes = [](double number, double beside) { return std::fabs(number) <= 1e-9 * std::fabs(beside); };
    return (vanishes(transform.m12, transform.m11) && vanishes(transform.m21, transform.m22)) ||
           (vanishes(transform.m11, transform.m12) && vanishes(transform.m22, transform.m21));
}

void sampleBitmap(const NSBitmapImageRep& bitmap, NSRect part, const NSAffineTransformStruct& transform,
                  const PixelBox& clip, PixelRun take) {
    part = NSIntersectionRect(part, {{}, {double(bitmap.pixelsWide()), double(bitmap.pixelsHigh())}});
    if (NSIsEmptyRect(part) || !isUndoable(transform)) {
        return;
    }
    const PixelBox pixels{static_cast<int>(std::floor(NSMinX(part))), static_cast<int>(std::floor(NSMinY(part))),
                          static_cast<int>(std::ceil(NSMaxX(part))), static_cast<int>(std::ceil(NSMaxY(part)))};
    const bool isLevel = keepsLevel(transform);
    PixelBox box;
    const NSAffineTransformStruct way = isLevel ? levelled(transform, part, box) : transform;
    if (!isLevel) {
        box = boundsOf(transform, part);
    }
    box = intersection(box, clip);
    if (box.isEmpty() || !isUndoable(way)) {
        return;
    }
    const NSAffineTransformStruct back = inverse(way);
    if (!isWithinReach(back, box)) {
        return;
    }
    Sampler sampler(bitmap, pixels, back);
    const auto row = !isLevel ? &Sampler::turnRow : keepsPixels(way) ? &Sampler::copyRow : &Sampler::stretchRow;
    // A row that comes from a column touches as many lines of memory as it has pixels. In a narrow strip the next row
    // finds them in the cache.
    const int strip = way.m11 == 0 ? 32 : box.right - box.left;
    for (int left = box.left; left < box.right; left += strip) {
        for (int y = box.top; y < box.bottom; ++y) {
            (sampler.*row)(y, left, std::min(left + strip, box.right), take);
        }
    }
}

} // namespace zr
