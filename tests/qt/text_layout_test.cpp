#include <zrbasic/platform/qt/text_layout_p.h>

#include <zrbasic/core/text_height.h>
#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/appkit/font.h>
#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/platform/appkit/paragraph_style.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/foundation/mutable_attributed_string.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/qt/conversions_p.h>
#include <zrbasic/ui/image_attachment.h>

#include <QFontMetricsF>

#include <gtest/gtest.h>
#include <cmath>
#include <limits>
#include <string>

namespace zr {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

Ref<NSAttributedString> styled(NSString* text, double size, double spacing = 0,
                               NSLineBreakMode mode = NSLineBreakByWordWrapping) {
    const auto style = make<NSMutableParagraphStyle>();
    style->setLineSpacing(spacing);
    style->setLineBreakMode(mode);
    const auto attributes = make<NSMutableDictionary>();
    attributes->setObject_forKey(style, NSParagraphStyleAttributeName());
    attributes->setObject_forKey(NSFont::systemFontOfSize(size), NSFontAttributeName());
    return make<NSAttributedString>(&NSAttributedString::initWithString_attributes, text, attributes);
}

Ref<NSAttributedString> plain(NSString* text) {
    return make<NSAttributedString>(&NSAttributedString::initWithString, text);
}

double lineHeight(double size) {
    return std::ceil(QFontMetricsF(qt::toQt(NSFont::systemFontOfSize(size))).lineSpacing());
}

double advance(const char* text, double size) {
    return QFontMetricsF(qt::toQt(NSFont::systemFontOfSize(size))).horizontalAdvance(QString::fromUtf8(text));
}

Ref<NSAttributedString> pictureOf(double width, double height, NSPoint offset) {
    const auto image = make<NSImage>(&NSImage::initWithSize, NSMakeSize(width, height));
    return attributeStringWithOffsetCreator(image, [offset] { return offset; });
}

Ref<NSAttributedString> joined(std::initializer_list<Ref<NSAttributedString>> parts) {
    const auto all = make<NSMutableAttributedString>();
    for (const auto& part : parts) {
        all->appendAttributedString(part);
    }
    return all;
}

TEST(QtTextLayout, spacingLiesBetweenLinesAndNotBehindTheLast) {
    const double line = lineHeight(13);
    ASSERT_GT(line, 12);
    const auto font = NSFont::systemFontOfSize(13);
    EXPECT_EQ(calculateHeightWithAbsoluteWidth_font_lineSpacing("a\nb\nc"_ns, 200, font, 5), 3 * line + 10);
    EXPECT_EQ(calculateHeightWithAbsoluteWidth_font("a\nb\nc"_ns, 200, font), 3 * line + 10);
    EXPECT_EQ(calculateHeightWithAbsoluteWidth_font_lineSpacing("a"_ns, 200, font, 5), line);
    EXPECT_EQ(calculateHeightWithAbsoluteWidth_font_lineSpacing("a b"_ns, 10 + 1.5 * advance("a", 13), font, 5),
              2 * line + 5)
        << "between wrapped lines as well";
    EXPECT_EQ(calculateHeightWithAbsoluteWidth_font_lineSpacing("a\nb"_ns, 200, NSFont::systemFontOfSize(26), 2),
              2 * lineHeight(26) + 2);
}

TEST(QtTextLayout, leavesThePaddingFreeAtBothEnds) {
    const auto text = styled("mmmm mmmm"_ns, 13);
    const double whole = std::ceil(advance("mmmm mmmm", 13));
    EXPECT_EQ(qt::heightOf(text, whole, 0), lineHeight(13));
    EXPECT_EQ(qt::heightOf(text, whole + 9, 5), 2 * lineHeight(13));
    EXPECT_EQ(qt::heightOf(text, whole + 10, 5), lineHeight(13));
    EXPECT_EQ(qt::naturalSizeOf(text, 5).width, whole + 10);
    EXPECT_EQ(qt::naturalSizeOf(text, 0).width, whole);
}

TEST(QtTextLayout, aTextPutIntoItsNaturalSizeNeverBreaks) {
    for (const double size : {9.0, 11.0, 12.5, 13.0, 17.0, 40.0}) {
        for (const char* const words :
             {"a", "Wave To AVA", "fifty-five offers, fj ", "one\ntwo words\n\nfour", "שלום עולם"}) {
            SCOPED_TRACE(std::string(words) + " at " + std::to_string(size));
            const auto text = styled(NSString::fromUtf8(words), size);
            const NSSize natural = qt::naturalSizeOf(text, 5);
            EXPECT_GT(natural.width, 10);
            EXPECT_EQ(qt::heightOf(text, natural.width, 5), natural.height);
        }
    }
}

TEST(QtTextLayout, nothingHasNoExtent) {
    EXPECT_EQ(qt::heightOf(nullptr, 100, 5), 0);
    EXPECT_EQ(qt::heightOf(plain(""_ns), 100, 5), 0);
    EXPECT_EQ(qt::naturalSizeOf(nullptr, 5), NSZeroSize);
    EXPECT_EQ(qt::naturalSizeOf(plain(""_ns), 5), NSZeroSize);
    EXPECT_EQ(calculateHeightWithAbsoluteWidth_font(nullptr, 100, nullptr), 0);
    EXPECT_EQ(calculateHeightWithAbsoluteWidth_font(""_ns, 100, nullptr), 0);
}

TEST(QtTextLayout, everyKindOfLineEndEndsALine) {
    const struct {
        const char* name;
        const char16_t* text;
        int lines;
    } rows[] = {
        {"line feed", u"a\nb", 2},
        {"carriage return", u"a\rb", 2},
        {"both are one", u"a\r\nb", 2},
        {"the other way two", u"a\n\rb", 3},
        {"line separator", u"a\u2028b", 2},
        {"paragraph separator", u"a\u2029b", 2},
        {"next line", u"a\u0085b", 2},
        {"at the end", u"a\n", 2},
        {"alone", u"\n", 2},
        {"blank between", u"a\n\nb", 3},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(qt::heightOf(styled(NSString::fromUtf16(row.text), 13), 200, 5), row.lines * lineHeight(13));
    }
}

TEST(QtTextLayout, anyWidthIsSafe) {
    const auto text = styled("abc"_ns, 13, 1);
    const double stacked = 3 * lineHeight(13) + 2;
    for (const double width : {0.0, -1.0, -1e300, -infinity, notANumber, 9.0}) {
        SCOPED_TRACE(width);
        EXPECT_EQ(qt::heightOf(text, width, 5), stacked) << "one character to a line";
    }
    for (const double width : {1e7, 1e300, infinity}) {
        SCOPED_TRACE(width);
        EXPECT_EQ(qt::heightOf(text, width, 5), lineHeight(13));
    }
    EXPECT_EQ(qt::heightOf(text, 100, notANumber), lineHeight(13));
    EXPECT_EQ(qt::heightOf(text, 100, infinity), stacked);
    EXPECT_EQ(qt::heightOf(text, 1, -1000), lineHeight(13));
}

TEST(QtTextLayout, spacingThatIsNoneCountsAsNone) {
    for (const double spacing : {-5.0, -infinity, notANumber}) {
        SCOPED_TRACE(spacing);
        EXPECT_EQ(qt::heightOf(styled("a\nb"_ns, 13, spacing), 100, 5), 2 * lineHeight(13));
    }
    EXPECT_TRUE(std::isfinite(qt::heightOf(styled("a\nb"_ns, 13, infinity), 100, 5)));
}

TEST(QtTextLayout, valuesOfAWrongKindCountAsMissing) {
    const auto attributes = make<NSMutableDictionary>();
    for (const auto& name : {NSFontAttributeName(), NSForegroundColorAttributeName(), NSParagraphStyleAttributeName(),
                             NSUnderlineStyleAttributeName(), NSAttachmentAttributeName()}) {
        attributes->setObject_forKey(NSNull::null(), name);
    }
    const auto odd =
        make<NSAttributedString>(&NSAttributedString::initWithString_attributes, "a\uFFFCb"_ns, attributes);
    EXPECT_EQ(qt::heightOf(odd, 100, 5), qt::heightOf(plain("ab"_ns), 100, 5));
    EXPECT_EQ(qt::heightOf(plain("ab"_ns), 100, 5), lineHeight(13)) << "the system font of 13 points";
}

TEST(QtTextLayout, theLargestFontMakesTheLine) {
    const auto mixed = joined({styled("a"_ns, 13), styled("b"_ns, 30), styled("c\nd"_ns, 13)});
    EXPECT_EQ(qt::heightOf(mixed, 500, 5), lineHeight(30) + lineHeight(13));
    EXPECT_EQ(qt::naturalSizeOf(mixed, 0).width, std::ceil(advance("a", 13) + advance("b", 30) + advance("c", 13)));
}

TEST(QtTextLayout, anEmptyLineIsAsHighAsTheFontOfItsEnd) {
    const auto text = joined({styled("a\n"_ns, 13), styled("\n"_ns, 30), styled("b"_ns, 13)});
    EXPECT_EQ(qt::heightOf(text, 500, 5), 2 * lineHeight(13) + lineHeight(30));
    EXPECT_EQ(qt::heightOf(joined({styled("a"_ns, 13), styled("\n"_ns, 30)}), 500, 5), lineHeight(13) + lineHeight(30))
        << "the last one looks like what is before it";
}

TEST(QtTextLayout, whatIsClippedOrShortenedTakesOneLine) {
    const double stacked = qt::heightOf(styled("several words in a row"_ns, 13), 60, 5);
    EXPECT_GE(stacked, 3 * lineHeight(13));
    for (const NSLineBreakMode mode : {NSLineBreakByClipping, NSLineBreakByTruncatingHead,
                                       NSLineBreakByTruncatingMiddle, NSLineBreakByTruncatingTail}) {
        SCOPED_TRACE(mode);
        EXPECT_EQ(qt::heightOf(styled("several words in a row"_ns, 13, 0, mode), 60, 5), lineHeight(13));
        EXPECT_EQ(qt::heightOf(styled("several words\nin a row"_ns, 13, 0, mode), 60, 5), 2 * lineHeight(13));
    }
}

TEST(QtTextLayout, wrapsAtWordsOrAtCharactersAsTheStyleSays) {
    const double room = std::ceil(advance("ab c", 13));
    EXPECT_EQ(qt::heightOf(styled("ab cdab cd"_ns, 13, 0, NSLineBreakByWordWrapping), room, 0), 3 * lineHeight(13));
    EXPECT_EQ(qt::heightOf(styled("mmmmmm"_ns, 13, 0, NSLineBreakByWordWrapping), advance("mmm", 13) + 1, 0),
              2 * lineHeight(13))
        << "a word without room is cut";
    const auto characters = styled("aaaa aaaa"_ns, 13, 0, NSLineBreakByCharWrapping);
    EXPECT_EQ(qt::heightOf(characters, std::ceil(advance("aaaa aa", 13)), 0), 2 * lineHeight(13));
}

TEST(QtTextLayout, picturesTakeTheirRoomOnTheLine) {
    const double descent = QFontMetricsF(qt::toQt(NSFont::systemFontOfSize(13))).descent();
    const auto with = [](double height, NSPoint offset) {
        return joined({styled("a"_ns, 13), pictureOf(50, height, offset), styled("b"_ns, 13)});
    };
    EXPECT_EQ(qt::naturalSizeOf(with(4, {}), 0).width, std::ceil(advance("a", 13) + advance("b", 13) + 50));
    EXPECT_EQ(qt::heightOf(with(4, {}), 500, 5), lineHeight(13)) << "a low one changes nothing";
    EXPECT_EQ(qt::heightOf(with(40, {}), 500, 5), std::ceil(40 + descent)) << "on the baseline";
    EXPECT_EQ(qt::heightOf(with(40, {0, 6}), 500, 5), std::ceil(46 + descent)) << "raised";
    EXPECT_EQ(qt::heightOf(with(40, {0, -10}), 500, 5), 30 + 10) << "lowered";
    EXPECT_EQ(qt::naturalSizeOf(with(4, {25, 0}), 0).width, qt::naturalSizeOf(with(4, {}), 0).width)
        << "moved aside it takes no more";
    EXPECT_EQ(qt::heightOf(with(infinity, {0, notANumber}), 500, 5), qt::heightOf(with(1 << 16, {}), 500, 5));
}

TEST(QtTextLayout, picturesWrapLikeWords) {
    const auto pictures = joined({pictureOf(50, 20, {}), pictureOf(50, 30, {}), pictureOf(50, 40, {})});
    EXPECT_EQ(qt::naturalSizeOf(pictures, 5).width, 160);
    EXPECT_EQ(qt::heightOf(pictures, 160, 5), qt::naturalSizeOf(pictures, 5).height);
    EXPECT_EQ(qt::heightOf(pictures, 110, 5), 30 + 40);
    EXPECT_EQ(qt::heightOf(pictures, 60, 5), 20 + 30 + 40);
}

TEST(QtTextLayout, longTextsAreMeasured) {
    std::string many;
    for (int i = 0; i < 5000; ++i) {
        many += "line of text\n";
    }
    many.pop_back();
    EXPECT_EQ(qt::heightOf(styled(NSString::fromUtf8(many), 13, 5), 400, 5), 5000 * lineHeight(13) + 4999 * 5);
    const auto endless = styled(NSString::fromUtf8(std::string(200000, 'x')), 13);
    EXPECT_NEAR(qt::heightOf(endless, 510, 5), std::ceil(200000 / std::floor(500 / advance("x", 13))) * lineHeight(13),
                lineHeight(13));
    EXPECT_EQ(qt::heightOf(endless, infinity, 5), lineHeight(13));
}

TEST(QtTextLayout, unpairedHalvesOfCharactersAreSafe) {
    const char16_t halves[] = {0xD800, u'a', 0xDC00, 0};
    const auto text = styled(NSString::fromUtf16(halves), 13);
    EXPECT_GT(qt::naturalSizeOf(text, 0).width, 0);
    EXPECT_GE(qt::heightOf(text, 0, 5), lineHeight(13));
}

TEST(QtTextLayout, fontMetricsAreThoseOfTheFontInPoints) {
    const FontMetrics large = qt::metricsOf(NSFont::systemFontOfSize(100));
    EXPECT_NEAR(large.ascender, 92.8, 0.5);
    EXPECT_NEAR(large.descender, -23.6, 0.5);
    EXPECT_GE(large.leading, 0);
    const FontMetrics usual = qt::metricsOf(nullptr);
    EXPECT_EQ(usual.ascender, qt::metricsOf(NSFont::systemFontOfSize(13)).ascender);
    EXPECT_LT(usual.descender, 0);
    EXPECT_EQ(currentToolkit().metricsOfFont(NSFont::systemFontOfSize(100)).ascender, large.ascender);
}

} // namespace
} // namespace zr
