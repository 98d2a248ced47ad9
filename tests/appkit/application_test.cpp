#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/panel.h>
#include <zrbasic/platform/appkit/screen.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/dispatch_queue.h>
#include <zrbasic/platform/foundation/run_loop.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/exception.h>

#include <tests/appkit/window_testing.h>
#include <tests/foundation/checks.h>

#include <gtest/gtest.h>
#include <vector>

namespace zr {
namespace {

using test::later;

TEST(Application, isOne) {
    EXPECT_EQ(NSApplication::sharedApplication(), NSApplication::sharedApplication());
    const auto application = NSApplication::sharedApplication();
    EXPECT_EQ(application->presentationOptions(), 0U);
    application->setPresentationOptions(NSApplicationPresentationFullScreen);
    EXPECT_EQ(application->presentationOptions(), 1024U);
    application->setPresentationOptions(NSApplicationPresentationDefault);
}

TEST(Application, knowsItsWindowsInTheOrderOfTheirMaking) {
    const auto application = NSApplication::sharedApplication();
    const NSUInteger before = application->windows()->count();
    auto first = make<NSWindow>();
    const auto second = make<NSWindow>();
    second->orderFront(nullptr);
    ASSERT_EQ(application->windows()->count(), before + 2);
    EXPECT_EQ(application->windows()->objectAtIndex(before), first);
    EXPECT_EQ(application->windows()->objectAtIndex(before + 1), second);
    first = nullptr;
    EXPECT_EQ(application->windows()->count(), before + 1);
    second->orderOut(nullptr);
}

TEST(ModalSession, lastsUntilItIsStopped) {
    const auto application = NSApplication::sharedApplication();
    const auto window = make<NSWindow>();
    later([&] {
        EXPECT_EQ(application->modalWindow(), window);
        EXPECT_TRUE(window->isVisible());
        EXPECT_TRUE(NSRunLoop::mainRunLoop()->currentMode()->isEqual(NSModalPanelRunLoopMode()));
        window->close();
        EXPECT_EQ(application->modalWindow(), window) << "closing does not end it";
        application->stopModalWithCode(7);
    });
    EXPECT_EQ(application->runModalForWindow(window), 7);
    EXPECT_EQ(application->modalWindow(), nullptr);
    EXPECT_TRUE(NSRunLoop::mainRunLoop()->currentMode()->isEqual(NSDefaultRunLoopMode()));
}

TEST(ModalSession, maySitInsideAnother) {
    const auto application = NSApplication::sharedApplication();
    const auto outer = make<NSWindow>();
    const auto inner = make<NSWindow>();
    std::vector<NSInteger> responses;
    later([&] {
        later([&] {
            EXPECT_EQ(application->modalWindow(), inner);
            application->stopModal();
        });
        responses.push_back(application->runModalForWindow(inner));
        EXPECT_EQ(application->modalWindow(), outer);
        application->stopModalWithCode(NSModalResponseOK);
    });
    responses.push_back(application->runModalForWindow(outer));
    EXPECT_EQ(responses, (std::vector<NSInteger>{NSModalResponseStop, NSModalResponseOK}));
    outer->orderOut(nullptr);
    inner->orderOut(nullptr);
}

TEST(ModalSession, isOverAfterAnException) {
    const auto application = NSApplication::sharedApplication();
    const auto window = make<NSWindow>();
    later([] { NSException::raise(NSGenericException, "in the middle of it"); });
    EXPECT_EQ(test::raisedName([&] { (void)application->runModalForWindow(window); }), NSGenericException);
    EXPECT_EQ(application->modalWindow(), nullptr);
    window->orderOut(nullptr);
}

TEST(ModalSession, takesTheEventsOfAllOtherWindows) {
    const auto application = NSApplication::sharedApplication();
    const auto outer = make<NSWindow>();
    const auto inner = make<NSWindow>();
    const auto allowed = [&] {
        std::string text;
        for (const Ref<NSWindow>& window : {outer, inner, Ref<NSWindow>()}) {
            text += application->allowsEventsForWindow(window) ? '+' : '-';
        }
        return text;
    };
    EXPECT_EQ(allowed(), "+++");
    later([&] {
        EXPECT_EQ(allowed(), "+--");
        later([&] {
            EXPECT_EQ(allowed(), "-+-") << "the latest one's alone";
            application->stopModal();
        });
        (void)application->runModalForWindow(inner);
        EXPECT_EQ(allowed(), "+--");
        application->stopModal();
    });
    (void)application->runModalForWindow(outer);
    EXPECT_EQ(allowed(), "+++");
    outer->orderOut(nullptr);
    inner->orderOut(nullptr);
}

TEST(ModalSession, letsPanelsWorkThatAreMadeToWorkMeanwhile) {
    const auto application = NSApplication::sharedApplication();
    const auto window = make<NSWindow>();
    const auto helper = make<NSPanel>();
    const auto other = make<NSPanel>();
    helper->setWorksWhenModal(true);
    later([&] {
        EXPECT_TRUE(application->allowsEventsForWindow(helper));
        EXPECT_FALSE(application->allowsEventsForWindow(other));
        application->stopModal();
    });
    EXPECT_EQ(application->runModalForWindow(window), NSModalResponseStop);
    EXPECT_TRUE(application->allowsEventsForWindow(other));
    window->orderOut(nullptr);
}

TEST(ModalSession, needsAWindow) {
    const auto application = NSApplication::sharedApplication();
    EXPECT_EQ(application->runModalForWindow(nullptr), NSModalResponseAbort);
    application->stopModal();
    application->stopModalWithCode(3);
}

/// Two screens, the second one to the right and twice as fine.
TEST(Screens, areThoseOfTheToolkit) {
    const test::ScreensToolkit toolkit(
        {{{{0, 0}, {1440, 900}}, {{0, 25}, {1440, 875}}, 1}, {{{1440, 0}, {800, 600}}, {{1440, 0}, {800, 600}}, 2}});
    ASSERT_EQ(NSScreen::screens()->count(), 2U);
    const auto main = NSScreen::mainScreen();
    EXPECT_EQ(main->frame(), (NSRect{{0, 0}, {1440, 900}}));
    EXPECT_EQ(main->visibleFrame(), (NSRect{{0, 25}, {1440, 875}}));
    EXPECT_EQ(main->backingScaleFactor(), 1);
    const auto second = cast<NSScreen>(NSScreen::screens()->objectAtIndex(1));
    EXPECT_EQ(second->backingScaleFactor(), 2);
    EXPECT_TRUE(main->isEqual(NSScreen::mainScreen()));
    EXPECT_EQ(main->hash(), NSScreen::mainScreen()->hash());
    EXPECT_FALSE(main->isEqual(second));
    EXPECT_FALSE(main->isEqual("main"_ns));
}

TEST(Screens, areNoneWithoutAToolkit) {
    EXPECT_EQ(NSScreen::screens()->count(), 0U);
    EXPECT_EQ(NSScreen::mainScreen(), nullptr);
}

} // namespace
} // namespace zr
