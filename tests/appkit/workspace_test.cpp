#include <zrbasic/platform/appkit/workspace.h>

#include "toolkit_testing.h"

#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/error.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/url.h>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace zr {
namespace {

namespace fs = std::filesystem;

Ref<NSURL> url(const char* text) {
    return NSURL::URLWithString(NSString::fromUtf8(text));
}

bool launch(NSURL* address, Ref<NSError>* error = nullptr) {
    return NSWorkspace::sharedWorkspace()->launchApplicationAtURL_options_configuration_error(
        address, NSWorkspaceLaunchNewInstance, NSDictionary::dictionary(), error);
}

/// Writes down what it is asked for.
class WritingToolkit : public test::ToolkitInUse {
  public:
    bool openURL(NSURL* address) override {
        log += "open " + address->absoluteString()->utf8() + '\n';
        return result;
    }
    bool launch(NSString* path) override {
        log += "launch " + path->utf8() + '\n';
        return result;
    }

    std::string log;
    bool result = true;
};

TEST(Workspace, isOneAndKnowsTheValuesOfTheInterface) {
    EXPECT_EQ(NSWorkspace::sharedWorkspace(), NSWorkspace::sharedWorkspace());
    EXPECT_EQ(send<id>(NSWorkspace::classObject(), "sharedWorkspace"_sel), NSWorkspace::sharedWorkspace());
    EXPECT_EQ(NSUInteger{NSWorkspaceLaunchNewInstance}, 524288U);
}

TEST(Workspace, opensURLsThroughTheDesktop) {
    const auto workspace = NSWorkspace::sharedWorkspace();
    WritingToolkit toolkit;
    EXPECT_TRUE(workspace->openURL(url("https://example.com/")));
    toolkit.result = false;
    EXPECT_FALSE(send<bool>(workspace, "openURL:"_sel, url("mailto:a@example.com")));
    EXPECT_EQ(toolkit.log, "open https://example.com/\nopen mailto:a@example.com\n");
    EXPECT_FALSE(workspace->openURL(nullptr));
    EXPECT_FALSE(send<bool>(workspace, "openURL:"_sel, NSNull::null()));
    EXPECT_EQ(toolkit.log, "open https://example.com/\nopen mailto:a@example.com\n") << "null reaches nobody";
    setCurrentToolkit(nullptr);
    EXPECT_FALSE(workspace->openURL(url("https://example.com/"))) << "there is no desktop";
}

TEST(Workspace, asksAHandlerInPlaceOfTheDesktop) {
    const auto workspace = NSWorkspace::sharedWorkspace();
    const WritingToolkit toolkit;
    std::string log;
    EXPECT_FALSE(setOpenURLHandler([&](NSURL* address) {
        log += address->absoluteString()->utf8() + '\n';
        return false;
    }));
    EXPECT_FALSE(workspace->openURL(url("https://example.com/")));
    EXPECT_FALSE(workspace->openURL(nullptr));
    EXPECT_EQ(log, "https://example.com/\n") << "null does not reach the handler either";
    const OpenURLHandler first = setOpenURLHandler([](NSURL*) { return true; });
    ASSERT_TRUE(first);
    EXPECT_FALSE(first(url("second")));
    EXPECT_EQ(log, "https://example.com/\nsecond\n") << "the earlier one came back";
    EXPECT_TRUE(workspace->openURL(url("third")));
    EXPECT_EQ(toolkit.log, "");
    setOpenURLHandler(nullptr);
    EXPECT_TRUE(workspace->openURL(url("fourth")));
    EXPECT_EQ(toolkit.log, "open fourth\n");
}

TEST(Workspace, survivesAHandlerThatReplacesItself) {
    const auto kept = std::make_shared<std::string>("old");
    std::string seen;
    setOpenURLHandler([kept, &seen](NSURL*) {
        setOpenURLHandler(nullptr);
        seen = *kept;
        return true;
    });
    EXPECT_TRUE(NSWorkspace::sharedWorkspace()->openURL(url("x")));
    EXPECT_EQ(seen, "old");
    EXPECT_FALSE(NSWorkspace::sharedWorkspace()->openURL(url("x")));
}

TEST(Workspace, launchesFilesAlone) {
    WritingToolkit toolkit;
    const struct {
        const char* address;
        const char* log;
    } rows[] = {
        {"file:///opt/desk/bin/desk", "launch /opt/desk/bin/desk\n"},
        {"FILE:///opt/a%20b%E4%BB%B7", "launch /opt/a b\xE4\xBB\xB7\n"},
        {"file://localhost/opt/desk", "launch /opt/desk\n"},
        {"file:///opt/desk/", "launch /opt/desk\n"},
        {"file://example.com/opt/desk", ""},
        {"https://example.com/opt/desk", ""},
        {"/opt/desk", ""},
        {"mailto:/opt/desk", ""},
        {"file:///opt/de%00sk", ""},
        {"file:///opt/%FF", ""},
        {"file:", ""},
        {"", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.address);
        toolkit.log.clear();
        EXPECT_EQ(launch(url(row.address)), *row.log != '\0');
        EXPECT_EQ(toolkit.log, row.log);
    }
    EXPECT_FALSE(launch(nullptr));
    EXPECT_FALSE(NSWorkspace::sharedWorkspace()->launchApplicationAtURL_options_configuration_error(nullptr, 0, nullptr,
                                                                                                    nullptr));
}

TEST(Workspace, saysWhyNothingWasLaunched) {
    WritingToolkit toolkit;
    toolkit.result = false;
    Ref<NSError> error;
    EXPECT_FALSE(launch(url("file:///opt/desk"), &error));
    ASSERT_TRUE(error);
    EXPECT_TRUE(error->domain()->isEqual(NSCocoaErrorDomain()));
    EXPECT_EQ(error->code(), 3584);
    EXPECT_FALSE(launch(url("https://example.com"), &error));
    EXPECT_EQ(error->code(), 262);
    toolkit.result = true;
    const Ref<NSError> before = error;
    EXPECT_TRUE(launch(url("file:///opt/desk"), &error));
    EXPECT_EQ(error, before) << "a success leaves it alone";
}

/// Starts real programs, as a program without a toolkit does.
class LaunchedProgram : public testing::Test {
  protected:
    LaunchedProgram() {
        std::string pattern = (fs::temp_directory_path() / "zrbasic-XXXXXX").string();
        EXPECT_NE(mkdtemp(pattern.data()), nullptr);
        folder = pattern;
        m_before = setCurrentToolkit(nullptr);
    }
    ~LaunchedProgram() override {
        setCurrentToolkit(m_before);
        fs::remove_all(folder);
    }

    /// A program that is this script, in a file of the folder.
    Ref<NSURL> script(const std::string& name, const std::string& text, mode_t mode = 0755) const {
        const std::string path = (folder / name).string();
        std::ofstream(path) << text;
        chmod(path.c_str(), mode);
        return url(("file://" + path).c_str());
    }
    /// What the file holds once it is there; waits ten seconds at most.
    [[nodiscard]] std::string content(const std::string& name) const {
        for (int i = 0; i < 1000 && !fs::exists(folder / name); ++i) {
            usleep(10000);
        }
        std::ifstream file(folder / name);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }

    fs::path folder;

  private:
    Toolkit* m_before;
};

TEST_F(LaunchedProgram, runsByItself) {
    const std::string place = folder.string();
    const auto program =
        script("program", "#!/bin/sh\necho $# $PPID > " + place + "/part\nmv " + place + "/part " + place + "/proof\n");
    ASSERT_TRUE(launch(program));
    const std::string proof = content("proof");
    EXPECT_TRUE(proof.starts_with("0 ")) << proof;
    EXPECT_NE(proof, "0 " + std::to_string(getpid()) + '\n') << "it is no child that somebody must wait for";
    fs::remove(folder / "proof");
    EXPECT_TRUE(launch(program));
    EXPECT_TRUE(content("proof").starts_with("0 ")) << "once more";
}

TEST_F(LaunchedProgram, mustBeOneThatTheSystemRuns) {
    Ref<NSError> error;
    EXPECT_FALSE(launch(url(("file://" + (folder / "nothing").string()).c_str()), &error));
    EXPECT_TRUE(error);
    EXPECT_FALSE(launch(script("data", "#!/bin/sh\n", 0644)));
    EXPECT_FALSE(launch(url(("file://" + folder.string()).c_str()))) << "a folder";
    EXPECT_FALSE(launch(script("broken", "#!/no/such/interpreter\n")));
    EXPECT_FALSE(launch(url(("file:///" + std::string(100000, 'x')).c_str())));
    EXPECT_FALSE(currentToolkit().launch(nullptr));
    EXPECT_FALSE(currentToolkit().launch(""_ns));
    EXPECT_FALSE(currentToolkit().launch(NSString::fromUtf16(std::u16string(u"/bin/true\0", 10))));
}

} // namespace
} // namespace zr
