// Stand-in for the host's AcGeEllipArc2d. Covers elliptic arcs and ellipses; leaves out closed-form crossings (see AcGeCurveCurveInt2d).
#pragma once

#include "gecurv2d.h"
#include "geell.h"

extern template class AcGeKernel::EllipseOf<AcGeKernel::Plane>;

/// An elliptic arc or a full ellipse in the plane; see EllipseOf.
class AcGeEllipArc2d : public AcGeKernel::EllipseOf<AcGeKernel::Plane> {
public:
    AcGeEllipArc2d(); ///< the unit circle about the origin
    AcGeEllipArc2d(const AcGeCircArc2d& arc);
    AcGeEllipArc2d(const AcGePoint2d& center, const AcGeVector2d& majorAxis, const AcGeVector2d& minorAxis,
                   double majorRadius, double minorRadius);
    /// The axes are made unit vectors, the minor one perpendicular to the major one. Angles as
    /// AcGeCircArc2d::setAngles.
    AcGeEllipArc2d(const AcGePoint2d& center, const AcGeVector2d& majorAxis, const AcGeVector2d& minorAxis,
                   double majorRadius, double minorRadius, double startAngle, double endAngle);

    /// Does the minor axis lie to the right of the major one, so that the arc runs clockwise.
    Adesk::Boolean isClockWise() const { return m_majorAxis.crossProduct(m_minorAxis) < 0.0; }

    AcGe::EntityId type() const override { return AcGe::kEllipArc2d; }
    AcGeEllipArc2d* copy() const override { return new AcGeEllipArc2d(*this); }
    /// Right for every affine matrix: the moved conjugate radii give the new axes. The parameter of a point
    /// may shift by a constant when the matrix is not uniform.
    AcGeEllipArc2d& transformBy(const AcGeMatrix2d& matrix) override {
        move(matrix);
        return *this;
    }
    AcGeEllipArc2d& reverseParam() override {
        reverse();
        return *this;
    }
    Adesk::Boolean area(double startParam, double endParam, double& value,
                        const AcGeTol& tol = AcGeContext::gTol) const override;
};
