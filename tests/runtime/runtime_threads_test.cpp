#include "sample_model.h"

#include <zrbasic/platform/runtime/association.h>
#include <zrbasic/platform/runtime/synchronized.h>

#include <gtest/gtest.h>

#include <thread>

namespace zr {
namespace {

using test::Sample;

/// Runs `work(i)` on four threads at once.
template <class Work>
void onFourThreads(Work work) {
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back(work, i);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(RuntimeThreads, countsStayRightAndTheObjectEndsOnce) {
    std::string log;
    {
        const auto object = test::witness(log, 'a');
        onFourThreads([&](int) {
            for (int i = 0; i < 20000; ++i) {
                const id kept = object;
                const id again = kept;
            }
        });
        EXPECT_EQ(log, "");
    }
    EXPECT_EQ(log, "a");
}

TEST(RuntimeThreads, weakReadersGetAWholeObjectOrNull) {
    for (int round = 0; round < 200; ++round) {
        auto object = make<Sample>();
        object->setMiddle(77);
        const Weak<Sample> weak(object);
        std::atomic<int> wrong{0};
        std::thread reader([&] {
            while (const Ref<Sample> read = weak.lock()) {
                wrong += read->middle() != 77 ? 1 : 0;
            }
        });
        object = nullptr;
        reader.join();
        EXPECT_EQ(wrong, 0);
    }
}

TEST(RuntimeThreads, attachmentsMayBeSetAndReadAtOnce) {
    static const char keys[4] = {};
    const id object = make<NSObject>();
    onFourThreads([&](int thread) {
        for (int i = 0; i < 2000; ++i) {
            objc_setAssociatedObject(object, &keys[i % 4], make<NSObject>(), OBJC_ASSOCIATION_RETAIN);
            const id read = objc_getAssociatedObject(object, &keys[(i + thread) % 4]);
            if (read) {
                static_cast<void>(read->hash());
            }
        }
    });
    objc_removeAssociatedObjects(object);
    EXPECT_EQ(objc_getAssociatedObject(object, &keys[0]), nullptr);
}

TEST(RuntimeThreads, anObjectsLockAdmitsOneThreadAtATime) {
    const id object = make<NSObject>();
    int plainCounter = 0;
    onFourThreads([&](int) {
        for (int i = 0; i < 2000; ++i) {
            const Synchronized lock(object);
            const Synchronized again(object);
            ++plainCounter;
        }
    });
    EXPECT_EQ(plainCounter, 8000);
}

class Switching : public NSObject {
    ZR_OBJECT(Switching, NSObject)

  public:
    int one() { return 1; }
    ZR_METHOD(one, "one")
    int two() { return 2; }
    ZR_METHOD(two, "two")
};

TEST(RuntimeThreads, messagesSeeOneOfTheTwoWhileImplementationsAreExchanged) {
    const auto object = make<Switching>();
    std::atomic<int> wrong{0};
    onFourThreads([&](int thread) {
        for (int i = 0; i < 2000; ++i) {
            if (thread == 0) {
                method_exchangeImplementations(class_getInstanceMethod(Switching::classObject(), "one"_sel),
                                               class_getInstanceMethod(Switching::classObject(), "two"_sel));
            } else {
                const int got = send<int>(object, "one"_sel);
                wrong += got != 1 && got != 2 ? 1 : 0;
            }
        }
    });
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(send<int>(object, "one"_sel), 1);
}

TEST(RuntimeThreads, selectorsAndClassesMadeAtOnceAreMadeOnce) {
    std::atomic<int> made{0};
    std::array<SEL, 4> selectors;
    onFourThreads([&](int thread) {
        selectors[static_cast<std::size_t>(thread)] = sel_registerName("madeByManyThreads:");
        for (int i = 0; i < 50; ++i) {
            const std::string name = "ThreadPair" + std::to_string(i);
            if (Class* const pair = objc_allocateClassPair(Sample::classObject(), name)) {
                objc_registerClassPair(pair);
                ++made;
            }
            EXPECT_NE(objc_getClass(name), nullptr);
        }
    });
    EXPECT_EQ(selectors[0], selectors[3]);
    EXPECT_GE(made, 50);
}

TEST(RuntimeThreads, constantStringsAreTheSameObjectOnEveryThread) {
    std::array<id, 4> seen;
    onFourThreads([&](int thread) { seen[static_cast<std::size_t>(thread)] = "one constant"_ns; });
    EXPECT_EQ(seen[0], seen[1]);
    EXPECT_EQ(seen[0], seen[3]);
}

} // namespace
} // namespace zr
