#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/foundation/notification_center.h>
#include <zrbasic/ui/color_panel.h>

#include <tests/appkit/window_testing.h>

#include <functional>

namespace zr {
namespace {

Ref<NSColor> gray(double white) {
    return NSColor::colorWithWhite_alpha(white, 1);
}

/// Takes colours, and may do something when it is told one and when it is asked whether it takes them.
class ColorTaker : public NSObject {
    ZR_OBJECT(ColorTaker, NSObject)
  public:
    void take(NSColor* color) {
        ++count;
        last = Ref<NSColor>(color);
        if (whenTold) {
            const auto work = whenTold;
            work();
        }
    }
    ZR_METHOD(take, "take:")

    bool respondsToSelector(SEL selector) const override {
        if (whenAsked && selector == "take:"_sel) {
            // Kept, as it may be replaced while it runs.
            const auto work = whenAsked;
            work();
        }
        return NSObject::respondsToSelector(selector);
    }

    int count = 0;
    Ref<NSColor> last;
    std::function<void()> whenAsked;
    std::function<void()> whenTold;
};

/// The bridge and the panel are the process's own, so each test leaves them without a target.
class ColorPanelBridge : public testing::Test {
  protected:
    ColorPanelBridge() { panel->setColor(NSColor::whiteColor()); }
    ~ColorPanelBridge() override {
        bridge->updateTarget_action(nullptr, {});
        panel->setTarget(nullptr);
        panel->setAction({});
        panel->setContinuous(false);
        test::hideAllWindows();
    }

    const Ref<_ZRColorPanelBridge> bridge = _ZRColorPanelBridge::shared();
    const Ref<NSColorPanel> panel = NSColorPanel::sharedColorPanel();
    Ref<ColorTaker> taker = make<ColorTaker>();
};

TEST_F(ColorPanelBridge, isOneForTheWholeProcess) {
    EXPECT_EQ(_ZRColorPanelBridge::shared(), bridge);
    EXPECT_EQ(send<id>(_ZRColorPanelBridge::classObject(), "shared"_sel), bridge);
    EXPECT_EQ(bridge->target(), nullptr);
    EXPECT_FALSE(bridge->action());
    send<void>(bridge, "setTarget:"_sel, taker);
    EXPECT_EQ(send<id>(bridge, "target"_sel), taker);
}

TEST_F(ColorPanelBridge, presentingPreparesThePanelButDoesNotShowIt) {
    EXPECT_EQ(panelWithTarget_action(taker, "take:"_sel), panel);
    EXPECT_TRUE(panel->isContinuous());
    EXPECT_FALSE(panel->isVisible());
    EXPECT_EQ(weakTarget(panel), taker);
    EXPECT_EQ(bridge->action(), "take:"_sel);
    EXPECT_EQ(taker->count, 0) << "what the panel shows already is no change";
    const id again = send<id>(NSColorPanel::classObject(), "panelWithTarget:action:"_sel, taker, "take:"_sel);
    EXPECT_EQ(again, panel);
}

TEST_F(ColorPanelBridge, tellsTheTargetTwiceOfOneChange) {
    panelWithTarget_action(taker, "take:"_sel);
    panel->setColor(gray(0.25));
    EXPECT_EQ(taker->count, 2);
    EXPECT_TRUE(taker->last->isEqual(gray(0.25)));
    panel->userDidChoose(gray(0.5), true);
    EXPECT_EQ(taker->count, 4) << "while the user drags too";
    EXPECT_TRUE(taker->last->isEqual(gray(0.5)));
    panel->userDidChoose(gray(0.5), false);
    EXPECT_EQ(taker->count, 4);
}

TEST_F(ColorPanelBridge, tellsOnceWhereThePanelWasNotPresented) {
    bridge->updateTarget_action(taker, "take:"_sel);
    panel->setColor(gray(0.25));
    EXPECT_EQ(taker->count, 1) << "by the notification alone";
    EXPECT_FALSE(panel->isContinuous());
    panel->userDidChoose(gray(0.5), true);
    EXPECT_EQ(taker->count, 1);
    panel->userDidChoose(gray(0.5), false);
    EXPECT_EQ(taker->count, 2);
}

TEST_F(ColorPanelBridge, aTargetThatIsGoneIsToldNothing) {
    const Weak<ColorTaker> watched(taker);
    panelWithTarget_action(taker, "take:"_sel);
    taker = nullptr;
    EXPECT_EQ(watched.lock(), nullptr) << "nobody else keeps it";
    EXPECT_EQ(weakTarget(panel), nullptr);
    panel->setColor(gray(0.75));
    EXPECT_EQ(bridge->action(), "take:"_sel);
    EXPECT_TRUE(panel->color()->isEqual(gray(0.75)));
}

TEST_F(ColorPanelBridge, aTargetThatGoesWhileItIsToldIsToldOnce) {
    const Weak<ColorTaker> watched(taker);
    int told = 0;
    taker->whenTold = [&] {
        ++told;
        taker = nullptr;
        EXPECT_NE(watched.lock(), nullptr) << "it lives until it has been told";
    };
    panelWithTarget_action(taker, "take:"_sel);
    panel->setColor(gray(0.25));
    EXPECT_EQ(told, 1) << "not of the same change by the action as well";
    EXPECT_EQ(watched.lock(), nullptr);
    EXPECT_EQ(weakTarget(panel), nullptr);
    panel->setColor(gray(0.5));
    EXPECT_EQ(told, 1);
}

TEST_F(ColorPanelBridge, aTargetMayChooseAnotherColourOrRaise) {
    taker->whenTold = [&] { panel->setColor(gray(0.5)); };
    panelWithTarget_action(taker, "take:"_sel);
    panel->setColor(gray(0.25));
    EXPECT_EQ(taker->count, 4) << "twice of each";
    EXPECT_TRUE(taker->last->isEqual(gray(0.5)));
    taker->whenTold = [] { NSException::raise(NSGenericException, "not that one"); };
    EXPECT_THROW(panel->setColor(gray(0.75)), NSException);
    EXPECT_TRUE(panel->color()->isEqual(gray(0.75)));
    taker->whenTold = nullptr;
    panel->setColor(gray(0.25));
    EXPECT_TRUE(taker->last->isEqual(gray(0.25))) << "the next change is told of as before";
}

TEST_F(ColorPanelBridge, theLastOneThatAskedIsTheOnlyTarget) {
    const Ref<ColorTaker> later = make<ColorTaker>();
    panelWithTarget_action(taker, "take:"_sel);
    panelWithTarget_action(later, "take:"_sel);
    panel->setColor(gray(0.25));
    EXPECT_EQ(taker->count, 0);
    EXPECT_EQ(later->count, 2);
    panelWithTarget_action(nullptr, {});
    panel->setColor(gray(0.5));
    EXPECT_EQ(later->count, 2);
    EXPECT_EQ(weakTarget(panel), nullptr);
}

TEST_F(ColorPanelBridge, tellsNobodyWithoutAnActionThatTheTargetHas) {
    for (const SEL action : {SEL(), "takeElsewhere:"_sel}) {
        SCOPED_TRACE(action ? std::string(action.name()) : "none");
        bridge->updateTarget_action(taker, action);
        bridge->colorChangedAction(panel);
        EXPECT_EQ(taker->count, 0);
    }
    bridge->updateTarget_action(nullptr, "take:"_sel);
    bridge->colorChangedAction(panel);
    bridge->updateTarget_action(taker, "take:"_sel);
    bridge->colorChangedAction(panel);
    EXPECT_EQ(taker->count, 1);
}

TEST_F(ColorPanelBridge, readsTargetAndActionAgainOnceTheTargetWasAsked) {
    taker->whenAsked = [&] { bridge->updateTarget_action(nullptr, {}); };
    bridge->updateTarget_action(taker, "take:"_sel);
    bridge->colorChangedAction(panel);
    EXPECT_EQ(taker->count, 0) << "it has left when it was asked";
    const Ref<ColorTaker> other = make<ColorTaker>();
    taker->whenAsked = [&] { bridge->updateTarget_action(other, "take:"_sel); };
    bridge->updateTarget_action(taker, "take:"_sel);
    bridge->colorChangedAction(panel);
    EXPECT_EQ(taker->count, 0);
    EXPECT_EQ(other->count, 1) << "it has put another one in its place";
    const Ref<NSObject> dumb = make<NSObject>();
    taker->whenAsked = [&] { bridge->updateTarget_action(dumb, "take:"_sel); };
    bridge->updateTarget_action(taker, "take:"_sel);
    EXPECT_NO_THROW(bridge->colorChangedAction(panel)) << "one that takes no colours";
    taker->whenAsked = [&] { taker = nullptr; };
    const Weak<ColorTaker> watched(taker);
    bridge->updateTarget_action(taker, "take:"_sel);
    bridge->colorChangedAction(panel);
    EXPECT_EQ(watched.lock(), nullptr) << "asking does not keep it";
}

TEST_F(ColorPanelBridge, handsOnTheSharedPanelsColorWhicheverPanelHasChanged) {
    const Ref<NSColorPanel> other = make<NSColorPanel>();
    panel->setColor(gray(0.25));
    bridge->updateTarget_action(taker, "take:"_sel);
    other->setColor(gray(0.75));
    EXPECT_EQ(taker->count, 1);
    EXPECT_TRUE(taker->last->isEqual(gray(0.25)));
    bridge->colorChangedAction(other);
    EXPECT_TRUE(taker->last->isEqual(gray(0.75))) << "the action is about its own panel";
    bridge->colorChangedNotification(nullptr);
    EXPECT_TRUE(taker->last->isEqual(gray(0.25)));
    EXPECT_EQ(taker->count, 3);
}

TEST_F(ColorPanelBridge, aNullPanelHasNoColor) {
    bridge->updateTarget_action(taker, "take:"_sel);
    bridge->colorChangedAction(nullptr);
    EXPECT_EQ(taker->count, 1);
    EXPECT_EQ(taker->last, nullptr);
    send<void>(bridge, "colorChangedAction:"_sel, "no panel"_ns);
    EXPECT_EQ(taker->count, 2);
    EXPECT_EQ(taker->last, nullptr);
    EXPECT_EQ(weakTarget(nullptr), nullptr);
    EXPECT_FALSE(canBecomeKeyWindow(nullptr));
}

/// Writes down what it is told to be.
class NotingBridge : public _ZRColorPanelBridge {
    ZR_OBJECT(NotingBridge, _ZRColorPanelBridge)
  public:
    void noteTarget(NSObject* target) { log += target ? "target " : "no target "; }
    ZR_METHOD(noteTarget, "setTarget:")
    void noteAction(SEL action) { log += action ? "action " : "no action "; }
    ZR_METHOD(noteAction, "setAction:")

    std::string log;
};

TEST_F(ColorPanelBridge, forgetsTheTargetBeforeItTakesAnotherOne) {
    const Ref<NotingBridge> noting = make<NotingBridge>();
    noting->updateTarget_action(taker, "take:"_sel);
    EXPECT_EQ(std::exchange(noting->log, {}), "no target no action target action ");
    noting->presentColorPanelWithTarget_action(taker, "take:"_sel);
    EXPECT_EQ(noting->log, "no target no action target action ");
    EXPECT_EQ(noting->target(), nullptr);
    EXPECT_EQ(bridge->target(), nullptr) << "another bridge is not asked";
}

/// As any other window, by itself.
class WillingPanel : public NSColorPanel {
    ZR_OBJECT(WillingPanel, NSColorPanel)
};

TEST_F(ColorPanelBridge, noColorPanelOfTheProcessBecomesKey) {
    test::WindowToolkit toolkit;
    const Ref<NSWindow> document = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSRect{{0, 0}, {200, 100}},
                                                  NSUInteger{NSWindowStyleMaskTitled});
    document->makeKeyAndOrderFront(nullptr);
    const Ref<NSColorPanel> own = make<NSColorPanel>();
    const Ref<NSColorPanel> willing = make<WillingPanel>();
    for (const Ref<NSColorPanel>& one : {panel, own, willing}) {
        EXPECT_FALSE(one->canBecomeKeyWindow());
        EXPECT_FALSE(send<bool>(one, "canBecomeKeyWindow"_sel));
        EXPECT_FALSE(canBecomeKeyWindow(one));
        one->makeKeyAndOrderFront(nullptr);
        EXPECT_TRUE(one->isVisible());
        EXPECT_FALSE(one->isKeyWindow());
        EXPECT_TRUE(document->isKeyWindow());
    }
    document->orderOut(nullptr);
    EXPECT_EQ(NSApplication::sharedApplication()->keyWindow(), nullptr) << "even when nobody else is there";
}

} // namespace
} // namespace zr
