#include "view_testing.h"

#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/button.h>
#include <zrbasic/platform/appkit/panel.h>
#include <zrbasic/platform/qt/window_peer_p.h>
#include <zrbasic/platform/runtime/exception.h>

#include <QScreen>

namespace zr::test {
namespace {

/// Asked whether a window may close.
class ClosingDelegate : public NSObject {
    ZR_OBJECT(ClosingDelegate, NSObject)
  public:
    bool windowShouldClose(NSObject*) {
        ++asked;
        return agrees;
    }
    ZR_METHOD(windowShouldClose, "windowShouldClose:")

    int asked = 0;
    bool agrees = true;
};

/// Cannot say what its buttons are.
class BrokenWindow : public NSWindow {
    ZR_OBJECT(BrokenWindow, NSWindow)
  public:
    Ref<NSButton> standardWindowButton(NSUInteger button) override {
        if (isBroken) {
            NSException::raise(NSGenericException, "no buttons");
        }
        return NSWindow::standardWindowButton(button);
    }
    bool isBroken = false;
};

class WindowPeers : public ViewWindow {
  protected:
    /// Where Qt has that content on the screen.
    static QRect desktop(NSRect content) { return qt::desktopRect(content); }
};

TEST_F(WindowPeers, nothingIsMadeBeforeTheWindowIsShown) {
    EXPECT_EQ(host(), nullptr);
    window->setTitle("early"_ns);
    window->orderFront(nullptr);
    ASSERT_NE(host(), nullptr);
    EXPECT_TRUE(host()->isVisible());
    EXPECT_EQ(host()->windowTitle(), "early");
    window->setTitle("late"_ns);
    EXPECT_EQ(host()->windowTitle(), "late");
    window->orderOut(nullptr);
    EXPECT_FALSE(host()->isVisible());
    EXPECT_EQ(qt::widget(static_cast<NSWindow*>(nullptr)), nullptr);
}

TEST_F(WindowPeers, theContentLiesWhereTheFrameLessTheTitleIs) {
    show();
    const int height = QGuiApplication::primaryScreen()->geometry().height();
    EXPECT_EQ(host()->geometry(), QRect(50, height - 350, 400, 300));
    EXPECT_EQ(widgetOf(content)->geometry(), QRect(0, 0, 400, 300));
    window->setFrameOrigin({60, 70});
    EXPECT_EQ(host()->geometry(), QRect(60, height - 370, 400, 300));
    window->setContentSize({200, 100});
    EXPECT_EQ(host()->geometry(), QRect(60, height - 170, 200, 100));
    EXPECT_EQ(widgetOf(content)->size(), QSize(200, 100));
}

TEST_F(WindowPeers, aFrameThatIsSetIsKeptExactly) {
    show();
    window->setFrame_display({{312.5, 100.25}, {200.75, 150.5}}, true);
    double x = 312.5;
    for (int i = 0; i < 20; ++i) {
        x += 4.01;
        window->setFrameOrigin({window->frame().origin.x + 4.01, 100.25});
        settle();
    }
    EXPECT_EQ(window->frame(), NSMakeRect(x, 100.25, 200.75, 150.5));
    QTest::qWait(300);
    EXPECT_EQ(window->frame(), NSMakeRect(x, 100.25, 200.75, 150.5));
    EXPECT_EQ(content->frame().size.width, 200.75);
}

TEST_F(WindowPeers, whatTheUserMovesOrResizesIsTakenOver) {
    show();
    window->setFrame_display({{100.5, 100.25}, {200.75, 150.5}}, true);
    settle();
    const NSRect before = window->frame();
    host()->move(host()->x() + 30, host()->y());
    EXPECT_TRUE(eventually([&] { return window->frame().origin.x != before.origin.x; }));
    // 100.5 is on the pixel 101.
    EXPECT_EQ(window->frame(), NSMakeRect(131, 100.25, 200.75, 150.5));
    host()->resize(host()->width() + 10, host()->height());
    EXPECT_TRUE(eventually([&] { return window->frame().size.width != before.size.width; }));
    EXPECT_EQ(window->frame(), NSMakeRect(131, 100.25, double(host()->width()), 150.5));
    EXPECT_EQ(content->frame().size.width, host()->width());
    EXPECT_EQ(widgetOf(content)->width(), host()->width());
}

TEST_F(WindowPeers, aFrameWithoutExtentStaysOne) {
    show();
    window->setFrame_display({{10, 10}, {-20, 0}}, true);
    settle();
    QTest::qWait(300);
    EXPECT_EQ(window->frame(), NSMakeRect(10, 10, -20, 0));
}

TEST_F(WindowPeers, theStyleSaysWhatTheDesktopPutsAround) {
    show();
    EXPECT_TRUE(host()->windowFlags().testFlag(Qt::WindowCloseButtonHint));
    EXPECT_FALSE(host()->windowFlags().testFlag(Qt::WindowMinimizeButtonHint));
    window->setStyleMask(NSWindowStyleMaskTitled);
    EXPECT_TRUE(host()->isVisible());
    EXPECT_FALSE(host()->windowFlags().testFlag(Qt::WindowCloseButtonHint));
    EXPECT_EQ(host()->minimumSize(), host()->size());
    EXPECT_EQ(host()->maximumSize(), host()->size());
    window->setStyleMask(NSWindowStyleMaskBorderless);
    EXPECT_TRUE(host()->windowFlags().testFlag(Qt::FramelessWindowHint));
    EXPECT_TRUE(host()->windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
    EXPECT_EQ(host()->height(), 300);
}

TEST_F(WindowPeers, aPaletteStaysOnTopAndTakesNoKeys) {
    const auto panel = make<NSPanel>(
        &NSPanel::initWithContentRect_styleMask, NSRect{{0, 0}, {90, 90}},
        NSUInteger(NSWindowStyleMaskTitled | NSWindowStyleMaskUtilityWindow | NSWindowStyleMaskNonactivatingPanel));
    panel->setFloatingPanel(true);
    panel->orderFront(nullptr);
    const QWidget* const widget = qt::widget(panel.get());
    ASSERT_NE(widget, nullptr);
    EXPECT_EQ(widget->windowType(), Qt::Tool);
    EXPECT_TRUE(widget->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(widget->windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
    panel->orderOut(nullptr);
}

TEST_F(WindowPeers, usersCannotGoBeyondTheLimitsButFramesCan) {
    window->setMinSize({100, 80});
    window->setMaxSize({500, 400});
    show();
    const int title = int(window->frame().size.height) - 300;
    EXPECT_EQ(host()->minimumSize(), QSize(100, 80 - title));
    EXPECT_EQ(host()->maximumSize(), QSize(500, 400 - title));
    window->setContentSize({50, 600});
    EXPECT_EQ(host()->size(), QSize(50, 600));
    EXPECT_EQ(window->frame().size, NSMakeSize(50, 600 + title));
}

TEST_F(WindowPeers, theUserClosesOnlyWhatMayBeClosed) {
    const Ref<ClosingDelegate> delegate = make<ClosingDelegate>();
    window->setDelegate(delegate);
    show();
    delegate->agrees = false;
    host()->close();
    EXPECT_EQ(delegate->asked, 1);
    EXPECT_TRUE(host()->isVisible());
    window->standardWindowButton(NSWindowCloseButton)->setHidden(true);
    host()->close();
    EXPECT_EQ(delegate->asked, 1);
    EXPECT_TRUE(host()->isVisible());
    EXPECT_FALSE(host()->windowFlags().testFlag(Qt::WindowCloseButtonHint));
    window->standardWindowButton(NSWindowCloseButton)->setHidden(false);
    delegate->agrees = true;
    host()->close();
    EXPECT_EQ(delegate->asked, 2);
    EXPECT_FALSE(host()->isVisible());
    EXPECT_FALSE(window->isVisible());
}

TEST_F(WindowPeers, whatAWindowRaisesThatIsAskedForItsCloseButtonDoesNotReachQt) {
    const auto broken = make<BrokenWindow>();
    broken->orderFront(nullptr);
    QWidget* const shown = qt::widget(broken.get());
    ASSERT_NE(shown, nullptr);
    broken->isBroken = true;
    EXPECT_NO_THROW(shown->close());
    EXPECT_TRUE(broken->isVisible());
    broken->isBroken = false;
    shown->close();
    EXPECT_FALSE(broken->isVisible());
}

TEST_F(WindowPeers, theWindowThatTheDesktopActivatesIsKey) {
    show();
    EXPECT_TRUE(window->isKeyWindow());
    const auto other = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSRect{{0, 0}, {90, 90}},
                                      NSUInteger(NSWindowStyleMaskTitled));
    other->makeKeyAndOrderFront(nullptr);
    ASSERT_TRUE(eventually([&] { return qt::widget(other.get())->isActiveWindow(); }));
    EXPECT_TRUE(other->isKeyWindow());
    host()->activateWindow();
    EXPECT_TRUE(eventually([&] { return window->isKeyWindow(); }));
    EXPECT_TRUE(NSApplication::sharedApplication()->isActive());
    other->orderOut(nullptr);
}

TEST_F(WindowPeers, theLastOneThatWasMadeKeyStaysKey) {
    show();
    const auto other = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSRect{{500, 50}, {100, 80}},
                                      NSUInteger(NSWindowStyleMaskTitled));
    other->makeKeyAndOrderFront(nullptr);
    // Both are under way on the desktop now, and must not take turns for ever.
    window->makeKeyWindow();
    settle();
    EXPECT_TRUE(eventually([this] { return window->isKeyWindow() && host()->isActiveWindow(); }));
    settle();
    EXPECT_TRUE(window->isKeyWindow());
    EXPECT_FALSE(other->isKeyWindow());
    other->orderOut(nullptr);
}

TEST_F(WindowPeers, qtsKeyboardIsWhereTheFirstResponderIs) {
    const Ref<LoggingView> one = add({{0, 0}, {50, 50}});
    const Ref<LoggingView> two = add({{60, 0}, {50, 50}});
    one->takesKeys = two->takesKeys = true;
    show();
    EXPECT_EQ(QApplication::focusWidget(), host());
    window->makeFirstResponder(one);
    EXPECT_EQ(QApplication::focusWidget(), widgetOf(one));
    window->makeFirstResponder(nullptr);
    EXPECT_EQ(QApplication::focusWidget(), host());
    widgetOf(two)->setFocus();
    EXPECT_EQ(window->firstResponder(), two);
    two->removeFromSuperview();
    EXPECT_EQ(window->firstResponder(), window);
    QTest::keyClick(handle(), Qt::Key_A);
    EXPECT_EQ(two->log.find("keyDown"), std::string::npos);
}

TEST_F(WindowPeers, theTabKeyGoesThroughTheViewsThatTakeKeys) {
    const Ref<LoggingView> top = add({{0, 200}, {50, 50}});
    const Ref<LoggingView> deaf = add({{0, 100}, {50, 50}});
    const Ref<LoggingView> low = add({{0, 0}, {50, 50}});
    top->takesKeys = low->takesKeys = top->passesKeysOn = low->passesKeysOn = true;
    show();
    window->makeFirstResponder(top);
    QTest::keyClick(handle(), Qt::Key_Tab);
    EXPECT_EQ(window->firstResponder(), low);
    EXPECT_EQ(QApplication::focusWidget(), widgetOf(low));
    QTest::keyClick(handle(), Qt::Key_Tab);
    EXPECT_EQ(window->firstResponder(), top);
    QTest::keyClick(handle(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(window->firstResponder(), low);
    // A view that deals with the key itself keeps it.
    low->passesKeysOn = false;
    QTest::keyClick(handle(), Qt::Key_Tab);
    EXPECT_EQ(window->firstResponder(), low);
}

TEST_F(WindowPeers, theContentCanBeExchanged) {
    show();
    const Ref<LoggingView> fresh = loggingView({{0, 0}, {10, 10}});
    QWidget* const before = widgetOf(content);
    window->setContentView(fresh);
    ASSERT_NE(widgetOf(fresh), nullptr);
    EXPECT_EQ(widgetOf(fresh)->parentWidget(), host());
    EXPECT_EQ(widgetOf(fresh)->geometry(), QRect(0, 0, 400, 300));
    EXPECT_TRUE(widgetOf(fresh)->isVisible());
    EXPECT_EQ(before->parentWidget(), nullptr);
    EXPECT_FALSE(before->isVisible());
}

TEST_F(WindowPeers, aShakeMovesTheWidgetAloneAndEndsAtTheFrame) {
    show();
    window->setFrameOrigin({100.5, 100});
    QTest::qWait(300);
    const QRect before = host()->geometry();
    int mostRight = before.x();
    const NSPoint ways[] = {{100.5, 100}, {140, 100}, {60, 100}, {140, 100}, {100.5, 100}};
    window->peer()->playFrameOrigins(ways, 0.2);
    EXPECT_TRUE(eventually([&] {
        mostRight = std::max(mostRight, host()->x());
        EXPECT_EQ(window->frame().origin, NSMakePoint(100.5, 100));
        return mostRight > before.x() + 5;
    }));
    EXPECT_TRUE(eventually([&] { return host()->findChildren<QVariantAnimation*>().isEmpty(); }));
    EXPECT_EQ(host()->geometry(), before);
    EXPECT_EQ(window->frame().origin, NSMakePoint(100.5, 100));
    window->peer()->playFrameOrigins(ways, 0);
    window->peer()->playFrameOrigins({}, 1);
    settle();
    EXPECT_EQ(host()->geometry(), before);
}

TEST_F(WindowPeers, aWidgetMayGoWhileItShakes) {
    show();
    const NSPoint ways[] = {{100, 100}, {140, 100}, {60, 100}, {100, 100}};
    window->peer()->playFrameOrigins(ways, 60);
    ASSERT_FALSE(host()->findChildren<QVariantAnimation*>().isEmpty());
    delete host();
    EXPECT_EQ(host(), nullptr);
    window->orderFront(nullptr);
    ASSERT_NE(host(), nullptr);
    window->setFrameOrigin({200, 150});
    EXPECT_TRUE(eventually([&] {
        return host()->geometry() == desktop(window->contentRectForFrameRect(window->frame()));
    })) << "what shook is gone, and nothing keeps the new one from its place";
    window->peer()->playFrameOrigins(ways, 60);
    window->close();
}

TEST_F(WindowPeers, aMiniaturizedWindowComesBack) {
    show();
    window->miniaturize(nullptr);
    EXPECT_TRUE(eventually([&] { return host()->isMinimized(); }));
    EXPECT_TRUE(window->isMiniaturized());
    window->deminiaturize(nullptr);
    EXPECT_TRUE(eventually([&] { return !host()->isMinimized(); }));
    EXPECT_FALSE(window->isMiniaturized());
    EXPECT_EQ(window->contentRectForFrameRect(window->frame()), NSMakeRect(50, 50, 400, 300));
}

} // namespace
} // namespace zr::test
