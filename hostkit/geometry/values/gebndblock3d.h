// Stand-in for the host's AcGeBoundBlock3d. Covers boxes along the axes; leaves out boxes along other directions.
#pragma once

#include "gebndblock.h"
#include "geent3d.h"

extern template class AcGeKernel::BlockOf<AcGeKernel::Space>;

/// A box along the axes of space; see BlockOf for its constructors and what it answers.
class AcGeBoundBlock3d : public AcGeKernel::BlockOf<AcGeKernel::Space> {
public:
    using BlockOf::BlockOf;

    AcGe::EntityId type() const override { return AcGe::kBoundBlock3d; }
    AcGeBoundBlock3d* copy() const override { return new AcGeBoundBlock3d(*this); }
    /// The box along the axes around the moved box.
    AcGeBoundBlock3d& transformBy(const AcGeMatrix3d& matrix) override {
        move(matrix);
        return *this;
    }
};
