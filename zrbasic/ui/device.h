#pragma once

#include <zrbasic/model/semaphore_lock.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/declare.h>

#include <concepts>

namespace zr {

/// The key of the user defaults under which the random identifier is kept that stands in for the machine's:
/// "com.zarvo.defaultUUIDKey".
[[nodiscard]] ZR_EXPORT Ref<NSString> ZRPlatformUUIDUserDefaultsKey();
/// A key for the application's own use, "com.zarvo.test.deviceID"; the library neither reads nor writes it. The
/// spelling is part of the interface.
[[nodiscard]] ZR_EXPORT Ref<NSString> ZRRandomPlatformUUIDUserDefaulsKey();

/// The machine that the application runs on: an identifier to tell it by, which is no secret and guards nothing, and
/// the version of its system.
///
/// May be used from any thread, `setLock` aside. Nothing raises.
class ZR_EXPORT ZRXDevice : public NSObject {
    ZR_DECLARE_CLASS(ZRXDevice, NSObject)

  public:
    ~ZRXDevice() override;

    /// Made when it is first asked for, and the same from then on. Never null.
    [[nodiscard]] static Ref<ZRXDevice> shared();

    /// Looks the identifier up, without a lock: there is none yet.
    id init() override;

    /// Looks the identifier up again, while it holds `lock`: the machine's own; or else what is stored in the user
    /// defaults; or else a new random one, which is stored at once. The machine's own is never stored, and what is
    /// stored is never removed.
    void getIOPlatformExpertDevice();

    /// What was last looked up, without waiting for a look-up that is going on: a UUID in upper case. Null only when
    /// something else than a string is stored in its place.
    [[nodiscard]] Ref<NSString> platformUUID() const;
    /// Such as "10.15.7"; on Linux the kernel's. Asked for once. Never null.
    [[nodiscard]] Ref<NSString> systemVersion();

    /// Held during a look-up; null, and nobody waits, in an object that was not made by `shared`.
    [[nodiscard]] Ref<ZRSemaphoreLock> lock() const { return m_lock.get(); }
    /// Not while another thread may be looking up.
    void setLock(ZRSemaphoreLock* lock) { m_lock = lock; }

    // ZRXDevice(ZRSystemVersion)

    /// Whether the system is macOS of at least that version, or another system, which lacks nothing. The first one is
    /// always true: that is the lowest version there is.
    [[nodiscard]] static bool isSystemAvailableOSX10_12();
    [[nodiscard]] static bool isSystemAvailableOSX10_13();
    [[nodiscard]] static bool isSystemAvailableOSX10_14();
    [[nodiscard]] static bool isSystemAvailableOSX10_15();
    [[nodiscard]] static bool isSystemAvailableOSX11();

  private:
    id m_platformUUID;
    Ref<NSString> m_systemVersion;
    detail::Slot<Ref<ZRSemaphoreLock>> m_lock;
};

/// The instance's: `platformUUID<ZRXDevice>()`.
template <std::derived_from<ZRXDevice> T>
[[nodiscard]] Ref<NSString> platformUUID() {
    return T::shared()->platformUUID();
}
template <std::derived_from<ZRXDevice> T>
[[nodiscard]] Ref<NSString> systemVersion() {
    return T::shared()->systemVersion();
}

} // namespace zr
