#include "desktop_testing.h"

namespace zr {
namespace {

using test::becomes;
using test::contentOnServer;
using test::outlineOnServer;
using test::outputOf;
using test::serverNumber;
using test::text;

/// A window reckons with a title of its own height, whatever the desktop's is, so that points of the content convert
/// exactly: it is the content that is where the frame says.
class WindowFramesOnDesktop : public test::Desktop {
  protected:
    static NSRect content(NSWindow* window) { return window->contentRectForFrameRect(window->frame()); }
    /// The content on the screen, once the window manager has done what was asked of it.
    static std::string settled(NSWindow* window) {
        becomes([window] { return text(contentOnServer(window)) == text(content(window)); });
        return text(contentOnServer(window));
    }
    static void moveByWindowManager(NSWindow* window, const char* place) {
        outputOf("wmctrl", {"-i", "-r", serverNumber(window), "-e", place});
    }
};

TEST_F(WindowFramesOnDesktop, haveTheirContentWhereTheySay) {
    const Ref<NSWindow> window = showWindow(NSMakeRect(200, 150, 400, 300), "Frames"_ns);
    EXPECT_EQ(settled(window), "200,150 400x300");
    EXPECT_EQ(text(content(window)), "200,150 400x300");
    EXPECT_EQ(text(window->contentView()->frame()), "0,0 400x300");
    EXPECT_GT(window->frame().size.height, 300);
}

TEST_F(WindowFramesOnDesktop, haveTheDesktopsDecorationsAroundTheContent) {
    const Ref<NSWindow> window = showWindow(NSMakeRect(200, 150, 400, 300), "Decorated"_ns);
    ASSERT_EQ(settled(window), "200,150 400x300");
    const NSRect outline = outlineOnServer(window);
    const double above = NSMaxY(outline) - 450;
    EXPECT_GE(above, 10) << "a title above the content";
    EXPECT_LE(above, 50);
    EXPECT_LE(outline.origin.x, 200);
    EXPECT_LE(outline.origin.y, 150);
    // Neither so wide that the frame would be something else altogether.
    EXPECT_LT(200 - outline.origin.x, 20);
    EXPECT_LT(150 - outline.origin.y, 20);
}

TEST_F(WindowFramesOnDesktop, areWhereTheProgramPutsThem) {
    const Ref<NSWindow> window = showWindow(NSMakeRect(200, 150, 400, 300), "Moves"_ns);
    window->setFrame_display(window->frameRectForContentRect(NSMakeRect(320, 210, 350, 280)), true);
    EXPECT_EQ(settled(window), "320,210 350x280");
    EXPECT_EQ(text(content(window)), "320,210 350x280");
    window->setFrameOrigin(NSMakePoint(64, 96));
    EXPECT_EQ(settled(window), "64,96 350x280");
    window->setContentSize(NSMakeSize(500, 400));
    EXPECT_EQ(settled(window), "64,96 500x400");
    EXPECT_EQ(text(content(window)), "64,96 500x400");
}

TEST_F(WindowFramesOnDesktop, keepFractionsThatThePixelsCannotShow) {
    const Ref<NSWindow> window = showWindow(NSMakeRect(200, 150, 400, 300), "Fractions"_ns);
    NSRect frame = NSMakeRect(312.5, 20.25, 350, 280);
    for (int step = 0; step < 20; ++step) {
        frame.origin.x += 4.01;
        window->setFrame_display(frame, true);
        QTest::qWait(5);
    }
    EXPECT_TRUE(becomes([&] { return std::abs(contentOnServer(window).origin.x - frame.origin.x) < 0.51; }));
    QTest::qWait(200);
    EXPECT_EQ(window->frame().origin.x, frame.origin.x);
    EXPECT_EQ(window->frame().origin.y, frame.origin.y);
    EXPECT_EQ(window->frame().size, frame.size);
}

TEST_F(WindowFramesOnDesktop, followWhatTheUserDoes) {
    const Ref<NSWindow> window = showWindow(NSMakeRect(200, 150, 400, 300), "Follows"_ns);
    ASSERT_EQ(settled(window), "200,150 400x300");
    // Gravity, x, y, width and height; -1 keeps what it is.
    moveByWindowManager(window, "0,500,100,-1,-1");
    EXPECT_TRUE(becomes([&] { return window->frame().origin.x > 400; }));
    EXPECT_EQ(settled(window), text(content(window)));
    EXPECT_EQ(content(window).size, NSMakeSize(400, 300));
    moveByWindowManager(window, "0,-1,-1,333,222");
    EXPECT_TRUE(becomes([&] { return content(window).size == NSMakeSize(333, 222); }));
    EXPECT_EQ(settled(window), text(content(window)));
    EXPECT_EQ(window->contentView()->frame().size, NSMakeSize(333, 222));
}

TEST_F(WindowFramesOnDesktop, doNotWanderWhenTheyAreHiddenAndShown) {
    const Ref<NSWindow> window = showWindow(NSMakeRect(200, 150, 400, 300), "Stays"_ns);
    const std::string frame = text(window->frame());
    for (int round = 0; round < 5; ++round) {
        window->orderOut(nullptr);
        QTest::qWait(30);
        window->orderFront(nullptr);
        QTest::qWait(100);
    }
    EXPECT_EQ(text(window->frame()), frame);
    EXPECT_EQ(settled(window), "200,150 400x300");
}

TEST_F(WindowFramesOnDesktop, areTheContentAloneWithoutATitle) {
    const Ref<NSWindow> window = makeWindow(NSMakeRect(100, 120, 200, 90), "Bare"_ns, NSWindowStyleMaskBorderless);
    window->orderFront(nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(qt::widget(window)));
    EXPECT_EQ(settled(window), "100,120 200x90");
    EXPECT_EQ(text(window->frame()), "100,120 200x90");
    EXPECT_EQ(text(outlineOnServer(window)), "100,120 200x90");
}

TEST_F(WindowFramesOnDesktop, bearTheirTitle) {
    const Ref<NSWindow> window = showWindow(NSMakeRect(200, 150, 400, 300), "Orders \xe2\x82\xac"_ns);
    EXPECT_TRUE(outputOf("wmctrl", {"-l"}).contains(QString::fromUtf8("Orders \xe2\x82\xac")));
    window->setTitle("Trades"_ns);
    EXPECT_TRUE(becomes([] { return outputOf("wmctrl", {"-l"}).contains("Trades"); }));
}

} // namespace
} // namespace zr
