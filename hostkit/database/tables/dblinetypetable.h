// Stand-in for the host's linetype table. Covers records by name with their own type; leaves out nothing callers ask for.
#pragma once

#include "dblinetypetablerecord.h"
#include "dbsymboltable.h"

using AcDbLinetypeTableIterator = hostkit::SymbolTableIteratorOf<AcDbLinetypeTableRecord>;

class AcDbLinetypeTable : public hostkit::SymbolTableOf<AcDbLinetypeTableRecord, AcDbLinetypeTableIterator> {
    ACRX_DECLARE_MEMBERS(AcDbLinetypeTable)

public:
    AcDbLinetypeTable() = default;
    AcDbLinetypeTable(const AcDbLinetypeTable&) = delete;

protected:
    const wchar_t* currentVariable() const override { return L"CELTYPE"; }
};
