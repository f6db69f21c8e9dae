// Stand-in for the host's AcGeRay2d. Covers the line bounded on one side; leaves out nothing that callers ask for.
#pragma once

#include "gelent2d.h"

/// A line from a start point on. The parameter is the distance from the start, 0 to infinity.
class AcGeRay2d : public AcGeLinearEnt2d {
public:
    AcGeRay2d(); ///< the positive x axis
    AcGeRay2d(const AcGePoint2d& point, const AcGeVector2d& direction);
    AcGeRay2d(const AcGePoint2d& start, const AcGePoint2d& through);
    AcGeRay2d& set(const AcGePoint2d& point, const AcGeVector2d& direction) {
        return *this = AcGeRay2d(point, direction);
    }

    AcGe::EntityId type() const override { return AcGe::kRay2d; }
    AcGeRay2d* copy() const override { return new AcGeRay2d(*this); }
    AcGeRay2d& transformBy(const AcGeMatrix2d& matrix) override;
    /// Always false: a ray stays a ray.
    Adesk::Boolean setInterval(const AcGeInterval& interval) override;
    /// No change: a ray has one sense only.
    AcGeRay2d& reverseParam() override { return *this; }
    /// A segment and a ray.
    void getSplitCurves(double param, AcGeCurve2d*& before, AcGeCurve2d*& after) const override;
};
