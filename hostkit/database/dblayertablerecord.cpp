#include "dblayertablerecord.h"

#include "assignfield.h"
#include "dbaccess.h"
#include "dblinetypetablerecord.h"
#include "lineweights.h"

#include "casefold.h"

HOSTKIT_KIT_CLASS(AcDbLayerTableRecord, AcDbSymbolTableRecord, L"LAYER")

using hostkit::assignField;

Acad::ErrorStatus AcDbLayerTableRecord::setIsOff(bool off) { return assignField(*this, m_off, off); }

Acad::ErrorStatus AcDbLayerTableRecord::setIsFrozen(bool frozen) {
    if (frozen && database() && database()->clayer() == objectId()) return Acad::eNotApplicable;
    return assignField(*this, m_frozen, frozen);
}

Acad::ErrorStatus AcDbLayerTableRecord::setIsLocked(bool locked) {
    return assignField(*this, m_locked, locked);
}

Acad::ErrorStatus AcDbLayerTableRecord::setIsPlottable(bool plottable) {
    return assignField(*this, m_plottable, plottable);
}

Acad::ErrorStatus AcDbLayerTableRecord::setVPDFLT(bool frozen) {
    return assignField(*this, m_frozenInNewViewports, frozen);
}

Acad::ErrorStatus AcDbLayerTableRecord::setColor(const AcCmColor& color) {
    const bool isOwn = !color.isByLayer() && !color.isByBlock();
    return hostkit::assignIf(isOwn, *this, m_color, color.entityColor());
}

Acad::ErrorStatus AcDbLayerTableRecord::setLinetypeObjectId(AcDbObjectId id) {
    const AcDbObject* object = hostkit::DatabaseAccess::object(id);
    if (!id.isNull() && (!object || !object->isKindOf(AcDbLinetypeTableRecord::desc())))
        return Acad::eNotThatKindOfClass;
    return assignField(*this, m_linetypeId, id);
}

Acad::ErrorStatus AcDbLayerTableRecord::setLineWeight(AcDb::LineWeight weight) {
    const bool isOwn = weight >= 0 || weight == AcDb::kLnWtByLwDefault;
    return hostkit::assignIf(isOwn && hostkit::isLineWeight(weight), *this, m_lineWeight,
                             static_cast<Adesk::Int16>(weight));
}

Acad::ErrorStatus AcDbLayerTableRecord::subErase(Adesk::Boolean erasing) {
    const bool isCurrent = database() && database()->clayer() == objectId();
    if (erasing && (isCurrent || m_name == L"0")) return Acad::eCannotBeErasedByCaller;
    return AcDbSymbolTableRecord::subErase(erasing);
}
