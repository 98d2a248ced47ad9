#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/appkit/button.h>
#include <zrbasic/platform/appkit/graphics_context.h>
#include <zrbasic/platform/appkit/image.h>

#include <tests/appkit/window_testing.h>

namespace zr {
namespace {

/// Draws buttons of 100 by 30 points, in the colours that a recording canvas writes: accent 10/42/86.
class ButtonDrawing : public testing::Test {
  protected:
    void SetUp() override {
        m_window = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSRect{{0, 0}, {200, 100}},
                                  NSUInteger{NSWindowStyleMaskTitled});
        m_button = NSButton::buttonWithTitle_target_action("Buy"_ns, nullptr, SEL());
        m_button->setFrame({{20, 10}, {100, 30}});
        m_window->contentView()->addSubview(m_button);
        m_window->makeKeyAndOrderFront(nullptr);
    }
    void TearDown() override { test::hideAllWindows(); }

    [[nodiscard]] test::Drawing drawing(bool isFlipped = false) const {
        test::RecordingCanvas canvas;
        const CurrentContext current(NSGraphicsContext::contextWithCanvas(canvas, isFlipped));
        m_button->drawRect(m_button->bounds());
        return canvas;
    }
    [[nodiscard]] std::string drawn() const { return drawing().drawn; }

    test::WindowToolkit m_toolkit;
    Ref<NSWindow> m_window;
    Ref<NSButton> m_button;
};

TEST_F(ButtonDrawing, hasAThinBorderWithRoundCornersAndItsTitleInTheMiddle) {
    EXPECT_EQ(drawn(),
              "fill r4 100x30+0+0 100/100/100\n"
              "line 1 r4 100x30+0+0 69/69/69\n"
              "text Buy 21x16+39.5+7\n");
}

TEST_F(ButtonDrawing, isFilledWhenItIsTheDefault) {
    m_button->setKeyEquivalent("\r"_ns);
    EXPECT_EQ(drawn(),
              "fill r4 100x30+0+0 10/42/86\n"
              "line 1 r4 100x30+0+0 10/42/86\n"
              "text Buy 21x16+39.5+7\n");
    m_button->highlight(true);
    EXPECT_TRUE(drawing().has("fill r4 100x30+0+0 6/31/68"));
    m_button->setEnabled(false);
    EXPECT_TRUE(drawing().has("fill r4 100x30+0+0 96/96/96")) << "it cannot be pressed by return either";
}

TEST_F(ButtonDrawing, showsThatItIsPressedOrStaysDown) {
    m_button->highlight(true);
    EXPECT_TRUE(drawing().has("fill r4 100x30+0+0 88/88/88"));
    m_button->highlight(false);
    m_button->setState(1);
    EXPECT_TRUE(drawing().has("fill r4 100x30+0+0 100/100/100")) << "a momentary button does not stay down";
    m_button->setButtonType(NSButtonTypePushOnPushOff);
    EXPECT_TRUE(drawing().has("fill r4 100x30+0+0 88/88/88"));
}

TEST_F(ButtonDrawing, hasARingWhileItHasTheKeyboard) {
    const std::string ring = "line 2 r4 100x30+0+0 10/42/86";
    EXPECT_FALSE(drawing().has(ring));
    m_button->setNeedsDisplay(false);
    m_window->makeFirstResponder(m_button);
    EXPECT_TRUE(m_button->needsDisplay());
    EXPECT_TRUE(drawing().has(ring));
    m_button->setFocusRingType(NSFocusRingTypeNone);
    EXPECT_FALSE(drawing().has(ring));
    m_button->setFocusRingType(NSFocusRingTypeDefault);
    m_button->setKeyEquivalent("\r"_ns);
    EXPECT_TRUE(drawing().has("line 1 r2 96x26+2+2 100/100/100")) << "a line sets ring and filling apart";
    m_button->setNeedsDisplay(false);
    make<NSWindow>()->makeKeyAndOrderFront(nullptr);
    EXPECT_TRUE(m_button->needsDisplay());
    EXPECT_FALSE(drawing().has(ring)) << "another window has the keyboard";
}

TEST_F(ButtonDrawing, marksACheckBox) {
    m_button->setButtonType(NSButtonTypeSwitch);
    EXPECT_EQ(drawn(),
              "fill r3 14x14+0+8 100/100/100\n"
              "line 1 r3 14x14+0+8 69/69/69\n"
              "text Buy 21x16+20+7\n");
    m_button->setState(1);
    const test::Drawing canvas = drawing();
    EXPECT_TRUE(canvas.has("fill r3 14x14+0+8 10/42/86"));
    EXPECT_TRUE(canvas.has("turn\nfill r0.875"));
    m_button->setAllowsMixedState(true);
    m_button->setState(-1);
    EXPECT_TRUE(drawing().has("fill r1 8x2+-1+-1 100/100/100"));
    m_button->setEnabled(false);
    EXPECT_TRUE(drawing().has("line 1 r3 14x14+0+8 85/85/85"));
    EXPECT_TRUE(drawing().has("fill r1 8x2+-1+-1 62/62/62"));
}

TEST_F(ButtonDrawing, marksARadioButton) {
    m_button->setButtonType(NSButtonTypeRadio);
    EXPECT_TRUE(drawing().has("line 1 r7 14x14+0+8 69/69/69"));
    m_button->setState(1);
    EXPECT_TRUE(drawing().has("fill r7 14x14+0+8 10/42/86"));
    EXPECT_TRUE(drawing().has("fill r2.5 5x5+4.5+12.5 100/100/100"));
}

TEST_F(ButtonDrawing, hasItsImageBesideTheTitle) {
    const auto image = make<NSImage>(&NSImage::initWithSize, NSSize{10, 12});
    image->addRepresentation(NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(10, 12));
    m_button->setImage(image);
    EXPECT_TRUE(drawing().has("bitmap 1 10x12+31.5+9"));
    EXPECT_TRUE(drawing().has("text Buy 21x16+47.5+7"));
    m_button->setImagePosition(NSImageRight);
    EXPECT_TRUE(drawing().has("text Buy 21x16+31.5+7"));
    EXPECT_TRUE(drawing().has("bitmap 1 10x12+58.5+9"));
    m_button->setImagePosition(NSImageOnly);
    m_button->setEnabled(false);
    EXPECT_TRUE(drawing().has("bitmap 0.4 10x12+45+9"));
    EXPECT_FALSE(drawing().has("text"));
}

TEST_F(ButtonDrawing, keepsALongTitleInside) {
    m_button->setTitle("A title that is far too long"_ns);
    EXPECT_TRUE(drawing().has("text A title that is far too long 80x16+10+7"));
    m_button->setFrameSize({0, 0});
    EXPECT_FALSE(drawing().has("text"));
}

TEST_F(ButtonDrawing, needsAContext) {
    m_button->drawRect(m_button->bounds());
    const auto cell = make<NSButtonCell>();
    cell->drawInteriorWithFrame_inView(NSZeroRect, nullptr);
    test::RecordingCanvas canvas;
    const CurrentContext current(NSGraphicsContext::contextWithCanvas(canvas, false));
    cell->drawWithFrame_inView({{0, 0}, {20, 20}}, nullptr);
    EXPECT_EQ(canvas.drawn, "fill r4 20x20+0+0 100/100/100\nline 1 r4 20x20+0+0 69/69/69\n");
}

} // namespace
} // namespace zr
