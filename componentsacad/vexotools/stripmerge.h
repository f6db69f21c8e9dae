#pragma once

#include "contourareas.h"

#include <vector>

namespace vexo {

/// Merges strips, counter-clockwise loops that do not overlap, that share one whole segment, as
/// MergeContoursIfTheyHaveOneComonSegment finds it: always the first pair in the order of the list that it
/// takes, the merged strip going to the list's end, until it takes none. Only pairs that have segments with
/// the same ends are asked, so the work grows with the number of segments and not with the number of pairs.
void mergeStrips(std::vector<ContourLoop>& strips);

} // namespace vexo
