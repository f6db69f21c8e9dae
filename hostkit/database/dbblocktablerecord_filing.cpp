#include "dbblocktablerecord.h"

#include "fielditems.h"
#include "fieldtable.h"

using namespace hostkit;

struct AcDbBlockTableRecord::Filing {
    using Record = AcDbBlockTableRecord;
    static constexpr GroupField<Record> groups[] = {
        textField<&Record::m_name, Record>(2),        idField<&Record::m_layoutId>(340),
        integerField<&Record::m_insertUnits>(70, 0),  integerField<&Record::m_explodability>(280, 1),
        integerField<&Record::m_scalability>(281, 0),
    };
    /// What a text drawing has with the block's beginning.
    static constexpr GroupField<Record> blockGroups[] = {
        integerField<&Record::m_dxfFlags, Record>(70),
        pointField<&Record::m_origin>(10),
        textField<&Record::m_pathName>(1),
        textField<&Record::m_comments>(4),
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
    const bool hasLayout = filer->files(m_layoutId);
    if (!hasLayout) filer->markOptional();
    filer->writeItem(layout.code, hasLayout ? m_layoutId : AcDbObjectId());
    for (const auto* field : {&units, &explodability, &scalability}) field->write(*this, *field, *filer);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbBlockTableRecord::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status =
        readFieldItems(filer, *this, [](AcDbObject& object, AcDbDxfFiler* groups) {
            return static_cast<Filing::Record&>(object).AcDbBlockTableRecord::dxfInFields(groups);
        });
    if (status != Acad::eOk) return status;
    return readFieldItems(filer, *this, [](AcDbObject& object, AcDbDxfFiler* groups) {
        return readFields(*groups, Filing::blockGroups, static_cast<Filing::Record&>(object));
    });
}

Acad::ErrorStatus AcDbBlockTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
    const Acad::ErrorStatus status =
        writeFieldItems(filer, *this, [](const AcDbObject& object, AcDbDxfFiler* groups) {
            return static_cast<const Filing::Record&>(object).AcDbBlockTableRecord::dxfOutFields(groups);
        });
    if (status != Acad::eOk) return status;
    return writeFieldItems(filer, *this, [](const AcDbObject& object, AcDbDxfFiler* groups) {
        writeFields(*groups, Filing::blockGroups, static_cast<const Filing::Record&>(object));
        return groups->filerStatus();
    });
}
