#include <zrbasic/platform/foundation/thread.h>
#include <zrbasic/ui/alert.h>

#include <tests/appkit/window_testing.h>
#include <tests/foundation/loop_testing.h>

#include <chrono>
#include <thread>

namespace zr {
namespace {

/// Writes down when it was run, in the order of other work.
class NotedAlert : public NSAlert {
    ZR_OBJECT(NotedAlert, NSAlert)
  public:
    NSInteger runModal() override {
        wasOnMainThread = NSThread::isMainThread();
        when = std::chrono::steady_clock::now();
        ++runs;
        return 1000;
    }
    int runs = 0;
    bool wasOnMainThread = false;
    std::chrono::steady_clock::time_point when;
};

using AlertThreads = test::LoopTest;

TEST_F(AlertThreads, aTenthOfASecondAfterTheMainQueueHasComeToIt) {
    const auto alert = make<NotedAlert>();
    std::thread([&] { zr_runModal(alert.get()); }).join();
    EXPECT_EQ(alert->runs, 0) << "the caller does not wait";
    std::this_thread::sleep_for(std::chrono::milliseconds(150));
    const auto reached = std::chrono::steady_clock::now();
    runReady();
    EXPECT_EQ(alert->runs, 0) << "the tenth counts from when the main thread has time";
    ASSERT_TRUE(runUntil([&] { return alert->runs > 0; }));
    EXPECT_TRUE(alert->wasOnMainThread);
    EXPECT_GE(alert->when - reached, std::chrono::milliseconds(100));
    settle();
    EXPECT_EQ(alert->runs, 1);
}

TEST_F(AlertThreads, keepsTheAlertUntilThen) {
    Weak<NotedAlert> watched;
    int runs = 0;
    std::thread([&] {
        const auto alert = make<NotedAlert>();
        watched = Weak<NotedAlert>(alert.get());
        zr_runModal(alert.get());
    }).join();
    ASSERT_NE(watched.lock(), nullptr);
    ASSERT_TRUE(runUntil([&] {
        const auto alert = watched.lock();
        runs = alert ? alert->runs : 1;
        return runs > 0;
    }));
    settle();
    EXPECT_EQ(watched.lock(), nullptr) << "and no longer";
}

TEST_F(AlertThreads, runEachOfThoseThatManyThreadsAskFor) {
    std::vector<Ref<NotedAlert>> alerts(8);
    std::vector<std::thread> threads;
    for (Ref<NotedAlert>& alert : alerts) {
        alert = make<NotedAlert>();
        threads.emplace_back([&alert] { send<void>(alert, "zr_runModal"_sel); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    settle();
    for (const Ref<NotedAlert>& alert : alerts) {
        EXPECT_EQ(alert->runs, 1);
        EXPECT_TRUE(alert->wasOnMainThread);
    }
}

TEST_F(AlertThreads, asksByTheToolkitOnTheMainThread) {
    test::WindowToolkit toolkit;
    bool wasAsked = false;
    toolkit.whenAsked = [&](NSAlert& asked) {
        EXPECT_TRUE(NSThread::isMainThread());
        EXPECT_EQ(asked.informativeText()->utf8(), "done");
        wasAsked = true;
        return NSInteger{0};
    };
    std::thread([] { zr_runModal(alertWithMessage("done"_ns).get()); }).join();
    ASSERT_TRUE(runUntil([&] { return wasAsked; }));
}

} // namespace
} // namespace zr
