// Stand-in for the host's AcGeRay2d. Covers the line bounded on one side; leaves out nothing that callers ask for.
#pragma once

#include "gelent2d.h"
#include "geline.h"

extern template class AcGeKernel::RayOf<AcGeKernel::Plane>;

/// A line from a start point on in the plane; see RayOf for its constructors and what it answers.
class AcGeRay2d : public AcGeKernel::RayOf<AcGeKernel::Plane> {
public:
    using RayOf::RayOf;

    AcGe::EntityId type() const override { return AcGe::kRay2d; }
    AcGeRay2d* copy() const override { return new AcGeRay2d(*this); }
    AcGeRay2d& transformBy(const AcGeMatrix2d& matrix) override {
        move(matrix);
        return *this;
    }
    /// No change: a ray has one sense only.
    AcGeRay2d& reverseParam() override { return *this; }
};
