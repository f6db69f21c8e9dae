// Stand-in for the host's view table. Covers records by name with their own type; leaves out nothing callers ask for.
#pragma once

#include "dbsymboltable.h"
#include "dbviewtablerecord.h"

using AcDbViewTableIterator = hostkit::SymbolTableIteratorOf<AcDbViewTableRecord>;

class AcDbViewTable : public hostkit::SymbolTableOf<AcDbViewTableRecord, AcDbViewTableIterator> {
    ACRX_DECLARE_MEMBERS(AcDbViewTable)

public:
    AcDbViewTable() = default;
    AcDbViewTable(const AcDbViewTable&) = delete;
};
