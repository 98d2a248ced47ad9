#include <zrbasic/platform/foundation/run_loop.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/dispatch_queue.h>
#include <zrbasic/platform/foundation/run_loop_p.h>
#include <zrbasic/platform/foundation/thread.h>

#include <utility>

namespace zr {
namespace {

dispatch_time_t deadlineAt(NSDate* date) {
    const double left = date ? date->timeIntervalSinceNow() * 1e9 : 0;
    constexpr double latest = 9e18;
    if (left >= latest) {
        return DISPATCH_TIME_FOREVER;
    }
    return left > 0 ? dispatch_time(DISPATCH_TIME_NOW, static_cast<std::int64_t>(left)) : DISPATCH_TIME_NOW;
}

} // namespace

Ref<NSString> NSDefaultRunLoopMode() {
    return "kCFRunLoopDefaultMode"_ns;
}

Ref<NSString> NSRunLoopCommonModes() {
    return "kCFRunLoopCommonModes"_ns;
}

Ref<NSString> NSModalPanelRunLoopMode() {
    return "NSModalPanelRunLoopMode"_ns;
}

Ref<NSString> NSEventTrackingRunLoopMode() {
    return "NSEventTrackingRunLoopMode"_ns;
}

ZR_DEFINE_CLASS(NSRunLoop) {
    is.classMethod<&NSRunLoop::mainRunLoop>("mainRunLoop");
    is.classMethod<&NSRunLoop::currentRunLoop>("currentRunLoop");
    is.method<&NSRunLoop::currentMode>("currentMode");
    is.method<&NSRunLoop::addTimer_forMode>("addTimer:forMode:");
    is.method<&NSRunLoop::performInModes_block>("performInModes:block:");
    is.method<&NSRunLoop::runMode_beforeDate>("runMode:beforeDate:");
}

NSRunLoop::~NSRunLoop() = default;

Ref<NSRunLoop> NSRunLoop::mainRunLoop() {
    static NSRunLoop* const loop = make<NSRunLoop>().leak();
    return loop;
}

Ref<NSRunLoop> NSRunLoop::currentRunLoop() {
    return NSThread::isMainThread() ? mainRunLoop() : nullptr;
}

Ref<NSString> NSRunLoop::currentMode() const {
    return detail::MainLoop::shared().mode();
}

void NSRunLoop::addTimer_forMode(NSTimer* timer, NSString* mode) {
    if (timer && mode) {
        detail::MainLoop::shared().add(timer, mode);
    }
}

void NSRunLoop::performInModes_block(NSArray* modes, std::function<void()> block) {
    detail::RunLoopModes wanted;
    for (const id& mode : modes) {
        if (NSString* const name = cast<NSString>(mode)) {
            wanted.add(name);
        }
    }
    if (block && !wanted.isEmpty()) {
        detail::MainLoop::shared().perform(std::move(wanted), std::move(block));
    }
}

bool NSRunLoop::runMode_beforeDate(NSString* mode, NSDate* limit) {
    if (!mode || mode->isEqualToString(NSRunLoopCommonModes()) || !NSThread::isMainThread()) {
        return false;
    }
    const dispatch_time_t deadline = deadlineAt(limit);
    const RunLoopModeScope scope(mode);
    if (drainMainQueue() == 0) {
        // Asked a second time only when something has run or the wait is over.
        bool wasAsked = false;
        runMainQueueUntil(deadline, [&wasAsked] {
            return std::exchange(wasAsked, true) || timeUntilMainQueueWork() == std::chrono::nanoseconds::zero();
        });
        drainMainQueue();
    }
    return true;
}

RunLoopModeScope::RunLoopModeScope(NSString* mode)
    : m_serial(NSThread::isMainThread() ? detail::MainLoop::shared().enter(mode) : 0) {}

RunLoopModeScope::~RunLoopModeScope() {
    detail::MainLoop::shared().leave(m_serial);
}

} // namespace zr
