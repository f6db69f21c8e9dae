#include "curveloops.h"

#include "amgeometry.h"
#include "curveintersection.h"
#include "dbcurve.h"
#include "gearc3d.h"
#include "geell3d.h"
#include "genurb3d.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace hostkit {

namespace {

using modeler::Shape;
using modeler::ShapeCurve;
using modeler::ShapeSurface;
using Index = Shape::Index;

/// A stretch of a curve, from its start to its end; `edge` runs against it where `isReversed`.
struct Stretch {
    AcGePoint3d start, end;
    Shape::Edge edge;
    bool isReversed = false;
    void turn() {
        std::swap(start, end);
        isReversed = !isReversed;
    }
};
using Chain = std::vector<Stretch>;

bool isSame(const AcGePoint3d& a, const AcGePoint3d& b) { return a.distanceTo(b) <= AModeler::gEpsAbs; }

void appendLine(const AcGePoint3d& start, const AcGePoint3d& end, Chain& chain) {
    const AcGeVector3d way = end - start;
    if (!(way.length() > AModeler::gEpsAbs)) return;
    Stretch stretch{start, end, {}, false};
    stretch.edge.to = way.length();
    stretch.edge.curve = {ShapeCurve::Kind::line, start, way / way.length(), {}};
    chain.push_back(stretch);
}

void appendRound(const AcGePoint3d& center, const AcGeVector3d& normal, const AcGeVector3d& major,
                 double ratio, double from, double to, Chain& chain) {
    Stretch stretch;
    stretch.edge.from = from;
    stretch.edge.to = to;
    stretch.edge.curve = {ShapeCurve::Kind::ellipse, center, normal, major, ratio};
    stretch.start = stretch.edge.curve.at(from);
    stretch.end = stretch.edge.curve.at(to);
    chain.push_back(stretch);
}

void appendEllipse(const AcGeEllipArc3d& arc, Chain& chain) {
    const AcGeVector3d major = arc.majorAxis() * arc.majorRadius(),
                       minor = arc.minorAxis() * arc.minorRadius();
    // The longer axis is the major one.
    if (arc.minorRadius() <= arc.majorRadius())
        return appendRound(arc.center(), arc.normal(), major, arc.minorRadius() / arc.majorRadius(),
                           arc.startAng(), arc.endAng(), chain);
    const double turn = std::numbers::pi / 2.0;
    appendRound(arc.center(), arc.normal(), minor, arc.majorRadius() / arc.minorRadius(),
                arc.startAng() - turn, arc.endAng() - turn, chain);
}

void appendChords(const AcGeCurve3d& curve, int count, Chain& chain) {
    AcGeInterval interval;
    curve.getInterval(interval);
    const double low = interval.lowerBound(), high = interval.upperBound();
    AcGePoint3d last = curve.evalPoint(low);
    for (int step = 1; step <= count; ++step) {
        const AcGePoint3d next = curve.evalPoint(low + (high - low) * step / count);
        appendLine(last, next, chain);
        last = next;
    }
}

void appendGeometry(const AcGeCurve3d& curve, Chain& chain) {
    if (curve.type() == AcGe::kCircArc3d) {
        const auto& arc = static_cast<const AcGeCircArc3d&>(curve);
        return appendRound(arc.center(), arc.normal(), arc.refVec() * arc.radius(), 1.0, arc.startAng(),
                           arc.endAng(), chain);
    }
    if (curve.type() == AcGe::kEllipArc3d)
        return appendEllipse(static_cast<const AcGeEllipArc3d&>(curve), chain);
    if (curve.type() == AcGe::kNurbCurve3d) {
        constexpr int chordsOfSpan = 32;
        const auto& spline = static_cast<const AcGeNurbCurve3d&>(curve);
        return appendChords(curve, chordsOfSpan * std::max(spline.numControlPoints() - spline.degree(), 1),
                            chain);
    }
    appendChords(curve, 1, chain);
}

Chain chainOf(const AcDbCurve& curve) {
    Chain chain;
    CurvePieces pieces;
    if (!curve.pieces(pieces, false)) return chain;
    for (std::size_t place = 0; place < pieces.count(); ++place)
        appendGeometry(pieces.curveOf(place).curve(), chain);
    return chain;
}

/// Closed chains, in the order of their first curves. An open one goes on with the first of those left that
/// meets its end.
std::vector<Chain> closedChains(const std::vector<const AcDbCurve*>& curves) {
    std::vector<Chain> open, closed;
    for (const AcDbCurve* const curve : curves) {
        Chain chain = chainOf(*curve);
        if (!chain.empty()) open.push_back(std::move(chain));
    }
    std::vector<bool> isUsed(open.size(), false);
    for (std::size_t first = 0; first < open.size(); ++first) {
        if (isUsed[first]) continue;
        Chain chain = open[first];
        std::vector<std::size_t> members{first};
        for (std::size_t other = first + 1;
             other < open.size() && !isSame(chain.front().start, chain.back().end); ++other) {
            const bool isMember = std::find(members.begin(), members.end(), other) != members.end();
            if (isUsed[other] || isMember || isSame(open[other].front().start, open[other].back().end))
                continue;
            const bool follows = isSame(chain.back().end, open[other].front().start);
            if (!follows && !isSame(chain.back().end, open[other].back().end)) continue;
            Chain next = open[other];
            if (!follows) {
                std::reverse(next.begin(), next.end());
                for (Stretch& stretch : next) stretch.turn();
            }
            chain.insert(chain.end(), next.begin(), next.end());
            members.push_back(other);
            other = first; // from the first one again
        }
        if (!isSame(chain.front().start, chain.back().end)) continue;
        for (const std::size_t member : members) isUsed[member] = true;
        closed.push_back(std::move(chain));
    }
    return closed;
}

Shape shapeOfChain(const Chain& chain) {
    Shape shape;
    for (const Stretch& stretch : chain) shape.vertices.push_back(stretch.start);
    for (std::size_t place = 0; place < chain.size(); ++place) {
        Shape::Edge edge = chain[place].edge;
        edge.start = static_cast<Index>(place);
        edge.end = static_cast<Index>((place + 1) % chain.size());
        if (chain[place].isReversed) std::swap(edge.start, edge.end);
        shape.edges.push_back(edge);
        shape.coedges.push_back({static_cast<Index>(place), chain[place].isReversed});
    }
    shape.loopStarts.push_back(static_cast<Index>(chain.size()));
    Shape::Face face;
    face.surface.origin = shape.vertices.front();
    face.isDouble = true;
    face.loopCount = 1;
    shape.faces.push_back(face);
    shape.shellLumps.push_back(0);
    return shape;
}

bool looksUp(const AcGeVector3d& normal) {
    constexpr double flat = 1e-9;
    for (const double value : {normal.z, normal.y, normal.x})
        if (std::abs(value) > flat) return value > 0.0;
    return true;
}

bool isFlat(const Shape& shape, const AcGeVector3d& normal) {
    constexpr double parallel = 1e-9;
    const AcGePoint3d base = shape.vertices.front();
    for (const AcGePoint3d& vertex : shape.vertices)
        if (std::abs(normal.dotProduct(vertex - base)) > AModeler::gEpsAbs) return false;
    return std::all_of(shape.edges.begin(), shape.edges.end(), [&](const Shape::Edge& edge) {
        return edge.curve.kind == ShapeCurve::Kind::line ||
               normal.crossProduct(edge.curve.direction).length() <= parallel;
    });
}

void turnLoop(Shape& shape) {
    std::reverse(shape.coedges.begin(), shape.coedges.end());
    for (Shape::Coedge& coedge : shape.coedges) coedge.isReversed = !coedge.isReversed;
}

// Lines a b and c d meet other than in a common end of neighbours.
bool meet(const AcGePoint2d& a, const AcGePoint2d& b, const AcGePoint2d& c, const AcGePoint2d& d) {
    const auto side = [](const AcGePoint2d& p, const AcGePoint2d& q, const AcGePoint2d& r) {
        const double value = (q.x - p.x) * (r.y - p.y) - (q.y - p.y) * (r.x - p.x);
        const double allowed = AModeler::gEpsAbs * (q - p).length();
        return value > allowed ? 1 : value < -allowed ? -1 : 0;
    };
    const auto overlap = [](double a1, double a2, double b1, double b2) {
        return std::min(a1, a2) <= std::max(b1, b2) && std::min(b1, b2) <= std::max(a1, a2);
    };
    return overlap(a.x, b.x, c.x, d.x) && overlap(a.y, b.y, c.y, d.y) && side(a, b, c) * side(a, b, d) <= 0 &&
           side(c, d, a) * side(c, d, b) <= 0;
}

bool crossesItself(const Shape& shape, const AcGeVector3d& normal) {
    const modeler::Facets facets =
        modeler::facetsOf(shape, {}, [](const auto&, const auto&, double) { return nullptr; });
    if (!facets.polyhedron) return true;
    const AcGeVector3d x = normal.perpVector(), y = normal.crossProduct(x);
    std::vector<AcGePoint2d> points;
    for (const Index corner : facets.polyhedron->corners) {
        const AcGeVector3d offset = facets.polyhedron->points[corner] - shape.vertices.front();
        points.emplace_back(offset.dotProduct(x), offset.dotProduct(y));
    }
    // Segments sorted by their low x are compared with those that begin before they end.
    const std::size_t count = points.size();
    std::vector<std::size_t> order(count);
    for (std::size_t place = 0; place < count; ++place) order[place] = place;
    const auto low = [&](std::size_t i) { return std::min(points[i].x, points[(i + 1) % count].x); };
    const auto high = [&](std::size_t i) { return std::max(points[i].x, points[(i + 1) % count].x); };
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return low(a) < low(b); });
    for (std::size_t i = 0; i < count; ++i)
        for (std::size_t j = i + 1; j < count && low(order[j]) <= high(order[i]); ++j) {
            const std::size_t a = order[i], b = order[j];
            const bool areNeighbours = (a + 1) % count == b || (b + 1) % count == a;
            if (!areNeighbours &&
                meet(points[a], points[(a + 1) % count], points[b], points[(b + 1) % count]))
                return true;
        }
    return false;
}

} // namespace

std::vector<Shape> sheetsOfCurves(const std::vector<const AcDbCurve*>& curves) {
    std::vector<Shape> sheets;
    for (const Chain& chain : closedChains(curves)) {
        Shape shape = shapeOfChain(chain);
        const AcGeVector3d area = areaVectorOf(shape, shape.faces.front());
        if (!(area.length() > AModeler::gEpsAbs * AModeler::gEpsAbs)) continue;
        AcGeVector3d normal = area / area.length();
        if (!looksUp(normal)) {
            normal = -normal;
            turnLoop(shape);
        }
        shape.faces.front().surface.axis = normal;
        shape.faces.front().surface.major = normal.perpVector();
        if (isFlat(shape, normal) && !crossesItself(shape, normal)) sheets.push_back(std::move(shape));
    }
    return sheets;
}

} // namespace hostkit
