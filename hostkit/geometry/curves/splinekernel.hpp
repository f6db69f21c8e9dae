// Rational splines over any point type. Internal to the geometry kit.
#pragma once

#include "gekvec.h"

#include <cmath>
#include <vector>

namespace AcGeKernel {

inline constexpr int kMaximumDegree = 25;

/// A control point in homogeneous form: weighted offset from a local origin, and the weight.
template <class Vector>
struct Weighted {
    Vector offset;
    double weight = 0.0;
    Weighted operator+(const Weighted& o) const { return {offset + o.offset, weight + o.weight}; }
    Weighted operator-(const Weighted& o) const { return {offset - o.offset, weight - o.weight}; }
    Weighted operator*(double s) const { return {offset * s, weight * s}; }
};

inline bool isValidSpline(int degree, const AcGeKnotVector& knots, int pointCount,
                          const AcGeDoubleArray& weights) {
    if (degree < 1 || degree > kMaximumDegree || pointCount <= degree) return false;
    if (knots.length() != pointCount + degree + 1) return false;
    if (!weights.isEmpty() && weights.length() != pointCount) return false;
    for (double weight : weights)
        if (!(weight > 0.0) || !std::isfinite(weight)) return false;
    for (int i = 0; i < knots.length(); ++i) {
        if (!std::isfinite(knots[i])) return false;
        if (i > 0 && !(knots[i - 1] <= knots[i])) return false;
    }
    return knots[degree] < knots[pointCount];
}

inline int spanOf(int degree, const AcGeKnotVector& knots, int pointCount, double param) {
    int span = degree;
    if (param >= knots[pointCount]) {
        span = pointCount - 1;
    } else if (param > knots[degree]) {
        int lo = degree, hi = pointCount;
        while (hi - lo > 1) {
            const int middle = (lo + hi) / 2;
            (param >= knots[middle] ? lo : hi) = middle;
        }
        span = lo;
    }
    while (span > degree && !(knots[span] < knots[span + 1])) --span;
    while (span < pointCount - 1 && !(knots[span] < knots[span + 1])) ++span;
    return span;
}

/// A view of a spline that the curve classes hand in.
template <class T>
struct Spline {
    using Point = typename T::Point;
    using Vector = typename T::Vector;
    using Node = Weighted<Vector>;
    int degree;
    const AcGeKnotVector& knots;
    const typename T::PointArray& points;
    const AcGeDoubleArray& weights;

    double weightAt(int i) const { return weights.isEmpty() ? 1.0 : weights[i]; }
    Node node(int i, const Point& origin) const { return Node{points[i] - origin, 1.0} * weightAt(i); }
    int span(double param) const { return spanOf(degree, knots, points.length(), param); }

    /// Point, and derivatives when `derivatives` is given. Differences of the span's control points give the
    /// derivative splines, de Boor's recursion evaluates each, and the quotient rule takes the weight out.
    Point evaluate(double param, int numDeriv, Vector* derivatives) const {
        const double t = std::min(std::max(param, knots[degree]), knots[points.length()]);
        const int at = span(t);
        const Point origin = points[at];
        Node level[kMaximumDegree + 1], values[kMaximumDegree + 1];
        for (int j = 0; j <= degree; ++j) level[j] = node(at - degree + j, origin);
        const int order = std::min(numDeriv, degree);
        for (int k = 0; k <= order; ++k) {
            values[k] = deBoor(level, degree - k, at, t);
            for (int j = 0; j < degree - k; ++j) {
                const int i = at - degree + k + j;
                level[j] =
                    (level[j + 1] - level[j]) * ((degree - k) / (knots[i + 1 + degree - k] - knots[i + 1]));
            }
        }
        return takeWeightOut(values, order, origin, numDeriv, derivatives);
    }

private:
    // `nodes` are the degree + 1 control points of the span's derivative spline.
    Node deBoor(const Node* nodes, int p, int at, double t) const {
        Node work[kMaximumDegree + 1];
        for (int j = 0; j <= p; ++j) work[j] = nodes[j];
        for (int r = 1; r <= p; ++r)
            for (int j = p; j >= r; --j) {
                const double lo = knots[at - p + j], hi = knots[at + 1 + j - r];
                const double part = (t - lo) / (hi - lo);
                work[j] = work[j - 1] * (1.0 - part) + work[j] * part;
            }
        return work[p];
    }

    static Point takeWeightOut(const Node* values, int order, const Point& origin, int numDeriv,
                               Vector* derivatives) {
        Vector done[kMaximumDegree + 1];
        const double weight = values[0].weight;
        done[0] = values[0].offset / weight;
        const auto valueAt = [&](int k) { return k <= order ? values[k] : Node{}; };
        const auto doneAt = [&](int k) -> Vector { return k == 0 ? done[0] : derivatives[k - 1]; };
        for (int k = 1; k <= numDeriv; ++k) {
            Vector sum = valueAt(k).offset;
            double binomial = 1.0;
            for (int i = 1; i <= k; ++i) {
                binomial *= static_cast<double>(k - i + 1) / i;
                sum -= doneAt(k - i) * (binomial * valueAt(i).weight);
            }
            derivatives[k - 1] = sum / weight;
        }
        return origin + done[0];
    }
};

/// Inserts a knot inside the range (Boehm's algorithm) in the homogeneous control points.
template <class Node>
void insertKnot(int degree, std::vector<double>& knots, std::vector<Node>& nodes, double knot) {
    const auto count = static_cast<int>(nodes.size());
    int at = degree;
    while (at + 1 < count && knots[static_cast<std::size_t>(at) + 1] <= knot) ++at;
    std::vector<Node> result(nodes.size() + 1);
    for (int i = 0; i <= count; ++i) {
        const auto k = static_cast<std::size_t>(i);
        if (i <= at - degree) {
            result[k] = nodes[k];
        } else if (i > at) {
            result[k] = nodes[k - 1];
        } else {
            const double lo = knots[k], hi = knots[k + static_cast<std::size_t>(degree)];
            const double part = hi > lo ? (knot - lo) / (hi - lo) : 0.0;
            result[k] = nodes[k - 1] * (1.0 - part) + nodes[k] * part;
        }
    }
    nodes = std::move(result);
    knots.insert(knots.begin() + at + 1, knot);
}

/// The knots inside a range, with full ones at its ends.
inline AcGeKnotVector knotsBetween(int degree, const std::vector<double>& knots, double lo, double hi,
                                   double tolerance) {
    AcGeKnotVector between(tolerance);
    for (int i = 0; i <= degree; ++i) between.append(lo);
    for (double knot : knots)
        if (knot > lo && knot < hi) between.append(knot);
    for (int i = 0; i <= degree; ++i) between.append(hi);
    return between;
}

/// The part between two parameters as a spline of its own with full knots at its ends.
template <class T>
void trimSpline(int degree, AcGeKnotVector& knots, typename T::PointArray& points, AcGeDoubleArray& weights,
                double lo, double hi) {
    using Node = Weighted<typename T::Vector>;
    const Spline<T> spline{degree, knots, points, weights};
    const typename T::Point origin = points[0];
    std::vector<double> values(knots.knots().begin(), knots.knots().end());
    std::vector<Node> nodes;
    nodes.reserve(static_cast<std::size_t>(points.length()));
    for (int i = 0; i < points.length(); ++i) nodes.push_back(spline.node(i, origin));
    for (double end : {lo, hi}) {
        auto missing = degree - std::count(values.begin(), values.end(), end);
        for (; missing > 0; --missing) insertKnot(degree, values, nodes, end);
    }
    // With the end knots `degree` fold, the curve at an end is the control point left of its last such knot.
    const auto firstNode = std::upper_bound(values.begin(), values.end(), lo) - values.begin() - degree - 1;
    const auto lastNode = std::lower_bound(values.begin(), values.end(), hi) - values.begin() - 1;
    const bool rational = !weights.isEmpty();
    typename T::PointArray newPoints;
    AcGeDoubleArray newWeights;
    for (auto i = firstNode; i <= lastNode; ++i) {
        const Node& node = nodes[static_cast<std::size_t>(i)];
        newPoints.append(origin + node.offset / node.weight);
        if (rational) newWeights.append(node.weight);
    }
    knots = knotsBetween(degree, values, lo, hi, knots.tolerance());
    points = newPoints;
    weights = newWeights;
}

/// Solves a tridiagonal system forward and back; `right` becomes the solution.
template <class Vector>
void solveTridiagonal(const std::vector<double>& lower, std::vector<double>& diagonal,
                      const std::vector<double>& upper, std::vector<Vector>& right) {
    const std::size_t n = right.size();
    for (std::size_t i = 1; i < n; ++i) {
        const double factor = lower[i] / diagonal[i - 1];
        diagonal[i] -= factor * upper[i - 1];
        right[i] -= right[i - 1] * factor;
    }
    right[n - 1] /= diagonal[n - 1];
    for (std::size_t i = n - 1; i-- > 0;) right[i] = (right[i] - right[i + 1] * upper[i]) / diagonal[i];
}

/// Slopes at the fit points of the cubic with continuous second derivative over chord-length parameters. A
/// zero end tangent makes the second derivative vanish there.
template <class Point, class Vector>
std::vector<Vector> fitSlopes(const std::vector<Point>& q, const std::vector<double>& h,
                              const Vector& startTangent, const Vector& endTangent) {
    const std::size_t n = q.size();
    std::vector<double> lower(n, 0.0), diagonal(n, 1.0), upper(n, 0.0);
    std::vector<Vector> right(n);
    const auto chordSlope = [&](std::size_t i) { return (q[i + 1] - q[i]) / h[i]; };
    for (std::size_t i = 1; i + 1 < n; ++i) {
        lower[i] = h[i];
        diagonal[i] = 2.0 * (h[i - 1] + h[i]);
        upper[i] = h[i - 1];
        right[i] = (chordSlope(i - 1) * h[i] + chordSlope(i) * h[i - 1]) * 3.0;
    }
    if (startTangent.isZeroLength()) {
        diagonal[0] = 2.0;
        upper[0] = 1.0;
        right[0] = chordSlope(0) * 3.0;
    } else {
        right[0] = startTangent.normal();
    }
    if (endTangent.isZeroLength()) {
        diagonal[n - 1] = 2.0;
        lower[n - 1] = 1.0;
        right[n - 1] = chordSlope(n - 2) * 3.0;
    } else {
        right[n - 1] = endTangent.normal();
    }
    solveTridiagonal(lower, diagonal, upper, right);
    return right;
}

/// Knots and control points of that cubic. Both stay empty for fewer than two different points.
template <class T>
void fitCubic(const typename T::PointArray& fitPoints, const typename T::Vector& startTangent,
              const typename T::Vector& endTangent, AcGeKnotVector& knots, typename T::PointArray& points) {
    using Point = typename T::Point;
    std::vector<Point> q;
    for (const Point& point : fitPoints)
        if (q.empty() || !q.back().isEqualTo(point)) q.push_back(point);
    if (q.size() < 2) return;
    const std::size_t n = q.size() - 1;
    std::vector<double> h, t{0.0};
    for (std::size_t i = 0; i < n; ++i) {
        h.push_back(q[i].distanceTo(q[i + 1]));
        t.push_back(t.back() + h.back());
    }
    const auto slopes = fitSlopes(q, h, startTangent, endTangent);
    for (int i = 0; i < 3; ++i) knots.append(t.front());
    for (double value : t) knots.append(value);
    for (int i = 0; i < 3; ++i) knots.append(t.back());
    points.append(q[0]);
    points.append(q[0] + slopes[0] * (h[0] / 3.0));
    for (std::size_t i = 1; i < n; ++i) {
        // The control point over knots i-1, i, i+1, from those of the piece that starts at i.
        const Point a = q[i] + slopes[i] * (h[i] / 3.0), b = q[i + 1] - slopes[i + 1] * (h[i] / 3.0);
        points.append(a - (b - a) * (h[i - 1] / h[i]));
    }
    points.append(q[n] - slopes[n] * (h[n - 1] / 3.0));
    points.append(q[n]);
}

} // namespace AcGeKernel
