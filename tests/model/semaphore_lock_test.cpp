#include <zrbasic/model/semaphore_lock.h>

#include <gtest/gtest.h>

#include <limits>
#include <mutex>

namespace {

using namespace zr;

/// How many takers pass at once, all of them taken.
int room(const Ref<ZRSemaphoreLock>& lock) {
    int takers = 0;
    while (takers < 100 && dispatch_semaphore_wait(lock->semaphore_lock_t(), DISPATCH_TIME_NOW) == 0) {
        ++takers;
    }
    return takers;
}

TEST(SemaphoreLock, isForOneTakerByDefault) {
    EXPECT_EQ(room(make<ZRSemaphoreLock>()), 1);
    const id sent = send<id>(send<id>(ZRSemaphoreLock::classObject(), "alloc"_sel), "init"_sel);
    EXPECT_EQ(room(Ref<ZRSemaphoreLock>(cast<ZRSemaphoreLock>(sent.get()))), 1);
}

TEST(SemaphoreLock, hasRoomForOneAtLeast) {
    const struct {
        NSInteger value;
        int room;
    } rows[] = {{3, 3}, {2, 2}, {1, 1}, {0, 1}, {-1, 1}, {std::numeric_limits<NSInteger>::min(), 1}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(room(make<ZRSemaphoreLock>(&ZRSemaphoreLock::initWithValue, row.value)), row.room);
    }
    EXPECT_EQ(room(make<ZRSemaphoreLock>(&ZRSemaphoreLock::initWithValue, std::numeric_limits<NSInteger>::max())), 100)
        << "as far as is counted here";
}

TEST(SemaphoreLock, isTakenAndGivenBack) {
    const auto lock = make<ZRSemaphoreLock>();
    lock->lock();
    EXPECT_EQ(room(lock), 0);
    lock->unlock();
    EXPECT_EQ(room(lock), 1);
    lock->unlock();
    {
        const std::lock_guard guard(*lock);
        EXPECT_EQ(room(lock), 0);
    }
    EXPECT_EQ(room(lock), 1);
}

TEST(SemaphoreLock, waitsUntilAMomentAndNotForADuration) {
    const auto lock = make<ZRSemaphoreLock>();
    lock->lockWithTimeout(DISPATCH_TIME_NOW);
    EXPECT_EQ(room(lock), 0) << "now tries once, and took it";
    const auto start = std::chrono::steady_clock::now();
    const dispatch_time_t moment = dispatch_time(DISPATCH_TIME_NOW, 10'000'000);
    lock->lockWithTimeout(moment);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(10));
    // A second wait for the same moment ends at once; as durations these would never come to an end here.
    lock->lockWithTimeout(moment);
    lock->lockWithTimeout(dispatch_walltime(nullptr, -1));
    lock->lockWithTimeout(1);
    lock->unlock();
    lock->lockWithTimeout(moment);
    EXPECT_EQ(room(lock), 0) << "passed, but it was free";
}

TEST(SemaphoreLock, hasMoreRoomAfterAnUnlockThatFollowedATimeOut) {
    const auto lock = make<ZRSemaphoreLock>();
    lock->lock();
    lock->lockWithTimeout(DISPATCH_TIME_NOW);
    lock->unlock();
    lock->unlock();
    EXPECT_EQ(room(lock), 2) << "the caller could not know that it had not taken it";
}

TEST(SemaphoreLock, mayBeLetGoWhileItIsTaken) {
    auto lock = make<ZRSemaphoreLock>(&ZRSemaphoreLock::initWithValue, 3);
    lock->lock();
    lock->lock();
    const Weak<OS_dispatch_semaphore> semaphore(lock->semaphore_lock_t());
    lock = nullptr;
    EXPECT_TRUE(semaphore.expired()) << "it belongs to the lock";
}

TEST(SemaphoreLock, answersMessages) {
    const id lock = send<id>(send<id>(ZRSemaphoreLock::classObject(), "alloc"_sel), "initWithValue:"_sel, 2);
    const Ref<ZRSemaphoreLock> typed(cast<ZRSemaphoreLock>(lock.get()));
    ASSERT_TRUE(typed);
    send<>(lock, "lock"_sel);
    send<>(lock, "lockWithTimeout:"_sel, DISPATCH_TIME_FOREVER);
    EXPECT_EQ(room(typed), 0);
    send<>(lock, "unlock"_sel);
    EXPECT_EQ(room(typed), 1);
    ZRSemaphoreLock* const none = nullptr;
    send<>(none, "lock"_sel);
    send<>(none, "unlock"_sel);
}

TEST(SemaphoreLock, holdsNobodyUpBeforeItIsSetUp) {
    const auto raw = alloc<ZRSemaphoreLock>();
    EXPECT_FALSE(raw->semaphore_lock_t());
    raw->lock();
    raw->lock();
    raw->lockWithTimeout(DISPATCH_TIME_FOREVER);
    raw->unlock();
    EXPECT_FALSE(raw->semaphore_lock_t());
}

} // namespace
