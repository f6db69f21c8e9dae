// New blocks of a drawing, made without opening its block table; leaves out attributes and layouts.
#pragma once

#include "dbblocktablerecord.h"
#include "dbent.h"

#include <memory>
#include <string_view>
#include <vector>

class AcDbBlockTable;

namespace hostkit {

using BlockContents = std::vector<std::unique_ptr<AcDbEntity>>;

/// Enters the record, non-resident and without contents of its own, into the table of a drawing under a free
/// name, with the entities in their order. The table may be open elsewhere; it counts as changed.
AcDbObjectId addBlock(AcDbBlockTable& table, std::unique_ptr<AcDbBlockTableRecord> record,
                      std::wstring_view name, BlockContents&& contents);

} // namespace hostkit
