#pragma once

#include <QImage>
#include <QString>

#include <gtest/gtest.h>

class QWidget;

namespace zr::test {

/// A widget and all that lies in it, at so many pixels a point, on a transparent ground.
[[nodiscard]] QImage pictureOf(QWidget& widget, double scale = 1);

/// How two pictures differ: by size, or by so many pixels in which a part differs by more than a shade.
struct PictureDifference {
    bool isOfAnotherSize = false;
    int pixels = 0;
    /// Of 255.
    int largest = 0;
};
[[nodiscard]] PictureDifference difference(const QImage& expected, const QImage& actual);

/// Whether `actual` looks like the reference picture of that name: no pixel further off than what another version of
/// the font's rasteriser would do, and only a few that far.
///
/// If not, expected, actual and difference stand side by side in `pictures/NAME.png` below the working folder. With
/// ZR_UPDATE_REFERENCES set, the reference is written instead, for somebody to look at.
[[nodiscard]] testing::AssertionResult looksLikeReference(const QImage& actual, const QString& name);

} // namespace zr::test
