#include "temporary_folder.h"

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/json_serialization.h>
#include <zrbasic/platform/foundation/number.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

// The program as its user meets it: command line, both outputs and exit status.

namespace zr {

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace fs = std::filesystem;

struct Finished : test::Finished {
    /// What the report, read as JSON, holds at the end of the given keys; -1 when there is no number.
    [[nodiscard]] long at(std::initializer_list<const char*> keys) const {
        id value = NSJSONSerialization::objectWithText(output, 0, nullptr);
        for (const char* key : keys) {
            auto* const dictionary = cast<NSDictionary>(value);
            value = dictionary ? dictionary->objectForKey(NSString::fromUtf8(key)) : id();
        }
        auto* const number = cast<NSNumber>(value);
        return number ? static_cast<long>(number->integerValue()) : -1;
    }
};

class Replay : public test::TemporaryFolder {
  protected:
    /// Runs it on an instrument "A" with the tick 0.5 and these quotes.
    Finished runOn(const std::string& quotes, const std::string& options = "") {
        write("exchange_info.json",
              list(R"({"symbol":"A","filters":[{"filterType":"PRICE_FILTER","tickSize":"0.5"}]})"));
        write("ticks.ndjson", quotes);
        return run(m_folder.string() + " --json " + options);
    }

    static std::string list(const std::string& entries) { return "{\"symbols\":[\n" + entries + "\n]}"; }

    Finished run(const std::string& arguments) { return {finished(ZR_REPLAY_PROGRAM " " + arguments)}; }
};

TEST_F(Replay, recordedQuotesGiveTheNumbersOfAnIndependentCount) {
    const Finished replay = run("--json");
    ASSERT_EQ(replay.status, 0);
    EXPECT_THAT(replay.messages, IsEmpty());
    const id root = NSJSONSerialization::objectWithText(replay.output, 0, nullptr);
    ASSERT_TRUE(cast<NSDictionary>(root));
    auto* const instruments = cast<NSArray>(cast<NSDictionary>(root)->peek("instruments"_ns));
    ASSERT_TRUE(instruments);
    EXPECT_EQ(instruments->count(), 30u);

    std::ifstream vectors(ZR_TEST_VECTORS_DIR "/replay_vectors.txt");
    std::size_t rows = 0;
    for (std::string expected; std::getline(vectors, expected); ++rows) {
        bool isFound = false;
        for (const id& element : instruments->elements()) {
            auto* const entry = cast<NSDictionary>(element);
            std::string actual;
            for (const auto& key :
                 {"symbol"_ns, "tick"_ns, "quotes"_ns, "changes"_ns, "offTick"_ns, "low"_ns, "high"_ns, "last"_ns}) {
                actual += (actual.empty() ? "" : "|") + entry->peek(key)->description()->utf8();
            }
            isFound = isFound || actual == expected;
        }
        EXPECT_TRUE(isFound) << expected;
    }
    EXPECT_EQ(rows, 2u);
    EXPECT_EQ(replay.at({"quotes"}), 5235);
    EXPECT_GT(replay.at({"quotesPerSecond"}), 0);
    EXPECT_THAT(replay.output, HasSubstr("\"from\" : \"2021-07-27 17:52:39\""));
    EXPECT_THAT(replay.output, HasSubstr("\"to\" : \"2021-07-27 20:51:28\""));
}

TEST_F(Replay, theReportForPeopleHasAlignedColumns) {
    const Finished replay = run(ZR_EXAMPLE_DATA_DIR);
    ASSERT_EQ(replay.status, 0);
    EXPECT_THAT(replay.output,
                StartsWith("Replay of 5,235 quotes for 2 instruments, 2021-07-27 17:52:39 to 20:51:28 UTC\n"));
    std::istringstream lines(replay.output);
    std::vector<std::string> table;
    for (std::string line; std::getline(lines, line);) {
        // Addresses are not to be broken.
        EXPECT_TRUE(line.size() <= 80 || line.find("://") != line.npos) << line;
        if (line.find("USDT ") == 3 || line.find("INSTRUMENT") == 0) {
            table.push_back(line);
        }
    }
    ASSERT_EQ(table.size(), 3u);
    for (const char* heading : {"TICK", "QUOTES", "CHANGES", "OFF TICK", "LOW", "HIGH", "LAST"}) {
        // Numbers end where their heading ends.
        const std::size_t end = table[0].find(heading) + std::string(heading).size();
        for (const std::string& row : table) {
            ASSERT_GE(row.size(), end);
            EXPECT_NE(row[end - 1], ' ') << heading;
            EXPECT_TRUE(end == row.size() || row[end] == ' ') << heading;
        }
    }
    EXPECT_THAT(replay.output, HasSubstr("28 instruments without a quote\n"));
    EXPECT_THAT(replay.output, HasSubstr("Nothing was skipped\n"));
    EXPECT_THAT(replay.output, HasSubstr(" a second\n"));
}

TEST_F(Replay, oneInstrumentCanBePicked) {
    const Finished picked = run("--instrument=BNBUSDT --json");
    ASSERT_EQ(picked.status, 0);
    EXPECT_EQ(picked.at({"quotes"}), 2618);
    EXPECT_EQ(picked.at({"skipped", "unknownInstruments"}), 0);
    EXPECT_THAT(picked.output, HasSubstr("\"symbol\" : \"BNBUSDT\""));
    const Finished unknown = run("--instrument NOSUCH");
    EXPECT_EQ(unknown.status, 2);
    EXPECT_THAT(unknown.output, IsEmpty());
    EXPECT_THAT(unknown.messages, HasSubstr("no usable instrument \"NOSUCH\""));
}

TEST_F(Replay, typingShowsAcceptedReplacedAndRefusedKeys) {
    const Finished replay = runOn(R"({"s":"A","c":"12.75"})");
    ASSERT_EQ(replay.status, 0);
    const id root = NSJSONSerialization::objectWithText(replay.output, 0, nullptr);
    auto* const typed = cast<NSDictionary>(cast<NSDictionary>(root)->peek("typed"_ns));
    ASSERT_TRUE(typed);
    std::string story;
    for (const id& element : cast<NSArray>(typed->peek("keys"_ns))->elements()) {
        auto* const stroke = cast<NSDictionary>(element);
        story += stroke->peek("key"_ns)->description()->utf8() + ' ' +
                 stroke->peek("verdict"_ns)->description()->utf8() +
                 (cast<NSNumber>(stroke->peek("beep"_ns))->boolValue() ? " beep " : " ") +
                 stroke->peek("field"_ns)->description()->utf8() + '\n';
    }
    EXPECT_EQ(story,
              "1 accepted 1\n"
              "2 accepted 12\n"
              "\xEF\xBC\x8C replaced 12.\n"
              "7 accepted 12.7\n"
              "5 accepted 12.75\n"
              "x refused beep 12.75\n"
              "4 accepted 12.754\n"
              "7 accepted 12.7547\n"
              "2 accepted 12.75472\n"
              "8 accepted 12.754728\n"
              "3 accepted 12.7547283\n"
              "5 refused 12.7547283\n");
    EXPECT_EQ(typed->peek("plain"_ns)->description()->utf8(), "13");
    EXPECT_EQ(typed->peek("down"_ns)->description()->utf8(), "12.5");
    EXPECT_EQ(typed->peek("up"_ns)->description()->utf8(), "13");
}

TEST_F(Replay, everyKindOfBadLineIsNamedCountedAndSkipped) {
    const Finished replay = runOn(
        "{\"s\":\"A\",\"c\":\"1.5\",\"E\":1627408359982}\n"
        "{\"s\":\"A\",\"c\":\"1.\n"
        "\n"
        "[1]\n"
        "{\"s\":\"B\",\"c\":\"1\"}\n"
        "{\"c\":\"1\"}\n"
        "{\"s\":\"A\"}\n"
        "{\"s\":\"A\",\"c\":null}\n"
        "{\"s\":\"A\",\"c\":\"abc\"}\n"
        "{\"s\":\"A\",\"c\":[1]}\n"
        "{\"s\":7,\"c\":\"1\"}\n"
        "{\"s\":\"A\",\"c\":\"1\",\"h\":true}\n"
        "{\"s\":\"A\",\"c\":\"1\",\"E\":\"now\"}\n"
        "{\"s\":\"A\",\"c\":\"1e5\"}\n"
        "{\"s\":\"A\",\"c\":1.7,\"o\":\"1.7\"}\r\n"
        "{\"s\":\"A\",\"c\":\"1.70\"}");
    ASSERT_EQ(replay.status, 0);
    EXPECT_EQ(replay.at({"quotes"}), 3);
    EXPECT_EQ(replay.at({"skipped", "damagedLines"}), 2);
    EXPECT_EQ(replay.at({"skipped", "unknownInstruments"}), 2);
    EXPECT_EQ(replay.at({"skipped", "absentPrices"}), 2);
    EXPECT_EQ(replay.at({"skipped", "wrongFields"}), 6);
    for (const char* message :
         {"ticks.ndjson:2: skipped: The text is not valid JSON", "ticks.ndjson:4: skipped: the line holds no object",
          "ticks.ndjson:5: skipped: the instrument B is not listed", "ticks.ndjson:6: skipped: the quote names no",
          "ticks.ndjson:7: skipped: the quote of A has no price", "ticks.ndjson:8: skipped: the quote of A has no",
          "ticks.ndjson:9: skipped: the price is no number", "ticks.ndjson:10: skipped: the price is no number",
          "ticks.ndjson:11: skipped: the symbol is of the wrong kind",
          "ticks.ndjson:12: skipped: the high is no number", "ticks.ndjson:13: skipped: the time is of the wrong kind",
          "ticks.ndjson:14: skipped: the price is no number"}) {
        EXPECT_THAT(replay.messages, HasSubstr(message));
    }
    // The price went from 1.5 to 1.7 once; 1.70 is no change, and 1.7 is off the tick three times.
    EXPECT_THAT(replay.output, HasSubstr("\"changes\" : 1,\n      \"offTick\" : 3,"));
}

TEST_F(Replay, quietSaysNothingButCounts) {
    const Finished replay = runOn("no JSON\n{\"s\":\"A\",\"c\":\"1\"}\n", "--quiet");
    EXPECT_EQ(replay.status, 0);
    EXPECT_THAT(replay.messages, IsEmpty());
    EXPECT_EQ(replay.at({"skipped", "damagedLines"}), 1);
    EXPECT_EQ(replay.at({"quotes"}), 1);
}

TEST_F(Replay, controlCharactersNeverReachTheTerminal) {
    const Finished replay = runOn("{\"s\":\"\\u001b[31mB\\u0007\",\"c\":\"1\"}\n");
    EXPECT_EQ(replay.status, 0);
    EXPECT_THAT(replay.messages, HasSubstr("the instrument ?[31mB? is not listed"));
    const Finished longName = runOn("{\"s\":\"" + std::string(5000, 'B') + "\",\"c\":\"1\"}\n");
    EXPECT_LT(longName.messages.size(), 500u);
}

TEST_F(Replay, unusableInstrumentsAreNamedWithTheirLineAndSkipped) {
    const auto entry = [](const std::string& symbol, const std::string& tick) {
        return R"({"symbol":)" + symbol + R"(,"filters":[3,{"filterType":"PRICE_FILTER","tickSize":)" + tick + "}]},\n";
    };
    write("exchange_info.json",
          list(entry("\"A\"", "\"0.5\"") + entry("\"B\"", "\"abc\"") + entry("\"C\"", "\"0.000\"") +
               entry("\"D\"", "\"-1\"") + entry("\"E\"", "null") + entry("\"A\"", "\"1\"") + entry("5", "\"1\"") +
               "7,\n{\"symbol\":\"F\"},\n{\"symbol\":\"G\",\"filters\":{}},\n" + entry("\"H\"", "0.00001000") + "{}"));
    write("ticks.ndjson", "{\"s\":\"A\",\"c\":\"1\"}\n{\"s\":\"B\",\"c\":\"1\"}\n{\"s\":\"H\",\"c\":\"0.000015\"}\n");
    const Finished replay = run(m_folder.string() + " --json");
    ASSERT_EQ(replay.status, 0);
    EXPECT_EQ(replay.at({"skipped", "badInstruments"}), 10);
    EXPECT_EQ(replay.at({"skipped", "unknownInstruments"}), 1);
    EXPECT_EQ(replay.at({"quotes"}), 2);
    for (const char* message :
         {"info.json:3: skipped: instrument B has a tick that is no number",
          "info.json:4: skipped: instrument C has a tick that is not above zero",
          "info.json:5: skipped: instrument D has a tick that is not above zero",
          "info.json:6: skipped: instrument E has a tick that is no number",
          "info.json:7: skipped: instrument A is listed twice", "info.json:8: skipped: the entry has no symbol",
          "info.json:9: skipped: the entry is no object", "info.json:10: skipped: instrument F has no tick",
          "info.json:11: skipped: instrument G has no tick", "info.json:13: skipped: the entry has no symbol"}) {
        EXPECT_THAT(replay.messages, HasSubstr(message));
    }
    EXPECT_THAT(replay.output, HasSubstr("\"tick\" : 0.00001,"));
    EXPECT_THAT(replay.output, HasSubstr("\"last\" : 0.000015"));
}

TEST_F(Replay, whatCannotBeReadEndsWithAStatus) {
    const fs::path good = write("good.json", list(""));
    const fs::path cut = write("cut.json", "{\"symbols\":[\n{\"symbol\":\n");
    const fs::path other = write("other.json", "{\"symbols\":{}}");
    const fs::path none = write("none.ndjson", "");
    const fs::path array = write("array.json", "[]");
    const std::tuple<std::string, int, const char*> table[] = {
        {"--instruments missing.json", 1, "missing.json: cannot be read"},
        {"--instruments .", 1, ".: cannot be read"},
        {"--instruments " + none.string(), 1, "there is no value"},
        {"--instruments " + cut.string(), 1, "cut.json:3: The text is not valid JSON"},
        {"--instruments " + other.string(), 1, "other.json: is no list of instruments"},
        {"--instruments " + good.string() + " --quotes missing.ndjson", 1, "missing.ndjson: cannot be read"},
        {"--instruments " + good.string() + " --quotes .", 1, ".: cannot be read"},
        {"--account missing.json", 1, "missing.json: cannot be read"},
        {"--account " + cut.string(), 1, "cut.json:3: The text is not valid JSON"},
        {"--account " + array.string(), 1, "array.json: holds no object"},
        {"--color=sometimes", 2, "--color is always, never or auto"},
        {"nowhere", 1, "cannot be read"},
        {"--instruments", 2, "--instruments needs a value"},
        {"--instrument=", 2, "--instrument needs a value"},
        {"--quiet=yes", 2, "--quiet takes no value"},
        {"--nonsense", 2, "there is no option \"--nonsense\""},
        {"one two", 2, "one folder is enough"},
    };
    for (const auto& [arguments, status, message] : table) {
        SCOPED_TRACE(arguments);
        const Finished replay = run(arguments);
        EXPECT_EQ(replay.status, status);
        EXPECT_THAT(replay.messages, HasSubstr(message));
        EXPECT_THAT(replay.output, IsEmpty());
    }
}

TEST_F(Replay, nothingToReplayIsStillAReport) {
    write("exchange_info.json", list(""));
    write("ticks.ndjson", "");
    const Finished replay = run(m_folder.string());
    EXPECT_EQ(replay.status, 0);
    EXPECT_THAT(replay.output, StartsWith("Replay of 0 quotes for 0 instruments\n"));
    EXPECT_THAT(replay.output, HasSubstr("Nothing was skipped\n"));
    EXPECT_THAT(replay.messages, IsEmpty());
}

TEST_F(Replay, helpNamesEveryOption) {
    const Finished replay = run("--help");
    EXPECT_EQ(replay.status, 0);
    for (const char* option :
         {"--instruments", "--quotes", "--account", "--instrument ", "--color", "--json", "--quiet", "--help"}) {
        EXPECT_THAT(replay.output, HasSubstr(option));
    }
    EXPECT_THAT(replay.messages, IsEmpty());
}

} // namespace

} // namespace zr
