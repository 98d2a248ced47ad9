#include <zrbasic/platform/appkit/animation.h>
#include <zrbasic/platform/appkit/button.h>
#include <zrbasic/platform/appkit/toolbar.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/process_info.h>
#include <zrbasic/ui/coordinate.h>
#include <zrbasic/ui/window.h>

#include <tests/appkit/window_testing.h>

namespace zr {
namespace {

constexpr NSUInteger titled = NSWindowStyleMaskTitled | NSWindowStyleMaskClosable;

/// On a system whose titles are 28 points high, with a screen that leaves 1440 by 875 points at 0, 25.
class WindowHelper : public testing::Test {
  protected:
    static Ref<NSWindow> window(NSRect content = {{10, 20}, {400, 272}}, NSUInteger style = titled) {
        return make<NSWindow>(&NSWindow::initWithContentRect_styleMask, content, style);
    }
    void TearDown() override { test::hideAllWindows(); }

    SystemVersionOverride m_system{{11, 0, 0}};
    test::WindowToolkit m_toolkit;
};

// The title bar

TEST_F(WindowHelper, titleBarIsHigherSinceMacOS11) {
    EXPECT_EQ(titleBarHeight(), 28.0);
    EXPECT_EQ(send<double>(NSWindow::classObject(), "titleBarHeight"_sel), 28.0);
    const SystemVersionOverride catalina({10, 15, 0});
    EXPECT_EQ(titleBarHeight(), 22.0);
    const SystemVersionOverride later({12, 3, 1});
    EXPECT_EQ(titleBarHeight(), 28.0);
    const SystemVersionOverride other({6, 1, 0}, SystemVersionOverride::System::Other);
    EXPECT_EQ(titleBarHeight(), 28.0) << "another system brings along what it needs";
}

/// Answers the toolbar view's key in its own way.
class OddToolbar : public NSToolbar {
    ZR_OBJECT(OddToolbar, NSToolbar)
  public:
    id oddView() { return answer; }
    ZR_METHOD(oddView, "getToolbarView")

    id answer;
};

TEST_F(WindowHelper, titleBarViewIsWhatTheToolbarLiesIn) {
    const auto made = window();
    EXPECT_EQ(titleBarView(made), nullptr) << "no toolbar";
    const auto toolbar = make<NSToolbar>();
    made->setToolbar(toolbar);
    ASSERT_NE(titleBarView(made), nullptr);
    EXPECT_EQ(titleBarView(made), toolbar->toolbarView()->superview());
    EXPECT_EQ(send<Ref<NSView>>(made, "titleBarView"_sel), titleBarView(made));
    const auto odd = make<OddToolbar>();
    made->setToolbar(odd);
    for (const id& answer : {id(), id("no view"_ns), id(make<NSView>())}) {
        odd->answer = answer;
        EXPECT_EQ(titleBarView(made), nullptr) << "read by its key, and not in a title bar";
    }
    const auto inner = make<NSView>();
    made->contentView()->addSubview(inner);
    odd->answer = inner;
    EXPECT_EQ(titleBarView(made), made->contentView());
}

TEST_F(WindowHelper, namesTheStandardButtons) {
    const auto made = window();
    EXPECT_EQ(closeButton(made), made->standardWindowButton(0));
    EXPECT_EQ(miniaturizeButton(made), made->standardWindowButton(1));
    EXPECT_EQ(zoomButton(made), made->standardWindowButton(2));
    EXPECT_EQ(send<Ref<NSButton>>(made, "zoomButton"_sel), zoomButton(made));
    ASSERT_NE(zoomButton(made), nullptr);
    const auto bare = window({{0, 0}, {10, 10}}, NSWindowStyleMaskBorderless);
    EXPECT_EQ(closeButton(bare), nullptr);
    hideAllWindowButtons(bare);
}

TEST_F(WindowHelper, hidesAllButtons) {
    const auto made = window();
    made->orderFront(nullptr);
    m_toolkit.taken();
    hideAllWindowButtons(made);
    EXPECT_TRUE(closeButton(made)->isHidden());
    EXPECT_TRUE(miniaturizeButton(made)->isHidden());
    EXPECT_TRUE(zoomButton(made)->isHidden());
    EXPECT_EQ(m_toolkit.taken(), "buttons\nbuttons\nbuttons\n");
}

// Places

TEST_F(WindowHelper, isCenteredInWhatTheScreenLeaves) {
    const auto made = window();
    ASSERT_EQ(made->frame().size, (NSSize{400, 300}));
    centerAtScreen(made);
    EXPECT_EQ(made->frame(), (NSRect{{520, 312.5}, {400, 300}})) << "not on whole points";
    made->setFrame_display({{0, 0}, {2000, 1000}}, true);
    centerAtScreen(made);
    EXPECT_EQ(made->frame().origin, (NSPoint{-280, -37.5})) << "nor clamped to the screen";
}

TEST(WindowHelperWithoutAScreen, centersAroundTheOrigin) {
    const SystemVersionOverride system({11, 0, 0});
    const auto made =
        make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSRect{{10, 20}, {400, 272}}, NSUInteger{titled});
    centerAtScreen(made);
    EXPECT_EQ(made->frame(), (NSRect{{-200, -150}, {400, 300}}));
}

/// Writes down how its frame is set.
class NotedWindow : public NSWindow {
    ZR_OBJECT(NotedWindow, NSWindow)
  public:
    void setFrame_display(NSRect frame, bool display) override {
        notes += display ? "display " : "frame ";
        NSWindow::setFrame_display(frame, display);
    }
    void close() override {
        notes += "close ";
        if (whenClosed) {
            whenClosed();
        }
        NSWindow::close();
    }

    std::string notes;
    std::function<void()> whenClosed;
};

TEST_F(WindowHelper, isCenteredOnARectangle) {
    const auto made = make<NotedWindow>();
    made->setFrame_display({{1, 2}, {100, 51}}, true);
    made->notes.clear();
    centerAtRect(made, {{10, 10}, {100, 100}});
    EXPECT_EQ(made->frame(), (NSRect{{10, 34.5}, {100, 51}}));
    EXPECT_EQ(made->notes, "display ");
    send<void>(made, "centerAtRect:"_sel, NSRect{{-10, -10}, {0, 0}});
    EXPECT_EQ(made->frame(), (NSRect{{-60, -35.5}, {100, 51}}));
}

TEST_F(WindowHelper, readsTheFrameByItsCoordinates) {
    const auto made = window({{10.5, 20}, {400, 272}});
    EXPECT_EQ(zr_minX(made), 10.5);
    EXPECT_EQ(zr_minY(made), 20);
    EXPECT_EQ(zr_maxX(made), 410.5);
    EXPECT_EQ(zr_maxY(made), 320);
    EXPECT_EQ(zr_width(made), 400);
    EXPECT_EQ(zr_height(made), 300);
    EXPECT_EQ(zr_size(made), (NSSize{400, 300}));
    EXPECT_EQ(zr_origin(made), (NSPoint{10.5, 20}));
    EXPECT_EQ(zr_frame(made), made->frame());
}

TEST_F(WindowHelper, isMovedByItsCoordinates) {
    const auto made = window();
    setZr_minX(made, 1.25);
    EXPECT_EQ(made->frame(), (NSRect{{1.25, 20}, {400, 300}}));
    setZr_minY(made, -3);
    EXPECT_EQ(made->frame(), (NSRect{{1.25, -3}, {400, 300}}));
    setZr_origin(made, {7, 8});
    EXPECT_EQ(made->frame(), (NSRect{{7, 8}, {400, 300}}));
    const auto noted = make<NotedWindow>();
    noted->notes.clear();
    setZr_frame(noted, {{1, 2}, {30, 40}});
    EXPECT_EQ(noted->frame(), (NSRect{{1, 2}, {30, 40}}));
    EXPECT_EQ(noted->notes, "display ");
}

TEST_F(WindowHelper, growsByItsTitleWhenOneDimensionIsSet) {
    const auto made = window();
    setZr_width(made, 500);
    EXPECT_EQ(made->frame(), (NSRect{{10, 20}, {500, 328}})) << "the content became as high as the frame was";
    setZr_height(made, 100);
    EXPECT_EQ(made->frame(), (NSRect{{10, 20}, {500, 128}}));
    setZr_size(made, {50, 60});
    EXPECT_EQ(made->frame(), (NSRect{{10, 20}, {50, 88}}));
    const auto bare = window({{0, 0}, {10, 10}}, NSWindowStyleMaskBorderless);
    setZr_width(bare, 20);
    EXPECT_EQ(bare->frame().size, (NSSize{20, 10})) << "no title, nothing to grow by";
}

TEST_F(WindowHelper, answersTheCoordinatesAsMessages) {
    const id made = window();
    EXPECT_TRUE(made->conformsToProtocol(ZRXCoordinateProtocol::protocolObject()));
    EXPECT_TRUE(made->conformsToProtocol(objc_getProtocol("ZRXCoordinateProtocol")));
    EXPECT_FALSE(make<NSObject>()->conformsToProtocol(ZRXCoordinateProtocol::protocolObject()));
    send<void>(made, "setZr_minX:"_sel, 3.5);
    send<void>(made, "setZr_minY:"_sel, 4.5);
    send<void>(made, "setZr_size:"_sel, NSSize{100, 72});
    EXPECT_EQ(send<double>(made, "zr_maxX"_sel), 103.5);
    EXPECT_EQ(send<double>(made, "zr_maxY"_sel), 104.5);
    send<void>(made, "setZr_width:"_sel, 10.0);
    send<void>(made, "setZr_height:"_sel, 10.0);
    EXPECT_EQ(send<NSRect>(made, "zr_frame"_sel), (NSRect{{3.5, 4.5}, {10, 38}}));
    send<void>(made, "setZr_origin:"_sel, NSPoint{1, 1});
    EXPECT_EQ(send<NSPoint>(made, "zr_origin"_sel), (NSPoint{1, 1}));
    EXPECT_FALSE(made->respondsToSelector("setZr_maxX:"_sel));
}

// The shake

TEST_F(WindowHelper, shakesTwentyTimesWithinHalfASecond) {
    const auto made = window({{100, 50}, {400, 272}});
    made->orderFront(nullptr);
    made->setAnimations(dictionary({{"alphaValue"_ns, make<CAAnimation>()}}));
    beginShakeAnimation(made);
    const std::vector<NSPoint>& points = m_toolkit.playedOrigins();
    ASSERT_EQ(points.size(), 42U);
    EXPECT_EQ(m_toolkit.playedSeconds(), 0.5);
    const double swing = 400 * static_cast<double>(0.01F);
    EXPECT_NE(swing, 4.0) << "the share is that of single precision";
    EXPECT_EQ(points.front(), (NSPoint{100, 50}));
    for (std::size_t i = 1; i < 41; ++i) {
        EXPECT_EQ(points[i], (NSPoint{i % 2 == 1 ? 100 - swing : 100 + swing, 50})) << i;
    }
    EXPECT_EQ(points.back(), (NSPoint{100, 50}));
    EXPECT_EQ(made->frame(), (NSRect{{100, 50}, {400, 300}}));
    ASSERT_EQ(made->animations()->count(), 1U) << "the others are gone";
    const auto animation = cast<CAKeyframeAnimation>(made->animations()->objectForKey("frameOrigin"_ns));
    ASSERT_NE(animation, nullptr);
    EXPECT_EQ(animation->duration(), 0.5);
    EXPECT_EQ(animation->path()->elements().back().type, kCGPathElementCloseSubpath);
}

TEST_F(WindowHelper, shakesNothingThatIsNotThere) {
    const auto hidden = window();
    const NSRect before = hidden->frame();
    beginShakeAnimation(hidden);
    EXPECT_EQ(hidden->frame(), before);
    EXPECT_EQ(m_toolkit.taken(), "") << "it is not on a screen";
    const auto empty = window({{5, 5}, {0, 0}});
    empty->orderFront(nullptr);
    send<void>(empty, "beginShakeAnimation"_sel);
    ASSERT_EQ(m_toolkit.playedOrigins().size(), 42U);
    EXPECT_EQ(m_toolkit.playedOrigins()[7], (NSPoint{5, 5}));
}

TEST_F(WindowHelper, doesNothingForNull) {
    EXPECT_EQ(titleBarView(nullptr), nullptr);
    EXPECT_EQ(closeButton(nullptr), nullptr);
    hideAllWindowButtons(nullptr);
    beginShakeAnimation(nullptr);
    centerAtScreen(nullptr);
    centerAtRect(nullptr, {{1, 1}, {2, 2}});
    NSWindow* const none = nullptr;
    EXPECT_EQ(zr_frame(none), NSZeroRect);
    EXPECT_EQ(zr_maxX(none), 0);
    setZr_width(none, 10);
    setZr_minX(none, 10);
    setZr_frame(none, {{1, 1}, {2, 2}});
}

} // namespace
} // namespace zr
