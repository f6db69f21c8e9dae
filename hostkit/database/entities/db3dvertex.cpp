#include "db3dvertex.h"

#include "fielditems.h"
#include "fieldsetters.h"
#include "fieldtable.h"

using namespace hostkit;

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

// --- Filing ------------------------------------------------------------------------------------------------

struct AcDb3dPolylineVertex::Filing {
    static constexpr GroupField<AcDb3dPolylineVertex> groups[] = {
        pointField<&AcDb3dPolylineVertex::m_position>(10),
        integerField<&AcDb3dPolylineVertex::m_dxfFlags>(70),
    };
};

Acad::ErrorStatus AcDb3dPolylineVertex::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer);
    if (status != Acad::eOk) return status;
    (void)filer->atSubclassData(L"AcDbVertex");
    if (!filer->atSubclassData(L"AcDb3dPolylineVertex")) return status;
    return readFields(*filer, Filing::groups, *this);
}

Acad::ErrorStatus AcDb3dPolylineVertex::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbVertex");
    filer->writeSubclassMark(L"AcDb3dPolylineVertex");
    writeFields(*filer, Filing::groups, *this);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDb3dPolylineVertex)
