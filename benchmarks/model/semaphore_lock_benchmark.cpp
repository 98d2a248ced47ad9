#include <zrbasic/model/semaphore_lock.h>

#include <benchmark/benchmark.h>

#include <mutex>
#include <semaphore>

// Taking a lock and giving it back, with one thread and with two that want it. Beside it, the standard library's mutex
// and counting semaphore, of which neither knows an order of its takers.

namespace {

using namespace zr;

struct OurLock {
    void take() { lock->lock(); }
    void giveBack() { lock->unlock(); }

    Ref<ZRSemaphoreLock> lock = make<ZRSemaphoreLock>();
};

struct MutexLock {
    void take() { mutex.lock(); }
    void giveBack() { mutex.unlock(); }

    std::mutex mutex;
};

struct StandardSemaphore {
    void take() { semaphore.acquire(); }
    void giveBack() { semaphore.release(); }

    std::counting_semaphore<1000> semaphore{1};
};

template <class Lock>
struct Shared {
    static inline Lock lock;
    static inline std::int64_t count = 0;
};

template <class Lock>
void takeAndGiveBack(benchmark::State& state) {
    if (state.thread_index() == 0) {
        Shared<Lock>::count = 0;
    }
    for (auto _ : state) {
        Shared<Lock>::lock.take();
        ++Shared<Lock>::count;
        Shared<Lock>::lock.giveBack();
    }
    // The threads have met at the end of the loop.
    if (state.thread_index() == 0 &&
        Shared<Lock>::count != static_cast<std::int64_t>(state.iterations()) * state.threads()) {
        state.SkipWithError("it let two in at once");
    }
}

BENCHMARK(takeAndGiveBack<OurLock>)->Threads(1)->Threads(2)->UseRealTime();
BENCHMARK(takeAndGiveBack<MutexLock>)->Threads(1)->Threads(2)->UseRealTime();
BENCHMARK(takeAndGiveBack<StandardSemaphore>)->Threads(1)->Threads(2)->UseRealTime();

} // namespace
