// Stand-in for the host's AcGeLineSeg3d. Covers the bounded line; leaves out bisectors and barycentric combinations.
#pragma once

#include "gelent3d.h"
#include "geline.h"

extern template class AcGeKernel::SegmentOf<AcGeKernel::Space>;

/// A straight run between two points in space; see SegmentOf for its constructors and what it answers.
class AcGeLineSeg3d : public AcGeKernel::SegmentOf<AcGeKernel::Space> {
public:
    using SegmentOf::SegmentOf;

    AcGe::EntityId type() const override { return AcGe::kLineSeg3d; }
    AcGeLineSeg3d* copy() const override { return new AcGeLineSeg3d(*this); }
    AcGeLineSeg3d& transformBy(const AcGeMatrix3d& matrix) override {
        move(matrix);
        return *this;
    }
    AcGeLineSeg3d& reverseParam() override { return *this = AcGeLineSeg3d(m_end, m_origin); }
};
