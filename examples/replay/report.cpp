#include "report.h"

#include "fields.h"
#include "price_text.h"
#include "table.h"

#include <zrbasic/platform/foundation/date.h>

#include <algorithm>
#include <cstdio>

namespace replay {

using namespace zr;

namespace {

constexpr auto left = Table::Side::Left;
constexpr auto right = Table::Side::Right;

std::string counted(std::size_t count, const std::string& one, const std::string& many) {
    return grouped(count) + ' ' + (count == 1 ? one : many);
}

std::size_t quotedInstruments(const Session& session) {
    const auto& trackers = session.trackers();
    return static_cast<std::size_t>(
        std::count_if(trackers.begin(), trackers.end(), [](const auto& tracker) { return tracker->quotes() > 0; }));
}

std::string heading(const Session& session) {
    std::string text = "Replay of " + counted(session.quotes(), "quote", "quotes") + " for " +
                       counted(quotedInstruments(session), "instrument", "instruments");
    const std::string first = timeText(session.firstTime());
    const std::string last = timeText(session.lastTime());
    if (!first.empty()) {
        constexpr std::size_t dateLength = 11;
        const bool isSameDay = first.substr(0, dateLength) == last.substr(0, dateLength);
        text += ", " + first + " to " + (isSameDay ? last.substr(dateLength) : last) + " UTC";
    }
    return text + '\n';
}

std::string instrumentTable(const Session& session) {
    Table table({left, right, right, right, right, right, right, right});
    table.add({"INSTRUMENT", "TICK", "QUOTES", "CHANGES", "OFF TICK", "LOW", "HIGH", "LAST"});
    for (const auto& tracker : session.trackers()) {
        if (tracker->quotes() == 0) {
            continue;
        }
        const auto text = [&tracker](const char* field) { return printable(fieldNamed(field).text(*tracker)); };
        table.add({text("instrument"), text("tick"), text("quotes"), text("changes"), text("offTick"), text("low"),
                   text("high"), text("last")});
    }
    const std::size_t silent = session.trackers().size() - quotedInstruments(session);
    std::string text = quotedInstruments(session) > 0 ? table.text() : "";
    if (silent > 0) {
        text += counted(silent, "instrument", "instruments") + " without a quote\n";
    }
    return text;
}

std::string verdictText(const Keystroke& stroke) {
    switch (stroke.verdict) {
        case Keystroke::Verdict::Accepted:
            return "accepted";
        case Keystroke::Verdict::Replaced:
            return "replaced";
        default:
            return stroke.hasBeeped ? "refused, with a beep" : "refused, the field is full";
    }
}

std::string entryText(const PriceEntry& entry) {
    Table keys({left, left, left});
    keys.add({"KEY", "FIELD", ""});
    for (const Keystroke& stroke : entry.keystrokes) {
        keys.add({stroke.key, stroke.shown, verdictText(stroke)});
    }
    Table rounded({left, right});
    rounded.add({"plain", textOf(entry.plain)});
    rounded.add({"down", textOf(entry.down)});
    rounded.add({"up", textOf(entry.up)});
    return "Typing a price for " + printable(entry.instrument->symbol()->utf8()) + "\n\n" + keys.text(2) + '\n' +
           textOf(entry.typed) + " rounded to the tick of " + textOf(entry.instrument->tick()) + "\n\n" +
           rounded.text(2);
}

std::string skippedText(const Problems& problems) {
    const std::size_t instruments = problems.count(Problem::BadInstrument);
    if (problems.skippedLines() + instruments == 0) {
        return "Nothing was skipped\n";
    }
    Table table({right, left});
    const auto add = [&table](std::size_t count, const char* one, const char* many) {
        if (count > 0) {
            table.add({grouped(count), count == 1 ? one : many});
        }
    };
    add(problems.count(Problem::DamagedLine), "damaged line", "damaged lines");
    add(problems.count(Problem::UnknownInstrument), "quote of an unknown instrument", "quotes of unknown instruments");
    add(problems.count(Problem::AbsentPrice), "quote without a price", "quotes without a price");
    add(problems.count(Problem::WrongField), "quote with a wrong field", "quotes with a wrong field");
    add(instruments, "unusable instrument", "unusable instruments");
    return "Skipped\n\n" + table.text(2) + '\n';
}

std::string speedText(const Session& session) {
    char seconds[32];
    std::snprintf(seconds, sizeof seconds, "%.3f", session.seconds());
    return counted(session.quotes(), "quote", "quotes") + " in " + seconds + " s, " +
           grouped(static_cast<std::size_t>(quotesPerSecond(session))) + " a second\n";
}

} // namespace

double quotesPerSecond(const Session& session) {
    return session.seconds() > 0 ? static_cast<double>(session.quotes()) / session.seconds() : 0;
}

std::string timeText(NSNumber* milliseconds) {
    if (!milliseconds) {
        return "";
    }
    const auto date = NSDate::dateWithTimeIntervalSince1970(milliseconds->doubleValue() / 1000);
    const std::string text = date->description()->utf8();
    return text.substr(0, text.find(" +"));
}

std::string textReport(const Session& session, const Problems& problems, const std::optional<PriceEntry>& entry,
                       const Desk& desk, bool isColoured) {
    std::string text = heading(session) + '\n' + instrumentTable(session) + '\n';
    if (entry) {
        text += entryText(*entry) + '\n';
    }
    return text + deskText(desk, isColoured) + skippedText(problems) + speedText(session);
}

} // namespace replay
