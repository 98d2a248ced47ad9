#include <zrbasic/platform/appkit/panel.h>
#include <zrbasic/platform/appkit/window_controller.h>
#include <zrbasic/platform/foundation/notification_center.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/run_loop.h>
#include <zrbasic/ui/window.h>

#include <tests/appkit/window_testing.h>
#include <tests/foundation/loop_testing.h>

namespace zr {
namespace {

using test::later;

/// A panel that is made to be run modally.
class ModalPanel : public NSPanel {
    ZR_OBJECT(ModalPanel, NSPanel)
  public:
    [[nodiscard]] bool isModalPanel() const override { return true; }
};

Ref<NSNotification> willClose(NSObject* object) {
    return NSNotification::notificationWithName_object(NSWindowWillCloseNotification(), object);
}

class ModalWindow : public test::LoopTest {
  protected:
    void SetUp() override {
        LoopTest::SetUp();
        m_application = NSApplication::sharedApplication();
        m_window = make<NSWindow>();
    }
    void TearDown() override {
        test::hideAllWindows();
        EXPECT_EQ(m_application->modalWindow(), nullptr);
        LoopTest::TearDown();
    }

    /// As an application does it that wants its windows to end their sessions.
    static void wireUp(NSWindow* window) {
        NSNotificationCenter::defaultCenter()->addObserver_selector_name_object(
            window, "windowWillClose:"_sel, NSWindowWillCloseNotification(), window);
    }

    Ref<NSApplication> m_application;
    Ref<NSWindow> m_window;
};

TEST_F(ModalWindow, isRunByItsControllerAndGivesTheResponse) {
    later([this] {
        EXPECT_EQ(m_application->modalWindow(), m_window);
        EXPECT_NE(m_window->windowController(), nullptr) << "a plain one for the time being";
        m_application->stopModalWithCode(7);
    });
    EXPECT_EQ(zr_runModal(m_window), 7);
    EXPECT_EQ(m_window->windowController(), nullptr) << "nobody keeps it";
    const auto controller = make<NSWindowController>(&NSWindowController::initWithWindow, m_window.get());
    later([this] { m_application->stopModalWithCode(8); });
    EXPECT_EQ(send<NSInteger>(m_window, "zr_runModal"_sel), 8);
    EXPECT_EQ(m_window->windowController(), controller);
}

/// Shows another window than its own.
class SwitchingController : public NSWindowController {
    ZR_OBJECT(SwitchingController, NSWindowController)
  public:
    [[nodiscard]] Ref<NSWindow> window() const override { return shown; }

    Ref<NSWindow> shown;
};

TEST_F(ModalWindow, isTheOneThatItsControllerNames) {
    const auto controller = make<SwitchingController>();
    m_window->setWindowController(controller);
    EXPECT_EQ(zr_runModal(m_window), NSModalResponseAbort) << "it names none";
    controller->shown = make<NSWindow>();
    later([&] {
        EXPECT_EQ(m_application->modalWindow(), controller->shown);
        m_application->stopModal();
    });
    EXPECT_EQ(zr_runModal(m_window), -1000);
    NSWindow* const none = nullptr;
    EXPECT_EQ(zr_runModal(none), 0);
}

TEST_F(ModalWindow, isClosedBeforeItsSessionEnds) {
    wireUp(m_window);
    std::string order;
    const id observer = NSNotificationCenter::defaultCenter()->addObserverForName_object_usingBlock(
        NSWindowWillCloseNotification(), m_window, [&](NSNotification*) {
            EXPECT_EQ(m_application->modalWindow(), m_window) << "the session is still on";
            order += "close ";
        });
    later([this] { stopModal(m_window); });
    EXPECT_EQ(zr_runModal(m_window), -1000);
    EXPECT_EQ(order, "close ");
    EXPECT_FALSE(m_window->isVisible());
    later([this] { stopModalWithResponse(m_window, NSModalResponseOK); });
    EXPECT_EQ(zr_runModal(m_window), NSModalResponseOK);
    EXPECT_EQ(order, "close close ");
    NSNotificationCenter::defaultCenter()->removeObserver(observer);
}

TEST_F(ModalWindow, endsWithItsOwnResponseEvenIfItIsAPanelThatStopsOnClosing) {
    const auto panel = make<ModalPanel>();
    wireUp(panel);
    later([&] { stopModalWithResponse(panel, 5); });
    EXPECT_EQ(zr_runModal(panel), 5) << "the code comes after the close";
}

TEST_F(ModalWindow, isClosedAlsoWithoutASession) {
    m_window->orderFront(nullptr);
    stopModal(m_window);
    EXPECT_FALSE(m_window->isVisible());
    stopModal(nullptr);
    stopModalWithResponse(nullptr, 3);
}

TEST_F(ModalWindow, keepsTheSessionWhenClosedWithoutTheFlag) {
    wireUp(m_window);
    EXPECT_FALSE(needStopModalWhenClosed(m_window));
    later([this] {
        m_window->close();
        later([this] {
            EXPECT_EQ(m_application->modalWindow(), m_window);
            later([this] { m_application->stopModalWithCode(9); });
        });
    });
    EXPECT_EQ(zr_runModal(m_window), 9);
}

TEST_F(ModalWindow, endsTheSessionALittleLaterWhenClosedWithTheFlag) {
    wireUp(m_window);
    setNeedStopModalWhenClosed(m_window, true);
    bool isLater = false;
    later([&] {
        later([&] {
            isLater = true;
            EXPECT_EQ(m_application->modalWindow(), m_window);
        });
        m_window->close();
    });
    EXPECT_EQ(zr_runModal(m_window), -1000);
    EXPECT_TRUE(isLater) << "what was waiting had its turn first";
}

TEST_F(ModalWindow, endsTheSessionAtOnceWhenAModalPanelCloses) {
    const auto panel = make<ModalPanel>();
    wireUp(panel);
    bool isLater = false;
    later([&] {
        panel->close();
        later([&] { isLater = true; });
    });
    EXPECT_EQ(zr_runModal(panel), -1000);
    EXPECT_FALSE(isLater) << "nothing else had its turn";
    settle();
}

TEST_F(ModalWindow, leavesOutsideOfASessionNothingBehind) {
    setNeedStopModalWhenClosed(m_window, true);
    windowWillClose(m_window, willClose(m_window));
    EXPECT_FALSE(timeUntilMainQueueWork()) << "the loop is in the ordinary mode";
    later([this] { m_application->stopModalWithCode(4); });
    EXPECT_EQ(zr_runModal(m_window), 4);
}

TEST_F(ModalWindow, endsTheLatestOfNestedSessions) {
    const auto outer = make<NSWindow>();
    setNeedStopModalWhenClosed(m_window, true);
    wireUp(m_window);
    NSInteger inner = 0;
    later([&] {
        later([this] { m_window->close(); });
        inner = zr_runModal(m_window);
        EXPECT_EQ(m_application->modalWindow(), outer) << "the outer one goes on";
        stopModalWithResponse(outer, 2);
    });
    EXPECT_EQ(zr_runModal(outer), 2);
    EXPECT_EQ(inner, -1000);
    EXPECT_FALSE(outer->isVisible());
}

TEST_F(ModalWindow, endsTheLatestSessionWhicheverWindowIsStopped) {
    const auto outer = make<NSWindow>();
    NSInteger inner = 0;
    later([&] {
        later([&] { stopModalWithResponse(outer, 6); });
        inner = zr_runModal(m_window);
        EXPECT_FALSE(outer->isVisible());
        EXPECT_TRUE(m_window->isVisible());
        m_application->stopModal();
    });
    EXPECT_EQ(zr_runModal(outer), -1000);
    EXPECT_EQ(inner, 6) << "sessions end from the inside";
}

TEST_F(ModalWindow, goesByTheWindowThatCloses) {
    const auto other = make<NSWindow>();
    setNeedStopModalWhenClosed(other, true);
    later([&] {
        for (const id& odd : {id(), id("window"_ns), id(NSNull::null()), id(m_window)}) {
            windowWillClose(other, willClose(odd));
        }
        windowWillClose(other, nullptr);
        windowWillClose(nullptr, willClose(other));
        later([&] {
            EXPECT_EQ(m_application->modalWindow(), m_window) << "none of these was a window with the flag";
            windowWillClose(m_window, willClose(other));
        });
    });
    EXPECT_EQ(zr_runModal(m_window), -1000);
}

TEST_F(ModalWindow, hasAFlagOfItsOwn) {
    const auto other = make<NSWindow>();
    send<void>(m_window, "setNeedStopModalWhenClosed:"_sel, true);
    EXPECT_TRUE(send<bool>(m_window, "needStopModalWhenClosed"_sel));
    EXPECT_FALSE(needStopModalWhenClosed(other));
    setNeedStopModalWhenClosed(m_window, false);
    EXPECT_FALSE(needStopModalWhenClosed(m_window));
    setNeedStopModalWhenClosed(nullptr, true);
    EXPECT_FALSE(needStopModalWhenClosed(nullptr));
}

} // namespace
} // namespace zr
