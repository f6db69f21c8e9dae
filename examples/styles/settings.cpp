#include "settings.h"

#include "aced.h"
#include "dbapserv.h"
#include "dbdatabase.h"
#include "dbsymtb.h"
#include "vexodatabasetools.h"
#include "vexosmartopen.h"

#include <memory>

namespace {

Settings& keptSettings() {
    static Settings settings;
    return settings;
}

AcDbDatabase& drawing() { return *acdbHostApplicationServices()->workingDatabase(); }

AcDbObjectId tableOf(const CString& word) {
    if (word == L"STYLE") return drawing().textStyleTableId();
    return word == L"LTYPE" ? drawing().linetypeTableId() : drawing().dimStyleTableId();
}

void makeCurrent(const wchar_t* table, const CString& name,
                 Acad::ErrorStatus (AcDbDatabase::*setter)(AcDbObjectId)) {
    const AcDbObjectId record = VEXODatabaseTools::getFromSymbolTable(table, name, &drawing());
    if (record.isNull() || (drawing().*setter)(record) != Acad::eOk)
        acutPrintf(L"%s \"%s\" is not in this drawing\n", table, name);
}

} // namespace

Settings currentSettings() {
    Settings settings = keptSettings();
    settings.textStyle = nameOf(drawing().textstyle());
    settings.lineType = nameOf(drawing().celtype());
    settings.dimensionStyle = nameOf(drawing().dimstyle());
    return settings;
}

void applySettings(const Settings& settings) {
    keptSettings() = settings;
    makeCurrent(L"STYLE", settings.textStyle, &AcDbDatabase::setTextstyle);
    makeCurrent(L"LTYPE", settings.lineType, &AcDbDatabase::setCeltype);
    makeCurrent(L"DIMSTYLE", settings.dimensionStyle, &AcDbDatabase::setDimstyle);
}

AcDbObjectIdArray recordsOf(const wchar_t* table) {
    AcDbObjectIdArray records;
    const VEXOSmartOpen<AcDbSymbolTable> opened(tableOf(table), AcDb::kForRead, false);
    AcDbSymbolTableIterator* made = nullptr;
    if (opened.status() != Acad::eOk || opened->newIterator(made) != Acad::eOk) return records;
    const std::unique_ptr<AcDbSymbolTableIterator> each(made);
    for (; !each->done(); each->step()) {
        AcDbObjectId record;
        if (each->getRecordId(record) == Acad::eOk) records.append(record);
    }
    return records;
}

CString nameOf(AcDbObjectId record) {
    const VEXOSmartOpen<AcDbSymbolTableRecord> opened(record, AcDb::kForRead, false);
    const wchar_t* name = L"";
    if (opened.status() == Acad::eOk) opened->getName(name);
    return name;
}
