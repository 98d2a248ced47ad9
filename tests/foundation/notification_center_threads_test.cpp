#include <zrbasic/platform/foundation/notification_center.h>

#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace {

using namespace zr;

class CountingListener : public NSObject {
    ZR_OBJECT(CountingListener, NSObject)

  public:
    void hear(NSNotification* notification) {
        wasRight = wasRight && notification->name()->isEqualToString("tick"_ns);
        ++calls;
    }
    ZR_METHOD(hear, "hear:")

    std::atomic<int> calls{0};
    std::atomic<bool> wasRight{true};
};

TEST(NotificationCenterThreads, losesNoPost) {
    const Ref<NSNotificationCenter> center = make<NSNotificationCenter>();
    const Ref<CountingListener> listener = make<CountingListener>();
    center->addObserver_selector_name_object(listener, "hear:"_sel, "tick"_ns, nullptr);
    constexpr int threadCount = 4;
    constexpr int each = 1000;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([&] {
            for (int i = 0; i < each; ++i) {
                center->postNotificationName_object("tick"_ns, nullptr);
                center->postNotificationName_object("tock"_ns, nullptr);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(listener->calls, threadCount * each);
    EXPECT_TRUE(listener->wasRight);
}

TEST(NotificationCenterThreads, tellsOnTheThreadThatPosts) {
    const Ref<NSNotificationCenter> center = make<NSNotificationCenter>();
    std::vector<std::thread::id> seen;
    const id token = center->addObserverForName_object_usingBlock(
        "tick"_ns, nullptr, [&](NSNotification*) { seen.push_back(std::this_thread::get_id()); });
    std::thread::id other;
    std::thread([&] {
        other = std::this_thread::get_id();
        center->postNotificationName_object("tick"_ns, nullptr);
    }).join();
    center->postNotificationName_object("tick"_ns, nullptr);
    EXPECT_EQ(seen, (std::vector{other, std::this_thread::get_id()}));
    center->removeObserver(token);
}

TEST(NotificationCenterThreads, letsObserversComeAndGoAndDieDuringPosts) {
    const Ref<NSNotificationCenter> center = make<NSNotificationCenter>();
    const Ref<CountingListener> constant = make<CountingListener>();
    center->addObserver_selector_name_object(constant, "hear:"_sel, "tick"_ns, nullptr);
    std::atomic<bool> isDone{false};
    std::atomic<int> posts{0};
    std::atomic<int> blockCalls{0};
    std::vector<std::thread> posters;
    for (int i = 0; i < 2; ++i) {
        posters.emplace_back([&] {
            while (!isDone) {
                center->postNotificationName_object("tick"_ns, nullptr);
                ++posts;
            }
        });
    }
    std::vector<std::thread> visitors;
    for (int i = 0; i < 2; ++i) {
        visitors.emplace_back([&, i] {
            for (int round = 0; round < 300; ++round) {
                const Ref<NSObject> object = make<NSObject>();
                Ref<CountingListener> passing = make<CountingListener>();
                center->addObserver_selector_name_object(passing, "hear:"_sel, i == 0 ? "tick"_ns : nullptr, nullptr);
                center->addObserver_selector_name_object(passing, "hear:"_sel, "tick"_ns, object);
                const id token = center->addObserverForName_object_usingBlock("tick"_ns, nullptr,
                                                                              [&](NSNotification*) { ++blockCalls; });
                center->postNotificationName_object("tick"_ns, object);
                ++posts;
                EXPECT_GE(passing->calls, 2);
                EXPECT_TRUE(passing->wasRight);
                if (round % 2 == 0) {
                    center->removeObserver(passing);
                }
                // Otherwise its end is all that ends its registrations.
                passing = nullptr;
                center->removeObserver(token);
            }
        });
    }
    for (std::thread& thread : visitors) {
        thread.join();
    }
    isDone = true;
    for (std::thread& thread : posters) {
        thread.join();
    }
    EXPECT_EQ(constant->calls, posts);
    EXPECT_GE(blockCalls, 600);
    const int before = blockCalls;
    center->postNotificationName_object("tick"_ns, nullptr);
    EXPECT_EQ(blockCalls, before);
}

} // namespace
