#include "symbolnames.h"

namespace hostkit {

bool readRecord(const AcDbDxfFiler& filer, TableKind kind, const AcDbDxfGroup& group, AcDbObjectId& record) {
    if (filer.recordOf(group, record)) return true;
    const AcDbDatabase* const database = filer.database();
    if (!database) return false;
    const AcDbObject* const table = DatabaseAccess::object(DatabaseAccess::table(*database, kind));
    const AcDbObjectId found =
        table ? static_cast<const AcDbSymbolTable*>(table)->find(group.text) : AcDbObjectId();
    if (found.isNull()) return false;
    record = found;
    return true;
}

std::wstring_view symbolName(AcDbObjectId id, std::wstring_view otherwise) {
    if (id.isNull() || id.isErased()) return otherwise;
    const auto* const record = DatabaseAccess::objectOf<AcDbSymbolTableRecord>(id);
    return record ? std::wstring_view(record->name()) : otherwise;
}

} // namespace hostkit
