#include "gebndblock2d.h"

#include <limits>

namespace {
constexpr double kInfinity = std::numeric_limits<double>::infinity();
}

AcGeBoundBlock2d::AcGeBoundBlock2d()
    : m_min(kInfinity, kInfinity)
    , m_max(-kInfinity, -kInfinity) {}

AcGeBoundBlock2d::AcGeBoundBlock2d(const AcGePoint2d& point1, const AcGePoint2d& point2)
    : AcGeBoundBlock2d() {
    extend(point1).extend(point2);
}

void AcGeBoundBlock2d::getMinMaxPoints(AcGePoint2d& minPoint, AcGePoint2d& maxPoint) const {
    minPoint = m_min;
    maxPoint = m_max;
}

AcGeBoundBlock2d& AcGeBoundBlock2d::extend(const AcGePoint2d& point) {
    for (unsigned int i = 0; i < 2; ++i) {
        m_min[i] = std::min(m_min[i], point[i]);
        m_max[i] = std::max(m_max[i], point[i]);
    }
    return *this;
}

AcGeBoundBlock2d& AcGeBoundBlock2d::extend(const AcGeBoundBlock2d& block) {
    if (!block.isEmpty()) extend(block.m_min).extend(block.m_max);
    return *this;
}

AcGeBoundBlock2d& AcGeBoundBlock2d::swell(double distance) {
    if (isEmpty()) return *this;
    bool insideOut = false;
    for (unsigned int i = 0; i < 2; ++i) {
        m_min[i] -= distance;
        m_max[i] += distance;
        insideOut = insideOut || m_min[i] > m_max[i];
    }
    return insideOut ? *this = AcGeBoundBlock2d() : *this;
}

Adesk::Boolean AcGeBoundBlock2d::contains(const AcGePoint2d& point) const {
    for (unsigned int i = 0; i < 2; ++i)
        if (!(point[i] >= m_min[i] && point[i] <= m_max[i])) return Adesk::kFalse;
    return Adesk::kTrue;
}

Adesk::Boolean AcGeBoundBlock2d::isDisjoint(const AcGeBoundBlock2d& block) const {
    for (unsigned int i = 0; i < 2; ++i)
        if (!(m_min[i] <= block.m_max[i] && block.m_min[i] <= m_max[i])) return Adesk::kTrue;
    return Adesk::kFalse;
}

AcGeBoundBlock2d& AcGeBoundBlock2d::transformBy(const AcGeMatrix2d& matrix) {
    if (isEmpty()) return *this;
    AcGeBoundBlock2d moved;
    for (int corner = 0; corner < 4; ++corner)
        moved.extend(matrix * AcGePoint2d(corner & 1 ? m_max.x : m_min.x, corner & 2 ? m_max.y : m_min.y));
    return *this = moved;
}

Adesk::Boolean AcGeBoundBlock2d::isOn(const AcGePoint2d& point, const AcGeTol& tol) const {
    return AcGeBoundBlock2d(*this)
        .swell(AcGe::pointAllowance(tol, point.largestCoordinate()))
        .contains(point);
}

Adesk::Boolean AcGeBoundBlock2d::isEqualTo(const AcGeEntity2d& entity, const AcGeTol& tol) const {
    if (entity.type() != AcGe::kBoundBlock2d) return Adesk::kFalse;
    const auto& other = static_cast<const AcGeBoundBlock2d&>(entity);
    if (isEmpty() || other.isEmpty()) return isEmpty() && other.isEmpty();
    return m_min.isEqualTo(other.m_min, tol) && m_max.isEqualTo(other.m_max, tol);
}
