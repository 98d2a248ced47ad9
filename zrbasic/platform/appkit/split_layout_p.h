#pragma once

#include <vector>

namespace zr {

/// A part of a split view, in points. The minimum is finite and not above the maximum.
struct SplitShare {
    double wanted = 0;
    double minimum = 0;
    double maximum = 0;
    /// How hard it resists being thicker, and thinner, than it wants.
    float hugging = 0;
    float resistance = 0;
    /// The result.
    double given = 0;
};

/// Shares `room` out. Those that resist least make up for the difference, in proportion to what they want and within
/// their limits; the others only for what is left then. Where all are at their limits the sum is another than `room`.
void distribute(std::vector<SplitShare>& shares, double room);

} // namespace zr
