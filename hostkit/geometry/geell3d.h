// Stand-in for the host's AcGeEllipArc3d. Covers elliptic arcs and ellipses; leaves out closed-form crossings (see AcGeCurveCurveInt3d).
#pragma once

#include "gecurv3d.h"

/// An elliptic arc or a full ellipse. The point at parameter t is center + majorRadius * cos(t) * majorAxis +
/// minorRadius * sin(t) * minorAxis; the parameter is thus not the angle seen from the centre, except on the
/// axes. Angles are held as AcGeCircArc3d holds them.
class AcGeEllipArc3d : public AcGeCurve3d {
public:
    AcGeEllipArc3d(); ///< the unit circle about the origin
    AcGeEllipArc3d(const AcGeCircArc3d& arc);
    AcGeEllipArc3d(const AcGePoint3d& center, const AcGeVector3d& majorAxis, const AcGeVector3d& minorAxis,
                   double majorRadius, double minorRadius);
    /// The axes are made unit vectors, the minor one perpendicular to the major one. Angles as
    /// AcGeCircArc3d::setAngles.
    AcGeEllipArc3d(const AcGePoint3d& center, const AcGeVector3d& majorAxis, const AcGeVector3d& minorAxis,
                   double majorRadius, double minorRadius, double startAngle, double endAngle);

    AcGePoint3d center() const { return m_center; }
    AcGeVector3d majorAxis() const { return m_majorAxis; }
    AcGeVector3d minorAxis() const { return m_minorAxis; }
    AcGeVector3d normal() const { return m_majorAxis.crossProduct(m_minorAxis); }
    double majorRadius() const { return m_majorRadius; }
    double minorRadius() const { return m_minorRadius; }
    double startAng() const { return m_startAngle; }
    double endAng() const { return m_endAngle; }
    AcGePoint3d startPoint() const { return evalPoint(m_startAngle); }
    AcGePoint3d endPoint() const { return evalPoint(m_endAngle); }
    AcGeEllipArc3d& setAngles(double startAngle, double endAngle);
    Adesk::Boolean isCircular(const AcGeTol& tol = AcGeContext::gTol) const;
    void getPlane(AcGePlane& plane) const;

    AcGe::EntityId type() const override { return AcGe::kEllipArc3d; }
    AcGeEllipArc3d* copy() const override { return new AcGeEllipArc3d(*this); }
    /// Right for every affine matrix: the moved conjugate radii give the new axes. The parameter of a point
    /// may shift by a constant when the matrix is not uniform.
    AcGeEllipArc3d& transformBy(const AcGeMatrix3d& matrix) override;
    Adesk::Boolean isEqualTo(const AcGeEntity3d& entity,
                             const AcGeTol& tol = AcGeContext::gTol) const override;
    using AcGeCurve3d::evalPoint;
    using AcGeCurve3d::getInterval;
    void getInterval(AcGeInterval& interval) const override { interval.set(m_startAngle, m_endAngle); }
    Adesk::Boolean setInterval(const AcGeInterval& interval) override;
    AcGeEllipArc3d& reverseParam() override;
    AcGePoint3d evalPoint(double param) const override;
    AcGePoint3d evalPoint(double param, int numDeriv, AcGeVector3dArray& derivatives) const override;
    double paramOfClosestPoint(const AcGePoint3d& point) const override;
    double paramOf(const AcGePoint3d& point, const AcGeTol& tol = AcGeContext::gTol) const override;
    Adesk::Boolean isPeriodic(double& period) const override;
    Adesk::Boolean isPlanar(AcGePlane& plane, const AcGeTol& tol = AcGeContext::gTol) const override;
    Adesk::Boolean area(double startParam, double endParam, double& value,
                        const AcGeTol& tol = AcGeContext::gTol) const override;
    AcGeBoundBlock3d orthoBoundBlock() const override;
    void getSmoothPieces(AcGeDoubleArray& params) const override;
    double coordinateMagnitude() const override {
        return std::max(m_center.largestCoordinate(), m_majorRadius);
    }

private:
    AcGePoint3d m_center;
    AcGeVector3d m_majorAxis;
    AcGeVector3d m_minorAxis;
    double m_majorRadius;
    double m_minorRadius;
    double m_startAngle;
    double m_endAngle;
};
