#include <zrbasic/platform/appkit/button.h>
#include <zrbasic/ui/control.h>

#include <gtest/gtest.h>

namespace zr {
namespace {

/// Counts what it is sent.
class ControlTarget : public NSObject {
    ZR_OBJECT(ControlTarget, NSObject)
  public:
    void act(NSObject* sender) {
        ++count;
        last = id(sender);
    }
    ZR_METHOD(act, "act:")

    int count = 0;
    id last;
};

/// Writes down what it is told to be.
class NotingControl : public NSButton {
    ZR_OBJECT(NotingControl, NSButton)
  public:
    void noteTarget(NSObject*) { log += "target "; }
    ZR_METHOD(noteTarget, "setTarget:")
    void noteAction(SEL) { log += "action "; }
    ZR_METHOD(noteAction, "setAction:")

    std::string log;
};

TEST(ControlHelper, theTargetIsSentTheAction) {
    const Ref<NSButton> button = make<NSButton>(&NSButton::initWithFrame, NSRect{{0, 0}, {80, 24}});
    const Ref<ControlTarget> target = make<ControlTarget>();
    addTarget_action(button, target, "act:"_sel);
    EXPECT_EQ(button->target(), target);
    EXPECT_EQ(button->action(), "act:"_sel);
    button->performClick(nullptr);
    EXPECT_EQ(target->count, 1);
    EXPECT_EQ(target->last, button);
}

TEST(ControlHelper, anotherTargetTakesThePlaceOfTheFirst) {
    const Ref<NSButton> button = make<NSButton>(&NSButton::initWithFrame, NSRect{{0, 0}, {80, 24}});
    const Ref<ControlTarget> first = make<ControlTarget>();
    const Ref<ControlTarget> second = make<ControlTarget>();
    addTarget_action(button, first, "act:"_sel);
    send<void>(button, "addTarget:action:"_sel, second, "act:"_sel);
    button->performClick(nullptr);
    EXPECT_EQ(first->count, 0) << "there is one target, for all that the name says";
    EXPECT_EQ(second->count, 1);
    addTarget_action(button, nullptr, {});
    EXPECT_EQ(button->target(), nullptr);
    EXPECT_FALSE(button->action());
    addTarget_action(nullptr, first, "act:"_sel);
    EXPECT_EQ(first->count, 0);
}

TEST(ControlHelper, setsTheTargetBeforeTheAction) {
    const Ref<NotingControl> control = make<NotingControl>();
    addTarget_action(control, control, "act:"_sel);
    EXPECT_EQ(control->log, "target action ");
}

} // namespace
} // namespace zr
