#include "picture_size.h"
#include "temporary_folder.h"

#include <gtest/gtest.h>

#include <cstdlib>
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

TEST_F(ControlsProgram, writesItsOwnPicture) {
    const auto file = m_folder / "controls.png";
    EXPECT_EQ(run("--screenshot " + file.string()), 0);
    const auto [width, height] = test::sizeOfPicture(file);
    EXPECT_GT(width, 800u);
    EXPECT_GT(height, 400u);
}

TEST_F(ControlsProgram, writesADarkOneOfTheSameSize) {
    const auto light = m_folder / "light.png";
    const auto dark = m_folder / "dark.png";
    ASSERT_EQ(run("--screenshot " + light.string()), 0);
    ASSERT_EQ(run("--dark --screenshot " + dark.string()), 0);
    EXPECT_EQ(test::sizeOfPicture(dark), test::sizeOfPicture(light));
    EXPECT_NE(test::contentOf(dark), test::contentOf(light));
    ASSERT_EQ(run("--screenshot " + light.string() + " --dark"), 0) << "in either order";
    EXPECT_EQ(test::contentOf(dark), test::contentOf(light));
}

TEST_F(ControlsProgram, saysSoWhereItCannotWrite) {
    EXPECT_EQ(run("--screenshot " + (m_folder / "missing" / "controls.png").string()), 1);
}

TEST_F(ControlsProgram, refusesWhatItDoesNotKnow) {
    EXPECT_EQ(run("--screenshot"), 2);
    EXPECT_EQ(run("--picture a.png"), 2);
    EXPECT_EQ(run("--dark --dark"), 2);
    EXPECT_EQ(run("--screenshot a.png --screenshot b.png"), 2);
    EXPECT_EQ(run("surplus"), 2);
}

} // namespace
} // namespace zr

#endif
