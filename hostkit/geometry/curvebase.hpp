// The bodies that AcGeCurve2d and AcGeCurve3d share, over a traits class. Internal to the geometry kit.
#pragma once

#include "curvekernel.hpp"

namespace AcGeKernel {

template <class T>
bool isPointOn(const typename T::Curve& curve, const typename T::Point& point, double& param,
               const AcGeTol& tol) {
    param = curve.paramOfClosestPoint(point);
    const typename T::Point nearest = curve.evalPoint(param);
    const double magnitude =
        std::max({point.largestCoordinate(), nearest.largestCoordinate(), curve.coordinateMagnitude()});
    return AcGe::isWithinAllowance(point.distanceSqrdTo(nearest), magnitude, tol);
}

template <class T>
bool isParamOn(const typename T::Curve& curve, double param, const AcGeTol& tol) {
    AcGeInterval interval;
    curve.getInterval(interval);
    if (interval.contains(param)) return true;
    if (!std::isfinite(param)) return false;
    const typename T::Point point = curve.evalPoint(param), end = curve.evalPoint(interval.clamp(param));
    const double magnitude =
        std::max({point.largestCoordinate(), end.largestCoordinate(), curve.coordinateMagnitude()});
    return AcGe::isWithinAllowance(point.distanceSqrdTo(end), magnitude, tol);
}

template <class T>
void sampleEvenly(const typename T::Curve& curve, int count, typename T::PointArray& points,
                  AcGeDoubleArray& params) {
    points.removeAll();
    params.removeAll();
    AcGeInterval interval;
    curve.getInterval(interval);
    if (count < 1 || !interval.isBounded()) return;
    points.setPhysicalLength(count);
    params.setPhysicalLength(count);
    const double lo = interval.lowerBound(), range = interval.length();
    for (int i = 0; i < count; ++i) {
        const double param =
            i > 0 && i == count - 1 ? interval.upperBound() : lo + (i > 0 ? range * i / (count - 1) : 0.0);
        params.append(param);
        points.append(curve.evalPoint(param));
    }
}

template <class T>
void split(const typename T::Curve& curve, double param, typename T::Curve*& before,
           typename T::Curve*& after) {
    before = after = nullptr;
    AcGeInterval interval;
    curve.getInterval(interval);
    if (!interval.isBounded() || !(param > interval.lowerBound() && param < interval.upperBound())) return;
    before = curve.copy();
    before->setInterval(AcGeInterval(interval.lowerBound(), param));
    after = curve.copy();
    after->setInterval(AcGeInterval(param, interval.upperBound()));
}

} // namespace AcGeKernel
