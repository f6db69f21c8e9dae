#include "pickregion.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace hostkit {

PickRegion::PickRegion(Kind kind, std::vector<AcGePoint2d> corners)
    : m_kind(kind)
    , m_corners(std::move(corners))
    , m_low(HUGE_VAL, HUGE_VAL)
    , m_high(-HUGE_VAL, -HUGE_VAL) {
    const bool isSound = std::all_of(m_corners.begin(), m_corners.end(), [](const AcGePoint2d& corner) {
        return std::isfinite(corner.x) && std::isfinite(corner.y);
    });
    if (!isSound) m_corners.clear();
    for (const AcGePoint2d& corner : m_corners) {
        m_low.set(std::min(m_low.x, corner.x), std::min(m_low.y, corner.y));
        m_high.set(std::max(m_high.x, corner.x), std::max(m_high.y, corner.y));
    }
}

PickRegion PickRegion::box(const AcGePoint2d& one, const AcGePoint2d& other) {
    const auto [left, right] = std::minmax(one.x, other.x);
    const auto [bottom, top] = std::minmax(one.y, other.y);
    return {Kind::box, {{left, bottom}, {right, bottom}, {right, top}, {left, top}}};
}

PickRegion PickRegion::polygon(std::vector<AcGePoint2d> corners) {
    return {Kind::polygon, std::move(corners)};
}

PickRegion PickRegion::fence(std::vector<AcGePoint2d> points) { return {Kind::fence, std::move(points)}; }

} // namespace hostkit
