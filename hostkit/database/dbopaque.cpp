#include "dbopaque.h"

HOSTKIT_KIT_CLASS(AcDbOpaqueObject, AcDbObject, nullptr)
HOSTKIT_KIT_CLASS(AcDbOpaqueEntity, AcDbEntity, nullptr)

Acad::ErrorStatus AcDbOpaqueEntity::subErase(Adesk::Boolean erasing) {
    m_parts.eraseAll(erasing);
    return Acad::eOk;
}
