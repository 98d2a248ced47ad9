#include <zrbasic/model/observation.h>
#include <zrbasic/platform/foundation/number.h>

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

// A property set with no, one and ten observers. Beside it, what a program without this library would write: a shared
// pointer with a list of weak observer records that are called directly.

namespace {

using namespace zr;

class ObservedQuote : public NSObject {
    ZR_OBJECT(ObservedQuote, NSObject)

  public:
    ZR_PROPERTY(Ref<NSNumber>, price, setPrice)
};

struct PlainNumber {
    explicit PlainNumber(double number) : value(number) {}

    double value;
};

class PlainQuote {
  public:
    using Callback =
        std::function<void(PlainQuote& object, const std::string& key, const std::shared_ptr<PlainNumber>& oldValue,
                           const std::shared_ptr<PlainNumber>& newValue)>;

    struct Record {
        std::weak_ptr<void> observer;
        std::string key;
        Callback callback;
    };

    void setPrice(std::shared_ptr<PlainNumber> price) {
        static const std::string key = "price";
        const std::shared_ptr<PlainNumber> old = m_price;
        m_price = price;
        for (auto record = observers.rbegin(); record != observers.rend(); ++record) {
            if (const auto observer = record->observer.lock()) {
                if (record->key == key) {
                    record->callback(*this, key, old, price);
                }
            }
        }
    }

    void store(const std::shared_ptr<PlainNumber>& price) { m_price = price; }
    [[nodiscard]] const std::shared_ptr<PlainNumber>& price() const { return m_price; }

    std::vector<Record> observers;

  private:
    std::shared_ptr<PlainNumber> m_price;
};

/// Counting references is cheaper until a process starts its first thread, for us and for the standard library alike.
void startThreadOnce() {
    static const bool started = [] {
        std::thread([] {}).join();
        return true;
    }();
    benchmark::DoNotOptimize(started);
}

[[gnu::noinline]] void setPrice(ObservedQuote* quote, NSNumber* price) {
    quote->setPrice(price);
}

[[gnu::noinline]] void storePrice(PlainQuote& quote, const std::shared_ptr<PlainNumber>& price) {
    quote.store(price);
}

void setUnobserved(benchmark::State& state) {
    if (state.range(0) != 0) {
        startThreadOnce();
    }
    const auto quote = make<ObservedQuote>();
    const Ref<NSNumber> prices[] = {box(1.5), box(2.5)};
    setPrice(quote, prices[0]);
    if (quote->price() != prices[0]) {
        state.SkipWithError("the price was not set");
        return;
    }
    std::size_t i = 0;
    for (auto _ : state) {
        setPrice(quote, prices[++i & 1]);
    }
}

void storeSharedPointer(benchmark::State& state) {
    if (state.range(0) != 0) {
        startThreadOnce();
    }
    PlainQuote quote;
    const std::shared_ptr<PlainNumber> prices[] = {std::make_shared<PlainNumber>(1.5),
                                                   std::make_shared<PlainNumber>(2.5)};
    storePrice(quote, prices[0]);
    if (quote.price() != prices[0]) {
        state.SkipWithError("the price was not set");
        return;
    }
    std::size_t i = 0;
    for (auto _ : state) {
        storePrice(quote, prices[++i & 1]);
    }
}

void setObserved(benchmark::State& state) {
    if (state.range(1) != 0) {
        startThreadOnce();
    }
    const auto quote = make<ObservedQuote>();
    const Ref<NSNumber> prices[] = {box(1.5), box(2.5)};
    setPrice(quote, prices[0]);
    std::vector<Ref<NSObject>> observers;
    long long calls = 0;
    long long rises = 0;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        observers.push_back(make<NSObject>());
        addObserver_forKeyPath_withBlock(quote, observers.back(), "price"_ns,
                                         [&](NSObject*, NSString*, NSObject* oldValue, NSObject* newValue) {
                                             ++calls;
                                             rises += oldValue != newValue;
                                         });
    }
    setPrice(quote, prices[1]);
    if (calls != state.range(0) || rises != calls || quote->price() != prices[1]) {
        state.SkipWithError("the observers were not called");
        return;
    }
    std::size_t i = 0;
    for (auto _ : state) {
        setPrice(quote, prices[i++ & 1]);
    }
    benchmark::DoNotOptimize(calls);
    benchmark::DoNotOptimize(rises);
}

[[gnu::noinline]] void setPlainPrice(PlainQuote& quote, const std::shared_ptr<PlainNumber>& price) {
    quote.setPrice(price);
}

void callObserversDirectly(benchmark::State& state) {
    if (state.range(1) != 0) {
        startThreadOnce();
    }
    PlainQuote quote;
    const std::shared_ptr<PlainNumber> prices[] = {std::make_shared<PlainNumber>(1.5),
                                                   std::make_shared<PlainNumber>(2.5)};
    setPlainPrice(quote, prices[0]);
    std::vector<std::shared_ptr<void>> observers;
    long long calls = 0;
    long long rises = 0;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        observers.push_back(std::make_shared<int>(0));
        quote.observers.push_back({observers.back(), "price",
                                   [&](PlainQuote&, const std::string&, const std::shared_ptr<PlainNumber>& oldValue,
                                       const std::shared_ptr<PlainNumber>& newValue) {
                                       ++calls;
                                       rises += oldValue != newValue;
                                   }});
    }
    setPlainPrice(quote, prices[1]);
    if (calls != state.range(0) || rises != calls || quote.price() != prices[1]) {
        state.SkipWithError("the observers were not called");
        return;
    }
    std::size_t i = 0;
    for (auto _ : state) {
        setPlainPrice(quote, prices[i++ & 1]);
    }
    benchmark::DoNotOptimize(calls);
    benchmark::DoNotOptimize(rises);
}

// In this order: a thread, once started, is felt by everything behind it.
BENCHMARK(storeSharedPointer)->ArgName("threads")->Arg(0);
BENCHMARK(setUnobserved)->ArgName("threads")->Arg(0);
BENCHMARK(callObserversDirectly)->ArgNames({"observers", "threads"})->Args({1, 0})->Args({10, 0});
BENCHMARK(setObserved)->ArgNames({"observers", "threads"})->Args({1, 0})->Args({10, 0});
BENCHMARK(storeSharedPointer)->ArgName("threads")->Arg(1);
BENCHMARK(setUnobserved)->ArgName("threads")->Arg(1);
BENCHMARK(callObserversDirectly)->ArgNames({"observers", "threads"})->Args({1, 1})->Args({10, 1});
BENCHMARK(setObserved)->ArgNames({"observers", "threads"})->Args({1, 1})->Args({10, 1});

} // namespace
