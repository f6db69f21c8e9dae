// Stand-in for the host's AcGeCurve2d. Covers intervals, evaluation, closest points, tests, measures, sampling and splitting; leaves out offsets.
#pragma once

#include "gecurv.h"
#include "geent2d.h"

extern template class AcGeKernel::CurveOf<AcGeKernel::Plane>;

/// Base of the curves in the plane; see CurveOf for what they all answer.
class AcGeCurve2d : public AcGeKernel::CurveOf<AcGeKernel::Plane> {
public:
    AcGeCurve2d* copy() const override = 0;
    AcGeCurve2d& transformBy(const AcGeMatrix2d& matrix) override = 0;

    /// Area between the curve's part and its chord, positive where the part runs counter-clockwise about it.
    /// True always.
    virtual Adesk::Boolean area(double startParam, double endParam, double& value,
                                const AcGeTol& tol = AcGeContext::gTol) const;
};
