#include "dbopaque.h"

HOSTKIT_KIT_CLASS(AcDbOpaqueObject, AcDbObject, nullptr)
HOSTKIT_KIT_CLASS(AcDbOpaqueEntity, AcDbEntity, nullptr)

Acad::ErrorStatus AcDbOpaqueEntity::subErase(Adesk::Boolean erasing) {
    m_parts.eraseAll(erasing);
    return Acad::eOk;
}

namespace {

// A copy would be without all that only the record says.
Acad::ErrorStatus mayFile(const AcDbDwgFiler* filer) {
    if (!filer) return Acad::eNullObjectPointer;
    return filer->filerType() == AcDb::kUndoFiler || filer->filerType() == AcDb::kIdFiler
               ? Acad::eOk
               : Acad::eNotApplicable;
}

} // namespace

Acad::ErrorStatus AcDbOpaqueObject::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status = mayFile(filer);
    return status == Acad::eOk ? AcDbObject::dwgInFields(filer) : status;
}

Acad::ErrorStatus AcDbOpaqueObject::dwgOutFields(AcDbDwgFiler* filer) const {
    const Acad::ErrorStatus status = mayFile(filer);
    return status == Acad::eOk ? AcDbObject::dwgOutFields(filer) : status;
}

Acad::ErrorStatus AcDbOpaqueEntity::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status = mayFile(filer);
    return status == Acad::eOk ? AcDbEntity::dwgInFields(filer) : status;
}

Acad::ErrorStatus AcDbOpaqueEntity::dwgOutFields(AcDbDwgFiler* filer) const {
    const Acad::ErrorStatus status = mayFile(filer);
    return status == Acad::eOk ? AcDbEntity::dwgOutFields(filer) : status;
}
