#include <zrbasic/core/digest.h>
#include <zrbasic/core/url_text.h>
#include <zrbasic/platform/foundation/data.h>

#include <benchmark/benchmark.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <array>
#include <string>

// Digests and form encoding of 64 bytes, 1 KiB and 64 KiB of text. Digests stand beside libcrypto called directly with
// bytes at hand, so what is between them is the way from UTF-16 and the object that holds the result. Encoding stands
// beside the loop over a `std::string` that a user would write; one character in seven of its text needs an escape.

namespace {

using namespace zr;
using Md5 = std::array<unsigned char, 16>;
using Sha256 = std::array<unsigned char, 32>;

constexpr std::string_view secret = "a secret that both sides know";

std::string textFor(const benchmark::State& state) {
    constexpr std::string_view piece = "symbol=AU2412&price=3 ";
    std::string text;
    while (text.size() < static_cast<std::size_t>(state.range(0)))
        text += piece[text.size() % piece.size()];
    return text;
}

std::string hexOf(const Md5& digest) {
    std::string text;
    for (const unsigned char byte : digest) {
        text += "0123456789ABCDEF"[byte / 16];
        text += "0123456789ABCDEF"[byte % 16];
    }
    return text;
}

Md5 directMd5(const std::string& text) {
    Md5 digest{};
    EVP_Digest(text.data(), text.size(), digest.data(), nullptr, EVP_md5(), nullptr);
    return digest;
}

Sha256 directHmac(const std::string& text) {
    Sha256 digest{};
    HMAC(EVP_sha256(), secret.data(), static_cast<int>(secret.size()),
         reinterpret_cast<const unsigned char*>(text.data()), text.size(), digest.data(), nullptr);
    return digest;
}

std::string encodedByHand(const std::string& text) {
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '.' ||
            c == '_' || c == '~') {
            result += c;
        } else if (c == ' ') {
            result += '+';
        } else {
            result += '%';
            result += "0123456789ABCDEF"[byte / 16];
            result += "0123456789ABCDEF"[byte % 16];
        }
    }
    return result;
}

template <class Work>
void run(benchmark::State& state, bool isRight, Work work) {
    if (!isRight) {
        state.SkipWithError("wrong answer");
        return;
    }
    for (auto _ : state) {
        auto result = work();
        benchmark::DoNotOptimize(result);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * state.range(0));
}

void md5(benchmark::State& state) {
    const std::string text = textFor(state);
    const Ref<NSString> string = NSString::fromUtf8(text);
    run(state, MD5Hash(string)->utf8() == hexOf(directMd5(text)), [&] { return MD5Hash(string); });
}

void md5Direct(benchmark::State& state) {
    const std::string text = textFor(state);
    run(state, true, [&] { return directMd5(text); });
}

void hmac(benchmark::State& state) {
    const std::string text = textFor(state);
    const Ref<NSString> string = NSString::fromUtf8(text);
    const Ref<NSString> key = NSString::fromUtf8(secret);
    const Sha256 expected = directHmac(text);
    const std::string_view bytes(reinterpret_cast<const char*>(expected.data()), expected.size());
    run(state, HMACEncryptWithSecret(string, key)->view() == bytes, [&] { return HMACEncryptWithSecret(string, key); });
}

void hmacDirect(benchmark::State& state) {
    const std::string text = textFor(state);
    run(state, true, [&] { return directHmac(text); });
}

void encoding(benchmark::State& state) {
    const std::string text = textFor(state);
    const Ref<NSString> string = NSString::fromUtf8(text);
    run(state, urlEncode(string)->utf8() == encodedByHand(text), [&] { return urlEncode(string); });
}

void encodingByHand(benchmark::State& state) {
    const std::string text = textFor(state);
    run(state, true, [&] { return encodedByHand(text); });
}

BENCHMARK(md5)->Arg(64)->Arg(1024)->Arg(65536);
BENCHMARK(md5Direct)->Arg(64)->Arg(1024)->Arg(65536);
BENCHMARK(hmac)->Arg(64)->Arg(1024)->Arg(65536);
BENCHMARK(hmacDirect)->Arg(64)->Arg(1024)->Arg(65536);
BENCHMARK(encoding)->Arg(64)->Arg(1024)->Arg(65536);
BENCHMARK(encodingByHand)->Arg(64)->Arg(1024)->Arg(65536);

} // namespace
