// Stand-in for the host's AcGeLine2d. Covers the unbounded line; leaves out nothing that callers ask for.
#pragma once

#include "gelent2d.h"
#include "geline.h"

extern template class AcGeKernel::LineOf<AcGeKernel::Plane>;

/// An unbounded line in the plane; see LineOf for its constructors and what it answers.
class AcGeLine2d : public AcGeKernel::LineOf<AcGeKernel::Plane> {
public:
    using LineOf::LineOf;

    AcGe::EntityId type() const override { return AcGe::kLine2d; }
    AcGeLine2d* copy() const override { return new AcGeLine2d(*this); }
    AcGeLine2d& transformBy(const AcGeMatrix2d& matrix) override {
        move(matrix);
        return *this;
    }
    AcGeLine2d& reverseParam() override { return *this = AcGeLine2d(m_origin, -m_step); }
};
