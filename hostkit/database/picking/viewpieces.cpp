#include "viewpieces.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace hostkit {

void appendArc(std::vector<PlanePiece>& pieces, const AcGePoint2d& center, const AcGeVector2d& u,
               const AcGeVector2d& v, double start, double sweep) {
    constexpr double quarter = AcGe::kPi / 2.0;
    constexpr double rounding = 1e-9;
    sweep = std::clamp(sweep, -AcGe::kTwoPi, AcGe::kTwoPi);
    if (!std::isfinite(start + sweep)) return;
    const auto at = [&](double angle) { return center + u * std::cos(angle) + v * std::sin(angle); };
    const int count = std::max(1, static_cast<int>(std::ceil(std::abs(sweep) / quarter - rounding)));
    const double half = sweep / count / 2.0;
    const double weight = std::cos(half);
    const AcGePoint2d first = at(start);
    AcGePoint2d from = first;
    for (int i = 0; i < count; ++i) {
        const double middle = start + (2 * i + 1) * half;
        const bool closes = i + 1 == count && std::abs(sweep) == AcGe::kTwoPi;
        const AcGePoint2d to = closes ? first : at(middle + half);
        const AcGeVector2d out = u * std::cos(middle) + v * std::sin(middle);
        pieces.push_back({from, center + out / weight, to, weight});
        from = to;
    }
}

namespace {

constexpr double largestBulgeOfPiece = 0.42; // a little more than a quarter turn's

void appendArcPieces(std::vector<PlanePiece>& pieces, const ViewMap& toView, const AcGePoint3d& start,
                     const AcGePoint3d& end, double bulge, const AcGeVector3d& normal) {
    const AcGeVector3d halfChord = (end - start) * 0.5;
    const AcGeVector3d right = halfChord.crossProduct(normal);
    const double square = bulge * bulge;
    if (std::abs(bulge) <= largestBulgeOfPiece) {
        const AcGePoint3d tip = start + halfChord + right * (2.0 * bulge / (1.0 - square));
        pieces.push_back({toView(start), toView(tip), toView(end), (1.0 - square) / (1.0 + square)});
        return;
    }
    const AcGePoint3d top = start + halfChord + right * bulge;
    const double halfBulge = bulge / (1.0 + std::sqrt(1.0 + square));
    appendArcPieces(pieces, toView, start, top, halfBulge, normal);
    appendArcPieces(pieces, toView, top, end, halfBulge, normal);
}

} // namespace

void appendBulge(std::vector<PlanePiece>& pieces, const ViewMap& toView, const AcGePoint3d& start,
                 const AcGePoint3d& end, double bulge, const AcGeVector3d& normal) {
    constexpr double steepest = 1e9; // of a full circle, as far as numbers tell
    if (bulge == 0.0 || !std::isfinite(bulge))
        pieces.push_back(PlanePiece::segment(toView(start), toView(end)));
    else
        appendArcPieces(pieces, toView, start, end, std::clamp(bulge, -steepest, steepest), normal);
}

void appendQuad(std::vector<PlanePiece>& pieces, const ViewMap& toView, const AcGePoint3d (&corners)[4]) {
    AcGePoint2d seen[4];
    std::transform(std::begin(corners), std::end(corners), seen, toView);
    for (std::size_t i = 0; i < 4; ++i) pieces.push_back(PlanePiece::segment(seen[i], seen[(i + 1) % 4]));
}

// --- Splines -----------------------------------------------------------------------------------------------

namespace {

constexpr std::size_t mostPoints = 26; // of a span: the highest degree is 25

/// A point of the view plane with its weight.
struct WeightedPoint {
    double x;
    double y;
    double weight;

    AcGePoint2d place() const { return {x / weight, y / weight}; }
};

WeightedPoint between(const WeightedPoint& a, const WeightedPoint& b, double t) {
    const double r = 1.0 - t;
    return {r * a.x + t * b.x, r * a.y + t * b.y, r * a.weight + t * b.weight};
}

/// The part of a spline over one span: points of a rational polynomial curve.
struct Span {
    std::array<WeightedPoint, mostPoints> points;
    std::size_t count = 0;

    PlaneBox hull() const {
        PlaneBox box;
        for (std::size_t i = 0; i < count; ++i) box.add(points[i].place());
        return box;
    }
    bool isFlat(double deviation) const {
        const AcGePoint2d start = points[0].place();
        const AcGePoint2d end = points[count - 1].place();
        for (std::size_t i = 1; i + 1 < count; ++i)
            if (!(distanceToSegment(points[i].place(), start, end) <= deviation)) return false;
        return true;
    }
    Span cutInHalf();
};

// Leaves the first half here and gives the second.
Span Span::cutInHalf() {
    Span second;
    second.count = count;
    const std::size_t last = count - 1;
    for (std::size_t step = 0; step <= last; ++step) {
        second.points[last - step] = points[last];
        for (std::size_t i = last; i > step; --i) points[i] = between(points[i - 1], points[i], 0.5);
    }
    return second;
}

/// Values of a spline's polar form: what a span's points are found by.
class SplineSpans {
public:
    SplineSpans(const AcGeNurbCurve3d& curve, const ViewMap& toView)
        : m_curve(curve) {
        for (int i = 0; i < curve.numControlPoints(); ++i) {
            const AcGePoint2d seen = toView(curve.controlPointAt(i));
            const double weight = curve.weightAt(i);
            m_points.push_back({seen.x * weight, seen.y * weight, weight});
        }
    }
    /// The part between two knots with nothing in between.
    Span spanAt(int knot) const {
        Span span;
        const int degree = m_curve.degree();
        span.count = static_cast<std::size_t>(degree) + 1;
        for (int i = 0; i <= degree; ++i) span.points[static_cast<std::size_t>(i)] = polar(knot, i);
        return span;
    }

private:
    // The arguments: the span's start degree - ends times, then its end.
    WeightedPoint polar(int knot, int ends) const {
        const int degree = m_curve.degree();
        std::array<WeightedPoint, mostPoints> work;
        for (int i = 0; i <= degree; ++i)
            work[static_cast<std::size_t>(i)] = m_points[static_cast<std::size_t>(knot - degree + i)];
        for (int step = 1; step <= degree; ++step) {
            const double at = m_curve.knotAt(step <= ends ? knot + 1 : knot);
            for (int i = degree; i >= step; --i) {
                const double low = m_curve.knotAt(knot - degree + i);
                const double high = m_curve.knotAt(knot + 1 + i - step);
                auto& point = work[static_cast<std::size_t>(i)];
                point = between(work[static_cast<std::size_t>(i) - 1], point, (at - low) / (high - low));
            }
        }
        return work[static_cast<std::size_t>(degree)];
    }

    const AcGeNurbCurve3d& m_curve;
    std::vector<WeightedPoint> m_points;
};

void appendSpan(std::vector<PlanePiece>& pieces, Span& span, double deviation, const PlaneBox* near,
                int depth) {
    const bool isFar = near && !near->meets(span.hull(), deviation);
    if (isFar || depth == 0 || span.isFlat(deviation)) {
        pieces.push_back(PlanePiece::segment(span.points[0].place(), span.points[span.count - 1].place()));
        return;
    }
    Span second = span.cutInHalf();
    appendSpan(pieces, span, deviation, near, depth - 1);
    appendSpan(pieces, second, deviation, near, depth - 1);
}

} // namespace

void appendSpline(std::vector<PlanePiece>& pieces, const ViewMap& toView, const AcGeNurbCurve3d& curve,
                  double deviation, const PlaneBox* near) {
    constexpr int mostHalvings = 16;
    if (curve.isEmpty() || static_cast<std::size_t>(curve.degree()) >= mostPoints) return;
    const SplineSpans spans(curve, toView);
    for (int knot = curve.degree(); knot < curve.numControlPoints(); ++knot) {
        if (!(curve.knotAt(knot) < curve.knotAt(knot + 1))) continue;
        Span span = spans.spanAt(knot);
        appendSpan(pieces, span, deviation, near, mostHalvings);
    }
}

double chordDeviation(const PlaneRegion& region) {
    constexpr double partOfRegion = 1e-6;
    const AcGeVector2d size = region.box().high - region.box().low;
    return std::max(partOfRegion * std::max(size.x, size.y), region.allowance());
}

} // namespace hostkit
