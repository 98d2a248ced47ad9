#pragma once

#include <zrbasic/platform/foundation/dispatch_time.h>
#include <zrbasic/platform/runtime/declare.h>

#include <cstddef>
#include <cstdint>
#include <mutex>

namespace zr {

/// A counting semaphore: as many takers pass as its count says, the others wait for a signal each.
///
/// Waiters are let through in the order in which they came; who comes later does not overtake. It may end with fewer
/// signals than waits: nothing checks that they are in balance, and what is being waited on stays. Used through the
/// functions below, from any thread.
class ZR_EXPORT OS_dispatch_semaphore final : public NSObject {
    ZR_DECLARE_CLASS(OS_dispatch_semaphore, NSObject)
  public:
    ~OS_dispatch_semaphore() override;

    /// How many threads wait at this moment; for diagnosis, as it may be another number by now.
    [[nodiscard]] std::size_t waiterCount() const;

  private:
    struct Waiter;
    friend Ref<OS_dispatch_semaphore> dispatch_semaphore_create(std::int64_t value);
    friend std::int64_t dispatch_semaphore_wait(OS_dispatch_semaphore* semaphore, dispatch_time_t timeout);
    friend std::int64_t dispatch_semaphore_signal(OS_dispatch_semaphore* semaphore);

    [[nodiscard]] bool wait(dispatch_time_t deadline);
    [[nodiscard]] bool signal();
    void leave(Waiter& waiter);

    mutable std::mutex m_mutex;
    /// Above zero only while nobody waits.
    std::int64_t m_count = 0;
    Waiter* m_first = nullptr;
    Waiter* m_last = nullptr;
};

using dispatch_semaphore_t = Ref<OS_dispatch_semaphore>;

/// A new semaphore that lets `value` takers pass; null for a negative value.
[[nodiscard]] ZR_EXPORT Ref<OS_dispatch_semaphore> dispatch_semaphore_create(std::int64_t value);

/// Takes one from the count, after waiting for it until `timeout` if need be. 0 when it was taken, not 0 when the time
/// came first and the count is as before. A deadline that has passed tries once. For a null semaphore 0, at once.
ZR_EXPORT std::int64_t dispatch_semaphore_wait(OS_dispatch_semaphore* semaphore, dispatch_time_t timeout);

/// Lets the longest waiting taker pass, or adds one to the count when nobody waits. Not 0 when it let one pass. A null
/// semaphore does nothing.
ZR_EXPORT std::int64_t dispatch_semaphore_signal(OS_dispatch_semaphore* semaphore);

} // namespace zr
