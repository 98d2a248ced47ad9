#if defined(__APPLE__)

#include <zrbasic/platform/foundation/machine_identifier_p.h>
#include <zrbasic/platform/foundation/string.h>

#include <CoreFoundation/CoreFoundation.h>
#include <IOKit/IOKitLib.h>

namespace zr::detail {

Ref<NSString> hardwareIdentifier() {
    // The null port is the default one, under all of its names.
    const io_service_t expert =
        IOServiceGetMatchingService(MACH_PORT_NULL, IOServiceMatching("IOPlatformExpertDevice"));
    const CFTypeRef value =
        IORegistryEntryCreateCFProperty(expert, CFSTR("IOPlatformUUID"), kCFAllocatorDefault, kNilOptions);
    Ref<NSString> identifier;
    if (value) {
        char text[64];
        if (CFGetTypeID(value) == CFStringGetTypeID() &&
            CFStringGetCString(static_cast<CFStringRef>(value), text, sizeof text, kCFStringEncodingUTF8)) {
            identifier = NSString::fromUtf8(text);
        }
        CFRelease(value);
    }
    IOObjectRelease(expert);
    return identifier;
}

} // namespace zr::detail

#endif
