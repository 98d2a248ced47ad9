#pragma once

#include <zrbasic/platform/runtime/export.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

/// Digests of bytes, computed by libcrypto; this is the only place that uses it.
///
/// How the application or the system has set libcrypto up makes no difference. No value when libcrypto was built
/// without the algorithm or has no memory left. May be used from any thread; nothing throws.
namespace zr::detail {

[[nodiscard]] ZR_EXPORT std::optional<std::array<std::uint8_t, 16>> md5(std::string_view bytes) noexcept;

/// `key` may be empty and of any length.
[[nodiscard]] ZR_EXPORT std::optional<std::array<std::uint8_t, 32>> hmacSha256(std::string_view key,
                                                                               std::string_view message) noexcept;

} // namespace zr::detail
