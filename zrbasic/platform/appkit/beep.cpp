#include <zrbasic/platform/appkit/beep.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <utility>

namespace zr {
namespace {

using Handler = std::function<void()>;

struct Beeper {
    std::mutex mutex;
    std::shared_ptr<const Handler> handler;
    std::atomic<std::uint64_t> count{0};
};

Beeper& beeper() {
    static Beeper& instance = *new Beeper;
    return instance;
}

} // namespace

void NSBeep() {
    Beeper& state = beeper();
    state.count.fetch_add(1, std::memory_order_relaxed);
    std::shared_ptr<const Handler> handler;
    {
        const std::lock_guard lock(state.mutex);
        handler = state.handler;
    }
    // Called without the lock, so that a handler may beep or replace itself.
    if (handler != nullptr)
        (*handler)();
}

void setBeepHandler(std::function<void()> handler) {
    std::shared_ptr<const Handler> replacement;
    if (handler)
        replacement = std::make_shared<const Handler>(std::move(handler));
    const std::lock_guard lock(beeper().mutex);
    beeper().handler.swap(replacement);
}

std::uint64_t beepCount() {
    return beeper().count.load(std::memory_order_relaxed);
}

} // namespace zr
