#include <zrbasic/platform/appkit/toolkit.h>

#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/appkit/canvas.h>
#include <zrbasic/platform/appkit/font.h>
#include <zrbasic/platform/foundation/attributed_string.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/url.h>

#include <gtest/gtest.h>

namespace zr {
namespace {

class NoToolkit : public testing::Test {
  protected:
    NoToolkit() : m_before(setCurrentToolkit(nullptr)) {}
    ~NoToolkit() override { setCurrentToolkit(m_before); }

  private:
    Toolkit* m_before;
};

TEST_F(NoToolkit, hasNeitherScreensNorADesktop) {
    Toolkit& none = currentToolkit();
    EXPECT_TRUE(none.screens().empty());
    EXPECT_EQ(none.notificationService(), nullptr);
    EXPECT_FALSE(none.openURL(NSURL::URLWithString("https://example.com"_ns)));
    EXPECT_FALSE(none.openURL(nullptr));
    EXPECT_TRUE(none.keyboardLayouts().empty());
    EXPECT_EQ(none.currentKeyboardLayout(), -1);
    none.selectKeyboardLayout(7);
}

TEST_F(NoToolkit, startsProgramsAllTheSame) {
    EXPECT_TRUE(currentToolkit().launch("/bin/true"_ns));
    EXPECT_FALSE(currentToolkit().launch("/there/is/no/such/program"_ns));
    EXPECT_FALSE(currentToolkit().launch(""_ns));
    EXPECT_FALSE(currentToolkit().launch(nullptr));
}

TEST_F(NoToolkit, measuresTextAsNothing) {
    const Ref<NSAttributedString> text = make<NSAttributedString>(&NSAttributedString::initWithString, "text"_ns);
    EXPECT_EQ(currentToolkit().heightOfText(text, 100, 5), 0);
    EXPECT_EQ(currentToolkit().naturalSizeOfText(text, 5), NSZeroSize);
}

TEST_F(NoToolkit, takesEveryFontForACommonTextFont) {
    const FontMetrics metrics = currentToolkit().metricsOfFont(NSFont::systemFontOfSize(100));
    EXPECT_DOUBLE_EQ(metrics.ascender, 93);
    EXPECT_DOUBLE_EQ(metrics.descender, -24);
    EXPECT_EQ(metrics.leading, 0);
    EXPECT_EQ(currentToolkit().metricsOfFont(nullptr).ascender, 0);
}

TEST_F(NoToolkit, showsHTMLAsItIsWritten) {
    EXPECT_TRUE(currentToolkit().attributedStringFromHTML("<b>a</b>"_ns)->string()->isEqual("<b>a</b>"_ns));
    EXPECT_EQ(currentToolkit().attributedStringFromHTML(nullptr)->length(), 0u);
}

TEST_F(NoToolkit, keepsItsClipboardToItself) {
    Toolkit& none = currentToolkit();
    const Ref<NSMutableString> text = make<NSMutableString>();
    text->appendString("price"_ns);
    none.setClipboardText(text);
    text->appendString(" changed"_ns);
    EXPECT_TRUE(none.clipboardText()->isEqual("price"_ns));
    none.setClipboardText(nullptr);
    EXPECT_EQ(none.clipboardText(), nullptr);
}

TEST_F(NoToolkit, drawsNothingIntoBitmaps) {
    const Ref<NSBitmapImageRep> bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(2, 2);
    EXPECT_EQ(currentToolkit().makeBitmapCanvas(*bitmap, NSMakeSize(2, 2), false), nullptr);
}

} // namespace
} // namespace zr
