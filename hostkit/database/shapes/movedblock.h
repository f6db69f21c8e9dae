// Blocks of dimensions: where one is shown, and a copy of it with its contents moved; leaves out who else
// shows it.
#pragma once

#include "gemat3d.h"
#include "newblock.h"

class AcDbDimension;

namespace hostkit {

/// From the coordinates of the dimension's block to those of the world: a block is shown displaced by the
/// dimension's point 12, whatever its other points are.
AcGeMatrix3d blockPlacement(const AcDbDimension& dimension);

/// Non-resident copies of what the block holds, erased entities left out, moved. False where one cannot be
/// copied or moved.
bool copyMoved(const AcDbBlockTableRecord& block, const AcGeMatrix3d& matrix, BlockContents& copies);

/// The block that shows a dimension after a motion: the earlier one with its contents moved, where nothing
/// else shows it and nobody has a part of it open; else a new one ("*D" and the next free number) with moved
/// copies in the same order, erased entities left out. Extension dictionaries and reactors of the contents
/// stay with the originals, as with every copy. Null, and nothing changes: the earlier one is no block of the
/// dimension's drawing, or holds what cannot be copied or moved. The block table may be open elsewhere.
AcDbObjectId movedBlock(const AcDbDimension& dimension, AcDbObjectId earlier, const AcGeMatrix3d& matrix);

} // namespace hostkit
