#include "gecint3d.h"

#include "curvecrossings.hpp"
#include "gearc3d.h"
#include "gelent3d.h"
#include "spacearcs.hpp"

using AcGeKernel::Space;

AcGeCurveCurveInt3d& AcGeCurveCurveInt3d::set(const AcGeCurve3d& curve1, const AcGeCurve3d& curve2,
                                              const AcGeTol& tol) {
    m_points.clear();
    m_runs.clear();
    AcGeKernel::CurveCrossings<Space> crossings(curve1, curve2, tol);
    for (const auto& meeting : crossings.points())
        m_points.push_back({meeting.point, meeting.param1, meeting.param2});
    for (const auto& run : crossings.runs()) m_runs.push_back({run.onFirst, run.onSecond});
    return *this;
}

void AcGeCurveCurveInt3d::getIntParams(int index, double& param1, double& param2) const {
    param1 = m_points[static_cast<std::size_t>(index)].param1;
    param2 = m_points[static_cast<std::size_t>(index)].param2;
}

void AcGeCurveCurveInt3d::getOverlapRanges(int index, AcGeInterval& range1, AcGeInterval& range2) const {
    range1 = m_runs[static_cast<std::size_t>(index)].range1;
    range2 = m_runs[static_cast<std::size_t>(index)].range2;
}
