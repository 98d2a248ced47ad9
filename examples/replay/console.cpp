#include "console.h"

#include <cstdio>
#include <iostream>

#include <unistd.h>

namespace replay {

namespace {

constexpr auto patience = std::chrono::milliseconds(400);
constexpr auto pace = std::chrono::milliseconds(100);
constexpr std::size_t longestText = 200;

} // namespace

Console::Console(bool isQuiet)
    : m_isQuiet(isQuiet), m_isTerminal(isatty(STDERR_FILENO) == 1), m_due(Clock::now() + patience) {}

Console::~Console() {
    clearProgress();
}

void Console::say(const std::string& message) {
    clearProgress();
    std::cerr << message << '\n';
}

void Console::complain(const std::string& message) {
    if (!m_isQuiet) {
        say(message);
    }
}

bool Console::wantsProgress() {
    return m_isTerminal && !m_isQuiet && Clock::now() >= m_due;
}

void Console::showProgress(const std::string& text) {
    std::cerr << '\r' << text << "\033[K" << std::flush;
    m_hasProgress = true;
    m_due = Clock::now() + pace;
}

void Console::clearProgress() {
    if (m_hasProgress) {
        std::cerr << "\r\033[K" << std::flush;
        m_hasProgress = false;
    }
}

std::string printable(const std::string& text) {
    std::string result;
    for (const char character : text.substr(0, longestText)) {
        const auto byte = static_cast<unsigned char>(character);
        result += byte < 0x20 || byte == 0x7F ? '?' : character;
    }
    // A cut must not leave a part of a character behind.
    if (text.size() > longestText) {
        while (!result.empty() && (static_cast<unsigned char>(result.back()) & 0xC0) == 0x80) {
            result.pop_back();
        }
        if (!result.empty() && static_cast<unsigned char>(result.back()) >= 0x80) {
            result.pop_back();
        }
        result += "...";
    }
    return result;
}

} // namespace replay
