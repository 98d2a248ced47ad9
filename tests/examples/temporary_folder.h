#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <sys/wait.h>
#include <unistd.h>

namespace zr::test {

/// Empty for a file that is not there.
inline std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream content;
    content << stream.rdbuf();
    return content.str();
}

/// What a program has done.
struct Finished {
    /// -1 when it was killed.
    int status = -1;
    std::string output;
    std::string messages;
};

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

    /// Runs a command of the shell in the folder.
    [[nodiscard]] Finished finished(const std::string& command) const {
        const std::filesystem::path output = m_folder / "output";
        const std::filesystem::path messages = m_folder / "messages";
        const std::string line = "cd " + m_folder.string() + " && " + command + " >" + output.string() + " 2>" +
                                 messages.string() + " </dev/null";
        const int status = std::system(line.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentOf(output), contentOf(messages)};
    }

    std::filesystem::path m_folder;
};

} // namespace zr::test
