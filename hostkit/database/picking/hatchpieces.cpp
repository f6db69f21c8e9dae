#include "hatchpieces.h"

#include "dbhatch.h"
#include "hatchcurves.h"

#include "gearc2d.h"
#include "geell2d.h"
#include "genurb2d.h"

#include <algorithm>
#include <memory>
#include <numeric>

namespace hostkit {

namespace {

using Pieces = std::vector<PlanePiece>;

/// The plane of a hatch: 2d points at its elevation, seen in the view.
struct HatchPlane {
    ViewMap toView;
    double elevation;
    double deviation;
    const PlaneBox* near;

    AcGePoint3d inSpace(const AcGePoint2d& point) const { return {point.x, point.y, elevation}; }
    AcGePoint2d operator()(const AcGePoint2d& point) const { return toView(inSpace(point)); }
    AcGeVector2d operator()(const AcGeVector2d& vector) const {
        return toView(AcGeVector3d(vector.x, vector.y, 0.0));
    }
};

void appendSplineEdge(Pieces& pieces, const HatchPlane& plane, const AcGeNurbCurve2d& edge) {
    AcGePoint3dArray points;
    AcGeDoubleArray weights;
    for (int i = 0; i < edge.numControlPoints(); ++i) {
        points.append(plane.inSpace(edge.controlPointAt(i)));
        weights.append(edge.weightAt(i));
    }
    const AcGeNurbCurve3d curve(edge.degree(), edge.knots(), points, weights);
    appendSpline(pieces, plane.toView, curve, plane.deviation, plane.near);
}

Pieces piecesOf(const HatchEdge& edge, const HatchPlane& plane) {
    Pieces pieces;
    const std::unique_ptr<AcGeCurve2d> curve = curveOf(edge);
    if (const auto* arc = dynamic_cast<const AcGeCircArc2d*>(curve.get())) {
        const AcGeVector2d across =
            arc->isClockWise() ? -arc->refVec().perpVector() : arc->refVec().perpVector();
        appendArc(pieces, plane(arc->center()), plane(arc->refVec() * arc->radius()),
                  plane(across * arc->radius()), arc->startAng(), arc->endAng() - arc->startAng());
    } else if (const auto* ellipse = dynamic_cast<const AcGeEllipArc2d*>(curve.get())) {
        appendArc(pieces, plane(ellipse->center()), plane(ellipse->majorAxis() * ellipse->majorRadius()),
                  plane(ellipse->minorAxis() * ellipse->minorRadius()), ellipse->startAng(),
                  ellipse->endAng() - ellipse->startAng());
    } else if (const auto* spline = dynamic_cast<const AcGeNurbCurve2d*>(curve.get())) {
        appendSplineEdge(pieces, plane, *spline);
    } else if (edge.kind == HatchEdge::kLine) {
        pieces.push_back(PlanePiece::segment(plane(edge.start), plane(edge.end)));
    }
    return pieces;
}

void turnRound(Pieces& edge) {
    std::reverse(edge.begin(), edge.end());
    for (PlanePiece& piece : edge) std::swap(piece.start, piece.end);
}

bool isRing(const Pieces& edge) { return edge.front().start.isEqualTo(edge.back().end); }

/// Joins the edges to one chain, each turned the way that brings it nearer to the one before. What rounding
/// leaves between them is taken up by the next one; a real gap gets a segment.
class ChainMaker {
public:
    void add(Pieces edge, const Pieces* next) {
        if (edge.empty()) return;
        const bool isClosed = isRing(edge);
        if (!isClosed && m_isOpen) {
            if (distance(m_end, edge.back().end) < distance(m_end, edge.front().start)) turnRound(edge);
            bridge(edge.front().start);
            edge.front().start = m_end;
        } else if (!isClosed) {
            if (next && !next->empty() &&
                nearest(edge.front().start, *next) < nearest(edge.back().end, *next))
                turnRound(edge);
            m_start = edge.front().start;
            m_isOpen = true;
        }
        if (!isClosed) m_end = edge.back().end;
        m_chain.insert(m_chain.end(), edge.begin(), edge.end());
    }
    Pieces finished() {
        if (m_isOpen && distance(m_end, m_start) > 0.0)
            m_chain.push_back(PlanePiece::segment(m_end, m_start));
        return std::move(m_chain);
    }

private:
    static double distance(const AcGePoint2d& a, const AcGePoint2d& b) { return a.distanceTo(b); }
    static double nearest(const AcGePoint2d& point, const Pieces& edge) {
        return std::min(distance(point, edge.front().start), distance(point, edge.back().end));
    }
    void bridge(const AcGePoint2d& to) {
        if (m_end.isEqualTo(to)) return;
        m_chain.push_back(PlanePiece::segment(m_end, to));
        m_end = to;
    }

    Pieces m_chain;
    AcGePoint2d m_start;
    AcGePoint2d m_end;
    bool m_isOpen = false; ///< some edge that is no ring by itself was added
};

Pieces edgeChain(const HatchLoop& loop, const HatchPlane& plane) {
    std::vector<Pieces> edges;
    for (const HatchEdge& edge : loop.edges) edges.push_back(piecesOf(edge, plane));
    ChainMaker chain;
    for (std::size_t i = 0; i < edges.size(); ++i)
        chain.add(edges[i], i + 1 < edges.size() ? &edges[i + 1] : nullptr);
    return chain.finished();
}

Pieces polylineChain(const HatchLoop& loop, const HatchPlane& plane) {
    Pieces pieces;
    const std::size_t count = loop.vertices.size();
    for (std::size_t i = 0; count > 1 && i < count; ++i)
        appendBulge(pieces, plane.toView, plane.inSpace(loop.vertices[i]),
                    plane.inSpace(loop.vertices[(i + 1) % count]), loop.hasBulges ? loop.bulges[i] : 0.0,
                    AcGeVector3d::kZAxis);
    return pieces;
}

// Where all loops count, nothing need be known of how they lie.
std::vector<std::size_t> boundingLoops(const AcDbHatch& hatch) {
    const std::vector<HatchLoop>& loops = hatch.loops();
    const bool countsAll = hatch.hatchStyle() == AcDbHatch::kNormal &&
                           std::none_of(loops.begin(), loops.end(), [](const HatchLoop& loop) {
                               return (loop.type & AcDbHatch::kTextbox) != 0;
                           });
    std::vector<std::size_t> indices(loops.size());
    std::iota(indices.begin(), indices.end(), std::size_t{0});
    if (countsAll) return indices;
    indices = hatch.filledArea().loops();
    indices.erase(std::unique(indices.begin(), indices.end()), indices.end());
    return indices;
}

} // namespace

std::vector<PlanePiece> filledBoundary(const AcDbHatch& hatch, const ViewMap& toView, double deviation,
                                       const PlaneBox* near) {
    AcGeMatrix3d toWorld;
    hatch.getEcs(toWorld);
    const HatchPlane plane{toView * toWorld, hatch.elevation(), deviation, near};
    Pieces boundary;
    for (const std::size_t index : boundingLoops(hatch)) {
        const HatchLoop& loop = hatch.loops()[index];
        const Pieces pieces = loop.edges.empty() ? polylineChain(loop, plane) : edgeChain(loop, plane);
        boundary.insert(boundary.end(), pieces.begin(), pieces.end());
    }
    return boundary;
}

} // namespace hostkit
