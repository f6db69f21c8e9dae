#include "linepattern.h"

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
