#pragma once

#include <zrbasic/platform/foundation/string.h>

#include <cstdint>
#include <functional>

namespace zr {

class NSArray;
class NSDate;
class NSTimer;

/// The ordinary mode; the loop is in it unless somebody says otherwise.
[[nodiscard]] ZR_EXPORT Ref<NSString> NSDefaultRunLoopMode();
/// Stands for the default mode, the modal panel's and event tracking together. Work can be for it; a loop cannot be in
/// it.
[[nodiscard]] ZR_EXPORT Ref<NSString> NSRunLoopCommonModes();
/// While a window is run modally.
[[nodiscard]] ZR_EXPORT Ref<NSString> NSModalPanelRunLoopMode();
/// While the mouse drags something.
[[nodiscard]] ZR_EXPORT Ref<NSString> NSEventTrackingRunLoopMode();

/// The main thread's loop: decides which timers and deferred messages may run now.
///
/// The loop is in one mode at a time, and what is scheduled for other modes waits. It stands on the main queue (see
/// dispatch_queue.h) and has no thread or clock of its own: whoever drains that queue runs the loop, and what is
/// waiting shows in `timeUntilMainQueueWork`. Callbacks of the main queue itself run in every mode. The queue's call for
/// a timer that was moved or ended meanwhile comes all the same, and finds nothing to do.
///
/// There is one loop; every instance stands for it. Other threads have none.
class ZR_EXPORT NSRunLoop final : public NSObject {
    ZR_DECLARE_CLASS(NSRunLoop, NSObject)
  public:
    ~NSRunLoop() override;

    /// The same object every time, on every thread.
    [[nodiscard]] static Ref<NSRunLoop> mainRunLoop();
    /// The main loop on the main thread, null on any other.
    [[nodiscard]] static Ref<NSRunLoop> currentRunLoop();

    /// The mode the loop is in, never null; the default mode when nobody said otherwise. From any thread.
    [[nodiscard]] Ref<NSString> currentMode() const;

    /// Lets `timer` fire while the loop is in `mode`, besides those it was added for before. The loop keeps it until it
    /// is invalidated. Null and an invalidated timer do nothing. From any thread; timers fire on the main thread.
    void addTimer_forMode(NSTimer* timer, NSString* mode);

    /// Runs `block` once on the main thread, as soon as the loop is in one of `modes` (strings; others are passed
    /// over), later even when called there. Blocks for the same modes keep their order, and stand in one line with the
    /// callbacks of the main queue. No mode and no block do nothing. From any thread.
    void performInModes_block(NSArray* modes, std::function<void()> block);

    /// Runs the loop in `mode`: what can run now or, if there is nothing, what comes first until `limit`; a null limit
    /// has passed. Modal loops may nest.
    ///
    /// One call may run nothing that the caller waits for, so ask again until that has happened. False, and nothing
    /// run, on another thread and for a mode that no loop can be in. Exceptions of what it runs reach the caller.
    bool runMode_beforeDate(NSString* mode, NSDate* limit);
};

/// Says that the loop is in `mode` while this stands: for whoever runs the main thread's events, such as a modal
/// session. The latest one that stands counts; they may end in any order.
///
/// For the main thread. Elsewhere, and for a mode that no loop can be in (null, the common modes), it does nothing.
class [[nodiscard]] ZR_EXPORT RunLoopModeScope {
  public:
    explicit RunLoopModeScope(NSString* mode);
    ~RunLoopModeScope();
    RunLoopModeScope(const RunLoopModeScope&) = delete;
    RunLoopModeScope& operator=(const RunLoopModeScope&) = delete;

  private:
    std::uint64_t m_serial;
};

} // namespace zr
