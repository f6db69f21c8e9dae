#include "facetjoining.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace hostkit::modeler {

namespace {

using Index = Polyhedron::Index;

/// Corners nearer to one plane than this, in diameters of their facet, lie in it.
constexpr double kFlat = 1e-9;
/// The least sine of a facet's corner.
constexpr double kStraight = 1e-6;

bool isInPlane(const std::vector<AcGePoint3d>& points, const Facet& facet, Index point) {
    const AcGeVector3d normal = areaVectorOf(points, facet);
    const AcGeVector3d offset = points[point] - points[facet[0]];
    return std::abs(normal.dotProduct(offset)) <= kFlat * normal.length() * std::sqrt(normal.length());
}

bool isConvex(const std::vector<AcGePoint3d>& points, const Facet& facet) {
    const AcGeVector3d normal = areaVectorOf(points, facet);
    const std::size_t count = facet.size();
    for (std::size_t place = 0; place < count; ++place) {
        const AcGePoint3d& middle = points[facet[(place + 1) % count]];
        const AcGeVector3d first = middle - points[facet[place]],
                           second = points[facet[(place + 2) % count]] - middle;
        if (!(first.crossProduct(second).dotProduct(normal) >
              kStraight * first.length() * second.length() * normal.length()))
            return false;
    }
    return true;
}

} // namespace

AcGeVector3d areaVectorOf(const std::vector<AcGePoint3d>& points, const Facet& loop) {
    AcGeVector3d sum;
    const AcGePoint3d base = points[loop.front()];
    for (std::size_t place = 0; place < loop.size(); ++place)
        sum += (points[loop[place]] - base).crossProduct(points[loop[(place + 1) % loop.size()]] - base);
    return sum / 2.0;
}

void joinFlatPairs(const std::vector<AcGePoint3d>& points, std::vector<Facet>& facets) {
    std::map<std::pair<Index, Index>, std::size_t> open;
    for (std::size_t number = 0; number < facets.size(); ++number) {
        for (std::size_t side = 0; side < 3; ++side) {
            const Index a = facets[number][side], b = facets[number][(side + 1) % 3],
                        c = facets[number][(side + 2) % 3];
            const auto other = open.find({b, a});
            if (other == open.end()) continue;
            Facet& partner = facets[other->second];
            if (partner.size() != 3 || !isInPlane(points, partner, c)) continue;
            std::rotate(partner.begin(), std::find(partner.begin(), partner.end(), b), partner.end());
            const Facet joined{b, c, a, partner[2]};
            if (!isConvex(points, joined)) continue;
            partner = joined;
            facets[number].clear();
            break;
        }
        for (std::size_t side = 0; side < facets[number].size(); ++side)
            open[{facets[number][side], facets[number][(side + 1) % 3]}] = number;
    }
}

} // namespace hostkit::modeler
