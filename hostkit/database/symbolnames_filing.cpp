#include "symbolnames.h"

namespace hostkit {

AcDbObjectId symbolId(const AcDbDxfFiler& filer, TableKind kind, std::wstring_view name) {
    const AcDbDatabase* const database = filer.database();
    if (!database) return {};
    const AcDbObject* const table = DatabaseAccess::object(DatabaseAccess::table(*database, kind));
    return table ? static_cast<const AcDbSymbolTable*>(table)->find(name) : AcDbObjectId();
}

std::wstring_view symbolName(AcDbObjectId id, std::wstring_view otherwise) {
    if (id.isNull() || id.isErased()) return otherwise;
    const auto* const record = DatabaseAccess::objectOf<AcDbSymbolTableRecord>(id);
    return record ? std::wstring_view(record->name()) : otherwise;
}

} // namespace hostkit
