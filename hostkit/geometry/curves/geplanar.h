// Stand-in for the host's AcGePlanarEnt. Covers the coordinate system and the tests of a plane; leaves out bounded planes.
#pragma once

#include "geent3d.h"

/// Base of the plane. It has an origin, two axes as they were given (of any length, not parallel) and a unit
/// normal.
class AcGePlanarEnt : public AcGeEntity3d {
public:
    AcGePlanarEnt* copy() const override = 0;
    AcGePoint3d pointOnPlane() const { return m_origin; }
    /// Unit vector; zero when the plane was built from what spans none.
    AcGeVector3d normal() const { return m_normal; }
    void getCoordSystem(AcGePoint3d& origin, AcGeVector3d& axis1, AcGeVector3d& axis2) const;
    /// a*x + b*y + c*z + d = 0 with (a, b, c) the normal.
    void getCoefficients(double& a, double& b, double& c, double& d) const;

    /// Distance with the normal's sign.
    double signedDistanceTo(const AcGePoint3d& point) const {
        return (point - m_origin).dotProduct(m_normal);
    }
    double distanceTo(const AcGePoint3d& point) const { return std::abs(signedDistanceTo(point)); }
    AcGePoint3d closestPointTo(const AcGePoint3d& point, const AcGeTol& tol = AcGeContext::gTol) const;
    AcGePoint3d closestPointToLinearEnt(const AcGeLinearEnt3d& line, AcGePoint3d& pointOnLine,
                                        const AcGeTol& tol = AcGeContext::gTol) const;
    /// The point moved along `direction` on to the plane; false, and `projected` untouched, when the
    /// direction runs in it.
    Adesk::Boolean project(const AcGePoint3d& point, const AcGeVector3d& direction, AcGePoint3d& projected,
                           const AcGeTol& tol = AcGeContext::gTol) const;
    Adesk::Boolean intersectWith(const AcGeLinearEnt3d& line, AcGePoint3d& point,
                                 const AcGeTol& tol = AcGeContext::gTol) const;
    Adesk::Boolean isOn(const AcGePoint3d& point, const AcGeTol& tol = AcGeContext::gTol) const override;
    Adesk::Boolean isParallelTo(const AcGePlanarEnt& plane, const AcGeTol& tol = AcGeContext::gTol) const;
    Adesk::Boolean isParallelTo(const AcGeLinearEnt3d& line, const AcGeTol& tol = AcGeContext::gTol) const;
    Adesk::Boolean isPerpendicularTo(const AcGePlanarEnt& plane,
                                     const AcGeTol& tol = AcGeContext::gTol) const;
    Adesk::Boolean isPerpendicularTo(const AcGeLinearEnt3d& line,
                                     const AcGeTol& tol = AcGeContext::gTol) const;
    /// The same plane, with normals in the same or the opposite sense.
    Adesk::Boolean isCoplanarTo(const AcGePlanarEnt& plane, const AcGeTol& tol = AcGeContext::gTol) const;

protected:
    AcGePlanarEnt() = default;
    AcGePoint3d m_origin;
    AcGeVector3d m_axis1 = AcGeVector3d::kXAxis;
    AcGeVector3d m_axis2 = AcGeVector3d::kYAxis;
    AcGeVector3d m_normal = AcGeVector3d::kZAxis;
};
