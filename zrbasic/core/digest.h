#pragma once

#include <zrbasic/platform/foundation/string.h>

/// Digests of a text's UTF-8 form; a lone surrogate counts as U+FFFD.
///
/// MD5 is for telling texts apart, not for keeping them safe; for a signature use the keyed one. A null receiver gives
/// null, and so does a system whose libcrypto cannot compute the digest. May be used from any thread; nothing throws
/// but `std::bad_alloc`.
namespace zr {

class NSData;

// NSString(ZRXHelper)

/// The MD5 digest as 32 upper-case hexadecimal digits; zero bytes count like any other.
[[nodiscard]] ZR_EXPORT Ref<NSString> MD5Hash(NSString* self);

/// The HMAC-SHA-256 of the receiver under `secret`: 32 raw bytes. The empty secret is a secret too.
///
/// Receiver and secret each end at their first zero character. Null for a null secret, and for one that is not ASCII:
/// it has no bytes to compute with, and a digest under another key would pass for a signature.
[[nodiscard]] ZR_EXPORT Ref<NSData> HMACEncryptWithSecret(NSString* self, NSString* secret);

} // namespace zr
