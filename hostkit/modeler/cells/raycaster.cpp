#include "raycaster.h"

#include <cmath>

namespace hostkit::modeler {

std::optional<Coverage> RayCaster::coverageAhead(const Start& start) const {
    // Directions about the normal, none along an axis or a diagonal.
    constexpr int tries = 12;
    const AcGeVector3d& normal = start.ahead;
    const AcGeVector3d axis = std::abs(normal.x) < 0.6 ? AcGeVector3d(1, 0, 0) : AcGeVector3d(0, 1, 0);
    const AcGeVector3d side = normal.crossProduct(axis).normal();
    const AcGeVector3d other = normal.crossProduct(side);
    for (int i = 0; i < tries; ++i) {
        const double turn = 0.7391 + 2.3999632 * i; // the golden angle
        const double lean = 0.3137 + 0.0917 * i;
        const AcGeVector3d direction = normal + (side * std::cos(turn) + other * std::sin(turn)) * lean;
        if (const auto found = along(start, direction.normal())) return found;
    }
    return std::nullopt;
}

std::optional<Coverage> RayCaster::along(const Start& start, const AcGeVector3d& direction) const {
    Coverage coverage{};
    bool clear = true;
    m_tree.queryRay(start.place, direction, [&](Index face) {
        if (!clear) return;
        const Hit found = hit(face, start, direction);
        if (found == Hit::unclear) clear = false;
        if (found != Hit::through) return;
        const bool leaves = m_all.planes[face].normal.dotProduct(direction) > 0;
        coverage[static_cast<std::size_t>(m_all.role(face))] += leaves ? 1 : -1;
    });
    if (!clear) return std::nullopt;
    return coverage;
}

RayCaster::Hit RayCaster::hit(Index face, const Start& start, const AcGeVector3d& direction) const {
    constexpr double steep = 1e-6;
    if (face == start.face || (m_all.worked[face] && m_all.classes[face] == start.planeClass))
        return Hit::missed;
    const Plane& plane = m_all.planes[face];
    const double height = plane.height(start.place);
    if (std::abs(height) <= 4 * m_all.tolerance)
        return isInside(face, start.place) == Hit::missed ? Hit::missed : Hit::unclear;
    const double slope = plane.normal.dotProduct(direction);
    if (std::abs(slope) < steep) return Hit::unclear;
    const double distance = -height / slope;
    if (distance < 0) return Hit::missed;
    return isInside(face, start.place + direction * distance);
}

RayCaster::Hit RayCaster::isInside(Index face, const AcGePoint3d& place) const {
    const AcGeVector3d& normal = m_all.planes[face].normal;
    const unsigned dropped = normal.largestElement();
    const unsigned u = (dropped + 1) % 3;
    const unsigned v = (dropped + 2) % 3;
    const double margin = 4 * m_all.tolerance;
    bool inside = false;
    bool unclear = false;
    m_all.forEdges(face, [&](Index low, Index high) {
        const AcGePoint3d& from = m_all.points[low];
        const AcGePoint3d& to = m_all.points[high];
        const AcGeVector3d run = to - from;
        const double length = run.lengthSqrd();
        const double part = length > 0 ? std::clamp(run.dotProduct(place - from) / length, 0.0, 1.0) : 0.0;
        unclear = unclear || (from + run * part).distanceSqrdTo(place) <= margin * margin;
        if ((from[v] > place[v]) == (to[v] > place[v])) return;
        const double crossing = from[u] + (place[v] - from[v]) / (to[v] - from[v]) * (to[u] - from[u]);
        if (crossing > place[u]) inside = !inside;
    });
    return unclear ? Hit::unclear : inside ? Hit::through : Hit::missed;
}

std::optional<Planar> pointInside(const std::vector<std::array<Planar, 2>>& borders, double part) {
    std::vector<double> heights;
    heights.reserve(borders.size());
    for (const auto& [from, to] : borders) heights.push_back(from.y);
    std::sort(heights.begin(), heights.end());
    Planar best;
    double gap = 0;
    for (std::size_t i = 0; i + 1 < heights.size(); ++i)
        if (heights[i + 1] - heights[i] > gap) {
            gap = heights[i + 1] - heights[i];
            best.y = heights[i] + (heights[i + 1] - heights[i]) * part;
        }
    if (!(gap > 0)) return std::nullopt;
    std::vector<double> places;
    for (const auto& [from, to] : borders)
        if ((from.y > best.y) != (to.y > best.y))
            places.push_back(from.x + (best.y - from.y) / (to.y - from.y) * (to.x - from.x));
    std::sort(places.begin(), places.end());
    double width = 0;
    for (std::size_t i = 0; i + 1 < places.size(); i += 2)
        if (places[i + 1] - places[i] > width) {
            width = places[i + 1] - places[i];
            best.x = places[i] + (places[i + 1] - places[i]) * part;
        }
    if (!(width > 0)) return std::nullopt;
    return best;
}

} // namespace hostkit::modeler
