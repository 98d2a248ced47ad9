#include "picture_size.h"
#include "temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <string>

// The desk as its user meets it. Without the toolkit it is not built, and there is nothing to run.
#ifdef ZR_DESK_PROGRAM

namespace zr {
namespace {

using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

using test::Finished;

namespace fs = std::filesystem;

class DeskProgram : public test::TemporaryFolder {
  protected:
    /// Runs it without a screen and a message bus, and with settings of its own. `environment` is what is said before
    /// the program: "NAME=value".
    [[nodiscard]] Finished run(const std::string& arguments, const std::string& environment = "") const {
        std::string command = "env";
        for (const char* const name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "QT_SCALE_FACTOR",
                                       "QT_STYLE_OVERRIDE", "DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR"}) {
            command += std::string(" -u ") + name;
        }
        command += " FONTCONFIG_FILE=" ZR_TEST_VECTORS_DIR "/../qt/fonts.conf XDG_CONFIG_HOME=" + m_folder.string() +
                   "/settings " + environment + ' ' + ZR_DESK_PROGRAM + ' ' + arguments;
        return finished(command);
    }

    /// Plays these lines.
    [[nodiscard]] Finished play(const std::string& script, const std::string& arguments = "",
                                const std::string& environment = "") {
        write("script", script);
        return run("--script script " + arguments, environment);
    }

    /// A folder of data as it comes with the sources.
    fs::path copyOfData() const {
        const fs::path folder = m_folder / "data";
        fs::remove_all(folder);
        fs::copy(ZR_EXAMPLE_DATA_DIR, folder);
        return folder;
    }
};

/// The status line, when everything was played.
std::string statusAtTheEnd(const std::string& text) {
    return R"({"expect":"clock","contains":"quotes"})"
           "\n"
           R"({"expect":"status","text":")" +
           text + "\"}\n";
}

const std::string columnsByHeader = R"({"click":"watchList","at":[330,10],"button":"right"})"
                                    "\n";

TEST_F(DeskProgram, aRecordedMorningGoesAsItWent) {
    const Finished desk = run("--speed 1 --script " ZR_EXAMPLE_DATA_DIR "/desk.actions");
    EXPECT_EQ(desk.status, 0) << desk.messages;
    EXPECT_THAT(desk.messages, Not(HasSubstr("desk: ")));
    // Nothing of it is left behind, so it goes as it went once more.
    const Finished again = run("--speed 1 --script " ZR_EXAMPLE_DATA_DIR "/desk.actions");
    EXPECT_EQ(again.status, 0) << again.messages;
}

TEST_F(DeskProgram, withoutAScreenItPlaysTheDataAndReports) {
    const Finished desk = run("--picture desk.png");
    ASSERT_EQ(desk.status, 0) << desk.messages;
    EXPECT_THAT(desk.output,
                StartsWith("Replay of 5,235 quotes for 2 instruments, 2021-07-27 17:52:39 to 20:51:28 UTC\n"));
    EXPECT_THAT(desk.output, AllOf(ContainsRegex("ETHUSDT +0.01 +2,617 "), ContainsRegex("BNBUSDT +0.1 +2,618 "),
                                   HasSubstr("28 instruments without a quote\n"), HasSubstr("Nothing was skipped\n")));
    EXPECT_EQ(test::sizeOfPicture(m_folder / "desk.png"), (std::array{1120u, 660u}));
}

TEST_F(DeskProgram, aPictureHasThePixelsOfTheScreen) {
    const Finished desk = run("--picture desk.png", "QT_SCALE_FACTOR=2");
    ASSERT_EQ(desk.status, 0) << desk.messages;
    EXPECT_EQ(test::sizeOfPicture(m_folder / "desk.png"), (std::array{2240u, 1320u}));
    const Finished nowhere = run("--picture missing/desk.png");
    EXPECT_EQ(nowhere.status, 1);
    EXPECT_THAT(nowhere.messages, HasSubstr("desk: the picture cannot be written to missing/desk.png\n"));
}

TEST_F(DeskProgram, quotesAreRepeatedAsOftenAsAsked) {
    const Finished three = run("--rounds 3");
    EXPECT_EQ(three.status, 0);
    EXPECT_THAT(three.output, StartsWith("Replay of 15,705 quotes for 2 instruments"));
    const Finished none = run("--rounds=0");
    EXPECT_EQ(none.status, 0);
    EXPECT_THAT(none.output, StartsWith("Replay of 0 quotes"));
}

TEST_F(DeskProgram, anOrderWithoutNotificationsIsFilledAllTheSame) {
    const Finished desk = play(R"({"click": "watchList", "at": [60, 57]}
{"click": "price"}
{"key": "a", "with": "ctrl"}
{"type": "2241.787"}
{"click": "quantity"}
{"type": "10"}
{"key": "Tab"}
{"type": "DESK-1"}
{"key": "Tab"}
{"type": "secret-42"}
{"click": "buy"}
{"expect": "messages", "contains": "Order 4712 is filled: Buy 10 ETHUSDT at 2241.79", "within": 20}
{"expect": "status", "text": "Filled; the desktop shows no notifications"}
)",
                               "--speed 100");
    EXPECT_EQ(desk.status, 0) << desk.messages;
}

TEST_F(DeskProgram, columnsStayAsTheUserLeftThem) {
    const std::string expected =
        R"({"expect": "watchList", "text": "Last, Instrument, Change, High, Volume, Tick, Off tick, Quotes"})"
        "\n";
    const Finished first = play(R"({"click": "watchList", "at": [330, 10], "button": "right"}
{"choose": "Low"}
{"click": "watchList", "at": [60, 10], "to": [240, 10]}
)" + expected);
    EXPECT_EQ(first.status, 0) << first.messages;
    const Finished second = play(expected + R"({"click": "watchList", "at": [330, 10], "button": "right"}
{"choose": "Low"}
{"expect": "watchList", "contains": "Low"}
)");
    EXPECT_EQ(second.status, 0) << second.messages;
}

TEST_F(DeskProgram, settingsThatCannotBeSavedLastUntilTheEnd) {
    const fs::path file = write("file", "");
    const Finished desk = play(R"({"click": "watchList", "at": [330, 10], "button": "right"}
{"choose": "Low"}
{"expect": "status", "text": "Settings cannot be saved; they last until the desk is closed"}
{"expect": "watchList", "text": "Instrument, Last, Change, High, Volume, Tick, Off tick, Quotes"}
{"key": ",", "with": "ctrl"}
{"click": "dark"}
{"key": "Escape"}
{"absent": "dark"}
{"key": ",", "with": "ctrl"}
{"expect": "dark", "on": true}
)",
                               "", "XDG_CONFIG_HOME=" + file.string() + "/below");
    EXPECT_EQ(desk.status, 0) << desk.messages;
}

TEST_F(DeskProgram, damagedSettingsAreNone) {
    const fs::path folder = m_folder / "settings" / "zrbasic";
    const std::string names = "Instrument, Last, Change, Low, High, Volume, Tick, Off tick, Quotes";
    for (const char* const content :
         {"", "\x01\x02\xFF", "[]", "{\"values\": 7}", "{\"values\": {\"dictionary\": {\"columns\": [7, {}]}}}",
          "{\"values\": {\"dictionary\": {\"columns\": \"all\", \"highlightOfRises\": \"green\"}}}"}) {
        SCOPED_TRACE(content);
        fs::create_directories(folder);
        std::ofstream(folder / "org.zrbasic.desk.json", std::ios::binary) << content;
        const Finished desk = play("{\"expect\": \"watchList\", \"text\": \"" + names + "\"}\n" + columnsByHeader +
                                   "{\"choose\": \"Low\"}\n"
                                   "{\"expect\": \"status\", \"text\": \"Everything was played\"}\n");
        EXPECT_EQ(desk.status, 0) << desk.messages;
        // What was saved then is what counts from then on.
        const Finished next = play(
            "{\"expect\": \"watchList\", \"text\": \"Instrument, Last, Change, High, Volume, Tick, Off tick, "
            "Quotes\"}");
        EXPECT_EQ(next.status, 0) << next.messages;
        fs::remove_all(folder);
    }
}

TEST_F(DeskProgram, dataThatCannotBeReadIsNamedInTheStatusLine) {
    struct Row {
        const char* name;
        const char* file;
        /// Null for no file.
        const char* content;
        const char* status;
    };
    const Row table[] = {
        {"no instruments", "exchange_info.json", nullptr, "The list of instruments cannot be read"},
        {"empty instruments", "exchange_info.json", "", "The list of instruments cannot be read"},
        {"cut instruments", "exchange_info.json",
         "{\"symbols\":[{\"symbol\":", "The list of instruments cannot be read"},
        {"no quotes", "ticks.ndjson", nullptr, "The feed cannot be read: No such file or directory"},
        {"no account", "account.json", nullptr, "The account cannot be read"},
        {"rubbish for an account", "account.json", "\x01\xFF", "The account cannot be read"},
        {"an empty account", "account.json", "", "The account cannot be read"},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.name);
        const fs::path folder = copyOfData();
        fs::remove(folder / row.file);
        if (row.content) {
            std::ofstream(folder / row.file, std::ios::binary) << row.content;
        }
        // It goes on after that: there is an order ticket to type into.
        const Finished desk = play(statusAtTheEnd(row.status) + "{\"wait\": 0.3}\n" + statusAtTheEnd(row.status) +
                                       "{\"click\": \"quantity\"}\n{\"type\": \"12\"}\n"
                                       "{\"expect\": \"quantity\", \"text\": \"12\"}\n",
                                   "--data " + folder.string());
        EXPECT_EQ(desk.status, 0) << desk.messages;
    }
    const Finished nothing = run("--data " + (m_folder / "missing").string());
    EXPECT_EQ(nothing.status, 0) << nothing.messages;
    EXPECT_THAT(nothing.output, StartsWith("Replay of 0 quotes for 0 instruments\n"));
}

TEST_F(DeskProgram, quotesThatCannotBeUsedAreCountedAtTheEnd) {
    const std::string quote = "{\"E\":1627408359982,\"s\":\"ETHUSDT\",\"c\":\"2241.78\"}\n";
    std::string rubbish;
    for (int i = 0; i < 4096; ++i) {
        rubbish += static_cast<char>(i * 7919 >> 3);
    }
    const auto lines = static_cast<std::size_t>(std::count(rubbish.begin(), rubbish.end(), '\n')) + 1;
    const std::tuple<const char*, std::string, std::size_t, const char*> table[] = {
        {"an empty file", "", 0, "Everything was played"},
        {"blank lines", "\n\r\n  \n", 0, "Everything was played"},
        {"the last line is cut", quote + quote.substr(0, 30), 1, "Everything was played; lines left out: 1"},
        {"1 MB in a line", quote + '"' + std::string(1 << 20, 'x') + "\"\n" + quote, 2,
         "Everything was played; lines left out: 1"},
    };
    for (const auto& [name, content, quotes, status] : table) {
        SCOPED_TRACE(name);
        const fs::path folder = copyOfData();
        std::ofstream(folder / "ticks.ndjson", std::ios::binary) << content;
        const Finished desk = play(statusAtTheEnd(status), "--data " + folder.string());
        EXPECT_EQ(desk.status, 0) << desk.messages;
        EXPECT_THAT(desk.output, StartsWith("Replay of " + std::to_string(quotes) + " quote"));
    }
    const fs::path folder = copyOfData();
    std::ofstream(folder / "ticks.ndjson", std::ios::binary) << rubbish << '\n' << quote;
    const Finished desk =
        play("{\"expect\": \"status\", \"contains\": \"lines left out: \"}\n", "--data " + folder.string());
    EXPECT_EQ(desk.status, 0) << desk.messages;
    EXPECT_THAT(desk.output, AllOf(StartsWith("Replay of 1 quote"), Not(HasSubstr("Nothing was skipped"))));
    EXPECT_GT(lines, 1u);
}

TEST_F(DeskProgram, aScriptThatFailsSaysWhereAndWhy) {
    const std::tuple<const char*, const char*> table[] = {
        {"", "script: nothing to play"},
        {"# nothing\n\n \t\n", "script: nothing to play"},
        {"{\"wait\": 0}\n[1]\n", "script, line 2: no object"},
        {"# a\n{\"wait\"", "script, line 2: no object"},
        {"{}", "script, line 1: it says nothing to do"},
        {"\n{\"click\": \"nowhere\"}", "script, line 2: \"nowhere\": there is no such view"},
        {"{\"wait\": 0}\n{\"expect\": \"ticketTitle\", \"text\": \"ETHUSDT\"}",
         "script, line 2: \"ticketTitle\": it shows \"No instrument\""},
        {"{\"expect\": \"ticketTitle\", \"contains\": \"USD\"}", "script, line 1: \"ticketTitle\": it shows"},
        {"{\"expect\": \"ticketTitle\", \"on\": true}", "script, line 1: \"ticketTitle\": it is not so"},
        {"{\"keyboard\": \"password\"}", "script, line 1: \"password\": it does not have the keyboard"},
        {"{\"absent\": \"password\"}", "script, line 1: \"password\": it is there"},
        {"{\"choose\": \"Buy\"}", "script, line 1: \"Buy\": there is no such item in an open menu"},
        {"{\"key\": \"Hyper\"}", "script, line 1: there is no key \"Hyper\""},
        {"{\"key\": \"\"}", "script, line 1: there is no key \"\""},
        {"{\"key\": \"a\", \"with\": \"ctrl+hyper\"}", "script, line 1: there is no modifier \"hyper\""},
        {"{\"picture\": \"missing/a.png\"}", "script, line 1: the picture cannot be written"},
        {"{\"key\": \"q\", \"with\": \"ctrl\"}\n{\"wait\": 0.2}\n# later\n{\"wait\": 0}", "script, line 2: not played"},
    };
    for (const auto& [script, message] : table) {
        SCOPED_TRACE(script);
        // Nobody needs to wait for what does not come.
        std::string impatient = script;
        if (const std::size_t end = impatient.rfind('}'); end != std::string::npos) {
            impatient.insert(end, impatient[end - 1] == '{' ? "\"within\": 0.2" : ", \"within\": 0.2");
        }
        const Finished desk = play(impatient);
        EXPECT_EQ(desk.status, 1);
        EXPECT_THAT(desk.messages, HasSubstr(std::string("desk: ") + message));
    }
    const Finished missing = run("--script nowhere");
    EXPECT_EQ(missing.status, 1);
    EXPECT_THAT(missing.messages, HasSubstr("desk: nowhere: nothing to play\n"));
}

TEST_F(DeskProgram, aScriptMayEndWhileAMenuIsOpen) {
    EXPECT_EQ(play("{\"click\": \"menu\"}").status, 0);
    EXPECT_EQ(play("{\"click\": \"menu\"}\n{\"choose\": \"Columns\"}\n{\"wait\": 0.1}").status, 0);
    EXPECT_EQ(play("{\"click\": \"menu\"}\n{\"choose\": \"Quit\"}").status, 0);
    EXPECT_EQ(play("{\"click\": \"menu\"}\n{\"choose\": \"nowhere\", \"within\": 0.1}").status, 1);
}

TEST_F(DeskProgram, aWrongCommandLineIsRefused) {
    for (const char* const arguments :
         {"--nonsense", "surplus", "--data", "--rounds", "--rounds=", "--picture", "--script=", "-h"}) {
        SCOPED_TRACE(arguments);
        const Finished desk = run(arguments);
        EXPECT_EQ(desk.status, 2);
        EXPECT_THAT(desk.messages, StartsWith("usage: desk "));
        EXPECT_THAT(desk.output, IsEmpty());
    }
}

} // namespace
} // namespace zr

#endif
