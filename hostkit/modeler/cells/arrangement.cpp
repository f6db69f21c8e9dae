#include "arrangement.h"

#include <cmath>

namespace hostkit::modeler {

Index Arrangement::segment(Index first, Index second) {
    if (first > second) std::swap(first, second);
    Index& number = segmentNumbers.at(first, second);
    if (number == none) {
        number = static_cast<Index>(segments.size());
        segments.push_back({.low = first, .high = second});
    }
    return number;
}

Index Arrangement::weld(const AcGePoint3d& place) {
    Index number = grid.find(points, place);
    if (number == none) {
        number = static_cast<Index>(points.size());
        points.push_back(place);
        grid.add(points, number);
    }
    return number;
}

std::vector<bool> Arrangement::cleanPieces() const {
    std::vector<bool> pieces(segments.size(), false);
    for (const Index s : cleanEdges) forLeaves(s, true, [&](Index leaf, bool) { pieces[leaf] = true; });
    return pieces;
}

} // namespace hostkit::modeler
