// Stand-in for the host's AcGeLine3d. Covers the unbounded line; leaves out nothing that callers ask for.
#pragma once

#include "gelent3d.h"

/// An unbounded line. The parameter is the distance from the base point along the unit direction.
class AcGeLine3d : public AcGeLinearEnt3d {
public:
    /// The x axis.
    AcGeLine3d();
    /// The direction may have any length; a vector below the global vector tolerance makes the line a point.
    AcGeLine3d(const AcGePoint3d& point, const AcGeVector3d& direction);
    AcGeLine3d(const AcGePoint3d& point1, const AcGePoint3d& point2);

    static const AcGeLine3d& kXAxis();
    static const AcGeLine3d& kYAxis();
    static const AcGeLine3d& kZAxis();

    AcGeLine3d& set(const AcGePoint3d& point, const AcGeVector3d& direction) {
        return *this = AcGeLine3d(point, direction);
    }
    AcGeLine3d& set(const AcGePoint3d& point1, const AcGePoint3d& point2) {
        return *this = AcGeLine3d(point1, point2);
    }

    AcGe::EntityId type() const override { return AcGe::kLine3d; }
    AcGeLine3d* copy() const override { return new AcGeLine3d(*this); }
    AcGeLine3d& transformBy(const AcGeMatrix3d& matrix) override;
    /// Always false: a line stays unbounded.
    Adesk::Boolean setInterval(const AcGeInterval& interval) override;
    AcGeLine3d& reverseParam() override;
    /// Two rays that run away from the point.
    void getSplitCurves(double param, AcGeCurve3d*& before, AcGeCurve3d*& after) const override;
};
