#include <zrbasic/model/thread_safe.h>

#include <zrbasic/platform/foundation/dispatch_queue.h>
#include <zrbasic/platform/foundation/thread.h>

#include <utility>

namespace zr {

void mainThreadExecute(std::function<void()> action) {
    if (!NSThread::isMainThread()) {
        dispatch_async(dispatch_get_main_queue(), std::move(action));
    } else if (action) {
        action();
    }
}

ZR_GROUP(NSObject, ZRThreadSafe) {
    is.classMethod<&mainThreadExecute>("mainThreadExecute:");
}

} // namespace zr
