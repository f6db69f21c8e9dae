#include "entityshapes.h"

#include "widepieces.h"

#include "hatchpieces.h"
#include "viewpieces.h"

#include "db2dpolyline.h"
#include "db3dpolyline.h"
#include "dbarc.h"
#include "dbattdef.h"
#include "dbblockreference.h"
#include "dbcircle.h"
#include "dbellipse.h"
#include "dbface.h"
#include "dbhatch.h"
#include "dbline.h"
#include "dbmtext.h"
#include "dbpoint.h"
#include "dbpolyline.h"
#include "dbray.h"
#include "dbsolid.h"
#include "dbspline.h"
#include "dbtext.h"
#include "dbtrace.h"
#include "dbxline.h"

#include "gevec3d.h"
#include "shownspline.h"

namespace hostkit {

namespace {

/// One kind's way to show itself, for an entity that is known to be of it.
class EntityShower {
public:
    EntityShower(RegionProbe& probe, const ViewMap& toView, bool isInBlock)
        : m_probe(probe)
        , m_toView(toView)
        , m_isInBlock(isInBlock) {}

    void show(const AcDbEntity& entity);

private:
    template <typename Kind>
    bool showAs(const AcDbEntity& entity) {
        const auto* own = Kind::cast(&entity);
        if (own) showOne(*own);
        return own != nullptr;
    }
    template <typename... Kinds>
    bool showAsFirstOf(const AcDbEntity& entity) {
        return (showAs<Kinds>(entity) || ...);
    }

    void showOne(const AcDbLine& line) {
        m_probe.addPiece(PlanePiece::segment(m_toView(line.startPoint()), m_toView(line.endPoint())));
    }
    void showOne(const AcDbArc& arc) { showRound(arc, arc.startAngle(), arc.totalAngle()); }
    void showOne(const AcDbCircle& circle) { showRound(circle, 0.0, AcGe::kTwoPi); }
    void showOne(const AcDbEllipse& ellipse);
    void showOne(const AcDbPolyline& polyline);
    void showOne(const AcDb2dPolyline& polyline);
    void showOne(const AcDb3dPolyline& polyline) { showChain(polyline, AcGeVector3d::kZAxis); }
    void showOne(const AcDbSpline& spline);
    void showOne(const AcDbRay& ray) {
        m_probe.addEndless(m_toView(ray.basePoint()), m_toView(ray.unitDir()), false);
    }
    void showOne(const AcDbXline& line) {
        m_probe.addEndless(m_toView(line.basePoint()), m_toView(line.unitDir()), true);
    }
    void showOne(const AcDbPoint& point) { m_probe.addPoint(m_toView(point.position())); }
    void showOne(const AcDbHatch& hatch) {
        m_probe.addArea(
            filledBoundary(hatch, m_toView, chordDeviation(m_probe.region()), &m_probe.region().box()));
    }
    void showOne(const AcDbFace& face);
    void showOne(const AcDbSolid& solid) { showCorners(solid); }
    void showOne(const AcDbTrace& trace) { showCorners(trace); }
    void showOne(const AcDbText& text);
    void showOne(const AcDbMText& text);
    void showOne(const AcDbBlockReference&) {}

    void showRound(const CircularCurve& curve, double start, double sweep);
    void showChain(const PolylineCurve& polyline, const AcGeVector3d& normal);
    void showCorners(const CornerFigure& figure);
    void showQuad(const AcGePoint3d (&corners)[4]);
    void showExtents(const AcDbEntity& entity);

    RegionProbe& m_probe;
    ViewMap m_toView;
    bool m_isInBlock;
};

void EntityShower::show(const AcDbEntity& entity) {
    const bool isKnown =
        showAsFirstOf<AcDbLine, AcDbPolyline, AcDbArc, AcDbCircle, AcDbText, AcDbMText, AcDbBlockReference,
                      AcDbHatch, AcDbPoint, AcDb2dPolyline, AcDb3dPolyline, AcDbEllipse, AcDbSpline,
                      AcDbSolid, AcDbTrace, AcDbFace, AcDbRay, AcDbXline>(entity);
    if (!isKnown) showExtents(entity);
}

void EntityShower::showRound(const CircularCurve& curve, double start, double sweep) {
    AcGeVector3d x, y;
    AcGe::arbitraryAxes(curve.normal(), x, y);
    std::vector<PlanePiece> pieces;
    appendArc(pieces, m_toView(curve.center()), m_toView(x * curve.radius()), m_toView(y * curve.radius()),
              start, sweep);
    m_probe.addPieces(pieces);
}

void EntityShower::showOne(const AcDbEllipse& ellipse) {
    double sweep = std::fmod(ellipse.endParam() - ellipse.startParam(), AcGe::kTwoPi);
    if (!(sweep > 0.0)) sweep += AcGe::kTwoPi;
    std::vector<PlanePiece> pieces;
    appendArc(pieces, m_toView(ellipse.center()), m_toView(ellipse.majorAxis()),
              m_toView(ellipse.minorAxis()), ellipse.startParam(), sweep);
    m_probe.addPieces(pieces);
}

void EntityShower::showChain(const PolylineCurve& polyline, const AcGeVector3d& normal) {
    VertexBuffer buffer;
    const PolylineShape shape = polyline.shape(buffer);
    const std::size_t segments = shape.segmentCount();
    if (shape.vertexCount() == 1) m_probe.addPoint(m_toView(shape.worldVertex(0)));
    std::vector<PlanePiece> pieces;
    for (std::size_t i = 0; i < segments && !m_probe.isDecided(); ++i) {
        pieces.clear();
        appendBulge(pieces, m_toView, shape.worldVertex(i), shape.worldVertex((i + 1) % shape.vertexCount()),
                    shape.bulge(i), normal);
        m_probe.addPieces(pieces);
    }
}

void EntityShower::showOne(const AcDbPolyline& polyline) {
    showChain(polyline, polyline.normal());
    if (m_probe.isDecided() || m_probe.mode() == PickMode::inside || !polyline.hasWidth()) return;
    showWidths(m_probe, m_toView, polyline);
}

void EntityShower::showOne(const AcDb2dPolyline& polyline) {
    showChain(polyline, polyline.normal());
    if (m_probe.isDecided() || m_probe.mode() == PickMode::inside) return;
    showWidths(m_probe, m_toView, polyline);
}

void EntityShower::showOne(const AcDbSpline& spline) {
    std::vector<PlanePiece> pieces;
    appendSpline(pieces, m_toView, shownCurve(spline), chordDeviation(m_probe.region()),
                 &m_probe.region().box());
    m_probe.addPieces(pieces);
}

void EntityShower::showQuad(const AcGePoint3d (&corners)[4]) {
    std::vector<PlanePiece> sides;
    appendQuad(sides, m_toView, corners);
    m_probe.addArea(sides);
}

void EntityShower::showOne(const AcDbFace& face) {
    AcGePoint3d corners[4];
    for (Adesk::UInt16 i = 0; i < 4; ++i) face.getVertexAt(i, corners[i]);
    showQuad(corners);
}

void EntityShower::showCorners(const CornerFigure& figure) {
    AcGePoint3d corners[4];
    for (Adesk::UInt16 i = 0; i < 4; ++i) figure.getPointAt(i ^ (i >> 1), corners[i]); // 0 1 3 2 around it
    showQuad(corners);
}

void EntityShower::showOne(const AcDbText& text) {
    AcGePoint3d corners[4];
    const bool isConstant = m_isInBlock && AcDbAttributeDefinition::cast(&text);
    if (text.letterBox(corners, isConstant ? &text.text() : nullptr)) showQuad(corners);
}

void EntityShower::showOne(const AcDbMText& text) {
    AcGePoint3d corners[4];
    if (text.letterBox(corners)) showQuad(corners);
}

// The six faces of the box: what they show together is all that the box can.
void EntityShower::showExtents(const AcDbEntity& entity) {
    AcDbExtents box;
    if (entity.getGeomExtents(box) != Acad::eOk || box.isEmpty()) return;
    const AcGePoint3d low = box.minPoint();
    const AcGePoint3d high = box.maxPoint();
    const AcGePoint3d floor[4] = {
        low, {high.x, low.y, low.z}, {high.x, high.y, low.z}, {low.x, high.y, low.z}};
    AcGePoint3d top[4];
    for (std::size_t i = 0; i < 4; ++i) top[i].set(floor[i].x, floor[i].y, high.z);
    showQuad(floor);
    showQuad(top);
    for (std::size_t i = 0; i < 4; ++i) showQuad({floor[i], floor[(i + 1) % 4], top[(i + 1) % 4], top[i]});
}

} // namespace

void showEntity(RegionProbe& probe, const AcDbEntity& entity, const ViewMap& toView, bool isInBlock) {
    EntityShower(probe, toView, isInBlock).show(entity);
}

} // namespace hostkit
