#include <zrbasic/core/digest.h>

#include <zrbasic/platform/foundation/data.h>
#include <zrbasic/platform/foundation/digest_p.h>
#include <zrbasic/platform/foundation/unicode_p.h>

namespace zr {
namespace {

std::string_view upToZero(std::string_view bytes) {
    return bytes.substr(0, bytes.find('\0'));
}

} // namespace

ZR_GROUP(NSString, ZRXHelper) {
    is.method<&MD5Hash>("MD5Hash");
    is.method<&HMACEncryptWithSecret>("HMACEncryptWithSecret:");
}

Ref<NSString> MD5Hash(NSString* self) {
    const auto digest = self == nullptr ? std::nullopt : detail::md5(detail::utf8FromUtf16(self->view()));
    if (!digest)
        return nullptr;
    constexpr char16_t digits[] = u"0123456789ABCDEF";
    std::u16string text;
    text.reserve(2 * digest->size());
    for (const std::uint8_t byte : *digest) {
        text += digits[byte / 16];
        text += digits[byte % 16];
    }
    return NSString::fromUtf16(std::move(text));
}

Ref<NSData> HMACEncryptWithSecret(NSString* self, NSString* secret) {
    if (self == nullptr || secret == nullptr || !detail::isAscii(secret->view()))
        return nullptr;
    const std::string key = detail::utf8FromUtf16(secret->view());
    const std::string message = detail::utf8FromUtf16(self->view());
    const auto digest = detail::hmacSha256(upToZero(key), upToZero(message));
    return digest ? NSData::dataWithBytes_length(digest->data(), digest->size()) : nullptr;
}

} // namespace zr
