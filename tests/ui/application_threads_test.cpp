#include <zrbasic/ui/application.h>

#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/dispatch_queue.h>
#include <zrbasic/platform/foundation/thread.h>

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace zr {
namespace {

/// A window that stops its session as soon as it is shown.
class PassingWindow : public NSWindow {
    ZR_OBJECT(PassingWindow, NSWindow)

  public:
    void makeKeyAndOrderFront(NSObject*) override {
        EXPECT_TRUE(NSThread::isMainThread());
        ++shown;
        NSApplication::sharedApplication()->stopModal();
    }

    int shown = 0;
};

TEST(DeferredModalRunThreads, runOnTheMainThreadWhoeverAsks) {
    constexpr int threads = 4;
    constexpr int sessions = 50;
    const auto application = NSApplication::sharedApplication();
    std::vector<Ref<PassingWindow>> windows;
    for (int i = 0; i < threads; ++i) {
        windows.push_back(make<PassingWindow>());
    }
    std::vector<std::thread> asking;
    for (const Ref<PassingWindow>& window : windows) {
        asking.emplace_back([&application, window = window.get()] {
            for (int i = 0; i < sessions; ++i) {
                saftyRunModalForWindow(application, window);
            }
        });
    }
    for (std::thread& thread : asking) {
        thread.join();
    }
    const auto minute = dispatch_time(DISPATCH_TIME_NOW, 60'000'000'000);
    EXPECT_TRUE(runMainQueueUntil(minute, [] { return !timeUntilMainQueueWork(); }));
    for (const Ref<PassingWindow>& window : windows) {
        EXPECT_EQ(window->shown, sessions);
    }
    EXPECT_EQ(application->modalWindow(), nullptr);
}

} // namespace
} // namespace zr
