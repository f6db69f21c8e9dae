#include "dbblocktablerecord.h"

#include "fieldtable.h"

using namespace hostkit;

struct AcDbBlockTableRecord::Filing {
    using Record = AcDbBlockTableRecord;
    static constexpr GroupField<Record> groups[] = {
        textField<&Record::m_name, Record>(2),        idField<&Record::m_layoutId>(340),
        integerField<&Record::m_insertUnits>(70, 0),  integerField<&Record::m_explodability>(280, 1),
        integerField<&Record::m_scalability>(281, 0),
    };
};

Acad::ErrorStatus AcDbBlockTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbSymbolTableRecord::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbBlockTableRecord")) return status;
    return readFields(*filer, Filing::groups, *this);
}

Acad::ErrorStatus AcDbBlockTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbSymbolTableRecord::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbBlockTableRecord");
    const auto& [name, layout, units, explodability, scalability] = Filing::groups;
    name.write(*this, name, *filer);
    if (m_layoutId.isNull()) filer->markOptional();
    filer->writeItem(layout.code, m_layoutId);
    for (const auto* field : {&units, &explodability, &scalability}) field->write(*this, *field, *filer);
    return filer->filerStatus();
}
