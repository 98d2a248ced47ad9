#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/window_controller.h>
#include <zrbasic/platform/foundation/notification_center.h>
#include <zrbasic/platform/foundation/process_info.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/message.h>

#include <gtest/gtest.h>
#include <functional>
#include <string>

namespace zr {
namespace {

constexpr NSUInteger titled = NSWindowStyleMaskTitled | NSWindowStyleMaskClosable;

/// On a system whose titles are 28 points high.
class Window : public testing::Test {
  protected:
    static Ref<NSWindow> window(NSRect content = {{10, 20}, {200, 100}}, NSUInteger style = titled) {
        return make<NSWindow>(&NSWindow::initWithContentRect_styleMask, content, style);
    }
    void TearDown() override {
        const auto shown = NSApplication::sharedApplication()->orderedWindows();
        for (const id& element : shown->elements())
            cast<NSWindow>(element)->orderOut(nullptr);
    }

    SystemVersionOverride m_system{{11, 0, 0}};
};

/// Writes down what it is told; refuses what it is told to refuse.
class Focus : public NSView {
    ZR_OBJECT(Focus, NSView)
  public:
    bool becomeFirstResponder() override {
        heard += "become ";
        return accepts;
    }
    bool resignFirstResponder() override {
        heard += "resign ";
        return resigns;
    }
    void viewWillMoveToWindow(NSWindow* window) override { heard += window ? "will " : "leaves "; }
    void viewDidMoveToWindow() override { heard += window() ? "did " : "left "; }

    std::string heard;
    bool accepts = true;
    bool resigns = true;
};

class Delegate : public NSObject {
    ZR_OBJECT(Delegate, NSObject)
  public:
    bool windowShouldClose(NSObject*) {
        heard += "should ";
        return agrees;
    }
    ZR_METHOD(windowShouldClose, "windowShouldClose:")
    void windowWillClose(NSObject*) { heard += "will "; }
    ZR_METHOD(windowWillClose, "windowWillClose:")

    std::string heard;
    bool agrees = true;
};

TEST_F(Window, hasItsContentBelowTheTitle) {
    const auto made = window();
    EXPECT_EQ(made->frame(), (NSRect{{10, 20}, {200, 128}}));
    EXPECT_EQ(made->contentView()->frame(), (NSRect{{0, 0}, {200, 100}}));
    made->setContentSize({50, 60});
    EXPECT_EQ(made->frame(), (NSRect{{10, 20}, {50, 88}}));
    made->setFrame_display({{1.5, 2.5}, {300, 128}}, true);
    EXPECT_EQ(made->contentView()->frame().size, (NSSize{300, 100}));
    made->setStyleMask(NSWindowStyleMaskBorderless);
    EXPECT_EQ(made->frame(), (NSRect{{1.5, 2.5}, {300, 100}})) << "the content keeps its extent";
    EXPECT_EQ(made->contentRectForFrameRect({{0, 0}, {5, 5}}), (NSRect{{0, 0}, {5, 5}}));
}

TEST_F(Window, hasALowerTitleOnAnOlderSystem) {
    const SystemVersionOverride catalina({10, 15, 0});
    EXPECT_EQ(window()->frame().size.height, 122);
}

TEST_F(Window, convertsToTheScreenAndBack) {
    const auto made = window();
    EXPECT_EQ(made->convertRectToScreen({{1, 2}, {3, 4}}), (NSRect{{11, 22}, {3, 4}}));
    EXPECT_EQ(made->convertRectFromScreen({{11, 22}, {3, 4}}), (NSRect{{1, 2}, {3, 4}}));
}

TEST_F(Window, isTheWindowOfAllViewsInIt) {
    const auto made = window();
    const auto outer = make<Focus>();
    const auto inner = make<Focus>();
    outer->addSubview(inner);
    EXPECT_EQ(inner->heard, "");
    made->contentView()->addSubview(outer);
    EXPECT_EQ(inner->window(), made);
    EXPECT_EQ(outer->heard, "will did ");
    EXPECT_EQ(inner->heard, "will did ");
    made->contentView()->addSubview(outer);
    EXPECT_EQ(inner->heard, "will did ") << "the window is the same";
    outer->removeFromSuperview();
    EXPECT_EQ(inner->heard, "will did leaves left ");
    EXPECT_EQ(inner->window(), nullptr);
}

TEST_F(Window, takesAnotherContentView) {
    const auto made = window();
    const auto content = make<Focus>();
    const auto before = made->contentView();
    made->setContentView(content);
    EXPECT_EQ(content->heard, "will did ");
    EXPECT_EQ(content->frame(), (NSRect{{0, 0}, {200, 100}}));
    EXPECT_EQ(content->nextResponder(), made);
    EXPECT_EQ(before->window(), nullptr);
    made->setContentView(content);
    EXPECT_EQ(content->heard, "will did ");
    const auto other = window();
    other->setContentView(content);
    EXPECT_EQ(content->window(), other);
    EXPECT_NE(made->contentView(), content);
    made->setContentView(nullptr);
    EXPECT_NE(made->contentView(), nullptr);
}

TEST_F(Window, endsBeforeItsViews) {
    auto made = window();
    const auto content = made->contentView();
    const auto inner = make<NSView>();
    content->addSubview(inner);
    made->makeFirstResponder(inner);
    made = nullptr;
    EXPECT_EQ(inner->window(), nullptr);
    EXPECT_EQ(content->nextResponder(), nullptr);
    inner->removeFromSuperview();
}

TEST_F(Window, handsKeyPressesToOneResponderFirst) {
    const auto made = window();
    const auto first = make<Focus>();
    const auto second = make<Focus>();
    made->contentView()->addSubview(first);
    made->contentView()->addSubview(second);
    first->heard = second->heard = "";
    EXPECT_EQ(made->firstResponder(), made);
    EXPECT_TRUE(made->makeFirstResponder(first));
    EXPECT_TRUE(made->makeFirstResponder(first));
    EXPECT_EQ(first->heard, "become ");
    EXPECT_TRUE(made->makeFirstResponder(second));
    EXPECT_EQ(first->heard, "become resign ");
    EXPECT_EQ(made->firstResponder(), second);
    second->resigns = false;
    EXPECT_FALSE(made->makeFirstResponder(first));
    EXPECT_EQ(made->firstResponder(), second);
    second->resigns = true;
    first->accepts = false;
    EXPECT_TRUE(made->makeFirstResponder(first));
    EXPECT_EQ(made->firstResponder(), made) << "nobody else is left";
    EXPECT_TRUE(made->makeFirstResponder(nullptr));
}

TEST_F(Window, takesKeyPressesBackFromAViewThatLeaves) {
    const auto made = window();
    const auto outer = make<NSView>();
    const auto focus = make<Focus>();
    outer->addSubview(focus);
    made->contentView()->addSubview(outer);
    made->makeFirstResponder(focus);
    focus->resigns = false;
    focus->heard = "";
    outer->removeFromSuperview();
    EXPECT_EQ(made->firstResponder(), made);
    EXPECT_EQ(focus->heard, "leaves resign left ");
}

TEST_F(Window, isShownInFrontAndHiddenAgain) {
    const auto application = NSApplication::sharedApplication();
    const auto a = window();
    const auto b = window();
    EXPECT_FALSE(a->isVisible());
    a->orderFront(nullptr);
    b->orderFront(nullptr);
    EXPECT_EQ(application->orderedWindows()->firstObject(), b);
    a->orderWindow_relativeTo(NSWindowAbove, b->windowNumber());
    EXPECT_EQ(application->orderedWindows()->firstObject(), a);
    a->orderWindow_relativeTo(NSWindowBelow, 0);
    EXPECT_EQ(application->orderedWindows()->firstObject(), b);
    b->orderWindow_relativeTo(NSWindowOut, 0);
    EXPECT_FALSE(b->isVisible());
    EXPECT_TRUE(a->isVisible());
    EXPECT_EQ(application->windowWithWindowNumber(b->windowNumber()), b) << "hidden windows are windows too";
    EXPECT_EQ(application->windowWithWindowNumber(-1), nullptr);
    EXPECT_NE(a->windowNumber(), b->windowNumber());
}

TEST_F(Window, isKeptWhileItIsShown) {
    const auto application = NSApplication::sharedApplication();
    auto made = window();
    const NSInteger number = made->windowNumber();
    made->orderFront(nullptr);
    made = nullptr;
    made = application->windowWithWindowNumber(number);
    ASSERT_NE(made, nullptr);
    made->close();
    made = nullptr;
    EXPECT_EQ(application->windowWithWindowNumber(number), nullptr);
}

TEST_F(Window, becomesKeyOneAtATime) {
    const auto center = NSNotificationCenter::defaultCenter();
    std::string heard;
    const id become = center->addObserverForName_object_usingBlock(
        NSWindowDidBecomeKeyNotification(), nullptr,
        [&](NSNotification* told) { heard += "+" + cast<NSWindow>(told->object())->title()->utf8(); });
    const id resign = center->addObserverForName_object_usingBlock(
        NSWindowDidResignKeyNotification(), nullptr,
        [&](NSNotification* told) { heard += "-" + cast<NSWindow>(told->object())->title()->utf8(); });
    const auto a = window();
    const auto b = window();
    const auto bare = window({{0, 0}, {10, 10}}, NSWindowStyleMaskBorderless);
    a->setTitle("a"_ns);
    b->setTitle("b"_ns);
    a->makeKeyAndOrderFront(nullptr);
    b->makeKeyAndOrderFront(nullptr);
    bare->makeKeyAndOrderFront(nullptr);
    EXPECT_TRUE(b->isKeyWindow());
    EXPECT_FALSE(bare->canBecomeKeyWindow());
    b->orderOut(nullptr);
    EXPECT_TRUE(a->isKeyWindow()) << "the next one that can be";
    a->orderOut(nullptr);
    EXPECT_EQ(NSApplication::sharedApplication()->keyWindow(), nullptr);
    EXPECT_EQ(heard, "+a-a+b-b+a-a");
    center->removeObserver(become);
    center->removeObserver(resign);
}

TEST_F(Window, tellsWhenItCloses) {
    const auto center = NSNotificationCenter::defaultCenter();
    const auto made = window();
    const auto delegate = make<Delegate>();
    made->setDelegate(delegate);
    made->orderFront(nullptr);
    int told = 0;
    const id observer = center->addObserverForName_object_usingBlock(
        NSWindowWillCloseNotification(), made, [&](NSNotification* notification) {
            ++told;
            EXPECT_TRUE(made->isVisible()) << "it is about to";
            cast<NSWindow>(notification->object())->close();
        });
    made->close();
    EXPECT_EQ(told, 1);
    EXPECT_FALSE(made->isVisible());
    EXPECT_EQ(delegate->heard, "will ");
    made->orderFront(nullptr);
    made->close();
    EXPECT_EQ(told, 2) << "it can be shown and closed again";
    center->removeObserver(observer);
}

TEST_F(Window, isClosedByTheUserOnlyIfItMayBe) {
    const auto made = window();
    const auto delegate = make<Delegate>();
    made->setDelegate(delegate);
    made->orderFront(nullptr);
    delegate->agrees = false;
    made->performClose(nullptr);
    EXPECT_TRUE(made->isVisible());
    delegate->agrees = true;
    made->performClose(nullptr);
    EXPECT_FALSE(made->isVisible());
    EXPECT_EQ(delegate->heard, "should should will ");
    const auto fixed = window({{0, 0}, {10, 10}}, NSWindowStyleMaskTitled);
    fixed->orderFront(nullptr);
    fixed->performClose(nullptr);
    EXPECT_TRUE(fixed->isVisible()) << "it has no close button";
}

TEST_F(Window, copiesItsTextsAndHasATitleAlways) {
    const auto made = make<NSWindow>();
    EXPECT_EQ(made->title()->utf8(), "");
    made->setTitle("Quotes"_ns);
    made->setIdentifier("quotes"_ns);
    EXPECT_EQ(made->title()->utf8(), "Quotes");
    EXPECT_EQ(made->identifier()->utf8(), "quotes");
    made->setTitle(nullptr);
    made->setIdentifier(nullptr);
    EXPECT_EQ(made->title()->utf8(), "");
    EXPECT_EQ(made->identifier(), nullptr);
    EXPECT_FALSE(made->isModalPanel());
}

using Controller = Window;

TEST_F(Controller, keepsAndShowsItsWindow) {
    auto made = window();
    const auto controller = make<NSWindowController>(&NSWindowController::initWithWindow, made.get());
    EXPECT_EQ(made->windowController(), controller);
    made = nullptr;
    ASSERT_NE(controller->window(), nullptr);
    controller->showWindow(nullptr);
    EXPECT_TRUE(controller->window()->isKeyWindow());
    controller->close();
    EXPECT_FALSE(controller->window()->isVisible());
}

TEST_F(Controller, givesItsWindowUpForAnother) {
    const auto first = window();
    const auto second = window();
    const auto controller = make<NSWindowController>(&NSWindowController::initWithWindow, first.get());
    controller->setWindow(second);
    EXPECT_EQ(first->windowController(), nullptr);
    EXPECT_EQ(second->windowController(), controller);
    const auto other = make<NSWindowController>(&NSWindowController::initWithWindow, second.get());
    controller->setWindow(nullptr);
    EXPECT_EQ(second->windowController(), other) << "another one has taken its place";
    controller->showWindow(nullptr);
    controller->close();
}

} // namespace
} // namespace zr
