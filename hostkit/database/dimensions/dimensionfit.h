// Which of text and arrows stand between the ends of a dimension line or arc, and how a text is turned there.
#pragma once

#include "dimensionsizes.h"

namespace hostkit {

/// Whether what is needed has room in the length, but for rounding.
inline bool isWithin(double needed, double length) { return needed <= length * (1.0 + 1e-9); }

/// What has room between the ends. `text` is what the text takes of the length, with its gaps.
struct DimensionFit {
    DimensionFit(const DimensionArrows& arrows, const DimensionSizes& sizes, double text, double length);

    bool hasBoth;
    bool hasText;
    bool hasArrows;
};

/// Which of them stand between the ends, by dimtix and dimatfit.
struct DimensionSides {
    bool isTextInside = true;
    bool areArrowsInside = true;
};
DimensionSides chosenSides(const DimensionVariables& variables, const DimensionSizes& sizes,
                           const DimensionFit& fit);
/// The arrows beside a text that stands outside.
bool stayInside(const DimensionVariables& variables, const DimensionFit& fit);

/// Half of what the text's box covers of a line from which it is turned by the angle, widened by the margin.
double halfExtent(const DimensionSizes& sizes, double turn, double margin);

/// The angle of a text on or beside a line, by the user or by the style, which has it level or along the
/// line.
double textAngle(const DimensionShape& shape, const DimensionVariables& variables, const AcGeVector2d& line,
                 bool isLevel);

} // namespace hostkit
