#include "regionprobe.h"

#include <algorithm>
#include <cmath>

namespace hostkit {

void RegionProbe::take() {
    m_isTaken = true;
    m_isDecided |= m_mode == PickMode::touching;
}

void RegionProbe::leave() {
    m_isOut = true;
    m_isDecided = true;
}

void RegionProbe::addPiece(const PlanePiece& piece) {
    if (m_isDecided) return;
    if (piece.isFinite() && (m_mode == PickMode::touching ? m_region.touches(piece) : m_region.holds(piece)))
        take();
    else if (m_mode == PickMode::inside)
        leave();
}

void RegionProbe::addPieces(const std::vector<PlanePiece>& pieces) {
    for (const PlanePiece& piece : pieces) {
        if (m_isDecided) return;
        addPiece(piece);
    }
}

void RegionProbe::addArea(const std::vector<PlanePiece>& boundary) {
    addPieces(boundary);
    if (m_isDecided || boundary.empty()) return;
    if (m_mode == PickMode::touching) {
        if (isEnclosed(m_region.corner(), boundary)) take();
    } else if (!m_region.isConvex() && m_region.hasEdgeWithin(boundary)) {
        leave();
    }
}

// Cut to the region's box with some room, and reckoned from the point nearest to the origin: a base point far
// away costs no more digits than it has itself.
void RegionProbe::addEndless(const AcGePoint2d& base, const AcGeVector2d& direction, bool isBothWays) {
    if (m_isDecided) return;
    if (m_mode == PickMode::inside) return leave();
    const double square = direction.lengthSqrd();
    if (square == 0.0) return addPoint(base);
    const PlaneBox& box = m_region.box();
    const double room = (box.high - box.low).length() + 2.0 * m_region.allowance();
    const double height = direction.crossProduct(base.asVector()) / square;
    const AcGePoint2d foot = AcGePoint2d::kOrigin + direction.perpVector() * height;
    const double start = base.asVector().dotProduct(direction) / square;
    double from = isBothWays ? -HUGE_VAL : start;
    double to = HUGE_VAL;
    for (const unsigned int axis : {0U, 1U}) {
        if (direction[axis] == 0.0) continue;
        const double low = (box.low[axis] - room - foot[axis]) / direction[axis];
        const double high = (box.high[axis] + room - foot[axis]) / direction[axis];
        from = std::max(from, std::min(low, high));
        to = std::min(to, std::max(low, high));
    }
    if (!(from <= to)) return;
    const bool hasStart = !isBothWays && from == start;
    const AcGePoint2d first = hasStart ? base : foot + direction * from;
    const PlanePiece seen = PlanePiece::segment(first, foot + direction * to);
    if (seen.isFinite() && m_region.touches(seen, base.largestCoordinate())) take();
}

bool RegionProbe::mayPass(const PlaneBox& hull) const {
    if (m_mode == PickMode::touching) return !m_region.box().meets(hull, m_region.allowance());
    return m_isTaken && m_region.holdsHull(hull);
}

} // namespace hostkit
