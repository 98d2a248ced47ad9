#include "session.h"

#include "price_text.h"

#include <zrbasic/platform/foundation/json_serialization.h>
#include <zrbasic/platform/foundation/null.h>

#include <chrono>
#include <cstdio>

namespace replay {

using namespace zr;

namespace {

using Clock = std::chrono::steady_clock;

/// Looking at the clock costs as much as a part of a quote.
constexpr std::size_t linesBetweenLooks = 256;

bool isBlank(std::string_view text) {
    return text.find_first_not_of(" \t\r") == std::string_view::npos;
}

std::string progressText(const LineReader& reader, std::size_t quotes) {
    std::string text = grouped(quotes) + " quotes";
    if (reader.progress() >= 0) {
        char percent[16];
        std::snprintf(percent, sizeof percent, "%3.0f %%  ", std::min(reader.progress(), 1.0) * 100);
        text.insert(0, percent);
    }
    return text;
}

} // namespace

Session::Session(const std::vector<Ref<Instrument>>& instruments, const std::string& followedSymbol)
    : m_bySymbol(NSMutableDictionary::dictionaryWithCapacity(instruments.size())) {
    const auto followed = NSString::fromUtf8(followedSymbol);
    for (const auto& instrument : instruments) {
        const auto symbol = instrument->symbol();
        if (!followedSymbol.empty() && !symbol->isEqualToString(followed)) {
            m_bySymbol->setObject_forKey(NSNull::null(), symbol);
            continue;
        }
        m_trackers.push_back(make<Tracker>());
        m_trackers.back()->follow(instrument);
        m_bySymbol->setObject_forKey(m_trackers.back(), symbol);
    }
}

bool Session::run(const std::string& file, Problems& problems, Console& console) {
    const auto start = Clock::now();
    LineReader reader(file);
    Line line;
    while (reader.next(line)) {
        if (line.number % linesBetweenLooks == 0 && console.wantsProgress()) {
            console.showProgress(progressText(reader, m_quotes));
        }
        take(line, file, problems);
    }
    console.clearProgress();
    m_seconds = std::chrono::duration<double>(Clock::now() - start).count();
    if (!reader.error().empty()) {
        console.say(file + ": cannot be read: " + reader.error());
        return false;
    }
    return true;
}

void Session::take(const Line& line, const std::string& file, Problems& problems) {
    if (isBlank(line.text)) {
        return;
    }
    if (const auto fault = takeLine(line)) {
        problems.add(*fault, file, line.number);
    }
}

std::optional<Fault> Session::takeLine(const Line& line) {
    if (line.isTooLong) {
        return Fault{Problem::DamagedLine, "the line is too long"};
    }
    Ref<NSError> error;
    const id root = NSJSONSerialization::objectWithText(line.text, 0, &error, line.readable);
    if (!root) {
        return Fault{Problem::DamagedLine, error->localizedDescription()->utf8()};
    }
    auto* const reply = cast<NSDictionary>(root);
    if (!reply) {
        return Fault{Problem::DamagedLine, "the line holds no object"};
    }
    try {
        return takeReply(reply);
    } catch (const NSException& exception) {
        // Arithmetic that leaves a decimal's range, and values that a property cannot take.
        return Fault{Problem::WrongField, exception.reason()};
    }
}

std::optional<Fault> Session::takeReply(NSDictionary* reply) {
    const auto quote = make<Quote>();
    if (auto fault = fill(quote, reply)) {
        return fault;
    }
    const id known = m_bySymbol->objectForKey(quote->symbol());
    if (!known) {
        return Fault{Problem::UnknownInstrument, "the instrument " + quote->symbol()->utf8() + " is not listed"};
    }
    auto* const tracker = cast<Tracker>(known);
    if (!tracker) {
        return std::nullopt;
    }
    tracker->take(quote);
    ++m_quotes;
    if (const auto time = quote->time()) {
        m_firstTime = m_firstTime ? m_firstTime : time;
        m_lastTime = time;
    }
    return std::nullopt;
}

} // namespace replay
