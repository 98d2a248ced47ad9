#pragma once

#include "line_reader.h"
#include "tracker.h"

#include <zrbasic/platform/foundation/mutable_dictionary.h>

#include <string>
#include <vector>

namespace replay {

/// One replay: the trackers, and what happened altogether.
class Session {
  public:
    /// Follows the instruments; quotes of those that are listed but not followed are left out silently.
    Session(const std::vector<zr::Ref<Instrument>>& instruments, const std::string& followedSymbol);

    /// Takes all quotes of the file. False, after a message, when it could not be read to its end.
    [[nodiscard]] bool run(const std::string& file, Problems& problems, Console& console);
    /// Takes one line of the file; what is wrong with it becomes one of the problems. Blank lines are no quotes.
    void take(const Line& line, const std::string& file, Problems& problems);

    /// Whether any instrument is followed.
    [[nodiscard]] bool hasTrackers() const { return !m_trackers.empty(); }
    /// In the order of the exchange's list.
    [[nodiscard]] const std::vector<zr::Ref<Tracker>>& trackers() const { return m_trackers; }
    [[nodiscard]] std::size_t quotes() const { return m_quotes; }
    /// For reading, taking and watching the quotes: what `run` took, or whoever takes them line by line.
    [[nodiscard]] double seconds() const { return m_seconds; }
    void setSeconds(double seconds) { m_seconds = seconds; }
    /// When the exchange sent the first and the last quote, in milliseconds since 1970; null when none said so.
    [[nodiscard]] zr::NSNumber* firstTime() const { return m_firstTime; }
    [[nodiscard]] zr::NSNumber* lastTime() const { return m_lastTime; }

  private:
    [[nodiscard]] std::optional<Fault> takeLine(const Line& line);
    [[nodiscard]] std::optional<Fault> takeReply(zr::NSDictionary* reply);

    std::vector<zr::Ref<Tracker>> m_trackers;
    /// By symbol: a tracker, or the null object for an instrument that is not followed.
    zr::Ref<zr::NSMutableDictionary> m_bySymbol;
    std::size_t m_quotes = 0;
    double m_seconds = 0;
    zr::Ref<zr::NSNumber> m_firstTime;
    zr::Ref<zr::NSNumber> m_lastTime;
};

} // namespace replay
