#include <zrbasic/platform/qt/luminosity_p.h>

#include <QImage>

#include <algorithm>
#include <array>

namespace zr::qt {
namespace {

/// Red, green and blue from 0 to 1.
using Parts = std::array<float, 3>;

float lightnessOf(const Parts& color) {
    return 0.3F * color[0] + 0.59F * color[1] + 0.11F * color[2];
}

/// Brings parts beyond 0 to 1 back, towards the grey of the same lightness.
Parts clipped(const Parts& color) {
    const float lightness = lightnessOf(color);
    const float least = std::min({color[0], color[1], color[2]});
    const float most = std::max({color[0], color[1], color[2]});
    Parts result = color;
    for (float& part : result) {
        if (least < 0) {
            part = lightness + (part - lightness) * lightness / (lightness - least);
        }
        if (most > 1) {
            part = lightness + (part - lightness) * (1 - lightness) / (most - lightness);
        }
    }
    return result;
}

Parts withLightness(const Parts& color, float lightness) {
    const float change = lightness - lightnessOf(color);
    return clipped({color[0] + change, color[1] + change, color[2] + change});
}

Parts partsOf(QRgb pixel, float alpha) {
    const float whole = alpha * 255;
    return {float(qRed(pixel)) / whole, float(qGreen(pixel)) / whole, float(qBlue(pixel)) / whole};
}

QRgb blended(QRgb below, QRgb over) {
    const float belowAlpha = float(qAlpha(below)) / 255;
    const float overAlpha = float(qAlpha(over)) / 255;
    if (overAlpha == 0) {
        return below;
    }
    if (belowAlpha == 0) {
        return over;
    }
    const Parts lower = partsOf(below, belowAlpha);
    const Parts upper = partsOf(over, overAlpha);
    const Parts mixed = withLightness(lower, lightnessOf(upper));
    const float alpha = overAlpha + belowAlpha * (1 - overAlpha);
    const auto part = [&](std::size_t i) {
        const float sum = overAlpha * (1 - belowAlpha) * upper[i] + belowAlpha * (1 - overAlpha) * lower[i] +
                          overAlpha * belowAlpha * mixed[i];
        return int(std::clamp(sum, 0.0F, alpha) * 255 + 0.5F);
    };
    return qRgba(part(0), part(1), part(2), int(alpha * 255 + 0.5F));
}

} // namespace

void blendLuminosity(QImage& below, const QImage& over) {
    for (int y = 0; y < below.height(); ++y) {
        auto* const lower = reinterpret_cast<QRgb*>(below.scanLine(y));
        const auto* const upper = reinterpret_cast<const QRgb*>(over.constScanLine(y));
        std::transform(lower, lower + below.width(), upper, lower, blended);
    }
}

} // namespace zr::qt
