#include <zrbasic/platform/appkit/color_panel.h>
#include <zrbasic/platform/foundation/notification_center.h>

#include <tests/appkit/peer_testing.h>

#include <gtest/gtest.h>

namespace zr {
namespace {

Ref<NSColor> gray(double white, double alpha = 1) {
    return NSColor::colorWithWhite_alpha(white, alpha);
}

/// Writes down the colours that it is told of, and on which way.
class ColorListener : public NSObject {
    ZR_OBJECT(ColorListener, NSObject)
  public:
    void changed(NSNotification* notification) { note("posted", cast<NSColorPanel>(notification->object())); }
    ZR_METHOD(changed, "changed:")
    void choose(NSObject* sender) { note("sent", cast<NSColorPanel>(sender)); }
    ZR_METHOD(choose, "choose:")

    std::string log;
    Ref<NSColor> answer;

  private:
    void note(const char* way, NSColorPanel* panel) {
        log += std::string(way) + ' ' + (panel ? panel->color()->description()->utf8() : "nothing") + '\n';
        if (answer) {
            panel->setColor(std::exchange(answer, nullptr));
        }
    }
};

class ColorPanel : public testing::Test {
  protected:
    ColorPanel() {
        NSNotificationCenter::defaultCenter()->addObserver_selector_name_object(
            listener, "changed:"_sel, NSColorPanelColorDidChangeNotification(), panel);
        panel->setTarget(listener);
        panel->setAction("choose:"_sel);
    }
    std::string taken() { return std::exchange(listener->log, {}); }

    const Ref<NSColorPanel> panel = make<NSColorPanel>();
    Ref<ColorListener> listener = make<ColorListener>();
};

TEST_F(ColorPanel, isOneForTheWholeProcess) {
    const auto shared = NSColorPanel::sharedColorPanel();
    ASSERT_NE(shared, nullptr);
    EXPECT_EQ(NSColorPanel::sharedColorPanel(), shared);
    EXPECT_EQ(send<id>(NSColorPanel::classObject(), "sharedColorPanel"_sel), shared);
    EXPECT_NE(panel, shared);
    EXPECT_FALSE(shared->isVisible()) << "asking for it does not show it";
}

TEST_F(ColorPanel, isAFloatingWindowFullOfThePicker) {
    EXPECT_TRUE(panel->isFloatingPanel());
    EXPECT_TRUE(panel->worksWhenModal());
    EXPECT_EQ(panel->styleMask() & NSWindowStyleMaskResizable, 0u);
    const auto picker = cast<ColorPickerView>(panel->contentView());
    ASSERT_NE(picker, nullptr);
    EXPECT_EQ(picker->panel(), panel);
    EXPECT_TRUE(panel->color()->isEqual(NSColor::whiteColor()));
}

TEST_F(ColorPanel, tellsOfAColorThatIsSetInCode) {
    panel->setColor(gray(0.5));
    EXPECT_EQ(taken(),
              "posted " + gray(0.5)->description()->utf8() + "\nsent " + gray(0.5)->description()->utf8() + '\n');
    panel->setColor(gray(0.5));
    EXPECT_EQ(taken(), "") << "nothing has changed";
    panel->setColor(nullptr);
    EXPECT_EQ(taken(), "");
    EXPECT_TRUE(panel->color()->isEqual(gray(0.5)));
    send<void>(panel, "setColor:"_sel, "red"_ns);
    EXPECT_EQ(taken(), "") << "no colour at all";
}

TEST_F(ColorPanel, tellsOfADragInTheEndOnlyUnlessItIsContinuous) {
    EXPECT_FALSE(panel->isContinuous());
    panel->userDidChoose(gray(0.1), true);
    panel->userDidChoose(gray(0.2), true);
    EXPECT_EQ(taken(), "");
    EXPECT_TRUE(panel->color()->isEqual(gray(0.2))) << "who asks is told at any time";
    panel->userDidChoose(gray(0.2), false);
    const std::string last = gray(0.2)->description()->utf8();
    EXPECT_EQ(taken(), "posted " + last + "\nsent " + last + '\n');
    panel->userDidChoose(gray(0.2), false);
    EXPECT_EQ(taken(), "") << "a click that changes nothing";
    panel->setContinuous(true);
    panel->userDidChoose(gray(0.3), true);
    EXPECT_NE(taken(), "");
    panel->userDidChoose(gray(0.3), false);
    EXPECT_EQ(taken(), "") << "the end of the drag is no change";
    panel->userDidChoose(nullptr, false);
    EXPECT_EQ(taken(), "");
}

TEST_F(ColorPanel, sendsNothingToATargetThatIsGoneOrHasNoSuchAction) {
    panel->setAction("doSomethingElse:"_sel);
    panel->setColor(gray(0.4));
    EXPECT_EQ(taken(), "posted " + gray(0.4)->description()->utf8() + '\n');
    panel->setAction({});
    panel->setColor(gray(0.5));
    EXPECT_EQ(taken(), "posted " + gray(0.5)->description()->utf8() + '\n');
    Ref<ColorListener> brief = make<ColorListener>();
    const Weak<ColorListener> watched(brief);
    panel->setTarget(brief);
    panel->setAction("choose:"_sel);
    brief = nullptr;
    EXPECT_EQ(watched.lock(), nullptr) << "the panel does not keep it";
    panel->setColor(gray(0.6));
    EXPECT_EQ(taken(), "posted " + gray(0.6)->description()->utf8() + '\n');
}

TEST_F(ColorPanel, aColorThatIsSetByWhoIsToldIsToldOfAsWell) {
    listener->answer = gray(0.9);
    panel->setColor(gray(0.1));
    const std::string first = gray(0.1)->description()->utf8();
    const std::string second = gray(0.9)->description()->utf8();
    EXPECT_EQ(taken(), "posted " + first + "\nposted " + second + "\nsent " + second + "\nsent " + second + '\n');
    EXPECT_TRUE(panel->color()->isEqual(gray(0.9)));
}

TEST(ColorPicker, isToldWhatToShow) {
    test::RecordingToolkit toolkit;
    const Ref<NSColorPanel> panel = make<NSColorPanel>();
    panel->contentView()->ensurePeer();
    toolkit.taken();
    panel->setColor(gray(0.25));
    EXPECT_EQ(toolkit.taken(), "content\n");
    panel->setShowsAlpha(true);
    EXPECT_EQ(toolkit.taken(), "content\n");
    panel->setShowsAlpha(true);
    EXPECT_EQ(toolkit.taken(), "");
    panel->userDidChoose(gray(0.75), false);
    EXPECT_EQ(toolkit.taken(), "") << "it shows that already";
}

} // namespace
} // namespace zr
