// Stand-in for the host's AcGeLine2d. Covers the unbounded line; leaves out nothing that callers ask for.
#pragma once

#include "gelent2d.h"

/// An unbounded line. The parameter is the distance from the base point along the unit direction.
class AcGeLine2d : public AcGeLinearEnt2d {
public:
    /// The x axis.
    AcGeLine2d();
    /// The direction may have any length; a vector below the global vector tolerance makes the line a point.
    AcGeLine2d(const AcGePoint2d& point, const AcGeVector2d& direction);
    AcGeLine2d(const AcGePoint2d& point1, const AcGePoint2d& point2);

    static const AcGeLine2d& kXAxis();
    static const AcGeLine2d& kYAxis();

    AcGeLine2d& set(const AcGePoint2d& point, const AcGeVector2d& direction) {
        return *this = AcGeLine2d(point, direction);
    }
    AcGeLine2d& set(const AcGePoint2d& point1, const AcGePoint2d& point2) {
        return *this = AcGeLine2d(point1, point2);
    }

    AcGe::EntityId type() const override { return AcGe::kLine2d; }
    AcGeLine2d* copy() const override { return new AcGeLine2d(*this); }
    AcGeLine2d& transformBy(const AcGeMatrix2d& matrix) override;
    /// Always false: a line stays unbounded.
    Adesk::Boolean setInterval(const AcGeInterval& interval) override;
    AcGeLine2d& reverseParam() override;
    /// Two rays that run away from the point.
    void getSplitCurves(double param, AcGeCurve2d*& before, AcGeCurve2d*& after) const override;
};
