#pragma once

#include <zrbasic/platform/foundation/dispatch_semaphore.h>

namespace zr {

/// A lock that may be given back by another thread than the one that took it, and that can be waited for with a limit.
///
/// Not re-entrant: who takes it twice without giving it back waits for himself. Takers pass in the order in which they
/// came. May be let go at any count. Works with `std::lock_guard`. Everything but the initialisers may be used from
/// any thread.
///
///     lock->lockWithTimeout(dispatch_time(DISPATCH_TIME_NOW, 50 * NSEC_PER_MSEC));
class ZR_EXPORT ZRSemaphoreLock : public NSObject {
    ZR_OBJECT(ZRSemaphoreLock, NSObject)

  public:
    ~ZRSemaphoreLock() override;

    /// A lock for one taker at a time.
    id init() override;
    /// A lock that `value` takers can hold at a time, at least one.
    virtual id initWithValue(NSInteger value);
    ZR_METHOD(initWithValue, "initWithValue:")

    /// Takes the lock, however long that lasts.
    void lock();
    ZR_METHOD(lock, "lock")
    /// Takes the lock or waits until the moment `timeout`, which is not a duration. A moment that has passed tries
    /// once.
    ///
    /// It does not tell whether it took the lock. An `unlock` after a wait that did not leaves the lock with room for
    /// one taker more than it had at first.
    void lockWithTimeout(dispatch_time_t timeout);
    ZR_METHOD(lockWithTimeout, "lockWithTimeout:")
    /// Lets the longest waiting taker in, or makes room for one.
    void unlock();
    ZR_METHOD(unlock, "unlock")

    /// The semaphore below; null, and the lock never holds anybody up, before an initialiser has run.
    ZR_READONLY(dispatch_semaphore_t, semaphore_lock_t)
};

} // namespace zr
