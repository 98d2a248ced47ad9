#include <zrbasic/platform/appkit/button.h>
#include <zrbasic/platform/foundation/process_info.h>

#include <tests/appkit/window_testing.h>

namespace zr {
namespace {

/// On a system whose titles are 28 points high, with a screen.
class TitleBar : public testing::Test {
  protected:
    static constexpr NSUInteger everything = NSWindowStyleMaskTitled | NSWindowStyleMaskClosable |
                                             NSWindowStyleMaskMiniaturizable | NSWindowStyleMaskResizable;

    static Ref<NSWindow> window(NSUInteger style = everything) {
        return make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSRect{{10, 20}, {200, 72}}, style);
    }
    void TearDown() override { test::hideAllWindows(); }

    SystemVersionOverride m_system{{11, 0, 0}};
    test::WindowToolkit m_toolkit;
};

TEST_F(TitleBar, hasThreeButtonsOfItsOwn) {
    const auto made = window();
    for (const NSUInteger which : {0U, 1U, 2U}) {
        SCOPED_TRACE(which);
        const auto button = made->standardWindowButton(which);
        ASSERT_NE(button, nullptr);
        EXPECT_EQ(made->standardWindowButton(which), button) << "the same one every time";
        EXPECT_EQ(button->window(), made);
        EXPECT_TRUE(button->isEnabled());
        EXPECT_FALSE(button->acceptsFirstResponder());
    }
    EXPECT_NE(made->standardWindowButton(0), made->standardWindowButton(1));
    EXPECT_EQ(made->standardWindowButton(3), nullptr);
    EXPECT_EQ(made->standardWindowButton(~NSUInteger{0}), nullptr);
    EXPECT_EQ(window(NSWindowStyleMaskResizable)->standardWindowButton(0), nullptr) << "no title, no buttons";
}

TEST_F(TitleBar, enablesTheButtonsThatTheStyleAllows) {
    const auto made = window(NSWindowStyleMaskTitled | NSWindowStyleMaskMiniaturizable);
    const auto close = made->standardWindowButton(NSWindowCloseButton);
    EXPECT_FALSE(close->isEnabled());
    EXPECT_TRUE(made->standardWindowButton(NSWindowMiniaturizeButton)->isEnabled());
    made->setStyleMask(NSWindowStyleMaskTitled | NSWindowStyleMaskClosable);
    EXPECT_TRUE(close->isEnabled());
    EXPECT_FALSE(made->standardWindowButton(NSWindowMiniaturizeButton)->isEnabled());
}

TEST_F(TitleBar, tellsTheScreenWhichButtonsAreHidden) {
    const auto made = window();
    made->orderFront(nullptr);
    const auto close = made->standardWindowButton(NSWindowCloseButton);
    m_toolkit.taken();
    close->setHidden(true);
    close->setHidden(true);
    EXPECT_EQ(m_toolkit.taken(), "buttons\n") << "once for a change";
    send<void>(close, "setHidden:"_sel, false);
    EXPECT_EQ(m_toolkit.taken(), "buttons\n");
}

TEST_F(TitleBar, closesTheWindowByItsButton) {
    const auto made = window();
    made->orderFront(nullptr);
    const auto close = made->standardWindowButton(NSWindowCloseButton);
    close->setEnabled(false);
    close->performClick(nullptr);
    EXPECT_TRUE(made->isVisible());
    close->setEnabled(true);
    close->performClick(nullptr);
    EXPECT_FALSE(made->isVisible());
}

TEST_F(TitleBar, outlivesItsWindowAsAButton) {
    auto made = window();
    const auto close = made->standardWindowButton(NSWindowCloseButton);
    made = nullptr;
    EXPECT_EQ(close->window(), nullptr);
    close->performClick(nullptr);
    close->setHidden(true);
    EXPECT_TRUE(close->isHidden());
}

TEST_F(TitleBar, miniaturizesTheWindow) {
    const auto made = window();
    made->orderFront(nullptr);
    m_toolkit.taken();
    made->standardWindowButton(NSWindowMiniaturizeButton)->performClick(nullptr);
    made->miniaturize(nullptr);
    EXPECT_TRUE(made->isMiniaturized());
    EXPECT_EQ(m_toolkit.taken(), "behavior\n");
    made->deminiaturize(nullptr);
    made->deminiaturize(nullptr);
    EXPECT_FALSE(made->isMiniaturized());
    EXPECT_EQ(m_toolkit.taken(), "behavior\n");
    made->wasMiniaturized(true);
    EXPECT_TRUE(made->isMiniaturized());
    EXPECT_EQ(m_toolkit.taken(), "") << "the desktop knows";
    const auto fixed = window(NSWindowStyleMaskTitled);
    fixed->performMiniaturize(nullptr);
    EXPECT_FALSE(fixed->isMiniaturized());
}

TEST_F(TitleBar, zoomsTheWindowAndBack) {
    const auto made = window();
    const NSRect before = made->frame();
    made->standardWindowButton(NSWindowZoomButton)->performClick(nullptr);
    EXPECT_EQ(made->frame(), (NSRect{{0, 25}, {1440, 875}}));
    EXPECT_TRUE(made->isZoomed());
    made->performZoom(nullptr);
    EXPECT_EQ(made->frame(), before);
    EXPECT_FALSE(made->isZoomed());
    const auto large = window();
    large->setFrame_display({{0, 25}, {1440, 875}}, true);
    large->zoom(nullptr);
    EXPECT_TRUE(large->isZoomed()) << "there is nothing to go back to";
    const auto fixed = window(NSWindowStyleMaskTitled);
    fixed->performZoom(nullptr);
    EXPECT_FALSE(fixed->isZoomed());
}

TEST_F(TitleBar, placesTheWindowALittleAboveTheMiddle) {
    const auto made = window();
    made->center();
    EXPECT_EQ(made->frame(), (NSRect{{620, 25 + 775 * 2.0 / 3}, {200, 100}}));
}

TEST(WindowWithoutAScreen, staysWhereItIs) {
    const auto made = make<NSWindow>();
    const NSRect before = made->frame();
    made->center();
    made->zoom(nullptr);
    EXPECT_EQ(made->frame(), before);
    EXPECT_FALSE(made->isZoomed());
}

TEST_F(TitleBar, limitsUsersAndNotPrograms) {
    const auto made = window();
    EXPECT_EQ(made->minSize(), NSZeroSize);
    EXPECT_GT(made->maxSize().width, 1e30);
    made->orderFront(nullptr);
    m_toolkit.taken();
    made->setMinSize({100, 100});
    made->setMaxSize({300, 300});
    EXPECT_EQ(m_toolkit.taken(), "behavior\nbehavior\n");
    made->setFrame_display({{0, 0}, {1, 1000}}, true);
    EXPECT_EQ(made->frame().size, (NSSize{1, 1000}));
    EXPECT_EQ(made->minSize(), (NSSize{100, 100}));
    EXPECT_EQ(made->maxSize(), (NSSize{300, 300}));
}

/// Deals with one key.
class Shortcut : public NSView {
    ZR_OBJECT(Shortcut, NSView)
  public:
    bool performKeyEquivalent(NSEvent* event) override {
        const bool isMine = event->characters()->isEqual("k"_ns);
        order += isMine ? name : "-";
        return isMine;
    }

    std::string name;
    inline static std::string order;
};

TEST_F(TitleBar, offersKeysToTheViewsInFrontFirst) {
    const auto made = window();
    const auto back = make<Shortcut>();
    const auto front = make<Shortcut>();
    const auto inner = make<Shortcut>();
    back->name = "back";
    front->name = "front";
    inner->name = "inner";
    made->contentView()->addSubview(back);
    made->contentView()->addSubview(front);
    Shortcut::order.clear();
    EXPECT_TRUE(made->performKeyEquivalent(test::keyEvent("k"_ns)));
    EXPECT_EQ(Shortcut::order, "front");
    EXPECT_FALSE(made->performKeyEquivalent(test::keyEvent("x"_ns)));
    EXPECT_EQ(Shortcut::order, "front--");
    front->addSubview(inner);
    Shortcut::order.clear();
    made->keyDown(test::keyEvent("k"_ns));
    EXPECT_EQ(Shortcut::order, "inner");
}

} // namespace
} // namespace zr
