// Stand-in for the host's AcGeEllipArc2d. Covers elliptic arcs and ellipses; leaves out closed-form crossings (see AcGeCurveCurveInt2d).
#pragma once

#include "gecurv2d.h"

/// An elliptic arc or a full ellipse. The point at parameter t is center + majorRadius * cos(t) * majorAxis +
/// minorRadius * sin(t) * minorAxis; the parameter is thus not the angle seen from the centre, except on the
/// axes. Angles are held as AcGeCircArc2d holds them.
class AcGeEllipArc2d : public AcGeCurve2d {
public:
    AcGeEllipArc2d(); ///< the unit circle about the origin
    AcGeEllipArc2d(const AcGeCircArc2d& arc);
    AcGeEllipArc2d(const AcGePoint2d& center, const AcGeVector2d& majorAxis, const AcGeVector2d& minorAxis,
                   double majorRadius, double minorRadius);
    /// The axes are made unit vectors, the minor one perpendicular to the major one. Angles as
    /// AcGeCircArc2d::setAngles.
    AcGeEllipArc2d(const AcGePoint2d& center, const AcGeVector2d& majorAxis, const AcGeVector2d& minorAxis,
                   double majorRadius, double minorRadius, double startAngle, double endAngle);

    AcGePoint2d center() const { return m_center; }
    AcGeVector2d majorAxis() const { return m_majorAxis; }
    AcGeVector2d minorAxis() const { return m_minorAxis; }
    /// Does the minor axis lie to the right of the major one, so that the arc runs clockwise.
    Adesk::Boolean isClockWise() const { return m_majorAxis.crossProduct(m_minorAxis) < 0.0; }
    double majorRadius() const { return m_majorRadius; }
    double minorRadius() const { return m_minorRadius; }
    double startAng() const { return m_startAngle; }
    double endAng() const { return m_endAngle; }
    AcGePoint2d startPoint() const { return evalPoint(m_startAngle); }
    AcGePoint2d endPoint() const { return evalPoint(m_endAngle); }
    AcGeEllipArc2d& setAngles(double startAngle, double endAngle);
    Adesk::Boolean isCircular(const AcGeTol& tol = AcGeContext::gTol) const;

    AcGe::EntityId type() const override { return AcGe::kEllipArc2d; }
    AcGeEllipArc2d* copy() const override { return new AcGeEllipArc2d(*this); }
    /// Right for every affine matrix: the moved conjugate radii give the new axes. The parameter of a point
    /// may shift by a constant when the matrix is not uniform.
    AcGeEllipArc2d& transformBy(const AcGeMatrix2d& matrix) override;
    Adesk::Boolean isEqualTo(const AcGeEntity2d& entity,
                             const AcGeTol& tol = AcGeContext::gTol) const override;
    using AcGeCurve2d::evalPoint;
    using AcGeCurve2d::getInterval;
    void getInterval(AcGeInterval& interval) const override { interval.set(m_startAngle, m_endAngle); }
    Adesk::Boolean setInterval(const AcGeInterval& interval) override;
    AcGeEllipArc2d& reverseParam() override;
    AcGePoint2d evalPoint(double param) const override;
    AcGePoint2d evalPoint(double param, int numDeriv, AcGeVector2dArray& derivatives) const override;
    double paramOfClosestPoint(const AcGePoint2d& point) const override;
    double paramOf(const AcGePoint2d& point, const AcGeTol& tol = AcGeContext::gTol) const override;
    Adesk::Boolean isPeriodic(double& period) const override;
    Adesk::Boolean area(double startParam, double endParam, double& value,
                        const AcGeTol& tol = AcGeContext::gTol) const override;
    AcGeBoundBlock2d orthoBoundBlock() const override;
    void getSmoothPieces(AcGeDoubleArray& params) const override;
    double coordinateMagnitude() const override {
        return std::max(m_center.largestCoordinate(), m_majorRadius);
    }

private:
    AcGePoint2d m_center;
    AcGeVector2d m_majorAxis;
    AcGeVector2d m_minorAxis;
    double m_majorRadius;
    double m_minorRadius;
    double m_startAngle;
    double m_endAngle;
};
