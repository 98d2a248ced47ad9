#include <zrbasic/platform/foundation/dispatch_queue.h>

#include <zrbasic/platform/foundation/thread.h>

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

namespace {

using namespace zr;

TEST(MainQueueThreads, keepsTheOrderOfEveryThread) {
    constexpr int threadCount = 4;
    constexpr int each = 2000;
    std::vector<int> last(threadCount, -1);
    int calls = 0;
    bool isInOrder = true;
    bool isMain = true;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([&, thread] {
            for (int i = 0; i < each; ++i) {
                dispatch_async(dispatch_get_main_queue(), [&, thread, i] {
                    isInOrder = isInOrder && std::exchange(last[static_cast<std::size_t>(thread)], i) == i - 1;
                    isMain = isMain && NSThread::isMainThread();
                    ++calls;
                });
            }
        });
    }
    EXPECT_TRUE(runMainQueueUntil(DISPATCH_TIME_FOREVER, [&] { return calls == threadCount * each; }));
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_TRUE(isInOrder);
    EXPECT_TRUE(isMain);
    EXPECT_EQ(drainMainQueue(), 0u);
}

TEST(MainQueueThreads, runsOnTheMainThreadOnly) {
    bool hasRun = false;
    dispatch_async(dispatch_get_main_queue(), [&] { hasRun = true; });
    std::thread([&] {
        EXPECT_EQ(drainMainQueue(), 0u);
        EXPECT_FALSE(runMainQueueUntil(DISPATCH_TIME_FOREVER, [] { return true; }));
        EXPECT_EQ(timeUntilMainQueueWork(), std::chrono::nanoseconds(0)) << "asking is free to all";
        EXPECT_FALSE(hasRun);
    }).join();
    EXPECT_EQ(drainMainQueue(), 1u);
    EXPECT_TRUE(hasRun);
}

TEST(MainQueueThreads, wakesASleepingLoop) {
    for (int round = 0; round < 50; ++round) {
        bool hasRun = false;
        std::thread other([&] {
            if (round % 2 == 0) {
                std::this_thread::yield();
                dispatch_async(dispatch_get_main_queue(), [&] { hasRun = true; });
            } else {
                const dispatch_time_t soon = dispatch_time(DISPATCH_TIME_NOW, 10'000);
                dispatch_after(soon, dispatch_get_main_queue(), [&] { hasRun = true; });
            }
        });
        EXPECT_TRUE(runMainQueueUntil(DISPATCH_TIME_FOREVER, [&] { return hasRun; }));
        other.join();
    }
}

TEST(MainQueueThreads, aHandlerThatWasReplacedIsNeverCalledAgain) {
    std::atomic<bool> isDone{false};
    std::atomic<int> lateCalls{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 3; ++i) {
        threads.emplace_back([&] {
            while (!isDone) {
                dispatch_async(dispatch_get_main_queue(), [] {});
                std::this_thread::yield();
            }
        });
    }
    for (int round = 0; round < 300; ++round) {
        // Stands for a toolkit's loop, which is gone as soon as it has been taken out of use.
        auto loop = std::make_unique<std::atomic<int>>(1);
        setMainQueueWakeUpHandler([&lateCalls, target = loop.get()] { lateCalls += *target == 1 ? 0 : 1; });
        drainMainQueue();
        setMainQueueWakeUpHandler({});
        *loop = 0;
        loop.reset();
    }
    isDone = true;
    for (std::thread& thread : threads) {
        thread.join();
    }
    while (drainMainQueue() != 0) {
    }
    EXPECT_EQ(lateCalls, 0);
}

TEST(MainQueueThreads, noCallbackIsForgottenByALoopThatDrainsWhenWoken) {
    std::atomic<int> wakeUps{0};
    setMainQueueWakeUpHandler([&] { ++wakeUps; });
    constexpr int count = 3000;
    int calls = 0;
    std::thread other([&] {
        for (int i = 0; i < count; ++i) {
            dispatch_async(dispatch_get_main_queue(), [&] { ++calls; });
        }
    });
    while (calls < count) {
        // Drains for a wake-up and for nothing else.
        if (wakeUps.exchange(0) != 0) {
            drainMainQueue();
        }
        std::this_thread::yield();
    }
    other.join();
    setMainQueueWakeUpHandler({});
    EXPECT_EQ(calls, count);
}

} // namespace
