#include "dbcircle.h"

#include "curvegeometry.h"
#include "curvesupport.h"
#include "dbarc.h"
#include "fielditems.h"
#include "fieldtable.h"
#include "flatmotion.h"

#include <cmath>

using namespace hostkit;

HOSTKIT_KIT_CLASS(AcDbCircle, AcDbCurve, L"CIRCLE")

AcDbCircle::AcDbCircle(const AcGePoint3d& center, const AcGeVector3d& normal, double radius)
    : m_ecsCenter(center)
    , m_radius(radius) {
    if (normal.isZeroLength()) return;
    m_normal = normal.normal();
    m_ecsCenter = hostkit::toEntity(m_normal, center);
}

Acad::ErrorStatus AcDbCircle::setCenter(const AcGePoint3d& center) {
    if (!hostkit::isFinite(center)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) m_ecsCenter = hostkit::toEntity(m_normal, center);
    return status;
}

Acad::ErrorStatus AcDbCircle::setRadius(double radius) {
    if (!(radius >= 0.0) || std::isinf(radius)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) m_radius = radius;
    return status;
}

Acad::ErrorStatus AcDbCircle::setThickness(double thickness) {
    if (!std::isfinite(thickness)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) m_thickness = thickness;
    return status;
}

Acad::ErrorStatus AcDbCircle::setNormal(const AcGeVector3d& normal) {
    if (!hostkit::isFinite(normal) || normal.isZeroLength()) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    const AcGePoint3d place = center();
    m_normal = normal.normal();
    m_ecsCenter = hostkit::toEntity(m_normal, place);
    return Acad::eOk;
}

bool AcDbCircle::geometry(hostkit::CurveGeometry& geometry) const {
    if (!(m_radius > 0.0)) return false;
    geometry.set(AcGeCircArc3d(center(), m_normal, m_radius));
    return true;
}

AcDbCurve* AcDbCircle::piece(double from, double to) const {
    AcDbArc* result = new AcDbArc(center(), m_normal, m_radius, from, to);
    (void)result->setThickness(m_thickness);
    return result;
}

Acad::ErrorStatus AcDbCircle::getProjectedCurve(const AcGePlane& plane, const AcGeVector3d& direction,
                                                AcDbCurve*& projected) const {
    hostkit::CurveGeometry own;
    if (!geometry(own)) return Acad::eDegenerateGeometry;
    return hostkit::projectEllipse(*this, AcGeEllipArc3d(*own.arc()), plane, direction, projected);
}

Acad::ErrorStatus AcDbCircle::reverseCurve() {
    const Acad::ErrorStatus status = setNormal(-m_normal); // it runs counter-clockwise about its normal
    if (status == Acad::eOk) m_thickness = -m_thickness;
    return status;
}

Acad::ErrorStatus AcDbCircle::subTransformBy(const AcGeMatrix3d& matrix) {
    double scale = 1.0;
    if (!hostkit::isInvertible(matrix)) return Acad::eInvalidInput;
    if (!hostkit::isUniform(matrix, scale)) return Acad::eCannotScaleNonUniformly;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    if (hostkit::isShift(matrix)) {
        m_ecsCenter = hostkit::toEntity(m_normal, matrix * center());
        return Acad::eOk;
    }
    // The sense stays: a mirror turns the normal away from where the old one goes.
    const AcGePoint3d place = matrix * center();
    const AcGeVector3d xAxis = matrix * hostkit::toWorld(m_normal, AcGeVector3d::kXAxis);
    const AcGeVector3d yAxis = matrix * hostkit::toWorld(m_normal, AcGeVector3d::kYAxis);
    const AcGeVector3d moved = matrix * m_normal;
    m_normal = xAxis.crossProduct(yAxis);
    m_normal /= m_normal.length();
    m_ecsCenter = hostkit::toEntity(m_normal, place);
    m_radius *= scale;
    m_thickness *= moved.dotProduct(m_normal);
    return Acad::eOk;
}

void AcDbCircle::getEcs(AcGeMatrix3d& matrix) const { matrix = hostkit::arbitraryAxisSystem(m_normal); }

// --- Filing ------------------------------------------------------------------------------------------------

struct AcDbCircle::Filing {
    static constexpr GroupField<AcDbCircle> groups[] = {
        realField<&AcDbCircle::m_thickness>(39, 0.0),
        pointField<&AcDbCircle::m_ecsCenter>(10),
        realField<&AcDbCircle::m_radius>(40),
        normalField<&AcDbCircle::m_normal>(),
    };
};

Acad::ErrorStatus AcDbCircle::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbCurve::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbCircle")) return status;
    return readFields(*filer, Filing::groups, *this);
}

Acad::ErrorStatus AcDbCircle::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbCircle");
    writeFields(*filer, Filing::groups, *this);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbCircle)
