#include "unboundedline.h"

#include "curvesupport.h"
#include "fieldsetters.h"
#include "fieldtable.h"
#include "flatmotion.h"

namespace hostkit {

Acad::ErrorStatus UnboundedLine::setBasePoint(const AcGePoint3d& point) {
    return setFiniteField(*this, m_basePoint, point);
}

Acad::ErrorStatus UnboundedLine::setUnitDir(const AcGeVector3d& direction) {
    return setDirectionField(*this, m_unitDirection, direction);
}

Acad::ErrorStatus UnboundedLine::setSecondPoint(const AcGePoint3d& point) {
    return setUnitDir(point - m_basePoint);
}

Acad::ErrorStatus UnboundedLine::getProjectedCurve(const AcGePlane& plane, const AcGeVector3d& direction,
                                                   AcDbCurve*& projected) const {
    if (!canProject(plane, direction)) return Acad::eInvalidInput;
    const AcGeVector3d along = m_unitDirection.project(plane.normal(), direction);
    if (along.isZeroLength()) return Acad::eDegenerateGeometry;
    UnboundedLine* const shadow = plainCopy();
    shadow->m_basePoint = m_basePoint.project(plane, direction);
    shadow->m_unitDirection = along.normal();
    projected = shadow;
    return Acad::eOk;
}

Acad::ErrorStatus UnboundedLine::subTransformBy(const AcGeMatrix3d& matrix) {
    if (!isInvertible(matrix)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    m_basePoint.transformBy(matrix);
    if (!isShift(matrix)) m_unitDirection = (matrix * m_unitDirection).normal();
    return Acad::eOk;
}

// --- Filing ------------------------------------------------------------------------------------------------

struct UnboundedLine::Filing {
    static constexpr GroupField<UnboundedLine> groups[] = {
        pointField<&UnboundedLine::m_basePoint>(10),
        directionField<&UnboundedLine::m_unitDirection>(11),
    };
};

Acad::ErrorStatus UnboundedLine::readLine(AcDbDxfFiler* filer, const wchar_t* subclass) {
    return readSubclass<AcDbCurve>(filer, *this, subclass, Filing::groups);
}

Acad::ErrorStatus UnboundedLine::writeLine(AcDbDxfFiler* filer, const wchar_t* subclass) const {
    return writeSubclass<AcDbCurve>(filer, *this, subclass, Filing::groups);
}

} // namespace hostkit
