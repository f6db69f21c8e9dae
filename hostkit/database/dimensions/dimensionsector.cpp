#include "otherdimensions.h"

#include <algorithm>
#include <numbers>

namespace hostkit {

namespace {

constexpr double wholeTurn = 2.0 * std::numbers::pi;

// In [0, 2 pi).
double turnFrom(const AcGeVector2d& from, const AcGeVector2d& to) {
    const double angle = std::atan2(from.crossProduct(to), from.dotProduct(to));
    return angle < 0.0 ? angle + wholeTurn : angle;
}

// From the first side to the second, past the arc's point.
bool spanPast(const AcGePoint2d& arcPoint, DimensionSector& sector) {
    const AcGeVector2d way = arcPoint - sector.centre;
    sector.radius = std::hypot(way.x, way.y);
    if (!(sector.radius > 0.0)) return false;
    const double whole = turnFrom(sector.sides[0], sector.sides[1]);
    const double past = turnFrom(sector.sides[0], way);
    sector.isAnticlockwise = past <= whole;
    sector.span = sector.isAnticlockwise ? whole : wholeTurn - whole;
    return sector.span > 0.0;
}

bool sectorOfPoints(const DimensionShape& shape, DimensionSector& sector) {
    sector.centre = shape.point(15);
    for (int side = 0; side < 2; ++side) {
        const AcGeVector2d way = shape.point(13 + side) - sector.centre;
        sector.starts[side] = std::hypot(way.x, way.y);
        sector.sides[side] = unitOf(way);
        if (!(sector.starts[side] > 0.0)) return false;
    }
    return spanPast(shape.point(10), sector);
}

// The lines cross in the centre; of their four directions those count that the arc's point lies between.
bool sectorOfLines(const DimensionShape& shape, DimensionSector& sector) {
    const AcGePoint2d ends[2][2] = {{shape.point(13), shape.point(14)}, {shape.point(15), shape.point(10)}};
    AcGeVector2d lines[2];
    for (int line = 0; line < 2; ++line) lines[line] = unitOf(ends[line][1] - ends[line][0]);
    const double sine = lines[0].crossProduct(lines[1]);
    constexpr double parallel = 1e-9;
    if (!(std::abs(sine) > parallel)) return false;
    const double along = (ends[1][0] - ends[0][0]).crossProduct(lines[1]) / sine;
    sector.centre = ends[0][0] + lines[0] * along;
    const AcGePoint2d& arcPoint = shape.point(16);
    const AcGeVector2d way = arcPoint - sector.centre;
    const double parts[2] = {way.crossProduct(lines[1]) / sine, lines[0].crossProduct(way) / sine};
    const double radius = std::hypot(way.x, way.y);
    for (int line = 0; line < 2; ++line) {
        sector.sides[line] = parts[line] < 0.0 ? -lines[line] : lines[line];
        const double first = (ends[line][0] - sector.centre).dotProduct(sector.sides[line]);
        const double second = (ends[line][1] - sector.centre).dotProduct(sector.sides[line]);
        // On the line itself there is nothing to extend.
        sector.starts[line] = std::clamp(radius, std::min(first, second), std::max(first, second));
    }
    return spanPast(arcPoint, sector);
}

} // namespace

bool findSector(const DimensionShape& shape, DimensionSector& sector) {
    return shape.kind == DimensionKind::twoLineAngular ? sectorOfLines(shape, sector)
                                                       : sectorOfPoints(shape, sector);
}

} // namespace hostkit
