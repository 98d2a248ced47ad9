#include "temporary_folder.h"

#include <examples/replay/feed.h>

#include <gtest/gtest.h>

#include <chrono>
#include <initializer_list>
#include <string>

namespace replay {

using namespace zr;

namespace {

constexpr long hour = 3'600'000;

std::string quoteAt(long time) {
    return "{\"s\":\"ETHUSDT\",\"c\":\"2241.78\",\"E\":" + std::to_string(time) + "}\n";
}

std::vector<Ref<Instrument>> instruments() {
    auto eth = make<Instrument>();
    eth->setSymbol("ETHUSDT"_ns);
    eth->setTick(NSDecimalNumber::decimalNumberWithString("0.01"_ns));
    return {eth};
}

class ReplayFeed : public test::TemporaryFolder {
  protected:
    /// A file of quotes that were sent at these milliseconds.
    std::string quotesAt(std::initializer_list<long> times) {
        std::string text;
        for (const long time : times) {
            text += quoteAt(time);
        }
        return write("quotes", text);
    }
    Feed feed(const std::string& file, std::size_t rounds = 1) { return Feed(file, rounds, session, problems); }
    /// Plays on to the end; false when that does not come for 20 seconds.
    static bool isPlayed(Feed& feed) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (feed.advance()) {
            if (std::chrono::steady_clock::now() > end) {
                return false;
            }
        }
        return true;
    }

    Console console{true};
    Problems problems{console};
    Session session{instruments(), ""};
};

TEST_F(ReplayFeed, asFastAsItGoesWaitsForNothing) {
    Feed fast = feed(quotesAt({0, hour, 5 * hour, 5 * hour}));
    fast.setSpeed(Feed::asFastAsItGoes);
    EXPECT_TRUE(isPlayed(fast));
    EXPECT_EQ(session.quotes(), 4u);
    EXPECT_EQ(session.lastTime()->longLongValue(), 5 * hour);
    EXPECT_TRUE(fast.error().empty());
    EXPECT_GT(session.seconds(), 0);
    EXPECT_FALSE(fast.advance()) << "and stays at its end";
    EXPECT_EQ(session.quotes(), 4u);
}

TEST_F(ReplayFeed, keepsThePaceOfTheRecording) {
    Feed paced = feed(quotesAt({1000, 1030, 1060, 1090, 1120}));
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_TRUE(isPlayed(paced));
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(120));
    EXPECT_EQ(session.quotes(), 5u);
}

TEST_F(ReplayFeed, isFasterByItsSpeed) {
    Feed quick = feed(quotesAt({0, 10 * hour, 20 * hour}));
    quick.setSpeed(1e6);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_TRUE(isPlayed(quick));
    // 20 hours in 72 milliseconds.
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(72));
    EXPECT_EQ(session.quotes(), 3u);
}

TEST_F(ReplayFeed, waitsForWhatIsNotYetDue) {
    Feed slow = feed(quotesAt({0, hour, 2 * hour, 3 * hour}));
    EXPECT_TRUE(slow.advance());
    const std::size_t first = session.quotes();
    EXPECT_GE(first, 1u);
    EXPECT_LT(first, 4u);
    for (int i = 0; i < 10; ++i) {
        EXPECT_TRUE(slow.advance());
    }
    EXPECT_EQ(session.quotes(), first);
}

TEST_F(ReplayFeed, takesAnotherSpeedInTheMiddle) {
    Feed changed = feed(quotesAt({0, hour, 2 * hour, 3 * hour, 4 * hour, 5 * hour}));
    EXPECT_TRUE(changed.advance());
    EXPECT_LT(session.quotes(), 6u);
    changed.setSpeed(Feed::asFastAsItGoes);
    EXPECT_TRUE(isPlayed(changed));
    EXPECT_EQ(session.quotes(), 6u);
}

TEST_F(ReplayFeed, goesOnAfterARestWithoutMakingUpForIt) {
    Feed stuck = feed(quotesAt({0, hour, 2 * hour, 3 * hour, 4 * hour, 5 * hour, 6 * hour, 7 * hour}));
    EXPECT_TRUE(stuck.advance());
    const std::size_t atRest = session.quotes();
    EXPECT_TRUE(stuck.advance());
    EXPECT_EQ(session.quotes(), atRest);
    stuck.goOn();
    EXPECT_TRUE(stuck.advance());
    EXPECT_GT(session.quotes(), atRest);
    EXPECT_LT(session.quotes(), 8u);
}

TEST_F(ReplayFeed, playsTheFileSoManyTimes) {
    Feed thrice = feed(quotesAt({0, hour}), 3);
    thrice.setSpeed(Feed::asFastAsItGoes);
    EXPECT_TRUE(isPlayed(thrice));
    EXPECT_EQ(session.quotes(), 6u);
    Feed never = feed(quotesAt({0, hour}), 0);
    EXPECT_FALSE(never.advance());
    EXPECT_EQ(session.quotes(), 6u);
    EXPECT_TRUE(never.error().empty());
}

TEST_F(ReplayFeed, beginsARoundAtOnce) {
    Feed twice = feed(quotesAt({0}), 200);
    EXPECT_TRUE(isPlayed(twice));
    EXPECT_EQ(session.quotes(), 200u) << "with a single quote there is no pace";
}

TEST_F(ReplayFeed, timesThatGoBackwardsAreDue) {
    Feed backwards = feed(quotesAt({5 * hour, 4 * hour, -hour, 0, 3 * hour}));
    EXPECT_TRUE(isPlayed(backwards));
    EXPECT_EQ(session.quotes(), 5u);
    EXPECT_EQ(session.lastTime()->longLongValue(), 3 * hour);
}

TEST_F(ReplayFeed, quotesWithoutATimeAreDue) {
    const std::string quote = "{\"s\":\"ETHUSDT\",\"c\":\"2241.78\"}\n";
    Feed timeless = feed(write("quotes", quote + quote + quote));
    EXPECT_TRUE(isPlayed(timeless));
    EXPECT_EQ(session.quotes(), 3u);
    EXPECT_EQ(session.lastTime(), nullptr);
}

TEST_F(ReplayFeed, neverKeepsAnybodyWaiting) {
    std::string text;
    for (int i = 0; i < 100'000; ++i) {
        text += quoteAt(i);
    }
    Feed large = feed(write("quotes", text), 50);
    large.setSpeed(Feed::asFastAsItGoes);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_TRUE(large.advance());
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(1));
    EXPECT_LT(session.quotes(), 5'000'000u);
    // Nor with nothing to play, again and again.
    for (const char* const content : {"", "\n", "\n\n \n", "no JSON\n"}) {
        SCOPED_TRACE(content);
        Feed empty = feed(write("quotes", content), static_cast<std::size_t>(-1));
        const auto start = std::chrono::steady_clock::now();
        EXPECT_TRUE(empty.advance());
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
    }
}

TEST_F(ReplayFeed, saysWhatItCannotRead) {
    Feed missing = feed((m_folder / "missing").string(), 5);
    EXPECT_TRUE(isPlayed(missing));
    EXPECT_EQ(missing.error(), "No such file or directory");
    EXPECT_FALSE(missing.advance());
    EXPECT_FALSE(missing.error().empty()) << "nor the second time";
    Feed folder = feed(m_folder.string());
    EXPECT_TRUE(isPlayed(folder));
    EXPECT_FALSE(folder.error().empty());
    Feed empty = feed(write("quotes", ""), 5);
    EXPECT_TRUE(isPlayed(empty));
    EXPECT_TRUE(empty.error().empty());
    EXPECT_EQ(session.quotes(), 0u);
}

TEST_F(ReplayFeed, countsWhatItLeavesOut) {
    Feed damaged = feed(write("quotes", quoteAt(0) + "\x01\xFF\n\n[]\n" + quoteAt(1) + quoteAt(2).substr(0, 20)));
    EXPECT_EQ(damaged.skipped(), 0u);
    EXPECT_TRUE(isPlayed(damaged));
    EXPECT_EQ(session.quotes(), 2u);
    EXPECT_EQ(damaged.skipped(), 3u);
    EXPECT_TRUE(damaged.error().empty());
}

} // namespace

} // namespace replay
