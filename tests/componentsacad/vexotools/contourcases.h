// Seeded random arcs, points and contours that the tests of the contour tools share.
#pragma once

#include "acarray.h"
#include "dbpolyline.h"
#include "gemat3d.h"
#include "geplane.h"
#include "gepnt3d.h"

#include <array>
#include <cstring>
#include <limits>
#include <memory>
#include <random>
#include <vector>

namespace contourcases {

inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

struct Arc {
    AcGePoint3d start;
    AcGePoint3d end;
    double bulge;
};

/// An arc in the XY plane, its chord between 0.1 and 30, its height between a hundredth and three times the
/// chord.
inline Arc randomArc(std::mt19937& random, double offset) {
    std::uniform_real_distribution<double> coordinate(-10, 10);
    std::uniform_real_distribution<double> share(0.01, 3.0);
    Arc arc;
    do {
        arc.start.set(offset + coordinate(random), offset + coordinate(random), 0);
        arc.end.set(offset + coordinate(random), offset + coordinate(random), 0);
    } while (arc.start.distanceTo(arc.end) < 0.1);
    arc.bulge = share(random) * arc.start.distanceTo(arc.end) * (random() % 2 ? 1 : -1);
    return arc;
}

/// Points that stand in small heaps about the tolerance wide, some equal, some NaN.
inline AcArray<AcGePoint3d> clusteredPoints(std::mt19937& random, int count, double offset,
                                            double tolerance) {
    std::uniform_int_distribution<int> place(0, 3);
    std::uniform_int_distribution<int> step(-2, 2);
    AcArray<AcGePoint3d> points;
    for (int i = 0; i < count; ++i) {
        AcGePoint3d point(offset + place(random) + step(random) * 0.4 * tolerance,
                          place(random) + step(random) * 0.4 * tolerance, step(random) * 0.4 * tolerance);
        if (random() % 40 == 0) point.y = kNaN;
        points.append(point);
    }
    return points;
}

/// Equal to the bit, so that NaN equals itself and 0 does not equal -0.
template <typename T>
bool areSame(const AcArray<T>& a, const AcArray<T>& b) {
    if (a.length() != b.length()) return false;
    for (int i = 0; i < a.length(); ++i)
        if (std::memcmp(&a[i], &b[i], sizeof(T)) != 0) return false;
    return true;
}

using Vertices = std::vector<std::array<double, 3>>;

inline std::unique_ptr<AcDbPolyline> polylineOf(const Vertices& vertices, bool closed) {
    auto polyline = std::make_unique<AcDbPolyline>();
    for (const auto& [x, y, bulge] : vertices)
        polyline->addVertexAt(polyline->numVerts(), AcGePoint2d(x, y), bulge);
    polyline->setClosed(closed);
    return polyline;
}

/// A star-shaped contour that does not cross itself, counter-clockwise, a third of its sides arcs.
inline Vertices randomContour(std::mt19937& random, int count, double offset = 0.0) {
    std::uniform_real_distribution<double> radius(5, 10);
    std::uniform_real_distribution<double> bulge(-0.2, 0.2);
    Vertices vertices;
    for (int i = 0; i < count; ++i) {
        const double angle = 2 * AcGe::kPi * i / count;
        const double r = radius(random);
        vertices.push_back(
            {offset + r * std::cos(angle), offset + r * std::sin(angle), i % 3 ? 0.0 : bulge(random)});
    }
    return vertices;
}

inline Vertices reversed(const Vertices& vertices) {
    Vertices result;
    const std::size_t count = vertices.size();
    for (std::size_t k = 0; k < count; ++k) {
        const std::size_t i = count - 1 - k;
        result.push_back({vertices[i][0], vertices[i][1], -vertices[(i + count - 1) % count][2]});
    }
    return result;
}

} // namespace contourcases
