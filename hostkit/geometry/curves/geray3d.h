// Stand-in for the host's AcGeRay3d. Covers the line bounded on one side; leaves out nothing that callers ask for.
#pragma once

#include "gelent3d.h"
#include "geline.h"

extern template class AcGeKernel::RayOf<AcGeKernel::Space>;

/// A line from a start point on in space; see RayOf for its constructors and what it answers.
class AcGeRay3d : public AcGeKernel::RayOf<AcGeKernel::Space> {
public:
    using RayOf::RayOf;

    AcGe::EntityId type() const override { return AcGe::kRay3d; }
    AcGeRay3d* copy() const override { return new AcGeRay3d(*this); }
    AcGeRay3d& transformBy(const AcGeMatrix3d& matrix) override {
        move(matrix);
        return *this;
    }
    /// No change: a ray has one sense only.
    AcGeRay3d& reverseParam() override { return *this; }
};
