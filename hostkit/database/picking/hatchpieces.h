// Areas of hatches in the view plane: loops as pieces, and those of them that bound what is filled; leaves
// out patterns.
#pragma once

#include "viewpieces.h"

#include <vector>

class AcDbHatch;

namespace hostkit {

/// The boundary of what the hatch fills, by even and odd: the loops that HatchArea takes. Edges of a loop may
/// run either way; gaps between them are closed.
std::vector<PlanePiece> filledBoundary(const AcDbHatch& hatch, const ViewMap& toView, double deviation,
                                       const PlaneBox* near = nullptr);

} // namespace hostkit
