#pragma once

#include "price_entry.h"

#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/url.h>

namespace replay {

/// The address of an order ticket that is filled in already, for another desk to open.
struct OrderLink {
    zr::Ref<zr::NSURL> built;
    /// The same with another random number, so that no cache answers in the server's place.
    zr::Ref<zr::NSURL> refreshed;
    /// What the other desk reads back from it.
    zr::Ref<zr::NSDictionary> query;
    zr::Ref<zr::NSDictionary> fragment;
};

/// For ten of the instrument at the price that was typed and rounded.
[[nodiscard]] OrderLink linkOrder(const PriceEntry& entry);

} // namespace replay
