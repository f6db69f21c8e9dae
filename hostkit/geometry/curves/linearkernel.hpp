// How straight curves meet, in the plane and in space. Internal to the geometry kit.
#pragma once

#include "curvekernel.hpp"
#include "gelent2d.h"
#include "gelent3d.h"

namespace AcGeKernel {

enum class LinearMeeting { kNone, kPoint, kRun };

inline double dotOf(double a, double b) { return a * b; }
inline double dotOf(const AcGeVector3d& a, const AcGeVector3d& b) { return a.dotProduct(b); }

/// Distance between two lines that are not parallel: none in the plane.
inline double gapBetween(const AcGeVector2d&, double) { return 0.0; }
inline double gapBetween(const AcGeVector3d& between, const AcGeVector3d& across) {
    return std::abs(between.dotProduct(across)) / across.length();
}

template <class Linear>
AcGeInterval intervalOf(const Linear& line) {
    AcGeInterval interval;
    line.getInterval(interval);
    return interval;
}

template <class Linear>
double magnitudeOfLinear(const Linear& line) {
    const double origin = line.pointOnLine().largestCoordinate();
    return intervalOf(line).isBounded() ? std::max(origin, line.evalPoint(1.0).largestCoordinate()) : origin;
}

/// The angle that rounding of a segment's ends may turn it by; 0 for lines and rays, whose direction is
/// given.
template <class Linear>
double directionNoise(const Linear& line) {
    if (!intervalOf(line).isBounded()) return 0.0;
    return AcGe::kPointUlps * AcGe::ulpOf(magnitudeOfLinear(line)) / line.paramStep().length();
}

template <class T>
bool areParallel(const typename T::Linear& a, const typename T::Linear& b, const AcGeTol& tol) {
    const typename T::Vector u = a.direction(), v = b.direction();
    if (u.isZeroLength(tol) || v.isZeroLength(tol)) return false;
    return magnitudeOf(wedge(u, v)) <= std::max(tol.equalVector(), directionNoise(a) + directionNoise(b));
}

/// Is the point on the unbounded line of `line`, with the allowance that grows beyond a segment's length.
template <class T>
bool isOnUnbounded(const typename T::Linear& line, const typename T::Point& point, const AcGeTol& tol) {
    const typename T::Vector offset = point - line.pointOnLine(), unit = line.direction();
    const double distance = magnitudeOf(wedge(offset, unit));
    const double magnitude = std::max(point.largestCoordinate(), magnitudeOfLinear(line));
    return distance <= AcGe::pointAllowance(tol, magnitude) + directionNoise(line) * offset.length();
}

template <class T>
bool areColinear(const typename T::Linear& a, const typename T::Linear& b, const AcGeTol& tol) {
    if (!areParallel<T>(a, b, tol)) return false;
    const AcGeInterval intervalA = intervalOf(a), intervalB = intervalOf(b);
    const bool measureAgainstA =
        !intervalA.isBounded() ||
        (intervalB.isBounded() && a.paramStep().lengthSqrd() >= b.paramStep().lengthSqrd());
    const typename T::Linear &base = measureAgainstA ? a : b, &other = measureAgainstA ? b : a;
    typename T::Point nearest = other.pointOnLine();
    if (intervalOf(other).isBounded()) {
        const typename T::Point end = other.evalPoint(1.0), origin = base.pointOnLine();
        if (origin.distanceSqrdTo(end) < origin.distanceSqrdTo(nearest)) nearest = end;
    }
    return isOnUnbounded<T>(base, nearest, tol);
}

/// The part of a's parameters, of a line collinear with b, that b covers as well; bounds crossed when there
/// is none.
template <class T>
AcGeInterval commonRange(const typename T::Linear& a, const typename T::Linear& b) {
    const typename T::Vector step = a.paramStep();
    const double stepSquared = step.lengthSqrd();
    const double ratio = step.dotProduct(b.paramStep());
    const auto onA = [&](double param) {
        if (!std::isfinite(param)) return ratio < 0.0 ? -param : param;
        return step.dotProduct(b.evalPoint(param) - a.pointOnLine()) / stepSquared;
    };
    const AcGeInterval rangeA = intervalOf(a), rangeB = intervalOf(b);
    double lo = onA(rangeB.lowerBound()), hi = onA(rangeB.upperBound());
    if (lo > hi) std::swap(lo, hi);
    return AcGeInterval(std::max(lo, rangeA.lowerBound()), std::min(hi, rangeA.upperBound()));
}

template <class T>
LinearMeeting meetColinear(const typename T::Linear& a, const typename T::Linear& b, typename T::Point& point,
                           AcGeInterval& run, const AcGeTol& tol) {
    const AcGeInterval common = commonRange<T>(a, b);
    const double allowed = AcGe::pointAllowance(tol, std::max(magnitudeOfLinear(a), magnitudeOfLinear(b)));
    const double size = common.length() * a.paramStep().length();
    if (size > allowed) {
        run = common;
        return LinearMeeting::kRun;
    }
    if (!(size >= -allowed)) return LinearMeeting::kNone;
    const AcGeInterval range = intervalOf(a);
    point = a.evalPoint(range.clamp(common.lowerBound()));
    return LinearMeeting::kPoint;
}

/// Parallel lines that are not collinear may still touch end to end, where they end within the tolerance of
/// each other.
template <class T>
LinearMeeting meetParallel(const typename T::Linear& a, const typename T::Linear& b, typename T::Point& point,
                           const AcGeTol& tol) {
    bool found = false;
    typename T::Point first;
    const auto tryEnds = [&](const typename T::Linear& from, const typename T::Linear& to) {
        const AcGeInterval range = intervalOf(from);
        for (double param : {range.lowerBound(), range.upperBound()}) {
            if (!std::isfinite(param)) continue;
            const typename T::Point end = from.evalPoint(param);
            if (!to.isOn(end, tol)) continue;
            if (found && !first.isEqualTo(end, tol)) return false;
            first = found ? first : end;
            found = true;
        }
        return true;
    };
    if (!tryEnds(a, b) || !tryEnds(b, a) || !found) return LinearMeeting::kNone;
    point = first;
    return LinearMeeting::kPoint;
}

template <class T>
LinearMeeting meetCrossing(const typename T::Linear& a, const typename T::Linear& b, typename T::Point& point,
                           const AcGeTol& tol) {
    const typename T::Vector u = a.paramStep(), v = b.paramStep(),
                             between = b.pointOnLine() - a.pointOnLine();
    const auto across = wedge(u, v);
    const double size = dotOf(across, across);
    const double s = dotOf(wedge(between, v), across) / size, t = dotOf(wedge(between, u), across) / size;
    const typename T::Point crossing = a.evalPoint(s);
    const double magnitude = std::max({crossing.largestCoordinate(), a.pointOnLine().largestCoordinate(),
                                       b.pointOnLine().largestCoordinate()});
    if (gapBetween(between, across) > AcGe::pointAllowance(tol, magnitude)) return LinearMeeting::kNone;
    const AcGeInterval rangeA = intervalOf(a), rangeB = intervalOf(b);
    if (rangeA.contains(s) && rangeB.contains(t)) {
        point = crossing;
        return LinearMeeting::kPoint;
    }
    const typename T::Point endA = a.evalPoint(rangeA.clamp(s)), endB = b.evalPoint(rangeB.clamp(t));
    if (b.isOn(endA, tol)) {
        point = endA;
        return LinearMeeting::kPoint;
    }
    if (!a.isOn(endB, tol)) return LinearMeeting::kNone;
    point = endB;
    return LinearMeeting::kPoint;
}

/// How a and b meet. kPoint sets `point`, kRun sets `run`, the common range in a's parameters.
template <class T>
LinearMeeting meetLinear(const typename T::Linear& a, const typename T::Linear& b, typename T::Point& point,
                         AcGeInterval& run, const AcGeTol& tol) {
    const bool aIsPoint = a.paramStep().length() <= tol.equalPoint();
    if (aIsPoint || b.paramStep().length() <= tol.equalPoint()) {
        const typename T::Linear &degenerate = aIsPoint ? a : b, &other = aIsPoint ? b : a;
        if (!other.isOn(degenerate.pointOnLine(), tol)) return LinearMeeting::kNone;
        point = degenerate.pointOnLine();
        return LinearMeeting::kPoint;
    }
    if (!areParallel<T>(a, b, tol)) return meetCrossing<T>(a, b, point, tol);
    return areColinear<T>(a, b, tol) ? meetColinear<T>(a, b, point, run, tol)
                                     : meetParallel<T>(a, b, point, tol);
}

/// Straight curve over a range of another's parameters, as the class that the range asks for.
template <class T>
typename T::Linear* partOf(const typename T::Linear& line, const AcGeInterval& range) {
    using Segment = typename T::Segment;
    using Ray = typename T::Ray;
    if (range.isBounded())
        return new Segment(line.evalPoint(range.lowerBound()), line.evalPoint(range.upperBound()));
    if (range.isBoundedBelow()) return new Ray(line.evalPoint(range.lowerBound()), line.direction());
    if (range.isBoundedAbove()) return new Ray(line.evalPoint(range.upperBound()), -line.direction());
    return new typename T::Line(line.pointOnLine(), line.direction());
}

template <class T>
typename T::Block blockOf(const typename T::Linear& line) {
    const AcGeInterval range = intervalOf(line);
    typename T::Point lo = line.pointOnLine(), hi = lo;
    for (unsigned int i = 0; i < T::dimensions; ++i) {
        const double step = line.paramStep()[i];
        if (step == 0.0) continue;
        lo[i] =
            range.isBoundedBelow() ? line.evalPoint(range.lowerBound())[i] : -std::copysign(kInfinity, step);
        hi[i] =
            range.isBoundedAbove() ? line.evalPoint(range.upperBound())[i] : std::copysign(kInfinity, step);
    }
    return typename T::Block(lo, hi);
}

} // namespace AcGeKernel
