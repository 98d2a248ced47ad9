#include <zrbasic/platform/foundation/process_info.h>

#include <zrbasic/platform/foundation/string.h>

#include <charconv>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>

#if defined(__APPLE__)
#include <sys/sysctl.h>
#else
#include <sys/utsname.h>
#endif

namespace zr {

using System = SystemVersionOverride::System;

/// What the process takes its system for at one moment.
struct SystemInUse {
    NSOperatingSystemVersion version;
    System system;
    std::string release;

    static SystemInUse current();
    static const SystemVersionOverride* newestOverride;
    static std::mutex mutex;
};

constinit const SystemVersionOverride* SystemInUse::newestOverride = nullptr;
constinit std::mutex SystemInUse::mutex;

namespace {

#if defined(__APPLE__)

constexpr System runningSystem = System::MacOS;

std::string systemRelease() {
    char text[64] = "";
    std::size_t size = sizeof text - 1;
    sysctlbyname("kern.osproductversion", text, &size, nullptr, 0);
    return text;
}

#else

constexpr System runningSystem = System::Other;

std::string systemRelease() {
    utsname name{};
    uname(&name);
    return name.release;
}

#endif

/// The leading numbers of a release such as "6.1.0-18-amd64".
NSOperatingSystemVersion versionIn(std::string_view release) {
    NSInteger parts[3] = {};
    const char* next = release.data();
    const char* const end = next + release.size();
    for (NSInteger& part : parts) {
        next = std::from_chars(next, end, part).ptr;
        if (next == end || *next != '.') {
            break;
        }
        ++next;
    }
    return {parts[0], parts[1], parts[2]};
}

std::string textOf(const NSOperatingSystemVersion& version) {
    std::string text = std::to_string(version.majorVersion) + '.' + std::to_string(version.minorVersion);
    return version.patchVersion == 0 ? text : text + '.' + std::to_string(version.patchVersion);
}

} // namespace

SystemInUse SystemInUse::current() {
    const std::lock_guard lock(mutex);
    if (const SystemVersionOverride* const instead = newestOverride) {
        return {instead->m_version, instead->m_system, textOf(instead->m_version)};
    }
    // Asked once: a running system does not change its version.
    static const auto* const running = new SystemInUse([] {
        std::string text = systemRelease();
        const NSOperatingSystemVersion numbers = versionIn(text);
        return SystemInUse{numbers, runningSystem, std::move(text)};
    }());
    return *running;
}

ZR_DEFINE_CLASS(NSProcessInfo) {
    is.classMethod<&NSProcessInfo::processInfo>("processInfo");
    is.method<&NSProcessInfo::operatingSystemVersion>("operatingSystemVersion");
    is.method<&NSProcessInfo::operatingSystemVersionString>("operatingSystemVersionString");
    is.method<&NSProcessInfo::isOperatingSystemAtLeastVersion>("isOperatingSystemAtLeastVersion:");
}

NSProcessInfo::~NSProcessInfo() = default;

Ref<NSProcessInfo> NSProcessInfo::processInfo() {
    static NSProcessInfo* const shared = make<NSProcessInfo>().leak();
    return shared;
}

NSOperatingSystemVersion NSProcessInfo::operatingSystemVersion() const {
    return SystemInUse::current().version;
}

Ref<NSString> NSProcessInfo::operatingSystemVersionString() const {
    const SystemInUse system = SystemInUse::current();
    return NSString::fromUtf8("Version " + textOf(system.version) + " (Build " + system.release + ')');
}

bool NSProcessInfo::isOperatingSystemAtLeastVersion(NSOperatingSystemVersion version) const {
    return operatingSystemVersion() >= version;
}

bool isMacOSAtLeast(NSInteger majorVersion, NSInteger minorVersion) {
    const SystemInUse system = SystemInUse::current();
    return system.system == System::Other || system.version >= NSOperatingSystemVersion{majorVersion, minorVersion, 0};
}

SystemVersionOverride::SystemVersionOverride(NSOperatingSystemVersion version, System system)
    : m_version(version), m_system(system) {
    const std::lock_guard lock(SystemInUse::mutex);
    m_previous = SystemInUse::newestOverride;
    SystemInUse::newestOverride = this;
}

SystemVersionOverride::~SystemVersionOverride() {
    const std::lock_guard lock(SystemInUse::mutex);
    SystemInUse::newestOverride = m_previous;
}

} // namespace zr
