#include <zrbasic/platform/foundation/key_value_observing.h>

#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/key_value_coding.h>
#include <zrbasic/platform/foundation/number.h>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace {

using namespace zr;

class SharedQuote : public NSObject {
    ZR_OBJECT(SharedQuote, NSObject)

  public:
    ZR_PROPERTY(Ref<NSNumber>, price, setPrice)
};

class CountingListener : public NSObject {
    ZR_OBJECT(CountingListener, NSObject)

  public:
    std::atomic<int> told{0};
    void observe(NSString*, NSObject*, NSDictionary*, void*) { ++told; }
    ZR_METHOD(observe, "observeValueForKeyPath:ofObject:change:context:")
};

TEST(KeyValueObservingThreads, observersDieOnAnotherThreadWhileSettersRun) {
    const auto quote = make<SharedQuote>();
    std::vector<Ref<NSObject>> observers;
    for (int i = 0; i < 200; ++i) {
        observers.push_back(make<CountingListener>());
        addObserver_forKeyPath_options_context(quote, observers.back(), "price"_ns, NSKeyValueObservingOptionNew,
                                               nullptr);
    }
    const auto staying = make<CountingListener>();
    addObserver_forKeyPath_options_context(quote, staying, "price"_ns, NSKeyValueObservingOptionNew, nullptr);
    std::atomic<bool> isDone{false};
    std::thread ending([&] {
        for (auto& observer : observers) {
            observer = nullptr;
            std::this_thread::yield();
        }
        isDone = true;
    });
    int sets = 0;
    while (!isDone) {
        quote->setPrice(box(++sets));
    }
    ending.join();
    EXPECT_EQ(staying->told, sets);
}

TEST(KeyValueObservingThreads, pairsOfDifferentThreadsDoNotMatch) {
    const auto quote = make<SharedQuote>();
    const auto listener = make<CountingListener>();
    addObserver_forKeyPath_options_context(quote, listener, "price"_ns, 0, nullptr);
    willChangeValueForKey(quote, "price"_ns);
    std::thread([&] { didChangeValueForKey(quote, "price"_ns); }).join();
    EXPECT_EQ(listener->told, 0);
    didChangeValueForKey(quote, "price"_ns);
    EXPECT_EQ(listener->told, 1);
}

TEST(KeyValueObservingThreads, objectsOfOneClassAreObservedOnManyThreads) {
    std::atomic<int> told{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            const auto listener = make<CountingListener>();
            for (int round = 0; round < 200; ++round) {
                const auto quote = make<SharedQuote>();
                addObserver_forKeyPath_options_context(quote, listener, "price"_ns, 0, nullptr);
                setValue_forKey(quote, box(round), "price"_ns);
                quote->setPrice(nullptr);
                removeObserver_forKeyPath(quote, listener, "price"_ns);
            }
            told += listener->told;
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(told, 4 * 200 * 2);
}

} // namespace
