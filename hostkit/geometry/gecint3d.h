// Stand-in for the host's AcGeCurveCurveInt3d. Covers all crossings and common runs of two curves; leaves out tangency types and intersection with normals.
#pragma once

#include "gecurv3d.h"

#include <vector>

/// All points that two bounded curves, lines or rays have in common.
///
/// Lines, segments, rays and arcs are met in closed form. With an ellipse or a spline the curves are cut into
/// chords and each crossing is refined until it no longer moves; common runs are found for lines and arcs
/// only. Every point is within the tolerance of both curves and is told once. Points come in the order of the
/// first curve's parameter. The ends of a common run are points of the list too.
class AcGeCurveCurveInt3d {
public:
    AcGeCurveCurveInt3d() = default;
    AcGeCurveCurveInt3d(const AcGeCurve3d& curve1, const AcGeCurve3d& curve2,
                        const AcGeTol& tol = AcGeContext::gTol) {
        set(curve1, curve2, tol);
    }
    AcGeCurveCurveInt3d& set(const AcGeCurve3d& curve1, const AcGeCurve3d& curve2,
                             const AcGeTol& tol = AcGeContext::gTol);

    int numIntPoints() const { return static_cast<int>(m_points.size()); }
    AcGePoint3d intPoint(int index) const { return m_points[static_cast<std::size_t>(index)].point; }
    void getIntParams(int index, double& param1, double& param2) const;
    int overlapCount() const { return static_cast<int>(m_runs.size()); }
    /// The run's parameters on each curve, ascending on each.
    void getOverlapRanges(int index, AcGeInterval& range1, AcGeInterval& range2) const;

private:
    struct Meeting {
        AcGePoint3d point;
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
