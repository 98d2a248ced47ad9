#include "pictures.h"

#include <QDir>
#include <QFileInfo>
#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace zr::test {
namespace {

constexpr int shade = 24;
constexpr int farOff = 96;
/// Of the picture's pixels.
constexpr double fewPixels = 0.004;

int distance(QRgb one, QRgb other) {
    return std::max({std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)),
                     std::abs(qBlue(one) - qBlue(other)), std::abs(qAlpha(one) - qAlpha(other))});
}

/// Expected, actual, and where they differ in red.
QImage sideBySide(const QImage& expected, const QImage& actual) {
    constexpr int gap = 8;
    const QSize size = expected.size().expandedTo(actual.size());
    QImage all(3 * size.width() + 4 * gap, size.height() + 2 * gap, QImage::Format_ARGB32);
    all.fill(QColor(208, 208, 208));
    QPainter painter(&all);
    painter.drawImage(gap, gap, expected);
    painter.drawImage(size.width() + 2 * gap, gap, actual);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const bool isInBoth = expected.rect().contains(x, y) && actual.rect().contains(x, y);
            const int far = isInBoth ? distance(expected.pixel(x, y), actual.pixel(x, y)) : 255;
            all.setPixelColor(2 * size.width() + 3 * gap + x, gap + y, QColor(255, 255 - far, 255 - far));
        }
    }
    return all;
}

} // namespace

QImage pictureOf(QWidget& widget, double scale) {
    QImage image((QSizeF(widget.size()) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    image.setDevicePixelRatio(1);
    return image.convertToFormat(QImage::Format_ARGB32);
}

PictureDifference difference(const QImage& expected, const QImage& actual) {
    PictureDifference found;
    if (expected.size() != actual.size()) {
        found.isOfAnotherSize = true;
        return found;
    }
    for (int y = 0; y < expected.height(); ++y) {
        for (int x = 0; x < expected.width(); ++x) {
            const int far = distance(expected.pixel(x, y), actual.pixel(x, y));
            found.largest = std::max(found.largest, far);
            found.pixels += far > shade ? 1 : 0;
        }
    }
    return found;
}

testing::AssertionResult looksLikeReference(const QImage& actual, const QString& name) {
    const QString file = QStringLiteral(ZR_TEST_REFERENCES_DIR) + '/' + name + ".png";
    if (std::getenv("ZR_UPDATE_REFERENCES")) {
        QDir().mkpath(QFileInfo(file).path());
        return actual.save(file) ? testing::AssertionSuccess()
                                 : testing::AssertionFailure() << "cannot write " << file.toStdString();
    }
    const QImage expected = QImage(file).convertToFormat(QImage::Format_ARGB32);
    if (expected.isNull()) {
        return testing::AssertionFailure() << "there is no reference picture " << file.toStdString();
    }
    const PictureDifference found = difference(expected, actual);
    const int allowed = static_cast<int>(fewPixels * expected.width() * expected.height());
    if (!found.isOfAnotherSize && found.pixels <= allowed && found.largest <= farOff) {
        return testing::AssertionSuccess();
    }
    const QString shown = QStringLiteral("pictures/") + name + ".png";
    QDir().mkpath(QFileInfo(shown).path());
    sideBySide(expected, actual).save(shown);
    return testing::AssertionFailure() << name.toStdString() << ": " << found.pixels << " pixels differ, " << allowed
                                       << " may, by up to " << found.largest << "; expected, actual and difference: "
                                       << QFileInfo(shown).absoluteFilePath().toStdString();
}

} // namespace zr::test
