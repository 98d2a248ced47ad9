#include <zrbasic/platform/foundation/digest_p.h>

#include <openssl/core_names.h>
#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/params.h>

#include <memory>

namespace zr::detail {
namespace {

// A library context of our own: with the application's, a set-up that allows approved algorithms only would take MD5
// away, which is no more than a fingerprint here. Null, for want of memory, means the application's.
OSSL_LIB_CTX* libraryContext() noexcept {
    static OSSL_LIB_CTX* const context = OSSL_LIB_CTX_new();
    return context;
}

struct FreeMacContext {
    void operator()(EVP_MAC_CTX* context) const noexcept { EVP_MAC_CTX_free(context); }
};

const unsigned char* bytesOf(std::string_view view) noexcept {
    // A null pointer would mean that the key was not given, even if its length is.
    return reinterpret_cast<const unsigned char*>(view.data() != nullptr ? view.data() : "");
}

} // namespace

std::optional<std::array<std::uint8_t, 16>> md5(std::string_view bytes) noexcept {
    // Looking an algorithm up costs as much as a short digest.
    static const EVP_MD* const algorithm = EVP_MD_fetch(libraryContext(), "MD5", nullptr);
    std::array<std::uint8_t, 16> digest;
    if (algorithm == nullptr || EVP_Digest(bytes.data(), bytes.size(), digest.data(), nullptr, algorithm, nullptr) != 1)
        return std::nullopt;
    return digest;
}

std::optional<std::array<std::uint8_t, 32>> hmacSha256(std::string_view key, std::string_view message) noexcept {
    static EVP_MAC* const algorithm = EVP_MAC_fetch(libraryContext(), "HMAC", nullptr);
    char hash[] = "SHA256";
    const OSSL_PARAM parameters[] = {OSSL_PARAM_construct_utf8_string(OSSL_MAC_PARAM_DIGEST, hash, 0),
                                     OSSL_PARAM_construct_end()};
    std::array<std::uint8_t, 32> digest;
    std::size_t length = 0;
    if (algorithm == nullptr)
        return std::nullopt;
    const std::unique_ptr<EVP_MAC_CTX, FreeMacContext> context(EVP_MAC_CTX_new(algorithm));
    if (context == nullptr || EVP_MAC_init(context.get(), bytesOf(key), key.size(), parameters) != 1 ||
        EVP_MAC_update(context.get(), bytesOf(message), message.size()) != 1 ||
        EVP_MAC_final(context.get(), digest.data(), &length, digest.size()) != 1)
        return std::nullopt;
    return digest;
}

} // namespace zr::detail
