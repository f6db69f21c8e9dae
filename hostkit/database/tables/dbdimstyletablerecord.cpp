#include "dbdimstyletablerecord.h"

#include "fielditems.h"
#include "fieldtable.h"

using namespace hostkit;

struct AcDbDimStyleTableRecord::Filing {
    static constexpr GroupField<AcDbDimStyleTableRecord> groups[] = {
        textField<&AcDbDimStyleTableRecord::m_name, AcDbDimStyleTableRecord>(2),
        integerField<&AcDbDimStyleTableRecord::m_dxfFlags, AcDbDimStyleTableRecord>(70),
    };
};

Acad::ErrorStatus AcDbDimStyleTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbSymbolTableRecord::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbDimStyleTableRecord")) return status;
    m_groups.clear();
    constexpr short arrowBlockCode = 5;
    return readFields(*filer, Filing::groups, *this, [this](const AcDbDxfGroup& group) {
        // In R12 this is an arrow block's name, elsewhere the code is that of handles: it stays in the file
        // alone.
        if (group.code == arrowBlockCode || !isStorable(group)) return false;
        m_groups.append(group);
        return true;
    });
}

Acad::ErrorStatus AcDbDimStyleTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbSymbolTableRecord::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbDimStyleTableRecord");
    writeFields(*filer, Filing::groups, *this);
    writeBlock(*filer, m_groups);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbDimStyleTableRecord)
