// Stand-in for the host's coordinate system table. Covers records by name with their own type; leaves out nothing callers ask for.
#pragma once

#include "dbsymboltable.h"
#include "dbucstablerecord.h"

using AcDbUCSTableIterator = hostkit::SymbolTableIteratorOf<AcDbUCSTableRecord>;

class AcDbUCSTable : public hostkit::SymbolTableOf<AcDbUCSTableRecord, AcDbUCSTableIterator> {
    ACRX_DECLARE_MEMBERS(AcDbUCSTable)

public:
    AcDbUCSTable() = default;
    AcDbUCSTable(const AcDbUCSTable&) = delete;
};
