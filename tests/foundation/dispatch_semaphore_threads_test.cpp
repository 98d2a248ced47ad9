#include <zrbasic/platform/foundation/dispatch_semaphore.h>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace {

using namespace zr;

void untilWaiting(const dispatch_semaphore_t& semaphore, std::size_t count) {
    while (semaphore->waiterCount() != count) {
        std::this_thread::yield();
    }
}

TEST(DispatchSemaphoreThreads, waitersPassInTheOrderTheyCameIn) {
    const auto semaphore = dispatch_semaphore_create(0);
    const auto told = dispatch_semaphore_create(0);
    std::vector<int> order;
    std::vector<std::thread> threads;
    const dispatch_time_t hour = dispatch_time(DISPATCH_TIME_NOW, 3600 * static_cast<std::int64_t>(NSEC_PER_SEC));
    for (int i = 0; i < 6; ++i) {
        threads.emplace_back([&, i] {
            // Those with a limit wait in the same line.
            const dispatch_time_t deadlines[] = {DISPATCH_TIME_FOREVER, hour,
                                                 dispatch_walltime(nullptr, 3'600'000'000'000)};
            EXPECT_EQ(dispatch_semaphore_wait(semaphore, deadlines[i % 3]), 0);
            order.push_back(i);
            dispatch_semaphore_signal(told);
        });
        untilWaiting(semaphore, static_cast<std::size_t>(i) + 1);
    }
    for (int i = 0; i < 6; ++i) {
        EXPECT_NE(dispatch_semaphore_signal(semaphore), 0) << "it wakes somebody";
        EXPECT_EQ(dispatch_semaphore_wait(told, DISPATCH_TIME_FOREVER), 0);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(order, (std::vector<int>{0, 1, 2, 3, 4, 5}));
    EXPECT_EQ(dispatch_semaphore_signal(semaphore), 0) << "nobody is left";
}

TEST(DispatchSemaphoreThreads, aSignalGoesToTheWaiterAndNotToALaterTaker) {
    const auto semaphore = dispatch_semaphore_create(0);
    std::thread waiter([&] { EXPECT_EQ(dispatch_semaphore_wait(semaphore, DISPATCH_TIME_FOREVER), 0); });
    untilWaiting(semaphore, 1);
    EXPECT_NE(dispatch_semaphore_signal(semaphore), 0);
    EXPECT_NE(dispatch_semaphore_wait(semaphore, DISPATCH_TIME_NOW), 0) << "taken already, even if it still sleeps";
    waiter.join();
}

TEST(DispatchSemaphoreThreads, waitersThatGiveUpLeaveTheLineToTheOthers) {
    const auto semaphore = dispatch_semaphore_create(0);
    std::atomic<int> passed{0};
    std::vector<std::thread> patient;
    for (int i = 0; i < 2; ++i) {
        patient.emplace_back([&] {
            EXPECT_EQ(dispatch_semaphore_wait(semaphore, DISPATCH_TIME_FOREVER), 0);
            ++passed;
        });
        untilWaiting(semaphore, static_cast<std::size_t>(i) + 1);
        // In the middle of the line the first time, at its end the second.
        EXPECT_NE(dispatch_semaphore_wait(semaphore, dispatch_time(DISPATCH_TIME_NOW, 1'000'000)), 0);
        EXPECT_EQ(semaphore->waiterCount(), static_cast<std::size_t>(i) + 1);
    }
    EXPECT_NE(dispatch_semaphore_signal(semaphore), 0);
    EXPECT_NE(dispatch_semaphore_signal(semaphore), 0);
    for (std::thread& thread : patient) {
        thread.join();
    }
    EXPECT_EQ(passed, 2);
    EXPECT_NE(dispatch_semaphore_wait(semaphore, DISPATCH_TIME_NOW), 0);
}

TEST(DispatchSemaphoreThreads, noSignalIsLostBetweenTheDeadlineAndTheWakeUp) {
    const auto semaphore = dispatch_semaphore_create(0);
    constexpr int signals = 2000;
    std::atomic<int> taken{0};
    std::atomic<bool> isDone{false};
    std::vector<std::thread> takers;
    for (int i = 0; i < 3; ++i) {
        takers.emplace_back([&, i] {
            while (!isDone) {
                const dispatch_time_t soon = dispatch_time(DISPATCH_TIME_NOW, 2'000 * (i + 1));
                taken += dispatch_semaphore_wait(semaphore, soon) == 0 ? 1 : 0;
            }
        });
    }
    for (int i = 0; i < signals; ++i) {
        dispatch_semaphore_signal(semaphore);
        std::this_thread::yield();
    }
    isDone = true;
    for (std::thread& taker : takers) {
        taker.join();
    }
    while (dispatch_semaphore_wait(semaphore, DISPATCH_TIME_NOW) == 0) {
        ++taken;
    }
    EXPECT_EQ(taken, signals);
}

TEST(DispatchSemaphoreThreads, staysForTheOneWhoWaitsWhenItsOwnerLetsGo) {
    auto semaphore = dispatch_semaphore_create(0);
    OS_dispatch_semaphore* const borrowed = semaphore;
    std::thread waiter([borrowed] { EXPECT_EQ(dispatch_semaphore_wait(borrowed, DISPATCH_TIME_FOREVER), 0); });
    untilWaiting(semaphore, 1);
    const Weak<OS_dispatch_semaphore> watch(semaphore);
    semaphore = nullptr;
    const dispatch_semaphore_t again = watch.lock();
    ASSERT_TRUE(again) << "the waiter keeps it";
    EXPECT_NE(dispatch_semaphore_signal(again), 0);
    waiter.join();
}

} // namespace
