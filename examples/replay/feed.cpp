#include "feed.h"

#include <zrbasic/platform/foundation/number.h>

namespace replay {

namespace {

/// Short enough that nobody notices the wait for it.
constexpr std::chrono::milliseconds slice{5};

} // namespace

Feed::Feed(std::string file, std::size_t rounds, Session& session, Problems& problems)
    : m_file(std::move(file)), m_roundsLeft(rounds), m_session(session), m_problems(problems) {}

void Feed::setSpeed(double speed) {
    m_speed = speed;
    goOn();
}

void Feed::goOn() {
    m_start = Clock::now();
    m_startTime = -1;
}

bool Feed::isAhead() const {
    if (m_speed == asFastAsItGoes || m_startTime < 0) {
        return false;
    }
    const double played = std::chrono::duration<double, std::milli>(Clock::now() - m_start).count() * m_speed;
    return m_session.lastTime()->doubleValue() - m_startTime > played;
}

bool Feed::takeLine() {
    Line line;
    if (!m_reader || !m_reader->next(line)) {
        m_error = m_reader ? m_reader->error() : "";
        if (m_roundsLeft == 0 || !m_error.empty()) {
            return false;
        }
        --m_roundsLeft;
        m_reader.emplace(m_file);
        goOn();
        return true;
    }
    m_session.take(line, m_file, m_problems);
    if (m_startTime < 0 && m_session.lastTime()) {
        m_startTime = m_session.lastTime()->doubleValue();
    }
    return true;
}

bool Feed::advance() {
    const auto begin = Clock::now();
    bool isGoingOn = true;
    while (isGoingOn && !isAhead() && Clock::now() - begin < slice) {
        isGoingOn = takeLine();
    }
    m_session.setSeconds(m_session.seconds() + std::chrono::duration<double>(Clock::now() - begin).count());
    return isGoingOn;
}

} // namespace replay
