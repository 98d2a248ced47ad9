#include <zrbasic/platform/foundation/notification_center.h>
#include <zrbasic/platform/foundation/string.h>

#include <benchmark/benchmark.h>

#include <cstdint>
#include <functional>
#include <string>
#include <thread>
#include <vector>

// One post to 0, 1, 10 and 100 listeners, in a centre where a hundred others listen to other names. Beside it, what one
// writes by hand: a vector of callbacks that is walked, which knows neither names nor lifetimes nor threads.

namespace {

using namespace zr;

class Counter : public NSObject {
    ZR_OBJECT(Counter, NSObject)

  public:
    void hear(NSNotification*) { ++count; }
    ZR_METHOD(hear, "hear:")

    std::int64_t count = 0;
};

struct Event {
    const std::string& name;
    const void* object;
};

/// Counting of references is cheaper before the first thread; an application has some.
void startAThread() {
    static const bool isStarted = (std::thread([] {}).join(), true);
    benchmark::DoNotOptimize(isStarted);
}

Ref<NSNotificationCenter> busyCenter(const Ref<Counter>& stranger) {
    const Ref<NSNotificationCenter> center = make<NSNotificationCenter>();
    for (int i = 0; i < 100; ++i) {
        center->addObserver_selector_name_object(stranger, "hear:"_sel,
                                                 NSString::stringWithFormat("other%d"_ns, i % 20), nullptr);
    }
    return center;
}

void check(benchmark::State& state, std::int64_t count) {
    if (count != static_cast<std::int64_t>(state.iterations()) * state.range(0)) {
        state.SkipWithError("somebody was not told");
    }
}

void postToObservers(benchmark::State& state) {
    startAThread();
    const Ref<Counter> stranger = make<Counter>();
    const Ref<NSNotificationCenter> center = busyCenter(stranger);
    std::vector<Ref<Counter>> observers;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        observers.push_back(make<Counter>());
        center->addObserver_selector_name_object(observers.back(), "hear:"_sel, "quote"_ns, nullptr);
    }
    for (auto _ : state) {
        center->postNotificationName_object("quote"_ns, stranger);
    }
    std::int64_t count = 0;
    for (const Ref<Counter>& observer : observers) {
        count += observer->count;
    }
    check(state, count);
}

void postToBlocks(benchmark::State& state) {
    startAThread();
    const Ref<Counter> stranger = make<Counter>();
    const Ref<NSNotificationCenter> center = busyCenter(stranger);
    std::int64_t count = 0;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        (void)center->addObserverForName_object_usingBlock("quote"_ns, nullptr, [&count](NSNotification*) { ++count; });
    }
    for (auto _ : state) {
        center->postNotificationName_object("quote"_ns, stranger);
    }
    check(state, count);
}

void callHandWrittenCallbacks(benchmark::State& state) {
    startAThread();
    const std::string name = "quote";
    std::int64_t count = 0;
    std::vector<std::function<void(const Event&)>> callbacks;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        callbacks.emplace_back([&count](const Event& event) { count += event.object != nullptr ? 1 : 0; });
    }
    for (auto _ : state) {
        const Event event{name, &state};
        for (const auto& callback : callbacks) {
            callback(event);
        }
        benchmark::ClobberMemory();
    }
    check(state, count);
}

/// A window that opens and closes: three registrations and their end, beside a thousand others.
void registerAndRemove(benchmark::State& state) {
    startAThread();
    const Ref<NSNotificationCenter> center = make<NSNotificationCenter>();
    std::vector<Ref<Counter>> others;
    for (int i = 0; i < 1000; ++i) {
        others.push_back(make<Counter>());
        center->addObserver_selector_name_object(others.back(), "hear:"_sel, "quote"_ns, nullptr);
    }
    const Ref<Counter> window = make<Counter>();
    for (auto _ : state) {
        center->addObserver_selector_name_object(window, "hear:"_sel, "quote"_ns, nullptr);
        center->addObserver_selector_name_object(window, "hear:"_sel, "close"_ns, window);
        center->addObserver_selector_name_object(window, "hear:"_sel, nullptr, window);
        center->removeObserver(window);
    }
    center->postNotificationName_object("quote"_ns, window);
    if (window->count != 0 || others.back()->count != 1) {
        state.SkipWithError("the wrong ones were removed");
    }
}

BENCHMARK(postToObservers)->Arg(0)->Arg(1)->Arg(10)->Arg(100);
BENCHMARK(postToBlocks)->Arg(1)->Arg(10)->Arg(100);
BENCHMARK(callHandWrittenCallbacks)->Arg(0)->Arg(1)->Arg(10)->Arg(100);
BENCHMARK(registerAndRemove);

} // namespace
