#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <unistd.h>

namespace zr::test {

/// Empty for a file that is not there.
inline std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream content;
    content << stream.rdbuf();
    return content.str();
}

/// A folder of its own, with files to replay, that goes when the test ends.
class TemporaryFolder : public testing::Test {
  protected:
    void SetUp() override {
        std::string pattern = (std::filesystem::temp_directory_path() / "replay-XXXXXX").string();
        ASSERT_TRUE(mkdtemp(pattern.data()));
        m_folder = pattern;
    }
    void TearDown() override { std::filesystem::remove_all(m_folder); }

    std::filesystem::path write(const std::string& name, const std::string& content) {
        std::ofstream(m_folder / name, std::ios::binary) << content;
        return m_folder / name;
    }

    std::filesystem::path m_folder;
};

} // namespace zr::test
