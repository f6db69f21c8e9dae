#include "curvepaths.h"

#include "db2dpolyline.h"
#include "db3dpolyline.h"
#include "dbarc.h"
#include "dbcircle.h"
#include "dbellipse.h"
#include "dbline.h"
#include "dbobjptr.h"
#include "dbpolyline.h"
#include "dbspline.h"
#include "genurb3d.h"
#include "shownspline.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>

namespace hostkit {

namespace {

constexpr double fullTurn = 2.0 * std::numbers::pi;

bool appendLine(PicturePath& path, const AcDbLine& line) {
    path.moveTo(line.startPoint());
    path.lineTo(line.endPoint());
    return true;
}

bool appendRound(PicturePath& path, const AcGePoint3d& center, const AcGeVector3d& normal, double radius,
                 double start, double sweep) {
    AcGeVector3d x, y;
    AcGe::arbitraryAxes(normal, x, y);
    PicturePath piece;
    piece.arc(center, x * radius, y * radius, start, sweep);
    if (std::abs(sweep) == fullTurn) piece.close();
    path.append(piece);
    return !piece.isEmpty();
}

// The sweep from start to end the counter-clockwise way; equal angles are a full turn.
double sweepOf(double start, double end) {
    double sweep = std::fmod(end - start, fullTurn);
    if (sweep <= 0.0) sweep += fullTurn;
    return sweep;
}

bool appendEllipse(PicturePath& path, const AcDbEllipse& ellipse) {
    const double sweep = sweepOf(ellipse.startParam(), ellipse.endParam());
    PicturePath piece;
    piece.arc(ellipse.center(), ellipse.majorAxis(), ellipse.minorAxis(), ellipse.startParam(), sweep);
    if (sweep == fullTurn) piece.close();
    path.append(piece);
    return !piece.isEmpty();
}

bool appendDbSpline(PicturePath& path, const AcDbSpline& spline) {
    const AcGeNurbCurve3d curve = shownCurve(spline);
    if (curve.isEmpty()) return false;
    appendSpline(path, curve);
    return true;
}

// Straight lines and arcs through the vertices of a polyline, in its own plane.
class VertexPath {
public:
    /// The bulge is that of the edge which leaves the vertex.
    void add(const AcGePoint3d& vertex, double bulge) {
        if (m_piece.isEmpty())
            m_piece.moveTo(m_first = vertex);
        else
            m_piece.bulgeTo(vertex, m_bulge);
        m_bulge = bulge;
    }

    /// Closes what the polyline closes and puts it in its place in the world. False without a vertex.
    template <class Polyline>
    bool appendTo(PicturePath& path, const Polyline& polyline) {
        if (m_piece.isEmpty()) return false;
        if (polyline.isClosed()) {
            if (m_bulge != 0.0) m_piece.bulgeTo(m_first, m_bulge);
            m_piece.close();
        }
        AcGeMatrix3d toWorld;
        polyline.getEcs(toWorld);
        m_piece.transformBy(toWorld);
        path.append(m_piece);
        return true;
    }

private:
    PicturePath m_piece;
    AcGePoint3d m_first{};
    double m_bulge = 0.0;
};

bool appendPolyline(PicturePath& path, const AcDbPolyline& polyline) {
    VertexPath vertices;
    for (unsigned i = 0; i < polyline.numVerts(); ++i) {
        AcGePoint2d point;
        double bulge = 0.0;
        polyline.getPointAt(i, point);
        polyline.getBulgeAt(i, bulge);
        vertices.add(AcGePoint3d(point.x, point.y, polyline.elevation()), bulge);
    }
    return vertices.appendTo(path, polyline);
}

// Vertices of an old-style polyline, whether it stands in a drawing or not.
template <class Polyline, class Vertex, class Visit>
void visitVertices(const Polyline& polyline, Visit visit) {
    const std::unique_ptr<AcDbObjectIterator> iterator(polyline.vertexIterator());
    for (; iterator && !iterator->done(); iterator->step()) {
        if (const Vertex* vertex = Vertex::cast(iterator->entity())) {
            visit(*vertex);
            continue;
        }
        const AcDbObjectPointer<Vertex> vertex(iterator->objectId(), AcDb::kForRead);
        if (vertex.object()) visit(*vertex);
    }
}

bool append2dPolyline(PicturePath& path, const AcDb2dPolyline& polyline) {
    VertexPath vertices;
    visitVertices<AcDb2dPolyline, AcDb2dVertex>(polyline, [&](const AcDb2dVertex& vertex) {
        if (vertex.vertexType() == AcDb::k2dSplineCtlVertex) return;
        vertices.add(AcGePoint3d(vertex.position().x, vertex.position().y, polyline.elevation()),
                     vertex.bulge());
    });
    return vertices.appendTo(path, polyline);
}

} // namespace

AcDbPolyline lightPolyline(const AcDb2dPolyline& polyline) {
    AcDbPolyline light;
    (void)light.setNormal(polyline.normal());
    (void)light.setElevation(polyline.elevation());
    visitVertices<AcDb2dPolyline, AcDb2dVertex>(polyline, [&](const AcDb2dVertex& vertex) {
        if (vertex.vertexType() == AcDb::k2dSplineCtlVertex) return;
        (void)light.addVertexAt(light.numVerts(), AcGePoint2d(vertex.position().x, vertex.position().y),
                                vertex.bulge(), vertex.startWidth(), vertex.endWidth());
    });
    (void)light.setClosed(polyline.isClosed());
    return light;
}

namespace {

bool append3dPolyline(PicturePath& path, const AcDb3dPolyline& polyline) {
    PicturePath piece;
    visitVertices<AcDb3dPolyline, AcDb3dPolylineVertex>(polyline, [&](const AcDb3dPolylineVertex& vertex) {
        if (vertex.vertexType() != AcDb::k3dControlVertex) piece.lineTo(vertex.position());
    });
    if (piece.isEmpty()) return false;
    if (polyline.isClosed()) piece.close();
    path.append(piece);
    return true;
}

} // namespace

void appendSpline(PicturePath& path, const AcGeNurbCurve3d& curve) {
    if (curve.isEmpty()) return;
    PicturePath piece;
    const int split = curve.degree() <= 3 && !curve.isRational() ? 1 : 4;
    // Derivatives at a knot are those of the span behind it: the end of a span is looked at from just inside.
    constexpr double inside = 1e-9;
    AcGeVector3dArray derivatives;
    for (int i = curve.degree(); i < curve.numControlPoints(); ++i) {
        const double from = curve.knotAt(i);
        const double step = (curve.knotAt(i + 1) - from) / split;
        if (!(step > 0.0)) continue;
        for (int k = 0; k < split; ++k) {
            const double begin = from + step * k;
            const AcGePoint3d start = curve.evalPoint(begin, 1, derivatives);
            const AcGeVector3d leaving = derivatives.isEmpty() ? AcGeVector3d() : derivatives[0];
            const AcGePoint3d end = curve.evalPoint(begin + step * (1.0 - inside), 1, derivatives);
            const AcGeVector3d arriving = derivatives.isEmpty() ? AcGeVector3d() : derivatives[0];
            if (piece.isEmpty()) piece.moveTo(start);
            piece.curveTo(start + leaving * (step / 3.0), end - arriving * (step / 3.0), end);
        }
    }
    path.append(piece);
}

bool appendCurve(PicturePath& path, const AcDbEntity& entity) {
    if (const auto* polyline = AcDbPolyline::cast(&entity)) return appendPolyline(path, *polyline);
    if (const auto* line = AcDbLine::cast(&entity)) return appendLine(path, *line);
    if (const auto* arc = AcDbArc::cast(&entity))
        return appendRound(path, arc->center(), arc->normal(), arc->radius(), arc->startAngle(),
                           sweepOf(arc->startAngle(), arc->endAngle()));
    if (const auto* circle = AcDbCircle::cast(&entity))
        return appendRound(path, circle->center(), circle->normal(), circle->radius(), 0.0, fullTurn);
    if (const auto* ellipse = AcDbEllipse::cast(&entity)) return appendEllipse(path, *ellipse);
    if (const auto* spline = AcDbSpline::cast(&entity)) return appendDbSpline(path, *spline);
    if (const auto* polyline = AcDb2dPolyline::cast(&entity)) return append2dPolyline(path, *polyline);
    if (const auto* polyline = AcDb3dPolyline::cast(&entity)) return append3dPolyline(path, *polyline);
    return false;
}

namespace {

struct WideSegment {
    AcGePoint3d start;
    AcGePoint3d end;
    double bulge;
    double startWidth;
    double endWidth;
};

std::vector<WideSegment> segmentsOf(const AcDbPolyline& polyline) {
    std::vector<WideSegment> segments;
    const unsigned count = polyline.numVerts();
    const unsigned wanted = polyline.isClosed() ? count : std::max(count, 1u) - 1;
    for (unsigned i = 0; i < wanted; ++i) {
        AcGePoint2d start, end;
        WideSegment segment{};
        polyline.getPointAt(i, start);
        polyline.getPointAt((i + 1) % count, end);
        polyline.getBulgeAt(i, segment.bulge);
        polyline.getWidthsAt(i, segment.startWidth, segment.endWidth);
        segment.start.set(start.x, start.y, polyline.elevation());
        segment.end.set(end.x, end.y, polyline.elevation());
        segments.push_back(segment);
    }
    return segments;
}

// The outline of a segment whose width changes along it, an arc by chords.
PicturePath taperedOutline(const WideSegment& segment) {
    constexpr int chordsOfArc = 16;
    const int pieces = segment.bulge == 0.0 ? 1 : chordsOfArc;
    const double angle = 4.0 * std::atan(segment.bulge);
    const AcGeVector3d chord = segment.end - segment.start;
    std::vector<AcGePoint3d> left, right;
    for (int i = 0; i <= pieces; ++i) {
        const double share = static_cast<double>(i) / pieces;
        AcGePoint3d at = segment.start + chord * share;
        AcGeVector3d direction = chord;
        if (segment.bulge != 0.0) {
            const AcGePoint3d center = segment.start + chord * 0.5 +
                                       AcGeVector3d(-chord.y, chord.x, 0.0) *
                                           ((1.0 - segment.bulge * segment.bulge) / (4.0 * segment.bulge));
            at = segment.start;
            at.rotateBy(angle * share, AcGeVector3d::kZAxis, center);
            direction.rotateBy(angle * (share - 0.5), AcGeVector3d::kZAxis);
        }
        const double half = (segment.startWidth + (segment.endWidth - segment.startWidth) * share) / 2.0;
        const AcGeVector3d across = AcGeVector3d(-direction.y, direction.x, 0.0).normal() * half;
        left.push_back(at + across);
        right.push_back(at - across);
    }
    PicturePath path;
    for (const AcGePoint3d& point : left) path.lineTo(point);
    std::for_each(right.rbegin(), right.rend(), [&](const AcGePoint3d& point) { path.lineTo(point); });
    path.close();
    return path;
}

} // namespace

std::vector<WidePiece> widePieces(const AcDbPolyline& polyline) {
    std::vector<WidePiece> pieces;
    if (!polyline.hasWidth()) return pieces;
    double width = 0.0;
    if (polyline.getConstantWidth(width) == Acad::eOk) {
        pieces.push_back({PicturePath(), width});
        appendPolyline(pieces.back().path, polyline);
        return pieces;
    }
    AcGeMatrix3d toWorld;
    polyline.getEcs(toWorld);
    for (const WideSegment& segment : segmentsOf(polyline)) {
        WidePiece piece{PicturePath(), segment.startWidth};
        if (segment.startWidth != segment.endWidth) {
            piece = {taperedOutline(segment), 0.0};
        } else {
            piece.path.moveTo(segment.start);
            piece.path.bulgeTo(segment.end, segment.bulge);
        }
        piece.path.transformBy(toWorld);
        pieces.push_back(std::move(piece));
    }
    return pieces;
}

} // namespace hostkit
