// Contours for the tests of common areas: shapes on a coarse grid, so that they touch, share edges and run
// along each other all the time, and star-shaped ones that do not.
#pragma once

#include "contourareas.h"
#include "contourcases.h"
#include "scanlines.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace areacases {

using namespace contourcases;
using namespace vexo;

inline constexpr double kGrid = 100.0;
inline const double kQuarter = std::tan(AcGe::kPi / 8);

inline ContourLoop loopOf(const Vertices& vertices) {
    ContourLoop loop;
    for (const auto& [x, y, bulge] : vertices) loop.vertices.push_back({x, y, bulge});
    return loop;
}

inline Vertices verticesOf(const ContourLoop& loop) {
    Vertices vertices;
    for (const auto& vertex : loop.vertices) vertices.push_back({vertex.x, vertex.y, vertex.bulge});
    return vertices;
}

inline Vertices onGrid(std::mt19937& random) {
    const auto steps = [&](int low, int high) {
        return kGrid * std::uniform_int_distribution<int>(low, high)(random);
    };
    Vertices vertices;
    const auto kind = random() % 3;
    const double x = steps(0, kind == 0 ? 6 : 8);
    const double y = steps(0, kind == 0 ? 6 : 8);
    if (kind == 0) {
        const double width = steps(1, 6);
        const double height = steps(1, 6);
        vertices = roundedRectangle(x, y, width, height, std::min({steps(0, 3), width / 2, height / 2}));
    } else if (kind == 1) {
        const double length = steps(1, 5);
        const double radius = steps(1, 3);
        vertices = capsule(x, y, length, radius, random() % 2 != 0);
    } else {
        vertices = circle(x, y, steps(1, 4));
    }
    return random() % 2 ? reversed(vertices) : vertices;
}

inline scanlines::Contour scanlinesOf(const Vertices& vertices, const AcGePoint2d& origin) {
    return scanlines::contourOf(*polylineOf(vertices, true), origin);
}

/// The area that two contours have in common, by the scan lines.
inline double commonAreaByScanlines(const Vertices& first, const Vertices& second) {
    const AcGePoint2d origin(first[0][0], first[0][1]);
    const scanlines::Contour contour = scanlinesOf(first, origin);
    return std::abs(scanlines::areaOf(contour)) -
           scanlines::freeArea({contour, {scanlinesOf(second, origin)}});
}

} // namespace areacases
