#include "dbray.h"

#include "curvegeometry.h"
#include "curvesupport.h"
#include "dbline.h"
#include "entitycoordinates.h"
#include "fielditems.h"
#include "fieldtable.h"
#include "flatmotion.h"

using namespace hostkit;

HOSTKIT_KIT_CLASS(AcDbRay, AcDbCurve, L"RAY")

Acad::ErrorStatus AcDbRay::setBasePoint(const AcGePoint3d& point) {
    if (!hostkit::isFinite(point)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) m_basePoint = point;
    return status;
}

Acad::ErrorStatus AcDbRay::setUnitDir(const AcGeVector3d& direction) {
    if (!hostkit::isFinite(direction) || direction.isZeroLength()) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) m_unitDirection = direction.normal();
    return status;
}

Acad::ErrorStatus AcDbRay::setSecondPoint(const AcGePoint3d& point) {
    return setUnitDir(point - m_basePoint);
}

Acad::ErrorStatus AcDbRay::getProjectedCurve(const AcGePlane& plane, const AcGeVector3d& direction,
                                             AcDbCurve*& projected) const {
    if (!hostkit::canProject(plane, direction)) return Acad::eInvalidInput;
    const AcGeVector3d along = m_unitDirection.project(plane.normal(), direction);
    if (along.isZeroLength()) return Acad::eDegenerateGeometry;
    AcDbRay* shadow = new AcDbRay(*this);
    shadow->m_basePoint = m_basePoint.project(plane, direction);
    shadow->m_unitDirection = along.normal();
    projected = shadow;
    return Acad::eOk;
}

// A ray has one sense only.
Acad::ErrorStatus AcDbRay::reverseCurve() { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbRay::subTransformBy(const AcGeMatrix3d& matrix) {
    if (!hostkit::isInvertible(matrix)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    m_basePoint.transformBy(matrix);
    if (!hostkit::isShift(matrix)) m_unitDirection = (matrix * m_unitDirection).normal();
    return Acad::eOk;
}

bool AcDbRay::geometry(hostkit::CurveGeometry& geometry) const {
    geometry.set(AcGeRay3d(m_basePoint, m_unitDirection));
    return !m_unitDirection.isZeroLength();
}

AcDbCurve* AcDbRay::piece(double from, double to) const {
    const AcGePoint3d start = m_basePoint + m_unitDirection * from;
    if (std::isfinite(to)) return new AcDbLine(start, m_basePoint + m_unitDirection * to);
    AcDbRay* rest = new AcDbRay(*this);
    rest->m_basePoint = start;
    return rest;
}

// --- Filing ------------------------------------------------------------------------------------------------

struct AcDbRay::Filing {
    static constexpr GroupField<AcDbRay> groups[] = {
        pointField<&AcDbRay::m_basePoint>(10),
        directionField<&AcDbRay::m_unitDirection>(11),
    };
};

Acad::ErrorStatus AcDbRay::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbCurve::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbRay")) return status;
    return readFields(*filer, Filing::groups, *this);
}

Acad::ErrorStatus AcDbRay::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbRay");
    writeFields(*filer, Filing::groups, *this);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbRay)
