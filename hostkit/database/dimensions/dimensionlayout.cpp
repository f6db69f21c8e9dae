#include "dimensionlayout.h"

#include "lineardimension.h"
#include "otherdimensions.h"

#include <algorithm>
#include <limits>

namespace hostkit {

namespace {

bool isFinitePiece(const DimensionPiece& piece) {
    return std::all_of(std::begin(piece.at), std::end(piece.at), isFinitePoint) &&
           std::isfinite(piece.size) && std::isfinite(piece.startAngle) && std::isfinite(piece.endAngle);
}

bool layOutKind(const DimensionShape& shape, const DimensionVariables& variables,
                const DimensionArrows& arrows, const DimensionWording& wording, DimensionLayout& layout) {
    switch (shape.kind) {
    case DimensionKind::rotated:
    case DimensionKind::aligned:
        return layOutLinear(shape, variables, arrows, wording, layout);
    case DimensionKind::radial:
    case DimensionKind::diametric:
        return layOutRadial(shape, variables, arrows, wording, layout);
    case DimensionKind::ordinate:
        return layOutOrdinate(shape, variables, arrows, wording, layout);
    case DimensionKind::twoLineAngular:
    case DimensionKind::threePointAngular:
    case DimensionKind::arcLength:
        return layOutArc(shape, variables, arrows, wording, layout);
    default:
        return false;
    }
}

constexpr double noMeasure = std::numeric_limits<double>::quiet_NaN();

double spanOf(const DimensionShape& shape) {
    DimensionSector sector;
    if (!findSector(shape, sector)) return noMeasure;
    return shape.kind == DimensionKind::arcLength ? sector.starts[0] * sector.span : sector.span;
}

double ordinateOf(const DimensionShape& shape) {
    const AcGeVector2d level = directionOf(shape.horizontal);
    const AcGeVector2d axis = shape.isOrdinateOfX ? level : level.perpVector();
    return std::abs((shape.point(13) - shape.point(10)).dotProduct(axis));
}

} // namespace

DimensionArrows dimensionArrows(const DimensionVariables& variables) {
    DimensionArrows arrows;
    const bool isTicked = variables.dimtsz > 0.0;
    arrows.blocks[0] = variables.dimsah ? variables.dimblk1 : variables.dimblk;
    arrows.blocks[1] = variables.dimsah ? variables.dimblk2 : variables.dimblk;
    for (int end = 0; end < 2; ++end)
        arrows.traits[end] = isTicked ? ArrowTraits{false, true, 1.0} : arrowTraits(arrows.blocks[end]);
    return arrows;
}

double dimensionMeasure(const DimensionShape& shape) {
    switch (shape.kind) {
    case DimensionKind::rotated:
        return std::abs((shape.point(14) - shape.point(13)).dotProduct(directionOf(shape.rotation)));
    case DimensionKind::aligned:
        return shape.point(13).distanceTo(shape.point(14));
    case DimensionKind::radial:
    case DimensionKind::diametric:
        return shape.point(10).distanceTo(shape.point(15));
    case DimensionKind::ordinate:
        return ordinateOf(shape);
    case DimensionKind::twoLineAngular:
    case DimensionKind::threePointAngular:
    case DimensionKind::arcLength:
        return spanOf(shape);
    default:
        return noMeasure;
    }
}

MeasureKind measureKindOf(DimensionKind kind) {
    switch (kind) {
    case DimensionKind::radial:
        return MeasureKind::radius;
    case DimensionKind::diametric:
        return MeasureKind::diameter;
    case DimensionKind::twoLineAngular:
    case DimensionKind::threePointAngular:
        return MeasureKind::angle;
    default:
        return MeasureKind::length;
    }
}

bool layOutDimension(const DimensionShape& shape, const DimensionVariables& variables,
                     const DimensionArrows& arrows, const DimensionWording& wording,
                     DimensionLayout& layout) {
    constexpr std::size_t usualPieces = 16;
    layout = {};
    layout.pieces.reserve(usualPieces);
    if (layOutKind(shape, variables, arrows, wording, layout) && isFinitePoint(layout.textCentre) &&
        isFinitePoint(layout.linePoint) && std::isfinite(layout.textRotation) &&
        std::all_of(layout.pieces.begin(), layout.pieces.end(), isFinitePiece))
        return true;
    layout = {};
    return false;
}

} // namespace hostkit
