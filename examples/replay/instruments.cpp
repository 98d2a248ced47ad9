#include "instruments.h"

#include "entry_lines.h"
#include "json_file.h"
#include "price_text.h"

#include <zrbasic/core/text.h>
#include <zrbasic/model/assignment.h>
#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/key_value_coding.h>

#include <set>

namespace replay {

using namespace zr;

namespace {

constexpr const char* listKey = "symbols";

/// The list within the file's text; null, after a message, when there is none.
Ref<NSArray> entriesIn(const std::string& content, const std::string& file, Console& console) {
    const auto reply = objectIn(content, file, console);
    if (!reply) {
        return nullptr;
    }
    Ref<NSArray> entries(cast<NSArray>(reply->peek(NSString::fromUtf8(listKey))));
    if (!entries) {
        console.say(file + ": is no list of instruments: it has no array \"" + listKey + '"');
    }
    return entries;
}

NSDictionary* priceFilterIn(NSDictionary* entry) {
    auto* const filters = cast<NSArray>(entry->peek("filters"_ns));
    if (!filters) {
        return nullptr;
    }
    for (const id& element : filters->elements()) {
        auto* const filter = cast<NSDictionary>(element);
        if (filter && "PRICE_FILTER"_ns->isEqual(filter->peek("filterType"_ns))) {
            return filter;
        }
    }
    return nullptr;
}

Fault bad(const std::string& what) {
    return {Problem::BadInstrument, what};
}

/// Fills an instrument from the server's entry. What stood in the way, if anything did.
std::optional<Fault> fill(Instrument* instrument, NSObject* entry) {
    auto* const dictionaryEntry = cast<NSDictionary>(entry);
    if (!dictionaryEntry) {
        return bad("the entry is no object");
    }
    assignPropertiesFromDictionary_replacedKeys(
        instrument, dictionaryEntry, dictionary({{"baseAsset"_ns, "base"_ns}, {"quoteAsset"_ns, "counter"_ns}}));
    if (!ZRXTextValid(instrument->symbol())) {
        return bad("the entry has no symbol");
    }
    const std::string name = "instrument " + instrument->symbol()->utf8();
    // Only the price filter may name the tick.
    instrument->setTick(nullptr);
    assignPropertiesFromDictionary_replacedKeys(instrument, priceFilterIn(dictionaryEntry),
                                                dictionary({{"tickSize"_ns, "tick"_ns}}));
    // It comes as text, and a property keeps what it is given, so it is read by name and put back as a number.
    const id given = valueForKey(instrument, "tick"_ns);
    const Ref<NSDecimalNumber> tick = decimalFrom(given);
    if (!given) {
        return bad(name + " has no tick");
    }
    if (!tick) {
        return bad(name + " has a tick that is no number");
    }
    if (tick->compare(NSDecimalNumber::zero()) != NSOrderedDescending) {
        return bad(name + " has a tick that is not above zero");
    }
    instrument->setTick(tick);
    return std::nullopt;
}

} // namespace

std::optional<std::vector<Ref<Instrument>>> readInstruments(const std::string& file, Problems& problems,
                                                            Console& console) {
    const auto content = contentOf(file, console);
    const Ref<NSArray> entries = content ? entriesIn(*content, file, console) : nullptr;
    if (!entries) {
        return std::nullopt;
    }
    const std::vector<std::size_t> lines = linesOfEntries(*content, listKey);
    std::vector<Ref<Instrument>> instruments;
    std::set<std::u16string_view> symbols;
    for (std::size_t i = 0; i < entries->count(); ++i) {
        auto instrument = make<Instrument>();
        std::optional<Fault> fault = fill(instrument, entries->objectAtIndex(i));
        if (!fault && !symbols.insert(instrument->symbol()->view()).second) {
            fault = bad("instrument " + instrument->symbol()->utf8() + " is listed twice");
        }
        if (fault) {
            problems.add(*fault, file, i < lines.size() ? lines[i] : 0);
        } else {
            instruments.push_back(std::move(instrument));
        }
    }
    return instruments;
}

} // namespace replay
