#include "fields.h"

#include "price_text.h"

#include <algorithm>
#include <cstdlib>

namespace replay {

using namespace zr;

namespace {

constexpr Field fields[] = {
    {"instrument", "Instrument", [](const Tracker& of) { return of.instrument()->symbol()->utf8(); }},
    {"tick", "Tick", [](const Tracker& of) { return textOf(of.instrument()->tick()); }},
    {"quotes", "Quotes", [](const Tracker& of) { return grouped(of.quotes()); }},
    {"changes", "Changes", [](const Tracker& of) { return grouped(of.changes()); }},
    {"offTick", "Off tick", [](const Tracker& of) { return grouped(of.offTick()); }},
    {"low", "Low", [](const Tracker& of) { return textOf(of.lowest(), of.decimals()); }},
    {"high", "High", [](const Tracker& of) { return textOf(of.highest(), of.decimals()); }},
    {"last", "Last", [](const Tracker& of) { return textOf(of.last(), of.decimals()); }},
    {"change", "Change",
     [](const Tracker& of) { return NSString::stringWithFormat("%+.2f %%"_ns, changeOf(of))->utf8(); }},
    {"volume", "Volume", [](const Tracker& of) { return textOf(of.latest()->volume(), of.decimals()); }},
};

} // namespace

const Field& fieldNamed(std::string_view identifier) {
    const auto* const field = std::find_if(std::begin(fields), std::end(fields),
                                           [&](const Field& known) { return identifier == known.identifier; });
    if (field == std::end(fields)) {
        std::abort();
    }
    return *field;
}

double changeOf(const Tracker& tracker) {
    const auto open = tracker.latest()->open();
    const double first = open ? open->doubleValue() : 0;
    return first > 0 && tracker.last() ? (tracker.last()->doubleValue() / first - 1) * 100 : 0;
}

} // namespace replay
