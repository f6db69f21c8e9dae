// Stand-in for the host's AcGePoint3d. Covers arithmetic, distances, the point test and transforms; leaves out nothing that callers ask for.
#pragma once

#include "gevec3d.h"

#include <algorithm>

/// A place in space, in drawing units. A plain value of three doubles.
class AcGePoint3d {
public:
    constexpr AcGePoint3d() = default;
    constexpr AcGePoint3d(double xx, double yy, double zz)
        : x(xx)
        , y(yy)
        , z(zz) {}
    /// The point at these coordinates of the plane, as AcGePlanarEnt::getCoordSystem gives them.
    AcGePoint3d(const AcGePlanarEnt& plane, const AcGePoint2d& point);

    static const AcGePoint3d kOrigin;

    constexpr AcGePoint3d& set(double xx, double yy, double zz) {
        x = xx;
        y = yy;
        z = zz;
        return *this;
    }
    AcGePoint3d& set(const AcGePlanarEnt& plane, const AcGePoint2d& point);
    /// Coordinates in the plane's axes; the distance from the plane is dropped.
    AcGePoint2d convert2d(const AcGePlanarEnt& plane) const;
    double& operator[](unsigned int i) { return i == 0 ? x : i == 1 ? y : z; }
    double operator[](unsigned int i) const { return i == 0 ? x : i == 1 ? y : z; }

    constexpr AcGePoint3d operator+(const AcGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
    constexpr AcGePoint3d operator-(const AcGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
    constexpr AcGeVector3d operator-(const AcGePoint3d& p) const { return {x - p.x, y - p.y, z - p.z}; }
    /// Scales the coordinates about the origin.
    constexpr AcGePoint3d operator*(double s) const { return {x * s, y * s, z * s}; }
    constexpr AcGePoint3d operator/(double s) const { return {x / s, y / s, z / s}; }
    constexpr AcGePoint3d& operator+=(const AcGeVector3d& v) { return *this = *this + v; }
    constexpr AcGePoint3d& operator-=(const AcGeVector3d& v) { return *this = *this - v; }
    constexpr AcGePoint3d& operator*=(double s) { return *this = *this * s; }
    constexpr AcGePoint3d& operator/=(double s) { return *this = *this / s; }
    constexpr AcGePoint3d& setToSum(const AcGePoint3d& p, const AcGeVector3d& v) { return *this = p + v; }
    AcGePoint3d& setToProduct(const AcGeMatrix3d& matrix, const AcGePoint3d& point);
    constexpr AcGeVector3d asVector() const { return {x, y, z}; }

    constexpr double distanceSqrdTo(const AcGePoint3d& p) const { return (*this - p).lengthSqrd(); }
    double distanceTo(const AcGePoint3d& p) const { return (*this - p).length(); }
    /// The coordinate with the largest magnitude, without sign: what the allowance of a point test grows
    /// with.
    double largestCoordinate() const { return std::max({std::abs(x), std::abs(y), std::abs(z)}); }

    /// The point test of AcGeTol. A NaN coordinate is equal to nothing.
    Adesk::Boolean isEqualTo(const AcGePoint3d& p, const AcGeTol& tol = AcGeContext::gTol) const {
        return AcGe::isWithinAllowance(distanceSqrdTo(p),
                                       std::max(largestCoordinate(), p.largestCoordinate()), tol);
    }
    Adesk::Boolean operator==(const AcGePoint3d& p) const { return isEqualTo(p); }
    Adesk::Boolean operator!=(const AcGePoint3d& p) const { return !isEqualTo(p); }

    AcGePoint3d& transformBy(const AcGeMatrix3d& matrix);
    /// Turns by `angle` radians, right-handed about the axis through `wrtPoint`. A zero axis changes nothing.
    AcGePoint3d& rotateBy(double angle, const AcGeVector3d& axis, const AcGePoint3d& wrtPoint = kOrigin);
    AcGePoint3d& mirror(const AcGePlane& plane);
    AcGePoint3d& scaleBy(double factor, const AcGePoint3d& wrtPoint = kOrigin) {
        return *this = wrtPoint + (*this - wrtPoint) * factor;
    }
    /// Moves along `direction` on to the plane. A direction in the plane changes nothing.
    AcGePoint3d project(const AcGePlane& plane, const AcGeVector3d& direction) const;
    /// The nearest point of the plane.
    AcGePoint3d orthoProject(const AcGePlane& plane) const;

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

inline constexpr AcGePoint3d AcGePoint3d::kOrigin{0.0, 0.0, 0.0};

#include "gemat3d.h"
