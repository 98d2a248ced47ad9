#include <zrbasic/platform/foundation/dispatch_queue.h>

#include <benchmark/benchmark.h>

#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <utility>

// A thousand callbacks put into the main queue and run. Beside it, the queue that one writes by hand: a deque of
// callbacks behind a mutex, without deadlines, wake-ups and limits to a drain.

namespace {

using namespace zr;

constexpr std::int64_t callbackCount = 1000;

struct OurQueue {
    void put(std::function<void()> work) { dispatch_async(dispatch_get_main_queue(), std::move(work)); }
    void run() { drainMainQueue(); }
};

class HandWrittenQueue {
  public:
    void put(std::function<void()> work) {
        const std::lock_guard lock(m_mutex);
        m_works.push_back(std::move(work));
    }
    void run() {
        while (const std::function<void()> work = next()) {
            work();
        }
    }

  private:
    std::function<void()> next() {
        const std::lock_guard lock(m_mutex);
        if (m_works.empty()) {
            return {};
        }
        std::function<void()> work = std::move(m_works.front());
        m_works.pop_front();
        return work;
    }

    std::mutex m_mutex;
    std::deque<std::function<void()>> m_works;
};

template <class Queue>
void putAndRun(benchmark::State& state) {
    Queue queue;
    for (auto _ : state) {
        std::int64_t sum = 0;
        for (std::int64_t i = 0; i < callbackCount; ++i) {
            queue.put([&sum, i] { sum += i; });
        }
        queue.run();
        if (sum != callbackCount * (callbackCount - 1) / 2) {
            state.SkipWithError("callbacks were lost");
            break;
        }
    }
    state.SetItemsProcessed(state.iterations() * callbackCount);
}

BENCHMARK(putAndRun<OurQueue>);
BENCHMARK(putAndRun<HandWrittenQueue>);

} // namespace
