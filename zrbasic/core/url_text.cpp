#include <zrbasic/core/url_text.h>

#include <zrbasic/platform/foundation/percent_encoding_p.h>
#include <zrbasic/platform/foundation/unicode_p.h>

#include <array>

namespace zr {
namespace {

// What a byte becomes in a form; 0 stands for an escape.
constexpr std::array<char16_t, 256> plainForms = [] {
    std::array<char16_t, 256> forms{};
    for (const char16_t c : u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~")
        forms[c] = c;
    forms[u' '] = u'+';
    return forms;
}();

} // namespace

ZR_GROUP(NSString, ZRXHelper) {
    is.method<&urlEncode>("urlEncode");
    is.method<&urlDecode>("urlDecode");
}

Ref<NSString> urlEncode(NSString* self) {
    if (self == nullptr)
        return nullptr;
    const std::string bytes = detail::utf8FromUtf16(self->view());
    std::u16string encoded;
    encoded.reserve(bytes.size() + bytes.size() / 2);
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (const char16_t plain = plainForms[byte]; plain != 0) {
            encoded += plain;
        } else {
            detail::appendEscape(encoded, byte);
        }
    }
    return NSString::fromUtf16(std::move(encoded));
}

Ref<NSString> urlDecode(NSString* self) {
    return self == nullptr ? nullptr : self->stringByRemovingPercentEncoding();
}

} // namespace zr
