#pragma once

#include "problems.h"

#include <zrbasic/platform/foundation/decimal_number.h>
#include <zrbasic/platform/foundation/string.h>

#include <optional>
#include <string>
#include <vector>

namespace replay {

/// What the exchange says about one instrument.
class Instrument : public zr::NSObject {
    ZR_OBJECT(Instrument, zr::NSObject)
  public:
    ZR_PROPERTY(zr::Copied<zr::NSString>, symbol, setSymbol)
    /// What is traded, and what it is paid with.
    ZR_PROPERTY(zr::Copied<zr::NSString>, base, setBase)
    ZR_PROPERTY(zr::Copied<zr::NSString>, counter, setCounter)
    /// The price step, above zero once the instrument was read.
    ZR_PROPERTY(zr::Ref<zr::NSDecimalNumber>, tick, setTick)
};

/// Reads the exchange's list. Entries that cannot be used are reported and left out. Nothing, after a message, when
/// the file cannot be read or is no such list.
[[nodiscard]] std::optional<std::vector<zr::Ref<Instrument>>> readInstruments(const std::string& file,
                                                                              Problems& problems, Console& console);

} // namespace replay
