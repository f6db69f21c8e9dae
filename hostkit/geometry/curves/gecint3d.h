// Stand-in for the host's AcGeCurveCurveInt3d. Covers all crossings and common runs of two curves; leaves out tangency types and intersection with normals.
#pragma once

#include "gecint.h"
#include "gecurv3d.h"

extern template class AcGeKernel::CurveCurveIntOf<AcGeKernel::Space>;

/// What two curves of space have in common; see CurveCurveIntOf.
class AcGeCurveCurveInt3d : public AcGeKernel::CurveCurveIntOf<AcGeKernel::Space> {
public:
    using CurveCurveIntOf::CurveCurveIntOf;
};
