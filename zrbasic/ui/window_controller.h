#pragma once

#include <zrbasic/platform/appkit/window_controller.h>

/// Showing windows whose controllers nobody else keeps. Main thread only.
namespace zr {

class NSMutableDictionary;
class NSNotification;

/// Keeps the controllers of windows that were shown until the windows close. There is one, which lives as long as the
/// process. Main thread only.
class ZR_EXPORT _ZRShowingWindowControllerCache : public NSObject {
    ZR_DECLARE_CLASS(_ZRShowingWindowControllerCache, NSObject)

  public:
    _ZRShowingWindowControllerCache();
    ~_ZRShowingWindowControllerCache() override;

    /// The same object every time.
    [[nodiscard]] static Ref<_ZRShowingWindowControllerCache> sharedCache();
    /// Registers for the will-close notifications of all windows.
    id init() override;

    /// Keeps the controller, in place of another one of the same window. One without a window, and null, are not kept.
    void cacheWindowController(NSWindowController* controller);
    /// Lets the controller of the window go that is the notification's object.
    void windowWillClose(NSNotification* notification);

    /// Controllers by their windows' `objectIdentifier`. Never null: made when it is first asked for, and again after
    /// null was set.
    [[nodiscard]] Ref<NSMutableDictionary> cachedWindowControllers();
    void setCachedWindowControllers(NSMutableDictionary* controllers);

  private:
    Ref<NSMutableDictionary> m_controllers;
};

// NSWindowController(ZRXHelper)
//
// Each of the first four keeps the receiver until its window closes, and then asks it, or its window, to do what the
// name says. A null receiver does nothing.

ZR_EXPORT void zr_showWindow(NSWindowController* self, NSObject* sender);
ZR_EXPORT void zr_makeKeyAndOrderFrontWindow(NSWindowController* self, NSObject* sender);
ZR_EXPORT void zr_orderFrontWindow(NSWindowController* self, NSObject* sender);
ZR_EXPORT void zr_orderWindow_relativeTo(NSWindowController* self, NSWindowOrderingMode place, NSInteger windowNumber);

// The same by the controller of `window`, or by a new plain one when it has none. A null window shows nothing.

ZR_EXPORT void zr_showWindow_withSender(NSWindow* window, NSObject* sender);
ZR_EXPORT void zr_makeKeyAndOrderFrontWindow_withSender(NSWindow* window, NSObject* sender);
ZR_EXPORT void zr_orderFrontWindow_withSender(NSWindow* window, NSObject* sender);
ZR_EXPORT void zr_orderWindow_orderingMode_relativeTo(NSWindow* window, NSWindowOrderingMode place,
                                                      NSInteger windowNumber);

namespace detail {

/// The window's controller, or a new plain one.
[[nodiscard]] Ref<NSWindowController> controllerOf(NSWindow* window);

} // namespace detail

} // namespace zr
