#include "dbviewporttablerecord.h"

#include "fielditems.h"
#include "fieldtable.h"

using namespace hostkit;

struct AcDbViewportTableRecord::Filing {
    static constexpr GroupField<AcDbViewportTableRecord> groups[] = {
        textField<&AcDbViewportTableRecord::m_name, AcDbViewportTableRecord>(2),
        integerField<&AcDbViewportTableRecord::m_dxfFlags, AcDbViewportTableRecord>(70),
    };
};

Acad::ErrorStatus AcDbViewportTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbSymbolTableRecord::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbViewportTableRecord")) return status;
    m_groups.clear();
    return readFields(*filer, Filing::groups, *this, [this](const AcDbDxfGroup& group) {
        if (!isStorable(group)) return false;
        m_groups.append(group);
        return true;
    });
}

Acad::ErrorStatus AcDbViewportTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbSymbolTableRecord::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbViewportTableRecord");
    writeFields(*filer, Filing::groups, *this);
    writeBlock(*filer, m_groups);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbViewportTableRecord)
