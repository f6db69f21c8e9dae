// Angles, chords and areas of circles. Internal to the geometry kit.
#pragma once

#include "gegbl.h"

#include <algorithm>
#include <cmath>

namespace AcGeKernel {

/// An angle brought into [from, from + 2*pi) by whole turns.
inline double angleFrom(double from, double angle) {
    // What 2*pi lacks as a double: a point on a large circle would feel it.
    constexpr double twoPiRest = 2.4492935982947064e-16;
    const double turns = std::ceil((from - angle) / AcGe::kTwoPi);
    const double brought = (angle + turns * twoPiRest) + turns * AcGe::kTwoPi;
    return brought < from + AcGe::kTwoPi ? std::max(brought, from) : from;
}

/// The angles that setAngles makes of what it is given. The sum of an angle and a turn is rounded, so that
/// full turns come out a little longer or shorter than one; both are full.
inline void normalizeAngles(double start, double& end) {
    if (end > start && end - start <= AcGe::kTwoPi) return;
    const double slack = AcGe::kPointUlps * AcGe::ulpOf(std::max(std::abs(start), std::abs(end)));
    end = angleFrom(start, end);
    if (!(end - start > slack && end - start < AcGe::kTwoPi)) end = start + AcGe::kTwoPi;
}

inline bool isFullTurn(double start, double end) {
    return end - start >= AcGe::kTwoPi - AcGe::kPointUlps * AcGe::ulpOf(end);
}

/// The parameter in [start, end] nearest to an angle; in the gap the nearer end, the start at a tie.
inline double clampAngle(double start, double end, double angle) {
    const double inside = angleFrom(start, angle);
    if (inside <= end) return inside;
    return inside - end < start + AcGe::kTwoPi - inside ? end : start;
}

/// The angle counted from the nearer end: just above `end` or just below `start` when it lies in the gap.
inline double unclampedAngle(double start, double end, double angle) {
    const double inside = angleFrom(start, angle);
    if (inside <= end) return inside;
    return inside - end < start + AcGe::kTwoPi - inside ? inside : inside - AcGe::kTwoPi;
}

/// Ends and inner cuts of an angular range in pieces of at most an eighth of a turn.
inline void angularPieces(double start, double end, AcGeDoubleArray& params) {
    const double turns = (end - start) / (AcGe::kPi / 4.0);
    const int count = turns >= 1.0 && std::isfinite(turns) ? static_cast<int>(std::ceil(turns)) : 1;
    params.removeAll();
    for (int i = 0; i < count; ++i) params.append(start + (end - start) * i / count);
    params.append(end);
}

/// The corner of a triangle where its two shorter sides meet, to work from in differences: products of short
/// sides lose the fewest digits. With p and q the sides from there, taken round the triangle in its own
/// sense, the circumcentre c has 2 c . p = p . p and 2 c . q = q . q.
template <class Point, class Vector>
struct Corner {
    Corner(const Point& a, const Point& b, const Point& c) {
        const double ab = a.distanceSqrdTo(b), bc = b.distanceSqrdTo(c), ca = c.distanceSqrdTo(a);
        if (bc >= ab && bc >= ca)
            set(c, a, b);
        else if (ca >= ab)
            set(a, b, c);
        else
            set(b, c, a);
    }
    /// What, turned left and divided by twice p x q, leads from the corner to the circumcentre.
    Vector squareDifference() const {
        return toNext * toPrevious.lengthSqrd() - toPrevious * toNext.lengthSqrd();
    }

    Point at;
    Vector toNext;
    Vector toPrevious;

private:
    void set(const Point& previous, const Point& corner, const Point& next) {
        at = corner;
        toNext = next - corner;
        toPrevious = previous - corner;
    }
};

/// Area between an arc of the unit circle and its chord: (t - sin t) / 2, by its series where the difference
/// would cancel.
inline double segmentArea(double sweep) {
    constexpr double seriesLimit = 0.25;
    if (std::abs(sweep) >= seriesLimit) return (sweep - std::sin(sweep)) / 2.0;
    const double square = sweep * sweep;
    double term = sweep * square / 6.0, sum = 0.0;
    for (int k = 4; sum + term != sum; k += 2) {
        sum += term;
        term *= -square / (k * (k + 1.0));
    }
    return sum / 2.0;
}

/// Chords that a circle of this radius needs over `sweep` to stay within `tolerance`: at least one an eighth
/// of a turn, and never more than a million.
inline int chordCount(double sweep, double radius, double tolerance) {
    constexpr double maximumCount = 1e6;
    const double allowed = tolerance > 0.0 ? tolerance : AcGeContext::gTol.equalPoint();
    // The height r * (1 - cos(step / 2)) as 2 r sin^2(step / 4) keeps its digits for small steps.
    const double ratio = std::min(std::sqrt(allowed / (2.0 * radius)), 1.0);
    const double step = std::min(4.0 * std::asin(ratio), AcGe::kPi / 4.0);
    const double count = std::ceil(sweep / step);
    return count >= 1.0 ? static_cast<int>(std::min(count, maximumCount)) : 1;
}

} // namespace AcGeKernel
