// Stand-in for the host's AcGeNurbCurve2d. Covers rational splines: definition, evaluation, interpolation of fit points, trimming; leaves out knot and degree editing.
#pragma once

#include "gecurv2d.h"
#include "genurb.h"

extern template class AcGeKernel::NurbOf<AcGeKernel::Plane>;

/// A spline in the plane; see NurbOf for its constructors and what it answers.
class AcGeNurbCurve2d : public AcGeKernel::NurbOf<AcGeKernel::Plane> {
public:
    using NurbOf::NurbOf;

    AcGe::EntityId type() const override { return AcGe::kNurbCurve2d; }
    AcGeNurbCurve2d* copy() const override { return new AcGeNurbCurve2d(*this); }
    AcGeNurbCurve2d& transformBy(const AcGeMatrix2d& matrix) override {
        move(matrix);
        return *this;
    }
    AcGeNurbCurve2d& reverseParam() override {
        reverse();
        return *this;
    }
};
