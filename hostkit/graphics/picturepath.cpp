#include "picturepath.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace hostkit {

void PicturePath::moveTo(const AcGePoint3d& point) {
    m_steps.push_back(Step::move);
    m_points.push_back(point);
    m_isOpen = true;
}

void PicturePath::lineTo(const AcGePoint3d& point) {
    if (!m_isOpen) return moveTo(point);
    m_steps.push_back(Step::line);
    m_points.push_back(point);
}

void PicturePath::curveTo(const AcGePoint3d& control1, const AcGePoint3d& control2, const AcGePoint3d& end) {
    if (!m_isOpen) moveTo(control1);
    m_steps.push_back(Step::curve);
    m_points.insert(m_points.end(), {control1, control2, end});
}

void PicturePath::close() {
    if (m_isOpen) m_steps.push_back(Step::close);
    m_isOpen = false;
}

void PicturePath::arc(const AcGePoint3d& center, const AcGeVector3d& major, const AcGeVector3d& minor,
                      double start, double sweep) {
    constexpr double fullTurn = 2.0 * std::numbers::pi;
    sweep = std::clamp(sweep, -fullTurn, fullTurn);
    if (!std::isfinite(start) || !std::isfinite(sweep)) return;
    const auto pointAt = [&](double t) { return center + major * std::cos(t) + minor * std::sin(t); };
    const auto tangentAt = [&](double t) { return minor * std::cos(t) - major * std::sin(t); };
    lineTo(pointAt(start));
    const int pieces =
        std::max(1, static_cast<int>(std::ceil(std::abs(sweep) / (std::numbers::pi / 4) - 1e-9)));
    const double step = sweep / pieces;
    // The control points' distance for which a cubic meets the arc's middle (the usual 4/3 tan(angle/4)).
    const double reach = 4.0 / 3.0 * std::tan(step / 4.0);
    for (int i = 0; i < pieces; ++i) {
        const double from = start + step * i;
        const double to = start + step * (i + 1);
        curveTo(pointAt(from) + tangentAt(from) * reach, pointAt(to) - tangentAt(to) * reach, pointAt(to));
    }
}

void PicturePath::bulgeTo(const AcGePoint3d& end, double bulge) {
    const bool isStraight = !m_isOpen || bulge == 0.0 || !std::isfinite(bulge);
    if (isStraight) return lineTo(end);
    const AcGePoint3d begin = m_points.back();
    const AcGeVector3d chord = end - begin;
    const AcGeVector3d left(-chord.y, chord.x, 0.0);
    // The centre stands off the chord's middle by half the chord times the cotangent of half the angle.
    const AcGePoint3d center = begin + chord * 0.5 + left * ((1.0 - bulge * bulge) / (4.0 * bulge));
    const AcGeVector3d radius = begin - center;
    arc(center, radius, AcGeVector3d(-radius.y, radius.x, 0.0), 0.0, 4.0 * std::atan(bulge));
}

void PicturePath::append(const PicturePath& path) {
    m_steps.insert(m_steps.end(), path.m_steps.begin(), path.m_steps.end());
    m_points.insert(m_points.end(), path.m_points.begin(), path.m_points.end());
    m_isOpen = path.m_isOpen;
}

void PicturePath::transformBy(const AcGeMatrix3d& matrix) {
    for (AcGePoint3d& point : m_points) point.transformBy(matrix);
}

} // namespace hostkit
