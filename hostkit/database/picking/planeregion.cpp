#include "planeregion.h"

#include <algorithm>
#include <cmath>

namespace hostkit {

namespace {

double distanceToEdge(const AcGePoint2d& point, const PlanePiece& edge) {
    return distanceToSegment(point, edge.start, edge.end);
}

} // namespace

PlaneRegion::PlaneRegion(const PickRegion& region, const AcGePoint2d& origin)
    : m_kind(region.kind()) {
    if (region.isEmpty()) return;
    std::vector<AcGePoint2d> corners = region.corners();
    for (AcGePoint2d& corner : corners) {
        corner -= origin.asVector();
        m_box.add(corner);
    }
    m_far = std::max(region.low().largestCoordinate(), region.high().largestCoordinate());
    m_allowance = AcGe::pointAllowance(AcGeContext::gTol, m_far);
    const std::size_t sides = isFence() && corners.size() > 1 ? corners.size() - 1 : corners.size();
    m_edges.reserve(sides);
    for (std::size_t i = 0; i < sides; ++i)
        m_edges.push_back(PlanePiece::segment(corners[i], corners[(i + 1) % corners.size()]));
}

double PlaneRegion::allowanceFor(const PlaneBox& hull) const {
    return AcGe::pointAllowance(AcGeContext::gTol, std::max(m_far, hull.magnitude()));
}

bool PlaneRegion::contains(const AcGePoint2d& point, double allowance) const {
    if (!m_box.holds(point, allowance)) return false;
    if (isConvex()) return true;
    const auto isNear = [&](const PlanePiece& edge) { return distanceToEdge(point, edge) <= allowance; };
    if (std::any_of(m_edges.begin(), m_edges.end(), isNear)) return true;
    return !isFence() && isEnclosed(point, m_edges);
}

bool PlaneRegion::meetsEdge(const PlanePiece& piece, const PlanePiece& edge, double allowance) const {
    if (piece.isStraight()) {
        const AcGeVector2d run = piece.end - piece.start;
        const AcGeVector2d side = edge.end - edge.start;
        const double from = side.crossProduct(piece.start - edge.start);
        const double to = side.crossProduct(piece.end - edge.start);
        const double low = run.crossProduct(edge.start - piece.start);
        const double high = run.crossProduct(edge.end - piece.start);
        if (((from < 0.0 && to > 0.0) || (from > 0.0 && to < 0.0)) &&
            ((low < 0.0 && high > 0.0) || (low > 0.0 && high < 0.0)))
            return true;
        return distanceToSegment(edge.start, piece.start, piece.end) <= allowance ||
               distanceToEdge(piece.start, edge) <= allowance ||
               distanceToEdge(piece.end, edge) <= allowance ||
               distanceToSegment(edge.end, piece.start, piece.end) <= allowance;
    }
    std::vector<double> cuts;
    addCuts(piece, edge, allowance, cuts);
    return !cuts.empty() || distanceToEdge(piece.start, edge) <= allowance ||
           distanceToEdge(piece.end, edge) <= allowance;
}

// Where the piece comes to the edge. A segment that runs along it is cut where the edge ends; an edge that is
// a point lies on the piece where both lines along the axes through it meet the piece there.
void PlaneRegion::addCuts(const PlanePiece& piece, const PlanePiece& edge, double allowance,
                          std::vector<double>& cuts) const {
    const auto cutBy = [&](const AcGeVector2d& normal) {
        const PieceParameters meetings = piece.meetings(edge.start, normal);
        for (int i = 0; i < meetings.count; ++i) {
            const double t = meetings.values[static_cast<std::size_t>(i)];
            if (distanceToEdge(piece.at(t), edge) <= allowance) cuts.push_back(t);
        }
    };
    const AcGeVector2d side = edge.end - edge.start;
    if (const double length = side.length(); length > 0.0) {
        cutBy(side.perpVector() / length);
    } else {
        cutBy(AcGeVector2d::kXAxis);
        cutBy(AcGeVector2d::kYAxis);
    }
    const AcGeVector2d run = piece.end - piece.start;
    if (!piece.isStraight() || run.lengthSqrd() == 0.0) return;
    for (const AcGePoint2d& end : {edge.start, edge.end})
        if (distanceToSegment(end, piece.start, piece.end) <= allowance)
            cuts.push_back(std::clamp((end - piece.start).dotProduct(run) / run.lengthSqrd(), 0.0, 1.0));
}

bool PlaneRegion::touches(const PlanePiece& piece, double reach) const {
    const PlaneBox hull = piece.hull();
    const double allowance = std::max(allowanceFor(hull), AcGe::pointAllowance(AcGeContext::gTol, reach));
    if (isEmpty() || !m_box.meets(hull, allowance)) return false;
    if (contains(piece.start, allowance) || contains(piece.end, allowance)) return true;
    return std::any_of(m_edges.begin(), m_edges.end(),
                       [&](const PlanePiece& edge) { return meetsEdge(piece, edge, allowance); });
}

// Between two cuts the piece is on one side; the middle says on which.
bool PlaneRegion::holds(const PlanePiece& piece) const {
    const PlaneBox hull = piece.hull();
    const double allowance = allowanceFor(hull);
    if (isEmpty() || !contains(piece.start, allowance) || !contains(piece.end, allowance)) return false;
    if (isConvex() && (piece.isStraight() || m_box.holds(hull))) return true;
    std::vector<double> cuts{0.0, 1.0};
    for (const PlanePiece& edge : m_edges) addCuts(piece, edge, allowance, cuts);
    std::sort(cuts.begin(), cuts.end());
    for (std::size_t i = 0; i + 1 < cuts.size(); ++i)
        if (cuts[i] < cuts[i + 1] && !contains(piece.at((cuts[i] + cuts[i + 1]) / 2.0), allowance))
            return false;
    return true;
}

bool PlaneRegion::holdsHull(const PlaneBox& hull) const {
    if (isFence() || !m_box.holds(hull)) return false;
    if (isConvex()) return true;
    const PlaneRegion held(PickRegion::box(hull.low, hull.high), AcGePoint2d::kOrigin);
    return isEnclosed(hull.low, m_edges) &&
           std::none_of(m_edges.begin(), m_edges.end(), [&](const auto& edge) { return held.touches(edge); });
}

// A side that is there twice, as one to a hole and back is, has the region on both of its sides.
bool PlaneRegion::hasEdgeWithin(const std::vector<PlanePiece>& boundary) const {
    constexpr double besideCorner = 1e-6;
    constexpr double offEdge = 16.0; // allowances
    const auto isOut = [&](const PlanePiece& edge, double t) {
        const AcGePoint2d point = edge.at(t);
        if (!isEnclosed(point, boundary)) return false;
        const PlaneRegion here(PickRegion::box(point, point), AcGePoint2d::kOrigin);
        if (std::any_of(boundary.begin(), boundary.end(),
                        [&](const PlanePiece& piece) { return here.touches(piece); }))
            return false;
        const AcGeVector2d across = (edge.end - edge.start).perpVector().normal() * (offEdge * m_allowance);
        return !isEnclosed(point + across, m_edges) || !isEnclosed(point - across, m_edges);
    };
    return std::any_of(m_edges.begin(), m_edges.end(), [&](const PlanePiece& edge) {
        return isOut(edge, besideCorner) || isOut(edge, 0.5) || isOut(edge, 1.0 - besideCorner);
    });
}

bool isEnclosed(const AcGePoint2d& point, const std::vector<PlanePiece>& boundary) {
    bool isWithin = false;
    for (const PlanePiece& piece : boundary) isWithin ^= piece.isCrossedBeside(point);
    return isWithin;
}

} // namespace hostkit
