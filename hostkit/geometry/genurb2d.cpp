#include "genurb2d.h"

#include "curvekernel.hpp"
#include "geline2d.h"
#include "splinekernel.hpp"

using AcGeKernel::Plane;
using AcGeKernel::Spline;

AcGeNurbCurve2d::AcGeNurbCurve2d(int degree, const AcGeKnotVector& knots,
                                 const AcGePoint2dArray& controlPoints, Adesk::Boolean isPeriodic)
    : AcGeNurbCurve2d(degree, knots, controlPoints, AcGeDoubleArray(), isPeriodic) {}

AcGeNurbCurve2d::AcGeNurbCurve2d(int degree, const AcGeKnotVector& knots,
                                 const AcGePoint2dArray& controlPoints, const AcGeDoubleArray& weights,
                                 Adesk::Boolean isPeriodic)
    : m_degree(degree)
    , m_periodic(isPeriodic)
    , m_knots(knots)
    , m_controlPoints(controlPoints)
    , m_weights(weights) {
    if (!AcGeKernel::isValidSpline(degree, knots, controlPoints.length(), weights)) clear();
}

AcGeNurbCurve2d::AcGeNurbCurve2d(const AcGePoint2dArray& fitPoints, const AcGeVector2d& startTangent,
                                 const AcGeVector2d& endTangent) {
    AcGeKernel::fitCubic<Plane>(fitPoints, startTangent, endTangent, m_knots, m_controlPoints);
    m_degree = m_controlPoints.isEmpty() ? 0 : 3;
}

double AcGeNurbCurve2d::startParam() const { return isEmpty() ? 0.0 : m_knots[m_degree]; }

double AcGeNurbCurve2d::endParam() const { return isEmpty() ? 0.0 : m_knots[m_controlPoints.length()]; }

void AcGeNurbCurve2d::getDefinitionData(int& degree, Adesk::Boolean& rational, Adesk::Boolean& periodic,
                                        AcGeKnotVector& knots, AcGePoint2dArray& controlPoints,
                                        AcGeDoubleArray& weights) const {
    degree = m_degree;
    rational = isRational();
    periodic = m_periodic;
    knots = m_knots;
    controlPoints = m_controlPoints;
    weights = m_weights;
}

int AcGeNurbCurve2d::spanAt(double param) const {
    return isEmpty() ? 0 : AcGeKernel::spanOf(m_degree, m_knots, m_controlPoints.length(), param);
}

AcGeNurbCurve2d& AcGeNurbCurve2d::transformBy(const AcGeMatrix2d& matrix) {
    for (AcGePoint2d& point : m_controlPoints) point.transformBy(matrix);
    return *this;
}

Adesk::Boolean AcGeNurbCurve2d::isEqualTo(const AcGeEntity2d& entity, const AcGeTol& tol) const {
    if (entity.type() != AcGe::kNurbCurve2d) return Adesk::kFalse;
    const auto& other = static_cast<const AcGeNurbCurve2d&>(entity);
    if (m_degree != other.m_degree || numControlPoints() != other.numControlPoints()) return Adesk::kFalse;
    for (int i = 0; i < numKnots(); ++i)
        if (std::abs(m_knots[i] - other.m_knots[i]) > m_knots.tolerance()) return Adesk::kFalse;
    for (int i = 0; i < numControlPoints(); ++i) {
        if (!m_controlPoints[i].isEqualTo(other.m_controlPoints[i], tol)) return Adesk::kFalse;
        if (std::abs(weightAt(i) - other.weightAt(i)) > tol.equalVector()) return Adesk::kFalse;
    }
    return Adesk::kTrue;
}

Adesk::Boolean AcGeNurbCurve2d::setInterval(const AcGeInterval& interval) {
    const double lo = interval.lowerBound(), hi = interval.upperBound();
    if (isEmpty() || !(lo < hi) || !(lo >= startParam()) || !(hi <= endParam())) return Adesk::kFalse;
    AcGeKernel::trimSpline<Plane>(m_degree, m_knots, m_controlPoints, m_weights, lo, hi);
    m_periodic = Adesk::kFalse;
    return Adesk::kTrue;
}

AcGeNurbCurve2d& AcGeNurbCurve2d::reverseParam() {
    if (isEmpty()) return *this;
    const double ends = startParam() + endParam();
    AcGeKnotVector reversed(m_knots.tolerance());
    for (int i = numKnots() - 1; i >= 0; --i) reversed.append(ends - m_knots[i]);
    m_knots = reversed;
    m_controlPoints.reverse();
    m_weights.reverse();
    return *this;
}

AcGePoint2d AcGeNurbCurve2d::evalPoint(double param) const {
    if (isEmpty()) return AcGePoint2d::kOrigin;
    return Spline<Plane>{m_degree, m_knots, m_controlPoints, m_weights}.evaluate(param, 0, nullptr);
}

AcGePoint2d AcGeNurbCurve2d::evalPoint(double param, int numDeriv, AcGeVector2dArray& derivatives) const {
    derivatives.setLogicalLength(std::max(numDeriv, 0)).setAll(AcGeVector2d::kIdentity);
    if (isEmpty()) return AcGePoint2d::kOrigin;
    return Spline<Plane>{m_degree, m_knots, m_controlPoints, m_weights}.evaluate(param, std::max(numDeriv, 0),
                                                                                 derivatives.asArrayPtr());
}

double AcGeNurbCurve2d::paramOfClosestPoint(const AcGePoint2d& point) const {
    return AcGeKernel::nearestParam<Plane>(*this, [&](const AcGePoint2d&) { return point; });
}

Adesk::Boolean AcGeNurbCurve2d::isPeriodic(double& period) const {
    if (!m_periodic || isEmpty()) return Adesk::kFalse;
    period = endParam() - startParam();
    return Adesk::kTrue;
}

Adesk::Boolean AcGeNurbCurve2d::isLinear(AcGeLine2d& line, const AcGeTol& tol) const {
    if (isEmpty() || m_controlPoints.first().isEqualTo(m_controlPoints.last(), tol)) return Adesk::kFalse;
    const AcGeLine2d chord(m_controlPoints.first(), m_controlPoints.last());
    for (const AcGePoint2d& point : m_controlPoints)
        if (!chord.isOn(point, tol)) return Adesk::kFalse;
    line = chord;
    return Adesk::kTrue;
}

AcGeBoundBlock2d AcGeNurbCurve2d::orthoBoundBlock() const {
    return AcGeKernel::blockByExtremes<Plane>(*this);
}

void AcGeNurbCurve2d::getSmoothPieces(AcGeDoubleArray& params) const {
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

double AcGeNurbCurve2d::coordinateMagnitude() const {
    double largest = 0.0;
    for (const AcGePoint2d& point : m_controlPoints) largest = std::max(largest, point.largestCoordinate());
    return largest;
}

void AcGeNurbCurve2d::clear() {
    m_degree = 0;
    m_periodic = Adesk::kFalse;
    m_knots = AcGeKnotVector();
    m_controlPoints.removeAll();
    m_weights.removeAll();
}
