// Stand-in for the host's AcGeCurve3d. Covers intervals, evaluation, closest points, tests, measures, sampling and splitting; leaves out offsets, surfaces and curve-on-curve projections.
#pragma once

#include "gecurv.h"
#include "geent3d.h"

extern template class AcGeKernel::CurveOf<AcGeKernel::Space>;

/// Base of the curves in space; see CurveOf for what they all answer.
class AcGeCurve3d : public AcGeKernel::CurveOf<AcGeKernel::Space> {
public:
    AcGeCurve3d* copy() const override = 0;
    AcGeCurve3d& transformBy(const AcGeMatrix3d& matrix) override = 0;

    /// The point of this curve that is nearest to the given point seen along `direction`. A zero direction
    /// measures in space.
    AcGePoint3d projClosestPointTo(const AcGePoint3d& point, const AcGeVector3d& direction,
                                   const AcGeTol& tol = AcGeContext::gTol) const;

    /// Does the curve lie in a plane; `plane` becomes it. A straight curve lies in many and gives one of
    /// them.
    virtual Adesk::Boolean isPlanar(AcGePlane& plane, const AcGeTol& tol = AcGeContext::gTol) const = 0;
    /// Do both curves lie in one plane.
    Adesk::Boolean isCoplanarWith(const AcGeCurve3d& curve, AcGePlane& plane,
                                  const AcGeTol& tol = AcGeContext::gTol) const;

    /// Area between the curve's part and its chord, never negative for a planar part that stays on one side.
    /// False, and `value` untouched, for a curve that is not planar.
    virtual Adesk::Boolean area(double startParam, double endParam, double& value,
                                const AcGeTol& tol = AcGeContext::gTol) const;
};
