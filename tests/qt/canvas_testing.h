#pragma once

#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/appkit/font.h>
#include <zrbasic/platform/appkit/paragraph_style.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/foundation/attributed_string.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/qt/canvas_p.h>

#include <QImage>
#include <QPainter>

/// Pictures that tests draw into and read back.
namespace zr::canvas_testing {

/// A white picture, `width` by `height` points large.
inline QImage paper(int width, int height, double scale = 1) {
    QImage image(int(width * scale), int(height * scale), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::white);
    return image;
}

template <class Draw>
void drawOn(QImage& image, bool isFlipped, const Draw& draw) {
    QPainter painter(&image);
    const double scale = image.devicePixelRatio();
    qt::PainterCanvas canvas(painter, {image.width() / scale, image.height() / scale}, isFlipped);
    draw(static_cast<Canvas&>(canvas));
}

/// The smallest rectangle, in pixels, outside of which everything is white.
inline QRect inked(const QImage& image) {
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) != QColor(Qt::white)) {
                ink |= QRect(x, y, 1, 1);
            }
        }
    }
    return ink;
}

struct TextStyle {
    double size = 13;
    NSColor* color = nullptr;
    NSTextAlignment alignment = NSTextAlignmentNatural;
    NSLineBreakMode mode = NSLineBreakByWordWrapping;
    bool isUnderlined = false;
};

inline Ref<NSAttributedString> text(NSString* string, const TextStyle& how = {}) {
    const auto style = make<NSMutableParagraphStyle>();
    style->setAlignment(how.alignment);
    style->setLineBreakMode(how.mode);
    const auto attributes = make<NSMutableDictionary>();
    attributes->setObject_forKey(style, NSParagraphStyleAttributeName());
    attributes->setObject_forKey(NSFont::systemFontOfSize(how.size), NSFontAttributeName());
    if (how.color) {
        attributes->setObject_forKey(how.color, NSForegroundColorAttributeName());
    }
    if (how.isUnderlined) {
        attributes->setObject_forKey(box(1), NSUnderlineStyleAttributeName());
    }
    return make<NSAttributedString>(&NSAttributedString::initWithString_attributes, string, attributes);
}

} // namespace zr::canvas_testing
