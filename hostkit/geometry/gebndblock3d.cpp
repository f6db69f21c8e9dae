#include "gebndblock3d.h"

#include <limits>

namespace {
constexpr double kInfinity = std::numeric_limits<double>::infinity();
}

AcGeBoundBlock3d::AcGeBoundBlock3d()
    : m_min(kInfinity, kInfinity, kInfinity)
    , m_max(-kInfinity, -kInfinity, -kInfinity) {}

AcGeBoundBlock3d::AcGeBoundBlock3d(const AcGePoint3d& point1, const AcGePoint3d& point2)
    : AcGeBoundBlock3d() {
    extend(point1).extend(point2);
}

void AcGeBoundBlock3d::getMinMaxPoints(AcGePoint3d& minPoint, AcGePoint3d& maxPoint) const {
    minPoint = m_min;
    maxPoint = m_max;
}

AcGeBoundBlock3d& AcGeBoundBlock3d::extend(const AcGePoint3d& point) {
    for (unsigned int i = 0; i < 3; ++i) {
        m_min[i] = std::min(m_min[i], point[i]);
        m_max[i] = std::max(m_max[i], point[i]);
    }
    return *this;
}

AcGeBoundBlock3d& AcGeBoundBlock3d::extend(const AcGeBoundBlock3d& block) {
    if (!block.isEmpty()) extend(block.m_min).extend(block.m_max);
    return *this;
}

AcGeBoundBlock3d& AcGeBoundBlock3d::swell(double distance) {
    if (isEmpty()) return *this;
    bool insideOut = false;
    for (unsigned int i = 0; i < 3; ++i) {
        m_min[i] -= distance;
        m_max[i] += distance;
        insideOut = insideOut || m_min[i] > m_max[i];
    }
    return insideOut ? *this = AcGeBoundBlock3d() : *this;
}

Adesk::Boolean AcGeBoundBlock3d::contains(const AcGePoint3d& point) const {
    for (unsigned int i = 0; i < 3; ++i)
        if (!(point[i] >= m_min[i] && point[i] <= m_max[i])) return Adesk::kFalse;
    return Adesk::kTrue;
}

Adesk::Boolean AcGeBoundBlock3d::isDisjoint(const AcGeBoundBlock3d& block) const {
    for (unsigned int i = 0; i < 3; ++i)
        if (!(m_min[i] <= block.m_max[i] && block.m_min[i] <= m_max[i])) return Adesk::kTrue;
    return Adesk::kFalse;
}

AcGeBoundBlock3d& AcGeBoundBlock3d::transformBy(const AcGeMatrix3d& matrix) {
    if (isEmpty()) return *this;
    AcGeBoundBlock3d moved;
    for (int corner = 0; corner < 8; ++corner)
        moved.extend(matrix * AcGePoint3d(corner & 1 ? m_max.x : m_min.x, corner & 2 ? m_max.y : m_min.y,
                                          corner & 4 ? m_max.z : m_min.z));
    return *this = moved;
}

Adesk::Boolean AcGeBoundBlock3d::isOn(const AcGePoint3d& point, const AcGeTol& tol) const {
    return AcGeBoundBlock3d(*this)
        .swell(AcGe::pointAllowance(tol, point.largestCoordinate()))
        .contains(point);
}

Adesk::Boolean AcGeBoundBlock3d::isEqualTo(const AcGeEntity3d& entity, const AcGeTol& tol) const {
    if (entity.type() != AcGe::kBoundBlock3d) return Adesk::kFalse;
    const auto& other = static_cast<const AcGeBoundBlock3d&>(entity);
    if (isEmpty() || other.isEmpty()) return isEmpty() && other.isEmpty();
    return m_min.isEqualTo(other.m_min, tol) && m_max.isEqualTo(other.m_max, tol);
}
