#include "db3dvertex.h"

#include "fieldsetters.h"

HOSTKIT_KIT_CLASS(AcDb3dPolylineVertex, AcDbEntity, L"VERTEX")

AcDb::Vertex3dType AcDb3dPolylineVertex::vertexType() const {
    if ((m_dxfFlags & AcDb::k3dControlVertex) != 0) return AcDb::k3dControlVertex;
    return (m_dxfFlags & AcDb::k3dFitVertex) != 0 ? AcDb::k3dFitVertex : AcDb::k3dSimpleVertex;
}

Acad::ErrorStatus AcDb3dPolylineVertex::setPosition(const AcGePoint3d& position) {
    return hostkit::setFiniteField(*this, m_position, position);
}

Acad::ErrorStatus AcDb3dPolylineVertex::getGeomExtents(AcDbExtents& extents) const {
    return extents.set(m_position, m_position) == Acad::eOk ? Acad::eOk : Acad::eInvalidExtents;
}

Acad::ErrorStatus AcDb3dPolylineVertex::subTransformBy(const AcGeMatrix3d& matrix) {
    if (!hostkit::isInvertible(matrix)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) m_position.transformBy(matrix);
    return status;
}
