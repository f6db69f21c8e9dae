#include "linepattern.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

struct Piece {
    double length;
    bool isDrawn;
};

// A dash with no length shows as the round end of the line alone, but for readers that leave it out it gets
// some.
constexpr double dotShare = 0.01;

} // namespace

DashArray dashArray(const std::vector<double>& pattern, double scale) {
    double total = 0.0;
    for (const double length : pattern) total += std::abs(length);
    if (!(total > 0.0) || !std::isfinite(total) || !(scale > 0.0) || !std::isfinite(scale)) return {};
    std::vector<Piece> pieces;
    for (const double length : pattern) {
        const bool isDrawn = length >= 0.0;
        const double size = (length == 0.0 ? total * dotShare : std::abs(length)) * scale;
        if (!pieces.empty() && pieces.back().isDrawn == isDrawn)
            pieces.back().length += size;
        else
            pieces.push_back({size, isDrawn});
    }
    if (pieces.size() < 2) return {};
    DashArray result;
    // The first length must be a drawn one and the last an empty one; what stands elsewhere goes round.
    if (!pieces.front().isDrawn) {
        const Piece gap = pieces.front();
        pieces.erase(pieces.begin());
        if (pieces.back().isDrawn)
            pieces.push_back(gap);
        else
            pieces.back().length += gap.length;
        double period = 0.0;
        for (const Piece& piece : pieces) period += piece.length;
        result.start = period - gap.length;
    } else if (pieces.back().isDrawn) {
        result.start = pieces.back().length;
        pieces.front().length += pieces.back().length;
        pieces.pop_back();
    }
    if (pieces.size() < 2) return {};
    for (const Piece& piece : pieces) result.dashes.push_back(piece.length);
    return result;
}

double spacingOf(const PatternLine& line) {
    return std::abs(line.offset.y * std::cos(line.angle) - line.offset.x * std::sin(line.angle));
}

std::vector<PatternStroke> strokesOf(const PatternLine& line, const AcGePoint2d& low, const AcGePoint2d& high,
                                     std::size_t limit) {
    const AcGeVector2d along(std::cos(line.angle), std::sin(line.angle));
    const AcGeVector2d across(-along.y, along.x);
    const double step = line.offset.dotProduct(across);
    const std::array<AcGePoint2d, 4> corners = {low, AcGePoint2d(high.x, low.y), high,
                                                AcGePoint2d(low.x, high.y)};
    double nearest = HUGE_VAL, farthest = -HUGE_VAL, first = HUGE_VAL, last = -HUGE_VAL;
    for (const AcGePoint2d& corner : corners) {
        const AcGeVector2d out = corner - line.base;
        nearest = std::min(nearest, out.dotProduct(across));
        farthest = std::max(farthest, out.dotProduct(across));
        first = std::min(first, out.dotProduct(along));
        last = std::max(last, out.dotProduct(along));
    }
    double begin = 0.0;
    double end = 0.0;
    if (step != 0.0) {
        begin = std::ceil(std::min(nearest / step, farthest / step));
        end = std::floor(std::max(nearest / step, farthest / step));
    }
    std::vector<PatternStroke> strokes;
    // False for values that are no numbers, too.
    if (!(end - begin < static_cast<double>(limit)) || !std::isfinite(begin + end + first + last + step))
        return strokes;
    const auto count = static_cast<std::size_t>(std::max(0.0, end - begin + 1.0));
    strokes.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        const double k = begin + static_cast<double>(i);
        const AcGePoint2d start = line.base + line.offset * k;
        const double shift = line.offset.dotProduct(along) * k;
        strokes.push_back({start + along * (first - shift), start + along * (last - shift), first - shift});
    }
    return strokes;
}
