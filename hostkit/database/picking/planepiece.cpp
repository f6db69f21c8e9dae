#include "planepiece.h"

#include <algorithm>
#include <cmath>

namespace hostkit {

namespace {

/// a(1-t)^2 + 2bt(1-t) + ct^2 is zero there, or nearest to it where it has no zero. Those in [0, 1], with a
/// little more for rounding, which is cut off.
PieceParameters zeros(double a, double b, double c) {
    constexpr double rounding = 1e-9;
    PieceParameters found;
    const auto take = [&](double t) {
        if (t >= -rounding && t <= 1.0 + rounding) found.add(std::clamp(t, 0.0, 1.0));
    };
    const double p = a - b;
    const double q = p + (c - b);
    const double discriminant = p * p - q * a;
    if (discriminant <= 0.0) {
        take(q != 0.0 ? p / q : 0.0);
        return found;
    }
    const double s = p + std::copysign(std::sqrt(discriminant), p);
    if (q != 0.0) take(s / q);
    if (s != 0.0) take(a / s);
    return found;
}

} // namespace

AcGePoint2d PlanePiece::at(double parameter) const {
    const double t = parameter;
    const double r = 1.0 - t;
    if (isStraight()) return {r * start.x + t * end.x, r * start.y + t * end.y};
    const double first = r * r;
    const double second = 2.0 * weight * r * t;
    const double third = t * t;
    const double sum = first + second + third;
    return {(first * start.x + second * middle.x + third * end.x) / sum,
            (first * start.y + second * middle.y + third * end.y) / sum};
}

PlaneBox PlanePiece::hull() const {
    PlaneBox box;
    box.add(start);
    box.add(end);
    if (!isStraight()) box.add(middle);
    return box;
}

PieceParameters PlanePiece::meetings(const AcGePoint2d& linePoint, const AcGeVector2d& lineNormal) const {
    const double a = (start - linePoint).dotProduct(lineNormal);
    const double c = (end - linePoint).dotProduct(lineNormal);
    if (!isStraight()) return zeros(a, weight * (middle - linePoint).dotProduct(lineNormal), c);
    PieceParameters found;
    if (a != c) found.add(std::clamp(a / (a - c), 0.0, 1.0));
    return found;
}

// Between two places without an extreme height in between.
bool PlanePiece::isMonotoneCrossed(const AcGePoint2d& point, double from, double to) const {
    const AcGePoint2d first = from == 0.0 ? start : at(from);
    const AcGePoint2d last = to == 1.0 ? end : at(to);
    if ((first.y > point.y) == (last.y > point.y)) return false;
    if (isStraight())
        return point.x < first.x + (last.x - first.x) * ((point.y - first.y) / (last.y - first.y));
    // One of the places at that height lies between the two, but for rounding.
    const PieceParameters heights = meetings(point, AcGeVector2d::kYAxis);
    double best = HUGE_VAL;
    double crossing = from;
    for (int i = 0; i < heights.count; ++i) {
        const double t = heights.values[static_cast<std::size_t>(i)];
        const double within = std::clamp(t, from, to);
        if (std::abs(t - within) >= best) continue;
        best = std::abs(t - within);
        crossing = within;
    }
    return point.x < at(crossing).x;
}

bool PlanePiece::isCrossedBeside(const AcGePoint2d& point) const {
    if (isStraight()) return isMonotoneCrossed(point, 0.0, 1.0);
    // The height's derivative has the zeros of a quadratic; of the two one at most lies within less than half
    // a turn.
    const double rise = weight * (middle.y - start.y);
    const double fall = weight * (end.y - middle.y);
    const double top = (end.y - start.y) / 2.0;
    bool isCrossed = false;
    double from = 0.0;
    // The derivative is, but for a positive factor, rise (1-t)^2 + 2 top t(1-t) + fall t^2.
    if ((rise > 0.0) != (fall > 0.0)) {
        const PieceParameters extremes = zeros(rise, top, fall);
        for (int i = 0; i < extremes.count; ++i) {
            const double t = extremes.values[static_cast<std::size_t>(i)];
            if (t <= from || t >= 1.0) continue;
            isCrossed ^= isMonotoneCrossed(point, from, t);
            from = t;
        }
    }
    return isCrossed ^ isMonotoneCrossed(point, from, 1.0);
}

double distanceToSegment(const AcGePoint2d& point, const AcGePoint2d& start, const AcGePoint2d& end) {
    const AcGeVector2d run = end - start;
    const double square = run.lengthSqrd();
    const double along = square > 0.0 ? (point - start).dotProduct(run) / square : 0.0;
    if (!(along > 0.0)) return point.distanceTo(start);
    if (along >= 1.0) return point.distanceTo(end);
    return std::abs((point - start).crossProduct(run)) / std::sqrt(square);
}

} // namespace hostkit
