// Stand-in for the host's AcGeCurveCurveInt2d. Covers all crossings and common runs of two curves; leaves out tangency types.
#pragma once

#include "gecint.h"
#include "gecurv2d.h"

extern template class AcGeKernel::CurveCurveIntOf<AcGeKernel::Plane>;

/// What two curves of the plane have in common; see CurveCurveIntOf.
class AcGeCurveCurveInt2d : public AcGeKernel::CurveCurveIntOf<AcGeKernel::Plane> {
public:
    using CurveCurveIntOf::CurveCurveIntOf;
};
