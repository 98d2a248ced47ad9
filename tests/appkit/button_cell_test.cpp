#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/appkit/button.h>
#include <zrbasic/platform/appkit/image.h>

#include <tests/appkit/canvas_testing.h>
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

    [[nodiscard]] test::DrawingRecord drawing() const { return test::drawn(m_button); }
    [[nodiscard]] std::string drawn() const { return drawing().log; }

    test::WindowToolkit m_toolkit;
    Ref<NSWindow> m_window;
    Ref<NSButton> m_button;
};

TEST_F(ButtonDrawing, hasAThinBorderWithRoundCornersAndItsTitleInTheMiddle) {
    EXPECT_EQ(drawn(),
              "fill round 4 4 0,0 100x30 white\n"
              "line 1 round 4 0,0 100x30 69/69/69\n"
              "text 'Buy' 39.5,7 21x16 on one line\n");
}

TEST_F(ButtonDrawing, isFilledWhenItIsTheDefault) {
    m_button->setKeyEquivalent("\r"_ns);
    EXPECT_EQ(drawn(),
              "fill round 4 4 0,0 100x30 10/42/86\n"
              "line 1 round 4 0,0 100x30 10/42/86\n"
              "text 'Buy' 39.5,7 21x16 on one line\n");
    m_button->highlight(true);
    EXPECT_TRUE(drawing().has("fill round 4 4 0,0 100x30 6/31/68"));
    m_button->setEnabled(false);
    EXPECT_TRUE(drawing().has("fill round 4 4 0,0 100x30 96/96/96")) << "it cannot be pressed by return either";
}

TEST_F(ButtonDrawing, showsThatItIsPressedOrStaysDown) {
    m_button->highlight(true);
    EXPECT_TRUE(drawing().has("fill round 4 4 0,0 100x30 88/88/88"));
    m_button->highlight(false);
    m_button->setState(1);
    EXPECT_TRUE(drawing().has("fill round 4 4 0,0 100x30 white")) << "a momentary button does not stay down";
    m_button->setButtonType(NSButtonTypePushOnPushOff);
    EXPECT_TRUE(drawing().has("fill round 4 4 0,0 100x30 88/88/88"));
}

TEST_F(ButtonDrawing, hasARingWhileItHasTheKeyboard) {
    const std::string ring = "line 2 round 4 0,0 100x30 10/42/86";
    EXPECT_FALSE(drawing().has(ring));
    m_button->setNeedsDisplay(false);
    m_window->makeFirstResponder(m_button);
    EXPECT_TRUE(m_button->needsDisplay());
    EXPECT_TRUE(drawing().has(ring));
    m_button->setFocusRingType(NSFocusRingTypeNone);
    EXPECT_FALSE(drawing().has(ring));
    m_button->setFocusRingType(NSFocusRingTypeDefault);
    m_button->setKeyEquivalent("\r"_ns);
    EXPECT_TRUE(drawing().has("line 1 round 2 2,2 96x26 white")) << "a line sets ring and filling apart";
    m_button->setNeedsDisplay(false);
    make<NSWindow>()->makeKeyAndOrderFront(nullptr);
    EXPECT_TRUE(m_button->needsDisplay());
    EXPECT_FALSE(drawing().has(ring)) << "another window has the keyboard";
}

TEST_F(ButtonDrawing, marksACheckBox) {
    m_button->setButtonType(NSButtonTypeSwitch);
    EXPECT_EQ(drawn(),
              "fill round 3 3 0,8 14x14 white\n"
              "line 1 round 3 0,8 14x14 69/69/69\n"
              "text 'Buy' 20,7 21x16 on one line\n");
    m_button->setState(1);
    const test::DrawingRecord canvas = drawing();
    EXPECT_TRUE(canvas.has("fill round 3 3 0,8 14x14 10/42/86"));
    EXPECT_TRUE(canvas.has("concat\nfill round 0.875"));
    m_button->setAllowsMixedState(true);
    m_button->setState(-1);
    EXPECT_TRUE(drawing().has("fill round 1 1 -1,-1 8x2 white"));
    m_button->setEnabled(false);
    EXPECT_TRUE(drawing().has("line 1 round 3 0,8 14x14 85/85/85"));
    EXPECT_TRUE(drawing().has("fill round 1 1 -1,-1 8x2 62/62/62"));
}

TEST_F(ButtonDrawing, marksARadioButton) {
    m_button->setButtonType(NSButtonTypeRadio);
    EXPECT_TRUE(drawing().has("line 1 round 7 0,8 14x14 69/69/69"));
    m_button->setState(1);
    EXPECT_TRUE(drawing().has("fill round 7 7 0,8 14x14 10/42/86"));
    EXPECT_TRUE(drawing().has("fill round 2.5 2.5 4.5,12.5 5x5 white"));
}

TEST_F(ButtonDrawing, hasItsImageBesideTheTitle) {
    const auto image = make<NSImage>(&NSImage::initWithSize, NSSize{10, 12});
    image->addRepresentation(NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(10, 12));
    m_button->setImage(image);
    EXPECT_TRUE(drawing().has("bitmap 1 31.5,9 10x12"));
    EXPECT_TRUE(drawing().has("text 'Buy' 47.5,7 21x16"));
    m_button->setImagePosition(NSImageRight);
    EXPECT_TRUE(drawing().has("text 'Buy' 31.5,7 21x16"));
    EXPECT_TRUE(drawing().has("bitmap 1 58.5,9 10x12"));
    m_button->setImagePosition(NSImageOnly);
    m_button->setEnabled(false);
    EXPECT_TRUE(drawing().has("bitmap 0.4 45,9 10x12"));
    EXPECT_FALSE(drawing().has("text"));
}

TEST_F(ButtonDrawing, keepsALongTitleInside) {
    m_button->setTitle("A title that is far too long"_ns);
    EXPECT_TRUE(drawing().has("text 'A title that is far too long' 10,7 80x16"));
    m_button->setFrameSize({0, 0});
    EXPECT_FALSE(drawing().has("text"));
}

TEST_F(ButtonDrawing, needsAContext) {
    m_button->drawRect(m_button->bounds());
    const auto cell = make<NSButtonCell>();
    cell->drawInteriorWithFrame_inView(NSZeroRect, nullptr);
    const auto record = test::recorded([&cell] { cell->drawWithFrame_inView({{0, 0}, {20, 20}}, nullptr); });
    EXPECT_EQ(record.log, "fill round 4 4 0,0 20x20 white\nline 1 round 4 0,0 20x20 69/69/69\n");
}

} // namespace
} // namespace zr
