// Stand-in for the host's AcGeRay3d. Covers the line bounded on one side; leaves out nothing that callers ask for.
#pragma once

#include "gelent3d.h"

/// A line from a start point on. The parameter is the distance from the start, 0 to infinity.
class AcGeRay3d : public AcGeLinearEnt3d {
public:
    AcGeRay3d(); ///< the positive x axis
    AcGeRay3d(const AcGePoint3d& point, const AcGeVector3d& direction);
    AcGeRay3d(const AcGePoint3d& start, const AcGePoint3d& through);
    AcGeRay3d& set(const AcGePoint3d& point, const AcGeVector3d& direction) {
        return *this = AcGeRay3d(point, direction);
    }

    AcGe::EntityId type() const override { return AcGe::kRay3d; }
    AcGeRay3d* copy() const override { return new AcGeRay3d(*this); }
    AcGeRay3d& transformBy(const AcGeMatrix3d& matrix) override;
    /// Always false: a ray stays a ray.
    Adesk::Boolean setInterval(const AcGeInterval& interval) override;
    /// No change: a ray has one sense only.
    AcGeRay3d& reverseParam() override { return *this; }
    /// A segment and a ray.
    void getSplitCurves(double param, AcGeCurve3d*& before, AcGeCurve3d*& after) const override;
};
