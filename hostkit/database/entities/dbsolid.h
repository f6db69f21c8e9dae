// Stand-in for the host's AcDbSolid. Covers the four corners; leaves out nothing.
#pragma once

#include "cornerfigure.h"

/// A filled triangle or four-sided figure.
class AcDbSolid : public hostkit::CornerFigure {
    ACRX_DECLARE_MEMBERS(AcDbSolid)

public:
    AcDbSolid() = default;
    AcDbSolid(const AcGePoint3d& p0, const AcGePoint3d& p1, const AcGePoint3d& p2, const AcGePoint3d& p3)
        : CornerFigure(p0, p1, p2, p3) {}
    AcDbSolid(const AcDbSolid&) = default;

    Adesk::Boolean worldDraw(AcGiWorldDraw* draw) override;
    AcRxObject* clone() const override { return new AcDbSolid(*this); }
};
