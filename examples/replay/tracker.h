#pragma once

#include "instruments.h"
#include "quote.h"

namespace replay {

/// Follows one instrument: keeps its latest quote, watches the price and adds up what happens.
class Tracker : public zr::NSObject {
    ZR_OBJECT(Tracker, zr::NSObject)
  public:
    /// Begins to follow; once per tracker.
    void follow(Instrument* instrument);

    /// Raises when a price cannot be divided by the tick, and then nothing has changed.
    void take(Quote* quote);

    [[nodiscard]] Instrument* instrument() const { return m_instrument; }
    [[nodiscard]] std::size_t quotes() const { return m_quotes; }
    /// How often the price came out different from the one before.
    [[nodiscard]] std::size_t changes() const { return m_changes; }
    /// How many of the opening, highest, lowest and present prices were no multiple of the tick.
    [[nodiscard]] std::size_t offTick() const { return m_offTick; }
    /// The lowest and the highest of all these prices, and the latest present one; null before the first quote.
    [[nodiscard]] zr::NSDecimalNumber* lowest() const { return m_lowest; }
    [[nodiscard]] zr::NSDecimalNumber* highest() const { return m_highest; }
    /// The same object all the time, filled anew by every quote: to be observed. Null before `follow`.
    [[nodiscard]] Quote* latest() const { return m_latest; }
    [[nodiscard]] zr::Ref<zr::NSDecimalNumber> last() const { return m_latest ? m_latest->price() : nullptr; }
    /// The most decimals that a price had.
    [[nodiscard]] std::size_t decimals() const { return m_decimals; }

  private:
    zr::Ref<Instrument> m_instrument;
    zr::Ref<Quote> m_latest;
    zr::Ref<zr::NSDecimalNumber> m_lowest;
    zr::Ref<zr::NSDecimalNumber> m_highest;
    std::size_t m_quotes = 0;
    std::size_t m_changes = 0;
    std::size_t m_offTick = 0;
    std::size_t m_decimals = 0;
};

} // namespace replay
