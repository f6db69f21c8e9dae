// Stand-in for the host's AcGeNurbCurve3d. Covers rational splines: definition, evaluation, interpolation of fit points, trimming; leaves out knot and degree editing.
#pragma once

#include "gecurv3d.h"
#include "genurb.h"

extern template class AcGeKernel::NurbOf<AcGeKernel::Space>;

/// A spline in space; see NurbOf for its constructors and what it answers.
class AcGeNurbCurve3d : public AcGeKernel::NurbOf<AcGeKernel::Space> {
public:
    using NurbOf::NurbOf;

    AcGe::EntityId type() const override { return AcGe::kNurbCurve3d; }
    AcGeNurbCurve3d* copy() const override { return new AcGeNurbCurve3d(*this); }
    AcGeNurbCurve3d& transformBy(const AcGeMatrix3d& matrix) override {
        move(matrix);
        return *this;
    }
    AcGeNurbCurve3d& reverseParam() override {
        reverse();
        return *this;
    }
    Adesk::Boolean isPlanar(AcGePlane& plane, const AcGeTol& tol = AcGeContext::gTol) const override;
};
