#include "dbregapptablerecord.h"
#include "dbucstablerecord.h"
#include "dbviewporttablerecord.h"
#include "dbviewtablerecord.h"

#include "assignfield.h"

#include "casefold.h"

// The records whose groups are kept without a meaning of their own.

HOSTKIT_KIT_CLASS(AcDbViewTableRecord, AcDbAbstractViewTableRecord, L"VIEW")
HOSTKIT_KIT_CLASS(AcDbUCSTableRecord, AcDbSymbolTableRecord, L"UCS")
HOSTKIT_KIT_CLASS(AcDbViewportTableRecord, AcDbAbstractViewTableRecord, L"VPORT")
HOSTKIT_KIT_CLASS(AcDbRegAppTableRecord, AcDbSymbolTableRecord, L"APPID")

Acad::ErrorStatus AcDbUCSTableRecord::setGroups(hostkit::GroupBlock groups) {
    return hostkit::assignIf(groups.isFinite(), *this, m_groups, std::move(groups));
}

bool AcDbViewportTableRecord::allowsName(std::wstring_view name) const {
    return isValidName(name) || hostkit::equalFolded(name, L"*Active");
}

Acad::ErrorStatus AcDbRegAppTableRecord::subErase(Adesk::Boolean erasing) {
    if (erasing && hostkit::equalFolded(m_name, L"ACAD")) return Acad::eCannotBeErasedByCaller;
    return AcDbSymbolTableRecord::subErase(erasing);
}
