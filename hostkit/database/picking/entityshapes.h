// What a single entity shows to a region: curves, areas, texts and boxes of every class; leaves out what
// references and dimensions show of blocks.
#pragma once

#include "regionprobe.h"

class AcDbEntity;

namespace hostkit {

/// Shows the entity, seen by the map. `isInBlock`: a definition of an attribute shows its text there, not its
/// tag; whether it is seen at all is the caller's to know. Of a reference nothing is shown, of a dimension
/// the box of its points.
void showEntity(RegionProbe& probe, const AcDbEntity& entity, const ViewMap& toView, bool isInBlock);

} // namespace hostkit
