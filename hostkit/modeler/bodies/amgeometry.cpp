#include "amgeometry.h"

#include "amerror.h"

#include <cmath>

namespace AModeler {

double gEpsAbs = 1.0e-6;

void setEpsAbs(double epsilon) {
    if (!(epsilon > 0.0) || !std::isfinite(epsilon)) throw Error(eEpsilonMustBePositive);
    gEpsAbs = epsilon;
}

Plane::Plane(const AcGePoint3d& point, const AcGeVector3d& normal) {
    const double length = normal.length();
    if (!(length > 0.0) || !std::isfinite(length)) throw Error(eNullNormalVector);
    m_normal = normal / length;
    m_distance = m_normal.dotProduct(point.asVector());
}

Circle3d::Circle3d(const AcGePoint3d& start, const AcGePoint3d& end, const AcGeVector3d& normal,
                   double radius, bool large)
    : m_start(start)
    , m_end(end)
    , m_normal(normal.normal()) {
    const AcGeVector3d chord = end - start;
    const double half = chord.length() / 2;
    m_radius = radius < half ? half : radius;
    const double height = std::sqrt((m_radius - half) * (m_radius + half));
    // A way of less than a half turn counter-clockwise has its centre to the left of the chord.
    const AcGeVector3d left = m_normal.crossProduct(chord).normal();
    m_center = start + chord / 2 + left * (large ? -height : height);
}

bool Circle3d::isValid() const {
    return m_radius > 0.0 && std::isfinite(m_radius) && m_normal.lengthSqrd() > 0.0 &&
           std::isfinite(m_center.x + m_center.y + m_center.z);
}

void Interval3d::add(const AcGePoint3d& p) {
    m_min.set(std::min(m_min.x, p.x), std::min(m_min.y, p.y), std::min(m_min.z, p.z));
    m_max.set(std::max(m_max.x, p.x), std::max(m_max.y, p.y), std::max(m_max.z, p.z));
}

void Interval3d::enlarge(double by) {
    if (isEmpty()) return;
    const AcGeVector3d out(by, by, by);
    m_min -= out;
    m_max += out;
}

} // namespace AModeler
