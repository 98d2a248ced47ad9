#include "report.h"

#include <zrbasic/platform/foundation/json_serialization.h>
#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/null.h>

namespace replay {

using namespace zr;

namespace {

id orNull(NSObject* object) {
    return object ? id(object) : id(NSNull::null());
}

id timeOrNull(NSNumber* milliseconds) {
    return milliseconds ? id(NSString::fromUtf8(timeText(milliseconds))) : id(NSNull::null());
}

Ref<NSDictionary> instrumentEntry(const Tracker& tracker) {
    return dictionary({{"symbol"_ns, tracker.instrument()->symbol()},
                       {"tick"_ns, tracker.instrument()->tick()},
                       {"quotes"_ns, box(tracker.quotes())},
                       {"changes"_ns, box(tracker.changes())},
                       {"offTick"_ns, box(tracker.offTick())},
                       {"low"_ns, orNull(tracker.lowest())},
                       {"high"_ns, orNull(tracker.highest())},
                       {"last"_ns, orNull(tracker.last())}});
}

const char* verdictName(Keystroke::Verdict verdict) {
    switch (verdict) {
        case Keystroke::Verdict::Accepted:
            return "accepted";
        case Keystroke::Verdict::Replaced:
            return "replaced";
        default:
            return "refused";
    }
}

id entryObject(const std::optional<PriceEntry>& entry) {
    if (!entry) {
        return NSNull::null();
    }
    const auto keys = NSMutableArray::array();
    for (const Keystroke& stroke : entry->keystrokes) {
        keys->addObject(dictionary({{"key"_ns, NSString::fromUtf8(stroke.key)},
                                    {"verdict"_ns, NSString::fromUtf8(verdictName(stroke.verdict))},
                                    {"beep"_ns, box(stroke.hasBeeped)},
                                    {"field"_ns, NSString::fromUtf8(stroke.shown)}}));
    }
    return dictionary({{"symbol"_ns, entry->instrument->symbol()},
                       {"keys"_ns, keys},
                       {"typed"_ns, entry->typed},
                       {"plain"_ns, entry->plain},
                       {"down"_ns, entry->down},
                       {"up"_ns, entry->up}});
}

} // namespace

std::string jsonReport(const Session& session, const Problems& problems, const std::optional<PriceEntry>& entry,
                       const Desk& desk) {
    const auto instruments = NSMutableArray::array();
    for (const auto& tracker : session.trackers()) {
        instruments->addObject(instrumentEntry(*tracker));
    }
    const auto skipped = dictionary({{"damagedLines"_ns, box(problems.count(Problem::DamagedLine))},
                                     {"unknownInstruments"_ns, box(problems.count(Problem::UnknownInstrument))},
                                     {"absentPrices"_ns, box(problems.count(Problem::AbsentPrice))},
                                     {"wrongFields"_ns, box(problems.count(Problem::WrongField))},
                                     {"badInstruments"_ns, box(problems.count(Problem::BadInstrument))}});
    const auto report = dictionary({{"quotes"_ns, box(session.quotes())},
                                    {"from"_ns, timeOrNull(session.firstTime())},
                                    {"to"_ns, timeOrNull(session.lastTime())},
                                    {"seconds"_ns, box(session.seconds())},
                                    {"quotesPerSecond"_ns, box(static_cast<std::uint64_t>(quotesPerSecond(session)))},
                                    {"instruments"_ns, instruments},
                                    {"typed"_ns, entryObject(entry)},
                                    {"desk"_ns, deskObject(desk)},
                                    {"skipped"_ns, skipped}});
    return NSJSONSerialization::textWithObject(report, NSJSONWritingPrettyPrinted, nullptr) + '\n';
}

} // namespace replay
