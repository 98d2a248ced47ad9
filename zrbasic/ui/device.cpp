#include <zrbasic/ui/device.h>

#include <zrbasic/core/tools.h>
#include <zrbasic/platform/foundation/machine_identifier.h>
#include <zrbasic/platform/foundation/process_info.h>
#include <zrbasic/platform/foundation/user_defaults.h>
#include <zrbasic/platform/runtime/synchronized.h>

#include <mutex>

namespace zr {

namespace {

/// Stored in the user defaults; made and written there when there is none.
id storedIdentifier() {
    const Ref<NSUserDefaults> defaults = NSUserDefaults::standardUserDefaults();
    id stored = defaults->objectForKey(ZRPlatformUUIDUserDefaultsKey());
    if (!stored) {
        stored = ZRXTools::genUUID();
        defaults->setObject_forKey(stored, ZRPlatformUUIDUserDefaultsKey());
        defaults->synchronize();
    }
    return stored;
}

} // namespace

Ref<NSString> ZRPlatformUUIDUserDefaultsKey() {
    return "com.zarvo.defaultUUIDKey"_ns;
}

Ref<NSString> ZRRandomPlatformUUIDUserDefaulsKey() {
    return "com.zarvo.test.deviceID"_ns;
}

ZR_DEFINE_CLASS(ZRXDevice) {
    is.classMethod<&ZRXDevice::shared>("shared");
    is.method<&ZRXDevice::getIOPlatformExpertDevice>("getIOPlatformExpertDevice");
    is.method<&ZRXDevice::platformUUID>("platformUUID");
    is.method<&ZRXDevice::systemVersion>("systemVersion");
    is.property<ZRXDevice, &ZRXDevice::m_lock>("lock", "setLock");
    is.classMethod<&zr::platformUUID<ZRXDevice>>("platformUUID");
    is.classMethod<&zr::systemVersion<ZRXDevice>>("systemVersion");
}

ZR_GROUP(ZRXDevice, ZRSystemVersion) {
    is.classMethod<&ZRXDevice::isSystemAvailableOSX10_12>("isSystemAvailableOSX10_12");
    is.classMethod<&ZRXDevice::isSystemAvailableOSX10_13>("isSystemAvailableOSX10_13");
    is.classMethod<&ZRXDevice::isSystemAvailableOSX10_14>("isSystemAvailableOSX10_14");
    is.classMethod<&ZRXDevice::isSystemAvailableOSX10_15>("isSystemAvailableOSX10_15");
    is.classMethod<&ZRXDevice::isSystemAvailableOSX11>("isSystemAvailableOSX11");
}

ZRXDevice::~ZRXDevice() = default;

Ref<ZRXDevice> ZRXDevice::shared() {
    static ZRXDevice* const instance = [] {
        Ref<ZRXDevice> device = make<ZRXDevice>();
        // Only now, so the first look-up has run without it.
        device->setLock(make<ZRSemaphoreLock>());
        return device.leak();
    }();
    return instance;
}

id ZRXDevice::init() {
    getIOPlatformExpertDevice();
    return id(this);
}

void ZRXDevice::getIOPlatformExpertDevice() {
    const Ref<ZRSemaphoreLock> held = lock();
    const auto waiting = held ? std::unique_lock(*held) : std::unique_lock<ZRSemaphoreLock>();
    id identifier = machineIdentifier();
    if (!identifier) {
        identifier = storedIdentifier();
    }
    // Those who read it do not take the lock.
    const Synchronized exchange(this);
    m_platformUUID = identifier;
}

Ref<NSString> ZRXDevice::platformUUID() const {
    const Synchronized exchange(this);
    return Ref<NSString>(cast<NSString>(m_platformUUID));
}

Ref<NSString> ZRXDevice::systemVersion() {
    const Synchronized exchange(this);
    if (!m_systemVersion) {
        const NSOperatingSystemVersion version = NSProcessInfo::processInfo()->operatingSystemVersion();
        m_systemVersion = NSString::stringWithFormat("%ld.%ld.%ld"_ns, version.majorVersion, version.minorVersion,
                                                     version.patchVersion);
    }
    return m_systemVersion;
}

bool ZRXDevice::isSystemAvailableOSX10_12() {
    return true;
}

bool ZRXDevice::isSystemAvailableOSX10_13() {
    return isMacOSAtLeast(10, 13);
}

bool ZRXDevice::isSystemAvailableOSX10_14() {
    return isMacOSAtLeast(10, 14);
}

bool ZRXDevice::isSystemAvailableOSX10_15() {
    return isMacOSAtLeast(10, 15);
}

bool ZRXDevice::isSystemAvailableOSX11() {
    return isMacOSAtLeast(11);
}

} // namespace zr
