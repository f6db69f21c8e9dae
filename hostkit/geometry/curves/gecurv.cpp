#include "closestpoints.hpp"
#include "gecurv2d.h"
#include "gecurv3d.h"
#include "geline2d.h"
#include "geline3d.h"

namespace AcGeKernel {

template <class T>
void CurveOf<T>::getInterval(AcGeInterval& interval, Point& start, Point& end) const {
    getInterval(interval);
    hasStartPoint(start);
    hasEndPoint(end);
}

template <class T>
double CurveOf<T>::paramOf(const Point& point, const AcGeTol&) const {
    return paramOfClosestPoint(point);
}

template <class T>
auto CurveOf<T>::closestPointTo(const Point& point, const AcGeTol&) const -> Point {
    return evalPoint(paramOfClosestPoint(point));
}

template <class T>
auto CurveOf<T>::closestPointTo(const Curve& curve, Point& pointOnOther, const AcGeTol& tol) const -> Point {
    return closestPoints<T>(self(), curve, pointOnOther, tol);
}

template <class T>
double CurveOf<T>::distanceTo(const Point& point, const AcGeTol& tol) const {
    return point.distanceTo(closestPointTo(point, tol));
}

template <class T>
double CurveOf<T>::distanceTo(const Curve& curve, const AcGeTol& tol) const {
    Point onOther;
    const Point onThis = closestPointTo(curve, onOther, tol);
    return onThis.distanceTo(onOther);
}

template <class T>
Adesk::Boolean CurveOf<T>::isOn(const Point& point, const AcGeTol& tol) const {
    double param;
    return isOn(point, param, tol);
}

template <class T>
Adesk::Boolean CurveOf<T>::isOn(const Point& point, double& param, const AcGeTol& tol) const {
    param = paramOfClosestPoint(point);
    const Point nearest = evalPoint(param);
    const double magnitude =
        std::max({point.largestCoordinate(), nearest.largestCoordinate(), coordinateMagnitude()});
    return AcGe::isWithinAllowance(point.distanceSqrdTo(nearest), magnitude, tol);
}

template <class T>
Adesk::Boolean CurveOf<T>::isOn(double param, const AcGeTol& tol) const {
    AcGeInterval interval;
    getInterval(interval);
    if (interval.contains(param)) return true;
    if (!std::isfinite(param)) return false;
    const Point point = evalPoint(param), end = evalPoint(interval.clamp(param));
    const double magnitude =
        std::max({point.largestCoordinate(), end.largestCoordinate(), coordinateMagnitude()});
    return AcGe::isWithinAllowance(point.distanceSqrdTo(end), magnitude, tol);
}

template <class T>
Adesk::Boolean CurveOf<T>::hasStartPoint(Point& point) const {
    AcGeInterval interval;
    getInterval(interval);
    if (!interval.isBoundedBelow()) return Adesk::kFalse;
    point = evalPoint(interval.lowerBound());
    return Adesk::kTrue;
}

template <class T>
Adesk::Boolean CurveOf<T>::hasEndPoint(Point& point) const {
    AcGeInterval interval;
    getInterval(interval);
    if (!interval.isBoundedAbove()) return Adesk::kFalse;
    point = evalPoint(interval.upperBound());
    return Adesk::kTrue;
}

template <class T>
Adesk::Boolean CurveOf<T>::isClosed(const AcGeTol& tol) const {
    Point start, end;
    return hasStartPoint(start) && hasEndPoint(end) && start.isEqualTo(end, tol);
}

template <class T>
Adesk::Boolean CurveOf<T>::isPeriodic(double&) const {
    return Adesk::kFalse;
}

template <class T>
Adesk::Boolean CurveOf<T>::isLinear(Line&, const AcGeTol&) const {
    return Adesk::kFalse;
}

template <class T>
double CurveOf<T>::length(double fromParam, double toParam, const AcGeTol&) const {
    return lengthAlong<T>(self(), fromParam, toParam);
}

template <class T>
double CurveOf<T>::paramAtLength(double datumParam, double length, Adesk::Boolean forward,
                                 const AcGeTol&) const {
    AcGeInterval interval;
    getInterval(interval);
    const bool upwards = (length >= 0.0) == static_cast<bool>(forward);
    return AcGeKernel::paramAtLength<T>(self(), datumParam, std::abs(length),
                                        upwards ? interval.upperBound() : interval.lowerBound());
}

template <class T>
auto CurveOf<T>::boundBlock() const -> Block {
    return orthoBoundBlock();
}

template <class T>
void CurveOf<T>::getSamplePoints(int count, PointArray& points) const {
    AcGeDoubleArray params;
    getSamplePoints(count, points, params);
}

template <class T>
void CurveOf<T>::getSamplePoints(int count, PointArray& points, AcGeDoubleArray& params) const {
    points.removeAll();
    params.removeAll();
    AcGeInterval interval;
    getInterval(interval);
    if (count < 1 || !interval.isBounded()) return;
    points.setPhysicalLength(count);
    params.setPhysicalLength(count);
    const double lo = interval.lowerBound(), range = interval.length();
    for (int i = 0; i < count; ++i) {
        const double param =
            i > 0 && i == count - 1 ? interval.upperBound() : lo + (i > 0 ? range * i / (count - 1) : 0.0);
        params.append(param);
        points.append(evalPoint(param));
    }
}

template <class T>
void CurveOf<T>::getSamplePoints(double fromParam, double toParam, double tolerance, PointArray& points,
                                 AcGeDoubleArray& params) const {
    sampleWithin<T>(self(), fromParam, toParam, tolerance, points, params);
}

template <class T>
void CurveOf<T>::getSplitCurves(double param, Curve*& before, Curve*& after) const {
    before = after = nullptr;
    AcGeInterval interval;
    getInterval(interval);
    if (!interval.isBounded() || !(param > interval.lowerBound() && param < interval.upperBound())) return;
    before = self().copy();
    before->setInterval(AcGeInterval(interval.lowerBound(), param));
    after = self().copy();
    after->setInterval(AcGeInterval(param, interval.upperBound()));
}

template <class T>
void CurveOf<T>::getSmoothPieces(AcGeDoubleArray& params) const {
    params.removeAll();
    AcGeInterval interval;
    getInterval(interval);
    if (!interval.isBounded()) return;
    params.append(interval.lowerBound());
    params.append(interval.upperBound());
}

template class CurveOf<Plane>;
template class CurveOf<Space>;

} // namespace AcGeKernel
