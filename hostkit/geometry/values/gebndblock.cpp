#include "gebndblock2d.h"
#include "gebndblock3d.h"

#include <limits>

namespace AcGeKernel {

template <class T>
BlockOf<T>::BlockOf() {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (unsigned int i = 0; i < T::dimensions; ++i) {
        m_min[i] = infinity;
        m_max[i] = -infinity;
    }
}

template <class T>
BlockOf<T>::BlockOf(const Point& point1, const Point& point2)
    : BlockOf() {
    takeOn(point1);
    takeOn(point2);
}

template <class T>
void BlockOf<T>::takeOn(const Point& point) {
    for (unsigned int i = 0; i < T::dimensions; ++i) {
        m_min[i] = std::min(m_min[i], point[i]);
        m_max[i] = std::max(m_max[i], point[i]);
    }
}

template <class T>
void BlockOf<T>::getMinMaxPoints(Point& minPoint, Point& maxPoint) const {
    minPoint = m_min;
    maxPoint = m_max;
}

template <class T>
auto BlockOf<T>::extend(const Point& point) -> Block& {
    takeOn(point);
    return self();
}

template <class T>
auto BlockOf<T>::extend(const Block& block) -> Block& {
    if (!block.isEmpty()) extend(block.minPoint()).extend(block.maxPoint());
    return self();
}

template <class T>
auto BlockOf<T>::swell(double distance) -> Block& {
    if (isEmpty()) return self();
    bool insideOut = false;
    for (unsigned int i = 0; i < T::dimensions; ++i) {
        m_min[i] -= distance;
        m_max[i] += distance;
        insideOut = insideOut || m_min[i] > m_max[i];
    }
    return insideOut ? self() = Block() : self();
}

template <class T>
Adesk::Boolean BlockOf<T>::contains(const Point& point) const {
    for (unsigned int i = 0; i < T::dimensions; ++i)
        if (!(point[i] >= m_min[i] && point[i] <= m_max[i])) return Adesk::kFalse;
    return Adesk::kTrue;
}

template <class T>
Adesk::Boolean BlockOf<T>::isDisjoint(const Block& block) const {
    const Point otherMin = block.minPoint(), otherMax = block.maxPoint();
    for (unsigned int i = 0; i < T::dimensions; ++i)
        if (!(m_min[i] <= otherMax[i] && otherMin[i] <= m_max[i])) return Adesk::kTrue;
    return Adesk::kFalse;
}

template <class T>
void BlockOf<T>::move(const typename T::Matrix& matrix) {
    if (isEmpty()) return;
    Block moved;
    for (unsigned int corner = 0; corner < 1u << T::dimensions; ++corner) {
        Point point;
        for (unsigned int i = 0; i < T::dimensions; ++i) point[i] = corner & 1u << i ? m_max[i] : m_min[i];
        moved.extend(matrix * point);
    }
    self() = moved;
}

template <class T>
Adesk::Boolean BlockOf<T>::isOn(const Point& point, const AcGeTol& tol) const {
    return Block(self()).swell(AcGe::pointAllowance(tol, point.largestCoordinate())).contains(point);
}

template <class T>
Adesk::Boolean BlockOf<T>::isEqualTo(const Entity& entity, const AcGeTol& tol) const {
    if (entity.type() != this->type()) return Adesk::kFalse;
    const auto& other = static_cast<const Block&>(entity);
    if (isEmpty() || other.isEmpty()) return isEmpty() && other.isEmpty();
    return m_min.isEqualTo(other.minPoint(), tol) && m_max.isEqualTo(other.maxPoint(), tol);
}

template class BlockOf<Plane>;
template class BlockOf<Space>;

} // namespace AcGeKernel
