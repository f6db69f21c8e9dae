// Rotated and aligned dimensions: the dimension line's frame, where text and arrows stand, and the pieces.
#pragma once

#include "dimensionsizes.h"

namespace hostkit {

/// A dimension line between the feet of the two measured points. Distances along it count from the first
/// foot; `up` is to its left as it is read, whatever the order of the points.
struct LinearFrame {
    AcGePoint2d origins[2];
    AcGePoint2d feet[2];
    AcGeVector2d along; ///< from the first foot to the second
    AcGeVector2d up;
    double length = 0.0;
    double lineAngle = 0.0; ///< of the given direction

    explicit LinearFrame(const DimensionShape& shape);
    AcGePoint2d at(double distance, double height = 0.0) const {
        return feet[0] + along * distance + up * height;
    }
};

/// Where the text stands and on which side of the extension lines the arrows do.
struct LinearArrangement {
    bool isTextInside = true;
    bool areArrowsInside[2] = {true, true};
    bool isTextOnLine = false; ///< it competes with the line for its place
    bool isTextHorizontal = false;
    bool hasHook = false;  ///< horizontal text outside an inclined line
    bool isRaised = false; ///< by dimtmove, away from the line
    double rotation = 0.0; ///< of the text
    AcGePoint2d centre;
    double textPlace = 0.0;  ///< of the centre along the line
    double halfExtent = 0.0; ///< of the text along the line, without gaps
};

LinearArrangement arrangeLinear(const DimensionShape& shape, const LinearFrame& frame,
                                const DimensionVariables& variables, const DimensionArrows& arrows,
                                const DimensionSizes& sizes);

bool layOutLinear(const DimensionShape& shape, const DimensionVariables& variables,
                  const DimensionArrows& arrows, const DimensionWording& wording, DimensionLayout& layout);

} // namespace hostkit
