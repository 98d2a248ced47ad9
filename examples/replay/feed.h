#pragma once

#include "session.h"

#include <chrono>
#include <optional>
#include <string>

namespace replay {

/// Plays recorded quotes into a session: at the pace they were recorded in, faster, or as fast as it goes.
class Feed {
  public:
    /// A speed.
    static constexpr double asFastAsItGoes = 0;

    /// Plays the file so many times. The two others must outlive the feed.
    Feed(std::string file, std::size_t rounds, Session& session, Problems& problems);

    /// How many times as fast as recorded, from now on.
    void setSpeed(double speed);
    /// After a rest: what comes next is due now.
    void goOn();
    /// Takes quotes, each when the one before it is due, for a few milliseconds at most, so that nobody waits for it.
    /// False when everything was played.
    bool advance();
    /// What kept the file from being read; empty for nothing.
    [[nodiscard]] const std::string& error() const { return m_error; }
    /// How many lines could not be used.
    [[nodiscard]] std::size_t skipped() const { return m_problems.skippedLines(); }

  private:
    using Clock = std::chrono::steady_clock;

    [[nodiscard]] bool isAhead() const;
    [[nodiscard]] bool takeLine();

    std::string m_file;
    std::size_t m_roundsLeft;
    Session& m_session;
    Problems& m_problems;
    std::optional<LineReader> m_reader;
    std::string m_error;
    double m_speed = 1;
    Clock::time_point m_start;
    /// When the quote was sent that is due at the start; below 0 when the next one says so.
    double m_startTime = -1;
};

} // namespace replay
