#include "instruments.h"

#include "entry_lines.h"
#include "price_text.h"

#include <zrbasic/core/text.h>
#include <zrbasic/model/assignment.h>
#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/json_serialization.h>
#include <zrbasic/platform/foundation/key_value_coding.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <set>

namespace replay {

using namespace zr;

namespace {

constexpr const char* listKey = "symbols";

std::optional<std::string> contentOf(const std::string& file, Console& console) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> input(std::fopen(file.c_str(), "rb"), &std::fclose);
    std::string content;
    if (input) {
        char block[65536];
        while (const std::size_t length = std::fread(block, 1, sizeof block, input.get())) {
            content.append(block, length);
        }
    }
    if (!input || std::ferror(input.get())) {
        console.say(file + ": cannot be read: " + std::strerror(errno));
        return std::nullopt;
    }
    return content;
}

/// The list within the file's text; null, after a message, when there is none.
Ref<NSArray> entriesIn(const std::string& content, const std::string& file, Console& console) {
    Ref<NSError> error;
    const id root = NSJSONSerialization::objectWithText(content, 0, &error);
    if (!root) {
        auto* const place = cast<NSNumber>(error->userInfo()->peek(NSJSONSerializationErrorIndex()));
        const auto offset = place ? static_cast<std::ptrdiff_t>(place->longLongValue()) : 0;
        const auto line = 1 + std::count(content.begin(), content.begin() + offset, '\n');
        console.say(file + ':' + std::to_string(line) + ": " + error->localizedDescription()->utf8());
        return nullptr;
    }
    auto* const reply = cast<NSDictionary>(root);
    Ref<NSArray> entries(reply ? cast<NSArray>(reply->peek(NSString::fromUtf8(listKey))) : nullptr);
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
