// Stand-in for the host's AcGePlane. Covers the unbounded plane; leaves out nothing that callers ask for.
#pragma once

#include "geplanar.h"

/// An unbounded plane with a coordinate system. Input that spans no plane (a zero normal, collinear points,
/// parallel axes) gives a plane with a zero normal, on which no point lies and which nothing meets.
class AcGePlane : public AcGePlanarEnt {
public:
    AcGePlane() = default; ///< the XY plane
    /// The axes are those of the arbitrary-axis rule.
    AcGePlane(const AcGePoint3d& origin, const AcGeVector3d& normal);
    /// Origin a, first axis towards b, normal right-handed for the run a, b, c. The second axis lies in the
    /// plane on c's side, perpendicular to the first; both are unit vectors.
    AcGePlane(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c);
    /// The axes stay as given; the normal is axis1 x axis2, made a unit vector.
    AcGePlane(const AcGePoint3d& origin, const AcGeVector3d& axis1, const AcGeVector3d& axis2);
    /// a*x + b*y + c*z + d = 0; the origin is the point nearest to the world's.
    AcGePlane(double a, double b, double c, double d);

    static const AcGePlane& kXYPlane();
    static const AcGePlane& kYZPlane();
    static const AcGePlane& kZXPlane();

    AcGePlane& set(const AcGePoint3d& origin, const AcGeVector3d& normal) {
        return *this = AcGePlane(origin, normal);
    }
    AcGePlane& set(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c) {
        return *this = AcGePlane(a, b, c);
    }
    AcGePlane& set(const AcGePoint3d& origin, const AcGeVector3d& axis1, const AcGeVector3d& axis2) {
        return *this = AcGePlane(origin, axis1, axis2);
    }
    AcGePlane& set(double a, double b, double c, double d) { return *this = AcGePlane(a, b, c, d); }
    AcGePlane& reverseNormal();

    using AcGePlanarEnt::intersectWith;
    /// The line in common; false, and `line` untouched, for parallel planes.
    Adesk::Boolean intersectWith(const AcGePlane& plane, AcGeLine3d& line,
                                 const AcGeTol& tol = AcGeContext::gTol) const;

    AcGe::EntityId type() const override { return AcGe::kPlane; }
    AcGePlane* copy() const override { return new AcGePlane(*this); }
    /// Origin and axes move with the matrix; the normal is that of the moved axes, so that a mirror in the
    /// plane turns it.
    AcGePlane& transformBy(const AcGeMatrix3d& matrix) override;
    /// Same origin, axes and normal.
    Adesk::Boolean isEqualTo(const AcGeEntity3d& entity,
                             const AcGeTol& tol = AcGeContext::gTol) const override;
};
