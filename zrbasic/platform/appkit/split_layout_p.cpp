#include <zrbasic/platform/appkit/split_layout_p.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace zr {
namespace {

/// Shares `difference`, above or below 0, out among those; gives back what they could not take.
double shareOut(std::vector<SplitShare*> takers, double difference) {
    while (!takers.empty() && difference != 0) {
        double sum = 0;
        for (const SplitShare* taker : takers) {
            sum += taker->given;
        }
        const auto partOf = [&](const SplitShare& taker) {
            const double weight = sum > 0 ? taker.given / sum : 1 / static_cast<double>(takers.size());
            return difference * weight;
        };
        // Those who would go beyond a limit stay at it, and what they leave is shared out among the rest.
        std::vector<SplitShare*> free;
        double taken = 0;
        for (SplitShare* taker : takers) {
            const double given = taker->given + partOf(*taker);
            if (given > taker->maximum || given < taker->minimum) {
                const double limit = given > taker->maximum ? taker->maximum : taker->minimum;
                taken += limit - taker->given;
                taker->given = limit;
            } else {
                free.push_back(taker);
            }
        }
        if (free.size() == takers.size()) {
            for (SplitShare* taker : takers) {
                taker->given += partOf(*taker);
            }
            return 0;
        }
        difference -= taken;
        takers = std::move(free);
    }
    return difference;
}

} // namespace

void distribute(std::vector<SplitShare>& shares, double room) {
    double difference = room;
    for (SplitShare& share : shares) {
        share.given = std::clamp(share.wanted, share.minimum, share.maximum);
        difference -= share.given;
    }
    const auto priority = [isMore = difference > 0](const SplitShare* share) {
        const float number = isMore ? share->hugging : share->resistance;
        // What is not a number gives way first, and must not upset the order.
        return std::isnan(number) ? 0.F : number;
    };
    std::vector<SplitShare*> order;
    for (SplitShare& share : shares) {
        order.push_back(&share);
    }
    std::stable_sort(order.begin(), order.end(),
                     [&](const SplitShare* a, const SplitShare* b) { return priority(a) < priority(b); });
    for (auto first = order.begin(); first != order.end() && difference != 0;) {
        const auto last = std::find_if(first, order.end(),
                                       [&](const SplitShare* share) { return priority(share) != priority(*first); });
        difference = shareOut({first, last}, difference);
        first = last;
    }
}

} // namespace zr
