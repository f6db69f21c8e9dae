#include "curvecrossings.hpp"
#include "gecint2d.h"
#include "gecint3d.h"

namespace AcGeKernel {

template <class T>
void CurveCurveIntOf<T>::meet(const Curve& curve1, const Curve& curve2, const AcGeTol& tol) {
    m_points.clear();
    m_runs.clear();
    const CurveCrossings<T> crossings(curve1, curve2, tol);
    for (const auto& meeting : crossings.points())
        m_points.push_back({meeting.point, meeting.param1, meeting.param2});
    for (const auto& run : crossings.runs()) m_runs.push_back({run.onFirst, run.onSecond});
}

template <class T>
void CurveCurveIntOf<T>::getIntParams(int index, double& param1, double& param2) const {
    param1 = m_points[static_cast<std::size_t>(index)].param1;
    param2 = m_points[static_cast<std::size_t>(index)].param2;
}

template <class T>
void CurveCurveIntOf<T>::getOverlapRanges(int index, AcGeInterval& range1, AcGeInterval& range2) const {
    range1 = m_runs[static_cast<std::size_t>(index)].range1;
    range2 = m_runs[static_cast<std::size_t>(index)].range2;
}

template class CurveCurveIntOf<Plane>;
template class CurveCurveIntOf<Space>;

} // namespace AcGeKernel
