#include <zrbasic/platform/foundation/dispatch_semaphore.h>

#include <zrbasic/platform/foundation/deadline_p.h>

namespace zr {

/// A thread that waits; lives on its stack. One condition for each, so that a signal wakes the right one and no other.
struct OS_dispatch_semaphore::Waiter {
    std::condition_variable wake;
    Waiter* previous = nullptr;
    Waiter* next = nullptr;
    bool isLetThrough = false;
};

ZR_DEFINE_CLASS(OS_dispatch_semaphore) {}

OS_dispatch_semaphore::~OS_dispatch_semaphore() = default;

bool OS_dispatch_semaphore::wait(dispatch_time_t deadline) {
    std::unique_lock lock(m_mutex);
    if (m_count > 0) {
        --m_count;
        return true;
    }
    if (deadline == DISPATCH_TIME_NOW) {
        return false;
    }
    Waiter self;
    self.previous = m_last;
    (m_last ? m_last->next : m_first) = &self;
    m_last = &self;
    if (!detail::waitUntil(self.wake, lock, deadline, [&self] { return self.isLetThrough; })) {
        leave(self);
        return false;
    }
    return true;
}

bool OS_dispatch_semaphore::signal() {
    const std::lock_guard lock(m_mutex);
    Waiter* const waiter = m_first;
    if (!waiter) {
        ++m_count;
        return false;
    }
    leave(*waiter);
    waiter->isLetThrough = true;
    // Under the lock: the waiter's stack is gone as soon as it can go on.
    waiter->wake.notify_one();
    return true;
}

void OS_dispatch_semaphore::leave(Waiter& waiter) {
    (waiter.previous ? waiter.previous->next : m_first) = waiter.next;
    (waiter.next ? waiter.next->previous : m_last) = waiter.previous;
}

std::size_t OS_dispatch_semaphore::waiterCount() const {
    const std::lock_guard lock(m_mutex);
    std::size_t count = 0;
    for (const Waiter* waiter = m_first; waiter; waiter = waiter->next) {
        ++count;
    }
    return count;
}

Ref<OS_dispatch_semaphore> dispatch_semaphore_create(std::int64_t value) {
    if (value < 0) {
        return {};
    }
    Ref<OS_dispatch_semaphore> semaphore = alloc<OS_dispatch_semaphore>();
    semaphore->m_count = value;
    return semaphore;
}

std::int64_t dispatch_semaphore_wait(OS_dispatch_semaphore* semaphore, dispatch_time_t timeout) {
    // Kept, because whoever owns it may let go while this thread sleeps.
    const Ref<OS_dispatch_semaphore> kept(semaphore);
    return !semaphore || semaphore->wait(timeout) ? 0 : 1;
}

std::int64_t dispatch_semaphore_signal(OS_dispatch_semaphore* semaphore) {
    // Kept, because the taker that it lets through may be the one who lets go of it.
    const Ref<OS_dispatch_semaphore> kept(semaphore);
    return semaphore && semaphore->signal() ? 1 : 0;
}

} // namespace zr
