#include "circularcurve.h"

#include "curvegeometry.h"
#include "curvesupport.h"
#include "fieldsetters.h"
#include "fieldtable.h"
#include "flatmotion.h"

namespace hostkit {

CircularCurve::CircularCurve(const AcGePoint3d& center, const AcGeVector3d& normal, double radius)
    : m_ecsCenter(center)
    , m_radius(radius) {
    if (normal.isZeroLength()) return;
    m_normal = AcGe::unitOf(normal);
    m_ecsCenter = toEntity(m_normal, center);
}

Acad::ErrorStatus CircularCurve::setCenter(const AcGePoint3d& center) {
    return assignIf(isFinite(center), *this, m_ecsCenter, toEntity(m_normal, center));
}

Acad::ErrorStatus CircularCurve::setRadius(double radius) {
    return setNonNegativeField(*this, m_radius, radius);
}

Acad::ErrorStatus CircularCurve::setThickness(double thickness) {
    return setFiniteField(*this, m_thickness, thickness);
}

Acad::ErrorStatus CircularCurve::setNormal(const AcGeVector3d& normal) {
    if (!isDirection(normal)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) turnTo(AcGe::unitOf(normal));
    return status;
}

void CircularCurve::turnTo(const AcGeVector3d& normal) {
    const AcGePoint3d place = center();
    m_normal = normal;
    m_ecsCenter = toEntity(m_normal, place);
}

Acad::ErrorStatus CircularCurve::getProjectedCurve(const AcGePlane& plane, const AcGeVector3d& direction,
                                                   AcDbCurve*& projected) const {
    CurveGeometry own;
    if (!geometry(own)) return Acad::eDegenerateGeometry;
    return projectEllipse(*this, AcGeEllipArc3d(*own.arc()), plane, direction, projected);
}

Acad::ErrorStatus CircularCurve::subTransformBy(const AcGeMatrix3d& matrix) {
    double scale = 1.0;
    if (!isInvertible(matrix)) return Acad::eInvalidInput;
    if (!isUniform(matrix, scale)) return Acad::eCannotScaleNonUniformly;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    const AcGePoint3d place = matrix * center();
    if (!isShift(matrix)) {
        // The sense stays: a mirror turns the normal away from where the old one goes.
        const AcGeVector3d xAxis = matrix * toWorld(m_normal, AcGeVector3d::kXAxis);
        const AcGeVector3d yAxis = matrix * toWorld(m_normal, AcGeVector3d::kYAxis);
        const AcGeVector3d moved = matrix * m_normal;
        m_normal = xAxis.crossProduct(yAxis);
        m_normal /= m_normal.length();
        m_radius *= scale;
        m_thickness *= moved.dotProduct(m_normal);
    }
    m_ecsCenter = toEntity(m_normal, place);
    return Acad::eOk;
}

void CircularCurve::getEcs(AcGeMatrix3d& matrix) const { matrix = arbitraryAxisSystem(m_normal); }

// --- Filing ------------------------------------------------------------------------------------------------

struct CircularCurve::Filing {
    static constexpr GroupField<CircularCurve> groups[] = {
        realField<&CircularCurve::m_thickness>(39, 0.0),
        pointField<&CircularCurve::m_ecsCenter>(10),
        realField<&CircularCurve::m_radius>(40),
        normalField<&CircularCurve::m_normal>(),
    };
};

Acad::ErrorStatus CircularCurve::dxfInFields(AcDbDxfFiler* filer) {
    return readSubclass<AcDbCurve>(filer, *this, L"AcDbCircle", Filing::groups);
}

Acad::ErrorStatus CircularCurve::dxfOutFields(AcDbDxfFiler* filer) const {
    return writeSubclass<AcDbCurve>(filer, *this, L"AcDbCircle", Filing::groups);
}

} // namespace hostkit
