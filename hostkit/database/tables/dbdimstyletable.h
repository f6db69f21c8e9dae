// Stand-in for the host's dimension style table. Covers records by name with their own type; leaves out nothing callers ask for.
#pragma once

#include "dbdimstyletablerecord.h"
#include "dbsymboltable.h"

using AcDbDimStyleTableIterator = hostkit::SymbolTableIteratorOf<AcDbDimStyleTableRecord>;

class AcDbDimStyleTable : public hostkit::SymbolTableOf<AcDbDimStyleTableRecord, AcDbDimStyleTableIterator> {
    ACRX_DECLARE_MEMBERS(AcDbDimStyleTable)

public:
    AcDbDimStyleTable() = default;
    AcDbDimStyleTable(const AcDbDimStyleTable&) = delete;

protected:
    const wchar_t* currentVariable() const override { return L"DIMSTYLE"; }
};
