#include <zrbasic/platform/foundation/machine_identifier_p.h>

#include <zrbasic/platform/foundation/digest_p.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/uuid.h>

#include <algorithm>
#include <fstream>
#include <optional>

namespace zr::detail {
namespace {

/// Stands for this library. Another value would give every machine another identifier.
constexpr unsigned char purpose[] = {0xFF, 0xCC, 0x90, 0x4C, 0x57, 0x16, 0xC6, 0xD6,
                                     0xDC, 0x46, 0xC9, 0x92, 0x40, 0xBE, 0x14, 0x91};

std::optional<NSUUID::Bytes> bytesOfMachineId(std::string_view text) {
    if (text.ends_with('\n')) {
        text.remove_suffix(1);
    }
    NSUUID::Bytes bytes{};
    if (text.size() != 2 * bytes.size()) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::size_t digit = std::string_view("0123456789abcdefABCDEF").find(text[i]);
        if (digit == std::string_view::npos) {
            return std::nullopt;
        }
        bytes[i / 2] = static_cast<std::uint8_t>(bytes[i / 2] << 4 | (digit < 16 ? digit : digit - 6));
    }
    return bytes == NSUUID::Bytes{} ? std::nullopt : std::optional(bytes);
}

} // namespace

Ref<NSString> identifierFromMachineId(std::string_view text) {
    const auto machine = bytesOfMachineId(text);
    if (!machine) {
        return {};
    }
    // The file's own value is confidential; its documentation asks to hand out no more than a keyed hash of it.
    const auto digest = hmacSha256({reinterpret_cast<const char*>(machine->data()), machine->size()},
                                   {reinterpret_cast<const char*>(purpose), sizeof purpose});
    if (!digest) {
        return {};
    }
    NSUUID::Bytes bytes{};
    std::copy_n(digest->begin(), bytes.size(), bytes.begin());
    // Version 4 and the standard variant.
    bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40);
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80);
    return make<NSUUID>(&NSUUID::initWithUUIDBytes, bytes)->UUIDString();
}

Ref<NSString> identifierFromMachineIdFile(const std::filesystem::path& path) {
    // One character more than a whole one, so that a longer text does not pass for one.
    char text[34];
    std::ifstream file(path, std::ios::binary);
    file.read(text, sizeof text);
    return identifierFromMachineId({text, static_cast<std::size_t>(file.gcount())});
}

#if !defined(__APPLE__)

Ref<NSString> hardwareIdentifier() {
    return identifierFromMachineIdFile("/etc/machine-id");
}

#endif

} // namespace zr::detail
