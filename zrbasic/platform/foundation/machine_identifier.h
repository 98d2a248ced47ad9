#pragma once

#include <zrbasic/platform/runtime/export.h>
#include <zrbasic/platform/runtime/ref.h>

#include <functional>

namespace zr {

class NSString;

/// The identifier of the machine, a UUID in upper case; null when it cannot be read.
///
/// On macOS the platform expert's UUID. On Linux derived from the identifier of the installed system, so that the
/// same system has the same one and nobody can tell the system's own from it. Looked up each time; from any thread.
[[nodiscard]] ZR_EXPORT Ref<NSString> machineIdentifier();

/// Makes the process take its machine for another one while it stands, or for one without an identifier:
/// `const MachineIdentifierOverride none([] { return nullptr; });`.
///
/// The newest one standing counts; they end in the opposite order, as local variables do, and not while the
/// identifier is being looked up. For all threads: the look-up may be called by several at once.
class [[nodiscard]] ZR_EXPORT MachineIdentifierOverride {
  public:
    /// Must not be empty.
    explicit MachineIdentifierOverride(std::function<Ref<NSString>()> lookUp);
    ~MachineIdentifierOverride();
    MachineIdentifierOverride(const MachineIdentifierOverride&) = delete;
    MachineIdentifierOverride& operator=(const MachineIdentifierOverride&) = delete;

  private:
    friend Ref<NSString> machineIdentifier();

    std::function<Ref<NSString>()> m_lookUp;
    const MachineIdentifierOverride* m_previous;
};

} // namespace zr
