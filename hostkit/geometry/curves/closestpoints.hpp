// The nearest points of two curves. Internal to the geometry kit.
#pragma once

#include "curvecrossings.hpp"

namespace AcGeKernel {

/// Nearest points of two straight curves that do not meet: their feet on each other, or an end of one.
template <class T>
typename T::Point closestOfLines(const typename T::Linear& a, const typename T::Linear& b,
                                 typename T::Point& onB) {
    using Point = typename T::Point;
    Point best = a.closestPointTo(b.pointOnLine());
    onB = b.closestPointTo(best);
    const auto consider = [&](const Point& pointA, const Point& pointB) {
        if (!(pointA.distanceSqrdTo(pointB) < best.distanceSqrdTo(onB))) return;
        best = pointA;
        onB = pointB;
    };
    const auto considerEnds = [&](const typename T::Linear& from, const typename T::Linear& to, bool fromA) {
        const AcGeInterval range = intervalOf(from);
        for (double param : {range.lowerBound(), range.upperBound()}) {
            if (!std::isfinite(param)) continue;
            const Point end = from.evalPoint(param), foot = to.closestPointTo(end);
            consider(fromA ? end : foot, fromA ? foot : end);
        }
    };
    considerEnds(a, b, true);
    considerEnds(b, a, false);
    const typename T::Vector u = a.paramStep(), v = b.paramStep(),
                             between = b.pointOnLine() - a.pointOnLine();
    const auto across = wedge(u, v);
    const double size = dotOf(across, across);
    if (!(size > 0.0)) return best;
    const double s = dotOf(wedge(between, v), across) / size, t = dotOf(wedge(between, u), across) / size;
    if (intervalOf(a).contains(s) && intervalOf(b).contains(t)) consider(a.evalPoint(s), b.evalPoint(t));
    return best;
}

template <class T>
typename T::Point closestPoints(const typename T::Curve& a, const typename T::Curve& b,
                                typename T::Point& onB, const AcGeTol& tol) {
    using Point = typename T::Point;
    const CurveCrossings<T> crossings(a, b, tol);
    if (!crossings.points().empty()) {
        const auto& meeting = crossings.points().front();
        onB = meeting.point;
        return meeting.point;
    }
    const auto isLinear = [](const typename T::Curve& curve) {
        return curve.isKindOf(AcGe::kLinearEnt2d) || curve.isKindOf(AcGe::kLinearEnt3d);
    };
    if (isLinear(a) && isLinear(b))
        return closestOfLines<T>(static_cast<const typename T::Linear&>(a),
                                 static_cast<const typename T::Linear&>(b), onB);
    // One of the two is bounded and not straight: the distance is followed along it.
    const bool alongB = !isLinear(b);
    const typename T::Curve &along = alongB ? b : a, &other = alongB ? a : b;
    const double param = nearestParam<T>(along, [&](const Point& p) { return other.closestPointTo(p, tol); });
    const Point onAlong = along.evalPoint(param), onOther = other.closestPointTo(onAlong, tol);
    onB = alongB ? onAlong : onOther;
    return alongB ? onOther : onAlong;
}

} // namespace AcGeKernel
