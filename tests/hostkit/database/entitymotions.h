// What the entity tests move things by, and how they compare places.
#pragma once

#include "dbent.h"
#include "gemat3d.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

namespace motions {

struct Motion {
    std::string name;
    AcGeMatrix3d matrix;
    bool keepsShape;
    /// How far out the motion takes things.
    double reach() const {
        const AcGeVector3d way = matrix.translation();
        return std::max({std::abs(way.x), std::abs(way.y), std::abs(way.z)});
    }
};

inline AcGeMatrix3d stretch(double x, double y, double z) {
    AcGeMatrix3d matrix;
    matrix.entry[0][0] = x;
    matrix.entry[1][1] = y;
    matrix.entry[2][2] = z;
    return matrix;
}

/// Turned, tilted, mirrored in every axis, far out, and bent out of shape.
inline std::vector<Motion> all() {
    const AcGeMatrix3d turn = AcGeMatrix3d::rotation(0.7, AcGeVector3d::kZAxis, {3.0, -2.0, 1.0});
    const AcGeMatrix3d tilt = AcGeMatrix3d::rotation(2.1, {0.3, -1.0, 0.8}, {3.0, -2.0, 1.0});
    AcGeMatrix3d skew;
    skew.entry[0][1] = 0.6;
    skew.entry[1][2] = -0.3;
    return {{"still", AcGeMatrix3d(), true},
            {"far", AcGeMatrix3d::translation({1.0e6, -2.0e6, 500.0}), true},
            {"turned", turn, true},
            {"tilted", tilt, true},
            {"upside down", AcGeMatrix3d::rotation(AcGe::kPi, AcGeVector3d::kXAxis), true},
            {"mirrored in x", stretch(-1.0, 1.0, 1.0), true},
            {"mirrored in y", stretch(1.0, -1.0, 1.0), true},
            {"mirrored in z", stretch(1.0, 1.0, -1.0), true},
            {"inverted and small", AcGeMatrix3d::scaling(0.01) * stretch(-1.0, -1.0, -1.0), true},
            {"tilted mirror image", tilt * stretch(-250.0, 250.0, 250.0) * turn, true},
            {"stretched", turn * stretch(2.0, 0.5, 1.0), false},
            {"stretched mirror image", turn * stretch(-2.0, 3.0, 1.0) * turn, false},
            {"skewed", tilt * skew, false}};
}

class Random {
public:
    explicit Random(unsigned seed)
        : m_engine(seed) {}
    double between(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(m_engine);
    }
    AcGePoint3d point(double size) {
        return {between(-size, size), between(-size, size), between(-size, size)};
    }
    AcGeVector3d direction() {
        AcGeVector3d vector;
        do vector = point(1.0).asVector();
        while (vector.length() < 0.1);
        return vector.normal();
    }
    double sign() { return between(-1.0, 1.0) < 0.0 ? -1.0 : 1.0; }

private:
    std::mt19937 m_engine;
};

/// What rounding may add up to, as a part of the largest coordinate on the way.
constexpr double kRounding = 1e-14;

/// Equal but for rounding; `reach` is how far out the point has been, where that is farther than it is now.
inline testing::AssertionResult isNear(const AcGePoint3d& found, const AcGePoint3d& wanted,
                                       double reach = 1.0) {
    const double allowance = kRounding * std::max({100.0, reach, wanted.largestCoordinate()});
    if (found.distanceTo(wanted) <= allowance) return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << "(" << found.x << ", " << found.y << ", " << found.z << ") instead of (" << wanted.x << ", "
           << wanted.y << ", " << wanted.z << ")";
}

inline testing::AssertionResult isNear(const AcDbExtents& found, const AcDbExtents& wanted,
                                       double reach = 1.0) {
    const testing::AssertionResult low = isNear(found.minPoint(), wanted.minPoint(), reach);
    return low ? isNear(found.maxPoint(), wanted.maxPoint(), reach) << " (highest corner)" : low;
}

/// The box, or an empty one for an entity that says that it has none.
inline AcDbExtents boxOf(const AcDbEntity& entity) {
    AcDbExtents box;
    const Acad::ErrorStatus status = entity.getGeomExtents(box);
    EXPECT_TRUE(status == Acad::eOk || (status == Acad::eInvalidExtents && box.isEmpty()));
    return box;
}

inline AcDbExtents boxOf(const std::vector<AcGePoint3d>& points, const AcGeMatrix3d& matrix = {}) {
    AcDbExtents box;
    for (const AcGePoint3d& point : points) box.addPoint(matrix * point);
    return box;
}

/// What an entity that can be taken apart falls into.
template <typename Part>
std::vector<std::unique_ptr<Part>> partsOf(const AcDbEntity& entity) {
    AcDbVoidPtrArray array;
    EXPECT_EQ(entity.explode(array), Acad::eOk);
    std::vector<std::unique_ptr<Part>> parts;
    for (void* part : array) parts.emplace_back(static_cast<Part*>(static_cast<AcDbEntity*>(part)));
    return parts;
}

template <typename Entity>
std::unique_ptr<Entity> copyOf(const Entity& entity) {
    return std::unique_ptr<Entity>(static_cast<Entity*>(entity.clone()));
}

} // namespace motions
