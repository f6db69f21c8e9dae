// Stand-in for the host's block table. Covers records by name with their own type; leaves out nothing callers ask for.
#pragma once

#include "dbblocktablerecord.h"
#include "dbsymboltable.h"

using AcDbBlockTableIterator = hostkit::SymbolTableIteratorOf<AcDbBlockTableRecord>;

class AcDbBlockTable : public hostkit::SymbolTableOf<AcDbBlockTableRecord, AcDbBlockTableIterator> {
    ACRX_DECLARE_MEMBERS(AcDbBlockTable)

public:
    AcDbBlockTable() = default;
    AcDbBlockTable(const AcDbBlockTable&) = delete;

    /// The stem with the next number that no block has behind it.
    std::wstring freeName(const std::wstring& stem) const;

protected:
    void completeName(AcDbSymbolTableRecord& record) override;
};
