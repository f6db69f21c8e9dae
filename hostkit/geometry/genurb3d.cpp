#include "genurb3d.h"

#include "curvekernel.hpp"
#include "geline3d.h"
#include "geplane.h"
#include "splinekernel.hpp"

using AcGeKernel::Space;
using AcGeKernel::Spline;

AcGeNurbCurve3d::AcGeNurbCurve3d(int degree, const AcGeKnotVector& knots,
                                 const AcGePoint3dArray& controlPoints, Adesk::Boolean isPeriodic)
    : AcGeNurbCurve3d(degree, knots, controlPoints, AcGeDoubleArray(), isPeriodic) {}

AcGeNurbCurve3d::AcGeNurbCurve3d(int degree, const AcGeKnotVector& knots,
                                 const AcGePoint3dArray& controlPoints, const AcGeDoubleArray& weights,
                                 Adesk::Boolean isPeriodic)
    : m_degree(degree)
    , m_periodic(isPeriodic)
    , m_knots(knots)
    , m_controlPoints(controlPoints)
    , m_weights(weights) {
    if (!AcGeKernel::isValidSpline(degree, knots, controlPoints.length(), weights)) clear();
}

AcGeNurbCurve3d::AcGeNurbCurve3d(const AcGePoint3dArray& fitPoints, const AcGeVector3d& startTangent,
                                 const AcGeVector3d& endTangent) {
    AcGeKernel::fitCubic<Space>(fitPoints, startTangent, endTangent, m_knots, m_controlPoints);
    m_degree = m_controlPoints.isEmpty() ? 0 : 3;
}

double AcGeNurbCurve3d::startParam() const { return isEmpty() ? 0.0 : m_knots[m_degree]; }

double AcGeNurbCurve3d::endParam() const { return isEmpty() ? 0.0 : m_knots[m_controlPoints.length()]; }

void AcGeNurbCurve3d::getDefinitionData(int& degree, Adesk::Boolean& rational, Adesk::Boolean& periodic,
                                        AcGeKnotVector& knots, AcGePoint3dArray& controlPoints,
                                        AcGeDoubleArray& weights) const {
    degree = m_degree;
    rational = isRational();
    periodic = m_periodic;
    knots = m_knots;
    controlPoints = m_controlPoints;
    weights = m_weights;
}

int AcGeNurbCurve3d::spanAt(double param) const {
    return isEmpty() ? 0 : AcGeKernel::spanOf(m_degree, m_knots, m_controlPoints.length(), param);
}

AcGeNurbCurve3d& AcGeNurbCurve3d::transformBy(const AcGeMatrix3d& matrix) {
    for (AcGePoint3d& point : m_controlPoints) point.transformBy(matrix);
    return *this;
}

Adesk::Boolean AcGeNurbCurve3d::isEqualTo(const AcGeEntity3d& entity, const AcGeTol& tol) const {
    if (entity.type() != AcGe::kNurbCurve3d) return Adesk::kFalse;
    const auto& other = static_cast<const AcGeNurbCurve3d&>(entity);
    if (m_degree != other.m_degree || numControlPoints() != other.numControlPoints()) return Adesk::kFalse;
    for (int i = 0; i < numKnots(); ++i)
        if (std::abs(m_knots[i] - other.m_knots[i]) > m_knots.tolerance()) return Adesk::kFalse;
    for (int i = 0; i < numControlPoints(); ++i) {
        if (!m_controlPoints[i].isEqualTo(other.m_controlPoints[i], tol)) return Adesk::kFalse;
        if (std::abs(weightAt(i) - other.weightAt(i)) > tol.equalVector()) return Adesk::kFalse;
    }
    return Adesk::kTrue;
}

Adesk::Boolean AcGeNurbCurve3d::setInterval(const AcGeInterval& interval) {
    const double lo = interval.lowerBound(), hi = interval.upperBound();
    if (isEmpty() || !(lo < hi) || !(lo >= startParam()) || !(hi <= endParam())) return Adesk::kFalse;
    AcGeKernel::trimSpline<Space>(m_degree, m_knots, m_controlPoints, m_weights, lo, hi);
    m_periodic = Adesk::kFalse;
    return Adesk::kTrue;
}

AcGeNurbCurve3d& AcGeNurbCurve3d::reverseParam() {
    if (isEmpty()) return *this;
    const double ends = startParam() + endParam();
    AcGeKnotVector reversed(m_knots.tolerance());
    for (int i = numKnots() - 1; i >= 0; --i) reversed.append(ends - m_knots[i]);
    m_knots = reversed;
    m_controlPoints.reverse();
    m_weights.reverse();
    return *this;
}

AcGePoint3d AcGeNurbCurve3d::evalPoint(double param) const {
    if (isEmpty()) return AcGePoint3d::kOrigin;
    return Spline<Space>{m_degree, m_knots, m_controlPoints, m_weights}.evaluate(param, 0, nullptr);
}

AcGePoint3d AcGeNurbCurve3d::evalPoint(double param, int numDeriv, AcGeVector3dArray& derivatives) const {
    derivatives.setLogicalLength(std::max(numDeriv, 0)).setAll(AcGeVector3d::kIdentity);
    if (isEmpty()) return AcGePoint3d::kOrigin;
    return Spline<Space>{m_degree, m_knots, m_controlPoints, m_weights}.evaluate(param, std::max(numDeriv, 0),
                                                                                 derivatives.asArrayPtr());
}

double AcGeNurbCurve3d::paramOfClosestPoint(const AcGePoint3d& point) const {
    return AcGeKernel::nearestParam<Space>(*this, [&](const AcGePoint3d&) { return point; });
}

Adesk::Boolean AcGeNurbCurve3d::isPeriodic(double& period) const {
    if (!m_periodic || isEmpty()) return Adesk::kFalse;
    period = endParam() - startParam();
    return Adesk::kTrue;
}

Adesk::Boolean AcGeNurbCurve3d::isLinear(AcGeLine3d& line, const AcGeTol& tol) const {
    if (isEmpty() || m_controlPoints.first().isEqualTo(m_controlPoints.last(), tol)) return Adesk::kFalse;
    const AcGeLine3d chord(m_controlPoints.first(), m_controlPoints.last());
    for (const AcGePoint3d& point : m_controlPoints)
        if (!chord.isOn(point, tol)) return Adesk::kFalse;
    line = chord;
    return Adesk::kTrue;
}

Adesk::Boolean AcGeNurbCurve3d::isPlanar(AcGePlane& plane, const AcGeTol& tol) const {
    AcGeLine3d line;
    if (isEmpty()) return Adesk::kFalse;
    if (isLinear(line, tol)) return line.isPlanar(plane, tol);
    // The control point farthest from the first, and then the one farthest off their line, span the plane
    // best.
    const AcGePoint3d origin = m_controlPoints.first();
    AcGeVector3d along, across;
    for (const AcGePoint3d& point : m_controlPoints)
        if ((point - origin).lengthSqrd() > along.lengthSqrd()) along = point - origin;
    for (const AcGePoint3d& point : m_controlPoints)
        if (along.crossProduct(point - origin).lengthSqrd() > across.lengthSqrd())
            across = along.crossProduct(point - origin);
    const AcGePlane found(origin, across);
    for (const AcGePoint3d& point : m_controlPoints)
        if (!found.isOn(point, tol)) return Adesk::kFalse;
    plane = found;
    return Adesk::kTrue;
}

AcGeBoundBlock3d AcGeNurbCurve3d::orthoBoundBlock() const {
    return AcGeKernel::blockByExtremes<Space>(*this);
}

void AcGeNurbCurve3d::getSmoothPieces(AcGeDoubleArray& params) const {
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

double AcGeNurbCurve3d::coordinateMagnitude() const {
    double largest = 0.0;
    for (const AcGePoint3d& point : m_controlPoints) largest = std::max(largest, point.largestCoordinate());
    return largest;
}

void AcGeNurbCurve3d::clear() {
    m_degree = 0;
    m_periodic = Adesk::kFalse;
    m_knots = AcGeKnotVector();
    m_controlPoints.removeAll();
    m_weights.removeAll();
}
