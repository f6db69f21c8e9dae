// Stand-in for the host's layer table. Covers records by name with their own type; leaves out nothing callers ask for.
#pragma once

#include "dblayertablerecord.h"
#include "dbsymboltable.h"

using AcDbLayerTableIterator = hostkit::SymbolTableIteratorOf<AcDbLayerTableRecord>;

class AcDbLayerTable : public hostkit::SymbolTableOf<AcDbLayerTableRecord, AcDbLayerTableIterator> {
    ACRX_DECLARE_MEMBERS(AcDbLayerTable)

public:
    AcDbLayerTable() = default;
    AcDbLayerTable(const AcDbLayerTable&) = delete;

protected:
    const wchar_t* currentVariable() const override { return L"CLAYER"; }
};
