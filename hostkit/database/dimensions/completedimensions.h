// Blocks of dimensions that lack one, made before a drawing is saved; leaves out when that is.
#pragma once

#include "dbid.h"

class AcDbDatabase;
class AcDbDimension;

namespace hostkit {

/// Every dimension that was made or changed here and has no block gets one: "*D" and the next free number,
/// with what its layout shows, the layer of its points where it is missing, and its measurement and text
/// place as the layout has them. Dimensions that were not touched since they were read stay as they are,
/// whatever they lack; so do those that give no figure, and those that are open. Part of what undo takes
/// back, as any change; it asks no document's lock. The number of new blocks.
int completeDimensions(AcDbDatabase& database);

} // namespace hostkit
