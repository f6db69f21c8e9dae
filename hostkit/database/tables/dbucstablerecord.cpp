#include "dbucstablerecord.h"

#include "fielditems.h"
#include "fieldtable.h"

using namespace hostkit;

struct AcDbUCSTableRecord::Filing {
    static constexpr GroupField<AcDbUCSTableRecord> groups[] = {
        textField<&AcDbUCSTableRecord::m_name, AcDbUCSTableRecord>(2),
        integerField<&AcDbUCSTableRecord::m_dxfFlags, AcDbUCSTableRecord>(70),
    };
};

Acad::ErrorStatus AcDbUCSTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbSymbolTableRecord::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbUCSTableRecord")) return status;
    m_groups.clear();
    return readFields(*filer, Filing::groups, *this, [this](const AcDbDxfGroup& group) {
        if (!isStorable(group)) return false;
        m_groups.append(group);
        return true;
    });
}

Acad::ErrorStatus AcDbUCSTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbSymbolTableRecord::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbUCSTableRecord");
    writeFields(*filer, Filing::groups, *this);
    writeBlock(*filer, m_groups);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbUCSTableRecord)
