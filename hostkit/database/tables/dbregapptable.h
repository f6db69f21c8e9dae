// Stand-in for the host's application table. Covers records by name with their own type; leaves out nothing callers ask for.
#pragma once

#include "dbregapptablerecord.h"
#include "dbsymboltable.h"

using AcDbRegAppTableIterator = hostkit::SymbolTableIteratorOf<AcDbRegAppTableRecord>;

class AcDbRegAppTable : public hostkit::SymbolTableOf<AcDbRegAppTableRecord, AcDbRegAppTableIterator> {
    ACRX_DECLARE_MEMBERS(AcDbRegAppTable)

public:
    AcDbRegAppTable() = default;
    AcDbRegAppTable(const AcDbRegAppTable&) = delete;
};
