#include "temporary_folder.h"

#include <examples/replay/entry_lines.h>
#include <examples/replay/price_text.h>
#include <examples/replay/session.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <unistd.h>

// What is too much for starting the program anew each time: damage everywhere, and files at the edge of the buffer.

namespace replay {

using namespace zr;

namespace {

namespace fs = std::filesystem;

class ReplayParts : public test::TemporaryFolder {};

std::vector<Ref<Instrument>> instruments() {
    auto eth = make<Instrument>();
    eth->setSymbol("ETHUSDT"_ns);
    eth->setTick(NSDecimalNumber::decimalNumberWithString("0.01"_ns));
    return {eth};
}

struct Outcome {
    std::size_t taken = 0;
    std::size_t skipped = 0;
};

Outcome replayed(const std::string& file) {
    Console console(true);
    Problems problems(console);
    Session session(instruments(), "");
    EXPECT_TRUE(session.run(file, problems, console));
    return {session.quotes(), problems.skippedLines()};
}

std::string sample() {
    return R"({"e":"kline","E":1627408359982,"s":"ETHUSDT","o":"2240.1","h":"2243.24","l":"2240.09","c":"2241.78"})"
           "\n"
           R"({"e":"kline","E":1627408364061,"s":"ETHUSDT","o":"2240.1","h":"2243.24","l":"2240.09","c":"2240.87"})"
           "\n"
           R"({"e":"kline","E":1627408368187,"s":"ETHUSDT","o":"2240.1","h":"2243.24","l":"2240.09","c":"2240.8"})"
           "\n";
}

std::size_t linesIn(const std::string& text) {
    std::istringstream stream(text);
    std::size_t lines = 0;
    for (std::string line; std::getline(stream, line);) {
        lines += line.find_first_not_of(" \t\r") != std::string::npos;
    }
    return lines;
}

TEST_F(ReplayParts, aFileCutAnywhereLosesTheCutLineAlone) {
    const std::string text = sample();
    for (std::size_t length = 0; length <= text.size(); ++length) {
        SCOPED_TRACE(length);
        const std::string cut = text.substr(0, length);
        const Outcome outcome = replayed(write("quotes", cut));
        const auto whole = static_cast<std::size_t>(std::count(cut.begin(), cut.end(), '\n'));
        // The last line is whole, too, when only its line break is missing.
        const bool endsWhole = !cut.empty() && cut.back() == '}';
        EXPECT_EQ(outcome.taken, whole + endsWhole);
        EXPECT_EQ(outcome.skipped, linesIn(cut) - whole - endsWhole);
    }
}

TEST_F(ReplayParts, randomDamageLosesNoLineUncounted) {
    std::mt19937 random(20210727);
    const std::string_view pieces = "{}[],:\"\\u0e+-.1tfn \n\r\xFF\xC3\x01";
    std::size_t taken = 0;
    std::size_t skipped = 0;
    for (int round = 0; round < 800; ++round) {
        std::string text = sample();
        for (unsigned changes = random() % 6 + 1; changes > 0; --changes) {
            const std::size_t place = random() % text.size();
            if (random() % 2 == 0) {
                text[place] = pieces[random() % pieces.size()];
            } else {
                text.erase(place, random() % 20);
            }
        }
        const Outcome outcome = replayed(write("quotes", text));
        ASSERT_EQ(outcome.taken + outcome.skipped, linesIn(text)) << text;
        taken += outcome.taken;
        skipped += outcome.skipped;
    }
    EXPECT_GT(taken, 200u);
    EXPECT_GT(skipped, 200u);
}

TEST_F(ReplayParts, pricesBeyondArithmeticAreSkippedAndChangeNothing) {
    Console console(true);
    Problems problems(console);
    auto list = instruments();
    list[0]->setTick(NSDecimalNumber::decimalNumberWithMantissa_exponent_isNegative(1, -128, false));
    Session session(list, "");
    const std::string file = write("quotes",
                                   "{\"s\":\"ETHUSDT\",\"c\":1}\n{\"s\":\"ETHUSDT\",\"c\":\"2\",\"h\":1e120}\n"
                                   "{\"s\":\"ETHUSDT\",\"c\":\"1\"}\n");
    ASSERT_TRUE(session.run(file, problems, console));
    EXPECT_EQ(session.quotes() + problems.skippedLines(), 3u);
    EXPECT_GE(problems.count(Problem::WrongField), 1u);
    EXPECT_EQ(session.trackers()[0]->changes(), 0u);
}

TEST_F(ReplayParts, linesAreReadWhereverTheBufferEnds) {
    constexpr std::size_t longest = LineReader::longestLine;
    std::string text;
    std::vector<std::size_t> lengths;
    for (std::size_t length : {longest - 1, std::size_t(0), std::size_t(100), longest - 1, longest, std::size_t(5)}) {
        text += std::string(length, 'x') + '\n';
        lengths.push_back(length);
    }
    text += std::string(longest * 2 + 7, 'y') + "\nend";
    LineReader reader(write("lines", text));
    Line line;
    for (std::size_t i = 0; i < lengths.size(); ++i) {
        ASSERT_TRUE(reader.next(line));
        EXPECT_EQ(line.number, i + 1);
        EXPECT_EQ(line.text.size(), lengths[i]);
        EXPECT_EQ(line.isTooLong, lengths[i] == longest);
        EXPECT_GE(line.readable, line.text.size() + 64);
    }
    ASSERT_TRUE(reader.next(line));
    EXPECT_TRUE(line.isTooLong);
    EXPECT_EQ(line.text.front(), 'y');
    ASSERT_TRUE(reader.next(line));
    EXPECT_EQ(line.text, "end");
    EXPECT_EQ(line.number, lengths.size() + 2);
    EXPECT_FALSE(reader.next(line));
    EXPECT_TRUE(reader.error().empty());
    EXPECT_DOUBLE_EQ(reader.progress(), 1);
}

TEST(ReplayEntryLines, areThoseOfTheListsElements) {
    const std::string_view json =
        "{\"x\":[1,\n2],\n\"list\":[{\"a\":[1,{}],\n\"list\":[9,9]},\n\n 7,\"}]\\\"\",\n[]],\n\"z\":[{}]}";
    EXPECT_EQ(linesOfEntries(json, "list"), (std::vector<std::size_t>{3, 6, 6, 7}));
    EXPECT_EQ(linesOfEntries(json, "z"), (std::vector<std::size_t>{8}));
    EXPECT_EQ(linesOfEntries(json, "a"), (std::vector<std::size_t>{}));
    EXPECT_EQ(linesOfEntries("{\"l\":[1],\n\"l\":[2,3]}", "l"), (std::vector<std::size_t>{2, 2}));
    EXPECT_EQ(linesOfEntries("{\"l\":[]}", "l"), (std::vector<std::size_t>{}));
    EXPECT_EQ(linesOfEntries("{\"k\":\"l\",\"m\":[1]}", "l"), (std::vector<std::size_t>{}));
}

TEST(ReplayPriceText, readsWholeNumbersOnly) {
    for (const char* text : {"0", "1.50", "-2.5", "+3", "00012.0", "12345678901234567890123456789012345678"}) {
        EXPECT_TRUE(decimalFrom(NSString::fromUtf8(text))) << text;
    }
    for (const char* text : {"", " 1", "1 ", "1.", ".5", "1e5", "abc", "1.2.3", "--1", "\xEF\xBC\x91", "NaN",
                             "123456789012345678901234567890123456789"}) {
        EXPECT_FALSE(decimalFrom(NSString::fromUtf8(text))) << text;
    }
    EXPECT_FALSE(decimalFrom(nullptr));
    EXPECT_FALSE(decimalFrom(box(true)));
    EXPECT_FALSE(decimalFrom(box(0.0 / 0.0)));
    EXPECT_EQ(textOf(decimalFrom(box(1.5)), 3), "1.500");
    EXPECT_EQ(textOf(decimalFrom("12"_ns), 1), "12.0");
    EXPECT_EQ(textOf(nullptr, 2), "-");
    EXPECT_EQ(grouped(0) + ' ' + grouped(999) + ' ' + grouped(1000) + ' ' + grouped(1234567), "0 999 1,000 1,234,567");
}

} // namespace

} // namespace replay
