#include <zrbasic/platform/foundation/run_loop_p.h>

#include <zrbasic/platform/foundation/callback_message_p.h>
#include <zrbasic/platform/foundation/clock.h>
#include <zrbasic/platform/foundation/dispatch_queue.h>
#include <zrbasic/platform/foundation/run_loop.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace zr::detail {
namespace {

bool isName(const Ref<NSString>& name, const NSString* other) {
    return name->view() == other->view();
}

bool isCommonMode(const NSString* mode) {
    return isName(NSDefaultRunLoopMode(), mode) || isName(NSModalPanelRunLoopMode(), mode) ||
           isName(NSEventTrackingRunLoopMode(), mode);
}

LoopTime now() {
    return static_cast<LoopTime>(mach_absolute_time());
}

} // namespace

void RunLoopModes::add(NSString* mode) {
    if (isName(NSRunLoopCommonModes(), mode)) {
        m_isForCommonModes = true;
    } else if (std::none_of(m_names.begin(), m_names.end(), [mode](const auto& name) { return isName(name, mode); })) {
        m_names.push_back(NSString::fromUtf16(mode->view()));
    }
}

bool RunLoopModes::include(const RunningMode& mode) const {
    return (m_isForCommonModes && mode.isCommon) ||
           std::any_of(m_names.begin(), m_names.end(), [&mode](const auto& name) { return isName(name, mode.name); });
}

MainLoop::MainLoop() {
    m_modes.push_back({NSDefaultRunLoopMode(), true, 0});
}

MainLoop& MainLoop::shared() {
    static auto* const loop = new MainLoop;
    return *loop;
}

Ref<NSString> MainLoop::mode() const {
    const std::lock_guard lock(m_mutex);
    return m_modes.back().name;
}

std::uint64_t MainLoop::enter(NSString* mode) {
    if (!mode || isName(NSRunLoopCommonModes(), mode)) {
        return 0;
    }
    std::unique_lock lock(m_mutex);
    const std::uint64_t serial = m_nextSerial++;
    m_modes.push_back({NSString::fromUtf16(mode->view()), isCommonMode(mode), serial});
    modeHasChanged(lock);
    return serial;
}

void MainLoop::leave(std::uint64_t serial) {
    if (serial == 0) {
        return;
    }
    std::unique_lock lock(m_mutex);
    std::erase_if(m_modes, [serial](const RunningMode& mode) { return mode.serial == serial; });
    modeHasChanged(lock);
}

void MainLoop::modeHasChanged(std::unique_lock<std::mutex>& lock) {
    const std::uint64_t last = m_nextSerial - 1;
    const bool isReady = firstReady(last) != m_waiting.end();
    arm(lock);
    if (isReady) {
        dispatch_async(dispatch_get_main_queue(), [last] { shared().runWaiting(last); });
    }
}

void MainLoop::perform(RunLoopModes modes, std::function<void()> work) {
    std::uint64_t serial = 0;
    {
        const std::lock_guard lock(m_mutex);
        serial = m_nextSerial++;
        m_waiting.push_back({serial, std::move(modes), std::move(work)});
    }
    // A turn of its own in the main queue keeps it in line with what comes directly.
    dispatch_async(dispatch_get_main_queue(), [serial] { shared().runWaiting(serial); });
}

std::deque<MainLoop::Waiting>::iterator MainLoop::firstReady(std::uint64_t last) {
    for (auto place = m_waiting.begin(); place != m_waiting.end() && place->serial <= last; ++place) {
        if (place->modes.include(m_modes.back())) {
            return place;
        }
    }
    return m_waiting.end();
}

void MainLoop::runWaiting(std::uint64_t last) {
    // An exception must not strand those behind it, whose turns in the main queue may be over.
    const struct Afterwards {
        MainLoop& loop;
        std::uint64_t last;
        ~Afterwards() {
            std::unique_lock lock(loop.m_mutex);
            if (loop.firstReady(last) != loop.m_waiting.end()) {
                lock.unlock();
                dispatch_async(dispatch_get_main_queue(), [end = last] { shared().runWaiting(end); });
            }
        }
    } afterwards{*this, last};
    for (;;) {
        std::function<void()> work;
        {
            const std::lock_guard lock(m_mutex);
            const auto place = firstReady(last);
            if (place == m_waiting.end()) {
                return;
            }
            work = std::move(place->work);
            m_waiting.erase(place);
        }
        work();
    }
}

void MainLoop::add(NSTimer* timer, NSString* mode) {
    TimerState& state = stateOf(timer);
    std::unique_lock lock(m_mutex);
    if (!state.isValid) {
        return;
    }
    state.modes.add(mode);
    if (state.order == 0) {
        state.order = m_nextSerial++;
        m_timers.emplace(placeOf(state), timer);
    }
    arm(lock);
}

void MainLoop::call(NSTimer* timer, const TimerCallback& callback) {
    if (callback.block) {
        (*callback.block)(timer);
    } else {
        sendCallback(callback.target, callback.selector, timer);
    }
}

void MainLoop::fire(NSTimer* timer) {
    const Ref<NSTimer> kept(timer);
    TimerState& state = stateOf(timer);
    TimerCallback callback;
    {
        const std::lock_guard lock(m_mutex);
        if (!state.isValid) {
            return;
        }
        callback = state.callback;
    }
    const struct Afterwards {
        NSTimer* timer;
        ~Afterwards() {
            if (!stateOf(timer).repeats) {
                shared().invalidate(timer);
            }
        }
    } afterwards{timer};
    call(timer, callback);
}

void MainLoop::invalidate(NSTimer* timer) {
    Ended ended;
    const std::lock_guard lock(m_mutex);
    ended = end(stateOf(timer));
}

MainLoop::Ended MainLoop::end(TimerState& state) {
    state.isValid = false;
    Ended ended{std::exchange(state.callback, {}), nullptr};
    if (auto entry = m_timers.extract(placeOf(state))) {
        ended.timer = std::move(entry.mapped());
    }
    return ended;
}

bool MainLoop::isValid(const NSTimer* timer) const {
    const std::lock_guard lock(m_mutex);
    return stateOf(timer).isValid;
}

NSTimeInterval MainLoop::fireDate(const NSTimer* timer) const {
    const std::lock_guard lock(m_mutex);
    return stateOf(timer).next.date;
}

id MainLoop::userInfo(const NSTimer* timer) const {
    const std::lock_guard lock(m_mutex);
    return stateOf(timer).callback.userInfo;
}

TimerState::Fire MainLoop::fireAt(NSTimeInterval date) {
    // In this order a thread that is interrupted here fires late, never early.
    const NSTimeInterval present = NSDate::currentTimeIntervalSinceReferenceDate();
    const LoopTime time = now();
    const double left = (date - present) * 1e9;
    if (left >= static_cast<double>(longestWait)) {
        return {never, date, date};
    }
    // Written so that what is no date has passed.
    return left > 0 ? TimerState::Fire{time + static_cast<LoopTime>(left), date, date}
                    : TimerState::Fire{time, date, present};
}

void MainLoop::setFireDate(NSTimer* timer, NSTimeInterval date) {
    TimerState& state = stateOf(timer);
    std::unique_lock lock(m_mutex);
    if (!state.isValid) {
        return;
    }
    if (state.isFiring) {
        state.wasMoved = date > state.handled.due;
        state.next = state.wasMoved ? fireAt(date) : state.handled;
        return;
    }
    auto entry = m_timers.extract(placeOf(state));
    state.next = fireAt(date);
    if (entry) {
        entry.key() = placeOf(state);
        m_timers.insert(std::move(entry));
        arm(lock);
    }
}

void MainLoop::arm(std::unique_lock<std::mutex>& lock) {
    const auto first = std::find_if(m_timers.begin(), m_timers.end(), [this](const auto& entry) {
        return stateOf(entry.second).modes.include(m_modes.back());
    });
    const LoopTime time = first != m_timers.end() ? first->first.first : never;
    if (time == never || (!m_wakeUps.empty() && *m_wakeUps.begin() <= time)) {
        // An earlier call arms again, so that moving a timer to and fro leaves nothing behind.
        lock.unlock();
        return;
    }
    m_wakeUps.insert(time);
    lock.unlock();
    dispatch_after(static_cast<dispatch_time_t>(time), dispatch_get_main_queue(), [time] { shared().wakeUp(time); });
}

void MainLoop::wakeUp(LoopTime time) {
    {
        const std::lock_guard lock(m_mutex);
        m_wakeUps.erase(m_wakeUps.find(time));
    }
    const LoopTime limit = now();
    for (;;) {
        TimerCallback callback;
        const Ref<NSTimer> timer = takeDue(limit, callback);
        if (!timer) {
            break;
        }
        const struct Afterwards {
            NSTimer* timer;
            ~Afterwards() { shared().finish(timer); }
        } afterwards{timer};
        call(timer, callback);
    }
}

Ref<NSTimer> MainLoop::takeDue(LoopTime limit, TimerCallback& callback) {
    std::unique_lock lock(m_mutex);
    Ref<NSTimer> due;
    for (auto place = m_timers.begin(); place != m_timers.end() && place->first.first <= limit; ++place) {
        TimerState& state = stateOf(place->second);
        if (state.modes.include(m_modes.back())) {
            due = std::move(place->second);
            m_timers.erase(place);
            callback = state.callback;
            state.isFiring = true;
            state.handled = state.next;
            state.wasMoved = false;
            break;
        }
    }
    // Before the callback: it may run a nested loop, and the other timers have to go on there.
    arm(lock);
    return due;
}

void MainLoop::finish(NSTimer* timer) {
    Ended ended;
    TimerState& state = stateOf(timer);
    std::unique_lock lock(m_mutex);
    state.isFiring = false;
    if (!state.isValid) {
        return;
    }
    if (!state.repeats) {
        ended = end(state);
        return;
    }
    if (!state.wasMoved) {
        const bool isRare = state.step >= longestWait;
        const LoopTime missed = (now() - state.handled.time) / state.step;
        const LoopTime advance = (missed + 1) * state.step;
        state.next.time = isRare ? never : state.handled.time + advance;
        state.next.due = state.handled.due + (isRare ? state.interval : static_cast<double>(advance) / 1e9);
        state.next.date = state.next.due;
    }
    m_timers.emplace(placeOf(state), timer);
    arm(lock);
}

} // namespace zr::detail
