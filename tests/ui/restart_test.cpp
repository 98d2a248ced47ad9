#include <zrbasic/ui/restart.h>

#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/appkit/workspace.h>
#include <zrbasic/platform/foundation/bundle.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/notification_center.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/url.h>

#include <tests/appkit/toolkit_testing.h>

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace zr {
namespace {

namespace fs = std::filesystem;

std::string* steps = nullptr;

std::string state() {
    const auto application = NSApplication::sharedApplication();
    return std::string(application->isHidden() ? " hidden" : " shown") +
           (application->activationPolicy() == NSApplicationActivationPolicyAccessory ? " accessory\n" : " regular\n");
}

class RestartDelegate : public NSObject {
    ZR_OBJECT(RestartDelegate, NSObject)
    ZR_METHOD(applicationShouldTerminate, "applicationShouldTerminate:")

    NSUInteger applicationShouldTerminate(NSObject*) {
        *steps += "ask" + state();
        return reply;
    }

    NSUInteger reply = NSTerminateNow;
};

/// Writes down what it is asked to start, and starts nothing.
class StartingToolkit : public test::ToolkitInUse {
  public:
    bool launch(NSString* path) override {
        *steps += "launch " + path->utf8() + state();
        return canStart;
    }

    bool canStart = true;
};

class Restart : public testing::Test {
  protected:
    Restart() {
        steps = &m_steps;
        application->setDelegate(delegate);
    }
    ~Restart() override {
        if (application->isTerminated()) {
            application->run();
        }
        application->setDelegate(nullptr);
        application->setActivationPolicy(NSApplicationActivationPolicyRegular);
        application->unhide(nullptr);
    }

    static std::string program() { return NSBundle::mainBundle()->executablePath()->utf8(); }

    StartingToolkit toolkit;
    const Ref<NSApplication> application = NSApplication::sharedApplication();
    const Ref<RestartDelegate> delegate = make<RestartDelegate>();
    std::string m_steps;
};

TEST_F(Restart, hidesThenLeavesTheDockThenStartsThenTerminates) {
    const auto window = make<NSWindow>();
    window->orderFront(nullptr);
    const id listening = NSNotificationCenter::defaultCenter()->addObserverForName_object_usingBlock(
        NSApplicationDidHideNotification(), application, [this](NSNotification*) { m_steps += "hide" + state(); });
    ZRRestartApplication::restartApplication();
    NSNotificationCenter::defaultCenter()->removeObserver(listening);
    EXPECT_EQ(m_steps, "hide hidden regular\nlaunch " + program() + " hidden accessory\nask hidden accessory\n");
    EXPECT_TRUE(application->isTerminated());
    EXPECT_FALSE(window->isVisible());
    application->run();
    application->unhide(nullptr);
    EXPECT_TRUE(window->isVisible());
    window->orderOut(nullptr);
}

TEST_F(Restart, terminatesAlsoWhenNothingCouldBeStarted) {
    toolkit.canStart = false;
    send<void>(ZRRestartApplication::classObject(), "restartApplication"_sel);
    EXPECT_EQ(m_steps, "launch " + program() + " hidden accessory\nask hidden accessory\n");
    EXPECT_TRUE(application->isTerminated());
}

TEST_F(Restart, leavesTwoWhenTheDelegateRefuses) {
    delegate->reply = NSTerminateCancel;
    ZRRestartApplication::restartApplication();
    EXPECT_EQ(m_steps, "launch " + program() + " hidden accessory\nask hidden accessory\n");
    EXPECT_FALSE(application->isTerminated());
}

TEST_F(Restart, asksTheWorkspaceForANewInstanceOfTheProgramFile) {
    static std::string asked;
    asked.clear();
    const Method launch =
        class_getInstanceMethod(NSWorkspace::classObject(), "launchApplicationAtURL:options:configuration:error:"_sel);
    const IMP original = method_setImplementation(
        launch, imp(+[](NSObject*, SEL, NSObject* url, std::uint64_t options, NSObject* configuration,
                        Ref<NSError>* error) -> bool {
            const auto* const dictionary = cast<NSDictionary>(configuration);
            asked = cast<NSURL>(url)->absoluteString()->utf8() + ' ' + std::to_string(options) +
                    (dictionary && dictionary->count() == 0 ? " empty" : " other") + (error ? " error" : "");
            return false;
        }));
    ZRRestartApplication::restartApplication();
    method_setImplementation(launch, original);
    EXPECT_EQ(asked, NSBundle::mainBundle()->executableURL()->absoluteString()->utf8() + " 524288 empty");
    EXPECT_TRUE(application->isTerminated());
}

/// Runs the program that restarts itself in a folder of its own.
class RestartedProgram : public testing::Test {
  protected:
    RestartedProgram() {
        std::string pattern = (fs::temp_directory_path() / "zrbasic-XXXXXX").string();
        EXPECT_NE(mkdtemp(pattern.data()), nullptr);
        folder = pattern;
    }
    ~RestartedProgram() override { fs::remove_all(folder); }

    /// The exit status of the first start, whose standard output is left alone.
    [[nodiscard]] int run(const std::string& program, bool removesItself) const {
        const pid_t child = fork();
        if (child == 0) {
            setenv("ZR_RESTART_PROOF", proofFile().c_str(), 1);
            setenv("ZR_RESTART_SESSION", std::to_string(getsid(0)).c_str(), 1);
            setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
            setenv("HOME", folder.c_str(), 1);
            if (removesItself) {
                setenv("ZR_RESTART_REMOVE", "1", 1);
            }
            execl(program.c_str(), program.c_str(), "an argument", nullptr);
            _exit(127);
        }
        int status = -1;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFEXITED(status)) << "ended by signal " << WTERMSIG(status);
        return WEXITSTATUS(status);
    }

    [[nodiscard]] std::string proofFile() const { return (folder / "proof").string(); }

    /// What that start left behind.
    [[nodiscard]] std::string proofOf(int start) const {
        std::ifstream file(proofFile());
        std::string all;
        for (std::string line; std::getline(file, line);) {
            if (line.starts_with(std::to_string(start) + ' ')) {
                all += line.substr(2) + '\n';
            }
        }
        return all;
    }

    /// Nobody waits for the second start, so it is looked for, twenty seconds at most.
    [[nodiscard]] bool secondStartEnds() const {
        for (int i = 0; i < 2000; ++i) {
            if (proofOf(2).ends_with("ends\n")) {
                return true;
            }
            usleep(10000);
        }
        return false;
    }

    fs::path folder;
};

TEST_F(RestartedProgram, startsOnceMoreAsAProcessOfItsOwn) {
    ASSERT_EQ(run(ZR_RESTART_PROGRAM, false), 0) << "the first one ends in the ordinary way";
    EXPECT_EQ(proofOf(1), "starts with 1 arguments, inside\nis asked\nis told\nends\n");
    ASSERT_TRUE(secondStartEnds());
    EXPECT_EQ(proofOf(2), "starts with 0 arguments, outside\nends\n")
        << "its number is what the first one has stored in the user defaults";
    EXPECT_EQ(proofOf(3), "");
}

TEST_F(RestartedProgram, endsAlsoWhenItsFileIsGone) {
    const fs::path copy = folder / "copy";
    fs::copy_file(ZR_RESTART_PROGRAM, copy);
    ASSERT_EQ(run(copy.string(), true), 0);
    EXPECT_EQ(proofOf(1), "starts with 1 arguments, inside\nis asked\nis told\nends\n");
    EXPECT_EQ(proofOf(2), "") << "there was nothing to start, as was known before the first one ended";
}

} // namespace
} // namespace zr
