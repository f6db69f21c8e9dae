#include "geline2d.h"
#include "geline3d.h"
#include "gelnsg2d.h"
#include "gelnsg3d.h"
#include "geray2d.h"
#include "geray3d.h"
#include "linearkernel.hpp"

namespace AcGeKernel {

template <class T>
void LinearOf<T>::move(const typename T::Matrix& matrix) {
    m_origin.transformBy(matrix);
    if (m_interval.isBounded()) {
        m_end.transformBy(matrix);
        m_step = m_end - m_origin;
        return;
    }
    m_step.transformBy(matrix).normalize();
    m_end = m_origin + m_step;
}

template <class T>
Adesk::Boolean LinearOf<T>::isEqualTo(const Entity& entity, const AcGeTol& tol) const {
    if (entity.type() != this->type()) return Adesk::kFalse;
    const auto& other = static_cast<const LinearOf&>(entity);
    if (m_interval.isBounded())
        return m_origin.isEqualTo(other.m_origin, tol) && m_end.isEqualTo(other.m_end, tol);
    if (!m_step.isEqualTo(other.m_step, tol)) return Adesk::kFalse;
    if (m_interval.isBoundedBelow()) return m_origin.isEqualTo(other.m_origin, tol);
    return Base::isOn(other.m_origin, tol);
}

template <class T>
auto LinearOf<T>::direction() const -> Vector {
    if (!m_interval.isBounded()) return m_step;
    const double size = m_step.length();
    return size > 0.0 ? m_step / size : Vector::kIdentity;
}

template <class T>
void LinearOf<T>::getLine(Line& line) const {
    line.set(m_origin, direction());
}

template <class T>
Adesk::Boolean LinearOf<T>::isParallelTo(const Linear& line, const AcGeTol& tol) const {
    return areParallel<T>(self(), line, tol);
}

template <class T>
Adesk::Boolean LinearOf<T>::isPerpendicularTo(const Linear& line, const AcGeTol& tol) const {
    return direction().isPerpendicularTo(line.direction(), tol);
}

template <class T>
Adesk::Boolean LinearOf<T>::isColinearTo(const Linear& line, const AcGeTol& tol) const {
    return areColinear<T>(self(), line, tol);
}

template <class T>
Adesk::Boolean LinearOf<T>::intersectWith(const Linear& line, Point& point, const AcGeTol& tol) const {
    AcGeInterval run;
    return meetLinear<T>(self(), line, point, run, tol) == LinearMeeting::kPoint;
}

template <class T>
Adesk::Boolean LinearOf<T>::overlap(const Linear& line, Linear*& common, const AcGeTol& tol) const {
    common = nullptr;
    Point point;
    AcGeInterval run;
    if (meetLinear<T>(self(), line, point, run, tol) != LinearMeeting::kRun) return Adesk::kFalse;
    common = partOf<T>(self(), run);
    return Adesk::kTrue;
}

template <class T>
auto LinearOf<T>::evalPoint(double param) const -> Point {
    // Counted from the nearer end, so that both ends of a segment come out as they were given.
    if (param > 0.5 && m_interval.isBounded()) return m_end - m_step * (1.0 - param);
    return m_origin + m_step * param;
}

template <class T>
auto LinearOf<T>::evalPoint(double param, int numDeriv, VectorArray& derivatives) const -> Point {
    derivatives.setLogicalLength(std::max(numDeriv, 0)).setAll(Vector::kIdentity);
    if (numDeriv > 0) derivatives[0] = m_step;
    return evalPoint(param);
}

template <class T>
double LinearOf<T>::paramOfClosestPoint(const Point& point) const {
    return m_interval.clamp(paramOf(point, AcGeContext::gTol));
}

template <class T>
double LinearOf<T>::paramOf(const Point& point, const AcGeTol&) const {
    const double stepSquared = m_step.lengthSqrd();
    return stepSquared > 0.0 ? m_step.dotProduct(point - m_origin) / stepSquared : 0.0;
}

template <class T>
Adesk::Boolean LinearOf<T>::isLinear(Line& line, const AcGeTol& tol) const {
    if (m_step.isZeroLength(tol)) return Adesk::kFalse;
    getLine(line);
    return Adesk::kTrue;
}

template <class T>
double LinearOf<T>::length(double fromParam, double toParam, const AcGeTol&) const {
    return std::abs(toParam - fromParam) * m_step.length();
}

template <class T>
double LinearOf<T>::paramAtLength(double datumParam, double length, Adesk::Boolean forward,
                                  const AcGeTol&) const {
    const double size = m_step.length();
    if (!(size > 0.0)) return datumParam;
    return forward ? datumParam + length / size : datumParam - length / size;
}

template <class T>
Adesk::Boolean LinearOf<T>::area(double, double, double& value, const AcGeTol&) const {
    value = 0.0;
    return Adesk::kTrue;
}

template <class T>
auto LinearOf<T>::orthoBoundBlock() const -> Block {
    return blockOf<T>(self());
}

template <class T>
void LinearOf<T>::getSamplePoints(double fromParam, double toParam, double, PointArray& points,
                                  AcGeDoubleArray& params) const {
    points.removeAll();
    params.removeAll();
    for (double param : {fromParam, toParam}) {
        points.append(evalPoint(param));
        params.append(param);
    }
}

template class LinearOf<Plane>;
template class LinearOf<Space>;

} // namespace AcGeKernel
