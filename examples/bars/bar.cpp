#include "bar.h"

#include "acgi.h"

ACRX_DXF_DEFINE_MEMBERS(ExampleBar, AcDbEntity, AcDb::kDHL_CURRENT, 0, 0, VEXOBAR, BARS)

namespace {

constexpr short startCode = 10;
constexpr short endCode = 11;
constexpr short diameterCode = 40;
constexpr wchar_t subclass[] = L"ExampleBar";

AcGePoint3d pointOf(const AcDbDxfGroup& group) { return {group.point[0], group.point[1], group.point[2]}; }

} // namespace

Acad::ErrorStatus ExampleBar::getGeomExtents(AcDbExtents& extents) const {
    const AcGeVector3d reach(m_diameter / 2.0, m_diameter / 2.0, m_diameter / 2.0);
    AcDbExtents box;
    for (const AcGePoint3d& end : {m_start, m_end}) {
        box.addPoint(end - reach);
        box.addPoint(end + reach);
    }
    extents = box;
    return Acad::eOk;
}

Adesk::Boolean ExampleBar::worldDraw(AcGiWorldDraw* draw) {
    AcGeVector3d across = AcGeVector3d::kZAxis.crossProduct(m_end - m_start);
    draw->subEntityTraits().setFillType(kAcGiFillAlways);
    if (across.isZeroLength()) {
        draw->geometry().circle(m_start, m_diameter / 2.0, AcGeVector3d::kZAxis);
    } else {
        across = across.normal() * (m_diameter / 2.0);
        const AcGePoint3d corners[] = {m_start - across, m_end - across, m_end + across, m_start + across};
        draw->geometry().polygon(4, corners);
    }
    return Adesk::kTrue;
}

Acad::ErrorStatus ExampleBar::subTransformBy(const AcGeMatrix3d& matrix) {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    m_start.transformBy(matrix);
    m_end.transformBy(matrix);
    return Acad::eOk;
}

Acad::ErrorStatus ExampleBar::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(subclass)) return status;
    for (AcDbDxfGroup group; (status = filer->readItem(group)) == Acad::eOk;) {
        if (group.code == startCode)
            m_start = pointOf(group);
        else if (group.code == endCode)
            m_end = pointOf(group);
        else if (group.code == diameterCode)
            m_diameter = group.real;
        else
            filer->rejectItem();
    }
    return status == Acad::eEndOfObject ? Acad::eOk : status;
}

Acad::ErrorStatus ExampleBar::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(subclass);
    filer->writeItem(startCode, m_start);
    filer->writeItem(endCode, m_end);
    filer->writeItem(diameterCode, m_diameter);
    return filer->filerStatus();
}

Acad::ErrorStatus ExampleBar::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) status = AcDbEntity::dwgInFields(filer);
    if (status != Acad::eOk) return status;
    filer->readPoint3d(&m_start);
    filer->readPoint3d(&m_end);
    filer->readDouble(&m_diameter);
    return filer->filerStatus();
}

Acad::ErrorStatus ExampleBar::dwgOutFields(AcDbDwgFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dwgOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writePoint3d(m_start);
    filer->writePoint3d(m_end);
    filer->writeDouble(m_diameter);
    return filer->filerStatus();
}
