// Blocks as parts of what is drawn.
#pragma once

#include "dbid.h"
#include "gemat3d.h"

class AcGiWorldDraw;

namespace hostkit {

/// What stands in the block, as a reference in the look of the traits would show it; for explosion piece by
/// piece, moved to its place. Nothing for an id of no block, and for a block within itself: records of kinds
/// without a class may make such circles.
void drawBlock(AcGiWorldDraw& draw, AcDbObjectId block, const AcGeMatrix3d& toWorld);

/// The same id, or null for one of no block and for that of an erased one.
AcDbObjectId blockToShow(AcDbObjectId block);

} // namespace hostkit
