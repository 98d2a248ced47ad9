#pragma once

#include <zrbasic/platform/foundation/dispatch_time.h>
#include <zrbasic/platform/runtime/declare.h>
#include <zrbasic/platform/runtime/function_ref.h>

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>

/// The main queue: callbacks from any thread that the main thread runs, one after the other, in the order they came in.
///
/// The library has no loop of its own; whoever runs the main thread drains the queue. A program without a toolkit
/// calls `runMainQueueUntil`. A toolkit sets a wake-up handler that posts an event to its own loop, and on that event
/// calls `drainMainQueue` and sets a timer for `timeUntilMainQueueWork`.
namespace zr {

/// A queue of callbacks. There is one, the main queue; others can be made, but nothing is put into them.
class ZR_EXPORT OS_dispatch_queue final : public NSObject {
    ZR_DECLARE_CLASS(OS_dispatch_queue, NSObject)
  public:
    ~OS_dispatch_queue() override;
};

/// The main queue, borrowed: always the same object, never let go. Safe from any thread, like the next two.
[[nodiscard]] ZR_EXPORT OS_dispatch_queue* dispatch_get_main_queue();

/// Puts `work` at the end of the main queue and returns at once; the main thread runs it later, even when called there.
/// Nothing happens for an empty callback, for null and for another queue.
ZR_EXPORT void dispatch_async(OS_dispatch_queue* queue, std::function<void()> work);

/// Puts `work` into the main queue as soon as the deadline has come; callbacks of one deadline in the order they were
/// given. Forever is never. Otherwise as `dispatch_async`.
ZR_EXPORT void dispatch_after(dispatch_time_t when, OS_dispatch_queue* queue, std::function<void()> work);

/// Runs what is in the main queue by now and says how many callbacks that were; only on the main thread, 0 elsewhere.
///
/// What is put in meanwhile waits for the next drain, so a callback that puts itself in again does not hold up the
/// caller. A callback may drain the queue itself, as a modal loop does; it then runs the rest before its turn is over.
/// An exception from a callback ends the drain and reaches the caller; the rest stays in the queue.
ZR_EXPORT std::size_t drainMainQueue();

/// Runs the main queue, sleeping while it is empty, until `isDone` says so (true) or the deadline has come (false).
///
/// `isDone` is asked at first and after every callback, at least once a minute; without it only the deadline counts.
/// A deadline that has passed drains the queue once. Exceptions as in `drainMainQueue`. False at once on any other
/// thread than the main one.
ZR_EXPORT bool runMainQueueUntil(dispatch_time_t deadline, FunctionRef<bool()> isDone = {});

/// How long until the main queue has something to run: zero when it has already, nothing when it is empty. From any
/// thread.
[[nodiscard]] ZR_EXPORT std::optional<std::chrono::nanoseconds> timeUntilMainQueueWork();

/// Says how to tell the main thread's loop that the queue must be drained; an empty handler tells nobody.
///
/// Called once when the queue gets something to run, or something earlier to wait for, and not again before the next
/// drain begins; after a drain that leaves something behind; and now, when there is work already. It runs on whatever
/// thread put the work in. It must be quick, must neither throw nor wait for the main thread, and may use the queue.
/// When this returns, the handler before is not running on another thread and is never called again.
ZR_EXPORT void setMainQueueWakeUpHandler(std::function<void()> handler);

} // namespace zr
