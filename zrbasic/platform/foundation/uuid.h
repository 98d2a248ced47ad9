#pragma once

#include <zrbasic/platform/runtime/declare.h>
#include <zrbasic/platform/runtime/export.h>

#include <array>
#include <cstdint>
#include <string>

namespace zr {

/// A universally unique identifier: 16 bytes. Never changes, so it may be used from any thread.
class ZR_EXPORT NSUUID : public NSObject {
    ZR_DECLARE_CLASS(NSUUID, NSObject)
  public:
    using Bytes = std::array<std::uint8_t, 16>;

    NSUUID();
    ~NSUUID() override;

    /// A new random identifier (version 4), from the system's random source.
    [[nodiscard]] static Ref<NSUUID> UUID();

    /// Sets up a new random identifier.
    id init() override;
    /// Reads the 36-character form, in letters of either case; gives null for anything else, null included.
    id initWithUUIDString(NSString* text);
    id initWithUUIDBytes(const Bytes& bytes);

    /// 36 characters in groups 8-4-4-4-12, upper case.
    [[nodiscard]] Ref<NSString> UUIDString() const;
    [[nodiscard]] const Bytes& bytes() const { return m_bytes; }

    [[nodiscard]] bool isEqual(NSObject* other) const override;
    [[nodiscard]] NSUInteger hash() const override;
    /// The same as `UUIDString`.
    [[nodiscard]] Ref<NSString> description() const override;
    /// The identifier itself.
    [[nodiscard]] id copy() const override;

  private:
    Bytes m_bytes{};
};

namespace detail {

/// A new random identifier (version 4) in its 36-character upper-case form, without making objects.
[[nodiscard]] ZR_EXPORT std::string randomUUIDText();

} // namespace detail

} // namespace zr
