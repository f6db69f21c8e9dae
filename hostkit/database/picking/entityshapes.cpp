#include "entityshapes.h"

#include "widepieces.h"

#include "hatchpieces.h"
#include "shapegeometry.h"
#include "shownwalk.h"
#include "viewpieces.h"

#include "db2dpolyline.h"
#include "db3dpolyline.h"
#include "dbarc.h"
#include "dbattdef.h"
#include "dbattribute.h"
#include "dbblockreference.h"
#include "dbcircle.h"
#include "dbdim.h"
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

#include <algorithm>
#include <utility>

namespace hostkit {

// The kinds whose fields tell what they show, the usual ones first.
#define HOSTKIT_SHOWN_KINDS                                                                                  \
    AcDbLine, AcDbPolyline, AcDbArc, AcDbCircle, AcDbText, AcDbMText, AcDbBlockReference, AcDbHatch,         \
        AcDbPoint, AcDb2dPolyline, AcDb3dPolyline, AcDbEllipse, AcDbSpline, AcDbSolid, AcDbTrace, AcDbFace,  \
        AcDbRay, AcDbXline

namespace {

template <typename... Kinds>
bool isAnyOf(const AcDbEntity& entity) {
    return (entity.isKindOf(Kinds::desc()) || ...);
}

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

/// Shows what an entity draws.
class DrawnShower final : public ShapeGeometry {
public:
    DrawnShower(RegionProbe& probe, const ViewMap& toView, AcDbObjectId layer)
        : m_probe(probe)
        , m_toView(toView)
        , m_layer(layer) {}
    bool hasShown() const { return m_hasShown; }

private:
    void part(AcDbEntity& entity) const override;
    bool mayPass(const AcDbExtents& box) const;
    std::vector<PlanePiece> piecesOf(const PicturePath& path, bool isClosed) const;
    void strokePath(const PicturePath& path, double) const override {
        if (!mayPass(extentsOf(path))) m_probe.addPieces(piecesOf(path, false));
    }
    void fillPath(const PicturePath& path) const override {
        if (!mayPass(extentsOf(path))) m_probe.addArea(piecesOf(path, true));
    }
    void placeDot(const AcGePoint3d& point) const override {
        if (!mayPass(AcDbExtents(point, point))) m_probe.addPoint(m_toView(point));
    }
    void placeEndless(const AcGePoint3d& point, const AcGeVector3d& direction,
                      bool isBothWays) const override {
        m_hasShown = true;
        m_probe.addEndless(m_toView(point), m_toView(direction), isBothWays);
    }

    RegionProbe& m_probe;
    ViewMap m_toView;
    mutable AcDbObjectId m_layer; ///< what layer 0 stands for
    mutable bool m_hasShown = false;
};

void DrawnShower::part(AcDbEntity& entity) const {
    const ShownPlace place{m_toView * toWorld(), toWorld(), m_layer, true};
    if (m_probe.isDecided() || !isSeenInBlock(entity, place)) return;
    if (const auto* attribute = AcDbAttribute::cast(&entity); attribute && attribute->isInvisible()) return;
    m_hasShown = true;
    if (!AcDbBlockReference::cast(&entity) && !AcDbDimension::cast(&entity))
        return showEntity(m_probe, entity, place.toView, true);
    const AcDbObjectId around = std::exchange(m_layer, shownLayer(entity, place));
    askPart(entity);
    m_layer = around;
}

// A clip takes away what is beside its box.
bool DrawnShower::mayPass(const AcDbExtents& box) const {
    if (box.isEmpty()) return true;
    m_hasShown = true;
    if (m_probe.isDecided()) return true;
    AcGePoint3d low = box.minPoint(), high = box.maxPoint();
    for (unsigned int axis = 0; clip() && axis < 2; ++axis) {
        low[axis] = std::max(low[axis], clip()->minPoint()[axis]);
        high[axis] = std::min(high[axis], clip()->maxPoint()[axis]);
        if (!(low[axis] <= high[axis])) return true;
    }
    PlaneBox hull;
    for (unsigned int corner = 0; corner < 8; ++corner) {
        const auto side = [&](unsigned int axis) { return (corner >> axis & 1 ? high : low)[axis]; };
        hull.add(m_toView(AcGePoint3d(side(0), side(1), side(2))));
    }
    return m_probe.mayPass(hull);
}

std::vector<PlanePiece> DrawnShower::piecesOf(const PicturePath& path, bool isClosed) const {
    PicturePath seen = path;
    seen.transformBy(m_toView.matrix);
    std::vector<PlanePiece> pieces;
    const auto at = [](const AcGePoint3d& point) { return AcGePoint2d(point.x, point.y); };
    for (const std::vector<AcGePoint3d>& run : chordsOf(seen, chordDeviation(m_probe.region()))) {
        if (run.size() == 1) pieces.push_back(PlanePiece::segment(at(run[0]), at(run[0])));
        for (std::size_t i = 1; i < run.size(); ++i)
            pieces.push_back(PlanePiece::segment(at(run[i - 1]), at(run[i])));
        if (isClosed) pieces.push_back(PlanePiece::segment(at(run.back()), at(run.front())));
    }
    return pieces;
}

void EntityShower::show(const AcDbEntity& entity) {
    if (showAsFirstOf<HOSTKIT_SHOWN_KINDS>(entity)) return;
    DrawnShower drawn(m_probe, m_toView, entity.layerId());
    drawn.ask(entity, AcGeMatrix3d::kIdentity);
    if (!drawn.hasShown()) showExtents(entity);
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

bool isShownAsDrawn(const AcDbEntity& entity) { return !isAnyOf<HOSTKIT_SHOWN_KINDS>(entity); }

void showEntity(RegionProbe& probe, const AcDbEntity& entity, const ViewMap& toView, bool isInBlock) {
    EntityShower(probe, toView, isInBlock).show(entity);
}

} // namespace hostkit
