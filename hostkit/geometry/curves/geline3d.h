// Stand-in for the host's AcGeLine3d. Covers the unbounded line; leaves out nothing that callers ask for.
#pragma once

#include "gelent3d.h"
#include "geline.h"

extern template class AcGeKernel::LineOf<AcGeKernel::Space>;

/// An unbounded line in space; see LineOf for its constructors and what it answers.
class AcGeLine3d : public AcGeKernel::LineOf<AcGeKernel::Space> {
public:
    using LineOf::LineOf;
    static const AcGeLine3d& kZAxis();

    AcGe::EntityId type() const override { return AcGe::kLine3d; }
    AcGeLine3d* copy() const override { return new AcGeLine3d(*this); }
    AcGeLine3d& transformBy(const AcGeMatrix3d& matrix) override {
        move(matrix);
        return *this;
    }
    AcGeLine3d& reverseParam() override { return *this = AcGeLine3d(m_origin, -m_step); }
};
