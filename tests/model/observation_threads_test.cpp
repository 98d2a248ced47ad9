#include <zrbasic/model/observation.h>

#include <zrbasic/model/object_helpers.h>
#include <zrbasic/model/object_model_cache.h>
#include <zrbasic/model/weak_association.h>
#include <zrbasic/platform/foundation/number.h>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace {

using namespace zr;

class ThreadQuote : public NSObject {
    ZR_OBJECT(ThreadQuote, NSObject)

  public:
    ZR_PROPERTY(Ref<NSNumber>, price, setPrice)
};

TEST(ObservationThreads, observersDieOnAnotherThreadWhileSettersRun) {
    const auto quote = make<ThreadQuote>();
    constexpr int observerCount = 400;
    std::vector<Ref<NSObject>> observers;
    std::atomic<int> calls{0};
    for (int i = 0; i < observerCount; ++i) {
        observers.push_back(make<NSObject>());
        addObserver_forKeyPath_withBlock(quote, observers.back(), "price"_ns,
                                         [&](NSObject*, NSString*, NSObject*, NSObject*) { ++calls; });
    }
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
    EXPECT_LE(calls, sets * observerCount);
    calls = 0;
    quote->setPrice(box(-1));
    EXPECT_EQ(calls, 0) << "all of them are gone";
    EXPECT_EQ(quote->price()->intValue(), -1);
}

TEST(ObservationThreads, objectsOfOneClassAreObservedOnManyThreads) {
    std::atomic<int> calls{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            const auto observer = make<NSObject>();
            for (int round = 0; round < 200; ++round) {
                const auto quote = make<ThreadQuote>();
                addObserver_forKeyPath_withBlock(quote, observer, "price"_ns,
                                                 [&](NSObject*, NSString*, NSObject*, NSObject*) { ++calls; });
                quote->setPrice(box(round));
                quote->setPrice(nullptr);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(calls, 4 * 200 * 2);
}

TEST(ObjectIdentifierThreads, twoThreadsAreGivenTheSameIdentifier) {
    for (int round = 0; round < 200; ++round) {
        const auto object = make<NSObject>();
        Ref<NSString> other;
        std::thread thread([&] { other = objectIdentifier(object); });
        const Ref<NSString> own = objectIdentifier(object);
        thread.join();
        ASSERT_TRUE(own->isEqual(other));
    }
}

TEST(ObjectModelCacheThreads, twoThreadsAreGivenTheSameTable) {
    std::vector<std::thread> threads;
    std::vector<Ref<_ZRObjectModelCache>> tables(4);
    for (std::size_t i = 0; i < tables.size(); ++i) {
        threads.emplace_back([&, i] {
            tables[i] = _ZRObjectModelCacheManager::sharedManager()->modelCacheOfClass(ThreadQuote::classObject());
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const auto& table : tables) {
        EXPECT_EQ(table, tables.front());
    }
}

TEST(WeakAssociationThreads, theHeldObjectDiesOnAnotherThread) {
    constexpr char key = 0;
    const auto owner = make<NSObject>();
    for (int round = 0; round < 500; ++round) {
        auto held = make<NSObject>();
        setWeakObject_withKey(owner, held, &key);
        std::thread thread([&] { held = nullptr; });
        while (const id seen = weakObjectWithKey(owner, &key)) {
            ASSERT_EQ(seen->class_(), NSObject::classObject());
        }
        thread.join();
        EXPECT_EQ(weakObjectWithKey(owner, &key), nullptr);
    }
}

} // namespace
