#include "temporary_defaults.h"

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/number.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>
#include <vector>

namespace zr {

namespace {

class UserDefaultsThreads : public test::TemporaryDefaults {
  protected:
    static void together(int count, const std::function<void(int)>& action) {
        std::vector<std::thread> threads;
        for (int i = 0; i < count; ++i) {
            threads.emplace_back(action, i);
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    }
};

TEST_F(UserDefaultsThreads, whatEachOneSetsIsThereInTheEnd) {
    std::atomic<int> written{0};
    together(4, [&](int thread) {
        for (int i = 0; i < 20; ++i) {
            const auto key = NSString::stringWithFormat("%d.%d"_ns, thread, i);
            defaults->setObject_forKey(array({box(i), key}), key);
            written += defaults->synchronize();
            written += defaults->arrayForKey(key)->count() == 2;
        }
    });
    EXPECT_EQ(written, 4 * 20 * 2);
    restart();
    EXPECT_EQ(defaults->dictionaryRepresentation()->count(), 80U);
}

TEST_F(UserDefaultsThreads, oneValueIsNeverSeenInPieces) {
    defaults->setObject_forKey(array({box(0), box(0)}), "pair"_ns);
    std::atomic<int> torn{0};
    together(4, [&](int thread) {
        for (int i = 0; i < 200; ++i) {
            if (thread == 0) {
                defaults->setObject_forKey(array({box(i), box(i)}), "pair"_ns);
            } else if (thread == 1 && i % 10 == 0) {
                defaults->synchronize();
            } else {
                const Ref<NSArray> pair = defaults->arrayForKey("pair"_ns);
                torn += !pair->firstObject()->isEqual(pair->lastObject());
            }
        }
    });
    EXPECT_EQ(torn, 0);
}

TEST_F(UserDefaultsThreads, whatIsSetWhileAnotherThreadWritesIsKept) {
    std::atomic<bool> isOver{false};
    int lost = 0;
    together(2, [&](int thread) {
        if (thread == 0) {
            while (!isOver) {
                defaults->synchronize();
            }
            return;
        }
        for (int i = 1; i <= 3000; ++i) {
            defaults->setInteger_forKey(i, "key"_ns);
            std::this_thread::sleep_for(std::chrono::microseconds(20));
            lost += defaults->integerForKey("key"_ns) != i;
        }
        isOver = true;
    });
    EXPECT_EQ(lost, 0);
    restart();
    EXPECT_EQ(defaults->integerForKey("key"_ns), 3000);
}

TEST_F(UserDefaultsThreads, otherDomainsAreSharedLikewise) {
    together(4, [&](int thread) {
        const auto name = NSString::stringWithFormat("com.example.%d"_ns, thread % 2);
        const auto suite = make<NSUserDefaults>(&NSUserDefaults::initWithSuiteName, name);
        for (int i = 0; i < 50; ++i) {
            const auto key = NSString::stringWithFormat("%d.%d"_ns, thread, i);
            suite->setInteger_forKey(i, key);
            defaults->registerDefaults(dictionary({{key, box(i)}}));
            (void)suite->dictionaryRepresentation();
        }
    });
    EXPECT_EQ(defaults->volatileDomainForName(NSRegistrationDomain())->count(), 200U);
    EXPECT_EQ(defaults->persistentDomainForName("com.example.1"_ns)->count(), 100U);
}

} // namespace

} // namespace zr
