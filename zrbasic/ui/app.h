#pragma once

#include <zrbasic/platform/foundation/date.h>
#include <zrbasic/platform/foundation/date_components.h>
#include <zrbasic/platform/runtime/declare.h>

#include <concepts>

namespace zr {

class NSString;

/// When the application started, which version it is, and which one ran before.
///
/// An application that wants to greet its users after an update does, in this order:
///
///     const id previous = ZRXApp::previousStartupVersion();
///     const bool isUpdated = previous && !previous->isEqual(ZRXApp::appVersion());
///     ZRXApp::cacheCurrentAppVersion();
///
/// May be used from any thread. Nothing raises.
class ZR_EXPORT ZRXApp : public NSObject {
    ZR_DECLARE_CLASS(ZRXApp, NSObject)

  public:
    ~ZRXApp() override;

    /// Runs when the library is loaded, and makes that the moment of the start. Another call does nothing.
    static void load();
    /// The one that `load` made. Never null.
    [[nodiscard]] static Ref<ZRXApp> shared();

    /// The moment of the start. Null only in an object that was not made by `shared`.
    [[nodiscard]] Ref<NSDate> startupDate() const { return m_startupDate.get(); }
    /// The same in milliseconds since 1970-01-01 00:00 UTC, with a fraction.
    [[nodiscard]] double startupTimeInterval() const { return m_startupTimeInterval.get(); }
    /// Its year, month, day, hour, minute, second and weekday in the local calendar. Always the same object.
    [[nodiscard]] Ref<NSDateComponents> startupDateComponents();

    /// What the application says about itself (see bundle.h); null when it says nothing. The first text that is found
    /// counts for the life of the process.
    [[nodiscard]] static Ref<NSString> appVersion();
    [[nodiscard]] static Ref<NSString> appBuildVersion();
    [[nodiscard]] static Ref<NSString> appBundleName();

    /// What is stored as the version of an earlier start: a string, unless somebody else wrote there; null when nothing
    /// is. After `cacheCurrentAppVersion` that is the present version.
    [[nodiscard]] static id previousStartupVersion();
    /// Stores `appVersion` in the user defaults, at once. Without a version nothing changes.
    static void cacheCurrentAppVersion();

  private:
    detail::Slot<Ref<NSDate>> m_startupDate;
    detail::Slot<double> m_startupTimeInterval;
    Ref<NSDateComponents> m_startupDateComponents;
};

/// The instance's: `startupTimeInterval<ZRXApp>()`.
template <std::derived_from<ZRXApp> T>
[[nodiscard]] double startupTimeInterval() {
    return T::shared()->startupTimeInterval();
}
template <std::derived_from<ZRXApp> T>
[[nodiscard]] Ref<NSDateComponents> startupDateComponents() {
    return T::shared()->startupDateComponents();
}

} // namespace zr
