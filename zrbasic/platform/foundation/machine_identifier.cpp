#include <zrbasic/platform/foundation/machine_identifier.h>

#include <zrbasic/platform/foundation/machine_identifier_p.h>
#include <zrbasic/platform/foundation/string.h>

#include <mutex>
#include <utility>

namespace zr {

namespace {

constinit std::mutex overrideMutex;
constinit const MachineIdentifierOverride* newestOverride = nullptr;

} // namespace

Ref<NSString> machineIdentifier() {
    const MachineIdentifierOverride* instead = nullptr;
    {
        const std::lock_guard lock(overrideMutex);
        instead = newestOverride;
    }
    return instead ? instead->m_lookUp() : detail::hardwareIdentifier();
}

MachineIdentifierOverride::MachineIdentifierOverride(std::function<Ref<NSString>()> lookUp)
    : m_lookUp(std::move(lookUp)) {
    const std::lock_guard lock(overrideMutex);
    m_previous = newestOverride;
    newestOverride = this;
}

MachineIdentifierOverride::~MachineIdentifierOverride() {
    const std::lock_guard lock(overrideMutex);
    newestOverride = m_previous;
}

} // namespace zr
