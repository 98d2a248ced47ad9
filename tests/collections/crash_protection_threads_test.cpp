#include <zrbasic/collections/crash_protection.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/exception.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

namespace zr {

namespace {

TEST(CrashProtectionThreads, whoeverSwitchesItOnFindsItOn) {
    constexpr int threadCount = 8;
    std::atomic<int> ready{0};
    std::atomic<int> forgiven{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i) {
        threads.emplace_back([&] {
            const Ref<NSArray> two = array({"a"_ns, "b"_ns});
            const Ref<NSArray> one = array({"a"_ns});
            ++ready;
            while (ready < threadCount) {
                std::this_thread::yield();
            }
            zr_openCrashProtector();
            // The call comes back only when everything is exchanged, whichever thread did the work.
            try {
                if (!two->objectAtIndex(2) && !two->objectAtIndexedSubscript(2) && !one->objectAtIndex(1) &&
                    !array({})->objectAtIndex(0)) {
                    ++forgiven;
                }
            } catch (const NSException&) {
                // Not forgiven.
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(forgiven, threadCount);
    EXPECT_FALSE(array({"a"_ns, "b"_ns})->objectAtIndex(7));
    EXPECT_TRUE(array({"a"_ns, "b"_ns})->objectAtIndex(1));
}

TEST(CrashProtectionThreads, readersNeverSeeAWrongElementMeanwhile) {
    const Ref<NSArray> two = array({"a"_ns, "b"_ns});
    const Ref<NSMutableArray> changing = NSMutableArray::arrayWithArray(two);
    const id expected = "b"_ns;
    std::atomic<bool> isOver{false};
    std::atomic<int> wrong{0};
    std::vector<std::thread> readers;
    for (int i = 0; i < 4; ++i) {
        readers.emplace_back([&] {
            while (!isOver) {
                if (two->objectAtIndex(1) != expected || two->objectAtIndexedSubscript(1) != expected ||
                    changing->objectAtIndex(1) != expected) {
                    ++wrong;
                }
            }
        });
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    zr_openCrashProtector();
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    isOver = true;
    for (std::thread& reader : readers) {
        reader.join();
    }
    EXPECT_EQ(wrong, 0);
}

} // namespace

} // namespace zr
