// Placements that the geometry tests move their cases through: turned, mirrored, scaled and far out.
#pragma once

#include "gelnsg3d.h"
#include "gemat2d.h"
#include "gemat3d.h"

#include <cmath>
#include <initializer_list>
#include <random>
#include <vector>

namespace placements {

inline std::vector<AcGeMatrix3d> ofSpace() {
    const AcGePoint3d pivot(3.0, -2.0, 1.0);
    AcGeMatrix3d mirror;
    mirror.entry[0][0] = -1.0;
    return {AcGeMatrix3d(), AcGeMatrix3d::rotation(0.7, AcGeVector3d(1.0, 2.0, -0.5), pivot),
            AcGeMatrix3d::scaling(250.0) * mirror, AcGeMatrix3d::translation({1.0e6, -2.0e6, 0.0}),
            AcGeMatrix3d::translation({-1.0e6, 1.0e6, 1.0e6}) *
                AcGeMatrix3d::rotation(2.1, {0.3, -1.0, 0.8}) * mirror};
}

inline std::vector<AcGeMatrix2d> ofPlane() {
    AcGeMatrix2d mirror;
    mirror.entry[0][0] = -1.0;
    return {AcGeMatrix2d(), AcGeMatrix2d::rotation(0.7, {3.0, -2.0}), AcGeMatrix2d::scaling(250.0) * mirror,
            AcGeMatrix2d::translation({1.0e6, -2.0e6}),
            AcGeMatrix2d::translation({-1.0e6, 1.0e6}) * AcGeMatrix2d::rotation(2.1) * mirror};
}

inline AcGePoint3dArray pointsOf(std::initializer_list<AcGePoint3d> list) {
    AcGePoint3dArray points;
    for (const AcGePoint3d& point : list) points.append(point);
    return points;
}

inline AcGeDoubleArray numbersOf(std::initializer_list<double> list) {
    AcGeDoubleArray numbers;
    for (const double number : list) numbers.append(number);
    return numbers;
}

/// In the plane z = 0.
inline AcGeLineSeg3d segment(double x1, double y1, double x2, double y2) {
    return {AcGePoint3d(x1, y1, 0), AcGePoint3d(x2, y2, 0)};
}

/// A number in units in the last place of a coordinate of that size (at least 1).
inline double inUlps(double difference, double magnitude) {
    return difference / AcGe::ulpOf(std::max(magnitude, 1.0));
}

/// The largest coordinate difference of two points in such units.
template <class Point>
double inUlps(const Point& a, const Point& b, double magnitude) {
    return inUlps((Point::kOrigin + (a - b)).largestCoordinate(), magnitude);
}

class Random {
public:
    explicit Random(unsigned seed)
        : m_engine(seed) {}
    double between(double lo, double hi) { return std::uniform_real_distribution<double>(lo, hi)(m_engine); }
    AcGePoint3d point(double size) {
        return {between(-size, size), between(-size, size), between(-size, size)};
    }
    AcGeVector3d vector(double size) { return point(size).asVector(); }
    AcGePoint2d flatPoint(double size) { return {between(-size, size), between(-size, size)}; }

private:
    std::mt19937 m_engine;
};

} // namespace placements
