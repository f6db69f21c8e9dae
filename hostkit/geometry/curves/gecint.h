// What the curve-curve intersections of the plane and of space share.
#pragma once

#include "geintrvl.h"

#include <vector>

namespace AcGeKernel {

/// All points that two bounded curves, lines or rays have in common.
///
/// Lines, segments, rays and arcs are met in closed form. With an ellipse or a spline the curves are cut into
/// chords and each crossing is refined until it no longer moves; common runs are found for lines and arcs
/// only. Every point is within the tolerance of both curves and is told once. Points come in the order of the
/// first curve's parameter. The ends of a common run are points of the list too.
template <class T>
class CurveCurveIntOf {
    using Curve = typename T::Curve;
    using Point = typename T::Point;
    using CurveCurveInt = typename T::CurveCurveInt;

public:
    CurveCurveIntOf() = default;
    CurveCurveIntOf(const Curve& curve1, const Curve& curve2, const AcGeTol& tol = AcGeContext::gTol) {
        meet(curve1, curve2, tol);
    }
    CurveCurveInt& set(const Curve& curve1, const Curve& curve2, const AcGeTol& tol = AcGeContext::gTol) {
        meet(curve1, curve2, tol);
        return static_cast<CurveCurveInt&>(*this);
    }

    int numIntPoints() const { return static_cast<int>(m_points.size()); }
    Point intPoint(int index) const { return m_points[static_cast<std::size_t>(index)].point; }
    void getIntParams(int index, double& param1, double& param2) const;
    int overlapCount() const { return static_cast<int>(m_runs.size()); }
    /// The run's parameters on each curve, ascending on each.
    void getOverlapRanges(int index, AcGeInterval& range1, AcGeInterval& range2) const;

private:
    void meet(const Curve& curve1, const Curve& curve2, const AcGeTol& tol);

    struct Meeting {
        Point point;
        double param1;
        double param2;
    };
    struct Run {
        AcGeInterval range1;
        AcGeInterval range2;
    };
    std::vector<Meeting> m_points;
    std::vector<Run> m_runs;
};

} // namespace AcGeKernel
