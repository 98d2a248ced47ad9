#pragma once

#include <zrbasic/platform/runtime/export.h>

#include <functional>

namespace zr {

// NSObject(ZRThreadSafe)

/// Runs `action` on the main thread: before this returns when called there, even if older callbacks are still queued;
/// otherwise at the end of the main queue (see dispatch_queue.h), without waiting.
///
/// What one thread queues runs in its order. Called on the main thread, it lets exceptions of `action` through. An
/// empty `action` does nothing. From any thread.
ZR_EXPORT void mainThreadExecute(std::function<void()> action);

} // namespace zr
