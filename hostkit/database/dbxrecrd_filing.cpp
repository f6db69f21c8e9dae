#include "dbxrecrd.h"

#include "fielditems.h"
#include "fieldtable.h"

using namespace hostkit;

struct AcDbXrecord::Filing {
    static constexpr short mergeStyleCode = 280;
};

// The merge style is the first group; the same code further on is data. R13 and R14 have none.
Acad::ErrorStatus AcDbXrecord::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbObject::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbXrecord")) return status;
    m_groups.clear();
    AcDbDxfGroup group;
    for (bool isFirst = true;; isFirst = false) {
        const Acad::ErrorStatus read = filer->readItem(group);
        if (read == Acad::eEndOfObject) return Acad::eOk;
        if (read != Acad::eOk) return read;
        if (!isStorable(group))
            filer->rejectItem();
        else if (isFirst && group.code == Filing::mergeStyleCode)
            m_mergeStyle = static_cast<Adesk::Int16>(group.integer);
        else
            m_groups.append(group);
    }
}

Acad::ErrorStatus AcDbXrecord::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbObject::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbXrecord");
    if (m_mergeStyle == AcDb::kDrcIgnore) filer->markOptional();
    filer->writeInteger(Filing::mergeStyleCode, m_mergeStyle);
    writeBlock(*filer, m_groups);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbXrecord)
