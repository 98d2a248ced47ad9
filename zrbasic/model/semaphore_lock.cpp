#include <zrbasic/model/semaphore_lock.h>

#include <algorithm>

namespace zr {

ZRSemaphoreLock::~ZRSemaphoreLock() = default;

id ZRSemaphoreLock::init() {
    return initWithValue(1);
}

id ZRSemaphoreLock::initWithValue(NSInteger value) {
    m_semaphore_lock_t = dispatch_semaphore_create(std::max<NSInteger>(value, 1));
    return id(this);
}

void ZRSemaphoreLock::lock() {
    lockWithTimeout(DISPATCH_TIME_FOREVER);
}

void ZRSemaphoreLock::lockWithTimeout(dispatch_time_t timeout) {
    dispatch_semaphore_wait(m_semaphore_lock_t.get(), timeout);
}

void ZRSemaphoreLock::unlock() {
    dispatch_semaphore_signal(m_semaphore_lock_t.get());
}

} // namespace zr
