#include "symbolnames.h"

#include <algorithm>

namespace hostkit {

namespace {

// Some programs leave blanks around a name, which are no part of it.
std::wstring_view withoutBlanksAround(std::wstring_view name) {
    const std::size_t begin = std::min(name.find_first_not_of(L" \t"), name.size());
    return name.substr(begin, name.find_last_not_of(L" \t") + 1 - begin);
}

} // namespace

void readRecord(const AcDbDxfFiler& filer, TableKind kind, const AcDbDxfGroup& group, AcDbObject& object,
                AcDbObjectId& record) {
    if (filer.recordOf(group, record)) return;
    const AcDbDatabase* const database = filer.database();
    const AcDbObject* const table =
        database ? DatabaseAccess::object(DatabaseAccess::table(*database, kind)) : nullptr;
    record = table ? static_cast<const AcDbSymbolTable*>(table)->find(withoutBlanksAround(group.text))
                   : AcDbObjectId();
    if (record.isNull())
        DatabaseAccess::setUnknownName(object, group.code, group.text);
    else
        DatabaseAccess::forgetUnknownName(object, group.code);
}

void takeStandardRecord(const AcDbDxfFiler& filer, TableKind kind, short code, const AcDbObject& object,
                        AcDbObjectId& record) {
    const AcDbDatabase* const database = filer.database();
    AcDbObjectId none;
    if (!record.isNull() || !database || filer.filerType() != AcDb::kFileFiler || filer.recordOf({}, none) ||
        DatabaseAccess::unknownName(object, code))
        return;
    if (const AcDbObject* const table = DatabaseAccess::object(DatabaseAccess::table(*database, kind)))
        record = static_cast<const AcDbSymbolTable*>(table)->find(L"STANDARD");
}

void writeRecord(AcDbDxfFiler& filer, short code, const AcDbObject& object, AcDbObjectId record,
                 std::wstring_view otherwise) {
    const std::wstring* const unknown = record.isNull() ? DatabaseAccess::unknownName(object, code) : nullptr;
    if (unknown && unknown->empty())
        filer.writeText(code, L"");
    else
        filer.writeRecordName(code, record, unknown ? *unknown : symbolName(record, otherwise));
}

std::wstring_view symbolName(AcDbObjectId id, std::wstring_view otherwise) {
    if (id.isNull() || id.isErased()) return otherwise;
    const auto* const record = DatabaseAccess::objectOf<AcDbSymbolTableRecord>(id);
    return record ? std::wstring_view(record->name()) : otherwise;
}

} // namespace hostkit
