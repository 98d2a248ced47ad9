#include <zrbasic/ui/window_controller.h>

#include <zrbasic/collections/dictionary_writing.h>
#include <zrbasic/model/object_helpers.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/notification_center.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/message.h>

namespace zr {
namespace {

using Cache = _ZRShowingWindowControllerCache;

void keep(NSWindowController* controller) {
    send<void>(Cache::sharedCache(), "cacheWindowController:"_sel, controller);
}

id windowOf(NSWindowController* controller) {
    return send<id>(controller, "window"_sel);
}

} // namespace

ZR_DEFINE_CLASS(_ZRShowingWindowControllerCache) {
    is.classMethod<&Cache::sharedCache>("sharedCache");
    is.method<&Cache::cacheWindowController>("cacheWindowController:");
    is.method<&Cache::windowWillClose>("windowWillClose:");
    is.method<&Cache::cachedWindowControllers>("cachedWindowControllers");
    is.method<&Cache::setCachedWindowControllers>("setCachedWindowControllers:");
}

_ZRShowingWindowControllerCache::_ZRShowingWindowControllerCache() = default;
_ZRShowingWindowControllerCache::~_ZRShowingWindowControllerCache() = default;

Ref<_ZRShowingWindowControllerCache> _ZRShowingWindowControllerCache::sharedCache() {
    static Cache* const cache = make<Cache>().leak();
    return Ref<Cache>(cache);
}

id _ZRShowingWindowControllerCache::init() {
    NSNotificationCenter::defaultCenter()->addObserver_selector_name_object(this, "windowWillClose:"_sel,
                                                                            NSWindowWillCloseNotification(), nullptr);
    return id(this);
}

void _ZRShowingWindowControllerCache::cacheWindowController(NSWindowController* controller) {
    const id window = windowOf(controller);
    zr_setObject_forKey(cachedWindowControllers(), controller, objectIdentifier(window));
}

void _ZRShowingWindowControllerCache::windowWillClose(NSNotification* notification) {
    const id object = notification ? notification->object() : nullptr;
    if (auto* const window = cast<NSWindow>(object)) {
        zr_removeObjectForKey(cachedWindowControllers(), objectIdentifier(window));
    }
}

Ref<NSMutableDictionary> _ZRShowingWindowControllerCache::cachedWindowControllers() {
    if (!m_controllers) {
        m_controllers = NSMutableDictionary::dictionary();
    }
    return m_controllers;
}

void _ZRShowingWindowControllerCache::setCachedWindowControllers(NSMutableDictionary* controllers) {
    m_controllers = Ref<NSMutableDictionary>(controllers);
}

ZR_GROUP(NSWindowController, ZRXHelper) {
    is.method<static_cast<void (*)(NSWindowController*, NSObject*)>(&zr_showWindow)>("zr_showWindow:");
    is.method<&zr_makeKeyAndOrderFrontWindow>("zr_makeKeyAndOrderFrontWindow:");
    is.method<&zr_orderFrontWindow>("zr_orderFrontWindow:");
    is.method<static_cast<void (*)(NSWindowController*, NSWindowOrderingMode, NSInteger)>(&zr_orderWindow_relativeTo)>(
        "zr_orderWindow:relativeTo:");
    is.classMethod<&zr_showWindow_withSender>("zr_showWindow:withSender:");
    is.classMethod<&zr_makeKeyAndOrderFrontWindow_withSender>("zr_makeKeyAndOrderFrontWindow:withSender:");
    is.classMethod<&zr_orderFrontWindow_withSender>("zr_orderFrontWindow:withSender:");
    is.classMethod<&zr_orderWindow_orderingMode_relativeTo>("zr_orderWindow:orderingMode:relativeTo:");
}

void zr_showWindow(NSWindowController* self, NSObject* sender) {
    if (self) {
        keep(self);
        send<void>(self, "showWindow:"_sel, sender);
    }
}

void zr_makeKeyAndOrderFrontWindow(NSWindowController* self, NSObject* sender) {
    if (self) {
        keep(self);
        send<void>(windowOf(self), "makeKeyAndOrderFront:"_sel, sender);
    }
}

void zr_orderFrontWindow(NSWindowController* self, NSObject* sender) {
    if (self) {
        keep(self);
        send<void>(windowOf(self), "orderFront:"_sel, sender);
    }
}

void zr_orderWindow_relativeTo(NSWindowController* self, NSWindowOrderingMode place, NSInteger windowNumber) {
    if (self) {
        keep(self);
        send<void>(windowOf(self), "orderWindow:relativeTo:"_sel, place, windowNumber);
    }
}

Ref<NSWindowController> detail::controllerOf(NSWindow* window) {
    if (Ref<NSWindowController> controller = send<Ref<NSWindowController>>(window, "windowController"_sel)) {
        return controller;
    }
    return make<NSWindowController>(&NSWindowController::initWithWindow, window);
}

void zr_showWindow_withSender(NSWindow* window, NSObject* sender) {
    send<void>(detail::controllerOf(window), "zr_showWindow:"_sel, sender);
}

void zr_makeKeyAndOrderFrontWindow_withSender(NSWindow* window, NSObject* sender) {
    send<void>(detail::controllerOf(window), "zr_makeKeyAndOrderFrontWindow:"_sel, sender);
}

void zr_orderFrontWindow_withSender(NSWindow* window, NSObject* sender) {
    send<void>(detail::controllerOf(window), "zr_orderFrontWindow:"_sel, sender);
}

void zr_orderWindow_orderingMode_relativeTo(NSWindow* window, NSWindowOrderingMode place, NSInteger windowNumber) {
    send<void>(detail::controllerOf(window), "zr_orderWindow:relativeTo:"_sel, place, windowNumber);
}

} // namespace zr
