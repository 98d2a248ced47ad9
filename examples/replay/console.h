#pragma once

#include <chrono>
#include <string>

namespace replay {

/// The error output: messages, and on a terminal one line of progress below them.
class Console {
  public:
    explicit Console(bool isQuiet);
    ~Console();
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

    /// What the user must know, quiet or not.
    void say(const std::string& message);
    /// What went wrong with one line; nothing when quiet.
    void complain(const std::string& message);

    /// Whether it is time to show progress: the work takes long, and somebody is watching.
    [[nodiscard]] bool wantsProgress();
    void showProgress(const std::string& text);
    void clearProgress();

  private:
    using Clock = std::chrono::steady_clock;

    bool m_isQuiet;
    bool m_isTerminal;
    bool m_hasProgress = false;
    Clock::time_point m_due;
};

/// `text` for one line of a terminal: no control characters, and cut when it is longer than a line should be.
[[nodiscard]] std::string printable(const std::string& text);

} // namespace replay
