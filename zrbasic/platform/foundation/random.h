#pragma once

#include <zrbasic/platform/runtime/export.h>

#include <cstddef>
#include <cstdint>

/// Random numbers of the system's cryptographic quality. Never fail; may be used from any thread.
namespace zr {

/// Any unsigned 32-bit number, each as likely as the others.
[[nodiscard]] ZR_EXPORT std::uint32_t arc4random();

/// A number below `bound`, each as likely as the others; 0 for a bound of 0 or 1.
[[nodiscard]] ZR_EXPORT std::uint32_t arc4random_uniform(std::uint32_t bound);

/// Fills `count` bytes, which may be none.
ZR_EXPORT void arc4random_buf(void* bytes, std::size_t count);

} // namespace zr
