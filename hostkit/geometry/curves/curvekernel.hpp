// Numeric methods that the curves of the plane and of space share. Internal to the geometry kit.
#pragma once

#include "gebndblock2d.h"
#include "gebndblock3d.h"
#include "gecurv2d.h"
#include "gecurv3d.h"

#include <cmath>
#include <limits>
#include <vector>

namespace AcGeKernel {

inline constexpr double kInfinity = std::numeric_limits<double>::infinity();

inline double wedge(const AcGeVector2d& a, const AcGeVector2d& b) { return a.crossProduct(b); }
inline AcGeVector3d wedge(const AcGeVector3d& a, const AcGeVector3d& b) { return a.crossProduct(b); }
inline double magnitudeOf(double value) { return std::abs(value); }
inline double magnitudeOf(const AcGeVector3d& value) { return value.length(); }

/// A root of g between lo and hi to the last digit, g(lo) <= 0 <= g(hi) or the other way round. A jump across
/// 0 counts.
template <class Function>
double bisect(const Function& g, double lo, double hi) {
    const bool rising = g(hi) > 0.0 || g(lo) < 0.0;
    for (;;) {
        const double middle = lo + (hi - lo) / 2.0;
        if (!(middle > lo && middle < hi)) return middle;
        ((g(middle) > 0.0) == rising ? hi : lo) = middle;
    }
}

/// Every cut of the smooth pieces into `cuts` equal parts.
template <class Curve>
std::vector<double> nodesOf(const Curve& curve, int cuts) {
    AcGeDoubleArray pieces;
    curve.getSmoothPieces(pieces);
    std::vector<double> nodes;
    if (pieces.isEmpty()) return nodes;
    for (int i = 0; i + 1 < pieces.length(); ++i)
        for (int k = 0; k < cuts; ++k) nodes.push_back(pieces[i] + (pieces[i + 1] - pieces[i]) * k / cuts);
    nodes.push_back(pieces.last());
    return nodes;
}

/// Parameter at which the curve is nearest to the moving target: `target(point)` gives the target's nearest
/// point. The minima of the distance are where (C - target(C)) . C' rises through 0, and the ends.
template <class T, class Target>
double nearestParam(const typename T::Curve& curve, const Target& target) {
    typename T::VectorArray derivatives;
    const auto slope = [&](double param) {
        const typename T::Point point = curve.evalPoint(param, 1, derivatives);
        return (point - target(point)).dotProduct(derivatives[0]);
    };
    const auto distance = [&](double param) {
        const typename T::Point point = curve.evalPoint(param);
        return point.distanceSqrdTo(target(point));
    };
    constexpr int cutsPerPiece = 4;
    const std::vector<double> nodes = nodesOf(curve, cutsPerPiece);
    if (nodes.empty()) return 0.0;
    double best = nodes.front(), bestDistance = distance(best);
    const auto consider = [&](double param) {
        const double value = distance(param);
        if (!(value < bestDistance)) return;
        best = param;
        bestDistance = value;
    };
    double before = slope(nodes.front());
    for (std::size_t i = 1; i < nodes.size(); ++i) {
        const double after = slope(nodes[i]);
        if (before <= 0.0 && after >= 0.0) consider(bisect(slope, nodes[i - 1], nodes[i]));
        before = after;
    }
    consider(nodes.back());
    return best;
}

/// Integral of f over [lo, hi] with eight Gauss-Legendre nodes.
template <class Function>
auto gauss(const Function& f, double lo, double hi) {
    constexpr double node[4] = {0.1834346424956498, 0.5255324099163290, 0.7966664774136267,
                                0.9602898564975363};
    constexpr double weight[4] = {0.3626837833783620, 0.3137066458778873, 0.2223810344533745,
                                  0.1012285362903763};
    const double middle = (lo + hi) / 2.0, half = (hi - lo) / 2.0;
    auto sum = (f(middle - half * node[0]) + f(middle + half * node[0])) * weight[0];
    for (int i = 1; i < 4; ++i) sum += (f(middle - half * node[i]) + f(middle + half * node[i])) * weight[i];
    return sum * half;
}

/// Halves the range until the whole and its halves agree to 1e-13 of `scale`.
template <class Function, class Value>
Value integrate(const Function& f, double lo, double hi, const Value& whole, double scale, int depth) {
    constexpr double relativeError = 1e-13;
    const double middle = (lo + hi) / 2.0;
    const Value left = gauss(f, lo, middle), right = gauss(f, middle, hi);
    const double change = magnitudeOf(left + right - whole);
    if (depth == 0 || !std::isfinite(change) || change <= relativeError * scale) return left + right;
    return integrate(f, lo, middle, left, scale, depth - 1) +
           integrate(f, middle, hi, right, scale, depth - 1);
}

/// Integral over [lo, hi], lo < hi, cut at the smooth pieces. `scale` of a piece is its own first estimate or
/// the floor.
template <class Curve, class Function, class Value>
Value integrateAlong(const Curve& curve, double lo, double hi, const Function& f, Value sum, double floor) {
    constexpr int maximumDepth = 24;
    double from = lo;
    const auto piece = [&](double to) {
        const Value whole = gauss(f, from, to);
        sum += integrate(f, from, to, whole, std::max(magnitudeOf(whole), floor), maximumDepth);
        from = to;
    };
    AcGeDoubleArray pieces;
    curve.getSmoothPieces(pieces);
    for (double cut : pieces)
        if (cut > from && cut < hi) piece(cut);
    piece(hi);
    return sum;
}

template <class T>
double lengthAlong(const typename T::Curve& curve, double fromParam, double toParam) {
    if (!(fromParam != toParam)) return 0.0;
    typename T::VectorArray derivatives;
    const auto speed = [&](double param) {
        curve.evalPoint(param, 1, derivatives);
        return derivatives[0].length();
    };
    return integrateAlong(curve, std::min(fromParam, toParam), std::max(fromParam, toParam), speed, 0.0, 0.0);
}

/// Half the integral of (C - C0) x C': the area between the part and its chord, as number or vector.
template <class T>
auto areaAlong(const typename T::Curve& curve, double fromParam, double toParam) {
    typename T::VectorArray derivatives;
    const typename T::Point base = curve.evalPoint(fromParam);
    const auto density = [&](double param) {
        const typename T::Point point = curve.evalPoint(param, 1, derivatives);
        return wedge(point - base, derivatives[0]) * 0.5;
    };
    using Value = decltype(density(0.0));
    if (!(fromParam != toParam)) return Value();
    const double lo = std::min(fromParam, toParam), hi = std::max(fromParam, toParam);
    const double floor =
        std::pow(lengthAlong<T>(curve, lo, hi), 2.0) * std::numeric_limits<double>::epsilon();
    const Value value = integrateAlong(curve, lo, hi, density, Value(), floor);
    return fromParam < toParam ? value : value * -1.0;
}

/// Parameter where the arc length from `datum` reaches `length`, sought between datum and `limit` by Newton's
/// steps kept within a shrinking bracket.
template <class T>
double paramAtLength(const typename T::Curve& curve, double datum, double length, double limit) {
    const double total = lengthAlong<T>(curve, datum, limit);
    if (!(length > 0.0) || !(total > 0.0)) return datum;
    if (length >= total) return limit;
    typename T::VectorArray derivatives;
    const double sign = limit > datum ? 1.0 : -1.0;
    double lo = 0.0, hi = std::abs(limit - datum), step = hi * length / total;
    for (;;) {
        const double excess = lengthAlong<T>(curve, datum, datum + sign * step) - length;
        (excess > 0.0 ? hi : lo) = step;
        curve.evalPoint(datum + sign * step, 1, derivatives);
        double next = step - excess / derivatives[0].length();
        if (!(next > lo && next < hi)) next = (lo + hi) / 2.0;
        const bool settled =
            std::abs(next - step) <= 2.0 * AcGe::ulpOf(std::abs(datum) + step) || !(next > lo && next < hi);
        step = next;
        if (settled) return datum + sign * step;
    }
}

/// Box of a curve from its ends and the points where a coordinate's derivative changes sign.
template <class T>
typename T::Block blockByExtremes(const typename T::Curve& curve) {
    constexpr int cutsPerPiece = 4;
    typename T::Block block;
    typename T::VectorArray derivatives;
    const std::vector<double> nodes = nodesOf(curve, cutsPerPiece);
    for (double param : nodes) block.extend(curve.evalPoint(param));
    for (unsigned int axis = 0; axis < T::dimensions; ++axis) {
        const auto slope = [&](double param) {
            curve.evalPoint(param, 1, derivatives);
            return derivatives[0][axis];
        };
        for (std::size_t i = 1; i < nodes.size(); ++i)
            if ((slope(nodes[i - 1]) > 0.0) != (slope(nodes[i]) > 0.0))
                block.extend(curve.evalPoint(bisect(slope, nodes[i - 1], nodes[i])));
    }
    return block;
}

/// Appends samples after `lo` up to and with `hi`, halving until three points between stay within `tolerance`
/// of the chord.
template <class T>
void sampleBetween(const typename T::Curve& curve, double lo, double hi, double tolerance, int depth,
                   typename T::PointArray& points, AcGeDoubleArray& params) {
    const typename T::Point start = curve.evalPoint(lo), end = curve.evalPoint(hi);
    const typename T::Vector chord = end - start;
    const double chordSquared = chord.lengthSqrd();
    bool flat = true;
    for (int i = 1; i < 4 && flat && std::isfinite(chordSquared); ++i) {
        const typename T::Vector offset = curve.evalPoint(lo + (hi - lo) * i / 4.0) - start;
        const double along =
            chordSquared > 0.0 ? std::clamp(offset.dotProduct(chord) / chordSquared, 0.0, 1.0) : 0.0;
        flat = (offset - chord * along).lengthSqrd() <= tolerance * tolerance;
    }
    if (flat || depth == 0) {
        points.append(end);
        params.append(hi);
        return;
    }
    const double middle = (lo + hi) / 2.0;
    sampleBetween<T>(curve, lo, middle, tolerance, depth - 1, points, params);
    sampleBetween<T>(curve, middle, hi, tolerance, depth - 1, points, params);
}

template <class T>
void sampleWithin(const typename T::Curve& curve, double fromParam, double toParam, double tolerance,
                  typename T::PointArray& points, AcGeDoubleArray& params) {
    constexpr int maximumDepth = 16;
    points.removeAll();
    params.removeAll();
    const double allowed = tolerance > 0.0 ? tolerance : AcGeContext::gTol.equalPoint();
    const double lo = std::min(fromParam, toParam), hi = std::max(fromParam, toParam);
    points.append(curve.evalPoint(lo));
    params.append(lo);
    double from = lo;
    AcGeDoubleArray pieces;
    curve.getSmoothPieces(pieces);
    for (double cut : pieces)
        if (cut > from && cut < hi) {
            sampleBetween<T>(curve, from, cut, allowed, maximumDepth, points, params);
            from = cut;
        }
    sampleBetween<T>(curve, from, hi, allowed, maximumDepth, points, params);
    if (fromParam > toParam) {
        points.reverse();
        params.reverse();
    }
}

} // namespace AcGeKernel
