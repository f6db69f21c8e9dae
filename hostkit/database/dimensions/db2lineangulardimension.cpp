#include "db2lineangulardimension.h"

#include "entitycoordinates.h"

HOSTKIT_KIT_CLASS(AcDb2LineAngularDimension, AcDbDimension, L"DIMENSION")

AcDb2LineAngularDimension::AcDb2LineAngularDimension(
    const AcGePoint3d& xLine1Start, const AcGePoint3d& xLine1End, const AcGePoint3d& xLine2Start,
    const AcGePoint3d& xLine2End, const AcGePoint3d& arcPoint, const wchar_t* dimText, AcDbObjectId dimStyle)
    : AcDbDimension(kTwoLineAngular, {{13, xLine1Start}, {14, xLine1End}, {15, xLine2Start}, {10, xLine2End}},
                    dimText, dimStyle) {
    (void)setArcPoint(arcPoint);
}

// The point 16 stands in the coordinates of the normal.

AcGePoint3d AcDb2LineAngularDimension::arcPoint() const { return hostkit::toWorld(m_normal, pointOf(16)); }

Acad::ErrorStatus AcDb2LineAngularDimension::setArcPoint(const AcGePoint3d& point) {
    return setPointOf(16, hostkit::toEntity(m_normal, point));
}
