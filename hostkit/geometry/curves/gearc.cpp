#include "arcmeetings.hpp"
#include "circlekernel.hpp"
#include "gebndblock2d.h"
#include "gebndblock3d.h"
#include "geline2d.h"
#include "geline3d.h"
#include "spacearcs.hpp"

namespace AcGeKernel {

namespace {

// Hands at most two points on to the pair of outputs that the arcs' interfaces have.
template <class T>
bool giveTwo(const ArcMeetings<T>& meetings, int& count, typename T::Point& p1, typename T::Point& p2) {
    count = std::min(meetings.pointCount, 2);
    if (count > 0) p1 = meetings.points[0];
    if (count > 1) p2 = meetings.points[1];
    return count > 0;
}

} // namespace

template <class T>
ArcOf<T>::ArcOf(const Point& center, double radius, double startAngle, double endAngle)
    : m_center(center)
    , m_radius(std::abs(radius))
    , m_startAngle(startAngle)
    , m_endAngle(endAngle) {
    normalizeAngles(m_startAngle, m_endAngle);
}

template <class T>
auto ArcOf<T>::setCenter(const Point& center) -> Arc& {
    m_center = center;
    return self();
}

template <class T>
auto ArcOf<T>::setRadius(double radius) -> Arc& {
    m_radius = std::abs(radius);
    return self();
}

template <class T>
auto ArcOf<T>::setAngles(double startAngle, double endAngle) -> Arc& {
    m_startAngle = startAngle;
    m_endAngle = endAngle;
    normalizeAngles(m_startAngle, m_endAngle);
    return self();
}

template <class T>
auto ArcOf<T>::setToComplement() -> Arc& {
    return setAngles(m_endAngle, m_startAngle);
}

template <class T>
Adesk::Boolean ArcOf<T>::tangent(const Point& point, Line& line, const AcGeTol& tol) const {
    double param;
    if (!Base::isOn(point, param, tol) || !(m_radius > 0.0)) return Adesk::kFalse;
    VectorArray derivatives;
    const Point onArc = evalPoint(param, 1, derivatives);
    line.set(onArc, derivatives[0] / derivatives[0].length());
    return Adesk::kTrue;
}

template <class T>
Adesk::Boolean ArcOf<T>::intersectWith(const Linear& line, int& count, Point& p1, Point& p2,
                                       const AcGeTol& tol) const {
    return giveTwo<T>(meetLineArc(line, self(), tol), count, p1, p2);
}

template <class T>
Adesk::Boolean ArcOf<T>::intersectWith(const Arc& arc, int& count, Point& p1, Point& p2,
                                       const AcGeTol& tol) const {
    const ArcMeetings<T> meetings = meetArcArc(self(), arc, tol);
    if (meetings.runCount == 0) return giveTwo<T>(meetings, count, p1, p2);
    // The ends of the first common run take the points' place.
    const AcGeInterval& range = meetings.runs[0].onFirst;
    p1 = evalPoint(range.lowerBound());
    const bool isCircle = isFullTurn(range.lowerBound(), range.upperBound());
    if (!isCircle) p2 = evalPoint(range.upperBound());
    count = isCircle ? 1 : 2;
    return true;
}

template <class T>
Adesk::Boolean ArcOf<T>::isEqualTo(const Entity& entity, const AcGeTol& tol) const {
    if (entity.type() != this->type()) return Adesk::kFalse;
    const auto& other = static_cast<const Arc&>(entity);
    if (!self().hasSenseOf(other, tol)) return Adesk::kFalse;
    const double middle = (m_startAngle + m_endAngle) / 2.0,
                 otherMiddle = (other.startAng() + other.endAng()) / 2.0;
    return m_center.isEqualTo(other.center(), tol) && startPoint().isEqualTo(other.startPoint(), tol) &&
           endPoint().isEqualTo(other.endPoint(), tol) &&
           evalPoint(middle).isEqualTo(other.evalPoint(otherMiddle), tol);
}

template <class T>
Adesk::Boolean ArcOf<T>::setInterval(const AcGeInterval& interval) {
    if (!interval.isBounded() || !(interval.length() > 0.0)) return Adesk::kFalse;
    setAngles(interval.lowerBound(), interval.upperBound());
    return Adesk::kTrue;
}

template <class T>
void ArcOf<T>::reverseAngles() {
    const double start = m_startAngle;
    m_startAngle = -m_endAngle;
    m_endAngle = -start;
}

template <class T>
auto ArcOf<T>::evalPoint(double param) const -> Point {
    return m_center + (m_refVec * std::cos(param) + self().quarter() * std::sin(param)) * m_radius;
}

template <class T>
auto ArcOf<T>::evalPoint(double param, int numDeriv, VectorArray& derivatives) const -> Point {
    const Vector quarter = self().quarter();
    const double c = m_radius * std::cos(param), s = m_radius * std::sin(param);
    const Vector point = m_refVec * c + quarter * s, tangent = quarter * c - m_refVec * s;
    const Vector cycle[4] = {tangent, -point, -tangent, point};
    derivatives.setLogicalLength(std::max(numDeriv, 0));
    for (int i = 0; i < numDeriv; ++i) derivatives[i] = cycle[i % 4];
    return m_center + point;
}

template <class T>
double ArcOf<T>::paramOfClosestPoint(const Point& point) const {
    const Vector v = point - m_center;
    const double x = v.dotProduct(m_refVec), y = v.dotProduct(self().quarter());
    if (x == 0.0 && y == 0.0) return m_startAngle;
    return clampAngle(m_startAngle, m_endAngle, std::atan2(y, x));
}

template <class T>
double ArcOf<T>::paramOf(const Point& point, const AcGeTol& tol) const {
    const Vector v = point - m_center;
    const double x = v.dotProduct(m_refVec), y = v.dotProduct(self().quarter());
    if (x == 0.0 && y == 0.0) return m_startAngle;
    if (isFullTurn(m_startAngle, m_endAngle) && point.isEqualTo(startPoint(), tol)) return m_startAngle;
    return unclampedAngle(m_startAngle, m_endAngle, std::atan2(y, x));
}

template <class T>
Adesk::Boolean ArcOf<T>::isPeriodic(double& period) const {
    if (!isFullTurn(m_startAngle, m_endAngle)) return Adesk::kFalse;
    period = AcGe::kTwoPi;
    return Adesk::kTrue;
}

template <class T>
double ArcOf<T>::length(double fromParam, double toParam, const AcGeTol&) const {
    return std::abs(toParam - fromParam) * m_radius;
}

template <class T>
double ArcOf<T>::paramAtLength(double datumParam, double length, Adesk::Boolean forward,
                               const AcGeTol&) const {
    if (!(m_radius > 0.0)) return datumParam;
    return forward ? datumParam + length / m_radius : datumParam - length / m_radius;
}

template <class T>
auto ArcOf<T>::orthoBoundBlock() const -> Block {
    Block block(startPoint(), endPoint());
    const Vector quarter = self().quarter();
    for (unsigned int i = 0; i < T::dimensions; ++i) {
        // The coordinate is extreme where its derivative vanishes, and half a turn on.
        const double extreme = std::atan2(quarter[i], m_refVec[i]);
        for (double angle : {extreme, extreme + AcGe::kPi})
            if (angleFrom(m_startAngle, angle) <= m_endAngle) block.extend(evalPoint(angle));
    }
    return block;
}

template <class T>
void ArcOf<T>::getSamplePoints(double fromParam, double toParam, double tolerance, PointArray& points,
                               AcGeDoubleArray& params) const {
    const int count = chordCount(std::abs(toParam - fromParam), m_radius, tolerance);
    points.setLogicalLength(count + 1);
    params.setLogicalLength(count + 1);
    for (int i = 0; i <= count; ++i) {
        params[i] = i == count ? toParam : fromParam + (toParam - fromParam) * i / count;
        points[i] = evalPoint(params[i]);
    }
}

template <class T>
void ArcOf<T>::getSmoothPieces(AcGeDoubleArray& params) const {
    angularPieces(m_startAngle, m_endAngle, params);
}

template class ArcOf<Plane>;
template class ArcOf<Space>;

} // namespace AcGeKernel
