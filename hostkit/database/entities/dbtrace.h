// Stand-in for the host's AcDbTrace. Covers the four corners; leaves out nothing.
#pragma once

#include "cornerfigure.h"

/// A filled stroke with four corners.
class AcDbTrace : public hostkit::CornerFigure {
    ACRX_DECLARE_MEMBERS(AcDbTrace)

public:
    AcDbTrace() = default;
    AcDbTrace(const AcGePoint3d& p0, const AcGePoint3d& p1, const AcGePoint3d& p2, const AcGePoint3d& p3)
        : CornerFigure(p0, p1, p2, p3) {}
    AcDbTrace(const AcDbTrace&) = default;

    Adesk::Boolean worldDraw(AcGiWorldDraw* draw) override;
    AcRxObject* clone() const override { return new AcDbTrace(*this); }
};
