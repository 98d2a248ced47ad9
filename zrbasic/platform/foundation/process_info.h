#pragma once

#include <zrbasic/platform/runtime/declare.h>

#include <compare>

namespace zr {

class NSString;

/// A version of the operating system, such as 10.15.7. Versions are ordered by their parts, the first one first.
struct NSOperatingSystemVersion {
    NSInteger majorVersion = 0;
    NSInteger minorVersion = 0;
    NSInteger patchVersion = 0;

    friend auto operator<=>(const NSOperatingSystemVersion&, const NSOperatingSystemVersion&) = default;
};

/// The running process and the system below it. May be used from any thread.
class ZR_EXPORT NSProcessInfo : public NSObject {
    ZR_DECLARE_CLASS(NSProcessInfo, NSObject)
  public:
    ~NSProcessInfo() override;

    /// The one for this process: the same object every time.
    [[nodiscard]] static Ref<NSProcessInfo> processInfo();

    /// The running system's version; on Linux the kernel's. A part that the system does not tell is 0.
    [[nodiscard]] NSOperatingSystemVersion operatingSystemVersion() const;
    /// The version for people, "Version 6.1 (Build 6.1.0-18-amd64)"; for comparing use the numbers. Never null.
    [[nodiscard]] Ref<NSString> operatingSystemVersionString() const;
    /// Whether `operatingSystemVersion` is `version` or later, whatever system that is a version of.
    [[nodiscard]] bool isOperatingSystemAtLeastVersion(NSOperatingSystemVersion version) const;
};

/// Whether what macOS has since that version can be had: true on every other system, which brings it along itself.
[[nodiscard]] ZR_EXPORT bool isMacOSAtLeast(NSInteger majorVersion, NSInteger minorVersion = 0);

/// Makes the process take its system for another one while it stands, so that what depends on the version can be tested
/// everywhere: `const SystemVersionOverride catalina({10, 15, 0});`.
///
/// The newest one standing counts; they end in the opposite order, as local variables do. For all threads.
class [[nodiscard]] ZR_EXPORT SystemVersionOverride {
  public:
    /// Which system it shall be.
    enum class System { MacOS, Other };

    explicit SystemVersionOverride(NSOperatingSystemVersion version, System system = System::MacOS);
    ~SystemVersionOverride();
    SystemVersionOverride(const SystemVersionOverride&) = delete;
    SystemVersionOverride& operator=(const SystemVersionOverride&) = delete;

  private:
    NSOperatingSystemVersion m_version;
    System m_system;
    const SystemVersionOverride* m_previous;

    friend struct SystemInUse;
};

} // namespace zr
