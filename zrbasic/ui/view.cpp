#include <zrbasic/ui/view.h>

#include <zrbasic/platform/appkit/animation.h>
#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/platform/appkit/layer.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/association.h>
#include <zrbasic/platform/runtime/message.h>

#include <vector>

namespace zr {
namespace {

constexpr NSRect defaultFrame{{0, 0}, {300, 300}};
constexpr NSUInteger defaultTracking = NSTrackingMouseEnteredAndExited | NSTrackingActiveAlways;

/// 5 degrees.
constexpr double shakeAngle = 0.08726646259971647;
constexpr double shakeDuration = 0.1;
constexpr double shakeRepeats = 1.5;

/// The selector, so that whoever knows the name can read the area.
const void* trackingAreaKey() {
    return ("zr_addTrackingAreaWithRect:andOptions:"_sel).record();
}

id instanceOfClass(Class* viewClass) {
    return send<id>(class_createInstance(viewClass), "initWithFrame:"_sel, defaultFrame);
}

NSRect boundsOf(NSView* view) {
    return send<NSRect>(view, "bounds"_sel);
}

Ref<CALayer> ensureLayer(NSView* view) {
    if (!send<bool>(view, "wantsLayer"_sel)) {
        send<void>(view, "setWantsLayer:"_sel, true);
    }
    return send<Ref<CALayer>>(view, "layer"_sel);
}

void setPriorities(NSView* view, NSLayoutPriority resistance, NSLayoutPriority hugging) {
    send<void>(view, "setContentCompressionResistancePriority:forOrientation:"_sel, resistance,
               NSLayoutConstraintOrientationHorizontal);
    send<void>(view, "setContentHuggingPriority:forOrientation:"_sel, hugging, NSLayoutConstraintOrientationHorizontal);
}

} // namespace

ZR_GROUP(NSView, ZRXHelper) {
    is.receivingClassMethod<&instanceOfClass>("instance");
    is.method<&setZr_borderWidth>("setZr_borderWidth:");
    is.method<&setZr_cornerRadius>("setZr_cornerRadius:");
    is.method<&zr_addTrackingArea>("zr_addTrackingArea");
    is.method<&zr_addTrackingAreaWithRect>("zr_addTrackingAreaWithRect:");
    is.method<&zr_addTrackingAreaWithOptions>("zr_addTrackingAreaWithOptions:");
    is.method<&zr_addTrackingAreaWithRect_andOptions>("zr_addTrackingAreaWithRect:andOptions:");
    is.method<&zr_snapShot>("zr_snapShot");
    is.method<&zr_snapShotWithInsets>("zr_snapShotWithInsets:");
    is.method<&zr_snapShotWithRect>("zr_snapShotWithRect:");
    is.method<&screenCachedImage>("screenCachedImage");
    is.method<&zr_addSubviews>("zr_addSubviews:");
    is.method<&convertRectToScreen>("convertRectToScreen");
    is.method<&moveToFront>("moveToFront");
    is.method<&beginShakeAnimation>("beginShakeAnimation");
    is.method<&displayPriorityGreaterThan>("displayPriorityGreaterThan:");
}

void setZr_borderWidth(NSView* self, double width) {
    send<void>(ensureLayer(self), "setBorderWidth:"_sel, width);
}

void setZr_cornerRadius(NSView* self, double radius) {
    send<void>(ensureLayer(self), "setCornerRadius:"_sel, radius);
}

void zr_addTrackingArea(NSView* self) {
    zr_addTrackingAreaWithOptions(self, defaultTracking);
}

void zr_addTrackingAreaWithRect(NSView* self, NSRect rect) {
    send<void>(self, "zr_addTrackingAreaWithRect:andOptions:"_sel, rect, defaultTracking);
}

void zr_addTrackingAreaWithOptions(NSView* self, NSUInteger options) {
    send<void>(self, "zr_addTrackingAreaWithRect:andOptions:"_sel, boundsOf(self), options);
}

void zr_addTrackingAreaWithRect_andOptions(NSView* self, NSRect rect, NSUInteger options) {
    if (!self) {
        return;
    }
    if (const id before = objc_getAssociatedObject(self, trackingAreaKey())) {
        send<void>(self, "removeTrackingArea:"_sel, before.get());
    }
    const Ref<NSTrackingArea> area = make<NSTrackingArea>(&NSTrackingArea::initWithRect_options_owner_userInfo, rect,
                                                          options, static_cast<NSObject*>(self), nullptr);
    send<void>(self, "addTrackingArea:"_sel, area.get());
    objc_setAssociatedObject(self, trackingAreaKey(), area, OBJC_ASSOCIATION_RETAIN_NONATOMIC);
}

void zr_addSubviews(NSView* self, NSArray* views) {
    if (!self || !views) {
        return;
    }
    // A copy, because a view that is added may change the list.
    const std::vector<id> elements(views->elements().begin(), views->elements().end());
    for (const id& element : elements) {
        send<void>(self, "addSubview:"_sel, cast<NSView>(element));
    }
}

NSRect convertRectToScreen(NSView* self) {
    const Ref<NSWindow> window = send<Ref<NSWindow>>(self, "window"_sel);
    if (!window) {
        return NSZeroRect;
    }
    const NSRect inWindow =
        send<NSRect>(self, "convertRect:toView:"_sel, boundsOf(self), static_cast<NSView*>(nullptr));
    return send<NSRect>(window, "convertRectToScreen:"_sel, inWindow);
}

void moveToFront(NSView* self) {
    const Ref<NSView> superview = send<Ref<NSView>>(self, "superview"_sel);
    send<void>(superview, "addSubview:positioned:relativeTo:"_sel, self, NSWindowAbove, static_cast<NSView*>(nullptr));
}

void beginShakeAnimation(NSView* self) {
    if (!self) {
        return;
    }
    const Ref<CAKeyframeAnimation> animation = CAKeyframeAnimation::animationWithKeyPath("transform.rotation.z"_ns);
    animation->setDuration(shakeDuration);
    animation->setValues(array({box(shakeAngle), box(0.0), box(-shakeAngle), box(0.0), box(shakeAngle)}));
    animation->setRepeatCount(shakeRepeats);
    const Ref<CALayer> layer = send<Ref<CALayer>>(self, "layer"_sel);
    const NSPoint center{zr_minX(self) + zr_width(self) * 0.5, zr_minY(self) + zr_height(self) * 0.5};
    send<void>(layer, "setPosition:"_sel, center);
    send<void>(layer, "setAnchorPoint:"_sel, NSPoint{0.5, 0.5});
    send<void>(layer, "addAnimation:forKey:"_sel, animation.get(), "key"_ns.get());
}

void displayPriorityGreaterThan(NSView* self, NSView* other) {
    if (!self) {
        return;
    }
    setPriorities(self, NSLayoutPriorityDefaultHigh, NSLayoutPriorityDefaultLow);
    setPriorities(other, NSLayoutPriorityDefaultLow, NSLayoutPriorityDefaultHigh);
}

} // namespace zr
