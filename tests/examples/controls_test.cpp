#include "temporary_folder.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <fstream>
#include <string>

#include <sys/wait.h>

// The gallery as its user meets it. Without the toolkit it is not built, and there is nothing to run.
#ifdef ZR_CONTROLS_PROGRAM

namespace zr {
namespace {

class ControlsProgram : public test::TemporaryFolder {
  protected:
    /// Its exit status; what it says goes nowhere.
    [[nodiscard]] int run(const std::string& arguments) const {
        const std::string command = std::string("XDG_CONFIG_HOME=") + m_folder.string() + " " + ZR_CONTROLS_PROGRAM +
                                    " " + arguments + " >/dev/null 2>&1";
        const int status = std::system(command.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
};

/// Width and height, from the header of a PNG file; zeros for another file.
std::array<unsigned, 2> sizeOfPicture(const std::filesystem::path& file) {
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

TEST_F(ControlsProgram, writesItsOwnPicture) {
    const auto file = m_folder / "controls.png";
    EXPECT_EQ(run("--screenshot " + file.string()), 0);
    const auto [width, height] = sizeOfPicture(file);
    EXPECT_GT(width, 800u);
    EXPECT_GT(height, 400u);
}

TEST_F(ControlsProgram, saysSoWhereItCannotWrite) {
    EXPECT_EQ(run("--screenshot " + (m_folder / "missing" / "controls.png").string()), 1);
}

TEST_F(ControlsProgram, refusesWhatItDoesNotKnow) {
    EXPECT_EQ(run("--screenshot"), 2);
    EXPECT_EQ(run("--picture a.png"), 2);
    EXPECT_EQ(run("surplus"), 2);
}

} // namespace
} // namespace zr

#endif
