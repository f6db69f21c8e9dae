// Layouts of the kinds that are not linear, from the same givens (dimensionlayout.h).
#pragma once

#include "dimensionsizes.h"

namespace hostkit {

/// Radius and diameter.
bool layOutRadial(const DimensionShape& shape, const DimensionVariables& variables,
                  const DimensionArrows& arrows, const DimensionWording& wording, DimensionLayout& layout);
bool layOutOrdinate(const DimensionShape& shape, const DimensionVariables& variables,
                    const DimensionArrows& arrows, const DimensionWording& wording, DimensionLayout& layout);
/// Angles by two lines or three points, and arc lengths.
bool layOutArc(const DimensionShape& shape, const DimensionVariables& variables,
               const DimensionArrows& arrows, const DimensionWording& wording, DimensionLayout& layout);

/// What an angle or an arc length spans, about its centre: the sector in which the arc's point lies.
struct DimensionSector {
    AcGePoint2d centre;
    double radius = 0.0;   ///< of the dimension's arc
    AcGeVector2d sides[2]; ///< from the centre, of length 1: towards what the first and second points measure
    double starts[2] = {}; ///< where the extension lines begin, along their sides
    double span = 0.0;     ///< above 0, up to a whole turn
    bool isAnticlockwise = true; ///< from the first side to the second
};

/// False where lines are parallel or points fall together, so that there is no angle.
bool findSector(const DimensionShape& shape, DimensionSector& sector);

} // namespace hostkit
