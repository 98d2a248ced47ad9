#pragma once

#include <array>
#include <filesystem>
#include <fstream>
#include <string>

namespace zr::test {

/// Width and height, from the header of a PNG file; zeros for another file.
inline std::array<unsigned, 2> sizeOfPicture(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::array<unsigned char, 24> header{};
    stream.read(reinterpret_cast<char*>(header.data()), header.size());
    const std::string signature(header.begin(), header.begin() + 8);
    if (!stream || signature != "\x89PNG\r\n\x1A\n") {
        return {};
    }
    const auto number = [&header](std::size_t at) {
        return header[at] << 24U | header[at + 1] << 16U | header[at + 2] << 8U | header[at + 3];
    };
    return {static_cast<unsigned>(number(16)), static_cast<unsigned>(number(20))};
}

} // namespace zr::test
