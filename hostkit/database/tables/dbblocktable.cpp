#include "dbblocktable.h"

#include "dbaccess.h"

HOSTKIT_KIT_CLASS(AcDbBlockTable, AcDbSymbolTable, L"TABLE")

// "*U" and the like: a star and one letter ask for the next free number.
void AcDbBlockTable::completeName(AcDbSymbolTableRecord& record) {
    const std::wstring stem = record.name();
    if (stem.size() != 2 || stem[0] != L'*') return;
    hostkit::DatabaseAccess::setRecordName(record, freeName(stem));
}

std::wstring AcDbBlockTable::freeName(const std::wstring& stem) const {
    for (std::size_t number = numRecords();; ++number)
        if (std::wstring name = stem + std::to_wstring(number); find(name).isNull()) return name;
}
