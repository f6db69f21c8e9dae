// What a single entity shows to a region: curves, areas, texts and boxes of every class; leaves out what
// references and dimensions show of blocks.
#pragma once

#include "regionprobe.h"

class AcDbEntity;

namespace hostkit {

/// Shows the entity, seen by the map. `isInBlock`: a definition of an attribute shows its text there, not its
/// tag; whether it is seen at all is the caller's to know. Of a reference nothing is shown, of a dimension
/// its layout. Kinds that are only known by what they draw show that: curves within the deviation for the
/// region's chords, what stands on seen layers of the blocks that they draw, clips by their boxes. One that
/// draws nothing shows its box.
void showEntity(RegionProbe& probe, const AcDbEntity& entity, const ViewMap& toView, bool isInBlock);

/// False for the kinds whose fields tell what they show.
bool isShownAsDrawn(const AcDbEntity& entity);

} // namespace hostkit
