// Stand-in for the host's blocks that follow what they show. Covers a copy of a block with its contents moved; leaves out who shows it.
#pragma once

#include "dbid.h"
#include "gemat3d.h"

class AcDbDatabase;

namespace hostkit {

/// Adds a dimension's block ("*D" and the next free number) with moved copies of what the other block holds,
/// in its order, erased entities left out. Null, and nothing is added: the other one is no block of this
/// drawing, or holds what cannot be copied or moved. The block table may be open elsewhere. Extension
/// dictionaries and reactors of the contents stay with the originals, as with every copy.
AcDbObjectId addMovedBlock(AcDbDatabase& database, AcDbObjectId block, const AcGeMatrix3d& matrix);

/// Erases a block that nobody needs any more; one that is open stays.
void eraseBlock(AcDbObjectId block);

} // namespace hostkit
