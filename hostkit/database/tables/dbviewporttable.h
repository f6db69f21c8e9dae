// Stand-in for the host's viewport table. Covers records by name with their own type; leaves out nothing callers ask for.
#pragma once

#include "dbsymboltable.h"
#include "dbviewporttablerecord.h"

using AcDbViewportTableIterator = hostkit::SymbolTableIteratorOf<AcDbViewportTableRecord>;

class AcDbViewportTable : public hostkit::SymbolTableOf<AcDbViewportTableRecord, AcDbViewportTableIterator> {
    ACRX_DECLARE_MEMBERS(AcDbViewportTable)

public:
    AcDbViewportTable() = default;
    AcDbViewportTable(const AcDbViewportTable&) = delete;

protected:
    bool allowsDuplicateNames() const override { return true; } // one record a viewport of a configuration
};
