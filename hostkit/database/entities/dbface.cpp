#include "dbface.h"

#include "fielditems.h"
#include "fieldsetters.h"
#include "fieldtable.h"

using namespace hostkit;

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

// --- Filing ------------------------------------------------------------------------------------------------

struct AcDbFace::Filing {
    static constexpr short firstCornerCode = 10;
    static constexpr short cornerCount = 4;
    static constexpr GroupField<AcDbFace> groups[] = {
        integerField<&AcDbFace::m_hiddenEdges>(70, 0),
    };
};

// A record without a fourth corner is a triangle: its third corner counts twice.
Acad::ErrorStatus AcDbFace::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbFace")) return status;
    bool hasLast = false;
    status = readFields(*filer, Filing::groups, *this, [&](const AcDbDxfGroup& group) {
        const int corner = group.code - Filing::firstCornerCode;
        if (corner < 0 || corner >= Filing::cornerCount) return false;
        m_points[corner].set(group.point[0], group.point[1], group.point[2]);
        hasLast = hasLast || corner == Filing::cornerCount - 1;
        return true;
    });
    if (!hasLast) m_points[3] = m_points[2];
    return status;
}

Acad::ErrorStatus AcDbFace::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbFace");
    for (short corner = 0; corner < Filing::cornerCount; ++corner)
        filer->writeItem(static_cast<short>(Filing::firstCornerCode + corner), m_points[corner]);
    writeFields(*filer, Filing::groups, *this);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbFace)
