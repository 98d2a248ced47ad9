#include "view_testing.h"

#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/panel.h>

#include <QDialog>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QShortcut>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

namespace zr::test {
namespace {

/// A session that nobody ends would hang the whole program.
class Watchdog {
  public:
    Watchdog() {
        QObject::connect(&m_timer, &QTimer::timeout, [] {
            std::fputs("a modal session does not end\n", stderr);
            std::_Exit(1);
        });
        m_timer.start(10000);
    }

  private:
    QTimer m_timer;
};

/// Takes every click in its superview.
class TakingView : public LoggingView {
    ZR_OBJECT(TakingView, LoggingView)
  public:
    Ref<NSView> hitTest(NSPoint) override { return isTaking ? Ref<NSView>(this) : nullptr; }

    bool isTaking = true;
};

class ModalGate : public ViewWindow {
  protected:
    void SetUp() override {
        content->takesKeys = true;
        show();
        content->take();
        modal = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSRect{{500, 50}, {100, 100}},
                               NSUInteger(NSWindowStyleMaskTitled | NSWindowStyleMaskClosable));
        inside = loggingView({{0, 0}, {100, 100}});
        modal->setContentView(inside);
    }

    ~ModalGate() override {
        modal->orderOut(nullptr);
        modal = nullptr;
        inside = nullptr;
        settle();
    }

    /// Runs the window modally and does that meanwhile.
    NSInteger runWith(const std::function<void()>& work) {
        const Watchdog watchdog;
        QTimer::singleShot(0, qApp, [this, &work] {
            settle();
            content->take();
            inside->take();
            work();
            NSApplication::sharedApplication()->stopModalWithCode(7);
        });
        return NSApplication::sharedApplication()->runModalForWindow(modal);
    }

    /// As a click on the desktop's own close button does.
    static void closeAsUser(QWindow* window) {
        QCloseEvent event;
        QSpontaneKeyEvent::setSpontaneous(&event);
        qApp->notify(window, &event);
    }

    Ref<NSWindow> modal;
    Ref<LoggingView> inside;
};

TEST_F(ModalGate, otherWindowsGetNoInputDuringASession) {
    EXPECT_EQ(runWith([this] {
                  click(10, 10);
                  QTest::keyClick(handle(), Qt::Key_A);
                  turnWheel(handle(), {10, 10});
                  EXPECT_EQ(content->take(), "");
              }),
              7);
    click(10, 10);
    EXPECT_EQ(content->take(), "down up ");
}

// Some desktops activate whatever is clicked.
TEST_F(ModalGate, aWindowUnderASessionDoesNotBecomeKeyAndGivesTheKeyboardBack) {
    runWith([this] {
        ASSERT_TRUE(modal->isKeyWindow());
        host()->activateWindow();
        settle();
        EXPECT_FALSE(window->isKeyWindow());
        EXPECT_TRUE(modal->isKeyWindow());
        EXPECT_TRUE(eventually([this] { return qt::widget(modal.get())->isActiveWindow(); }));
    });
    host()->activateWindow();
    EXPECT_TRUE(eventually([this] { return window->isKeyWindow(); }));
}

TEST_F(ModalGate, theSessionsWindowGetsItsInput) {
    runWith([this] {
        QWindow* const shown = qt::widget(modal.get())->windowHandle();
        QTest::mouseClick(shown, Qt::LeftButton, {}, {10, 10});
        turnWheel(shown, {10, 10});
        EXPECT_EQ(inside->take(), "down up wheel ");
    });
}

TEST_F(ModalGate, aWindowUnderASessionCannotBeClosedByTheUserButByTheProgram) {
    runWith([this] {
        closeAsUser(handle());
        EXPECT_TRUE(host()->isVisible());
        EXPECT_TRUE(window->isVisible());
        window->performClose(nullptr);
        EXPECT_FALSE(window->isVisible());
        EXPECT_FALSE(host()->isVisible());
    });
}

// Qt does not say who closes a window, and a program that cannot close its own would be worse off.
TEST_F(ModalGate, aForeignWindowUnderASessionCanBeClosed) {
    QWidget plain;
    plain.show();
    settle();
    runWith([&plain] {
        EXPECT_TRUE(plain.close());
        EXPECT_FALSE(plain.isVisible());
    });
}

TEST_F(ModalGate, theUserMayCloseTheSessionsWindowWhichDoesNotEndTheSession) {
    bool hasGoneOn = false;
    runWith([&] {
        closeAsUser(qt::widget(modal.get())->windowHandle());
        EXPECT_FALSE(modal->isVisible());
        settle();
        hasGoneOn = NSApplication::sharedApplication()->modalWindow() == modal;
    });
    EXPECT_TRUE(hasGoneOn);
}

TEST_F(ModalGate, shortcutsOfOtherWindowsAreKeptOutToo) {
    QShortcut shortcut(QKeySequence(Qt::CTRL | Qt::Key_K), host());
    int activated = 0;
    QObject::connect(&shortcut, &QShortcut::activated, host(), [&activated] { ++activated; });
    QTest::keyClick(handle(), Qt::Key_K, Qt::ControlModifier);
    EXPECT_EQ(activated, 1);
    runWith([&] {
        host()->activateWindow();
        settle();
        QTest::keyClick(handle(), Qt::Key_K, Qt::ControlModifier);
    });
    EXPECT_EQ(activated, 1);
}

TEST_F(ModalGate, whatBelongsToTheSessionsWindowAndQtsOwnDialogsAreLetThrough) {
    runWith([this] {
        QWidget* const host = qt::widget(modal.get());
        QWidget helper(host, Qt::Tool);
        QPushButton inHelper(&helper);
        int clicked = 0;
        QObject::connect(&inHelper, &QPushButton::clicked, &helper, [&clicked] { ++clicked; });
        helper.show();
        settle();
        QTest::mouseClick(helper.windowHandle(), Qt::LeftButton, {}, {5, 5});
        EXPECT_EQ(clicked, 1);
        QDialog dialog;
        dialog.setModal(true);
        QPushButton inDialog(&dialog);
        QObject::connect(&inDialog, &QPushButton::clicked, &dialog, [&clicked] { ++clicked; });
        dialog.show();
        settle();
        QTest::mouseClick(dialog.windowHandle(), Qt::LeftButton, {}, {5, 5});
        EXPECT_EQ(clicked, 2);
        dialog.hide();
        QMenu menu;
        QObject::connect(menu.addAction("item"), &QAction::triggered, &menu, [&clicked] { ++clicked; });
        menu.popup({100, 100});
        settle();
        QTest::mouseClick(menu.windowHandle(), Qt::LeftButton, {},
                          menu.actionGeometry(menu.actions().first()).center());
        EXPECT_EQ(clicked, 3);
    });
}

TEST_F(ModalGate, aForeignWindowIsKeptOutUnlessItIsTheSessions) {
    QWidget plain;
    QPushButton button(&plain);
    int clicked = 0;
    QObject::connect(&button, &QPushButton::clicked, &plain, [&clicked] { ++clicked; });
    plain.show();
    settle();
    runWith([&] { QTest::mouseClick(plain.windowHandle(), Qt::LeftButton, {}, {5, 5}); });
    EXPECT_EQ(clicked, 0);
    QTest::mouseClick(plain.windowHandle(), Qt::LeftButton, {}, {5, 5});
    EXPECT_EQ(clicked, 1);
}

TEST_F(ModalGate, theInnerSessionIsTheOneThatCounts) {
    const auto inner = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSRect{{50, 500}, {100, 100}},
                                      NSUInteger(NSWindowStyleMaskTitled));
    runWith([&] {
        QTimer::singleShot(0, qApp, [&] {
            QTest::mouseClick(qt::widget(modal.get())->windowHandle(), Qt::LeftButton, {}, {10, 10});
            EXPECT_EQ(inside->take(), "");
            NSApplication::sharedApplication()->stopModalWithCode(3);
        });
        EXPECT_EQ(NSApplication::sharedApplication()->runModalForWindow(inner), 3);
        QTest::mouseClick(qt::widget(modal.get())->windowHandle(), Qt::LeftButton, {}, {10, 10});
        EXPECT_EQ(inside->take(), "down up ");
    });
    inner->orderOut(nullptr);
}

TEST_F(ModalGate, aPressThatBeginsASessionDoesNotKeepThePointerBehindIt) {
    const auto taking = make<TakingView>(&TakingView::initWithFrame, NSRect{{0, 0}, {10, 10}});
    content->addSubview(taking);
    taking->onEvent = [&] {
        taking->onEvent = nullptr;
        runWith([this] {
            QTest::mouseRelease(handle(), Qt::LeftButton, {}, pixel(50, 50));
            QTest::mouseClick(qt::widget(modal.get())->windowHandle(), Qt::LeftButton, {}, {10, 10});
            EXPECT_EQ(inside->take(), "down up ");
        });
    };
    taking->take();
    QTest::mousePress(handle(), Qt::LeftButton, {}, pixel(50, 50));
    EXPECT_EQ(taking->take(), "down ");
    taking->isTaking = false;
    click(50, 50);
    EXPECT_EQ(taking->take(), "");
    EXPECT_EQ(content->take(), "down up ");
}

TEST_F(ModalGate, whatAHandlerRaisesEndsTheSession) {
    const Watchdog watchdog;
    inside->onEvent = [] { NSException::raise(NSGenericException, "out of the session"); };
    QTimer::singleShot(0, qApp, [this] {
        settle();
        QTest::mouseClick(qt::widget(modal.get())->windowHandle(), Qt::LeftButton, {}, {10, 10});
    });
    EXPECT_THROW(NSApplication::sharedApplication()->runModalForWindow(modal), NSException);
    inside->onEvent = nullptr;
    EXPECT_EQ(NSApplication::sharedApplication()->modalWindow(), nullptr);
}

} // namespace
} // namespace zr::test
