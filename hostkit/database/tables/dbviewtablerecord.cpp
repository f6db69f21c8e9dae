#include "dbviewtablerecord.h"

#include "fielditems.h"
#include "fieldtable.h"

using namespace hostkit;

struct AcDbViewTableRecord::Filing {
    static constexpr GroupField<AcDbViewTableRecord> groups[] = {
        textField<&AcDbViewTableRecord::m_name, AcDbViewTableRecord>(2),
        integerField<&AcDbViewTableRecord::m_dxfFlags, AcDbViewTableRecord>(70),
    };
};

Acad::ErrorStatus AcDbViewTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbSymbolTableRecord::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbViewTableRecord")) return status;
    m_groups.clear();
    return readFields(*filer, Filing::groups, *this, [this](const AcDbDxfGroup& group) {
        if (!isStorable(group)) return false;
        m_groups.append(group);
        return true;
    });
}

Acad::ErrorStatus AcDbViewTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbSymbolTableRecord::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbViewTableRecord");
    writeFields(*filer, Filing::groups, *this);
    writeBlock(*filer, m_groups);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbViewTableRecord)
