#include "vexodualrep.h"

#include "vexoamodelertools.h"
#include "vexoamodelertools_internal.h"
#include "vexogeometrytools.h"
#include "vexogeometrytools_internal.h"

#include "cvxlogentry.h"
#include "dbarc.h"
#include "dbline.h"

#include <memory>
#include <utility>
#include <vector>

using AModeler::Body;
using AModeler::PolygonVertexData;
using namespace vexo;

namespace {

/// Of an arc's facets, in parts of its radius.
constexpr double kRelativeDeflection = 1e-3;

/// A contour as the curves give it, before it is known about which normal its bulges count.
struct CurveContour {
    AcArray<AcGePoint3d> all;
    AcArray<AcGePoint3d> unique;
    AcArray<double> bulges;
    std::vector<AcGeVector3d> axes; ///< of each curve's bulge

    void add(const AcGePoint3d& point) {
        all.append(point);
        if (!unique.contains(point)) unique.append(point);
    }
    bool add(const AcDbCurve& curve);
};

bool CurveContour::add(const AcDbCurve& curve) {
    const auto* const arc = AcDbArc::cast(&curve);
    if (!arc && !AcDbLine::cast(&curve)) return false;
    AcGePoint3d start, end, middle;
    if (curve.getStartPoint(start) != Acad::eOk || curve.getEndPoint(end) != Acad::eOk) return false;
    add(start);
    add(end);
    if (arc) {
        double first = 0.0, last = 0.0;
        if (arc->getStartParam(first) != Acad::eOk || arc->getEndParam(last) != Acad::eOk) return false;
        if (arc->getPointAtParam((first + last) / 2, middle) != Acad::eOk) return false;
        all.append(middle);
    }
    axes.push_back(arc ? arc->normal() : AcGeVector3d());
    bulges.append(arc ? VEXOGeometryTools::getBulgeFrom3Points(start, end, middle, arc->normal()) : 0.0);
    return true;
}

/// Two points and no arc between them.
bool isThereAndBack(const AcArray<AcGePoint3d>& points, const AcArray<double>& bulges) {
    if (points.length() != 2) return false;
    for (int i = 0; i < 2 && i < bulges.length(); ++i)
        if (isArcBulge(bulges[i])) return false;
    return true;
}

/// The vertex data of a contour, freed with it.
struct VertexData {
    explicit VertexData(int pointCount)
        : count(pointCount) {}
    ~VertexData() { VEXOAModelerTools::clearVertexData(data, points, count); }
    VertexData(const VertexData&) = delete;
    VertexData& operator=(const VertexData&) = delete;

    int count;
    PolygonVertexData** data = nullptr;
    AcGePoint3d* points = nullptr;
};

AcDb3dSolid* cloneOf(const AcDb3dSolid* solid) {
    return solid ? static_cast<AcDb3dSolid*>(solid->clone()) : nullptr;
}

} // namespace

VEXODualRep::VEXODualRep()
    : VEXODualRep(true) {
    CVxLogEntry entry(L"VEXODualRep::VEXODualRep");
}

VEXODualRep::VEXODualRep(bool useSolid)
    : m_bUseSolid(useSolid) {
    CVxLogEntry entry(L"VEXODualRep::VEXODualRep");
    if (useSolid)
        m_pSolid = new AcDb3dSolid;
    else
        m_pBody = new Body;
}

VEXODualRep::VEXODualRep(Body* body)
    : m_bUseSolid(false)
    , m_pBody(body) {
    CVxLogEntry entry(L"VEXODualRep::VEXODualRep");
}

VEXODualRep::VEXODualRep(AcDb3dSolid* solid)
    : m_bUseSolid(true)
    , m_pSolid(solid) {
    CVxLogEntry entry(L"VEXODualRep::VEXODualRep");
}

VEXODualRep::VEXODualRep(const VEXODualRep& other) = default;

VEXODualRep& VEXODualRep::operator=(const VEXODualRep& other) {
    CVxLogEntry entry(L"VEXODualRep::operator=");
    if (this == &other) return *this;
    auto body = other.m_pBody ? std::make_unique<Body>(other.m_pBody->copy()) : nullptr;
    std::unique_ptr<AcDb3dSolid> solid(cloneOf(other.m_pSolid));
    m_bUseSolid = other.m_bUseSolid;
    delete std::exchange(m_pBody, body.release());
    delete std::exchange(m_pSolid, solid.release());
    return *this;
}

VEXODualRep::~VEXODualRep() {
    CVxLogEntry entry(L"VEXODualRep::~VEXODualRep");
    delete m_pBody;
    delete m_pSolid;
}

VEXODualRep& VEXODualRep::clone() const {
    CVxLogEntry entry(L"VEXODualRep::clone");
    if (m_pBody) {
        auto body = std::make_unique<Body>(m_pBody->copy());
        auto* const copy = new VEXODualRep(body.get());
        static_cast<void>(body.release());
        return *copy;
    }
    return m_pSolid ? *new VEXODualRep(cloneOf(m_pSolid)) : *new VEXODualRep;
}

bool VEXODualRep::isValid() const {
    CVxLogEntry entry(L"VEXODualRep::isValid");
    if (m_pBody) return guarded(false, [&] { return m_pBody->isValid(-1) && !m_pBody->isNull(); });
    return m_pSolid && !m_pSolid->isNull();
}

bool VEXODualRep::isNull() const {
    CVxLogEntry entry(L"VEXODualRep::isNull");
    return !m_pBody && !m_pSolid;
}

bool VEXODualRep::ReleaseRepr(Body*& body) {
    CVxLogEntry entry(L"VEXODualRep::ReleaseRepr");
    body = std::exchange(m_pBody, nullptr);
    return true;
}

bool VEXODualRep::ReleaseRepr(AcDb3dSolid*& solid) {
    CVxLogEntry entry(L"VEXODualRep::ReleaseRepr");
    solid = std::exchange(m_pSolid, nullptr);
    return true;
}

Acad::ErrorStatus VEXODualRep::CreateRegionsFromCurves(const AcArray<void*>& curves, const double& value) {
    CVxLogEntry entry(L"VEXODualRep::CreateRegionsFromCurves");
    CurveContour contour;
    for (void* each : curves) {
        const auto* const curve = AcDbCurve::cast(static_cast<AcDbEntity*>(each));
        if (!curve || !contour.add(*curve)) return Acad::eInvalidInput;
    }
    const AcGeVector3d normal = VEXOGeometryTools::getNormalFromPoints(contour.all);
    if (normal.isZeroLength() || contour.all.length() <= 2) return Acad::eInvalidInput;
    // It is the contour of the call before that is asked here; callers rely on the order.
    if (isThereAndBack(m_aPoints, m_aBulges)) return Acad::eInvalidInput;

    // Bulges are raised about the contour's normal: an arc that turns about the opposite one stays where it
    // is.
    for (int i = 0; i < contour.bulges.length(); ++i)
        if (contour.axes[static_cast<std::size_t>(i)].dotProduct(normal) < 0.0)
            contour.bulges[i] = -contour.bulges[i];
    m_vNormal = normal;
    m_aBulges = contour.bulges;
    m_aPoints = contour.unique;
    m_dValue = value;
    return Acad::eOk;
}

Acad::ErrorStatus VEXODualRep::extrude(const AcDbRegion* region, double height, double taper) {
    CVxLogEntry entry(L"VEXODualRep::extrude");
    if (m_bUseSolid && m_pSolid) return m_pSolid->extrude(region, height, taper);
    return !m_bUseSolid && m_pBody ? extrudeBody(height) : Acad::eCannotExtrudeRegion;
}

Acad::ErrorStatus VEXODualRep::extrudeBody(double height) {
    if (m_aPoints.length() <= 1 || m_vNormal.isZeroLength()) return Acad::eInvalidInput;
    if (isThereAndBack(m_aPoints, m_aBulges)) return Acad::eInvalidInput;
    return guarded(Acad::eInvalidInput, [&] {
        VertexData contour(m_aPoints.length());
        getPolygonVertexData(m_aPoints, m_aBulges, m_vNormal, contour.data, contour.points);
        if (!contour.data || !contour.points) return Acad::eInvalidInput;
        const std::vector<AModeler::Point3d> points(contour.points, contour.points + contour.count);
        Body made = Body::extrusion(points.data(), contour.data, contour.count, m_vNormal, m_vNormal * height,
                                    points.front(), 1.0, 0.0);
        if (made.isNull() || !made.isValid(-1)) return Acad::eInvalidInput;
        *m_pBody = std::move(made);
        return Acad::eOk;
    });
}

Acad::ErrorStatus VEXODualRep::getSlice(const AcGePlane& plane, int keep, AcDb3dSolid*& slice) {
    CVxLogEntry entry(L"VEXODualRep::getSlice");
    if (!m_bUseSolid && m_pBody) return cutBody(plane);
    return m_bUseSolid && m_pSolid ? m_pSolid->getSlice(plane, keep != 0, slice) : Acad::eCannotExtrudeRegion;
}

Acad::ErrorStatus VEXODualRep::cutBody(const AcGePlane& plane) {
    return guarded(Acad::eCannotExtrudeRegion, [&] {
        AcGePoint3d origin;
        AcGeVector3d axis1, axis2;
        plane.getCoordSystem(origin, axis1, axis2);
        const AModeler::Plane behind(origin, -plane.normal());
        if (m_pBody->planeIntersectsBody(behind))
            m_pBody->section(behind, AModeler::keepInputBodiesWhenBooleanOperationsFail());
        return m_pBody->isValid(-1) && !m_pBody->isNull() ? Acad::eOk : Acad::eCannotExtrudeRegion;
    });
}

Acad::ErrorStatus VEXODualRep::getSlice(AcGePlane* plane, bool keep, AcDb3dSolid*& slice) {
    CVxLogEntry entry(L"VEXODualRep::getSlice");
    if (plane && m_bUseSolid && m_pSolid) static_cast<void>(m_pSolid->getSlice(*plane, keep, slice));
    return Acad::eCannotExtrudeRegion;
}

Acad::ErrorStatus VEXODualRep::booleanOper(AcDb::BoolOperType op, VEXODualRep* other) {
    CVxLogEntry entry(L"VEXODualRep::booleanOper");
    if (!other || m_bUseSolid != other->m_bUseSolid) return Acad::eInvalidInput;
    if (!m_bUseSolid && m_pBody) return combineBody(op, other->m_pBody);
    return m_bUseSolid && m_pSolid ? m_pSolid->booleanOper(op, other->m_pSolid) : Acad::eCannotExtrudeRegion;
}

Acad::ErrorStatus VEXODualRep::combineBody(AcDb::BoolOperType op, const Body* other) {
    AModeler::BooleanOperationType type = AModeler::kUnion;
    switch (op) {
    case AcDb::kBoolUnite:
        break;
    case AcDb::kBoolIntersect:
        type = AModeler::kIntersect;
        break;
    case AcDb::kBoolSubtract:
        type = AModeler::kSubtract;
        break;
    default:
        return Acad::eCannotExtrudeRegion;
    }
    if (!other) return Acad::eCannotExtrudeRegion;
    return guarded(Acad::eCannotExtrudeRegion, [&] {
        Body result =
            m_pBody->boolOper(type, other->copy(), AModeler::keepInputBodiesWhenBooleanOperationsFail());
        if (result.isNull() || !result.isValid(-1)) return Acad::eCannotExtrudeRegion;
        *m_pBody = std::move(result);
        return Acad::eOk;
    });
}

void VEXODualRep::getPolygonVertexData(const AcArray<AcGePoint3d>& points, const AcArray<double>& bulges,
                                       const AcGeVector3d& normal, PolygonVertexData**& data,
                                       AcGePoint3d*& outPoints) {
    CVxLogEntry entry(L"VEXODualRep::getPolygonVertexData");
    data = nullptr;
    outPoints = nullptr;
    const int count = points.length();
    if (count == 0) return;
    data = new PolygonVertexData* [static_cast<std::size_t>(count)] {};
    outPoints = new AcGePoint3d[static_cast<std::size_t>(count)];
    for (int i = 0; i < count; ++i) {
        outPoints[i] = points[i];
        if (i + 1 == count || bulges.isEmpty()) continue;
        const double bulge = bulges[i % bulges.length()];
        if (!isArcBulge(bulge)) continue;
        const AcGePoint3d next = points[(i + 1) % count];
        AcGeCircArc3d arc(points[i], VEXOGeometryTools::getMiddleOf(points[i], next, bulge, normal), next);
        int sides = 0;
        const AModeler::Circle3d circle =
            VEXOAModelerTools::makeCircleData(&arc, sides, arc.radius() * kRelativeDeflection);
        data[i] = new PolygonVertexData(PolygonVertexData::kArc3d, circle, sides);
    }
}
