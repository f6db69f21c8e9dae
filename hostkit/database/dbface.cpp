#include "dbface.h"

#include "fieldsetters.h"

HOSTKIT_KIT_CLASS(AcDbFace, AcDbEntity, L"3DFACE")

AcDbFace::AcDbFace(const AcGePoint3d& p0, const AcGePoint3d& p1, const AcGePoint3d& p2, const AcGePoint3d& p3)
    : m_points{p0, p1, p2, p3} {}

Acad::ErrorStatus AcDbFace::getVertexAt(Adesk::UInt16 index, AcGePoint3d& point) const {
    if (index > 3) return Acad::eInvalidIndex;
    point = m_points[index];
    return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::setVertexAt(Adesk::UInt16 index, const AcGePoint3d& point) {
    if (index > 3) return Acad::eInvalidIndex;
    return hostkit::setFiniteField(*this, m_points[index], point);
}

Acad::ErrorStatus AcDbFace::isEdgeVisibleAt(Adesk::UInt16 index, Adesk::Boolean& visible) const {
    if (index > 3) return Acad::eInvalidIndex;
    visible = (m_hiddenEdges & (1 << index)) == 0;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::makeEdgeVisibleAt(Adesk::UInt16 index) {
    return index > 3 ? Acad::eInvalidIndex : hostkit::setFlag(*this, m_hiddenEdges, 1 << index, false);
}

Acad::ErrorStatus AcDbFace::makeEdgeInvisibleAt(Adesk::UInt16 index) {
    return index > 3 ? Acad::eInvalidIndex : hostkit::setFlag(*this, m_hiddenEdges, 1 << index, true);
}

Acad::ErrorStatus AcDbFace::getGeomExtents(AcDbExtents& extents) const {
    extents = AcDbExtents();
    for (const AcGePoint3d& point : m_points) extents.addPoint(point);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::subTransformBy(const AcGeMatrix3d& matrix) {
    if (!hostkit::isInvertible(matrix)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    for (AcGePoint3d& point : m_points) point.transformBy(matrix);
    return Acad::eOk;
}
