#include "dbsymboltable.h"

#include "fielditems.h"
#include "fieldtable.h"

#include <algorithm>

using namespace hostkit;

struct AcDbSymbolTable::Filing {
    static constexpr short countCode = 70;
};

// The count in a file is what its writer made of it; the records count themselves.
Acad::ErrorStatus AcDbSymbolTable::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbObject::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbSymbolTable")) return status;
    AcDbDxfGroup group;
    for (;;) {
        const Acad::ErrorStatus read = filer->readItem(group);
        if (read == Acad::eEndOfObject) return Acad::eOk;
        if (read != Acad::eOk) return read;
        if (group.code != Filing::countCode) filer->rejectItem();
    }
}

Acad::ErrorStatus AcDbSymbolTable::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbObject::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbSymbolTable");
    filer->writeInteger(Filing::countCode, std::count_if(m_records.begin(), m_records.end(),
                                                         [](AcDbObjectId id) { return !id.isErased(); }));
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbSymbolTable)
