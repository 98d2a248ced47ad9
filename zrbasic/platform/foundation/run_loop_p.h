#pragma once

#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/timer.h>

#include <cstdint>
#include <deque>
#include <limits>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <vector>

namespace zr::detail {

/// The mode a loop is in.
struct RunningMode {
    Ref<NSString> name;
    bool isCommon;
    std::uint64_t serial;
};

/// The modes that a timer or a callback is for.
class RunLoopModes {
  public:
    void add(NSString* mode);
    [[nodiscard]] bool isEmpty() const { return !m_isForCommonModes && m_names.empty(); }
    [[nodiscard]] bool include(const RunningMode& mode) const;

  private:
    bool m_isForCommonModes = false;
    std::vector<Ref<NSString>> m_names;
};

/// Nanoseconds on the clock of `mach_absolute_time`.
using LoopTime = std::int64_t;
/// Later than every moment.
inline constexpr LoopTime never = std::numeric_limits<LoopTime>::max();
/// A hundred years, which counts as never.
inline constexpr LoopTime longestWait = 4'000'000'000'000'000'000;

struct TimerCallback {
    id target;
    SEL selector;
    id userInfo;
    /// Shared, because it must outlive the timer while it runs.
    std::shared_ptr<const NSTimerBlock> block;
};

/// All of a timer. Guarded by the loop's lock from the end of its initialiser on.
struct TimerState {
    struct Fire {
        LoopTime time = never;
        /// As it was given.
        NSTimeInterval date = 0;
        /// The same moment as `time`.
        NSTimeInterval due = 0;
    };

    TimerCallback callback;
    bool isValid = false;
    bool repeats = false;
    NSTimeInterval interval = 0;
    LoopTime step = 0;
    Fire next;

    RunLoopModes modes;
    /// Tells apart timers of the same moment. 0 until the timer is added.
    std::uint64_t order = 0;

    bool isFiring = false;
    /// The fire that is being handled.
    Fire handled;
    bool wasMoved = false;
};

/// What the main thread's loop consists of. Safe from any thread; the main queue calls it back on the main one.
class MainLoop {
  public:
    static MainLoop& shared();

    [[nodiscard]] Ref<NSString> mode() const;
    /// The result is for `leave`; 0 when there is nothing to leave.
    [[nodiscard]] std::uint64_t enter(NSString* mode);
    void leave(std::uint64_t serial);

    void perform(RunLoopModes modes, std::function<void()> work);

    void add(NSTimer* timer, NSString* mode);
    void fire(NSTimer* timer);
    void invalidate(NSTimer* timer);
    [[nodiscard]] bool isValid(const NSTimer* timer) const;
    [[nodiscard]] NSTimeInterval fireDate(const NSTimer* timer) const;
    void setFireDate(NSTimer* timer, NSTimeInterval date);
    [[nodiscard]] id userInfo(const NSTimer* timer) const;

    /// A fire at the date, or at once when that has passed.
    [[nodiscard]] static TimerState::Fire fireAt(NSTimeInterval date);

  private:
    struct Waiting {
        std::uint64_t serial;
        RunLoopModes modes;
        std::function<void()> work;
    };
    /// By time, those of the same moment in the order they were added in.
    using Place = std::pair<LoopTime, std::uint64_t>;
    /// What has ended and must not be let go under the lock, as that may run anything.
    struct Ended {
        TimerCallback callback;
        Ref<NSTimer> timer;
    };

    [[nodiscard]] static TimerState& stateOf(const NSTimer* timer) { return *timer->m_state; }
    [[nodiscard]] static Place placeOf(const TimerState& state) { return {state.next.time, state.order}; }
    static void call(NSTimer* timer, const TimerCallback& callback);

    void modeHasChanged(std::unique_lock<std::mutex>& lock);
    void runWaiting(std::uint64_t last);
    /// Of those whose serial is not above `last`.
    [[nodiscard]] std::deque<Waiting>::iterator firstReady(std::uint64_t last);

    void wakeUp(LoopTime time);
    [[nodiscard]] Ref<NSTimer> takeDue(LoopTime limit, TimerCallback& callback);
    void finish(NSTimer* timer);
    [[nodiscard]] Ended end(TimerState& state);
    /// Sees to it that the main queue calls at the next fire. Gives the lock back.
    void arm(std::unique_lock<std::mutex>& lock);

    mutable std::mutex m_mutex;
    std::uint64_t m_nextSerial = 1;
    /// The first is always there: the mode when nobody says otherwise.
    std::vector<RunningMode> m_modes;
    std::deque<Waiting> m_waiting;
    /// Those that were added and are not firing.
    std::map<Place, Ref<NSTimer>> m_timers;
    /// When the main queue is going to call.
    std::multiset<LoopTime> m_wakeUps;

    MainLoop();
};

} // namespace zr::detail
