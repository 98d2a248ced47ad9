#include <zrbasic/ui/window.h>

#include <zrbasic/platform/appkit/animation.h>
#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/button.h>
#include <zrbasic/platform/appkit/screen.h>
#include <zrbasic/platform/appkit/toolbar.h>
#include <zrbasic/platform/appkit/window_controller.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/key_value_coding.h>
#include <zrbasic/platform/foundation/notification.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/perform_selector.h>
#include <zrbasic/platform/foundation/run_loop.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/association.h>
#include <zrbasic/platform/runtime/message.h>
#include <zrbasic/ui/device.h>
#include <zrbasic/ui/window_controller.h>

namespace zr {
namespace {

constexpr int shakeSwings = 20;
/// As a share of the window's width: 0.01 in single precision, as it has always been.
constexpr double shakeAmplitude = 0.009999999776482582;
constexpr double shakeDuration = 0.5;

/// The getter's selector, so that whoever knows the name can read the flag.
const void* stopFlagKey() {
    return ("needStopModalWhenClosed"_sel).record();
}

Ref<NSButton> standardButton(NSWindow* window, NSUInteger button) {
    return send<Ref<NSButton>>(window, "standardWindowButton:"_sel, button);
}

void stopSession(NSInteger response) {
    send<void>(NSApplication::sharedApplication(), "stopModalWithCode:"_sel, response);
}

} // namespace

ZR_GROUP(NSWindow, ZRXHelper) {
    is.method<&titleBarView>("titleBarView");
    is.method<&closeButton>("closeButton");
    is.method<&miniaturizeButton>("miniaturizeButton");
    is.method<&zoomButton>("zoomButton");
    is.method<&hideAllWindowButtons>("hideAllWindowButtons");
    is.classMethod<&titleBarHeight>("titleBarHeight");
    is.method<static_cast<void (*)(NSWindow*, NSObject*)>(&zr_showWindow)>("zr_showWindow:");
    is.method<&zr_makeKeyAndOrderFront>("zr_makeKeyAndOrderFront:");
    is.method<&zr_orderFront>("zr_orderFront:");
    is.method<static_cast<void (*)(NSWindow*, NSWindowOrderingMode, NSInteger)>(&zr_orderWindow_relativeTo)>(
        "zr_orderWindow:relativeTo:");
    is.method<static_cast<NSInteger (*)(NSWindow*)>(&zr_runModal)>("zr_runModal");
    is.method<&stopModal>("stopModal");
    is.method<&stopModalWithResponse>("stopModalWithResponse:");
    is.method<&needStopModalWhenClosed>("needStopModalWhenClosed");
    is.method<&setNeedStopModalWhenClosed>("setNeedStopModalWhenClosed:");
    is.method<&windowWillClose>("windowWillClose:");
    is.method<&beginShakeAnimation>("beginShakeAnimation");
    is.method<&centerAtScreen>("centerAtScreen");
    is.method<&centerAtRect>("centerAtRect:");
}

Ref<NSView> titleBarView(NSWindow* self) {
    const id toolbar = send<id>(self, "toolbar"_sel);
    const id view = toolbar ? valueForKey(toolbar, "toolbarView"_ns) : nullptr;
    return send<Ref<NSView>>(cast<NSView>(view), "superview"_sel);
}

Ref<NSButton> closeButton(NSWindow* self) {
    return standardButton(self, NSWindowCloseButton);
}

Ref<NSButton> miniaturizeButton(NSWindow* self) {
    return standardButton(self, NSWindowMiniaturizeButton);
}

Ref<NSButton> zoomButton(NSWindow* self) {
    return standardButton(self, NSWindowZoomButton);
}

void hideAllWindowButtons(NSWindow* self) {
    for (const auto button : {&closeButton, &miniaturizeButton, &zoomButton}) {
        send<void>(button(self), "setHidden:"_sel, true);
    }
}

double titleBarHeight() {
    return ZRXDevice::isSystemAvailableOSX11() ? 28.0 : 22.0;
}

void zr_showWindow(NSWindow* self, NSObject* sender) {
    if (self) {
        zr_showWindow_withSender(self, sender);
    }
}

void zr_makeKeyAndOrderFront(NSWindow* self, NSObject* sender) {
    if (self) {
        zr_makeKeyAndOrderFrontWindow_withSender(self, sender);
    }
}

void zr_orderFront(NSWindow* self, NSObject* sender) {
    if (self) {
        zr_orderFrontWindow_withSender(self, sender);
    }
}

void zr_orderWindow_relativeTo(NSWindow* self, NSWindowOrderingMode place, NSInteger windowNumber) {
    if (self) {
        zr_orderWindow_orderingMode_relativeTo(self, place, windowNumber);
    }
}

NSInteger zr_runModal(NSWindow* self) {
    if (!self) {
        return 0;
    }
    const Ref<NSWindow> kept(self);
    // A new controller lives as long as the session.
    const Ref<NSWindowController> controller = detail::controllerOf(self);
    return send<NSInteger>(NSApplication::sharedApplication(), "runModalForWindow:"_sel,
                           send<id>(controller, "window"_sel));
}

void stopModalWithResponse(NSWindow* self, NSInteger response) {
    if (!self) {
        return;
    }
    const Ref<NSWindow> kept(self);
    send<void>(self, "close"_sel);
    stopSession(response);
}

void stopModal(NSWindow* self) {
    send<void>(self, "stopModalWithResponse:"_sel, NSInteger{NSModalResponseStop});
}

bool needStopModalWhenClosed(NSWindow* self) {
    const id flag = objc_getAssociatedObject(self, stopFlagKey());
    return send<bool>(cast<NSNumber>(flag), "boolValue"_sel);
}

void setNeedStopModalWhenClosed(NSWindow* self, bool needStop) {
    objc_setAssociatedObject(self, stopFlagKey(), box(needStop), OBJC_ASSOCIATION_RETAIN_NONATOMIC);
}

void windowWillClose(NSWindow* self, NSNotification* notification) {
    const id object = self && notification ? notification->object() : nullptr;
    auto* const window = cast<NSWindow>(object);
    if (!window) {
        return;
    }
    const Ref<NSApplication> application = NSApplication::sharedApplication();
    if (send<bool>(window, "isModalPanel"_sel)) {
        send<void>(application, "stopModal"_sel);
        return;
    }
    const Ref<NSRunLoop> loop = NSRunLoop::currentRunLoop();
    if (loop && loop->currentMode()->isEqual(NSModalPanelRunLoopMode()) &&
        send<bool>(window, "needStopModalWhenClosed"_sel)) {
        performSelectorOnMainThread_withObject_waitUntilDone_modes(application, "stopModal"_sel, nullptr, false,
                                                                   array({NSRunLoopCommonModes()}));
    }
}

void beginShakeAnimation(NSWindow* self) {
    if (!self) {
        return;
    }
    const NSRect frame = send<NSRect>(self, "frame"_sel);
    const double swing = frame.size.width * shakeAmplitude;
    const Ref<CGPath> path = CGPath::path();
    path->moveToPoint(frame.origin);
    for (int i = 0; i < shakeSwings; ++i) {
        path->addLineToPoint({frame.origin.x - swing, frame.origin.y});
        path->addLineToPoint({frame.origin.x + swing, frame.origin.y});
    }
    path->closeSubpath();
    const Ref<CAKeyframeAnimation> animation = CAKeyframeAnimation::animation();
    animation->setPath(path);
    animation->setDuration(shakeDuration);
    send<void>(self, "setAnimations:"_sel, dictionary({{"frameOrigin"_ns, animation}}));
    send<void>(send<id>(self, "animator"_sel), "setFrameOrigin:"_sel, frame.origin);
}

void centerAtScreen(NSWindow* self) {
    const Ref<NSScreen> screen = NSScreen::mainScreen();
    centerAtRect(self, screen ? screen->visibleFrame() : NSZeroRect);
}

void centerAtRect(NSWindow* self, NSRect rect) {
    const NSSize size = send<NSRect>(self, "frame"_sel).size;
    const NSPoint origin{rect.origin.x + rect.size.width * 0.5 - size.width * 0.5,
                         rect.origin.y + rect.size.height * 0.5 - size.height * 0.5};
    send<void>(self, "setFrame:display:"_sel, NSRect{origin, size}, true);
}

} // namespace zr
