// Stand-in for the host's AcGeBoundBlock2d. Covers boxes along the axes; leaves out boxes along other directions.
#pragma once

#include "gebndblock.h"
#include "geent2d.h"

extern template class AcGeKernel::BlockOf<AcGeKernel::Plane>;

/// A box along the axes of the plane; see BlockOf for its constructors and what it answers.
class AcGeBoundBlock2d : public AcGeKernel::BlockOf<AcGeKernel::Plane> {
public:
    using BlockOf::BlockOf;

    AcGe::EntityId type() const override { return AcGe::kBoundBlock2d; }
    AcGeBoundBlock2d* copy() const override { return new AcGeBoundBlock2d(*this); }
    /// The box along the axes around the moved box.
    AcGeBoundBlock2d& transformBy(const AcGeMatrix2d& matrix) override {
        move(matrix);
        return *this;
    }
};
