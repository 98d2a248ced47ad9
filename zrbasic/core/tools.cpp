#include <zrbasic/core/tools.h>

#include <zrbasic/core/text.h>
#include <zrbasic/core/tick.h>
#include <zrbasic/platform/foundation/clock.h>
#include <zrbasic/platform/foundation/uuid.h>

namespace zr {

ZR_DEFINE_CLASS(ZRXTools) {
    is.classMethod<&ZRXTools::isLegalString>("isLegalString:");
    is.classMethod<&ZRXTools::genUUID>("genUUID");
    is.classMethod<&ZRXTools::decimalsCountOfNumber>("decimalsCountOfNumber:");
    is.classMethod<&ZRXTools::intervalWithMachTick>("intervalWithMachTick:");
    is.classMethod<&ZRXTools::intervalFromMachBegining>("intervalFromMachBegining:");
}

ZRXTools::~ZRXTools() = default;

bool ZRXTools::isLegalString(NSObject* value) {
    return ZRXTextValid(value);
}

Ref<NSString> ZRXTools::genUUID() {
    return NSString::fromUtf8(detail::randomUUIDText());
}

NSUInteger ZRXTools::decimalsCountOfNumber(NSObject* value) {
    return detail::decimalsCount(value);
}

double ZRXTools::intervalWithMachTick(std::uint64_t ticks) {
    mach_timebase_info_data_t timebase{};
    mach_timebase_info(&timebase);
    return static_cast<double>(ticks * timebase.numer) / timebase.denom / 1000000;
}

double ZRXTools::intervalFromMachBegining(std::uint64_t startTick) {
    return intervalWithMachTick(mach_absolute_time() - startTick);
}

} // namespace zr
