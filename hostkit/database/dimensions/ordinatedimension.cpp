#include "otherdimensions.h"

namespace hostkit {

// The leader runs along the axis that is not measured, with a slant in it where text and feature differ.
bool layOutOrdinate(const DimensionShape& shape, const DimensionVariables& variables,
                    const DimensionArrows& arrows, const DimensionWording& wording, DimensionLayout& layout) {
    const DimensionSizes sizes(variables, wording);
    PieceWriter writer(layout, sizes, arrows);
    const AcGeVector2d level = directionOf(shape.horizontal);
    const AcGeVector2d axis = shape.isOrdinateOfX ? level.perpVector() : level;
    const AcGeVector2d across = axis.perpVector();
    const AcGePoint2d& feature = shape.point(13);
    const AcGePoint2d& end = shape.point(14);
    const AcGeVector2d way = end - feature;
    const AcGeVector2d run = way.dotProduct(axis) < 0.0 ? -axis : axis;
    const double aside = way.dotProduct(across);
    const AcGeVector2d up = axis.perpVector();
    const bool isOnLine = sizes.isOnLine(variables);
    const double lift = sizes.liftBy(variables);
    const double textReach = sizes.gap + 2.0 * sizes.halfWidth;
    const AcGePoint2d last = isOnLine || !sizes.hasText ? end : end + run * textReach;
    const AcGePoint2d start = feature + run * sizes.offset;
    constexpr double straight = 1e-6;
    if (std::abs(aside) <= straight) {
        writer.line(PieceLook::firstExtension, start, last);
    } else {
        const AcGePoint2d slantEnd = end - run * (2.0 * sizes.arrow);
        const AcGePoint2d slantStart = end - run * (4.0 * sizes.arrow) - across * aside;
        writer.line(PieceLook::firstExtension, start, slantStart);
        writer.line(PieceLook::firstExtension, slantStart, slantEnd);
        writer.line(PieceLook::firstExtension, slantEnd, last);
    }
    const AcGePoint2d place = end + run * (sizes.gap + sizes.halfWidth) + up * lift;
    writer.text(shape.isTextPlaced ? shape.point(11) : place, angleOf(axis));
    writer.points(shape, {13, 14, 10});
    layout.linePoint = shape.point(10);
    return true;
}

} // namespace hostkit
