#include "quote.h"

#include "price_text.h"

#include <zrbasic/core/text.h>
#include <zrbasic/model/assignment.h>
#include <zrbasic/platform/foundation/key_value_coding.h>
#include <zrbasic/platform/foundation/null.h>

namespace replay {

using namespace zr;

namespace {

/// The server's names, one letter each to keep its messages short, and ours.
NSDictionary* replacedKeys() {
    static auto* const keys = new Ref<NSDictionary>(dictionary({{"s"_ns, "symbol"_ns},
                                                                {"E"_ns, "time"_ns},
                                                                {"o"_ns, "open"_ns},
                                                                {"h"_ns, "high"_ns},
                                                                {"l"_ns, "low"_ns},
                                                                {"c"_ns, "price"_ns},
                                                                {"v"_ns, "volume"_ns}}));
    return *keys;
}

Fault wrong(const std::string& field) {
    return {Problem::WrongField, "the " + field + " is of the wrong kind"};
}

/// A property keeps whatever it is given; the typed getter gives null for what it did not expect.
bool isOfWrongKind(Quote* quote, NSString* name, NSObject* typed) {
    return !typed && valueForKey(quote, name);
}

std::optional<Fault> readNumbers(Quote* quote) {
    for (const auto& name : {"open"_ns, "high"_ns, "low"_ns, "price"_ns, "volume"_ns}) {
        const id given = valueForKey(quote, name);
        if (!given) {
            continue;
        }
        const auto number = decimalFrom(given);
        if (!number) {
            return Fault{Problem::WrongField, "the " + name->utf8() + " is no number"};
        }
        setValue_forKey(quote, number, name);
    }
    return std::nullopt;
}

} // namespace

std::optional<Fault> fill(Quote* quote, NSDictionary* reply) {
    assignPropertiesFromDictionary_replacedKeys(quote, reply, replacedKeys());
    if (isOfWrongKind(quote, "symbol"_ns, quote->symbol())) {
        return wrong("symbol");
    }
    if (!ZRXTextValid(quote->symbol())) {
        return Fault{Problem::UnknownInstrument, "the quote names no instrument"};
    }
    const Ref<NSNumber> time = quote->time();
    if (isOfWrongKind(quote, "time"_ns, time) || (time && (time->isBoolean() || time->isFractional()))) {
        return wrong("time");
    }
    const id price = valueForKey(quote, "price"_ns);
    if (!price || isNull(price)) {
        return Fault{Problem::AbsentPrice, "the quote of " + quote->symbol()->utf8() + " has no price"};
    }
    return readNumbers(quote);
}

} // namespace replay
