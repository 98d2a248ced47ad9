#include <zrbasic/platform/foundation/perform_selector.h>

#include "checks.h"
#include "loop_testing.h"

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/run_loop.h>
#include <zrbasic/platform/foundation/thread.h>
#include <zrbasic/platform/foundation/timer.h>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace {

using namespace zr;

class MainWorker : public NSObject {
    ZR_OBJECT(MainWorker, NSObject)

  public:
    void add(NSNumber* number) {
        isMain = isMain && NSThread::isMainThread();
        sum += number->integerValue();
    }
    ZR_METHOD(add, "add:")
    void raise() {
        ++sum;
        NSException::raise(NSGenericException, "on purpose");
    }
    ZR_METHOD(raise, "raise")

    // Plain on purpose: waiting is what orders the threads.
    NSInteger sum = 0;
    bool isMain = true;
};

class PerformSelectorThreads : public test::LoopTest {
  protected:
    void finish(std::vector<std::thread>& threads, std::atomic<int>& running) {
        EXPECT_TRUE(runMainQueueUntil(DISPATCH_TIME_FOREVER, [&] { return running == 0; }));
        for (std::thread& thread : threads) {
            thread.join();
        }
    }
};

TEST_F(PerformSelectorThreads, waitsUntilTheMainThreadIsDone) {
    const Ref<MainWorker> worker = make<MainWorker>();
    std::atomic<int> running{1};
    std::vector<std::thread> threads;
    threads.emplace_back([&] {
        for (int i = 1; i <= 200; ++i) {
            performSelectorOnMainThread_withObject_waitUntilDone(worker, "add:"_sel, box(1), true);
            EXPECT_EQ(worker->sum, i);
        }
        --running;
        dispatch_async(dispatch_get_main_queue(), [] {});
    });
    finish(threads, running);
    EXPECT_TRUE(worker->isMain);
}

TEST_F(PerformSelectorThreads, sendsForManyThreads) {
    const Ref<MainWorker> worker = make<MainWorker>();
    constexpr int threadCount = 4;
    constexpr int each = 200;
    std::atomic<int> running{threadCount};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([&] {
            for (int i = 0; i < each; ++i) {
                performSelectorOnMainThread_withObject_waitUntilDone(worker, "add:"_sel, box(1), i % 3 == 0);
            }
            // Behind all that this thread has sent.
            performSelectorOnMainThread_withObject_waitUntilDone(worker, "add:"_sel, box(0), true);
            --running;
            dispatch_async(dispatch_get_main_queue(), [] {});
        });
    }
    finish(threads, running);
    EXPECT_EQ(worker->sum, threadCount * each);
    EXPECT_TRUE(worker->isMain);
}

TEST_F(PerformSelectorThreads, waitsForItsModeToo) {
    const Ref<MainWorker> worker = make<MainWorker>();
    std::atomic<bool> isDone{false};
    std::thread other([&] {
        performSelectorOnMainThread_withObject_waitUntilDone_modes(worker, "add:"_sel, box(1), true,
                                                                   array({NSModalPanelRunLoopMode()}));
        isDone = true;
    });
    EXPECT_TRUE(runUntil([] { return timeUntilMainQueueWork() == std::chrono::nanoseconds(0); }));
    runReady();
    EXPECT_EQ(worker->sum, 0);
    EXPECT_FALSE(isDone);
    while (worker->sum == 0) {
        ASSERT_TRUE(NSRunLoop::mainRunLoop()->runMode_beforeDate(NSModalPanelRunLoopMode(), NSDate::distantFuture()));
    }
    other.join();
    EXPECT_TRUE(isDone);
}

TEST_F(PerformSelectorThreads, wakesTheCallerOfWhatRaised) {
    const Ref<MainWorker> worker = make<MainWorker>();
    bool wasQuiet = false;
    std::thread other([&] {
        performSelectorOnMainThread_withObject_waitUntilDone(worker, "raise"_sel, nullptr, true);
        wasQuiet = worker->sum == 1;
    });
    EXPECT_EQ(test::raised([] { runMainQueueUntil(DISPATCH_TIME_FOREVER); }), "NSGenericException: on purpose");
    other.join();
    EXPECT_TRUE(wasQuiet);
}

TEST_F(PerformSelectorThreads, runsALoopThatAnotherThreadWakes) {
    bool hasRun = false;
    for (int round = 0; round < 50; ++round) {
        hasRun = false;
        std::thread other([&] { dispatch_async(dispatch_get_main_queue(), [&] { hasRun = true; }); });
        while (!hasRun) {
            ASSERT_TRUE(NSRunLoop::mainRunLoop()->runMode_beforeDate(NSDefaultRunLoopMode(), NSDate::distantFuture()));
        }
        other.join();
    }
    EXPECT_TRUE(hasRun);
}

TEST_F(PerformSelectorThreads, timersMayBeAddedMovedAndEndedAnywhere) {
    constexpr int threadCount = 3;
    std::atomic<int> running{threadCount};
    std::atomic<int> fires{0};
    std::atomic<int> elsewhere{0};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([&] {
            for (int i = 0; i < 100; ++i) {
                const auto timer = NSTimer::timerWithTimeInterval_repeats_block(0.0002, true, [&](NSTimer*) {
                    ++fires;
                    elsewhere += NSThread::isMainThread() ? 0 : 1;
                });
                NSRunLoop::mainRunLoop()->addTimer_forMode(timer, NSRunLoopCommonModes());
                timer->setFireDate(NSDate::date());
                (void)timer->fireDate();
                if (i % 10 == 0) {
                    const int before = fires;
                    while (fires == before) {
                        std::this_thread::yield();
                    }
                }
                timer->invalidate();
                EXPECT_FALSE(timer->isValid());
            }
            --running;
            dispatch_async(dispatch_get_main_queue(), [] {});
        });
    }
    finish(threads, running);
    EXPECT_GE(fires, 10);
    EXPECT_EQ(elsewhere, 0);
}

} // namespace
