// Check of blocks that would hold themselves: references within references; leaves out what the blocks show.
#pragma once

#include "dbid.h"

class AcDbObject;

namespace hostkit {

/// Is `wanted` the block or a block within it, however deep. Looks at each entity of each of these blocks
/// once; dimensions and references that are erased do not count.
bool holdsBlock(AcDbObjectId block, AcDbObjectId wanted);

/// The block that a reference or a dimension shows; null for other objects.
AcDbObjectId shownBlock(const AcDbObject& object);

} // namespace hostkit
