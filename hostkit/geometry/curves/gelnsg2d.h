// Stand-in for the host's AcGeLineSeg2d. Covers the bounded line; leaves out bisectors and barycentric combinations.
#pragma once

#include "gelent2d.h"
#include "geline.h"

extern template class AcGeKernel::SegmentOf<AcGeKernel::Plane>;

/// A straight run between two points in the plane; see SegmentOf for its constructors and what it answers.
class AcGeLineSeg2d : public AcGeKernel::SegmentOf<AcGeKernel::Plane> {
public:
    using SegmentOf::SegmentOf;

    AcGe::EntityId type() const override { return AcGe::kLineSeg2d; }
    AcGeLineSeg2d* copy() const override { return new AcGeLineSeg2d(*this); }
    AcGeLineSeg2d& transformBy(const AcGeMatrix2d& matrix) override {
        move(matrix);
        return *this;
    }
    AcGeLineSeg2d& reverseParam() override { return *this = AcGeLineSeg2d(m_end, m_origin); }
};
