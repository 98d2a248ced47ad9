#include <zrbasic/collections/sequence.h>

#include "elements.h"

#include <zrbasic/platform/runtime/synchronized.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>
#include <vector>

namespace zr {

namespace {

using test::intOf;

TEST(SequenceThreads, reversingSeesOnlyWhatAWriterUnderTheSameLockHasFinished) {
    // The writer always leaves the numbers from its count - 1 down to 0.
    const Ref<NSMutableArray> list = NSMutableArray::array();
    std::atomic<bool> isOver{false};
    std::thread writer([&] {
        for (int round = 0; !isOver; ++round) {
            const Synchronized lock(list);
            list->removeAllObjects();
            for (int number = round % 40; number-- > 0;) {
                list->addObject(box(number));
            }
        }
    });
    std::vector<std::thread> readers;
    std::atomic<int> torn{0};
    for (int reader = 0; reader < 3; ++reader) {
        readers.emplace_back([&] {
            for (int round = 0; round < 2000; ++round) {
                const Ref<NSMutableArray> reversed = zr_reverse(list);
                int expected = 0;
                for (const id& number : reversed->elements()) {
                    torn += intOf(number) != expected++;
                }
            }
        });
    }
    for (std::thread& reader : readers) {
        reader.join();
    }
    isOver = true;
    writer.join();
    EXPECT_EQ(torn, 0);
}

/// What reading by index does in the list of the next test.
std::function<void()>& whileReading() {
    static auto* const action = new std::function<void()>;
    return *action;
}

id readAndAct(NSObject* self, SEL selector, NSUInteger index) {
    whileReading()();
    return sendSuper<id>(self, class_getSuperclass(object_getClass(self)), selector, index);
}

TEST(SequenceThreads, reversingHoldsTheLockUntilTheLastElementIsRead) {
    Class* const watched = objc_allocateClassPair(object_getClass(NSMutableArray::array()), "WatchedArray");
    class_addMethod(watched, "objectAtIndex:"_sel, imp(&readAndAct));
    objc_registerClassPair(watched);
    const Ref<NSMutableArray> list = test::countedTo<NSMutableArray>(3);
    object_setClass(list, watched);

    std::atomic<bool> hasLock{false};
    std::thread writer;
    int reads = 0;
    whileReading() = [&] {
        if (++reads == 1) {
            writer = std::thread([&] {
                const Synchronized lock(list);
                hasLock = true;
                list->removeAllObjects();
            });
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        EXPECT_FALSE(hasLock);
    };
    const Ref<NSMutableArray> reversed = zr_reverse(list);
    writer.join();
    whileReading() = nullptr;
    EXPECT_EQ(reads, 3);
    EXPECT_EQ(test::elements(reversed), "2 1 0");
    EXPECT_TRUE(hasLock);
    EXPECT_EQ(list->count(), 0U);
}

TEST(SequenceThreads, reversingTakesALockThatTheThreadAlreadyHas) {
    const Ref<NSMutableArray> list = test::countedTo<NSMutableArray>(3);
    const Synchronized lock(list);
    EXPECT_EQ(test::elements(zr_reverse(list)), "2 1 0");
}

TEST(SequenceThreads, listsThatDoNotChangeAreReadByAnyThread) {
    const Ref<NSArray> list = test::countedTo(200);
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < 50; ++round) {
                const Ref<NSMutableArray> odd =
                    zr_filter(list, [](NSObject* number, NSUInteger) { return intOf(number) % 2 == 1; });
                const id last = zr_reduce(list, [](NSObject*, NSObject* number) { return id(number); });
                const id found = zr_exists(list, [](NSObject* number) { return intOf(number) == 150; });
                wrong += odd->count() != 100 || last != list->lastObject() || intOf(found) != 150;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(wrong, 0);
}

} // namespace

} // namespace zr
