#include <zrbasic/model/semaphore_lock.h>

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <thread>
#include <vector>

namespace {

using namespace zr;

void untilWaiting(const Ref<ZRSemaphoreLock>& lock, std::size_t count) {
    while (lock->semaphore_lock_t()->waiterCount() != count) {
        std::this_thread::yield();
    }
}

TEST(SemaphoreLockThreads, letsOneTakerInAtATime) {
    const auto lock = make<ZRSemaphoreLock>();
    int count = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < 1000; ++round) {
                const std::lock_guard guard(*lock);
                ++count;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(count, 4000);
}

TEST(SemaphoreLockThreads, letsThreeInBeforeTheFourthWaits) {
    const auto lock = make<ZRSemaphoreLock>(&ZRSemaphoreLock::initWithValue, 3);
    lock->lock();
    lock->lock();
    lock->lock();
    std::atomic<bool> isIn{false};
    std::thread fourth([&] {
        lock->lock();
        isIn = true;
    });
    untilWaiting(lock, 1);
    EXPECT_FALSE(isIn);
    lock->unlock();
    fourth.join();
    EXPECT_TRUE(isIn);
}

TEST(SemaphoreLockThreads, aLockWithALimitIsTakenWhenItIsGivenBackInTime) {
    const auto lock = make<ZRSemaphoreLock>();
    lock->lock();
    std::thread other([&] { lock->lockWithTimeout(dispatch_time(DISPATCH_TIME_NOW, 3'600'000'000'000)); });
    untilWaiting(lock, 1);
    // Another thread than the one that took it may give it back.
    std::thread([&] { lock->unlock(); }).join();
    other.join();
    EXPECT_NE(dispatch_semaphore_wait(lock->semaphore_lock_t(), DISPATCH_TIME_NOW), 0) << "the other one has it";
}

TEST(SemaphoreLockThreads, takersComeInInTheirOrder) {
    const auto lock = make<ZRSemaphoreLock>();
    lock->lock();
    std::vector<int> order;
    std::vector<std::thread> threads;
    for (int i = 0; i < 5; ++i) {
        threads.emplace_back([&, i] {
            lock->lock();
            order.push_back(i);
            lock->unlock();
        });
        untilWaiting(lock, static_cast<std::size_t>(i) + 1);
    }
    lock->unlock();
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(order, (std::vector<int>{0, 1, 2, 3, 4}));
}

TEST(SemaphoreLockThreads, isNotReentrant) {
    const auto lock = make<ZRSemaphoreLock>();
    std::atomic<bool> isInTwice{false};
    std::thread taker([&] {
        lock->lock();
        lock->lock();
        isInTwice = true;
    });
    untilWaiting(lock, 1);
    EXPECT_FALSE(isInTwice) << "it waits for itself";
    lock->unlock();
    taker.join();
    EXPECT_TRUE(isInTwice);
}

} // namespace
