// Stand-in for the host's AcGeLinearEnt2d. Covers direction, relations, crossings and overlaps of straight curves; leaves out nothing that callers ask for.
#pragma once

#include "gecurv2d.h"
#include "gelent.h"

extern template class AcGeKernel::LinearOf<AcGeKernel::Plane>;

/// Base of line, segment and ray in the plane; see LinearOf for what they all answer.
class AcGeLinearEnt2d : public AcGeKernel::LinearOf<AcGeKernel::Plane> {
public:
    AcGeLinearEnt2d* copy() const override = 0;
    AcGeLinearEnt2d& transformBy(const AcGeMatrix2d& matrix) override {
        move(matrix);
        return *this;
    }

    /// The line through `point` whose direction is this one turned left by a right angle.
    void getPerpLine(const AcGePoint2d& point, AcGeLine2d& line) const;

protected:
    using LinearOf::LinearOf;
};
