#include <zrbasic/platform/foundation/perform_selector.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/callback_message_p.h>
#include <zrbasic/platform/foundation/dispatch_semaphore.h>
#include <zrbasic/platform/foundation/run_loop.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/thread.h>
#include <zrbasic/platform/foundation/timer.h>

#include <algorithm>

namespace zr {
namespace {

void requireSelector(SEL selector) {
    if (!selector) {
        NSException::raise(NSInvalidArgumentException, "a message without a name cannot be sent");
    }
}

bool isAnyMode(NSArray* modes) {
    return modes && std::any_of(modes->elements().begin(), modes->elements().end(),
                                [](const id& mode) { return cast<NSString>(mode.get()) != nullptr; });
}

/// A message that is sent later.
struct Request {
    void send() const {
        // Also when it raises, or nobody would ever wake the caller.
        const struct Afterwards {
            OS_dispatch_semaphore* done;
            ~Afterwards() { dispatch_semaphore_signal(done); }
        } afterwards{done};
        detail::sendCallback(receiver, selector, argument);
    }

    id receiver;
    SEL selector;
    id argument;
    /// Null when nobody waits.
    dispatch_semaphore_t done;
};

} // namespace

id performSelector_withObject(NSObject* self, SEL selector, NSObject* argument) {
    return performSelector_withObject_withObject(self, selector, argument, nullptr);
}

id performSelector_withObject_withObject(NSObject* self, SEL selector, NSObject* first, NSObject* second) {
    if (!self) {
        return {};
    }
    requireSelector(selector);
    const std::string_view name = selector.name();
    switch (std::count(name.begin(), name.end(), ':')) {
        case 0:
            return send<id>(self, selector);
        case 1:
            return send<id>(self, selector, first);
        default:
            return send<id>(self, selector, first, second);
    }
}

void performSelectorOnMainThread_withObject_waitUntilDone(NSObject* self, SEL selector, NSObject* argument, bool wait) {
    performSelectorOnMainThread_withObject_waitUntilDone_modes(self, selector, argument, wait,
                                                               array({NSRunLoopCommonModes()}));
}

void performSelectorOnMainThread_withObject_waitUntilDone_modes(NSObject* self, SEL selector, NSObject* argument,
                                                                bool wait, NSArray* modes) {
    if (!self) {
        return;
    }
    requireSelector(selector);
    if (!isAnyMode(modes)) {
        return;
    }
    if (wait && NSThread::isMainThread()) {
        const Request request{self, selector, argument, nullptr};
        request.send();
        return;
    }
    const dispatch_semaphore_t done = wait ? dispatch_semaphore_create(0) : nullptr;
    NSRunLoop::mainRunLoop()->performInModes_block(
        modes, [request = Request{self, selector, argument, done}] { request.send(); });
    dispatch_semaphore_wait(done, DISPATCH_TIME_FOREVER);
}

void performSelector_withObject_afterDelay(NSObject* self, SEL selector, NSObject* argument, NSTimeInterval delay) {
    performSelector_withObject_afterDelay_inModes(self, selector, argument, delay, array({NSDefaultRunLoopMode()}));
}

void performSelector_withObject_afterDelay_inModes(NSObject* self, SEL selector, NSObject* argument,
                                                   NSTimeInterval delay, NSArray* modes) {
    if (!self) {
        return;
    }
    requireSelector(selector);
    const Ref<NSRunLoop> loop = NSRunLoop::currentRunLoop();
    if (!loop) {
        return;
    }
    const Ref<NSTimer> timer = NSTimer::timerWithTimeInterval_repeats_block(
        delay, false, [request = Request{self, selector, argument, nullptr}](NSTimer*) { request.send(); });
    for (const id& mode : modes) {
        loop->addTimer_forMode(timer, cast<NSString>(mode));
    }
}

ZR_GROUP(NSObject, Performing) {
    is.method<&performSelector_withObject_withObject>("performSelector:withObject:withObject:");
    is.method<&performSelectorOnMainThread_withObject_waitUntilDone>(
        "performSelectorOnMainThread:withObject:waitUntilDone:");
    is.method<&performSelectorOnMainThread_withObject_waitUntilDone_modes>(
        "performSelectorOnMainThread:withObject:waitUntilDone:modes:");
    is.method<&performSelector_withObject_afterDelay>("performSelector:withObject:afterDelay:");
    is.method<&performSelector_withObject_afterDelay_inModes>("performSelector:withObject:afterDelay:inModes:");
}

} // namespace zr
