// Blocks as parts of what is drawn.
#pragma once

#include "dbid.h"
#include "gemat3d.h"

class AcDbEntity;
class AcGiWorldDraw;

namespace hostkit {

/// What stands in the block, as a reference in the look of the traits would show it. Nothing for an id of no
/// block.
void drawBlock(AcGiWorldDraw& draw, AcDbObjectId block, const AcGeMatrix3d& toWorld);

/// The block, or null where an entity cannot show it: it is erased, no block, or holds the one in which the
/// entity stands, so that there would be no end.
AcDbObjectId blockToShow(const AcDbEntity& entity, AcDbObjectId block);

} // namespace hostkit
