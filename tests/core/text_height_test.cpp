#include <zrbasic/core/text_height.h>

#include <zrbasic/platform/appkit/font.h>
#include <zrbasic/platform/appkit/paragraph_style.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/foundation/attributed_string.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/runtime/message.h>

#include <gtest/gtest.h>
#include <limits>
#include <sstream>
#include <string>

namespace zr {
namespace {

// Writes down what it is asked and answers with a number that nobody would come to otherwise.
class RecordingToolkit : public Toolkit {
  public:
    RecordingToolkit() { m_before = setCurrentToolkit(this); }
    ~RecordingToolkit() override { setCurrentToolkit(m_before); }

    double heightOfText(NSAttributedString* text, double width, double lineFragmentPadding) override {
        lastText = Ref<NSAttributedString>(text);
        std::ostringstream line;
        line << '"' << text->string()->utf8() << "\" width " << width << " padding " << lineFragmentPadding;
        text->enumerateAttribute_inRange_options_usingBlock(
            NSParagraphStyleAttributeName(), {0, text->length()}, 0, [&](NSObject* value, NSRange range, bool&) {
                line << " spacing " << cast<NSParagraphStyle>(value)->lineSpacing() << " on " << range.location << '+'
                     << range.length;
            });
        text->enumerateAttribute_inRange_options_usingBlock(
            NSFontAttributeName(), {0, text->length()}, 0, [&](NSObject* value, NSRange range, bool&) {
                line << " font " << (value ? value->description()->utf8() : "none") << " on " << range.location << '+'
                     << range.length;
            });
        log += (log.empty() ? "" : " | ") + line.str();
        return 41.25;
    }

    std::string log;
    Ref<NSAttributedString> lastText;

  private:
    Toolkit* m_before;
};

TEST(TextHeight, isWhatTheToolkitMeasures) {
    RecordingToolkit toolkit;
    const Ref<NSFont> font = NSFont::fontWithName_size("Helvetica"_ns, 12);
    EXPECT_EQ(calculateHeightWithAbsoluteWidth_font_lineSpacing("two words"_ns, 120.5, font, 3.5), 41.25);
    EXPECT_EQ(toolkit.log,
              "\"two words\" width 120.5 padding 5 spacing 3.5 on 0+9 font " + font->description()->utf8() + " on 0+9");
    EXPECT_EQ(toolkit.lastText->attribute_atIndex_effectiveRange(NSFontAttributeName(), 0, nullptr).get(), font.get());
}

TEST(TextHeight, hasFivePointsBetweenLinesUnlessToldOtherwise) {
    RecordingToolkit toolkit;
    EXPECT_EQ(calculateHeightWithAbsoluteWidth_font("ab"_ns, 10, NSFont::systemFontOfSize(13)), 41.25);
    EXPECT_EQ(calculateHeightWithAbsoluteWidth_font_lineSpacing("ab"_ns, 10, NSFont::systemFontOfSize(13), 5.0), 41.25);
    const std::size_t half = toolkit.log.find(" | ");
    ASSERT_NE(half, std::string::npos);
    EXPECT_NE(toolkit.log.find("padding 5 spacing 5 on 0+2"), std::string::npos) << toolkit.log;
    EXPECT_EQ(toolkit.log.substr(0, half), toolkit.log.substr(half + 3));
}

TEST(TextHeight, leavesTheFontToTheToolkitWhenThereIsNone) {
    RecordingToolkit toolkit;
    EXPECT_EQ(calculateHeightWithAbsoluteWidth_font("ab"_ns, 10, nullptr), 41.25);
    EXPECT_EQ(toolkit.log, "\"ab\" width 10 padding 5 spacing 5 on 0+2 font none on 0+2");
}

TEST(TextHeight, handsOddNumbersOnAsTheyAre) {
    RecordingToolkit toolkit;
    EXPECT_EQ(calculateHeightWithAbsoluteWidth_font_lineSpacing("a"_ns, -1, nullptr, -2), 41.25);
    EXPECT_EQ(calculateHeightWithAbsoluteWidth_font_lineSpacing("a"_ns, 0, nullptr, 0), 41.25);
    EXPECT_EQ(calculateHeightWithAbsoluteWidth_font("a"_ns, std::numeric_limits<double>::infinity(), nullptr), 41.25);
    EXPECT_EQ(calculateHeightWithAbsoluteWidth_font("a"_ns, std::numeric_limits<double>::quiet_NaN(), nullptr), 41.25);
    EXPECT_NE(toolkit.log.find("width -1 padding 5 spacing -2"), std::string::npos) << toolkit.log;
    EXPECT_NE(toolkit.log.find("width 0 padding 5 spacing 0"), std::string::npos) << toolkit.log;
    EXPECT_NE(toolkit.log.find("width inf "), std::string::npos) << toolkit.log;
    EXPECT_NE(toolkit.log.find("width nan "), std::string::npos) << toolkit.log;
}

TEST(TextHeight, asksForTheEmptyTextToo) {
    RecordingToolkit toolkit;
    EXPECT_EQ(calculateHeightWithAbsoluteWidth_font(""_ns, 10, NSFont::systemFontOfSize(13)), 41.25);
    EXPECT_EQ(toolkit.log, "\"\" width 10 padding 5");
}

TEST(TextHeight, isNothingForNullAndWithoutAToolkit) {
    EXPECT_EQ(calculateHeightWithAbsoluteWidth_font("text"_ns, 10, NSFont::systemFontOfSize(13)), 0);
    EXPECT_EQ(calculateHeightWithAbsoluteWidth_font_lineSpacing("text"_ns, 10, nullptr, 2), 0);
    RecordingToolkit toolkit;
    EXPECT_EQ(calculateHeightWithAbsoluteWidth_font(nullptr, 10, NSFont::systemFontOfSize(13)), 0);
    EXPECT_EQ(calculateHeightWithAbsoluteWidth_font_lineSpacing(nullptr, 10, nullptr, 2), 0);
    EXPECT_EQ(toolkit.log, "") << "nothing to ask for";
}

TEST(TextHeight, keepsTheTextAsItWas) {
    RecordingToolkit toolkit;
    const Ref<NSMutableString> receiver = NSMutableString::stringWithString("before"_ns);
    EXPECT_EQ(calculateHeightWithAbsoluteWidth_font(receiver, 10, nullptr), 41.25);
    receiver->setString("after"_ns);
    EXPECT_EQ(toolkit.lastText->string()->utf8(), "before");
    const Ref<NSString> huge = NSString::fromUtf16(std::u16string(1'000'000, u'中'));
    EXPECT_EQ(calculateHeightWithAbsoluteWidth_font(huge, 10, nullptr), 41.25);
    EXPECT_EQ(toolkit.lastText->length(), 1'000'000U);
}

TEST(TextHeight, answersMessages) {
    RecordingToolkit toolkit;
    const SEL whole = "calculateHeightWithAbsoluteWidth:font:lineSpacing:"_sel;
    const SEL half = "calculateHeightWithAbsoluteWidth:font:"_sel;
    EXPECT_EQ(send<double>("ab"_ns, whole, 10.0, NSFont::systemFontOfSize(13), 2.0), 41.25);
    EXPECT_EQ(send<double>("ab"_ns, half, 10.0, NSNull::null()), 41.25) << "a font that is none";
    EXPECT_NE(toolkit.log.find("spacing 2 on 0+2"), std::string::npos) << toolkit.log;
    EXPECT_NE(toolkit.log.find("spacing 5 on 0+2 font none"), std::string::npos) << toolkit.log;
    EXPECT_EQ(send<double>(nullptr, half, 10.0, NSFont::systemFontOfSize(13)), 0);
    EXPECT_FALSE(box(1)->respondsToSelector(half));
}

} // namespace
} // namespace zr
