// Stand-in for the host's AcGeEllipArc3d. Covers elliptic arcs and ellipses; leaves out closed-form crossings (see AcGeCurveCurveInt3d).
#pragma once

#include "gecurv3d.h"
#include "geell.h"

extern template class AcGeKernel::EllipseOf<AcGeKernel::Space>;

/// An elliptic arc or a full ellipse in space; see EllipseOf.
class AcGeEllipArc3d : public AcGeKernel::EllipseOf<AcGeKernel::Space> {
public:
    AcGeEllipArc3d(); ///< the unit circle about the origin
    AcGeEllipArc3d(const AcGeCircArc3d& arc);
    AcGeEllipArc3d(const AcGePoint3d& center, const AcGeVector3d& majorAxis, const AcGeVector3d& minorAxis,
                   double majorRadius, double minorRadius);
    /// The axes are made unit vectors, the minor one perpendicular to the major one. Angles as
    /// AcGeCircArc3d::setAngles.
    AcGeEllipArc3d(const AcGePoint3d& center, const AcGeVector3d& majorAxis, const AcGeVector3d& minorAxis,
                   double majorRadius, double minorRadius, double startAngle, double endAngle);

    AcGeVector3d normal() const { return m_majorAxis.crossProduct(m_minorAxis); }
    void getPlane(AcGePlane& plane) const;

    AcGe::EntityId type() const override { return AcGe::kEllipArc3d; }
    AcGeEllipArc3d* copy() const override { return new AcGeEllipArc3d(*this); }
    /// Right for every affine matrix: the moved conjugate radii give the new axes. The parameter of a point
    /// may shift by a constant when the matrix is not uniform.
    AcGeEllipArc3d& transformBy(const AcGeMatrix3d& matrix) override {
        move(matrix);
        return *this;
    }
    AcGeEllipArc3d& reverseParam() override {
        reverse();
        return *this;
    }
    Adesk::Boolean isPlanar(AcGePlane& plane, const AcGeTol& tol = AcGeContext::gTol) const override;
    Adesk::Boolean area(double startParam, double endParam, double& value,
                        const AcGeTol& tol = AcGeContext::gTol) const override;
};
