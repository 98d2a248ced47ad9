#include <zrbasic/platform/qt/canvas_p.h>

#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/platform/appkit/text_attachment.h>
#include <zrbasic/platform/foundation/mutable_attributed_string.h>
#include <zrbasic/platform/qt/conversions_p.h>
#include <zrbasic/ui/image_attachment.h>

#include <QFontMetrics>
#include <QLineEdit>

#include <gtest/gtest.h>
#include <cmath>
#include <string>
#include "canvas_testing.h"

namespace zr {
namespace {

using canvas_testing::drawOn;
using canvas_testing::inked;
using canvas_testing::paper;
using canvas_testing::text;
using canvas_testing::TextStyle;

QImage picture(NSAttributedString* string, NSRect rect, bool isSingleLine, bool isFlipped = true, int width = 120,
               int height = 60, double scale = 1) {
    QImage image = paper(width, height, scale);
    drawOn(image, isFlipped, [&](Canvas& canvas) { canvas.drawText(string, rect, isSingleLine); });
    return image;
}

/// What a line editor of Qt shows whose text begins at the rectangle's upper left corner.
QImage pictureOfEditor(const QString& string, const QFont& font, QRect rect, Qt::Alignment alignment) {
    QLineEdit editor;
    editor.setFrame(false);
    editor.setFont(font);
    editor.setAlignment(alignment | Qt::AlignTop);
    editor.setText(string);
    editor.setCursorPosition(0);
    QPalette palette;
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, Qt::black);
    editor.setPalette(palette);
    // Its own margins are two pixels at the sides and one above.
    editor.setGeometry(rect.adjusted(-2, -1, 2, 0));
    QImage image = paper(120, 60);
    QPainter painter(&image);
    painter.setClipRect(rect);
    editor.render(&painter, editor.pos(), {}, QWidget::DrawChildren);
    return image;
}

int differentPixels(const QImage& one, const QImage& other) {
    int count = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            count += one.pixel(x, y) != other.pixel(x, y);
        }
    }
    return count;
}

TEST(QtCanvasText, aSingleLineStandsWhereALineEditorHasIt) {
    const struct {
        NSTextAlignment ours;
        Qt::Alignment qts;
    } alignments[] = {{NSTextAlignmentLeft, Qt::AlignLeft},
                      {NSTextAlignmentCenter, Qt::AlignHCenter},
                      {NSTextAlignmentRight, Qt::AlignRight},
                      {NSTextAlignmentNatural, Qt::AlignLeft}};
    for (const auto& alignment : alignments) {
        for (const double size : {11.0, 13.0, 20.0}) {
            for (const char* const words : {"12,345.678", "gjpq Ay", " two  blanks ", "a\nb\tc"}) {
                SCOPED_TRACE(std::string(words) + " at " + std::to_string(size) + " aligned " +
                             std::to_string(alignment.ours));
                const auto string = NSString::fromUtf8(words);
                const TextStyle style{size, nullptr, alignment.ours, NSLineBreakByClipping};
                const QImage idle = picture(text(string, style), {{7, 9}, {99, 28}}, true);
                const QImage edited =
                    pictureOfEditor(QString::fromUtf8(words), qt::toQt(NSFont::systemFontOfSize(size)),
                                    QRect(7, 9, 99, 28), alignment.qts);
                EXPECT_FALSE(inked(idle).isNull());
                EXPECT_EQ(differentPixels(idle, edited), 0);
            }
        }
    }
}

TEST(QtCanvasText, aSingleLineIsTheSameFlippedAndNot) {
    const auto string = text("Price 12.5"_ns);
    const QImage flipped = picture(string, {{7, 9}, {99, 28}}, true, true);
    EXPECT_EQ(differentPixels(flipped, picture(string, {{7, 60 - 9 - 28}, {99, 28}}, true, false)), 0);
    EXPECT_EQ(differentPixels(flipped, picture(string, {{7.4, 8.6}, {99, 28.2}}, true, true)), 0)
        << "it lies on whole pixels";
    const QFontMetrics metrics(qt::toQt(NSFont::systemFontOfSize(13)));
    // The "1" stands on the baseline.
    const QRect digit = inked(picture(text("1"_ns), {{7, 9}, {99, 28}}, true));
    EXPECT_EQ(digit.bottom() + 1, 9 + metrics.ascent());
}

TEST(QtCanvasText, textKeepsItsPlaceAtEveryScale) {
    for (const bool isSingle : {false, true}) {
        for (const double scale : {1.5, 2.0, 3.0}) {
            SCOPED_TRACE(scale);
            const QRect small = inked(picture(text("HxH"_ns), {{10, 10}, {100, 30}}, isSingle, false));
            const QRect large = inked(picture(text("HxH"_ns), {{10, 10}, {100, 30}}, isSingle, false, 120, 60, scale));
            EXPECT_NEAR(large.left() / scale, small.left(), 1);
            EXPECT_NEAR(large.right() / scale, small.right(), 1.5);
            EXPECT_NEAR(large.top() / scale, small.top(), 1);
            EXPECT_NEAR(large.bottom() / scale, small.bottom(), 1);
        }
    }
}

TEST(QtCanvasText, linesGoDownFromTheTopEitherWay) {
    const auto string = text("H\nH"_ns);
    const double line = std::ceil(QFontMetricsF(qt::toQt(NSFont::systemFontOfSize(13))).lineSpacing());
    for (const bool isFlipped : {false, true}) {
        SCOPED_TRACE(isFlipped);
        const QImage both = picture(string, {{5, 5}, {100, 50}}, false, isFlipped);
        const QRect first = inked(both.copy(0, 0, 120, 5 + int(line)));
        const QRect second = inked(both.copy(0, 5 + int(line), 120, 55 - int(line)));
        EXPECT_EQ(first.height(), second.height());
        EXPECT_EQ(first.left(), second.left());
        EXPECT_EQ(second.top() + 5 + line, first.top() + line);
        EXPECT_LT(first.top(), 10) << "at the top of the rectangle";
    }
}

TEST(QtCanvasText, isCutOffAtTheRectangle) {
    for (const bool isSingle : {false, true}) {
        for (const NSLineBreakMode mode :
             {NSLineBreakByClipping, NSLineBreakByTruncatingTail, NSLineBreakByWordWrapping}) {
            SCOPED_TRACE(mode);
            const QImage image =
                picture(text("MMMMMMMMMM\nMMMMMMMM\nMMMMM"_ns, {20, nullptr, NSTextAlignmentLeft, mode}),
                        {{10, 10}, {40, 30}}, isSingle);
            EXPECT_FALSE(inked(image).isNull());
            EXPECT_TRUE(QRect(10, 10, 40, 30).contains(inked(image)));
        }
    }
}

TEST(QtCanvasText, alignsLinesByTheStyleAndTheWayTheTextIsWritten) {
    const NSRect rect{{10, 10}, {100, 40}};
    const auto ink = [&](const char* words, NSTextAlignment alignment) {
        return inked(picture(text(NSString::fromUtf8(words), {13, nullptr, alignment}), rect, false));
    };
    EXPECT_NEAR(ink("HH", NSTextAlignmentLeft).left(), 11, 1);
    EXPECT_NEAR(ink("HH", NSTextAlignmentRight).right(), 108, 1);
    const QRect middle = ink("HH", NSTextAlignmentCenter);
    EXPECT_NEAR(middle.left() - 10, 109 - middle.right(), 1);
    EXPECT_NEAR(ink("HH", NSTextAlignmentNatural).left(), 11, 1);
    EXPECT_NEAR(ink("שלום", NSTextAlignmentNatural).right(), 108, 2) << "from the right";
    EXPECT_NEAR(ink("שלום", NSTextAlignmentLeft).left(), 11, 2);
    const QRect justified = ink("HH HH HH HH HH HH HH HH HH", NSTextAlignmentJustified);
    EXPECT_NEAR(justified.left(), 11, 1);
    EXPECT_NEAR(justified.right(), 108, 2);
}

TEST(QtCanvasText, hasItsColourAndItsUnderline) {
    const NSRect rect{{10, 10}, {100, 40}};
    for (const bool isSingle : {false, true}) {
        const QImage plain = picture(text("xxx"_ns), rect, isSingle);
        const QImage red = picture(text("xxx"_ns, {13, NSColor::redColor()}), rect, isSingle);
        EXPECT_EQ(inked(red), inked(plain));
        for (int x = 0; x < red.width(); ++x) {
            EXPECT_EQ(red.pixelColor(x, 19).red(), 255) << "nothing darker than red";
        }
        const QImage underlined =
            picture(text("xxx"_ns, {13, NSColor::redColor(), NSTextAlignmentLeft, NSLineBreakByClipping, true}), rect,
                    isSingle);
        EXPECT_GT(inked(underlined).bottom(), inked(plain).bottom());
        EXPECT_EQ(underlined.pixelColor(inked(underlined).center().x(), inked(underlined).bottom()).green() < 255,
                  true);
    }
}

TEST(QtCanvasText, runsKeepTheirOwnLooks) {
    const auto mixed = make<NSMutableAttributedString>();
    mixed->appendAttributedString(text("HH"_ns, {13, NSColor::redColor()}));
    mixed->appendAttributedString(text("HH"_ns, {26, NSColor::blueColor()}));
    const QImage image = picture(mixed, {{5, 5}, {110, 50}}, false);
    int red = 0;
    int blue = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            red += image.pixelColor(x, y) == QColor(255, 0, 0);
            blue += image.pixelColor(x, y) == QColor(0, 0, 255);
        }
    }
    EXPECT_GT(red, 5);
    EXPECT_GT(blue, 2 * red);
}

TEST(QtCanvasText, shortensWhereTheModeSays) {
    const NSRect rect{{0, 0}, {60, 20}};
    const struct {
        const char* name;
        NSLineBreakMode mode;
        // What fits into the room, found by hand below.
        std::u16string (*shortened)(const std::u16string& whole, std::size_t kept);
    } rows[] = {
        {"tail", NSLineBreakByTruncatingTail,
         [](const std::u16string& whole, std::size_t kept) { return whole.substr(0, kept) + u"\u2026"; }},
        {"head", NSLineBreakByTruncatingHead,
         [](const std::u16string& whole, std::size_t kept) { return u"\u2026" + whole.substr(whole.size() - kept); }},
        {"middle", NSLineBreakByTruncatingMiddle,
         [](const std::u16string& whole, std::size_t kept) {
             return whole.substr(0, (kept + 1) / 2) + u"\u2026" + whole.substr(whole.size() - kept / 2);
         }},
    };
    const std::u16string whole = u"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    const QFontMetricsF metrics(qt::toQt(NSFont::systemFontOfSize(13)));
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        std::size_t kept = 0;
        while (metrics.horizontalAdvance(QString::fromStdU16String(row.shortened(whole, kept + 1))) <= 60) {
            ++kept;
        }
        ASSERT_GT(kept, 3U);
        const auto drawn = [&](const std::u16string& words, NSLineBreakMode mode, bool isSingle) {
            return picture(text(NSString::fromUtf16(words), {13, nullptr, NSTextAlignmentLeft, mode}), rect, isSingle);
        };
        for (const bool isSingle : {false, true}) {
            EXPECT_EQ(differentPixels(drawn(whole, row.mode, isSingle),
                                      drawn(row.shortened(whole, kept), NSLineBreakByClipping, isSingle)),
                      0);
        }
        EXPECT_EQ(differentPixels(drawn(u"0123", row.mode, true), drawn(u"0123", NSLineBreakByClipping, true)), 0)
            << "what is short enough stays";
    }
}

TEST(QtCanvasText, shorteningIsSafeForAnyText) {
    const auto draw = [](const std::u16string& words, double width) {
        return inked(
            picture(text(NSString::fromUtf16(words), {13, nullptr, NSTextAlignmentLeft, NSLineBreakByTruncatingMiddle}),
                    {{0, 0}, {width, 20}}, true));
    };
    EXPECT_FALSE(draw(u"abc", 2).isNull()) << "the mark alone, cut off";
    EXPECT_FALSE(draw(std::u16string(100, u'\u05D0'), 50).isNull());
    std::u16string faces;
    for (int i = 0; i < 50; ++i) {
        faces += u"\U0001F600";
    }
    EXPECT_FALSE(draw(faces, 50).isNull());
    EXPECT_FALSE(draw(std::u16string(300000, u'x'), 50).isNull());
    EXPECT_FALSE(draw(std::u16string(40, char16_t(0xDC00)), 50).isNull());
    std::u16string marks = u"a";
    marks.append(2000, u'\u0301');
    draw(marks + u"bcdefghijklmn", 30);
}

TEST(QtCanvasText, picturesStandOnTheBaselineMovedByTheirOffset) {
    const auto red = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(6, 4);
    for (int i = 0; i < 24; ++i) {
        red->setPixel_atX_y({255, 0, 0, 255}, i % 6, i / 6);
    }
    const auto image = make<NSImage>(&NSImage::initWithSize, NSMakeSize(6, 4));
    image->addRepresentation(red);
    const int baseline = int(std::lround(10 + QFontMetricsF(qt::toQt(NSFont::systemFontOfSize(13))).ascent()));
    const struct {
        NSPoint offset;
        QRect place;
    } rows[] = {
        {{0, 0}, QRect(10, baseline - 4, 6, 4)},
        {{3, 2}, QRect(13, baseline - 6, 6, 4)},
        {{0, -3}, QRect(10, baseline - 1, 6, 4)},
    };
    for (const auto& row : rows) {
        for (const bool isFlipped : {false, true}) {
            SCOPED_TRACE(row.offset.y);
            const auto all = make<NSMutableAttributedString>();
            all->appendAttributedString(attributeStringWithOffsetCreator(image, [&] { return row.offset; }));
            // Unseen on the paper, but as high as a line.
            all->appendAttributedString(text("H"_ns, {13, NSColor::whiteColor()}));
            const QRect ink = inked(picture(all, {{10, 10}, {100, 40}}, false, isFlipped));
            EXPECT_NEAR(ink.left(), row.place.left(), 0);
            EXPECT_EQ(ink.width(), 6);
            EXPECT_NEAR(ink.top(), row.place.top(), 1);
            EXPECT_NEAR(ink.bottom(), row.place.bottom(), 1);
        }
    }
}

TEST(QtCanvasText, anAttachmentWithoutAPictureTakesNoRoom) {
    const auto with = make<NSMutableAttributedString>();
    with->appendAttributedString(text("a"_ns));
    with->appendAttributedString(attributedStringWithAttachment(make<NSTextAttachment>()));
    with->appendAttributedString(attributeString(make<NSImage>()));
    with->appendAttributedString(text("b"_ns));
    const NSRect rect{{10, 10}, {100, 40}};
    EXPECT_EQ(differentPixels(picture(with, rect, false), picture(text("ab"_ns), rect, false)), 0);
}

} // namespace
} // namespace zr
