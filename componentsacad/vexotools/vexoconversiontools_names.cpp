#include "vexoconversiontools.h"

#include "moduledatabase.h"
#include "vexosmartpointer.h"

#include "acdocman.h"
#include "cvxlogentry.h"
#include "dbdatabase.h"
#include "dbobjptr.h"
#include "dbsymtb.h"

#include <cwchar>
#include <string>

namespace vexo {
namespace {

// The record of exactly that name among those of the working drawing.
template <class Table, class Iterator, class Record>
AcDbObjectId recordNamed(const CString& name) {
    if (name.IsEmpty()) return {};
    const AcDbSymbolTablePointer<Table> table(workingDatabase(), AcDb::kForRead);
    Iterator* opened = nullptr;
    if (!table.object() || table->newIterator(opened) != Acad::eOk) return {};
    for (const VEXOSmartPointer<Iterator> walk(opened); !walk->done(); walk->step()) {
        Record* record = nullptr;
        if (walk->getRecord(record, AcDb::kForRead) != Acad::eOk) continue;
        const bool isFound = std::wcscmp(record->name().c_str(), name) == 0;
        const AcDbObjectId id = record->objectId();
        record->close();
        if (isFound) return id;
    }
    return {};
}

} // namespace
} // namespace vexo

AcDbObjectId VEXOConversionTools::GetLineTypeId(CString name) {
    CVxLogEntry entry(L"VEXOConversionTools::GetLineTypeId");
    AcApDocManager* const manager = acDocManagerPtr();
    AcApDocument* const document = manager ? manager->curDocument() : nullptr;
    if (!document || !document->database()) return {};
    const AcDbSymbolTablePointer<AcDbLinetypeTable> table(document->database(), AcDb::kForRead);
    AcDbObjectId id;
    if (table.object()) (void)table->getAt(name, id, false);
    return id;
}

CString VEXOConversionTools::GetLineTypeName(AcDbObjectId id) {
    CVxLogEntry entry(L"VEXOConversionTools::GetLineTypeName");
    const AcDbObjectPointer<AcDbLinetypeTableRecord> record(id, AcDb::kForRead);
    return record.openStatus() == Acad::eOk ? CString(record->name()) : CString();
}

AcDbObjectId VEXOConversionTools::GetTextStyleId(CString name) {
    CVxLogEntry entry(L"VEXOConversionTools::GetTextStyleId");
    return vexo::recordNamed<AcDbTextStyleTable, AcDbTextStyleTableIterator, AcDbTextStyleTableRecord>(name);
}

AcDbObjectId VEXOConversionTools::GetDimStyleId(CString name) {
    CVxLogEntry entry(L"VEXOConversionTools::GetDimStyleId");
    return vexo::recordNamed<AcDbDimStyleTable, AcDbDimStyleTableIterator, AcDbDimStyleTableRecord>(name);
}
