#include "dbtrace.h"

#include "cornerfigure.h"
#include "fieldsetters.h"

HOSTKIT_KIT_CLASS(AcDbTrace, AcDbEntity, L"TRACE")

AcDbTrace::AcDbTrace(const AcGePoint3d& p0, const AcGePoint3d& p1, const AcGePoint3d& p2,
                     const AcGePoint3d& p3)
    : m_ecsPoints{p0, p1, p2, p3} {}

Acad::ErrorStatus AcDbTrace::getPointAt(Adesk::UInt16 index, AcGePoint3d& point) const {
    if (index > 3) return Acad::eInvalidIndex;
    point = hostkit::toWorld(m_normal, m_ecsPoints[index]);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTrace::setPointAt(Adesk::UInt16 index, const AcGePoint3d& point) {
    if (index > 3) return Acad::eInvalidIndex;
    if (!hostkit::isFinite(point)) return Acad::eInvalidInput;
    return hostkit::assignField(*this, m_ecsPoints[index], hostkit::toEntity(m_normal, point));
}

Acad::ErrorStatus AcDbTrace::setThickness(double thickness) {
    return hostkit::setFiniteField(*this, m_thickness, thickness);
}

Acad::ErrorStatus AcDbTrace::setNormal(const AcGeVector3d& normal) {
    return hostkit::CornerFigure{m_ecsPoints, m_normal, m_thickness}.setNormal(*this, normal);
}

Acad::ErrorStatus AcDbTrace::getGeomExtents(AcDbExtents& extents) const {
    hostkit::setToCorners(extents, m_ecsPoints, m_normal);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTrace::subTransformBy(const AcGeMatrix3d& matrix) {
    return hostkit::CornerFigure{m_ecsPoints, m_normal, m_thickness}.transformBy(*this, matrix);
}

void AcDbTrace::getEcs(AcGeMatrix3d& matrix) const { matrix = hostkit::arbitraryAxisSystem(m_normal); }
