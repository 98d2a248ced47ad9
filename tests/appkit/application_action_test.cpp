#include <zrbasic/platform/appkit/application.h>

#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/string.h>

#include <tests/foundation/checks.h>

#include <gtest/gtest.h>

#include <string>

namespace zr {
namespace {

/// Who was sent what, and by whom.
std::string* sent = nullptr;

class Receiver : public NSObject {
    ZR_OBJECT(Receiver, NSObject)
    ZR_METHOD(print, "print:")

    void print(NSObject* sender) { *sent += name + (sender ? " with a sender" : " without") + '\n'; }

    std::string name;
};

class ActingView : public NSView {
    ZR_OBJECT(ActingView, NSView)
    ZR_METHOD(save, "save:")

    bool acceptsFirstResponder() const override { return true; }
    void save(NSObject*) { *sent += "view\n"; }
};

class ActingWindow : public NSWindow {
    ZR_OBJECT(ActingWindow, NSWindow)
    ZR_METHOD(save, "save:")
    ZR_METHOD(send_, "post:")

    void save(NSObject*) { *sent += "window\n"; }
    void send_(NSObject*) { *sent += "window posts\n"; }
};

class Actions : public testing::Test {
  protected:
    Actions() {
        sent = &log;
        windowDelegate->name = "window's delegate";
        delegate->name = "delegate";
    }
    ~Actions() override {
        application->setDelegate(nullptr);
        window->orderOut(nullptr);
    }

    std::string log;
    const Ref<NSApplication> application = NSApplication::sharedApplication();
    const Ref<ActingWindow> window = make<ActingWindow>();
    const Ref<ActingView> view = make<ActingView>(&ActingView::initWithFrame, NSMakeRect(0, 0, 10, 10));
    const Ref<Receiver> windowDelegate = make<Receiver>();
    const Ref<Receiver> delegate = make<Receiver>();
};

TEST_F(Actions, goToTheirTarget) {
    delegate->name = "target";
    EXPECT_TRUE(application->sendAction_to_from("print:"_sel, delegate, window));
    EXPECT_TRUE(send<bool>(application, "sendAction:to:from:"_sel, "print:"_sel, delegate, nullptr));
    EXPECT_EQ(log, "target with a sender\ntarget without\n");
    application->setDelegate(delegate);
    EXPECT_FALSE(application->sendAction_to_from("print:"_sel, make<NSObject>(), nullptr))
        << "one that does not have it, and nobody else";
    EXPECT_FALSE(application->sendAction_to_from(SEL(), delegate, nullptr));
    EXPECT_FALSE(application->sendAction_to_from("print:"_sel, NSNull::null(), nullptr));
    EXPECT_EQ(log, "target with a sender\ntarget without\n");
}

TEST_F(Actions, withoutATargetGoAlongTheKeyWindow) {
    window->contentView()->addSubview(view);
    window->makeKeyAndOrderFront(nullptr);
    EXPECT_EQ(application->targetForAction("save:"_sel), window);
    ASSERT_TRUE(window->makeFirstResponder(view));
    EXPECT_EQ(application->targetForAction("save:"_sel), view);
    EXPECT_TRUE(application->sendAction_to_from("save:"_sel, nullptr, nullptr));
    EXPECT_TRUE(application->sendAction_to_from("post:"_sel, nullptr, nullptr));
    EXPECT_EQ(log, "view\nwindow posts\n");
    window->orderOut(nullptr);
    EXPECT_FALSE(application->sendAction_to_from("save:"_sel, nullptr, nullptr)) << "there is no key window";
}

TEST_F(Actions, withoutATargetReachTheDelegatesLast) {
    application->setDelegate(delegate);
    window->setDelegate(windowDelegate);
    window->makeKeyAndOrderFront(nullptr);
    application->sendAction_to_from("print:"_sel, nullptr, window);
    window->setDelegate(nullptr);
    application->sendAction_to_from("print:"_sel, nullptr, window);
    EXPECT_EQ(log, "window's delegate with a sender\ndelegate with a sender\n");
    EXPECT_EQ(application->targetForAction("unhide:"_sel), application) << "the application itself";
    EXPECT_EQ(application->targetForAction("nobodyHasThis:"_sel), nullptr);
    EXPECT_EQ(application->targetForAction(SEL()), nullptr);
    EXPECT_FALSE(application->sendAction_to_from("nobodyHasThis:"_sel, nullptr, nullptr));
    EXPECT_FALSE(application->sendAction_to_from(SEL(), nullptr, nullptr));
}

} // namespace
} // namespace zr
