// Stand-in for the host's text style table. Covers records by name with their own type; leaves out nothing callers ask for.
#pragma once

#include "dbsymboltable.h"
#include "dbtextstyletablerecord.h"

using AcDbTextStyleTableIterator = hostkit::SymbolTableIteratorOf<AcDbTextStyleTableRecord>;

class AcDbTextStyleTable
    : public hostkit::SymbolTableOf<AcDbTextStyleTableRecord, AcDbTextStyleTableIterator> {
    ACRX_DECLARE_MEMBERS(AcDbTextStyleTable)

public:
    AcDbTextStyleTable() = default;
    AcDbTextStyleTable(const AcDbTextStyleTable&) = delete;

protected:
    const wchar_t* currentVariable() const override { return L"TEXTSTYLE"; }
};
