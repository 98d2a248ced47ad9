#include <zrbasic/platform/appkit/path_coverage_p.h>

#include <algorithm>
#include <cmath>

namespace zr {
namespace {

/// Beyond it, products of coordinates are no longer exact enough to be worth drawing.
constexpr double farthest = 1 << 24;

bool isNear(NSPoint point) {
    return std::fabs(point.x) <= farthest && std::fabs(point.y) <= farthest;
}

NSPoint between(NSPoint a, NSPoint b, double part) {
    return {a.x + (b.x - a.x) * part, a.y + (b.y - a.y) * part};
}

struct Part {
    Polygon points;
    bool isClosed = false;
};

void addCurve(Polygon& points, NSPoint control1, NSPoint control2, NSPoint end) {
    const NSPoint start = points.back();
    const double length = std::hypot(control1.x - start.x, control1.y - start.y) +
                          std::hypot(control2.x - control1.x, control2.y - control1.y) +
                          std::hypot(end.x - control2.x, end.y - control2.y);
    // The distance to the curve shrinks with the square of the number of steps.
    const int steps = static_cast<int>(std::clamp(std::ceil(std::sqrt(length) * 4), 4.0, 512.0));
    for (int i = 1; i <= steps; ++i) {
        const double part = double(i) / steps;
        const NSPoint a = between(start, control1, part);
        const NSPoint b = between(control1, control2, part);
        const NSPoint c = between(control2, end, part);
        points.push_back(between(between(a, b, part), between(b, c, part), part));
    }
}

/// The path's parts as straight lines; none for one that goes too far.
std::vector<Part> partsOf(const CGPath& path, const NSAffineTransformStruct& transform) {
    std::vector<Part> parts;
    for (const CGPathElement& element : path.elements()) {
        std::array<NSPoint, 3> points;
        for (std::size_t i = 0; i < points.size(); ++i) {
            if (!isNear(element.points[i])) {
                return {};
            }
            points[i] = transformedPoint(transform, element.points[i]);
            if (!isNear(points[i])) {
                return {};
            }
        }
        if (element.type == kCGPathElementMoveToPoint) {
            parts.push_back({{points[0]}, false});
            continue;
        }
        if (parts.back().isClosed) {
            const NSPoint start = parts.back().points.front();
            parts.push_back({{start}, false});
        }
        switch (element.type) {
            case kCGPathElementAddLineToPoint:
                parts.back().points.push_back(points[0]);
                break;
            case kCGPathElementAddCurveToPoint:
                addCurve(parts.back().points, points[0], points[1], points[2]);
                break;
            default:
                parts.back().isClosed = true;
                break;
        }
    }
    return parts;
}

double areaOf(const Polygon& polygon) {
    double sum = 0;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const NSPoint a = polygon[i];
        const NSPoint b = polygon[(i + 1) % polygon.size()];
        sum += a.x * b.y - b.x * a.y;
    }
    return sum;
}

/// The pieces of a line along a part, all of which go around the same way, so that they add up where they overlap.
class Outline {
  public:
    Outline(double width, const NSAffineTransformStruct& transform) : m_half(width / 2), m_transform(transform) {}

    void add(const Part& part) {
        Polygon points;
        for (const NSPoint point : part.points) {
            if (points.empty() || point != points.back()) {
                points.push_back(point);
            }
        }
        if (part.isClosed && points.size() > 1 && points.front() == points.back()) {
            points.pop_back();
        }
        const std::size_t count = points.size();
        if (count < 2) {
            return;
        }
        const std::size_t lines = part.isClosed ? count : count - 1;
        for (std::size_t i = 0; i < lines; ++i) {
            const NSPoint a = points[i];
            const NSPoint b = points[(i + 1) % count];
            const NSPoint side = sideOf(a, b);
            addPiece({{a.x + side.x, a.y + side.y},
                      {b.x + side.x, b.y + side.y},
                      {b.x - side.x, b.y - side.y},
                      {a.x - side.x, a.y - side.y}});
            if (part.isClosed || i + 1 < lines) {
                addCorner(a, b, points[(i + 2) % count]);
            }
        }
    }

    [[nodiscard]] std::vector<Polygon> taken() { return std::move(m_pieces); }

  private:
    /// Half the width, at a right angle to the line.
    [[nodiscard]] NSPoint sideOf(NSPoint a, NSPoint b) const {
        const double length = std::hypot(b.x - a.x, b.y - a.y);
        return {-(b.y - a.y) / length * m_half, (b.x - a.x) / length * m_half};
    }

    void addCorner(NSPoint a, NSPoint b, NSPoint c) {
        NSPoint first = sideOf(a, b);
        NSPoint second = sideOf(b, c);
        if (first.x * second.y - first.y * second.x > 0) {
            // Turning to that side, the gap is on the other.
            first = {-first.x, -first.y};
            second = {-second.x, -second.y};
        }
        Polygon piece{b, {b.x + first.x, b.y + first.y}};
        const NSPoint sum{first.x + second.x, first.y + second.y};
        const double square = sum.x * sum.x + sum.y * sum.y;
        // The tip lies at 2 half² / |sum|² of the sum.
        const double reach = square > 0 ? 2 * m_half * m_half / square : INFINITY;
        constexpr double longest = 4;
        if (reach * std::sqrt(square) <= longest * m_half) {
            piece.push_back({b.x + sum.x * reach, b.y + sum.y * reach});
        }
        piece.push_back({b.x + second.x, b.y + second.y});
        addPiece(std::move(piece));
    }

    void addPiece(Polygon piece) {
        for (NSPoint& point : piece) {
            point = transformedPoint(m_transform, point);
        }
        if (!std::all_of(piece.begin(), piece.end(), isNear)) {
            return;
        }
        if (areaOf(piece) < 0) {
            std::reverse(piece.begin(), piece.end());
        }
        m_pieces.push_back(std::move(piece));
    }

    double m_half;
    NSAffineTransformStruct m_transform;
    std::vector<Polygon> m_pieces;
};

/// A side of a polygon from its upper end down.
struct Side {
    double top;
    double bottom;
    double x;
    double slope;
    int direction;
};

std::vector<Side> sidesOf(const std::vector<Polygon>& polygons) {
    std::vector<Side> sides;
    for (const Polygon& polygon : polygons) {
        for (std::size_t i = 0; i < polygon.size(); ++i) {
            NSPoint a = polygon[i];
            NSPoint b = polygon[(i + 1) % polygon.size()];
            if (a.y == b.y) {
                continue;
            }
            const int direction = a.y < b.y ? 1 : -1;
            if (direction < 0) {
                std::swap(a, b);
            }
            sides.push_back({a.y, b.y, a.x, (b.x - a.x) / (b.y - a.y), direction});
        }
    }
    std::sort(sides.begin(), sides.end(), [](const Side& one, const Side& other) { return one.top < other.top; });
    return sides;
}

/// Adds how far the pixels lie between `left` and `right`.
void addSpan(std::vector<float>& row, double left, double right) {
    left = std::clamp(left, 0.0, double(row.size()));
    right = std::clamp(right, 0.0, double(row.size()));
    if (!(left < right)) {
        return;
    }
    const auto first = static_cast<std::size_t>(left);
    const auto last = static_cast<std::size_t>(right);
    if (first == last) {
        row[first] += static_cast<float>(right - left);
        return;
    }
    row[first] += static_cast<float>(double(first + 1) - left);
    for (std::size_t x = first + 1; x < last; ++x) {
        row[x] += 1;
    }
    if (last < row.size()) {
        row[last] += static_cast<float>(right - double(last));
    }
}

} // namespace

std::vector<Polygon> polygonsOf(const CGPath& path, const NSAffineTransformStruct& transform) {
    std::vector<Polygon> polygons;
    for (Part& part : partsOf(path, transform)) {
        polygons.push_back(std::move(part.points));
    }
    return polygons;
}

std::vector<Polygon> outlineOf(const CGPath& path, double width, const NSAffineTransformStruct& transform) {
    if (!(width > 0) || !std::isfinite(width)) {
        return {};
    }
    Outline outline(width, transform);
    for (const Part& part : partsOf(path, {})) {
        outline.add(part);
    }
    return outline.taken();
}

void coverRows(const std::vector<Polygon>& polygons, int wide, int high,
               FunctionRef<void(int y, int x, std::span<const std::uint8_t> parts)> take) {
    constexpr int linesPerRow = 16;
    const std::vector<Side> sides = sidesOf(polygons);
    if (sides.empty() || wide <= 0) {
        return;
    }
    double bottom = sides.front().bottom;
    for (const Side& side : sides) {
        bottom = std::max(bottom, side.bottom);
    }
    const int firstRow = static_cast<int>(std::clamp(std::floor(sides.front().top), 0.0, double(high)));
    const int lastRow = static_cast<int>(std::clamp(std::ceil(bottom), 0.0, double(high)));
    std::vector<float> row(static_cast<std::size_t>(wide));
    std::vector<std::uint8_t> parts(row.size());
    std::vector<const Side*> active;
    std::vector<std::pair<double, int>> crossings;
    auto next = sides.begin();
    for (int y = firstRow; y < lastRow; ++y) {
        for (; next != sides.end() && next->top < y + 1; ++next) {
            active.push_back(&*next);
        }
        std::erase_if(active, [y](const Side* side) { return side->bottom <= y; });
        if (active.empty()) {
            continue;
        }
        std::fill(row.begin(), row.end(), 0.0F);
        for (int line = 0; line < linesPerRow; ++line) {
            const double middle = y + (line + 0.5) / linesPerRow;
            crossings.clear();
            for (const Side* const side : active) {
                if (side->top <= middle && middle < side->bottom) {
                    crossings.emplace_back(side->x + (middle - side->top) * side->slope, side->direction);
                }
            }
            std::sort(crossings.begin(), crossings.end());
            int winding = 0;
            double left = 0;
            for (const auto& [x, direction] : crossings) {
                if (winding == 0) {
                    left = x;
                }
                winding += direction;
                if (winding == 0) {
                    addSpan(row, left, x);
                }
            }
        }
        std::transform(row.begin(), row.end(), parts.begin(), [](float sum) {
            return static_cast<std::uint8_t>(std::min(255.0F, sum * (255.0F / linesPerRow) + 0.5F));
        });
        const auto isCovered = [](std::uint8_t part) { return part != 0; };
        const auto first = std::find_if(parts.begin(), parts.end(), isCovered);
        if (first != parts.end()) {
            const auto last = std::find_if(parts.rbegin(), parts.rend(), isCovered).base();
            take(y, static_cast<int>(first - parts.begin()), {first, last});
        }
    }
}

} // namespace zr
