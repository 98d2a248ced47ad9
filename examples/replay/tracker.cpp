#include "tracker.h"

#include <zrbasic/core/tick.h>
#include <zrbasic/model/assignment.h>
#include <zrbasic/model/observation.h>

#include <algorithm>

namespace replay {

using namespace zr;

namespace {

std::size_t decimalsOf(const NSDecimalNumber& number) {
    const int exponent = number.decimal().exponent;
    return exponent < 0 ? static_cast<std::size_t>(-exponent) : 0;
}

} // namespace

void Tracker::follow(Instrument* instrument) {
    m_instrument = Ref<Instrument>(instrument);
    m_latest = make<Quote>();
    m_decimals = decimalsOf(*instrument->tick());
    // The tracker is the observer, so the callback cannot outlive what it refers to.
    addObserver_forKeyPath_withBlock(m_latest, this, "price"_ns,
                                     [this](NSObject*, NSString*, NSObject* before, NSObject* now) {
                                         m_changes += before && now && !before->isEqual(now);
                                     });
}

void Tracker::take(Quote* quote) {
    const auto prices = quote->prices();
    const Ref<NSDecimalNumber> tick = m_instrument->tick();
    m_offTick += static_cast<std::size_t>(std::count_if(prices.begin(), prices.end(), [&tick](const auto& price) {
        return price && !roundMatchWithTick(price, tick);
    }));
    ++m_quotes;
    for (const auto& price : prices) {
        if (!price) {
            continue;
        }
        if (!m_lowest || price->compare(m_lowest) == NSOrderedAscending) {
            m_lowest = price;
        }
        if (!m_highest || price->compare(m_highest) == NSOrderedDescending) {
            m_highest = price;
        }
        m_decimals = std::max(m_decimals, decimalsOf(*price));
    }
    assignPropertiesFrom(m_latest, quote);
}

} // namespace replay
