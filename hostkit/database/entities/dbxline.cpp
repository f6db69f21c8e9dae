#include "dbxline.h"

#include "curvegeometry.h"
#include "curvesupport.h"
#include "dbline.h"
#include "dbray.h"
#include "entitycoordinates.h"
#include "fielditems.h"
#include "fieldtable.h"
#include "flatmotion.h"

using namespace hostkit;

HOSTKIT_KIT_CLASS(AcDbXline, AcDbCurve, L"XLINE")

Acad::ErrorStatus AcDbXline::setBasePoint(const AcGePoint3d& point) {
    if (!hostkit::isFinite(point)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) m_basePoint = point;
    return status;
}

Acad::ErrorStatus AcDbXline::setUnitDir(const AcGeVector3d& direction) {
    if (!hostkit::isFinite(direction) || direction.isZeroLength()) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) m_unitDirection = direction.normal();
    return status;
}

Acad::ErrorStatus AcDbXline::setSecondPoint(const AcGePoint3d& point) {
    return setUnitDir(point - m_basePoint);
}

Acad::ErrorStatus AcDbXline::getProjectedCurve(const AcGePlane& plane, const AcGeVector3d& direction,
                                               AcDbCurve*& projected) const {
    if (!hostkit::canProject(plane, direction)) return Acad::eInvalidInput;
    const AcGeVector3d along = m_unitDirection.project(plane.normal(), direction);
    if (along.isZeroLength()) return Acad::eDegenerateGeometry;
    AcDbXline* shadow = new AcDbXline(*this);
    shadow->m_basePoint = m_basePoint.project(plane, direction);
    shadow->m_unitDirection = along.normal();
    projected = shadow;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbXline::reverseCurve() { return setUnitDir(-m_unitDirection); }
Acad::ErrorStatus AcDbXline::subTransformBy(const AcGeMatrix3d& matrix) {
    if (!hostkit::isInvertible(matrix)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    m_basePoint.transformBy(matrix);
    if (!hostkit::isShift(matrix)) m_unitDirection = (matrix * m_unitDirection).normal();
    return Acad::eOk;
}

bool AcDbXline::geometry(hostkit::CurveGeometry& geometry) const {
    geometry.set(AcGeLine3d(m_basePoint, m_unitDirection));
    return !m_unitDirection.isZeroLength();
}

AcDbCurve* AcDbXline::piece(double from, double to) const {
    if (std::isfinite(from) && std::isfinite(to))
        return new AcDbLine(m_basePoint + m_unitDirection * from, m_basePoint + m_unitDirection * to);
    AcDbRay* rest = new AcDbRay;
    (void)rest->setBasePoint(m_basePoint + m_unitDirection * (std::isfinite(from) ? from : to));
    (void)rest->setUnitDir(std::isfinite(from) ? m_unitDirection : -m_unitDirection);
    return rest;
}

// --- Filing ------------------------------------------------------------------------------------------------

struct AcDbXline::Filing {
    static constexpr GroupField<AcDbXline> groups[] = {
        pointField<&AcDbXline::m_basePoint>(10),
        directionField<&AcDbXline::m_unitDirection>(11),
    };
};

Acad::ErrorStatus AcDbXline::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbCurve::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbXline")) return status;
    return readFields(*filer, Filing::groups, *this);
}

Acad::ErrorStatus AcDbXline::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbXline");
    writeFields(*filer, Filing::groups, *this);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbXline)
