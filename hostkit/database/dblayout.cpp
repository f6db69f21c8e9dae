#include "dblayout.h"

#include "assignfield.h"

HOSTKIT_KIT_CLASS(AcDbLayout, AcDbObject, L"LAYOUT")

Acad::ErrorStatus AcDbLayout::setLayoutName(const wchar_t* name) {
    return hostkit::assignIf(name && *name, *this, m_name, name ? name : L"");
}

Acad::ErrorStatus AcDbLayout::setBlockTableRecordId(AcDbObjectId id) {
    return hostkit::assignField(*this, m_blockId, id);
}

Acad::ErrorStatus AcDbLayout::setTabOrder(int order) {
    return hostkit::assignIf(order >= 0 && order <= 32767, *this, m_tabOrder,
                             static_cast<Adesk::Int16>(order));
}
