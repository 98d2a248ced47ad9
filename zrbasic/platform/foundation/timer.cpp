#include <zrbasic/platform/foundation/timer.h>

#include <zrbasic/platform/foundation/run_loop.h>
#include <zrbasic/platform/foundation/run_loop_p.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace zr {
namespace {

NSTimeInterval usable(NSTimeInterval interval) {
    constexpr NSTimeInterval least = 0.0001;
    return interval > 0 ? interval : least;
}

detail::LoopTime stepOf(NSTimeInterval interval) {
    // Rounded, or 0.0003 would lose a nanosecond with every beat.
    return std::llround(std::clamp(interval * 1e9, 1.0, static_cast<double>(detail::longestWait)));
}

Ref<NSDate> firstDate(NSTimeInterval interval) {
    return NSDate::dateWithTimeIntervalSinceNow(usable(interval));
}

Ref<NSTimer> scheduled(Ref<NSTimer> timer) {
    if (const Ref<NSRunLoop> loop = NSRunLoop::currentRunLoop()) {
        loop->addTimer_forMode(timer, NSDefaultRunLoopMode());
    }
    return timer;
}

void setUp(detail::TimerState& state, NSDate* date, NSTimeInterval interval, bool repeats,
           detail::TimerCallback callback) {
    state.callback = std::move(callback);
    state.repeats = repeats;
    state.interval = usable(interval);
    state.step = stepOf(state.interval);
    state.next = detail::MainLoop::fireAt(date ? date->timeIntervalSinceReferenceDate() : 0);
    state.isValid = true;
}

} // namespace

ZR_DEFINE_CLASS(NSTimer) {
    using Timer = NSTimer;
    is.classMethod<&Timer::timerWithTimeInterval_target_selector_userInfo_repeats>(
        "timerWithTimeInterval:target:selector:userInfo:repeats:");
    is.classMethod<&Timer::timerWithTimeInterval_repeats_block>("timerWithTimeInterval:repeats:block:");
    is.classMethod<&Timer::scheduledTimerWithTimeInterval_target_selector_userInfo_repeats>(
        "scheduledTimerWithTimeInterval:target:selector:userInfo:repeats:");
    is.classMethod<&Timer::scheduledTimerWithTimeInterval_repeats_block>(
        "scheduledTimerWithTimeInterval:repeats:block:");
    is.method<&Timer::initWithFireDate_interval_target_selector_userInfo_repeats>(
        "initWithFireDate:interval:target:selector:userInfo:repeats:");
    is.method<&Timer::initWithFireDate_interval_repeats_block>("initWithFireDate:interval:repeats:block:");
    is.method<&Timer::fire>("fire");
    is.method<&Timer::invalidate>("invalidate");
    is.method<&Timer::isValid>("isValid");
    is.method<&Timer::fireDate>("fireDate");
    is.method<&Timer::setFireDate>("setFireDate:");
    is.method<&Timer::timeInterval>("timeInterval");
    is.method<&Timer::userInfo>("userInfo");
}

NSTimer::NSTimer() : m_state(std::make_unique<detail::TimerState>()) {}

NSTimer::~NSTimer() = default;

Ref<NSTimer> NSTimer::timerWithTimeInterval_target_selector_userInfo_repeats(NSTimeInterval interval, NSObject* target,
                                                                             SEL selector, NSObject* userInfo,
                                                                             bool repeats) {
    return make<NSTimer>(&NSTimer::initWithFireDate_interval_target_selector_userInfo_repeats, firstDate(interval),
                         interval, target, selector, userInfo, repeats);
}

Ref<NSTimer> NSTimer::timerWithTimeInterval_repeats_block(NSTimeInterval interval, bool repeats, NSTimerBlock block) {
    return make<NSTimer>(&NSTimer::initWithFireDate_interval_repeats_block, firstDate(interval), interval, repeats,
                         std::move(block));
}

Ref<NSTimer> NSTimer::scheduledTimerWithTimeInterval_target_selector_userInfo_repeats(NSTimeInterval interval,
                                                                                      NSObject* target, SEL selector,
                                                                                      NSObject* userInfo,
                                                                                      bool repeats) {
    return scheduled(
        timerWithTimeInterval_target_selector_userInfo_repeats(interval, target, selector, userInfo, repeats));
}

Ref<NSTimer> NSTimer::scheduledTimerWithTimeInterval_repeats_block(NSTimeInterval interval, bool repeats,
                                                                   NSTimerBlock block) {
    return scheduled(timerWithTimeInterval_repeats_block(interval, repeats, std::move(block)));
}

id NSTimer::init() {
    return id(this);
}

id NSTimer::initWithFireDate_interval_target_selector_userInfo_repeats(NSDate* date, NSTimeInterval interval,
                                                                       NSObject* target, SEL selector,
                                                                       NSObject* userInfo, bool repeats) {
    setUp(*m_state, date, interval, repeats, {target, selector, userInfo, nullptr});
    return id(this);
}

id NSTimer::initWithFireDate_interval_repeats_block(NSDate* date, NSTimeInterval interval, bool repeats,
                                                    NSTimerBlock block) {
    auto kept = block ? std::make_shared<const NSTimerBlock>(std::move(block)) : nullptr;
    setUp(*m_state, date, interval, repeats, {nullptr, SEL(), nullptr, std::move(kept)});
    return id(this);
}

void NSTimer::fire() {
    detail::MainLoop::shared().fire(this);
}

void NSTimer::invalidate() {
    detail::MainLoop::shared().invalidate(this);
}

bool NSTimer::isValid() const {
    return detail::MainLoop::shared().isValid(this);
}

Ref<NSDate> NSTimer::fireDate() const {
    return NSDate::dateWithTimeIntervalSinceReferenceDate(detail::MainLoop::shared().fireDate(this));
}

void NSTimer::setFireDate(NSDate* date) {
    detail::MainLoop::shared().setFireDate(this, date ? date->timeIntervalSinceReferenceDate() : 0);
}

NSTimeInterval NSTimer::timeInterval() const {
    return m_state->repeats ? m_state->interval : 0;
}

id NSTimer::userInfo() const {
    return detail::MainLoop::shared().userInfo(this);
}

} // namespace zr
