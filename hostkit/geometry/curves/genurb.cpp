#include "curvekernel.hpp"
#include "geline2d.h"
#include "geline3d.h"
#include "genurb2d.h"
#include "genurb3d.h"
#include "splinekernel.hpp"

namespace AcGeKernel {

template <class T>
NurbOf<T>::NurbOf(int degree, const AcGeKnotVector& knots, const PointArray& controlPoints,
                  Adesk::Boolean isPeriodic)
    : NurbOf(degree, knots, controlPoints, AcGeDoubleArray(), isPeriodic) {}

template <class T>
NurbOf<T>::NurbOf(int degree, const AcGeKnotVector& knots, const PointArray& controlPoints,
                  const AcGeDoubleArray& weights, Adesk::Boolean isPeriodic)
    : m_degree(degree)
    , m_periodic(isPeriodic)
    , m_knots(knots)
    , m_controlPoints(controlPoints)
    , m_weights(weights) {
    if (!isValidSpline(degree, knots, controlPoints.length(), weights)) clear();
}

template <class T>
NurbOf<T>::NurbOf(const PointArray& fitPoints, const Vector& startTangent, const Vector& endTangent) {
    fitCubic<T>(fitPoints, startTangent, endTangent, m_knots, m_controlPoints);
    m_degree = m_controlPoints.isEmpty() ? 0 : 3;
}

template <class T>
double NurbOf<T>::startParam() const {
    return isEmpty() ? 0.0 : m_knots[m_degree];
}

template <class T>
double NurbOf<T>::endParam() const {
    return isEmpty() ? 0.0 : m_knots[m_controlPoints.length()];
}

template <class T>
void NurbOf<T>::getDefinitionData(int& degree, Adesk::Boolean& rational, Adesk::Boolean& periodic,
                                  AcGeKnotVector& knots, PointArray& controlPoints,
                                  AcGeDoubleArray& weights) const {
    degree = m_degree;
    rational = isRational();
    periodic = m_periodic;
    knots = m_knots;
    controlPoints = m_controlPoints;
    weights = m_weights;
}

template <class T>
int NurbOf<T>::spanAt(double param) const {
    return isEmpty() ? 0 : spanOf(m_degree, m_knots, m_controlPoints.length(), param);
}

template <class T>
void NurbOf<T>::move(const typename T::Matrix& matrix) {
    for (Point& point : m_controlPoints) point.transformBy(matrix);
}

template <class T>
Adesk::Boolean NurbOf<T>::isEqualTo(const Entity& entity, const AcGeTol& tol) const {
    if (entity.type() != this->type()) return Adesk::kFalse;
    const auto& other = static_cast<const NurbOf&>(entity);
    if (m_degree != other.m_degree || numControlPoints() != other.numControlPoints()) return Adesk::kFalse;
    for (int i = 0; i < numKnots(); ++i)
        if (std::abs(m_knots[i] - other.m_knots[i]) > m_knots.tolerance()) return Adesk::kFalse;
    for (int i = 0; i < numControlPoints(); ++i) {
        if (!m_controlPoints[i].isEqualTo(other.m_controlPoints[i], tol)) return Adesk::kFalse;
        if (std::abs(weightAt(i) - other.weightAt(i)) > tol.equalVector()) return Adesk::kFalse;
    }
    return Adesk::kTrue;
}

template <class T>
Adesk::Boolean NurbOf<T>::setInterval(const AcGeInterval& interval) {
    const double lo = interval.lowerBound(), hi = interval.upperBound();
    if (isEmpty() || !(lo < hi) || !(lo >= startParam()) || !(hi <= endParam())) return Adesk::kFalse;
    trimSpline<T>(m_degree, m_knots, m_controlPoints, m_weights, lo, hi);
    m_periodic = Adesk::kFalse;
    return Adesk::kTrue;
}

template <class T>
void NurbOf<T>::reverse() {
    if (isEmpty()) return;
    const double ends = startParam() + endParam();
    AcGeKnotVector reversed(m_knots.tolerance());
    for (int i = numKnots() - 1; i >= 0; --i) reversed.append(ends - m_knots[i]);
    m_knots = reversed;
    m_controlPoints.reverse();
    m_weights.reverse();
}

template <class T>
auto NurbOf<T>::evalPoint(double param) const -> Point {
    if (isEmpty()) return Point::kOrigin;
    return Spline<T>{m_degree, m_knots, m_controlPoints, m_weights}.evaluate(param, 0, nullptr);
}

template <class T>
auto NurbOf<T>::evalPoint(double param, int numDeriv, VectorArray& derivatives) const -> Point {
    derivatives.setLogicalLength(std::max(numDeriv, 0)).setAll(Vector::kIdentity);
    if (isEmpty()) return Point::kOrigin;
    return Spline<T>{m_degree, m_knots, m_controlPoints, m_weights}.evaluate(param, std::max(numDeriv, 0),
                                                                             derivatives.asArrayPtr());
}

template <class T>
double NurbOf<T>::paramOfClosestPoint(const Point& point) const {
    return nearestParam<T>(self(), [&](const Point&) { return point; });
}

template <class T>
Adesk::Boolean NurbOf<T>::isPeriodic(double& period) const {
    if (!m_periodic || isEmpty()) return Adesk::kFalse;
    period = endParam() - startParam();
    return Adesk::kTrue;
}

template <class T>
Adesk::Boolean NurbOf<T>::isLinear(Line& line, const AcGeTol& tol) const {
    if (isEmpty() || m_controlPoints.first().isEqualTo(m_controlPoints.last(), tol)) return Adesk::kFalse;
    const Line chord(m_controlPoints.first(), m_controlPoints.last());
    for (const Point& point : m_controlPoints)
        if (!chord.isOn(point, tol)) return Adesk::kFalse;
    line = chord;
    return Adesk::kTrue;
}

template <class T>
auto NurbOf<T>::orthoBoundBlock() const -> Block {
    return blockByExtremes<T>(self());
}

template <class T>
void NurbOf<T>::getSmoothPieces(AcGeDoubleArray& params) const {
    params.removeAll();
    if (isEmpty()) return;
    params.append(startParam());
    for (int i = m_degree; i < m_controlPoints.length(); ++i) {
        // A polynomial of this degree turns back at most that often within its span.
        const double lo = m_knots[i], hi = m_knots[i + 1];
        if (!(lo < hi)) continue;
        for (int k = 1; k <= m_degree; ++k) params.append(k == m_degree ? hi : lo + (hi - lo) * k / m_degree);
    }
}

template <class T>
double NurbOf<T>::coordinateMagnitude() const {
    double largest = 0.0;
    for (const Point& point : m_controlPoints) largest = std::max(largest, point.largestCoordinate());
    return largest;
}

template <class T>
void NurbOf<T>::clear() {
    m_degree = 0;
    m_periodic = Adesk::kFalse;
    m_knots = AcGeKnotVector();
    m_controlPoints.removeAll();
    m_weights.removeAll();
}

template class NurbOf<Plane>;
template class NurbOf<Space>;

} // namespace AcGeKernel
