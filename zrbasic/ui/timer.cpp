#include <zrbasic/ui/timer.h>

#include <utility>

namespace zr {
namespace {

/// A block as an object, so that a timer can carry it.
class TimerBlockBox final : public NSObject {
    ZR_OBJECT(TimerBlockBox, NSObject)

  public:
    [[nodiscard]] static id box(NSTimerBlock block) {
        if (!block) {
            return {};
        }
        const Ref<TimerBlockBox> boxed = alloc<TimerBlockBox>();
        boxed->block = std::move(block);
        return boxed;
    }

    NSTimerBlock block;
};

void moveFire(NSTimer* timer, const Ref<NSDate>& date) {
    if (timer && timer->isValid()) {
        timer->setFireDate(date);
    }
}

} // namespace

ZR_GROUP(NSTimer, ZRXHelper) {
    is.method<&pause>("pause");
    is.method<&resume>("resume");
    is.method<&resumeWithDelay>("resumeWithDelay:");
    is.classMethod<&zr_scheduledTimerWithTimeInterval_repeats_block>(
        "zr_scheduledTimerWithTimeInterval:repeats:block:");
    is.classMethod<&zr_scheduledWithFireDate_timeInterval_repeats_block>(
        "zr_scheduledWithFireDate:timeInterval:repeats:block:");
    is.classMethod<&zr_blockInvoke>("zr_blockInvoke:");
}

void pause(NSTimer* self) {
    moveFire(self, NSDate::distantFuture());
}

void resume(NSTimer* self) {
    moveFire(self, NSDate::date());
}

void resumeWithDelay(NSTimer* self, NSTimeInterval delay) {
    moveFire(self, NSDate::dateWithTimeIntervalSinceNow(delay));
}

// Both repeat always: callers say `false` and rely on it.

Ref<NSTimer> zr_scheduledTimerWithTimeInterval_repeats_block(NSTimeInterval interval, bool, NSTimerBlock block) {
    return NSTimer::scheduledTimerWithTimeInterval_target_selector_userInfo_repeats(
        interval, NSTimer::classObject(), "zr_blockInvoke:"_sel, TimerBlockBox::box(std::move(block)), true);
}

Ref<NSTimer> zr_scheduledWithFireDate_timeInterval_repeats_block(NSDate* date, NSTimeInterval interval, bool,
                                                                 NSTimerBlock block) {
    return make<NSTimer>(&NSTimer::initWithFireDate_interval_target_selector_userInfo_repeats, date, interval,
                         NSTimer::classObject(), "zr_blockInvoke:"_sel, TimerBlockBox::box(std::move(block)), true);
}

void zr_blockInvoke(NSTimer* timer) {
    const id info = timer ? timer->userInfo() : id();
    if (TimerBlockBox* const boxed = cast<TimerBlockBox>(info.get())) {
        boxed->block(timer);
    }
}

} // namespace zr
