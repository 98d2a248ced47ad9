#pragma once

#include <atomic>
#include <thread>

#if __has_include(<sys/single_threaded.h>)
#include <sys/single_threaded.h>
#endif

namespace zr::detail {

/// Whether no second thread has been started yet. Counting without locked instructions is then safe and several
/// times faster; systems that cannot tell always count atomically.
inline bool isSingleThreaded() {
#if __has_include(<sys/single_threaded.h>)
    return __libc_single_threaded != 0;
#else
    return false;
#endif
}

/// A lock for a handful of instructions; waiting threads give way to each other.
class SpinLock {
  public:
    void lock() {
        if (isSingleThreaded()) {
            // Nobody to wait for; a thread started before the unlock still finds it taken.
            m_flag.store(true, std::memory_order_relaxed);
            return;
        }
        while (m_flag.exchange(true, std::memory_order_acquire)) {
            while (m_flag.load(std::memory_order_relaxed)) {
                std::this_thread::yield();
            }
        }
    }

    void unlock() { m_flag.store(false, std::memory_order_release); }

  private:
    std::atomic<bool> m_flag{false};
};

} // namespace zr::detail
