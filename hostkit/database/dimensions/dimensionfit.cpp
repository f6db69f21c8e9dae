#include "dimensionfit.h"

#include <algorithm>
#include <numbers>

namespace hostkit {

DimensionFit::DimensionFit(const DimensionArrows& arrows, const DimensionSizes& sizes, double text,
                           double length) {
    const double needed = (arrows.traits[0].room + arrows.traits[1].room) * sizes.arrow;
    const double taken = sizes.hasText ? text : 0.0;
    hasBoth = isWithin(taken + needed, length);
    hasText = isWithin(taken, length);
    hasArrows = isWithin(needed, length);
}

DimensionSides chosenSides(const DimensionVariables& variables, const DimensionSizes& sizes,
                           const DimensionFit& fit) {
    if (fit.hasBoth || variables.dimtix || !sizes.hasText) return {true, fit.hasBoth};
    const bool textMayStay = variables.dimatfit == 1 || variables.dimatfit == 3;
    const bool isTextInside = textMayStay && fit.hasText;
    return {isTextInside, !isTextInside && stayInside(variables, fit)};
}

bool stayInside(const DimensionVariables& variables, const DimensionFit& fit) {
    return variables.dimatfit >= 2 && fit.hasArrows;
}

double halfExtent(const DimensionSizes& sizes, double turn, double margin) {
    constexpr double least = 1e-9;
    const double wide = (sizes.halfWidth + margin) / std::max(std::abs(std::cos(turn)), least);
    const double high = (sizes.halfHeight + margin) / std::max(std::abs(std::sin(turn)), least);
    return std::min(wide, high);
}

double textAngle(const DimensionShape& shape, const DimensionVariables& variables, const AcGeVector2d& line,
                 bool isLevel) {
    double angle = shape.horizontal + shape.textRotation;
    if (shape.textRotation == 0.0 && !isLevel) angle = angleOf(readingDirection(line, shape.horizontal));
    return variables.dimtxtdirection ? angle + std::numbers::pi : angle;
}

} // namespace hostkit
