#include "order_link.h"

#include <zrbasic/collections/url_query.h>
#include <zrbasic/platform/foundation/number.h>

namespace replay {

using namespace zr;

OrderLink linkOrder(const PriceEntry& entry) {
    const auto page = NSURL::URLWithString("https://desk.example/order"_ns);
    const auto order = appendQueryItemsFromDictionary(
        page,
        dictionary({{"symbol"_ns, entry.instrument->symbol()}, {"price"_ns, entry.plain}, {"quantity"_ns, box(10)}}));
    OrderLink link;
    link.built = resetRandomURLAndFragmentWithDictionary(
        order, dictionary({{"side"_ns, "buy"_ns}, {"note"_ns, "day order"_ns}}));
    link.refreshed = resetRandomQueryItem(link.built);
    link.query = queryParams(link.refreshed);
    link.fragment = fragmentParams(link.refreshed);
    return link;
}

} // namespace replay
