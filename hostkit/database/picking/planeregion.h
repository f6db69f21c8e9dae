// A region of the view plane near a local origin: what it holds, and what touches it; leaves out where that
// origin is.
#pragma once

#include "pickregion.h"
#include "planepiece.h"

#include <vector>

namespace hostkit {

/// Answers about points and pieces, in coordinates from the given origin. Edges count as the region's, with
/// the point test's allowance for coordinates as far out as the region's own and the piece's from the world's
/// or the local origin, whichever is more.
class PlaneRegion {
public:
    PlaneRegion(const PickRegion& region, const AcGePoint2d& origin);

    bool isEmpty() const { return m_edges.empty(); }
    bool isFence() const { return m_kind == PickRegion::Kind::fence; }
    /// Corners on a straight line between two of its points are the region's too.
    bool isConvex() const { return m_kind == PickRegion::Kind::box; }
    const PlaneBox& box() const { return m_box; }
    /// Some point of it.
    const AcGePoint2d& corner() const { return m_edges.front().start; }
    double allowance() const { return m_allowance; }
    double allowanceFor(const PlaneBox& hull) const;

    bool contains(const AcGePoint2d& point) const { return contains(point, m_allowance); }
    /// `reach`: the piece was cut from something with coordinates that large.
    bool touches(const PlanePiece& piece, double reach = 0.0) const;
    /// All of the piece lies within.
    bool holds(const PlanePiece& piece) const;
    /// Holds every figure with that hull, without a look at the figure.
    bool holdsHull(const PlaneBox& hull) const;
    /// A side of the region lies within the boundary and off it: not all of what the boundary encloses is the
    /// region's, though the boundary is.
    bool hasEdgeWithin(const std::vector<PlanePiece>& boundary) const;

private:
    bool contains(const AcGePoint2d& point, double allowance) const;
    bool meetsEdge(const PlanePiece& piece, const PlanePiece& edge, double allowance) const;
    void addCuts(const PlanePiece& piece, const PlanePiece& edge, double allowance,
                 std::vector<double>& cuts) const;

    PickRegion::Kind m_kind;
    std::vector<PlanePiece> m_edges; ///< straight ones
    PlaneBox m_box;
    double m_allowance = 0.0;
    double m_far = 0.0; ///< the largest coordinate before it came to the local origin
};

/// Whether the point lies within the pieces, by even and odd; a point on them is on either side.
bool isEnclosed(const AcGePoint2d& point, const std::vector<PlanePiece>& boundary);

} // namespace hostkit
