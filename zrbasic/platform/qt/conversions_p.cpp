#include <zrbasic/platform/qt/conversions_p.h>

#include <QFontDatabase>
#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace zr::qt {
namespace {

struct WeightPair {
    NSFontWeight ours;
    int qts;
};

constexpr WeightPair weights[] = {
    {NSFontWeightUltraLight, QFont::Thin}, {NSFontWeightThin, QFont::ExtraLight},
    {NSFontWeightLight, QFont::Light},     {NSFontWeightRegular, QFont::Normal},
    {NSFontWeightMedium, QFont::Medium},   {NSFontWeightSemibold, QFont::DemiBold},
    {NSFontWeightBold, QFont::Bold},       {NSFontWeightHeavy, QFont::ExtraBold},
    {NSFontWeightBlack, QFont::Black},
};

/// Between two known weights, as far as in between on the other side; beyond the ends, the end.
template <class From, class To>
double mapped(double value, const From& from, const To& to) {
    const auto* const above = std::find_if(std::begin(weights), std::end(weights),
                                           [&](const WeightPair& pair) { return value < from(pair); });
    if (above == std::begin(weights)) {
        return to(*above);
    }
    const WeightPair& below = *std::prev(above);
    if (above == std::end(weights)) {
        return to(below);
    }
    const double share = (value - from(below)) / (from(*above) - from(below));
    return to(below) + share * (to(*above) - to(below));
}

double ours(const WeightPair& pair) {
    return pair.ours;
}

double qts(const WeightPair& pair) {
    return pair.qts;
}

/// What is behind the last hyphen of a font's name.
QString styleOf(const QString& name, const QString& family) {
    return name.size() > family.size() + 1 ? name.mid(family.size() + 1) : QString();
}

struct NamedStyle {
    const char* name;
    NSFontWeight weight;
    bool isItalic;
};

/// The styles that a font's weight does not tell.
constexpr NamedStyle slantedStyles[] = {
    {"Italic", NSFontWeightRegular, true},
    {"Oblique", NSFontWeightRegular, true},
    {"BoldItalic", NSFontWeightBold, true},
    {"BoldOblique", NSFontWeightBold, true},
};

QString systemFamily() {
    return QGuiApplication::font().family();
}

double logicalDpi() {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    return screen ? screen->logicalDotsPerInchY() : 96;
}

void setSize(QFont& font, double points) {
    // Beyond that no letter is seen, and numbers run over inside the font engines.
    const double size = std::clamp(points, 0.5, 4096.0);
    if (size == std::floor(size)) {
        font.setPixelSize(int(size));
    } else {
        // Whole numbers are all that a size in pixels can be.
        font.setPointSizeF(size * 72 / logicalDpi());
    }
}

std::uint8_t byteOf(double part) {
    return std::uint8_t(std::clamp(part, 0.0, 1.0) * 255 + 0.5);
}

} // namespace

QString toQt(NSString* text) {
    if (!text) {
        return {};
    }
    const std::u16string_view view = text->view();
    return QString::fromUtf16(view.data(), qsizetype(view.size()));
}

Ref<NSString> fromQt(const QString& text) {
    return NSString::fromUtf16(std::u16string_view(reinterpret_cast<const char16_t*>(text.utf16()), text.size()));
}

QColor toQt(NSColor* color) {
    if (!color) {
        return {};
    }
    const Ref<NSColor> plain = color->colorUsingColorSpace(NSColorSpace::sRGBColorSpace());
    return QColor(byteOf(plain->redComponent()), byteOf(plain->greenComponent()), byteOf(plain->blueComponent()),
                  byteOf(plain->alphaComponent()));
}

Ref<NSColor> fromQt(const QColor& color) {
    if (!color.isValid()) {
        return nullptr;
    }
    const QColor rgb = color.toRgb();
    return NSColor::colorWithSRGBRed_green_blue_alpha(rgb.red() / 255.0, rgb.green() / 255.0, rgb.blue() / 255.0,
                                                      rgb.alpha() / 255.0);
}

QFont toQt(NSFont* font) {
    QFont made;
    if (!font) {
        setSize(made, NSFont::systemFontSize());
        return made;
    }
    const QString name = toQt(font->fontName());
    const QString family = toQt(font->familyName());
    NSFontWeight weight = font->weight();
    const QString style = styleOf(name, family);
    bool isKnownStyle = style.isEmpty() || weight != NSFontWeightRegular || style == QLatin1String("Regular");
    for (const NamedStyle& slanted : slantedStyles) {
        if (style == QLatin1String(slanted.name)) {
            weight = slanted.weight;
            made.setItalic(true);
            isKnownStyle = true;
        }
    }
    if (!font->isSystemFont()) {
        // What is behind a hyphen may belong to the family's name after all.
        made.setFamilies(isKnownStyle ? QStringList{family} : QStringList{name, family});
    }
    setSize(made, font->pointSize());
    made.setWeight(QFont::Weight(int(std::lround(mapped(weight, ours, qts)))));
    return made;
}

Ref<NSFont> fromQt(const QFont& font) {
    double size = font.pixelSize();
    if (size <= 0) {
        // Sizes in points went through whole hundredths of a dot.
        size = std::round(font.pointSizeF() * logicalDpi() / 72 * 100) / 100;
    }
    const QString family = font.family();
    const bool isSystem = family.isEmpty() || family == systemFamily();
    const NSFontWeight weight = mapped(font.weight(), qts, ours);
    if (isSystem && !font.italic()) {
        return NSFont::systemFontOfSize_weight(size, weight);
    }
    // Only weights that have a name go with another family.
    static constexpr const char* names[] = {"UltraLight", "Thin", "Light", "",     "Medium",
                                            "Semibold",   "Bold", "Heavy", "Black"};
    const auto* const nearest =
        std::min_element(std::begin(weights), std::end(weights), [&](const WeightPair& left, const WeightPair& right) {
            return std::abs(left.ours - weight) < std::abs(right.ours - weight);
        });
    QString style = QLatin1String(names[nearest - std::begin(weights)]);
    if (font.italic()) {
        style = nearest->ours > NSFontWeightMedium ? QStringLiteral("BoldItalic") : QStringLiteral("Italic");
    }
    QString name = isSystem ? QStringLiteral(".SystemFont") : family;
    if (!style.isEmpty()) {
        name += u'-' + style;
    }
    return NSFont::fontWithName_size(fromQt(name), size);
}

QImage imageOver(NSBitmapImageRep& bitmap) {
    if (bitmap.pixelsWide() == 0) {
        return {};
    }
    return QImage(bitmap.bytes().data(), int(bitmap.pixelsWide()), int(bitmap.pixelsHigh()), bitmap.bytesPerRow(),
                  QImage::Format_RGBA8888_Premultiplied);
}

Ref<NSBitmapImageRep> fromQt(const QImage& image) {
    const Ref<NSBitmapImageRep> bitmap =
        NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(image.width(), image.height());
    if (!bitmap) {
        return nullptr;
    }
    const QImage plain = image.convertToFormat(QImage::Format_RGBA8888_Premultiplied);
    const std::size_t rowBytes = std::size_t(bitmap->bytesPerRow());
    for (int row = 0; row < plain.height(); ++row) {
        std::copy_n(plain.constScanLine(row), rowBytes, bitmap->bytes().data() + std::size_t(row) * rowBytes);
    }
    const double ratio = image.devicePixelRatio();
    bitmap->setSize({image.width() / ratio, image.height() / ratio});
    return bitmap;
}

QRect pixelRect(NSRect rect, double height, bool isFlipped) {
    // Whatever cannot be a place on a screen is as far out as Qt can count without running over.
    const auto edge = [](double place) {
        constexpr double farthest = 1 << 24;
        return std::isnan(place) ? 0 : int(std::floor(std::clamp(place, -farthest, farthest) + 0.5));
    };
    const double top = isFlipped ? NSMinY(rect) : height - NSMaxY(rect);
    const double bottom = isFlipped ? NSMaxY(rect) : height - NSMinY(rect);
    const int left = edge(NSMinX(rect));
    const int upper = edge(top);
    return QRect(left, upper, edge(NSMaxX(rect)) - left, edge(bottom) - upper);
}

} // namespace zr::qt
