#pragma once

#include "instruments.h"

#include <cstdint>
#include <string>
#include <vector>

namespace replay {

/// What became of one key that was pressed in a price field.
struct Keystroke {
    enum class Verdict { Accepted, Replaced, Refused };

    std::string key;
    Verdict verdict = Verdict::Accepted;
    /// Refused by the check of the content, which beeps, and not by the length, which is silent.
    bool hasBeeped = false;
    /// What the field shows afterwards.
    std::string shown;
};

/// A price typed into a field, key by key, and what it is rounded to.
struct PriceEntry {
    zr::Ref<Instrument> instrument;
    std::vector<Keystroke> keystrokes;
    zr::Ref<zr::NSDecimalNumber> typed;
    /// To the instrument's tick: the nearest multiple, the one below, the one above.
    zr::Ref<zr::NSNumber> plain;
    zr::Ref<zr::NSNumber> down;
    zr::Ref<zr::NSNumber> up;
};

/// Types `price`, or 1.5 when it is null, the way people do: with a full-width comma for the point, a letter by
/// mistake, and more digits than the field takes.
[[nodiscard]] PriceEntry typePrice(Instrument* instrument, zr::NSNumber* price);

} // namespace replay
