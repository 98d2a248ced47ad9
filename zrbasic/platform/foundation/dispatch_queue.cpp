#include <zrbasic/platform/foundation/dispatch_queue.h>

#include <zrbasic/platform/foundation/deadline_p.h>
#include <zrbasic/platform/foundation/thread.h>

#include <algorithm>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <utility>

namespace zr {
namespace {

using Work = std::function<void()>;
using std::chrono::nanoseconds;

// A time of day may be set nearer while we sleep for it.
constexpr nanoseconds longestSleep = std::chrono::minutes(1);

class MainQueue {
  public:
    static MainQueue& shared() {
        static auto* const queue = new MainQueue;
        return *queue;
    }

    void append(Work work) {
        std::unique_lock lock(m_mutex);
        m_ready.push_back({m_nextSerial++, std::move(work)});
        wakeUp(lock);
    }

    void appendAt(dispatch_time_t when, Work work) {
        std::unique_lock lock(m_mutex);
        const bool isWall = detail::isWallTime(when);
        const std::int64_t key = isWall ? detail::wallNanoseconds(when) : static_cast<std::int64_t>(when);
        // Two lists, as deadlines of different clocks have no order.
        LaterByTime& later = isWall ? m_laterByDay : m_later;
        const auto place = later.emplace(key, Later{when, std::move(work)});
        if (place == later.begin()) {
            wakeUp(lock);
        }
    }

    std::size_t drain(FunctionRef<bool()> isDone, bool& hasEnded) {
        std::uint64_t end = 0;
        {
            const std::lock_guard lock(m_mutex);
            m_isWakingUp = false;
            takeDue(m_later);
            takeDue(m_laterByDay);
            end = m_nextSerial;
        }
        // However this ends, what stays behind must not be forgotten.
        const struct Afterwards {
            MainQueue& queue;
            ~Afterwards() { queue.wakeUpForRest(); }
        } afterwards{*this};
        std::size_t count = 0;
        while (!hasEnded) {
            const Work work = next(end);
            if (!work) {
                break;
            }
            ++count;
            work();
            hasEnded = isDone && isDone();
        }
        return count;
    }

    /// Sleeps until there may be something to run, but not beyond the deadline.
    void sleepUntil(dispatch_time_t deadline) {
        std::unique_lock lock(m_mutex);
        const nanoseconds limit = std::min(detail::timeLeft(deadline), longestSleep);
        const nanoseconds left = std::min(timeUntilWork().value_or(limit), limit);
        if (left > nanoseconds::zero()) {
            m_hasArrived.wait_for(lock, left);
        }
    }

    std::optional<nanoseconds> timeUntilWorkLocked() {
        const std::lock_guard lock(m_mutex);
        return timeUntilWork();
    }

    void setHandler(Work handler) {
        auto replacement = handler ? std::make_shared<const Work>(std::move(handler)) : nullptr;
        const std::lock_guard lock(m_handlerMutex);
        // The one before is let go after the lock, in case its end waits for a thread that wants to wake us up.
        m_handler.swap(replacement);
        if (timeUntilWorkLocked()) {
            callHandler();
        }
    }

  private:
    struct Ready {
        std::uint64_t serial;
        Work work;
    };
    struct Later {
        dispatch_time_t when;
        Work work;
    };
    using LaterByTime = std::multimap<std::int64_t, Later>;

    /// Wakes the main thread, unless that has been done since the last drain. Gives the lock back.
    void wakeUp(std::unique_lock<std::mutex>& lock) {
        const bool isFirst = !std::exchange(m_isWakingUp, true);
        m_hasArrived.notify_all();
        lock.unlock();
        if (isFirst) {
            callHandler();
        }
    }

    void wakeUpForRest() {
        std::unique_lock lock(m_mutex);
        if (!m_ready.empty()) {
            wakeUp(lock);
        }
    }

    void callHandler() {
        // Held while the handler runs, so that nobody takes it away meanwhile; the same thread may come here again.
        const std::lock_guard lock(m_handlerMutex);
        if (const auto handler = m_handler) {
            (*handler)();
        }
    }

    void takeDue(LaterByTime& later) {
        while (!later.empty() && detail::timeLeft(later.begin()->second.when) == nanoseconds::zero()) {
            m_ready.push_back({m_nextSerial++, std::move(later.begin()->second.work)});
            later.erase(later.begin());
        }
    }

    /// The next callback from before `end`; empty when there is none.
    Work next(std::uint64_t end) {
        const std::lock_guard lock(m_mutex);
        if (m_ready.empty() || m_ready.front().serial >= end) {
            return {};
        }
        Work work = std::move(m_ready.front().work);
        m_ready.pop_front();
        return work;
    }

    std::optional<nanoseconds> timeUntilWork() const {
        if (!m_ready.empty()) {
            return nanoseconds::zero();
        }
        std::optional<nanoseconds> nearest;
        for (const LaterByTime* const later : {&m_later, &m_laterByDay}) {
            if (!later->empty()) {
                const nanoseconds left = detail::timeLeft(later->begin()->second.when);
                nearest = std::min(nearest.value_or(left), left);
            }
        }
        return nearest;
    }

    std::mutex m_mutex;
    std::condition_variable m_hasArrived;
    std::deque<Ready> m_ready;
    LaterByTime m_later;
    LaterByTime m_laterByDay;
    std::uint64_t m_nextSerial = 0;
    bool m_isWakingUp = false;

    std::recursive_mutex m_handlerMutex;
    std::shared_ptr<const Work> m_handler;
};

} // namespace

ZR_DEFINE_CLASS(OS_dispatch_queue) {}

OS_dispatch_queue::~OS_dispatch_queue() = default;

OS_dispatch_queue* dispatch_get_main_queue() {
    static OS_dispatch_queue* const queue = alloc<OS_dispatch_queue>().leak();
    return queue;
}

void dispatch_async(OS_dispatch_queue* queue, std::function<void()> work) {
    if (work && queue == dispatch_get_main_queue()) {
        MainQueue::shared().append(std::move(work));
    }
}

void dispatch_after(dispatch_time_t when, OS_dispatch_queue* queue, std::function<void()> work) {
    if (work && when != DISPATCH_TIME_FOREVER && queue == dispatch_get_main_queue()) {
        MainQueue::shared().appendAt(when, std::move(work));
    }
}

std::size_t drainMainQueue() {
    bool hasEnded = false;
    return NSThread::isMainThread() ? MainQueue::shared().drain({}, hasEnded) : 0;
}

bool runMainQueueUntil(dispatch_time_t deadline, FunctionRef<bool()> isDone) {
    if (!NSThread::isMainThread()) {
        return false;
    }
    MainQueue& queue = MainQueue::shared();
    bool hasEnded = isDone && isDone();
    while (!hasEnded) {
        queue.drain(isDone, hasEnded);
        if (hasEnded || detail::timeLeft(deadline) == nanoseconds::zero()) {
            break;
        }
        queue.sleepUntil(deadline);
        hasEnded = isDone && isDone();
    }
    return hasEnded;
}

std::optional<std::chrono::nanoseconds> timeUntilMainQueueWork() {
    return MainQueue::shared().timeUntilWorkLocked();
}

void setMainQueueWakeUpHandler(std::function<void()> handler) {
    MainQueue::shared().setHandler(std::move(handler));
}

} // namespace zr
