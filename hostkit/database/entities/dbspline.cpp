#include "dbspline.h"

#include "curvegeometry.h"
#include "curvesupport.h"
#include "fieldsetters.h"
#include "flatmotion.h"

#include <algorithm>

HOSTKIT_KIT_CLASS(AcDbSpline, AcDbCurve, L"SPLINE")

namespace {

constexpr int kHighestDegree = 25;

bool isDefinition(int degree, Adesk::Boolean rational, const AcGePoint3dArray& points,
                  const AcGeDoubleArray& knots, const AcGeDoubleArray& weights) {
    if (degree < 1 || degree > kHighestDegree || points.length() < degree + 1) return false;
    if (knots.length() != points.length() + degree + 1) return false;
    for (const AcGePoint3d& point : points)
        if (!hostkit::isFinite(point)) return false;
    for (int i = 0; i < knots.length(); ++i)
        if (!std::isfinite(knots[i]) || (i > 0 && knots[i] < knots[i - 1])) return false;
    if (!rational) return true;
    return weights.length() == points.length() &&
           std::all_of(weights.begin(), weights.end(),
                       [](double weight) { return weight > 0.0 && std::isfinite(weight); });
}

/// Two curves of one degree, clamped at their ends, the second from the first one's end on. The knots of the
/// second go on from those of the first.
AcGeNurbCurve3d joined(const AcGeNurbCurve3d& first, const AcGeNurbCurve3d& second) {
    const int degree = first.degree();
    AcGeKnotVector knots;
    for (int i = 0; i + 1 < first.numKnots(); ++i) knots.append(first.knotAt(i));
    const double shift = first.endParam() - second.startParam();
    for (int i = degree + 1; i < second.numKnots(); ++i) knots.append(second.knotAt(i) + shift);
    AcGePoint3dArray points;
    AcGeDoubleArray weights;
    for (int i = 0; i < first.numControlPoints(); ++i) {
        points.append(first.controlPointAt(i));
        weights.append(first.weightAt(i));
    }
    const double factor = weights.last() / second.weightAt(0);
    for (int i = 1; i < second.numControlPoints(); ++i) {
        points.append(second.controlPointAt(i));
        weights.append(second.weightAt(i) * factor);
    }
    return first.isRational() ? AcGeNurbCurve3d(degree, knots, points, weights)
                              : AcGeNurbCurve3d(degree, knots, points);
}

} // namespace

AcDbSpline::AcDbSpline(int degree, Adesk::Boolean rational, Adesk::Boolean closed, Adesk::Boolean periodic,
                       const AcGePoint3dArray& controlPoints, const AcGeDoubleArray& knots,
                       const AcGeDoubleArray& weights, double controlPointTolerance, double knotTolerance) {
    (void)setNurbsData(degree, rational, closed, periodic, controlPoints, knots, weights,
                       controlPointTolerance, knotTolerance);
}

Acad::ErrorStatus AcDbSpline::getControlPointAt(int index, AcGePoint3d& point) const {
    if (index < 0 || index >= m_controlPoints.length()) return Acad::eInvalidIndex;
    point = m_controlPoints[index];
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::getFitPointAt(int index, AcGePoint3d& point) const {
    if (index < 0 || index >= m_fitPoints.length()) return Acad::eInvalidIndex;
    point = m_fitPoints[index];
    return Acad::eOk;
}

double AcDbSpline::weightAt(int index) const {
    return index >= 0 && index < m_weights.length() ? m_weights[index] : 1.0;
}

Acad::ErrorStatus AcDbSpline::getNurbsData(int& degree, Adesk::Boolean& rational, Adesk::Boolean& closed,
                                           Adesk::Boolean& periodic, AcGePoint3dArray& controlPoints,
                                           AcGeDoubleArray& knots, AcGeDoubleArray& weights,
                                           double& controlPointTolerance, double& knotTolerance) const {
    if (isNull()) return Acad::eDegenerateGeometry;
    degree = m_degree;
    rational = m_rational;
    closed = m_closed;
    periodic = m_periodic;
    controlPoints = m_controlPoints;
    knots = m_knots;
    weights = m_weights;
    controlPointTolerance = m_controlPointTolerance;
    knotTolerance = m_knotTolerance;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::setNurbsData(int degree, Adesk::Boolean rational, Adesk::Boolean closed,
                                           Adesk::Boolean periodic, const AcGePoint3dArray& controlPoints,
                                           const AcGeDoubleArray& knots, const AcGeDoubleArray& weights,
                                           double controlPointTolerance, double knotTolerance) {
    if (!isDefinition(degree, rational, controlPoints, knots, weights)) return Acad::eInvalidInput;
    if (!std::isfinite(controlPointTolerance) || !std::isfinite(knotTolerance)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    m_degree = static_cast<Adesk::Int16>(degree);
    m_rational = rational;
    m_closed = closed;
    m_periodic = periodic;
    m_controlPoints = controlPoints;
    m_knots = knots;
    m_weights = rational ? weights : AcGeDoubleArray();
    m_controlPointTolerance = controlPointTolerance;
    m_knotTolerance = knotTolerance;
    dropFitData();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::setControlPointAt(int index, const AcGePoint3d& point) {
    if (index < 0 || index >= m_controlPoints.length()) return Acad::eInvalidIndex;
    const Acad::ErrorStatus status = hostkit::setFiniteField(*this, m_controlPoints[index], point);
    if (status == Acad::eOk) dropFitData();
    return status;
}

void AcDbSpline::dropFitData() {
    m_fitPoints.removeAll();
    m_hasStartTangent = false;
    m_hasEndTangent = false;
}

AcGeNurbCurve3d AcDbSpline::nurbCurve() const {
    const AcGeKnotVector knots(m_knots, m_knotTolerance);
    return m_rational && !m_weights.isEmpty()
               ? AcGeNurbCurve3d(m_degree, knots, m_controlPoints, m_weights, m_periodic)
               : AcGeNurbCurve3d(m_degree, knots, m_controlPoints, m_periodic);
}

bool AcDbSpline::geometry(hostkit::CurveGeometry& geometry) const {
    const AcGeNurbCurve3d curve = nurbCurve();
    if (curve.isEmpty()) return false;
    geometry.set(curve);
    return true;
}

void AcDbSpline::take(const AcGeNurbCurve3d& curve) {
    Adesk::Boolean rational = Adesk::kFalse;
    Adesk::Boolean periodic = Adesk::kFalse;
    int degree = 0;
    AcGeKnotVector knots;
    curve.getDefinitionData(degree, rational, periodic, knots, m_controlPoints, m_weights);
    m_degree = static_cast<Adesk::Int16>(degree);
    m_rational = rational;
    m_knots = knots.knots();
}

AcDbCurve* AcDbSpline::piece(double from, double to) const {
    const AcGeNurbCurve3d whole = nurbCurve();
    const double start = whole.startParam();
    const double end = whole.endParam();
    const bool acrossStart = to > end && !hostkit::isSameParameter(to, end);
    AcGeNurbCurve3d part(whole);
    const bool wholeRange =
        hostkit::isSameParameter(from, start) && !acrossStart && hostkit::isSameParameter(to, end);
    if (!wholeRange && !hostkit::isSameParameter(from, end) &&
        !part.setInterval(AcGeInterval(from, acrossStart ? end : std::min(to, end))))
        return nullptr;
    auto result = std::make_unique<AcDbSpline>(*this);
    result->dropFitData();
    result->m_closed = false;
    result->m_periodic = false;
    if (acrossStart) {
        AcGeNurbCurve3d rest(whole);
        const double restEnd = to - (end - start);
        if (!hostkit::isSameParameter(restEnd, end) && !rest.setInterval(AcGeInterval(start, restEnd)))
            return nullptr;
        part = joined(part, rest);
    }
    result->take(part);
    return result.release();
}

Acad::ErrorStatus AcDbSpline::getProjectedCurve(const AcGePlane& plane, const AcGeVector3d& direction,
                                                AcDbCurve*& projected) const {
    if (isNull()) return Acad::eDegenerateGeometry;
    if (!hostkit::canProject(plane, direction)) return Acad::eInvalidInput;
    auto* result = new AcDbSpline(*this);
    result->dropFitData();
    for (AcGePoint3d& point : result->m_controlPoints) point = point.project(plane, direction);
    projected = result;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::reverseCurve() {
    if (isNull()) return Acad::eDegenerateGeometry;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    AcGeNurbCurve3d curve = nurbCurve();
    curve.reverseParam();
    take(curve);
    m_fitPoints.reverse();
    std::swap(m_hasStartTangent, m_hasEndTangent);
    std::swap(m_startTangent, m_endTangent);
    m_startTangent.negate();
    m_endTangent.negate();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::subTransformBy(const AcGeMatrix3d& matrix) {
    if (!hostkit::isInvertible(matrix)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    for (AcGePoint3d& point : m_controlPoints) point.transformBy(matrix);
    for (AcGePoint3d& point : m_fitPoints) point.transformBy(matrix);
    if (hostkit::isShift(matrix)) return Acad::eOk;
    m_startTangent.transformBy(matrix);
    m_endTangent.transformBy(matrix);
    if (!m_normal.isZeroLength()) m_normal = (matrix.inverse().transpose() * m_normal).normal();
    return Acad::eOk;
}
