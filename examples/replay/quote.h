#pragma once

#include "problems.h"

#include <zrbasic/platform/foundation/decimal_number.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/string.h>

#include <array>
#include <optional>

namespace replay {

/// What the exchange reported about an instrument at one moment.
class Quote : public zr::NSObject {
    ZR_OBJECT(Quote, zr::NSObject)
  public:
    ZR_PROPERTY(zr::Copied<zr::NSString>, symbol, setSymbol)
    /// Milliseconds since 1970, UTC.
    ZR_PROPERTY(zr::Ref<zr::NSNumber>, time, setTime)
    ZR_PROPERTY(zr::Ref<zr::NSDecimalNumber>, open, setOpen)
    ZR_PROPERTY(zr::Ref<zr::NSDecimalNumber>, high, setHigh)
    ZR_PROPERTY(zr::Ref<zr::NSDecimalNumber>, low, setLow)
    ZR_PROPERTY(zr::Ref<zr::NSDecimalNumber>, price, setPrice)
    ZR_PROPERTY(zr::Ref<zr::NSDecimalNumber>, volume, setVolume)

    /// Opening, highest, lowest and present price; null where the exchange sent none.
    [[nodiscard]] std::array<zr::Ref<zr::NSDecimalNumber>, 4> prices() const {
        return {open(), high(), low(), price()};
    }
};

/// Fills `quote` from what the server sent, and turns its texts into numbers. What stood in the way, if anything did;
/// the quote is then of no use.
[[nodiscard]] std::optional<Fault> fill(Quote* quote, zr::NSDictionary* reply);

} // namespace replay
