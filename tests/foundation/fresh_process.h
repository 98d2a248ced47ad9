#pragma once

#include <zrbasic/platform/foundation/bundle.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace zr::test {

/// Whether `runsInFreshProcess` has started this process.
inline bool isFreshProcess() {
    return std::getenv("ZR_TEST_FRESH_PROCESS") != nullptr;
}

/// For what happens once in a process: runs the calling test again, alone in a new process that sees these variables
/// ("TZ=UTC"), and answers true; the test passes when that passes. In the new process it answers false. Another
/// `program` is a copy of this one.
///
///     if (test::runsInFreshProcess()) {
///         return;
///     }
inline bool runsInFreshProcess(const std::vector<std::string>& variables = {},
                               const std::string& program = NSBundle::mainBundle()->executablePath()->utf8()) {
    if (isFreshProcess()) {
        return false;
    }
    const auto* const test = testing::UnitTest::GetInstance()->current_test_info();
    const std::string filter = std::string("--gtest_filter=") + test->test_suite_name() + '.' + test->name();
    const pid_t child = fork();
    if (child == 0) {
        setenv("ZR_TEST_FRESH_PROCESS", "1", 1);
        for (const std::string& variable : variables) {
            putenv(const_cast<char*>(variable.c_str()));
        }
        execl(program.c_str(), program.c_str(), filter.c_str(), "--gtest_brief=1", nullptr);
        _exit(127);
    }
    int status = -1;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status)) << "ended by signal " << WTERMSIG(status);
    EXPECT_EQ(WEXITSTATUS(status), 0);
    return true;
}

/// Runs `action` in a copy of the process, which ends without being tidied up, and gives its result, 0 to 255.
template <typename Action>
int resultInChild(Action&& action) {
    const pid_t child = fork();
    if (child == 0) {
        _exit(action());
    }
    int status = -1;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status)) << "ended by signal " << WTERMSIG(status);
    return WEXITSTATUS(status);
}

} // namespace zr::test
